// SPDX-License-Identifier: GPL-3.0-or-later
// What the user has done in a stick editor since it was opened, step by step, on all layers: a line of steps
// and a place in it. Those before the place can be taken back, the last one first; those behind it were taken
// back and can be made again, until a new step takes their place.
#pragma once

#include "editors/stick/Feldgitter.h"
#include "store/db/Zeilenschritt.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

/// A line that a step has moved, made (from 0) or removed (to 0).
struct Linienaenderung {
    Linienplatz platz;
    std::int32_t alt;
    std::int32_t neu;
    bool operator==(const Linienaenderung&) const = default;
};

/// What differs between the lines of a layer.
std::vector<Linienaenderung> linienunterschied(const Linienebene& vorher, const Linienebene& nachher);

/// One act of the user.
struct Stickschritt {
    int ebene = 0;
    std::vector<Linienaenderung> linien{};
    std::string andere{};          ///< what it was where it was nothing with lines, in words
    Zeilenschritt zeilen{};        ///< what it has written; a tick of "1 to 1" writes nothing
    std::int32_t sperreVorher = 0; ///< the mask as the form showed it
    std::int32_t sperreNachher = 0;
    bool gehalten = false; ///< by a key that is held down: goes on with the last one

    /// Whether it is an act by itself, and not only wrote what had been shown before.
    bool benannt() const { return !linien.empty() || !andere.empty(); }
};

class Schrittfolge {
public:
    /// What was taken back is forgotten. A step of a held key goes on with the last one; one without a name
    /// becomes part of the last one.
    void neu(Stickschritt schritt);
    void leeren();

    /// The step that would be taken back or made again; null for none.
    Stickschritt* letzter();
    Stickschritt* naechster();
    /// This has happened in the database; the rows named have other places now.
    void zurueckgenommen(const std::vector<Zeilenumzug>& umzuege);
    void wiederholt(const std::vector<Zeilenumzug>& umzuege);

    /// The `Schema` has another name, in all rows.
    void umbenennen(const std::string& alt, const std::string& neu);
    /// The highest row id that a step knows.
    std::int64_t hoechsteZeile() const;

private:
    bool fortsetzen(const Stickschritt& schritt);
    void begrenzen();
    void umziehen(const std::vector<Zeilenumzug>& umzuege);

    std::deque<Stickschritt> schritte_;
    std::size_t stelle_ = 0; ///< so many of them are done
};
