// SPDX-License-Identifier: GPL-3.0-or-later
// Takes a SELECT text of the logic apart, so that only statements of one known shape ever reach the database.
//
// The shape is   SELECT * FROM table [WHERE ...] [ORDER BY ...] [;]   over one table. What stands behind the
// table name is put together anew from its tokens: names behind a dot are quoted (INDEX is a column here and
// a keyword in SQLite), text literals and numbers become parameters. So nothing from inside a literal is ever
// parsed as a statement, and texts that differ only in their values share one prepared statement.
#pragma once

#include "store/db/Wert.h"

#include <string>
#include <string_view>
#include <vector>

struct Auswahl {
    std::string tabelle;     ///< as it is written in the text
    std::string bedingung;   ///< what follows the table name, parameters as ?; empty for a bare table name
    std::vector<Wert> werte; ///< the parameters in their order
    bool geordnet = false;   ///< whether there is an ORDER BY
};

/// Reads a bare table name or a SELECT text. Throws 3075 for anything that does not have the shape.
Auswahl auswahlLesen(std::string_view text);
