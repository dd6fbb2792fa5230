// SPDX-License-Identifier: GPL-3.0-or-later
// What the button editor decides without its controls: the image of the button table, which button and layer
// are chosen, what stands on the labels, which buttons are the layer keys.
//
// The image is in memory only; whoever owns the object reads and stores it.
#pragma once

#include "base/Tastennamen.h"
#include "engine/buttons/TastenAktion.h"
#include "store/schema/VarTastenbelegung.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// The actions that can be chosen, by the indices of `Option1`: all but the empty one.
inline constexpr int TASTENARTEN = 6;

/// The number that stands for no second mark on the picture of the pad.
inline constexpr int KEINE_MARKE = 100;

/// The button that a button word of the pad names: exactly one of the bits 0 to 11. A word with two of them,
/// or any other bit, names none.
std::optional<int> tasteImWort(std::uint32_t wort);

/// The second mark of a button that is picked on the pad or by its label.
constexpr int zweiteMarke(int taste) {
    return taste < 4 ? taste + 20 : KEINE_MARKE;
}

/// What somebody has typed as a whole number of 16 bits; blanks around it do not matter, and what stands
/// behind a decimal comma is rounded, ties to even. Throws LaufzeitFehler 13 for what is no number, 6 for one
/// out of range.
std::int16_t getippteZahl16(std::string_view text);

class Tastwerk {
public:
    static constexpr int KEINE_TASTE_GEWAEHLT = -1;
    /// The slots of `Umschalt 1` and `Umschalt 2`, -1 if none.
    using Umschalttasten = std::array<std::int16_t, 2>;
    /// Gives the untrimmed name of a key code in decimal.
    using Namensucher = std::function<std::string(const std::string& code)>;

    /// `umschaltTasten` outlives this object.
    explicit Tastwerk(Umschalttasten& umschaltTasten) : UmschaltTasten_(umschaltTasten) {}

    /// Runs after whatever may have changed the image.
    std::function<void()> geaendert = [] {};

    VarTastenbelegung bild;
    int AktuelleTaste = KEINE_TASTE_GEWAEHLT; ///< 0 to 15
    int AktuelleEbene = 0;                    ///< 0 to 2

    bool gewaehlt() const { return AktuelleTaste != KEINE_TASTE_GEWAEHLT; }
    /// A field (belegungsfeld::ART to PAUSENZEIT) of the chosen button on the current layer; only with a
    /// button chosen.
    const std::string& feld(std::size_t feld) const;
    /// Sets it; does nothing with no button chosen.
    void setzeFeld(std::size_t feld, std::string wert);

    /// Field ART of the chosen button, Belegungsart::Leer if none is chosen or the field is empty. Throws
    /// LaufzeitFehler 13 when it is no number, 9 when it is no code of an action.
    Belegungsart art() const;
    /// Whether the chosen button has a key. Throws LaufzeitFehler 13 when the field is no number.
    bool hatTaste() const;

    /// The texts of all labels on the current layer. Finds the layer keys on it anew, too.
    std::array<std::string, SLOTS> beschriftungen(const Namensucher& name);
    /// What an action puts on a label instead of its key; nothing for actions that don't.
    static std::optional<std::string_view> aktionsname(Belegungsart art);

    /// Clears the chosen button when `nurAktuelle`, else the buttons 0 to 11; the D-pad keeps its own.
    void SchemaNeu(bool nurAktuelle);

    /// The user gives the chosen button another action: keeps the books of the layer keys, and clears the
    /// button if the action is new. Does nothing with no button chosen.
    void artWaehlen(Belegungsart art);

    /// Whether `Umschalttaste1` and `Umschalttaste2` may be chosen for a button that was picked by its label.
    std::array<bool, 2> umschalttastenErlaubt(int taste) const;

private:
    std::string beschriftung(int taste, const Namensucher& name) const;
    std::int32_t zahlAusBild(int taste, std::size_t feld) const;

    Umschalttasten& UmschaltTasten_;
};
