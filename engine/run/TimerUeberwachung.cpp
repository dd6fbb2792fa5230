// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/TimerUeberwachung.h"

#include "platform/Zeitgeber.h"

#include <span>

void AlleTimerBeenden(Zeitgeber& zeitgeber) {
    for (const auto id : std::span(BEENDETE_TIMER).first(BEENDETE_TIMER.size() - 1))
        zeitgeber.KillTimer(id);
}
