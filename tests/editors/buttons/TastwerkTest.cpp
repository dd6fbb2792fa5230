// SPDX-License-Identifier: GPL-3.0-or-later
// The decisions of the button editor, without a form.
#include "editors/buttons/Tastwerk.h"

#include "base/LaufzeitFehler.h"
#include "base/Text.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace {

std::string inAnfuehrung(const std::string& code) {
    return " <" + code + "> ";
}

struct Werk : ::testing::Test {
    Werk() {
        for (int taste = 0; taste < SLOTS; ++taste)
            for (int ebene = 0; ebene < EBENEN; ++ebene)
                werk.bild.setzeBelegung(taste, ebene, LEERE_BELEGUNG);
    }
    void belegt(int taste, std::string_view text, int ebene = 0) {
        werk.bild.setzeBelegung(taste, ebene, text);
    }
    std::string belegung(int taste, int ebene = 0) const { return werk.bild.belegung(taste, ebene); }
    std::vector<std::string> schilder() {
        const auto texte = werk.beschriftungen(inAnfuehrung);
        return {texte.begin(), texte.end()};
    }

    Tastwerk::Umschalttasten umschaltTasten{0, 0};
    Tastwerk werk{umschaltTasten};
};

const std::vector<std::string> NAMEN{"Dreieck", "Kreis",  "Kreuz",  "Viereck", "L 1",     "R 1",
                                     "L 2",     "R 2",    "Select", "Start",   "L-Stick", "R-Stick",
                                     "Oben",    "Rechts", "Unten",  "Links"};

int fehlerVon(std::string_view text) {
    return fehlernummer([text] { getippteZahl16(text); });
}

} // namespace

TEST(TasteImWort, GenauEinBitNenntSeineTaste) {
    for (int bit = 0; bit < 12; ++bit)
        EXPECT_EQ(tasteImWort(1U << bit), bit);
}

TEST(TasteImWort, KeinsZweiUndHoehereNennenKeine) {
    for (const std::uint32_t wort : {0U, 3U, 5U, 0x810U, 0xFFFU, 0x1000U, 0x1001U, 0x80000000U, 0xFFFFFFFFU})
        EXPECT_EQ(tasteImWort(wort), std::nullopt) << wort;
}

TEST(ZweiteMarke, HabenNurDieErstenVier) {
    std::vector<int> marken;
    for (int taste = 0; taste < SLOTS; ++taste)
        marken.push_back(zweiteMarke(taste));
    EXPECT_EQ(marken,
              (std::vector<int>{20, 21, 22, 23, 100, 100, 100, 100, 100, 100, 100, 100, 100, 100, 100, 100}));
}

TEST(Ganzzahl16, LiestGanzeZahlen) {
    EXPECT_EQ(getippteZahl16("0"), 0);
    EXPECT_EQ(getippteZahl16("007"), 7);
    EXPECT_EQ(getippteZahl16("+5"), 5);
    EXPECT_EQ(getippteZahl16("  12 "), 12);
    EXPECT_EQ(getippteZahl16("32767"), 32767);
    EXPECT_EQ(getippteZahl16("-32768"), -32768);
}

TEST(Ganzzahl16, RundetHinterDemKommaHalbeZurGeraden) {
    EXPECT_EQ(getippteZahl16("12,"), 12);
    EXPECT_EQ(getippteZahl16("2,5"), 2);
    EXPECT_EQ(getippteZahl16("3,5"), 4);
    EXPECT_EQ(getippteZahl16("2,500"), 2);
    EXPECT_EQ(getippteZahl16("2,501"), 3);
    EXPECT_EQ(getippteZahl16("2,4999"), 2);
    EXPECT_EQ(getippteZahl16(",6"), 1);
    EXPECT_EQ(getippteZahl16("-3,5"), -4);
    EXPECT_EQ(getippteZahl16("32767,4"), 32767);
    EXPECT_EQ(getippteZahl16("-32768,5"), -32768);
}

TEST(Ganzzahl16, KeineZahlIstFehlerDreizehn) {
    for (const char* text :
         {"", " ", "-", "+", ",", "abc", "1a", "a1", "1 2", "--1", "1,2,3", "1.5", "1e3", "0x10", "ß"})
        EXPECT_EQ(fehlerVon(text), 13) << text;
}

TEST(Ganzzahl16, AusserhalbVonSechzehnBitIstFehlerSechs) {
    for (const char* text : {"32768", "-32769", "32767,5", "100000", "99999999999999999999999999"})
        EXPECT_EQ(fehlerVon(text), 6) << text;
}

TEST(OhneRand, NimmtNurLeerzeichen) {
    EXPECT_EQ(ohneRand("  a b  "), "a b");
    EXPECT_EQ(ohneRand("   "), "");
    EXPECT_EQ(ohneRand(""), "");
    EXPECT_EQ(ohneRand("\ta"), "\ta");
}

TEST_F(Werk, EinLeeresBildZeigtDieNamen) {
    EXPECT_EQ(schilder(), NAMEN);
    EXPECT_EQ(umschaltTasten, (Tastwerk::Umschalttasten{-1, -1}));
}

TEST_F(Werk, SchilderZeigenTasteOderAktion) {
    belegt(0, "1,65,0-0-0");
    belegt(1, "0,65,0-0-0");
    belegt(2, "2,0,0-0-0");
    belegt(3, "3,0,0-0-0");
    belegt(4, "4,0,1-0-0");
    belegt(5, "5,66,0-0-0");
    belegt(6, "10,67,0-0-0");
    belegt(7, "7,68,0-0-0");
    belegt(8, "7,0,0-0-0");
    belegt(9, "1,0,0-0-0");
    belegt(10, "1,-5,0-0-0");
    belegt(15, "1,37,0-0-0");
    EXPECT_EQ(schilder(),
              (std::vector<std::string>{"<65>", "1,2,3,4...", "9,8,7,6...", "Umschalt 1", "Umschalt 2",
                                        "Maus", "<67>", "<68>", "Select", "Start", "L-Stick", "R-Stick",
                                        "Oben", "Rechts", "Unten", "<37>"}));
    EXPECT_EQ(umschaltTasten, (Tastwerk::Umschalttasten{3, 4}));
}

TEST_F(Werk, VonMehrerenUmschalttastenGiltDieLetzte) {
    belegt(3, "3,0,0-0-0");
    belegt(9, "3,0,0-0-0");
    schilder();
    EXPECT_EQ(umschaltTasten, (Tastwerk::Umschalttasten{9, -1}));
}

TEST_F(Werk, SchilderGehoerenZurEbene) {
    belegt(0, "1,65,0-0-0", 1);
    EXPECT_EQ(schilder(), NAMEN);
    werk.AktuelleEbene = 1;
    EXPECT_EQ(schilder().front(), "<65>");
    werk.AktuelleEbene = 2;
    EXPECT_EQ(schilder(), NAMEN);
}

TEST_F(Werk, FremdeTexteLassenDieUebrigenSchilderStehen) {
    belegt(0, "x,65,0-0-0");
    belegt(1, "1,y,0-0-0");
    werk.bild.field(2, 0, 0) = "";
    belegt(3, "1,65,0-0-0");
    const auto texte = schilder();
    EXPECT_EQ((std::vector<std::string>{texte.begin(), texte.begin() + 4}),
              (std::vector<std::string>{"<65>", "Kreis", "Kreuz", "<65>"}));
}

TEST_F(Werk, DieArtIstZehnOhneWahl) {
    belegt(0, "5,0,0-0-0");
    EXPECT_EQ(werk.art(), Belegungsart::Leer);
    werk.AktuelleTaste = 0;
    EXPECT_EQ(werk.art(), Belegungsart::Maus);
    werk.bild.field(0, 0, 0) = "";
    EXPECT_EQ(werk.art(), Belegungsart::Leer);
}

TEST_F(Werk, EineUnbekannteArtIstEinFehler) {
    werk.AktuelleTaste = 0;
    for (const char* text : {"6", "9", "11", "-1"}) {
        werk.bild.field(0, 0, 0) = text;
        EXPECT_EQ(fehlernummer([this] { werk.art(); }), 9) << text;
    }
    werk.bild.field(0, 0, 0) = "x";
    EXPECT_EQ(fehlernummer([this] { werk.art(); }), 13);
}

TEST_F(Werk, NeuLeertDieZwoelfTastenDerEbeneUndNichtDasKreuz) {
    for (int taste = 0; taste < SLOTS; ++taste)
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            belegt(taste, "1,65,1-2-3", ebene);
    werk.AktuelleEbene = 1;
    werk.SchemaNeu(false);
    for (int taste = 0; taste < SLOTS; ++taste)
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            EXPECT_EQ(belegung(taste, ebene), ebene == 1 && taste < 12 ? LEERE_BELEGUNG : "1,65,1-2-3")
                << taste << " " << ebene;
}

TEST_F(Werk, NeuLeertNurDieGewaehlteAuchAufDemKreuz) {
    belegt(0, "1,65,1-2-3");
    belegt(15, "1,37,1-2-3");
    werk.SchemaNeu(true);
    EXPECT_EQ(belegung(0), "1,65,1-2-3");
    werk.AktuelleTaste = 15;
    werk.SchemaNeu(true);
    EXPECT_EQ(belegung(0), "1,65,1-2-3");
    EXPECT_EQ(belegung(15), LEERE_BELEGUNG);
}

TEST_F(Werk, EineNeueArtLeertDieselbeNicht) {
    belegt(0, "1,65,1-2-3");
    werk.AktuelleTaste = 0;
    werk.artWaehlen(Belegungsart::Taste);
    EXPECT_EQ(belegung(0), "1,65,1-2-3");
    werk.artWaehlen(Belegungsart::Maus);
    EXPECT_EQ(belegung(0), "5,0,0-0-0");
}

TEST_F(Werk, OhneWahlAendertSichNichts) {
    schilder();
    const auto vorher = werk.bild;
    werk.artWaehlen(Belegungsart::Umschalt1);
    werk.setzeFeld(belegungsfeld::MODUS, "1");
    EXPECT_EQ(werk.bild, vorher);
    EXPECT_EQ(umschaltTasten, (Tastwerk::Umschalttasten{-1, -1}));
}

TEST_F(Werk, FuehrtBuchUeberDieUmschalttasten) {
    using Buch = Tastwerk::Umschalttasten;
    schilder();
    werk.AktuelleTaste = 4;
    werk.artWaehlen(Belegungsart::Umschalt1);
    EXPECT_EQ(umschaltTasten, (Buch{4, -1}));
    werk.artWaehlen(Belegungsart::Umschalt2); // from one to the other
    EXPECT_EQ(umschaltTasten, (Buch{-1, 4}));
    werk.AktuelleTaste = 5;
    werk.artWaehlen(Belegungsart::Umschalt2); // taken already: stays
    EXPECT_EQ(umschaltTasten, (Buch{-1, 4}));
    werk.artWaehlen(Belegungsart::Taste); // not the one that holds it
    EXPECT_EQ(umschaltTasten, (Buch{-1, 4}));
    werk.AktuelleTaste = 4;
    werk.artWaehlen(Belegungsart::Taste);
    EXPECT_EQ(umschaltTasten, (Buch{-1, -1}));
}

TEST_F(Werk, UmschalttastenSindFreiOderDieEigenen) {
    using Erlaubt = std::array<bool, 2>;
    schilder();
    EXPECT_EQ(werk.umschalttastenErlaubt(0), (Erlaubt{true, true}));
    umschaltTasten = {0, 11};
    EXPECT_EQ(werk.umschalttastenErlaubt(0), (Erlaubt{true, false}));
    EXPECT_EQ(werk.umschalttastenErlaubt(11), (Erlaubt{false, true}));
    EXPECT_EQ(werk.umschalttastenErlaubt(5), (Erlaubt{false, false}));
    umschaltTasten = {-1, -1};
    for (int taste = 12; taste < SLOTS; ++taste)
        EXPECT_EQ(werk.umschalttastenErlaubt(taste), (Erlaubt{false, false})) << taste;
}
