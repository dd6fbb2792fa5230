// SPDX-License-Identifier: GPL-3.0-or-later
// The platform that the program runs on: pad, injection, timers, process, sound and screen of this system.
#pragma once

#include "app/Programm.h"
#include "platform/linux/Dateimarke.h"
#include "platform/linux/LinuxProzess.h"
#include "platform/linux/Padliste.h"
#include "platform/linux/QtZeitgeber.h"
#include "platform/linux/Schirmwahl.h"
#include "platform/linux/SdlJoystick.h"
#include "platform/linux/SdlTon.h"
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/Wahleingabe.h"
#include "platform/linux/XSofortbild.h"

#include <QObject>

/// Needs the QGuiApplication of its thread.
class Systemplattform {
public:
    /// What is held down is noted on `blatt`, if there is one, which must outlive this object.
    explicit Systemplattform(Waechterblatt* blatt = nullptr);

    Plattform plattform() {
        return {joystick_,  eingabe_, zeitgeber_, prozess_,    layout_,     ton_,
                *aufnahme_, marke_,   eingabe_,   gamepadXml_, &sofortbild_};
    }
    /// Which injection serves, and why others do not.
    const EingabeWahl& eingabewahl() const { return eingabe_.wahl(); }
    /// What was read of the user's list of pads, `gamecontrollerdb.txt` in the current directory.
    const Padliste& padliste() const { return padliste_; }
    QtZeitgeber& zeitgeber() { return zeitgeber_; }

private:
    Tastaturlayout layout_;
    Wahleingabe eingabe_;
    QtZeitgeber zeitgeber_;
    SdlJoystick joystick_;
    Padliste padliste_; // pads are opened after it
    LinuxProzess prozess_;
    SdlTon ton_;
    std::unique_ptr<Schirmaufnahme> aufnahme_;
    Dateimarke marke_{Dateimarke::pfad()};
    XSofortbild sofortbild_;
    std::string gamepadXml_; ///< in the program's own folder
    QObject ohr_;            ///< hears the application
};
