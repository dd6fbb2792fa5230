// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/Streuzaehler.h"

#include <algorithm>
#include <limits>
#include <new>

namespace {

using Aufenthalt = Streudaten::Aufenthalt;

constexpr std::int32_t HOECHSTWERT = 65535;
constexpr auto LAENGSTER = std::numeric_limits<decltype(Aufenthalt::takte)>::max();

constexpr std::int32_t begrenzt(std::int32_t wert) {
    return std::clamp(wert, 0, HOECHSTWERT);
}

constexpr std::uint16_t zelleVon(const Stickposition& ort) {
    constexpr int BREITE = (HOECHSTWERT + 1) / Streudaten::ZELLEN;
    return static_cast<std::uint16_t>(begrenzt(ort.y) / BREITE * Streudaten::ZELLEN +
                                      begrenzt(ort.x) / BREITE);
}

} // namespace

// The system hands out large pieces that are zero already, and holds no page of them before it is touched.
template <class T> Streuzaehler::Feld<T> Streuzaehler::genullt(std::size_t anzahl) {
    auto* feld = static_cast<T*>(std::calloc(anzahl, sizeof(T)));
    if (!feld)
        throw std::bad_alloc();
    return Feld<T>(feld);
}

Streuzaehler::Streuzaehler(Streuhoerer* hoerer) : hoerer_(hoerer) {
    for (auto& stick : sticks_)
        for (auto& bogen : stick.boegen) {
            bogen.takte = genullt<std::uint32_t>(Streudaten::RASTERFELDER);
            bogen.weg = genullt<Aufenthalt>(Streudaten::WEG_HOECHSTENS);
        }
}

void Streuzaehler::takt(Stickseite seite, int ebene, const Stickposition& ort,
                        const std::optional<Stickposition>& roh) {
    auto& stick = sticks_[static_cast<std::size_t>(seite)];
    if (!roh) {
        stick.letzter.reset();
        return;
    }
    const Stand stand{ebene, ort, zelleVon(ort), {begrenzt(roh->x), begrenzt(roh->y)}};
    const bool folgt = stick.letzter && stick.letzter->ebene == ebene;
    if (!folgt)
        for (auto& ruhe : stick.ruhe)
            ruhe.vonVorn();
    stick.letzter = stand;
    auto& bogen = stick.boegen[static_cast<std::size_t>(ebene)];
    bogen.bleiben(stand.zelle, 1, !folgt);
    if (hoerer_)
        hoerer_->takte(seite, ebene, ort, 1, folgt);
    stick.ruhe[0].takt(stand.roh.x, bogen.achsen[0]);
    stick.ruhe[1].takt(stand.roh.y, bogen.achsen[1]);
}

void Streuzaehler::nocheinmal(std::uint64_t anzahl) {
    for (const auto seite : {Stickseite::Links, Stickseite::Rechts}) {
        auto& stick = sticks_[static_cast<std::size_t>(seite)];
        if (!stick.letzter || anzahl == 0)
            continue;
        auto& bogen = stick.boegen[static_cast<std::size_t>(stick.letzter->ebene)];
        bogen.bleiben(stick.letzter->zelle, anzahl, false);
        if (hoerer_)
            hoerer_->takte(seite, stick.letzter->ebene, stick.letzter->ort, anzahl, true);
        stick.ruhe[0].takte(stick.letzter->roh.x, anzahl, bogen.achsen[0]);
        stick.ruhe[1].takte(stick.letzter->roh.y, anzahl, bogen.achsen[1]);
    }
}

void Streuzaehler::unterbrechen() {
    for (auto& stick : sticks_)
        stick.letzter.reset();
}

void Streuzaehler::Bogen::anfuegen(Aufenthalt aufenthalt) {
    weg[aufenthalte++ % Streudaten::WEG_HOECHSTENS] = aufenthalt;
}

void Streuzaehler::Bogen::bleiben(std::uint16_t zelle, std::uint64_t anzahl, bool unterbrochen) {
    Streudaten::mehren(takte[zelle], anzahl);
    if (unterbrochen && aufenthalte > 0)
        anfuegen({zelle, 0});
    while (anzahl > 0) {
        auto& letzter = weg[(aufenthalte - 1) % Streudaten::WEG_HOECHSTENS];
        if (unterbrochen || letzter.zelle != zelle || letzter.takte == LAENGSTER) {
            anfuegen({zelle, 1});
            --anzahl;
            unterbrochen = false;
            continue;
        }
        const auto platz = static_cast<std::uint64_t>(LAENGSTER - letzter.takte);
        const auto dazu = std::min(platz, anzahl);
        letzter.takte = static_cast<std::uint16_t>(letzter.takte + dazu);
        anzahl -= dazu;
    }
}

Streudaten Streuzaehler::Bogen::daten() const {
    Streudaten daten;
    daten.takte.assign(takte.get(), takte.get() + Streudaten::RASTERFELDER);
    const auto anzahl = std::min<std::uint64_t>(aufenthalte, Streudaten::WEG_HOECHSTENS);
    daten.weg.reserve(anzahl);
    for (auto i = aufenthalte - anzahl; i < aufenthalte; ++i)
        daten.weg.push_back(weg[i % Streudaten::WEG_HOECHSTENS]);
    daten.achsen = achsen;
    return daten;
}

std::vector<Streulauf> Streuzaehler::ergebnis() const {
    std::vector<Streulauf> laeufe;
    for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
        for (int ebene = 0; ebene < EBENEN; ++ebene) {
            const auto& bogen =
                sticks_[static_cast<std::size_t>(seite)].boegen[static_cast<std::size_t>(ebene)];
            if (bogen.aufenthalte > 0)
                laeufe.push_back({seite, ebene, bogen.daten()});
        }
    return laeufe;
}
