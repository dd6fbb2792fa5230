// SPDX-License-Identifier: GPL-3.0-or-later
// Finds out how much an axis trembles while nobody moves it, and where it rests then.
//
// The raw values of a tick each, in quarters of 25. An axis rests through four quarters in a row, 0.5 s,
// where
//
//   all 100 values lie within WEITE, and
//   the means of the quarters lie within 16 + (what the values lie within) / 12
//
// A quarter that is part of any such four counts, once: the distance of each of its values from the mean of
// the four goes to `zittern`, that mean to `ruhe`. The second condition is what a slow pull fails: noise that
// spreads over some range leaves the means of 25 values within a fraction of it, a pull carries them along.
// One of up to 50 units a second (where hardly anything trembles) or 200 (where it trembles by ± 300) passes,
// so that a centre that drifts with the temperature rests. So does a thumb that holds still for so long, with
// its tremor: in a band of that width a line is crossed unwanted there, too.
#pragma once

#include "formats/Streudaten.h"

#include <array>
#include <cstdint>

/// One axis.
class Rohruhe {
public:
    static constexpr int VIERTEL = 25; ///< ticks
    static constexpr std::int32_t WEITE = 2048;

    /// The raw value in the next tick.
    void takt(std::int32_t roh, Streudaten::Achsenruhe& ruhe) {
        proben_[stelle_] = roh;
        auto& viertel = viertel_[stelle_ / VIERTEL];
        viertel.kleinste = roh < viertel.kleinste ? roh : viertel.kleinste;
        viertel.groesste = roh > viertel.groesste ? roh : viertel.groesste;
        viertel.summe += roh;
        ++stelle_;
        if (stelle_ % VIERTEL == 0)
            viertelEndet(ruhe);
    }
    /// The same value in so many ticks, in hardly more time than in some.
    void takte(std::int32_t roh, std::uint64_t anzahl, Streudaten::Achsenruhe& ruhe);
    /// What comes now does not follow what was.
    void vonVorn() { *this = {}; }

private:
    struct Viertel {
        std::int32_t kleinste = INT32_MAX;
        std::int32_t groesste = INT32_MIN;
        std::int32_t summe = 0;
        bool gezaehlt = false;
    };
    static constexpr unsigned VIERTELZAHL = 4;

    void viertelEndet(Streudaten::Achsenruhe& ruhe);
    bool ruht() const;
    bool haelt(std::int32_t roh) const;
    void zaehlen(unsigned nummer, std::int32_t mittel, Streudaten::Achsenruhe& ruhe) const;

    std::array<std::int32_t, VIERTELZAHL * VIERTEL> proben_{}; // in the place of the oldest comes the newest
    std::array<Viertel, VIERTELZAHL> viertel_{};
    unsigned stelle_ = 0;
    unsigned volle_ = 0; // quarters
};
