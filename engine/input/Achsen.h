// SPDX-License-Identifier: GPL-3.0-or-later
// What the axes of the pad read, by the names that the assignment of the `Schema` gives them.
#pragma once

#include "base/Achse.h"
#include "platform/Joystick.h"

#include <array>
#include <cstdint>
#include <optional>

class Achsendatei;

class Achsen {
public:
    /// `zuordnung` is looked at in each reading.
    Achsen(Joystick& joystick, const Achsendatei& zuordnung) : joystick_(joystick), zuordnung_(zuordnung) {}

    /// The pad that is polled.
    Joystick& joystick() const { return joystick_; }

    /// Polls the pad, in spite of its name, and gives the axes their values by the assignment; where a name
    /// stands twice, the first raw axis counts. Is cheap and allocates nothing: it runs every millisecond.
    void AchsenLesen();

    /// The value of an axis at the last AchsenLesen; nothing before the first successful poll or when no raw
    /// axis has the name.
    std::optional<std::int32_t> AchsenWert(Achse achse) const {
        return AchsenWerte_[static_cast<std::size_t>(achse)];
    }
    /// The last record; the values are made of it in each reading.
    template <class Gang> void begehen(Gang& gang) {
        gang("achsen.abgefragt", abgefragt_);
        std::array rohe{info_.dwXpos, info_.dwYpos, info_.dwZpos, info_.dwRpos, info_.dwUpos, info_.dwVpos};
        gang("achsen.werte", rohe);
        info_.dwXpos = rohe[0];
        info_.dwYpos = rohe[1];
        info_.dwZpos = rohe[2];
        info_.dwRpos = rohe[3];
        info_.dwUpos = rohe[4];
        info_.dwVpos = rohe[5];
    }

    /// Whether the names are still those of the last AchsenLesen, as far as they matter for the values.
    bool gelten() const { return AchsenWerte_ == benannt(); }

private:
    using Werte = std::array<std::optional<std::int32_t>, ACHSEN>;

    Werte benannt() const;

    Joystick& joystick_;
    const Achsendatei& zuordnung_;
    JOYINFOEX info_;
    bool abgefragt_ = false; ///< whether a poll has succeeded
    Werte AchsenWerte_;
};
