// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/buttons/Wahlknopf.h"

#include "editors/common/Formhilfen.h"
#include "editors/common/Speicherstand.h"

#include <QSignalBlocker>

#include <utility>

Wahlknopf::Wahlknopf(const QString& text, std::function<void()> klick)
    : QRadioButton(text), klick_(std::move(klick)) {
    connect(this, &QRadioButton::pressed, this, [this] { warGesetzt_ = isChecked(); });
    connect(this, &QRadioButton::toggled, this, [this](bool an) {
        if (an)
            geklickt();
    });
    connect(this, &QRadioButton::clicked, this, [this] {
        if (warGesetzt_)
            geklickt();
    });
}

void Wahlknopf::geklickt() {
    mitFehlermeldung(window(), formtitel(*window()), klick_);
}

void Wahlknopf::setzen() {
    if (isChecked())
        return;
    {
        const QSignalBlocker stumm(this);
        setChecked(true);
    }
    klick_();
}

void Wahlknopf::abwaehlen() {
    const QSignalBlocker stumm(this);
    setAutoExclusive(false);
    setChecked(false);
    setAutoExclusive(true);
}
