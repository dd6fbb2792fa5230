// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the press and release edges of the D-pad's four directions.
//
// Direction digits: 0 up, 1 right, 2 down, 3 left. A code is one digit, or two digits for a diagonal; what
// happens on a change of the code, with "old" the code before it:
//
//   old    new    events
//   none   a      press a
//   none   ab     press a, press b
//   a      b      release a, press b
//   a      ab     press b             (old is the left digit of new)
//   other  ab     press a
//   ab     a      release b           (new is the left digit of old)
//   ab     other  release a
//   any    none   release each digit of old, left one first
#pragma once

#include <cstdint>
#include <vector>

/// One edge: the direction digit, and whether it is pressed or released.
struct Kreuzereignis {
    int richtung;
    bool gedrueckt;
    bool operator==(const Kreuzereignis&) const = default;
};

class Steuerkreuz {
public:
    bool operator==(const Steuerkreuz&) const = default;

    /// Takes the POV value of this tick and gives its edges in order. 65535 is centred; a value between the
    /// eight directions changes nothing.
    std::vector<Kreuzereignis> auswerten(std::uint32_t pov);
    /// Whether the D-pad stands in the direction, also as one of the two of a diagonal.
    bool steht(int richtung) const;
    template <class Gang> void begehen(Gang& gang) {
        const Steuerkreuz neues;
        gang("lauf.kreuz", KreuzCode_, neues.KreuzCode_);
        gang("lauf.kreuzAlt", KreuzCodeAlt_, neues.KreuzCodeAlt_);
        gang("lauf.kreuzPov", KreuzPovAlt_, neues.KreuzPovAlt_);
        codesPruefen();
    }
    /// Whether a tick with this POV value changes nothing.
    bool bleibt(std::uint32_t pov) const;

private:
    /// What no direction gives is none: a walk may read anything.
    void codesPruefen();
    std::vector<Kreuzereignis> zentriert();
    std::vector<Kreuzereignis> gewechselt(int code) const;

    std::int32_t KreuzCode_ = -1;       // of this tick, -1 centred
    std::int16_t KreuzCodeAlt_ = -1;    // of the last change, -1 none
    std::uint32_t KreuzPovAlt_ = 65535; // of the last tick
};
