// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Tastenwahl.h"

#include "editors/stick/Ebenenmass.h"

#include <algorithm>

bool Tastenwahl::druecken(Ebenentaste taste, bool umschalt) {
    if (taste == Ebenentaste::Schliessen)
        return schliessen();
    if (flaeche_.fraAktionGezeigt())
        return taste == Ebenentaste::Waehlen && schliessen();
    beginnen();
    switch (taste) {
    case Ebenentaste::Waehlen:
        waehlen(platz());
        return true;
    case Ebenentaste::Aktion:
        aktionOeffnen(platz());
        return true;
    default:
        break;
    }
    if (umschalt)
        return schieben(taste);
    gehen((taste == Ebenentaste::Rechts) - (taste == Ebenentaste::Links),
          (taste == Ebenentaste::Unten) - (taste == Ebenentaste::Oben));
    return true;
}

// --- the mark ---

void Tastenwahl::beginnen() {
    gezeigt_ = true;
    if (!platz_)
        platz_ = gewaehlt().value_or(Feldgitter(stand_.ebene()).mitte());
}

std::optional<Gitterplatz> Tastenwahl::marke() const {
    return gezeigt_ ? std::optional(platz()) : std::nullopt;
}

// The lines may have become fewer since.
Gitterplatz Tastenwahl::platz() const {
    return Feldgitter(stand_.ebene()).begrenzt(*platz_);
}

void Tastenwahl::gehen(int spalten, int zeilen) {
    const auto von = platz();
    platz_ = Feldgitter(stand_.ebene()).begrenzt({von.spalte + spalten, von.zeile + zeilen});
}

// --- fields ---

std::optional<Gitterplatz> Tastenwahl::gewaehlt() const {
    if (!flaeche_.RechteckBGezeigt())
        return std::nullopt;
    const auto& klick = stand_.Klickposition;
    return Feldgitter(stand_.ebene()).platz(BereichFestlegen(stand_.ebene(), klick.x, klick.y).anker);
}

/// A point in the marked field, off its lines.
Stickposition Tastenwahl::mitte() const {
    const auto r = Feldgitter(stand_.ebene()).feld(platz()).rechteck;
    const auto zwischen = [](std::int64_t anfang, std::int64_t laenge) {
        const auto ende = std::min<std::int64_t>(anfang + laenge, EBENENENDE);
        return static_cast<std::int32_t>((anfang + ende) / 2);
    };
    return {zwischen(r.links, r.breite), zwischen(r.oben, r.hoehe)};
}

void Tastenwahl::wahlWechseln() {
    const auto wo = mitte();
    zug_.feldWaehlen(wo.x, wo.y);
}

void Tastenwahl::waehlen(const Gitterplatz& platz) {
    if (flaeche_.fraAktionGezeigt())
        return;
    platz_ = platz;
    if (markierteGewaehlt()) {
        aktionOeffnen(platz);
        return;
    }
    if (flaeche_.RechteckBGezeigt())
        wahlWechseln(); // only one can be chosen: a first press drops it
    wahlWechseln();
}

void Tastenwahl::aktionOeffnen(const Gitterplatz& platz) {
    if (flaeche_.fraAktionGezeigt())
        return;
    platz_ = platz;
    if (!markierteGewaehlt())
        waehlen(platz);
    const auto wo = mitte();
    if (flaeche_.RechteckBGezeigt())
        flaeche_.fraAktionOeffnen(wo.x, wo.y);
}

bool Tastenwahl::schliessen() {
    const auto& klick = stand_.Klickposition;
    if (flaeche_.fraAktionGezeigt() || flaeche_.RechteckBGezeigt())
        zug_.feldWaehlen(klick.x, klick.y);
    else if (zug_.haelt())
        zug_.loslassen();
    else
        return false;
    return true;
}

// --- lines ---

bool Tastenwahl::schieben(Ebenentaste taste) {
    const bool inX = taste == Ebenentaste::Links || taste == Ebenentaste::Rechts;
    const int schritt = taste == Ebenentaste::Rechts || taste == Ebenentaste::Unten ? 1 : -1;
    const Feldgitter gitter(stand_.ebene());
    if (const auto linie = inX ? gitter.linieBeiX(platz(), schritt) : gitter.linieBeiY(platz(), schritt))
        zug_.schieben(linie->richtung, linie->slot, schritt * LINIENSCHRITT);
    return true;
}
