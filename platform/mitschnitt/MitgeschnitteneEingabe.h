// SPDX-License-Identifier: GPL-3.0-or-later
// Injection whose events are recorded as they are sent.
#pragma once

#include "platform/Eingabe.h"
#include "platform/mitschnitt/MitgeschnittenerZeitgeber.h"
#include "platform/mitschnitt/Mitschnittband.h"

class MitgeschnitteneEingabe final : public Eingabe {
public:
    MitgeschnitteneEingabe(Eingabe& innen, const MitgeschnittenerZeitgeber& uhr, Mitschnittband& band)
        : innen_(innen), uhr_(uhr), band_(band) {}

    std::uint32_t SendInput(std::span<const INPUT> ereignisse) override {
        const auto gesendet = innen_.SendInput(ereignisse);
        const auto jetzt = uhr_.stempel();
        for (const auto& eines : ereignisse)
            band_.ereignis(jetzt, eines);
        return gesendet;
    }
    std::uint32_t MapVirtualKeyA(std::uint32_t code, std::uint32_t art) override {
        return innen_.MapVirtualKeyA(code, art);
    }
    void mouse_event(std::uint32_t dwFlags, std::int32_t dx, std::int32_t dy, std::int32_t dwData,
                     std::uint32_t dwExtraInfo) override {
        innen_.mouse_event(dwFlags, dx, dy, dwData, dwExtraInfo);
        INPUT eines{};
        eines.type = INPUT_MOUSE;
        eines.mi = {dx, dy, static_cast<std::uint32_t>(dwData), dwFlags, 0, dwExtraInfo};
        band_.ereignis(uhr_.stempel(), eines);
    }

private:
    Eingabe& innen_;
    const MitgeschnittenerZeitgeber& uhr_;
    Mitschnittband& band_;
};
