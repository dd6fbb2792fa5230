// SPDX-License-Identifier: GPL-3.0-or-later
// What the counts of a stick's way say of the fields that lines cut, and of the lines: how long the stick was
// in a field, how often it came and for how long, which lines lie in its trembling.
//
// Times come from the grid. A cell that a line cuts is parted by area, so that a share follows a line without
// steps. Entries and stays come from the way, where a cell belongs to the field of its middle: an entry is a
// stay behind one in another field; what stands behind a break is none. A stay has a length when both ends of
// it are known.
//
// The noise of an axis is what 99 % of its deviations at rest stay below; linear within a class, unknown
// below two seconds of rest. A line lies in it when, of the time at rest on its axis, at least 1 % was spent
// nearer to the line than the noise; a cell that is in part so near counts by that part. A band between two
// lines is narrow when it is less than twice the noise across.
#pragma once

#include "editors/stick/Feldgitter.h"
#include "formats/Streudaten.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

class Streurechnung {
public:
    enum Achse : std::size_t { X = 0, Y = 1 };

    static constexpr double SEKUNDEN_JE_TAKT = 0.005;
    static constexpr std::uint64_t RUHE_MINDESTENS = 400; ///< ticks
    static constexpr double RAUSCHANTEIL = 0.99;
    static constexpr double RUHEANTEIL = 0.01;

    explicit Streurechnung(Streudaten daten);

    const Streudaten& daten() const { return daten_; }
    /// Time in the grid, and on the way that is kept, in seconds.
    double sekunden() const { return stellen_.back() * SEKUNDEN_JE_TAKT; }
    double wegsekunden() const { return static_cast<double>(wegtakte_) * SEKUNDEN_JE_TAKT; }

    struct Feldstreuung {
        double anteil = 0; ///< of all time, 0 to 1
        int eintritte = 0; ///< on the way that is kept
        double jeMinute = 0;
        std::optional<double> median{}; ///< of the stays, in seconds
    };
    Feldstreuung feld(const Linienebene& linien, const Gitterplatz& platz) const;

    /// Half of the band in which the stick trembles at rest, in units; none where it is not known.
    std::optional<double> rauschen(Achse achse) const { return rauschen_[achse]; }
    bool linieImRauschen(Achse achse, std::int32_t linie) const;
    /// Whether what lies between two lines of an axis is less than twice the noise across.
    bool schmal(Achse achse, std::int64_t von, std::int64_t bis) const;

private:
    static constexpr int STUETZEN = Streudaten::ZELLEN + 1;

    void stellenZaehlen();
    double bis(double x, double y) const;
    double ruheBis(Achse achse, double wert) const;

    Streudaten daten_;
    std::vector<double> stellen_; ///< ticks to the left of and above each corner of a cell, row by row
    std::array<std::array<double, STUETZEN>, 2> ruhe_{}; ///< ticks before each edge of a cell
    std::array<std::optional<double>, 2> rauschen_;
    std::uint64_t wegtakte_ = 0;
};

/// The axis that lines of a direction cut.
constexpr Streurechnung::Achse schnittachse(std::size_t richtung) {
    return richtung == richtung::LINKS || richtung == richtung::RECHTS ? Streurechnung::X : Streurechnung::Y;
}
