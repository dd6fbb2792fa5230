// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Laufsteuerung.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Boxmass.h"
#include "editors/common/Formhilfen.h"
#include "editors/run/LaufFensterAnsicht.h"
#include "editors/run/Mitschnittablage.h"
#include "engine/mitschnitt/Laufmitschnitt.h"
#include "platform/Laufmarke.h"

#include <QPushButton>

#include <utility>

namespace {

constexpr const char* MITSCHNITT = "Mitschnitt speichern";

/// Closing the box is an Abbrechen, and so is Enter: what two copies send at a time is hardly what is wanted.
bool trotzdemStarten() {
    QMessageBox box(QMessageBox::Warning, "Schema starten",
                    "In einem zweiten Game-Pad-Konfic läuft schon ein Schema. Beide würden senden, was das "
                    "Gamepad auslöst: Jede Taste käme doppelt an.",
                    QMessageBox::Yes | QMessageBox::Cancel);
    box.button(QMessageBox::Yes)->setText("&Trotzdem starten");
    box.button(QMessageBox::Cancel)->setText("&Abbrechen");
    box.setDefaultButton(QMessageBox::Cancel);
    aufDemSchirmHalten(box);
    return box.exec() == QMessageBox::Yes;
}

} // namespace

Laufsteuerung::Laufsteuerung(Laufzustand& zustand, Joystick& joystick, Eingabe& eingabe, Zeitgeber& zeitgeber,
                             Laufmarke& marke, const Laufbeigaben& beigaben)
    : zustand_(zustand)
    , joystick_(joystick)
    , eingabe_(eingabe)
    , zeitgeber_(zeitgeber)
    , marke_(marke)
    , beigaben_(beigaben) {
    if (!beigaben_.mitschnitt)
        return;
    ablage_ = std::make_unique<Mitschnittablage>(*beigaben_.mitschnitt, zustand_.global);
    connect(ablage_.get(), &Mitschnittablage::fertig, this, &Laufsteuerung::mitschnittFertig);
}

Laufsteuerung::~Laufsteuerung() {
    laufBeenden();
}

bool Laufsteuerung::laden() {
    entladen();
    if (!markeSetzen())
        return false;
    ansicht_.reset(new LaufFensterAnsicht(zustand_, joystick_, eingabe_, zeitgeber_, beigaben_));
    auto* ansicht = ansicht_.get();
    connect(ansicht, &LaufFensterAnsicht::hauptformVerbergenGewuenscht, this,
            &Laufsteuerung::hauptformVerbergen);
    connect(ansicht, &LaufFensterAnsicht::hauptformZurueckGewuenscht, this, &Laufsteuerung::hauptformZurueck);
    connect(ansicht, &LaufFensterAnsicht::geschlossen, this, &Laufsteuerung::entladen);
    // Queued: the error comes from within the run, which must not be taken down under its own feet.
    connect(ansicht, &LaufFensterAnsicht::laufAbgebrochen, this, &Laufsteuerung::nachAbbruch,
            Qt::QueuedConnection);
    if (ablage_)
        connect(ansicht, &LaufFensterAnsicht::mitschnittGewuenscht, ablage_.get(),
                &Mitschnittablage::speichern);
    const bool laeuft = mitFehlermeldung(
        nullptr, "Schema starten", [&] { ansicht->laden(); },
        [&](const LaufzeitFehler&) {
            laufBeenden();
            emit hauptformZurueck(true);
        });
    if (laeuft) {
        danebenStellen(*ansicht);
        ansicht->show();
    }
    return laeuft;
}

/// While the question stands nothing runs here, so that no other copy is told that something did.
bool Laufsteuerung::markeSetzen() {
    if (marke_.setzen())
        return true;
    marke_.loesen();
    if (!trotzdemStarten())
        return false;
    marke_.setzen();
    return true;
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
    marke_.loesen();
    return fehler;
}

std::optional<LaufzeitFehler> Laufsteuerung::ohneFensterBeenden() {
    if (ablage_)
        ablage_->ausarbeiten();
    return ansicht_ ? ansicht_->ohneFensterBeenden() : std::nullopt;
}

/// The run's window tells it; without one a box tells only that there is no record.
void Laufsteuerung::mitschnittFertig(const QString& name, const QString& fehler) {
    if (ansicht_)
        ansicht_->mitschnittZeigen(fehler.isEmpty() ? "Gespeichert: " + name : fehler);
    else if (!fehler.isEmpty())
        meldung(nullptr, fehler, MITSCHNITT, QMessageBox::Warning);
}

/// What the box of an error says of the record of it.
QString Laufsteuerung::mitschnittDesAbbruchs() {
    if (!ablage_)
        return "";
    const auto ablauf = ablage_->gleichSpeichern();
    return ablauf.fehler.isEmpty()
               ? QString("Was zuletzt geschah, liegt im Ordner „Mitschnitte“: „%1“.").arg(ablauf.name)
               : ablauf.fehler;
}

void Laufsteuerung::eingriff() const {
    if (beigaben_.mitschnitt)
        beigaben_.mitschnitt->eingriff();
}

void Laufsteuerung::streuungAbwarten() const {
    if (beigaben_.streuablage)
        beigaben_.streuablage->abwarten();
}

void Laufsteuerung::nachAbbruch(int nummer, const QString& text) {
    entladen();
    QMessageBox box(QMessageBox::Warning, "Schema gestoppt",
                    QString("Laufzeitfehler %1:\n").arg(nummer) + einzeiler(text), QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText); // an action text in it may look like markup
    box.setInformativeText(mitschnittDesAbbruchs());
    aufDemSchirmHalten(box);
    box.exec();
}
