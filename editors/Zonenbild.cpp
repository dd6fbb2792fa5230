#include "editors/Zonenbild.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

constexpr double PLANGROESSE = 65535;

// Widths in device-independent pixels. A symbol of a narrow field gets a thinner pen, or it would be a blot.
constexpr double DICKSTER_STIFT = 3;
constexpr double DUENNSTER_STIFT = 1;
constexpr double STIFT_JE_SYMBOL = 1.0 / 10;
constexpr double HOF_JE_STIFT = 0.9; // of the pen's width, on each side

// From here on a colour counts as light, and a dark halo sets it off.
constexpr double HELL = 0.6;

/// Places of the plane as places of a picture of `groesse`.
class Abbildung {
public:
    explicit Abbildung(QSizeF groesse)
        : x_(groesse.width() / PLANGROESSE), y_(groesse.height() / PLANGROESSE) {}
    QPointF punkt(Ebenenpunkt p) const { return {p.x * x_, p.y * y_}; }
    QSizeF strecke(double laenge) const { return {laenge * x_, laenge * y_}; }

private:
    double x_;
    double y_;
};

QPainterPath weg(const Symbolkreis& kreis, const Abbildung& abbildung) {
    const auto mitte = abbildung.punkt(kreis.mitte);
    const auto radius = abbildung.strecke(std::max(0, kreis.radius));
    QPainterPath pfad;
    pfad.addEllipse(mitte, radius.width(), radius.height());
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

void symbolMalen(QPainter& maler, const Feldsymbol& symbol, const Abbildung& abbildung) {
    const auto pfad = std::visit([&](const auto& form) { return weg(form, abbildung); }, symbol.form);
    const auto farbe = symbolfarbwert(symbol.farbe);
    const double breite = stiftbreite(pfad);
    // The halo sets the symbol off from whatever picture lies below it.
    const QColor hof = helligkeit(farbe) < HELL ? QColor(255, 255, 255, 230) : QColor(0, 0, 0, 200);
    for (const auto& [stiftfarbe, staerke] :
         {std::pair{hof, breite * (1 + 2 * HOF_JE_STIFT)}, std::pair{farbe, breite}}) {
        maler.setPen(QPen(stiftfarbe, staerke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        maler.drawPath(pfad);
    }
}

} // namespace

QColor symbolfarbwert(std::int32_t farbe) {
    return QColor(farbe & 0xff, (farbe >> 8) & 0xff, (farbe >> 16) & 0xff);
}

void Zonenbild::loeschen() {
    symbole_.clear();
    veraltet_ = true;
}

void Zonenbild::zeichnen(const Feldsymbol& symbol) {
    symbole_.push_back(symbol);
    veraltet_ = true;
}

const QImage& Zonenbild::bild(QSize groesse, qreal dichte) const {
    const QSize punkte(static_cast<int>(std::lround(groesse.width() * dichte)),
                       static_cast<int>(std::lround(groesse.height() * dichte)));
    const bool passt = bild_.size() == punkte && bild_.devicePixelRatio() == dichte;
    if (passt && !veraltet_)
        return bild_;
    if (!passt) {
        bild_ = QImage(punkte, QImage::Format_ARGB32_Premultiplied);
        bild_.setDevicePixelRatio(dichte);
    }
    veraltet_ = false;
    if (bild_.isNull())
        return bild_;
    bild_.fill(Qt::transparent);
    QPainter maler(&bild_);
    maler.setRenderHint(QPainter::Antialiasing);
    const Abbildung abbildung(QSizeF(punkte) / dichte);
    for (const auto& symbol : symbole_)
        symbolMalen(maler, symbol, abbildung);
    return bild_;
}
