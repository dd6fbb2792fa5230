// SPDX-License-Identifier: GPL-3.0-or-later
// The run image of one stick: the lines that cut its plane, and the actions of its fields as one text.
#pragma once

#include "base/Stickseite.h"
#include "formats/Linienliste.h"
#include "store/db/Datenbank.h"
#include "store/schema/Linientabelle.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

struct Sticktabellen {
    std::array<Linienliste, RICHTUNGEN> StickLinien;
    std::string StickAktionen;    ///< text of an Aktionsliste
    std::int32_t StickSperre = 0; ///< bit n: the stick is not evaluated in layer n
    bool zeilenFehlen = false;    ///< a row that was looked for is missing; its default stands in for it
};

/// Reads the tables of a stick for a layer, 0 to 2; a row that is missing reads as that of a new stick.
/// Throws LaufzeitFehler of the store, 13 for a text where a number belongs, 6 for a `StickSperre` beyond 32
/// bits.
Sticktabellen StickTabellenLesen(Database& datenbank, const std::string& schemaName, Stickseite seite,
                                 int Umschalt);

/// The one connection that stays open, from the first load to the end of the process: a change of layer has
/// no time to open a file.
class Stickdatenbank {
public:
    /// A run begins: a file that has been replaced since it was opened, or into which the last run could not
    /// lay its rows, is opened anew at the next use.
    void laufBeginnt();

    /// The open connection to `pfad`. Throws LaufzeitFehler as OpenDatabase does.
    Database& offen(const std::string& pfad);

    /// Reads the tables of a stick for a layer and lays its rows that are missing. Throws as offen and
    /// StickTabellenLesen do; rows that can't be laid are no error.
    Sticktabellen tabellen(const std::string& pfad, const std::string& schemaName, Stickseite seite,
                           int Umschalt);

    /// What has kept the rows of a stick from being laid in this run.
    const std::optional<LaufzeitFehler>& ungelegt(Stickseite seite) const {
        return ungelegt_[static_cast<std::size_t>(seite)];
    }

private:
    /// What tells a file from another one under its name.
    struct Kennung {
        std::uint64_t geraet = 0;
        std::uint64_t nummer = 0;
        std::int64_t zeit = 0;
        bool operator==(const Kennung&) const = default;
    };
    static Kennung kennungVon(const std::string& pfad);

    std::string pfad_;
    Kennung kennung_;
    std::optional<Database> datenbank_;
    std::array<std::optional<LaufzeitFehler>, 2> ungelegt_; ///< by Stickseite
};
