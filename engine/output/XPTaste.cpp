#include "engine/output/XPTaste.h"

#include "base/LaufzeitFehler.h"

#include <array>
#include <limits>
#include <string>

namespace {

constexpr int SCROLLRAD_PLUS = 3;
constexpr int SCROLLRAD_MINUS = 4;

// By the selector of a mouse action.
struct Mausaktion {
    std::uint32_t druecken;
    std::int32_t daten;
    std::uint32_t loesen; // 0: nothing to release
};
constexpr std::array<Mausaktion, 5> MAUSAKTIONEN{{{MOUSEEVENTF_LEFTDOWN, 0, MOUSEEVENTF_LEFTUP},
                                                  {MOUSEEVENTF_RIGHTDOWN, 0, MOUSEEVENTF_RIGHTUP},
                                                  {MOUSEEVENTF_MIDDLEDOWN, 0, MOUSEEVENTF_MIDDLEUP},
                                                  {MOUSEEVENTF_WHEEL, SCROLLRAD_PLUS, 0},
                                                  {MOUSEEVENTF_WHEEL, -SCROLLRAD_MINUS, 0}}};

const Mausaktion* mausaktion(int selektor) {
    const bool bekannt = selektor >= 0 && static_cast<std::size_t>(selektor) < MAUSAKTIONEN.size();
    return bekannt ? &MAUSAKTIONEN[static_cast<std::size_t>(selektor)] : nullptr;
}

} // namespace

VirtuelleTaste tastencode(std::int32_t zahl) {
    if (zahl < 0 || zahl > std::numeric_limits<std::int16_t>::max())
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: Tastencode " + std::to_string(zahl));
    return static_cast<VirtuelleTaste>(zahl);
}

void XPTaste::TasteAbSenden(std::int32_t taste) {
    tasteSenden(taste, 0);
    WiederholungPruefen_();
}

void XPTaste::TasteAufSenden(std::int32_t taste) {
    tasteSenden(taste, KEYEVENTF_KEYUP);
}

void XPTaste::tasteSenden(std::int32_t taste, std::uint32_t flags) {
    const auto code = tastencode(taste);
    INPUT eines{};
    eines.type = INPUT_KEYBOARD;
    eines.ki = {code,
                static_cast<std::uint16_t>(eingabe_.MapVirtualKeyA(code, 0)),
                flags | (istErweitert(code) ? KEYEVENTF_EXTENDEDKEY : 0),
                0,
                0,
                {}};
    eingabe_.SendInput({&eines, 1});
}

void XPTaste::MausDruecken(int selektor) {
    if (const auto* aktion = mausaktion(selektor))
        eingabe_.mouse_event(aktion->druecken, 0, 0, aktion->daten, 0);
}

void XPTaste::MausLoesen(int selektor) {
    const auto* aktion = mausaktion(selektor);
    if (aktion && aktion->loesen)
        eingabe_.mouse_event(aktion->loesen, 0, 0, 0, 0);
}
