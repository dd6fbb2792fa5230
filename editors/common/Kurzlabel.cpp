// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Kurzlabel.h"

#include "editors/common/Formhilfen.h"

#include <QPainter>

QSize Kurzlabel::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance("MMMMMM"), QLabel::minimumSizeHint().height()};
}

void Kurzlabel::paintEvent(QPaintEvent*) {
    QPainter maler(this);
    malen(maler);
}

void Kurzlabel::malen(QPainter& maler) const {
    maler.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
}

Kurzlabel* kurzlabel(const QString& name, const QString& text) {
    auto* label = benannt(new Kurzlabel(text), name);
    label->setTextFormat(Qt::PlainText);
    return label;
}
