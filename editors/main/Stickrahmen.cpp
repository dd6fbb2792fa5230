// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/main/Stickrahmen.h"

#include "editors/common/Formhilfen.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include <initializer_list>

namespace {

constexpr int REGLER_MAX = 2000;

QScrollBar* scrollleiste(Qt::Orientation richtung, const QString& name) {
    auto* leiste = benannt(new QScrollBar(richtung), name);
    leiste->setRange(0, REGLER_MAX);
    leiste->setPageStep(REGLER_MAX / 10);
    leiste->setFocusPolicy(Qt::StrongFocus);
    return leiste;
}

QLineEdit* anzeigefeld(const QString& name, const QString& text) {
    auto* feld = benannt(new QLineEdit(text), name);
    feld->setReadOnly(true);
    feld->setFocusPolicy(Qt::ClickFocus);
    return feld;
}

} // namespace

Stickrahmen::Stickrahmen(int stick, QPushButton& bearbeiten) {
    const QString wer = stick == 0 ? "Linker Stick" : "Rechter Stick";
    setAccessibleName(wer);
    bearbeiten.setAccessibleName(wer + " bearbeiten");
    auto* gitter = new QGridLayout(this);
    gitter->setVerticalSpacing(3);
    gitter->addWidget(
        benannt(new QLabel(stick == 0 ? "Linken Stick" : "Rechten Stick"), feldname("Label2", stick)), 0, 0);
    gitter->addWidget(&bearbeiten, 1, 0);
    bearbeiten.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);

    auto* waagrecht = scrollleiste(Qt::Horizontal, feldname("HScroll1", stick));
    auto* sensible = anzeigefeld(feldname("Text2", stick), "Sensible: 0");
    connect(waagrecht, &QScrollBar::valueChanged, sensible,
            [sensible](int wert) { sensible->setText(QString("Sensible: %1").arg(wert)); });
    gitter->addWidget(waagrecht, 2, 0);
    gitter->addWidget(sensible, 3, 0);

    auto* senkrecht = scrollleiste(Qt::Vertical, feldname("VScroll1", stick));
    auto* wert = anzeigefeld(feldname("Text3", stick), "0");
    wert->setFixedWidth(wert->fontMetrics().horizontalAdvance("00000") + 12);
    connect(senkrecht, &QScrollBar::valueChanged, wert,
            [wert](int neu) { wert->setText(QString::number(neu)); });
    gitter->addWidget(senkrecht, 0, 1, 3, 1, Qt::AlignHCenter);
    for (QWidget* control : std::initializer_list<QWidget*>{waagrecht, sensible, senkrecht, wert})
        control->setToolTip("Ohne Wirkung. Was gilt, stellen Sie im Fenster des laufenden Schemas ein.");
    gitter->setRowStretch(1, 1);
    gitter->addWidget(wert, 3, 1);
    waagrecht->setAccessibleName(wer + ": Sensible");
    sensible->setAccessibleName(wer + ": Wert von Sensible");
    senkrecht->setAccessibleName(wer + ": senkrechter Regler");
    wert->setAccessibleName(wer + ": Wert des senkrechten Reglers");
}
