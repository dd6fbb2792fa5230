// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Rollbereich.h"

#include <QLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr const char* NAME = "Rollbereich";

QScrollArea* rollbereich(const QWidget& form) {
    return form.findChild<QScrollArea*>(NAME, Qt::FindDirectChildrenOnly);
}

/// What lies over the layout goes with it.
void umhaengen(QWidget& form, QWidget& inhalt) {
    for (auto* kind : form.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (kind->isWindow())
            continue;
        const auto ort = kind->geometry();
        const bool verborgen = kind->isHidden();
        kind->setParent(&inhalt);
        kind->setGeometry(ort);
        kind->setVisible(!verborgen);
    }
}

} // namespace

void rollbarMachen(QWidget& form, QSize platz) {
    auto* inhalt = new QWidget;
    inhalt->setMinimumSize(form.minimumSize().expandedTo(form.minimumSizeHint()));
    const QSize ganz = form.size().expandedTo(inhalt->minimumSize());
    inhalt->setLayout(form.layout()); // with all that lies in it
    umhaengen(form, *inhalt);

    auto* bereich = new QScrollArea;
    bereich->setObjectName(NAME);
    bereich->setAccessibleName("Inhalt des Fensters");
    bereich->setFrameShape(QFrame::NoFrame);
    bereich->setWidgetResizable(true);
    bereich->setWidget(inhalt);
    auto* anordnung = new QVBoxLayout(&form);
    anordnung->setContentsMargins(0, 0, 0, 0);
    anordnung->addWidget(bereich);

    // Each bar takes of the other side, and the screen's scale may round a pixel away.
    const int balkenbreite = bereich->verticalScrollBar()->sizeHint().width() + 1;
    const int balkenhoehe = bereich->horizontalScrollBar()->sizeHint().height() + 1;
    const QSize mitBalken(ganz.width() + (ganz.height() > platz.height() ? balkenbreite : 0),
                          ganz.height() + (ganz.width() > platz.width() ? balkenhoehe : 0));
    // A fixed size stays one all the time: a window that may be drawn larger can have a wider frame.
    if (form.minimumSize() == form.maximumSize())
        return form.setFixedSize(mitBalken.boundedTo(platz));
    form.setMinimumSize(0, 0);
    form.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    form.resize(mitBalken.boundedTo(platz));
}

QWidget& forminhalt(QWidget& form) {
    auto* bereich = rollbereich(form);
    return bereich ? *bereich->widget() : form;
}

void rollhoeheSetzen(QWidget& form, int platz) {
    auto* bereich = rollbereich(form);
    const int hoehe = bereich->widget()->minimumHeight();
    const bool quer = bereich->widget()->minimumWidth() > form.width();
    const int ganz = hoehe + (quer ? bereich->horizontalScrollBar()->sizeHint().height() + 1 : 0);
    if (form.minimumSize() == form.maximumSize())
        form.setFixedHeight(std::min(platz, ganz));
    else
        form.resize(form.width(), std::min(platz, ganz));
}
