// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/slider/Schubbild.h"

#include "editors/common/Farben.h"
#include "editors/common/Formhilfen.h"
#include "editors/slider/Schubzahlen.h"

#include <QEvent>
#include <QPainter>

#include <cmath>

namespace {

constexpr int MARKENBREITE = 8;
constexpr int LINIENBREITE = 1;
constexpr double TOENUNG = 0.25; // of a field that is set off

void faerben(QWidget& flaeche, const QColor& farbe) {
    auto palette = flaeche.palette();
    palette.setColor(QPalette::Window, farbe);
    flaeche.setPalette(palette);
}

QWidget* flaeche(const QString& name, QWidget* eltern) {
    auto* neue = benannt(new QWidget(eltern), name);
    neue->setAutoFillBackground(true);
    neue->hide();
    return neue;
}

} // namespace

Schubbild::Schubbild(QWidget* eltern) : QWidget(eltern) {
    for (int i = 0; i < LINIEN; ++i)
        striche_[static_cast<std::size_t>(i)] = flaeche(feldname("Line1", i), this);
    marke_ = flaeche("Marke", this);
    farbenSetzen();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize Schubbild::sizeHint() const {
    // Twenty fields, and in each its number.
    const auto zeichen = fontMetrics();
    return {LINIEN * (zeichen.horizontalAdvance("00") + 8), 2 * zeichen.height() + 8};
}

void Schubbild::linienSetzen(int anzahl) {
    linien_ = anzahl;
    for (int i = 1; i < LINIEN; ++i)
        striche_[static_cast<std::size_t>(i)]->setVisible(i <= anzahl);
    linienStellen();
    update();
}

void Schubbild::feldHervorheben(int index) {
    hervorgehoben_ = index;
    update();
}

void Schubbild::markeSetzen(double stelle) {
    const int links = static_cast<int>(std::lround(stelle - MARKENBREITE / 2.0));
    marke_->setGeometry(links, 0, MARKENBREITE, height());
    marke_->show();
}

void Schubbild::linienStellen() {
    for (int i = 1; i <= linien_; ++i)
        striche_[static_cast<std::size_t>(i)]->setGeometry(
            static_cast<int>(std::lround(linienstelle(i, linien_, width()))), 0, LINIENBREITE, height());
}

void Schubbild::farbenSetzen() {
    for (auto* linie : striche_)
        faerben(*linie, palette().color(QPalette::Text));
    faerben(*marke_, palette().color(QPalette::Highlight));
}

void Schubbild::paintEvent(QPaintEvent*) {
    QPainter maler(this);
    maler.fillRect(rect(), palette().color(QPalette::Base));
    for (int i = 0; i <= linien_; ++i) {
        const double links = linienstelle(i, linien_, width());
        const QRectF feld(links, 0, linienstelle(i + 1, linien_, width()) - links, height());
        if (i == hervorgehoben_) {
            auto farbe = palette().color(QPalette::Highlight);
            farbe.setAlphaF(TOENUNG);
            maler.fillRect(feld, farbe);
        }
        maler.setPen(palette().color(QPalette::Text));
        maler.drawText(feld, Qt::AlignCenter, QString::number(i + 1));
    }
    const auto getoent =
        mischung(palette().color(QPalette::Base), palette().color(QPalette::Highlight), TOENUNG);
    maler.setPen(umriss(getoent, palette().color(QPalette::Text)));
    maler.drawRect(rect().adjusted(0, 0, -1, -1));
}

void Schubbild::resizeEvent(QResizeEvent*) {
    linienStellen();
}

void Schubbild::changeEvent(QEvent* ereignis) {
    if (ereignis->type() == QEvent::PaletteChange)
        farbenSetzen();
    QWidget::changeEvent(ereignis);
}
