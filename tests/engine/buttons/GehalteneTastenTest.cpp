// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/buttons/GehalteneTasten.h"

#include <gtest/gtest.h>

namespace {

class GehaltenPflegenTest : public testing::Test {
protected:
    void hinzufuegen(int slot, const char* taste) { tasten.aufnehmen(Halteeintrag::aus(slot, Feld(taste))); }
    /// The entry that is taken out; "" for none.
    std::string entfernen(int slot) {
        const auto eintrag = tasten.herausnehmen(slot);
        return eintrag ? eintrag->text() : "";
    }

    GehalteneTasten tasten;
};

TEST_F(GehaltenPflegenTest, EintraegeStehenInDerReiheIhresDrucks) {
    hinzufuegen(2, "65");
    hinzufuegen(7, "32");
    EXPECT_EQ(tasten.GehaltenText(), "2-65,7-32,");
}

TEST_F(GehaltenPflegenTest, GleicherEintragStehtEinmal) {
    hinzufuegen(2, "65");
    hinzufuegen(7, "32");
    hinzufuegen(2, "65");
    EXPECT_EQ(tasten.GehaltenText(), "2-65,7-32,");
}

TEST_F(GehaltenPflegenTest, ZweiTastenEinesSlotsStehenNebeneinanderUndGehenDerReiheNach) {
    hinzufuegen(2, "65");
    hinzufuegen(2, "66");
    EXPECT_EQ(tasten.GehaltenText(), "2-65,2-66,");
    EXPECT_EQ(entfernen(2), "2-65");
    EXPECT_EQ(tasten.GehaltenText(), "2-66,");
    EXPECT_EQ(entfernen(2), "2-66");
    EXPECT_EQ(tasten.GehaltenText(), "");
}

TEST_F(GehaltenPflegenTest, DieUebrigenBehaltenIhreReihenfolge) {
    hinzufuegen(2, "65");
    hinzufuegen(7, "32");
    hinzufuegen(12, "66");
    EXPECT_EQ(entfernen(7), "7-32");
    EXPECT_EQ(tasten.GehaltenText(), "2-65,12-66,");
}

TEST_F(GehaltenPflegenTest, EinFremderSlotBewirktNichts) {
    hinzufuegen(12, "65");
    EXPECT_EQ(entfernen(2), "");
    EXPECT_EQ(entfernen(1), "");
    EXPECT_EQ(tasten.GehaltenText(), "12-65,");
}

TEST_F(GehaltenPflegenTest, AusLeererListeIstNichtsZuEntfernen) {
    EXPECT_EQ(entfernen(2), "");
    EXPECT_EQ(tasten.GehaltenText(), "");
}

} // namespace
