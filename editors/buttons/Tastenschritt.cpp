// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/buttons/Tastenschritt.h"

#include "base/Ebenennamen.h"
#include "base/LaufzeitFehler.h"
#include "base/Text.h"
#include "editors/common/Formhilfen.h"
#include "formats/Felder.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

using namespace belegungsfeld;

namespace {

struct Unterschied {
    int taste;
    int ebene;
};

std::vector<Unterschied> unterschiede(const Tasteninhalt& von, const Tasteninhalt& nach) {
    std::vector<Unterschied> alle;
    const auto ungueltig = [&](int taste, int ebene) {
        const auto hier = [&](const Ungueltiges& eines) {
            return eines.taste == taste && eines.ebene == ebene;
        };
        return von.ungueltiges != nach.ungueltiges && (hier(von.ungueltiges) || hier(nach.ungueltiges));
    };
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = 0; taste < SLOTS; ++taste)
            if (ungueltig(taste, ebene) ||
                feldtexte(von.bild, taste, ebene) != feldtexte(nach.bild, taste, ebene))
                alle.push_back({taste, ebene});
    return alle;
}

/// The only field in which they differ.
std::optional<std::size_t> einzigesFeld(const Feldtexte& von, const Feldtexte& nach) {
    std::optional<std::size_t> feld;
    for (std::size_t i = 0; i < von.size(); ++i)
        if (von[i] != nach[i] && std::exchange(feld, i))
            return std::nullopt;
    return feld;
}

/// A number out of the image, -1 for what is none.
int zahl(const std::string& text) {
    try {
        return feldzahl(std::string_view{text});
    } catch (const LaufzeitFehler&) {
        return -1;
    }
}

template <std::size_t N> QString eines(const std::array<const char*, N>& namen, const std::string& nummer) {
    const auto i = static_cast<std::size_t>(zahl(nummer));
    return i < N ? QString(namen[i]) : qt(nummer);
}

constexpr std::array<const char*, 5> MAUSWORTE{"Linke Maustaste", "Rechte Maustaste", "Maustaste Mitte",
                                               "Scrollrad Plus", "Scrollrad Minus"};
constexpr std::array<const char*, 2> TASTENWORTE{"Real", "drücken und loslassen"};
constexpr std::array<const char*, 2> UMSCHALTWORTE{"Halten", "Feststellen"};

/// What a button does, without its properties.
QString aktionswort(const Feldtexte& felder, const Tastwerk::Namensucher& name) {
    const auto art = static_cast<Belegungsart>(zahl(felder[ART]));
    if (art == Belegungsart::Maus)
        return eines(MAUSWORTE, felder[MODUS]);
    if (const auto aktion = Tastwerk::aktionsname(art))
        return qt(*aktion);
    if (art != Belegungsart::Taste)
        return "leer";
    return zahl(felder[TASTE]) > 0 ? qt(ohneRand(name(felder[TASTE]))) : QString("Taste");
}

/// What a property is called, and its value.
struct Eigenschaftswort {
    QString name;
    QString wert;
};
Eigenschaftswort eigenschaftswort(const Feldtexte& felder, std::size_t feld) {
    const bool maus = zahl(felder[ART]) == static_cast<int>(Belegungsart::Maus);
    const bool taste = zahl(felder[ART]) == static_cast<int>(Belegungsart::Taste);
    if (feld == MODUS)
        return {"", taste ? eines(TASTENWORTE, felder[MODUS]) : eines(UMSCHALTWORTE, felder[MODUS])};
    if (feld == PAUSENZEIT)
        return {"Wiederholung ", qt(felder[feld])};
    return {maus ? "Scrollsprung " : "Zeit ", qt(felder[feld])};
}

QString ohneOrt(const Feldtexte& von, const Feldtexte& nach, const Tastwerk::Namensucher& name) {
    const auto feld = einzigesFeld(von, nach);
    const auto vorher = aktionswort(von, name);
    const auto nachher = aktionswort(nach, name);
    if (vorher != nachher)
        return QString("%1 → %2").arg(vorher, nachher);
    if (!feld || *feld == ART || *feld == TASTE)
        return nachher + ", Eigenschaften";
    const auto alt = eigenschaftswort(von, *feld);
    const auto neu = eigenschaftswort(nach, *feld);
    return QString("%1, %2%3 → %4").arg(nachher, neu.name, alt.wert, neu.wert);
}

/// What is typed after the step, or else before it; one of them has something.
const std::map<std::size_t, QString>& getipptes(const Tasteninhalt& von, const Tasteninhalt& nach) {
    return nach.ungueltiges.texte.empty() ? von.ungueltiges.texte : nach.ungueltiges.texte;
}

QString eingabe(const Tasteninhalt& von, const Tasteninhalt& nach) {
    return QString(nach.ungueltiges.texte.empty() ? "Eingabe „%1“ verworfen" : "Eingabe „%1“")
        .arg(einzeiler(getipptes(von, nach).begin()->second));
}

} // namespace

Feldtexte feldtexte(const VarTastenbelegung& bild, int taste, int ebene) {
    Feldtexte felder;
    for (std::size_t feld = 0; feld < felder.size(); ++feld)
        felder[feld] = bild.field(taste, ebene, static_cast<int>(feld));
    return felder;
}

void umschreiben(VarTastenbelegung& bild, int taste, int ebene, const Feldtexte& alt, const Feldtexte& neu) {
    if (feldtexte(bild, taste, ebene) != alt)
        return;
    for (std::size_t feld = 0; feld < neu.size(); ++feld)
        bild.field(taste, ebene, static_cast<int>(feld)) = neu[feld];
}

std::optional<Schrittort> schrittort(const Tasteninhalt& von, const Tasteninhalt& nach) {
    const auto alle = unterschiede(von, nach);
    if (alle.empty() || std::ranges::any_of(alle, [&](const Unterschied& einer) {
            return einer.ebene != alle.front().ebene;
        }))
        return std::nullopt;
    return Schrittort{alle.front().ebene,
                      alle.size() == 1 ? std::optional(alle.front().taste) : std::nullopt};
}

std::string zahlenort(const Tasteninhalt& von, const Tasteninhalt& nach) {
    const auto ort = schrittort(von, nach);
    if (!ort || !ort->taste)
        return {};
    const auto vorher = feldtexte(von.bild, *ort->taste, ort->ebene);
    const auto nachher = feldtexte(nach.bild, *ort->taste, ort->ebene);
    const auto feld = vorher == nachher ? std::optional(getipptes(von, nach).begin()->first)
                                        : einzigesFeld(vorher, nachher);
    if (!feld || (*feld != DRUCKZEIT && *feld != PAUSENZEIT))
        return {};
    std::string text = std::to_string(*ort->taste);
    for (const auto zahl : {ort->ebene, static_cast<int>(*feld)}) {
        text += ' ';
        text += std::to_string(zahl);
    }
    return text;
}

QString schrittname(const Tasteninhalt& von, const Tasteninhalt& nach, const Tastwerk::Namensucher& name) {
    const auto ort = schrittort(von, nach);
    if (!ort)
        return "Mehrere Ebenen";
    const QString ebene = EBENENNAMEN_OHNE_LEERZEICHEN[static_cast<std::size_t>(ort->ebene)];
    if (!ort->taste)
        return QString("%1: mehrere Knöpfe").arg(ebene);
    const auto vorher = feldtexte(von.bild, *ort->taste, ort->ebene);
    const auto nachher = feldtexte(nach.bild, *ort->taste, ort->ebene);
    const auto was = vorher == nachher ? eingabe(von, nach) : ohneOrt(vorher, nachher, name);
    const auto knopf = qt(TASTENBESCHRIFTUNG[static_cast<std::size_t>(*ort->taste)]);
    return ort->ebene == 0 ? QString("%1: %2").arg(knopf, was) : QString("%1, %2: %3").arg(ebene, knopf, was);
}
