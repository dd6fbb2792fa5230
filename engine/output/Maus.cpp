// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output/Maus.h"

#include "base/LaufzeitFehler.h"
#include "platform/Eingabe.h"

#include <array>
#include <limits>
#include <string>

namespace maus {

namespace {

struct Knopf {
    std::uint32_t druecken;
    std::uint32_t loslassen; // 0: nothing to release
    std::int32_t festeMenge; // of a pad button's wheel
    int radrichtung;         // of an amount; 0: no wheel
};
constexpr std::array<Knopf, 5> KNOEPFE{{{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, 0, 0},
                                        {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, 0, 0},
                                        {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP, 0, 0},
                                        {MOUSEEVENTF_WHEEL, 0, 3, +1},
                                        {MOUSEEVENTF_WHEEL, 0, -4, -1}}};

struct Richtung {
    int x;
    int y;
};
constexpr std::array<Richtung, 4> RICHTUNGEN{{{-1, 0}, {+1, 0}, {0, -1}, {0, +1}}};

template <class Tabelle> auto zeile(const Tabelle& tabelle, std::optional<int> nummer) {
    const bool bekannt = nummer && *nummer >= 0 && static_cast<std::size_t>(*nummer) < tabelle.size();
    return bekannt ? &tabelle[static_cast<std::size_t>(*nummer)] : nullptr;
}

std::int32_t gerichtet(int richtung, std::int32_t zahl) {
    return richtung < 0 ? negativ(zahl) : richtung * zahl;
}

} // namespace

void festDruecken(Eingabe& eingabe, int knopf) {
    if (const auto* einer = zeile(KNOEPFE, knopf))
        eingabe.mouse_event(einer->druecken, 0, 0, einer->festeMenge, 0);
}

void druecken(Eingabe& eingabe, std::optional<int> knopf, const std::function<std::int32_t()>& menge) {
    if (const auto* einer = zeile(KNOEPFE, knopf))
        eingabe.mouse_event(einer->druecken, 0, 0,
                            einer->radrichtung != 0 ? gerichtet(einer->radrichtung, menge()) : 0, 0);
}

void loslassen(Eingabe& eingabe, std::optional<int> knopf) {
    const auto* einer = zeile(KNOEPFE, knopf);
    if (einer && einer->loslassen)
        eingabe.mouse_event(einer->loslassen, 0, 0, 0, 0);
}

bool bewegen(Eingabe& eingabe, std::optional<int> richtung, const std::function<std::int32_t()>& schritt) {
    const auto* eine = zeile(RICHTUNGEN, richtung);
    if (!eine)
        return false;
    const auto weite = gerichtet(eine->x + eine->y, schritt());
    eingabe.mouse_event(MOUSEEVENTF_MOVE, eine->x != 0 ? weite : 0, eine->y != 0 ? weite : 0, 0, 0);
    return true;
}

std::int32_t negativ(std::int32_t zahl) {
    if (zahl == std::numeric_limits<std::int32_t>::min())
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: " + std::to_string(zahl));
    return -zahl;
}

} // namespace maus
