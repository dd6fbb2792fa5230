// SPDX-License-Identifier: GPL-3.0-or-later
// When a run rests, what keeps it from it, and what ends it. That nothing else differs is seen by the traces.
#include "engine/run/Pollruhe.h"
#include "engine/input/Achsen.h"
#include "engine/run/TimerUeberwachung.h"
#include "tests/engine/run/Probelauf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

class Pollruhe : public testing::Test {
protected:
    Pollruhe() { lauf.pad.kannWachen = true; }

    /// Starts the run and lets it come to rest, also where each window of the smoothing holds 30 samples.
    LaufFenster& ruhenLassen() {
        lauf.mitSticks();
        auto& fenster = lauf.starten();
        lauf.warten(200);
        EXPECT_TRUE(fenster.inRuhe());
        EXPECT_EQ(lauf.uhr.laufende(), 0U);
        return fenster;
    }
    void pad(std::uint32_t tasten) {
        lauf.pad.zustand.dwButtons = tasten;
        lauf.pad.melden();
    }
    bool ruht() { return lauf.uhr.laufende() == 0; }

    Probelauf lauf{{"btn3", "1,65,0-0-0"}, {"btn4", "1,66,1-40-0"}};
};

TEST_F(Pollruhe, OhneBewachbaresPadWirdImmerAbgefragt) {
    lauf.pad.kannWachen = false;
    lauf.mitSticks();
    const auto& fenster = lauf.starten();
    lauf.warten(1000);
    EXPECT_TRUE(fenster.inRuhe());
    EXPECT_EQ(lauf.uhr.laufende(), 3U);
    EXPECT_EQ(lauf.uhr.ausgelassene(), 0U);
}

TEST_F(Pollruhe, RuhtOhneEinenZeitgeberUndPolltDochUndWachtZumSelbenTaktAuf) {
    const auto& fenster = ruhenLassen();
    EXPECT_TRUE(fenster.pollt());
    lauf.warten(3'600'002);
    pad(4);
    lauf.warten(2); // the tick would have come then
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{});
    lauf.warten(1);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{"+65"});
    lauf.warten(10);
    EXPECT_TRUE(ruht()); // while the button is held
    pad(0);
    lauf.warten(5);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{"-65"});
}

TEST_F(Pollruhe, OhnePadRuhtErAuch) {
    lauf.pad.da = false;
    lauf.mitSticks();
    lauf.starten();
    lauf.warten(50);
    EXPECT_TRUE(ruht());
    lauf.pad.da = true;
    pad(4);
    lauf.warten(5);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{"+65"});
}

TEST_F(Pollruhe, SolangeEineTasteImTaktIstRuhtErNicht) {
    ruhenLassen();
    pad(8);
    lauf.warten(30);
    EXPECT_FALSE(ruht());
    EXPECT_FALSE(lauf.fenster->inRuhe()) << "what goes on from here does not do so from the state alone";
    EXPECT_EQ(lauf.uhr.laufende(), 4U) << "the tick and the smoothing beside the pulse";
    lauf.warten(30);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), (Texte{"+66", "-66"}));
    EXPECT_TRUE(ruht());
}

TEST_F(Pollruhe, SolangeWiederholtWirdRuhtErNicht) {
    auto& fenster = ruhenLassen();
    fenster.HScroll2Aenderung(30);
    pad(4);
    lauf.warten(100);
    EXPECT_FALSE(ruht());
    pad(0);
    lauf.warten(20);
    EXPECT_TRUE(ruht()); // also where the repeat's timer goes on over an empty place
}

TEST_F(Pollruhe, SolangeDerSchubreglerAufZeitDruecktRuhtErNicht) {
    lauf.zustand.achsendatei.AchsenLaden();
    lauf.zustand.achsendatei.GamepadSchreiben("3/0-1-3-0(,,)/0-2-2-0(65,,)/0-3-2-1(66,50,100)");
    lauf.pad.zustand.dwUpos = 1000;
    auto& fenster = ruhenLassen();
    lauf.pad.zustand.dwUpos = 60000;
    lauf.pad.melden();
    lauf.warten(40);
    ASSERT_EQ(lauf.eingabe.texteAbholen(), Texte{"+66"});
    EXPECT_FALSE(fenster.inRuhe());
    lauf.pad.zustand.dwUpos = 1000;
    lauf.warten(300);
    EXPECT_TRUE(fenster.inRuhe());
    EXPECT_TRUE(ruht());
}

TEST_F(Pollruhe, MitDemPruefteilOffenRuhtErNicht) {
    auto& fenster = ruhenLassen();
    fenster.Command1Klick(1); // folds out and halts
    fenster.Command1Klick(0);
    fenster.Command1Klick(0); // goes on
    lauf.warten(500);
    EXPECT_TRUE(fenster.pollt());
    EXPECT_FALSE(ruht());
}

TEST_F(Pollruhe, EndetMitEinerSperreDieEinEditorAufhebt) {
    Schemabau(lauf.datenbank).sperre(Stickseite::Links, 1).ergaenzen();
    lauf.datenbank.sql("INSERT INTO tblStickAktion VALUES ('S', 0, 27072, 0, 0, 0, '2,0,70,0,0')");
    lauf.pad.zustand.dwXpos = 1000;
    ruhenLassen();
    lauf.zustand.linkerStick.StickSperre = 0;
    lauf.warten(5);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{"+70"});
}

// The bounds that no evaluation has set hold the upper end, where only the other axis lies outside.
TEST_F(Pollruhe, EndetMitEinerSperreAuchWoNurDieWaagerechteAusserhalbLiegt) {
    Schemabau(lauf.datenbank).sperre(Stickseite::Links, 1).ergaenzen();
    lauf.datenbank.sql("INSERT INTO tblStickAktion VALUES ('S', 0, 27072, 0, 0, 0, '2,0,70,0,0')");
    lauf.pad.zustand.dwXpos = 1000;
    lauf.pad.zustand.dwYpos = 0;
    ruhenLassen();
    lauf.zustand.linkerStick.StickSperre = 0;
    lauf.warten(5);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{"+70"});
}

TEST_F(Pollruhe, EndetMitEinerAnderenZuordnungDerAchsen) {
    lauf.datenbank.sql("INSERT INTO tblStickAktion VALUES ('S', 0, 27072, 0, 0, 0, '2,0,70,0,0')");
    lauf.pad.zustand.dwUpos = 1000; // Z1
    ruhenLassen();
    lauf.zustand.achsendatei.AchsenUebernehmen({{{"Schubregler", ""},
                                                 {"Links", "Oben/Unten"},
                                                 {"Rechts", "Links/Rechts"},
                                                 {"Rechts", "Oben/Unten"},
                                                 {"Links", "Links/Rechts"},
                                                 {"Z-Achse", ""}}});
    lauf.warten(5);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{"+70"});
}

TEST_F(Pollruhe, WasEinFormularLiestStoertSieNichtUndSiehtWasIst) {
    ruhenLassen();
    std::uint32_t gesehen = 0;
    const auto form = lauf.uhr.formularzeitgeber([&] {
        JOYINFOEX info;
        lauf.pad.joyGetPosEx(0, info);
        gesehen = info.dwXpos;
    });
    form->Interval(std::chrono::milliseconds{50});
    form->Enabled(true);
    lauf.warten(200);
    EXPECT_EQ(gesehen, JOY_AXIS_RUHE);
    EXPECT_EQ(lauf.uhr.laufende(), 1U);
}

TEST_F(Pollruhe, EinLaufDerAusDerRuheEndetLaesstNichtsZurueck) {
    auto& fenster = ruhenLassen();
    ASSERT_TRUE(lauf.pad.wacht());
    ASSERT_TRUE(lauf.uhr.fragtVorDemSchlaf());
    fenster.beenden();
    EXPECT_FALSE(lauf.pad.wacht());
    EXPECT_FALSE(lauf.uhr.fragtVorDemSchlaf());
    EXPECT_EQ(lauf.uhr.laufende(), 0U);
    pad(4);
    lauf.warten(1000);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{});
    lauf.starten();
    lauf.warten(5);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{"+65"});
}

TEST_F(Pollruhe, EinLaufDerInDerRuheVergehtWirdNichtGeweckt) {
    ruhenLassen();
    lauf.fenster.reset();
    pad(4);
    lauf.warten(1000);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{});
}

/// Writes down which timer goes on, as a clock on which time goes by from call to call.
class Schreibuhr final : public Zeitgeber {
public:
    void SetTimer(std::uint32_t, std::chrono::milliseconds, TimerProzedur) override {}
    void KillTimer(std::uint32_t) override {}
    std::unique_ptr<Formularzeitgeber> formularzeitgeber(TimerProzedur) override {
        return std::make_unique<Takt>(weitergegangene);
    }
    bool kannRuhen() const override { return true; }
    std::uint64_t weiter(std::uint32_t id, std::chrono::nanoseconds) override {
        weitergegangene.push_back(std::to_string(id));
        return 0;
    }

    Texte weitergegangene;

private:
    class Takt final : public Formularzeitgeber {
    public:
        explicit Takt(Texte& texte) : texte_(texte) {}
        void Interval(std::chrono::milliseconds) override {}
        void Enabled(bool) override {}
        std::chrono::milliseconds Interval() const override { return {}; }
        bool Enabled() const override { return true; }
        void ruhen() override {}
        std::uint64_t weiter(std::chrono::nanoseconds) override {
            texte_.push_back("Takt");
            return 0;
        }

    private:
        Texte& texte_;
    };
};

TEST_F(Pollruhe, DieGlaettungGehtVorDenTaktenWeiter) {
    Schreibuhr uhr;
    Entwackelstand stand;
    Achsen achsen(lauf.pad, lauf.zustand.achsendatei);
    const Reglerwerte regler;
    Entwackeln entwackeln(stand, achsen, regler, uhr, lauf.anzeige);
    const auto takt = uhr.formularzeitgeber({});
    ::Pollruhe ruhe(lauf.pad, uhr, entwackeln, {takt.get()}, [] { return true; });
    ruhe.versuchen();
    ASSERT_TRUE(ruhe.ruht());
    ruhe.beenden();
    EXPECT_EQ(uhr.weitergegangene, (Texte{std::to_string(timerid::ENTWACKELN), "Takt"}));
}

} // namespace
