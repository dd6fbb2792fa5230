// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Aktionsliste.h"

#include <utility>

namespace {

constexpr auto NIRGENDS = std::string_view::npos;

} // namespace

Aktionsliste::Aktionsliste(std::string text) : text_(std::move(text)) {
    for (auto vor = text_.find(';'); vor != NIRGENDS;) {
        const auto ende = text_.find(';', vor + 1);
        if (ende == NIRGENDS)
            break; // behind the last entry
        eintraege_.push_back(
            {vor + 1, ende - vor - 1, std::make_shared<const Stickaktion>(std::string(aktionAb(vor)))});
        vor = ende;
    }
}

Aktionszeiger Aktionsliste::suchen(std::string_view schluessel) const {
    for (const auto& eintrag : eintraege_)
        if (std::string_view(text_).substr(eintrag.anfang, eintrag.laenge).starts_with(schluessel))
            return eintrag.aktion;
    return nullptr;
}

std::string Aktionsliste::anzeigesuche(std::string_view schluessel) const {
    const auto stelle = text_.empty() ? NIRGENDS : text_.find(schluessel);
    return stelle == NIRGENDS ? "" : std::string(aktionAb(stelle));
}

// What stands between the first "+" behind `stelle` and the next ";".
std::string_view Aktionsliste::aktionAb(std::size_t stelle) const {
    const auto plus = text_.find('+', stelle);
    if (plus == NIRGENDS)
        return {};
    return std::string_view(text_).substr(plus + 1, text_.find(';', plus) - plus - 1);
}

void eintragAnhaengen(std::string& liste, std::string_view schluessel, std::string_view aktion) {
    if (liste.empty())
        liste += ';';
    liste.append(schluessel) += '+';
    liste.append(aktion) += ';';
}
