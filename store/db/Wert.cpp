// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/db/Wert.h"

#include <charconv>
#include <string_view>
#include <system_error>

namespace {

[[noreturn]] void falscherTyp() {
    throw LaufzeitFehler(Fehlernummer::FalscherTyp, "Typen unverträglich: hier wird eine Zahl erwartet.");
}

std::int64_t zahlAus(std::string_view text) {
    std::int64_t zahl = 0;
    const char* ende = text.data() + text.size();
    const auto [gelesenBis, fehler] = std::from_chars(text.data(), ende, zahl);
    if (fehler == std::errc::invalid_argument || gelesenBis != ende)
        falscherTyp();
    if (fehler != std::errc())
        ueberlauf();
    return zahl;
}

} // namespace

void ueberlauf() {
    throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: die Zahl ist zu groß.");
}

std::string alsText(const Wert& wert) {
    if (const auto* zahl = std::get_if<std::int64_t>(&wert))
        return std::to_string(*zahl);
    if (const auto* text = std::get_if<std::string>(&wert))
        return *text;
    return {};
}

std::int64_t alsZahl(const Wert& wert) {
    if (const auto* zahl = std::get_if<std::int64_t>(&wert))
        return *zahl;
    if (const auto* text = std::get_if<std::string>(&wert))
        return zahlAus(*text);
    falscherTyp();
}
