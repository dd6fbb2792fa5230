// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures by name, whatever the case of their letters, and never outside of their folder.
#include "store/files/Bilddatei.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

TEST(Bilddateien, FindetOhneRuecksichtAufGrossUndKlein) {
    const Testordner ordner;
    for (const std::string name : {"S0L.BMP", "größe0l.bmp", "joy2.bmp"})
        dateiSchreiben(ordner.pfad() / name, name);
    EXPECT_THAT(bilddateien(ordner.pfad(), "S0L.bmp"), ElementsAre(ordner.pfad() / "S0L.BMP"));
    EXPECT_THAT(bilddateien(ordner.pfad(), "GRÖßE0L.bmp"), ElementsAre(ordner.pfad() / "größe0l.bmp"));
    EXPECT_THAT(bilddateien(ordner.pfad(), "Joy2.bmp"), ElementsAre(ordner.pfad() / "joy2.bmp"));
    for (const std::string name :
         {"S1L.bmp", "S0L", "S0L.bmp ", "?0L.bmp", "S*.bmp", "×0L.bmp", "÷0L.bmp", ""})
        EXPECT_THAT(bilddateien(ordner.pfad(), name), IsEmpty()) << name;
}

TEST(Bilddateien, FaltetNurBuchstaben) {
    const Testordner ordner;
    dateiSchreiben(ordner.pfad() / "÷.bmp", ""); // lies where the small × would
    dateiSchreiben(ordner.pfad() / "þ.bmp", "");
    dateiSchreiben(ordner.pfad() / "{.bmp", "");
    EXPECT_THAT(bilddateien(ordner.pfad(), "×.bmp"), IsEmpty());
    EXPECT_THAT(bilddateien(ordner.pfad(), "[.bmp"), IsEmpty());
    EXPECT_THAT(bilddateien(ordner.pfad(), "Þ.BMP"), ElementsAre(ordner.pfad() / "þ.bmp"));
}

TEST(Bilddateien, EinNameMitTrennerVerlaesstDenOrdnerNicht) {
    const Testordner ordner;
    fs::create_directories(ordner.pfad() / "Bilder" / "tief");
    for (const std::string wo : {"x0L.bmp", "Bilder/tief/x0L.bmp", "Bilder/..0L.bmp"})
        dateiSchreiben(ordner.pfad() / wo, "");
    const auto bilder = ordner.pfad() / "Bilder";
    for (const std::string name :
         {"../x0L.bmp", "..\\x0L.bmp", "tief/x0L.bmp", "tief\\x0L.bmp", "./..0L.bmp"})
        EXPECT_THAT(bilddateien(bilder, name), IsEmpty()) << name;
    EXPECT_THAT(bilddateien(bilder, (ordner.pfad() / "x0L.bmp").string()), IsEmpty());
    EXPECT_THAT(bilddateien(bilder, "..0L.bmp"), ElementsAre(bilder / "..0L.bmp"));
}

TEST(Bilddateien, OrdnerSindKeineBilderUndEinFehlenderOrdnerHatKeine) {
    const Testordner ordner;
    fs::create_directory(ordner.pfad() / "S0L.bmp");
    EXPECT_THAT(bilddateien(ordner.pfad(), "S0L.bmp"), IsEmpty());
    EXPECT_THAT(bilddateien(ordner.pfad() / "fehlt", "S0L.bmp"), IsEmpty());
    dateiSchreiben(ordner.pfad() / "datei", "");
    EXPECT_THAT(bilddateien(ordner.pfad() / "datei", "S0L.bmp"), IsEmpty());
}

TEST(Bilddateien, GeschriebenWirdUnterDemNamenDerDaLiegt) {
    const Testordner ordner;
    EXPECT_TRUE(bilddateiSchreiben(ordner.pfad(), "S0L.BMP", "eins"));
    EXPECT_EQ(dateiLesen(ordner.pfad() / "S0L.BMP"), "eins");
    fs::rename(ordner.pfad() / "S0L.BMP", ordner.pfad() / "s0l.bmp");
    EXPECT_TRUE(bilddateiSchreiben(ordner.pfad(), "S0L.BMP", "zwei"));
    EXPECT_EQ(dateiLesen(ordner.pfad() / "s0l.bmp"), "zwei");
    EXPECT_THAT(namenIn(ordner.pfad()), ElementsAre("s0l.bmp"));
}

TEST(Bilddateien, AlleGleichenNamensWerdenDasselbeBild) {
    const Testordner ordner;
    for (const char* name : {"S0L.BMP", "s0l.bmp"})
        dateiSchreiben(ordner.pfad() / name, "alt");
    EXPECT_TRUE(bilddateiSchreiben(ordner.pfad(), "S0L.bmp", "neu"));
    for (const char* name : {"S0L.BMP", "s0l.bmp"})
        EXPECT_EQ(dateiLesen(ordner.pfad() / name), "neu");
}

TEST(Bilddateien, WasSichNichtSchreibenLaesstBleibt) {
    const Testordner ordner;
    fs::create_directory(ordner.pfad() / "Bilder");
    dateiSchreiben(ordner.pfad() / "S0L.BMP", "alt");
    EXPECT_FALSE(bilddateiSchreiben(ordner.pfad() / "Bilder", "../S0L.BMP", "neu"));
    EXPECT_FALSE(bilddateiSchreiben(ordner.pfad() / "Bilder", "..\\S0L.BMP", "neu"));
    EXPECT_FALSE(bilddateiSchreiben(ordner.pfad() / "fehlt", "S0L.BMP", "neu"));
    fs::permissions(ordner.pfad() / "S0L.BMP", fs::perms{0444});
    EXPECT_FALSE(bilddateiSchreiben(ordner.pfad(), "s0l.bmp", "neu"));
    EXPECT_EQ(dateiLesen(ordner.pfad() / "S0L.BMP"), "alt");
    EXPECT_THAT(namenIn(ordner.pfad() / "Bilder"), IsEmpty());
}

TEST(Bilddateien, ZweiTauschenDenPlatzUndEineAlleinNimmtDenAnderen) {
    const Testordner ordner;
    dateiSchreiben(ordner.pfad() / "s0l.bmp", "eins");
    dateiSchreiben(ordner.pfad() / "S1R.BMP", "zwei");
    EXPECT_TRUE(bilddateienTauschen(ordner.pfad(), "S0L.BMP", "S1R.BMP"));
    EXPECT_EQ(dateiLesen(ordner.pfad() / "s0l.bmp"), "zwei");
    EXPECT_EQ(dateiLesen(ordner.pfad() / "S1R.BMP"), "eins");
    EXPECT_TRUE(bilddateienTauschen(ordner.pfad(), "S1R.BMP", "S2L.BMP"));
    EXPECT_EQ(dateiLesen(ordner.pfad() / "S2L.BMP"), "eins");
    EXPECT_TRUE(bilddateienTauschen(ordner.pfad(), "S1R.BMP", "S2L.BMP"));
    EXPECT_EQ(dateiLesen(ordner.pfad() / "S1R.BMP"), "eins");
    EXPECT_FALSE(bilddateienTauschen(ordner.pfad(), "S2L.BMP", "S2R.BMP")) << "neither is there";
    EXPECT_FALSE(bilddateienTauschen(ordner.pfad(), "S1R.BMP", "../S2R.BMP"));
    EXPECT_EQ(namenIn(ordner.pfad()).size(), 2U);
}
