// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the whole screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

/// A picture of a screen, in its own pixels; empty when none could be taken.
struct Schirmbild {
    int breite = 0;
    int hoehe = 0;
    std::ptrdiff_t zeile = 0; ///< bytes from one row to the next
    /// The rows from top to bottom; a pixel is the number 0xffRRGGBB in four bytes, in the order of this
    /// machine.
    std::shared_ptr<const std::uint8_t> pixel;

    bool leer() const { return breite <= 0 || hoehe <= 0 || !pixel; }
};

class Schirmaufnahme {
public:
    using Empfaenger = std::function<void(const Schirmbild&)>;

    Schirmaufnahme() = default;
    Schirmaufnahme(const Schirmaufnahme&) = delete;
    Schirmaufnahme& operator=(const Schirmaufnahme&) = delete;
    virtual ~Schirmaufnahme() = default;

    /// Takes a picture of what the screen shows now, the windows of all programs included; of several screens
    /// the one with the pointer, where the system tells it. `empfaenger` gets the picture, an empty one if
    /// there is none to be had: once, on this thread, before this returns or later from the event loop, and
    /// no more when this object is gone. Several may be under way.
    virtual void aufnehmen(Empfaenger empfaenger) = 0;
};
