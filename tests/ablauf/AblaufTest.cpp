// The whole program in real time: a virtual pad on one side, a client of a real X server on the other.
#include "programm/Endsignale.h"
#include "programm/Systemplattform.h"
#include "tests/ablauf/Spielpad.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/XLauscher.h"
#include "tests/hilfen/XServer.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QtTest/QTest>

#include <csignal>
#include <filesystem>
#include <optional>

namespace {

using Ereignisse = std::vector<std::string>;

constexpr int GEDULD_MS = 10000;
constexpr std::uint32_t ZAEHLTIMER = 77;

// X key codes of the us layout.
constexpr const char* A = "38";
constexpr const char* MARKE = "96"; // F12

// Assignments of every kind; Start is the mark behind which nothing more is expected.
constexpr const char* SCHEMA_S = R"(
INSERT INTO tblTastatur (Schemaname, btn1, btn2, btn3, btn4, btn5, btn6, btn7, btn8, btn9, btn10,
                         btn101, btn110, btn1001, btn1010)
VALUES ('S', '1,65,0-0-0', '1,66,1-40-60', '0,0,0-0-0', '2,0,0-0-0', '3,0,0-0-0', '4,0,1-0-0', '5,0,0-0-0',
        '5,0,3-0-0', '5,0,4-0-0', '1,123,0-0-0', '1,67,0-0-0', '1,123,0-0-0', '1,68,0-0-0', '1,123,0-0-0');
INSERT INTO tblSteuerKreuz (Schemaname, Oben, Rechts, Unten, Links)
VALUES ('S', '1,38,0-0-0', '1,39,0-0-0', '1,40,0-0-0', '1,37,0-0-0');
)";
// The same with the modes of the shift keys exchanged.
constexpr const char* SCHEMA_T = R"(
INSERT INTO tblTastatur (Schemaname, btn1, btn5, btn6, btn10, btn101, btn110, btn1001, btn1010)
VALUES ('S', '1,65,0-0-0', '3,0,1-0-0', '4,0,0-0-0', '1,123,0-0-0', '1,67,0-0-0', '1,123,0-0-0', '1,68,0-0-0',
        '1,123,0-0-0');
INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');
)";

constexpr auto DREIECK = SDL_CONTROLLER_BUTTON_Y;
constexpr auto KREIS = SDL_CONTROLLER_BUTTON_B;
constexpr auto KREUZ = SDL_CONTROLLER_BUTTON_A;
constexpr auto VIERECK = SDL_CONTROLLER_BUTTON_X;
constexpr auto L1 = SDL_CONTROLLER_BUTTON_LEFTSHOULDER;
constexpr auto R1 = SDL_CONTROLLER_BUTTON_RIGHTSHOULDER;
constexpr auto SELECT = SDL_CONTROLLER_BUTTON_BACK;
constexpr auto START = SDL_CONTROLLER_BUTTON_START;
constexpr auto OBEN = SDL_CONTROLLER_BUTTON_DPAD_UP;
constexpr auto RECHTS = SDL_CONTROLLER_BUTTON_DPAD_RIGHT;
constexpr auto L2 = SDL_CONTROLLER_AXIS_TRIGGERLEFT;
constexpr auto R2 = SDL_CONTROLLER_AXIS_TRIGGERRIGHT;

class Ablauf : public ::testing::Test {
protected:
    void starten(const char* sql = SCHEMA_S) {
        datenbank_.sql(sql);
        std::filesystem::current_path(datenbank_.ordner());
        system_.emplace();
        ASSERT_EQ(system_->eingabewahl().name, "XTest");
        pad_.emplace();
        lauscher_.emplace(qgetenv("DISPLAY").toStdString(), Lauschart::roh);
        programm_.emplace(system_->plattform());
        programm_->starten();
        umschalten();
        takte(2);
    }
    ~Ablauf() override {
        programm_.reset();
        pad_.reset();
        std::filesystem::current_path("/");
    }

    /// "Schema starten" or "Schema stoppen", whichever the button says.
    void umschalten() { programm_->hauptform().findChild<QPushButton*>("Command1(5)")->click(); }
    QWidget* laufFenster() {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == "LaufFenster" && fenster->isVisible())
                return fenster;
        return nullptr;
    }

    /// Lets at least `anzahl` ticks of the poll go by.
    void takte(int anzahl) {
        int gezaehlt = 0;
        auto& zeitgeber = system_->plattform().zeitgeber;
        zeitgeber.SetTimer(ZAEHLTIMER, std::chrono::milliseconds{5}, [&gezaehlt] { ++gezaehlt; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return gezaehlt > anzahl; }, GEDULD_MS));
        zeitgeber.KillTimer(ZAEHLTIMER);
    }
    void druecken(SDL_GameControllerButton taste) {
        pad_->taste(taste, true);
        takte(2);
    }
    void loesen(SDL_GameControllerButton taste) {
        pad_->taste(taste, false);
        takte(2);
    }
    void tippen(SDL_GameControllerButton taste) {
        druecken(taste);
        loesen(taste);
    }
    void ziehen(SDL_GameControllerAxis abzug, bool gezogen) {
        pad_->abzug(abzug, gezogen);
        takte(2);
    }
    /// All that has arrived at the client, up to a mark that is sent now by the whole road.
    Ereignisse angekommen() {
        tippen(START);
        Ereignisse alle;
        const std::string marke = std::string("-") + MARKE;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                for (auto& eines : lauscher_->vorhandene())
                    alle.push_back(std::move(eines));
                return !alle.empty() && alle.back() == marke;
            },
            GEDULD_MS));
        if (alle.size() >= 2)
            alle.resize(alle.size() - 2);
        return alle;
    }

    Testdatenbank datenbank_;
    std::optional<Systemplattform> system_;
    std::optional<Spielpad> pad_;
    std::optional<XLauscher> lauscher_;
    std::optional<Programm> programm_;
};

std::string ab(const std::string& taste) {
    return "+" + taste;
}
std::string auf(const std::string& taste) {
    return "-" + taste;
}

} // namespace

TEST_F(Ablauf, APlainKeyIsHeldAsLongAsTheButton) {
    starten();
    druecken(DREIECK);
    EXPECT_EQ(laufFenster()->windowTitle(), "0-65,");
    loesen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{ab(A), auf(A)}));
}

TEST_F(Ablauf, APulsedKeyGoesOnUntilItsButtonIsLetGo) {
    starten();
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

TEST_F(Ablauf, TheCounterTypesDigitsUpAndDown) {
    starten();
    tippen(KREUZ);
    tippen(KREUZ);
    tippen(VIERECK);
    tippen(VIERECK);
    tippen(VIERECK);
    // 1 2 1 0 9
    EXPECT_EQ(angekommen(),
              (Ereignisse{"+10", "-10", "+11", "-11", "+10", "-10", "+19", "-19", "+18", "-18"}));
}

TEST_F(Ablauf, TheFirstShiftKeyHoldsItsLayer) {
    starten();
    ziehen(L2, true);
    tippen(DREIECK); // C on layer 1
    ziehen(L2, false);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{"+54", "-54", ab(A), auf(A)}));
}

TEST_F(Ablauf, TheSecondShiftKeyLatchesItsLayer) {
    starten();
    tippen(L1);
    tippen(DREIECK); // D on layer 2
    tippen(L1);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{"+40", "-40", ab(A), auf(A)}));
}

TEST_F(Ablauf, TheFirstShiftKeyDoesNotStayLatched) {
    starten(SCHEMA_T);
    ziehen(L2, true);
    tippen(DREIECK);
    ziehen(L2, false);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{"+54", "-54", ab(A), auf(A)}));
}

TEST_F(Ablauf, TheSecondShiftKeyHoldsItsLayer) {
    starten(SCHEMA_T);
    druecken(L1);
    tippen(DREIECK);
    loesen(L1);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{"+40", "-40", ab(A), auf(A)}));
}

TEST_F(Ablauf, TheCrossPressesTwoKeysOnADiagonal) {
    starten();
    druecken(OBEN);
    druecken(RECHTS); // up and right
    loesen(OBEN);     // right
    loesen(RECHTS);
    EXPECT_EQ(angekommen(), (Ereignisse{"+111", "+114", "-111", "-114"}));
}

TEST_F(Ablauf, MouseButtonAndWheelArrive) {
    starten();
    ziehen(R2, true);
    ziehen(R2, false);
    tippen(R1);
    tippen(SELECT);
    EXPECT_EQ(angekommen(), (Ereignisse{"K1+", "K1-", "K4+", "K4-", "K5+", "K5-"}));
}

TEST_F(Ablauf, AHeldKeyRepeatsEvery30Milliseconds) {
    starten();
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

TEST_F(Ablauf, AStopLeavesAHeldKeyDownAndASecondRunLetsItGo) {
    starten();
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

TEST_F(Ablauf, APadThatIsPulledOutKeepsItsButtonDownUntilItIsBack) {
    starten();
    druecken(DREIECK);
    pad_.reset();
    takte(10);
    EXPECT_EQ(lauscher_->vorhandene(), Ereignisse{ab(A)});
    pad_.emplace();
    takte(2);
    EXPECT_EQ(angekommen(), Ereignisse{auf(A)});
}

TEST_F(Ablauf, APadMayComeAfterTheStart) {
    starten();
    pad_.reset();
    takte(10);
    pad_.emplace();
    takte(2);
    tippen(DREIECK);
    EXPECT_EQ(angekommen(), (Ereignisse{ab(A), auf(A)}));
}

TEST_F(Ablauf, ASignalEndsTheProgramAndLetsItsKeysGo) {
    Endsignale endsignale;
    endsignale.verbinden();
    starten();
    druecken(DREIECK);
    QTimer::singleShot(0, [] { std::raise(SIGTERM); });
    QApplication::exec();
    programm_.reset();
    pad_.reset();
    system_.reset();
    EXPECT_EQ(lauscher_->bis(auf(A)), Ereignisse{ab(A)});
}

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    const XServer server;
    qputenv("DISPLAY", server.anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
