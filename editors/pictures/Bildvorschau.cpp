// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/pictures/Bildvorschau.h"

#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr QSize WUNSCHGROESSE{320, 180};
constexpr QSize KLEINSTE{128, 72};
constexpr QColor GRUND{0x30, 0x30, 0x30};
/// How many times larger than its view a picture may be to be scaled with care; what is larger loses pixels
/// first, as the view of a large screen must not hold the program up.
constexpr int SORGFALT = 3;

QImage passend(const QImage& bild, QSize groesse) {
    const QSize zuerst = groesse * SORGFALT;
    const bool gross = bild.width() > zuerst.width() && bild.height() > zuerst.height();
    return (gross ? bild.scaled(zuerst, Qt::IgnoreAspectRatio, Qt::FastTransformation) : bild)
        .scaled(groesse, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

Bildvorschau::Bildvorschau(QWidget* eltern) : QWidget(eltern) {
    setMinimumSize(KLEINSTE);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize Bildvorschau::sizeHint() const {
    return WUNSCHGROESSE;
}

void Bildvorschau::bildSetzen(const QImage& bild) {
    bild_ = bild;
    bild_.setDevicePixelRatio(1);
    verkleinert_ = {};
    update();
}

/// What the picture takes of the field, in the pixels of the screen.
QSize Bildvorschau::platz() const {
    return bild_.size()
        .scaled((QSizeF(size()) * devicePixelRatioF()).toSize(), Qt::KeepAspectRatio)
        .expandedTo({1, 1});
}

void Bildvorschau::paintEvent(QPaintEvent*) {
    QPainter maler(this);
    maler.fillRect(rect(), GRUND);
    if (bild_.isNull())
        return;
    if (verkleinert_.size() != platz())
        verkleinert_ = QPixmap::fromImage(passend(bild_, platz()));
    const QSizeF groesse = QSizeF(platz()) / devicePixelRatioF();
    maler.drawPixmap(QRectF({(width() - groesse.width()) / 2, (height() - groesse.height()) / 2}, groesse),
                     verkleinert_, QRectF(verkleinert_.rect()));
}

void Bildvorschau::mousePressEvent(QMouseEvent* ereignis) {
    emit gedrueckt(ereignis->button());
}

void Bildvorschau::moveEvent(QMoveEvent*) {
    emit verlegt();
}

void Bildvorschau::resizeEvent(QResizeEvent*) {
    emit verlegt();
}
