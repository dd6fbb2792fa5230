// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output/Druckbuch.h"

#include "platform/probe/ProbeEingabe.h"
#include "tests/hilfen/Speicherzaehler.h"
#include "tests/platform/Ereignisse.h"

#include <gtest/gtest.h>

namespace {

class DruckbuchTest : public testing::Test {
protected:
    DruckbuchTest() { buch.anschliessen(ziel); }
    void senden(VirtuelleTaste code, std::uint32_t flaggen = 0) {
        const INPUT eines = taste(code, flaggen);
        buch.SendInput({&eines, 1});
    }
    void maus(std::uint32_t flaggen) { buch.mouse_event(flaggen, 0, 0, 0, 0); }

    ProbeEingabe ziel;
    Druckbuch buch;
};

using Tasten = std::vector<VirtuelleTaste>;

} // namespace

TEST_F(DruckbuchTest, GibtAllesAufDemSelbenWegWeiter) {
    senden(65);
    buch.mouse_event(MOUSEEVENTF_MOVE, 3, -4, 0, 0);
    EXPECT_EQ(ziel.eingaenge(),
              (std::vector{ProbeEingabe::Eingang::SendInput, ProbeEingabe::Eingang::mouse_event}));
    EXPECT_EQ(ziel.texteAbholen(), (std::vector<std::string>{"+65", "m(3,-4)"}));
    EXPECT_EQ(buch.MapVirtualKeyA(65, 0), 1065U);
}

TEST_F(DruckbuchTest, EineTasteIstUntenBisSieLosgelassenWird) {
    senden(65);
    senden(38, KEYEVENTF_EXTENDEDKEY);
    EXPECT_EQ(buch.gedrueckteTasten(), (Tasten{38, 65}));
    senden(65, KEYEVENTF_KEYUP);
    EXPECT_EQ(buch.gedrueckteTasten(), Tasten{38});
    senden(38, KEYEVENTF_KEYUP | KEYEVENTF_EXTENDEDKEY);
    EXPECT_EQ(buch.gedrueckteTasten(), Tasten{});
}

TEST_F(DruckbuchTest, EineWiederholungIstKeinDruck) {
    senden(65);
    senden(65);
    EXPECT_EQ(buch.druck(65), 1U);
    senden(65, KEYEVENTF_KEYUP);
    EXPECT_EQ(buch.druck(65), 0U);
    senden(65);
    EXPECT_EQ(buch.druck(65), 2U);
}

TEST_F(DruckbuchTest, KnoepfeDerMausAufBeidenWegen) {
    maus(MOUSEEVENTF_RIGHTDOWN);
    EXPECT_EQ(buch.mausdruck(0), 0U);
    EXPECT_EQ(buch.mausdruck(1), 1U);
    maus(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_MOVE);
    EXPECT_EQ(buch.mausdruck(0), 1U);
    maus(MOUSEEVENTF_RIGHTUP);
    EXPECT_EQ(buch.mausdruck(1), 0U);
    INPUT eines{};
    eines.type = INPUT_MOUSE;
    eines.mi.dwFlags = MOUSEEVENTF_MIDDLEDOWN;
    buch.SendInput({&eines, 1});
    EXPECT_EQ(buch.mausdruck(2), 1U);
}

TEST_F(DruckbuchTest, WasKeineTasteUndKeinKnopfIstIstNieUnten) {
    senden(255);
    senden(256);
    senden(30000);
    EXPECT_EQ(buch.gedrueckteTasten(), Tasten{255});
    EXPECT_EQ(buch.druck(256), 0U);
    EXPECT_EQ(buch.druck(30000), 0U);
    EXPECT_EQ(buch.mausdruck(3), 0U);
    EXPECT_EQ(buch.mausdruck(-1), 0U);
}

TEST_F(DruckbuchTest, BuchfuehrenFordertKeinenSpeicherAn) {
    class Senke final : public Eingabe {
    public:
        std::uint32_t SendInput(std::span<const INPUT> ereignisse) override {
            return static_cast<std::uint32_t>(ereignisse.size());
        }
        std::uint32_t MapVirtualKeyA(std::uint32_t, std::uint32_t) override { return 0; }
    } senke;
    buch.anschliessen(senke);
    const long vorher = speicheranforderungen();
    for (int i = 0; i < 1000; ++i) {
        senden(65, i % 2 == 0 ? 0 : KEYEVENTF_KEYUP);
        maus(i % 2 == 0 ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP);
    }
    EXPECT_EQ(speicheranforderungen() - vorher, 0);
    EXPECT_GT(vorher, 0);
}
