// SPDX-License-Identifier: GPL-3.0-or-later
// Small things that all forms share: lengths, control names, plain message boxes.
#pragma once

#include "base/LaufzeitFehler.h"

#include <QMessageBox>
#include <QString>
#include <QWidget>

#include <string>
#include <string_view>

class QComboBox;
class QLabel;

/// A length in twips, 1/15 of a device-independent pixel.
constexpr int twips(int laenge) {
    return (laenge + 7) / 15;
}

inline QString qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Name of an element of a control array, "Command1(5)".
QString feldname(std::string_view name, int index);

/// Gives a control its name; returns it, so that it can stand where it is made.
template <class Control> Control* benannt(Control* control, const QString& name) {
    control->setObjectName(name);
    return control;
}

/// Lets a control keep its room while it is hidden.
void platzBehalten(QWidget& control);

/// A list of `Schema`s into which another name may be typed. What is typed stays as it is typed, and a long
/// name does not ask for a wider form.
QComboBox* schemaauswahl(const QString& name);

/// Names a list for assistive technology: that asks the list's label for it, not the list.
void listeBenennen(QComboBox& liste, QLabel& label, const QString& name);

/// Gives the form a fixed width: `gewuenscht`, or what its content needs where a large font makes it need
/// more. Comes before hoeheSetzen.
void breiteSetzen(QWidget& form, int gewuenscht);

/// Gives the form a fixed height: `gewuenscht`, or what its content needs where a large font makes it need
/// more.
void hoeheSetzen(QWidget& form, int gewuenscht);

/// A message box with one button; comes back when it is closed.
void meldung(QWidget* eltern, const QString& text, const QString& titel,
             QMessageBox::Icon symbol = QMessageBox::NoIcon);

/// A message box with Ja and Nein; true for Ja. Closing it is a Nein; `vorgabe` is what Enter presses.
bool frage(QWidget* eltern, const QString& text, const QString& titel,
           QMessageBox::StandardButton vorgabe = QMessageBox::Yes);

/// A text that was found somewhere, of any length and any number of lines, so that a box that quotes it stays
/// on the screen, with its button.
QString einzeiler(QString text);

/// The message box of an error: number and text.
void fehlermeldung(QWidget* eltern, const LaufzeitFehler& fehler, const QString& titel);

/// Whether what a form holds may be saved for the `Schema` that the main form shows. Where that is another
/// one than it was loaded for, the user is asked, with Nein as the default: it takes the place of what that
/// one has.
bool darfSpeichern(QWidget* eltern, const std::string& geladenes, const std::string& gewaehltes);

/// Runs what a control does, or the load of a form: an error ends it and is told in one message box, after
/// `vorher` has had it. False if there was one. It must not leave the handler, as Qt does not give back what
/// it holds while an exception passes through.
template <class Arbeit, class Vorher>
bool mitFehlermeldung(QWidget* eltern, const QString& titel, Arbeit&& arbeit, Vorher&& vorher) {
    try {
        arbeit();
        return true;
    } catch (const LaufzeitFehler& fehler) {
        vorher(fehler);
        fehlermeldung(eltern, fehler, titel);
        return false;
    }
}
template <class Arbeit> bool mitFehlermeldung(QWidget* eltern, const QString& titel, Arbeit&& arbeit) {
    return mitFehlermeldung(eltern, titel, arbeit, [](const LaufzeitFehler&) {});
}

/// The title of a box that tells what a button of a form could not do.
inline constexpr const char* FEHLERTITEL = "Fehler";
