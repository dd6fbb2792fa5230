// SPDX-License-Identifier: GPL-3.0-or-later
// Key names: found, not found, and the statement that fails.
#include "store/schema/modKeyCode.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

TEST(KeyCodeSuchen, FindetDenNamenZumCode) {
    const Testdatenbank datei;
    EXPECT_EQ(KeyCodeSuchen(datei.pfad(), 0, "9"), "Tab");
    EXPECT_EQ(KeyCodeSuchen(datei.pfad(), 0, "222"), "Ä");
}

TEST(KeyCodeSuchen, FindetDenCodeZumNamen) {
    const Testdatenbank datei;
    EXPECT_EQ(KeyCodeSuchen(datei.pfad(), 1, "Tab"), "9");
    EXPECT_EQ(KeyCodeSuchen(datei.pfad(), -1, "Ä"), "222");
}

TEST(KeyCodeSuchen, EinCodeOhneZeileHatEinenLeerenNamen) {
    const Testdatenbank datei;
    for (const std::string code : {"0", "999", "", "x", "09", "9 "})
        EXPECT_EQ(KeyCodeSuchen(datei.pfad(), 0, code), "") << code;
}

TEST(KeyCodeSuchen, NimmtDenNamenDenDieTabelleHat) {
    const Testdatenbank datei;
    datei.sql("UPDATE tblKeyCode SET Keye = ' Tabulator ' WHERE Keyc = '9'; INSERT INTO tblKeyCode VALUES "
              "('0', 'x')");
    EXPECT_EQ(KeyCodeSuchen(datei.pfad(), 0, "9"), " Tabulator ");
    EXPECT_EQ(KeyCodeSuchen(datei.pfad(), 0, "0"), "x");
}

TEST(KeyCodeSuchen, EineAnweisungDieScheitertGibtDenCodeZurueckOderWirft) {
    const Testdatenbank datei;
    EXPECT_EQ(KeyCodeSuchen(datei.pfad(), 0, "9'"), "9'");
    EXPECT_EQ(fehlernummer([&] { KeyCodeSuchen(datei.pfad(), 1, "Tab'"); }), 3075);
    datei.sql("DROP TABLE tblKeyCode");
    EXPECT_EQ(KeyCodeSuchen(datei.pfad(), 0, "9"), "9");
    EXPECT_EQ(fehlernummer([&] { KeyCodeSuchen(datei.pfad(), 1, "Tab"); }), 3078);
}

TEST(KeyCodeSuchen, EinNameDerSichNichtLesenLaesstIstLeer) {
    const Testdatenbank datei;
    datei.sql("ALTER TABLE tblKeyCode RENAME COLUMN Keye TO Name");
    EXPECT_EQ(KeyCodeSuchen(datei.pfad(), 0, "9"), "");
}

TEST(KeyCodeSuchen, EinNameOhneZeileBeendetDieSuche) {
    const Testdatenbank datei;
    EXPECT_EQ(fehlernummer([&] { KeyCodeSuchen(datei.pfad(), 1, "tab"); }), 3021);
}

TEST(KeyCodeSuchen, OhneDatenbankGibtEsKeineSuche) {
    const Testordner ordner;
    for (const int richtung : {0, 1})
        EXPECT_EQ(fehlernummer([&] { KeyCodeSuchen((ordner.pfad() / "x").string(), richtung, "9"); }), 3024);
}

TEST(TastennamenLesen, GibtJedemCodeSeinenNamen) {
    const Testdatenbank datei;
    datei.sql(
        "DELETE FROM tblKeyCode; INSERT INTO tblKeyCode VALUES ('65', 'A'), ('32', 'Leertaste'), ('7', '')");
    EXPECT_EQ(TastennamenLesen(datei.pfad()),
              (std::map<std::string, std::string>{{"65", "A"}, {"32", "Leertaste"}, {"7", ""}}));
    datei.sql("DELETE FROM tblKeyCode");
    EXPECT_TRUE(TastennamenLesen(datei.pfad()).empty());
}

TEST(TastennamenLesen, OhneDatenbankGibtEsKeine) {
    EXPECT_THROW(TastennamenLesen("/gibt/es/nicht.twk"), LaufzeitFehler);
}
