// What one tick of the poll costs: nothing changing, and a press from the tick to SendInput.
#include "engine/LaufFenster.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/hilfen/StummeAnzeige.h"
#include "tests/hilfen/Testdatenbank.h"

#include <benchmark/benchmark.h>

namespace {

using Uhr = std::chrono::steady_clock;
constexpr std::chrono::milliseconds TICK{5};

/// A run on the virtual clock, in which the button Kreuz holds the key A.
struct Lauf {
    Lauf()
        : eingabe([this](const INPUT&) { gesendet = Uhr::now(); })
        , fenster({zustand, pad, eingabe, uhr, anzeige, zustand.sticks}) {
        datenbank.sql("INSERT INTO tblTastatur (Schemaname, btn3) VALUES ('S', '1,65,0-0-0');"
                      "INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');");
        zustand.global.DatenbankPfad = datenbank.pfad();
        zustand.global.SchemaName = zustand.global.Schemaauswahl = "S";
        fenster.laden();
    }

    Testdatenbank datenbank;
    ProbeJoystick pad;
    Laufzustand zustand{pad, (datenbank.ordner() / "Gamepad.xml").string()};
    Uhr::time_point gesendet;
    ProbeEingabe eingabe;
    ProbeUhr uhr;
    StummeAnzeige anzeige;
    LaufFenster fenster;
};

void tickOhneAenderung(benchmark::State& stand) {
    Lauf lauf;
    lauf.pad.zustand.dwButtons = 4; // one key held, so that there is something to compare
    for (auto _ : stand)
        lauf.uhr.vorUm(TICK);
}
BENCHMARK(tickOhneAenderung);

void druckVomTickBisSendInput(benchmark::State& stand) {
    Lauf lauf;
    for (auto _ : stand) {
        lauf.pad.zustand.dwButtons = 4;
        const auto anfang = Uhr::now();
        lauf.uhr.vorUm(TICK);
        stand.SetIterationTime(std::chrono::duration<double>(lauf.gesendet - anfang).count());
        lauf.pad.zustand.dwButtons = 0;
        lauf.uhr.vorUm(TICK);
        lauf.eingabe.abholen();
    }
}
BENCHMARK(druckVomTickBisSendInput)->UseManualTime();

} // namespace

BENCHMARK_MAIN();
