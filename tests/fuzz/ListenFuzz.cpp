// SPDX-License-Identifier: GPL-3.0-or-later
// The lists that a run makes of a layer's rows, of any text: the first line of the input as lines of a
// direction, the second as list of actions, the others as keys that are looked up in it. A search finds what
// one through the bare text finds.
#include "base/LaufzeitFehler.h"
#include "formats/Aktionsliste.h"
#include "formats/Linienliste.h"
#include "tests/fuzz/Verlangen.h"

#include <cstdint>
#include <string>

namespace {

constexpr auto NIRGENDS = std::string_view::npos;

void linien(std::string_view text) {
    const auto liste = linienliste(text);
    std::string wieder;
    for (const auto& linie : liste) {
        wieder += (&linie == liste.data() ? "" : ";") + linie.text();
        try {
            linie.wert();
        } catch (const LaufzeitFehler&) {
        }
    }
    // One character alone gives no list.
    verlange(text.size() < 2 ? liste.empty() : wieder == text);
}

/// From the "+" behind `stelle` up to the next ";".
std::string aktionAb(std::string_view text, std::size_t stelle) {
    const auto plus = text.find('+', stelle);
    return plus == NIRGENDS ? "" : std::string(text.substr(plus + 1, text.find(';', plus) - plus - 1));
}

/// The first entry that begins with the key; an entry needs its closing ";".
void suchen(const Aktionsliste& liste, std::string_view schluessel) {
    const std::string_view text = liste.text();
    const auto aktion = liste.suchen(schluessel);
    const bool ganzerSchluessel = schluessel.find(';') == NIRGENDS;
    const auto stelle = text.find(";" + std::string(schluessel));
    const bool da = stelle != NIRGENDS && text.find(';', stelle + 1) != NIRGENDS;
    if (ganzerSchluessel)
        verlange(da ? aktion && aktion->text() == aktionAb(text, stelle) : !aktion);
    const auto irgendwo = text.empty() ? NIRGENDS : text.find(schluessel);
    verlange(liste.anzeigesuche(schluessel) == (irgendwo == NIRGENDS ? "" : aktionAb(text, irgendwo)));
    const auto imFeld = liste.imFeld(std::string(schluessel), true, "00", true);
    verlange(!imFeld.eigene || (!imFeld.xBand && !imFeld.yBand));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    auto rest = alsText(daten, groesse);
    linien(zeileAbtrennen(rest));
    const Aktionsliste liste{std::string(zeileAbtrennen(rest))};
    for (const auto& aktion : liste.alle())
        verlange(aktion != nullptr);
    for (int schluessel = 0; schluessel < 8 && !rest.empty(); ++schluessel)
        suchen(liste, zeileAbtrennen(rest));
    return 0;
}
