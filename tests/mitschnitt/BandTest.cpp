// SPDX-License-Identifier: GPL-3.0-or-later
// The band, and the clock that notes what was late.
#include "engine/mitschnitt/Mitschnitttext.h"
#include "platform/mitschnitt/Ereignistext.h"
#include "platform/mitschnitt/Mitschnittgeraete.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Art = Mitschnitteintrag::Art;
using Texte = std::vector<std::string>;

/// An entry as a word or two, with its time.
std::string wort(const Mitschnitteintrag& eintrag) {
    constexpr std::array NAMEN{"achse", "tasten",  "pov",     "weg",     "da",
                               "spaet", "versatz", "vermerk", "ereignis"};
    auto text = std::to_string(eintrag.zeit.count());
    text += " ";
    text += NAMEN.at(static_cast<std::size_t>(eintrag.art));
    if (eintrag.art == Art::Vermerk)
        return text + " " + eintrag.text;
    text += " " + std::to_string(eintrag.index) + " ";
    return text +
           (eintrag.art == Art::Ereignis ? ereignistext(eintrag.ereignis) : std::to_string(eintrag.wert));
}

Texte eintraege(Mitschnittband& band, Mitschnittband::Zeit jetzt) {
    Texte alle;
    for (const auto& block : band.lesen(jetzt))
        for (const auto& eintrag : block.eintraege)
            alle.push_back(wort(eintrag));
    return alle;
}

INPUT taste(VirtuelleTaste code, std::uint32_t flags = 0) {
    INPUT eines{};
    eines.type = INPUT_KEYBOARD;
    eines.ki = {code, 0, flags, 0, 0, {}};
    return eines;
}

INPUT maus(std::int32_t dx, std::int32_t dy, std::int32_t menge, std::uint32_t flags) {
    INPUT eines{};
    eines.type = INPUT_MOUSE;
    eines.mi = {dx, dy, static_cast<std::uint32_t>(menge), flags, 0, 0};
    return eines;
}

class Mitschnittuhr : public testing::Test {
protected:
    Mitschnittuhr() { geraete.band.beginnen(0ms, {}); }

    ProbeUhr uhr;
    ProbeJoystick pad;
    ProbeEingabe eingabe;
    Mitschnittgeraete geraete{pad, eingabe, uhr};
};

} // namespace

TEST(Mitschnittband, JederEintragKommtZurueck) {
    Mitschnittband band;
    band.beginnen(1'000'000ms, {});
    band.achse(1'000'000ms, 5, 65535);
    band.tasten(1'000'003ms, 0xffffffffU);
    band.pov(1'000'003ms, 31500);
    band.pad(1'060'000ms, false);
    band.pad(1'060'001ms, true);
    band.spaet(1'060'002ms, 1'070'002ms);
    band.versatz(1'070'002ms, 300, -2ms);
    band.vermerk(1'070'003ms, "regler 12 30");
    band.ereignis(1'070'004ms, taste(38, KEYEVENTF_EXTENDEDKEY));
    band.ereignis(1'070'004ms, maus(-1000000, 7, 0, MOUSEEVENTF_MOVE));
    band.ereignis(1'070'004ms, maus(0, 0, -4, MOUSEEVENTF_WHEEL));
    EXPECT_EQ(eintraege(band, 1'070'004ms),
              (Texte{"1000000 achse 5 65535", "1000003 tasten 0 4294967295", "1000003 pov 0 31500",
                     "1060000 weg 0 0", "1060001 da 0 0", "1060002 spaet 0 10000", "1070002 versatz 300 -2",
                     "1070003 vermerk regler 12 30", "1070004 ereignis 1 +38e",
                     "1070004 ereignis 1 m(-1000000,7)", "1070004 ereignis 1 W-4"}));
}

TEST(Mitschnittband, GleicheEreignisseEinesAugenblicksSindEines) {
    Mitschnittband band;
    band.beginnen(0ms, {});
    const auto vorher = band.bytes();
    for (int i = 0; i < 50'000; ++i)
        band.ereignis(4ms, maus(1, 0, 0, MOUSEEVENTF_MOVE));
    band.ereignis(8ms, maus(1, 0, 0, MOUSEEVENTF_MOVE));
    band.ereignis(8ms, maus(0, 0, 3, MOUSEEVENTF_WHEEL));
    band.ereignis(8ms, maus(0, 0, 4, MOUSEEVENTF_WHEEL));
    band.ereignis(8ms, taste(65));
    band.ereignis(8ms, taste(65, KEYEVENTF_KEYUP));
    EXPECT_EQ(eintraege(band, 8ms),
              (Texte{"4 ereignis 50000 m(1,0)", "8 ereignis 1 m(1,0)", "8 ereignis 1 W+3", "8 ereignis 1 W+4",
                     "8 ereignis 1 +65", "8 ereignis 1 -65"}));
    EXPECT_LT(band.bytes() - vorher, 60U);
}

TEST(Mitschnittband, BlockweiseGehtWasZuAltIst) {
    Mitschnittband band({1'000'000, 10s});
    for (int i = 0; i < 4; ++i) {
        band.beginnen(i * 4s, {std::to_string(i), nullptr, false});
        band.tasten(i * 4s, static_cast<std::uint32_t>(i));
    }
    EXPECT_EQ(eintraege(band, 13'999ms).size(), 4U) << "the second block began less than ten seconds ago";
    EXPECT_EQ(eintraege(band, 14s).size(), 3U);
    EXPECT_EQ(band.lesen(60s).size(), 1U)
        << "the last one stays, however long it is: nothing else says how it is";
}

TEST(Mitschnittband, BlockweiseGehtWasZuVielIst) {
    constexpr std::size_t GRENZE = 1000;
    const auto grund = std::make_shared<const std::string>(100, 'x');
    Mitschnittband band({GRENZE, 10min});
    for (int i = 0; i < 20; ++i) {
        band.beginnen(i * 1s, {"zustand a 1\n", grund, true});
        for (int ms = 0; ms < 30; ++ms) {
            band.tasten(i * 1s + ms * 1ms, static_cast<std::uint32_t>(ms));
            ASSERT_LE(band.bytes(), GRENZE);
        }
    }
    const auto bloecke = band.lesen(20s);
    EXPECT_EQ(bloecke.size(), 4U) << "each is 100 bytes, 12 and 30 times 4";
    for (const auto& block : bloecke) {
        EXPECT_TRUE(block.exakt);
        EXPECT_EQ(block.eintraege.size(), 30U);
    }
    EXPECT_EQ(bloecke.back().beginn, 19s);
}

TEST(Mitschnittband, EinZuGrosserBlockIstNichtMehrGenauAberDerNaechste) {
    Mitschnittband band({1000, 10min});
    band.beginnen(0ms, {"zustand a 1\n", nullptr, true});
    for (int i = 1; i <= 1000; ++i)
        band.tasten(i * 1ms, static_cast<std::uint32_t>(i));
    auto bloecke = band.lesen(1000ms);
    ASSERT_EQ(bloecke.size(), 1U);
    EXPECT_FALSE(bloecke[0].exakt);
    EXPECT_LE(band.bytes(), 1000U);
    EXPECT_EQ(wort(bloecke[0].eintraege.back()), "1000 tasten 0 1000");
    const auto ungenau = mitschnitttext(bloecke, 1000ms, {"S", "now"});
    EXPECT_NE(ungenau.find("# Not exact"), std::string::npos);
    EXPECT_NE(ungenau.find("\ngenau 0\n"), std::string::npos);
    EXPECT_EQ(ungenau.find("zustand"), std::string::npos);

    band.beginnen(1001ms, {"zustand a 2\n", nullptr, true});
    band.tasten(1002ms, 7);
    const auto genau = mitschnitttext(band.lesen(1003ms), 1003ms, {"S", "now"});
    EXPECT_EQ(genau,
              "# Record of the Schema \"S\", saved now\ntoleranz 10\nzustand a 2\n0 lauf\n1 buttons 7\n"
              "2 ende\n=\n");
}

TEST(Mitschnittband, OhneBlockWirdNichtsBehalten) {
    Mitschnittband band;
    band.tasten(1ms, 1);
    band.ereignis(1ms, taste(65));
    EXPECT_TRUE(band.lesen(2ms).empty());
    EXPECT_EQ(mitschnitttext(band.lesen(2ms), 2ms, {}), "");
}

TEST_F(Mitschnittuhr, EineUhrDieGehtHinterlaesstNichts) {
    uhr.vorVor(1ms);
    geraete.uhr.SetTimer(1, 5ms, [] {});
    auto form = geraete.uhr.formularzeitgeber([] {});
    form->Interval(1ms);
    form->Enabled(true);
    uhr.vorBis(100ms);
    EXPECT_EQ(eintraege(geraete.band, 100ms), Texte{});
}

TEST_F(Mitschnittuhr, EinStillstandStehtEinmalDa) {
    uhr.vorVor(1ms);
    geraete.uhr.SetTimer(1, 5ms, [] {});
    geraete.uhr.SetTimer(2, 1ms, [] {});
    uhr.vorVor(10ms);
    uhr.verschlafen(22ms);
    uhr.vorBis(30ms);
    EXPECT_EQ(eintraege(geraete.band, 30ms), Texte{"10 spaet 0 12"});
}

TEST_F(Mitschnittuhr, WasRuhtIstNichtSpaet) {
    uhr.vorVor(1ms);
    geraete.uhr.SetTimer(1, 5ms, [] {});
    uhr.vorVor(10ms);
    geraete.uhr.ruhen(1);
    uhr.vorVor(1000ms);
    EXPECT_GT(geraete.uhr.weiter(1), 190U);
    uhr.vorBis(1100ms);
    EXPECT_EQ(eintraege(geraete.band, 1100ms), Texte{});
}

TEST_F(Mitschnittuhr, WasWaehrendDerRuheGeschiehtHatSeineZeit) {
    uhr.vorVor(1ms);
    geraete.uhr.SetTimer(1, 5ms, [] {});
    uhr.vorVor(10ms);
    geraete.uhr.ruhen(1);
    uhr.vorVor(1000ms);
    EXPECT_EQ(geraete.uhr.stempel(), 1000ms);
}

TEST_F(Mitschnittuhr, EinZeitgeberOhneIntervallKommtSoOftWieErKann) {
    uhr.vorVor(1ms);
    int aufrufe = 0;
    geraete.uhr.SetTimer(1, 0ms, [&] { ++aufrufe; });
    uhr.vorBis(100ms);
    EXPECT_GT(aufrufe, 0);
    EXPECT_EQ(eintraege(geraete.band, 100ms), Texte{});
}

TEST_F(Mitschnittuhr, PuenktlichIstNurWasNichtSpaetKam) {
    std::vector<bool> puenktlich;
    uhr.vorVor(1ms);
    geraete.uhr.SetTimer(1, 5ms, [&] { // at 6, 11, and at 19 for 16: the next one is due at 21
        puenktlich.push_back(geraete.uhr.puenktlich(1, 5ms));
        puenktlich.push_back(geraete.uhr.puenktlich(1, 2ms));
    });
    uhr.vorVor(16ms);
    uhr.verschlafen(19ms);
    uhr.vorBis(20ms);
    EXPECT_EQ(puenktlich, (std::vector<bool>{true, false, true, false, false, false}));
    EXPECT_FALSE(geraete.uhr.puenktlich(2, 5ms)) << "there is none";
}

TEST_F(Mitschnittuhr, EinZeitgeberDerSpaeterZaehltStehtMitSeinerNummerDa) {
    uhr.versetzen([](ProbeUhr::Zeit, std::uint32_t nummer) { return nummer == 2 ? 3ms : 0ms; });
    uhr.vorVor(7ms);
    for (const std::uint32_t id : {1U, 2U, 3U})
        geraete.uhr.SetTimer(id, 20ms, [] {});
    EXPECT_EQ(eintraege(geraete.band, 7ms), Texte{"7 versatz 2 3"});
}

TEST_F(Mitschnittuhr, DasPadStehtDaWoEsSichAendert) {
    uhr.vorVor(3ms);
    JOYINFOEX info;
    geraete.pad.joyGetPosEx(0, info);
    geraete.pad.joyGetPosEx(1, info);
    EXPECT_EQ(eintraege(geraete.band, 3ms), Texte{}) << "at rest, as a record begins";
    pad.zustand.dwVpos = 12;
    pad.zustand.dwButtons = 4;
    geraete.pad.joyGetPosEx(0, info);
    geraete.pad.joyGetPosEx(0, info);
    pad.da = false;
    JOYINFOEX leere; // a poll that fails tells nothing
    geraete.pad.joyGetPosEx(0, leere);
    geraete.pad.joyGetPosEx(0, leere);
    pad.zustand.dwPOV = 9000;
    pad.da = true;
    geraete.pad.joyGetPosEx(0, info);
    EXPECT_EQ(eintraege(geraete.band, 3ms),
              (Texte{"3 achse 5 12", "3 tasten 0 4", "3 weg 0 0", "3 pov 0 9000", "3 da 0 0"}));
    geraete.band.verwerfen();
    geraete.band.beginnen(3ms, {});
    geraete.pad.standNotieren();
    EXPECT_EQ(eintraege(geraete.band, 3ms), (Texte{"3 achse 5 12", "3 tasten 0 4", "3 pov 0 9000"}));
    pad.da = false;
    geraete.pad.joyGetPosEx(0, leere);
    geraete.band.verwerfen();
    geraete.band.beginnen(3ms, {});
    geraete.pad.standNotieren();
    EXPECT_EQ(eintraege(geraete.band, 3ms),
              (Texte{"3 achse 5 12", "3 tasten 0 4", "3 pov 0 9000", "3 weg 0 0"}));
}
