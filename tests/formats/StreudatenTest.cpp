// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Streudaten.h"

#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <zlib.h>

namespace {

using Aufenthalt = Streudaten::Aufenthalt;

constexpr auto VOLL = std::numeric_limits<std::uint32_t>::max();

Streudaten kleine() {
    Streudaten daten;
    daten.takte.resize(Streudaten::RASTERFELDER);
    daten.takte[0] = 1;
    daten.takte[127 * 256 + 128] = 60'000;
    daten.takte.back() = VOLL;
    daten.weg = {{0, 1}, {127 * 256 + 128, 65'535}, {65'535, 0}, {65'535, 3}, {1, 128}};
    daten.achsen[0].zittern[0] = 127;
    daten.achsen[0].ruhe[127] = VOLL;
    daten.achsen[1].zittern[255] = 128;
    daten.achsen[1].ruhe[255] = 16'384;
    return daten;
}

/// Nothing of it can be compressed.
Streudaten rauschen(std::size_t aufenthalte) {
    std::mt19937 zufall(17);
    const auto zahl = [&] { return static_cast<std::uint32_t>(zufall()); };
    Streudaten daten;
    daten.takte.resize(Streudaten::RASTERFELDER);
    std::ranges::generate(daten.takte, zahl);
    for (auto& achse : daten.achsen) {
        std::ranges::generate(achse.zittern, zahl);
        std::ranges::generate(achse.ruhe, zahl);
    }
    for (std::size_t i = 0; i < aufenthalte; ++i)
        daten.weg.push_back(
            {static_cast<std::uint16_t>(zufall()), static_cast<std::uint16_t>(zufall() | 0x8000U)});
    return daten;
}

std::string gepackt(const std::string& roh) {
    auto laenge = compressBound(static_cast<uLong>(roh.size()));
    std::string text(laenge, '\0');
    compress(reinterpret_cast<Bytef*>(text.data()), &laenge, reinterpret_cast<const Bytef*>(roh.data()),
             static_cast<uLong>(roh.size()));
    return text.substr(0, laenge);
}

/// A file whose two parts are these.
std::string dateiAus(const std::string& zaehlung, const std::string& weg) {
    const auto erster = gepackt(zaehlung);
    std::string laenge;
    for (int i = 0; i < 4; ++i)
        laenge += static_cast<char>(erster.size() >> (8 * i));
    return "GPkStreu\x01" + laenge + erster + gepackt(weg);
}

const std::string OHNE_RUHE(1024, '\0');
const std::string KEIN_RASTER = OHNE_RUHE + '\0';
const std::string KEIN_WEG(1, '\0');

} // namespace

TEST(StreudatenTest, WasGeschriebenWirdWirdGelesen) {
    EXPECT_EQ(streudatenLesen(streudatenSchreiben(kleine())), kleine());
    EXPECT_EQ(streudatenLesen(streudatenSchreiben({})), Streudaten{});
}

TEST(StreudatenTest, EineDateiStehtWieBeschrieben) {
    auto zaehlung = OHNE_RUHE + '\1' + std::string(Streudaten::RASTERFELDER, '\0');
    zaehlung[511] = '\x07';                      // y: 512 numbers further
    zaehlung.replace(1025 + 257, 1, "\xAC\x02"); // 300, in the second row
    const auto gelesen = streudatenLesen(dateiAus(zaehlung, std::string("\2\x05\xFF\1\1\x80\x01\0", 8)));
    Streudaten erwartet;
    erwartet.achsen[0].ruhe[255] = 7;
    erwartet.takte.resize(Streudaten::RASTERFELDER);
    erwartet.takte[257] = 300;
    erwartet.weg = {{256 + 5, 128}, {2 * 256 + 4, 0}};
    EXPECT_EQ(gelesen, erwartet);
    EXPECT_EQ(streudatenSchreiben(erwartet).substr(0, 9), "GPkStreu\x01");
}

TEST(StreudatenTest, BeschaedigtesUndFremdesIstNichts) {
    const auto heil = streudatenSchreiben(kleine());
    EXPECT_FALSE(streudatenLesen(""));
    EXPECT_FALSE(streudatenLesen("GPkStreu\x01"));
    EXPECT_FALSE(streudatenLesen(heil + '\0'));
    EXPECT_FALSE(streudatenLesen("GPkStreu\x02" + heil.substr(9)));
    for (std::size_t laenge = 0; laenge < heil.size(); ++laenge)
        EXPECT_FALSE(streudatenLesen(heil.substr(0, laenge))) << laenge;
    for (std::size_t stelle = 0; stelle < heil.size(); ++stelle) {
        auto anders = heil;
        anders[stelle] = static_cast<char>(anders[stelle] ^ 0x10);
        const auto gelesen = streudatenLesen(anders);
        EXPECT_TRUE(!gelesen || *gelesen == kleine()) << stelle; // a bit that says nothing
    }
}

TEST(StreudatenTest, EineNeuereFassungGibtSichZuErkennen) {
    EXPECT_TRUE(streudatenNeuer("GPkStreu\x02"));
    EXPECT_TRUE(streudatenNeuer("GPkStreu\xFF..."));
    EXPECT_FALSE(streudatenNeuer("GPkStreu\x01..."));
    EXPECT_FALSE(streudatenNeuer(std::string_view("GPkStreu\0", 9)));
    EXPECT_FALSE(streudatenNeuer("GPkStreu"));
    EXPECT_FALSE(streudatenNeuer("GPkStreV\x02"));
}

TEST(StreudatenTest, JedeZahlHatEineSchreibweiseUndIhreGrenze) {
    ASSERT_TRUE(streudatenLesen(dateiAus(KEIN_RASTER, KEIN_WEG)));
    const auto zaehlung = [](const std::string& erste) {
        return streudatenLesen(dateiAus(erste + KEIN_RASTER.substr(1), KEIN_WEG));
    };
    EXPECT_EQ(zaehlung("\xFF\xFF\xFF\xFF\x0F")->achsen[0].zittern[0], VOLL);
    EXPECT_FALSE(zaehlung("\xFF\xFF\xFF\xFF\x1F")) << "more than 32 bits";
    EXPECT_FALSE(zaehlung("\xFF\xFF\xFF\xFF\xFF\x01"));
    EXPECT_FALSE(zaehlung(std::string("\x81\0", 2))) << "a 1 in two bytes";
    EXPECT_FALSE(streudatenLesen(dateiAus(OHNE_RUHE + '\2', KEIN_WEG))) << "neither grid nor none";
    EXPECT_FALSE(streudatenLesen(dateiAus(OHNE_RUHE + '\1', KEIN_WEG))) << "a grid without cells";
    EXPECT_FALSE(streudatenLesen(dateiAus(KEIN_RASTER + '\0', KEIN_WEG)));
    EXPECT_TRUE(streudatenLesen(dateiAus(KEIN_RASTER, "\1\1\1\xFF\xFF\x03")));
    EXPECT_FALSE(streudatenLesen(dateiAus(KEIN_RASTER, "\1\1\1\x80\x80\x04"))) << "65536 ticks";
    EXPECT_FALSE(streudatenLesen(dateiAus(KEIN_RASTER, "\2\1\1\1"))) << "half a stay";
    const auto weg = [](std::uint32_t anzahl) {
        std::string kopf;
        for (auto rest = anzahl; rest > 0; rest >>= 7)
            kopf += static_cast<char>((rest & 127) | (rest > 127 ? 128 : 0));
        return streudatenLesen(dateiAus(KEIN_RASTER, kopf + std::string(anzahl * 3, '\0')));
    };
    EXPECT_TRUE(weg(65'536));
    EXPECT_FALSE(weg(65'537));
}

TEST(StreudatenTest, EinTeilDerAuseinandergehtSprengtNichts) {
    const std::string lang(1 << 24, '\0');
    EXPECT_FALSE(streudatenLesen(dateiAus(lang, KEIN_WEG)));
    EXPECT_FALSE(streudatenLesen(dateiAus(KEIN_RASTER, lang)));
    EXPECT_FALSE(streudatenLesen(std::string("GPkStreu\x01\xFF\xFF\xFF\xFF", 13)));
}

TEST(StreudatenTest, AuchDasSchlimmsteBleibtUnter64KiB) {
    for (const std::size_t aufenthalte : {std::size_t{0}, Streudaten::WEG_HOECHSTENS + 1}) {
        const auto daten = rauschen(aufenthalte);
        const auto inhalt = streudatenSchreiben(daten);
        EXPECT_LE(inhalt.size(), Streudaten::DATEI_HOECHSTENS);
        const auto gelesen = streudatenLesen(inhalt);
        ASSERT_TRUE(gelesen);
        EXPECT_EQ(gelesen->achsen, daten.achsen) << "these never go";
    }
}

TEST(StreudatenTest, WasNichtHineingehtGehtVonAltNachNeu) {
    auto daten = rauschen(Streudaten::WEG_HOECHSTENS);
    daten.takte.clear();
    const auto gelesen = *streudatenLesen(streudatenSchreiben(daten));
    EXPECT_TRUE(std::equal(gelesen.weg.rbegin(), gelesen.weg.rend(), daten.weg.rbegin()));
    EXPECT_GT(gelesen.weg.size(), 10'000U) << "the room is used";
    EXPECT_LT(gelesen.weg.size(), daten.weg.size());
}

TEST(StreudatenTest, EinRasterDasHineingehtBleibtWieEsIst) {
    Streudaten daten;
    daten.takte.resize(Streudaten::RASTERFELDER);
    std::mt19937 zufall(5);
    for (int i = 0; i < 34'000; ++i) // nearly a byte each
        daten.takte[static_cast<std::size_t>(i)] = zufall() % 128;
    EXPECT_EQ(*streudatenLesen(streudatenSchreiben(daten)), daten);
}

TEST(StreudatenTest, MehrAufenthalteAlsEsGebenDarfWerdenNichtGeschrieben) {
    Streudaten daten;
    daten.weg.assign(Streudaten::WEG_HOECHSTENS + 1, {5, 7}); // takes hardly any room
    daten.weg.back().takte = 9;
    const auto gelesen = streudatenLesen(streudatenSchreiben(daten));
    ASSERT_TRUE(gelesen);
    EXPECT_EQ(gelesen->weg.size(), Streudaten::WEG_HOECHSTENS);
    EXPECT_EQ(gelesen->weg.back().takte, 9);
}

TEST(StreudatenTest, EinZuVollesRasterWirdHalbiertBisEsHineingeht) {
    auto daten = rauschen(Streudaten::WEG_HOECHSTENS);
    const auto gelesen = *streudatenLesen(streudatenSchreiben(daten));
    unsigned halbiert = 0;
    while (halbiert < 32 && daten.takte[0] >> halbiert != gelesen.takte[0])
        ++halbiert;
    for (auto& takte : daten.takte)
        takte >>= halbiert;
    EXPECT_EQ(gelesen.takte, daten.takte);
    EXPECT_GT(std::accumulate(gelesen.takte.begin(), gelesen.takte.end(), 0U), 0U);
    EXPECT_GT(gelesen.weg.size(), 5'000U) << "the way has room beside it";
}

TEST(StreudatenTest, ZusammengezaehltWirdBisZumAnschlag) {
    Streudaten summe;
    zusammenzaehlen(summe, {});
    EXPECT_EQ(summe, Streudaten{});
    zusammenzaehlen(summe, kleine());
    EXPECT_EQ(summe, kleine());
    zusammenzaehlen(summe, kleine());
    EXPECT_EQ(summe.takte[0], 2U);
    EXPECT_EQ(summe.takte.back(), VOLL);
    EXPECT_EQ(summe.achsen[0].zittern[0], 254U);
    EXPECT_EQ(summe.achsen[0].ruhe[127], VOLL);
    EXPECT_EQ(summe.achsen[1].zittern[255], 256U);
    EXPECT_EQ(summe.achsen[1].ruhe[255], 32'768U);
}

TEST(StreudatenTest, ZwischenZweiLaeufenIstDerWegUnterbrochen) {
    Streudaten summe;
    summe.weg = {{7, 1}};
    Streudaten lauf;
    lauf.weg = {{8, 2}, {8, 0}};
    zusammenzaehlen(summe, lauf);
    EXPECT_EQ(summe.weg, (std::vector<Aufenthalt>{{7, 1}, {7, 0}, {8, 2}, {8, 0}}));
    zusammenzaehlen(summe, lauf);
    EXPECT_EQ(summe.weg, (std::vector<Aufenthalt>{{7, 1}, {7, 0}, {8, 2}, {8, 0}, {8, 2}, {8, 0}}));
    zusammenzaehlen(summe, {});
    EXPECT_EQ(summe.weg.size(), 6U);
}

TEST(StreudatenTest, DerWegWaechstNichtUeberSeinMass) {
    Streudaten summe = rauschen(Streudaten::WEG_HOECHSTENS - 1);
    Streudaten lauf;
    lauf.weg = {{8, 2}};
    zusammenzaehlen(summe, lauf);
    EXPECT_EQ(summe.weg.size(), Streudaten::WEG_HOECHSTENS);
    EXPECT_EQ(summe.weg.back(), (Aufenthalt{8, 2}));
    EXPECT_EQ(summe.weg[Streudaten::WEG_HOECHSTENS - 2].takte, 0);
}
