// SPDX-License-Identifier: GPL-3.0-or-later
// Brings out of a stick's two tables what the drawing of its fields needs: lines as numbers, action rows by
// group.
#pragma once

#include "base/Stickseite.h"
#include "store/db/Datenbank.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Lines of one direction from the centre outward, without empties.
using Zonenlinien = std::vector<std::int32_t>;

/// Reads the lines of a direction ("Links", "Rechts", "Oben", "Unten") on a layer out of a set on tblStick or
/// tblStickR: from the first row to the first value 0, at most 20. Row 20 is skipped, as it holds no line.
Zonenlinien LinienListeLesen(Recordset& satz, std::string_view richtungsname, int ebene);

/// An action row: its band in y, the band's value, its band in x, the action. A band is the name of its
/// direction, or "Mitte" with the value 0.
struct Zonenzeile {
    std::string_view senkrecht;
    std::int32_t wertSenkrecht = 0;
    std::string_view waagrecht;
    std::int32_t wertWaagrecht = 0;
    std::string aktion;
};

/// Reads the action rows of a group, "Links", "Rechts" or "Mitte", on a layer; each goes to `zeile` before
/// the next one is read. Throws LaufzeitFehler of the store, 13 for a text where a number belongs, 6 for a
/// number beyond 32 bits.
void ZonenzeilenLesen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                      std::string_view gruppe, const std::function<void(const Zonenzeile&)>& zeile);
