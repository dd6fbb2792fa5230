// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/buttons/TastenAktion.h"

#include "tests/engine/run/Probetasten.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

struct TastenAktionTest : testing::Test, Probetasten {
    Texte felder() const {
        Texte alle;
        for (const auto& feld : stand.Felder)
            alle.push_back(feld.da() ? feld.text() : "-");
        return alle;
    }
};

TEST_F(TastenAktionTest, ZerlegtInFuenfFelder) {
    aktion.BelegungZerlegen(Belegung("10,0,1-20-30"));
    EXPECT_EQ(felder(), (Texte{"10", "0", "1", "20", "30"}));
}

TEST_F(TastenAktionTest, NurDasLetzteStueckWirdAmStrichGeteilt) {
    aktion.BelegungZerlegen(Belegung("1-2,3-4,5-6"));
    EXPECT_EQ(felder(), (Texte{"1-2", "3-4", "5", "6", "-"}));
}

TEST_F(TastenAktionTest, FelderHinterDemLetztenBleiben) {
    aktion.BelegungZerlegen(Belegung("1,65,1-20-30"));
    aktion.BelegungZerlegen(Belegung("2,66"));
    EXPECT_EQ(felder(), (Texte{"2", "66", "1", "20", "30"}));
    aktion.BelegungZerlegen(Belegung("3"));
    EXPECT_EQ(felder(), (Texte{"3", "66", "1", "20", "30"}));
    aktion.BelegungZerlegen(Belegung("4,"));
    EXPECT_EQ(felder(), (Texte{"4", "66", "1", "20", "30"}));
}

TEST_F(TastenAktionTest, LeereStueckeSindLeereFelder) {
    aktion.BelegungZerlegen(Belegung(",,--"));
    EXPECT_EQ(felder(), (Texte{"", "", "", "", ""}));
}

TEST_F(TastenAktionTest, SechsFelderSindFehler9) {
    EXPECT_EQ(fehlernummer([this] { aktion.BelegungZerlegen(Belegung("1,65,0-0-0-0")); }), 9);
    EXPECT_EQ(fehlernummer([this] { aktion.BelegungZerlegen(Belegung("1,2,3,4,5,6")); }), 9);
    EXPECT_EQ(fehlernummer([this] { aktion.BelegungZerlegen(Belegung("1,2,3,4,5")); }), 0);
}

TEST_F(TastenAktionTest, DruckMerktSlotUndTimer) {
    aktion.TasteDrueckAktion(Belegung("10,0,0-0-0"), 11);
    EXPECT_EQ(gegeben.AktSlot, 11);
    EXPECT_EQ(gegeben.AktTimerId, 1011U);
    aktion.TasteLoesAktion(Belegung("10,0,0-0-0"), 3);
    EXPECT_EQ(gegeben.AktSlot, 11);
}

TEST_F(TastenAktionTest, TitelZeigtDieGehaltenenTasten) {
    aktion.TasteDrueckAktion(Belegung("1,65,0-0-0"), 2);
    aktion.TasteDrueckAktion(Belegung("1,32,0-0-0"), 7);
    aktion.TasteLoesAktion(Belegung("1,65,0-0-0"), 2);
    aktion.TasteLoesAktion(Belegung("1,32,0-0-0"), 7);
    EXPECT_EQ(anzeige.abholen(), (Texte{"Titel = 2-65,", "Titel = 2-65,7-32,", "Titel = 7-32,", "Titel = "}));
}

TEST_F(TastenAktionTest, DruckOhneAktionErneuertDenTitel) {
    aktion.TasteLoesAktion(Belegung("10,0,0-0-0"), 2);
    EXPECT_EQ(anzeige.abholen(), Texte{});
    aktion.TasteDrueckAktion(Belegung("10,0,0-0-0"), 2);
    EXPECT_EQ(anzeige.abholen(), Texte{"Titel = "});
}

TEST_F(TastenAktionTest, UmschalttasteUndMausErneuernDenTitel) {
    for (const auto* belegung : {"3,0,0-0-0", "4,0,0-0-0", "5,0,3-0-0", "7,0,0-0-0"}) {
        anzeige.titel("anders");
        anzeige.abholen();
        aktion.TasteDrueckAktion(Belegung(belegung), 2);
        EXPECT_EQ(anzeige.abholen(), Texte{"Titel = "}) << belegung;
    }
}

TEST_F(TastenAktionTest, TitelFolgtDemImpuls) {
    aktion.TasteDrueckAktion(Belegung("1,65,1-20-30"), 1);
    EXPECT_EQ(anzeige.abholen(), Texte{"Titel = 1-65,"});
    warten(20);
    EXPECT_EQ(anzeige.abholen(), Texte{"Titel = "});
    warten(30);
    EXPECT_EQ(anzeige.abholen(), Texte{"Titel = 1-65,"});
}

TEST_F(TastenAktionTest, TitelVonSlot0HinktNach) {
    aktion.TasteDrueckAktion(Belegung("1,65,1-20-30"), 0);
    warten(20);
    EXPECT_EQ(anzeige.abholen(), (Texte{"Titel = 0-65,", "Titel = "}));
    warten(30); // its key is down again, and nothing says so
    EXPECT_EQ(anzeige.abholen(), Texte{});
    aktion.TasteDrueckAktion(Belegung("10,0,0-0-0"), 1);
    EXPECT_EQ(anzeige.abholen(), Texte{"Titel = 0-65,"});
}

TEST_F(TastenAktionTest, MaskenFolgenDemImpuls) {
    const auto masken = [this] { return std::pair{stand.DrueckMaske, stand.PausenMaske}; };
    using Masken = std::pair<std::uint32_t, std::uint32_t>;

    aktion.TasteDrueckAktion(Belegung("1,65,1-20-30"), 2);
    aktion.TasteDrueckAktion(Belegung("1,66,1-20-0"), 15);
    EXPECT_EQ(masken(), Masken(0x8004, 0));
    warten(20);
    EXPECT_EQ(masken(), Masken(0, 4));
    warten(30);
    EXPECT_EQ(masken(), Masken(4, 0));
    aktion.TasteLoesAktion(Belegung("1,65,1-20-30"), 2);
    EXPECT_EQ(masken(), Masken(0, 0));
    EXPECT_EQ(uhr.laeuft(102), false);
}

TEST_F(TastenAktionTest, TimerEinesSlotsLaeuftSolangeErPulst) {
    aktion.TasteDrueckAktion(Belegung("1,65,1-20-30"), 12);
    EXPECT_TRUE(uhr.laeuft(1012));
    warten(20);
    EXPECT_TRUE(uhr.laeuft(1012));
    aktion.TasteLoesAktion(Belegung("1,65,1-20-30"), 12);
    EXPECT_FALSE(uhr.laeuft(1012));
}

TEST_F(TastenAktionTest, OhnePauseEndetDerTimerMitDemDruck) {
    aktion.TasteDrueckAktion(Belegung("1,65,1-20-0"), 12);
    warten(19);
    EXPECT_TRUE(uhr.laeuft(1012));
    warten(1);
    EXPECT_FALSE(uhr.laeuft(1012));
}

TEST_F(TastenAktionTest, ImpulsBehaeltSeineFelder) {
    aktion.TasteDrueckAktion(Belegung("0,77,1-20-30"), 2);
    aktion.TasteDrueckAktion(Belegung("1,66,0-0-0"), 3);
    const auto& satz = stand.TastenSatz[3];
    EXPECT_EQ((Texte{satz[0].text(), satz[1].text(), satz[2].text(), satz[3].text(), satz[4].text()}),
              (Texte{"0", "49", "1", "20", "30"}));
    EXPECT_FALSE(stand.TastenSatz[0][0].da());
}

TEST_F(TastenAktionTest, HaltenLegtKeinenTastensatzAn) {
    aktion.TasteDrueckAktion(Belegung("1,65,0-20-30"), 2);
    EXPECT_FALSE(stand.TastenSatz[3][0].da());
}

TEST_F(TastenAktionTest, JenseitsDerSlotsPulstNichts) {
    aktion.TasteDrueckAktion(Belegung("1,65,1-20-30"), 16);
    EXPECT_EQ(eingabe.texteAbholen(), Texte{});
    aktion.TasteDrueckAktion(Belegung("1,65,1-0-30"), 16);
    EXPECT_EQ(eingabe.texteAbholen(), Texte{"+65"});
}

TEST_F(TastenAktionTest, OhneModusSetztDerSlottaktKeinenTimer) {
    Belegung("1,65,0-20-30").legenUeber(stand.TastenSatz[3]);
    aktion.SlotTakt(2);
    EXPECT_EQ(eingabe.texteAbholen(), Texte{"+65"});
    EXPECT_EQ(gehaltene.GehaltenText(), "2-65,");
    EXPECT_EQ(stand.DrueckMaske, 0U);
    EXPECT_FALSE(uhr.laeuft(102));
}

TEST_F(TastenAktionTest, DasEndeEinerPauseBeendetIhrenTimer) {
    aktion.TasteDrueckAktion(Belegung("1,65,1-20-30"), 2);
    warten(20);
    EXPECT_TRUE(uhr.laeuft(102));
    stand.TastenSatz[3][belegungsfeld::MODUS] = Feld(0); // so that nothing sets it anew
    warten(30);
    EXPECT_EQ(stand.PausenMaske, 0U);
    EXPECT_FALSE(uhr.laeuft(102));
}

TEST_F(TastenAktionTest, AbgebrochenerDruckZeigtDieDrueckmaske) {
    aktion.TasteDrueckAktion(Belegung("1,66,1-500-0"), 3);
    for (const auto* belegung : {"1,65,1-50-0", "2,0,1-50-0"}) {
        aktion.TasteDrueckAktion(Belegung(belegung), 2);
        anzeige.abholen();
        aktion.TasteLoesAktion(Belegung(belegung), 2);
        EXPECT_EQ(anzeige.abholen(), (Texte{"Titel = 3-66,", "Erg(2) = 8"})) << belegung;
    }
}

TEST_F(TastenAktionTest, AbgebrochenerDruckDesAufzaehlersZeigtSieNicht) {
    aktion.TasteDrueckAktion(Belegung("0,0,1-50-0"), 2);
    anzeige.abholen();
    aktion.TasteLoesAktion(Belegung("0,0,1-50-0"), 2);
    EXPECT_EQ(anzeige.abholen(), Texte{"Titel = "});
}

TEST_F(TastenAktionTest, AbgebrochenePauseZeigtDieDrueckmaske) {
    for (const auto* belegung : {"0,0,1-50-50", "1,65,1-50-50", "2,0,1-50-50"}) {
        aktion.TasteDrueckAktion(Belegung(belegung), 2);
        warten(60);
        anzeige.abholen();
        aktion.TasteLoesAktion(Belegung(belegung), 2);
        EXPECT_EQ(anzeige.abholen(), Texte{"Erg(2) = 0"}) << belegung;
    }
}

TEST_F(TastenAktionTest, FreigebenGehtNachDemSlotUndMerktSichDenText) {
    aktion.TasteDrueckAktion(Belegung("1,65,0-0-0"), 12);
    wiederholstand.GehaltenTextAlt = "anders";
    aktion.TasteFreigeben(2); // "2-" stands in "12-65,": the gate lets it pass, and nothing is released
    EXPECT_EQ(gehaltene.GehaltenText(), "12-65,");
    EXPECT_EQ(wiederholstand.GehaltenTextAlt, "12-65,");
    EXPECT_EQ(eingabe.texteAbholen(), Texte{"+65"});
}

TEST_F(TastenAktionTest, FreigebenEinesUnbekanntenSlotsTutNichts) {
    aktion.TasteDrueckAktion(Belegung("1,65,0-0-0"), 12);
    wiederholstand.GehaltenTextAlt = "anders";
    aktion.TasteFreigeben(3);
    EXPECT_EQ(wiederholstand.GehaltenTextAlt, "anders");
}

TEST_F(TastenAktionTest, FehlerhafteTasteWirdNichtGehalten) {
    EXPECT_EQ(fehlernummer([this] { aktion.TasteDrueckAktion(Belegung("1,x,0-0-0"), 2); }), 13);
    EXPECT_EQ(fehlernummer([this] { aktion.TasteDrueckAktion(Belegung("1,x,1-50-0"), 2); }), 13);
    EXPECT_EQ(fehlernummer([this] { aktion.TasteDrueckAktion(Belegung("1,32768,1-50-0"), 2); }), 6);
    EXPECT_EQ(gehaltene.GehaltenText(), "");
    EXPECT_EQ(stand.DrueckMaske, 0U);
    EXPECT_EQ(uhr.laufende(), 0U);
}

TEST_F(TastenAktionTest, ZaehlerBleibtEineZiffer) {
    for (int mal = 0; mal < 25; ++mal)
        aktion.TasteDrueckAktion(Belegung("0,0,0-0-0"), 2);
    EXPECT_EQ(stand.Zaehler, 5);
    for (int mal = 0; mal < 26; ++mal)
        aktion.TasteDrueckAktion(Belegung("2,0,0-0-0"), 2);
    EXPECT_EQ(stand.Zaehler, 9);
}

} // namespace
