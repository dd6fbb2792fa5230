// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Aktionsliste.h"

#include <algorithm>
#include <utility>

namespace {

constexpr auto NIRGENDS = std::string_view::npos;

} // namespace

Aktionsliste::Aktionsliste(std::string text) : text_(std::move(text)) {
    eintraege_.reserve(static_cast<std::size_t>(std::ranges::count(text_, ';')));
    for (auto vor = text_.find(';'); vor != NIRGENDS;) {
        const auto ende = text_.find(';', vor + 1);
        if (ende == NIRGENDS)
            break; // behind the last entry
        eintraege_.push_back({vor + 1, ende - vor - 1, nullptr});
        vor = ende;
    }
}

Aktionszeiger Aktionsliste::suchen(std::string_view schluessel) const {
    const auto beginntSo = [&](const Eintrag& eintrag) {
        return std::string_view(text_).substr(eintrag.anfang, eintrag.laenge).starts_with(schluessel);
    };
    const auto eintrag = std::ranges::find_if(eintraege_, beginntSo);
    return eintrag == eintraege_.end() ? nullptr : aktionVon(*eintrag);
}

Aktionszeiger Aktionsliste::aktionVon(const Eintrag& eintrag) const {
    if (!eintrag.aktion)
        eintrag.aktion = std::make_shared<const Stickaktion>(std::string(aktionAb(eintrag.anfang)));
    return eintrag.aktion;
}

std::vector<Aktionszeiger> Aktionsliste::alle() const {
    std::vector<Aktionszeiger> aktionen;
    aktionen.reserve(eintraege_.size());
    for (const auto& eintrag : eintraege_)
        aktionen.push_back(aktionVon(eintrag));
    return aktionen;
}

Feldaktionen Aktionsliste::imFeld(const std::string& xHaelfte, bool imXBand, const std::string& yHaelfte,
                                  bool imYBand) const {
    if (auto eigene = suchen(xHaelfte + yHaelfte))
        return {std::move(eigene), nullptr, nullptr};
    if (!imXBand || !imYBand)
        return {};
    return {nullptr, suchen(xBandschluessel(xHaelfte)), suchen(yBandschluessel(yHaelfte))};
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
