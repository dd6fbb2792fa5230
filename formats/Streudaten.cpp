// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Streudaten.h"

#include <algorithm>
#include <limits>
#include <span>
#include <zlib.h>

namespace {

using Aufenthalt = Streudaten::Aufenthalt;

constexpr std::string_view KENNUNG = "GPkStreu\x01"; // the last byte is the version
constexpr std::size_t LAENGENBYTES = 4;
constexpr std::size_t KOPF = KENNUNG.size() + LAENGENBYTES;
static_assert(KOPF + Streudaten::ZAEHLUNG_HOECHSTENS < Streudaten::DATEI_HOECHSTENS);

// What the two parts take at most before they are compressed.
constexpr std::size_t ZAHL_HOECHSTENS = 5;
constexpr std::size_t ZAEHLUNG_ROH =
    ZAHL_HOECHSTENS * (2 * (Streudaten::KLASSEN + Streudaten::ZELLEN) + Streudaten::RASTERFELDER) + 1;
constexpr std::size_t WEG_ROH = ZAHL_HOECHSTENS + Streudaten::WEG_HOECHSTENS * (2 + ZAHL_HOECHSTENS);

constexpr std::uint8_t spalte(std::uint16_t zelle) {
    return static_cast<std::uint8_t>(zelle % Streudaten::ZELLEN);
}
constexpr std::uint8_t zeile(std::uint16_t zelle) {
    return static_cast<std::uint8_t>(zelle / Streudaten::ZELLEN);
}

// --- numbers ---

constexpr unsigned ZIFFERNBITS = 7;
constexpr std::uint8_t WEITERE = 1 << ZIFFERNBITS;

void anhaengen(std::string& text, std::uint32_t zahl) {
    for (; zahl >= WEITERE; zahl >>= ZIFFERNBITS)
        text += static_cast<char>(static_cast<std::uint8_t>(zahl) | WEITERE);
    text += static_cast<char>(zahl);
}

/// Takes numbers and bytes off a text. Behind its end, and behind what is no number, there is nothing any
/// more.
class Zahlenleser {
public:
    explicit Zahlenleser(std::string_view text) : text_(text) {}

    std::uint8_t byte() {
        if (stelle_ >= text_.size()) {
            heil_ = false;
            return 0;
        }
        return static_cast<std::uint8_t>(text_[stelle_++]);
    }

    std::uint32_t zahl(std::uint32_t hoechstens = std::numeric_limits<std::uint32_t>::max()) {
        std::uint64_t wert = 0;
        for (unsigned i = 0; i < ZAHL_HOECHSTENS; ++i) {
            const auto ziffer = byte();
            wert |= std::uint64_t{ziffer & (WEITERE - 1U)} << (ZIFFERNBITS * i);
            if ((ziffer & WEITERE) == 0) {
                heil_ = heil_ && wert <= hoechstens && (ziffer != 0 || i == 0);
                return static_cast<std::uint32_t>(wert);
            }
        }
        heil_ = false;
        return 0;
    }

    bool heil() const { return heil_; }
    bool zuEnde() const { return heil_ && stelle_ == text_.size(); }

private:
    std::string_view text_;
    std::size_t stelle_ = 0;
    bool heil_ = true;
};

// --- compression ---

std::string packen(std::string_view roh) {
    auto laenge = compressBound(static_cast<uLong>(roh.size()));
    std::string gepackt(laenge, '\0');
    compress2(reinterpret_cast<Bytef*>(gepackt.data()), &laenge, reinterpret_cast<const Bytef*>(roh.data()),
              static_cast<uLong>(roh.size()), Z_DEFAULT_COMPRESSION);
    gepackt.resize(laenge);
    return gepackt;
}

/// Nothing unless the text is one stream and no more, of at most `hoechstens` bytes.
std::optional<std::string> auspacken(std::string_view gepackt, std::size_t hoechstens) {
    std::string roh(hoechstens, '\0');
    auto laenge = static_cast<uLong>(hoechstens);
    auto gelesen = static_cast<uLong>(gepackt.size());
    const int ergebnis = uncompress2(reinterpret_cast<Bytef*>(roh.data()), &laenge,
                                     reinterpret_cast<const Bytef*>(gepackt.data()), &gelesen);
    if (ergebnis != Z_OK || gelesen != gepackt.size())
        return std::nullopt;
    roh.resize(laenge);
    return roh;
}

// --- counts ---

bool hatRaster(const Streudaten& daten) {
    return daten.takte.size() == Streudaten::RASTERFELDER;
}

/// The counts with those of the grid shifted down.
std::string zaehlung(const Streudaten& daten, unsigned halbiert) {
    std::string text;
    for (const auto& achse : daten.achsen) {
        for (const auto takte : achse.zittern)
            anhaengen(text, takte);
        for (const auto takte : achse.ruhe)
            anhaengen(text, takte);
    }
    text += hatRaster(daten) ? '\1' : '\0';
    if (hatRaster(daten))
        for (const auto takte : daten.takte)
            anhaengen(text, takte >> halbiert);
    return text;
}

// Ends: without a grid's bits the rest fits, however little there is to compress in it.
std::string gepackteZaehlung(const Streudaten& daten) {
    constexpr unsigned BITS = std::numeric_limits<std::uint32_t>::digits;
    std::string gepackt;
    for (unsigned halbiert = 0; halbiert < BITS; ++halbiert) {
        gepackt = packen(zaehlung(daten, halbiert));
        if (gepackt.size() <= Streudaten::ZAEHLUNG_HOECHSTENS)
            break;
    }
    return gepackt;
}

bool zaehlungLesen(std::string_view text, Streudaten& daten) {
    Zahlenleser leser(text);
    for (auto& achse : daten.achsen) {
        for (auto& takte : achse.zittern)
            takte = leser.zahl();
        for (auto& takte : achse.ruhe)
            takte = leser.zahl();
    }
    if (leser.zahl(1) == 1 && leser.heil()) {
        daten.takte.resize(Streudaten::RASTERFELDER);
        for (auto& takte : daten.takte)
            takte = leser.zahl();
    }
    return leser.zuEnde();
}

// --- way ---

std::string wegtext(std::span<const Aufenthalt> weg) {
    std::string text;
    anhaengen(text, static_cast<std::uint32_t>(weg.size()));
    for (const auto teil : {&spalte, &zeile}) {
        std::uint8_t vorher = 0;
        for (const auto& aufenthalt : weg) {
            const auto jetzt = teil(aufenthalt.zelle);
            text += static_cast<char>(jetzt - vorher);
            vorher = jetzt;
        }
    }
    for (const auto& aufenthalt : weg)
        anhaengen(text, aufenthalt.takte);
    return text;
}

/// The newest stays that go into so many bytes.
std::string gepackterWeg(std::span<const Aufenthalt> weg, std::size_t platz) {
    weg = weg.last(std::min(weg.size(), Streudaten::WEG_HOECHSTENS));
    while (true) {
        auto gepackt = packen(wegtext(weg));
        if (gepackt.size() <= platz)
            return gepackt;
        // As many as fit if they are all alike, and some less, as they are not.
        weg = weg.last(weg.size() * platz / gepackt.size() * 31 / 32);
    }
}

bool wegLesen(std::string_view text, Streudaten& daten) {
    Zahlenleser leser(text);
    const auto anzahl = leser.zahl(Streudaten::WEG_HOECHSTENS);
    if (!leser.heil())
        return false;
    daten.weg.resize(anzahl);
    for (const unsigned stellenwert : {1U, static_cast<unsigned>(Streudaten::ZELLEN)}) {
        std::uint8_t teil = 0;
        for (auto& aufenthalt : daten.weg) {
            teil = static_cast<std::uint8_t>(teil + leser.byte());
            aufenthalt.zelle = static_cast<std::uint16_t>(aufenthalt.zelle + teil * stellenwert);
        }
    }
    for (auto& aufenthalt : daten.weg)
        aufenthalt.takte = static_cast<std::uint16_t>(leser.zahl(std::numeric_limits<std::uint16_t>::max()));
    return leser.zuEnde();
}

// --- sums ---

void dazu(std::span<std::uint32_t> summe, std::span<const std::uint32_t> lauf) {
    for (std::size_t i = 0; i < summe.size(); ++i)
        Streudaten::mehren(summe[i], lauf[i]);
}

void anfuegen(std::vector<Aufenthalt>& weg, const std::vector<Aufenthalt>& neuer) {
    if (neuer.empty())
        return;
    if (!weg.empty() && weg.back().takte != 0)
        weg.push_back({weg.back().zelle, 0});
    weg.insert(weg.end(), neuer.begin(), neuer.end());
    if (weg.size() > Streudaten::WEG_HOECHSTENS)
        weg.erase(weg.begin(), weg.end() - static_cast<std::ptrdiff_t>(Streudaten::WEG_HOECHSTENS));
}

} // namespace

std::string streudatenSchreiben(const Streudaten& daten) {
    const auto gezaehltes = gepackteZaehlung(daten);
    std::string inhalt(KENNUNG);
    for (std::size_t i = 0; i < LAENGENBYTES; ++i)
        inhalt += static_cast<char>(gezaehltes.size() >> (8 * i));
    inhalt += gezaehltes;
    inhalt += gepackterWeg(daten.weg, Streudaten::DATEI_HOECHSTENS - inhalt.size());
    return inhalt;
}

std::optional<Streudaten> streudatenLesen(std::string_view inhalt) {
    if (inhalt.size() > Streudaten::DATEI_HOECHSTENS || inhalt.size() < KOPF || !inhalt.starts_with(KENNUNG))
        return std::nullopt;
    std::size_t laenge = 0;
    for (std::size_t i = 0; i < LAENGENBYTES; ++i)
        laenge |= std::size_t{static_cast<std::uint8_t>(inhalt[KENNUNG.size() + i])} << (8 * i);
    inhalt.remove_prefix(KOPF);
    if (laenge > inhalt.size())
        return std::nullopt;
    const auto gezaehltes = auspacken(inhalt.substr(0, laenge), ZAEHLUNG_ROH);
    const auto weg = auspacken(inhalt.substr(laenge), WEG_ROH);
    Streudaten daten;
    if (!gezaehltes || !weg || !zaehlungLesen(*gezaehltes, daten) || !wegLesen(*weg, daten))
        return std::nullopt;
    return daten;
}

bool streudatenNeuer(std::string_view inhalt) {
    constexpr auto NAME = KENNUNG.size() - 1;
    return inhalt.size() > NAME && inhalt.starts_with(KENNUNG.substr(0, NAME)) &&
           static_cast<std::uint8_t>(inhalt[NAME]) > static_cast<std::uint8_t>(KENNUNG[NAME]);
}

void zusammenzaehlen(Streudaten& summe, const Streudaten& lauf) {
    if (hatRaster(lauf)) {
        summe.takte.resize(Streudaten::RASTERFELDER);
        dazu(summe.takte, lauf.takte);
    }
    for (std::size_t i = 0; i < summe.achsen.size(); ++i) {
        dazu(summe.achsen[i].zittern, lauf.achsen[i].zittern);
        dazu(summe.achsen[i].ruhe, lauf.achsen[i].ruhe);
    }
    anfuegen(summe.weg, lauf.weg);
}
