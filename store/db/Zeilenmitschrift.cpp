// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/db/Zeilenmitschrift.h"

Zeilenmitschrift::Blatt& Zeilenmitschrift::blatt(Dateiteil teil,
                                                 const std::shared_ptr<const Tabelle>& tabelle) {
    auto& gesuchtes = blaetter_[tabelle->ort];
    gesuchtes.teil = teil;
    gesuchtes.tabelle = tabelle;
    return gesuchtes;
}

void Zeilenmitschrift::vorher(Dateiteil teil, const std::shared_ptr<const Tabelle>& tabelle,
                              std::int64_t zeile) {
    auto& zeilen = blatt(teil, tabelle).zeilen;
    if (!zeilen.contains(zeile))
        zeilen[zeile].vorher = leser_(*tabelle, zeile);
}

void Zeilenmitschrift::neu(Dateiteil teil, const std::shared_ptr<const Tabelle>& tabelle,
                           std::int64_t zeile) {
    blatt(teil, tabelle)
        .zeilen.try_emplace(zeile); // at the place of one that the act has deleted: no new one
}

void Zeilenmitschrift::bezeugen(Dateiteil teil, const std::shared_ptr<const Tabelle>& tabelle,
                                std::int64_t zeile) {
    vorher(teil, tabelle, zeile);
    blatt(teil, tabelle).zeilen[zeile].bezeugt = true;
}

Zeilenschritt Zeilenmitschrift::schritt() const {
    Zeilenschritt schritt;
    for (const auto& [ort, blatt] : blaetter_) {
        Zeilenschritt::Tabellenteil teil{blatt.teil, blatt.tabelle->name, blatt.tabelle->spaltennamen(), {}};
        for (const auto& [zeile, eintrag] : blatt.zeilen) {
            auto nachher = leser_(*blatt.tabelle, zeile);
            if (eintrag.bezeugt || eintrag.vorher != nachher)
                teil.zeilen.push_back({zeile, eintrag.vorher, std::move(nachher)});
        }
        if (!teil.zeilen.empty())
            schritt.tabellen_.push_back(std::move(teil));
    }
    return schritt;
}
