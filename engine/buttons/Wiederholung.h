// SPDX-License-Identifier: GPL-3.0-or-later
// Repeats held keys, so that a held pad button behaves like a held key of a keyboard.
//
// Sixteen timers, one for each of the first sixteen places of the list of held keys. A timer is picked by the
// place at which a new entry appears; what it repeats stands in the repeat slot of that number. Entries move
// up when one before them goes, slots do not: from then on place and entry part, and the slot decides.
#pragma once

#include "base/Regler.h"
#include "formats/Halteliste.h"
#include "platform/Zeitgeber.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class GehalteneTasten;
class XPTaste;

/// What outlasts a run.
struct Wiederholstand {
    /// What is repeated; places 16 to 20 have no timer.
    std::array<std::optional<Halteeintrag>, 21> WiederholSlots;
    std::string GehaltenTextAlt; ///< `GehaltenText` as of the last comparison
};

class Wiederholung {
public:
    static constexpr int ZEITGEBER = 16;

    Wiederholung(Wiederholstand& stand, const GehalteneTasten& gehaltene, XPTaste& xpTaste,
                 Zeitgeber& zeitgeber);

    /// Interval of repeats that start from now on, the value of `HScroll2`; 0 repeats nothing.
    void intervall(std::chrono::milliseconds wert) { intervall_ = wert; }

    /// Starts the timer of every entry of `GehaltenText` that is new since the last comparison.
    void WiederholungPruefen();
    /// Stops the first repeat of a slot among places 0 to 19.
    void WiederholungStoppen(int slot);
    /// All buttons are up: empties places 0 to 19 if place 0 holds anything. Timers go on, over empty places.
    void slotsLeeren();
    /// Whether slotsLeeren would do nothing.
    bool leer() const { return !stand_.WiederholSlots.front(); }
    /// Whether nothing is repeated: timers may go on, over empty places.
    bool inRuhe() const;
    /// The timers, by place.
    std::vector<Formularzeitgeber*> zeitgeber() const;
    /// Which timers are on and how often they come, of a repeat that is at rest: they come over empty places.
    template <class Gang> void begehen(Gang& gang) {
        for (std::size_t platz = 0; platz < wiederholzeitgeber_.size(); ++platz) {
            auto& einer = *wiederholzeitgeber_[platz];
            bool an = einer.Enabled();
            auto ms = einer.Interval().count();
            const auto name = "lauf.wiederholen" + std::to_string(platz);
            gang(name, ms);
            gang(name + ".an", an);
            ms = std::clamp<decltype(ms)>(ms, HSCROLL2_BEREICH.min, HSCROLL2_BEREICH.max);
            if (ms != einer.Interval().count())
                einer.Interval(std::chrono::milliseconds{ms});
            einer.Enabled(an);
        }
    }
    /// The run is over: stops all timers. The places keep their entries.
    void anhalten();
    /// Takes the held keys as they are now for known.
    void abgleichen();

private:
    void takt(std::size_t platz);

    Wiederholstand& stand_;
    const GehalteneTasten& gehaltene_;
    XPTaste& xpTaste_;
    std::chrono::milliseconds intervall_{0};
    std::array<std::unique_ptr<Formularzeitgeber>, ZEITGEBER> wiederholzeitgeber_; // by place
};
