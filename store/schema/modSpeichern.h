// SPDX-License-Identifier: GPL-3.0-or-later
// Brings changes of a `Schema` into the database. Each procedure opens the database itself and closes it at
// its end. What one of them saves it saves in one transaction: all of it or nothing, also through a crash.
#pragma once

#include "store/schema/VarTastenbelegung.h"
#include "store/schema/modLesen.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// Makes the rows of a new `Schema`. One that exists is changed when `fragen`, called once with the question
/// for the user, says yes: it takes `pfad` as its `Programmpfad`, " " for an empty one.
///
/// The path of a new `Schema` is not stored; only the change of an existing one stores a path. True when the
/// D-pad's row was made: for a new `Schema`, and for one that had lost this row. One that was whole gives
/// false, whatever the answer. A new `Schema` is one transaction, and so is what follows the question.
/// Throws LaufzeitFehler. A name with an apostrophe is made like any other but cannot be changed (3075).
bool SchemaAnlegen(const std::string& datenbankPfad, const std::string& name, const std::string& pfad,
                   const std::function<bool(std::string_view)>& fragen);

/// Stores the editor's image, buttons and D-pad; the D-pad's row is laid where it is missing. A `Schema`
/// without a row in tblTastatur stays without any: false, nothing is saved. Throws LaufzeitFehler.
bool TastenbelegungSpeichern(const std::string& datenbankPfad, const std::string& schemaName,
                             const VarTastenbelegung& bild);

/// Stores the zone lines of a stick, rows 1 to 19, and its `StickSperre`. Only values that differ from what
/// stands there are written; rows that are missing are laid. Throws LaufzeitFehler, 3021 when there is no row
/// at all.
///
/// Here and below `schritt`, where there is one, gets what was changed; where it is to be taken back, nobody
/// may have changed a line of the stick since. It stays as it is where nothing had to be written.
void StickLinienSpeichern(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                          const Sticklinien& bild, Zeilenschritt* schritt = nullptr);

/// A line of a layer (0 to 2) and direction (0 to 3) that moved.
struct Linienumzug {
    int ebene;
    int richtung;
    std::int32_t neu;
    std::int32_t alt;
};

/// Stores the lines as StickLinienSpeichern does, and lets the actions of the line that has moved follow it.
/// Without an action exactly on its old place, those less than 10 beside it follow: rounding may have put
/// them there. Throws LaufzeitFehler, 9 for another direction.
void StickLinieVerlegen(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                        const Sticklinien& bild, const Linienumzug& umzug, const Fortgang& weiter = {},
                        Zeilenschritt* schritt = nullptr);

/// Removes a line: deletes the rows of fields at `linie` that hold a `Leerfeld`, and stores `bild`, the lines
/// without it, as StickLinienSpeichern does. Where another row is there the line is kept for it: then the
/// lines are not stored, the `Leerfeld` rows go all the same. True when it was removed. Throws
/// LaufzeitFehler, 9 for another direction.
bool StickLinieEntfernen(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                         const Sticklinien& bild, int ebene, int richtung, std::int32_t linie,
                         Zeilenschritt* schritt = nullptr);

/// Stores the action text of a field: in its row, the first one if there are more, or in a new one. Throws
/// LaufzeitFehler.
void StickAktionSpeichern(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                          const Feldschluessel& feld, const std::string& aktion,
                          Zeilenschritt* schritt = nullptr);

/// Stores which element of `Option1` was chosen; nothing happens when the `Schema` has no row. Throws
/// LaufzeitFehler.
void FunktionSpeichern(const std::string& datenbankPfad, const std::string& schemaName, int index);
