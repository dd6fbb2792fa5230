// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/input/Achsen.h"

#include "engine/input/Padabfrage.h"
#include "store/files/Achsendatei.h"

#include <algorithm>

namespace {

// Asked for each raw axis in each millisecond: all have two letters, and no call is needed to compare them.
std::size_t achseVon(const std::string& name) {
    std::size_t achse = 0;
    while (achse < ACHSEN &&
           (name.size() != 2 || name[0] != ACHSENNAMEN[achse][0] || name[1] != ACHSENNAMEN[achse][1]))
        ++achse;
    return achse;
}
static_assert(std::ranges::all_of(ACHSENNAMEN, [](auto name) { return name.size() == 2; }));

} // namespace

void Achsen::AchsenLesen() {
    // A poll that fails leaves the last values, which are then given out again, by the names of now.
    if (padAbfragen(joystick_, info_))
        abgefragt_ = true;
    AchsenWerte_ = benannt();
}

Achsen::Werte Achsen::benannt() const {
    Werte werte;
    if (!abgefragt_)
        return werte;
    const auto& namen = zuordnung_.AchsenSchluessel();
    for (std::size_t i = 0; i < ACHSEN; ++i)
        if (const auto achse = achseVon(namen[i]); achse < ACHSEN && !werte[achse])
            werte[achse] = static_cast<std::int32_t>(info_.*ROHACHSEN[i]);
    return werte;
}
