// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the picture that lies behind a stick's plane where a `Schema` has none of its own.
//
//   joy2 FILE
//
// A plain, calm ground: the gate of a stick with its directions, dim enough that black and red lines, their
// arrows and the symbols of the fields stand out.
#include <QImage>
#include <QPainter>
#include <QRadialGradient>

#include <cstdio>

namespace {

constexpr QSize GROESSE{1024, 768};
// Of a stick's travel, as parts of the plane's half width and height.
constexpr double RAND = 0.97;
constexpr double HALB = 0.5;
constexpr double RUHE = 0.17; // about the centre field of a new Schema

void grundMalen(QPainter& maler) {
    QRadialGradient verlauf(0, 0, 1.45);
    verlauf.setColorAt(0, QColor(116, 132, 150));
    verlauf.setColorAt(0.62, QColor(78, 92, 110));
    verlauf.setColorAt(1, QColor(38, 46, 58));
    maler.fillRect(QRectF(-1, -1, 2, 2), verlauf);
}

QPen stift(const QColor& farbe, double breite, Qt::PenStyle art = Qt::SolidLine) {
    QPen eigener(farbe, breite, art);
    eigener.setCosmetic(true);
    return eigener;
}

void gatterMalen(QPainter& maler) {
    QRadialGradient teller(0, 0, RAND);
    teller.setColorAt(0, QColor(150, 166, 184));
    teller.setColorAt(0.85, QColor(104, 120, 140));
    teller.setColorAt(1, QColor(84, 98, 118));
    maler.setPen(stift(QColor(190, 204, 220, 150), 2));
    maler.setBrush(teller);
    maler.drawEllipse(QRectF(-RAND, -RAND, 2 * RAND, 2 * RAND));
    maler.setBrush(Qt::NoBrush);
    maler.setPen(stift(QColor(220, 230, 240, 70), 1.5, Qt::DashLine));
    maler.drawEllipse(QRectF(-HALB, -HALB, 2 * HALB, 2 * HALB));
    maler.drawLine(QPointF(-RAND, 0), QPointF(RAND, 0));
    maler.drawLine(QPointF(0, -RAND), QPointF(0, RAND));
}

void knaufMalen(QPainter& maler) {
    QRadialGradient knauf(-0.05, -0.07, 1.6 * RUHE);
    knauf.setColorAt(0, QColor(196, 208, 222));
    knauf.setColorAt(1, QColor(112, 128, 148));
    maler.setPen(stift(QColor(232, 240, 248, 140), 2));
    maler.setBrush(knauf);
    maler.drawEllipse(QRectF(-RUHE, -RUHE, 2 * RUHE, 2 * RUHE));
}

void richtungenMalen(QPainter& maler) {
    const QPolygonF spitze{QPointF(0, -0.80), QPointF(0.06, -0.71), QPointF(-0.06, -0.71)};
    maler.setPen(Qt::NoPen);
    maler.setBrush(QColor(225, 234, 244, 110));
    for (int viertel = 0; viertel < 4; ++viertel) {
        maler.drawPolygon(spitze);
        maler.rotate(90);
    }
}

} // namespace

int main(int anzahl, char** worte) {
    if (anzahl != 2) {
        std::fputs("joy2 FILE\n", stderr);
        return 2;
    }
    QImage bild(GROESSE, QImage::Format_RGB32);
    {
        QPainter maler(&bild);
        maler.setRenderHint(QPainter::Antialiasing);
        maler.translate(GROESSE.width() / 2.0, GROESSE.height() / 2.0);
        maler.scale(GROESSE.width() / 2.0, GROESSE.height() / 2.0);
        grundMalen(maler);
        gatterMalen(maler);
        knaufMalen(maler);
        richtungenMalen(maler);
    }
    return bild.save(QString::fromLocal8Bit(worte[1]), "BMP") ? 0 : 1;
}
