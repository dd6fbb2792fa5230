// SPDX-License-Identifier: GPL-3.0-or-later
// Records of single events, for tests of the injection.
#pragma once

#include "platform/Eingabe.h"

inline INPUT taste(VirtuelleTaste code, std::uint32_t flaggen = 0) {
    INPUT ereignis{};
    ereignis.type = INPUT_KEYBOARD;
    ereignis.ki.wVk = code;
    ereignis.ki.dwFlags = flaggen;
    return ereignis;
}

inline INPUT maus(std::uint32_t flaggen, std::int32_t dx = 0, std::int32_t dy = 0, std::int32_t daten = 0) {
    INPUT ereignis{};
    ereignis.type = INPUT_MOUSE;
    ereignis.mi = {dx, dy, static_cast<std::uint32_t>(daten), flaggen, 0, 0};
    return ereignis;
}
