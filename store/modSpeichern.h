// Brings changes of a `Schema` into the database. Each procedure opens the database itself and closes it at
// its end.
#pragma once

#include "store/VarTastenbelegung.h"

#include <string>

/// Stores the editor's image: the buttons in one Update, then the D-pad in one. A `Schema` without a row in
/// tblTastatur stays without any. Throws LaufzeitFehler; 3021 when only the D-pad has no row, the buttons are
/// stored then.
void TastenbelegungSpeichern(const std::string& datenbankPfad, const std::string& schemaName,
                             const VarTastenbelegung& bild);

/// Stores which element of `Option1` was chosen; nothing happens when the `Schema` has no row. Throws
/// LaufzeitFehler.
void FunktionSpeichern(const std::string& datenbankPfad, const std::string& schemaName, int index);
