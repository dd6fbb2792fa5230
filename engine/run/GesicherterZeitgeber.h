// SPDX-License-Identifier: GPL-3.0-or-later
// Timers of one run: their procedures may throw, and none of them outlives the run.
#pragma once

#include "platform/Zeitgeber.h"

#include <functional>
#include <set>

class LaufzeitFehler;

/// Passes on to another Zeitgeber. An exception that a procedure throws goes to the handler instead of the
/// event loop; what still runs when this object dies is killed.
class GesicherterZeitgeber final : public Zeitgeber {
public:
    using Fehlerbehandlung = std::function<void(const LaufzeitFehler&)>;

    GesicherterZeitgeber(Zeitgeber& innen, Fehlerbehandlung beiFehler);
    ~GesicherterZeitgeber() override;

    void SetTimer(std::uint32_t id, std::chrono::milliseconds intervall, TimerProzedur prozedur) override;
    void KillTimer(std::uint32_t id) override;
    std::unique_ptr<Formularzeitgeber> formularzeitgeber(TimerProzedur prozedur) override;
    std::uint64_t augenblick() const override { return innen_.augenblick(); }
    std::chrono::milliseconds raster() const override { return innen_.raster(); }
    std::chrono::milliseconds zuletztGesetztAb() const override { return innen_.zuletztGesetztAb(); }
    bool kannRuhen() const override { return innen_.kannRuhen(); }
    void ruhen(std::uint32_t id) override { innen_.ruhen(id); }
    std::uint64_t weiter(std::uint32_t id, std::chrono::nanoseconds her = {}) override {
        return innen_.weiter(id, her);
    }
    void vorDemSchlaf(TimerProzedur prozedur) override;

    /// Ids of the timers that are set.
    const std::set<std::uint32_t>& gesetzte() const { return gesetzte_; }

private:
    TimerProzedur gesichert(TimerProzedur prozedur) const;

    Zeitgeber& innen_;
    Fehlerbehandlung beiFehler_;
    std::set<std::uint32_t> gesetzte_;
};
