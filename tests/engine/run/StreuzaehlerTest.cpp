// SPDX-License-Identifier: GPL-3.0-or-later
// Where the sticks were during a run: by tick and layer, what breaks the way, and that a rest counts as no
// rest.
#include "engine/run/Streuzaehler.h"
#include "tests/engine/run/Probelauf.h"
#include "tests/hilfen/Kunsthand.h"
#include "tests/hilfen/Speicherzaehler.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using Aufenthalt = Streudaten::Aufenthalt;
using Weg = std::vector<Aufenthalt>;

constexpr auto LINKS = Stickseite::Links;
constexpr auto RECHTS = Stickseite::Rechts;

constexpr std::uint16_t zelle(int x, int y) {
    return static_cast<std::uint16_t>(y * Streudaten::ZELLEN + x);
}
constexpr std::uint16_t MITTE = zelle(127, 127);

std::uint64_t takte(const Streudaten& daten) {
    return std::accumulate(daten.takte.begin(), daten.takte.end(), std::uint64_t{0});
}
std::uint64_t ruhende(const Streudaten& daten) {
    const auto& ruhe = daten.achsen[0].ruhe;
    return std::accumulate(ruhe.begin(), ruhe.end(), std::uint64_t{0});
}

/// What was counted of a stick in a layer; nothing where nothing was.
Streudaten von(const std::vector<Streulauf>& laeufe, Stickseite seite, int ebene) {
    for (const auto& lauf : laeufe)
        if (lauf.seite == seite && lauf.ebene == ebene)
            return lauf.daten;
    return {};
}

/// A counter that is told the same of the smoothed and of the raw position.
class StreuzaehlerTest : public testing::Test {
protected:
    void bleiben(int anzahl, Stickposition ort, int ebene = 0) {
        for (int i = 0; i < anzahl; ++i)
            zaehler.takt(LINKS, ebene, ort, ort);
    }
    Streudaten daten(int ebene = 0) const { return von(zaehler.ergebnis(), LINKS, ebene); }

    Streuzaehler zaehler;
};

/// Writes down what it hears.
struct Mitschrift : Streuhoerer {
    struct Gehoertes {
        Stickseite seite;
        int ebene;
        Stickposition ort;
        std::uint64_t anzahl;
        bool folgt;
        bool operator==(const Gehoertes&) const = default;
    };
    void takte(Stickseite seite, int ebene, const Stickposition& ort, std::uint64_t anzahl,
               bool folgt) override {
        alles.push_back({seite, ebene, ort, anzahl, folgt});
    }
    std::vector<Gehoertes> alles;
};

struct Streuspiel : Streuablage {
    /// Starts a run, which tells the test what it has counted.
    void starten() {
        lauf.mitSticks();
        lauf.fenster = std::make_unique<LaufFenster>(Laufumgebung{.zustand = lauf.zustand,
                                                                  .joystick = lauf.pad,
                                                                  .eingabe = lauf.eingabe,
                                                                  .zeitgeber = lauf.uhr,
                                                                  .anzeige = lauf.anzeige,
                                                                  .streuablage = this,
                                                                  .streuhoerer = &mitschrift});
        lauf.fenster->laden();
    }
    void beenden() { lauf.fenster->beenden(); }
    void stick(int x, int y) {
        lauf.pad.zustand.dwXpos = static_cast<std::uint32_t>(x);
        lauf.pad.zustand.dwYpos = static_cast<std::uint32_t>(y);
        lauf.pad.melden();
    }
    void tasten(std::uint32_t gedrueckte) {
        lauf.pad.zustand.dwButtons = gedrueckte;
        lauf.pad.melden();
    }
    Streudaten links(int ebene = 0) const { return von(laeufe, LINKS, ebene); }

    void ablegen(const std::string& schemaName, std::vector<Streulauf> gezaehltes) override {
        ++ablagen;
        schema = schemaName;
        laeufe = std::move(gezaehltes);
    }

    Probelauf lauf{{"btn9", "3,0,0-0-0"}};
    Mitschrift mitschrift;
    int ablagen = 0;
    std::string schema;
    std::vector<Streulauf> laeufe;
};

class StreulaufTest : public testing::Test, protected Streuspiel {};

} // namespace

// --- the counter by itself ---

TEST_F(StreuzaehlerTest, OhneTaktIstNichtsGezaehlt) {
    EXPECT_TRUE(zaehler.ergebnis().empty());
    zaehler.nocheinmal(1000);
    zaehler.takt(LINKS, 0, {1, 1}, std::nullopt);
    zaehler.nocheinmal(1000);
    EXPECT_TRUE(zaehler.ergebnis().empty());
}

TEST_F(StreuzaehlerTest, EineZelleIst256EinheitenBreit) {
    for (const Stickposition ort : {Stickposition{0, 0}, {255, 255}, {256, 0}, {0, 256}, {65'535, 65'535}})
        bleiben(1, ort);
    const auto gezaehlt = daten();
    EXPECT_EQ(gezaehlt.takte[0], 2U);
    EXPECT_EQ(gezaehlt.takte[1], 1U);
    EXPECT_EQ(gezaehlt.takte[256], 1U);
    EXPECT_EQ(gezaehlt.takte[65'535], 1U);
    EXPECT_EQ(gezaehlt.weg, (Weg{{0, 2}, {1, 1}, {256, 1}, {65'535, 1}}));
}

TEST_F(StreuzaehlerTest, WasAusserhalbDerEbeneLiegtZaehltAmRand) {
    bleiben(1, {-1, 70'000});
    EXPECT_EQ(daten().weg, (Weg{{zelle(0, 255), 1}}));
}

TEST_F(StreuzaehlerTest, JedeEbeneUndJederStickZaehltFuerSich) {
    bleiben(3, {0, 0}, 0);
    bleiben(2, {0, 0}, 2);
    zaehler.takt(RECHTS, 1, {300, 0}, Stickposition{300, 0});
    const auto ergebnis = zaehler.ergebnis();
    ASSERT_EQ(ergebnis.size(), 3U);
    EXPECT_EQ(von(ergebnis, LINKS, 0).takte[0], 3U);
    EXPECT_EQ(von(ergebnis, LINKS, 2).takte[0], 2U);
    EXPECT_EQ(von(ergebnis, RECHTS, 1).weg, (Weg{{1, 1}}));
}

TEST_F(StreuzaehlerTest, DerWegIstUnterbrochenWoEtwasDazwischenLag) {
    bleiben(2, {0, 0}, 0);
    bleiben(1, {0, 0}, 1);
    bleiben(2, {0, 0}, 0);
    zaehler.unterbrechen();
    zaehler.unterbrechen();
    bleiben(1, {0, 0}, 0);
    zaehler.takt(LINKS, 0, {0, 0}, std::nullopt);
    bleiben(1, {0, 0}, 0);
    EXPECT_EQ(daten(0).weg, (Weg{{0, 2}, {0, 0}, {0, 2}, {0, 0}, {0, 1}, {0, 0}, {0, 1}}));
    EXPECT_EQ(daten(1).weg, (Weg{{0, 1}}));
    EXPECT_EQ(takte(daten(0)), 6U);
}

TEST_F(StreuzaehlerTest, NachEinerUnterbrechungIstDerLetzteTaktKeinerMehr) {
    bleiben(1, {0, 0});
    zaehler.unterbrechen();
    zaehler.nocheinmal(10);
    EXPECT_EQ(takte(daten()), 1U);
}

TEST_F(StreuzaehlerTest, EinLangerAufenthaltSindMehrereDerselbenZelle) {
    bleiben(1, {0, 0});
    zaehler.nocheinmal(65'534);
    EXPECT_EQ(daten().weg, (Weg{{0, 65'535}}));
    bleiben(1, {0, 0});
    EXPECT_EQ(daten().weg, (Weg{{0, 65'535}, {0, 1}}));
    zaehler.nocheinmal(2 * 65'535);
    EXPECT_EQ(daten().weg, (Weg{{0, 65'535}, {0, 65'535}, {0, 65'535}, {0, 1}}));
    EXPECT_EQ(daten().takte[0], 3 * 65'535 + 1U);
}

// A run of months, most of which a rest has left out.
TEST_F(StreuzaehlerTest, KeineZahlLaeuftUeber) {
    constexpr std::uint64_t VOLL = 0xFFFFFFFF;
    bleiben(1, {0, 0});
    zaehler.nocheinmal(VOLL - 2);
    EXPECT_EQ(daten().takte[0], VOLL - 1);
    zaehler.nocheinmal(1);
    EXPECT_EQ(daten().takte[0], VOLL);
    zaehler.nocheinmal(VOLL + 3);
    bleiben(200, {0, 0});
    const auto gezaehlt = daten();
    EXPECT_EQ(gezaehlt.takte[0], VOLL);
    EXPECT_EQ(gezaehlt.achsen[0].zittern[0], VOLL);
    EXPECT_EQ(gezaehlt.achsen[1].ruhe[0], VOLL);
}

TEST_F(StreuzaehlerTest, VomWegBleibtDasNeueste) {
    constexpr int ZUVIEL = 10;
    for (int i = 0; i < static_cast<int>(Streudaten::WEG_HOECHSTENS) + ZUVIEL; ++i)
        bleiben(1, {256 * (i % 200), 0});
    const auto gezaehlt = daten();
    ASSERT_EQ(gezaehlt.weg.size(), Streudaten::WEG_HOECHSTENS);
    EXPECT_EQ(gezaehlt.weg.front().zelle, ZUVIEL);
    EXPECT_EQ(gezaehlt.weg.back().zelle, (Streudaten::WEG_HOECHSTENS + ZUVIEL - 1) % 200);
    EXPECT_EQ(takte(gezaehlt), Streudaten::WEG_HOECHSTENS + ZUVIEL);
}

TEST_F(StreuzaehlerTest, ZusammengefassteTakteSindWieEinzelne) {
    Streuzaehler einzeln;
    Kunsthand hand({.hertz = 200});
    std::uint32_t wuerfel = 1;
    for (int i = 0; i < 20'000; ++i) {
        const auto probe = hand.naechste();
        const Stickposition ort{probe.x, probe.y};
        wuerfel = wuerfel * 1664525 + 1013904223;
        const auto dazu = wuerfel >> 24 < 3 ? wuerfel >> 20 & 1023 : 0; // now and then
        zaehler.takt(LINKS, 0, ort, ort);
        zaehler.nocheinmal(dazu);
        for (std::uint32_t k = 0; k <= dazu; ++k)
            einzeln.takt(LINKS, 0, ort, ort);
    }
    EXPECT_EQ(zaehler.ergebnis(), einzeln.ergebnis());
    EXPECT_GT(ruhende(daten()), 1000U);
}

TEST_F(StreuzaehlerTest, EineUnterbrechungBeendetAuchDieRuhe) {
    bleiben(99, {1000, 1000});
    zaehler.unterbrechen();
    bleiben(99, {1000, 1000});
    EXPECT_EQ(ruhende(daten()), 0U);
    bleiben(1, {1000, 1000});
    EXPECT_EQ(ruhende(daten()), 100U);
}

TEST_F(StreuzaehlerTest, WerZuhoertErfaehrtJedenTaktUndObErFolgt) {
    Mitschrift mitschrift;
    Streuzaehler gehoerter(&mitschrift);
    const auto takt = [&](Stickseite seite, int ebene, Stickposition ort) {
        gehoerter.takt(seite, ebene, ort, Stickposition{1, 1});
    };
    gehoerter.nocheinmal(3); // of nothing
    takt(LINKS, 0, {1001, 2002});
    takt(RECHTS, 0, {7, 8});
    takt(LINKS, 0, {1002, 2002});
    gehoerter.nocheinmal(5);
    takt(LINKS, 1, {1002, 2002});
    gehoerter.takt(LINKS, 1, {1, 1}, std::nullopt);
    takt(LINKS, 1, {1003, 2002});
    gehoerter.unterbrechen();
    takt(LINKS, 1, {1003, 2002});
    EXPECT_EQ(mitschrift.alles, (std::vector<Mitschrift::Gehoertes>{{LINKS, 0, {1001, 2002}, 1, false},
                                                                    {RECHTS, 0, {7, 8}, 1, false},
                                                                    {LINKS, 0, {1002, 2002}, 1, true},
                                                                    {LINKS, 0, {1002, 2002}, 5, true},
                                                                    {RECHTS, 0, {7, 8}, 5, true},
                                                                    {LINKS, 1, {1002, 2002}, 1, false},
                                                                    {LINKS, 1, {1003, 2002}, 1, false},
                                                                    {LINKS, 1, {1003, 2002}, 1, false}}));
}

TEST_F(StreuzaehlerTest, EinTaktFordertKeinenSpeicher) {
    Kunsthand hand({.hertz = 200});
    const auto vorher = speicheranforderungen();
    for (int i = 0; i < 10'000; ++i) {
        const auto probe = hand.naechste();
        zaehler.takt(LINKS, i / 1000 % 3, {probe.x, probe.y}, Stickposition{probe.x, probe.y});
    }
    EXPECT_EQ(speicheranforderungen(), vorher);
}

// --- in a run ---

TEST_F(StreulaufTest, JederTaktEinesLaufsZaehltUndNachDemEndeWirdAbgelegt) {
    starten();
    lauf.warten(1000);
    EXPECT_EQ(ablagen, 0);
    beenden();
    EXPECT_EQ(ablagen, 1);
    EXPECT_EQ(schema, "S");
    EXPECT_EQ(takte(links()), 199U) << "the first tick has no raw values yet";
    EXPECT_EQ(links().takte[MITTE], 199U);
    EXPECT_EQ(takte(von(laeufe, RECHTS, 0)), 199U);
    std::uint64_t gehoerte = 0;
    for (const auto& eines : mitschrift.alles)
        gehoerte += eines.seite == LINKS ? eines.anzahl : 0;
    EXPECT_EQ(gehoerte, 199U);
    EXPECT_EQ(ruhende(links()), 175U);
    beenden();
    EXPECT_EQ(ablagen, 1);
}

TEST_F(StreulaufTest, GezaehltWirdWasDieGlaettungAusgibt) {
    constexpr int FENSTER_LX = 2;
    constexpr int RAND_LX = 5;
    starten();
    lauf.fenster->HScroll1Aenderung(FENSTER_LX, 30);
    lauf.fenster->HScroll1Aenderung(RAND_LX, 20);
    lauf.warten(500);
    stick(32'768, 32'767); // a cell further, and held back until the window is full of it
    lauf.warten(100);
    beenden();
    const auto weg = links().weg;
    ASSERT_EQ(weg.size(), 2U);
    EXPECT_GT(weg[0].takte, 101);
    EXPECT_EQ(weg[1].zelle, zelle(128, 127));
}

TEST_F(StreulaufTest, DerNameIstDerDesLaufsUndNichtDerVonNachher) {
    starten();
    lauf.warten(100);
    lauf.zustand.global.SchemaName = "anderes";
    beenden();
    EXPECT_EQ(schema, "S");
}

TEST_F(StreulaufTest, OhnePadIstNichtsDa) {
    lauf.pad.da = false;
    starten();
    lauf.warten(1000);
    beenden();
    EXPECT_EQ(ablagen, 0);
}

TEST_F(StreulaufTest, EinPadDasWegWarZaehltSolangeNicht) {
    for (const bool ruhend : {false, true}) {
        lauf.pad.kannWachen = ruhend;
        starten();
        lauf.warten(500);
        lauf.pad.da = false;
        lauf.pad.melden();
        lauf.warten(60'000);
        lauf.pad.da = true;
        lauf.pad.melden();
        lauf.warten(500);
        beenden();
        // The first tick of all has no raw values yet.
        const auto davor = static_cast<std::uint16_t>(ruhend ? 100 : 99);
        EXPECT_EQ(links().weg, (Weg{{MITTE, davor}, {MITTE, 0}, {MITTE, 100}})) << ruhend;
    }
}

TEST_F(StreulaufTest, AngehaltenZaehltNichts) {
    for (const int knopf : {0, 1}) {
        starten();
        lauf.warten(505);
        lauf.fenster->Command1Klick(knopf);
        lauf.warten(10'000);
        lauf.fenster->Command1Klick(knopf);
        lauf.warten(500);
        beenden();
        const auto davor = static_cast<std::uint16_t>(knopf == 0 ? 100 : 101); // as above
        EXPECT_EQ(links().weg, (Weg{{MITTE, davor}, {MITTE, 0}, {MITTE, 100}})) << knopf;
    }
}

TEST_F(StreulaufTest, EineEbeneZaehltVonIhremEintrittAn) {
    starten();
    lauf.warten(500);
    tasten(1U << 8);
    lauf.warten(300);
    tasten(0);
    lauf.warten(200);
    beenden();
    EXPECT_EQ(links(0).weg, (Weg{{MITTE, 99}, {MITTE, 0}, {MITTE, 40}}));
    EXPECT_EQ(links(1).weg, (Weg{{MITTE, 60}}));
}

TEST_F(StreulaufTest, EineGesperrteEbeneZaehltAuch) {
    Schemabau(lauf.datenbank).sperre(LINKS, 1).ergaenzen();
    starten();
    lauf.warten(100);
    beenden();
    EXPECT_EQ(takte(links()), 19U);
}

TEST_F(StreulaufTest, EinAbgebrochenerLaufWirdAuchAbgelegt) {
    lauf.datenbank.sql("INSERT INTO tblStickAktion VALUES ('S', 0, 27072, 0, 0, 0, '0,2,x,10')");
    starten();
    lauf.warten(500);
    stick(1000, 32'767);
    lauf.warten(100);
    EXPECT_EQ(ablagen, 1);
    EXPECT_EQ(takte(links()), 99U);
}

namespace {

/// A hand whose pad is told of only where it does something, and now and then does nothing for a while.
std::uint64_t spielen(Streuspiel& spiel, bool ruhend) {
    spiel.lauf.pad.kannWachen = ruhend;
    spiel.starten();
    Kunsthand hand({.hertz = 200, .stufe = 512});
    std::uint32_t wuerfel = 7;
    for (int i = 0; i < 3000; ++i) {
        wuerfel = wuerfel * 1664525 + 1013904223;
        const auto probe = hand.naechste();
        spiel.stick(probe.x, probe.y);
        spiel.lauf.warten(wuerfel >> 24 < 8 ? static_cast<int>(wuerfel >> 16 & 2047) : 3);
        if (wuerfel >> 23 == 100)
            spiel.tasten(spiel.lauf.pad.zustand.dwButtons ^ (1U << 8));
    }
    spiel.beenden();
    return spiel.lauf.uhr.ausgelassene();
}

} // namespace

TEST(Streuruhe, RuhendeAbfragenZaehlenWieLaufende) {
    Streuspiel laufend;
    Streuspiel ruhend;
    EXPECT_EQ(spielen(laufend, false), 0U);
    EXPECT_GT(spielen(ruhend, true), 1000U);
    EXPECT_TRUE(laufend.laeufe == ruhend.laeufe);
    for (const int ebene : {0, 1})
        EXPECT_GT(ruhende(laufend.links(ebene)), 1000U) << ebene;
}
