// SPDX-License-Identifier: GPL-3.0-or-later
// What the button editor costs: from the click that opens it to its picture on the screen, and a tick of the
// pad test with a button held down, whose counter `core` is the share of one core that a hundred ticks a
// second take.
#include "editors/buttons/frmJoyKonfic.h"
#include "engine/run/GobalVariable.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeTastatur.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/hilfen/Testdatenbank.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <ctime>
#include <memory>

namespace {

constexpr std::chrono::milliseconds TASTTAKT{10};

/// The `Schema` "S": every button and direction of every layer has a key.
struct Umgebung {
    Umgebung() {
        datenbank.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('S');"
                      "INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');");
        for (int taste = 1; taste <= 12; ++taste)
            for (const int ebene : {0, 100, 1000})
                setzen("tblTastatur", "btn" + std::to_string(taste + ebene));
        for (const char* richtung : {"Oben", "Rechts", "Unten", "Links"})
            for (const char* ebene : {"", "2", "3"})
                setzen("tblSteuerKreuz", std::string(richtung) + ebene);
        global.DatenbankPfad = datenbank.pfad();
        global.SchemaName = "S";
    }
    void setzen(const std::string& tabelle, const std::string& spalte) {
        datenbank.sql("UPDATE " + tabelle + " SET " + spalte + " = '1,168,1-100-50';");
    }
    std::unique_ptr<frmJoyKonfic> oeffnen() {
        auto form = std::make_unique<frmJoyKonfic>(global, pad, uhr, tastatur, entwuerfe);
        form->laden();
        form->resize(1000, 700);
        form->show();
        QApplication::processEvents();
        form->repaint();
        return form;
    }

    Testdatenbank datenbank;
    GobalVariable global;
    Entwuerfe<Tastenentwurf> entwuerfe;
    ProbeJoystick pad;
    ProbeUhr uhr;
    ProbeTastatur tastatur;
};

void BM_Oeffnen(benchmark::State& zustand) {
    Umgebung umgebung;
    for (auto _ : zustand)
        umgebung.oeffnen();
}
BENCHMARK(BM_Oeffnen)->Unit(benchmark::kMillisecond);

// `wort` is the button word on the pad.
void BM_Tick(benchmark::State& zustand, std::uint32_t wort) {
    Umgebung umgebung;
    const auto form = umgebung.oeffnen();
    umgebung.pad.zustand.dwButtons = wort;
    const auto anfang = std::clock();
    std::int64_t ticks = 0;
    for (auto _ : zustand) {
        umgebung.uhr.vorUm(TASTTAKT);
        QApplication::processEvents();
        ++ticks;
    }
    const double sekunden = static_cast<double>(std::clock() - anfang) / CLOCKS_PER_SEC;
    const double verstrichen = std::chrono::duration<double>(TASTTAKT).count() * static_cast<double>(ticks);
    zustand.counters["core"] = sekunden / verstrichen;
}
BENCHMARK_CAPTURE(BM_Tick, ruhe, 0U)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_Tick, gehalten, 4U)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_Tick, zwei_gehalten, 6U)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int anzahl, char** worte) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication anwendung(anzahl, worte);
    benchmark::Initialize(&anzahl, worte);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
