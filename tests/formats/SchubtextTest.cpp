// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Schubtext.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

int fehlerVon(const std::string& text) {
    return fehlernummer([&] { Schubtext gelesen(text); });
}
int satzfehler(const std::string& satz) {
    return fehlernummer([&] { aktionAus(satz); });
}

} // namespace

// --- reading and building ---

TEST(SchubtextTest, EinLeererTextIstEinReglerOhneLinien) {
    const Schubtext text("");
    EXPECT_EQ(text.linien(), 0);
    EXPECT_EQ(text.felder(), 1);
    EXPECT_EQ(text.satz(0), "");
    EXPECT_FALSE(text.nurAuswaerts());
    EXPECT_EQ(text.text(false), "1");
}

TEST(SchubtextTest, EinGelesenerTextWirdWiederDerselbe) {
    for (const std::string text : {"1", "20", "4", "3/1-1-0-1(10,5,)/1-2-1-3(120,,)/1-3-2-1(65,50,100)",
                                   "2/1-2-3-(,,)", "4/1-1-0-0(0010, 5,)/1-9-2-0(65,,)"})
        EXPECT_EQ(Schubtext(text).text(Schubtext(text).nurAuswaerts()), text);
}

TEST(SchubtextTest, DieSaetzeStehenUnterIhremFeldUndNachNummernGeordnet) {
    const Schubtext text("12/0-10-2-0(65,,)/0-2-1-0(,,)/0-1-3-(,,)");
    EXPECT_EQ(text.linien(), 11);
    EXPECT_EQ(text.satz(9), "10-2-0(65,,)");
    EXPECT_EQ(text.satz(1), "2-1-0(,,)");
    EXPECT_EQ(text.satz(2), "");
    EXPECT_EQ(text.text(false), "12/0-1-3-(,,)/0-2-1-0(,,)/0-10-2-0(65,,)");
}

TEST(SchubtextTest, DasErsteCGiltUndKommtInAlleSaetze) {
    EXPECT_TRUE(Schubtext("2/1-2-3-(,,)/0-1-3-(,,)").nurAuswaerts());
    EXPECT_FALSE(Schubtext("2/0-1-3-(,,)/1-2-3-(,,)").nurAuswaerts());
    EXPECT_FALSE(Schubtext("1/2-1-3-(,,)").nurAuswaerts()) << "as in a run, where 1 alone counts";
    EXPECT_EQ(Schubtext("2/0-1-3-(,,)/1-2-3-(,,)").text(true), "2/1-1-3-(,,)/1-2-3-(,,)");
}

TEST(SchubtextTest, EinTextDerKeinerIstWirdNichtGelesen) {
    EXPECT_EQ(fehlerVon("x"), 13);
    EXPECT_EQ(fehlerVon("/"), 13);
    EXPECT_EQ(fehlerVon("99999999999"), 6);
    EXPECT_EQ(fehlerVon("0"), 9);
    EXPECT_EQ(fehlerVon("-1"), 9);
    EXPECT_EQ(fehlerVon("1"), 0);
    EXPECT_EQ(fehlerVon("20"), 0);
    EXPECT_EQ(fehlerVon("21"), 9);
    EXPECT_EQ(fehlerVon("2/"), 9);
    EXPECT_EQ(fehlerVon("2/0"), 9);
    EXPECT_EQ(fehlerVon("2/0-x-3-(,,)"), 13);
    EXPECT_EQ(fehlerVon("2/x-1-3-(,,)"), 13);
    EXPECT_EQ(fehlerVon("2/0-1-3-(,,)/0-1-3-(,,)"), 457);
}

// --- lines ---

TEST(SchubtextTest, NeunzehnLinienSindDasMeiste) {
    Schubtext text;
    for (int linien = 1; linien <= 19; ++linien) {
        EXPECT_TRUE(text.linieAnfuegen());
        EXPECT_EQ(text.linien(), linien);
    }
    EXPECT_EQ(text.felder(), 20);
    EXPECT_FALSE(text.linieAnfuegen());
    EXPECT_EQ(text.linien(), 19);
}

TEST(SchubtextTest, OhneLinieGibtEsNichtsZuLoeschen) {
    Schubtext text("1/0-1-2-0(65,,)");
    EXPECT_FALSE(text.linieLoeschen());
    EXPECT_EQ(text.text(false), "1/0-1-2-0(65,,)");
}

TEST(SchubtextTest, MitDerLinieGehtDerSatzDesLetztenFelds) {
    Schubtext text("3/0-1-2-0(65,,)/0-2-2-0(66,,)/0-3-2-0(67,,)");
    EXPECT_TRUE(text.linieLoeschen());
    EXPECT_EQ(text.text(false), "2/0-1-2-0(65,,)/0-2-2-0(66,,)");
    EXPECT_TRUE(text.linieAnfuegen());
    EXPECT_EQ(text.satz(2), "") << "it does not come back with the line";
}

TEST(SchubtextTest, EinSatzHinterDemLetztenFeldBleibtBisSeinFeldGeloeschtWird) {
    Schubtext text("2/0-2-2-0(66,,)/0-4-2-0(68,,)");
    EXPECT_TRUE(text.linieLoeschen());
    EXPECT_EQ(text.text(false), "1/0-4-2-0(68,,)");
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(text.linieAnfuegen());
    EXPECT_EQ(text.satz(3), "4-2-0(68,,)");
    EXPECT_TRUE(text.linieLoeschen());
    EXPECT_EQ(text.text(false), "3");
}

TEST(SchubtextTest, EineNeueLinieLaesstDieSaetzeAnIhremPlatz) {
    Schubtext text("2/0-1-2-0(65,,)/0-2-2-0(66,,)");
    EXPECT_TRUE(text.linieAnfuegen());
    EXPECT_EQ(text.text(false), "3/0-1-2-0(65,,)/0-2-2-0(66,,)");
}

TEST(SchubtextTest, EinNeuerSatzTrittAnDieStelleDesAlten) {
    Schubtext text("2/0-2-2-0(66,,)");
    text.satzSetzen(1, "2-3-(,,)");
    text.satzSetzen(0, "1-1-0(,,)");
    EXPECT_EQ(text.text(true), "2/1-1-1-0(,,)/1-2-3-(,,)");
}

// --- records ---

TEST(SchubtextTest, EinSatzNenntFeldArtUnterwahlUndDreiWerte) {
    EXPECT_EQ(alsSatz(3, {Schubart::Mausbewegung, "1", {"10", "5", ""}}), "3-0-1(10,5,)");
    EXPECT_EQ(alsSatz(1, {Schubart::Maustaste, "0", {}}), "1-1-0(,,)");
    EXPECT_EQ(alsSatz(2, {Schubart::Maustaste, "4", {"120", "", ""}}), "2-1-4(120,,)");
    EXPECT_EQ(alsSatz(20, {Schubart::Tastatur, "1", {"65", "50", "100"}}), "20-2-1(65,50,100)");
    EXPECT_EQ(alsSatz(4, {}), "4-3-(,,)");
}

TEST(SchubtextTest, EinSatzWirdWiederZuSeinerAktion) {
    for (const Schubaktion& aktion :
         {Schubaktion{Schubart::Mausbewegung, "3", {"10", "5", ""}},
          Schubaktion{Schubart::Maustaste, "2", {}}, Schubaktion{Schubart::Maustaste, "3", {"120", "", ""}},
          Schubaktion{Schubart::Tastatur, "0", {"65", "", ""}},
          Schubaktion{Schubart::Tastatur, "1", {"65", "50", "0"}}, Schubaktion{}})
        EXPECT_EQ(aktionAus(alsSatz(7, aktion)), aktion);
}

TEST(SchubtextTest, EinSatzDerKeinerIstWirdNichtGelesen) {
    EXPECT_EQ(satzfehler("1"), 9);
    EXPECT_EQ(satzfehler("1-x-0(,,)"), 13);
    EXPECT_EQ(satzfehler("1-99999999999-0(,,)"), 6);
    EXPECT_EQ(satzfehler("1-4-0(,,)"), 9) << "there is no such action";
    EXPECT_EQ(satzfehler("1-0"), 9);
    EXPECT_EQ(satzfehler("1-0-1"), 9);
    EXPECT_EQ(satzfehler("1-0-1(10"), 9);
    EXPECT_EQ(satzfehler("1-0-1(10,5"), 9);
    EXPECT_EQ(satzfehler("1-0-1(10,-5,)"), 9) << "a sign is a separator";
    EXPECT_EQ(satzfehler("1-3"), 0) << "nobody asks what stands behind";
}

// --- as a run reads it ---

TEST(SchubtextTest, EinLeererTextIstKeinRegler) {
    EXPECT_FALSE(schubtextImLauf(""));
}

TEST(SchubtextTest, EinLaufLiestJedenTextSoWeitErReicht) {
    const auto lauf = *schubtextImLauf("x/0-2-2-1(65,50,9)/y");
    EXPECT_EQ(lauf.anzahl.text(), "x");
    ASSERT_EQ(lauf.saetze.size(), 2U);
    const auto& satz = lauf.saetze[0];
    EXPECT_EQ(satz.text, "0-2-2-1(65,50,9)");
    EXPECT_EQ(satz.nurAuswaerts.zahl(), 0);
    EXPECT_EQ(satz.nummer.zahl(), 2);
    EXPECT_EQ(satz.art.zahl(), 2);
    EXPECT_EQ(satz.angaben->unterwahl.ziffer(), 1);
    EXPECT_EQ(satz.angaben->wert(1).zahl(), 50);
    EXPECT_EQ(satz.angaben->pause(), 9);
    EXPECT_EQ(lauf.saetze[1].nurAuswaerts.text(), "y");
    EXPECT_FALSE(lauf.saetze[1].nummer.da());
}

TEST(SchubtextTest, OhneKlammerGibtEsKeineAngaben) {
    for (const auto* text : {"1/0-1", "1/0-1-2", "1/0-1-2-", "1/0-1-2-0"})
        EXPECT_FALSE(schubtextImLauf(text)->saetze[0].angaben) << text;
    EXPECT_TRUE(schubtextImLauf("1/0-1-2-0(")->saetze[0].angaben);
}

TEST(SchubtextTest, ZuWenigeAngabenSindErstEinFehlerWoSieGefragtWerden) {
    const auto angaben = *schubtextImLauf("1/0-1-2-0(65")->saetze[0].angaben;
    EXPECT_EQ(angaben.wert(0).zahl(), 65);
    EXPECT_EQ(fehlernummer([&] { angaben.wert(1); }), 9);
    EXPECT_EQ(fehlernummer([&] { angaben.pause(); }), 9);
}

TEST(SchubtextTest, EineLeerePauseIstNull) {
    EXPECT_EQ(schubtextImLauf("1/0-1-2-1(65,50,)")->saetze[0].angaben->pause(), 0);
    EXPECT_EQ(schubtextImLauf("1/0-1-2-1(65,50,7")->saetze[0].angaben->pause(), 7);
    EXPECT_EQ(fehlernummer([] { (void)schubtextImLauf("1/0-1-2-1(65,50,x)")->saetze[0].angaben->pause(); }),
              13);
    EXPECT_EQ(fehlernummer([] { (void)schubtextImLauf("1/0-1-2-1(65,50,")->saetze[0].angaben->pause(); }),
              13);
}

TEST(SchubtextTest, ImLaufGiltDasCDesFeldsEinsSonstDasErste) {
    EXPECT_EQ(schubtextImLauf("3/0-2-3-(,,)/1-1-3-(,,)")->massgebend().text, "1-1-3-(,,)");
    EXPECT_EQ(schubtextImLauf("3/0-2-3-(,,)/1-01-3-(,,)")->massgebend().text, "0-2-3-(,,)")
        << "by its spelling";
}
