// SPDX-License-Identifier: GPL-3.0-or-later
// Latency probe: the time from a change at a virtual pad to the event at a client of an X server, for a
// button that presses a key and a stick that moves the pointer, through the whole program in real time; then
// how often its fast timers run, and the processor time that it takes while nobody touches the pad, with the
// test panel folded and unfolded.
//
//   latenz [PRESSES [SECONDS]]
#include "app/Systemplattform.h"
#include "tests/ablauf/Spielpad.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/XLauscher.h"
#include "tests/hilfen/XServer.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <thread>

namespace {

using Uhr = std::chrono::steady_clock;
using Millisekunden = std::chrono::duration<double, std::milli>;

double prozessorsekunden() {
    rusage verbrauch{};
    getrusage(RUSAGE_SELF, &verbrauch);
    const auto sekunden = [](const timeval& zeit) {
        return static_cast<double>(zeit.tv_sec) + static_cast<double>(zeit.tv_usec) / 1e6;
    };
    return sekunden(verbrauch.ru_utime) + sekunden(verbrauch.ru_stime);
}

std::vector<double> druecken(Spielpad& pad, XLauscher& lauscher, int anzahl) {
    std::mt19937 zufall(1);
    std::uniform_int_distribution<int> pause(6000, 16000); // microseconds: a random phase of the poll
    std::vector<double> zeiten;
    for (int i = 0; i < anzahl; ++i) {
        std::this_thread::sleep_for(std::chrono::microseconds(pause(zufall)));
        const auto anfang = Uhr::now();
        pad.taste(SDL_CONTROLLER_BUTTON_A, true);
        lauscher.bis("+38");
        zeiten.push_back(Millisekunden(Uhr::now() - anfang).count());
        std::this_thread::sleep_for(std::chrono::microseconds(pause(zufall)));
        pad.taste(SDL_CONTROLLER_BUTTON_A, false);
        lauscher.bis("-38");
    }
    std::ranges::sort(zeiten);
    return zeiten;
}

// Out of the centre field into one whose action moves the pointer once, and back.
std::vector<double> auslenken(Spielpad& pad, XLauscher& lauscher, int anzahl) {
    std::mt19937 zufall(2);
    std::uniform_int_distribution<int> pause(12000, 22000); // long enough for the stick to be seen at rest
    std::vector<double> zeiten;
    for (int i = 0; i < anzahl; ++i) {
        std::this_thread::sleep_for(std::chrono::microseconds(pause(zufall)));
        const auto anfang = Uhr::now();
        pad.achse(SDL_CONTROLLER_AXIS_LEFTX, -30000);
        lauscher.bis("m(-5,0)");
        zeiten.push_back(Millisekunden(Uhr::now() - anfang).count());
        std::this_thread::sleep_for(std::chrono::microseconds(pause(zufall)));
        pad.achse(SDL_CONTROLLER_AXIS_LEFTX, 0);
    }
    std::ranges::sort(zeiten);
    return zeiten;
}

/// Counts how often the smoothing and the poll run, and leaves all else to another one.
class ZaehlenderZeitgeber final : public Zeitgeber {
public:
    explicit ZaehlenderZeitgeber(Zeitgeber& innen) : innen_(innen) {}

    void SetTimer(std::uint32_t id, std::chrono::milliseconds intervall, TimerProzedur prozedur) override {
        if (id == timerid::ENTWACKELN)
            prozedur = gezaehlt(glaettungen, std::move(prozedur));
        innen_.SetTimer(id, intervall, std::move(prozedur));
    }
    void KillTimer(std::uint32_t id) override { innen_.KillTimer(id); }
    std::unique_ptr<Formularzeitgeber> formularzeitgeber(TimerProzedur prozedur) override {
        // The poll is the one form timer that runs while no key is held, but for one of 100 ms.
        return innen_.formularzeitgeber(gezaehlt(formulartakte, std::move(prozedur)));
    }

    std::atomic<int> glaettungen = 0;
    std::atomic<int> formulartakte = 0;

private:
    static TimerProzedur gezaehlt(std::atomic<int>& zaehler, TimerProzedur prozedur) {
        return [&zaehler, prozedur = std::move(prozedur)] {
            ++zaehler;
            prozedur();
        };
    }
    Zeitgeber& innen_;
};
constexpr int TAKTE_DES_ZWEITEN_ZEITGEBERS = 10; // a second

double ruhelast(int sekunden) {
    const double vorher = prozessorsekunden();
    std::this_thread::sleep_for(std::chrono::seconds(sekunden));
    return (prozessorsekunden() - vorher) / sekunden * 100;
}

void latenzDrucken(const char* was, const std::vector<double>& zeiten) {
    const auto bei = [&zeiten](double anteil) {
        return zeiten[static_cast<std::size_t>(anteil * static_cast<double>(zeiten.size() - 1))];
    };
    std::printf("%s, %zu times: median %.2f ms, 99 %% %.2f ms, most %.2f ms\n", was, zeiten.size(), bei(0.5),
                bei(0.99), zeiten.back());
}

void raten(const ZaehlenderZeitgeber& zeitgeber, int sekunden) {
    const int glaettungen = zeitgeber.glaettungen;
    const int takte = zeitgeber.formulartakte;
    std::this_thread::sleep_for(std::chrono::seconds(sekunden));
    std::printf("smoothing %.1f Hz, poll %.1f Hz, %d s\n",
                1.0 * (zeitgeber.glaettungen - glaettungen) / sekunden,
                1.0 * (zeitgeber.formulartakte - takte) / sekunden - TAKTE_DES_ZWEITEN_ZEITGEBERS, sekunden);
}

/// The knobs of the running window, pressed from another thread.
void klicken(int index) {
    QMetaObject::invokeMethod(
        qApp,
        [index] {
            for (auto* fenster : QApplication::topLevelWidgets())
                if (auto* knopf = fenster->findChild<QPushButton*>(QString("Command1(%1)").arg(index));
                    knopf && fenster->objectName() == "LaufFenster")
                    knopf->click();
        },
        Qt::BlockingQueuedConnection);
}

void messen(Spielpad& pad, const ZaehlenderZeitgeber& zeitgeber, const std::string& anzeige, int anzahl,
            int sekunden) {
    XLauscher lauscher(anzeige, Lauschart::roh);
    latenzDrucken("button to key", druecken(pad, lauscher, anzahl));
    latenzDrucken("stick to pointer", auslenken(pad, lauscher, anzahl));
    raten(zeitgeber, sekunden);
    const auto last = [sekunden](const char* was) {
        std::printf("processor at rest, test panel %s, %d s: %.2f %% of one core\n", was, sekunden,
                    ruhelast(sekunden));
    };
    last("folded");
    klicken(1); // folds out and halts the poll,
    klicken(0);
    klicken(0); // which goes on with the panel in sight
    std::this_thread::sleep_for(std::chrono::seconds(1));
    last("unfolded");
}

} // namespace

int main(int anzahl, char** worte) {
    const int druecke = anzahl > 1 ? std::max(1, std::atoi(worte[1])) : 1000;
    const int sekunden = anzahl > 2 ? std::max(1, std::atoi(worte[2])) : 10;

    const XServer server;
    qputenv("DISPLAY", server.anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
    QApplication anwendung(anzahl, worte);

    const Testdatenbank datenbank;
    datenbank.sql("INSERT INTO tblTastatur (Schemaname, btn3) VALUES ('S', '1,65,0-0-0');"
                  "INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');"
                  // The line to the left of a new stick; a minute until the pointer would move again.
                  "INSERT INTO tblStickAktion VALUES ('S', 0, 27072, 0, 0, 0, '0,0,5,60000');");
    std::filesystem::current_path(datenbank.ordner());
    Systemplattform system;
    ZaehlenderZeitgeber zeitgeber(system.plattform().zeitgeber);
    Spielpad pad;
    const auto plattform = system.plattform();
    Programm programm({plattform.joystick, plattform.eingabe, zeitgeber, plattform.prozess,
                       plattform.tastatur, plattform.ton, plattform.aufnahme, plattform.laufmarke,
                       plattform.eingabeweg, (datenbank.ordner() / "Gamepad.xml").string()});
    programm.starten();
    programm.hauptform().findChild<QPushButton*>("Command1(5)")->click();

    std::thread messung;
    QTimer::singleShot(500, [&] {
        messung = std::thread([&] {
            messen(pad, zeitgeber, server.anzeige(), druecke, sekunden);
            QMetaObject::invokeMethod(&anwendung, &QApplication::quit, Qt::QueuedConnection);
        });
    });
    QApplication::exec();
    messung.join();
    std::filesystem::current_path("/");
}
