// SPDX-License-Identifier: GPL-3.0-or-later
// spur_mitschnitt COUNT [SEED]: so many random plays of a minute, each by a run that is recorded on a clock
// that comes late now and then; each record is played again and must bring the same. Prints the first that
// does not, and exits 1. Every third record begins in the middle.
#include "tests/spur/Aufnahme.h"
#include "tests/spur/Spieler.h"
#include "tests/spur/Zufallsspur.h"

#include <cstdlib>
#include <iostream>

namespace {

namespace fs = std::filesystem;

constexpr int EINGABEN = 500; // about a minute
constexpr std::chrono::seconds KURZ{15};

fs::path leereDatenbank() {
    return fs::read_symlink("/proc/self/exe").parent_path() / "Belegung.twk";
}

struct Bilanz {
    std::size_t ereignisse = 0; ///< of the records
    int mitten = 0;
    int stockende = 0;
    int abgebrochene = 0;
};

Aufnahmeart aufnahmeart(std::uint32_t saat) {
    Aufnahmeart art;
    art.saat = saat;
    art.stockungen = saat % 4 == 0 ? 0 : static_cast<int>(saat % 40);
    if (saat % 3 == 1)
        art.grenzen.dauer = KURZ;
    return art;
}

bool gleich(std::uint32_t saat, Bilanz& bilanz) {
    auto szenario = szenarienLesen(zufallsspur(saat, EINGABEN)).front();
    if (saat % 5 == 0)
        szenario.sql.emplace_back("UPDATE tblTastatur SET btn7 = '1,x,0-0-0'"); // stops a run
    const auto aufnahme = aufnehmen(szenario, leereDatenbank(), aufnahmeart(saat));
    std::string text;
    try {
        const auto mitschnitt = szenarienLesen(aufnahme.text).front();
        const auto gespielt = spielen(mitschnitt, leereDatenbank());
        text = unterschied(mitschnitt, gespielt);
        for (std::size_t i = 0; text.empty() && i < gespielt.ereignisse.size(); ++i)
            if (gespielt.ereignisse[i] != mitschnitt.erwartet[i])
                text = "event " + std::to_string(i + 1) + " comes at another time";
        bilanz.ereignisse += mitschnitt.erwartet.size();
        bilanz.abgebrochene += mitschnitt.fehler ? 1 : 0;
    } catch (const std::exception& fehler) {
        text = fehler.what();
    }
    bilanz.mitten += aufnahme.text.find("\n0 lauf\n") != std::string::npos ? 1 : 0;
    bilanz.stockende += aufnahme.text.find(" spaet ") != std::string::npos ? 1 : 0;
    if (!text.empty())
        std::cout << "# seed " << saat << ": " << text << '\n' << aufnahme.text;
    return text.empty();
}

} // namespace

int main(int anzahl, char** worte) {
    const int spiele = anzahl > 1 ? std::atoi(worte[1]) : 0;
    const auto saat = static_cast<std::uint32_t>(anzahl > 2 ? std::atoi(worte[2]) : 1);
    if (spiele <= 0) {
        std::cerr << "usage: spur_mitschnitt COUNT [SEED]\n";
        return 2;
    }
    Bilanz bilanz;
    for (int i = 0; i < spiele; ++i)
        if (!gleich(saat + static_cast<std::uint32_t>(i), bilanz))
            return 1;
    std::cout << spiele << " records from seed " << saat << ": " << bilanz.ereignisse << " events, "
              << bilanz.mitten << " from the middle of a run, " << bilanz.stockende << " with late ticks, "
              << bilanz.abgebrochene << " with an error\n";
    return bilanz.ereignisse > 0 && bilanz.mitten > 0 && bilanz.abgebrochene > 0 && bilanz.stockende > 0 ? 0
                                                                                                         : 1;
}
