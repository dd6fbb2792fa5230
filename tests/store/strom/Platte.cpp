// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/store/strom/Platte.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

using Art = Plattenschritt::Art;

enum Schicksal { Da, Verloren, Halb, Muell };
constexpr int SCHICKSALE_EINES_NAMENS = 2;
constexpr int SCHICKSALE_EINES_SEKTORS = 4;

void legen(std::string& inhalt, std::size_t stelle, const std::string& daten) {
    if (inhalt.size() < stelle + daten.size())
        inhalt.resize(stelle + daten.size(), '\0');
    inhalt.replace(stelle, daten.size(), daten);
}

void anwenden(std::string& inhalt, const Plattenschritt& schritt) {
    if (schritt.art == Art::Kuerzen)
        inhalt.resize(schritt.stelle, '\0');
    else
        legen(inhalt, schritt.stelle, schritt.daten);
}

/// Cuts a write at the bounds of the sectors.
std::vector<Plattenschritt> sektorenVon(const Plattenschritt& schritt, std::size_t sektor) {
    if (schritt.art == Art::Kuerzen)
        return {schritt};
    std::vector<Plattenschritt> stuecke;
    for (std::size_t i = 0; i < schritt.daten.size();) {
        const std::size_t stelle = schritt.stelle + i;
        const std::size_t laenge = std::min(sektor - stelle % sektor, schritt.daten.size() - i);
        stuecke.push_back({Art::Schreiben, schritt.name, {}, stelle, schritt.daten.substr(i, laenge)});
        i += laenge;
    }
    return stuecke;
}

/// Nothing but zeros is what many file systems show of a place that was never written.
std::string muell(std::size_t laenge, std::mt19937& zufall) {
    std::string daten(laenge, '\0');
    if (zufall() % 3 != 0)
        std::ranges::generate(daten, [&] { return static_cast<char>(zufall()); });
    return daten;
}

void treffen(std::string& inhalt, const Plattenschritt& stueck, int schicksal, std::mt19937& zufall) {
    const std::size_t mitte = stueck.daten.size() / 2;
    switch (schicksal) {
    case Da:
        return anwenden(inhalt, stueck);
    case Halb:
        if (zufall() % 2 == 0)
            return legen(inhalt, stueck.stelle, stueck.daten.substr(0, mitte));
        return legen(inhalt, stueck.stelle + mitte, stueck.daten.substr(mitte));
    case Muell:
        return legen(inhalt, stueck.stelle, muell(stueck.daten.size(), zufall));
    default:
        return;
    }
}

} // namespace

Platte::Platte(const Plattenbild& anfang) {
    for (const auto& [name, inhalt] : anfang) {
        jetzt_[name] = dateien_.size();
        dateien_.push_back({inhalt, inhalt, {}});
    }
    sicher_ = jetzt_;
}

Platte::Namenswechsel Platte::wechselDurch(const Plattenschritt& schritt) {
    const std::string ordner = std::filesystem::path(schritt.name).parent_path().string();
    if (schritt.art == Art::Anlegen) {
        dateien_.emplace_back();
        return {ordner, {{schritt.name, dateien_.size() - 1}}};
    }
    const Nummer datei = jetzt_.at(schritt.name);
    if (schritt.art == Art::Loeschen)
        return {ordner, {{schritt.name, std::nullopt}}};
    if (schritt.art == Art::Umbenennen)
        return {ordner, {{schritt.name, std::nullopt}, {schritt.nach, datei}}};
    if (schritt.art == Art::Verknuepfen)
        return {std::filesystem::path(schritt.nach).parent_path().string(), {{schritt.nach, datei}}};
    return {ordner, {{schritt.name, jetzt_.at(schritt.nach)}, {schritt.nach, datei}}};
}

void Platte::anwenden(Namen& namen, const Namenswechsel& wechsel) {
    for (const auto& [name, datei] : wechsel.neu)
        if (datei)
            namen[name] = *datei;
        else
            namen.erase(name);
}

void Platte::tun(const Plattenschritt& schritt) {
    switch (schritt.art) {
    case Art::Schreiben:
    case Art::Kuerzen: {
        Datei& datei = dateien_[jetzt_.at(schritt.name)];
        ::anwenden(datei.jetzt, schritt);
        datei.offen.push_back(schritt);
        break;
    }
    case Art::Sichern: {
        Datei& datei = dateien_[jetzt_.at(schritt.name)];
        datei.sicher = datei.jetzt;
        datei.offen.clear();
        break;
    }
    case Art::OrdnerSichern:
        std::erase_if(offen_, [&](const Namenswechsel& wechsel) {
            const bool hier = wechsel.ordner == schritt.name;
            if (hier)
                anwenden(sicher_, wechsel);
            return hier;
        });
        break;
    default:
        offen_.push_back(wechselDurch(schritt));
        anwenden(jetzt_, offen_.back());
    }
}

Plattenbild Platte::jetzt() const {
    Plattenbild bild;
    for (const auto& [name, datei] : jetzt_)
        bild[name] = dateien_[datei].jetzt;
    return bild;
}

Plattenbild Platte::nachStromausfall(std::size_t sektor, bool gemischt, const Los& los,
                                     std::mt19937& zufall) const {
    Namen namen = sicher_;
    for (const auto& wechsel : offen_)
        if (los(SCHICKSALE_EINES_NAMENS) == Da)
            anwenden(namen, wechsel);
    Plattenbild bild;
    for (const auto& [name, nummer] : namen) {
        const Datei& datei = dateien_[nummer];
        std::vector<Plattenschritt> stuecke;
        for (const auto& schritt : datei.offen)
            for (auto& stueck : sektorenVon(schritt, sektor))
                stuecke.push_back(std::move(stueck));
        if (gemischt)
            std::ranges::shuffle(stuecke, zufall);
        std::string& inhalt = bild[name] = datei.sicher;
        for (const auto& stueck : stuecke)
            treffen(inhalt, stueck,
                    los(stueck.art == Art::Kuerzen ? SCHICKSALE_EINES_NAMENS : SCHICKSALE_EINES_SEKTORS),
                    zufall);
    }
    return bild;
}
