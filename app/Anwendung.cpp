// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Anwendung.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Kontraststil.h"

#include <QStyle>

Anwendung::Anwendung(int& anzahl, char** worte) : QApplication(anzahl, worte) {
    installNativeEventFilter(&geisterklicks_);
    if (style()->name() == Kontraststil::GRUNDSTIL)
        setStyle(new Kontraststil);
}

bool Anwendung::notify(QObject* empfaenger, QEvent* ereignis) {
    try {
        return QApplication::notify(empfaenger, ereignis);
    } catch (const LaufzeitFehler& fehler) {
        durchgelassen(fehler);
    } catch (const std::exception& fehler) {
        durchgelassen(LaufzeitFehler(Fehlernummer::Unerwartet, fehler.what()));
    }
    return true;
}

void Anwendung::durchgelassen(const LaufzeitFehler& fehler) {
    fehlermeldung(activeWindow(), fehler, "Fehler");
}
