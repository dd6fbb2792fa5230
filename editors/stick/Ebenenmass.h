// SPDX-License-Identifier: GPL-3.0-or-later
// How large the plane of a stick editor is in its own units, which are those of a raw axis.
#pragma once

#include <cstdint>

/// Largest x and y of the plane.
inline constexpr std::int32_t EBENENENDE = 65535;

/// The arrows along the upper and the left edge reach here.
inline constexpr std::int32_t PFEILE_ENDEN = 1400;
