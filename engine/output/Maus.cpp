#include "engine/output/Maus.h"

#include "base/LaufzeitFehler.h"
#include "platform/Eingabe.h"

#include <array>
#include <limits>

namespace maus {

namespace {

constexpr std::string_view RAD_PLUS = "3";
constexpr std::string_view RAD_MINUS = "4";

struct Knopf {
    std::string_view wahl;
    std::uint32_t druecken;
    std::uint32_t loslassen;
};
constexpr std::array<Knopf, 3> KNOEPFE{{{"0", MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP},
                                        {"1", MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP},
                                        {"2", MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP}}};

} // namespace

void druecken(Eingabe& eingabe, std::string_view wahl, const std::function<std::int32_t()>& menge) {
    for (const auto& knopf : KNOEPFE)
        if (wahl == knopf.wahl)
            eingabe.mouse_event(knopf.druecken, 0, 0, 0, 0);
    if (wahl == RAD_PLUS)
        eingabe.mouse_event(MOUSEEVENTF_WHEEL, 0, 0, menge(), 0);
    else if (wahl == RAD_MINUS)
        eingabe.mouse_event(MOUSEEVENTF_WHEEL, 0, 0, negativ(menge()), 0);
}

void loslassen(Eingabe& eingabe, std::string_view wahl) {
    for (const auto& knopf : KNOEPFE)
        if (wahl == knopf.wahl)
            eingabe.mouse_event(knopf.loslassen, 0, 0, 0, 0);
}

bool bewegen(Eingabe& eingabe, std::string_view richtung, const std::function<std::int32_t()>& schritt) {
    if (richtung == "0")
        eingabe.mouse_event(MOUSEEVENTF_MOVE, negativ(schritt()), 0, 0, 0);
    else if (richtung == "1")
        eingabe.mouse_event(MOUSEEVENTF_MOVE, schritt(), 0, 0, 0);
    else if (richtung == "2")
        eingabe.mouse_event(MOUSEEVENTF_MOVE, 0, negativ(schritt()), 0, 0);
    else if (richtung == "3")
        eingabe.mouse_event(MOUSEEVENTF_MOVE, 0, schritt(), 0, 0);
    else
        return false;
    return true;
}

std::int32_t negativ(std::int32_t zahl) {
    if (zahl == std::numeric_limits<std::int32_t>::min())
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: " + std::to_string(zahl));
    return -zahl;
}

} // namespace maus
