// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/GeraeteEingabe.h"

#include "platform/linux/Tastaturlayout.h"

#include <algorithm>
#include <cmath>

namespace {

struct Knopfflagge {
    std::uint32_t flagge;
    Mausknopf knopf;
    bool unten;
};

constexpr Knopfflagge KNOPFFLAGGEN[] = {
    {MOUSEEVENTF_LEFTDOWN, Mausknopf::links, true},   {MOUSEEVENTF_LEFTUP, Mausknopf::links, false},
    {MOUSEEVENTF_RIGHTDOWN, Mausknopf::rechts, true}, {MOUSEEVENTF_RIGHTUP, Mausknopf::rechts, false},
    {MOUSEEVENTF_MIDDLEDOWN, Mausknopf::mitte, true}, {MOUSEEVENTF_MIDDLEUP, Mausknopf::mitte, false},
};

constexpr std::int32_t BILDSCHIRM_ENDE = 65535;
constexpr double JE_RASTE = 120; // WHEEL_DELTA
// More in one event is nobody's wheel; it would only hold up the caller.
constexpr double RASTEN_HOECHSTENS = 1000;

std::int32_t rasten(std::int32_t menge) {
    if (menge == 0)
        return 0;
    const double betrag =
        std::clamp(std::nearbyint(std::abs(double{1} * menge) / JE_RASTE), 1.0, RASTEN_HOECHSTENS);
    return static_cast<std::int32_t>(std::copysign(betrag, menge));
}

} // namespace

std::uint32_t GeraeteEingabe::SendInput(std::span<const INPUT> ereignisse) {
    std::uint32_t gesendet = 0;
    for (const auto& ereignis : ereignisse) {
        if (ereignis.type == INPUT_KEYBOARD) {
            gesendet += tastatur(ereignis.ki) ? 1U : 0U;
        } else if (ereignis.type == INPUT_MOUSE) {
            maus(ereignis.mi);
            ++gesendet;
        }
    }
    return abschicken() ? gesendet : 0;
}

std::uint32_t GeraeteEingabe::MapVirtualKeyA(std::uint32_t code, std::uint32_t art) {
    return art == 0 ? abtastcode(layout_.karte().taste(code)) : 0U;
}

bool GeraeteEingabe::tastatur(const KEYBDINPUT& ereignis) {
    if (ereignis.wVk >= VIRTUELLE_TASTEN)
        return false;
    const auto haelt = gedrueckt_[ereignis.wVk];
    const auto taste = haelt != KEINE_TASTE ? haelt : layout_.karte().taste(ereignis.wVk);
    if (taste == KEINE_TASTE || !kann(taste))
        return false;
    if ((ereignis.dwFlags & KEYEVENTF_KEYUP) != 0)
        loesen(taste);
    else
        druecken(ereignis.wVk, taste);
    return true;
}

void GeraeteEingabe::druecken(VirtuelleTaste code, EvdevTaste taste) {
    const bool wiederholt = gehalten(taste);
    gedrueckt_[code] = taste;
    if (wiederholt && istUmschalter(taste))
        return;
    if (wiederholt)
        this->taste(taste, false);
    this->taste(taste, true);
}

void GeraeteEingabe::loesen(EvdevTaste taste) {
    std::ranges::replace(gedrueckt_, taste, KEINE_TASTE);
    this->taste(taste, false);
}

bool GeraeteEingabe::gehalten(EvdevTaste taste) const {
    return std::ranges::find(gedrueckt_, taste) != gedrueckt_.end();
}

void GeraeteEingabe::maus(const MOUSEINPUT& ereignis) {
    if ((ereignis.dwFlags & MOUSEEVENTF_MOVE) != 0) {
        if ((ereignis.dwFlags & MOUSEEVENTF_ABSOLUTE) != 0)
            setzen(std::clamp(ereignis.dx, 0, BILDSCHIRM_ENDE), std::clamp(ereignis.dy, 0, BILDSCHIRM_ENDE));
        else if (ereignis.dx != 0 || ereignis.dy != 0)
            bewegen(ereignis.dx, ereignis.dy);
    }
    for (const auto& eine : KNOPFFLAGGEN)
        if ((ereignis.dwFlags & eine.flagge) != 0) {
            knopf(eine.knopf, eine.unten);
            knoepfe_[static_cast<std::size_t>(eine.knopf)] = eine.unten;
        }
    if ((ereignis.dwFlags & MOUSEEVENTF_WHEEL) != 0)
        if (const auto anzahl = rasten(static_cast<std::int32_t>(ereignis.mouseData)); anzahl != 0)
            rad(anzahl);
}

void GeraeteEingabe::allesLoesen() {
    for (const auto taste : gedrueckt_)
        if (taste != KEINE_TASTE)
            loesen(taste);
    for (const auto knopf : {Mausknopf::links, Mausknopf::rechts, Mausknopf::mitte})
        if (knoepfe_[static_cast<std::size_t>(knopf)])
            this->knopf(knopf, false);
    abschicken();
}
