// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/probe/ProbeEingabe.h"

#include <algorithm>

std::uint32_t ProbeEingabe::SendInput(std::span<const INPUT> ereignisse) {
    laengsterAufruf_ = std::max(laengsterAufruf_, ereignisse.size());
    for (const auto& ereignis : ereignisse) {
        ereignisse_.push_back(ereignis);
        eingaenge_.push_back(Eingang::SendInput);
        if (zuhoerer_)
            zuhoerer_(ereignis);
    }
    return static_cast<std::uint32_t>(ereignisse.size());
}

void ProbeEingabe::mouse_event(std::uint32_t dwFlags, std::int32_t dx, std::int32_t dy, std::int32_t dwData,
                               std::uint32_t dwExtraInfo) {
    Eingabe::mouse_event(dwFlags, dx, dy, dwData, dwExtraInfo);
    eingaenge_.back() = Eingang::mouse_event;
}

std::vector<std::string> ProbeEingabe::texteAbholen() {
    std::vector<std::string> texte;
    for (const auto& ereignis : abholen())
        texte.push_back(ereignistext(ereignis));
    return texte;
}
