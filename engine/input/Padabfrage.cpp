// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/input/Padabfrage.h"

namespace {

// The size is larger than the record; drivers that the pads came with were asked this way.
constexpr std::uint32_t ABGEFRAGTE_GROESSE = 64;
constexpr std::uint32_t ALLE_WERTE = 255;

} // namespace

bool padAbfragen(Joystick& joystick, JOYINFOEX& info) {
    info.dwSize = ABGEFRAGTE_GROESSE;
    info.dwFlags = ALLE_WERTE;
    return joystick.joyGetPosEx(0, info) == JOYERR_NOERROR;
}
