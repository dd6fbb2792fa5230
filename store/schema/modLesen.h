// SPDX-License-Identifier: GPL-3.0-or-later
// Brings a `Schema` out of the database. Each procedure opens the database, does its work and closes it
// again.
#pragma once

#include "base/Stickseite.h"
#include "store/db/Datenbank.h"
#include "store/schema/Linientabelle.h"
#include "store/schema/Stickanweisung.h"
#include "store/schema/VarTastenbelegung.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A slot on one of the layers.
struct Tastenort {
    int taste;
    int ebene;
    bool operator==(const Tastenort&) const = default;
};

/// Reads the editor's image of a `Schema`. A column that is Null or empty gives the fields of LEERE_BELEGUNG,
/// as does a missing row of tblSteuerKreuz; a button column that holds "leer" leaves its fields empty. So
/// does LEERE_BELEGUNG stand for a text that does not have exactly the five fields; `unlesbare` gets its
/// place, layer by layer. Throws LaufzeitFehler, 3021 when the `Schema` has no row in tblTastatur.
VarTastenbelegung TastenbelegungLesen(const std::string& datenbankPfad, const std::string& schemaName,
                                      std::vector<Tastenort>& unlesbare);

/// The run image: [layer][slot], each the whole `Belegung` text.
using Laufbild = std::array<std::array<std::string, SLOTS>, EBENEN>;

/// Reads the run image of a `Schema`. A column that is Null or empty gives LEERE_BELEGUNG, as does a missing
/// row of tblSteuerKreuz. Throws LaufzeitFehler, 3021 when the `Schema` has no row in tblTastatur.
Laufbild TastenLaufLesen(const std::string& datenbankPfad, const std::string& schemaName);

/// The list of `Schema`s in stored order. Both arrays have one entry more than there are rows, the last one
/// empty.
struct Schemaliste {
    std::vector<std::string> SchemaNamen;
    std::vector<std::string> SchemaPfade;
};
Schemaliste SchemataLesen(const std::string& datenbankPfad);

/// Column `Funktion` of the `Schema`: which element of `Option1` was chosen last. Null counts as 0; nothing
/// when the `Schema` has no row.
std::optional<int> FunktionLesen(const std::string& datenbankPfad, const std::string& schemaName);

/// Lays those of the twenty rows of a stick that are missing for a `Schema`, in one transaction of
/// `datenbank`; row 1 carries the four default lines on all layers, the others none. Throws LaufzeitFehler.
void StickGrundzeilenAnlegen(Database& datenbank, Stickseite seite, const std::string& schemaName);

/// Which of the twenty rows `satz`, the rows of a stick from its cursor on, does not have, by their index.
std::vector<int> fehlendeZeilen(Recordset& satz);

/// A value of a stick's table, a line or `StickSperre`. A foreign database may hold any number there; none of
/// them wraps: throws LaufzeitFehler 6 for one beyond 32 bits, 13 for what is no whole number.
std::int32_t linienwert(const Wert& wert);

/// Reads the zone lines of a stick and its `StickSperre`. Rows that are missing are laid; where all are,
/// `melden` is called before that, once, with the message for the user. Throws LaufzeitFehler: 13 for a line
/// that is no whole number, 6 for one beyond 32 bits.
Sticklinien StickLinienLesen(const std::string& datenbankPfad, Stickseite seite,
                             const std::string& schemaName,
                             const std::function<void(std::string_view)>& melden);

/// The same where all rows are there; throws 3021 where one is not.
Sticklinien StickLinienLesen(Database& datenbank, Stickseite seite, const std::string& schemaName);

/// The action text of a field; empty when it has no row. Throws LaufzeitFehler.
std::string StickAktionLesen(const std::string& datenbankPfad, Stickseite seite,
                             const std::string& schemaName, const Feldschluessel& feld);

/// Whether no row of a field at the line `linie` of `richtung` (0 to 3) holds anything but a `Leerfeld`.
/// Throws LaufzeitFehler, 9 for another direction.
bool stehtKeineAktionAn(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                        int richtung, std::int32_t linie);

/// Deletes the rows of fields at a line that hold a `Leerfeld`, all or none, in a transaction of `datenbank`.
/// True when no other row is left there. `schritt`, where there is one, gets what went. Throws as
/// stehtKeineAktionAn.
bool StickAktionenLoeschen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                           int richtung, std::int32_t linie, Zeilenschritt* schritt = nullptr);
