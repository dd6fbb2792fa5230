// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as the editors read it: strictly. What an editor takes it writes back without a loss, and a run
// understands it the same way.
#include "base/LaufzeitFehler.h"
#include "editors/slider/Schubzahlen.h"
#include "editors/stick/Aktionsworte.h"
#include "editors/stick/Stickaktionstext.h"
#include "formats/Belegung.h"
#include "formats/Schubtext.h"
#include "tests/fuzz/Verlangen.h"

#include <cstdint>
#include <optional>
#include <string>

namespace {

template <class Arbeit> auto ohneFehler(Arbeit&& arbeit) -> std::optional<decltype(arbeit())> {
    try {
        return arbeit();
    } catch (const LaufzeitFehler&) {
        return std::nullopt;
    }
}

void belegung(std::string_view text) {
    const Belegung gelesen(text);
    if (const auto knopf = gelesen.mausknopf())
        verlange(*knopf >= 0 && *knopf < MAUSKNOEPFE);
    if (gelesen.umschalttaste())
        ohneFehler([&] { return gelesen.umschaltmodus(); });
    const auto felder = belegungStrengLesen(text);
    if (!felder)
        return;
    verlange(belegungstext(*felder) == text);
    Belegungsfelder imLauf;
    gelesen.legenUeber(imLauf);
    for (std::size_t i = 0; i < felder->size(); ++i)
        verlange(imLauf[i].text() == (*felder)[i]);
}

void schubtext(std::string_view text) {
    const auto gelesen = ohneFehler([&] { return Schubtext(text); });
    if (!gelesen)
        return;
    verlange(gelesen->linien() >= 0 && gelesen->linien() <= Schubtext::LINIEN_MAX);
    const auto geschrieben = gelesen->text(gelesen->nurAuswaerts());
    const Schubtext wieder(geschrieben);
    verlange(wieder.linien() == gelesen->linien());
    verlange(wieder.text(gelesen->nurAuswaerts()) == geschrieben);
    for (int index = 0; index < gelesen->felder(); ++index) {
        const auto aktion = ohneFehler([&] { return aktionAus(gelesen->satz(index)); });
        if (aktion)
            verlange(aktionAus(alsSatz(index + 1, *aktion)) == *aktion);
    }
}

void feldaktion(std::string_view text) {
    const auto gelesen = stickaktionLesen(text);
    const auto geschrieben = stickaktionstext(gelesen.bild);
    if (!gelesen.fehler) {
        const auto wieder = stickaktionLesen(geschrieben);
        verlange(!wieder.fehler && wieder.bild.art == gelesen.bild.art);
        verlange(stickaktionstext(wieder.bild) == geschrieben);
    }
    if (istNurLeerfeld(text))
        verlange(!gelesen.fehler && gelesen.bild.art == Stickaktionsart::Leerfeld);
    aktionsworte(Stickaktion(std::string(text)), [](const std::string& nummer) { return nummer; });
}

void schubzahl(std::string_view text) {
    if (zahlPruefen(text) == Zahlbefund::Gut)
        verlange(feldzahl(text) >= 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const auto text = alsText(daten, groesse);
    belegung(text);
    schubtext(text);
    feldaktion(text);
    schubzahl(text);
    ohneFehler([&] { return tastennummer(text); });
    return 0;
}
