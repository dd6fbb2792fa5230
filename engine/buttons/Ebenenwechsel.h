// SPDX-License-Identifier: GPL-3.0-or-later
// Which layer is active: what the two shift keys and the moment without any button make of it.
//
// Layers: 0 Standart, 1 Umschalt 1, 2 Umschalt 2. A shift key acts where it is the only button of the word.
// A tick brings one event: nothing pressed, shift key 1 alone, shift key 2 alone; any other word changes
// nothing.
//
//   state         layer  nothing pressed     shift key 1 alone        shift key 2 alone
//   GRUND         0      -                   enter 1: E1_GEHALTEN     enter 2: E2_GEHALTEN
//                                            or, latching, E1_FEST    or, latching, E2_FEST
//   E1_GEHALTEN   1      leave: GRUND        -                        -
//   E1_FEST       1      E1_GELOEST          E1_GEHALTEN              -
//   E1_GELOEST    1      -                   E1_GEHALTEN              -
//   E2_GEHALTEN   2      leave: GRUND        -                        -
//   E2_FEST       2      E2_GELOEST          -                        -
//   E2_GELOEST    2      -                   -                        E2_GEHALTEN
//
// The two are no twins: a further tick of the same press wipes the latch of the first one, so only the second
// one stays latched when it is let go. Pressed and let go, a column a tick:
//
//   1, holding    ___####____    2, holding    ___####____
//   layer         00011110000    layer         00022220000
//
//   1, latching   ___####____    2, latching   ___####____####____
//   layer         00011110000    layer         0002222222222220000
//
//   1, latching, for one tick    ___#____####____
//   layer                        0001111111110000
//
// What entering and leaving asks of the sticks differs, too:
//
//   enter 1   tables of layer 1   bounds cleared, sticks evaluated, still in the layer that is left
//   enter 2   tables of layer 2   bounds stay: they follow when a stick leaves its field
//   leave     tables of layer 0   as for 1
//
// The bit of the shift key goes out of the word of the tick that enters a layer. So the next tick sees it as
// a press, in the new layer, of the `Belegung` that stands there.
#pragma once

#include "formats/Belegung.h"
#include "store/schema/VarTastenbelegung.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

class Ebenenwechsel {
public:
    enum class Zustand { GRUND, E1_GEHALTEN, E1_FEST, E1_GELOEST, E2_GEHALTEN, E2_FEST, E2_GELOEST };

    /// A layer to be entered or left. Whoever runs the sticks does what is asked, then calls `vollziehen`:
    /// until then the old layer is active, and its locks hold.
    struct Schritt {
        Zustand danach = Zustand::GRUND;
        int ebene = 0;                   ///< whose stick tables are to be loaded
        bool sticksAuswerten = false;    ///< after their bounds have been cleared
        std::uint32_t umschalttaste = 0; ///< bit to be taken out of the word; 0 for a layer that is left
    };

    /// Finds the shift keys among the `Belegung`s of the base layer, by slot; of several the last one counts.
    /// Throws LaufzeitFehler 13 for a mode that is no number, with the button's name in the text.
    void TasteBelegen(std::span<const Belegung, SLOTS> belegungen);

    /// No button is pressed.
    std::optional<Schritt> nichtsGedrueckt();
    /// The buttons are `wort`, at least one.
    std::optional<Schritt> gedrueckt(std::uint32_t wort);
    void vollziehen(const Schritt& schritt) { zustand_ = schritt.danach; }
    /// Whether a tick with this word, 0 for no button, leaves everything as it is.
    bool bleibt(std::uint32_t wort) const;

    int Ebene() const;
    /// Bit of the shift key that leads to the active layer; 0 in the base layer.
    std::uint32_t eigeneUmschalttaste() const {
        return umschalttasten_[static_cast<std::size_t>(Ebene())].maske;
    }
    Zustand zustand() const { return zustand_; }
    template <class Gang> void begehen(Gang& gang) { gang("lauf.ebene", zustand_); }

private:
    struct Umschalttaste {
        std::uint32_t maske = 0; ///< 0 for none
        bool feststellen = false;
    };

    bool istAllein(int ebene, std::uint32_t wort) const;
    std::optional<Schritt> umschalttaste1();
    std::optional<Schritt> umschalttaste2();

    std::array<Umschalttaste, EBENEN> umschalttasten_; // by the layer that they lead to; none to 0
    Zustand zustand_ = Zustand::GRUND;
};
