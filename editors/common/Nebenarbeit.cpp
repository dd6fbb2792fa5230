// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Nebenarbeit.h"

#include <QCoreApplication>

#include <utility>

Nebenarbeit::Nebenarbeit(QObject* eltern) : QObject(eltern) {
    faden_.setMaxThreadCount(1); // keeps the order
}

Nebenarbeit::~Nebenarbeit() {
    faden_.waitForDone();
}

void Nebenarbeit::auftrag(Arbeit arbeit, Meldung fertig) {
    faden_.start([this, arbeit = std::move(arbeit), fertig = std::move(fertig)] {
        bool gelungen = false;
        try {
            gelungen = arbeit();
        } catch (...) { // no memory for what is large
        }
        QMetaObject::invokeMethod(
            this, [fertig, gelungen] { fertig(gelungen); }, Qt::QueuedConnection);
    });
}

void Nebenarbeit::ausarbeiten() {
    faden_.waitForDone();
}

void Nebenarbeit::abwarten() {
    ausarbeiten();
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}
