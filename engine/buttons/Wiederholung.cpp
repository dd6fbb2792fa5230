#include "engine/buttons/Wiederholung.h"

#include "engine/buttons/GehalteneTasten.h"
#include "engine/output/XPTaste.h"
#include "formats/Felder.h"

#include <algorithm>

namespace {

// The last place, 20, is neither searched nor emptied.
constexpr std::size_t DURCHSUCHTE_PLAETZE = 20;

} // namespace

Wiederholung::Wiederholung(Wiederholstand& stand, const GehalteneTasten& gehaltene, XPTaste& xpTaste,
                           Zeitgeber& zeitgeber)
    : stand_(stand), gehaltene_(gehaltene), xpTaste_(xpTaste) {
    for (std::size_t platz = 0; platz < Timer1_.size(); ++platz)
        Timer1_[platz] = zeitgeber.formularzeitgeber([this, platz] { takt(platz); });
}

void Wiederholung::WiederholungPruefen() {
    const auto& text = gehaltene_.GehaltenText();
    if (text == stand_.GehaltenTextAlt)
        return;
    auto stuecke = zerlegen(text, ',');
    if (!stuecke.empty())
        stuecke.pop_back(); // behind the last ","
    // Entries beyond the last place can't be repeated.
    const auto anzahl = std::min(stuecke.size(), stand_.WiederholSlots.size());
    for (std::size_t platz = 0; platz < anzahl; ++platz) {
        if (stand_.GehaltenTextAlt.find(stuecke[platz]) != std::string::npos)
            continue;
        if (platz < Timer1_.size()) {
            Timer1_[platz]->Enabled(true);
            Timer1_[platz]->Interval(intervall_);
        }
        stand_.WiederholSlots[platz] = std::string(stuecke[platz]) + ",";
    }
    abgleichen();
}

void Wiederholung::WiederholungStoppen(std::string_view eintrag) {
    const auto slot = davor(eintrag, '-');
    for (std::size_t platz = 0; platz < DURCHSUCHTE_PLAETZE; ++platz) {
        auto& inhalt = stand_.WiederholSlots[platz];
        if (inhalt.empty() || davor(inhalt, '-') != slot)
            continue;
        if (platz < Timer1_.size())
            Timer1_[platz]->Enabled(false);
        inhalt.clear();
        return;
    }
}

void Wiederholung::slotsLeeren() {
    if (stand_.WiederholSlots.front().empty())
        return;
    for (std::size_t platz = 0; platz < DURCHSUCHTE_PLAETZE; ++platz)
        stand_.WiederholSlots[platz].clear();
}

void Wiederholung::anhalten() {
    for (const auto& zeitgeber : Timer1_)
        zeitgeber->Enabled(false);
}

void Wiederholung::abgleichen() {
    stand_.GehaltenTextAlt = gehaltene_.GehaltenText();
}

void Wiederholung::takt(std::size_t platz) {
    // A place can be emptied while its timer runs; the timer then goes on in silence.
    const std::string_view inhalt = stand_.WiederholSlots[platz];
    if (inhalt.empty())
        return;
    const auto eintrag = davor(inhalt, ',');
    xpTaste_.TasteAbSenden(feldzahl(eintrag.substr(davor(eintrag, '-').size() + 1)));
}
