// SPDX-License-Identifier: GPL-3.0-or-later
// A story of a user at the desktop, by the mouse, the keyboard and the pad, and by nothing that is not on the
// screen. Its server has a window manager.
#pragma once

#include "tests/ablauf/Ablauf.h"
#include "tests/hilfen/Spielfenster.h"
#include "tests/hilfen/XHand.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <stdexcept>

class Handablauf : public Ablauf {
protected:
    static constexpr const char* SCHLIESSEN = "Alt_L+F4";
    static constexpr unsigned LINKS = 1;
    static constexpr unsigned RECHTS = 3;

    // Boxes run loops of their own, in which the story stands still.
    Handablauf() {
        QObject::connect(&boxtakt_, &QTimer::timeout, [this] {
            const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box || !box->isActiveWindow() || box->text() == boxen_.value(boxen_.size() - 1))
                return;
            boxen_ << box->text();
            hand_.taste("Return");
        });
        boxtakt_.start(50);
    }
    template <class Zustand> static bool warten(Zustand&& zustand) {
        return QTest::qWaitFor(zustand, GEDULD_MS);
    }

    // --- what is on the screen ---

    /// The form of this name, when it has the keyboard.
    static QWidget& vorn(const QString& name) {
        const auto istEs = [&] {
            const auto* aktives = QApplication::activeWindow();
            return aktives && aktives->objectName() == name;
        };
        if (!warten(istEs))
            throw std::runtime_error("not in front: " + name.toStdString());
        auto& form = *QApplication::activeWindow();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
        const auto frei = QGuiApplication::primaryScreen()->availableGeometry();
        EXPECT_TRUE(warten([&] { return frei.contains(form.frameGeometry()); })) << name.toStdString();
        return form;
    }
    /// The only control of this kind with this text that can be seen and used; waits for it.
    template <class Control> static Control& beschriftet(QWidget& form, const QString& text) {
        QList<Control*> gefundene;
        const auto genauEines = [&] {
            gefundene.clear();
            for (auto* eines : form.findChildren<Control*>())
                if (eines->isVisible() && eines->isEnabled() && eines->text().remove('&').trimmed() == text)
                    gefundene << eines;
            return gefundene.size() == 1;
        };
        if (!warten(genauEines))
            throw std::runtime_error(std::to_string(gefundene.size()) + " of " + text.toStdString());
        return *gefundene[0];
    }
    static bool steht(QWidget& form, const QString& text) {
        for (const auto* label : form.findChildren<QLabel*>())
            if (label->isVisible() && label->text().contains(text))
                return true;
        return false;
    }
    static void erwarteText(QWidget& form, const QString& text) {
        EXPECT_TRUE(warten([&] { return steht(form, text); })) << text.toStdString();
    }

    // --- the hands ---

    /// Moves about a place of a control until the form says this of it.
    void darueberfahren(QWidget& control, QPoint wo, const QString& text) {
        const auto dort = control.mapToGlobal(wo);
        int schritt = 0;
        const auto gesagt = [&] {
            hand_.zeigen(dort.x() + schritt++ % 5, dort.y());
            return steht(*control.window(), text);
        };
        EXPECT_TRUE(warten(gesagt)) << text.toStdString();
    }
    /// Clicks on a place of a control, which nothing may cover.
    void klicken(QWidget& control, QPoint wo, unsigned knopf = LINKS) {
        const auto dort = control.mapToGlobal(wo);
        const auto oben = [&] {
            auto* getroffen = QApplication::widgetAt(dort);
            return getroffen && (getroffen == &control || control.isAncestorOf(getroffen));
        };
        EXPECT_TRUE(warten(oben)) << control.objectName().toStdString() << " is covered";
        hand_.zeigen(dort.x(), dort.y());
        takte(2);
        hand_.klicken(knopf);
    }
    void klicken(QWidget& control) { klicken(control, control.rect().center()); }
    void knopf(QWidget& form, const QString& text) { klicken(beschriftet<QAbstractButton>(form, text)); }
    /// The key box takes the key that is pressed now, and shows that.
    void tasteFangen(QWidget& form, const char* taste) {
        auto& fang = beschriftet<QLineEdit>(form, "Hier Klicken");
        klicken(fang);
        EXPECT_TRUE(warten([&] { return fang.hasFocus(); }));
        const auto vorher = fang.text();
        hand_.taste(taste);
        EXPECT_TRUE(warten([&] { return fang.text() != vorher; })) << vorher.toStdString();
    }
    void schliessen(QWidget& form) {
        const QPointer<QWidget> rest(&form); // it may go at once
        const auto name = form.objectName().toStdString();
        const auto zu = [&] { return !rest || !rest->isVisible(); };
        // The keys go to whom the window manager means, and it may miss them while a game goes: a user
        // presses again.
        constexpr int VERSUCHE = 3;
        constexpr int AUGENBLICK_MS = 3000;
        for (int i = 0; i < VERSUCHE && !zu(); ++i) {
            EXPECT_TRUE(warten([&] { return zu() || hand_.aktivesFenster() == rest->winId(); })) << name;
            hand_.taste(SCHLIESSEN);
            [[maybe_unused]] const bool gleich = QTest::qWaitFor(zu, AUGENBLICK_MS);
        }
        EXPECT_TRUE(zu()) << name;
    }

    // --- stops of any story ---

    /// Alt and tabulator; the window manager changes to the other window when Alt is let go.
    void zurueckZu(const QString& name) {
        constexpr int VERSUCHE = 5;
        constexpr int HALTEN = 40; // ticks in which it may notice the keys
        const auto da = [&] {
            const auto* aktives = QApplication::activeWindow();
            return aktives && aktives->objectName() == name;
        };
        for (int i = 0; i < VERSUCHE && !da(); ++i) {
            hand_.druecken("Alt_L");
            hand_.taste("Tab");
            takte(HALTEN);
            hand_.loesen("Alt_L");
            takte(HALTEN);
        }
    }
    static void erwarteTasten(Spielfenster& spiel, const Ereignisse& soll) {
        EXPECT_TRUE(warten([&] { return spiel.tasten() == soll; }));
        EXPECT_EQ(spiel.tasten(), soll);
    }
    /// The button is as it was before the run; the form ends the program.
    void beendenAmHauptfenster() {
        auto& haupt = vorn("frmHaupt");
        beschriftet<QAbstractButton>(haupt, "Schema starten");
        QTimer::singleShot(0, [this] { hand_.taste(SCHLIESSEN); });
        QApplication::exec();
        EXPECT_FALSE(haupt.isVisible());
    }

    QStringList boxen_;
    XHand hand_{qgetenv("DISPLAY").toStdString()};

private:
    QTimer boxtakt_;
};
