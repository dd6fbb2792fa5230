// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output/Druckbuch.h"

namespace {

struct Knopfflaggen {
    std::uint32_t druecken;
    std::uint32_t loslassen;
};
constexpr std::array<Knopfflaggen, Druckbuch::KNOEPFE> FLAGGEN{
    {{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP},
     {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP},
     {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP}}};

} // namespace

std::uint32_t Druckbuch::SendInput(std::span<const INPUT> ereignisse) {
    for (const auto& eines : ereignisse) {
        if (eines.type == INPUT_MOUSE)
            mausMerken(eines.mi.dwFlags);
        else if (eines.type == INPUT_KEYBOARD && eines.ki.wVk < tasten_.size())
            tasten_[eines.ki.wVk].melden((eines.ki.dwFlags & KEYEVENTF_KEYUP) == 0);
    }
    return ziel_->SendInput(ereignisse);
}

void Druckbuch::mouse_event(std::uint32_t dwFlags, std::int32_t dx, std::int32_t dy, std::int32_t dwData,
                            std::uint32_t dwExtraInfo) {
    mausMerken(dwFlags);
    ziel_->mouse_event(dwFlags, dx, dy, dwData, dwExtraInfo);
}

void Druckbuch::mausMerken(std::uint32_t dwFlags) {
    for (std::size_t knopf = 0; knopf < FLAGGEN.size(); ++knopf) {
        if (dwFlags & FLAGGEN[knopf].druecken)
            knoepfe_[knopf].melden(true);
        if (dwFlags & FLAGGEN[knopf].loslassen)
            knoepfe_[knopf].melden(false);
    }
}

std::vector<VirtuelleTaste> Druckbuch::gedrueckteTasten() const {
    std::vector<VirtuelleTaste> unten;
    for (std::size_t taste = 0; taste < tasten_.size(); ++taste)
        if (tasten_[taste].unten)
            unten.push_back(static_cast<VirtuelleTaste>(taste));
    return unten;
}
