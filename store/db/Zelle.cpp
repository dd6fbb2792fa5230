// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/db/Zelle.h"

#include <bit>
#include <cstring>
#include <string_view>

namespace {

/// Kinds of a packed cell: the places in Zelle.
enum class Art : char { Null, Zahl, Text, Bruch, Bytes };

constexpr std::size_t ZAHLBREITE = sizeof(std::uint64_t);

void zahlPacken(std::string& bild, Art art, std::uint64_t zahl) {
    bild += static_cast<char>(art);
    char bytes[ZAHLBREITE];
    std::memcpy(bytes, &zahl, ZAHLBREITE);
    bild.append(bytes, ZAHLBREITE);
}

void packen(std::string& bild, const Zelle& zelle) {
    if (const auto* zahl = std::get_if<std::int64_t>(&zelle)) {
        zahlPacken(bild, Art::Zahl, static_cast<std::uint64_t>(*zahl));
    } else if (const auto* text = std::get_if<std::string>(&zelle)) {
        zahlPacken(bild, Art::Text, text->size());
        bild += *text;
    } else if (const auto* bruch = std::get_if<double>(&zelle)) {
        zahlPacken(bild, Art::Bruch, std::bit_cast<std::uint64_t>(*bruch));
    } else if (const auto* folge = std::get_if<Bytefolge>(&zelle)) {
        zahlPacken(bild, Art::Bytes, folge->bytes.size());
        bild += folge->bytes;
    } else {
        bild += static_cast<char>(Art::Null);
    }
}

std::string_view abtrennen(std::string_view& rest, std::size_t laenge) {
    const auto teil = rest.substr(0, laenge);
    rest.remove_prefix(laenge);
    return teil;
}

Zelle auspacken(std::string_view& rest) {
    const auto art = static_cast<Art>(abtrennen(rest, 1).front());
    if (art == Art::Null)
        return {};
    std::uint64_t zahl = 0;
    std::memcpy(&zahl, abtrennen(rest, ZAHLBREITE).data(), ZAHLBREITE);
    switch (art) {
    case Art::Text:
        return std::string(abtrennen(rest, zahl));
    case Art::Bytes:
        return Bytefolge{std::string(abtrennen(rest, zahl))};
    case Art::Bruch:
        return std::bit_cast<double>(zahl);
    default:
        return static_cast<std::int64_t>(zahl);
    }
}

} // namespace

Zelle zelle(const Wert& wert) {
    return std::visit([](const auto& inhalt) { return Zelle(inhalt); }, wert);
}

std::vector<Zelle> zellen(const std::vector<Wert>& werte) {
    std::vector<Zelle> ergebnis;
    ergebnis.reserve(werte.size());
    for (const auto& wert : werte)
        ergebnis.push_back(zelle(wert));
    return ergebnis;
}

Zeilenbild::Zeilenbild(const std::vector<Zelle>& zellen) {
    for (const auto& zelle : zellen)
        packen(bild_, zelle);
    bild_.shrink_to_fit();
}

std::vector<Zelle> Zeilenbild::zellen() const {
    std::vector<Zelle> ergebnis;
    for (std::string_view rest = bild_; !rest.empty();)
        ergebnis.push_back(auspacken(rest));
    return ergebnis;
}
