// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/slider/Schubzahlen.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr double ACHSENLAENGE = 65535;

bool istZiffer(char zeichen) {
    return zeichen >= '0' && zeichen <= '9';
}

// A sign, digits and one comma or point among them.
bool siehtNachZahlAus(std::string_view text) {
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    if (const auto komma = text.find_first_of(".,"); komma != std::string_view::npos)
        return std::ranges::any_of(text, istZiffer) &&
               std::ranges::all_of(text.substr(0, komma), istZiffer) &&
               std::ranges::all_of(text.substr(komma + 1), istZiffer);
    return !text.empty() && std::ranges::all_of(text, istZiffer);
}

} // namespace

Zahlbefund zahlPruefen(std::string_view text) {
    const auto kern = ohneRand(text);
    if (!siehtNachZahlAus(kern))
        return Zahlbefund::KeineZahl;
    std::int32_t zahl = 0;
    const auto [ende, fehler] = std::from_chars(kern.data(), kern.data() + kern.size(), zahl);
    const bool ganz = fehler == std::errc{} && ende == kern.data() + kern.size();
    return ganz && istZiffer(kern.front()) ? Zahlbefund::Gut : Zahlbefund::PasstNicht;
}

// Here and for a line one division of whole numbers: where both mean the same place, both come out the same.
double schubstelle(std::int32_t wert, int breite) {
    return static_cast<double>(wert) * breite / ACHSENLAENGE;
}

double linienstelle(int linie, int linien, int breite) {
    return static_cast<double>(linie) * breite / (linien + 1);
}

int feldAnStelle(double stelle, int linien, int breite) {
    int feld = 1;
    while (feld <= linien && linienstelle(feld, linien, breite) <= stelle)
        ++feld;
    return feld;
}
