// SPDX-License-Identifier: GPL-3.0-or-later
// Removes a `Schema`: its rows in all eight tables and what belongs to it beside the database; and gives it
// back, as long as the program has not ended.
//
// A part that is missing never stops the deletion. The rows go in one transaction, all or none, then the
// rest; what was missing is told when all is done, in the order of the tables. A note (Beiwerkvermerk) lets
// the next start end what a crash has left half done, in both directions.
#pragma once

#include "store/schema/Schemabeiwerk.h"
#include "store/schema/Schemaschritt.h"

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

/// A `Schema` that was deleted.
class GeloeschtesSchema {
public:
    GeloeschtesSchema() = default;

    /// Whether all of it is kept.
    bool zurueckgebbar() const { return beiwerk_ && !zeilen_.leer(); }
    /// Lays rows, pictures, axes and what was counted as they were. Throws 3197 where there is something else
    /// of its name now, and LaufzeitFehler as a transaction and as beiwerkZuruecklegen; nothing has changed
    /// then.
    void zurueckgeben(const Fortgang& weiter = {});

private:
    friend void SchemaLoeschen(const Schemaplatz& platz, std::string schemaName,
                               const std::function<void(std::string_view)>& melden, const Fortgang& weiter,
                               GeloeschtesSchema* geloeschtes);
    Schemaplatz platz_;
    std::string schemaName_;
    Schemaschritt zeilen_;
    std::optional<Beiwerkablage> beiwerk_;
};

/// Asks whether the `Schema` is to go, and deletes it on a yes. Throws as SchemaLoeschen.
void SchemaLoeschenFragen(const Schemaplatz& platz, const std::string& schemaName, const Loeschdialog& dialog,
                          GeloeschtesSchema* geloeschtes = nullptr);

/// Deletes the `Schema`; its pictures stay where another `Schema` has the same name but for the case of its
/// letters, as they are its pictures, too. `geloeschtes`, if there is one, gets it. The name is a copy: the
/// original may change while messages are open. Throws LaufzeitFehler; nothing has changed then.
void SchemaLoeschen(const Schemaplatz& platz, std::string schemaName,
                    const std::function<void(std::string_view)>& melden, const Fortgang& weiter = {},
                    GeloeschtesSchema* geloeschtes = nullptr);
