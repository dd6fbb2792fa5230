// SPDX-License-Identifier: GPL-3.0-or-later
// A picture's way into a window past the toolkit, which waits for the display's server before it paints over
// what it has painted before. That server is an ordinary process: under load it comes late. And a caption's
// way, which costs the toolkit much where it changes with each key.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// Contract: no call waits for the server. Never throws.
class Sofortbild {
public:
    enum class Lage {
        Unbekannt,    ///< not known yet for this window, or it takes no such pictures: the toolkit paints
        Beschaeftigt, ///< the server has not shown the last picture yet
        Frei,
    };
    /// A part of a window, in its own pixels.
    struct Ausschnitt {
        int x;
        int y;
        int breite;
        int hoehe;
    };

    Sofortbild() = default;
    Sofortbild(const Sofortbild&) = delete;
    Sofortbild& operator=(const Sofortbild&) = delete;
    virtual ~Sofortbild() = default;

    /// `fenster` is the system's number of one of this process' windows. Asked for another one than the last
    /// time, it finds out about that one, which takes a while.
    virtual Lage lage(std::uintptr_t fenster) = 0;

    /// Shows `pixel`, 0xffRRGGBB row by row, in the window that lage() was asked for last and that was not
    /// Unbekannt. Where the window is covered nothing is kept: who uncovers it paints it.
    virtual void zeigen(const Ausschnitt& wo, std::span<const std::uint32_t> pixel) = 0;

    /// Gives `fenster` the caption `text`, ASCII and not empty. False where that is the toolkit's: the window
    /// is not known yet or `text` is not of that kind.
    virtual bool betiteln(std::uintptr_t fenster, std::string_view text) = 0;
};
