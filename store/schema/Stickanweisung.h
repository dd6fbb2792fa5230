// SPDX-License-Identifier: GPL-3.0-or-later
// Statement texts of the stick tables and the walk through their lines, which reader and writer share. The
// two sticks' tables differ by their names only.
#pragma once

#include "base/Stickseite.h"
#include "store/db/Datenbank.h"
#include "store/schema/Linientabelle.h"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

/// Ordinal of the first of an action's four lines, behind Schemaname and Umschalt.
inline constexpr int ERSTE_FELDSPALTE = 2;

/// What names a field: layer, then the line values to the left, to the right, upward and downward, 0 for
/// none.
using Feldschluessel = std::array<std::int32_t, 1 + RICHTUNGEN>;

/// Opens the rows of a stick, in the order of their index; all functions here throw LaufzeitFehler, 3075 for
/// a name with an apostrophe.
Recordset linienzeilen(Database& datenbank, Stickseite seite, const std::string& schemaName);

/// Opens one row of a stick by its index, 1 to ZEILEN_JE_STICK.
Recordset linienzeile(Database& datenbank, Stickseite seite, const std::string& schemaName, int index);

/// Throws 3021 when `satz`, the rows of a stick, has none: then the `Schema` is gone.
void linienzeilenPruefen(const Recordset& satz, Stickseite seite, const std::string& schemaName);

/// Calls `arbeit` with each place that a line or `StickSperre` has in `satz`, the twenty rows of a stick:
/// with the cursor on its row, its ordinal and its value in `bild`. The rows are walked once a layer; the
/// cursor stands on that of `StickSperre` at the end.
template <class Bild, class Arbeit> void jedenLinienwert(Recordset& satz, Bild& bild, Arbeit&& arbeit) {
    for (int ebene = 0; ebene < EBENEN; ++ebene) {
        auto& linien = bild.linien[static_cast<std::size_t>(ebene)];
        satz.MoveFirst();
        for (std::size_t zeile = ERSTE_LINIENZEILE; zeile <= LETZTE_LINIENZEILE; ++zeile, satz.MoveNext())
            for (int richtung = 0; richtung < RICHTUNGEN; ++richtung)
                arbeit(LINIENSPALTEN.ordinal(ebene, richtung),
                       linien[zeile][static_cast<std::size_t>(richtung)]);
    }
    arbeit(SPERRSPALTE, bild.StickSperre);
}

/// Opens the actions of a `Schema` on one layer that meet `bedingung`, pairs of a column and its value.
Recordset aktionszeilen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                        std::initializer_list<std::pair<std::string_view, std::int32_t>> bedingung);

/// Opens the action of one field.
Recordset feldzeilen(Database& datenbank, Stickseite seite, const std::string& schemaName,
                     const Feldschluessel& feld);

/// Opens the actions of a layer in the order in which a run searches them.
Recordset aktionszeilenNachLinks(Database& datenbank, Stickseite seite, const std::string& schemaName,
                                 int ebene);

/// Opens the actions of a layer whose field lies to the left ("Links"), to the right ("Rechts") or in the
/// middle of the x axis ("Mitte"), in the order in which they are drawn.
Recordset aktionszeilenDerGruppe(Database& datenbank, Stickseite seite, const std::string& schemaName,
                                 int ebene, std::string_view gruppe);

/// What stands behind the names of a layer's columns; nothing for the layer 0 and for a layer that is none.
const char* ebenenendung(int Umschalt);

/// Column of a direction; throws 9 for one that is not 0 to 3.
std::string_view richtungsspalte(int richtung);
