// SPDX-License-Identifier: GPL-3.0-or-later
// The slider editor: what is taken over, what is refused, what lies in the file, and what a run makes of it.
#include "tests/editors/slider/Schubreglertest.h"

namespace {

class SchubreglerAktionTest : public Schubreglertest {
protected:
    /// Chooses the field at `index` and the type of its action.
    static void waehlen(int index, int art) {
        liste().setCurrentRow(index);
        option(QString("Option1(%1)").arg(art)).click();
    }
    static QCheckBox& check1() { return control<QCheckBox>(form(), "Check1"); }
    static QCheckBox& check2() { return control<QCheckBox>(form(), "Check2"); }
    /// Types over what the box holds.
    static void tippen(const QString& name, const QString& text) {
        nachVorn();
        feld(name).setFocus();
        feld(name).selectAll();
        QTest::keyClick(&feld(name), Qt::Key_Delete);
        QTest::keyClicks(&feld(name), text);
    }
};

} // namespace

// --- taking an action over ---

TEST_F(SchubreglerAktionTest, OhneFeldGibtEsNichtsZuUebernehmen) {
    oeffnen();
    const std::vector<Gesehen> kein_feld{box("Es wurde kein Feld in der Liste makiert!")};
    EXPECT_EQ(uebernehmen(), kein_feld);
    liste().setFocus(); // makes the first entry the current one, but selects none
    EXPECT_EQ(uebernehmen(), kein_feld);
    speichern();
    EXPECT_EQ(gespeichert(), "1");
}

TEST_F(SchubreglerAktionTest, JedeAktionWirdAlsIhrSatzGezeigtUndGespeichert) {
    oeffnen();
    neueLinien(12);
    std::vector<Gesehen> boxen;
    const auto uebernommen = [&] {
        for (auto& eine : uebernehmen())
            boxen.push_back(std::move(eine));
    };
    int index = 0;
    for (int richtung = 0; richtung < 4; ++richtung) {
        waehlen(index++, 0);
        option(QString("Option2(%1)").arg(richtung)).click();
        feld("txtSchritt(0)").setText(QString::number(10 + richtung));
        feld("txtSchritt(1)").setText("5");
        uebernommen();
    }
    for (int maus = 0; maus < 5; ++maus) {
        waehlen(index++, 1);
        option(QString("optMaus(%1)").arg(maus)).click();
        feld("txtScrollPlus").setText("120");
        feld("txtScrollMinus").setText("240");
        uebernommen();
    }
    waehlen(index++, 2);
    taste(65);
    uebernommen();
    waehlen(index++, 2);
    option("optEig(1)").click();
    feld("txtZeit(0)").setText("50");
    feld("txtZeit(1)").setText("100");
    uebernommen();
    waehlen(index++, 2);
    taste(13);
    check1().setChecked(true);
    uebernommen();
    waehlen(index++, 3);
    uebernommen();

    const QStringList saetze{"1-0-0(10,5,)", "2-0-1(11,5,)", "3-0-2(12,5,)",   "4-0-3(13,5,)",
                             "5-1-0(,,)",    "6-1-1(,,)",    "7-1-2(,,)",      "8-1-3(120,,)",
                             "9-1-4(240,,)", "10-2-0(65,,)", "11-2-1(65,50,)", "12-2-1(13,50,100)",
                             "13-3-(,,)"};
    std::vector<Gesehen> erwartet;
    std::string text = "13";
    for (const auto& satz : saetze) {
        erwartet.push_back(box(satz));
        text += "/0-" + satz.toStdString();
    }
    EXPECT_EQ(boxen, erwartet);
    EXPECT_EQ(speichern(), std::vector<Gesehen>{});
    EXPECT_EQ(formen().size(), 0U);
    EXPECT_EQ(gespeichert(), text);

    klicken();
    EXPECT_EQ(liste().count(), 13);
    speichern();
    EXPECT_EQ(gespeichert(), text) << "read and written back it is the same";
}

TEST_F(SchubreglerAktionTest, DieZahlfelderHabenGrundwerte) {
    oeffnen();
    neueLinien(2);
    waehlen(0, 0);
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-0-0(1,1,)")});
    waehlen(1, 1);
    for (const auto& [maus, satz] : {std::pair{"optMaus(3)", "2-1-3(1,,)"}, {"optMaus(4)", "2-1-4(1,,)"}}) {
        option(maus).click();
        EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box(satz)});
    }
    waehlen(2, 2);
    taste(65);
    option("optEig(1)").click();
    check1().click();
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("3-2-1(65,50,0)")});
}

TEST_F(SchubreglerAktionTest, EineRealeTasteDieZeitgesteuertWirdHatEineZeit) {
    oeffnen("2/0-1-2-1(65,120,)/0-2-2-0(66,,)");
    for (const int index : {0, 1})
        liste().setCurrentRow(index);
    EXPECT_EQ(feld("txtZeit(0)").text(), "50") << "none of its own, and not that of the field before";
    option("optEig(1)").click();
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("2-2-1(66,50,)")});
}

TEST_F(SchubreglerAktionTest, DasFeldBleibtGewaehltUndDerNeueSatzTrittAnDieStelleDesAlten) {
    oeffnen(DREI_FELDER);
    waehlen(1, 3);
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("2-3-(,,)")});
    EXPECT_EQ(liste().selectedItems(), QList<QListWidgetItem*>{liste().item(1)});
    waehlen(1, 1);
    option("optMaus(0)").click();
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("2-1-0(,,)")});
    speichern();
    EXPECT_EQ(gespeichert(), "3/0-1-0-1(10,5,)/0-2-1-0(,,)/0-3-2-1(65,50,100)");
}

TEST_F(SchubreglerAktionTest, DieReihenfolgeDesTextsIstDieDerFelderNichtDieDerEingabe) {
    oeffnen("12");
    for (const int index : {9, 1, 10, 0}) {
        liste().setCurrentRow(index);
        uebernehmen();
    }
    speichern();
    EXPECT_EQ(gespeichert(), "12/0-1-3-(,,)/0-2-3-(,,)/0-10-3-(,,)/0-11-3-(,,)");
}

TEST_F(SchubreglerAktionTest, OhneSaetzeBleibtVomTextDieAnzahl) {
    oeffnen("2/0-2-2-0(66,,)");
    knopf("Command1(1)").click();
    speichern();
    EXPECT_EQ(gespeichert(), "1");
}

TEST_F(SchubreglerAktionTest, Check2GehtInJedenSatz) {
    oeffnen(DREI_FELDER);
    check2().click();
    speichern();
    EXPECT_EQ(gespeichert(), "3/1-1-0-1(10,5,)/1-2-1-3(120,,)/1-3-2-1(65,50,100)");
    klicken();
    EXPECT_TRUE(check2().isChecked());
    check2().click();
    speichern();
    EXPECT_EQ(gespeichert(), DREI_FELDER);
}

// --- the key ---

TEST_F(SchubreglerAktionTest, OhneTasteGibtEsKeineTastenaktion) {
    oeffnen();
    waehlen(0, 2);
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("Sie müssen eine Taste drücken!")});
    EXPECT_EQ(fokus(), "txtTaste");
    taste(65);
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-2-0(65,,)")});
}

TEST_F(SchubreglerAktionTest, EineLosgelasseneTasteStehtMitNummerUndNamenDa) {
    oeffnen();
    waehlen(0, 2);
    taste(112);
    EXPECT_EQ(feld("txtTaste").text(), "F1");
    EXPECT_EQ(control<QGroupBox>(form(), "Frame1(2)").title(), "Taste: 112 - F1");
    taste(1); // has no name
    EXPECT_EQ(feld("txtTaste").text(), "");
    EXPECT_EQ(control<QGroupBox>(form(), "Frame1(2)").title(), "Taste: 1 - ");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-2-0(1,,)")});
}

TEST_F(SchubreglerAktionTest, TastenDieSonstDenFokusBewegenSindTastenWieAndere) {
    oeffnen();
    waehlen(0, 2);
    nachVorn();
    feld("txtTaste").setFocus(Qt::MouseFocusReason);
    const std::vector<std::pair<Qt::Key, QString>> tasten{{Qt::Key_Tab, "Tab"},
                                                          {Qt::Key_Escape, "Esc"},
                                                          {Qt::Key_Return, "Enter"},
                                                          {Qt::Key_Space, "Leertaste"},
                                                          {Qt::Key_Down, "Pfeil ab"}};
    for (const auto& [eine, name] : tasten) {
        QTest::keyClick(&feld("txtTaste"), eine);
        EXPECT_EQ(feld("txtTaste").text(), name);
        EXPECT_EQ(fokus(), "txtTaste");
    }
    EXPECT_EQ(formen().size(), 1U);
}

TEST_F(SchubreglerAktionTest, DieTasteBleibtStehenWennDerFokusGeht) {
    oeffnen();
    waehlen(0, 2);
    feld("txtTaste").setFocus();
    taste(65);
    check2().setFocus();
    EXPECT_EQ(feld("txtTaste").text(), "A");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-2-0(65,,)")});
}

TEST_F(SchubreglerAktionTest, EinKlickAlleinIstNochKeineTaste) {
    oeffnen();
    waehlen(0, 2);
    EXPECT_EQ(feld("txtTaste").toolTip(), "Mit Doppelklick Tabtaste bestätigen");
    QTest::mouseClick(&feld("txtTaste"), Qt::LeftButton);
    EXPECT_EQ(feld("txtTaste").text(), "Tab");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("Sie müssen eine Taste drücken!")});
    QTest::mouseClick(&feld("txtTaste"), Qt::LeftButton);
    QTest::mouseDClick(&feld("txtTaste"), Qt::LeftButton);
    EXPECT_EQ(control<QGroupBox>(form(), "Frame1(2)").title(), "Taste: 9 - Tab");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-2-0(9,,)")});
}

// --- number boxes ---

TEST_F(SchubreglerAktionTest, WasKeineZahlIstHaeltDenFokusFest) {
    const std::vector<std::pair<int, QString>> felder{{0, "txtSchritt(0)"}, {0, "txtSchritt(1)"},
                                                      {1, "txtScrollPlus"}, {1, "txtScrollMinus"},
                                                      {2, "txtZeit(0)"},    {2, "txtZeit(1)"}};
    oeffnen("1");
    for (const auto& [art, name] : felder) {
        waehlen(0, art);
        option(name == "txtScrollMinus" ? "optMaus(4)" : "optMaus(3)").setChecked(true);
        option("optEig(1)").setChecked(true);
        check1().setChecked(true);
        for (const auto* text : {"", "-", ",", "(", "abc", "1-2"}) {
            Boxleser boxen;
            tippen(name, text);
            QTest::keyClick(&feld(name), Qt::Key_Tab);
            ereignisse();
            EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{KEINE_ZAHL}) << name.toStdString() << text;
            EXPECT_EQ(fokus(), name) << name.toStdString() << text;
        }
        Boxleser boxen;
        tippen(name, "7");
        QTest::keyClick(&feld(name), Qt::Key_Tab);
        ereignisse();
        EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{}) << name.toStdString();
        EXPECT_NE(fokus(), name) << name.toStdString();
    }
}

TEST_F(SchubreglerAktionTest, EineZahlDieNichtInDenTextPasstWirdEbensoGesagt) {
    oeffnen("1");
    waehlen(0, 0);
    for (const auto* text : {"-5", "+5", "1,5", "2147483648"}) {
        Boxleser boxen;
        tippen("txtSchritt(1)", text);
        check2().setFocus();
        ereignisse();
        EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{PASST_NICHT}) << text;
        EXPECT_EQ(fokus(), "txtSchritt(1)") << text;
    }
    tippen("txtSchritt(1)", "2147483647");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-0-0(1,2147483647,)")});
}

TEST_F(SchubreglerAktionTest, AuchOhneWegVomFeldKommtKeinTrennerInDenText) {
    oeffnen(DREI_FELDER);
    struct Fall {
        int art;
        QString vorher;
        QString feld;
    };
    for (const auto& [art, vorher, name] : std::vector<Fall>{{0, "Option2(0)", "txtSchritt(0)"},
                                                             {0, "Option2(0)", "txtSchritt(1)"},
                                                             {1, "optMaus(3)", "txtScrollPlus"},
                                                             {1, "optMaus(4)", "txtScrollMinus"},
                                                             {2, "optEig(1)", "txtZeit(0)"},
                                                             {2, "optEig(1)", "txtZeit(1)"}}) {
        waehlen(2, art); // its record holds a key and two times
        option(vorher).click();
        const auto alt = feld(name).text();
        for (const auto* text : {"1-2", "1,2", "(", "1/2", ""}) {
            feld(name).setText(text);
            const auto boxen = uebernehmen();
            ASSERT_EQ(boxen.size(), 1U) << name.toStdString() << text;
            EXPECT_EQ(boxen[0], QString(text) == "1,2" ? PASST_NICHT : KEINE_ZAHL)
                << name.toStdString() << text;
            EXPECT_EQ(fokus(), name) << name.toStdString() << text;
        }
        feld(name).setText(alt);
    }
    speichern();
    EXPECT_EQ(gespeichert(), DREI_FELDER);
}

TEST_F(SchubreglerAktionTest, WasNichtGiltMussKeineZahlSein) {
    oeffnen("1");
    feld("txtScrollPlus").setText("x");
    feld("txtScrollMinus").setText("x");
    feld("txtZeit(0)").setText("x");
    feld("txtZeit(1)").setText("x");
    waehlen(0, 1);
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-1-0(,,)")});
    waehlen(0, 2);
    taste(65);
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-2-0(65,,)")});
    option("optEig(1)").click();
    feld("txtZeit(0)").setText("5");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-2-1(65,5,)")});
}

TEST_F(SchubreglerAktionTest, LeereStellenUmDieZahlGehenNichtInDenText) {
    oeffnen("1");
    waehlen(0, 0);
    feld("txtSchritt(0)").setText("  10 ");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-0-0(10,1,)")});
}

TEST_F(SchubreglerAktionTest, WerSchonWiederImFeldIstWirdNichtGefragt) {
    oeffnen("1");
    waehlen(0, 0);
    tippen("txtSchritt(0)", "abc");
    Boxleser boxen;
    check2().setFocus();
    feld("txtSchritt(0)").setFocus();
    ereignisse();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
}

TEST_F(SchubreglerAktionTest, AbbrechenUndEinAnderesFensterFragenNichtNachDerZahl) {
    oeffnen("1");
    waehlen(0, 0);
    tippen("txtSchritt(0)", "abc");
    Boxleser boxen;
    haupt().activateWindow();
    ereignisse();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    nachVorn();
    QTest::mousePress(&knopf("Command4"), Qt::LeftButton);
    ereignisse();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    QTest::mouseRelease(&knopf("Command4"), Qt::LeftButton);
    ereignisse();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_EQ(formen().size(), 0U);
}

// --- the limit of the column ---

TEST_F(SchubreglerAktionTest, TausendZeichenWerdenGespeichertEinesMehrNicht) {
    constexpr std::size_t RAHMEN = std::string_view("1/0-1-0-1(,3,)").size();
    oeffnen("1/0-1-2-0(65,,)");
    waehlen(0, 0);
    option("Option2(1)").click();
    feld("txtSchritt(1)").setText("3");
    // Zeros before a number are part of it.
    const auto schreiben = [&](std::size_t laenge) {
        feld("txtSchritt(0)")
            .setText(QString::number(20).rightJustified(static_cast<int>(laenge - RAHMEN), '0'));
        uebernehmen();
        return speichern();
    };
    EXPECT_EQ(schreiben(1001), std::vector<Gesehen>{box(
                                   "Der Text des Schubreglers ist zu lang: er hat 1001 Zeichen, höchstens "
                                   "1000 werden gespeichert. Der alte Text bleibt bestehen.")});
    ASSERT_EQ(formen().size(), 1U) << "nothing of the work is lost";
    EXPECT_EQ(gespeichert(), "1/0-1-2-0(65,,)");

    EXPECT_EQ(schreiben(1000), std::vector<Gesehen>{});
    EXPECT_EQ(formen().size(), 0U);
    EXPECT_EQ(gespeichert().size(), 1000U);
    EXPECT_EQ(gespeichert(), "1/0-1-0-1(" + std::string(1000 - RAHMEN - 2, '0') + "20,3,)");

    control<QPushButton>(haupt(), "Command1(5)").click();
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), Ereignisse{"m(3,0)"}) << "and it runs";
}

TEST_F(SchubreglerAktionTest, NeunhundertneunundneunzigZeichenPassenAuch) {
    const std::string text = "2/0-2-0-1(" + std::string(999 - 15, '0') + "2,3,)";
    ASSERT_EQ(text.size(), 999U);
    oeffnen(text);
    EXPECT_EQ(speichern(), std::vector<Gesehen>{});
    EXPECT_EQ(gespeichert(), text);
}

// --- in a run ---

TEST_F(SchubreglerAktionTest, EinHierGemachterReglerSpielt) {
    oeffnen();
    neueLinien(3);
    waehlen(0, 2);
    taste(65);
    uebernehmen();
    waehlen(1, 2);
    taste(66);
    option("optEig(1)").click();
    check1().click();
    feld("txtZeit(0)").setText("30");
    feld("txtZeit(1)").setText("20");
    uebernehmen();
    waehlen(2, 0);
    option("Option2(1)").click();
    feld("txtSchritt(0)").setText("10");
    feld("txtSchritt(1)").setText("7");
    uebernehmen();
    waehlen(3, 1);
    option("optMaus(4)").click();
    feld("txtScrollMinus").setText("240");
    uebernehmen();
    EXPECT_EQ(speichern(), std::vector<Gesehen>{});

    pad_.zustand.dwUpos = 16383;
    control<QPushButton>(haupt(), "Command1(5)").click();
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), Ereignisse{"+65"});
    pad_.zustand.dwUpos = 16384;
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), (Ereignisse{"-65", "+66"}));
    vergehen(29);
    EXPECT_EQ(eingabe_.texteAbholen(), Ereignisse{});
    vergehen(1);
    EXPECT_EQ(eingabe_.texteAbholen(), Ereignisse{"-66"});
    vergehen(20);
    EXPECT_EQ(eingabe_.texteAbholen(), Ereignisse{"+66"});
    pad_.zustand.dwUpos = 32768;
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), (Ereignisse{"-66", "m(7,0)"}));
    vergehen(20);
    EXPECT_EQ(eingabe_.texteAbholen(), (Ereignisse{"m(7,0)", "m(7,0)"}));
    pad_.zustand.dwUpos = 65534;
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), Ereignisse{"W-240"});
    vergehen(1000);
    EXPECT_EQ(eingabe_.texteAbholen(), Ereignisse{});
}

TEST_F(SchubreglerAktionTest, Check2LaesstDenReglerNurNachAussenAusloesen) {
    oeffnen("2/0-1-2-0(65,,)/0-2-2-0(66,,)");
    check2().click();
    speichern();
    control<QPushButton>(haupt(), "Command1(5)").click();
    const auto schiebenAuf = [&](std::uint32_t wert) {
        pad_.zustand.dwUpos = wert;
        vergehen(5);
        return eingabe_.texteAbholen();
    };
    EXPECT_EQ(schiebenAuf(32767), Ereignisse{});
    EXPECT_EQ(schiebenAuf(50000), Ereignisse{"+66"});
    EXPECT_EQ(schiebenAuf(20000), (Ereignisse{"-66", "+65"}));
    EXPECT_EQ(schiebenAuf(40000), (Ereignisse{"-65", "+66"}));
    EXPECT_EQ(schiebenAuf(10000), (Ereignisse{"-66", "+65"}));
    EXPECT_EQ(schiebenAuf(32767), Ereignisse{});
    EXPECT_EQ(schiebenAuf(32769), (Ereignisse{"-65", "+66"}));
}
