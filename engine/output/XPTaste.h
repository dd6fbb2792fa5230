// SPDX-License-Identifier: GPL-3.0-or-later
// The narrow waist to the operating system: a virtual key code becomes key events, the selector of a mouse
// action becomes mouse events. Nothing here decides when to press.
#pragma once

#include "platform/Eingabe.h"

#include <cstdint>
#include <functional>
#include <utility>

/// Which key codes go out with the extended flag. Code 33 (page up) is the one navigation key left out: games
/// that were set up with these assignments know it without the flag.
constexpr bool istErweitert(VirtuelleTaste taste) {
    return taste > 33 && taste < 48;
}

class XPTaste {
public:
    /// `WiederholungPruefen` is called after every key-down.
    XPTaste(Eingabe& eingabe, std::function<void()> WiederholungPruefen)
        : eingabe_(eingabe), WiederholungPruefen_(std::move(WiederholungPruefen)) {}

    /// Key-down and key-up.
    void TasteAbSenden(VirtuelleTaste taste);
    void TasteAufSenden(VirtuelleTaste taste);

    /// Presses and releases by the selector of a button's mouse action (maus::festDruecken).
    void MausDruecken(int selektor);
    void MausLoesen(int selektor);

private:
    void tasteSenden(VirtuelleTaste taste, std::uint32_t flags);

    Eingabe& eingabe_;
    std::function<void()> WiederholungPruefen_;
};
