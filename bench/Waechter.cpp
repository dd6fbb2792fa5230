// SPDX-License-Identifier: GPL-3.0-or-later
// What the notes for the watcher cost: by themselves, on the memory that both processes have, and as part of
// a key that goes through XTest to an X server.
#include "platform/linux/Waechter.h"
#include "platform/linux/Haltevermerk.h"
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/XTestEingabe.h"
#include "tests/hilfen/XServer.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

constexpr int EREIGNISSE = 2; // press and release
constexpr VirtuelleTaste TASTE_A = 65;
constexpr unsigned X_TASTE_A = 38;

void Vermerken(benchmark::State& stand) {
    const Waechter keiner("");
    Haltevermerk vermerk(keiner.blatt());
    for (auto _ : stand) {
        vermerk.unten(Haltevermerk::taste(X_TASTE_A));
        vermerk.abgeschickt();
        vermerk.oben(Haltevermerk::taste(X_TASTE_A));
        vermerk.abgeschickt();
        benchmark::ClobberMemory();
    }
    stand.SetItemsProcessed(stand.iterations() * EREIGNISSE);
}
BENCHMARK(Vermerken);

INPUT eingabe(std::uint32_t flaggen) {
    INPUT eine{};
    eine.type = INPUT_KEYBOARD;
    eine.ki.wVk = TASTE_A;
    eine.ki.dwFlags = flaggen;
    return eine;
}

// Without a watcher, and with one.
void Senden(benchmark::State& stand) {
    const XServer server;
    setenv("DISPLAY", server.anzeige().c_str(), 1);
    const Waechter waechter(stand.range(0) != 0 ? Waechter::nebenan() : "");
    Tastaturlayout layout;
    std::string grund;
    const auto xtest =
        XTestEingabe::oeffnen(layout, {}, grund, stand.range(0) != 0 ? waechter.blatt() : nullptr);
    const INPUT ab = eingabe(0);
    const INPUT auf = eingabe(KEYEVENTF_KEYUP);
    for (auto _ : stand) {
        xtest->SendInput({&ab, 1});
        xtest->SendInput({&auf, 1});
    }
    stand.SetItemsProcessed(stand.iterations() * EREIGNISSE);
}
BENCHMARK(Senden)->Arg(0)->Arg(1)->ArgName("Waechter")->Iterations(20000);

} // namespace

BENCHMARK_MAIN();
