// SPDX-License-Identifier: GPL-3.0-or-later
// Any two texts, a line each, as the actions of fields: started on both sides and as a pair, on both sticks,
// held and ended.
#include "engine/stick/Aktionslauf.h"
#include "tests/fuzz/Fuzzlauf.h"

#include <cstdint>
#include <string>

namespace {

void spielen(const Stickeigenart& art, const Aktionszeiger& ax, const Aktionszeiger& ay) {
    Fuzzlauf lauf;
    Stickaktionsstand stand;
    stand.xZone = "Links";
    stand.yZone = "Mitte";
    const FeldGrenzen grenzen{27072, 9000, 39679, 25941};
    const Aktionslauf aktion(stand, grenzen, art, lauf.dienste, {});
    lauf.versuchen([&] { aktion.XAktionStarten(ax); });
    lauf.versuchen([&] { aktion.AktionBeenden(ay); });
    lauf.versuchen([&] { aktion.YAktionStarten(ay); });
    lauf.versuchen([&] { aktion.AktionBeenden(ax); });
    stand.DiagonalFlag = true;
    lauf.versuchen([&] { aktion.XYAktionStarten(ax, ay); });
    lauf.versuchen([&] { aktion.AktionBeenden(nullptr); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const std::string text(reinterpret_cast<const char*>(daten), groesse);
    const auto zeilenende = text.find('\n');
    const auto ax = std::make_shared<const Stickaktion>(text.substr(0, zeilenende));
    const auto ay = std::make_shared<const Stickaktion>(
        zeilenende == std::string::npos ? "" : text.substr(zeilenende + 1));
    spielen(LINKER_STICK_EIGENART, ax, ay);
    spielen(RECHTER_STICK_EIGENART, ax, ay);
    return 0;
}
