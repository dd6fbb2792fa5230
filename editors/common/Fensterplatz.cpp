// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Fensterplatz.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <cstdint>
#include <cstdlib>

namespace {

using Flaeche = std::int64_t;

Flaeche ueberdeckt(const QRect& eines, const QRect& anderes) {
    const auto schnitt = eines & anderes;
    return Flaeche{schnitt.width()} * schnitt.height();
}

/// How bad a place is, the weightiest first.
struct Makel {
    Flaeche oeffner; ///< of it covered
    Flaeche andere;
    int weg; ///< from the place right of the opener
    auto operator<=>(const Makel&) const = default;
};

Makel makel(const QRect& fenster, const QRect& oeffner, const std::vector<QRect>& andere) {
    Flaeche summe = 0;
    for (const auto& eines : andere)
        summe += ueberdeckt(fenster, eines);
    const QPoint weg = fenster.topLeft() - QPoint(oeffner.right() + 1, oeffner.top());
    return {ueberdeckt(fenster, oeffner), summe, weg.manhattanLength()};
}

/// A side of a rectangle along one axis.
struct Strecke {
    int anfang;
    int laenge;
};

// What is covered changes its slope only where edges meet: the least of it is found at one of these.
std::vector<int> kanten(Strecke frei, int laenge, const std::vector<Strecke>& feste) {
    const int letzte = std::max(frei.anfang, frei.anfang + frei.laenge - laenge);
    std::vector<int> orte{frei.anfang, letzte};
    for (const auto& feste_ : feste)
        for (const int kante : {feste_.anfang, feste_.anfang + feste_.laenge})
            for (const int ort : {kante, kante - laenge})
                orte.push_back(std::clamp(ort, frei.anfang, letzte));
    std::ranges::sort(orte);
    const auto doppelte = std::ranges::unique(orte);
    orte.erase(doppelte.begin(), doppelte.end());
    return orte;
}

} // namespace

QPoint fensterplatz(const QRect& frei, QSize groesse, const QRect& oeffner,
                    const std::vector<QRect>& andere) {
    std::vector<Strecke> waagrecht{{oeffner.x(), oeffner.width()}};
    std::vector<Strecke> senkrecht{{oeffner.y(), oeffner.height()}};
    for (const auto& eines : andere) {
        waagrecht.push_back({eines.x(), eines.width()});
        senkrecht.push_back({eines.y(), eines.height()});
    }
    const auto spalten = kanten({frei.x(), frei.width()}, groesse.width(), waagrecht);
    const auto zeilen = kanten({frei.y(), frei.height()}, groesse.height(), senkrecht);
    QPoint bester = frei.topLeft();
    auto kleinster = makel({bester, groesse}, oeffner, andere);
    for (const int x : spalten)
        for (const int y : zeilen)
            if (const auto einer = makel({{x, y}, groesse}, oeffner, andere); einer < kleinster) {
                kleinster = einer;
                bester = {x, y};
            }
    return bester;
}

QPoint hereingeholt(const QRect& frei, const QRect& fenster) {
    const auto rest = frei.size() - fenster.size();
    return {std::clamp(fenster.x(), frei.x(), frei.x() + std::max(0, rest.width())),
            std::clamp(fenster.y(), frei.y(), frei.y() + std::max(0, rest.height()))};
}

bool gleichGross(QSize eine, QSize andere) {
    const auto mehr = eine - andere;
    return std::abs(mehr.width()) <= 1 && std::abs(mehr.height()) <= 1;
}

QSize schirmfoermig(QSize entwurf, QSize schirm, QSize platz) {
    const double verhaeltnis = double(schirm.width()) / schirm.height();
    const double hoehe = std::sqrt(double(entwurf.width()) * entwurf.height() / verhaeltnis);
    const double breite = hoehe * verhaeltnis;
    const double anteil = std::min({1.0, platz.width() / breite, platz.height() / hoehe});
    // Not a pixel more than there is.
    return QSize(static_cast<int>(std::lround(breite * anteil)),
                 static_cast<int>(std::lround(hoehe * anteil)))
        .boundedTo(platz);
}
