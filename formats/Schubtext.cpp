// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Schubtext.h"

#include "base/LaufzeitFehler.h"

#include <algorithm>

namespace {

// Pieces of a record with and without its c.
constexpr std::size_t LAUF_NUR_AUSWAERTS = 0;
constexpr std::size_t LAUF_NUMMER = 1;
constexpr std::size_t LAUF_ART = 2;
constexpr std::size_t LAUF_ANGABEN = 3;
constexpr std::size_t ART = 1;
constexpr std::size_t ANGABEN = 2;

// Pieces of S(a,b,d).
constexpr std::size_t UNTERWAHL = 0;
constexpr std::size_t ERSTER_WERT = 1;
constexpr std::size_t PAUSE = 2;

[[noreturn]] void falscherIndex(const std::string& was) {
    throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                         "Index außerhalb des gültigen Bereichs: Schubregler " + was);
}

std::string_view stueck(const std::vector<std::string_view>& liste, std::size_t stelle) {
    if (stelle >= liste.size())
        falscherIndex("mit zu wenigen Angaben");
    return liste[stelle];
}

// S, a, b and d, which stand between three kinds of separators.
std::vector<std::string_view> angaben(std::string_view text) {
    std::vector<std::string_view> stuecke;
    while (true) {
        const auto ende = text.find_first_of("(,)");
        stuecke.push_back(text.substr(0, ende));
        if (ende == std::string_view::npos)
            return stuecke;
        text.remove_prefix(ende + 1);
    }
}

Feld feldAus(const std::vector<std::string_view>& stuecke, std::size_t stelle) {
    return stelle < stuecke.size() ? Feld(stuecke[stelle]) : Feld();
}

// What stands behind the first "(" up to the next one, and S before it.
std::optional<Schubangaben> angabenImLauf(std::string_view text) {
    const auto teile = zerlegen(text, '(');
    if (teile.size() <= ERSTER_WERT)
        return std::nullopt;
    Schubangaben angaben{Feld(teile[UNTERWAHL]), {}};
    for (const auto wert : zerlegen(teile[ERSTER_WERT], ','))
        angaben.werte.emplace_back(wert);
    return angaben;
}

Schubsatz satzImLauf(std::string_view text) {
    const auto stuecke = zerlegen(text, '-');
    Schubsatz satz{std::string(text), feldAus(stuecke, LAUF_NUR_AUSWAERTS), feldAus(stuecke, LAUF_NUMMER),
                   feldAus(stuecke, LAUF_ART), std::nullopt};
    if (LAUF_ANGABEN < stuecke.size())
        satz.angaben = angabenImLauf(stuecke[LAUF_ANGABEN]);
    return satz;
}

} // namespace

// --- as a run reads it ---

const Feld& Schubangaben::wert(std::size_t stelle) const {
    if (stelle >= werte.size())
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Index außerhalb des gültigen Bereichs: zu wenige Angaben");
    return werte[stelle];
}

std::int32_t Schubangaben::pause() const {
    const auto& text = wert(PAUSE).text();
    return text == ")" ? 0 : feldzahl(davor(text, ')'));
}

const Schubsatz& Schubsaetze::massgebend() const {
    const auto erstes =
        std::ranges::find_if(saetze, [](const auto& satz) { return satz.nummer.ziffer() == 1; });
    return erstes != saetze.end() ? *erstes : saetze.front();
}

std::optional<Schubsaetze> schubtextImLauf(std::string_view text) {
    const auto teile = zerlegen(text, '/');
    if (teile.empty())
        return std::nullopt;
    Schubsaetze lauf{Feld(teile.front()), {}};
    for (std::size_t i = 1; i < teile.size(); ++i)
        lauf.saetze.push_back(satzImLauf(teile[i]));
    return lauf;
}

// --- as an editor reads it ---

std::string alsSatz(int nummer, const Schubaktion& aktion) {
    return std::to_string(nummer) + "-" + std::to_string(static_cast<int>(aktion.art)) + "-" +
           aktion.unterwahl + "(" + aktion.werte[0] + "," + aktion.werte[1] + "," + aktion.werte[2] + ")";
}

Schubaktion aktionAus(std::string_view satz) {
    const auto stuecke = zerlegen(satz, '-');
    const auto art = feldzahl(stueck(stuecke, ART));
    if (art < 0 || art >= SCHUBARTEN)
        falscherIndex("mit der Aktion " + std::to_string(art));
    Schubaktion aktion{static_cast<Schubart>(art), "", {}};
    if (aktion.art == Schubart::Leerfeld)
        return aktion;
    const auto teile = angaben(stueck(stuecke, ANGABEN));
    aktion.unterwahl = stueck(teile, UNTERWAHL);
    for (std::size_t i = 0; i < aktion.werte.size(); ++i)
        aktion.werte[i] = stueck(teile, ERSTER_WERT + i);
    return aktion;
}

Schubtext::Schubtext(std::string_view text) {
    const auto teile = zerlegen(text, '/');
    if (teile.empty())
        return;
    const auto anzahl = feldzahl(teile.front());
    if (anzahl < 1 || anzahl > LINIEN_MAX + 1)
        falscherIndex("mit " + std::to_string(anzahl) + " Feldern");
    LinienAnzahl_ = anzahl - 1;
    for (std::size_t i = 1; i < teile.size(); ++i) {
        const auto c = davor(teile[i], '-');
        if (c.size() == teile[i].size())
            falscherIndex("mit zu wenigen Angaben");
        const auto satz = teile[i].substr(c.size() + 1);
        const auto nummer = feldzahl(davor(satz, '-'));
        if (!FeldListe_.emplace(nummer - 1, satz).second)
            throw LaufzeitFehler(Fehlernummer::SchluesselVergeben,
                                 "Schubregler: das Feld " + std::to_string(nummer) + " gibt es zweimal");
        if (i == 1)
            nurAuswaerts_ = feldzahl(c) == 1;
    }
}

bool Schubtext::linieAnfuegen() {
    if (LinienAnzahl_ >= LINIEN_MAX)
        return false;
    ++LinienAnzahl_;
    return true;
}

bool Schubtext::linieLoeschen() {
    if (LinienAnzahl_ == 0)
        return false;
    FeldListe_.erase(LinienAnzahl_); // the index of the last field
    --LinienAnzahl_;
    return true;
}

std::string Schubtext::satz(int index) const {
    const auto stelle = FeldListe_.find(index);
    return stelle != FeldListe_.end() ? stelle->second : "";
}

std::string Schubtext::text(bool nurAuswaerts) const {
    std::string text = std::to_string(felder());
    for (const auto& [index, satz] : FeldListe_)
        text += std::string(nurAuswaerts ? "/1-" : "/0-") + satz;
    return text;
}
