// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/buttons/Wiederholung.h"

#include "tests/engine/run/Probetasten.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Texte = std::vector<std::string>;

struct WiederholungTest : testing::Test, Probetasten {
    WiederholungTest() { wiederholung.intervall(30ms); }

    /// Enters one key for each of `anzahl` slots from 0 on, key code 100 + slot.
    void halten(int anzahl) {
        for (int slot = 0; slot < anzahl; ++slot)
            gehaltene.aufnehmen(Halteeintrag::aus(slot, Feld(100 + slot)));
    }
    Texte plaetze() const {
        Texte texte;
        for (std::size_t platz = 0; platz < wiederholstand.WiederholSlots.size(); ++platz)
            texte.push_back(inhalt(platz));
        return texte;
    }
    /// A place as it would stand in the list; "" for an empty one.
    std::string inhalt(std::size_t platz) const {
        const auto& eintrag = wiederholstand.WiederholSlots[platz];
        return eintrag ? eintrag->text() + "," : "";
    }
};

TEST_F(WiederholungTest, NeueEintraegeKommenAufIhrenPlatzDerListe) {
    halten(2);
    wiederholung.WiederholungPruefen();
    auto erwartet = Texte(21);
    erwartet[0] = "0-100,";
    erwartet[1] = "1-101,";
    EXPECT_EQ(plaetze(), erwartet);
    EXPECT_EQ(wiederholstand.GehaltenTextAlt, "0-100,1-101,");
}

TEST_F(WiederholungTest, SechzehnPlaetzeHabenEinenTimer) {
    halten(18);
    wiederholung.WiederholungPruefen();
    EXPECT_EQ(inhalt(16), "16-116,");
    EXPECT_EQ(inhalt(17), "17-117,");
    warten(30);
    EXPECT_EQ(eingabe.texteAbholen(),
              (Texte{"+100", "+101", "+102", "+103", "+104", "+105", "+106", "+107", "+108", "+109", "+110",
                     "+111", "+112", "+113", "+114", "+115"}));
}

TEST_F(WiederholungTest, MehrEintraegeAlsPlaetzeSchadenNicht) {
    halten(25);
    wiederholung.WiederholungPruefen();
    EXPECT_EQ(inhalt(20), "20-120,");
}

TEST_F(WiederholungTest, EinNeuerEintragHaeltDieAnderenNichtAuf) {
    halten(1);
    wiederholung.WiederholungPruefen();
    warten(20);
    halten(2);
    wiederholung.WiederholungPruefen();
    warten(10);
    EXPECT_EQ(eingabe.texteAbholen(), Texte{"+100"});
    warten(20);
    EXPECT_EQ(eingabe.texteAbholen(), Texte{"+101"});
}

TEST_F(WiederholungTest, StoppenNimmtDenErstenPlatzDesSlots) {
    wiederholstand.WiederholSlots[3] = Halteeintrag::aus(2, Feld(65));
    wiederholstand.WiederholSlots[5] = Halteeintrag::aus(2, Feld(66));
    wiederholung.WiederholungStoppen(2);
    EXPECT_EQ(inhalt(3), "");
    EXPECT_EQ(inhalt(5), "2-66,");
}

TEST_F(WiederholungTest, StoppenVergleichtDenGanzenSlot) {
    wiederholstand.WiederholSlots[3] = Halteeintrag::aus(12, Feld(65));
    wiederholung.WiederholungStoppen(2);
    wiederholung.WiederholungStoppen(1);
    EXPECT_EQ(inhalt(3), "12-65,");
}

TEST_F(WiederholungTest, StoppenSiehtPlatz20NichtAn) {
    wiederholstand.WiederholSlots[19] = Halteeintrag::aus(8, Feld(65));
    wiederholstand.WiederholSlots[20] = Halteeintrag::aus(9, Feld(66));
    wiederholung.WiederholungStoppen(8);
    wiederholung.WiederholungStoppen(9);
    EXPECT_EQ(inhalt(19), "");
    EXPECT_EQ(inhalt(20), "9-66,");
}

TEST_F(WiederholungTest, LeerenLaesstPlatz20) {
    wiederholstand.WiederholSlots.fill(Halteeintrag::aus(2, Feld(65)));
    wiederholung.slotsLeeren();
    auto erwartet = Texte(21);
    erwartet[20] = "2-65,";
    EXPECT_EQ(plaetze(), erwartet);
}

TEST_F(WiederholungTest, GeleertWirdNurWennPlatz0BelegtIst) {
    wiederholstand.WiederholSlots[1] = Halteeintrag::aus(2, Feld(65));
    wiederholung.slotsLeeren();
    EXPECT_EQ(inhalt(1), "2-65,");
}

TEST_F(WiederholungTest, UeberLeeremPlatzLaeuftDerTimerStillWeiter) {
    halten(1);
    wiederholung.WiederholungPruefen();
    wiederholung.slotsLeeren();
    warten(100);
    EXPECT_EQ(eingabe.texteAbholen(), Texte{});
    wiederholstand.WiederholSlots[0] = Halteeintrag::aus(7, Feld(77));
    warten(20);
    EXPECT_EQ(eingabe.texteAbholen(), Texte{"+77"});
}

TEST_F(WiederholungTest, IntervallNullSchweigtUndBleibtAn) {
    wiederholung.intervall(0ms);
    halten(1);
    wiederholung.WiederholungPruefen();
    EXPECT_EQ(inhalt(0), "0-100,");
    EXPECT_EQ(uhr.laufende(), 0U);
    warten(1000);
    EXPECT_EQ(eingabe.texteAbholen(), Texte{});
}

TEST_F(WiederholungTest, WasAlsTextImAltenStehtIstNichtNeu) {
    wiederholstand.GehaltenTextAlt = "10-1001,";
    halten(1);
    wiederholung.WiederholungPruefen();
    EXPECT_EQ(inhalt(0), "");
    EXPECT_EQ(wiederholstand.GehaltenTextAlt, "0-100,");
}

TEST_F(WiederholungTest, EinLeererTextIstKeinEintrag) {
    wiederholstand.GehaltenTextAlt = "2-65,";
    wiederholung.WiederholungPruefen();
    EXPECT_EQ(plaetze(), Texte(21));
    EXPECT_EQ(wiederholstand.GehaltenTextAlt, "");
}

} // namespace
