// SPDX-License-Identifier: GPL-3.0-or-later
// The zone lines of a stick, as its twenty rows hold them and as the editors work on them: which row and
// which direction is which, and where a layer's lines stand in a row.
#pragma once

#include "store/schema/Ebenenspalten.h"

#include <array>
#include <cstddef>
#include <cstdint>

inline constexpr int RICHTUNGEN = 4;

/// Order of the directions wherever there is one value, list or column for each.
namespace richtung {
inline constexpr std::size_t LINKS = 0;
inline constexpr std::size_t RECHTS = 1;
inline constexpr std::size_t OBEN = 2;
inline constexpr std::size_t UNTEN = 3;
} // namespace richtung

/// The directions by name, as the columns and the texts for the user have them.
inline constexpr std::array<const char*, RICHTUNGEN> LINIENRICHTUNGEN{"Links", "Rechts", "Oben", "Unten"};

// The rows of a stick by their index. Lines stand from the centre outward; a direction ends at its first 0.
inline constexpr int ZEILEN_JE_STICK = 20;
inline constexpr int ERSTE_LINIENZEILE = 1;
inline constexpr int LETZTE_LINIENZEILE = 19;
inline constexpr int SPERRZEILE = 20; ///< holds no lines but `StickSperre`

/// The columns of tblStick and tblStickR: on each layer a line in each direction.
inline constexpr Ebenenspalten LINIENSPALTEN{{2, 6, 10}, RICHTUNGEN};

/// The column of `StickSperre` in its row, which is that of the first line in the others.
inline constexpr int SPERRSPALTE = LINIENSPALTEN.ordinal(0, 0);

/// The lines of row 1 of a new stick: those around its centre field.
inline constexpr std::array<std::int32_t, RICHTUNGEN> GRUNDLINIEN{27072, 38399, 25941, 39679};

inline constexpr int LINIENPLAETZE = ZEILEN_JE_STICK + 1; ///< the places 0 and 20 stay 0

/// The lines of one layer: [row][direction], 0 for no line.
using Linienebene = std::array<std::array<std::int32_t, RICHTUNGEN>, LINIENPLAETZE>;

/// The lines of a stick by layer.
using Linientabelle = std::array<Linienebene, EBENEN>;

/// What a stick's rows hold.
struct Sticklinien {
    Linientabelle linien{};
    std::int32_t StickSperre = 0; ///< bit n: not evaluated in layer n
};
