// SPDX-License-Identifier: GPL-3.0-or-later
// The story of a new user who has not read the help: from the short form to a game that is played, by the
// mouse and the keyboard of the desktop and by the pad, and by nothing that is not written on the screen.
//
// A program of its own: its server has a window manager.
#include "app/Anwendung.h"
#include "tests/ablauf/Ablauf.h"
#include "tests/hilfen/Fensterverwalter.h"
#include "tests/hilfen/Spielfenster.h"
#include "tests/hilfen/XHand.h"
#include "tests/hilfen/XServer.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <stdexcept>

namespace {

constexpr const char* SCHLIESSEN = "Alt_L+F4";
constexpr unsigned LINKS = 1;
constexpr unsigned RECHTS = 3;

constexpr auto DREIECK = SDL_CONTROLLER_BUTTON_Y;

class Neuling : public Ablauf {
protected:
    // Boxes run loops of their own, in which the story stands still.
    Neuling() {
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
        hand_.taste(SCHLIESSEN);
        EXPECT_TRUE(warten([&] { return !rest || !rest->isVisible(); })) << name;
    }

    // --- the stops ---

    void nameGeben() {
        auto& haupt = vorn("frmHaupt");
        const int kurz = haupt.height();
        knopf(haupt, "Schema neu");
        beschriftet<QAbstractButton>(haupt, "Schema Speichern");
        auto& feld = *haupt.findChild<QComboBox*>()->lineEdit();
        EXPECT_EQ(feld.placeholderText(), "Name des neuen Schemas");
        hand_.tippen("Mein Spiel");
        EXPECT_TRUE(warten([&] { return feld.text() == "Mein Spiel"; })) << feld.text().toStdString();
        hand_.taste("Return");
        EXPECT_TRUE(warten([&] { return haupt.height() > kurz; })) << "the form unfolds";
    }
    void dreieckBelegen() {
        knopf(vorn("frmHaupt"), "Button bearbeiten");
        auto& form = vorn("frmJoyKonfic");
        erwarteText(form, "● Spielpad");
        pad_->taste(DREIECK, true);
        EXPECT_TRUE(warten([&] { return form.findChild<QWidget*>("Shape2(0)")->isVisible(); }));
        pad_->taste(DREIECK, false);
        knopf(form, "Taste:");
        tasteFangen(form, "w");
        erwarteText(form, "W");
        knopf(form, "Speichern");
        EXPECT_TRUE(warten([&] {
            return datenbank_.zeilen("SELECT btn1 FROM tblTastatur") == Tabellenbild{{"1,87,0-0-0"}};
        }));
        schliessen(form);
    }
    void stickBelegen() {
        auto& haupt = vorn("frmHaupt");
        klicken(*haupt.findChild<QPushButton*>("Command1(1)")); // "Bearbeiten" below "Linken Stick"
        auto& form = vorn("frmJust");
        EXPECT_EQ(boxen_, QStringList{"Es wird ein neues Schema erstellen!"});
        auto& ebene = *form.findChild<QWidget*>("Stickebene");
        const QPoint rechts(ebene.width() * 85 / 100, ebene.height() / 2);
        darueberfahren(ebene, rechts, "Klick wählt das Feld, danach Rechtsklick: Aktion");
        klicken(ebene, rechts);
        erwarteText(form, "Rechtsklick: Aktion");
        klicken(ebene, rechts, RECHTS);
        EXPECT_TRUE(warten([&] { return form.findChild<QWidget*>("fraAktion")->isVisible(); }));
        knopf(form, "Tastatur drücken");
        tasteFangen(form, "d");
        const QPoint daneben(ebene.width() / 4, ebene.height() / 3);
        darueberfahren(ebene, daneben, "Klick speichert die Aktion und schließt die Tafel");
        klicken(ebene, daneben);
        EXPECT_TRUE(warten([&] { return !form.findChild<QWidget*>("fraAktion")->isVisible(); }));
        EXPECT_EQ(datenbank_.zeilen("SELECT Aktion FROM tblStickAktion"), (Tabellenbild{{"2,0,68,0,0"}}));
        schliessen(form);
    }
    void spielen() {
        knopf(vorn("frmHaupt"), "Schema starten");
        auto& lauf = vorn("LaufFenster");
        EXPECT_FALSE(programm_->hauptform().isVisible());
        Spielfenster spiel(qgetenv("DISPLAY").toStdString());
        EXPECT_TRUE(warten([&] { return spiel.vorn(); }));
        pad_->taste(DREIECK, true);
        erwarteTasten(spiel, {"+w"});
        erwarteText(lauf, "Dreieck → W");
        pad_->taste(DREIECK, false);
        pad_->achse(SDL_CONTROLLER_AXIS_LEFTX, SDL_JOYSTICK_AXIS_MAX);
        erwarteTasten(spiel, {"+w", "-w", "+d"});
        erwarteText(lauf, "Linker Stick, Feld rechts → D");
        pad_->achse(SDL_CONTROLLER_AXIS_LEFTX, 0);
        erwarteTasten(spiel, {"+w", "-w", "+d", "-d"});
        zurueckZu("LaufFenster");
        schliessen(vorn("LaufFenster"));
    }
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

private:
    XHand hand_{qgetenv("DISPLAY").toStdString()};
    QTimer boxtakt_;
};

} // namespace

TEST_F(Neuling, VonDerKurzenFormBisInsSpielOhneHilfe) {
    std::filesystem::current_path(datenbank_.ordner());
    programmStarten();
    nameGeben();
    dreieckBelegen();
    stickBelegen();
    spielen();
    beendenAmHauptfenster();
    EXPECT_EQ(boxen_, QStringList{"Es wird ein neues Schema erstellen!"}) << "and no other box on the way";
    EXPECT_EQ(datenbank_.zeilen("SELECT Schemaname FROM tblTastatur"), Tabellenbild{{"Mein Spiel"}});
}

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    const XServer server("1366x768x24");
    const Fensterverwalter verwalter(server.anzeige());
    qputenv("DISPLAY", server.anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("XDG_SESSION_TYPE");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");  // nor its service for priorities
    const Testordner laufzeit;                        // nor do runs of other tests
    qputenv("XDG_RUNTIME_DIR", laufzeit.pfad().c_str());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("SDL_AUDIODRIVER", "dummy"); // nor does its sound
    Anwendung anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
