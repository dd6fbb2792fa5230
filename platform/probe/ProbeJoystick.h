// SPDX-License-Identifier: GPL-3.0-or-later
// A pad that does what the test says.
#pragma once

#include "platform/Joystick.h"

#include <string>
#include <vector>

class ProbeJoystick final : public Joystick {
public:
    /// The state that the next poll delivers: there, at rest.
    bool da = true;
    JOYINFOEX zustand = inRuhe();

    std::uint32_t joyGetPosEx(std::uint32_t id, JOYINFOEX& info) override {
        if (!da || id != 0)
            return JOYERR_UNPLUGGED;
        const auto size = info.dwSize;
        const auto flags = info.dwFlags;
        info = zustand;
        info.dwSize = size;
        info.dwFlags = flags;
        return JOYERR_NOERROR;
    }

    /// Names of the pads that are there, as long as `da` holds; the first one is pad 0.
    std::vector<std::string> namen{"Probepad"};

    Padauskunft auskunft() override { return da ? Padauskunft{namen.size(), namen.at(0)} : Padauskunft{}; }

    static JOYINFOEX inRuhe() {
        JOYINFOEX info;
        info.dwXpos = info.dwYpos = info.dwZpos = info.dwRpos = info.dwUpos = info.dwVpos = JOY_AXIS_RUHE;
        info.dwPOV = JOY_POVCENTERED;
        return info;
    }
};
