// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the button editor stand on: the form opened from the main form on a `Schema` "S", its
// controls, and the assignments of the database by button and layer.
#pragma once

#include "tests/editors/common/Formtest.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest/QTest>

#include <array>
#include <string>
#include <vector>

inline const Gesehen KEINE_ZAHL{"", "Sie haben keine Zahl eingegeben!", QMessageBox::NoIcon, QMessageBox::Ok};

class Tastwerktest : public Formtest {
protected:
    Tastwerktest() { Schemabau(datenbank_).anlegen(); }

    /// Column of a button in the database.
    static std::string spalte(int taste, int ebene) {
        static constexpr std::array<int, 3> VERSATZ{1, 101, 1001};
        static constexpr std::array<const char*, 4> RICHTUNGSNAMEN{"Oben", "Rechts", "Unten", "Links"};
        static constexpr std::array<const char*, 3> ENDUNG{"", "2", "3"};
        const auto e = static_cast<std::size_t>(ebene);
        return taste < 12 ? "btn" + std::to_string(taste + VERSATZ[e])
                          : std::string(RICHTUNGSNAMEN[static_cast<std::size_t>(taste - 12)]) + ENDUNG[e];
    }
    static std::string tabelle(int taste) { return taste < 12 ? "tblTastatur" : "tblSteuerKreuz"; }
    /// Lays an assignment into the database, before the form is opened.
    void belegt(int taste, const std::string& belegung, int ebene = 0) {
        datenbank_.sql("UPDATE " + tabelle(taste) + " SET " + spalte(taste, ebene) + " = '" + belegung +
                       "';");
    }
    /// What the database holds.
    std::string gespeichert(int taste, int ebene = 0) {
        return datenbank_.zeilen("SELECT " + spalte(taste, ebene) + " FROM " + tabelle(taste) + ";")[0][0];
    }
    /// What the form would store: saves, and reads it back.
    std::string belegung(int taste, int ebene = 0) {
        knopf(4).click();
        return gespeichert(taste, ebene);
    }

    void oeffnen() {
        if (!programm_)
            starten();
        control<QPushButton>(haupt(), "Command1(0)").click();
        ereignisse();
    }
    static QWidget* offenes() {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == "frmJoyKonfic" && fenster->isVisible())
                return fenster;
        return nullptr;
    }
    static QWidget& form() {
        auto* fenster = offenes();
        if (!fenster)
            throw std::runtime_error("the button editor is not open");
        return *fenster;
    }

    static QString feld(const char* name, int index) { return QString("%1(%2)").arg(name).arg(index); }
    QPushButton& knopf(int index) { return control<QPushButton>(form(), feld("Command1", index)); }
    QLabel& schild(int taste) { return control<QLabel>(form(), feld("lblInfo", taste)); }
    std::string text(int taste) { return schild(taste).text().toStdString(); }
    std::vector<std::string> schilder() {
        std::vector<std::string> texte;
        for (int taste = 0; taste < 16; ++taste)
            texte.push_back(text(taste));
        return texte;
    }
    QRadioButton& option(const char* name, int index) {
        return control<QRadioButton>(form(), feld(name, index));
    }
    /// Indices of the options of a group that are set.
    std::vector<int> gesetzt(const char* name, int anzahl) {
        std::vector<int> indices;
        for (int i = 0; i < anzahl; ++i)
            if (option(name, i).isChecked())
                indices.push_back(i);
        return indices;
    }
    QLineEdit& box(const QString& name) { return control<QLineEdit>(form(), name); }
    QLineEdit& fang() { return box("Text3(0)"); }
    QLabel& txtTaste() { return control<QLabel>(form(), "txtTaste"); }
    QCheckBox& wiederholen() { return control<QCheckBox>(form(), "Check1(0)"); }

    void waehlen(int taste) {
        QTest::mouseClick(&schild(taste), Qt::LeftButton);
        ereignisse();
    }
    void art(int index) { QTest::mouseClick(&option("Option1", index), Qt::LeftButton); }
    /// Presses a button word on the pad until the next poll.
    void amPad(std::uint32_t wort) {
        tastenDruecken(wort);
        vergehen(10);
    }

    /// Numbers of the marks in sight.
    std::vector<int> marken() {
        std::vector<int> nummern;
        for (int i = 0; i < 24; ++i)
            if (control<QWidget>(form(), feld("Shape2", i)).isVisible())
                nummern.push_back(i);
        return nummern;
    }
    /// Numbers of the property frames in sight.
    std::vector<int> rahmen() {
        std::vector<int> nummern;
        for (int i = 0; i < 3; ++i)
            if (control<QGroupBox>(form(), feld("famAusgabe", i)).isVisible())
                nummern.push_back(i);
        return nummern;
    }
    /// Which of the named controls can be used, by their own switch.
    std::vector<std::string> nutzbar(const std::vector<const char*>& namen) {
        std::vector<std::string> frei;
        for (const auto* name : namen)
            if (control<QWidget>(form(), name).isEnabled())
                frei.emplace_back(name);
        return frei;
    }
};
