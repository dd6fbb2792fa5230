// SPDX-License-Identifier: GPL-3.0-or-later
// What 5 ms of a run cost, a tick of the poll and five rounds of smoothing: nothing changing, and a press
// from the tick to SendInput.
#include "bench/Messlauf.h"

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

} // namespace

BENCHMARK_MAIN();
