// SPDX-License-Identifier: GPL-3.0-or-later
// What the three layers are called wherever they are shown.
#pragma once

#include <array>

inline constexpr std::array<const char*, 3> EBENENNAMEN{"Standart", "Umschalt 1", "Umschalt 2"};

/// As the button editor writes them.
inline constexpr std::array<const char*, 3> EBENENNAMEN_OHNE_LEERZEICHEN{"Standart", "Umschalt1",
                                                                         "Umschalt2"};
