// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/Pollruhe.h"

#include "engine/input/Entwackeln.h"
#include "platform/Joystick.h"
#include "platform/Zeitgeber.h"

#include <utility>

Pollruhe::Pollruhe(Joystick& joystick, Zeitgeber& zeitgeber, Entwackeln& entwackeln,
                   std::vector<Formularzeitgeber*> takte, std::function<bool()> inRuhe, Bericht ausgelassen)
    : joystick_(joystick)
    , zeitgeber_(zeitgeber)
    , entwackeln_(entwackeln)
    , takte_(std::move(takte))
    , inRuhe_(std::move(inRuhe))
    , ausgelassen_(std::move(ausgelassen)) {}

void Pollruhe::versuchen() {
    if (ruht_ || !zeitgeber_.kannRuhen() || !inRuhe_() ||
        !joystick_.wachen([this](std::chrono::nanoseconds her) { beenden(her); }))
        return;
    ruht_ = true;
    for (auto* takt : takte_)
        takt->ruhen();
    entwackeln_.ruhen();
    zeitgeber_.vorDemSchlaf([this] {
        if (!inRuhe_())
            beenden();
    });
}

void Pollruhe::beenden(std::chrono::nanoseconds her) {
    if (!std::exchange(ruht_, false))
        return;
    joystick_.nichtWachen();
    zeitgeber_.vorDemSchlaf({});
    // The smoothing first: time goes by between these calls, and a tick that is not left out must not lack
    // its round.
    entwackeln_.weiter(her);
    for (auto* takt : takte_) {
        const auto anzahl = takt->weiter(her);
        if (ausgelassen_)
            ausgelassen_(*takt, anzahl);
    }
}
