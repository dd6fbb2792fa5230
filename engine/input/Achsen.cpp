// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/input/Achsen.h"

#include "engine/input/Padabfrage.h"
#include "store/files/Achsendatei.h"

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
        for (std::size_t achse = 0; achse < ACHSEN; ++achse)
            if (namen[i] == ACHSENNAMEN[achse] && !werte[achse])
                werte[achse] = static_cast<std::int32_t>(info_.*ROHACHSEN[i]);
    return werte;
}
