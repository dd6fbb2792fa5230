// SPDX-License-Identifier: GPL-3.0-or-later
// The keyboard as a form sees it that captures a key: the way back from a key to the code that means it.
#pragma once

#include "platform/Eingabe.h"

#include <cstdint>

/// Contract: the inverse of Eingabe on the same layout. The key that a code presses gives that code back;
/// both Shift keys give 16, both Strg keys 17 and both Alt keys 18, as the key events of a form carry them.
/// Never throws.
class Tastatur {
public:
    Tastatur() = default;
    Tastatur(const Tastatur&) = delete;
    Tastatur& operator=(const Tastatur&) = delete;
    virtual ~Tastatur() = default;

    /// The code of the key that the window system numbers `nummer` (its native scan code), on the layout in
    /// force now; 0 for a key that has none, and for 0.
    virtual VirtuelleTaste code(std::uint32_t nummer) = 0;
};
