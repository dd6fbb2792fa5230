// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as the slider text of a `Schema`: the slider goes from one end to the other and back. What XML
// does not hold never reaches the slider.
#include "engine/slider/Schubregler.h"
#include "tests/fuzz/Fuzzlauf.h"
#include "tests/hilfen/Gamepadxml.h"

#include <cstdint>
#include <string>

namespace {
const std::vector<std::string> ACHSEN_IN_DER_REIHE{ACHSENNAMEN.begin(), ACHSENNAMEN.end()};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    static const Testordner ordner;
    static const std::string datei = (ordner.pfad() / "Gamepad.xml").string();
    const std::string text(reinterpret_cast<const char*>(daten), groesse);
    std::ofstream(datei) << gamepadXmlMit("S", ACHSEN_IN_DER_REIHE, text);

    Fuzzlauf lauf(datei);
    Schubstand stand;
    Schubregler regler(stand, lauf.achsendatei, lauf.achsen, lauf.dienste);
    bool erstellt = false;
    lauf.versuchen([&] {
        regler.erstellen();
        erstellt = true;
    });
    for (const std::uint32_t wert : {0U, 1U, 16383U, 16384U, 40000U, 65534U, 65535U, 40000U, 0U}) {
        if (!erstellt)
            break;
        lauf.pad.zustand.dwUpos = wert;
        regler.auswerten(); // never an error
        lauf.vergehen();
    }
    return 0;
}
