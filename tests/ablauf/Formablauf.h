// SPDX-License-Identifier: GPL-3.0-or-later
// What the stories stand on that set the program up in its forms before they play: the forms by name, keys
// that come from the X server, and somebody who answers message boxes.
#pragma once

#include "tests/ablauf/Ablauf.h"
#include "tests/platform/Ereignisse.h"

#include <QMessageBox>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <stdexcept>

class Formablauf : public Ablauf {
protected:
    Formablauf() {
        QObject::connect(&boxtakt_, &QTimer::timeout, [this] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                beantworten(*box);
        });
        boxtakt_.start(10);
    }

    void programmAuf(const Schemabau& schema) {
        schema.anlegen();
        programmAuf();
    }
    void programmAuf() {
        std::filesystem::current_path(datenbank_.ordner());
        lauscher_.emplace(qgetenv("DISPLAY").toStdString(), Lauschart::roh);
        programmStarten();
    }
    template <class Control> static Control& control(QWidget& form, const QString& name) {
        auto* gefunden = form.findChild<Control*>(name);
        if (!gefunden)
            throw std::runtime_error("no control " + name.toStdString());
        return *gefunden;
    }
    template <class Control> Control& imHaupt(const QString& name) {
        return control<Control>(programm_->hauptform(), name);
    }
    /// The form of this name that is in sight; null if there is none.
    static QWidget* offene(const QString& name) {
        for (auto* form : QApplication::topLevelWidgets())
            if (form->objectName() == name && form->isVisible())
                return form;
        return nullptr;
    }
    /// Opens a form by a button of the main form; it has the keyboard then.
    QWidget& oeffnen(const QString& knopf, const QString& name) {
        imHaupt<QPushButton>(knopf).click();
        auto* form = offene(name);
        if (!form)
            throw std::runtime_error("no form " + name.toStdString());
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form));
        return *form;
    }
    /// Presses a key of the keyboard and lets it go; `ab` and `auf` are what the X server tells of it.
    void anDerTastatur(VirtuelleTaste code, const std::string& ab, const std::string& auf) {
        for (const std::uint32_t flaggen : {0U, KEYEVENTF_KEYUP}) {
            const INPUT eines = taste(code, flaggen);
            system_->plattform().eingabe.SendInput({&eines, 1});
        }
        EXPECT_EQ(bis(auf), (Ereignisse{ab, auf}));
    }
    template <class Zustand> static bool warten(Zustand&& zustand) {
        return QTest::qWaitFor(zustand, GEDULD_MS);
    }

    QStringList boxen_; ///< texts of the boxes so far
    /// What the next boxes are answered with; the rest is accepted.
    std::deque<QMessageBox::StandardButton> antworten_;

private:
    void beantworten(QMessageBox& box) {
        boxen_ << box.text();
        if (antworten_.empty())
            return box.accept();
        const auto antwort = antworten_.front();
        antworten_.pop_front();
        auto* knopf = box.button(antwort);
        EXPECT_NE(knopf, nullptr) << "no such answer: " << box.text().toStdString();
        knopf ? knopf->click() : box.accept();
    }

    QTimer boxtakt_;
};
