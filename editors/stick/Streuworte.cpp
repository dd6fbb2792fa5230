// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Streuworte.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace {

using Achse = Streurechnung::Achse;

/// With a decimal comma.
std::string zahl(double wert, int stellen) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", stellen, wert);
    std::string worte = text.data();
    std::ranges::replace(worte, '.', ',');
    return worte;
}

/// "0 %" is for nothing at all.
std::string prozent(double anteil) {
    const double wert = anteil * 100;
    if (wert > 0 && wert < 0.05)
        return "unter 0,1 %";
    return zahl(wert, wert == 0 ? 0 : 1) + " %";
}

std::string dauer(double sekunden) {
    return sekunden < 90 ? zahl(sekunden, 0) + " s" : zahl(sekunden / 60, 0) + " min";
}

std::string band(const Streurechnung& rechnung, Achse achse) {
    return "(± " + std::to_string(std::lround(*rechnung.rauschen(achse))) + ")";
}

/// "2026-11-22 11.36.05" as "vom 22.11.2026, 11:36 Uhr".
std::string vomZeitpunkt(const std::string& zeitpunkt) {
    const auto teil = [&](std::size_t stelle, std::size_t laenge) {
        return zeitpunkt.substr(stelle, laenge);
    };
    return "vom " + teil(8, 2) + "." + teil(5, 2) + "." + teil(0, 4) + ", " + teil(11, 2) + ":" +
           teil(14, 2) + " Uhr";
}

std::string mitschnittworte(const Wegprobe& probe) {
    using Stand = Wegprobe::Stand;
    switch (probe.stand) {
    case Stand::Ohne:
        break;
    case Stand::Wartet:
        return " – der letzte Mitschnitt wird nachgespielt";
    case Stand::Unbrauchbar:
        return " – der Mitschnitt " + vomZeitpunkt(probe.zeitpunkt) + " ließ sich nicht nachspielen";
    case Stand::Da:
        return probe.zaehlende()
                   ? ", Eintritte aus " + dauer(probe.weg->sekunden()) + " Mitschnitt " +
                         vomZeitpunkt(probe.zeitpunkt)
                   : " – im Mitschnitt " + vomZeitpunkt(probe.zeitpunkt) + " kommt diese Ebene nicht vor";
    }
    return "";
}

std::string eintritte(int anzahl) {
    return std::to_string(anzahl) + (anzahl == 1 ? " Eintritt" : " Eintritte");
}

/// The two bands beside a line, from left to right or from top to bottom.
std::array<int, 2> baender(const Feldgitter& gitter, const Linienzug::Griff& griff) {
    const auto mitte = gitter.mitte();
    switch (griff.richtung) {
    case richtung::LINKS:
        return {mitte.spalte - griff.slot, mitte.spalte - griff.slot + 1};
    case richtung::RECHTS:
        return {mitte.spalte + griff.slot - 1, mitte.spalte + griff.slot};
    case richtung::OBEN:
        return {mitte.zeile - griff.slot, mitte.zeile - griff.slot + 1};
    default:
        return {mitte.zeile + griff.slot - 1, mitte.zeile + griff.slot};
    }
}

std::vector<Gitterplatz> probefelder(const Linienprobe& probe) {
    const Feldgitter gitter(probe.jetzt);
    const auto hier = gitter.platz(BereichFestlegen(probe.jetzt, probe.wo.x, probe.wo.y).anker);
    std::vector<Gitterplatz> felder;
    for (const auto& griff : probe.griffe)
        for (const int band : baender(gitter, griff)) {
            const auto feld = gitter.begrenzt(schnittachse(griff.richtung) == Streurechnung::X
                                                  ? Gitterplatz{band, hier.zeile}
                                                  : Gitterplatz{hier.spalte, band});
            if (std::ranges::find(felder, feld) == felder.end())
                felder.push_back(feld);
        }
    return felder;
}

} // namespace

std::string streuworte(const Streurechnung::Feldstreuung& streuung) {
    if (streuung.anteil == 0 && streuung.eintritte == 0)
        return "hier war der Stick nie";
    std::string worte =
        prozent(streuung.anteil) + " der Zeit · " + zahl(streuung.jeMinute, 1) + " Eintritte je Minute";
    if (streuung.median)
        worte += " · Median " + zahl(*streuung.median, 2) + " s";
    return worte;
}

std::optional<std::string> linienworte(const Streurechnung& rechnung, std::size_t richtung,
                                       std::int32_t linie) {
    const auto achse = schnittachse(richtung);
    if (!rechnung.linieImRauschen(achse, linie))
        return std::nullopt;
    return "Diese Linie liegt im Rauschen " + band(rechnung, achse);
}

std::vector<std::string> rauschworte(const Streurechnung& rechnung, const Linienebene& linien,
                                     const Gitterplatz& platz) {
    const Feldgitter gitter(linien);
    const auto feld = gitter.feld(platz).rechteck;
    struct Rand {
        Achse achse;
        const char* name;
        bool linie; ///< and not the edge of the plane
        std::int64_t ort;
    };
    const std::array<Rand, 4> raender{{
        {Streurechnung::X, "links", platz.spalte > 0, feld.links},
        {Streurechnung::X, "rechts", platz.spalte + 1 < gitter.spalten(), feld.links + feld.breite},
        {Streurechnung::Y, "oben", platz.zeile > 0, feld.oben},
        {Streurechnung::Y, "unten", platz.zeile + 1 < gitter.zeilen(), feld.oben + feld.hoehe},
    }};
    std::vector<std::string> worte;
    for (const auto& rand : raender)
        if (rand.linie && rechnung.linieImRauschen(rand.achse, static_cast<std::int32_t>(rand.ort)))
            worte.push_back(std::string("Linie ") + rand.name + " im Rauschen " + band(rechnung, rand.achse));
    for (const auto& [achse, von, laenge] : {std::tuple{Streurechnung::X, feld.links, feld.breite},
                                             std::tuple{Streurechnung::Y, feld.oben, feld.hoehe}})
        if (rechnung.schmal(achse, von, von + laenge))
            worte.push_back("Feld schmaler als das doppelte Rauschen " + band(rechnung, achse));
    return worte;
}

std::vector<std::string> probeworte(const Streurechnung& rechnung, const Linienprobe& probe,
                                    const Feldauskunft& auskunft) {
    const Feldgitter gitter(probe.jetzt);
    const Feldgitter vorher(probe.gespeichert);
    const auto eintritteMit = [&](const Linienebene& linien, const Gitterplatz& platz) {
        return probe.weg ? probe.weg->eintritte(linien, platz) : rechnung.feld(linien, platz).eintritte;
    };
    std::vector<std::string> zeilen;
    for (const auto& platz : probefelder(probe)) {
        const int jetzt = eintritteMit(probe.jetzt, platz);
        const int bisher = eintritteMit(probe.gespeichert, platz);
        std::string zeile = gitter.name(platz) + ": " + prozent(rechnung.feld(probe.jetzt, platz).anteil) +
                            " der Zeit, " + eintritte(jetzt);
        if (jetzt != bisher)
            zeile += " (bisher " + std::to_string(bisher) + ")";
        zeile += " – " + auskunft.worte(probe.gespeichert, vorher.feld(platz).anker);
        zeilen.push_back(zeile);
    }
    return zeilen;
}

std::string streubildworte(const Streurechnung& rechnung, const Wegprobe& probe) {
    if (rechnung.sekunden() == 0)
        return "Streubild: Auf dieser Ebene wurde noch nicht gespielt" + mitschnittworte(probe);
    std::string worte = "Streubild aus " + dauer(rechnung.sekunden());
    if (!probe.zaehlende() && rechnung.wegsekunden() < rechnung.sekunden())
        worte += ", Eintritte aus den letzten " + dauer(rechnung.wegsekunden());
    return worte + mitschnittworte(probe);
}
