// SPDX-License-Identifier: GPL-3.0-or-later
// The button editor: actions, the properties that each of them has, number boxes, and the capture of keys.
#include "platform/probe/ProbeTastatur.h"
#include "tests/editors/buttons/Tastwerktest.h"

namespace {

constexpr const char* LEER = "10,0,0-0-0";

using Zahlen = std::vector<int>;
using Namen = std::vector<std::string>;

class Tastwerkeigenschaften : public Tastwerktest {
protected:
    /// Lets the key that means `code` go in the capture box.
    void taste(VirtuelleTaste code, bool wiederholt = false) {
        QKeyEvent unten(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, ProbeTastatur::nummer(code), 0, 0,
                        {}, wiederholt);
        QKeyEvent oben(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, ProbeTastatur::nummer(code), 0, 0,
                       {}, wiederholt);
        QApplication::sendEvent(&fang(), &unten);
        QApplication::sendEvent(&fang(), &oben);
    }
    /// Types into a number box as a hand does: marks all, then one key after the other.
    void tippen(const QString& name, const QString& text) {
        box(name).selectAll();
        QTest::keyClicks(&box(name), text);
        ereignisse();
    }
    static const std::vector<const char*> ZEITEN;
};
const std::vector<const char*> Tastwerkeigenschaften::ZEITEN{"Text1(0)", "Check1(0)", "Text2(0)"};

} // namespace

// --- actions ---

TEST_F(Tastwerkeigenschaften, JedeAktionZeigtIhrSchildUndIhrenRahmen) {
    struct Fall {
        const char* schild;
        Zahlen rahmen;
        bool fang;
        const char* belegung;
    };
    const std::vector<Fall> faelle{
        {"1,2,3,4...", {0}, false, "0,0,0-0-0"}, {"Dreieck", {0}, true, "1,0,0-0-0"},
        {"9,8,7,6...", {0}, false, "2,0,0-0-0"}, {"Umschalt 1", {2}, false, "3,0,0-0-0"},
        {"Umschalt 2", {2}, false, "4,0,0-0-0"}, {"Maus", {1}, false, "5,0,0-0-0"}};
    oeffnen();
    waehlen(0);
    for (int mal = 0; mal < 2; ++mal)
        for (int index = 0; index < 6; ++index) {
            art(index);
            const auto& fall = faelle[static_cast<std::size_t>(index)];
            EXPECT_EQ(text(0), fall.schild);
            EXPECT_EQ(rahmen(), fall.rahmen) << index;
            EXPECT_EQ(fang().isVisible(), fall.fang) << index;
            EXPECT_EQ(txtTaste().isVisible(), fall.fang) << index;
            EXPECT_EQ(gesetzt("Option1", 6), Zahlen{index});
            EXPECT_EQ(belegung(0), fall.belegung);
        }
}

TEST_F(Tastwerkeigenschaften, EineAndereAktionBeginntLeerDieselbeLeertNichts) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    waehlen(0);
    art(1);
    EXPECT_EQ(belegung(0), "1,65,1-100-50");
    art(5);
    EXPECT_EQ(belegung(0), "5,0,0-0-0");
    EXPECT_EQ(text(0), "Maus");
    art(1);
    EXPECT_EQ(belegung(0), "1,0,0-0-0");
    EXPECT_EQ(text(0), "Dreieck");
    EXPECT_EQ(box("Text1(0)").text(), "0");
    EXPECT_EQ(box("Text2(0)").text(), "0");
    EXPECT_EQ(gesetzt("optEig", 2), Zahlen{0});
}

TEST_F(Tastwerkeigenschaften, EineImCodeGesetzteOptionIstWieEinKlick) {
    oeffnen();
    waehlen(0);
    option("Option1", 5).setChecked(true);
    EXPECT_EQ(text(0), "Maus");
    option("Option2", 3).setChecked(true);
    EXPECT_TRUE(box("txtScrollPlus").isEnabled());
    EXPECT_EQ(belegung(0), "5,0,3-0-0");
}

TEST_F(Tastwerkeigenschaften, OhneGewaehltenButtonAendertSichNichts) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    const auto vorher = datenbank_.inhalt();
    Boxleser boxen;
    for (int i = 0; i < 6; ++i)
        option("Option1", i).click();
    for (int i = 0; i < 2; ++i) {
        option("optEig", i).click();
        option("Option3", i).click();
    }
    for (int i = 0; i < 5; ++i)
        option("Option2", i).click();
    wiederholen().setChecked(true);
    wiederholen().setChecked(false);
    for (const char* name : {"Text1(0)", "Text2(0)", "txtScrollPlus", "txtScrollMinus"})
        box(name).setText("77");
    taste(66);
    EXPECT_EQ(txtTaste().text(), "B");
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    box("Text1(0)").setText("x");
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{KEINE_ZAHL});
    EXPECT_EQ(box("Text1(0)").text(), "1");
    knopf(4).click();
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_EQ(text(0), "A");
}

// --- properties of a key ---

TEST_F(Tastwerkeigenschaften, DieVarianteRealHatKeineZeiten) {
    belegt(0, "1,65,0-0-0");
    oeffnen();
    waehlen(0);
    EXPECT_EQ(gesetzt("optEig", 2), Zahlen{0});
    EXPECT_EQ(nutzbar(ZEITEN), Namen{});
    EXPECT_FALSE(wiederholen().isChecked());
    EXPECT_EQ(box("Text1(0)").text(), "0");
    EXPECT_EQ(box("Text2(0)").text(), "0");
}

TEST_F(Tastwerkeigenschaften, DieZeitgesteuerteVarianteHatZeitenUndNurMitWiederholungEinePause) {
    oeffnen();
    waehlen(0);
    art(1);
    option("optEig", 1).click();
    EXPECT_EQ(nutzbar(ZEITEN), (Namen{"Text1(0)", "Check1(0)"}));
    wiederholen().click();
    EXPECT_EQ(nutzbar(ZEITEN), (Namen{"Text1(0)", "Check1(0)", "Text2(0)"}));
    tippen("Text1(0)", "150");
    tippen("Text2(0)", "30");
    EXPECT_EQ(belegung(0), "1,0,1-150-30");
    wiederholen().click();
    EXPECT_EQ(nutzbar(ZEITEN), (Namen{"Text1(0)", "Check1(0)"}));
    EXPECT_EQ(box("Text2(0)").text(), "0");
    EXPECT_EQ(belegung(0), "1,0,1-150-0");
    option("optEig", 0).click();
    EXPECT_EQ(nutzbar(ZEITEN), Namen{});
    EXPECT_EQ(belegung(0), "1,0,0-150-0") << "the time stays";
    option("optEig", 1).click();
    EXPECT_EQ(nutzbar(ZEITEN), (Namen{"Text1(0)", "Check1(0)"}));
}

TEST_F(Tastwerkeigenschaften, DieVarianteLaesstDieWiederholungWieSieIstBisZurNeuenWahlDesButtons) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    waehlen(0);
    option("optEig", 0).click();
    EXPECT_TRUE(wiederholen().isChecked());
    EXPECT_EQ(belegung(0), "1,65,0-100-50");
    option("optEig", 1).click();
    EXPECT_EQ(nutzbar(ZEITEN), (Namen{"Text1(0)", "Check1(0)", "Text2(0)"}));
    option("optEig", 0).click();
    waehlen(0);
    EXPECT_FALSE(wiederholen().isChecked());
    EXPECT_EQ(belegung(0), "1,65,0-100-0");
}

TEST_F(Tastwerkeigenschaften, ZeitenEinesButtonsErreichenKeinenAnderen) {
    belegt(0, "1,65,1-100-50");
    belegt(1, "1,66,1-200-0");
    belegt(2, "0,0,0-300-0");
    belegt(3, "1,67,1-400-70");
    oeffnen();
    for (const int taste : {0, 1, 0, 2, 3, 2, 1, 3, 0})
        waehlen(taste);
    EXPECT_EQ(box("Text1(0)").text(), "100");
    EXPECT_EQ(box("Text2(0)").text(), "50");
    EXPECT_EQ(belegung(0), "1,65,1-100-50");
    EXPECT_EQ(belegung(1), "1,66,1-200-0");
    EXPECT_EQ(belegung(2), "0,0,0-300-0");
    EXPECT_EQ(belegung(3), "1,67,1-400-70");
}

TEST_F(Tastwerkeigenschaften, EinePauseDerVarianteRealGehtNurWennSichDieBoxAendert) {
    belegt(0, "1,65,0-0-500");
    belegt(1, "1,66,1-0-7");
    oeffnen();
    waehlen(0); // the box says "0" already
    EXPECT_EQ(belegung(0), "1,65,0-0-500");
    waehlen(1);
    waehlen(0);
    EXPECT_EQ(belegung(0), "1,65,0-0-0");
    EXPECT_EQ(belegung(1), "1,66,1-0-7");
}

TEST_F(Tastwerkeigenschaften, DasAufgebenDerWiederholungBeendetEinePauseDieDieBoxNichtZeigt) {
    belegt(0, "1,65,0-0-500");
    oeffnen();
    waehlen(0);
    option("optEig", 1).click();
    wiederholen().click();
    EXPECT_EQ(box("Text2(0)").text(), "0");
    EXPECT_EQ(belegung(0), "1,65,1-0-500");
    wiederholen().click();
    EXPECT_EQ(belegung(0), "1,65,1-0-0");
}

TEST_F(Tastwerkeigenschaften, EineWiederholzeitVonNullOderWenigerIstKeineWiederholung) {
    belegt(0, "1,65,1-10-1");
    belegt(1, "1,65,1-10-0");
    oeffnen();
    waehlen(0);
    EXPECT_TRUE(wiederholen().isChecked());
    waehlen(1);
    EXPECT_FALSE(wiederholen().isChecked());
}

// --- properties of the mouse and of layer keys ---

TEST_F(Tastwerkeigenschaften, DieMausHatIhreTastenUndDieBoxenDesRads) {
    const std::vector<const char*> raeder{"txtScrollPlus", "txtScrollMinus"};
    const std::vector<Namen> an{{}, {}, {}, {"txtScrollPlus"}, {"txtScrollMinus"}};
    oeffnen();
    waehlen(0);
    art(5);
    EXPECT_EQ(gesetzt("Option2", 5), Zahlen{0});
    for (const int i : {0, 1, 2, 3, 4, 3, 0}) {
        option("Option2", i).click();
        EXPECT_EQ(nutzbar(raeder), an[static_cast<std::size_t>(i)]) << i;
        EXPECT_EQ(belegung(0), "5,0," + std::to_string(i) + "-0-0");
    }
}

TEST_F(Tastwerkeigenschaften, BeideBoxenDesRadsSchreibenDasselbeFeld) {
    oeffnen();
    waehlen(0);
    art(5);
    option("Option2", 3).click();
    tippen("txtScrollPlus", "7");
    EXPECT_EQ(belegung(0), "5,0,3-7-0");
    option("Option2", 4).click();
    EXPECT_EQ(belegung(0), "5,0,4-7-0");
    tippen("txtScrollMinus", "9");
    EXPECT_EQ(belegung(0), "5,0,4-9-0");
    EXPECT_EQ(box("txtScrollPlus").text(), "7");
}

TEST_F(Tastwerkeigenschaften, EineRadaktionZeigtIhrenScrollsprungInIhrerBox) {
    belegt(0, "5,0,3-7-0");
    belegt(1, "5,0,4-9-0");
    belegt(2, "5,0,1-5-0");
    oeffnen();
    waehlen(0);
    EXPECT_EQ(box("txtScrollPlus").text(), "7");
    EXPECT_EQ(box("txtScrollMinus").text(), "1");
    waehlen(1);
    EXPECT_EQ(box("txtScrollMinus").text(), "9");
    EXPECT_EQ(gesetzt("Option2", 5), Zahlen{4});
    waehlen(2);
    EXPECT_EQ(box("txtScrollPlus").text(), "7");
    EXPECT_EQ(box("txtScrollMinus").text(), "9");
    EXPECT_EQ(belegung(2), "5,0,1-5-0");
}

TEST_F(Tastwerkeigenschaften, EineUmschalttasteHaeltOderStelltFest) {
    oeffnen();
    for (const int index : {3, 4}) {
        waehlen(index);
        art(index);
        EXPECT_EQ(gesetzt("Option3", 2), Zahlen{0});
        option("Option3", 1).click();
        EXPECT_EQ(belegung(index), std::to_string(index) + ",0,1-0-0");
        waehlen(0);
        waehlen(index);
        EXPECT_EQ(gesetzt("Option3", 2), Zahlen{1});
        option("Option3", 0).click();
        EXPECT_EQ(belegung(index), std::to_string(index) + ",0,0-0-0");
    }
}

TEST_F(Tastwerkeigenschaften, EineUnbekannteVarianteWirdEinmalGesagtUndAendertNichts) {
    belegt(0, "1,65,2-0-0");
    belegt(1, "3,0,2-0-0");
    belegt(2, "5,0,5-0-0");
    belegt(3, "5,0,x-0-0");
    oeffnen();
    const std::vector<const char*> nummern{
        "Laufzeitfehler 9:", "Laufzeitfehler 9:", "Laufzeitfehler 9:", "Laufzeitfehler 13:"};
    for (int taste = 0; taste < 4; ++taste) {
        Boxleser boxen;
        waehlen(taste);
        ASSERT_EQ(boxen.gesehen().size(), 1U) << taste;
        EXPECT_EQ(boxen.gesehen()[0].titel, "Tastwerk");
        EXPECT_EQ(marken(), (Zahlen{taste, taste + 20})) << "picked all the same";
        EXPECT_TRUE(boxen.gesehen()[0].text.startsWith(nummern[static_cast<std::size_t>(taste)]));
    }
    EXPECT_EQ(belegung(0), "1,65,2-0-0");
    EXPECT_EQ(belegung(3), "5,0,x-0-0");
}

// --- number boxes ---

TEST_F(Tastwerkeigenschaften, EineZahlWirdAlsIhrDezimalerTextGespeichert) {
    oeffnen();
    waehlen(0);
    art(1);
    option("optEig", 1).click();
    auto& zeit = box("Text1(0)");
    const std::vector<std::pair<const char*, const char*>> faelle{
        {"12", "12"}, {" 7 ", "7"}, {"007", "7"},       {"+3", "3"},         {"2,5", "2"},
        {"3,5", "4"}, {"0", "0"},   {"32767", "32767"}, {"32767,4", "32767"}};
    for (const auto& [getippt, gespeichertes] : faelle) {
        zeit.setText(getippt);
        EXPECT_EQ(belegung(0), std::string("1,0,1-") + gespeichertes + "-0") << getippt;
        EXPECT_EQ(zeit.text(), getippt) << "the box keeps what was typed";
    }
}

TEST_F(Tastwerkeigenschaften, WasKeineZahlIstWirdGesagtUndZurEins) {
    oeffnen();
    waehlen(0);
    art(1);
    option("optEig", 1).click();
    wiederholen().click();
    struct Fall {
        const char* name;
        const char* belegung;
    };
    for (const auto& [name, erwartet] : {Fall{"Text1(0)", "1,0,1-1-50"}, Fall{"Text2(0)", "1,0,1-50-1"}})
        for (const char* text : {"", "x", "-", "1 2"}) {
            box("Text1(0)").setText("50");
            box("Text2(0)").setText("50");
            knopf(5).setFocus();
            Boxleser boxen;
            box(name).setText(text);
            EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{KEINE_ZAHL}) << text;
            EXPECT_EQ(box(name).text(), "1");
            EXPECT_EQ(form().focusWidget(), &box(name));
            EXPECT_EQ(belegung(0), erwartet) << name;
        }
    waehlen(1);
    art(5);
    for (const auto& [index, name] : {std::pair{3, "txtScrollPlus"}, std::pair{4, "txtScrollMinus"}}) {
        option("Option2", index).click();
        box(name).setText("50");
        Boxleser boxen;
        box(name).setText("x");
        EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{KEINE_ZAHL});
        EXPECT_EQ(belegung(1), "5,0," + std::to_string(index) + "-1-0");
    }
}

TEST_F(Tastwerkeigenschaften, UnterEinerMeldungWaehltDasPadKeinenAnderenButton) {
    oeffnen();
    waehlen(0);
    art(1);
    option("optEig", 1).click();
    QTimer::singleShot(0, [this] {
        tastenDruecken(2);
        uhr_.vorUm(std::chrono::milliseconds{200});
        tastenDruecken(0);
    });
    Boxleser boxen;
    box("Text1(0)").setText("x");
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{KEINE_ZAHL});
    EXPECT_EQ(belegung(0), "1,0,1-1-0");
    EXPECT_EQ(belegung(1), LEER);
    EXPECT_EQ(marken(), (Zahlen{0, 20}));
}

TEST_F(Tastwerkeigenschaften, EineZahlAusserhalbDesBereichsWirdWederGespeichertNochGesagt) {
    oeffnen();
    waehlen(0);
    art(1);
    option("optEig", 1).click();
    Boxleser boxen;
    for (const char* text : {"32768", "-32769", "99999999999", "32767,5"}) {
        box("Text1(0)").setText("50");
        box("Text1(0)").setText(text);
        EXPECT_EQ(box("Text1(0)").text(), text);
        EXPECT_EQ(belegung(0), "1,0,1-50-0") << text;
    }
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
}

TEST_F(Tastwerkeigenschaften, EineZahlUnterNullWirdWederGespeichertNochGesagtDasSchemaBleibtLesbar) {
    oeffnen();
    waehlen(0);
    art(1);
    option("optEig", 1).click();
    wiederholen().click();
    Boxleser boxen;
    for (const char* name : {"Text1(0)", "Text2(0)"}) {
        box("Text1(0)").setText("50");
        box("Text2(0)").setText("50");
        for (const char* text : {"-1", "-0,6", "-32768"}) {
            box(name).setText(text);
            EXPECT_EQ(box(name).text(), text);
            EXPECT_EQ(belegung(0), "1,0,1-50-50") << name << " " << text;
        }
    }
    box("Text1(0)").setText("-0,5");
    EXPECT_EQ(belegung(0), "1,0,1-0-50") << "rounded it is 0";
    box("Text1(0)").setText("-50"); // a sign put before what stands there

    waehlen(1);
    art(5);
    for (const auto& [index, name] : {std::pair{3, "txtScrollPlus"}, std::pair{4, "txtScrollMinus"}}) {
        option("Option2", index).click();
        box(name).setText("7");
        box(name).setText("-7");
        EXPECT_EQ(belegung(1), "5,0," + std::to_string(index) + "-7-0");
    }
    form().close();
    ereignisse();
    oeffnen();
    EXPECT_NE(offenes(), nullptr);
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_EQ(belegung(0), "1,0,1-0-50");
}

TEST_F(Tastwerkeigenschaften, EineZahlWirdZifferFuerZifferGetippt) {
    oeffnen();
    waehlen(0);
    art(1);
    option("optEig", 1).click();
    Boxleser boxen;
    tippen("Text1(0)", "123456");
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_EQ(box("Text1(0)").text(), "123456");
    EXPECT_EQ(belegung(0), "1,0,1-12345-0") << "the last one that fitted";
}

TEST_F(Tastwerkeigenschaften, EineKaputteZeitInDerDatenbankWirdGesagtUndZurEins) {
    belegt(0, "1,65,1-x-0");
    oeffnen();
    Boxleser boxen;
    waehlen(0);
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{KEINE_ZAHL});
    EXPECT_EQ(box("Text1(0)").text(), "1");
    EXPECT_EQ(belegung(0), "1,65,1-1-0");
}

// --- capture of keys ---

TEST_F(Tastwerkeigenschaften, EineTasteWirdBeimLoslassenGenommen) {
    oeffnen();
    waehlen(5);
    art(1);
    QKeyEvent unten(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, ProbeTastatur::nummer(65), 0, 0);
    QApplication::sendEvent(&fang(), &unten);
    EXPECT_EQ(fang().text(), "Hier Klicken");
    QKeyEvent oben(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, ProbeTastatur::nummer(65), 0, 0);
    QApplication::sendEvent(&fang(), &oben);
    EXPECT_EQ(fang().text(), "65");
    EXPECT_EQ(txtTaste().text(), "A");
    EXPECT_EQ(text(5), "A");
    EXPECT_EQ(belegung(5), "1,65,0-0-0");
    taste(121);
    EXPECT_EQ(fang().text(), "121");
    EXPECT_EQ(belegung(5), "1,121,0-0-0");
}

TEST_F(Tastwerkeigenschaften, EineWiederholteTasteWirdNichtVorDemLoslassenGenommen) {
    oeffnen();
    waehlen(0);
    art(1);
    taste(65, true);
    EXPECT_EQ(fang().text(), "Hier Klicken");
    EXPECT_EQ(belegung(0), "1,0,0-0-0");
}

TEST_F(Tastwerkeigenschaften, NamenStehenMitIhremRandDaWoSieGenommenWerden) {
    datenbank_.sql("UPDATE tblKeyCode SET Keye = ' A ' WHERE Keyc = '65';");
    oeffnen();
    waehlen(0);
    art(1);
    taste(65);
    EXPECT_EQ(text(0), " A ");
    EXPECT_EQ(txtTaste().text(), " A ");
    waehlen(0);
    EXPECT_EQ(text(0), "A");
    EXPECT_EQ(txtTaste().text(), "A");
}

TEST_F(Tastwerkeigenschaften, EineTasteOhneNamenLaesstDasSchildLeer) {
    datenbank_.sql("DELETE FROM tblKeyCode WHERE Keyc = '65';");
    oeffnen();
    waehlen(0);
    art(1);
    taste(65);
    EXPECT_EQ(text(0), "");
    EXPECT_EQ(txtTaste().text(), "");
    EXPECT_EQ(belegung(0), "1,65,0-0-0");
}

TEST_F(Tastwerkeigenschaften, DerTabulatorWirdPerDoppelklickGenommen) {
    oeffnen();
    waehlen(0);
    art(1);
    QTest::mouseClick(&fang(), Qt::LeftButton);
    EXPECT_EQ(fang().text(), "Tab");
    EXPECT_EQ(belegung(0), "1,0,0-0-0");
    QTest::mouseDClick(&fang(), Qt::LeftButton);
    EXPECT_EQ(fang().text(), "Tab");
    EXPECT_EQ(txtTaste().text(), "Tab");
    EXPECT_EQ(text(0), "Tab");
    EXPECT_EQ(belegung(0), "1,9,0-0-0");
}

TEST_F(Tastwerkeigenschaften, NachEinerTasteNimmtEinDoppelklickNichts) {
    oeffnen();
    waehlen(0);
    art(1);
    taste(65);
    QTest::mouseClick(&fang(), Qt::LeftButton);
    QTest::mouseDClick(&fang(), Qt::LeftButton);
    EXPECT_EQ(fang().text(), "65");
    EXPECT_EQ(belegung(0), "1,65,0-0-0");
}

TEST_F(Tastwerkeigenschaften, OhneFokusBittetDieBoxWiederUmEinenKlick) {
    oeffnen();
    waehlen(0);
    art(1);
    QTest::mouseClick(&fang(), Qt::LeftButton);
    taste(65);
    box("Text1(0)").setEnabled(true);
    box("Text1(0)").setFocus();
    EXPECT_EQ(fang().text(), "Hier Klicken");
    EXPECT_EQ(txtTaste().text(), "A");
}

TEST_F(Tastwerkeigenschaften, EinFehlerDerDatenbankBeimNehmenEinerTasteLaesstDieFormStehen) {
    oeffnen();
    waehlen(0);
    art(1);
    datenbank_.sql("ALTER TABLE tblKeyCode RENAME TO weg;");
    taste(65);
    EXPECT_EQ(text(0), "65") << "a lookup that fails gives the code itself";
    datenbank_.sql("ALTER TABLE weg RENAME TO tblKeyCode;");
    EXPECT_EQ(belegung(0), "1,65,0-0-0");

    const auto beiseite = datenbank_.ordner() / "beiseite";
    std::filesystem::rename(datenbank_.pfad(), beiseite);
    Boxleser boxen;
    taste(66);
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.startsWith("Laufzeitfehler 3024:"));
    std::filesystem::rename(beiseite, datenbank_.pfad());
    EXPECT_EQ(belegung(0), "1,65,0-0-0");
    taste(66);
    EXPECT_EQ(belegung(0), "1,66,0-0-0");
}
