// SPDX-License-Identifier: GPL-3.0-or-later
// The keys that the engine holds down, in the order in which they were pressed. The list outlasts a run: what
// is held when a run stops is still listed in the next one. It presses and releases nothing: who enters a key
// or takes one out sends it, too.
#pragma once

#include "formats/Halteliste.h"

#include <optional>
#include <string>
#include <vector>

class GehalteneTasten {
public:
    /// Adds an entry, once.
    void aufnehmen(const Halteeintrag& eintrag);
    /// Takes the first entry of a slot out, whatever its key, and gives it back.
    std::optional<Halteeintrag> herausnehmen(int slot);

    /// The walk over its state (engine/mitschnitt/Zustandsgang.h), as in all that has some.
    template <class Gang> void begehen(Gang& gang) {
        gang("gehaltene", eintraege_);
        text_ = haltetext(eintraege_);
    }

    const std::vector<Halteeintrag>& eintraege() const { return eintraege_; }
    /// `GehaltenText`: all entries joined in list order.
    const std::string& GehaltenText() const { return text_; }

private:
    std::vector<Halteeintrag> eintraege_;
    std::string text_;
};
