// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Umbruchoption.h"

#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>

namespace {

constexpr int TEXTART = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap;
constexpr int ZEILEN = 2; // that it asks for

} // namespace

// What the circle and the room behind it take of the width.
int Umbruchoption::textrand() const {
    return style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, this) +
           style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, this);
}

QSize Umbruchoption::sizeHint() const {
    const int breite = textrand() + fontMetrics().horizontalAdvance(text()) * 6 / (5 * ZEILEN);
    return {breite, heightForWidth(breite)};
}

QSize Umbruchoption::minimumSizeHint() const {
    return sizeHint();
}

int Umbruchoption::heightForWidth(int breite) const {
    const QRect platz(0, 0, std::max(1, breite - textrand()), QWIDGETSIZE_MAX);
    return std::max(fontMetrics().boundingRect(platz, TEXTART, text()).height(),
                    style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, this)) +
           2;
}

void Umbruchoption::paintEvent(QPaintEvent*) {
    QStylePainter maler(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const auto textplatz = rect().adjusted(textrand(), 0, 0, 0);

    // The circle stands beside the first line.
    QStyleOptionButton kreis = option;
    const int hoehe = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, &option, this);
    const int zeile = std::max(fontMetrics().height(), hoehe);
    kreis.rect = QRect(0, (zeile - hoehe) / 2 + 1,
                       style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, &option, this), hoehe);
    kreis.rect = QStyle::visualRect(layoutDirection(), rect(), kreis.rect);
    maler.drawPrimitive(QStyle::PE_IndicatorRadioButton, kreis);

    const auto platz = QStyle::visualRect(layoutDirection(), rect(), textplatz);
    maler.drawItemText(platz, TEXTART, palette(), isEnabled(), text(), QPalette::WindowText);
    if (option.state & QStyle::State_HasFocus) {
        QStyleOptionFocusRect rahmen;
        rahmen.QStyleOption::operator=(option);
        rahmen.rect = platz;
        maler.drawPrimitive(QStyle::PE_FrameFocusRect, rahmen);
    }
}
