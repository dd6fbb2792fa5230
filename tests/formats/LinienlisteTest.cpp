// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Linienliste.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

std::vector<std::string> texte(std::string_view gesammelt) {
    std::vector<std::string> alle;
    for (const auto& linie : linienliste(gesammelt))
        alle.push_back(linie.text());
    return alle;
}
using Texte = std::vector<std::string>;

} // namespace

TEST(LinienlisteTest, EineListeEndetMitIhrerMarke) {
    EXPECT_EQ(texte("27072;20000;"), (Texte{"27072", "20000", ""}));
    EXPECT_EQ(texte("27;"), (Texte{"27", ""}));
    EXPECT_EQ(texte("5;6;"), (Texte{"5", "6", ""}));
    EXPECT_EQ(texte(""), Texte{});
    EXPECT_TRUE(linienliste("27;").back().endmarke());
}

TEST(LinienlisteTest, EineEinzelneLinieVonEinerZifferBehaeltIhrSemikolon) {
    EXPECT_EQ(texte("5;"), Texte{"5;"});
    EXPECT_EQ(fehlernummer([] { linienliste("5;").front().wert(); }), 13);
}

TEST(LinienlisteTest, EineLinieIstEineZahlOderEinFehlerWoSieGefragtWird) {
    EXPECT_EQ(Linie("-5").wert(), -5);
    EXPECT_EQ(fehlernummer([] { Linie("").wert(); }), 13);
    EXPECT_EQ(fehlernummer([] { Linie("99999999999").wert(); }), 6);
}

TEST(LinienlisteTest, AnhaengenSchliesstJedeLinieAb) {
    std::string gesammelt;
    linieAnhaengen(gesammelt, 27072);
    linieAnhaengen(gesammelt, -5);
    EXPECT_EQ(gesammelt, "27072;-5;");
}
