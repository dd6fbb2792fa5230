// SPDX-License-Identifier: GPL-3.0-or-later
// What the program tells where what it sends does not arrive, at its start and at that of a run.
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"

#include <QPushButton>

#include <optional>

namespace {

const std::vector<std::string> GRUND{"uinput: Es fehlt die Berechtigung"};
const std::vector<std::string> GRUENDE{"uinput: Es fehlt die Berechtigung",
                                       "XTest: Kein X-Server erreichbar"};

const QString ABHILFE =
    "Mit diesen zwei Zeilen in einem Terminal kommen sie überall an, ohne neue Anmeldung:\n\n"
    "echo 'KERNEL==\"uinput\", SUBSYSTEM==\"misc\", OPTIONS+=\"static_node=uinput\", TAG+=\"uaccess\"' | "
    "sudo "
    "tee /etc/udev/rules.d/70-gamepad-konfic.rules\n\n"
    "sudo modprobe uinput; sudo udevadm control --reload; sudo udevadm trigger --action=change "
    "--sysname-match=uinput\n\n"
    "Drücken Sie danach „Schema starten“.";

const Gesehen NICHTS{"Game-Pad-Konfic",
                     "Es können keine Tasten und keine Mausbewegungen gesendet werden.\n\n"
                     "uinput: Es fehlt die Berechtigung\nXTest: Kein X-Server erreichbar\n\n" +
                         ABHILFE,
                     QMessageBox::Warning, QMessageBox::Ok | QMessageBox::Help};

const Gesehen NUR_X{
    "Game-Pad-Konfic",
    "Unter Wayland kommen Tasten und Mausbewegungen so nur in Programmen an, die noch für X11 gemacht "
    "sind.\n\nuinput: Es fehlt die Berechtigung\n\n" +
        ABHILFE,
    QMessageBox::Warning, QMessageBox::Ok | QMessageBox::Help};

class TastenankunftForm : public Formtest {
protected:
    TastenankunftForm() { Schemabau(datenbank_).taste(2, "1,65,0-0-0").anlegen(); }

    std::vector<Gesehen> beimStart(std::vector<QMessageBox::StandardButton> antworten = {}) {
        const Boxleser boxen(std::move(antworten));
        starten();
        return boxen.gesehen();
    }
    std::vector<Gesehen> beimLauf() {
        const Boxleser boxen;
        control<QPushButton>(haupt(), "Command1(5)").click();
        return boxen.gesehen();
    }
    std::string hilfeseite() { return prozess_.GetFullPathNameA("Beschreibung\\Startfenster.htm"); }
};

} // namespace

TEST_F(TastenankunftForm, WoAllesAnkommtWirdNichtsGesagt) {
    EXPECT_EQ(beimStart(), std::vector<Gesehen>{});
    EXPECT_EQ(beimLauf(), std::vector<Gesehen>{});
}

TEST_F(TastenankunftForm, WasNurBeiX11AnkommtWirdGesagtUndDerLaufBeginntTrotzdem) {
    weg_.lage = {Reichweite::NurX, GRUND};
    EXPECT_EQ(beimStart(), std::vector{NUR_X});
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(beimLauf(), std::vector{NUR_X});
    EXPECT_NE(laufFenster(), nullptr);
    EXPECT_EQ(beimLauf(), std::vector<Gesehen>{}) << "to stop needs no word";
}

TEST_F(TastenankunftForm, WennNichtsGesendetWerdenKannStehenDieGruendeUndDieAbhilfeDa) {
    weg_.lage = {Reichweite::Keine, GRUENDE};
    EXPECT_EQ(beimStart(), std::vector{NICHTS});
    EXPECT_EQ(beimLauf(), std::vector{NICHTS});
    EXPECT_NE(laufFenster(), nullptr);
}

TEST_F(TastenankunftForm, SobaldEsAnkommtSchweigtSie) {
    weg_.lage = {Reichweite::NurX, GRUND};
    beimStart();
    weg_.lage = {};
    EXPECT_EQ(beimLauf(), std::vector<Gesehen>{});
}

TEST_F(TastenankunftForm, HilfeOeffnetDieStelleUndDieBoxBleibt) {
    weg_.lage = {Reichweite::NurX, GRUND};
    EXPECT_EQ(beimStart({QMessageBox::Help, QMessageBox::Ok}), (std::vector{NUR_X, NUR_X}));
    EXPECT_EQ(prozess_.geoeffnet, std::vector{hilfeseite() + "#wayland"});
}

TEST_F(TastenankunftForm, LaesstSichDieHilfeNichtOeffnenWirdEsGesagt) {
    weg_.lage = {Reichweite::NurX, GRUND};
    prozess_.oeffnet = false;
    const Gesehen fehlt{
        "Game-Pad-Konfic",
        QString("Die Hilfe konnte nicht geöffnet werden:\n%1").arg(QString::fromStdString(hilfeseite())),
        QMessageBox::Warning, QMessageBox::Ok};
    std::optional<Boxleser> boxen;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        boxen.emplace(); // the next box comes before the click is over
        box->button(QMessageBox::Help)->click();
    });
    starten();
    EXPECT_EQ(boxen->gesehen(), (std::vector{fehlt, NUR_X}));
    EXPECT_EQ(prozess_.geoeffnet, std::vector{hilfeseite() + "#wayland"});
}

// What the user is told to type is what the package lays.
TEST_F(TastenankunftForm, DieRegelInDerBoxIstDieDesPakets) {
    std::istringstream zeilen(dateiLesen(UDEVREGEL));
    std::string regel;
    while (std::getline(zeilen, regel) && regel.starts_with('#'))
        ;
    weg_.lage = {Reichweite::NurX, GRUND};
    EXPECT_NE(beimStart().at(0).text.toStdString().find("echo '" + regel + "' |"), std::string::npos)
        << regel;
}
