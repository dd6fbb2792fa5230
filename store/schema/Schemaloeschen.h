// SPDX-License-Identifier: GPL-3.0-or-later
// Removes a `Schema`: its rows in all eight tables, the pictures that the stick editors left of it, and what
// its runs have counted.
//
// A part that is missing never stops the deletion. The rows go in one transaction, all or none, then the
// pictures; what was missing is told when all is done, in the order of the tables.
#pragma once

#include "store/db/Datenbank.h"

#include <functional>
#include <string>
#include <string_view>

/// How the user is spoken to.
struct Loeschdialog {
    /// Asks a question under a title; true for yes.
    std::function<bool(std::string_view frage, std::string_view titel)> fragen;
    /// Tells that a part was not there.
    std::function<void(std::string_view meldung)> melden;
    /// Whether the deletion is to go on, once it takes long.
    Fortgang weiter;
};

/// Asks whether the `Schema` is to go, and deletes it on a yes. Throws as SchemaLoeschen.
void SchemaLoeschenFragen(const std::string& datenbankPfad, const std::string& bilderPfad,
                          const std::string& schemaName, const Loeschdialog& dialog);

/// Deletes the `Schema` and its pictures; these stay where another `Schema` has the same name but for the
/// case of its letters, as they are its pictures, too. What was counted goes in any case: no other `Schema`
/// has part in that. The name is a copy: the original may change while messages are open. Throws
/// LaufzeitFehler; nothing has changed then.
void SchemaLoeschen(const std::string& datenbankPfad, const std::string& bilderPfad, std::string schemaName,
                    const std::function<void(std::string_view)>& melden, const Fortgang& weiter = {});

/// Deletes the pictures of the three layers, "<name>0L.bmp" to "<name>2R.bmp" in any case of the letters, in
/// the folder `bilderPfad`. Those that are missing or can't be deleted stay without a word.
void StickBilderLoeschen(const std::string& bilderPfad, const std::string& schemaName);
