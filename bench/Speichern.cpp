// SPDX-License-Identifier: GPL-3.0-or-later
// What the editors' writes cost on a real file: saving a button table, and the lines of a stick.
#include "store/schema/modSpeichern.h"
#include "tests/hilfen/Testdatenbank.h"

#include <benchmark/benchmark.h>

namespace {

void tastenbelegungSpeichern(benchmark::State& stand) {
    const Testdatenbank datei;
    SchemaAnlegen(datei.pfad(), "S", "", {});
    VarTastenbelegung bild;
    int runde = 0;
    for (auto _ : stand) {
        stand.PauseTiming();
        ++runde;
        for (int taste = 0; taste < SLOTS; ++taste)
            for (int ebene = 0; ebene < EBENEN; ++ebene)
                bild.setzeBelegung(taste, ebene, "1," + std::to_string(runde % 256) + ",0-100-200");
        stand.ResumeTiming();
        TastenbelegungSpeichern(datei.pfad(), "S", bild);
    }
}
BENCHMARK(tastenbelegungSpeichern)->Unit(benchmark::kMillisecond);

void tastenbelegungLesen(benchmark::State& stand) {
    const Testdatenbank datei;
    SchemaAnlegen(datei.pfad(), "S", "", {});
    for (auto _ : stand) {
        std::vector<Tastenort> unlesbare;
        benchmark::DoNotOptimize(TastenbelegungLesen(datei.pfad(), "S", unlesbare));
    }
}
BENCHMARK(tastenbelegungLesen)->Unit(benchmark::kMillisecond);

/// A stick with `anzahl` lines on one layer that have moved.
void stickLinienSpeichern(benchmark::State& stand) {
    const Testdatenbank datei;
    Sticklinien bild = StickLinienLesen(datei.pfad(), Stickseite::Links, "S", [](std::string_view) {});
    for (auto _ : stand) {
        for (std::size_t zeile = 1; zeile <= static_cast<std::size_t>(stand.range(0)); ++zeile)
            ++bild.linien[0][zeile][0];
        StickLinienSpeichern(datei.pfad(), Stickseite::Links, "S", bild);
    }
}
BENCHMARK(stickLinienSpeichern)->Arg(0)->Arg(1)->Arg(19)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
