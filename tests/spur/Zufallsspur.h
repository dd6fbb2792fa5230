// SPDX-License-Identifier: GPL-3.0-or-later
// Traces that nobody has thought of: a `Schema` with some of everything, and inputs at random.
#pragma once

#include <cstdint>
#include <string>

/// A trace without events, of `eingaben` inputs, half of them after a long silence. Equal seeds give equal
/// traces.
std::string zufallsspur(std::uint32_t saat, int eingaben);
