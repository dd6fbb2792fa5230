#include "engine/buttons/GehalteneTasten.h"

#include "engine/output/XPTaste.h"
#include "platform/probe/ProbeEingabe.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

class GehaltenPflegenTest : public testing::Test {
protected:
    void hinzufuegen(std::string_view eintrag) { tasten.GehaltenPflegen(eintrag, 0, xpTaste); }
    void entfernen(std::string_view eintrag) { tasten.GehaltenPflegen(eintrag, 1, xpTaste); }

    ProbeEingabe eingabe;
    XPTaste xpTaste{eingabe, [] {}};
    GehalteneTasten tasten;
};

TEST_F(GehaltenPflegenTest, EintragIstSlotUndTaste) {
    EXPECT_EQ(halteeintrag(2, "65"), "2-65,");
    EXPECT_EQ(halteeintrag(12, "0"), "12-0,");
}

TEST_F(GehaltenPflegenTest, HinzufuegenDruecktNichts) {
    hinzufuegen("2-65,");
    hinzufuegen("7-32,");
    EXPECT_EQ(tasten.GehaltenText(), "2-65,7-32,");
    EXPECT_EQ(eingabe.texteAbholen(), Texte{});
}

TEST_F(GehaltenPflegenTest, GleicherEintragStehtEinmal) {
    hinzufuegen("2-65,");
    hinzufuegen("7-32,");
    hinzufuegen("2-65,");
    EXPECT_EQ(tasten.GehaltenText(), "2-65,7-32,");
}

TEST_F(GehaltenPflegenTest, ZweiTastenEinesSlotsStehenNebeneinanderUndGehenDerReiheNach) {
    hinzufuegen("2-65,");
    hinzufuegen("2-66,");
    EXPECT_EQ(tasten.GehaltenText(), "2-65,2-66,");
    entfernen("2-66,");
    EXPECT_EQ(tasten.GehaltenText(), "2-66,");
    entfernen("2-66,");
    EXPECT_EQ(tasten.GehaltenText(), "");
    EXPECT_EQ(eingabe.texteAbholen(), (Texte{"-65", "-66"}));
}

TEST_F(GehaltenPflegenTest, EntferntWirdNachDemSlotWasAuchImmerErHaelt) {
    hinzufuegen("2-65,");
    entfernen("2-99,");
    EXPECT_EQ(tasten.GehaltenText(), "");
    EXPECT_EQ(eingabe.texteAbholen(), Texte{"-65"});
}

TEST_F(GehaltenPflegenTest, DieUebrigenBehaltenIhreReihenfolge) {
    hinzufuegen("2-65,");
    hinzufuegen("7-32,");
    hinzufuegen("12-66,");
    entfernen("7-0,");
    EXPECT_EQ(tasten.GehaltenText(), "2-65,12-66,");
    EXPECT_EQ(eingabe.texteAbholen(), Texte{"-32"});
}

TEST_F(GehaltenPflegenTest, EinFremderSlotBewirktNichts) {
    hinzufuegen("12-65,");
    entfernen("2-65,");
    entfernen("1-65,");
    EXPECT_EQ(tasten.GehaltenText(), "12-65,");
    EXPECT_EQ(eingabe.texteAbholen(), Texte{});
}

TEST_F(GehaltenPflegenTest, AusLeererListeIstNichtsZuEntfernen) {
    entfernen("2-65,");
    EXPECT_EQ(tasten.GehaltenText(), "");
    EXPECT_EQ(eingabe.texteAbholen(), Texte{});
}

TEST_F(GehaltenPflegenTest, JederWertAusserNullEntfernt) {
    hinzufuegen("2-65,");
    tasten.GehaltenPflegen("2-65,", -1, xpTaste);
    EXPECT_EQ(tasten.GehaltenText(), "");
    EXPECT_EQ(eingabe.texteAbholen(), Texte{"-65"});
}

TEST_F(GehaltenPflegenTest, EinEintragOhneTasteGehtMitFehlerAberGeht) {
    hinzufuegen("2-x,");
    hinzufuegen("7-32,");
    EXPECT_EQ(fehlernummer([this] { entfernen("2-x,"); }), 13);
    EXPECT_EQ(tasten.GehaltenText(), "7-32,");
}

} // namespace
