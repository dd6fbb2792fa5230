// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/slider/Schubzahlen.h"
#include "formats/Schubtext.h"

#include <gtest/gtest.h>

// --- numbers ---

TEST(SchubzahlenTest, NurZiffernBisZumGroesstenWertGehenInDenText) {
    for (const auto* text : {"0", "1", "007", "2147483647", " 5 ", "00000000000000000000000000001"})
        EXPECT_EQ(zahlPruefen(text), Zahlbefund::Gut) << text;
    for (const auto* text : {"-1", "+1", "1,5", "1.5", "-1,5", "5.", ",5", "2147483648", "99999999999999"})
        EXPECT_EQ(zahlPruefen(text), Zahlbefund::PasstNicht) << text;
    for (const auto* text : {"",    " ",   "-",     "+",   ",",   ".",   "(",  ")",    "/",   "1(",
                             "(1)", "1-2", "1,2,3", "--1", "1/2", "abc", "1a", "0x10", "1 2", "１"})
        EXPECT_EQ(zahlPruefen(text), Zahlbefund::KeineZahl) << text;
}

// What zahlPruefen lets through comes back from the text as it went in, in whatever place it stands.
TEST(SchubzahlenTest, WasAlsZahlGiltBringtDenTextNichtDurcheinander) {
    std::string zeichen = "019-+,.()/ x";
    std::vector<std::string> texte{""};
    for (int laenge = 0; laenge < 3; ++laenge) {
        const auto bisher = texte;
        for (const auto& text : bisher)
            for (const char eines : zeichen)
                texte.push_back(text + eines);
    }
    int gute = 0;
    for (const auto& text : texte) {
        if (zahlPruefen(text) != Zahlbefund::Gut)
            continue;
        ++gute;
        for (std::size_t platz = 0; platz < 3; ++platz) {
            Schubaktion aktion{Schubart::Tastatur, "1", {}};
            aktion.werte[platz] = text;
            Schubtext fertig;
            fertig.satzSetzen(0, alsSatz(1, aktion));
            const Schubtext gelesen(fertig.text(true));
            EXPECT_EQ(aktionAus(gelesen.satz(0)), aktion) << "\"" << text << "\"";
            EXPECT_EQ(gelesen.felder(), 1);
        }
    }
    EXPECT_GT(gute, 3 + 9 + 27);
}

// --- places ---

TEST(SchubzahlenTest, DieLinienTeilenDasBildInGleicheFelder) {
    EXPECT_EQ(linienstelle(1, 1, 600), 300);
    EXPECT_EQ(linienstelle(1, 19, 600), 30);
    EXPECT_EQ(linienstelle(19, 19, 600), 570);
    EXPECT_EQ(schubstelle(0, 600), 0);
    EXPECT_EQ(schubstelle(13107, 600), 120); // a fifth
    EXPECT_EQ(schubstelle(65535, 600), 600);
}

// The picture shows the field whose action a run starts.
TEST(SchubzahlenTest, DasFeldIstInJedemBildDasDesLaufs) {
    for (const int breite : {1, 601, 676})
        for (int felder = 1; felder <= 20; ++felder)
            for (std::int32_t wert = 0; wert < 65535; ++wert)
                ASSERT_EQ(feldAnStelle(schubstelle(wert, breite), felder - 1, breite),
                          static_cast<std::int64_t>(wert) * felder / 65535 + 1)
                    << wert << " of " << felder << " fields, " << breite << " pixels";
    EXPECT_EQ(feldAnStelle(schubstelle(65535, 600), 3, 600), 4) << "the end lies right of all lines";
}
