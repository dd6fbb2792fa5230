// Where the `Belegung` of a slot lies: buttons 0 to 11 in tblTastatur by name, the D-pad as buttons 12 to 15
// in tblSteuerKreuz by position.
#pragma once

#include "store/schema/VarTastenbelegung.h"

#include <array>
#include <cstddef>
#include <string>

/// Column of a button (0 to 11) behind "btn" or "Btn": 1 to 12, 101 to 112, 1001 to 1012 by layer.
inline std::string tastennummer(int ebene, int taste) {
    constexpr std::array<int, EBENEN> VERSATZ{0, 100, 1000};
    return std::to_string(VERSATZ[static_cast<std::size_t>(ebene)] + taste + 1);
}

/// Ordinal of a direction of the D-pad (button 12 to 15).
constexpr int kreuzordinal(int ebene, int taste) {
    return (SLOTS - TASTEN) * ebene + (taste - TASTEN + 1);
}
