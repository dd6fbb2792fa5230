// spur FILE...          plays trace files and compares; prints the first difference of each, exits 1 on any
// spur --zeige FILE...  prints what comes out instead
#include "tests/spur/Spieler.h"

#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

namespace fs = std::filesystem;

fs::path leereDatenbank() {
    return fs::read_symlink("/proc/self/exe").parent_path() / "Belegung.twk";
}

std::string inhalt(const char* datei) {
    std::ifstream strom(datei, std::ios::binary);
    if (!strom)
        throw Szenariofehler("can't be read");
    std::ostringstream text;
    text << strom.rdbuf();
    return text.str();
}

void zeigen(const Spurergebnis& ergebnis) {
    for (const auto& ereignis : ergebnis.ereignisse)
        std::cout << ereignis.zeit.count() << ' ' << ereignis.text << '\n';
    if (ergebnis.fehler)
        std::cerr << "stopped by error " << *ergebnis.fehler << ": " << ergebnis.fehlertext << '\n';
}

bool stimmt(const char* datei, bool nurZeigen) {
    try {
        const auto szenario = szenarioLesen(inhalt(datei));
        const auto ergebnis = spielen(szenario, leereDatenbank());
        if (nurZeigen) {
            zeigen(ergebnis);
            return true;
        }
        const auto text = unterschied(szenario, ergebnis);
        if (!text.empty())
            std::cout << datei << ": " << text << '\n';
        return text.empty();
    } catch (const std::exception& fehler) {
        std::cout << datei << ": " << fehler.what() << '\n';
        return false;
    }
}

} // namespace

int main(int anzahl, char** worte) {
    const bool nurZeigen = anzahl > 1 && std::strcmp(worte[1], "--zeige") == 0;
    const int erste = nurZeigen ? 2 : 1;
    if (anzahl <= erste) {
        std::cerr << "usage: spur [--zeige] FILE...\n";
        return 2;
    }
    int falsche = 0;
    for (int i = erste; i < anzahl; ++i)
        falsche += stimmt(worte[i], nurZeigen) ? 0 : 1;
    if (!nurZeigen)
        std::cout << anzahl - erste - falsche << " passed, " << falsche << " failed\n";
    return falsche ? 1 : 0;
}
