// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mitschnitt/MitgeschnittenerJoystick.h"

#include "platform/mitschnitt/MitgeschnittenerZeitgeber.h"
#include "platform/mitschnitt/Mitschnittband.h"

#include <array>
#include <utility>

namespace {

constexpr std::array ACHSEN{&JOYINFOEX::dwXpos, &JOYINFOEX::dwYpos, &JOYINFOEX::dwZpos,
                            &JOYINFOEX::dwRpos, &JOYINFOEX::dwUpos, &JOYINFOEX::dwVpos};

JOYINFOEX inRuhe() {
    JOYINFOEX info;
    for (const auto achse : ACHSEN)
        info.*achse = JOY_AXIS_RUHE;
    info.dwPOV = JOY_POVCENTERED;
    return info;
}

bool gleich(const JOYINFOEX& a, const JOYINFOEX& b) {
    return a.dwXpos == b.dwXpos && a.dwYpos == b.dwYpos && a.dwZpos == b.dwZpos && a.dwRpos == b.dwRpos &&
           a.dwUpos == b.dwUpos && a.dwVpos == b.dwVpos && a.dwButtons == b.dwButtons && a.dwPOV == b.dwPOV;
}

} // namespace

MitgeschnittenerJoystick::MitgeschnittenerJoystick(Joystick& innen, const MitgeschnittenerZeitgeber& uhr,
                                                   Mitschnittband& band)
    : innen_(innen), uhr_(uhr), band_(band), stand_(inRuhe()) {}

std::uint32_t MitgeschnittenerJoystick::joyGetPosEx(std::uint32_t id, JOYINFOEX& info) {
    const auto antwort = innen_.joyGetPosEx(id, info);
    if (id != 0)
        return antwort;
    const bool da = antwort == JOYERR_NOERROR;
    if (da != da_ || (da && !gleich(info, stand_)))
        unterschiedNotieren(da, da ? info : stand_);
    return antwort;
}

void MitgeschnittenerJoystick::standNotieren() {
    const bool da = std::exchange(da_, true);
    const auto stand = std::exchange(stand_, inRuhe());
    unterschiedNotieren(da, stand);
}

// A pad that is gone keeps what it showed: it stands there again when it comes back.
void MitgeschnittenerJoystick::unterschiedNotieren(bool da, const JOYINFOEX& neu) {
    const auto jetzt = uhr_.stempel();
    for (std::uint32_t i = 0; i < ACHSEN.size(); ++i)
        if (neu.*ACHSEN[i] != stand_.*ACHSEN[i])
            band_.achse(jetzt, i, neu.*ACHSEN[i]);
    if (neu.dwButtons != stand_.dwButtons)
        band_.tasten(jetzt, neu.dwButtons);
    if (neu.dwPOV != stand_.dwPOV)
        band_.pov(jetzt, neu.dwPOV);
    if (da != da_)
        band_.pad(jetzt, da);
    da_ = da;
    stand_ = neu;
}
