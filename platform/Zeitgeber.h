// SPDX-License-Identifier: GPL-3.0-or-later
// Timers: window timers by id, and form timers with an interval and a switch.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

/// What a timer runs. Must not throw. It may set and kill any timer, its own included.
using TimerProzedur = std::function<void()>;

/// What SetTimer makes of an interval below 1 ms.
inline constexpr std::chrono::milliseconds SETTIMER_MINDESTENS{10};

/// A form timer. Made switched off with interval 0; destroying it stops it, also from within its own
/// procedure.
class Formularzeitgeber {
public:
    Formularzeitgeber() = default;
    Formularzeitgeber(const Formularzeitgeber&) = delete;
    Formularzeitgeber& operator=(const Formularzeitgeber&) = delete;
    virtual ~Formularzeitgeber() = default;

    /// Sets the interval; 0 and less keep the timer silent though it stays enabled. A period that runs starts
    /// anew.
    virtual void Interval(std::chrono::milliseconds intervall) = 0;
    /// Switches on or off. Switching on starts a period; switching on what is on changes nothing.
    virtual void Enabled(bool an) = 0;

    virtual std::chrono::milliseconds Interval() const = 0;
    virtual bool Enabled() const = 0;

    /// Zeitgeber::ruhen and Zeitgeber::weiter for this timer. It stays enabled; a new period ends its rest.
    virtual void ruhen() = 0;
    virtual std::uint64_t weiter(std::chrono::nanoseconds her = {}) = 0;
};

/// Contract: all procedures run one at a time on the thread that made the timers, from its event loop. A
/// timer is periodic; calls that could not be made in time are dropped but for one, never queued up. Timers
/// due at one time run by interval, the shorter first, then in the order in which they were set.
///
/// A timer whose calls would change nothing may rest: it makes none, while its deadlines go by and it keeps
/// its place among the others. With no other timer the clock wakes nobody.
class Zeitgeber {
public:
    Zeitgeber() = default;
    Zeitgeber(const Zeitgeber&) = delete;
    Zeitgeber& operator=(const Zeitgeber&) = delete;
    virtual ~Zeitgeber() = default;

    /// Starts timer `id`, to run until it is killed; replaces a running timer of that id, interval and
    /// procedure, with a fresh period. An interval below 1 counts as SETTIMER_MINDESTENS.
    virtual void SetTimer(std::uint32_t id, std::chrono::milliseconds intervall, TimerProzedur prozedur) = 0;
    /// Stops timer `id`; an id that does not run is ignored. No call of it comes after this.
    virtual void KillTimer(std::uint32_t id) = 0;

    /// A new form timer, which must not outlive this object.
    virtual std::unique_ptr<Formularzeitgeber> formularzeitgeber(TimerProzedur prozedur) = 0;

    /// Number of the wake-up whose procedures run now: those that are due at one time share it, later ones
    /// have another. 0 outside of any procedure, and always where the clock does not count.
    virtual std::uint64_t augenblick() const { return 0; }

    /// The instant on the clock's grid of whole milliseconds: inside a procedure that of the wake-up, outside
    /// the first one whose timers have not had their turn.
    virtual std::chrono::milliseconds raster() const { return std::chrono::milliseconds{0}; }
    /// From which instant the timer that was set last counts its first period.
    virtual std::chrono::milliseconds zuletztGesetztAb() const { return raster(); }

    /// Whether timers of this clock can rest; the three below do nothing where they can't.
    virtual bool kannRuhen() const { return false; }
    /// Timer `id` makes no calls until `weiter`. One that does not run is ignored.
    virtual void ruhen(std::uint32_t id) { static_cast<void>(id); }
    /// Ends the rest of timer `id`, for something that happened `her` ago: calls that were due before that
    /// are left out, and it gives their number; the next one comes when it would have come. Nothing and 0 for
    /// a timer that does not rest.
    virtual std::uint64_t weiter(std::uint32_t id, std::chrono::nanoseconds her = {}) {
        static_cast<void>(id);
        static_cast<void>(her);
        return 0;
    }
    /// Calls `prozedur` each time before the clock lets time go by: whatever else the program does, a rest
    /// that no longer holds is ended there in time. Replaces the last one; an empty one ends it.
    virtual void vorDemSchlaf(TimerProzedur prozedur) { static_cast<void>(prozedur); }
};
