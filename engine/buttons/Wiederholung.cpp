// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/buttons/Wiederholung.h"

#include "engine/buttons/GehalteneTasten.h"
#include "engine/output/XPTaste.h"

#include <algorithm>

namespace {

// The last place, 20, is neither searched nor emptied.
constexpr std::size_t DURCHSUCHTE_PLAETZE = 20;

} // namespace

Wiederholung::Wiederholung(Wiederholstand& stand, const GehalteneTasten& gehaltene, XPTaste& xpTaste,
                           Zeitgeber& zeitgeber)
    : stand_(stand), gehaltene_(gehaltene), xpTaste_(xpTaste) {
    for (std::size_t platz = 0; platz < wiederholzeitgeber_.size(); ++platz)
        wiederholzeitgeber_[platz] = zeitgeber.formularzeitgeber([this, platz] { takt(platz); });
}

void Wiederholung::WiederholungPruefen() {
    if (gehaltene_.GehaltenText() == stand_.GehaltenTextAlt)
        return;
    const auto& eintraege = gehaltene_.eintraege();
    // Entries beyond the last place can't be repeated.
    const auto anzahl = std::min(eintraege.size(), stand_.WiederholSlots.size());
    for (std::size_t platz = 0; platz < anzahl; ++platz) {
        if (eintragKommtVor(stand_.GehaltenTextAlt, eintraege[platz]))
            continue;
        if (platz < wiederholzeitgeber_.size()) {
            wiederholzeitgeber_[platz]->Enabled(true);
            wiederholzeitgeber_[platz]->Interval(intervall_);
        }
        stand_.WiederholSlots[platz] = eintraege[platz];
    }
    abgleichen();
}

void Wiederholung::WiederholungStoppen(int slot) {
    for (std::size_t platz = 0; platz < DURCHSUCHTE_PLAETZE; ++platz) {
        auto& inhalt = stand_.WiederholSlots[platz];
        if (!inhalt || inhalt->slot != slot)
            continue;
        if (platz < wiederholzeitgeber_.size())
            wiederholzeitgeber_[platz]->Enabled(false);
        inhalt.reset();
        return;
    }
}

void Wiederholung::slotsLeeren() {
    if (!stand_.WiederholSlots.front())
        return;
    for (std::size_t platz = 0; platz < DURCHSUCHTE_PLAETZE; ++platz)
        stand_.WiederholSlots[platz].reset();
}

bool Wiederholung::inRuhe() const {
    for (std::size_t platz = 0; platz < wiederholzeitgeber_.size(); ++platz)
        if (stand_.WiederholSlots[platz] && wiederholzeitgeber_[platz]->Enabled() &&
            wiederholzeitgeber_[platz]->Interval() > std::chrono::milliseconds{0})
            return false;
    return true;
}

std::vector<Formularzeitgeber*> Wiederholung::zeitgeber() const {
    std::vector<Formularzeitgeber*> alle;
    for (const auto& einer : wiederholzeitgeber_)
        alle.push_back(einer.get());
    return alle;
}

void Wiederholung::anhalten() {
    for (const auto& zeitgeber : wiederholzeitgeber_)
        zeitgeber->Enabled(false);
}

void Wiederholung::abgleichen() {
    stand_.GehaltenTextAlt = gehaltene_.GehaltenText();
}

void Wiederholung::takt(std::size_t platz) {
    // A place can be emptied while its timer runs; the timer then goes on in silence.
    if (const auto& inhalt = stand_.WiederholSlots[platz])
        xpTaste_.TasteAbSenden(inhalt->taste);
}
