// Latency probe: the time from a change at a virtual pad to the key event at a client of an X server, through
// the whole program in real time; then the processor time that the program takes while nothing is pressed.
//
//   latenz [PRESSES [SECONDS]]
#include "programm/Systemplattform.h"
#include "tests/ablauf/Spielpad.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/XLauscher.h"
#include "tests/hilfen/XServer.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
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

double ruhelast(int sekunden) {
    const double vorher = prozessorsekunden();
    std::this_thread::sleep_for(std::chrono::seconds(sekunden));
    return (prozessorsekunden() - vorher) / sekunden * 100;
}

void messen(Spielpad& pad, const std::string& anzeige, int anzahl, int sekunden) {
    XLauscher lauscher(anzeige, Lauschart::roh);
    const auto zeiten = druecken(pad, lauscher, anzahl);
    const auto bei = [&zeiten](double anteil) {
        return zeiten[static_cast<std::size_t>(anteil * static_cast<double>(zeiten.size() - 1))];
    };
    std::printf("pad to client, %d presses: median %.2f ms, 99 %% %.2f ms, most %.2f ms\n", anzahl, bei(0.5),
                bei(0.99), zeiten.back());
    std::printf("processor, nothing pressed, %d s: %.2f %% of one core\n", sekunden, ruhelast(sekunden));
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
                  "INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');");
    std::filesystem::current_path(datenbank.ordner());
    Systemplattform system;
    Spielpad pad;
    Programm programm(system.plattform());
    programm.starten();
    programm.hauptform().findChild<QPushButton*>("Command1(5)")->click();

    std::thread messung;
    QTimer::singleShot(500, [&] {
        messung = std::thread([&] {
            messen(pad, server.anzeige(), druecke, sekunden);
            QMetaObject::invokeMethod(&anwendung, &QApplication::quit, Qt::QueuedConnection);
        });
    });
    QApplication::exec();
    messung.join();
    std::filesystem::current_path("/");
}
