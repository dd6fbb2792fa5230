// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/Fehlerort.h"

#include "base/Ebenennamen.h"
#include "base/Tastennamen.h"
#include "store/schema/Linientabelle.h"

std::string ebenenname(int ebene) {
    const auto i = static_cast<std::size_t>(ebene);
    return std::string("Ebene ") + (i < EBENENNAMEN.size() ? EBENENNAMEN[i] : std::to_string(ebene).c_str());
}

std::string stickname(Stickseite seite, int ebene) {
    return (seite == Stickseite::Links ? "Linker Stick, " : "Rechter Stick, ") + ebenenname(ebene);
}

std::string feldname(Stickseite seite, const Feldname& feld) {
    std::string text;
    for (std::size_t i = 0; i < feld.linien.size(); ++i)
        if (feld.linien[i] != 0)
            text += std::string(" ") + LINIENRICHTUNGEN[i] + " " + std::to_string(feld.linien[i]);
    return stickname(seite, feld.ebene) + ", Feld" + (text.empty() ? " Mitte" : text);
}

std::string slotname(int slot, int ebene) {
    const auto i = static_cast<std::size_t>(slot);
    const std::string name = i < LAUFNAMEN.size()
                                 ? "Taste " + std::string(LAUFNAMEN[i])
                                 : std::string("Steuerkreuz ") + KREUZRICHTUNGEN.at(i - TASTEN);
    return name + ", " + ebenenname(ebene);
}

std::string angefuehrt(std::string_view text) {
    return '"' + std::string(text) + '"';
}
