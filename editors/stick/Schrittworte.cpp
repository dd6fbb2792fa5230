// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Schrittworte.h"

#include "base/Ebenennamen.h"

namespace {

std::string linienname(std::size_t richtung, std::int32_t wert) {
    std::string name = LINIENRICHTUNGEN[richtung];
    name += ' ';
    name += std::to_string(wert);
    return name;
}

std::string linienworte(const Linienaenderung& linie) {
    const auto richtung = linie.platz.richtung;
    if (linie.alt == 0)
        return "Neue Linie " + linienname(richtung, linie.neu);
    if (linie.neu == 0)
        return "Löschen der Linie " + linienname(richtung, linie.alt);
    return "Linie " + linienname(richtung, linie.alt) + " → " + std::to_string(linie.neu);
}

std::string schrittworte(const Stickschritt& schritt, int gezeigteEbene) {
    std::string worte;
    for (const auto& linie : schritt.linien) {
        worte += worte.empty() ? "" : " und ";
        worte += linienworte(linie);
    }
    if (worte.empty())
        worte = schritt.andere;
    if (schritt.ebene != gezeigteEbene) {
        worte += " (";
        worte += EBENENNAMEN[static_cast<std::size_t>(schritt.ebene)];
        worte += ')';
    }
    return worte;
}

} // namespace

std::string ruecknahmeworte(const Stickschritt* schritt, int gezeigteEbene) {
    return schritt ? schrittworte(*schritt, gezeigteEbene) + " rückgängig" : "Rückgängig";
}

std::string wiederholungsworte(const Stickschritt* schritt, int gezeigteEbene) {
    return schritt ? schrittworte(*schritt, gezeigteEbene) + " wiederherstellen" : "Wiederherstellen";
}

std::string aktionswechsel(const std::string& feld, const std::string& vorher, const std::string& nachher) {
    return feld + ": " + vorher + " → " + nachher;
}

std::string leerfeldloeschung(std::size_t richtung, std::int32_t linie) {
    return "Löschen der Leerfelder an Linie " + linienname(richtung, linie);
}

std::string maskenwechsel(bool an) {
    return an ? "„1 to 1“ einschalten" : "„1 to 1“ ausschalten";
}
