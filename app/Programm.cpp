// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Programm.h"

#include "editors/common/Formhilfen.h"
#include "editors/common/Nebenarbeit.h"

#include <QApplication>

Programm::Programm(const Plattform& plattform)
    : plattform_(plattform)
    , mitschnittgeraete_(plattform.joystick, plattform.eingabe, plattform.zeitgeber)
    , zustand_(mitschnittgeraete_.pad, plattform.gamepadXml)
    , mitschnitt_(zustand_, mitschnittgeraete_)
    , streuschreiber_(zustand_.global)
    , laufsteuerung_(zustand_, plattform.joystick, plattform.eingabe, plattform.zeitgeber,
                     plattform.laufmarke, {&mitschnitt_, &streuschreiber_, plattform.sofortbild})
    , editoren_(zustand_.global, zustand_.achsendatei, zustand_.achsen, plattform.joystick,
                plattform.zeitgeber, plattform.tastatur)
    , stickeditoren_(zustand_, laufsteuerung_, plattform.tastatur,
                     {plattform.joystick, plattform.zeitgeber, plattform.ton, plattform.aufnahme})
    , hauptform_(zustand_.global, zustand_.achsendatei, laufsteuerung_, plattform.prozess,
                 plattform.zeitgeber, taten_)
    , tastenankunft_(plattform.eingabeweg, hauptform_.hilfe())
    , weitergabe_({hauptform_, zustand_.global, plattform.gamepadXml, "Game-Pad-Konfic " PROGRAMMVERSION,
                   [this](const std::string& schema) { return umbenennenHindert(schema); },
                   [this](const std::string& schema) { return editoren_.ungespeicherte(schema); },
                   [this] {
                       laufsteuerung_.streuungAbwarten(); // goes along with its Schema
                       return laufsteuerung_.geladen();
                   }}) {
    // The main form hides while a `Schema` runs: no open window does not mean that the program is over.
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&hauptform_, &frmHaupt::geschlossen, qApp, &QApplication::quit);
    QObject::connect(&hauptform_, &frmHaupt::laufBeginnt, &hauptform_, [this] { tastenankunft_.pruefen(); });
    QObject::connect(&hauptform_, &frmHaupt::tastwerkGewuenscht, &editoren_, &Editoren::tastwerkZeigen);
    QObject::connect(&hauptform_, &frmHaupt::stickBearbeiten, &stickeditoren_, &Stickeditoren::oeffnen);
    QObject::connect(&hauptform_, &frmHaupt::schemaGeloescht, &editoren_, &Editoren::schemaVergessen);
    QObject::connect(&hauptform_, &frmHaupt::schemaGeloescht, &stickeditoren_,
                     &Stickeditoren::schemaVergessen);
    QObject::connect(&hauptform_, &frmHaupt::schemaGeloescht, &streuschreiber_,
                     &Streuschreiber::schemaVergessen);
    QObject::connect(&stickeditoren_, &Stickeditoren::hauptformVerbergen, &hauptform_, &QWidget::hide);
    QObject::connect(&stickeditoren_, &Stickeditoren::hauptformZurueck, &hauptform_, &QWidget::show);
    QObject::connect(&hauptform_, &frmHaupt::achsenGewuenscht, &editoren_, &Editoren::achsenZeigen);
    QObject::connect(&hauptform_, &frmHaupt::schubreglerGewuenscht, &editoren_, &Editoren::schubreglerZeigen);
    QObject::connect(&editoren_, &Editoren::gespeichert, &hauptform_, &frmHaupt::gespeichertZeigen);
    QObject::connect(&sicherungsdienst_, &Sicherungsdienst::zurueckgeholt, &hauptform_, &frmHaupt::laden);
    QObject::connect(&hauptform_, &frmHaupt::uebersichtGewuenscht, &hauptform_,
                     [this] { uebersichtZeigen(); });
    QObject::connect(&hauptform_, &frmHaupt::pfadeGesetzt, &weitergabe_, &Weitergabe::aufraeumen);
    QObject::connect(&hauptform_.schemamenue(), &Schemamenue::gewaehlt, &weitergabe_, &Weitergabe::tun);
    QObject::connect(&hauptform_.schemamenue(), &Schemamenue::abgelegt, &weitergabe_,
                     &Weitergabe::dateiAufnehmen);
    QObject::connect(&weitergabe_, &Weitergabe::aufgenommen, &hauptform_, &frmHaupt::neuLesen);
    QObject::connect(&weitergabe_, &Weitergabe::umbenannt, &editoren_, &Editoren::schemaUmbenannt);
    QObject::connect(&weitergabe_, &Weitergabe::umbenannt, &stickeditoren_, &Stickeditoren::schemaUmbenannt);
    QObject::connect(&weitergabe_, &Weitergabe::umbenannt, &hauptform_,
                     [this](const std::string&, const std::string& neu) { hauptform_.neuLesen(neu); });
}

/// Forms that have given its name away, or show it in a list that stays as it is.
QString Programm::umbenennenHindert(const std::string& schema) const {
    if (stickeditoren_.machtBilderVon(schema))
        return "Das Fenster „Hintergrund“ macht gerade Bilder für dieses Schema. Schließen Sie es zuerst.";
    if (uebersicht_.offene())
        return "Die Übersicht ist offen und zeigt dieses Schema. Schließen Sie sie zuerst.";
    return "";
}

void Programm::uebersichtZeigen() {
    uebersicht_.zeigen([this] {
        auto info = std::make_unique<Infoansicht>(zustand_.global, plattform_.gamepadXml, plattform_.joystick,
                                                  laufsteuerung_, plattform_.zeitgeber, plattform_.tastatur);
        auto form = std::make_unique<Uebersicht>(zustand_.global, std::move(info), taten_);
        QObject::connect(&hauptform_, &frmHaupt::schemaGeloescht, form.get(), &Uebersicht::schemaVergessen);
        QObject::connect(&hauptform_, &frmHaupt::schemaZurueckgeholt, form.get(), &Uebersicht::schemaZurueck);
        form->laden();
        return form;
    });
}

std::string Programm::ohneBildschirmSichern() {
    const bool lief = laufsteuerung_.geladen();
    const auto fehler = laufsteuerung_.ohneFensterBeenden();
    for (const auto* fenster : QApplication::topLevelWidgets())
        for (auto* schreiber : fenster->findChildren<Nebenarbeit*>())
            schreiber->ausarbeiten();
    streuschreiber_.abwarten();
    if (fehler)
        return einzeiler(qt(fehler->what())).toStdString();
    return lief ? "Die Regler des Laufs sind gespeichert." : "";
}

void Programm::starten() {
    const bool gelesen = hauptform_.laden();
    danebenStellen(hauptform_);
    hauptform_.show();
    if (gelesen)
        sicherungsdienst_.beginnen(hauptform_.sicherungen(), hauptform_);
    tastenankunft_.pruefen();
}
