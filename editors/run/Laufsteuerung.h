// SPDX-License-Identifier: GPL-3.0-or-later
// Starts and ends runs: the one place that knows whether the window of a running `Schema` is loaded.
#pragma once

#include "base/LaufzeitFehler.h"
#include "editors/common/Fenster.h"
#include "editors/run/Laufbeigaben.h"
#include "engine/run/LaufFenster.h"

#include <QObject>

#include <memory>
#include <optional>

class Laufmarke;
class Mitschnittablage;
class LaufFensterAnsicht;
class Sofortbild;

class Laufsteuerung final : public QObject {
    Q_OBJECT

public:
    Laufsteuerung(Laufzustand& zustand, Joystick& joystick, Eingabe& eingabe, Zeitgeber& zeitgeber,
                  Laufmarke& marke, const Laufbeigaben& beigaben = {});
    ~Laufsteuerung() override;

    /// The pad that a run is played by.
    Joystick& joystick() const { return joystick_; }
    /// Whether a run is on.
    bool geladen() const { return ansicht_ != nullptr; }
    /// Loads the window for the current `Schema` and shows it; a run that is on ends first. Where another
    /// copy of the program runs a `Schema` the user is asked. When the `Schema` can't be read the main form
    /// is asked back and one message box says why. Returns whether a run is on.
    bool laden();
    /// Ends the run, if one is on.
    void entladen();
    /// An editor has changed at once what a run that is on plays by.
    void eingriff() const;
    /// Comes back when what the runs have counted can be read; one that is on has not yet given it.
    void streuungAbwarten() const;
    /// As entladen without a window being touched or told: there is no display any more, and the process
    /// ends. Gives what could not be kept.
    std::optional<LaufzeitFehler> ohneFensterBeenden();

signals:
    void hauptformVerbergen();
    /// A run is over; `zeigen` tells whether the main form comes back into sight.
    void hauptformZurueck(bool zeigen);

private:
    void mitschnittFertig(const QString& name, const QString& fehler);
    QString mitschnittDesAbbruchs();
    void nachAbbruch(int nummer, const QString& text);

    bool markeSetzen();
    std::optional<LaufzeitFehler> laufBeenden();

    Laufzustand& zustand_;
    Joystick& joystick_;
    Eingabe& eingabe_;
    Zeitgeber& zeitgeber_;
    Laufmarke& marke_;
    const Laufbeigaben beigaben_;
    std::unique_ptr<Mitschnittablage> ablage_;
    Formbesitz<LaufFensterAnsicht> ansicht_;
};
