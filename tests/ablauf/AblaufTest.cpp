// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in real time: buttons, D-pad, layers, the pad that comes and goes.
#include "tests/ablauf/Ablauf.h"
#include "app/Endsignale.h"
#include "tests/hilfen/XServer.h"

#include <QLabel>
#include <QMessageBox>
#include <QScrollBar>
#include <QTimer>

#include <X11/Xlib.h>

#include <algorithm>
#include <csignal>

namespace {

// X key code of the us layout.
constexpr const char* A = "38";

// Assignments of every kind; Start is the mark behind which nothing more is expected.
Schemabau schemaS(const Testdatenbank& datenbank) {
    return Schemabau(datenbank)
        .taste(0, "1,65,0-0-0")
        .taste(1, "1,66,1-40-60")
        .taste(2, "0,0,0-0-0")
        .taste(3, "2,0,0-0-0")
        .taste(4, "3,0,0-0-0")
        .taste(5, "4,0,1-0-0")
        .taste(6, "5,0,0-0-0")
        .taste(7, "5,0,3-0-0")
        .taste(8, "5,0,4-0-0")
        .taste(9, "1,123,0-0-0")
        .taste(0, "1,67,0-0-0", 1)
        .taste(9, "1,123,0-0-0", 1)
        .taste(0, "1,68,0-0-0", 2)
        .taste(9, "1,123,0-0-0", 2)
        .taste(12, "1,38,0-0-0")
        .taste(13, "1,39,0-0-0")
        .taste(14, "1,40,0-0-0")
        .taste(15, "1,37,0-0-0");
}
// The same with the modes of the shift keys exchanged.
Schemabau schemaT(const Testdatenbank& datenbank) {
    return Schemabau(datenbank)
        .taste(0, "1,65,0-0-0")
        .taste(4, "3,0,1-0-0")
        .taste(5, "4,0,0-0-0")
        .taste(9, "1,123,0-0-0")
        .taste(0, "1,67,0-0-0", 1)
        .taste(9, "1,123,0-0-0", 1)
        .taste(0, "1,68,0-0-0", 2)
        .taste(9, "1,123,0-0-0", 2);
}

constexpr auto DREIECK = SDL_CONTROLLER_BUTTON_Y;
constexpr auto KREIS = SDL_CONTROLLER_BUTTON_B;
constexpr auto KREUZ = SDL_CONTROLLER_BUTTON_A;
constexpr auto VIERECK = SDL_CONTROLLER_BUTTON_X;
constexpr auto L1 = SDL_CONTROLLER_BUTTON_LEFTSHOULDER;
constexpr auto R1 = SDL_CONTROLLER_BUTTON_RIGHTSHOULDER;
constexpr auto SELECT = SDL_CONTROLLER_BUTTON_BACK;
constexpr auto OBEN = SDL_CONTROLLER_BUTTON_DPAD_UP;
constexpr auto RECHTS = SDL_CONTROLLER_BUTTON_DPAD_RIGHT;
constexpr auto L2 = SDL_CONTROLLER_AXIS_TRIGGERLEFT;
constexpr auto R2 = SDL_CONTROLLER_AXIS_TRIGGERRIGHT;

std::string ab(const std::string& taste) {
    return "+" + taste;
}
std::string auf(const std::string& taste) {
    return "-" + taste;
}

} // namespace

TEST_F(Ablauf, EineEinfacheTasteWirdSoLangeGehaltenWieDerButton) {
    starten(schemaS(datenbank_));
    druecken(DREIECK);
    titelErwarten("0-65,");
    loesen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{ab(A), auf(A)}));
}

TEST_F(Ablauf, EineTasteMitImpulsGehtWeiterBisIhrButtonLosgelassenWird) {
    starten(schemaS(datenbank_));
    druecken(KREIS);
    QTest::qWait(400); // pulses of 40 ms down and 60 ms up
    loesen(KREIS);
    const auto alle = angekommen();
    ASSERT_EQ(alle.size() % 2, 0U);
    for (std::size_t i = 0; i < alle.size(); ++i)
        EXPECT_EQ(alle[i], i % 2 == 0 ? "+56" : "-56");
    EXPECT_GE(alle.size() / 2, 3U);
    EXPECT_LE(alle.size() / 2, 6U);
}

TEST_F(Ablauf, DerZaehlerTipptZiffernAufUndAb) {
    starten(schemaS(datenbank_));
    tippen(KREUZ);
    tippen(KREUZ);
    tippen(VIERECK);
    tippen(VIERECK);
    tippen(VIERECK);
    // 1 2 1 0 9
    EXPECT_EQ(angekommen(),
              (Ereignisse{"+10", "-10", "+11", "-11", "+10", "-10", "+19", "-19", "+18", "-18"}));
}

TEST_F(Ablauf, DieErsteUmschalttasteHaeltIhreEbene) {
    starten(schemaS(datenbank_));
    ziehen(L2, true);
    tippen(DREIECK); // C on layer 1
    ziehen(L2, false);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{"+54", "-54", ab(A), auf(A)}));
}

TEST_F(Ablauf, DieZweiteUmschalttasteStelltIhreEbeneFest) {
    starten(schemaS(datenbank_));
    tippen(L1);
    tippen(DREIECK); // D on layer 2
    tippen(L1);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{"+40", "-40", ab(A), auf(A)}));
}

TEST_F(Ablauf, DieErsteUmschalttasteBleibtNichtFestgestellt) {
    starten(schemaT(datenbank_));
    ziehen(L2, true);
    tippen(DREIECK);
    ziehen(L2, false);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{"+54", "-54", ab(A), auf(A)}));
}

TEST_F(Ablauf, DieZweiteUmschalttasteHaeltIhreEbene) {
    starten(schemaT(datenbank_));
    druecken(L1);
    tippen(DREIECK);
    loesen(L1);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{"+40", "-40", ab(A), auf(A)}));
}

TEST_F(Ablauf, DasSteuerkreuzDruecktAufEinerDiagonaleZweiTasten) {
    starten(schemaS(datenbank_));
    druecken(OBEN);
    druecken(RECHTS); // up and right
    loesen(OBEN);     // right
    loesen(RECHTS);
    EXPECT_EQ(angekommen(), (Ereignisse{"+111", "+114", "-111", "-114"}));
}

TEST_F(Ablauf, MaustasteUndRadKommenAn) {
    starten(schemaS(datenbank_));
    ziehen(R2, true);
    ziehen(R2, false);
    tippen(R1);
    tippen(SELECT);
    EXPECT_EQ(angekommen(), (Ereignisse{"K1+", "K1-", "K4+", "K4-", "K5+", "K5-"}));
}

TEST_F(Ablauf, EineGehalteneTasteWiederholtSichAlle30Millisekunden) {
    starten(schemaS(datenbank_));
    auto& wiederholung = *laufFenster()->findChild<QScrollBar*>("HScroll2");
    wiederholung.setValue(30);
    pad_->taste(DREIECK, true);
    QTest::qWait(400);
    loesen(DREIECK);
    wiederholung.setValue(0); // or a slow machine repeats the mark, too
    const auto alle = angekommen();
    const auto druecke = std::ranges::count(alle, ab(A));
    EXPECT_GE(druecke, 6);
    EXPECT_LE(druecke, 15);
    EXPECT_EQ(alle.front(), ab(A));
    EXPECT_EQ(alle.back(), auf(A));
}

TEST_F(Ablauf, EinStoppLaesstEineGehalteneTasteUntenUndEinZweiterLaufLoestSie) {
    starten(schemaS(datenbank_));
    druecken(DREIECK);
    umschalten();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(programm_->hauptform().isVisible());
    loesen(DREIECK);
    QTest::qWait(50);
    EXPECT_EQ(lauscher_->vorhandene(), Ereignisse{ab(A)});

    umschalten();
    takte(2);
    druecken(DREIECK); // pressed again while the system still has it down: a repeat
    loesen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{auf(A), ab(A), auf(A)}));
}

TEST_F(Ablauf, EinAbgezogenesPadHaeltSeinenButtonUntenBisEsWiederDaIst) {
    starten(schemaS(datenbank_));
    druecken(DREIECK);
    pad_.reset();
    takte(10);
    EXPECT_EQ(lauscher_->vorhandene(), Ereignisse{ab(A)});
    pad_.emplace();
    takte(2);
    EXPECT_EQ(angekommen(), Ereignisse{auf(A)});
}

TEST_F(Ablauf, EinPadDarfNachDemStartKommen) {
    starten(schemaS(datenbank_));
    pad_.reset();
    takte(10);
    pad_.emplace();
    takte(2);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{ab(A), auf(A)}));
}

TEST_F(Ablauf, DasFensterNenntDasPadUndSagtWennEsGetrenntIst) {
    starten(schemaS(datenbank_));
    const auto sagt = [](const QString& text) {
        const auto* zeile = laufFenster()->findChild<QLabel*>("lblPad");
        const bool da = QTest::qWaitFor([&] { return zeile->text() == text; }, GEDULD_MS);
        EXPECT_TRUE(da) << zeile->text().toStdString();
    };
    const auto haelt = [](const QString& text) {
        const auto* zeile = laufFenster()->findChild<QLabel*>("lblGehalten(0)");
        const bool da = QTest::qWaitFor([&] { return zeile->text().startsWith(text); }, GEDULD_MS);
        EXPECT_TRUE(da) << zeile->text().toStdString();
    };
    sagt("● Spielpad");
    haelt("Nichts gehalten");
    druecken(DREIECK);
    haelt("Dreieck → A, ");
    {
        const Spielpad zweites("Zweites Pad");
        pad_.reset(); // the first one goes, the second one steps in, its button is up
        sagt("● Zweites Pad");
        haelt("Nichts gehalten");
    }
    sagt("○ Gamepad getrennt, der letzte Stand gilt");
    pad_.emplace("Wieder da");
    sagt("● Wieder da");
    druecken(DREIECK);
    pad_.reset();
    sagt("○ Gamepad getrennt, der letzte Stand gilt");
    haelt("Dreieck → A, ");
    pad_.emplace();
    sagt("● Spielpad");
    haelt("Nichts gehalten");
}

TEST_F(Ablauf, DerTitelIstNieDerNameDesProgramms) {
    starten(schemaS(datenbank_));
    const auto heisst = [this](const std::string& titel) {
        const auto fenster = laufFenster()->winId();
        EXPECT_TRUE(QTest::qWaitFor([&] { return lauscher_->titel(fenster) == titel; }, GEDULD_MS))
            << lauscher_->titel(fenster);
    };
    heisst("Schema gestartet");
    druecken(DREIECK);
    heisst("0-65,");
    loesen(DREIECK);
    heisst("Schema gestartet");
    laufFenster()->showMinimized();
    laufFenster()->showNormal();
    heisst("Schema gestartet");
}

TEST_F(Ablauf, EinSignalBeendetDasProgrammUndLoestSeineTasten) {
    Endsignale endsignale;
    endsignale.verbinden();
    starten(schemaS(datenbank_));
    druecken(DREIECK);
    QTimer::singleShot(0, [] { std::raise(SIGTERM); });
    QApplication::exec();
    programm_.reset();
    pad_.reset();
    system_.reset();
    EXPECT_EQ(lauscher_->bis(auf(A)), Ereignisse{ab(A)});
}

// As a window manager does.
void tastaturGeben(unsigned long fenster) {
    Display* anzeige = XOpenDisplay(nullptr);
    ASSERT_NE(anzeige, nullptr);
    XSetInputFocus(anzeige, fenster, RevertToNone, CurrentTime);
    XSync(anzeige, False);
    XCloseDisplay(anzeige);
}

TEST_F(Ablauf, WaehrendEinAnderesFensterVornIstKoennenDieEigenenWarten) {
    starten(schemaS(datenbank_));
    const auto& zeitgeber = system_->zeitgeber();
    for (int mal = 0; mal < 2; ++mal) {
        tastaturGeben(laufFenster()->winId());
        EXPECT_TRUE(QTest::qWaitFor([&] { return !zeitgeber.ungestoert(); }, GEDULD_MS));
        tastaturGeben(PointerRoot);
        EXPECT_TRUE(QTest::qWaitFor([&] { return zeitgeber.ungestoert(); }, GEDULD_MS));
    }
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{ab(A), auf(A)}));
}

// Another open file has the lock as another process would.
TEST_F(Ablauf, EinLaufInEinerAnderenKopieWirdGesagtUndDieserGehtTrotzdem) {
    Dateimarke andere(Dateimarke::pfad());
    ASSERT_TRUE(andere.setzen());
    QStringList gesagt;
    QTimer leser;
    QObject::connect(&leser, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            gesagt << box->windowTitle();
            box->button(QMessageBox::Yes)->click();
        }
    });
    leser.start(0);
    starten(schemaS(datenbank_));
    leser.stop();
    EXPECT_EQ(gesagt, QStringList{"Schema starten"});
    EXPECT_NE(laufFenster(), nullptr);
}

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    const XServer server;
    qputenv("DISPLAY", server.anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("XDG_SESSION_TYPE");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");  // nor its service for priorities
    const Testordner laufzeit;                        // nor do runs of other tests
    qputenv("XDG_RUNTIME_DIR", laufzeit.pfad().c_str());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("SDL_AUDIODRIVER", "dummy"); // nor does its sound
    QApplication anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
