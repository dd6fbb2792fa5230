// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Systemplattform.h"

#include "app/Aufruf.h"
#include "app/Padlistenmeldung.h"
#include "app/Protokoll.h"

#include <QGuiApplication>

Systemplattform::Systemplattform(Waechterblatt* blatt)
    : eingabe_(eingabeKandidaten(layout_, blatt), eingabeProtokollieren)
    , joystick_(padmeldung(), &zeitgeber_)
    , padliste_(padlisteLaden(PADLISTE))
    , aufnahme_(schirmaufnahmeWaehlen())
    , gamepadXml_(eigenerOrdner() + "/Gamepad.xml") {
    padlisteProtokollieren(padliste_);
    joystick_.umsehen();
    // Who plays has another window before them: ours can wait.
    const auto einstellen = [this](Qt::ApplicationState stand) {
        zeitgeber_.ungestoert(stand != Qt::ApplicationActive);
    };
    einstellen(QGuiApplication::applicationState());
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &ohr_, einstellen);
}
