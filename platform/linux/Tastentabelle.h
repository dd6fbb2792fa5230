// SPDX-License-Identifier: GPL-3.0-or-later
// What is fixed about keys: which evdev key a virtual key code means on every layout, which codes are labels
// of the typing block, which codes have no key at all, and the scan codes.
#pragma once

#include "platform/Eingabe.h"

#include <array>
#include <cstdint>
#include <span>

/// Key code of the kernel (linux/input-event-codes.h); the key code of X is this and 8. 0 is no key.
using EvdevTaste = std::uint16_t;
inline constexpr EvdevTaste KEINE_TASTE = 0;
inline constexpr EvdevTaste EVDEV_TASTEN = 0x300;

/// X's key codes end at 255: keys above this one can be sent through uinput only.
inline constexpr EvdevTaste LETZTE_X_TASTE = 255 - 8;

inline constexpr VirtuelleTaste VIRTUELLE_TASTEN = 256;

struct FesteTaste {
    VirtuelleTaste code;
    EvdevTaste taste;
};

/// A code that names a label. `zeichen` are the keysyms that count as the label (0 fills up); `deutsch` is
/// the key that bears it on the German keyboard. The labels with `vorrang`, letters and digits, choose their
/// keys first.
struct Schild {
    VirtuelleTaste code;
    EvdevTaste deutsch;
    bool vorrang;
    std::array<std::uint32_t, 2> zeichen;
};

/// Codes `von` to `bis` have no key, because `grund`.
struct OhneTaste {
    VirtuelleTaste von;
    VirtuelleTaste bis;
    const char* grund;
};

/// The codes whose key does not depend on the layout. Some keys stand here twice: Shift, Strg and Alt by
/// their general and by their left code.
std::span<const FesteTaste> festeTasten();
/// The 48 labels, ascending by code; their `deutsch` keys are exactly the keys of the typing block.
std::span<const Schild> schilder();
/// All other codes from 1 to 254.
std::span<const OhneTaste> ohneTaste();

/// The code that a form's key event carries for a key with a fixed code: 16, 17 and 18 for both sides of
/// Shift, Strg and Alt, 13 for both Enter keys. 0 for keys of the typing block and unknown ones.
VirtuelleTaste festerCode(EvdevTaste taste);

/// Shift, Strg, Alt, Windows and the lock keys: what a keyboard does not repeat while it is held.
bool istUmschalter(EvdevTaste taste);

/// Low byte of the scan code in set 1, 0 if the key has none.
std::uint8_t abtastcode(EvdevTaste taste);
