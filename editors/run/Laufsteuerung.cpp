#include "editors/run/Laufsteuerung.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"
#include "editors/run/LaufFensterAnsicht.h"

#include <utility>

Laufsteuerung::Laufsteuerung(Laufzustand& zustand, Joystick& joystick, Eingabe& eingabe, Zeitgeber& zeitgeber)
    : zustand_(zustand), joystick_(joystick), eingabe_(eingabe), zeitgeber_(zeitgeber) {}

Laufsteuerung::~Laufsteuerung() = default;

void Laufsteuerung::DannLoeschen::operator()(LaufFensterAnsicht* ansicht) const {
    // The run ends at once; the window goes later, as its own close event may be what brought us here.
    ansicht->disconnect();
    ansicht->entladen();
    ansicht->deleteLater();
}

bool Laufsteuerung::laden() {
    entladen();
    ansicht_.reset(new LaufFensterAnsicht(zustand_, joystick_, eingabe_, zeitgeber_));
    auto* ansicht = ansicht_.get();
    connect(ansicht, &LaufFensterAnsicht::hauptformVerbergenGewuenscht, this,
            &Laufsteuerung::hauptformVerbergen);
    connect(ansicht, &LaufFensterAnsicht::hauptformZurueckGewuenscht, this, &Laufsteuerung::hauptformZurueck);
    connect(ansicht, &LaufFensterAnsicht::geschlossen, this, &Laufsteuerung::entladen);
    // Queued: the error comes from within the run, which must not be taken down under its own feet.
    connect(ansicht, &LaufFensterAnsicht::laufAbgebrochen, this, &Laufsteuerung::nachAbbruch,
            Qt::QueuedConnection);
    try {
        ansicht->laden();
    } catch (const LaufzeitFehler& fehler) {
        ansicht_.reset();
        emit hauptformZurueck(true);
        fehlermeldung(nullptr, fehler, "Schema starten");
        return false;
    }
    ansicht->show();
    return true;
}

void Laufsteuerung::entladen() {
    if (!ansicht_)
        return;
    const auto fehler = ansicht_->entladen();
    ansicht_.reset();
    if (fehler)
        fehlermeldung(nullptr, *fehler, "Einstellungen nicht gespeichert");
}

void Laufsteuerung::nachAbbruch(int nummer, const QString& text) {
    entladen();
    fehlermeldung(nullptr, LaufzeitFehler(static_cast<Fehlernummer>(nummer), text.toStdString()),
                  "Schema gestoppt");
}
