// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Stickaktion.h"

#include "base/LaufzeitFehler.h"
#include "base/Text.h"

#include <algorithm>
#include <utility>

using namespace stickaktion;

namespace {

constexpr std::size_t DRITTES = 2;

template <std::size_t... Arten> Inhalt leererInhalt(std::size_t art, std::index_sequence<Arten...>) {
    Inhalt inhalt;
    ((art == Arten ? void(inhalt.emplace<Arten>()) : void()), ...);
    return inhalt;
}

} // namespace

const Feld& stickaktion::verlangt(const Feld& feld) {
    if (!feld.da())
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Index außerhalb des gültigen Bereichs: zu wenige Felder");
    return feld;
}

Stickaktion::Stickaktion(std::string text)
    : text_(std::move(text))
    , inhalt_(stickaktionInhalt(text_, artImLauf(text_).value_or(Stickaktionsart::Leerfeld)))
    , drittesZeichen_(std::string_view(text_).substr(std::min(DRITTES, text_.size()), 1)) {}

std::string aktionstext(const Aktionszeiger& aktion) {
    return aktion ? aktion->text() : "";
}

std::optional<Stickaktionsart> artImLauf(std::string_view text) {
    const int art = text.empty() ? -1 : text.front() - '0';
    if (art < 0 || art >= STICKAKTIONSARTEN)
        return std::nullopt;
    return static_cast<Stickaktionsart>(art);
}

Stickaktionsart artImEditor(std::string_view text) {
    if (text.empty())
        return Stickaktionsart::Leerfeld;
    const auto art = feldzahl(davor(text, ','));
    if (art < 0 || art >= STICKAKTIONSARTEN)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Die Aktion des Feldes hat an der Stelle 0 keine Auswahl " +
                                 std::to_string(art) + ".");
    return static_cast<Stickaktionsart>(art);
}

Inhalt stickaktionInhalt(std::string_view text, Stickaktionsart art) {
    auto inhalt = leererInhalt(static_cast<std::size_t>(art), std::make_index_sequence<STICKAKTIONSARTEN>{});
    const auto stuecke = zerlegen(text, ',');
    std::visit(
        [&]<class Aktion>(Aktion& aktion) {
            std::size_t stelle = 0;
            for (const auto feld : Aktion::FELDER)
                if (++stelle < stuecke.size())
                    aktion.*feld = Feld(stuecke[stelle]);
        },
        inhalt);
    return inhalt;
}

std::string stickaktionSchreiben(const Inhalt& inhalt) {
    auto text = std::to_string(inhalt.index());
    std::visit(
        [&]<class Aktion>(const Aktion& aktion) {
            for (const auto feld : Aktion::FELDER) {
                if (!(aktion.*feld).da())
                    return;
                text += "," + (aktion.*feld).text();
            }
        },
        inhalt);
    return text;
}

bool istNurLeerfeld(std::string_view text) {
    return ohneRand(text) == "3";
}
