// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a picture file, through the Qt of the system. What is shown is no larger than any screen, and
// holds nothing that was in memory before.
#include "editors/pictures/Bildleser.h"
#include "tests/fuzz/Verlangen.h"
#include "tests/hilfen/Testdatenbank.h"

#include <QLoggingCategory>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <span>
#include <string>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* daten, std::size_t groesse, std::size_t platz);

namespace {

constexpr unsigned char SPEICHERFUELLE = 0xBE; ///< what AddressSanitizer lays into new memory

/// Pixels that nobody has set show what memory was filled with.
bool zeigtSpeicher(const QImage& bild, std::string_view datei) {
    constexpr qint64 GENUG = 1 << 20; // to look through, for a run that has many pictures to see
    if (qint64{bild.width()} * bild.height() > GENUG)
        return false;
    if (datei.find(static_cast<char>(SPEICHERFUELLE)) != std::string_view::npos)
        return false; // they may have been set to it
    constexpr std::uint32_t GEFUELLT = 0x01010101U * SPEICHERFUELLE;
    for (int y = 0; y < bild.height(); ++y) {
        const auto* zeile = bild.constScanLine(y);
        const auto breite = static_cast<std::size_t>(bild.width());
        if (bild.format() == QImage::Format_Indexed8 && std::memchr(zeile, SPEICHERFUELLE, breite))
            return true;
        if (bild.format() == QImage::Format_RGB32 &&
            memmem(zeile, breite * sizeof GEFUELLT, &GEFUELLT, sizeof GEFUELLT))
            return true;
    }
    return false;
}

/// The sum over a part of a PNG, as its format has it.
std::uint32_t summe(std::span<const std::uint8_t> teil) {
    constexpr std::uint32_t POLYNOM = 0xEDB88320;
    std::uint32_t rest = 0xFFFFFFFF;
    for (const auto byte : teil) {
        rest ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            rest = rest >> 1 ^ ((rest & 1) != 0 ? POLYNOM : 0);
    }
    return ~rest;
}

/// Gives each part of a PNG the sum that it must have: without it a change in it would be seen by nothing but
/// that.
void summenRichten(std::span<std::uint8_t> png) {
    constexpr std::size_t ERSTER = 8;
    constexpr std::size_t RAHMEN = 12;
    for (std::size_t stelle = ERSTER; stelle + RAHMEN <= png.size();) {
        const auto vier = [&](std::size_t wo) {
            return std::uint32_t{png[wo]} << 24 | std::uint32_t{png[wo + 1]} << 16 |
                   std::uint32_t{png[wo + 2]} << 8 | png[wo + 3];
        };
        const std::size_t laenge = vier(stelle);
        if (laenge > png.size() - stelle - RAHMEN)
            return;
        const auto neue = summe(png.subspan(stelle + 4, laenge + 4));
        for (std::size_t i = 0; i < 4; ++i)
            png[stelle + laenge + 8 + i] = static_cast<std::uint8_t>(neue >> (24 - 8 * i));
        stelle += RAHMEN + laenge;
    }
}

/// Clears the upper bytes of a width and a height, mostly: large pictures cost time and are all alike.
void kleinHalten(std::span<std::uint8_t> bild, std::initializer_list<std::size_t> oben, unsigned zufall) {
    if (zufall % 16 == 0)
        return;
    for (const auto byte : oben)
        if (byte < bild.size())
            bild[byte] = 0;
}

} // namespace

// New memory is filled, however much it is.
extern "C" const char* __asan_default_options() {
    return "max_malloc_fill_size=67108864";
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* daten, std::size_t groesse, std::size_t platz,
                                               unsigned zufall) {
    const auto neu = LLVMFuzzerMutate(daten, groesse, platz);
    const std::span bytes(daten, neu);
    if (alsText(daten, neu).starts_with("\x89PNG"))
        summenRichten(bytes);
    if (alsText(daten, neu).starts_with("BM"))
        kleinHalten(bytes, {19, 20, 21, 23, 24, 25}, zufall);
    return neu;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    QLoggingCategory::setFilterRules("*=false"); // Qt tells of each faulty file
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    static const Testordner ordner;
    static const auto datei = ordner.pfad() / "S0L.bmp";
    std::ofstream(datei, std::ios::binary | std::ios::trunc) << alsText(daten, groesse);
    const auto bild = bildLesen(datei);
    verlange(qint64{bild.width()} * bild.height() <= MEISTE_PIXEL);
    verlange(!zeigtSpeicher(bild, alsText(daten, groesse)));
    return 0;
}
