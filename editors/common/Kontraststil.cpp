// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Kontraststil.h"

#include "editors/common/Farben.h"

#include <QGroupBox>
#include <QImageReader>
#include <QPainter>
#include <QStyleOption>
#include <qdrawutil.h>

#include <algorithm>

namespace {

constexpr double RUNDUNG = 2;

// A button that stays pressed has a bold one, as its darker ground is none on black.
void rahmenZiehen(QPainter& maler, const QStyleOption& option, const QRect& platz, bool kreis = false,
                  bool gedrueckt = false) {
    const auto& farben = option.palette;
    const auto grund = farben.color(QPalette::Window);
    const auto anfang = gedrueckt ? farben.color(QPalette::Highlight) : grund;
    const double strich = gedrueckt ? 2 : 1;
    const QPen stift(abgehoben(anfang, grund, farben.color(QPalette::WindowText)), strich);
    const auto linie = QRectF(platz).adjusted(strich / 2, strich / 2, -strich / 2, -strich / 2);
    maler.save();
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(stift);
    maler.setBrush(Qt::NoBrush);
    if (kreis)
        maler.drawEllipse(linie);
    else
        maler.drawRoundedRect(linie, RUNDUNG, RUNDUNG);
    maler.restore();
}

/// The picture of which the toolkit makes the frame of a group. It would ask each plugin for pictures whether
/// it knows a format that needs none, which loads them all at the start, and read the file at each painting.
const QPixmap& rahmenbild() {
    static const auto bild = [] {
        QImageReader leser(":/qt-project.org/styles/commonstyle/images/fusion_groupbox.png", "png");
        leser.setAutoDetectImageFormat(false);
        return QPixmap::fromImageReader(&leser);
    }();
    return bild;
}

/// As the toolkit does it: below a title, or a box to tick, if there is one.
void gruppeRahmen(QPainter& maler, const QStyle& stil, const QStyleOption& option, const QWidget* widget) {
    constexpr int ABSTAND = 3;
    constexpr int ECKE = 6;
    const auto* gruppe = qobject_cast<const QGroupBox*>(widget);
    int oben = ABSTAND;
    if (!gruppe || gruppe->isCheckable() || !gruppe->title().isEmpty())
        oben += std::max(stil.pixelMetric(QStyle::PM_IndicatorHeight), option.fontMetrics.height());
    qDrawBorderPixmap(&maler, option.rect.adjusted(0, oben, 0, 0), QMargins(ECKE, ECKE, ECKE, ECKE),
                      rahmenbild());
}

bool hatFokus(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_HasFocus); // its outline is the highlight's
}

} // namespace

void Kontraststil::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* maler,
                                 const QWidget* widget) const {
    if (element == PE_FrameGroupBox && !rahmenbild().isNull())
        return gruppeRahmen(*maler, *this, *option, widget);
    QProxyStyle::drawPrimitive(element, option, maler, widget);
    switch (element) {
    case PE_IndicatorRadioButton:
        return rahmenZiehen(*maler, *option, option->rect, true);
    case PE_PanelButtonCommand:
        return rahmenZiehen(*maler, *option, option->rect, false, option->state.testFlag(State_On));
    case PE_IndicatorCheckBox:
    case PE_Frame:
        return rahmenZiehen(*maler, *option, option->rect);
    case PE_FrameLineEdit:
        if (!hatFokus(*option))
            rahmenZiehen(*maler, *option, option->rect);
        return;
    default:
        return;
    }
}

void Kontraststil::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* maler, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, maler, widget);
    if (control == CC_ComboBox && !hatFokus(*option))
        rahmenZiehen(*maler, *option, option->rect);
    if (control == CC_ScrollBar)
        for (const auto teil : {SC_ScrollBarSlider, SC_ScrollBarGroove})
            rahmenZiehen(*maler, *option, subControlRect(control, option, teil, widget));
}
