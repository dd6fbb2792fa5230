// SPDX-License-Identifier: GPL-3.0-or-later
// A walk through all forms, in all the states in which they show other controls.
#pragma once

#include "tests/editors/common/Formtest.h"

#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest/QTest>

#include <functional>
#include <string>

/// A form as it stands open, and the state it is in.
using Formbesuch = std::function<void(const std::string& zustand, QWidget& form)>;

class Formgang : public Formtest {
protected:
    /// Opens each form in each state, one after the other, and closes it again.
    void gehen(const Formbesuch& besuch) {
        starten();
        besuch("Hauptform, kurz", haupt());
        programm_.reset();
        ereignisse();
        schemaAnlegen();
        starten();
        besuch("Hauptform", haupt());
        achsen(besuch);
        tastwerk(besuch);
        schubregler(besuch);
        stick(1, "frmJust", besuch);
        stick(6, "frmJustr", besuch);
        uebersicht(besuch);
        lauf(besuch);
    }

    static QWidget* offene(const QString& name) {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == name && fenster->isVisible())
                return fenster;
        return nullptr;
    }

private:
    void schemaAnlegen() {
        Schemabau bau(datenbank_);
        bau.taste(0, "1,65,1-100-50").taste(1, "5,0,3-1-0").taste(2, "3,0,0-0-0");
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
            bau.linien(seite, 1, {20000, 45000, 21000, 46000}).leereLinienAb(seite, 2);
        bau.anlegen();
    }
    static QWidget& form(const char* name) {
        ereignisse();
        auto* offen = offene(name);
        if (!offen)
            throw std::runtime_error(std::string("not open: ") + name);
        return *offen;
    }
    static void schliessen(QWidget& form) {
        form.close();
        ereignisse();
    }
    static void druecken(QWidget& form, const QString& knopf) {
        control<QPushButton>(form, knopf).click();
        ereignisse();
    }
    static void setzen(QWidget& form, const char* name, int index) {
        control<QRadioButton>(form, QString("%1(%2)").arg(name).arg(index)).setChecked(true);
        ereignisse();
    }

    void achsen(const Formbesuch& besuch) {
        druecken(haupt(), "Command3");
        auto& offen = form("AchzenKalib");
        besuch("Achsen", offen);
        schliessen(offen);
    }

    void tastwerk(const Formbesuch& besuch) {
        druecken(haupt(), "Command1(0)");
        auto& offen = form("frmJoyKonfic");
        besuch("Tastwerk", offen);
        for (const int taste : {0, 1, 2}) {
            QTest::mouseClick(&control<QLabel>(offen, QString("lblInfo(%1)").arg(taste)), Qt::LeftButton);
            ereignisse();
            besuch("Tastwerk, Knopf " + std::to_string(taste), offen);
        }
        schliessen(offen);
    }

    void schubregler(const Formbesuch& besuch) {
        druecken(haupt(), "Command4");
        auto& offen = form("SchubreglerKonfic");
        besuch("Schubregler", offen);
        control<QListWidget>(offen, "List1").setCurrentRow(0);
        for (int art = 0; art < 4; ++art) {
            setzen(offen, "Option1", art);
            if (art == 2) // with all that a key can have
                setzen(offen, "optEig", 1);
            besuch("Schubregler, Aktion " + std::to_string(art), offen);
        }
        schliessen(offen);
    }

    void stick(int knopf, const char* name, const Formbesuch& besuch) {
        druecken(haupt(), QString("Command1(%1)").arg(knopf));
        auto& offen = form(name);
        const std::string wer = name;
        besuch(wer, offen);
        tafelnOeffnen(offen);
        besuch(wer + ", Tafeln offen", offen);
        vergehen(10000);
        auto& ebene = control<QWidget>(offen, "Stickebene");
        const QPoint mitte = ebene.rect().center();
        QTest::mouseClick(&ebene, Qt::LeftButton, Qt::NoModifier, mitte);
        QTest::mouseClick(&ebene, Qt::RightButton, Qt::NoModifier, mitte);
        if (!control<QWidget>(offen, "fraAktion").isVisible())
            throw std::runtime_error("no panel");
        for (int art = 0; art < 6; ++art) {
            setzen(offen, "Option1", art);
            if (art == 2)
                setzen(offen, "optEig", 1);
            if (art == 5)
                setzen(offen, "Option3", 2);
            besuch(wer + ", Aktion " + std::to_string(art), offen);
        }
        QTest::mouseClick(&ebene, Qt::LeftButton, Qt::NoModifier, mitte);
        tafelnOeffnen(offen);
        druecken(offen, "Command1(2)");
        auto& bilder = form("ScreenChecken");
        besuch(wer + ", Bilder", bilder);
        schliessen(bilder);
        schliessen(offen);
    }
    void tafelnOeffnen(QWidget& form) {
        for (const char* tafel : {"Frame2", "Frame3"}) {
            auto& eine = control<QWidget>(form, tafel);
            const QPointF wo(eine.width() / 2.0, 3);
            QMouseEvent ereignis(QEvent::MouseMove, wo, eine.mapToGlobal(wo), Qt::NoButton, Qt::NoButton,
                                 Qt::NoModifier);
            QApplication::sendEvent(&eine, &ereignis);
        }
        vergehen(400);
    }

    void uebersicht(const Formbesuch& besuch) {
        haupt().activateWindow();
        ereignisse();
        QTest::keyClick(&haupt(), Qt::Key_D, Qt::ControlModifier);
        auto& offen = form("Uebersicht");
        besuch("Übersicht", offen);
        for (const auto& [ebene, name] :
             {std::pair{0, "frmJust"}, std::pair{3, "frmJoyKonfic"}, std::pair{6, "frmJustr"}}) {
            setzen(offen, "Option1", ebene);
            druecken(offen, "Command1(3)");
            besuch(std::string("Übersicht, Info ") + name, form(name));
            besuch(std::string("Übersicht neben ") + name, offen);
        }
        schliessen(offen);
    }

    void lauf(const Formbesuch& besuch) {
        druecken(haupt(), "Command1(5)");
        auto& offen = form("LaufFenster");
        besuch("Lauf", offen);
        druecken(offen, "Command1(1)");
        besuch("Lauf, Testfeld", offen);
        schliessen(offen);
    }
};
