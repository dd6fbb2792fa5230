// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's image of the button table: the five fields of the `Belegung` of each button on each layer.
//
// The name stands for an array of text with six indices: the button, and then one index a field, of which a
// field's own holds the layer and the other four hold 3, "not in use". So field 0 of button b on layer L is
// (b, L, 3, 3, 3, 3) and field 4 is (b, 3, 3, 3, 3, L). Of its 16,384 places only 240 are ever used; those
// are kept here.
#pragma once

#include "base/Slots.h"
#include "formats/Belegung.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

class VarTastenbelegung {
public:
    /// A field of button 0 to 15 on layer 0 to 2, field 0 to 4; empty at first. Throws LaufzeitFehler 9 for
    /// another index.
    std::string& field(int taste, int ebene, int feld) { return felder_[stelle(taste, ebene, feld)]; }
    const std::string& field(int taste, int ebene, int feld) const {
        return felder_[stelle(taste, ebene, feld)];
    }

    /// The five fields as the text "Art,Taste,Modus-Druckzeit-Pausenzeit". Throws as field.
    std::string belegung(int taste, int ebene) const;

    /// Splits `text` into the five fields. Throws LaufzeitFehler 9, and changes nothing, for a text with more
    /// or fewer pieces: what had no field would be lost when the image is stored again.
    void setzeBelegung(int taste, int ebene, std::string_view text);

    bool operator==(const VarTastenbelegung&) const = default;

private:
    static std::size_t stelle(int taste, int ebene, int feld);

    std::array<std::string, std::size_t{SLOTS} * EBENEN * BELEGUNGSFELDER> felder_;
};
