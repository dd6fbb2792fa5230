// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/buttons/Tastwerk.h"

#include "base/LaufzeitFehler.h"
#include "base/Text.h"
#include "formats/Felder.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>
#include <utility>

using belegungsfeld::ART;
using belegungsfeld::TASTE;

namespace {

constexpr std::uint32_t ALLE_TASTEN = (1U << TASTEN) - 1;

struct Aktionsname {
    Belegungsart art;
    std::string_view name;
};
constexpr std::array<Aktionsname, 5> AKTIONSNAMEN{{{Belegungsart::ZaehlerAuf, "1,2,3,4..."},
                                                   {Belegungsart::ZaehlerAb, "9,8,7,6..."},
                                                   {Belegungsart::Umschalt1, "Umschalt 1"},
                                                   {Belegungsart::Umschalt2, "Umschalt 2"},
                                                   {Belegungsart::Maus, "Maus"}}};
/// The actions behind the entries of `UmschaltTasten`.
constexpr std::array<Belegungsart, 2> UMSCHALTARTEN{Belegungsart::Umschalt1, Belegungsart::Umschalt2};
constexpr std::array<std::string_view, BELEGUNGSFELDER> LEERE_FELDER{"10", "0", "0", "0", "0"};

bool nurZiffern(std::string_view text) {
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

// A number taken apart; `ganz` and `bruch` are digits only.
struct Zahltext {
    bool negativ;
    std::string_view ganz;
    std::string_view bruch;
};

Zahltext zahltext(std::string_view text) {
    Zahltext teile{text.starts_with('-'), {}, {}};
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    const auto komma = text.find(',');
    teile.ganz = text.substr(0, komma);
    if (komma != std::string_view::npos)
        teile.bruch = text.substr(komma + 1);
    if ((teile.ganz.empty() && teile.bruch.empty()) || !nurZiffern(teile.ganz) || !nurZiffern(teile.bruch))
        throw LaufzeitFehler(Fehlernummer::FalscherTyp, "Typen unverträglich: keine Zahl");
    return teile;
}

// Whether the digits behind the comma round the number before it up, away from 0.
bool aufrunden(std::string_view bruch, bool ungerade) {
    if (bruch.empty() || bruch.front() < '5')
        return false;
    const bool halb = bruch.front() == '5' && bruch.find_first_not_of('0', 1) == std::string_view::npos;
    return !halb || ungerade;
}

} // namespace

std::optional<int> tasteImWort(std::uint32_t wort) {
    if (!std::has_single_bit(wort) || (wort & ALLE_TASTEN) == 0)
        return std::nullopt;
    return std::countr_zero(wort);
}

std::int16_t getippteZahl16(std::string_view text) {
    const auto kern = ohneRand(text);
    const auto teile = zahltext(kern);
    constexpr std::int64_t SCHRANKE = 100'000; // beyond every number of 16 bits, and far from any overflow
    std::int64_t betrag = 0;
    for (const char ziffer : teile.ganz)
        betrag = std::min(betrag * 10 + (ziffer - '0'), SCHRANKE);
    betrag += aufrunden(teile.bruch, betrag % 2 != 0) ? 1 : 0;
    const std::int64_t wert = teile.negativ ? -betrag : betrag;
    if (!std::in_range<std::int16_t>(wert))
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: \"" + kern + "\"");
    return static_cast<std::int16_t>(wert);
}

const std::string& Tastwerk::feld(std::size_t feld) const {
    return bild.field(AktuelleTaste, AktuelleEbene, static_cast<int>(feld));
}

void Tastwerk::setzeFeld(std::size_t feld, std::string wert) {
    if (gewaehlt())
        bild.field(AktuelleTaste, AktuelleEbene, static_cast<int>(feld)) = std::move(wert);
    geaendert();
}

bool Tastwerk::hatTaste() const {
    const auto& code = feld(TASTE);
    return !code.empty() && feldzahl(code) != 0;
}

Belegungsart Tastwerk::art() const {
    if (!gewaehlt() || feld(ART).empty())
        return Belegungsart::Leer;
    const auto art = static_cast<Belegungsart>(feldzahl(std::string_view{feld(ART)}));
    const auto index = static_cast<std::int32_t>(art);
    if (art != Belegungsart::Leer && (index < 0 || index >= TASTENARTEN))
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Eine Aktion " + std::to_string(index) + " gibt es nicht.");
    return art;
}

std::optional<std::string_view> Tastwerk::aktionsname(Belegungsart art) {
    for (const auto& eintrag : AKTIONSNAMEN)
        if (eintrag.art == art)
            return eintrag.name;
    return std::nullopt;
}

// -1 for what is no number: a label then shows the name of its button, and picking the button tells of it.
std::int32_t Tastwerk::zahlAusBild(int taste, std::size_t feld) const {
    try {
        return feldzahl(std::string_view{bild.field(taste, AktuelleEbene, static_cast<int>(feld))});
    } catch (const LaufzeitFehler&) {
        return -1;
    }
}

std::string Tastwerk::beschriftung(int taste, const Namensucher& name) const {
    if (const auto aktion = aktionsname(static_cast<Belegungsart>(zahlAusBild(taste, ART))))
        return std::string(*aktion);
    if (zahlAusBild(taste, TASTE) > 0)
        return ohneRand(name(bild.field(taste, AktuelleEbene, static_cast<int>(TASTE))));
    return std::string(TASTENBESCHRIFTUNG[static_cast<std::size_t>(taste)]);
}

std::array<std::string, SLOTS> Tastwerk::beschriftungen(const Namensucher& name) {
    UmschaltTasten_ = {-1, -1};
    std::array<std::string, SLOTS> texte;
    for (int taste = 0; taste < SLOTS; ++taste) {
        texte[static_cast<std::size_t>(taste)] = beschriftung(taste, name);
        const auto art = zahlAusBild(taste, ART);
        const auto stelle = std::ranges::find(UMSCHALTARTEN, static_cast<Belegungsart>(art));
        if (stelle != UMSCHALTARTEN.end())
            UmschaltTasten_[static_cast<std::size_t>(stelle - UMSCHALTARTEN.begin())] =
                static_cast<std::int16_t>(taste);
    }
    return texte;
}

void Tastwerk::SchemaNeu(bool nurAktuelle) {
    const auto leeren = [this](int taste) {
        for (int feld = 0; feld < BELEGUNGSFELDER; ++feld)
            bild.field(taste, AktuelleEbene, feld) = LEERE_FELDER[static_cast<std::size_t>(feld)];
    };
    if (!nurAktuelle)
        for (int taste = 0; taste < TASTEN; ++taste)
            leeren(taste);
    else if (gewaehlt())
        leeren(AktuelleTaste);
    geaendert();
}

void Tastwerk::artWaehlen(Belegungsart art) {
    if (!gewaehlt())
        return;
    for (std::size_t i = 0; i < UMSCHALTARTEN.size(); ++i) {
        auto& eintrag = UmschaltTasten_[i];
        const bool gemeint = art == UMSCHALTARTEN[i];
        if (gemeint && eintrag == -1)
            eintrag = static_cast<std::int16_t>(AktuelleTaste);
        else if (!gemeint && eintrag == AktuelleTaste)
            eintrag = -1;
    }
    const auto text = std::to_string(static_cast<std::int32_t>(art));
    if (feld(ART) != text)
        SchemaNeu(true);
    setzeFeld(ART, text);
}

std::array<bool, 2> Tastwerk::umschalttastenErlaubt(int taste) const {
    if (taste >= TASTEN)
        return {false, false};
    const auto frei = [taste](std::int16_t eintrag) { return eintrag == -1 || eintrag == taste; };
    return {frei(UmschaltTasten_[0]), frei(UmschaltTasten_[1])};
}
