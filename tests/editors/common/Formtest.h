// SPDX-License-Identifier: GPL-3.0-or-later
// What all tests of forms stand on: the program's composition on fakes and a database of its own, its
// controls by their names, and somebody who answers message boxes.
#pragma once

#include "app/Programm.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeEingabeweg.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeMarke.h"
#include "platform/probe/ProbeProzess.h"
#include "platform/probe/ProbeSchirm.h"
#include "platform/probe/ProbeTastatur.h"
#include "platform/probe/ProbeTon.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

#include <memory>
#include <ostream>
#include <utility>
#include <vector>

/// A message box as the user sees it.
struct Gesehen {
    QString titel;
    QString text;
    QMessageBox::Icon symbol;
    QMessageBox::StandardButtons knoepfe;
    bool operator==(const Gesehen&) const = default;
};
inline void PrintTo(const Gesehen& box, std::ostream* strom) {
    *strom << "[" << box.titel.toStdString() << "] " << box.text.toStdString() << " (symbol " << box.symbol
           << ", buttons " << box.knoepfe.toInt() << ")";
}

/// The question of a form that was loaded for Schema S, when the main form shows T.
inline const Gesehen ANDERES_SCHEMA{
    "",
    "Diese Angaben wurden für das Schema „S“ geladen, gewählt ist jetzt „T“.\n"
    "Sollen sie das ersetzen, was für „T“ gespeichert ist?",
    QMessageBox::NoIcon, QMessageBox::Yes | QMessageBox::No};

/// While it lives, writes down every message box and presses a button: the next of `antworten`, and its
/// default button when there are no more.
class Boxleser {
public:
    explicit Boxleser(std::vector<QMessageBox::StandardButton> antworten = {})
        : antworten_(std::move(antworten)) {
        QObject::connect(&takt_, &QTimer::timeout, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return;
            gesehen_.push_back({box->windowTitle(), gelesen(*box), box->icon(), box->standardButtons()});
            if (gesehen_.size() > antworten_.size())
                box->accept();
            else
                box->button(antworten_[gesehen_.size() - 1])->click();
        });
        takt_.start(0);
    }
    const std::vector<Gesehen>& gesehen() const { return gesehen_; }

private:
    /// As it is read: where a long word may break shows nowhere, and depends on the screen.
    static QString gelesen(const QMessageBox& box) { return box.text().remove(QChar(0x200B)); }

    QTimer takt_;
    std::vector<QMessageBox::StandardButton> antworten_;
    std::vector<Gesehen> gesehen_;
};

/// While it lives, presses Enter in every message box.
class Eingabetaste {
public:
    Eingabetaste() {
        QObject::connect(&takt_, &QTimer::timeout, [this] {
            auto* box = QApplication::activeModalWidget();
            if (!box)
                return;
            ++gedrueckt_;
            QTest::keyClick(box, Qt::Key_Return);
        });
        takt_.start(0);
    }
    int gedrueckt() const { return gedrueckt_; }

private:
    QTimer takt_;
    int gedrueckt_ = 0;
};

/// While it lives, forms are made with letters of another size.
class Schriftgrad {
public:
    explicit Schriftgrad(int punkt) {
        auto schrift = vorher_;
        schrift.setPointSize(punkt);
        QApplication::setFont(schrift);
    }
    ~Schriftgrad() { QApplication::setFont(vorher_); }
    Schriftgrad(const Schriftgrad&) = delete;
    Schriftgrad& operator=(const Schriftgrad&) = delete;

private:
    const QFont vorher_ = QApplication::font();
};

class Formtest : public ::testing::Test {
protected:
    /// Starts the program on the database as it is now.
    void starten() {
        programm_ = std::make_unique<Programm>(Plattform{pad_, eingabe_, uhr_, prozess_, tastatur_, ton_,
                                                         schirm_, marke_, weg_,
                                                         (datenbank_.ordner() / "Gamepad.xml").string()});
        programm_->starten();
        programm_->sicherungsdienst().abwarten(); // it reads the files
    }
    ~Formtest() override {
        programm_.reset();
        ereignisse();
    }

    static void ereignisse() {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    QWidget& haupt() { return programm_->hauptform(); }
    /// The window of the running Schema; null if none is loaded.
    static QWidget* laufFenster() {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == "LaufFenster" && fenster->isVisible())
                return fenster;
        return nullptr;
    }
    template <class Control> static Control& control(QWidget& form, const QString& name) {
        auto* gefunden = form.findChild<Control*>(name);
        if (!gefunden)
            throw std::runtime_error("no control " + name.toStdString());
        return *gefunden;
    }

    /// The form's controls that are in sight with less room than their text needs.
    static std::vector<std::string> beschnittene(const QWidget& form) {
        std::vector<std::string> namen;
        for (const auto* feld : form.findChildren<QWidget*>()) {
            const auto name = feld->objectName();
            const bool rollt = qobject_cast<const QAbstractScrollArea*>(feld) != nullptr;
            if (name.isEmpty() || name.startsWith("qt_") || !feld->isVisible() || rollt)
                continue;
            const auto braucht = feld->minimumSizeHint();
            const bool umbrochen = qobject_cast<const QLabel*>(feld) && feld->hasHeightForWidth();
            const int hoehe = umbrochen ? feld->heightForWidth(feld->width()) : braucht.height();
            if (feld->width() < braucht.width() || feld->height() < hoehe)
                namen.push_back(name.toStdString());
        }
        return namen;
    }

    void tastenDruecken(std::uint32_t tasten) { pad_.zustand.dwButtons = tasten; }
    /// Lets virtual time pass, and then the events that came of it.
    void vergehen(int ms) {
        uhr_.vorUm(std::chrono::milliseconds{ms});
        ereignisse();
    }

    Testdatenbank datenbank_;
    ProbeJoystick pad_;
    ProbeEingabe eingabe_;
    ProbeUhr uhr_;
    ProbeProzess prozess_{datenbank_.ordner().string(), '/'};
    ProbeTastatur tastatur_;
    ProbeTon ton_;
    ProbeSchirm schirm_;
    int gesetzteMarken_ = 0; ///< of this copy of the program and of those that a test plays
    ProbeMarke marke_{gesetzteMarken_};
    ProbeEingabeweg weg_;
    std::unique_ptr<Programm> programm_;
};
