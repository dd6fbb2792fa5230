#include "store/db/Tabelle.h"

#include "store/db/Namen.h"

#include <charconv>
#include <limits>

namespace {

template <class Ganzzahl> bool passtIn(std::int64_t zahl) {
    return zahl >= std::numeric_limits<Ganzzahl>::min() && zahl <= std::numeric_limits<Ganzzahl>::max();
}

[[noreturn]] void ueberlauf() {
    throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: die Zahl ist zu groß.");
}

[[noreturn]] void falscherTyp() {
    throw LaufzeitFehler(Fehlernummer::FalscherTyp, "Typen unverträglich: hier wird eine Zahl erwartet.");
}

std::int64_t zahlAus(std::string_view text) {
    std::int64_t zahl = 0;
    const char* ende = text.data() + text.size();
    const auto [gelesenBis, fehler] = std::from_chars(text.data(), ende, zahl);
    if (fehler == std::errc::invalid_argument || gelesenBis != ende)
        falscherTyp();
    if (fehler != std::errc())
        ueberlauf();
    return zahl;
}

} // namespace

std::string alsText(const Wert& wert) {
    if (const auto* zahl = std::get_if<std::int64_t>(&wert))
        return std::to_string(*zahl);
    if (const auto* text = std::get_if<std::string>(&wert))
        return *text;
    return {};
}

std::int64_t alsZahl(const Wert& wert) {
    if (const auto* zahl = std::get_if<std::int64_t>(&wert))
        return *zahl;
    if (const auto* text = std::get_if<std::string>(&wert))
        return zahlAus(*text);
    falscherTyp();
}

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

std::string Tabelle::lesetext() const {
    std::string text = "SELECT ";
    for (const Spalte& spalte : spalten)
        text += inAnfuehrung(spalte.name) + ',';
    text.back() = ' ';
    return text + "FROM " + ort + " WHERE _rowid_ = ?";
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
