// SPDX-License-Identifier: GPL-3.0-or-later
// Virtual key codes to keys and back, through one keyboard layout.
//
// A code that names a label (letters, digits and the German OEM keys) means the key that carries the label.
// Labels and keys of the typing block are matched one to one, in this order, each step among what is still
// free:
//   1. in the layout group in force: letters and digits, at level 1 (plain), then at level 2 (Shift); then
//   the
//      others likewise. So the digits of AZERTY get their keys before '-', which stands on the key of the 6.
//   2. the same in the other groups, for layouts that have a Latin group beside their own
//   3. the key that bears the label on the German keyboard
//   4. the codes left over to the keys left over, both ascending
#pragma once

#include "platform/linux/Tastentabelle.h"

#include <array>
#include <cstdint>

struct xkb_keymap;

class TastenKarte {
public:
    /// Without a layout: the German keyboard.
    TastenKarte() : TastenKarte(nullptr, 0) {}
    /// `gruppe` is the layout group in force, from 0. The keymap is not kept.
    TastenKarte(xkb_keymap* belegung, std::uint32_t gruppe);

    /// The key that `code` means, KEINE_TASTE if there is none; any number is allowed.
    EvdevTaste taste(std::uint32_t code) const;
    /// The code that a form's key event carries for the key, 0 if it has none.
    VirtuelleTaste code(EvdevTaste taste) const;

    bool operator==(const TastenKarte&) const = default;

private:
    std::array<EvdevTaste, VIRTUELLE_TASTEN> tasten_{};
    std::array<VirtuelleTaste, EVDEV_TASTEN> codes_{};
};
