// SPDX-License-Identifier: GPL-3.0-or-later
// spur_ruhe COUNT [SEED]: plays so many random traces, each by a run that always polls and by one that rests
// while nothing can change, and compares; prints the first trace on which they differ, and exits 1. Rests
// that leave out nothing are a failure, too.
#include "tests/spur/Spieler.h"
#include "tests/spur/Zufallsspur.h"

#include <cstdlib>
#include <iostream>

namespace {

namespace fs = std::filesystem;

constexpr int EINGABEN = 50;

fs::path leereDatenbank() {
    return fs::read_symlink("/proc/self/exe").parent_path() / "Belegung.twk";
}

struct Bilanz {
    std::uint64_t ausgelassene = 0;
    std::uint64_t ereignisse = 0;
    int abgebrochene = 0;
};

/// Whether both runs of the trace are alike.
bool gleich(std::uint32_t saat, Bilanz& bilanz) {
    const auto spur = zufallsspur(saat, EINGABEN);
    const auto szenario = szenarienLesen(spur).front();
    const auto immer = spielen(szenario, leereDatenbank(), Pollart::Immer);
    const auto ruhend = spielen(szenario, leereDatenbank(), Pollart::Ruhend);
    bilanz.ausgelassene += ruhend.ausgelassene;
    bilanz.ereignisse += immer.ereignisse.size();
    bilanz.abgebrochene += immer.fehler ? 1 : 0;
    const auto unterschied = ruheunterschied(immer, ruhend);
    if (!unterschied.empty())
        std::cout << "# seed " << saat << ": " << unterschied << '\n' << spur;
    return unterschied.empty();
}

} // namespace

int main(int anzahl, char** worte) {
    const int spuren = anzahl > 1 ? std::atoi(worte[1]) : 0;
    const auto saat = static_cast<std::uint32_t>(anzahl > 2 ? std::atoi(worte[2]) : 1);
    if (spuren <= 0) {
        std::cerr << "usage: spur_ruhe COUNT [SEED]\n";
        return 2;
    }
    Bilanz bilanz;
    for (int i = 0; i < spuren; ++i)
        if (!gleich(saat + static_cast<std::uint32_t>(i), bilanz))
            return 1;
    std::cout << spuren << " traces from seed " << saat << ": " << bilanz.ereignisse << " events, "
              << bilanz.abgebrochene << " runs stopped by an error, " << bilanz.ausgelassene
              << " calls of timers left out\n";
    return bilanz.ausgelassene > 0 && bilanz.ereignisse > 0 ? 0 : 1;
}
