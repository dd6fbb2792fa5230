// SPDX-License-Identifier: GPL-3.0-or-later
// Virtual clock: timers that run when time is moved on by hand.
//
// Due timers run by deadline, at one deadline the shorter interval first, and at equal intervals in the order
// in which they were set; a periodic timer keeps its place in that order, a timer that is set anew goes to
// its end.
#pragma once

#include "platform/Zeitgeber.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <utility>

class ProbeUhr final : public Zeitgeber {
public:
    using Zeit = std::chrono::milliseconds;

    ProbeUhr();
    ~ProbeUhr() override;

    void SetTimer(std::uint32_t id, Zeit intervall, TimerProzedur prozedur) override;
    void KillTimer(std::uint32_t id) override;
    std::unique_ptr<Formularzeitgeber> formularzeitgeber(TimerProzedur prozedur) override;
    std::uint64_t augenblick() const override;
    Zeit raster() const override { return laeuft_ ? jetzt_ : gelaufen_.faellig + Zeit{1}; }
    Zeit zuletztGesetztAb() const override { return gesetztAb_; }
    bool kannRuhen() const override { return true; }
    void ruhen(std::uint32_t id) override;
    std::uint64_t weiter(std::uint32_t id, std::chrono::nanoseconds her = {}) override;
    void vorDemSchlaf(TimerProzedur prozedur) override { vorDemSchlaf_ = std::move(prozedur); }

    bool fragtVorDemSchlaf() const { return static_cast<bool>(vorDemSchlaf_); }

    Zeit jetzt() const { return jetzt_; }
    /// Runs all timers that are due up to and including `ziel`, then stands at `ziel`.
    void vorBis(Zeit ziel);
    /// Runs all timers that are due before `ziel`, then stands at `ziel`; those due then have not run yet.
    void vorVor(Zeit ziel) {
        vorBis(ziel - Zeit{1});
        jetzt_ = ziel;
    }
    /// Lets the time until `ziel` go by without a call, as an event loop does that stands still: what was due
    /// comes late.
    void verschlafen(Zeit ziel) { jetzt_ = std::max(jetzt_, ziel); }
    void vorUm(Zeit dauer) { vorBis(jetzt_ + dauer); }
    /// How much later than at the instant at which it is set a timer begins to count, as on a clock that goes
    /// on meanwhile. Asked at each setting, which is number `nummer`, from 1, at that instant.
    using Versatz = std::function<Zeit(Zeit jetzt, std::uint32_t nummer)>;
    void versetzen(Versatz versatz) { versatz_ = std::move(versatz); }

    /// Whether timer `id` runs.
    bool laeuft(std::uint32_t id) const { return fenster_.contains(id); }
    /// How many timers, of both kinds, would fire if time went on.
    std::size_t laufende() const { return plan_.size(); }
    /// How many calls were left out by rests that have ended.
    std::uint64_t ausgelassene() const { return ausgelassene_; }

private:
    class Formular;

    // A timer's place in the plan: when it is due next, how often it comes, the order in which it was set.
    struct Platz {
        Zeit faellig;
        Zeit intervall;
        std::uint64_t reihe;
        auto operator<=>(const Platz&) const = default;
    };
    // A timer in the plan is known by its order number, which stays while its deadline moves on.
    std::uint64_t einplanen(Zeit intervall, TimerProzedur prozedur);
    void streichen(std::uint64_t reihe);
    void reiheRuhen(std::uint64_t reihe);
    std::uint64_t reiheWeiter(std::uint64_t reihe, std::chrono::nanoseconds her);
    void naechstenLaufenLassen();

    struct Ruhender {
        Platz platz;
        TimerProzedur prozedur;
    };

    Zeit planbasis();

    Zeit jetzt_{0};
    // All that lies before this place, and what lies at it, has run.
    Platz gelaufen_{Zeit{0}, Zeit::max(), std::numeric_limits<std::uint64_t>::max()};
    bool laeuft_ = false; // a procedure
    std::uint64_t naechsteReihe_ = 0;
    std::map<Platz, TimerProzedur> plan_;
    std::map<std::uint64_t, Platz> plaetze_;         // by order number
    std::map<std::uint64_t, Ruhender> ruhende_;      // by order number
    std::map<std::uint32_t, std::uint64_t> fenster_; // window timers: id to order number
    TimerProzedur vorDemSchlaf_;
    Versatz versatz_;
    Zeit gezaehltBei_{-1};       // the instant of the next
    std::uint32_t gesetzte_ = 0; // timers set at that instant
    Zeit gesetztAb_{0};
    std::uint64_t ausgelassene_ = 0;
};
