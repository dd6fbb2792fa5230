// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/db/Zeilenschritt.h"

#include "store/db/Namen.h"

#include <algorithm>
#include <utility>

bool Zeilenschritt::leer() const {
    return std::ranges::all_of(tabellen_, [](const Tabellenteil& teil) {
        return std::ranges::all_of(teil.zeilen,
                                   [](const Zeile& zeile) { return zeile.vorher == zeile.nachher; });
    });
}

// --- kept up with the file ---

void Zeilenschritt::umziehen(const std::vector<Zeilenumzug>& umzuege) {
    for (const auto& umzug : umzuege)
        for (auto& teil : tabellen_) {
            if (teil.teil != umzug.teil || !gleicherName(teil.tabelle, umzug.tabelle))
                continue;
            for (auto& zeile : teil.zeilen)
                if (zeile.ort == umzug.alt)
                    zeile.ort = umzug.neu;
            std::ranges::sort(teil.zeilen, {}, &Zeile::ort);
        }
}

std::int64_t Zeilenschritt::hoechsteZeile() const {
    std::int64_t hoechste = 0;
    for (const auto& teil : tabellen_)
        hoechste = std::max(hoechste, teil.zeilen.back().ort);
    return hoechste;
}

void Zeilenschritt::ersetzen(std::string_view spalte, const std::string& alt, const std::string& neu) {
    for (auto& teil : tabellen_)
        for (std::size_t i = 0; i < teil.spalten.size(); ++i) {
            if (!gleicherName(teil.spalten[i], spalte))
                continue;
            const auto ersetze = [&](Bild& bild) {
                auto zellen = bild ? bild->zellen() : std::vector<Zelle>{};
                if (zellen.empty() || zellen[i] != Zelle(alt))
                    return;
                zellen[i] = neu;
                bild.emplace(zellen);
            };
            for (auto& zeile : teil.zeilen) {
                ersetze(zeile.vorher);
                ersetze(zeile.nachher);
            }
        }
}

Zeilenschritt::Tabellenteil* Zeilenschritt::teilVon(const Tabellenteil& gesuchter) {
    for (auto& teil : tabellen_)
        if (teil.teil == gesuchter.teil && gleicherName(teil.tabelle, gesuchter.tabelle))
            return &teil;
    return nullptr;
}

bool Zeilenschritt::anfuegen(const Zeilenschritt& spaeterer) {
    auto ganzer = *this;
    for (const auto& teil : spaeterer.tabellen_) {
        auto* bekannter = ganzer.teilVon(teil);
        if (!bekannter) {
            ganzer.tabellen_.push_back(teil);
            continue;
        }
        if (bekannter->spalten != teil.spalten)
            return false;
        for (const auto& zeile : teil.zeilen) {
            const auto stelle = std::ranges::lower_bound(bekannter->zeilen, zeile.ort, {}, &Zeile::ort);
            if (stelle == bekannter->zeilen.end() || stelle->ort != zeile.ort)
                bekannter->zeilen.insert(stelle, zeile);
            else if (stelle->nachher != zeile.vorher)
                return false;
            else
                stelle->nachher = zeile.nachher;
        }
    }
    *this = std::move(ganzer);
    return true;
}

std::size_t Zeilenschritt::bytes() const {
    std::size_t summe = sizeof *this;
    for (const auto& teil : tabellen_)
        for (const auto& zeile : teil.zeilen)
            summe += sizeof zeile + (zeile.vorher ? zeile.vorher->bytes() : 0) +
                     (zeile.nachher ? zeile.nachher->bytes() : 0);
    return summe;
}
