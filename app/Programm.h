// SPDX-License-Identifier: GPL-3.0-or-later
// The composition: makes the parts of the program and joins them. Lives as long as the process.
#pragma once

#include "editors/common/Tatfolge.h"
#include "editors/exchange/Weitergabe.h"
#include "editors/main/Editoren.h"
#include "editors/main/Sicherungsdienst.h"
#include "editors/main/frmHaupt.h"
#include "editors/overview/Uebersicht.h"
#include "editors/run/Laufsteuerung.h"
#include "editors/run/Streuschreiber.h"
#include "editors/run/Tastenankunft.h"
#include "editors/stick/Stickeditoren.h"
#include "engine/mitschnitt/Laufmitschnitt.h"
#include "engine/run/Laufzustand.h"
#include "platform/Eingabeweg.h"
#include "platform/Laufmarke.h"
#include "platform/Schirmaufnahme.h"
#include "platform/Sofortbild.h"
#include "platform/Tastatur.h"
#include "platform/Tongeber.h"
#include "platform/mitschnitt/Mitschnittgeraete.h"

#include <string>

/// What the program takes from its platform; all of it outlives the program.
struct Plattform {
    Joystick& joystick;
    Eingabe& eingabe;
    Zeitgeber& zeitgeber;
    Prozess& prozess;
    Tastatur& tastatur;
    Tongeber& ton;
    Schirmaufnahme& aufnahme;
    Laufmarke& laufmarke;
    Eingabeweg& eingabeweg;
    std::string gamepadXml;           ///< path of the axis assignment file
    Sofortbild* sofortbild = nullptr; ///< null where the toolkit is to paint all
};

class Programm {
public:
    explicit Programm(const Plattform& plattform);

    /// Loads the main form and shows it, then tells where what is sent would not arrive. Closing the form
    /// ends the application's event loop.
    void starten();

    /// Shows what is in a file that hands a `Schema` on, and takes it up. Comes after `starten`.
    void dateiAufnehmen(const std::string& pfad) { weitergabe_.dateiAufnehmen(pfad); }

    /// Ends the run and waits for the pictures and counts that are being written, without touching a window:
    /// the display has gone. Gives what the user is to know of it, in German; "" where there is nothing.
    std::string ohneBildschirmSichern();

    frmHaupt& hauptform() { return hauptform_; }
    Laufsteuerung& laufsteuerung() { return laufsteuerung_; }
    Sicherungsdienst& sicherungsdienst() { return sicherungsdienst_; }

private:
    void uebersichtZeigen();
    QString umbenennenHindert(const std::string& schema) const;

    const Plattform plattform_;
    Mitschnittgeraete mitschnittgeraete_; // outlive what still may send when it dies
    Laufzustand zustand_;
    Laufmitschnitt mitschnitt_;
    Streuschreiber streuschreiber_;
    Laufsteuerung laufsteuerung_;
    Editoren editoren_;
    Stickeditoren stickeditoren_;
    Tatfolge taten_;
    frmHaupt hauptform_;
    Tastenankunft tastenankunft_;
    Einzelform<Uebersicht> uebersicht_;
    Sicherungsdienst sicherungsdienst_;
    Weitergabe weitergabe_;
};
