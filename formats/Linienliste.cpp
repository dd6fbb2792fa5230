// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Linienliste.h"

#include "base/LaufzeitFehler.h"
#include "formats/Felder.h"

#include <utility>

namespace {

std::optional<std::int32_t> zahlOderNichts(const std::string& text) {
    try {
        return feldzahl(text);
    } catch (const LaufzeitFehler&) {
        return std::nullopt;
    }
}

} // namespace

Linie::Linie(std::string text) : text_(std::move(text)), wert_(zahlOderNichts(text_)) {}

// Reads the text once more, for what is wrong with it.
std::int32_t Linie::keineLinie() const {
    try {
        return feldzahl(text_);
    } catch (const LaufzeitFehler& fehler) {
        throw LaufzeitFehler(fehler.nummer(), std::string("Linie des Sticks: ") + fehler.what());
    }
}

Linienliste linienliste(std::string_view gesammelt) {
    Linienliste liste;
    const std::size_t grenze = gesammelt.empty() ? 0 : gesammelt.size() - 1;
    while (liste.size() < grenze) {
        const auto ende = gesammelt.find(';');
        const bool letztes = ende == std::string_view::npos || liste.size() + 1 == grenze;
        liste.emplace_back(std::string(letztes ? gesammelt : gesammelt.substr(0, ende)));
        if (letztes)
            break;
        gesammelt.remove_prefix(ende + 1);
    }
    return liste;
}

void linieAnhaengen(std::string& gesammelt, std::int64_t linie) {
    gesammelt += std::to_string(linie) + ';';
}
