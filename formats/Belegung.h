// SPDX-License-Identifier: GPL-3.0-or-later
// What a button or a direction of the D-pad does on a layer.
//
//   "Art,Taste,Modus-Druckzeit-Pausenzeit"   "1,65,0-0-0" key 65, held
//                                            "1,65,1-20-30" key 65, 20 ms down, 30 ms up, again
//                                            "10,0,0-0-0" nothing
//
// Two readings. A run is lenient: pieces between ",", the last of them split at "-", no matter how many; what
// a short text leaves out stays as the text that was read before it has left it. An editor is strict: three
// pieces, of which the third has three, or it is no `Belegung`: what had no field would be lost in saving.
#pragma once

#include "formats/Felder.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Type of action, the first field of a `Belegung`. Other numbers do nothing.
enum class Belegungsart : std::int32_t {
    ZaehlerAuf = 0, ///< "1,2,3,4..."
    Taste = 1,
    ZaehlerAb = 2, ///< "9,8,7,6..."
    Umschalt1 = 3,
    Umschalt2 = 4,
    Maus = 5,
    Leer = 10,
};

/// Art, Taste, Modus, Druckzeit, Pausenzeit
inline constexpr int BELEGUNGSFELDER = 5;

/// Places in a `Belegung`.
namespace belegungsfeld {
inline constexpr std::size_t ART = 0;
inline constexpr std::size_t TASTE = 1;
inline constexpr std::size_t MODUS = 2;
inline constexpr std::size_t DRUCKZEIT = 3;  ///< ms
inline constexpr std::size_t PAUSENZEIT = 4; ///< ms
} // namespace belegungsfeld

/// The `Belegung` of a slot without action.
inline constexpr std::string_view LEERE_BELEGUNG = "10,0,0-0-0";

/// Buttons of the mouse, which the wheel follows in the choice of a pad button.
inline constexpr int MAUSKNOEPFE = 3;

using Belegungsfelder = std::array<Feld, BELEGUNGSFELDER>;

/// A `Belegung` as a run reads it, split once.
class Belegung {
public:
    Belegung() = default;
    explicit Belegung(std::string_view text);

    const std::string& text() const { return text_; }

    /// Lays its fields over those of the `Belegung` before it; fields beyond its last piece keep what they
    /// held. Throws LaufzeitFehler 9 for more than five fields, of which the first five are laid.
    void legenUeber(Belegungsfelder& felder) const;

    /// The mouse button of one whose type is the mouse: 0 left, 1 right, 2 middle. Nothing for the wheel, any
    /// other type and what makes no sense.
    std::optional<int> mausknopf() const;
    /// Which layer key its first character names, 1 or 2; nothing for any other.
    std::optional<int> umschalttaste() const;
    /// The mode of a layer key: the character at position 5, where it stands if the first two fields have one
    /// digit each. Throws LaufzeitFehler 13 where that is no digit.
    std::int16_t umschaltmodus() const;

private:
    void ablegen(std::string_view stueck);

    std::string text_;
    Belegungsfelder felder_;
    std::size_t anzahl_ = 0;
    bool zuViele_ = false;
};

/// A text of exactly five fields; nothing for any other.
using Belegungstexte = std::array<std::string_view, BELEGUNGSFELDER>;
std::optional<Belegungstexte> belegungStrengLesen(std::string_view text);

/// The five fields as the text.
std::string belegungstext(const Belegungstexte& felder);
