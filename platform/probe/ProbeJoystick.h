// SPDX-License-Identifier: GPL-3.0-or-later
// A pad that does what the test says.
#pragma once

#include "platform/Joystick.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

class ProbeJoystick final : public Joystick {
public:
    /// The state that the next poll delivers: there, at rest.
    bool da = true;
    JOYINFOEX zustand = inRuhe();

    /// Whether it can keep watch. What is changed by hand must then be followed by `melden`.
    bool kannWachen = false;

    std::uint32_t joyGetPosEx(std::uint32_t id, JOYINFOEX& info) override {
        if (id == 0)
            gelesenes_ = stand();
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

    bool wachen(Weckruf weckruf) override {
        weckruf_ = kannWachen ? std::move(weckruf) : Weckruf();
        return kannWachen;
    }
    void nichtWachen() override { weckruf_ = {}; }
    bool wacht() const { return static_cast<bool>(weckruf_); }
    /// Wakes who waits for it where a read would bring something else than the last one did, and only there.
    void melden() {
        if (weckruf_ && stand() != gelesenes_)
            std::exchange(weckruf_, {})(std::chrono::nanoseconds{0});
    }

    static JOYINFOEX inRuhe() {
        JOYINFOEX info;
        info.dwXpos = info.dwYpos = info.dwZpos = info.dwRpos = info.dwUpos = info.dwVpos = JOY_AXIS_RUHE;
        info.dwPOV = JOY_POVCENTERED;
        return info;
    }

private:
    // What a read brings: of a pad that is gone nothing.
    std::array<std::uint32_t, 9> stand() const {
        const auto& z = zustand;
        if (!da)
            return {};
        return {1U + z.dwXpos, z.dwYpos, z.dwZpos,    z.dwRpos,        z.dwUpos,
                z.dwVpos,      z.dwPOV,  z.dwButtons, z.dwButtonNumber};
    }

    Weckruf weckruf_;
    std::array<std::uint32_t, 9> gelesenes_{};
};
