// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as a trace: it tells scenarios, or the line that can't be read.
#include "tests/fuzz/Verlangen.h"
#include "tests/spur/Szenario.h"

#include <algorithm>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    try {
        const auto szenarien = szenarienLesen(std::string(alsText(daten, groesse)));
        verlange(!szenarien.empty());
        for (const auto& szenario : szenarien)
            verlange(std::ranges::is_sorted(szenario.eingaben, {}, &Spureingabe::zeit));
    } catch (const Szenariofehler& fehler) {
        verlange(*fehler.what() != '\0');
    }
    return 0;
}
