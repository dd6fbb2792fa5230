// spur FILE...          plays trace files and compares; prints the first difference of each, exits 1 on any
// spur --streng FILE... the same; an error that stops a run and is not named by the file is a difference, too
// spur --zeige FILE...  prints what comes out instead
#include "tests/spur/Spieler.h"

#include <fstream>
#include <iostream>
#include <map>
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

enum class Weise { Vergleichen, Streng, Zeigen };

bool stimmt(const char* datei, Weise weise) {
    try {
        const auto szenario = szenarioLesen(inhalt(datei));
        const auto ergebnis = spielen(szenario, leereDatenbank());
        if (weise == Weise::Zeigen) {
            zeigen(ergebnis);
            return true;
        }
        const auto text =
            unterschied(szenario, ergebnis,
                        weise == Weise::Streng ? UnerwarteterFehler::Falsch : UnerwarteterFehler::Gilt);
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
    const std::map<std::string_view, Weise> weisen{{"--streng", Weise::Streng}, {"--zeige", Weise::Zeigen}};
    const auto gewaehlt = anzahl > 1 ? weisen.find(worte[1]) : weisen.end();
    const auto weise = gewaehlt != weisen.end() ? gewaehlt->second : Weise::Vergleichen;
    const int erste = gewaehlt != weisen.end() ? 2 : 1;
    if (anzahl <= erste) {
        std::cerr << "usage: spur [--streng | --zeige] FILE...\n";
        return 2;
    }
    int falsche = 0;
    for (int i = erste; i < anzahl; ++i)
        falsche += stimmt(worte[i], weise) ? 0 : 1;
    if (weise != Weise::Zeigen)
        std::cout << anzahl - erste - falsche << " passed, " << falsche << " failed\n";
    return falsche ? 1 : 0;
}
