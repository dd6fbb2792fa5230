// SPDX-License-Identifier: GPL-3.0-or-later
// Lets the poll and the smoothing sleep while nothing can change, and wakes them at the instant at which they
// would have seen what has happened: all that comes out comes at the same millisecond.
//
// At the end of each tick the run is asked whether the next one, with the pad as it is, would change
// anything. If it would not, and the pad can keep watch, their timers rest. It ends
//
//   the pad does something, comes or goes       by the watch
//   a form changes what the run is made of      by asking the run again, each time before time goes by
//   the run's own controls                      by those, before they act
//
// The calls that are left out would have done one thing only: turn the rings of the smoothing, which is made
// up for.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <vector>

class Entwackeln;
class Formularzeitgeber;
class Joystick;
class Zeitgeber;

class Pollruhe {
public:
    using Bericht = std::function<void(const Formularzeitgeber& takt, std::uint64_t anzahl)>;

    /// `takte` are the timers that rest beside the smoothing's; `inRuhe` tells whether nothing can change.
    /// `zeitgeber` must see to the errors of `inRuhe`. At the end of a rest `ausgelassen` gets how many calls
    /// of each of `takte` were left out.
    Pollruhe(Joystick& joystick, Zeitgeber& zeitgeber, Entwackeln& entwackeln,
             std::vector<Formularzeitgeber*> takte, std::function<bool()> inRuhe, Bericht ausgelassen = {});
    Pollruhe(const Pollruhe&) = delete;
    Pollruhe& operator=(const Pollruhe&) = delete;
    ~Pollruhe() { beenden(); }

    /// Begins to rest if that can be.
    void versuchen();
    /// Ends the rest, if there is one, for what happened `her` ago.
    void beenden(std::chrono::nanoseconds her = {});
    bool ruht() const { return ruht_; }

private:
    Joystick& joystick_;
    Zeitgeber& zeitgeber_;
    Entwackeln& entwackeln_;
    std::vector<Formularzeitgeber*> takte_;
    std::function<bool()> inRuhe_;
    Bericht ausgelassen_;
    bool ruht_ = false;
};
