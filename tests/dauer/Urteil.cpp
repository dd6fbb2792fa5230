// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/dauer/Urteil.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>

namespace {

constexpr double WARMLAUFSTUNDEN = 0.0501; // the first three minutes of a process
constexpr double QUANTIL = 1.645;          // of the normal distribution at 95 %

double wert(const Messzeile& zeile, Groesse groesse) {
    return zeile.werte.at(static_cast<std::size_t>(groesse));
}

std::vector<double> steigungen(const std::vector<Messzeile>& zeilen, Groesse groesse) {
    std::vector<double> alle;
    for (std::size_t spaeter = 1; spaeter < zeilen.size(); ++spaeter)
        for (std::size_t frueher = 0; frueher < spaeter; ++frueher)
            if (const double dauer = zeilen[spaeter].stunden - zeilen[frueher].stunden; dauer > 0)
                alle.push_back((wert(zeilen[spaeter], groesse) - wert(zeilen[frueher], groesse)) / dauer);
    std::ranges::sort(alle);
    return alle;
}

double median(const std::vector<double>& sortierte) {
    const auto mitte = sortierte.size() / 2;
    return sortierte.size() % 2 == 1 ? sortierte[mitte] : (sortierte[mitte - 1] + sortierte[mitte]) / 2;
}

template <class... Worte> std::string satz(const char* muster, Worte... worte) {
    std::array<char, 256> platz{};
    std::snprintf(platz.data(), platz.size(), muster, worte...);
    return platz.data();
}

Befund wachstumsbefund(const std::vector<Messzeile>& zeilen, Groesse groesse) {
    const auto& [name, einheit, erlaubt] = MESSGROESSEN.at(static_cast<std::size_t>(groesse));
    const auto steig = steigung(zeilen, groesse);
    const bool verstoss = steig.mindestens > erlaubt;
    return {verstoss, satz("process %d, %s: %+.1f %s an hour (surely at least %+.1f), allowed %.1f: %s",
                           zeilen.front().leben, name, steig.je_stunde, einheit, steig.mindestens, erlaubt,
                           verstoss ? "GROWS" : "ok")};
}

std::vector<Messzeile> ohneWarmlauf(const std::vector<Messzeile>& zeilen) {
    const double bis = zeilen.front().stunden + WARMLAUFSTUNDEN;
    const auto warm =
        std::ranges::find_if(zeilen, [bis](const Messzeile& eine) { return eine.stunden > bis; });
    return {warm, zeilen.end()};
}

Befund zaehlbefund(int anzahl, const char* was) {
    return {anzahl > 0, satz("%s: %d%s", was, anzahl, anzahl > 0 ? ", allowed 0" : "")};
}

} // namespace

Steigung steigung(const std::vector<Messzeile>& zeilen, Groesse groesse) {
    const auto alle = steigungen(zeilen, groesse);
    const auto paare = static_cast<double>(alle.size());
    const auto n = static_cast<double>(zeilen.size());
    const double streuung = QUANTIL * std::sqrt(n * (n - 1) * (2 * n + 5) / 18);
    const double rang = std::floor((paare - streuung) / 2);
    return {median(alle),
            rang < 1 ? -std::numeric_limits<double>::infinity() : alle[static_cast<std::size_t>(rang) - 1]};
}

std::vector<Befund> urteilen(const std::vector<Messzeile>& zeilen, const Vorfaelle& vorfaelle) {
    std::vector<Befund> befunde{zaehlbefund(vorfaelle.abstuerze, "crashes"),
                                zaehlbefund(vorfaelle.haenger, "hangs of 5 s"),
                                zaehlbefund(vorfaelle.unruhen, "forms that did not close"),
                                zaehlbefund(vorfaelle.haengende, "keys and buttons left down"),
                                zaehlbefund(vorfaelle.schaeden, "damaged files"),
                                zaehlbefund(vorfaelle.verweigerte, "starts without a window")};
    std::map<int, std::vector<Messzeile>> leben;
    for (const auto& zeile : zeilen)
        leben[zeile.leben].push_back(zeile);
    bool beurteilt = false;
    for (const auto& [nummer, alle] : leben) {
        const auto warme = ohneWarmlauf(alle);
        if (warme.size() < MINDESTZEILEN)
            continue;
        beurteilt = true;
        for (std::size_t i = 0; i < MESSGROESSEN.size(); ++i)
            befunde.push_back(wachstumsbefund(warme, static_cast<Groesse>(i)));
    }
    if (!beurteilt)
        befunde.push_back({false, "growth: not judged, no process has rows enough"});
    return befunde;
}
