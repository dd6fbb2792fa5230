// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Laufsteuerung.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"
#include "editors/run/LaufFensterAnsicht.h"

#include <utility>

Laufsteuerung::Laufsteuerung(Laufzustand& zustand, Joystick& joystick, Eingabe& eingabe, Zeitgeber& zeitgeber)
    : zustand_(zustand), joystick_(joystick), eingabe_(eingabe), zeitgeber_(zeitgeber) {}

Laufsteuerung::~Laufsteuerung() {
    laufBeenden();
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
    const bool laeuft = mitFehlermeldung(
        nullptr, "Schema starten", [&] { ansicht->laden(); },
        [&](const LaufzeitFehler&) {
            laufBeenden();
            emit hauptformZurueck(true);
        });
    if (laeuft)
        ansicht->show();
    return laeuft;
}

void Laufsteuerung::entladen() {
    if (const auto fehler = laufBeenden())
        fehlermeldung(nullptr, *fehler, "Einstellungen nicht gespeichert");
}

/// The run ends at once; its window goes later.
std::optional<LaufzeitFehler> Laufsteuerung::laufBeenden() {
    if (!ansicht_)
        return std::nullopt;
    auto fehler = ansicht_->entladen();
    ansicht_.reset();
    return fehler;
}

void Laufsteuerung::nachAbbruch(int nummer, const QString& text) {
    entladen();
    fehlermeldung(nullptr, LaufzeitFehler(static_cast<Fehlernummer>(nummer), text.toStdString()),
                  "Schema gestoppt");
}
