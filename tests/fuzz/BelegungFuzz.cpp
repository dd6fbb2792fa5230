// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as the `Belegung` of a button: pressed, held, let go, pressed again.
#include "tests/fuzz/Fuzzlauf.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    constexpr int SLOT = 3;
    const Belegung belegung({reinterpret_cast<const char*>(daten), groesse});
    Fuzzlauf lauf;
    lauf.wiederholung.intervall(std::chrono::milliseconds{30});
    for (int mal = 0; mal < 2; ++mal) {
        lauf.versuchen([&] { lauf.aktion.TasteDrueckAktion(belegung, SLOT); });
        lauf.versuchen([&] { lauf.aktion.TasteLoesAktion(belegung, SLOT); });
    }
    return 0;
}
