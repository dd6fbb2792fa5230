// SPDX-License-Identifier: GPL-3.0-or-later
// A record of the whole program in real time, on busy cores and with an event loop that stands still now and
// then, played again on the virtual clock.
#include "tests/ablauf/Ablauf.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/XServer.h"
#include "tests/spur/Spieler.h"

#include <QLabel>
#include <QScrollBar>

#include <atomic>
#include <random>
#include <thread>

namespace {

using std::chrono::milliseconds;

/// While it lives, so many threads do nothing without end.
class Geschaeftige {
public:
    explicit Geschaeftige(unsigned anzahl) {
        for (unsigned i = 0; i < anzahl; ++i)
            faeden_.emplace_back([this] {
                while (!genug_)
                    ;
            });
    }
    ~Geschaeftige() {
        genug_ = true;
        for (auto& faden : faeden_)
            faden.join();
    }
    Geschaeftige(const Geschaeftige&) = delete;
    Geschaeftige& operator=(const Geschaeftige&) = delete;

private:
    std::atomic<bool> genug_ = false;
    std::vector<std::thread> faeden_;
};

/// Keys held, in time and repeated, layers, movements on both sticks, an `Ego Shooter` that goes on.
Schemabau allerlei(const Testdatenbank& datenbank) {
    Schemabau schema(datenbank);
    schema.taste(2, "1,65,0-0-0").taste(3, "1,66,1-20-30").taste(4, "3,0,0-0-0").taste(5, "4,0,1-0-0");
    schema.taste(12, "1,67,0-0-0").taste(13, "1,68,0-0-0").taste(2, "1,69,0-0-0", 1).taste(3, "5,0,0-0-0", 2);
    return schema;
}
constexpr const char* STICKS = "INSERT INTO tblStickAktion VALUES ('S', 0, 27072, 0, 0, 0, '0,0,2,7');"
                               "INSERT INTO tblStickAktion VALUES ('S', 0, 0, 38399, 0, 0, '2,1,70,30,1,40');"
                               "INSERT INTO tblStickAktion VALUES ('S', 0, 0, 0, 25941, 0, '5,2,60,60,1');"
                               "INSERT INTO tblStickAktion VALUES ('S', 1, 27072, 0, 0, 0, '1,3,1');"
                               "INSERT INTO tblStickAktionR VALUES ('S', 0, 27072, 0, 0, 0, '0,2,3,11');"
                               "INSERT INTO tblStickAktionR VALUES ('S', 0, 0, 38399, 0, 0, '5,2,40,40');"
                               "INSERT INTO tblStickAktionR VALUES ('S', 0, 0, 0, 0, 39679, '2,0,71,0,0');";

class Mitschnittspiel : public Ablauf {
protected:
    int wuerfeln(int hoechstens) {
        return static_cast<int>(zufall_() % (static_cast<unsigned>(hoechstens) + 1));
    }

    void zug() {
        constexpr std::array TASTEN{SDL_CONTROLLER_BUTTON_A,
                                    SDL_CONTROLLER_BUTTON_B,
                                    SDL_CONTROLLER_BUTTON_X,
                                    SDL_CONTROLLER_BUTTON_Y,
                                    SDL_CONTROLLER_BUTTON_DPAD_UP,
                                    SDL_CONTROLLER_BUTTON_DPAD_RIGHT,
                                    SDL_CONTROLLER_BUTTON_LEFTSHOULDER,
                                    SDL_CONTROLLER_BUTTON_RIGHTSHOULDER};
        constexpr std::array ACHSEN{SDL_CONTROLLER_AXIS_LEFTX, SDL_CONTROLLER_AXIS_LEFTY,
                                    SDL_CONTROLLER_AXIS_RIGHTX, SDL_CONTROLLER_AXIS_RIGHTY};
        const auto eine = [this](const auto& alle) {
            return alle[static_cast<std::size_t>(wuerfeln(static_cast<int>(alle.size()) - 1))];
        };
        const int was = wuerfeln(20);
        if (was < 8)
            pad_->taste(eine(TASTEN), wuerfeln(1) == 1);
        else if (was < 17)
            pad_->achse(eine(ACHSEN), static_cast<Sint16>(wuerfeln(2) == 0 ? 0 : wuerfeln(65535) - 32768));
        else if (was == 17)
            stehen(milliseconds{wuerfeln(80)});
        else if (was == 18)
            laufFenster()->findChild<QScrollBar*>("HScroll2")->setValue(20 + wuerfeln(60));
        else if (was == 19)
            laufFenster()->findChild<QScrollBar*>("HScroll1(2)")->setValue(1 + wuerfeln(10));
    }
    static void stehen(milliseconds dauer) { std::this_thread::sleep_for(dauer); }

    // By moves and not by time: a machine that is busier than this test makes it plays no less.
    void spielen(int zuege) {
        for (int i = 0; i < zuege; ++i) {
            zug();
            QTest::qWait(wuerfeln(40));
        }
    }

    std::string gespeichert() {
        laufFenster()->findChild<QPushButton*>("cmdMitschnitt")->click();
        const auto* meldung = laufFenster()->findChild<QLabel*>("lblMitschnitt");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !meldung->text().isEmpty(); }, 2 * GEDULD_MS));
        const QString wort = "Gespeichert: ";
        EXPECT_TRUE(meldung->text().startsWith(wort)) << meldung->text().toStdString();
        return dateiLesen(datenbank_.ordner() / "Mitschnitte" /
                          meldung->text().mid(wort.size()).toStdString());
    }

    std::mt19937 zufall_{17};
};

} // namespace

TEST_F(Mitschnittspiel, InEchterZeitUnterLastBringtGespieltDasselbe) {
    datenbank_.sql(STICKS);
    starten(allerlei(datenbank_), "3/0-3-2-0(75,,)");
    std::string mitschnitt;
    {
        const Geschaeftige last(std::thread::hardware_concurrency() + 1);
        spielen(200);
        umschalten(); // what is held stays so
        QTest::qWait(100);
        umschalten();
        spielen(150);
        mitschnitt = gespeichert();
    }
    const auto szenario = szenarienLesen(mitschnitt).front();
    EXPECT_GT(szenario.erwartet.size(), 200U);
    EXPECT_NE(mitschnitt.find(" spaet "), std::string::npos) << "nothing was late";
    EXPECT_NE(mitschnitt.find(" stop\n"), std::string::npos);
    EXPECT_EQ(unterschied(szenario, ::spielen(szenario, LEERE_DATENBANK)), "") << mitschnitt;
}

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    const XServer server;
    qputenv("DISPLAY", server.anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("XDG_SESSION_TYPE");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
    const Testordner laufzeit;
    qputenv("XDG_RUNTIME_DIR", laufzeit.pfad().c_str());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("SDL_AUDIODRIVER", "dummy");
    QApplication anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
