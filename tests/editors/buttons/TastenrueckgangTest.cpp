// SPDX-License-Identifier: GPL-3.0-or-later
// What the button editor takes back of what is not saved yet.
#include "editors/buttons/Tastenschritt.h"
#include "tests/editors/buttons/Tastwerktest.h"
#include "tests/editors/common/Rueckgangtest.h"

#include <random>

namespace {

using Zeilen = std::vector<std::string>;

class TastenrueckgangTest : public Tastwerktest {
protected:
    void zurueck() { rueckgangstaste(form()); }
    void vor() { rueckgangstaste(form(), true); }
    Zeilen menue() { return rueckgangsmenue(control<QWidget>(form(), "imgHintergrund")); }
    /// Presses a key in the box for it and lets it go.
    void fangen(VirtuelleTaste code, Qt::KeyboardModifiers mit = Qt::NoModifier, int sinn = Qt::Key_unknown) {
        fang().setFocus();
        for (const auto art : {QEvent::ShortcutOverride, QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent ereignis(art, sinn, mit, ProbeTastatur::nummer(code), 0, 0);
            ereignis.ignore();
            QApplication::sendEvent(&fang(), &ereignis);
            EXPECT_TRUE(ereignis.isAccepted());
        }
    }
    bool ungespeichert() { return form().isWindowModified(); }
    /// All that would be saved.
    Zeilen alles() {
        Zeilen texte;
        knopf(4).click();
        for (int ebene = 0; ebene < 3; ++ebene)
            for (int taste = 0; taste < 16; ++taste)
                texte.push_back(gespeichert(taste, ebene));
        return texte;
    }
};

} // namespace

TEST_F(TastenrueckgangTest, NichtsGetanNichtsZurueck) {
    oeffnen();
    waehlen(3);
    knopf(1).click();
    knopf(0).click();
    EXPECT_EQ(menue(), (Zeilen{"(Rückgängig)", "(Wiederherstellen)"}));
    zurueck();
    vor();
    EXPECT_FALSE(ungespeichert());
}

TEST_F(TastenrueckgangTest, EineAktionGehtZurueckUndVor) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    waehlen(0);
    art(5);
    EXPECT_EQ(menue(), (Zeilen{"Dreieck: A → Linke Maustaste rückgängig", "(Wiederherstellen)"}));
    zurueck();
    EXPECT_EQ(text(0), "A");
    EXPECT_EQ(gesetzt("Option1", 6), std::vector<int>{1});
    EXPECT_EQ(rahmen(), std::vector<int>{0});
    EXPECT_EQ(box("Text1(0)").text(), "100");
    EXPECT_FALSE(ungespeichert()) << "nothing is left to save";
    EXPECT_EQ(menue(), (Zeilen{"(Rückgängig)", "Dreieck: A → Linke Maustaste wiederherstellen"}));
    vor();
    EXPECT_EQ(text(0), "Maus");
    EXPECT_EQ(rahmen(), std::vector<int>{1});
    EXPECT_TRUE(ungespeichert());
    EXPECT_EQ(belegung(0), "5,0,0-0-0");
}

TEST_F(TastenrueckgangTest, DasMenueTutEsAuch) {
    belegt(0, "1,65,0-0-0");
    oeffnen();
    waehlen(0);
    art(5);
    rueckgangsmenue(form(), 0);
    EXPECT_EQ(text(0), "A");
    rueckgangsmenue(form(), 1);
    EXPECT_EQ(text(0), "Maus");
}

TEST_F(TastenrueckgangTest, EinSchrittFuehrtDorthinWoErGetanWurde) {
    belegt(0, "1,65,0-0-0");
    oeffnen();
    waehlen(0);
    art(5);
    knopf(2).click();
    waehlen(7);
    art(0);
    knopf(1).click();
    waehlen(2);
    zurueck();
    EXPECT_EQ(control<QLabel>(form(), "lblSchemaName(1)").text(), "Umschalt2");
    EXPECT_TRUE(knopf(2).isChecked());
    EXPECT_EQ(marken(), std::vector<int>{7});
    EXPECT_EQ(text(7), "R 2");
    EXPECT_EQ(menue()[1], "Umschalt2, R 2: leer → 1,2,3,4... wiederherstellen");
    zurueck();
    EXPECT_EQ(control<QLabel>(form(), "lblSchemaName(1)").text(), "Standart");
    EXPECT_EQ(marken(), (std::vector<int>{0, 20}));
    EXPECT_EQ(text(0), "A");
    art(1);
    EXPECT_EQ(belegung(0), "1,65,0-0-0") << "the button is chosen";
}

TEST_F(TastenrueckgangTest, NeuIstEinSchritt) {
    for (const int taste : {0, 1, 12})
        belegt(taste, "1,65,0-0-0", 1);
    oeffnen();
    knopf(1).click();
    waehlen(0);
    knopf(5).click();
    EXPECT_EQ(text(0) + text(1) + text(12), "DreieckKreisA");
    EXPECT_EQ(menue()[0], "Umschalt1: mehrere Knöpfe rückgängig");
    zurueck();
    EXPECT_EQ(text(0) + text(1) + text(12), "AAA");
    EXPECT_EQ(rahmen(), std::vector<int>{0}) << "the chosen one, as it is again";
    EXPECT_FALSE(ungespeichert());
    zurueck();
    vor();
    EXPECT_EQ(text(0) + text(1) + text(12), "DreieckKreisA");
}

TEST_F(TastenrueckgangTest, EineGetippteZahlIstEinSchritt) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    waehlen(0);
    auto& zeit = box("Text1(0)");
    zeit.setFocus();
    zeit.selectAll();
    QTest::keyClicks(&zeit, "275");
    auto& pause = box("Text2(0)");
    pause.setFocus();
    pause.selectAll();
    QTest::keyClicks(&pause, "31");
    knopf(0).setFocus();
    EXPECT_EQ(menue()[0], "Dreieck: A, Wiederholung 50 → 31 rückgängig");
    zurueck();
    EXPECT_EQ(pause.text(), "50");
    EXPECT_EQ(menue()[0], "Dreieck: A, Zeit 100 → 275 rückgängig");
    zurueck();
    EXPECT_EQ(zeit.text(), "100");
    EXPECT_FALSE(ungespeichert());
    vor();
    vor();
    EXPECT_EQ(belegung(0), "1,65,1-275-31");
}

TEST_F(TastenrueckgangTest, EinTextfeldNimmtErstSeinEigenesZurueck) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    waehlen(0);
    wiederholen().click();
    EXPECT_EQ(belegung(0), "1,65,1-100-0");
    auto& zeit = box("Text1(0)");
    zeit.setFocus();
    zeit.end(false);
    QTest::keyClick(&zeit, Qt::Key_5);
    ASSERT_EQ(zeit.text(), "1005");
    zurueck();
    EXPECT_EQ(zeit.text(), "100") << "by the box";
    EXPECT_EQ(menue()[0], "Dreieck: A, Wiederholung 50 → 0 rückgängig") << "the step has dissolved";
    EXPECT_FALSE(wiederholen().isChecked());
    zurueck();
    EXPECT_TRUE(wiederholen().isChecked()) << "the box had nothing more";
    EXPECT_EQ(box("Text2(0)").text(), "50");
    EXPECT_TRUE(ungespeichert()) << "past what was saved";
    EXPECT_EQ(belegung(0), "1,65,1-100-50");
}

TEST_F(TastenrueckgangTest, EineTasteDieGefangenWirdNimmtNichtsZurueck) {
    belegt(0, "1,65,0-0-0");
    oeffnen();
    waehlen(1);
    art(0);
    waehlen(0);
    fangen(90, Qt::ControlModifier, Qt::Key_Z);
    EXPECT_EQ(text(0), "Z");
    EXPECT_EQ(text(1), "1,2,3,4...");
    EXPECT_EQ(menue()[0], "Dreieck: A → Z rückgängig");
    knopf(0).setFocus();
    zurueck();
    EXPECT_EQ(text(0), "A");
    EXPECT_EQ(txtTaste().text(), "A");
    EXPECT_EQ(text(1), "1,2,3,4...");
}

TEST_F(TastenrueckgangTest, UmschalttastenSindNachDemZurueckWiederFrei) {
    oeffnen();
    waehlen(2);
    art(3);
    waehlen(3);
    EXPECT_FALSE(option("Option1", 3).isEnabled());
    zurueck();
    waehlen(3);
    EXPECT_TRUE(option("Option1", 3).isEnabled());
    vor();
    waehlen(3);
    EXPECT_FALSE(option("Option1", 3).isEnabled());
}

TEST_F(TastenrueckgangTest, WasEineZahlNichtNimmtGehtBeimAnsehenEinesAnderenNichtVerloren) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    waehlen(0);
    box("Text1(0)").setText("99999");
    EXPECT_EQ(menue()[0], "Dreieck: Eingabe „99999“ rückgängig");
    waehlen(1);
    EXPECT_EQ(menue()[0], "Dreieck: Eingabe „99999“ verworfen rückgängig");
    EXPECT_FALSE(ungespeichert());
    zurueck();
    EXPECT_EQ(box("Text1(0)").text(), "99999");
    EXPECT_TRUE(ungespeichert());
    zurueck();
    EXPECT_EQ(box("Text1(0)").text(), "100");
    EXPECT_FALSE(ungespeichert());
}

TEST_F(TastenrueckgangTest, AnsehenIstKeinSchrittUndVerwirftKeinenAuchWoEsZahlenAndersSchreibt) {
    belegt(0, "1,65,1-0100-050");
    oeffnen();
    knopf(5).click(); // before it was looked at
    zurueck();
    EXPECT_FALSE(ungespeichert());
    waehlen(0);
    amPad(1);
    tastenDruecken(0);
    EXPECT_FALSE(ungespeichert());
    EXPECT_EQ(menue()[0], "(Rückgängig)");
    vor();
    EXPECT_TRUE(ungespeichert());
    zurueck();
    EXPECT_FALSE(ungespeichert());
}

TEST_F(TastenrueckgangTest, ZurueckgeholtesIstEinSchrittUndWirdWiederAngeboten) {
    oeffnen();
    waehlen(0);
    art(5);
    form().close();
    ereignisse();
    oeffnen();
    auto& angebot = control<QPushButton>(form(), "btnWiederherstellen");
    angebot.click();
    EXPECT_EQ(menue()[0], "Zurückgeholte Änderungen rückgängig");
    EXPECT_FALSE(angebot.isVisible());
    zurueck();
    EXPECT_EQ(text(0), "Dreieck");
    EXPECT_FALSE(ungespeichert());
    EXPECT_TRUE(angebot.isVisible()) << "it is kept as it was";
    angebot.click();
    EXPECT_EQ(text(0), "Maus");
}

TEST_F(TastenrueckgangTest, EineGesperrteDatenbankLaesstAllesWieEsIst) {
    belegt(0, "1,65,0-0-0");
    belegt(1, "1,66,0-0-0");
    oeffnen();
    waehlen(0);
    art(5);
    {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN EXCLUSIVE");
        EXPECT_EQ(menue()[0], "Dreieck: 65 → Linke Maustaste rückgängig");
        Boxleser boxen;
        zurueck();
        EXPECT_EQ(boxen.gesehen().size(), 1U);
        EXPECT_EQ(text(0), "Maus");
        EXPECT_TRUE(ungespeichert());
        andere.sql("COMMIT");
    }
    zurueck();
    EXPECT_EQ(text(0), "A");
    EXPECT_FALSE(ungespeichert());
}

TEST_F(TastenrueckgangTest, MindestensZweihundertSchritteBisZumOeffnen) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    waehlen(0);
    for (int i = 0; i < 150; ++i) {
        art(5);
        art(1);
    }
    knopf(4).click();
    int schritte = 0;
    for (; menue()[0] != "(Rückgängig)" && schritte < 1000; ++schritte)
        rueckgangsmenue(form(), 0);
    EXPECT_EQ(schritte, 300);
    EXPECT_EQ(text(0), "A");
    EXPECT_EQ(belegung(0), "1,65,1-100-50");
}

// By hand more and others: GPK_SAAT=17.
TEST_F(TastenrueckgangTest, ZufaelligeTatenGehenAlleZurueckUndAlleWiederVor) {
    for (int taste = 0; taste < 16; ++taste)
        belegt(taste, taste % 3 == 0 ? "1,65,1-100-50" : "5,0,3-7-0", taste % 2);
    oeffnen();
    std::mt19937 zufall(static_cast<unsigned>(qEnvironmentVariableIntValue("GPK_SAAT")) + 5);
    const auto eines = [&](int anzahl) { return static_cast<int>(zufall() % static_cast<unsigned>(anzahl)); };
    const auto anfang = alles();
    Boxleser boxen;
    const auto tun = [&] {
        switch (eines(9)) {
        case 0:
            return knopf(eines(3)).click();
        case 1:
            return eines(4) == 0 ? knopf(5).click() : control<QPushButton>(form(), "Command10").click();
        case 2:
        case 3:
            return waehlen(eines(16));
        case 4:
        case 5:
            if (auto& eine = option("Option1", eines(6)); eine.isEnabled())
                eine.click();
            return;
        case 6:
            if (auto& eine = option(eines(2) ? "Option2" : "optEig", eines(2)); eine.isVisible())
                eine.click();
            return;
        case 7:
            if (auto& feld = box(eines(2) ? "Text1(0)" : "Text2(0)"); feld.isVisible() && feld.isEnabled())
                feld.setText(QString::number(eines(70'000)));
            return;
        default:
            if (fang().isVisible())
                fangen(static_cast<VirtuelleTaste>('A' + eines(26)));
        }
    };
    for (int i = 0; i < 600; ++i)
        tun();
    const auto ende = alles();
    ASSERT_NE(ende, anfang);
    int schritte = 0;
    for (; menue()[0] != "(Rückgängig)" && schritte < 1000; ++schritte)
        rueckgangsmenue(form(), 0);
    EXPECT_GT(schritte, 80);
    EXPECT_EQ(alles(), anfang);
    for (int i = 0; i < schritte; ++i)
        rueckgangsmenue(form(), 1);
    EXPECT_EQ(menue()[1], "(Wiederherstellen)");
    EXPECT_EQ(alles(), ende);
}
