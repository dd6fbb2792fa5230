// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Zustandszeile.h"

#include "editors/stick/Ebenenmass.h"
#include "editors/stick/Ebenenteile.h"
#include "editors/stick/Schiebetafel.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int INNENRAND = 8;
constexpr int ABSTAND = 6; // from strips and arrows
constexpr int NAEHE = 24;  // a hand nearer than this is in the way
constexpr double RUNDUNG = 6;
constexpr int DECKUNG = 200; // of 255: text on any picture is to be read, and the picture to be guessed

} // namespace

Zustandszeile::Zustandszeile(QWidget* ebene) : QLabel(ebene) {
    setObjectName("Zustandszeile");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText); // names of keys are no markup
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMargin(INNENRAND);
    auto farben = palette();
    farben.setColor(QPalette::WindowText, Qt::white);
    setPalette(farben);
    hide();
}

void Zustandszeile::zeigen(const QStringList& zeilen) {
    const auto neu = zeilen.join('\n');
    if (neu == text())
        return;
    setText(neu);
    legen();
    setVisible(!neu.isEmpty());
}

// As wide as its longest line, and wrapped where the arrows leave no room for that.
QSize Zustandszeile::groesse() const {
    const int luft = 2 * INNENRAND + fontMetrics().averageCharWidth();
    const auto pfeile = ebenenpixel({0, 0, double(PFEILE_ENDEN), 0}, parentWidget()->size()).width();
    const int platz = parentWidget()->width() - 2 * (static_cast<int>(std::ceil(pfeile)) + ABSTAND);
    const int breite = std::min(fontMetrics().size(0, text()).width() + luft, platz);
    return {breite, heightForWidth(breite)};
}

int Zustandszeile::hoeheAm(bool oben) const {
    const auto* ebene = parentWidget();
    const auto rand = ebenenpixel(
        {0, double(PFEILE_ENDEN), 0, double(Schiebetafel::STREIFEN_OBEN - PFEILE_ENDEN)}, ebene->size());
    return oben ? static_cast<int>(std::ceil(rand.top())) + ABSTAND
                : static_cast<int>(rand.bottom()) - ABSTAND - untenFrei_ - height();
}

void Zustandszeile::untenFreihalten(int pixel) {
    untenFrei_ = pixel;
    legen();
}

QRect Zustandszeile::platzAm(bool oben) const {
    return {QPoint((parentWidget()->width() - width()) / 2, hoeheAm(oben)), size()};
}

void Zustandszeile::legen() {
    resize(groesse());
    const bool zugedeckt = verdeckt_.intersects(platzAm(oben_)) && !verdeckt_.intersects(platzAm(!oben_));
    move(platzAm(oben_ != zugedeckt).topLeft());
}

void Zustandszeile::freilassen(QRect verdeckt) {
    if (std::exchange(verdeckt_, verdeckt) != verdeckt)
        legen();
}

void Zustandszeile::ausweichen(QPoint wo) {
    const int oben = hoeheAm(oben_);
    if (wo.y() < oben - NAEHE || wo.y() > oben + height() + NAEHE)
        return;
    oben_ = wo.y() > parentWidget()->height() / 2;
    legen();
}

void Zustandszeile::paintEvent(QPaintEvent* ereignis) {
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(QPen(QColor(255, 255, 255, DECKUNG), 1));
    maler.setBrush(QColor(16, 20, 28, DECKUNG));
    maler.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), RUNDUNG, RUNDUNG);
    maler.end();
    QLabel::paintEvent(ereignis);
}
