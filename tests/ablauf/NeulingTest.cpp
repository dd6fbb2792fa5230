// SPDX-License-Identifier: GPL-3.0-or-later
// The story of a new user who has not read the help: from the short form to a game that is played, by the
// mouse and the keyboard of the desktop and by the pad, and by nothing that is not written on the screen.
//
// A program of its own: its server has a window manager.
#include "app/Anwendung.h"
#include "tests/ablauf/Handablauf.h"
#include "tests/hilfen/Fensterverwalter.h"
#include "tests/hilfen/XServer.h"

#include <QComboBox>

namespace {

constexpr auto DREIECK = SDL_CONTROLLER_BUTTON_Y;

class Neuling : public Handablauf {
protected:
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
