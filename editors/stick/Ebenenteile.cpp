// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Ebenenteile.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <QRgb>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr QRgb LICHTHOF = qRgba(255, 255, 255, 165);
constexpr QRgb LINIENSCHWARZ = qRgb(0, 0, 0);
constexpr QRgb LINIENROT = qRgb(255, 0, 0);
constexpr int SAUM = 175; // how much the line's colour covers beside its middle, of 255

// The strips of a line across, in pixels: halo, seam, middle, seam, halo.
constexpr int LINIENBREITE = 5;

constexpr double PUNKTDURCHMESSER = 90.0 / 11520; // of the plane's height: a small circle at any size

/// The picture of this name, painted by the first who asks for it: dozens of lines and arrows look alike, and
/// painting one takes many times what laying it down does.
template <class Malen> QPixmap gemeinsamesBild(const QString& name, Malen&& malen) {
    QPixmap bild;
    if (!QPixmapCache::find(name, &bild)) {
        bild = malen();
        QPixmapCache::insert(name, bild);
    }
    return bild;
}

} // namespace

QRectF ebenenpixel(const QRectF& einheiten, QSize groesse) {
    const double x = static_cast<double>(groesse.width()) / EBENENENDE;
    const double y = static_cast<double>(groesse.height()) / EBENENENDE;
    return {einheiten.x() * x, einheiten.y() * y, einheiten.width() * x, einheiten.height() * y};
}

// --- Ebenenteil ---

Ebenenteil::Ebenenteil(QWidget* ebene) : QWidget(ebene) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void Ebenenteil::setzen(const QRectF& platz) {
    if (platz == platz_)
        return;
    platz_ = platz;
    legen();
}

void Ebenenteil::legen() {
    const auto* ebene = parentWidget();
    setGeometry(pixel(ebenenpixel(platz_, ebene->size())));
}

// Both edges are rounded, not the lengths, so that neighbours meet whatever the size of the plane. What lies
// far outside the plane is cut near it: widgets have no use for coordinates of any size.
QRect Ebenenteil::pixel(const QRectF& platz) const {
    const auto* ebene = parentWidget();
    const double weit = 2.0 * std::max(ebene->width(), ebene->height()) + 100;
    const auto begrenzt = [weit](double wert) {
        return static_cast<int>(std::lround(std::clamp(wert, -weit, weit)));
    };
    const QPoint von{begrenzt(platz.left()), begrenzt(platz.top())};
    const QPoint bis{begrenzt(platz.right()), begrenzt(platz.bottom())};
    return {von, QSize(std::max(0, bis.x() - von.x()), std::max(0, bis.y() - von.y()))};
}

// --- Ebenenlinie ---

Ebenenlinie::Ebenenlinie(QWidget* ebene, bool senkrecht) : Ebenenteil(ebene), senkrecht_(senkrecht) {}

void Ebenenlinie::ortSetzen(double ort) {
    auto neu = platz();
    senkrecht_ ? neu.moveLeft(ort) : neu.moveTop(ort);
    setzen(neu);
}

void Ebenenlinie::strecken() {
    setzen(senkrecht_ ? QRectF(platz().x(), 0, 0, EBENENENDE) : QRectF(0, platz().y(), EBENENENDE, 0));
}

void Ebenenlinie::faerben(std::int32_t farbe) {
    if (std::exchange(farbe_, farbe) != farbe)
        update();
}

QRect Ebenenlinie::pixel(const QRectF& platz) const {
    auto rechteck = Ebenenteil::pixel(platz);
    const int halb = LINIENBREITE / 2;
    if (senkrecht_)
        return {rechteck.x() - halb, rechteck.y(), LINIENBREITE, rechteck.height() + 1};
    return {rechteck.x(), rechteck.y() - halb, rechteck.width() + 1, LINIENBREITE};
}

namespace {

/// A line from end to end. By hand, as one image: the toolkit hands translucent fills that are this high to
/// other threads, strip by strip, and waiting for those takes longer than all painting, most of all beside a
/// game.
QPixmap linienbild(bool senkrecht, bool rot, QSize groesse, double dichte) {
    const auto aussen = qPremultiply(LICHTHOF);
    const auto kern = rot ? LINIENROT : LINIENSCHWARZ;
    const auto innen = rot ? kern : qPremultiply(qRgba(0, 0, 0, SAUM));
    const std::array<QRgb, LINIENBREITE> streifen{aussen, innen, kern, innen, aussen};
    const auto farbeBei = [&](int pixel) {
        return streifen[std::min(static_cast<std::size_t>(pixel / dichte), streifen.size() - 1)];
    };
    QImage bild((QSizeF(groesse) * dichte).toSize(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < bild.height(); ++y) {
        auto* zeile = reinterpret_cast<QRgb*>(bild.scanLine(y));
        if (senkrecht)
            for (int x = 0; x < bild.width(); ++x)
                zeile[x] = farbeBei(x);
        else
            std::fill_n(zeile, bild.width(), farbeBei(y));
    }
    return QPixmap::fromImage(bild);
}

} // namespace

void Ebenenlinie::paintEvent(QPaintEvent* ereignis) {
    const double dichte = devicePixelRatioF();
    const bool rot = farbe_ == GREIFFARBE;
    const auto bild = gemeinsamesBild(
        QString("Ebenenlinie %1 %2 %3 %4 %5").arg(senkrecht_).arg(rot).arg(width()).arg(height()).arg(dichte),
        [&] { return linienbild(senkrecht_, rot, size(), dichte); });
    const auto teil = ereignis->rect() & rect();
    QPainter(this).drawPixmap(QRectF(teil), bild,
                              {QPointF(teil.topLeft()) * dichte, QSizeF(teil.size()) * dichte});
}

// --- Ebenenpfeil ---

Ebenenpfeil::Ebenenpfeil(QWidget* ebene, double grad) : Ebenenteil(ebene), grad_(grad) {
    setAttribute(Qt::WA_TransparentForMouseEvents, false);
    setMouseTracking(true); // moves go on to the plane, so that a line is not lost when it passes an arrow
    setCursor(Qt::PointingHandCursor);
}

void Ebenenpfeil::mousePressEvent(QMouseEvent* ereignis) {
    emit gedrueckt(ereignis->button());
}

void Ebenenpfeil::enterEvent(QEnterEvent*) {
    update();
}

void Ebenenpfeil::leaveEvent(QEvent*) {
    update();
}

namespace {

void pfeilMalen(QPainter& maler, QSize groesse, double grad, bool unterMaus) {
    maler.setRenderHint(QPainter::Antialiasing);
    maler.translate(QRectF({0, 0}, QSizeF(groesse)).center());
    maler.rotate(grad);
    // The arrow fills a square of 10 by 10 around the middle.
    const double seite = std::max(6, std::min(groesse.width(), groesse.height()));
    maler.scale(seite / 10, seite / 10);
    QPainterPath pfeil;
    pfeil.moveTo(0, -4);
    pfeil.lineTo(3.8, 0.4);
    pfeil.lineTo(1.5, 0.4);
    pfeil.lineTo(1.5, 4);
    pfeil.lineTo(-1.5, 4);
    pfeil.lineTo(-1.5, 0.4);
    pfeil.lineTo(-3.8, 0.4);
    pfeil.closeSubpath();
    maler.setPen(QPen(Qt::white, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    maler.drawPath(pfeil);
    maler.setPen(QPen(Qt::black, 0.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    maler.setBrush(unterMaus ? QColor(255, 150, 0) : QColor(30, 90, 200));
    maler.drawPath(pfeil);
}

QPixmap pfeilbild(QSize groesse, double dichte, double grad, bool unterMaus) {
    QPixmap bild((QSizeF(groesse) * dichte).toSize());
    bild.setDevicePixelRatio(dichte);
    bild.fill(Qt::transparent);
    QPainter maler(&bild);
    pfeilMalen(maler, groesse, grad, unterMaus);
    return bild;
}

} // namespace

void Ebenenpfeil::paintEvent(QPaintEvent*) {
    const double dichte = devicePixelRatioF();
    const auto bild = gemeinsamesBild(QString("Ebenenpfeil %1 %2 %3 %4 %5")
                                          .arg(width())
                                          .arg(height())
                                          .arg(dichte)
                                          .arg(grad_)
                                          .arg(underMouse()),
                                      [&] { return pfeilbild(size(), dichte, grad_, underMouse()); });
    QPainter(this).drawPixmap(0, 0, bild);
}

// --- Ebenenrechteck ---

Ebenenrechteck::Ebenenrechteck(QWidget* ebene, const QColor& farbe, double rundung)
    : Ebenenteil(ebene), farbe_(farbe), rundung_(rundung) {}

void Ebenenrechteck::paintEvent(QPaintEvent* ereignis) {
    constexpr int RAND = 5;
    const int ecke = RAND + static_cast<int>(rundung_);
    // The point moves inside the border most of the time, where there is nothing to draw.
    if (rect().adjusted(ecke, ecke, -ecke, -ecke).contains(ereignis->rect()))
        return;
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const auto rand = QRectF(rect()).adjusted(2, 2, -2, -2);
    const double rundung = std::min(rundung_, std::min(rand.width(), rand.height()) / 4);
    maler.setPen(QPen(QColor::fromRgba(LICHTHOF), 4));
    maler.drawRoundedRect(rand, rundung, rundung);
    maler.setPen(QPen(farbe_, 2));
    maler.drawRoundedRect(rand, rundung, rundung);
}

// --- Ebenenmarke ---

Ebenenmarke::Ebenenmarke(QWidget* ebene) : Ebenenteil(ebene) {}

void Ebenenmarke::paintEvent(QPaintEvent* ereignis) {
    constexpr double ABSTAND = 7; // inside the borders of the chosen field and that of the stick
    constexpr double ECKE = 18;
    const double abstand =
        std::min(ABSTAND, std::min(width(), height()) / 4.0); // fields may be a few pixels wide
    const auto rand = QRectF(rect()).adjusted(abstand, abstand, -abstand, -abstand);
    const double ecke = std::min({ECKE, rand.width() / 3, rand.height() / 3});
    // The point moves inside the border most of the time, where there is nothing to draw.
    if (rand.adjusted(ecke, ecke, -ecke, -ecke).contains(ereignis->rect()))
        return;
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(QPen(Qt::white, 3));
    maler.drawRect(rand);
    maler.setPen(QPen(Qt::black, 3, Qt::DashLine, Qt::FlatCap));
    maler.drawRect(rand);
    QPainterPath ecken;
    for (const bool rechts : {false, true})
        for (const bool unten : {false, true}) {
            const QPointF eck{rechts ? rand.right() : rand.left(), unten ? rand.bottom() : rand.top()};
            ecken.moveTo(eck.x() + (rechts ? -ecke : ecke), eck.y());
            ecken.lineTo(eck);
            ecken.lineTo(eck.x(), eck.y() + (unten ? -ecke : ecke));
        }
    for (const auto& [farbe, breite] : {std::pair{Qt::white, 8}, std::pair{Qt::black, 5}}) {
        maler.setPen(QPen(farbe, breite, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        maler.drawPath(ecken);
    }
}

// --- Rauschstreifen ---

Rauschstreifen::Rauschstreifen(QWidget* ebene) : Ebenenteil(ebene) {}

void Rauschstreifen::zeigen(const Rauschmarke& marke) {
    if (std::exchange(schraffiert_, marke.schraffiert) != marke.schraffiert)
        update();
    setzen(marke.platz);
}

namespace {

/// By hand, as that of a line. Edges and strokes are white beside black, to be seen on any picture.
QPixmap streifenbild(QSize groesse, double dichte, bool schraffiert) {
    constexpr QRgb HAUCH = qRgba(255, 255, 255, 70);
    constexpr QRgb HELLER_STRICH = qRgba(255, 255, 255, 170);
    constexpr QRgb DUNKLER_STRICH = qRgba(0, 0, 0, 170);
    constexpr int ABSTAND = 10; // of strokes
    constexpr int STRICH = 6;   // of the broken edge
    QImage bild((QSizeF(groesse) * dichte).toSize(), QImage::Format_ARGB32_Premultiplied);
    const bool hoch = groesse.height() > groesse.width();
    const auto farbeBei = [&](int x, int y) {
        if (schraffiert) {
            const int phase = (x + y) % ABSTAND;
            return phase == 0 ? DUNKLER_STRICH : phase == 1 ? HELLER_STRICH : 0U;
        }
        const int quer = hoch ? x : y;
        const int laengs = hoch ? y : x;
        const int breite = hoch ? groesse.width() : groesse.height();
        if (quer != 0 && quer != breite - 1)
            return HAUCH;
        return laengs / STRICH % 2 == 0 ? HELLER_STRICH : DUNKLER_STRICH;
    };
    for (int y = 0; y < bild.height(); ++y) {
        auto* zeile = reinterpret_cast<QRgb*>(bild.scanLine(y));
        for (int x = 0; x < bild.width(); ++x)
            zeile[x] = qPremultiply(farbeBei(static_cast<int>(x / dichte), static_cast<int>(y / dichte)));
    }
    return QPixmap::fromImage(bild);
}

} // namespace

void Rauschstreifen::paintEvent(QPaintEvent* ereignis) {
    const double dichte = devicePixelRatioF();
    const auto bild = gemeinsamesBild(
        QString("Rauschstreifen %1 %2 %3 %4").arg(schraffiert_).arg(width()).arg(height()).arg(dichte),
        [&] { return streifenbild(size(), dichte, schraffiert_); });
    const auto teil = ereignis->rect() & rect();
    QPainter(this).drawPixmap(QRectF(teil), bild,
                              {QPointF(teil.topLeft()) * dichte, QSizeF(teil.size()) * dichte});
}

// --- Livepunkt ---

Livepunkt::Livepunkt(QWidget* ebene) : Ebenenteil(ebene) {}

QRect Livepunkt::pixel(const QRectF& platz) const {
    const int seite = std::max(6, static_cast<int>(std::lround(PUNKTDURCHMESSER * parentWidget()->height())));
    return {Ebenenteil::pixel(platz).topLeft(), QSize(seite, seite)};
}

void Livepunkt::paintEvent(QPaintEvent*) {
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(QPen(Qt::white, 1));
    maler.setBrush(QColor::fromRgb(LINIENROT));
    maler.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}
