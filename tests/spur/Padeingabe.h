// SPDX-License-Identifier: GPL-3.0-or-later
// What a trace tells of the pad.
#pragma once

#include "platform/probe/ProbeJoystick.h"
#include "tests/spur/Szenario.h"

#include <array>

/// Lets it happen to the pad; false for what is told of anything else.
inline bool padeingabe(ProbeJoystick& pad, const Spureingabe& eingabe) {
    using Art = Spureingabe::Art;
    auto& z = pad.zustand;
    const std::array<std::uint32_t*, 6> achsen{&z.dwXpos, &z.dwYpos, &z.dwZpos,
                                               &z.dwRpos, &z.dwUpos, &z.dwVpos};
    switch (eingabe.art) {
    case Art::Tasten:
        z.dwButtons = eingabe.wert;
        return true;
    case Art::Pov:
        z.dwPOV = eingabe.wert;
        return true;
    case Art::Achse:
        *achsen[eingabe.index] = eingabe.wert;
        return true;
    case Art::PadWeg:
        pad.da = false;
        return true;
    case Art::PadDa:
        pad.da = true;
        return true;
    default:
        return false;
    }
}
