// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/axes/Achsenwahl.h"

#include "base/Rundung.h"

#include <algorithm>

namespace {

constexpr double ACHSENLAENGE = 65535;

constexpr const char* LINKS = AUSWAHLEN[0];
constexpr const char* RECHTS = AUSWAHLEN[1];
constexpr const char* Z_ACHSE = AUSWAHLEN[2];
constexpr const char* SCHUBREGLER = AUSWAHLEN[3];
constexpr const char* WAAGRECHT = RICHTUNGEN[0];
constexpr const char* SENKRECHT = RICHTUNGEN[1];
constexpr const char* EGAL = "";

// Each control of the pad has a counter; one that is fully assigned has come down from 3 to 0.
enum Zaehler : std::size_t { LINKER_STICK, RECHTER_STICK, SCHUB, ZAEHLER };
constexpr int ZAEHLERSTART = 3;

struct Abzug {
    std::string_view auswahl;
    std::string_view richtung;
    Zaehler zaehler;
    int minus;
};
constexpr std::array<Abzug, 6> ABZUEGE{{{LINKS, WAAGRECHT, LINKER_STICK, 1},
                                        {LINKS, SENKRECHT, LINKER_STICK, 2},
                                        {RECHTS, WAAGRECHT, RECHTER_STICK, 1},
                                        {RECHTS, SENKRECHT, RECHTER_STICK, 2},
                                        {SCHUBREGLER, EGAL, SCHUB, 2},
                                        {Z_ACHSE, EGAL, SCHUB, 1}}};

} // namespace

Achsenauswahl auswahlZu(std::string_view schluessel) {
    if (schluessel.starts_with("Z1"))
        return {Z_ACHSE, ""};
    if (schluessel.starts_with("Z2"))
        return {SCHUBREGLER, ""};
    const bool links = schluessel.starts_with('l');
    if (!links && !schluessel.starts_with('r'))
        return {};
    const char* richtung = schluessel.ends_with('x') ? WAAGRECHT : schluessel.ends_with('y') ? SENKRECHT : "";
    return {links ? LINKS : RECHTS, richtung};
}

bool istSchub(std::string_view auswahl) {
    return auswahl == Z_ACHSE || auswahl == SCHUBREGLER;
}

bool istVollstaendig(const std::array<Achsenauswahl, ACHSEN>& tabelle) {
    std::array<int, ZAEHLER> zaehler;
    zaehler.fill(ZAEHLERSTART);
    for (const auto& zeile : tabelle)
        for (const auto& abzug : ABZUEGE)
            if (zeile.Auswahl == abzug.auswahl &&
                (abzug.richtung == EGAL || zeile.Richtung == abzug.richtung))
                zaehler[abzug.zaehler] -= abzug.minus;
    return std::ranges::all_of(zaehler, [](int stand) { return stand == 0; });
}

int balkenwert(std::uint32_t wert, int maximum) {
    return gerundet(std::min<double>(wert, ACHSENLAENGE) / (ACHSENLAENGE / 100) * (maximum / 100.0));
}
