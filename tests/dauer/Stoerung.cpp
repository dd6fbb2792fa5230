// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/dauer/Stoerung.h"

#include <chrono>
#include <csignal>
#include <sys/stat.h>
#include <thread>

namespace fs = std::filesystem;

namespace {

void nichts(Stoerplatz&) {}

void sperren(Stoerplatz& platz) {
    auto sperre = std::make_unique<RoheVerbindung>(platz.umgebung.datenbank().string());
    // Somebody may be writing at this instant.
    for (int versuch = 0; versuch < 100; ++versuch)
        try {
            sperre->sql("BEGIN EXCLUSIVE");
            platz.sperre = std::move(sperre);
            return;
        } catch (const std::runtime_error&) {
            std::this_thread::sleep_for(std::chrono::milliseconds{10});
        }
}
void entsperren(Stoerplatz& platz) {
    platz.sperre.reset();
}

/// A file and the folder it lies in: the one keeps it from being written, the other from being replaced.
void schreibschutz(const fs::path& datei, bool an) {
    chmod(datei.c_str(), an ? 0444 : 0644);
    chmod(datei.parent_path().c_str(), an ? 0555 : 0755);
}
template <fs::path (Umgebung::*DATEI)() const> void schuetzen(Stoerplatz& platz) {
    schreibschutz((platz.umgebung.*DATEI)(), true);
}
template <fs::path (Umgebung::*DATEI)() const> void freigeben(Stoerplatz& platz) {
    schreibschutz((platz.umgebung.*DATEI)(), false);
}

template <int SEKUNDEN> void uhrStellen(Stoerplatz& platz) {
    platz.programm->befehl("uhr " + std::to_string(SEKUNDEN));
}

void anhalten(Stoerplatz& platz) {
    const auto dauer = std::chrono::milliseconds(200 + platz.zufall() % 2800);
    platz.programm->senden(SIGSTOP);
    std::this_thread::sleep_for(dauer);
    platz.programm->senden(SIGCONT);
}

template <int SIGNAL> void senden(Stoerplatz& platz) {
    platz.programm->senden(SIGNAL);
}

void abschneiden(Stoerplatz& platz) {
    for (const auto& fenster : platz.programm->stand().fenster)
        if (fenster.kennung != 0)
            return platz.welt.clientToeten(fenster.kennung);
}

} // namespace

const std::vector<Stoerung>& stoerungen() {
    static const std::vector<Stoerung> alle{
        {"database locked by another process", sperren, entsperren},
        {"disk full",
         [](Stoerplatz& platz) {
             if (platz.umgebung.platte.eigene())
                 platz.umgebung.platte.fuellen();
         },
         [](Stoerplatz& platz) { platz.umgebung.platte.leeren(); }},
        {"Gamepad.xml read-only", schuetzen<&Umgebung::gamepadXml>, freigeben<&Umgebung::gamepadXml>},
        {"database read-only", schuetzen<&Umgebung::datenbank>, freigeben<&Umgebung::datenbank>},
        {"message bus killed", [](Stoerplatz& platz) { platz.umgebung.bus.toeten(); },
         [](Stoerplatz& platz) { platz.umgebung.bus.starten(); }},
        {"clock an hour on", uhrStellen<3600>, uhrStellen<0>},
        {"clock a year back", uhrStellen<-365 * 86400>, uhrStellen<0>},
        {"stopped for a while", anhalten, nichts},
    };
    return alle;
}

const std::vector<Stoerung>& toedliche() {
    static const std::vector<Stoerung> alle{
        {"SIGTERM", senden<SIGTERM>, nichts, "exit 0"},
        {"X connection cut", abschneiden, nichts, "exit"},
        {"SIGKILL", senden<SIGKILL>, nichts, "signal 9"},
    };
    return alle;
}
