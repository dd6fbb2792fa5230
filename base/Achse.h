// SPDX-License-Identifier: GPL-3.0-or-later
// The axes of a pad by what they are for; which raw axis is which says the assignment of a `Schema`.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// In the order of the default assignment.
enum class Achse { lx, ly, rx, ry, Z1, Z2 };
inline constexpr std::size_t ACHSEN = 6;
inline constexpr std::array<std::string_view, ACHSEN> ACHSENNAMEN{"lx", "ly", "rx", "ry", "Z1", "Z2"};
