// SPDX-License-Identifier: GPL-3.0-or-later
// The row of a `Schema` in Gamepad.xml: which raw axis of the pad is which stick or slider, and beside it the
// slider text.
//
// No error leaves any of the procedures: a file that cannot be read or written leaves the program with what
// it has. A file that is none of this kind is never overwritten. Two copies of the program that change the
// file at one time wait for each other.
#pragma once

#include "base/Achse.h"

#include <array>
#include <string>

/// one line of the assignment form
struct Achsenauswahl {
    std::string Auswahl;
    std::string Richtung;
};

class Achsendatei {
public:
    /// `gamepadXml` is the path of the file. `auswahl` is the name of the `Schema` that the main form shows;
    /// looked at in each call.
    Achsendatei(std::string gamepadXml, const std::string& auswahl);

    /// Reads the row of the `Schema`; makes the row, or the file, where there is none. From a file that
    /// cannot be read come six empty names.
    void AchsenLaden();

    /// Takes the six lines of the form, one a raw axis, as the assignment and saves it in one write. A
    /// `Schema` without a row gets one. False when it is not saved, and in force all the same.
    bool AchsenUebernehmen(const std::array<Achsenauswahl, ACHSEN>& tabelle);

    /// Saves AchsenSchluessel, and the slider text `text` unless that is empty, in the row of the `Schema`.
    /// Where there is no row, a new one takes the default assignment, as AchsenSchluessel does, and `text`.
    /// All or nothing is saved: a `text` of more than 1000 characters leaves the file as it was. Without a
    /// file nothing happens. True when it is saved.
    bool GamepadSchreiben(const std::string& text);

    /// Deletes the row of the `Schema`, if there is one. False when it may still be there.
    bool GamepadLoeschen();

    /// Makes the file, with a row of defaults for the `Schema`, which AchsenSchluessel takes too. Does not
    /// touch a file that exists.
    void GamepadAnlegen();

    /// The logical names by raw axis X Y Z R U V.
    const std::array<std::string, ACHSEN>& AchsenSchluessel() const { return AchsenSchluessel_; }

    /// Path of the file.
    const std::string& pfad() const { return gamepadXml_; }

    /// The `Schema` that the procedures are about at present.
    const std::string& Schema() const { return auswahl_; }

    /// The slider text that AchsenLaden has read.
    const std::string& SchubreglerText() const { return SchubreglerText_; }

private:
    void laden();
    /// `neue` are the names for a `Schema` that has no row.
    bool schreiben(const std::string& text, const std::array<std::string, ACHSEN>& neue);
    bool loeschen();
    void anlegen();

    const std::string gamepadXml_;
    const std::string& auswahl_;
    std::array<std::string, ACHSEN> AchsenSchluessel_;
    std::string SchubreglerText_;
    std::string SchubreglerSchema_; ///< whose SchubreglerText_ is
};
