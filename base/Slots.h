// SPDX-License-Identifier: GPL-3.0-or-later
// What a pad's buttons and the D-pad are counted by.
#pragma once

inline constexpr int EBENEN = 3;         ///< layers: Standart, Umschalt 1, Umschalt 2
inline constexpr int TASTEN = 12;        ///< slots 0 to 11, the bits of the pad's button word
inline constexpr int SLOTS = TASTEN + 4; ///< slots 12 to 15 are the D-pad: Oben, Rechts, Unten, Links
