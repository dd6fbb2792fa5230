// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Stickaktionstext.h"

using namespace stickaktion;

namespace {

constexpr std::string_view VOR_DER_NUMMER = "Taste: ";
constexpr std::string_view HINTER_DER_NUMMER = " - ";

// Asks for a field that the text must have, in the words of the editor.
template <class Aktion> const Feld& gefordert(const Aktion& aktion, Feld Aktion::*feld) {
    if (!(aktion.*feld).da())
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Der Aktion des Feldes fehlt das Feld " + std::to_string(stelle(feld)) + ".");
    return aktion.*feld;
}

/// The field as one of `anzahl` choices.
template <class Aktion> int wahl(const Aktion& aktion, Feld Aktion::*feld, int anzahl) {
    const auto zahl = gefordert(aktion, feld).zahl();
    if (zahl < 0 || zahl >= anzahl)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex, "Die Aktion des Feldes hat an der Stelle " +
                                                              std::to_string(stelle(feld)) +
                                                              " keine Auswahl " + std::to_string(zahl) + ".");
    return zahl;
}

std::optional<std::string> textWennDa(const Feld& feld) {
    return feld.da() ? std::optional(feld.text()) : std::nullopt;
}

bool istRad(int taste) {
    return taste == SCROLLRAD_PLUS || taste == SCROLLRAD_MINUS;
}

// --- from a text: one procedure a type of action ---

void lesen(const Mausbewegung& bewegung, Stickaktionsbild& bild) {
    for (int richtung = 0; richtung < MAUSRICHTUNGEN; ++richtung)
        if (bewegung.richtung.ist(richtung))
            bild.richtung = richtung;
    bild.geschwindigkeit = textWennDa(bewegung.intervall);
    bild.schrittlaenge = textWennDa(bewegung.schritt);
}

void lesen(const Maustaste& maustaste, Stickaktionsbild& bild) {
    bild.maustaste = wahl(maustaste, &Maustaste::knopf, MAUSTASTEN);
    if (istRad(*bild.maustaste))
        bild.scrollsprung = gefordert(maustaste, &Maustaste::scrollsprung).text();
}

void lesen(const Tastatur& tastatur, Stickaktionsbild& bild) {
    bild.eigenschaft = wahl(tastatur, &Tastatur::eigenschaft, TASTENEIGENSCHAFTEN);
    bild.taste = gefordert(tastatur, &Tastatur::taste).text();
    if (bild.eigenschaft == TASTE_MIT_ZEIT)
        bild.druckzeit = gefordert(tastatur, &Tastatur::druckzeit).text();
    // Whatever the property is.
    bild.wiederholen = gefordert(tastatur, &Tastatur::wiederholen).ist(1);
    if (bild.wiederholen)
        bild.pausenzeit = gefordert(tastatur, &Tastatur::pausenzeit).text();
}

void lesen(const Leerfeld&, Stickaktionsbild&) {}
void lesen(const Sperrfeld&, Stickaktionsbild&) {}

void lesen(const AbsolutePosition& absolut, Stickaktionsbild& bild) {
    const auto& position = gefordert(absolut, &AbsolutePosition::position);
    for (int eine = 0; eine < EGO_SHOOTER; ++eine)
        if (position.ist(eine)) {
            bild.position = eine;
            return;
        }
    bild.position = EGO_SHOOTER; // any other text, as at run time
    bild.egoX = gefordert(absolut, &AbsolutePosition::egoX).zahl();
    bild.egoY = gefordert(absolut, &AbsolutePosition::egoY).zahl();
}

// --- to a text ---

Feld nummer(const std::optional<int>& wahl) {
    return Feld(wahl.value_or(0));
}
Feld text(const std::optional<std::string>& feld) {
    return Feld(feld.value_or(""));
}

Tastatur tastaturAus(const Stickaktionsbild& bild) {
    Tastatur tastatur{nummer(bild.eigenschaft), text(bild.taste), Feld(0), Feld(0), {}};
    if (!tastatur.eigenschaft.ist(TASTE_MIT_ZEIT))
        return tastatur;
    tastatur.druckzeit = text(bild.druckzeit);
    tastatur.wiederholen = Feld(bild.wiederholen ? 1 : 0);
    tastatur.pausenzeit = bild.wiederholen ? text(bild.pausenzeit) : Feld(0);
    return tastatur;
}

AbsolutePosition positionAus(const Stickaktionsbild& bild) {
    if (bild.position != EGO_SHOOTER)
        return {nummer(bild.position), {}, {}};
    return {nummer(bild.position), nummer(bild.egoX), nummer(bild.egoY)};
}

Inhalt inhaltAus(const Stickaktionsbild& bild) {
    switch (bild.art) {
    case Stickaktionsart::Mausbewegung:
        return Mausbewegung{nummer(bild.richtung), text(bild.schrittlaenge), text(bild.geschwindigkeit)};
    case Stickaktionsart::Maustaste:
        return Maustaste{nummer(bild.maustaste),
                         istRad(bild.maustaste.value_or(0)) ? text(bild.scrollsprung) : Feld()};
    case Stickaktionsart::Tastatur:
        return tastaturAus(bild);
    case Stickaktionsart::Leerfeld:
        return Leerfeld{};
    case Stickaktionsart::Sperrfeld:
        return Sperrfeld{};
    case Stickaktionsart::AbsolutePosition:
        return positionAus(bild);
    }
    return Leerfeld{};
}

} // namespace

GeleseneStickaktion stickaktionLesen(std::string_view text) {
    GeleseneStickaktion gelesen;
    try {
        gelesen.bild.art = artImEditor(text);
        std::visit([&](const auto& aktion) { lesen(aktion, gelesen.bild); },
                   stickaktionInhalt(text, gelesen.bild.art));
    } catch (const LaufzeitFehler& fehler) {
        gelesen.fehler = fehler;
    }
    return gelesen;
}

std::string stickaktionstext(const Stickaktionsbild& bild) {
    return stickaktionSchreiben(inhaltAus(bild));
}

std::string tastentitel(const std::string& nummer, const std::string& name) {
    return std::string(VOR_DER_NUMMER) + nummer + std::string(HINTER_DER_NUMMER) + name;
}

std::string tastennummer(std::string_view titel) {
    const auto davor = titel.find(VOR_DER_NUMMER);
    if (davor == std::string_view::npos)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Die Überschrift „" + std::string(titel) + "“ nennt keine Taste.");
    titel.remove_prefix(davor + VOR_DER_NUMMER.size());
    titel = titel.substr(0, titel.find(VOR_DER_NUMMER));
    return std::string(titel.substr(0, titel.find(HINTER_DER_NUMMER)));
}
