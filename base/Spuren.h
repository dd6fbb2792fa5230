// SPDX-License-Identifier: GPL-3.0-or-later
// The trace labels of a run, `Erg`(0 to 8): who writes which, and where the window lays them.
#pragma once

#include "base/Stickseite.h"

#include <array>
#include <cstddef>

inline constexpr int SPUREN = 9;

/// x zone, y zone, action of the field or the x band, action of the y band.
using Stickspuren = std::array<int, 4>;
constexpr Stickspuren stickspuren(Stickseite seite) {
    return seite == Stickseite::Links ? Stickspuren{0, 1, 3, 4} : Stickspuren{5, 6, 7, 8};
}

/// The buttons whose pulse is down.
inline constexpr int DRUECKMASKE_SPUR = 2;
