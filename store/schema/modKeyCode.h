// SPDX-License-Identifier: GPL-3.0-or-later
// Key codes and their German names, from tblKeyCode.
#pragma once

#include <map>
#include <string>

class Database;

/// The name of a code in decimal: "" for one without a name or whose name can't be read, the code itself when
/// the statement fails.
std::string TastennameLesen(Database& datenbank, const std::string& code);

/// Looks a key up. With `richtung` 0, `wert` is a code in decimal and its name comes back: "" for a code
/// without a name or whose name can't be read, `wert` itself when the statement fails (an apostrophe in
/// `wert`). Otherwise `wert` is a
/// name and its code comes back; a failing statement then throws, as does a name without a row (3021). A
/// database that cannot be opened throws in both directions.
std::string KeyCodeSuchen(const std::string& datenbankPfad, int richtung, const std::string& wert);

/// The names of all keys, by their codes in decimal. Throws LaufzeitFehler.
std::map<std::string, std::string> TastennamenLesen(const std::string& datenbankPfad);
