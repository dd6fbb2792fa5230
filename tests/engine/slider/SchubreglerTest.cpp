// SPDX-License-Identifier: GPL-3.0-or-later
// The slider engine in a run on fakes: fields, what triggers, what is kept and what is forgotten. How its
// actions look in time is told by the traces.
#include "engine/slider/Schubregler.h"

#include "engine/run/TimerUeberwachung.h"
#include "tests/engine/run/Probelauf.h"

#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

constexpr std::uint32_t RUHE = 32767;

Texte texte(const std::vector<Feld>& felder) {
    Texte alle;
    for (const auto& feld : felder)
        alle.push_back(feld.text());
    return alle;
}

// A run whose slider is the raw axis U.
class Schublauf : public Probelauf {
public:
    explicit Schublauf(const std::string& schub) { schubtext(schub); }

    /// The slider text of the next run.
    void schubtext(const std::string& text) {
        zustand.achsendatei.AchsenLaden(); // makes the row where there is none
        zustand.achsendatei.GamepadSchreiben(text);
    }
    /// Sets the slider and lets one tick see it; gives what it sent.
    Texte stellen(std::uint32_t wert) {
        pad.zustand.dwUpos = wert;
        takt();
        return eingabe.texteAbholen();
    }
    Texte nach(int ms) {
        warten(ms);
        return eingabe.texteAbholen();
    }
    /// Timer 1111 or the end of a press.
    bool timerLaeuft() const { return uhr.laeuft(timerid::SCHUBREGLER) || !schub().Druckenden.empty(); }
    const Schubstand& schub() const { return zustand.schub; }
};

} // namespace

// --- the text ---

TEST(SchubreglerText, OhneTextGeschiehtNichts) {
    Schublauf lauf("");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(0), Texte{});
    EXPECT_EQ(lauf.stellen(65534), Texte{});
}

TEST(SchubreglerText, WirdBeimStartAusDerAchsendateiGelesen) {
    Schublauf lauf("2/0-2-2-0(65,,)");
    lauf.starten();
    EXPECT_EQ(lauf.zustand.achsendatei.SchubreglerText(), "2/0-2-2-0(65,,)");
    lauf.schubtext("2/0-2-2-0(66,,)"); // the run has read its own already
    EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
}

TEST(SchubreglerText, EinFehlerhafterLaesstNichtsBeginnen) {
    struct Fall {
        const char* text;
        int fehler;
    };
    for (const auto& [text, fehler] : {Fall{"x", 13},
                                       Fall{"/0-1-2-0(65,,)", 13},
                                       Fall{"32767", 0},
                                       Fall{"32768", 6},
                                       Fall{"-32768", 0},
                                       Fall{"-32769", 6},
                                       Fall{"3000000000", 6},
                                       Fall{"3/0", 9},
                                       Fall{"3/", 9},
                                       Fall{"3/0-1-2-0(65,,)/", 9},
                                       Fall{"3/0-1-2-0(65,,)//0-2-2-0(65,,)", 9},
                                       Fall{"3/0-1", 0},
                                       Fall{"3/0-1/0-1", 457},
                                       Fall{"3/0-7/0-7", 457},
                                       Fall{"3/-1-2-0(65,,)", 13},
                                       Fall{"3/x-1", 13},
                                       Fall{"3/32767-1", 0},
                                       Fall{"3/32768-1", 6},
                                       Fall{"3/x-2", 13},
                                       Fall{"3/x-2/0-1", 0},
                                       Fall{"3/0-1/x-2", 0},
                                       Fall{"3/0-2/x-3", 0}}) {
        Schublauf lauf(text);
        auto& fenster = lauf.fensterOeffnen();
        EXPECT_EQ(fehlernummer([&] { fenster.laden(); }), fehler) << text;
        EXPECT_EQ(fenster.pollt(), fehler == 0) << text;
        EXPECT_EQ(lauf.uhr.laufende() == 0, fehler != 0) << text;
    }
}

// --- the fields ---

TEST(SchubreglerFeld, DieGrenzenStehenInGleichenAbstaenden) {
    struct Fall {
        int anzahl;
        std::uint32_t wert;
        Texte taste; // 64 and the number of the field
    };
    for (const auto& [anzahl, wert, taste] : {
             Fall{1, 0, {"+65"}},     Fall{1, 65534, {"+65"}}, Fall{1, 65535, {}},
             Fall{2, 32766, {"+65"}}, Fall{2, 32767, {"+65"}}, Fall{2, 32768, {"+66"}},
             Fall{3, 21844, {"+65"}}, Fall{3, 21845, {"+66"}}, Fall{3, 21846, {"+66"}},
             Fall{3, 43689, {"+66"}}, Fall{3, 43690, {"+67"}}, Fall{3, 65534, {"+67"}},
             Fall{3, 65535, {}},      Fall{4, 16383, {"+65"}}, Fall{4, 16384, {"+66"}},
             Fall{4, 49151, {"+67"}}, Fall{4, 49152, {"+68"}}, Fall{4, 65534, {"+68"}},
             Fall{4, 65535, {}},      Fall{0, 0, {}},          Fall{-4, 0, {}},
         }) {
        Schublauf lauf(std::to_string(anzahl) + "/0-1-2-0(65,,)/0-2-2-0(66,,)/0-3-2-0(67,,)/0-4-2-0(68,,)");
        lauf.starten();
        EXPECT_EQ(lauf.stellen(wert), taste) << wert << " in " << anzahl << " fields";
    }
}

TEST(SchubreglerFeld, DasEndeDerAchseLiegtInKeinem) {
    for (int anzahl = 1; anzahl <= 60; ++anzahl) {
        const auto letztes = std::to_string(anzahl);
        Schublauf lauf(letztes + "/0-" + letztes + "-2-0(65,,)");
        lauf.starten();
        EXPECT_EQ(lauf.stellen(65535), Texte{}) << anzahl;
        EXPECT_EQ(lauf.stellen(65534), Texte{"+65"}) << anzahl;
        EXPECT_EQ(lauf.stellen(65535), Texte{}) << anzahl;
    }
}

TEST(SchubreglerFeld, EineAktionLaeuftVomEintrittBisZumNaechstenFeld) {
    Schublauf lauf("4/0-3-2-0(67,,)/0-4-2-0(68,,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(40000), Texte{"+67"});
    EXPECT_EQ(lauf.stellen(40001), Texte{});
    EXPECT_EQ(lauf.stellen(33000), Texte{});
    EXPECT_EQ(lauf.stellen(60000), (Texte{"-67", "+68"}));
    EXPECT_EQ(lauf.stellen(RUHE), Texte{"-68"});
    EXPECT_EQ(lauf.stellen(20000), Texte{}); // what has ended does not end again
}

// --- outward only ---

// A field is 5 values wide, and only the one of `wert` has a record.
TEST(SchubreglerAuswaerts, ErlaubtIstDieBewegungVonDerMitteWegUndDasEnde) {
    struct Fall {
        std::uint32_t vorher;
        std::uint32_t wert;
        bool erlaubt;
    };
    for (const auto& [vorher, wert, erlaubt] :
         {Fall{20000, 32767, false}, Fall{40000, 32767, false}, Fall{20000, 32768, true},
          Fall{40000, 32768, false}, Fall{40000, 32766, true}, Fall{20000, 32766, false},
          Fall{100, 129, true}, Fall{100, 130, false}, Fall{100, 131, false}, Fall{140, 130, true},
          Fall{140, 129, true}, Fall{10, 0, true}, Fall{65410, 65400, false}, Fall{65410, 65401, true},
          Fall{65410, 65399, false}, Fall{65390, 65400, true}, Fall{65390, 65401, true},
          Fall{65410, 65534, true}}) {
        Schublauf lauf("13107/1-" + std::to_string(wert / 5 + 1) + "-2-0(65,,)");
        lauf.starten();
        EXPECT_EQ(lauf.stellen(vorher), Texte{});
        EXPECT_EQ(lauf.stellen(wert), erlaubt ? Texte{"+65"} : Texte{}) << vorher << " to " << wert;
    }
}

TEST(SchubreglerAuswaerts, StillstandAmEndeLoestAus) {
    Schublauf lauf("2/1-2-2-1(65,5,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65401), Texte{"+65"});
    EXPECT_EQ(lauf.nach(5), Texte{"-65"});
    EXPECT_EQ(lauf.nach(500), Texte{}); // but not twice in one field
}

TEST(SchubreglerAuswaerts, EinFeldwechselBeendetAuchNachInnen) {
    Schublauf lauf("4/1-3-2-0(67,,)/1-4-2-0(68,,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(60000), Texte{"+68"});
    EXPECT_EQ(lauf.stellen(49151), Texte{"-68"});
    EXPECT_EQ(lauf.stellen(49151), Texte{});
    EXPECT_EQ(lauf.stellen(49150), Texte{});
    EXPECT_EQ(lauf.stellen(49151), Texte{"+67"});
}

TEST(SchubreglerAuswaerts, DerWertWirdAuchOhneFeldGemerkt) {
    Schublauf lauf("4/1-4-2-0(68,,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(40000), Texte{});
    EXPECT_EQ(lauf.stellen(65535), Texte{});
    EXPECT_EQ(lauf.stellen(65000), Texte{}); // inward from the end, though outward from 40000
    EXPECT_EQ(lauf.stellen(65001), Texte{"+68"});
}

TEST(SchubreglerAuswaerts, JederLaufBeginntBeiNull) {
    Schublauf lauf("4/1-3-2-0(67,,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(40000), Texte{"+67"});
    lauf.fenster->beenden();
    lauf.starten();
    EXPECT_EQ(lauf.nach(5), Texte{"+67"}); // 40000 has come from 0 again
}

// --- errors that a tick swallows ---

// From field 3 with the record to field 1 with key 65: gives the ticks that its start takes.
int takteBisZumNaechstenFeld(const std::string& satz, Texte& imFeld, Texte& beimVerlassen) {
    Schublauf lauf("3/0-1-2-0(65,,)/" + satz);
    auto& fenster = lauf.starten();
    imFeld = lauf.stellen(65534);
    for (int takte = 1; takte <= 3; ++takte) {
        for (const auto& text : lauf.stellen(0)) {
            if (text == "+65")
                return fenster.pollt() ? takte : -1;
            beimVerlassen.push_back(text);
        }
    }
    return 0;
}

TEST(SchubreglerFehler, EinFehlerAmEndeVerzoegertDasNaechsteFeldUmEinenTakt) {
    struct Fall {
        const char* satz;
        Texte imFeld;
        Texte beimVerlassen;
        int takte;
    };
    for (const auto& fall : {
             Fall{"0-3-2-0(66,,)", {"+66"}, {"-66"}, 1},  // nothing is wrong
             Fall{"0-3-2-0", {}, {}, 2},                  // no parameters to release
             Fall{"0-3-2-0(x,,)", {}, {}, 2},             // a key that is no number
             Fall{"0-3-2-0(,,)", {}, {}, 2},              // no key
             Fall{"0-3-2-0(32768,,)", {}, {}, 2},         // too large a one
             Fall{"0-3-2-1(66,x,)", {"+66"}, {"-66"}, 1}, // only the press time is wrong
             Fall{"0-3-1-0", {}, {}, 2},                  // no parameters
             Fall{"0-3-1-0()", {"LD"}, {"LU"}, 1},        // a button needs nothing in them
             Fall{"0-3-0-1", {}, {}, 1},                  // the end of a movement reads none
             Fall{"0-3-0-1(,5,)", {"m(5,0)"}, {}, 1},     // no interval
             Fall{"0-3", {}, {}, 1},                      // did not start
             Fall{"0-3--0(66,,)", {}, {}, 1},             // a type that is no number
             Fall{"0-3-9-0(66,,)", {}, {}, 1},            // an unknown one
         }) {
        Texte imFeld;
        Texte beimVerlassen;
        EXPECT_EQ(takteBisZumNaechstenFeld(fall.satz, imFeld, beimVerlassen), fall.takte) << fall.satz;
        EXPECT_EQ(imFeld, fall.imFeld) << fall.satz;
        EXPECT_EQ(beimVerlassen, fall.beimVerlassen) << fall.satz;
    }
}

TEST(SchubreglerFehler, EineVonSelbstBeendeteTasteVerzoegertUmEinenTakt) {
    Schublauf lauf("3/0-1-2-0(65,,)/0-3-2-1(66,20,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+66"});
    EXPECT_EQ(lauf.nach(20), Texte{"-66"});
    EXPECT_EQ(lauf.stellen(0), Texte{});
    EXPECT_EQ(lauf.stellen(0), Texte{"+65"});
}

TEST(SchubreglerFehler, EinFeldOhneSatzBeendetUndVerzoegertNichts) {
    Schublauf lauf("3/0-1-2-0(65,,)/0-3-2-0(66,,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+66"});
    EXPECT_EQ(lauf.stellen(RUHE), Texte{"-66"});
    EXPECT_EQ(lauf.stellen(RUHE), Texte{});
    EXPECT_EQ(lauf.stellen(0), Texte{"+65"});
}

// --- parameters and pause ---

TEST(SchubreglerParameter, StehenSolangeDieAktionLaeuft) {
    Schublauf lauf("3/0-3-2-1(65,20,30)");
    lauf.starten();
    EXPECT_EQ(lauf.schub().SchubParameterFeld, 0);
    lauf.stellen(65534);
    EXPECT_EQ(lauf.schub().SchubParameterFeld, 3);
    ASSERT_TRUE(lauf.schub().SchubParameter);
    EXPECT_EQ(lauf.schub().SchubParameter->unterwahl.text(), "1");
    EXPECT_EQ(texte(lauf.schub().SchubParameter->werte), (Texte{"65", "20", "30)"}));
    EXPECT_EQ(lauf.schub().SchubPause, 30);
    lauf.stellen(RUHE);
    EXPECT_EQ(lauf.schub().SchubParameterFeld, 0);
    EXPECT_FALSE(lauf.schub().SchubParameter);
    EXPECT_EQ(lauf.schub().SchubPause, 0);
}

TEST(SchubreglerParameter, JedesEndeLeertSie) {
    for (const auto* satz : {"0-3-0-1(20,7,)", "0-3-1-0(,,)", "0-3-1-3(2,,)", "0-3-2-0(65,,)"}) {
        Schublauf lauf(std::string("3/") + satz);
        lauf.starten();
        lauf.stellen(65534);
        EXPECT_EQ(lauf.schub().SchubParameterFeld, 3) << satz;
        lauf.stellen(RUHE);
        EXPECT_EQ(lauf.schub().SchubParameterFeld, 0) << satz;
        EXPECT_FALSE(lauf.schub().SchubParameter) << satz;
    }
}

TEST(SchubreglerParameter, EineVonSelbstBeendeteTasteLeertSie) {
    Schublauf lauf("3/0-3-2-1(65,20,)");
    lauf.starten();
    lauf.stellen(65534);
    lauf.warten(19);
    EXPECT_EQ(lauf.schub().SchubParameterFeld, 3);
    lauf.warten(1);
    EXPECT_EQ(lauf.schub().SchubParameterFeld, 0);
    EXPECT_FALSE(lauf.schub().SchubParameter);
}

TEST(SchubreglerParameter, BleibenUeberDasEndeEinesLaufsUndGeltenImSelbenFeldWeiter) {
    Schublauf lauf("3/0-3-2-0(65,,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
    lauf.fenster->beenden();
    lauf.schubtext("3/0-3-2-0(66,,)");
    lauf.starten();
    EXPECT_EQ(lauf.nach(5), Texte{"+65"}); // still those of the last run
    EXPECT_EQ(lauf.stellen(RUHE), Texte{"-65"});
    EXPECT_EQ(lauf.stellen(65534), Texte{"+66"});
}

TEST(SchubreglerParameter, GeltenWeiterAuchWennDieArtEineAndereIst) {
    Schublauf lauf("3/0-3-2-1(65,50,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
    lauf.fenster->beenden();
    lauf.schubtext("3/0-3-0-0(20,7,)");
    lauf.starten();
    EXPECT_EQ(lauf.nach(5), Texte{"m(50,0)"}); // to the right by the press time, again after 65 ms
    EXPECT_EQ(lauf.nach(64), Texte{"-65"});    // the key of the last run, when its time is over
    EXPECT_EQ(lauf.nach(1), Texte{"m(50,0)"});
}

TEST(SchubreglerParameter, EinAnderesFeldFuelltSieNeu) {
    Schublauf lauf("3/0-3-2-0(65,,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
    lauf.fenster->beenden();
    lauf.schubtext("2/0-2-2-0(66,,)");
    lauf.starten();
    EXPECT_EQ(lauf.nach(5), Texte{"+66"});
}

// --- timer 1111 and what the slider keeps out of ---

TEST(SchubreglerTimer, LaeuftNurSolangeEtwasZuTunIst) {
    struct Fall {
        const char* satz;
        bool laeuft;
    };
    for (const auto& [satz, laeuft] :
         {Fall{"0-3-0-1(20,7,)", true}, Fall{"0-3-0-1(0,7,)", true}, Fall{"0-3-0-4(20,7,)", true},
          Fall{"0-3-0-1(,7,)", false}, Fall{"0-3-1-0(,,)", false}, Fall{"0-3-1-3(2,,)", false},
          Fall{"0-3-2-0(65,50,30)", false}, Fall{"0-3-2-1(65,50,)", true}, Fall{"0-3-2-1(65,50,30)", true},
          Fall{"0-3-2-1(65,,30)", false}, Fall{"0-3-3-(,,)", false}}) {
        Schublauf lauf(std::string("3/") + satz);
        lauf.starten();
        lauf.stellen(65534);
        EXPECT_EQ(lauf.timerLaeuft(), laeuft) << satz;
        EXPECT_EQ(lauf.zustand.gegeben.timer.TimerMaske(), 0U) << satz;
        lauf.stellen(RUHE);
        EXPECT_FALSE(lauf.timerLaeuft()) << satz;
    }
}

TEST(SchubreglerTimer, EndetMitDerTasteOhneWiederholung) {
    Schublauf lauf("3/0-3-2-1(65,20,)");
    lauf.starten();
    lauf.stellen(65534);
    lauf.warten(20);
    EXPECT_FALSE(lauf.timerLaeuft());
}

TEST(SchubreglerTimer, UeberlebtDasFensterNicht) {
    Schublauf lauf("3/0-3-0-1(20,7,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"m(7,0)"});
    lauf.fenster->beenden();
    lauf.fenster.reset();
    EXPECT_EQ(lauf.uhr.laufende(), 0U);
    EXPECT_EQ(lauf.nach(100), Texte{});
}

TEST(SchubreglerTimer, UeberlebtDasEndeDesLaufsAuchMitDemFensterNicht) {
    Schublauf lauf("3/0-3-0-1(20,7,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"m(7,0)"});
    lauf.fenster->beenden(); // the window is still there
    EXPECT_EQ(lauf.nach(100), Texte{});
}

// --- a key that is down for a time when the run ends ---

// Gives what comes in the first `vorher` ms after the end of the run, and after that.
static std::array<Texte, 2> nachDemEnde(Schublauf& lauf, int vorher) {
    lauf.fenster->beenden();
    lauf.fenster.reset();
    const auto erst = lauf.nach(vorher);
    return {erst, lauf.nach(1000)};
}

TEST(SchubreglerDruckende, KommtNachDemEndeDesLaufsZuSeinerZeit) {
    for (const auto* satz : {"0-3-2-1(65,50,)", "0-3-2-1(65,50,30)"}) { // a repeat presses no more
        Schublauf lauf(std::string("3/") + satz);
        lauf.starten();
        EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
        lauf.warten(20);
        EXPECT_EQ(nachDemEnde(lauf, 29), (std::array<Texte, 2>{Texte{}, Texte{"-65"}})) << satz;
        EXPECT_EQ(lauf.uhr.laufende(), 0U) << satz;
    }
}

TEST(SchubreglerDruckende, EineDruckzeitUnterEinerMillisekundeDauertZehn) {
    Schublauf lauf("3/0-3-2-1(65,0,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
    EXPECT_EQ(nachDemEnde(lauf, 9), (std::array<Texte, 2>{Texte{}, Texte{"-65"}}));
}

TEST(SchubreglerDruckende, InDerPauseKommtNichtsMehr) {
    Schublauf lauf("3/0-3-2-1(65,20,30)");
    lauf.starten();
    lauf.stellen(65534);
    EXPECT_EQ(lauf.nach(25), Texte{"-65"});
    EXPECT_EQ(nachDemEnde(lauf, 100), (std::array<Texte, 2>{}));
}

TEST(SchubreglerDruckende, EinFehlerDerDenLaufAnhaeltAendertDaranNichts) {
    Schublauf lauf("3/0-3-2-1(65,50,)");
    lauf.datenbank.sql("UPDATE tblTastatur SET btn1 = '1,x,0-0-0'");
    auto& fenster = lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
    lauf.takt(1);
    EXPECT_FALSE(fenster.pollt());
    EXPECT_EQ(nachDemEnde(lauf, 44), (std::array<Texte, 2>{Texte{}, Texte{"-65"}}));
}

TEST(SchubreglerDruckende, EinNeuerDruckDerselbenTasteNimmtEsAnSich) {
    Schublauf lauf("3/0-3-2-1(65,50,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
    lauf.fenster->beenden();
    lauf.starten();
    EXPECT_EQ(lauf.nach(5), Texte{"+65"});
    EXPECT_EQ(lauf.nach(49), Texte{}); // the first press would have ended
    EXPECT_EQ(lauf.nach(1), Texte{"-65"});
    EXPECT_EQ(lauf.nach(1000), Texte{});
}

TEST(SchubreglerDruckende, EinGehaltenerDruckDerselbenTasteNimmtEsAnSich) {
    Schublauf lauf("3/0-1-2-0(65,,)/0-3-2-1(65,50,)");
    lauf.starten();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
    lauf.fenster->beenden();
    lauf.starten();
    EXPECT_EQ(lauf.stellen(0), Texte{"+65"});
    EXPECT_EQ(lauf.nach(1000), Texte{});
    EXPECT_EQ(lauf.stellen(RUHE), Texte{"-65"});
}

TEST(SchubreglerDruckende, WasEinNeuerLaufSonstTutLaesstEsGelten) {
    struct Fall {
        const char* satz;
        Texte gleich;
    };
    for (const auto& [satz, gleich] : {Fall{"0-1-2-1(66,500,)", {"+66"}}, Fall{"0-1-0-1(500,7,)", {"m(7,0)"}},
                                       Fall{"0-1-2-0(66,,)", {"+66"}}, Fall{"0-1-3-(,,)", {}}}) {
        Schublauf lauf(std::string("3/0-3-2-1(65,50,)/") + satz);
        lauf.starten();
        EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
        lauf.fenster->beenden();
        lauf.starten();
        EXPECT_EQ(lauf.stellen(0), gleich) << satz;
        EXPECT_EQ(lauf.nach(44), Texte{}) << satz;
        EXPECT_EQ(lauf.nach(1), Texte{"-65"}) << satz;
    }
}

TEST(SchubreglerDruckende, MitDemZustandEndetSeinTimer) {
    ProbeUhr uhr;
    {
        Schubstand stand;
        auto& ende = stand.Druckenden[65];
        ende.zeitgeber = uhr.formularzeitgeber([] {});
        ende.zeitgeber->Interval(std::chrono::milliseconds{20});
        ende.zeitgeber->Enabled(true);
        EXPECT_EQ(uhr.laufende(), 1U);
    }
    EXPECT_EQ(uhr.laufende(), 0U);
}

TEST(SchubreglerTaste, StehtNichtUnterDenGehaltenenUndWiederholtNicht) {
    Schublauf lauf("3/0-3-2-0(65,,)");
    auto& fenster = lauf.starten();
    fenster.HScroll2Aenderung(20);
    lauf.pad.zustand.dwButtons = 1; // or nothing would repeat anyway
    lauf.takt();
    lauf.anzeige.abholen();
    EXPECT_EQ(lauf.stellen(65534), Texte{"+65"});
    EXPECT_EQ(lauf.zustand.gehaltene.GehaltenText(), "");
    EXPECT_EQ(lauf.anzeige.abholen(), Texte{});
    EXPECT_EQ(lauf.nach(100), Texte{});
}
