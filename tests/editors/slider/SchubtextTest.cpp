#include "editors/slider/Schubtext.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <array>

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

// --- numbers ---

TEST(SchubtextTest, NurZiffernBisZumGroesstenWertGehenInDenText) {
    for (const auto* text : {"0", "1", "007", "2147483647", " 5 ", "00000000000000000000000000001"})
        EXPECT_EQ(zahlPruefen(text), Zahlbefund::Gut) << text;
    for (const auto* text : {"-1", "+1", "1,5", "1.5", "-1,5", "5.", ",5", "2147483648", "99999999999999"})
        EXPECT_EQ(zahlPruefen(text), Zahlbefund::PasstNicht) << text;
    for (const auto* text : {"",    " ",   "-",     "+",   ",",   ".",   "(",  ")",    "/",   "1(",
                             "(1)", "1-2", "1,2,3", "--1", "1/2", "abc", "1a", "0x10", "1 2", "１"})
        EXPECT_EQ(zahlPruefen(text), Zahlbefund::KeineZahl) << text;
}

// What zahlPruefen lets through comes back from the text as it went in, in whatever place it stands.
TEST(SchubtextTest, WasAlsZahlGiltBringtDenTextNichtDurcheinander) {
    std::string zeichen = "019-+,.()/ x";
    std::vector<std::string> texte{""};
    for (int laenge = 0; laenge < 3; ++laenge) {
        const auto bisher = texte;
        for (const auto& text : bisher)
            for (const char eines : zeichen)
                texte.push_back(text + eines);
    }
    int gute = 0;
    for (const auto& text : texte) {
        if (zahlPruefen(text) != Zahlbefund::Gut)
            continue;
        ++gute;
        for (std::size_t platz = 0; platz < 3; ++platz) {
            Schubaktion aktion{Schubart::Tastatur, "1", {}};
            aktion.werte[platz] = text;
            Schubtext fertig;
            fertig.satzSetzen(0, alsSatz(1, aktion));
            const Schubtext gelesen(fertig.text(true));
            EXPECT_EQ(aktionAus(gelesen.satz(0)), aktion) << "\"" << text << "\"";
            EXPECT_EQ(gelesen.felder(), 1);
        }
    }
    EXPECT_GT(gute, 3 + 9 + 27);
}

// --- places ---

TEST(SchubtextTest, DieLinienTeilenDasBildInGleicheFelder) {
    EXPECT_EQ(linienstelle(1, 1, 600), 300);
    EXPECT_EQ(linienstelle(1, 19, 600), 30);
    EXPECT_EQ(linienstelle(19, 19, 600), 570);
    EXPECT_EQ(schubstelle(0, 600), 0);
    EXPECT_EQ(schubstelle(13107, 600), 120); // a fifth
    EXPECT_EQ(schubstelle(65535, 600), 600);
}

// The picture shows the field whose action a run starts.
TEST(SchubtextTest, DasFeldIstInJedemBildDasDesLaufs) {
    for (const int breite : {1, 601, 676})
        for (int felder = 1; felder <= 20; ++felder)
            for (std::int32_t wert = 0; wert < 65535; ++wert)
                ASSERT_EQ(feldAnStelle(schubstelle(wert, breite), felder - 1, breite),
                          static_cast<std::int64_t>(wert) * felder / 65535 + 1)
                    << wert << " of " << felder << " fields, " << breite << " pixels";
    EXPECT_EQ(feldAnStelle(schubstelle(65535, 600), 3, 600), 4) << "the end lies right of all lines";
}
