// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Halteliste.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

TEST(HaltelisteTest, EinEintragIstSlotUndTaste) {
    EXPECT_EQ(haltetext({}), "");
    EXPECT_EQ(haltetext({Halteeintrag::aus(2, Feld("65")), Halteeintrag::aus(12, Feld("0"))}), "2-65,12-0,");
    EXPECT_EQ(Halteeintrag::aus(2, Feld("65")).taste, 65);
}

TEST(HaltelisteTest, DieTasteBehaeltIhreSchreibweise) {
    const auto eintrag = Halteeintrag::aus(2, Feld(" 065"));
    EXPECT_EQ(eintrag.taste, 65);
    EXPECT_EQ(eintrag.text(), "2- 065");
    EXPECT_NE(eintrag, Halteeintrag::aus(2, Feld("65"))) << "both may stand in the list";
}

TEST(HaltelisteTest, WasKeineTasteIstWirdKeinEintrag) {
    EXPECT_EQ(fehlernummer([] { Halteeintrag::aus(2, Feld("x")); }), 13);
    EXPECT_EQ(fehlernummer([] { Halteeintrag::aus(2, Feld("")); }), 13);
    EXPECT_EQ(fehlernummer([] { Halteeintrag::aus(2, Feld()); }), 13) << "a field that no text has filled";
    EXPECT_EQ(fehlernummer([] { Halteeintrag::aus(2, Feld("32768")); }), 6);
    EXPECT_EQ(fehlernummer([] { Halteeintrag::aus(2, Feld("-1")); }), 6);
    EXPECT_EQ(Halteeintrag::aus(2, Feld("32767")).taste, 32767);
}

TEST(HaltelisteTest, EinSlotKommtAuchAlsEndeEinesAnderenVor) {
    EXPECT_TRUE(slotKommtVor("12-65,", 12));
    EXPECT_TRUE(slotKommtVor("12-65,", 2));
    EXPECT_FALSE(slotKommtVor("12-65,", 1));
    EXPECT_FALSE(slotKommtVor("", 2));
}

TEST(HaltelisteTest, EinEintragKommtAuchAlsTeilEinesAnderenVor) {
    const auto eintrag = Halteeintrag::aus(2, Feld("65"));
    EXPECT_TRUE(eintragKommtVor("7-32,2-65,", eintrag));
    EXPECT_TRUE(eintragKommtVor("12-65,", eintrag));
    EXPECT_TRUE(eintragKommtVor("2-651,", eintrag));
    EXPECT_FALSE(eintragKommtVor("2-6,5-2,", eintrag));
}
