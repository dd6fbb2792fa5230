// SPDX-License-Identifier: GPL-3.0-or-later
// What the axis assignment form decides without its controls: which choice stands for an axis name, whether
// six choices make an assignment, and where a bar stands.
#pragma once

#include "store/files/Achsendatei.h"

#include <array>
#include <cstdint>
#include <string_view>

/// Entries of the list `Auswahl`.
inline constexpr std::array<const char*, 4> AUSWAHLEN{"Links", "Rechts", "Z-Achse", "Schubregler"};
/// Entries of the list `Richtung`.
inline constexpr std::array<const char*, 2> RICHTUNGEN{"Links/Rechts", "Oben/Unten"};

/// The choice that stands for a logical axis name; what the name does not tell stays "".
Achsenauswahl auswahlZu(std::string_view schluessel);

/// Whether the choice is a slider, which has no direction.
bool istSchub(std::string_view auswahl);

/// Whether each stick has one axis for each direction and the sliders have both their names.
bool istVollstaendig(const std::array<Achsenauswahl, ACHSEN>& tabelle);

/// Position of a bar that runs from 0 to `maximum` for a raw axis value of 0 to 65535.
int balkenwert(std::uint32_t wert, int maximum);
