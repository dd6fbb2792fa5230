#include "store/files/XmlText.h"

#include <array>
#include <charconv>
#include <utility>

namespace {

constexpr char32_t HOECHSTES_ZEICHEN = 0x10FFFF;

/// The production Char of XML 1.0.
bool inXmlErlaubt(char32_t zeichen) {
    if (zeichen < 0x20)
        return zeichen == '\t' || zeichen == '\n' || zeichen == '\r';
    return zeichen < 0xD800 || (zeichen > 0xDFFF && zeichen < 0xFFFE) ||
           (zeichen > 0xFFFF && zeichen <= HOECHSTES_ZEICHEN);
}

/// The forms of UTF-8: marks of the first byte, and the least character that may take the form.
struct Form {
    unsigned maske;
    unsigned kennung;
    std::size_t laenge;
    char32_t mindestens;
};
constexpr std::array<Form, 4> FORMEN{
    {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}}};

/// Takes the first character off `rest`, which is not empty; nothing when that is none for XML.
std::optional<char32_t> zeichenNehmen(std::string_view& rest) {
    const auto erstes = static_cast<unsigned char>(rest.front());
    for (const Form& form : FORMEN) {
        if ((erstes & form.maske) != form.kennung)
            continue;
        if (rest.size() < form.laenge)
            return std::nullopt;
        char32_t zeichen = erstes & ~form.maske;
        for (std::size_t i = 1; i < form.laenge; ++i) {
            const auto folge = static_cast<unsigned char>(rest[i]);
            if ((folge & 0xC0) != 0x80)
                return std::nullopt;
            zeichen = (zeichen << 6) | (folge & 0x3FU);
        }
        rest.remove_prefix(form.laenge);
        return zeichen >= form.mindestens && inXmlErlaubt(zeichen) ? std::optional(zeichen) : std::nullopt;
    }
    return std::nullopt;
}

void anfuegen(std::string& text, char32_t zeichen) {
    std::size_t form = FORMEN.size() - 1;
    while (zeichen < FORMEN[form].mindestens)
        --form;
    for (std::size_t i = 0; i < FORMEN[form].laenge; ++i) {
        const auto rechts = 6 * (FORMEN[form].laenge - 1 - i);
        const char32_t bits = zeichen >> rechts;
        text += static_cast<char>(i == 0 ? FORMEN[form].kennung | bits : 0x80 | (bits & 0x3F));
    }
}

/// The character of a reference like "#228" or "#xe4".
std::optional<char32_t> zeichenDerNummer(std::string_view nummer) {
    nummer.remove_prefix(1);
    const bool hex = nummer.starts_with('x');
    if (hex)
        nummer.remove_prefix(1);
    unsigned zahl = 0;
    const auto [ende, fehler] =
        std::from_chars(nummer.data(), nummer.data() + nummer.size(), zahl, hex ? 16 : 10);
    if (fehler != std::errc() || ende != nummer.data() + nummer.size() || !inXmlErlaubt(zahl))
        return std::nullopt;
    return zahl;
}

constexpr std::array<std::pair<std::string_view, char32_t>, 5> BENANNTE{
    {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};

std::optional<char32_t> zeichenDesVerweises(std::string_view verweis) {
    if (verweis.starts_with('#'))
        return zeichenDerNummer(verweis);
    for (const auto& [name, zeichen] : BENANNTE)
        if (verweis == name)
            return zeichen;
    return std::nullopt;
}

/// Takes what stands between "&", which is taken already, and ";".
std::optional<char32_t> verweisNehmen(std::string_view& rest) {
    const std::size_t ende = rest.find(';');
    if (ende == std::string_view::npos)
        return std::nullopt;
    const auto zeichen = zeichenDesVerweises(rest.substr(0, ende));
    rest.remove_prefix(ende + 1);
    return zeichen;
}

/// Takes one character of a raw attribute value, as it is meant.
std::optional<char32_t> wertzeichenNehmen(std::string_view& rest) {
    const bool doppeltesEnde = rest.starts_with("\r\n");
    const auto zeichen = zeichenNehmen(rest);
    if (!zeichen || *zeichen == '<')
        return std::nullopt;
    if (*zeichen == '&')
        return verweisNehmen(rest);
    if (doppeltesEnde)
        rest.remove_prefix(1);
    return *zeichen < ' ' ? U' ' : *zeichen;
}

} // namespace

std::optional<std::size_t> xmlZeichenzahl(std::string_view text) {
    std::size_t anzahl = 0;
    for (; !text.empty(); ++anzahl)
        if (!zeichenNehmen(text))
            return std::nullopt;
    return anzahl;
}

std::optional<std::string> xmlAttributwert(std::string_view roh) {
    std::string wert;
    while (!roh.empty()) {
        const auto zeichen = wertzeichenNehmen(roh);
        if (!zeichen)
            return std::nullopt;
        anfuegen(wert, *zeichen);
    }
    return wert;
}
