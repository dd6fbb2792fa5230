// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Belegung.h"

#include "base/LaufzeitFehler.h"

#include <algorithm>

Belegung::Belegung(std::string_view text) : text_(text) {
    const auto stuecke = zerlegen(text_, ',');
    for (std::size_t i = 0; i + 1 < stuecke.size(); ++i)
        ablegen(stuecke[i]);
    if (!stuecke.empty())
        for (const auto stueck : zerlegen(stuecke.back(), '-'))
            ablegen(stueck);
}

void Belegung::ablegen(std::string_view stueck) {
    zuViele_ = anzahl_ == felder_.size();
    if (!zuViele_)
        felder_[anzahl_++] = Feld(stueck);
}

void Belegung::legenUeber(Belegungsfelder& felder) const {
    std::copy_n(felder_.begin(), anzahl_, felder.begin());
    if (zuViele_)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Index außerhalb des gültigen Bereichs: zu viele Felder");
}

std::optional<int> Belegung::mausknopf() const {
    using namespace belegungsfeld;
    constexpr auto MAUS = static_cast<std::int32_t>(Belegungsart::Maus);
    if (anzahl_ <= MODUS || !felder_[ART].ist(MAUS))
        return std::nullopt;
    const auto& modus = felder_[MODUS];
    for (int knopf = 0; knopf < MAUSKNOEPFE; ++knopf)
        if (modus.ist(knopf))
            return knopf;
    return std::nullopt;
}

std::optional<int> Belegung::umschalttaste() const {
    if (text_.starts_with('3'))
        return 1;
    if (text_.starts_with('4'))
        return 2;
    return std::nullopt;
}

std::int16_t Belegung::umschaltmodus() const {
    constexpr std::size_t MODUSZEICHEN = 4;
    const std::string_view text = text_;
    return static_cast<std::int16_t>(
        feldzahl(text.size() > MODUSZEICHEN ? text.substr(MODUSZEICHEN, 1) : std::string_view{}));
}

std::optional<Belegungstexte> belegungStrengLesen(std::string_view text) {
    constexpr std::size_t KOMMAFELDER = 3;  // the third of them is split on
    constexpr std::size_t STRICHFELDER = 3; // Modus, Druckzeit, Pausenzeit
    const auto aussen = zerlegen(text, ',');
    if (aussen.size() != KOMMAFELDER)
        return std::nullopt;
    const auto innen = zerlegen(aussen[2], '-');
    if (innen.size() != STRICHFELDER)
        return std::nullopt;
    return Belegungstexte{aussen[0], aussen[1], innen[0], innen[1], innen[2]};
}

std::string belegungstext(const Belegungstexte& felder) {
    using namespace belegungsfeld;
    std::string text;
    for (const auto& [feld, trenner] : {std::pair{ART, ","}, std::pair{TASTE, ","}, std::pair{MODUS, "-"},
                                        std::pair{DRUCKZEIT, "-"}, std::pair{PAUSENZEIT, ""}})
        text.append(felder[feld]).append(trenner);
    return text;
}
