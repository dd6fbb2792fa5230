// SPDX-License-Identifier: GPL-3.0-or-later
// What 5 ms of a run cost, a tick of the poll and five rounds of smoothing: nothing changing, and a press
// from the tick to SendInput. What of it the count of both sticks is, and what keeping it costs at the end.
#include "bench/Messlauf.h"
#include "tests/hilfen/Kunsthand.h"

#include <benchmark/benchmark.h>

namespace {

void tickOhneAenderung(benchmark::State& stand) {
    Messlauf lauf;
    lauf.pad.zustand.dwButtons = 4; // one key held, so that there is something to compare
    for (auto _ : stand)
        lauf.uhr.vorUm(TICK);
}
BENCHMARK(tickOhneAenderung);

void druckVomTickBisSendInput(benchmark::State& stand) {
    Messlauf lauf;
    for (auto _ : stand) {
        lauf.pad.zustand.dwButtons = 4;
        const auto anfang = Messuhr::now();
        lauf.uhr.vorUm(TICK);
        stand.SetIterationTime(std::chrono::duration<double>(lauf.gesendet - anfang).count());
        lauf.pad.zustand.dwButtons = 0;
        lauf.uhr.vorUm(TICK);
        lauf.eingabe.abholen();
    }
}
BENCHMARK(druckVomTickBisSendInput)->UseManualTime();

constexpr int FUENF_MINUTEN = 60'000; // ticks

std::vector<Stickposition> handweg() {
    Kunsthand hand({.hertz = 200});
    std::vector<Stickposition> weg;
    for (int i = 0; i < FUENF_MINUTEN; ++i) {
        const auto probe = hand.naechste();
        weg.push_back({probe.x, probe.y});
    }
    return weg;
}

void zaehlen(Streuzaehler& zaehler, const Stickposition& ort) {
    for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
        zaehler.takt(seite, 0, ort, ort);
}

void streuungEinesTakts(benchmark::State& stand) {
    const auto weg = handweg();
    Streuzaehler zaehler;
    std::size_t i = 0;
    for (auto _ : stand)
        zaehlen(zaehler, weg[i++ % weg.size()]);
}
BENCHMARK(streuungEinesTakts);

void streuungAmEndeDesLaufs(benchmark::State& stand) {
    Streuzaehler zaehler;
    for (const auto& ort : handweg())
        zaehlen(zaehler, ort);
    for (auto _ : stand)
        benchmark::DoNotOptimize(zaehler.ergebnis());
}
BENCHMARK(streuungAmEndeDesLaufs)->Unit(benchmark::kMicrosecond);

// On a thread of its own, beside the disk: both sticks.
void streuungPackenUndLesen(benchmark::State& stand) {
    Streuzaehler zaehler;
    for (const auto& ort : handweg())
        zaehlen(zaehler, ort);
    const auto laeufe = zaehler.ergebnis();
    for (auto _ : stand)
        for (const auto& lauf : laeufe)
            benchmark::DoNotOptimize(streudatenLesen(streudatenSchreiben(lauf.daten)));
}
BENCHMARK(streuungPackenUndLesen)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
