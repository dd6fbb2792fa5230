// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Wegrechnung.h"

#include "editors/stick/Streurechnung.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <utility>

namespace {

constexpr std::int32_t STELLEN = 65536; // on an axis

/// Whether each place of an axis lies in a band. Between two lines one place tells of all.
std::vector<char> stellenIm(const Linienebene& linien, std::array<std::size_t, 2> richtungen,
                            const auto& imBand) {
    std::vector<std::int32_t> wechsel{0, STELLEN};
    for (const auto& zeile : linien)
        for (const auto richtung : richtungen)
            for (const auto ort : {zeile[richtung], zeile[richtung] + 1})
                wechsel.push_back(std::clamp(ort, 0, STELLEN));
    std::ranges::sort(wechsel);
    std::vector<char> stellen(STELLEN);
    for (std::size_t i = 0; i + 1 < wechsel.size(); ++i)
        if (wechsel[i] < wechsel[i + 1])
            std::fill(stellen.begin() + wechsel[i], stellen.begin() + wechsel[i + 1], imBand(wechsel[i]));
    return stellen;
}

} // namespace

Wegrechnung::Wegrechnung(std::vector<Wegstelle> weg) : weg_(std::move(weg)) {}

double Wegrechnung::sekunden() const {
    const auto takte =
        std::transform_reduce(weg_.begin(), weg_.end(), std::uint64_t{0}, std::plus(),
                              [](const Wegstelle& stelle) { return std::uint64_t{stelle.takte}; });
    return static_cast<double>(takte) * Streurechnung::SEKUNDEN_JE_TAKT;
}

int Wegrechnung::eintritte(const Linienebene& linien, const Gitterplatz& platz) const {
    const Feldgitter gitter(linien);
    const auto quer = stellenIm(linien, {richtung::LINKS, richtung::RECHTS}, [&](std::int32_t x) {
        return gitter.platz(BereichFestlegen(linien, x, 0).anker).spalte == platz.spalte;
    });
    const auto hoch = stellenIm(linien, {richtung::OBEN, richtung::UNTEN}, [&](std::int32_t y) {
        return gitter.platz(BereichFestlegen(linien, 0, y).anker).zeile == platz.zeile;
    });
    int eintritte = 0;
    bool draussen = false;
    for (const auto& stelle : weg_) {
        const bool drin = stelle.takte > 0 && quer[stelle.x] && hoch[stelle.y];
        eintritte += drin && draussen;
        draussen = stelle.takte > 0 && !drin;
    }
    return eintritte;
}
