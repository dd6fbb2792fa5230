// SPDX-License-Identifier: GPL-3.0-or-later
// From the start of the executable beside this one to its usable window, and the memory it takes then:
// with one `Schema` and with five hundred.
//
//   startzeit [RUNS]
//
// Where other work goes on, `chrt -r 5` before it keeps that out of the times.
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/XServer.h"

#include <X11/Xlib.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace {

using Uhr = std::chrono::steady_clock;
namespace fs = std::filesystem;

struct Messung {
    double millisekunden;
    long rss;
    long pss;
};

bool istDasFenster(Display* anzeige, Window fenster) {
    XWindowAttributes eigenschaften{};
    char* name = nullptr;
    const bool benannt =
        XFetchName(anzeige, fenster, &name) != 0 && std::string_view(name) == "Game-Pad-Konfic";
    if (name)
        XFree(name);
    return benannt && XGetWindowAttributes(anzeige, fenster, &eigenschaften) != 0 &&
           eigenschaften.map_state == IsViewable;
}

bool fensterSteht(Display* anzeige) {
    Window wurzel = 0;
    Window eltern = 0;
    Window* kinder = nullptr;
    unsigned anzahl = 0;
    XQueryTree(anzeige, DefaultRootWindow(anzeige), &wurzel, &eltern, &kinder, &anzahl);
    const bool steht = std::any_of(kinder, kinder + anzahl,
                                   [anzeige](Window eines) { return istDasFenster(anzeige, eines); });
    if (kinder)
        XFree(kinder);
    return steht;
}

long kilobyte(pid_t kennung, const char* datei, const std::string& zeile) {
    std::ifstream strom("/proc/" + std::to_string(kennung) + "/" + datei);
    for (std::string wort; strom >> wort;)
        if (wort == zeile) {
            long wert = 0;
            strom >> wert;
            return wert;
        }
    return 0;
}

Messung einmal(const fs::path& programm, const fs::path& ordner, const std::string& anzeigename) {
    auto* anzeige = XOpenDisplay(anzeigename.c_str());
    const auto anfang = Uhr::now();
    const pid_t kennung = fork();
    if (kennung == 0) {
        setenv("DISPLAY", anzeigename.c_str(), 1);
        unsetenv("WAYLAND_DISPLAY");
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1); // where there is none, one would be started
        if (chdir(ordner.c_str()) == 0)
            execl(programm.c_str(), programm.c_str(), nullptr);
        _exit(127);
    }
    const auto frist = anfang + std::chrono::seconds(20);
    while (!fensterSteht(anzeige) && Uhr::now() < frist)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const double dauer = std::chrono::duration<double, std::milli>(Uhr::now() - anfang).count();
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    const Messung messung{dauer, kilobyte(kennung, "status", "VmRSS:"),
                          kilobyte(kennung, "smaps_rollup", "Pss:")};
    kill(kennung, SIGTERM);
    waitpid(kennung, nullptr, 0);
    XCloseDisplay(anzeige);
    return messung;
}

template <class Zahl> Zahl median(std::vector<Zahl> werte) {
    std::ranges::sort(werte);
    return werte[werte.size() / 2];
}

/// A database with so many `Schema`s.
void schemataLegen(const Testdatenbank& datenbank, int anzahl) {
    std::string sql = "BEGIN;";
    for (int i = 0; i < anzahl; ++i) {
        const auto name = "'Schema " + std::to_string(i) + "'";
        sql += "INSERT INTO tblTastatur (Schemaname, Programmpfad) VALUES (" + name + ", '/spiele/" +
               std::to_string(i) + "'); INSERT INTO tblSteuerKreuz (Schemaname) VALUES (" + name + ");";
    }
    datenbank.sql(sql + "COMMIT;");
}

void messen(const fs::path& programm, const XServer& server, int schemata, int laeufe) {
    const Testdatenbank datenbank;
    schemataLegen(datenbank, schemata);
    std::vector<double> zeiten;
    std::vector<long> rss;
    std::vector<long> pss;
    for (int i = 0; i < laeufe; ++i) {
        const auto messung = einmal(programm, datenbank.ordner(), server.anzeige());
        zeiten.push_back(messung.millisekunden);
        rss.push_back(messung.rss);
        pss.push_back(messung.pss);
    }
    std::printf(
        "%d Schemas, start to window, %d runs: median %.0f ms; memory: resident %.1f MiB, proportional "
        "%.1f MiB\n",
        schemata, laeufe, median(zeiten), static_cast<double>(median(rss)) / 1024,
        static_cast<double>(median(pss)) / 1024);
}

} // namespace

int main(int anzahl, char** worte) {
    const int laeufe = anzahl > 1 ? std::max(1, std::atoi(worte[1])) : 7;
    const auto programm = fs::read_symlink("/proc/self/exe").parent_path() / "gamepad-konfic";
    const XServer server;
    // One client that stays, or the server would reset between two runs.
    auto* bleibt = XOpenDisplay(server.anzeige().c_str());
    for (const int schemata : {1, 500})
        messen(programm, server, schemata, laeufe);
    XCloseDisplay(bleibt);
}
