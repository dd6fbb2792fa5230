// SPDX-License-Identifier: GPL-3.0-or-later
// The list of the keys that a run holds down, as the caption of its window shows it.
//
//   "slot-key,slot-key,"   "2-65,12-32,": slot 2 holds key 65, slot 12 key 32
//
// Slots 0 to 11 are buttons, 12 to 15 the D-pad, 17 to 20 the sides of the sticks. A key is shown as its
// assignment spells it ("065", " 65"). Two comparisons go by the text and not by its entries: they take a
// slot or an entry for the end of another one, too.
#pragma once

#include "base/VirtuelleTaste.h"
#include "formats/Felder.h"

#include <string>
#include <string_view>
#include <vector>

/// A key that a slot holds.
struct Halteeintrag {
    int slot = 0;
    VirtuelleTaste taste = 0;
    std::string schreibweise; ///< of the key in its assignment

    /// Throws LaufzeitFehler 13 and 6 for a field that is no key: an entry of one could never be released.
    static Halteeintrag aus(int slot, const Feld& taste) {
        return {slot, tastencode(taste.da() ? taste.zahl() : feldzahl("")), taste.text()};
    }

    /// "2-65"; in the list a "," stands behind it.
    std::string text() const { return std::to_string(slot) + "-" + schreibweise; }

    bool operator==(const Halteeintrag&) const = default;
};

std::string haltetext(const std::vector<Halteeintrag>& eintraege);

/// Whether "slot-" stands anywhere in the list: slot 2 is also found in "12-65,".
bool slotKommtVor(std::string_view haltetext, int slot);

/// Whether "slot-key" stands anywhere in the list: "2-65" is also found in "12-65," and in "2-651,".
bool eintragKommtVor(std::string_view haltetext, const Halteeintrag& eintrag);
