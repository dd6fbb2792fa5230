// SPDX-License-Identifier: GPL-3.0-or-later
// Timers whose irregularities are recorded, and the clock of all that is recorded.
//
// A clock that is never late needs no record: who plays it again knows when each timer comes. Noted are
//
//   a call that came late          nothing ran from its deadline to the wake-up that brought it
//   a timer set while time went by it counts from an instant that is not that of the wake-up
//
// For that each timer's deadline is kept here, too. Only the timers of a run go through this object: those of
// forms would be noted for nothing.
#pragma once

#include "platform/Zeitgeber.h"

#include <map>
#include <set>

class Mitschnittband;

class MitgeschnittenerZeitgeber final : public Zeitgeber {
public:
    using Zeit = std::chrono::milliseconds;

    MitgeschnittenerZeitgeber(Zeitgeber& innen, Mitschnittband& band) : innen_(innen), band_(band) {}

    void SetTimer(std::uint32_t id, Zeit intervall, TimerProzedur prozedur) override;
    void KillTimer(std::uint32_t id) override;
    std::unique_ptr<Formularzeitgeber> formularzeitgeber(TimerProzedur prozedur) override;
    std::uint64_t augenblick() const override { return innen_.augenblick(); }
    Zeit raster() const override { return innen_.raster(); }
    Zeit zuletztGesetztAb() const override { return innen_.zuletztGesetztAb(); }
    bool kannRuhen() const override { return innen_.kannRuhen(); }
    void ruhen(std::uint32_t id) override;
    std::uint64_t weiter(std::uint32_t id, std::chrono::nanoseconds her = {}) override;
    void vorDemSchlaf(TimerProzedur prozedur) override { innen_.vorDemSchlaf(std::move(prozedur)); }

    /// The instant of what happens now: in a procedure that of its wake-up, else the first one whose timers
    /// still have to come.
    Zeit stempel() const;
    /// What happens between these two belongs to the instant at which it began, whatever time it takes: who
    /// plays it does it all at once.
    void handlungBeginnt();
    void handlungEndet() { --handlungen_; }
    /// Whether timer `id` is due `nach` after this wake-up, which came in time.
    bool puenktlich(std::uint32_t id, Zeit nach) const;

private:
    class Formular;

    struct Takt {
        Zeit faellig{0};
        Zeit intervall{0};
        bool gesetzt = false;
        bool ruht = false;
    };
    using Zeiger = std::shared_ptr<Takt>;

    TimerProzedur mitgeschnitten(const Zeiger& takt, TimerProzedur prozedur);
    void gerufen(Takt& takt);
    void gesetzt(Takt& takt, Zeit intervall);
    static void weitergegangen(Takt& takt, std::uint64_t ausgelassene);

    Zeitgeber& innen_;
    Mitschnittband& band_;
    std::map<std::uint32_t, Zeiger> fenster_;
    std::set<const Takt*> takte_;
    int handlungen_ = 0;           // on the stack
    Zeit handlung_{0};             // instant of the outermost
    int laufende_ = 0;             // procedures on the stack
    Zeit letzterDurchgang_{-1};    // instant of the last call
    Zeit letzterVerspaeteter_{-1}; // of the last one that was late
    Zeit gezaehltBei_{-1};         // instant of the next
    std::uint32_t gesetzte_ = 0;   // timers set at that instant
};
