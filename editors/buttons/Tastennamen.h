// What stands on the labels of the button editor for the buttons and the D-pad, by slot.
#pragma once

#include "store/schema/VarTastenbelegung.h"

#include <array>
#include <string_view>

/// `TastenBeschriftung`: the names that labels fall back to. It names four of the shoulder buttons otherwise
/// than the pad reports them.
inline constexpr std::array<std::string_view, SLOTS> TASTENBESCHRIFTUNG{
    "Dreieck", "Kreis", "Kreuz",   "Viereck", "L 1",  "R 1",    "L 2",   "R 2",
    "Select",  "Start", "L-Stick", "R-Stick", "Oben", "Rechts", "Unten", "Links"};

/// What the labels say until the form is loaded.
inline constexpr std::array<const char*, SLOTS> ENTWURFSTEXTE{
    "Dreieck", "Kreis", "Kreuz",   "Viereck", "L 2",  "R 2",    "L 1",   "R 1",
    "Select",  "Start", "Stick L", "Stick R", "Oben", "Rechts", "Unten", "Links"};
