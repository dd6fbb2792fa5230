// SPDX-License-Identifier: GPL-3.0-or-later
// A pad whose changes are recorded as they are polled.
#pragma once

#include "platform/Joystick.h"

class MitgeschnittenerZeitgeber;
class Mitschnittband;

class MitgeschnittenerJoystick final : public Joystick {
public:
    MitgeschnittenerJoystick(Joystick& innen, const MitgeschnittenerZeitgeber& uhr, Mitschnittband& band);

    std::uint32_t joyGetPosEx(std::uint32_t id, JOYINFOEX& info) override;
    Padauskunft auskunft() override { return innen_.auskunft(); }
    bool wachen(Weckruf weckruf) override { return innen_.wachen(std::move(weckruf)); }
    void nichtWachen() override { innen_.nichtWachen(); }

    /// Notes what differs from a pad that is there and at rest, as it was polled last: a block begins.
    void standNotieren();

private:
    void unterschiedNotieren(bool da, const JOYINFOEX& neu);

    Joystick& innen_;
    const MitgeschnittenerZeitgeber& uhr_;
    Mitschnittband& band_;
    bool da_ = true;
    JOYINFOEX stand_; ///< what the record says
};
