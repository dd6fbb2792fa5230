// Brings changes of a `Schema` into the database. Each procedure opens the database itself and closes it at
// its end.
#pragma once

#include <string>

/// Stores which element of `Option1` was chosen; nothing happens when the `Schema` has no row. Throws
/// LaufzeitFehler.
void FunktionSpeichern(const std::string& datenbankPfad, const std::string& schemaName, int index);
