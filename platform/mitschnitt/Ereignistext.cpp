// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mitschnitt/Ereignistext.h"

#include <array>

namespace {

struct Knopftext {
    std::uint32_t flag;
    const char* text;
};
constexpr std::array<Knopftext, 6> KNOPFTEXTE{{{MOUSEEVENTF_LEFTDOWN, "LD"},
                                               {MOUSEEVENTF_LEFTUP, "LU"},
                                               {MOUSEEVENTF_RIGHTDOWN, "RD"},
                                               {MOUSEEVENTF_RIGHTUP, "RU"},
                                               {MOUSEEVENTF_MIDDLEDOWN, "MD"},
                                               {MOUSEEVENTF_MIDDLEUP, "MU"}}};

std::string tastentext(const KEYBDINPUT& taste) {
    std::string text = (taste.dwFlags & KEYEVENTF_KEYUP) ? "-" : "+";
    text += std::to_string(taste.wVk);
    if (taste.dwFlags & KEYEVENTF_EXTENDEDKEY)
        text += "e";
    return text;
}

std::string maustext(const MOUSEINPUT& maus) {
    std::string text;
    const auto anhaengen = [&text](const std::string& stueck) { text += (text.empty() ? "" : " ") + stueck; };
    if (maus.dwFlags & MOUSEEVENTF_MOVE) {
        const char* art = (maus.dwFlags & MOUSEEVENTF_ABSOLUTE) ? "abs(" : "m(";
        anhaengen(art + std::to_string(maus.dx) + "," + std::to_string(maus.dy) + ")");
    }
    for (const auto& knopf : KNOPFTEXTE)
        if (maus.dwFlags & knopf.flag)
            anhaengen(knopf.text);
    if (maus.dwFlags & MOUSEEVENTF_WHEEL) {
        const auto menge = static_cast<std::int32_t>(maus.mouseData);
        anhaengen("W" + std::string(menge < 0 ? "" : "+") + std::to_string(menge));
    }
    return text;
}

} // namespace

std::string ereignistext(const INPUT& ereignis) {
    return ereignis.type == INPUT_KEYBOARD ? tastentext(ereignis.ki) : maustext(ereignis.mi);
}
