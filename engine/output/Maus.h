// SPDX-License-Identifier: GPL-3.0-or-later
// Mouse buttons, wheel and steps by their number, as assignments name them.
//
//   number      0     1      2        3         4
//   button      left  right  middle   wheel up  wheel down
//   direction   left  right  up       down
//
// A pad button's wheel moves by its number, +3 and -4. Sticks and slider have an amount of their own.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

class Eingabe;

namespace maus {

/// Presses for a pad button. Any other number does nothing.
void festDruecken(Eingabe& eingabe, int knopf);
/// Presses for a stick or the slider; `menge` is only asked for the wheel. Anything else does nothing.
void druecken(Eingabe& eingabe, std::optional<int> knopf, const std::function<std::int32_t()>& menge);
/// Releases the button; the wheel has nothing to release.
void loslassen(Eingabe& eingabe, std::optional<int> knopf);
/// Moves by `schritt` counts. Gives whether there is such a direction; another one moves nothing and does not
/// ask for the counts.
bool bewegen(Eingabe& eingabe, std::optional<int> richtung, const std::function<std::int32_t()>& schritt);

/// The number with its sign turned. Throws LaufzeitFehler 6 for the one that has no counterpart.
std::int32_t negativ(std::int32_t zahl);

} // namespace maus
