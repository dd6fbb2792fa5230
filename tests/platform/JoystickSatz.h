// SPDX-License-Identifier: GPL-3.0-or-later
// The record of a pad in comparisons.
#pragma once

#include "platform/Joystick.h"

#include <cstring>
#include <ostream>

inline void PrintTo(const JOYINFOEX& info, std::ostream* strom) {
    *strom << "X " << info.dwXpos << " Y " << info.dwYpos << " Z " << info.dwZpos << " R " << info.dwRpos
           << " U " << info.dwUpos << " V " << info.dwVpos << " Buttons " << info.dwButtons << " Number "
           << info.dwButtonNumber << " POV " << info.dwPOV;
}

inline bool operator==(const JOYINFOEX& a, const JOYINFOEX& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}
