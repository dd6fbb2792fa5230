// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/pictures/Bildschreiber.h"

#include <QCoreApplication>

#include <utility>

Bildschreiber::Bildschreiber(QObject* eltern) : QObject(eltern) {
    faden_.setMaxThreadCount(1); // keeps the order
}

Bildschreiber::~Bildschreiber() {
    faden_.waitForDone();
}

void Bildschreiber::auftrag(Arbeit arbeit, Meldung fertig) {
    faden_.start([this, arbeit = std::move(arbeit), fertig = std::move(fertig)] {
        bool gelungen = false;
        try {
            gelungen = arbeit();
        } catch (...) { // no memory for a large picture
        }
        QMetaObject::invokeMethod(
            this, [fertig, gelungen] { fertig(gelungen); }, Qt::QueuedConnection);
    });
}

void Bildschreiber::ausarbeiten() {
    faden_.waitForDone();
}

void Bildschreiber::abwarten() {
    ausarbeiten();
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}
