// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Felder.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;
using Stuecke = std::vector<std::string_view>;

TEST(Zerlegen, TeiltAnJedemTrenner) {
    EXPECT_EQ(zerlegen("1,65,0-0-0", ','), (Stuecke{"1", "65", "0-0-0"}));
    EXPECT_EQ(zerlegen("65", ','), (Stuecke{"65"}));
}

TEST(Zerlegen, LeereStueckeZaehlen) {
    EXPECT_EQ(zerlegen(",", ','), (Stuecke{"", ""}));
    EXPECT_EQ(zerlegen("2-65,", ','), (Stuecke{"2-65", ""}));
    EXPECT_EQ(zerlegen(",,1", ','), (Stuecke{"", "", "1"}));
}

TEST(Zerlegen, LeererTextHatKeinStueck) {
    EXPECT_EQ(zerlegen("", ','), Stuecke{});
}

TEST(Davor, GibtDenTextBisZumErstenTrenner) {
    EXPECT_EQ(davor("12-65,", '-'), "12");
    EXPECT_EQ(davor("12--65", '-'), "12");
    EXPECT_EQ(davor("-65", '-'), "");
    EXPECT_EQ(davor("12", '-'), "12");
    EXPECT_EQ(davor("", '-'), "");
}

TEST(Feldzahl, LiestZweiunddreissigBit) {
    EXPECT_EQ(feldzahl("0"sv), 0);
    EXPECT_EQ(feldzahl("-1"sv), -1);
    EXPECT_EQ(feldzahl("2147483647"sv), 2147483647);
    EXPECT_EQ(feldzahl("-2147483648"sv), -2147483647 - 1);
    EXPECT_EQ(feldzahl("000000000000065"sv), 65);
}

TEST(Feldzahl, UeberlaufIstFehler6) {
    EXPECT_EQ(fehlernummer([] { feldzahl("2147483648"sv); }), 6);
    EXPECT_EQ(fehlernummer([] { feldzahl("-2147483649"sv); }), 6);
    EXPECT_EQ(fehlernummer([] { feldzahl("99999999999999999999"sv); }), 6);
}

TEST(Feldzahl, LeerzeichenAussenZaehlenNicht) {
    EXPECT_EQ(feldzahl(" 65"sv), 65);
    EXPECT_EQ(feldzahl("65  "sv), 65);
    EXPECT_EQ(feldzahl("  -5 "sv), -5);
}

TEST(Feldzahl, AllesAndereIstFehler13) {
    for (const auto* text : {"", " ", "x", "1x", "x1", "1 2", "--1", "-", "1,0", "0x10", "\t1"})
        EXPECT_EQ(fehlernummer([text] { feldzahl(std::string_view{text}); }), 13) << '"' << text << '"';
}

TEST(Feld, UngefuelltesIstNullUndLeer) {
    EXPECT_EQ(Feld{}.zahl(), 0);
    EXPECT_EQ(Feld{}.text(), "");
    EXPECT_FALSE(Feld{}.da());
    EXPECT_FALSE(Feld{}.ist(0));
}

TEST(Feld, GefuelltesGibtSeinenInhalt) {
    EXPECT_EQ(Feld{" 65"}.zahl(), 65);
    EXPECT_EQ(Feld{" 65"}.text(), " 65");
    EXPECT_EQ(fehlernummer([] { Feld{""}.zahl(); }), 13);
    EXPECT_EQ(fehlernummer([] { Feld{"2147483648"}.zahl(); }), 6);
    EXPECT_TRUE(Feld{""}.da());
    EXPECT_EQ(Feld{-65}.text(), "-65");
    EXPECT_EQ(Feld{-65}, Feld{"-65"});
}

TEST(Feld, EineZahlIstEsWieImmerSieGeschriebenIst) {
    for (const auto* text : {"1", " 1", "01"})
        EXPECT_TRUE(Feld{text}.ist(1)) << text;
    for (const auto* text : {"", "x", "2", "11"})
        EXPECT_FALSE(Feld{text}.ist(1)) << text;
    EXPECT_FALSE(Feld{"x"}.ist(0));
}

TEST(Feld, EineZifferIstEsNurAllein) {
    EXPECT_EQ(Feld{"1"}.ziffer(), 1);
    for (const auto* text : {"", " ", "x", "-", " 1", "01", "10"})
        EXPECT_EQ(Feld{text}.ziffer(), std::nullopt) << text;
    EXPECT_EQ(Feld{}.ziffer(), std::nullopt);
}

} // namespace
