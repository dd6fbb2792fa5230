// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Textpruefung.h"

#include "base/Achse.h"
#include "base/LaufzeitFehler.h"
#include "formats/Belegung.h"
#include "formats/Schubtext.h"
#include "formats/Stickaktion.h"

#include <algorithm>

namespace {

constexpr std::size_t LAENGSTER_TEXT = 1000; ///< that a column takes; each but the slider's is far shorter

/// What stands in an old row in place of a `Belegung`.
constexpr std::string_view OHNE_BELEGUNG = "leer";

std::string inZeichen(std::string_view text) {
    constexpr std::size_t ANFANG = 40;
    auto laenge = std::min(text.size(), ANFANG);
    while (laenge > 0 && laenge < text.size() && (text[laenge] & 0xC0) == 0x80)
        --laenge; // no character is cut in two
    std::string zitat = "„";
    zitat += text.substr(0, laenge);
    zitat += laenge < text.size() ? "…“" : "“";
    return zitat;
}

Mangel keinText(std::string_view text, std::string_view was) {
    std::string grund = inZeichen(text);
    grund += " ist ";
    grund += was;
    return grund;
}

/// The fields of a text that must be numbers. Throws LaufzeitFehler for one that is none.
void zahlenVerlangen(std::string_view text, char trenner) {
    for (const auto stueck : zerlegen(text, trenner))
        if (!stueck.empty())
            feldzahl(stueck);
}

bool istBelegungsart(std::int32_t art) {
    return art == static_cast<std::int32_t>(Belegungsart::Leer) ||
           (art >= 0 && art <= static_cast<std::int32_t>(Belegungsart::Maus));
}

bool nurAus(std::string_view text, std::string_view zeichen) {
    return text.find_first_not_of(zeichen) == std::string_view::npos;
}

/// A field of which only some numbers have a meaning.
template <class Aktion> bool waehlt(const Aktion& aktion, Feld Aktion::*feld, int anzahl) {
    const auto& eines = aktion.*feld;
    return eines.da() && !eines.text().empty() && eines.zahl() >= 0 && eines.zahl() < anzahl;
}

using namespace stickaktion;

bool vollstaendig(const Mausbewegung& bewegung) {
    return waehlt(bewegung, &Mausbewegung::richtung, MAUSRICHTUNGEN) && bewegung.intervall.da();
}
bool vollstaendig(const Maustaste& taste) {
    return waehlt(taste, &Maustaste::knopf, MAUSTASTEN) &&
           (taste.knopf.zahl() < SCROLLRAD_PLUS || taste.scrollsprung.da());
}
bool vollstaendig(const Tastatur& taste) {
    return waehlt(taste, &Tastatur::eigenschaft, TASTENEIGENSCHAFTEN) && taste.wiederholen.da() &&
           (!taste.wiederholen.ist(1) || taste.pausenzeit.da());
}
bool vollstaendig(const Leerfeld&) {
    return true;
}
bool vollstaendig(const Sperrfeld&) {
    return true;
}
bool vollstaendig(const AbsolutePosition& absolut) {
    return waehlt(absolut, &AbsolutePosition::position, ABSOLUTE_POSITIONEN) &&
           (absolut.position.zahl() != EGO_SHOOTER || absolut.egoY.da());
}

std::size_t feldzahlVon(const Inhalt& inhalt) {
    return std::visit([]<class Aktion>(const Aktion&) { return Aktion::FELDER.size(); }, inhalt);
}

bool istStickaktion(std::string_view text) {
    zahlenVerlangen(text, ',');
    const auto inhalt = stickaktionInhalt(text, artImEditor(text));
    const auto felder = static_cast<std::size_t>(std::ranges::count(text, ','));
    return felder <= feldzahlVon(inhalt) &&
           std::visit([](const auto& aktion) { return vollstaendig(aktion); }, inhalt);
}

bool istSchubtext(std::string_view text) {
    if (!nurAus(text, "0123456789/-(,)"))
        return false;
    const Schubtext gelesen(text);
    for (const auto satz : zerlegen(text, '/').size() > 1 ? zerlegen(text.substr(text.find('/') + 1), '/')
                                                          : std::vector<std::string_view>{}) {
        const auto ohneAuswaerts = satz.substr(satz.find('-') + 1);
        const auto nummer = feldzahl(davor(ohneAuswaerts, '-'));
        const auto aktion = aktionAus(ohneAuswaerts);
        if (nummer < 1 || nummer > gelesen.felder())
            return false;
        for (const auto& wert : aktion.werte)
            zahlenVerlangen(wert, ',');
        if (!aktion.unterwahl.empty())
            feldzahl(aktion.unterwahl);
    }
    return true;
}

/// Whether a grammar takes the text; its errors are a no.
template <class Grammatik> bool nimmt(Grammatik&& grammatik, std::string_view text) {
    try {
        return text.size() <= LAENGSTER_TEXT && grammatik(text);
    } catch (const LaufzeitFehler&) {
        return false;
    }
}

bool istBelegung(std::string_view text) {
    const auto felder = belegungStrengLesen(text);
    if (!felder)
        return false;
    for (const auto feld : *felder)
        if (!feld.empty())
            feldzahl(feld);
    const auto art = (*felder)[belegungsfeld::ART];
    return art.empty() || istBelegungsart(feldzahl(art));
}

} // namespace

Mangel belegungsmangel(std::string_view text) {
    if (text.empty() || text == OHNE_BELEGUNG || nimmt(istBelegung, text))
        return std::nullopt;
    return keinText(text, "keine Belegung");
}

Mangel stickaktionsmangel(std::string_view text) {
    if (text.empty() || nimmt(istStickaktion, text))
        return std::nullopt;
    return keinText(text, "keine Aktion eines Feldes");
}

Mangel schubtextmangel(std::string_view text) {
    if (text.empty() || nimmt(istSchubtext, text))
        return std::nullopt;
    return keinText(text, "kein Text eines Schubreglers");
}

Mangel achsennamensmangel(std::string_view text) {
    if (text.empty() || std::ranges::find(ACHSENNAMEN, text) != ACHSENNAMEN.end())
        return std::nullopt;
    return keinText(text, "keine Achse");
}
