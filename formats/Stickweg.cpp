// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Stickweg.h"

#include <charconv>
#include <limits>

namespace {

constexpr std::string_view KENNUNG = "Stickweg 1\n";
constexpr std::string_view EBENE = "Ebene ";
constexpr std::string_view ENDE = "Ende\n";

void anhaengen(std::string& text, std::uint64_t zahl, char danach) {
    text += std::to_string(zahl);
    text += danach;
}

/// Takes words and numbers off a text. Behind what is not as it must be there is nothing any more.
class Leser {
public:
    explicit Leser(std::string_view text) : text_(text) {}

    void wort(std::string_view erwartetes) {
        heil_ = heil_ && text_.starts_with(erwartetes);
        if (heil_)
            text_.remove_prefix(erwartetes.size());
    }
    std::uint32_t zahl(char danach, std::uint32_t hoechstens) {
        std::uint32_t wert = 0;
        const auto* ende = text_.data() + text_.size();
        const auto [stelle, fehler] = std::from_chars(text_.data(), ende, wert);
        heil_ = heil_ && fehler == std::errc() && stelle != ende && *stelle == danach && wert <= hoechstens;
        if (!heil_)
            return 0;
        text_.remove_prefix(static_cast<std::size_t>(stelle - text_.data()) + 1);
        return wert;
    }
    bool heil() const { return heil_; }
    bool zuEnde() const { return heil_ && text_.empty(); }

private:
    std::string_view text_;
    bool heil_ = true;
};

Wegstelle stelleLesen(Leser& leser) {
    constexpr std::uint32_t RAND = std::numeric_limits<std::uint16_t>::max();
    const auto x = leser.zahl(' ', RAND);
    const auto y = leser.zahl(' ', RAND);
    const auto takte = leser.zahl('\n', std::numeric_limits<std::uint32_t>::max());
    return {static_cast<std::uint16_t>(x), static_cast<std::uint16_t>(y), takte};
}

} // namespace

std::string stickwegSchreiben(const Stickweg& weg) {
    std::string text(KENNUNG);
    for (std::size_t ebene = 0; ebene < weg.size(); ++ebene) {
        text += EBENE;
        anhaengen(text, ebene, ' ');
        anhaengen(text, weg[ebene].size(), '\n');
        for (const auto& stelle : weg[ebene]) {
            anhaengen(text, stelle.x, ' ');
            anhaengen(text, stelle.y, ' ');
            anhaengen(text, stelle.takte, '\n');
        }
    }
    return text.append(ENDE);
}

std::optional<Stickweg> stickwegLesen(std::string_view text) {
    Leser leser(text);
    Stickweg weg;
    auto uebrige = static_cast<std::uint32_t>(WEGSTELLEN_HOECHSTENS);
    leser.wort(KENNUNG);
    for (std::uint32_t ebene = 0; ebene < weg.size(); ++ebene) {
        leser.wort(EBENE);
        if (leser.zahl(' ', ebene) != ebene)
            return std::nullopt;
        const auto anzahl = leser.zahl('\n', uebrige);
        uebrige -= anzahl;
        // No room is made for what does not follow.
        for (std::uint32_t i = 0; i < anzahl && leser.heil(); ++i)
            weg[ebene].push_back(stelleLesen(leser));
    }
    leser.wort(ENDE);
    return leser.zuEnde() ? std::optional(std::move(weg)) : std::nullopt;
}
