// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as what runs have counted of a stick. What is read can be written into a file of its bound and
// read again: the same but for the older part of the way and the lower bits of a grid that is too full.
//
//   '0' FILE              the file as it is
//   '1' share PAIRS       its two parts before they are compressed, the first of so many 256ths of the pairs:
//   a
//                         byte, and how often it stands there (that number squared, once for 0)
#include "formats/Streudaten.h"
#include "tests/fuzz/Verlangen.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <zlib.h>

namespace {

std::string ausgeschrieben(std::string_view paare) {
    constexpr std::size_t GENUG = 1 << 19; // more than a part may have
    std::string text;
    for (; paare.size() >= 2 && text.size() < GENUG; paare.remove_prefix(2)) {
        const auto wurzel = static_cast<std::uint8_t>(paare[1]);
        text.append(std::max<std::size_t>(1, std::size_t{wurzel} * wurzel), paare[0]);
    }
    return text;
}

std::string gepackt(const std::string& roh) {
    auto laenge = compressBound(static_cast<uLong>(roh.size()));
    std::string text(laenge, '\0');
    compress2(reinterpret_cast<Bytef*>(text.data()), &laenge, reinterpret_cast<const Bytef*>(roh.data()),
              static_cast<uLong>(roh.size()), Z_BEST_SPEED);
    return text.substr(0, laenge);
}

std::string dateiAus(std::string_view paare) {
    if (paare.empty())
        return "";
    const auto anteil = static_cast<std::uint8_t>(paare.front());
    paare.remove_prefix(1);
    const auto erste = paare.size() / 2 * anteil / 256 * 2;
    const auto zaehlung = gepackt(ausgeschrieben(paare.substr(0, erste)));
    std::string datei = "GPkStreu\x01";
    for (unsigned i = 0; i < 4; ++i)
        datei += static_cast<char>(zaehlung.size() >> (8 * i));
    return datei + zaehlung + gepackt(ausgeschrieben(paare.substr(erste)));
}

bool istEnde(const std::vector<Streudaten::Aufenthalt>& ende,
             const std::vector<Streudaten::Aufenthalt>& weg) {
    return ende.size() <= weg.size() && std::equal(ende.rbegin(), ende.rend(), weg.rbegin());
}

bool istHalbiert(const std::vector<std::uint32_t>& halbe, const std::vector<std::uint32_t>& ganze) {
    for (unsigned halbiert = 0; halbiert < 32; ++halbiert)
        if (std::ranges::equal(halbe, ganze,
                               [=](auto wenige, auto viele) { return wenige == viele >> halbiert; }))
            return true;
    return false;
}

void schreibenUndLesen(const Streudaten& daten) {
    const auto datei = streudatenSchreiben(daten);
    verlange(datei.size() <= Streudaten::DATEI_HOECHSTENS);
    const auto wieder = streudatenLesen(datei);
    verlange(wieder && wieder->achsen == daten.achsen && istEnde(wieder->weg, daten.weg) &&
             istHalbiert(wieder->takte, daten.takte));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* eingabe, std::size_t groesse) {
    auto text = alsText(eingabe, groesse);
    if (text.empty())
        return 0;
    const bool paare = text.front() == '1';
    text.remove_prefix(1);
    const auto daten = paare ? streudatenLesen(dateiAus(text)) : streudatenLesen(text);
    if (!daten)
        return 0;
    schreibenUndLesen(*daten);
    auto summe = *daten;
    zusammenzaehlen(summe, *daten);
    verlange(summe.weg.size() <= Streudaten::WEG_HOECHSTENS);
    return 0;
}
