// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Streuansicht.h"

#include "editors/stick/Stickebene.h"

#include <algorithm>
#include <utility>

namespace {

using Achse = Streurechnung::Achse;

/// Across an axis, from one edge of the plane to the other.
QRectF quer(Achse achse, double von, double bis) {
    return achse == Streurechnung::X ? QRectF(von, 0, bis - von, EBENENENDE)
                                     : QRectF(0, von, EBENENENDE, bis - von);
}

void streifenMarken(const Streurechnung& rechnung, const Linienebene& linien,
                    std::vector<Rauschmarke>& marken) {
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        for (int slot = ERSTE_LINIENZEILE; slot <= LETZTE_LINIENZEILE; ++slot) {
            const auto achse = schnittachse(d);
            const auto linie = linien[static_cast<std::size_t>(slot)][d];
            if (linie < 1 || !rechnung.linieImRauschen(achse, linie))
                continue;
            const double band = *rechnung.rauschen(achse);
            marken.push_back({quer(achse, linie - band, linie + band)});
        }
}

void schmaleMarken(const Streurechnung& rechnung, const Linienebene& linien,
                   std::vector<Rauschmarke>& marken) {
    const Feldgitter gitter(linien);
    const auto marke = [&](Achse achse, std::int64_t von, std::int64_t laenge) {
        const auto bis = std::min<std::int64_t>(von + laenge, EBENENENDE);
        if (rechnung.schmal(achse, von, von + laenge) && bis > von)
            marken.push_back({quer(achse, double(von), double(bis)), true});
    };
    for (int spalte = 0; spalte < gitter.spalten(); ++spalte) {
        const auto feld = gitter.feld({spalte, 0}).rechteck;
        marke(Streurechnung::X, feld.links, feld.breite);
    }
    for (int zeile = 0; zeile < gitter.zeilen(); ++zeile) {
        const auto feld = gitter.feld({0, zeile}).rechteck;
        marke(Streurechnung::Y, feld.oben, feld.hoehe);
    }
}

} // namespace

std::vector<Rauschmarke> rauschmarken(const Streurechnung& rechnung, const Linienebene& linien) {
    std::vector<Rauschmarke> marken;
    streifenMarken(rechnung, linien, marken);
    schmaleMarken(rechnung, linien, marken);
    return marken;
}

Streuansicht::Streuansicht(Stickebene& ebene, const Justierstand& stand, Quelle quelle)
    : ebene_(ebene), stand_(stand), quelle_(std::move(quelle)) {}

void Streuansicht::schalten(bool an) {
    if (std::exchange(an_, an) == an)
        return;
    if (an)
        return lesen();
    rechnung_.reset();
    ebene_.streuungSetzen({});
    linienZeigen();
}

void Streuansicht::lesen() {
    if (!an_)
        return;
    gelesener_ = quelle_.stempel(stand_.EditorEbene); // first: what comes meanwhile is read the next time
    rechnung_.emplace(quelle_.lesen(stand_.EditorEbene));
    ebene_.streuungSetzen(rechnung_->daten().takte);
    gezeigte_.reset();
    linienZeigen();
}

bool Streuansicht::nachsehen() {
    if (!an_ || quelle_.stempel(stand_.EditorEbene) == gelesener_)
        return false;
    lesen();
    return true;
}

void Streuansicht::linienZeigen() {
    if (!rechnung_) {
        if (std::exchange(gezeigte_, std::nullopt))
            ebene_.rauschenZeigen({});
        return;
    }
    const auto& linien = stand_.ebene();
    if (std::exchange(gezeigte_, linien) != linien)
        ebene_.rauschenZeigen(rauschmarken(*rechnung_, linien));
}
