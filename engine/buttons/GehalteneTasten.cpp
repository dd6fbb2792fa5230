#include "engine/buttons/GehalteneTasten.h"

#include "engine/output/XPTaste.h"
#include "formats/Felder.h"

#include <algorithm>

std::string halteeintrag(int slot, std::string_view taste) {
    return std::to_string(slot) + "-" + std::string(taste) + ",";
}

void GehalteneTasten::GehaltenPflegen(std::string_view text, int entfernenStatt, XPTaste& xpTaste) {
    if (entfernenStatt != 0)
        entfernen(text, xpTaste);
    else
        hinzufuegen(text);
}

void GehalteneTasten::hinzufuegen(std::string_view eintrag) {
    if (std::find(eintraege_.begin(), eintraege_.end(), eintrag) == eintraege_.end())
        eintraege_.emplace_back(eintrag);
    textNeuBilden();
}

void GehalteneTasten::entfernen(std::string_view eintrag, XPTaste& xpTaste) {
    const auto slot = davor(eintrag, '-');
    const auto stelle = std::find_if(eintraege_.begin(), eintraege_.end(),
                                     [slot](const std::string& einer) { return davor(einer, '-') == slot; });
    if (stelle == eintraege_.end())
        return;
    const std::string gehalten = *stelle;
    eintraege_.erase(stelle);
    textNeuBilden(); // before the key is sent: an entry that is no key goes too
    xpTaste.TasteAufSenden(feldzahl(davor(std::string_view(gehalten).substr(slot.size() + 1), ',')));
}

void GehalteneTasten::textNeuBilden() {
    text_.clear();
    for (const auto& eintrag : eintraege_)
        text_ += eintrag;
}
