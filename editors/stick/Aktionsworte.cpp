// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Aktionsworte.h"

#include "base/LaufzeitFehler.h"

#include <array>
#include <cstdint>

using namespace stickaktion;

namespace {

constexpr auto RICHTUNGSWORTE =
    std::to_array<const char*>({"nach links", "nach rechts", "nach oben", "nach unten"});
constexpr auto KNOPFWORTE = std::to_array<const char*>({"links", "rechts", "Mitte"});
static_assert(RICHTUNGSWORTE.size() == MAUSRICHTUNGEN && KNOPFWORTE.size() == SCROLLRAD_PLUS);
constexpr int IM_FELD_ZENTRIEREN = 0;
constexpr int IM_FELD_BINDEN = 1;

std::string zahl(const Feld& feld) {
    return std::to_string(verlangt(feld).zahl());
}

std::string schritte(std::int32_t anzahl) {
    return std::to_string(anzahl) + (anzahl == 1 ? " Schritt" : " Schritte");
}

std::string alle(const Feld& intervall) {
    return "alle " + zahl(intervall) + " ms";
}

std::string worte(const Mausbewegung& bewegung) {
    const auto wohin = verlangt(bewegung.richtung).ziffer();
    if (!wohin || *wohin >= MAUSRICHTUNGEN)
        return "Maus ohne Richtung, keine Bewegung";
    return std::string("Maus ") + RICHTUNGSWORTE[static_cast<std::size_t>(*wohin)] + ", " +
           schritte(verlangt(bewegung.schritt).zahl()) + " " + alle(bewegung.intervall);
}

std::string worte(const Maustaste& maustaste) {
    const auto knopf = verlangt(maustaste.knopf).ziffer();
    if (!knopf || *knopf >= MAUSTASTEN)
        return "Maustaste, die es nicht gibt";
    if (*knopf < SCROLLRAD_PLUS)
        return std::string("Maustaste ") + KNOPFWORTE[static_cast<std::size_t>(*knopf)];
    return std::string("Mausrad nach ") + (*knopf == SCROLLRAD_PLUS ? "oben" : "unten") + ", Sprung " +
           zahl(maustaste.scrollsprung);
}

std::string worte(const Tastatur& tastatur, const Tastenbenennung& tastenname) {
    const auto nummer = zahl(tastatur.taste);
    const auto name = tastenname(nummer);
    const auto taste = "Tastatur: " + (name.empty() ? "Taste " + nummer : name) + ", ";
    if (verlangt(tastatur.eigenschaft).zahl() == 0)
        return taste + "gehalten";
    const auto druckzeit = zahl(tastatur.druckzeit) + " ms";
    if (!verlangt(tastatur.wiederholen).ist(1))
        return taste + druckzeit;
    return taste + "je " + druckzeit + ", Pause " + zahl(tastatur.pausenzeit) + " ms";
}

std::string worte(const AbsolutePosition& position, const Feld& drittesZeichen) {
    const auto wahl = drittesZeichen.ziffer();
    if (wahl == IM_FELD_ZENTRIEREN)
        return "Mausposition: Mitte des Feldes";
    if (wahl == IM_FELD_BINDEN)
        return "Mausposition: folgt dem Stick";
    return "Ego Shooter: " + zahl(position.egoX) + " quer, " + zahl(position.egoY) + " hoch";
}

/// One way of a diagonal: its x action moves in x and its y action in y, whatever direction they name.
std::string weg(const Mausbewegung& bewegung, const char* zurueck, const char* vor) {
    const auto wohin = verlangt(bewegung.richtung).ziffer();
    const bool rueckwaerts = wohin == 0 || wohin == 2;
    return schritte(verlangt(bewegung.schritt).zahl()) + " " + (rueckwaerts ? zurueck : vor);
}

std::string diagonale(const Mausbewegung& x, const Mausbewegung& y) {
    return "Maus schräg, " + weg(x, "nach links", "nach rechts") + " und " +
           weg(y, "nach oben", "nach unten") + " " + alle(x.intervall);
}

/// What a run can't read stops it; the words give the text then.
template <class Arbeit> std::string lesbar(const std::string& text, Arbeit&& arbeit) {
    try {
        return arbeit();
    } catch (const LaufzeitFehler&) {
        return "nicht lesbar: „" + text + "“";
    }
}

} // namespace

std::string aktionsworte(const Stickaktion& aktion, const Tastenbenennung& tastenname) {
    if (!artImLauf(aktion.text()))
        return "keine Aktion";
    const JeArt inWorten{[](const Mausbewegung& eine) { return worte(eine); },
                         [](const Maustaste& eine) { return worte(eine); },
                         [&](const Tastatur& eine) { return worte(eine, tastenname); },
                         [](const Leerfeld&) { return std::string("Leerfeld"); },
                         [](const Sperrfeld&) { return std::string("Sperrfeld"); },
                         [&](const AbsolutePosition& eine) { return worte(eine, aktion.drittesZeichen()); }};
    return lesbar(aktion.text(), [&] { return std::visit(inWorten, aktion.inhalt()); });
}

std::string feldworte(const Feldaktionen& aktionen, const std::string& xFeld, const std::string& yFeld,
                      const Tastenbenennung& tastenname) {
    const auto& [eigene, x, y] = aktionen;
    if (eigene)
        return aktionsworte(*eigene, tastenname);
    const auto von = [&](const std::string& feld, const Stickaktion& aktion) {
        return "von " + feld + ": " + aktionsworte(aktion, tastenname);
    };
    if (x && y && x->ist<Mausbewegung>() && y->ist<Mausbewegung>())
        return "gilt von " + xFeld + " und " + yFeld + ": " +
               lesbar(x->text() + "“ und „" + y->text(), [&x = x, &y = y] {
                   return diagonale(*x->als<Mausbewegung>(), *y->als<Mausbewegung>());
               });
    if (x && y)
        return "gilt " + von(xFeld, *x) + "; " + von(yFeld, *y);
    if (x)
        return "gilt " + von(xFeld, *x);
    return y ? "gilt " + von(yFeld, *y) : "keine Aktion";
}
