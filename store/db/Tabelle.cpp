// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/db/Tabelle.h"

#include "store/db/Namen.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>

namespace {

template <class Ganzzahl> bool passtIn(std::int64_t zahl) {
    return zahl >= std::numeric_limits<Ganzzahl>::min() && zahl <= std::numeric_limits<Ganzzahl>::max();
}

} // namespace

int Tabelle::ordinal(std::string_view gesucht) const {
    for (std::size_t i = 0; i < spalten.size(); ++i)
        if (gleicherName(spalten[i].name, gesucht))
            return static_cast<int>(i);
    throw LaufzeitFehler(Fehlernummer::KeinSolchesFeld,
                         "Die Tabelle „" + name + "“ hat keine Spalte „" + std::string(gesucht) + "“.");
}

const Spalte& Tabelle::spalte(int ordinal) const {
    if (ordinal < 0 || static_cast<std::size_t>(ordinal) >= spalten.size())
        throw LaufzeitFehler(Fehlernummer::KeinSolchesFeld,
                             "Die Tabelle „" + name + "“ hat keine Spalte " + std::to_string(ordinal) + ".");
    return spalten[static_cast<std::size_t>(ordinal)];
}

std::vector<int> Tabelle::alle() const {
    std::vector<int> ordinale(spalten.size());
    std::iota(ordinale.begin(), ordinale.end(), 0);
    return ordinale;
}

std::vector<std::string> Tabelle::spaltennamen() const {
    std::vector<std::string> namen;
    for (const auto& spalte : spalten)
        namen.push_back(spalte.name);
    return namen;
}

std::string Tabelle::spaltenliste(const std::vector<int>& ordinale) const {
    std::string text;
    for (const int ordinal : ordinale)
        text += (text.empty() ? "" : ",") + inAnfuehrung(spalte(ordinal).name);
    return text;
}

std::string Tabelle::lesetext() const {
    return "SELECT " + spaltenliste(alle()) + " FROM " + ort + " WHERE _rowid_ = ?";
}

Spaltenart spaltenartAus(std::string_view deklaration) {
    const std::string klein = kleinGeschrieben(deklaration);
    if (klein.find("smallint") != std::string::npos)
        return Spaltenart::Ganzzahl16;
    return klein.find("int") != std::string::npos ? Spaltenart::Ganzzahl32 : Spaltenart::Text;
}

Wert passendFuer(const Spalte& spalte, Wert wert) {
    if (istNull(wert))
        return wert;
    if (spalte.art == Spaltenart::Text)
        return alsText(wert);
    const std::int64_t zahl = alsZahl(wert);
    const bool passt =
        spalte.art == Spaltenart::Ganzzahl16 ? passtIn<std::int16_t>(zahl) : passtIn<std::int32_t>(zahl);
    if (!passt)
        ueberlauf();
    return zahl;
}
