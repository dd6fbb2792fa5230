#include "formats/Felder.h"

#include "base/LaufzeitFehler.h"

#include <charconv>

std::string_view davor(std::string_view text, char trenner) {
    return text.substr(0, text.find(trenner));
}

std::int32_t feldzahl(std::string_view feld) {
    const auto anfang = feld.find_first_not_of(' ');
    const auto kern = anfang == std::string_view::npos
                          ? std::string_view{}
                          : feld.substr(anfang, feld.find_last_not_of(' ') - anfang + 1);
    std::int32_t zahl = 0;
    const auto [ende, fehler] = std::from_chars(kern.data(), kern.data() + kern.size(), zahl);
    if (fehler == std::errc::result_out_of_range)
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: \"" + std::string(feld) + "\"");
    if (fehler != std::errc{} || ende != kern.data() + kern.size())
        throw LaufzeitFehler(Fehlernummer::FalscherTyp,
                             "Typen unverträglich: \"" + std::string(feld) + "\" ist keine Zahl");
    return zahl;
}

std::int32_t feldzahl(const Feld& feld) {
    return feld ? feldzahl(std::string_view{*feld}) : 0;
}

std::string feldtext(const Feld& feld) {
    return feld.value_or("");
}
