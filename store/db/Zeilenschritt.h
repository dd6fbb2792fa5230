// SPDX-License-Identifier: GPL-3.0-or-later
// What one act of the user has changed in the rows of a database, as values: it can be taken back and made
// again. Database::alsSchritt makes one of all that the act writes; it holds what was written and nothing of
// the rest of the tables, so that it costs what the act costs, however large they are.
//
//     Zeilenschritt schritt;
//     datenbank.alsSchritt(&schritt, [&] { ... });      // the act, one transaction
//     schritt.zuruecknehmen(datenbank);                 // as it was before, one transaction
//     schritt.wiederholen(datenbank);                   // as the act has left it
// What works on the database is in Zeilenwendung.cpp: the step itself stands below the connection that makes
// it.
//
// A step is bound to rows by their place in the file (row id) and checks their whole content: where one is
// not as the step has left it, others have changed it since, and nothing is written. What others do to rows
// that the step has not touched is no matter to it.
#pragma once

#include "store/db/Zelle.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Database;
class Zeilenmitschrift;
struct Tabelle;
enum class Dateiteil;

/// A row that was laid again at another place, because others have laid one at its own meanwhile.
struct Zeilenumzug {
    Dateiteil teil;
    std::string tabelle;
    std::int64_t alt;
    std::int64_t neu;
    bool operator==(const Zeilenumzug&) const = default;
};

class Zeilenschritt {
public:
    /// Whether it has changed nothing.
    bool leer() const;

    /// Makes the rows as they were before the step, or as it has left them, in one transaction of
    /// `datenbank`. Throws 3197 where a row is not as the step has left it (or found it), where its table has
    /// other columns now, and where others have laid a row with its unique key; else as Recordset::Update and
    /// Database::inEinerTransaktion. Nothing has changed then, the step neither.
    ///
    /// Rows that are laid again get their old places, unless others have taken these. Then they get new ones,
    /// above `ueber` and all that is in the table; the step goes on with these, and other steps that know
    /// the rows are to be told by umziehen.
    ///
    /// A step that was made on two files needs a connection that has both open, in the same order.
    std::vector<Zeilenumzug> zuruecknehmen(Database& datenbank, std::int64_t ueber = 0);
    std::vector<Zeilenumzug> wiederholen(Database& datenbank, std::int64_t ueber = 0);

    void umziehen(const std::vector<Zeilenumzug>& umzuege);
    /// The highest row id that it knows; 0 for none.
    std::int64_t hoechsteZeile() const;
    /// Gives the text `alt` in the column `spalte` the value `neu`, in all tables that have one of that name:
    /// others have done the same in the file.
    void ersetzen(std::string_view spalte, const std::string& alt, const std::string& neu);
    /// Makes one step of this and a later one. False where the later one has not found the rows as this has
    /// left them; then nothing has changed.
    bool anfuegen(const Zeilenschritt& spaeterer);

    /// About what it takes in memory.
    std::size_t bytes() const;

private:
    friend class Zeilenmitschrift;
    using Bild = std::optional<Zeilenbild>; ///< none: there is no row

    /// One that was only looked at, as a witness, is the same before and after.
    struct Zeile {
        std::int64_t ort;
        Bild vorher;
        Bild nachher;
    };
    struct Tabellenteil {
        Dateiteil teil;
        std::string tabelle;
        std::vector<std::string> spalten;
        std::vector<Zeile> zeilen; ///< ascending
    };
    struct Wendung;

    std::vector<Zeilenumzug> wenden(Database& datenbank, Bild Zeile::*von, Bild Zeile::*nach,
                                    std::int64_t ueber);
    Tabellenteil* teilVon(const Tabellenteil& gesuchter);

    std::vector<Tabellenteil> tabellen_;
};
