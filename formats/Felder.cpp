// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Felder.h"

#include "base/LaufzeitFehler.h"

#include <charconv>

namespace {

struct Gelesen {
    std::int32_t zahl = 0;
    std::errc fehler{};
};

Gelesen lesen(std::string_view text) {
    const auto anfang = text.find_first_not_of(' ');
    if (anfang == std::string_view::npos)
        return {0, std::errc::invalid_argument};
    const auto kern = text.substr(anfang, text.find_last_not_of(' ') - anfang + 1);
    Gelesen gelesen;
    const auto [ende, fehler] = std::from_chars(kern.data(), kern.data() + kern.size(), gelesen.zahl);
    gelesen.fehler =
        fehler == std::errc{} && ende != kern.data() + kern.size() ? std::errc::invalid_argument : fehler;
    return gelesen;
}

} // namespace

std::string_view davor(std::string_view text, char trenner) {
    return text.substr(0, text.find(trenner));
}

std::int32_t feldzahl(std::string_view text) {
    const auto gelesen = lesen(text);
    if (gelesen.fehler == std::errc::result_out_of_range)
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: \"" + std::string(text) + "\"");
    if (gelesen.fehler != std::errc{})
        throw LaufzeitFehler(Fehlernummer::FalscherTyp,
                             "Typen unverträglich: \"" + std::string(text) + "\" ist keine Zahl");
    return gelesen.zahl;
}

Feld::Feld(std::string_view text) : da_(true), text_(text) {
    const auto gelesen = lesen(text);
    lesbar_ = gelesen.fehler == std::errc{};
    zahl_ = lesbar_ ? gelesen.zahl : 0;
}

Feld::Feld(std::int32_t zahl) : da_(true), zahl_(zahl), text_(std::to_string(zahl)) {}

std::optional<int> Feld::ziffer() const {
    if (text_.size() != 1 || !lesbar_)
        return std::nullopt;
    return zahl_;
}
