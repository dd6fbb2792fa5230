// SPDX-License-Identifier: GPL-3.0-or-later
// The slider editor in the hands of a test: opened on a slider text, read by its controls, saved.
#pragma once

#include "platform/probe/ProbeTastatur.h"
#include "store/files/Gamepadtabelle.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Gamepadxml.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest/QTest>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

using Ereignisse = std::vector<std::string>;

class Schubreglertest : public Formtest {
protected:
    static inline const std::array<std::string, ACHSEN> GRUNDBELEGUNG{"lx", "ly", "rx", "ry", "Z1", "Z2"};
    static constexpr const char* DREI_FELDER = "3/0-1-0-1(10,5,)/0-2-1-3(120,,)/0-3-2-1(65,50,100)";

    /// A box without a title of its own.
    static Gesehen box(const QString& text) { return {"", text, QMessageBox::NoIcon, QMessageBox::Ok}; }
    static inline const Gesehen KEINE_ZAHL = box("Sie müssen eine Zahl eingeben");
    static inline const Gesehen PASST_NICHT = box("Sie müssen eine ganze Zahl von 0 bis 2147483647 eingeben");

    Schubreglertest() {
        for (const auto* name : {"S", "T"})
            Schemabau(datenbank_, name).anlegen();
    }
    std::filesystem::path datei() const { return datenbank_.ordner() / "Gamepad.xml"; }

    /// Starts the program on this slider text, "" for none, and opens the form.
    void oeffnen(const std::string& text = "") {
        dateiSchreiben(datei(), gamepadXmlMit("S", GRUNDBELEGUNG, text));
        starten();
        klicken();
    }
    void klicken() { control<QPushButton>(haupt(), "Command4").click(); }
    /// Makes the form the active window, as a window manager does once a box is closed.
    static void nachVorn() {
        form().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form()));
    }
    /// The control that has the focus.
    static QString fokus() {
        nachVorn();
        return QApplication::focusWidget()->objectName();
    }
    static std::vector<QWidget*> formen() {
        std::vector<QWidget*> offene;
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == "SchubreglerKonfic" && fenster->isVisible())
                offene.push_back(fenster);
        return offene;
    }
    static QWidget& form() { return *formen().at(0); }
    static QPushButton& knopf(const QString& name) { return control<QPushButton>(form(), name); }
    static QRadioButton& option(const QString& name) { return control<QRadioButton>(form(), name); }
    static QLineEdit& feld(const QString& name) { return control<QLineEdit>(form(), name); }
    static QListWidget& liste() { return control<QListWidget>(form(), "List1"); }
    static QWidget& bild() { return control<QWidget>(form(), "Picture1"); }
    static QString stand() { return control<QLabel>(form(), "Label1").text(); }

    static QStringList eintraege() {
        QStringList texte;
        for (int i = 0; i < liste().count(); ++i)
            texte << liste().item(i)->text();
        return texte;
    }
    /// Index of the option that is set, of a control array of `anzahl`; -1 for none or for several.
    static int gesetzt(const QString& name, int anzahl) {
        int index = -1;
        int zahl = 0;
        for (int i = 0; i < anzahl; ++i)
            if (option(QString("%1(%2)").arg(name).arg(i)).isChecked()) {
                index = i;
                ++zahl;
            }
        return zahl == 1 ? index : -1;
    }
    /// The frames of properties in sight.
    static std::vector<int> rahmen() {
        std::vector<int> sichtbare;
        for (int i = 0; i < 4; ++i)
            if (control<QGroupBox>(form(), QString("Frame1(%1)").arg(i)).isVisible())
                sichtbare.push_back(i);
        return sichtbare;
    }
    /// Places of the lines in sight, by index.
    static std::map<int, int> linien() {
        std::map<int, int> stellen;
        for (int i = 0; i < 20; ++i)
            if (auto& linie = control<QWidget>(form(), QString("Line1(%1)").arg(i)); linie.isVisible())
                stellen[i] = linie.x();
        return stellen;
    }
    /// Presses a key in the box for it and lets it go.
    static void taste(VirtuelleTaste code) {
        for (const auto art : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent ereignis(art, Qt::Key_unknown, Qt::NoModifier, ProbeTastatur::nummer(code), 0, 0);
            QApplication::sendEvent(&feld("txtTaste"), &ereignis);
        }
    }
    /// "Aktion übernehmen", and the boxes that come.
    static std::vector<Gesehen> uebernehmen() {
        Boxleser boxen;
        knopf("Command2").click();
        return boxen.gesehen();
    }
    /// "Schema speichern", and the boxes that come.
    static std::vector<Gesehen> speichern() {
        Boxleser boxen;
        knopf("Command3").click();
        return boxen.gesehen();
    }
    static void neueLinien(int anzahl) {
        for (int i = 0; i < anzahl; ++i)
            knopf("Command1(0)").click();
    }
    /// The slider text of a `Schema` as it lies in the file; "NULL" for none.
    std::string gespeichert(const std::string& schema = "S") const {
        const auto tabelle = gamepadAusXml(dateiLesen(datei()));
        for (const auto& zeile : tabelle->zeilen)
            if (zeile.at("Schema") == schema)
                return zeile.contains("Schubregler") ? zeile.at("Schubregler") : "NULL";
        return "no row";
    }
    void schieben(std::uint32_t wert) {
        pad_.zustand.dwUpos = wert;
        vergehen(50);
    }
};
