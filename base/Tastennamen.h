// SPDX-License-Identifier: GPL-3.0-or-later
// What the buttons of the pad are called, by slot: in a run, on the labels of the button editor, and on them
// before it is loaded.
//
// The three differ at the shoulder buttons and the sticks. A run goes by the bits that the pad reports; the
// labels have always been written otherwise, and users know them so.
#pragma once

#include "base/Slots.h"

#include <array>
#include <string_view>

/// `TastenNamen` of a run, in bit order.
inline constexpr std::array<std::string_view, TASTEN> LAUFNAMEN{"Dreieck", "Kreis", "Kreuz",   "Viereck",
                                                                "L 2",     "L 1",   "R 2",     "R 1",
                                                                "Select",  "Start", "L-Stick", "R-Stick"};

/// `TastenBeschriftung`: the names that the editor's labels fall back to.
inline constexpr std::array<std::string_view, SLOTS> TASTENBESCHRIFTUNG{
    "Dreieck", "Kreis", "Kreuz",   "Viereck", "L 1",  "R 1",    "L 2",   "R 2",
    "Select",  "Start", "L-Stick", "R-Stick", "Oben", "Rechts", "Unten", "Links"};

/// What the labels say until the form is loaded.
inline constexpr std::array<const char*, SLOTS> ENTWURFSTEXTE{
    "Dreieck", "Kreis", "Kreuz",   "Viereck", "L 2",  "R 2",    "L 1",   "R 1",
    "Select",  "Start", "Stick L", "Stick R", "Oben", "Rechts", "Unten", "Links"};

/// Directions of the D-pad, in the order of its slots.
inline constexpr std::array<const char*, SLOTS - TASTEN> KREUZRICHTUNGEN{"Oben", "Rechts", "Unten", "Links"};
