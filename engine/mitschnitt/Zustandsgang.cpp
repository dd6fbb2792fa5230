// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/mitschnitt/Zustandsgang.h"

#include "formats/Zerlegen.h"

#include <memory>

namespace zustand {

namespace {

constexpr std::string_view KEINES = "-";
constexpr std::string_view ZIFFERN = "0123456789abcdef";

// What would part words, and what the encoding itself uses; of more than ASCII every byte.
bool woertlich(char zeichen) {
    return zeichen > ' ' && zeichen < '\x7f' && zeichen != '%' && zeichen != '/';
}

[[noreturn]] void falsch(std::string_view wort) {
    throw Zustandsfehler("\"" + std::string(wort) + "\" makes no sense here");
}

int ziffer(std::string_view wort, char zeichen) {
    const auto stelle = ZIFFERN.find(zeichen);
    if (stelle == std::string_view::npos)
        falsch(wort);
    return static_cast<int>(stelle);
}

std::string klartext(std::string_view wort) {
    std::string text;
    if (wort == "%")
        return text;
    for (std::size_t i = 0; i < wort.size(); ++i) {
        if (wort[i] != '%') {
            text += wort[i];
            continue;
        }
        if (i + 2 >= wort.size())
            falsch(wort);
        text += static_cast<char>(ziffer(wort, wort[i + 1]) * 16 + ziffer(wort, wort[i + 2]));
        i += 2;
    }
    return text;
}

} // namespace

// --- writing ---

std::string wort(const std::string& text) {
    std::string verschluesselt;
    for (const char zeichen : text) {
        if (woertlich(zeichen)) {
            verschluesselt += zeichen;
            continue;
        }
        const auto byte = static_cast<unsigned char>(zeichen);
        verschluesselt += '%';
        verschluesselt += ZIFFERN[byte / 16U];
        verschluesselt += ZIFFERN[byte % 16U];
    }
    return verschluesselt.empty() ? "%" : verschluesselt;
}

std::string wort(const Feld& feld) {
    return feld.da() ? "=" + wort(feld.text()) : std::string(KEINES);
}

std::string wort(const Aktionszeiger& aktion) {
    return aktion ? "=" + wort(aktion->text()) : std::string(KEINES);
}

std::string wort(const Halteeintrag& eintrag) {
    return std::to_string(eintrag.slot) + "/" + std::to_string(eintrag.taste) + "/" +
           wort(eintrag.schreibweise);
}

std::string wort(const std::optional<Halteeintrag>& eintrag) {
    return eintrag ? wort(*eintrag) : std::string(KEINES);
}

std::string wort(const Schubangaben& angaben) {
    auto text = wort(angaben.unterwahl);
    for (const auto& wert : angaben.werte)
        text += "/" + wort(wert);
    return text;
}

// --- reading ---

std::int64_t zahl(std::string_view wort) {
    std::int64_t zahl = 0;
    const auto [ende, code] = std::from_chars(wort.data(), wort.data() + wort.size(), zahl);
    if (code != std::errc{} || ende != wort.data() + wort.size())
        falsch(wort);
    return zahl;
}

void lesen(std::string_view wort, std::string& text) {
    text = klartext(wort);
}

void lesen(std::string_view wort, Feld& feld) {
    if (wort != KEINES && !wort.starts_with('='))
        falsch(wort);
    feld = wort == KEINES ? Feld() : Feld(klartext(wort.substr(1)));
}

void lesen(std::string_view wort, Aktionszeiger& aktion) {
    if (wort != KEINES && !wort.starts_with('='))
        falsch(wort);
    aktion = wort == KEINES ? nullptr : std::make_shared<const Stickaktion>(klartext(wort.substr(1)));
}

void lesen(std::string_view wort, Halteeintrag& eintrag) {
    const auto teile = zerlegen(wort, '/');
    if (teile.size() != 3)
        falsch(wort);
    eintrag = {static_cast<int>(zahl(teile[0])), static_cast<VirtuelleTaste>(zahl(teile[1])),
               klartext(teile[2])};
}

void lesen(std::string_view wort, std::optional<Halteeintrag>& eintrag) {
    if (wort == KEINES)
        eintrag.reset();
    else
        lesen(wort, eintrag.emplace());
}

void lesen(std::string_view wort, Schubangaben& angaben) {
    const auto teile = zerlegen(wort, '/');
    if (teile.empty())
        falsch(wort);
    lesen(teile.front(), angaben.unterwahl);
    angaben.werte.clear();
    for (std::size_t i = 1; i < teile.size(); ++i)
        lesen(teile[i], angaben.werte.emplace_back());
}

std::vector<std::string_view> zerlegt(std::string_view worte) {
    auto einzelne = zerlegen(worte, ' ');
    std::erase(einzelne, std::string_view());
    return einzelne;
}

void anzahlPruefen(std::size_t ist, std::size_t soll) {
    if (ist != soll)
        throw Zustandsfehler(std::to_string(ist) + " words instead of " + std::to_string(soll));
}

} // namespace zustand

Zustandsleser::Zustandsleser(const Zustandszeilen& zeilen) {
    for (const auto& zeile : zeilen) {
        const auto ende = std::min(zeile.find(' '), zeile.size());
        if (!worte_.emplace(zeile.substr(0, ende), zeile.substr(ende)).second)
            throw Zustandsfehler("zustand " + zeile.substr(0, ende) + " stands twice");
    }
}

void Zustandsleser::allesGelesen() const {
    if (!worte_.empty())
        throw Zustandsfehler("nothing has the zustand " + worte_.begin()->first);
}
