// SPDX-License-Identifier: GPL-3.0-or-later
// Reading many values on one state of the file.
#include "store/db/Datenbank.h"
#include "tests/hilfen/Speicherzaehler.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

class Lesezug : public testing::Test {
protected:
    Lesezug() {
        datei.sql(
            "DELETE FROM tblKeyCode; INSERT INTO tblKeyCode (Keyc, Keye) VALUES (7000, 'A'), (7001, 'B')");
    }

    Recordset satz() { return datenbank.OpenRecordset("SELECT * FROM tblKeyCode WHERE (Keyc)= 7000;"); }
    std::string name(const Recordset& eine) { return alsText(eine.get_Value("Keye")); }

    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
};

TEST_F(Lesezug, LiestWasDasteht) {
    std::string gelesen;
    datenbank.inEinemLesezug([&] {
        const auto eine = satz();
        gelesen = alsText(eine.get_Value("Keyc")) + name(eine);
    });
    EXPECT_EQ(gelesen, "7000A");
}

TEST_F(Lesezug, SiehtNichtWasAndereInzwischenSchreibenWollen) {
    datenbank.inEinemLesezug([&] {
        const auto eine = satz();
        EXPECT_EQ(name(eine), "A");
        EXPECT_THROW(datei.sql("UPDATE tblKeyCode SET Keye = 'X' WHERE Keyc = 7000"), std::runtime_error);
        EXPECT_EQ(name(eine), "A");
    });
}

TEST_F(Lesezug, DanachWirdWiederLebendGelesen) {
    auto eine = satz();
    datenbank.inEinemLesezug([&] { EXPECT_EQ(name(eine), "A"); });
    datei.sql("UPDATE tblKeyCode SET Keye = 'X' WHERE Keyc = 7000");
    EXPECT_EQ(name(eine), "X");
    datenbank.inEinemLesezug([&] { EXPECT_EQ(name(eine), "X"); });
}

TEST_F(Lesezug, DerNaechsteSiehtWasZwischenBeidenGeschriebenWurde) {
    auto eine = satz();
    datenbank.inEinemLesezug([&] { EXPECT_EQ(name(eine), "A"); });
    datei.sql("UPDATE tblKeyCode SET Keye = 'X' WHERE Keyc = 7000");
    datenbank.inEinemLesezug([&] { EXPECT_EQ(name(eine), "X"); });
}

TEST_F(Lesezug, JedeZeileHatIhreEigenenWerte) {
    std::string gelesen;
    datenbank.inEinemLesezug([&] {
        auto alle = datenbank.OpenRecordset("SELECT * FROM tblKeyCode WHERE (Keyc)> 6999;");
        for (; !alle.get_EOF(); alle.MoveNext())
            gelesen += name(alle) + name(alle);
        alle.MoveFirst();
        gelesen += name(alle);
    });
    EXPECT_EQ(gelesen, "AABBA");
}

TEST_F(Lesezug, WasNichtGenanntIstLiestSichTrotzdem) {
    std::string gelesen;
    datenbank.inEinemLesezug([&] {
        auto alle = datenbank.OpenRecordset("SELECT * FROM tblKeyCode WHERE (Keyc)> 6999;", {"KEYE"});
        for (; !alle.get_EOF(); alle.MoveNext())
            gelesen += name(alle);
        alle.MoveFirst();
        gelesen += alsText(alle.get_Value("Keyc")) + name(alle);
        alle.MoveNext();
        gelesen += name(alle) + alsText(alle.get_Value("Keyc"));
    });
    EXPECT_EQ(gelesen, "AB7000AB7001");
}

TEST_F(Lesezug, NurWasGenanntIstKommtMitDerSuche) {
    constexpr int ZEILEN = 100;
    for (int i = 0; i < ZEILEN; ++i)
        datei.sql("INSERT INTO tblKeyCode VALUES (" + std::to_string(8000 + i) +
                  ", 'ein Text, der einen Ort im Speicher braucht, " + std::to_string(i) + "')");
    const auto anforderungen = [&](std::initializer_list<std::string_view> spalten) {
        const long vorher = speicheranforderungen();
        const auto alle = datenbank.OpenRecordset("tblKeyCode", spalten);
        return speicheranforderungen() - vorher;
    };
    datenbank.inEinemLesezug([&] {
        anforderungen({}); // what is kept of the table
        EXPECT_GT(anforderungen({}), anforderungen({"Keyc"}) + ZEILEN / 2) << "some are for the set itself";
        EXPECT_THROW(anforderungen({"Keyc", "Nirgends"}), LaufzeitFehler);
    });
}

TEST_F(Lesezug, TexteBeliebigerLaengeLesenSichWieAlleAnderen) {
    constexpr int ZEILEN = 40;
    constexpr int LAENGE = 900'000; // more in all than is kept of a set
    for (int i = 0; i < ZEILEN; ++i)
        datei.sql("INSERT INTO tblKeyCode VALUES (" + std::to_string(8000 + i) + ", '" + std::to_string(i) +
                  std::string(LAENGE, 'x') + "')");
    std::string gelesen;
    datenbank.inEinemLesezug([&] {
        auto alle = datenbank.OpenRecordset("SELECT * FROM tblKeyCode WHERE (Keyc)> 7999;");
        for (int runde = 0; runde < 2; ++runde)
            for (alle.MoveFirst(); !alle.get_EOF(); alle.MoveNext()) {
                const auto text = name(alle);
                const auto zahl = std::to_string(text.size() - LAENGE);
                gelesen += zahl + text.substr(0, text.size() - LAENGE);
            }
    });
    std::string erwartet;
    for (int runde = 0; runde < 2; ++runde)
        for (int i = 0; i < ZEILEN; ++i)
            erwartet += (i < 10 ? "1" : "2") + std::to_string(i);
    EXPECT_EQ(gelesen, erwartet);
}

TEST_F(Lesezug, HinterEinerGeloeschtenZeileStehtJedeAnIhremPlatz) {
    datei.sql("INSERT INTO tblKeyCode (Keyc, Keye) VALUES (7002, 'C')");
    auto alle = datenbank.OpenRecordset("SELECT * FROM tblKeyCode WHERE (Keyc)> 6999;");
    alle.Delete();
    std::string gelesen;
    datenbank.inEinemLesezug([&] {
        alle.MoveNext();
        gelesen += name(alle);
        alle.MoveFirst();
        alle.MoveNext();
        gelesen += name(alle);
    });
    EXPECT_EQ(gelesen, "BC");
}

TEST_F(Lesezug, SchreibenIstEinFehlerUndAendertNichts) {
    datenbank.inEinemLesezug([&] {
        auto eine = satz();
        eine.Edit();
        eine.put_Value("Keye", std::string("X"));
        EXPECT_EQ(fehlernummer([&] { eine.Update(); }), 3034);
        EXPECT_EQ(fehlernummer([&] { datenbank.inEinerTransaktion([] {}); }), 3034);
    });
    EXPECT_EQ(datei.zeilen("SELECT Keye FROM tblKeyCode WHERE Keyc = 7000"), (Tabellenbild{{"A"}}));
}

TEST_F(Lesezug, InEinerTransaktionBeginntKeiner) {
    EXPECT_EQ(fehlernummer([&] { datenbank.inEinerTransaktion([&] { datenbank.inEinemLesezug([] {}); }); }),
              3034);
}

TEST_F(Lesezug, NachEinerAusnahmeIstDieDateiFrei) {
    EXPECT_THROW(datenbank.inEinemLesezug([&] {
        name(satz());
        throw std::runtime_error("Unfug");
    }),
                 std::runtime_error);
    EXPECT_NO_THROW(datei.sql("UPDATE tblKeyCode SET Keye = 'X' WHERE Keyc = 7000"));
    EXPECT_NO_THROW(datenbank.inEinerTransaktion([] {}));
}

TEST_F(Lesezug, EineGesperrteDateiIstEinFehler) {
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN EXCLUSIVE");
    EXPECT_EQ(fehlernummer([&] { datenbank.inEinemLesezug([&] { name(satz()); }); }), 3218);
}

} // namespace
