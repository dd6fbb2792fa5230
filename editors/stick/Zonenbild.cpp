// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Zonenbild.h"

#include "editors/stick/Ebenenmass.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

// Widths in device-independent pixels. A symbol of a narrow field gets a thinner pen, or it would be a blot.
constexpr double DICKSTER_STIFT = 3;
constexpr double DUENNSTER_STIFT = 1;
constexpr double STIFT_JE_SYMBOL = 1.0 / 10;
constexpr double HOF_JE_STIFT = 0.9; // of the pen's width, on each side
constexpr double MIT_HOF = 1 + 2 * HOF_JE_STIFT;

// From here on a colour counts as light, and a dark halo sets it off.
constexpr double HELL = 0.6;

/// Places of the plane as places of a picture of `groesse`.
class Abbildung {
public:
    explicit Abbildung(QSizeF groesse)
        : x_(groesse.width() / EBENENENDE), y_(groesse.height() / EBENENENDE) {}
    QPointF punkt(Ebenenpunkt p) const { return {p.x * x_, p.y * y_}; }
    /// The same in all directions, within the field whichever way the plane is stretched.
    double radius(double laenge) const { return laenge * std::min(x_, y_); }

private:
    double x_;
    double y_;
};

QPainterPath weg(const Symbolkreis& kreis, const Abbildung& abbildung) {
    const double radius = abbildung.radius(std::max(0, kreis.radius));
    QPainterPath pfad;
    pfad.addEllipse(abbildung.punkt(kreis.mitte), radius, radius);
    return pfad;
}
QPainterPath weg(const Symbolrechteck& rechteck, const Abbildung& abbildung) {
    QPainterPath pfad;
    pfad.addRect(
        QRectF(abbildung.punkt(rechteck.obenLinks), abbildung.punkt(rechteck.untenRechts)).normalized());
    return pfad;
}
QPainterPath weg(const Symbolkreuz& kreuz, const Abbildung& abbildung) {
    QPainterPath pfad;
    for (const auto& [von, bis] : {kreuz.fallend, kreuz.steigend}) {
        pfad.moveTo(abbildung.punkt(von));
        pfad.lineTo(abbildung.punkt(bis));
    }
    return pfad;
}

double helligkeit(const QColor& farbe) {
    return 0.299 * farbe.redF() + 0.587 * farbe.greenF() + 0.114 * farbe.blueF();
}

double stiftbreite(const QPainterPath& pfad) {
    const auto umfang = pfad.boundingRect();
    return std::clamp(std::min(umfang.width(), umfang.height()) * STIFT_JE_SYMBOL, DUENNSTER_STIFT,
                      DICKSTER_STIFT);
}

QPainterPath pfadVon(const Feldsymbol& symbol, const Abbildung& abbildung) {
    return std::visit([&](const auto& form) { return weg(form, abbildung); }, symbol.form);
}

} // namespace

QColor symbolfarbwert(std::int32_t farbe) {
    return QColor(farbe & 0xff, (farbe >> 8) & 0xff, (farbe >> 16) & 0xff);
}

void symbolMalen(QPainter& maler, const Feldsymbol& symbol, QSizeF groesse) {
    maler.setRenderHint(QPainter::Antialiasing);
    const auto pfad = pfadVon(symbol, Abbildung(groesse));
    const auto farbe = symbolfarbwert(symbol.farbe);
    const double breite = stiftbreite(pfad);
    // The halo sets the symbol off from whatever picture lies below it.
    const QColor hof = helligkeit(farbe) < HELL ? QColor(255, 255, 255, 230) : QColor(0, 0, 0, 200);
    for (const auto& [stiftfarbe, staerke] : {std::pair{hof, breite * MIT_HOF}, std::pair{farbe, breite}}) {
        maler.setPen(QPen(stiftfarbe, staerke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        maler.drawPath(pfad);
    }
}

void Zonenbild::loeschen() {
    symbole_.clear();
    stellen_.clear();
}

void Zonenbild::zeichnen(const Feldsymbol& symbol) {
    const auto [da, neu] = stellen_.try_emplace(symbol, symbole_.end());
    if (neu)
        da->second = symbole_.insert(symbole_.end(), symbol);
    else
        symbole_.splice(symbole_.end(), symbole_, da->second);
}

void Zonenbild::malen(QPainter& maler, QSizeF groesse) const {
    for (const auto& symbol : symbole_)
        symbolMalen(maler, symbol, groesse);
}

std::vector<QRectF> Zonenbild::flaechen(QSizeF groesse) const {
    std::vector<QRectF> flaechen;
    for (const auto& symbol : symbole_)
        flaechen.push_back(symbolumriss(symbol, groesse));
    return flaechen;
}

QRectF symbolumriss(const Feldsymbol& symbol, QSizeF groesse) {
    constexpr double GLAETTUNG = 1; // which may colour one pixel more
    const auto pfad = pfadVon(symbol, Abbildung(groesse));
    const double rand = stiftbreite(pfad) * MIT_HOF / 2 + GLAETTUNG;
    return pfad.boundingRect().adjusted(-rand, -rand, rand, rand);
}

std::vector<Feldsymbol> symbolunterschied(const std::vector<Feldsymbol>& eine,
                                          const std::vector<Feldsymbol>& andere) {
    const auto geteilt = [](const std::vector<Feldsymbol>& liste, const std::vector<Feldsymbol>& vergleich,
                            std::vector<Feldsymbol>& fehlende) {
        const std::set<Feldsymbol> dort(vergleich.begin(), vergleich.end());
        std::vector<Feldsymbol> gemeinsame;
        for (const auto& symbol : liste)
            (dort.contains(symbol) ? gemeinsame : fehlende).push_back(symbol);
        return gemeinsame;
    };
    std::vector<Feldsymbol> unterschied;
    const auto vorher = geteilt(eine, andere, unterschied);
    if (vorher == geteilt(andere, eine, unterschied))
        return unterschied;
    unterschied = eine;
    unterschied.insert(unterschied.end(), andere.begin(), andere.end());
    return unterschied;
}
