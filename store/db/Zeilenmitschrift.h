// SPDX-License-Identifier: GPL-3.0-or-later
// Takes down, while a transaction writes, what its rows were before: makes a Zeilenschritt of it at the end.
#pragma once

#include "store/db/Tabelle.h"
#include "store/db/Zeilenschritt.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

class Zeilenmitschrift {
public:
    /// Gives all columns of a row as it is now; nothing where there is none.
    using Leser = std::function<std::optional<Zeilenbild>(const Tabelle&, std::int64_t zeile)>;

    explicit Zeilenmitschrift(Leser leser) : leser_(std::move(leser)) {}

    /// Comes before a row is changed or deleted. What it was before the first time is what counts.
    void vorher(Dateiteil teil, const std::shared_ptr<const Tabelle>& tabelle, std::int64_t zeile);
    /// A row was laid.
    void neu(Dateiteil teil, const std::shared_ptr<const Tabelle>& tabelle, std::int64_t zeile);
    /// The row belongs to the step also where nothing of it changes.
    void bezeugen(Dateiteil teil, const std::shared_ptr<const Tabelle>& tabelle, std::int64_t zeile);

    /// The step, once all is written.
    Zeilenschritt schritt() const;

private:
    struct Eintrag {
        std::optional<Zeilenbild> vorher;
        bool bezeugt = false;
    };
    struct Blatt {
        Dateiteil teil{};
        std::shared_ptr<const Tabelle> tabelle;
        std::map<std::int64_t, Eintrag> zeilen;
    };
    Blatt& blatt(Dateiteil teil, const std::shared_ptr<const Tabelle>& tabelle);

    Leser leser_;
    std::map<std::string, Blatt> blaetter_; ///< by the table's name in a statement
};
