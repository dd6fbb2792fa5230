// SPDX-License-Identifier: GPL-3.0-or-later
// What the counts of a stick's way say, in words for the user: of a field, of a line in the noise, of the
// fields on both sides of a line that is being tried.
#pragma once

#include "editors/stick/Feldauskunft.h"
#include "editors/stick/Linienzug.h"
#include "editors/stick/Streurechnung.h"
#include "editors/stick/Wegrechnung.h"

#include <optional>
#include <string>
#include <vector>

/// Of a field: "4,2 % der Zeit · 12,5 Eintritte je Minute · Median 0,18 s". The last only where it is known,
/// and a field in which the stick never was says that.
std::string streuworte(const Streurechnung::Feldstreuung& streuung);

/// "Diese Linie liegt im Rauschen (± 310)"; nothing for one that does not.
std::optional<std::string> linienworte(const Streurechnung& rechnung, std::size_t richtung,
                                       std::int32_t linie);

/// What noise does to a field: "Linie rechts im Rauschen (± 310)", "Schmaler als das doppelte Rauschen
/// (± 310)".
std::vector<std::string> rauschworte(const Streurechnung& rechnung, const Linienebene& linien,
                                     const Gitterplatz& platz);

/// The last record of the `Schema`, while a line is tried: by it entries are counted to the unit.
struct Wegprobe {
    enum class Stand {
        Ohne, ///< there is none
        Wartet,
        Unbrauchbar, ///< it does not play again
        Da
    };
    Stand stand = Stand::Ohne;
    const Wegrechnung* weg = nullptr; ///< of the layer, when it is there
    std::string zeitpunkt{};          ///< of its saving, "2026-11-22 11.36.05"

    /// By what entries are counted; null where the counts of runs have to do.
    const Wegrechnung* zaehlende() const { return weg && weg->sekunden() > 0 ? weg : nullptr; }
};

/// A line that is being tried: the fields on both sides of each line in the hand, in the row or column of
/// `wo`, each with its time, its entries (before: with the lines as they are stored) and what they would have
/// pressed.
struct Linienprobe {
    Linienebene jetzt;
    Linienebene gespeichert; ///< the actions hang on these
    std::vector<Linienzug::Griff> griffe;
    Stickposition wo;
    const Wegrechnung* weg = nullptr; ///< by which entries are counted; null: by the counts
};
std::vector<std::string> probeworte(const Streurechnung& rechnung, const Linienprobe& probe,
                                    const Feldauskunft& auskunft);

/// What the picture is made of, and by what entries are counted while a line is tried.
std::string streubildworte(const Streurechnung& rechnung, const Wegprobe& probe = {});
