// SPDX-License-Identifier: GPL-3.0-or-later
// The fields of a stick's plane as a grid: columns from left to right, rows from top to bottom, each with its
// place, its key and its name.
//
// It is made of the lines as they are and keeps nothing else: made anew it costs less than to keep it right.
#pragma once

#include "editors/stick/Feldsuche.h"

#include <optional>
#include <string>

/// A field by column and row, both from 0.
struct Gitterplatz {
    int spalte = 0;
    int zeile = 0;
    bool operator==(const Gitterplatz&) const = default;
};

/// A line by direction and slot.
struct Linienplatz {
    std::size_t richtung = 0;
    int slot = 0;
    bool operator==(const Linienplatz&) const = default;
};

class Feldgitter {
public:
    explicit Feldgitter(const Linienebene& linien);

    int spalten() const { return x_.vorn + 1 + x_.hinten; }
    int zeilen() const { return y_.vorn + 1 + y_.hinten; }
    int anzahl() const { return spalten() * zeilen(); }
    /// Fields row by row, from 0.
    Gitterplatz platz(int nummer) const { return {nummer % spalten(), nummer / spalten()}; }
    int nummer(const Gitterplatz& platz) const { return platz.zeile * spalten() + platz.spalte; }

    Gitterplatz mitte() const { return {x_.vorn, y_.vorn}; }
    /// Where a field lies; a band whose line is not there counts as the centre band.
    Gitterplatz platz(const Feldanker& anker) const;
    /// The nearest place that there is.
    Gitterplatz begrenzt(const Gitterplatz& platz) const;

    /// Place and key of a field, as a click in it finds them.
    Stickfeld feld(const Gitterplatz& platz) const;
    /// "Mittelfeld", "Feld links", "Feld rechts 2 unten": the bands are counted from the centre outward.
    std::string name(const Gitterplatz& platz) const;

    /// The line that a step from a field moves along an axis: the inner line of its band, and in a centre
    /// band the one at which the step is directed (-1 to the left or up, 1 to the right or down).
    std::optional<Linienplatz> linieBeiX(const Gitterplatz& platz, int schritt) const;
    std::optional<Linienplatz> linieBeiY(const Gitterplatz& platz, int schritt) const;

private:
    /// The bands of an axis: their number before and behind the centre band.
    struct Achse {
        std::size_t fallend;
        std::size_t steigend;
        int vorn;
        int hinten;
    };
    struct Band {
        std::int64_t anfang;
        std::int64_t ende;
        std::size_t richtung;
        std::int32_t anker;
    };

    Achse achse(std::size_t fallend, std::size_t steigend) const;
    int linienzahl(std::size_t richtung) const;
    std::int32_t linie(int slot, std::size_t richtung) const;
    Band band(const Achse& achse, int stelle) const;
    static std::string bandname(const Achse& achse, int stelle);
    int stelle(const Achse& achse, const Feldanker& anker) const;
    static std::optional<Linienplatz> linieBei(const Achse& achse, int stelle, int schritt);

    const Linienebene linien_;
    const Achse x_;
    const Achse y_;
};
