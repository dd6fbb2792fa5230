// SPDX-License-Identifier: GPL-3.0-or-later
// Which columns of a table belong to a layer. A layer's columns stand side by side; between the layers other
// columns may stand, so that the layers' distances differ from table to table.
#pragma once

#include "base/Slots.h"

#include <array>
#include <cstddef>
#include <string>

struct Ebenenspalten {
    std::array<int, EBENEN> erste; ///< ordinal of a layer's first column
    int anzahl;                    ///< columns of a layer

    constexpr int ordinal(int ebene, int nummer) const {
        return erste[static_cast<std::size_t>(ebene)] + nummer;
    }
};

/// tblTastatur: the buttons 0 to 11
inline constexpr Ebenenspalten TASTENSPALTEN{{1, 14, 27}, TASTEN};
/// tblSteuerKreuz: the D-pad, which is the buttons 12 to 15
inline constexpr Ebenenspalten KREUZSPALTEN{{1, 5, 9}, SLOTS - TASTEN};

/// Name of a button's column behind "btn" or "Btn": 1 to 12, 101 to 112, 1001 to 1012 by layer.
inline std::string tastennummer(int ebene, int taste) {
    constexpr std::array<int, EBENEN> VERSATZ{0, 100, 1000};
    return std::to_string(VERSATZ[static_cast<std::size_t>(ebene)] + taste + 1);
}
