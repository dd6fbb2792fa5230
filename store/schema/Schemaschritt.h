// SPDX-License-Identifier: GPL-3.0-or-later
// An act on the rows of whole `Schema`s, in one file or in two, that can be taken back as long as nobody has
// written into these rows' tables for these `Schema`s.
//
// A Zeilenschritt alone would not do: it asks only for the rows that the act has changed, and to lay lines
// back under actions that somebody has made since would make something that nobody has ever seen.
#pragma once

#include "store/db/Datenbank.h"
#include "store/db/Zeilenschritt.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class Schemaschritt {
public:
    /// The rows of a `Schema` in some tables.
    struct Bereich {
        bool daneben; ///< in the second file
        std::string schemaName;
        std::vector<std::size_t> tabellen; ///< by their places in schematabellen()
    };

    Schemaschritt() = default;
    /// An act on the file `pfad`, and the one at `daneben` where that is not "". `bereiche` are all that it
    /// may change.
    Schemaschritt(std::string pfad, std::string daneben, std::vector<Bereich> bereiche)
        : pfad_(std::move(pfad)), daneben_(std::move(daneben)), bereiche_(std::move(bereiche)) {}

    /// Whether there is nothing that could be taken back.
    bool leer() const { return gestoert_ || zeilen_.leer(); }

    /// Runs `arbeit` in one transaction of `erste` as a part of the act. `zweite` is the second file, or once
    /// more the first. Where others have written between two parts, the act can't be taken back.
    template <class Arbeit> void tun(Database& erste, Database& zweite, Arbeit&& arbeit) {
        Zeilenschritt neuer;
        std::optional<Stand> danach;
        bool gestoert = false;
        erste.alsSchritt(&neuer, [&] {
            gestoert = danach_ && *danach_ != standVon(erste, zweite);
            arbeit();
            danach = standVon(erste, zweite);
        });
        danach_ = std::move(danach);
        gestoert_ = gestoert_ || gestoert || !zeilen_.anfuegen(neuer);
    }

    /// Makes all rows as they were before the act, in one transaction; `dazu` runs in it, when they are so.
    /// Throws 3197 where others have written since, and as Zeilenschritt; nothing has changed then.
    void zuruecknehmen(const Fortgang& weiter = {}, const std::function<void()>& dazu = {});

private:
    using Stand = std::vector<std::vector<Wert>>; ///< of each table, row by row
    Stand standVon(Database& erste, Database& zweite) const;

    std::string pfad_;
    std::string daneben_;
    std::vector<Bereich> bereiche_;
    Zeilenschritt zeilen_;
    std::optional<Stand> danach_;
    bool gestoert_ = false;
};
