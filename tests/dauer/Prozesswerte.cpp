// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/dauer/Prozesswerte.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace {

fs::path ordner(pid_t kennung) {
    return fs::path("/proc") / std::to_string(kennung);
}

long zahlAus(const fs::path& datei, const std::string& zeile) {
    std::ifstream strom(datei);
    for (std::string wort; strom >> wort;)
        if (long wert = 0; wort == zeile && strom >> wert)
            return wert;
    return 0;
}

} // namespace

Prozesswerte prozesswerte(pid_t kennung) {
    const auto dort = ordner(kennung);
    Prozesswerte werte{zahlAus(dort / "status", "VmRSS:"), zahlAus(dort / "smaps_rollup", "Private_Dirty:"),
                       zahlAus(dort / "status", "Threads:"), 0, 0};
    std::error_code fehler;
    for (const auto& eintrag : fs::directory_iterator(dort / "fd", fehler)) {
        ++werte.dateien;
        werte.uhren += fs::read_symlink(eintrag.path(), fehler) == "anon_inode:[timerfd]" ? 1 : 0;
    }
    return werte;
}

long schlafzahl(pid_t kennung) {
    return zahlAus(ordner(kennung) / "task" / std::to_string(kennung) / "status", "voluntary_ctxt_switches:");
}
