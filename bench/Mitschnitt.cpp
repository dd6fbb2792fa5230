// SPDX-License-Identifier: GPL-3.0-or-later
// What the record of a run costs: a poll that brings nothing new, one that brings something, an event, a
// timer's call; the first and the last also without it.
#include "platform/mitschnitt/Mitschnittgeraete.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"

#include <benchmark/benchmark.h>

namespace {

/// Costs nothing, so that what is measured is the record.
class LeereEingabe final : public Eingabe {
public:
    std::uint32_t SendInput(std::span<const INPUT> ereignisse) override {
        return static_cast<std::uint32_t>(ereignisse.size());
    }
    std::uint32_t MapVirtualKeyA(std::uint32_t code, std::uint32_t) override { return code; }
};

struct Werk {
    Werk() { geraete.band.beginnen(std::chrono::milliseconds{0}, {}); }

    ProbeUhr uhr;
    ProbeJoystick pad;
    LeereEingabe eingabe;
    Mitschnittgeraete geraete{pad, eingabe, uhr};
};

void abfrageOhneMitschnitt(benchmark::State& stand) {
    Werk werk;
    JOYINFOEX info;
    for (auto _ : stand)
        benchmark::DoNotOptimize(werk.pad.joyGetPosEx(0, info));
}
BENCHMARK(abfrageOhneMitschnitt);

void abfrageOhneAenderung(benchmark::State& stand) {
    Werk werk;
    JOYINFOEX info;
    for (auto _ : stand)
        benchmark::DoNotOptimize(werk.geraete.pad.joyGetPosEx(0, info));
}
BENCHMARK(abfrageOhneAenderung);

void abfrageMitAenderung(benchmark::State& stand) {
    Werk werk;
    JOYINFOEX info;
    for (auto _ : stand) {
        werk.pad.zustand.dwXpos = (werk.pad.zustand.dwXpos + 257) & 0xffffU;
        werk.pad.zustand.dwYpos ^= 1U;
        benchmark::DoNotOptimize(werk.geraete.pad.joyGetPosEx(0, info));
    }
}
BENCHMARK(abfrageMitAenderung);

void ereignis(benchmark::State& stand) {
    Werk werk;
    std::int32_t dx = 0;
    for (auto _ : stand)
        werk.geraete.eingabe.mouse_event(MOUSEEVENTF_MOVE, ++dx & 0xff, 0, 0, 0);
}
BENCHMARK(ereignis);

void zeitgeberrufe(benchmark::State& stand, bool mitgeschnitten) {
    Werk werk;
    Zeitgeber& geber = mitgeschnitten ? static_cast<Zeitgeber&>(werk.geraete.uhr) : werk.uhr;
    geber.SetTimer(1, std::chrono::milliseconds{1}, [] {});
    for (auto _ : stand)
        werk.uhr.vorUm(std::chrono::milliseconds{1});
}
BENCHMARK_CAPTURE(zeitgeberrufe, ohne, false);
BENCHMARK_CAPTURE(zeitgeberrufe, mit, true);

} // namespace

BENCHMARK_MAIN();
