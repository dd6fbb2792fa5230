// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Anwendung.h"
#include "app/Aufruf.h"
#include "app/Bildschirm.h"
#include "app/Bildschirmverlust.h"
#include "app/Endsignale.h"
#include "app/Padlistenmeldung.h"
#include "app/Protokoll.h"
#include "app/Standardkanaele.h"
#include "app/Systemplattform.h"
#include "editors/common/Formhilfen.h"
#include "platform/linux/Waechter.h"

#include <QIcon>
#include <QImageReader>

#include <cstdio>

namespace {

void padlistePruefen(const Padliste& liste) {
    if (const auto text = padlistenmeldung(liste); !text.isEmpty())
        meldung(nullptr, text, "Game-Pad-Konfic", QMessageBox::Warning);
}

/// Read as what they are: to find that out all plugins for pictures would be loaded.
QIcon programmsymbol() {
    QIcon symbol;
    for (const auto* groesse : {"16", "32", "48", "128"}) {
        QImageReader leser(QString(":/symbol/%1.png").arg(groesse), "png");
        leser.setAutoDetectImageFormat(false);
        symbol.addPixmap(QPixmap::fromImageReader(&leser));
    }
    return symbol;
}

} // namespace

int main(int anzahl, char** worte) {
    standardkanaeleSichern();
    if (const auto statt = auskunft({worte + 1, worte + anzahl})) {
        std::fputs(statt->text.c_str(), statt->ende == 0 ? stdout : stderr);
        return statt->ende;
    }
    auto bildschirm = bildschirmSuchen();
    if (!bildschirm.grund.empty()) {
        std::fprintf(stderr, "gamepad-konfic: %s\n", bildschirm.grund.c_str());
        return 1;
    }
    aufKeinenLeserWarten();
    Waechter waechter(Waechter::nebenan()); // before there is a thread
    Endsignale endsignale;
    Anwendung anwendung(anzahl, worte);
    bildschirm.verbindung.reset();
    QApplication::setApplicationName("gamepad-konfic");
    QApplication::setDesktopFileName("gamepad-konfic");
    QApplication::setWindowIcon(programmsymbol());
    if (const auto grund = startfehler(); !grund.empty()) {
        endsignale.verbinden();
        meldung(nullptr, einzeiler(qt(grund)), "Game-Pad-Konfic", QMessageBox::Critical);
        return 1;
    }

    Systemplattform system(waechter.blatt());
    Programm programm(system.plattform());
    const Bildschirmverlust verlust([&programm] { return programm.ohneBildschirmSichern(); });
    laeufeProtokollieren(programm.laufsteuerung(), system.zeitgeber());
    endsignale.verbinden();
    waechter.verbinden(waechtermeldung());
    // In the event loop: the message boxes of the start end with it, too.
    const auto starten = [&] {
        programm.starten();
        padlistePruefen(system.padliste());
        if (const auto datei = schemadatei({worte + 1, worte + anzahl}))
            programm.dateiAufnehmen(*datei);
    };
    QMetaObject::invokeMethod(&anwendung, starten, Qt::QueuedConnection);
    return QApplication::exec();
}
