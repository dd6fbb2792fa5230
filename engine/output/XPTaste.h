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

/// The number as a key code; throws LaufzeitFehler 6 where it does not fit 16 bits or is negative.
VirtuelleTaste tastencode(std::int32_t zahl);

class XPTaste {
public:
    /// `WiederholungPruefen` is called after every key-down.
    XPTaste(Eingabe& eingabe, std::function<void()> WiederholungPruefen)
        : eingabe_(eingabe), WiederholungPruefen_(std::move(WiederholungPruefen)) {}

    /// Key-down and key-up of a virtual key code. Throws LaufzeitFehler 6 for a number that is no 16-bit
    /// code.
    void TasteAbSenden(std::int32_t taste);
    void TasteAufSenden(std::int32_t taste);

    /// Presses by the selector of a mouse action: 0 left, 1 right, 2 middle button, 3 wheel up, 4 wheel down.
    /// The wheel moves by the selector itself, +3 and -4. Others do nothing.
    void MausDruecken(int selektor);
    /// Releases the button of the selector; the wheel has nothing to release.
    void MausLoesen(int selektor);

private:
    void tasteSenden(std::int32_t taste, std::uint32_t flags);

    Eingabe& eingabe_;
    std::function<void()> WiederholungPruefen_;
};
