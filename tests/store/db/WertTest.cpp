// SPDX-License-Identifier: GPL-3.0-or-later
// Values: what each kind of column takes, at the limits of its width.
#include "store/db/Datenbank.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <cstdint>

using testing::ElementsAre;

namespace {

class Wertspalte : public testing::Test {
protected:
    Wertspalte() {
        datei.sql("INSERT INTO tblTastatur (Schemaname, Funktion, btn1) VALUES ('S', 5, 'alt');"
                  "INSERT INTO tblStick (Schemaname, \"index\", Links) VALUES ('S', 1, 5)");
    }

    struct Ergebnis {
        int fehler;
        std::string gespeichert;
        bool operator==(const Ergebnis&) const = default;
    };

    /// Puts `wert` into a column whose old value is 5 or "alt" and stores it.
    Ergebnis schreiben(const std::string& tabelle, const std::string& spalte, const Wert& wert) {
        Recordset satz = datenbank.OpenRecordset(tabelle);
        satz.Edit();
        const int fehler = fehlernummer([&] { satz.put_Value(spalte, wert); });
        satz.Update();
        return {fehler, datei.zeilen("SELECT " + spalte + " FROM " + tabelle).at(0).at(0)};
    }
    Ergebnis schmal(const Wert& wert) { return schreiben("tblTastatur", "Funktion", wert); }
    Ergebnis breit(const Wert& wert) { return schreiben("tblStick", "Links", wert); }

    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
};

} // namespace

TEST_F(Wertspalte, SechzehnBitHaltenIhreGrenzenUndNichtsDahinter) {
    EXPECT_EQ(schmal(32768), (Ergebnis{6, "5"}));
    EXPECT_EQ(schmal(-32769), (Ergebnis{6, "5"}));
    EXPECT_EQ(schmal(70000), (Ergebnis{6, "5"}));
    EXPECT_EQ(schmal(INT64_MAX), (Ergebnis{6, "5"}));
    EXPECT_EQ(schmal(32767), (Ergebnis{0, "32767"}));
    EXPECT_EQ(schmal(-32768), (Ergebnis{0, "-32768"}));
    EXPECT_EQ(schmal(0), (Ergebnis{0, "0"}));
}

TEST_F(Wertspalte, ZweiunddreissigBitHaltenIhreGrenzenUndNichtsDahinter) {
    EXPECT_EQ(breit(2147483648), (Ergebnis{6, "5"}));
    EXPECT_EQ(breit(-2147483649), (Ergebnis{6, "5"}));
    EXPECT_EQ(breit(INT64_MIN), (Ergebnis{6, "5"}));
    EXPECT_EQ(breit(2147483647), (Ergebnis{0, "2147483647"}));
    EXPECT_EQ(breit(-2147483648), (Ergebnis{0, "-2147483648"}));
}

TEST_F(Wertspalte, DezimalerTextWirdZurZahl) {
    EXPECT_EQ(schmal("32767"), (Ergebnis{0, "32767"}));
    EXPECT_EQ(schmal("-7"), (Ergebnis{0, "-7"}));
    EXPECT_EQ(schmal("007"), (Ergebnis{0, "7"}));
    EXPECT_EQ(schmal("32768"), (Ergebnis{6, "7"}));
    EXPECT_EQ(schmal("99999999999999999999"), (Ergebnis{6, "7"}));
    EXPECT_THAT(datei.zeilen("SELECT typeof(Funktion) FROM tblTastatur"),
                ElementsAre(ElementsAre("integer")));
}

TEST_F(Wertspalte, AndererTextIstKeineZahl) {
    for (const std::string text :
         {"", " ", "x", "5x", " 5", "5 ", "+5", "1,5", "1.5", "1e3", "0x10", "-", "--5"})
        EXPECT_EQ(schmal(text), (Ergebnis{13, "5"})) << text;
}

TEST_F(Wertspalte, EineZahlWirdInEinerTextspalteText) {
    EXPECT_EQ(schreiben("tblTastatur", "btn1", -12), (Ergebnis{0, "-12"}));
    EXPECT_THAT(datei.zeilen("SELECT typeof(btn1) FROM tblTastatur"), ElementsAre(ElementsAre("text")));
}

TEST_F(Wertspalte, TexteKommenUnveraendertZurueck) {
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    for (const std::string& text : {std::string(), std::string(" "), std::string("ä 漢 '; -- \" \n"),
                                    std::string("a\0b", 3), std::string(100000, 'x'), std::string("007")}) {
        satz.Edit();
        satz.put_Value("btn1", text);
        satz.Update();
        EXPECT_EQ(satz.get_Value("btn1"), Wert(text));
    }
}

TEST_F(Wertspalte, NullGehtWoEineSpalteLeerSeinDarf) {
    EXPECT_EQ(schmal(Wert()), (Ergebnis{0, "NULL"}));
    EXPECT_EQ(schreiben("tblTastatur", "Programmpfad", Wert()), (Ergebnis{0, "NULL"}));
    Recordset satz = datenbank.OpenRecordset("tblStick");
    satz.Edit();
    satz.put_Value("Links", Wert());
    EXPECT_EQ(fehlernummer([&] { satz.Update(); }), 3314);
    EXPECT_EQ(satz.get_Value("Links"), Wert(5));
}

TEST_F(Wertspalte, EinAbgewiesenerWertLaesstDieAnderenStehen) {
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    satz.Edit();
    satz.put_Value("btn1", "neu");
    satz.put_Value("Funktion", 6);
    EXPECT_EQ(fehlernummer([&] { satz.put_Value("Funktion", 40000); }), 6);
    satz.Update();
    EXPECT_THAT(datei.zeilen("SELECT btn1, Funktion FROM tblTastatur"), ElementsAre(ElementsAre("neu", "6")));
}

TEST_F(Wertspalte, FremdeInhalteLesenSichAlsText) {
    datei.sql("UPDATE tblTastatur SET Funktion = 1.5, btn1 = x'6162', btn2 = x'', btn3 = 7.0");
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    EXPECT_EQ(satz.get_Value("Funktion"), Wert("1.5"));
    EXPECT_EQ(satz.get_Value("btn1"), Wert("ab"));
    EXPECT_EQ(satz.get_Value("btn2"), Wert(""));
    EXPECT_EQ(satz.get_Value("btn3"), Wert("7.0"));
}

TEST(Wert, AlsTextUndAlsZahl) {
    EXPECT_EQ(alsText(Wert()), "");
    EXPECT_EQ(alsText(Wert(-3)), "-3");
    EXPECT_EQ(alsText(Wert("ab")), "ab");
    EXPECT_EQ(alsZahl(Wert(-3)), -3);
    EXPECT_EQ(alsZahl(Wert("-9223372036854775808")), INT64_MIN);
    EXPECT_EQ(fehlernummer([] { alsZahl(Wert()); }), 13);
    EXPECT_EQ(fehlernummer([] { alsZahl(Wert("")); }), 13);
    EXPECT_EQ(fehlernummer([] { alsZahl(Wert("9223372036854775808")); }), 6);
    EXPECT_EQ(fehlernummer([] { alsZahl(Wert("9223372036854775808x")); }), 13);
}
