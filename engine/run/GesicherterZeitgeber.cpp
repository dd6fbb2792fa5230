// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/GesicherterZeitgeber.h"

#include "base/LaufzeitFehler.h"

#include <utility>

GesicherterZeitgeber::GesicherterZeitgeber(Zeitgeber& innen, Fehlerbehandlung beiFehler)
    : innen_(innen), beiFehler_(std::move(beiFehler)) {}

GesicherterZeitgeber::~GesicherterZeitgeber() {
    for (const auto id : gesetzte_)
        innen_.KillTimer(id);
}

void GesicherterZeitgeber::SetTimer(std::uint32_t id, std::chrono::milliseconds intervall,
                                    TimerProzedur prozedur) {
    gesetzte_.insert(id);
    innen_.SetTimer(id, intervall, gesichert(std::move(prozedur)));
}

void GesicherterZeitgeber::KillTimer(std::uint32_t id) {
    gesetzte_.erase(id);
    innen_.KillTimer(id);
}

std::unique_ptr<Formularzeitgeber> GesicherterZeitgeber::formularzeitgeber(TimerProzedur prozedur) {
    return innen_.formularzeitgeber(gesichert(std::move(prozedur)));
}

void GesicherterZeitgeber::vorDemSchlaf(TimerProzedur prozedur) {
    innen_.vorDemSchlaf(prozedur ? gesichert(std::move(prozedur)) : TimerProzedur());
}

TimerProzedur GesicherterZeitgeber::gesichert(TimerProzedur prozedur) const {
    return [prozedur = std::move(prozedur), beiFehler = beiFehler_] {
        try {
            prozedur();
        } catch (const LaufzeitFehler& fehler) {
            beiFehler(fehler);
        } catch (const std::exception& fehler) {
            beiFehler(LaufzeitFehler(Fehlernummer::Unerwartet, fehler.what()));
        }
    };
}
