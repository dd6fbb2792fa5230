// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/buttons/Padzeichnung.h"

#include "base/Tastennamen.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPolygonF>
#include <QRadialGradient>
#include <QTransform>

#include <algorithm>
#include <utility>

const Platz& platz(int taste) {
    return *std::ranges::find(PLAETZE, taste, &Platz::taste);
}

namespace {

// From the last point of their ways to the pills in the middle.
constexpr std::array<std::pair<int, QPointF>, 2> FORTSETZUNG{{{8, {226, 130}}, {9, {334, 130}}}};

constexpr QPointF KREUZMITTE{128, 142};
constexpr std::array<QPointF, 2> STICKMITTEN{{{210, 206}, {350, 206}}};
constexpr qreal STICKRADIUS = 38;

// The colours of the drawing, made of the palette so that it fits light and dark surroundings.
struct Farben {
    explicit Farben(const QPalette& palette) {
        const auto grund = palette.color(QPalette::Window);
        const bool dunkel = grund.lightnessF() < 0.5F;
        koerperOben = dunkel ? mischung(grund, Qt::white, 0.24) : mischung(grund, Qt::black, 0.02);
        koerperUnten = dunkel ? mischung(grund, Qt::white, 0.10) : mischung(grund, Qt::black, 0.20);
        rand = dunkel ? mischung(grund, Qt::white, 0.42) : mischung(grund, Qt::black, 0.45);
        glanz = durchscheinend(Qt::white, dunkel ? 0.16 : 0.75);
        schatten = durchscheinend(Qt::black, dunkel ? 0.42 : 0.22);
        tief = dunkel ? mischung(grund, Qt::black, 0.45) : QColor(0x3a, 0x3f, 0x47);
        knopfOben = dunkel ? QColor(0x4a, 0x4f, 0x58) : QColor(0x5b, 0x62, 0x6d);
        knopfUnten = dunkel ? QColor(0x26, 0x29, 0x2e) : QColor(0x2f, 0x33, 0x3a);
        linie = durchscheinend(palette.color(QPalette::WindowText), 0.55);
        punkt = palette.color(QPalette::Highlight);
    }
    QColor koerperOben, koerperUnten, rand, glanz, schatten, tief, knopfOben, knopfUnten, linie, punkt;

    QBrush knopf(const QRectF& flaeche) const {
        QLinearGradient verlauf(flaeche.topLeft(), flaeche.bottomLeft());
        verlauf.setColorAt(0, knopfOben);
        verlauf.setColorAt(1, knopfUnten);
        return verlauf;
    }
};

// What is drawn into the four buttons on the right: their shapes, each in a colour.
constexpr std::array<QRgb, 4> ZEICHENFARBEN{0xfff0b44c, 0xff4cc3b5, 0xff8f9bf0, 0xfff08a72};

QPainterPath zeichenpfad(int taste, QPointF mitte) {
    constexpr qreal R = 8;
    QPainterPath pfad;
    switch (taste) {
    case 0:
        pfad.addPolygon(QPolygonF{mitte + QPointF(0, -R), mitte + QPointF(R, R * 0.7),
                                  mitte + QPointF(-R, R * 0.7), mitte + QPointF(0, -R)});
        pfad.closeSubpath();
        break;
    case 1:
        pfad.addEllipse(mitte, R * 0.9, R * 0.9);
        break;
    case 2:
        pfad.moveTo(mitte + QPointF(-R * 0.75, -R * 0.75));
        pfad.lineTo(mitte + QPointF(R * 0.75, R * 0.75));
        pfad.moveTo(mitte + QPointF(R * 0.75, -R * 0.75));
        pfad.lineTo(mitte + QPointF(-R * 0.75, R * 0.75));
        break;
    default:
        pfad.addRect(QRectF(mitte - QPointF(R, R) * 0.78, QSizeF(R, R) * 1.56));
    }
    return pfad;
}

// The right half from the top to the bottom of the middle; the left one mirrors it.
QPainterPath koerperpfad() {
    QPainterPath halb({280, 84});
    halb.lineTo(352, 84);
    halb.cubicTo(368, 84, 372, 73, 390, 72);
    halb.lineTo(452, 72);
    halb.cubicTo(488, 72, 508, 92, 518, 124);
    halb.cubicTo(534, 176, 548, 236, 542, 284);
    halb.cubicTo(537, 326, 500, 334, 478, 308);
    halb.cubicTo(458, 284, 446, 262, 410, 262);
    halb.lineTo(280, 262);
    halb.closeSubpath();
    const auto spiegel = QTransform(-1, 0, 0, 1, ZEICHNUNG.width(), 0);
    return halb.united(spiegel.map(halb)).simplified();
}

// A trigger: narrower towards the top.
QPainterPath abzugspfad(const QRectF& marke) {
    constexpr qreal SCHRAEGE = 7;
    constexpr qreal BOGEN = 12;
    QPainterPath pfad(marke.bottomLeft() + QPointF(0, BOGEN));
    pfad.lineTo(marke.topLeft() + QPointF(SCHRAEGE * 0.7, BOGEN));
    pfad.quadTo(marke.topLeft() + QPointF(SCHRAEGE, 0), marke.topLeft() + QPointF(SCHRAEGE + BOGEN, 0));
    pfad.lineTo(marke.topRight() - QPointF(SCHRAEGE + BOGEN, 0));
    pfad.quadTo(marke.topRight() - QPointF(SCHRAEGE, 0), marke.topRight() + QPointF(-SCHRAEGE * 0.7, BOGEN));
    pfad.lineTo(marke.bottomRight() + QPointF(0, BOGEN));
    return pfad;
}

// The name that is printed on a shoulder button. A label may call it otherwise; a run calls it so.
void aufdruck(QPainter& maler, int taste) {
    constexpr int HOEHE = 14;
    auto schrift = maler.font();
    schrift.setPixelSize(HOEHE);
    schrift.setBold(true);
    maler.setFont(schrift);
    maler.setPen(Qt::white);
    const auto name = LAUFNAMEN[static_cast<std::size_t>(taste)];
    maler.drawText(platz(taste).marke, Qt::AlignCenter,
                   QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
}

// Both shoulder buttons of each side run on behind the body.
void schultern(QPainter& maler, const Farben& farben) {
    const auto zeichneForm = [&](const QPainterPath& pfad) {
        maler.setPen(QPen(farben.tief, 1.2));
        maler.setBrush(farben.knopf(pfad.boundingRect()));
        maler.drawPath(pfad);
        maler.save();
        maler.setClipPath(pfad);
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(durchscheinend(Qt::white, 0.25), 2));
        maler.drawPath(pfad.translated(0, 1.6));
        maler.restore();
    };
    for (const int taste : {4, 6})
        zeichneForm(abzugspfad(platz(taste).marke));
    for (const int taste : {5, 7}) {
        QPainterPath pfad;
        pfad.addRoundedRect(platz(taste).marke.adjusted(0, 0, 0, 14), platz(taste).rundung,
                            platz(taste).rundung);
        zeichneForm(pfad);
    }
    for (const int taste : {4, 5, 6, 7})
        aufdruck(maler, taste);
}

void koerper(QPainter& maler, const Farben& farben) {
    const auto pfad = koerperpfad();
    maler.setPen(Qt::NoPen);
    for (int stufe = 4; stufe > 0; --stufe) { // soft shadow
        maler.setBrush(durchscheinend(farben.schatten, farben.schatten.alphaF() / 4));
        maler.drawPath(pfad.translated(0, stufe * 1.6));
    }
    QLinearGradient verlauf(0, 72, 0, 330);
    verlauf.setColorAt(0, farben.koerperOben);
    verlauf.setColorAt(1, farben.koerperUnten);
    maler.setBrush(verlauf);
    maler.setPen(QPen(farben.rand, 1.4));
    maler.drawPath(pfad);
    maler.save();
    maler.setClipPath(pfad);
    maler.setBrush(Qt::NoBrush);
    maler.setPen(QPen(farben.glanz, 2.5));
    maler.drawPath(pfad.translated(0, 2.2)); // light from above
    maler.restore();
}

void mulde(QPainter& maler, const Farben& farben, QPointF mitte, qreal radius) {
    QRadialGradient verlauf(mitte - QPointF(0, radius * 0.3), radius * 1.3);
    verlauf.setColorAt(0, durchscheinend(farben.schatten, farben.schatten.alphaF() * 0.9));
    verlauf.setColorAt(1, durchscheinend(farben.schatten, farben.schatten.alphaF() * 0.25));
    maler.setPen(Qt::NoPen);
    maler.setBrush(verlauf);
    maler.drawEllipse(mitte, radius, radius);
}

void steuerkreuz(QPainter& maler, const Farben& farben) {
    mulde(maler, farben, KREUZMITTE, 54);
    QPainterPath kreuz;
    kreuz.addRoundedRect(QRectF(113, 98, 30, 88), 6, 6);
    QPainterPath quer;
    quer.addRoundedRect(QRectF(84, 127, 88, 30), 6, 6);
    kreuz = kreuz.united(quer);
    maler.setPen(QPen(farben.tief, 1.2));
    maler.setBrush(farben.knopf(kreuz.boundingRect()));
    maler.drawPath(kreuz);
    maler.setPen(Qt::NoPen);
    maler.setBrush(durchscheinend(Qt::white, 0.55));
    for (int viertel = 0; viertel < 4; ++viertel) {
        maler.save();
        maler.translate(KREUZMITTE);
        maler.rotate(90 * viertel);
        maler.drawPolygon(QPolygonF{{0, -36}, {6, -27}, {-6, -27}});
        maler.restore();
    }
}

void zeichenknoepfe(QPainter& maler, const Farben& farben) {
    mulde(maler, farben, {ZEICHNUNG.width() - KREUZMITTE.x(), KREUZMITTE.y()}, 66);
    for (int taste = 0; taste < 4; ++taste) {
        const auto flaeche = platz(taste).marke;
        maler.setPen(QPen(farben.tief, 1.2));
        maler.setBrush(farben.knopf(flaeche));
        maler.drawEllipse(flaeche);
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(QColor::fromRgba(ZEICHENFARBEN[static_cast<std::size_t>(taste)]), 2.4,
                          Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        maler.drawPath(zeichenpfad(taste, flaeche.center()));
    }
}

void mittelknoepfe(QPainter& maler, const Farben& farben) {
    maler.setPen(QPen(farben.tief, 1));
    for (const int taste : {8, 9}) {
        const auto& marke = platz(taste).marke;
        maler.setBrush(farben.knopf(marke));
        maler.drawRoundedRect(marke, platz(taste).rundung, platz(taste).rundung);
    }
}

void sticks(QPainter& maler, const Farben& farben) {
    for (const auto& mitte : STICKMITTEN) {
        mulde(maler, farben, mitte, STICKRADIUS + 8);
        maler.setPen(QPen(farben.tief, 1.4));
        const QRectF aussen(mitte - QPointF(STICKRADIUS, STICKRADIUS), QSizeF(1, 1) * (2 * STICKRADIUS));
        maler.setBrush(farben.knopf(aussen));
        maler.drawEllipse(aussen);
        QRadialGradient kuhle(mitte - QPointF(0, 10), STICKRADIUS * 1.1);
        kuhle.setColorAt(0, farben.knopfUnten);
        kuhle.setColorAt(1, farben.knopfOben);
        maler.setPen(QPen(durchscheinend(Qt::white, 0.18), 1.2));
        maler.setBrush(kuhle);
        maler.drawEllipse(mitte, STICKRADIUS * 0.72, STICKRADIUS * 0.72);
    }
}

} // namespace

void padZeichnen(QPainter& maler, const QPalette& palette) {
    const Farben farben(palette);
    schultern(maler, farben);
    koerper(maler, farben);
    steuerkreuz(maler, farben);
    zeichenknoepfe(maler, farben);
    mittelknoepfe(maler, farben);
    sticks(maler, farben);
    for (const auto& ort : PLAETZE) {
        QPolygonF weg(QList<QPointF>(ort.weg.begin(), ort.weg.end()));
        weg.prepend({ort.seite == Seite::links ? 0 : ZEICHNUNG.width(), ort.weg.front().y()});
        for (const auto& [taste, ende] : FORTSETZUNG)
            if (taste == ort.taste)
                weg.append(ende);
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(farben.linie, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        maler.drawPolyline(weg);
        maler.setPen(Qt::NoPen);
        maler.setBrush(farben.punkt);
        maler.drawEllipse(weg.back(), 3, 3);
    }
}
