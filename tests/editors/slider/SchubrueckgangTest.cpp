// SPDX-License-Identifier: GPL-3.0-or-later
// What the slider editor takes back of what is not saved yet.
#include "tests/editors/common/Rueckgangtest.h"
#include "tests/editors/slider/Schubreglertest.h"

#include <random>

namespace {

using Zeilen = std::vector<std::string>;

class SchubrueckgangTest : public Schubreglertest {
protected:
    static void zurueck() { rueckgangstaste(form()); }
    static void vor() { rueckgangstaste(form(), true); }
    static Zeilen menue() { return rueckgangsmenue(bild()); }
    static bool ungespeichert() { return form().isWindowModified(); }
    /// All that the form edits, as it shows it.
    static Zeilen alles() {
        QStringList zeilen = eintraege();
        zeilen << (ungespeichert() ? "changed" : "saved");
        for (auto* feld : form().findChildren<QAbstractButton*>())
            if (feld->isCheckable() && !feld->objectName().isEmpty())
                zeilen << feld->objectName() + (feld->isChecked() ? " set" : "");
        for (auto* feld : form().findChildren<QLineEdit*>())
            zeilen << feld->objectName() + " " + feld->text();
        for (auto* gruppe : form().findChildren<QGroupBox*>())
            zeilen << gruppe->objectName() + " " + gruppe->title() + (gruppe->isVisible() ? " seen" : "");
        zeilen.sort(); // a page that comes to the front changes their order
        Zeilen texte;
        for (const auto& zeile : zeilen)
            texte.push_back(zeile.toStdString());
        return texte;
    }
};

} // namespace

TEST_F(SchubrueckgangTest, NichtsGetanNichtsZurueck) {
    oeffnen(DREI_FELDER);
    liste().setCurrentRow(2);
    option("Option3(1)").click();
    option("Option3(0)").click();
    EXPECT_EQ(menue(), (Zeilen{"(Rückgängig)", "(Wiederherstellen)"}));
    zurueck();
    vor();
    EXPECT_FALSE(ungespeichert());
}

TEST_F(SchubrueckgangTest, LinienUndHakenGehenZurueckUndVor) {
    oeffnen(DREI_FELDER);
    neueLinien(2);
    EXPECT_EQ(menue()[0], "Neue Linie rückgängig");
    knopf("Command1(1)").click();
    knopf("Command1(1)").click();
    knopf("Command1(1)").click();
    EXPECT_EQ(menue()[0], "Linie löschen rückgängig");
    control<QCheckBox>(form(), "Check2").click();
    EXPECT_EQ(menue()[0], "„Deaktiviert beim loslassen…“ an rückgängig");
    zurueck();
    EXPECT_FALSE(control<QCheckBox>(form(), "Check2").isChecked());
    zurueck();
    EXPECT_EQ(liste().count(), 3);
    EXPECT_FALSE(ungespeichert()) << "the record of the last field is there again";
    zurueck();
    zurueck();
    EXPECT_EQ(liste().count(), 5);
    for (int i = 0; i < 4; ++i)
        vor();
    speichern();
    EXPECT_EQ(gespeichert(), "2/1-1-0-1(10,5,)/1-2-1-3(120,,)");
}

TEST_F(SchubrueckgangTest, EineUebernommeneAktionGehtZurueckZuDemWasEingegebenWar) {
    oeffnen(DREI_FELDER);
    liste().setCurrentRow(2);
    option("Option1(1)").click();
    option("optMaus(1)").click();
    EXPECT_EQ(uebernehmen().size(), 1U);
    EXPECT_EQ(menue()[0], "Feld 3: Taste A → Rechte Maustaste rückgängig");
    zurueck();
    EXPECT_TRUE(option("optMaus(1)").isChecked()) << "as it was entered";
    EXPECT_TRUE(ungespeichert());
    zurueck();
    zurueck();
    EXPECT_EQ(feld("txtTaste").text(), "A");
    EXPECT_EQ(rahmen(), std::vector<int>{2});
    EXPECT_FALSE(ungespeichert());
    EXPECT_EQ(menue()[0], "(Rückgängig)") << "a click on an option is one step";
    for (int i = 0; i < 3; ++i)
        vor();
    speichern();
    EXPECT_EQ(gespeichert(), "3/0-1-0-1(10,5,)/0-2-1-3(120,,)/0-3-1-1(,,)");
}

TEST_F(SchubrueckgangTest, WasEingegebenUndNichtUebernommenIstGehtBeimWaehlenNichtVerloren) {
    oeffnen(DREI_FELDER);
    liste().setCurrentRow(0);
    feld("txtSchritt(0)").setText("77");
    EXPECT_EQ(menue()[0], "Feld 1: Eingabe 10 → 77 rückgängig");
    liste().setCurrentRow(1);
    EXPECT_EQ(menue()[0], "Feld 1: Eingabe verworfen rückgängig");
    EXPECT_FALSE(ungespeichert());
    zurueck();
    EXPECT_EQ(liste().currentRow(), 0);
    EXPECT_EQ(feld("txtSchritt(0)").text(), "77");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("1-0-1(77,5,)")});
}

TEST_F(SchubrueckgangTest, EineGetippteZahlIstEinSchrittUndDasTextfeldKommtZuerst) {
    oeffnen(DREI_FELDER);
    liste().setCurrentRow(0);
    neueLinien(1);
    liste().setCurrentRow(0);
    auto& schritt = feld("txtSchritt(1)");
    schritt.setFocus();
    schritt.selectAll();
    QTest::keyClicks(&schritt, "123");
    EXPECT_EQ(menue()[0], "Feld 1: Eingabe 5 → 123 rückgängig");
    zurueck();
    EXPECT_EQ(schritt.text(), "5") << "by the box";
    EXPECT_EQ(menue()[0], "Neue Linie rückgängig");
    zurueck();
    EXPECT_EQ(liste().count(), 3) << "the box had nothing more";
}

TEST_F(SchubrueckgangTest, EineTasteDieGefangenWirdNimmtNichtsZurueck) {
    oeffnen(DREI_FELDER);
    neueLinien(1);
    liste().setCurrentRow(3);
    option("Option1(2)").click();
    feld("txtTaste").setFocus();
    for (const auto art : {QEvent::ShortcutOverride, QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent ereignis(art, Qt::Key_Z, Qt::ControlModifier, ProbeTastatur::nummer(90), 0, 0);
        ereignis.ignore();
        QApplication::sendEvent(&feld("txtTaste"), &ereignis);
        EXPECT_TRUE(ereignis.isAccepted());
    }
    EXPECT_EQ(liste().count(), 4);
    EXPECT_EQ(feld("txtTaste").text(), "Z");
    EXPECT_EQ(menue()[0], "Feld 4: Eingabe Taste Z rückgängig");
    liste().setFocus();
    zurueck();
    EXPECT_EQ(feld("txtTaste").text(), "Hier Klicken");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("Sie müssen eine Taste drücken!")});
    liste().setFocus();
    vor();
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("4-2-0(90,,)")});
}

TEST_F(SchubrueckgangTest, DieSchritteDesZweitenReglersFuehrenZuIhm) {
    oeffnen(DREI_FELDER);
    option("Option3(1)").click();
    neueLinien(4);
    option("Option3(0)").click();
    EXPECT_EQ(menue()[0], "Schubregler 2, Neue Linie rückgängig");
    zurueck();
    EXPECT_TRUE(option("Option3(1)").isChecked());
    EXPECT_EQ(liste().count(), 4);
    for (int i = 0; i < 3; ++i)
        zurueck();
    EXPECT_FALSE(ungespeichert());
}

TEST_F(SchubrueckgangTest, ZurueckgeholtesIstEinSchrittUndWirdWiederAngeboten) {
    oeffnen(DREI_FELDER);
    neueLinien(2);
    form().close();
    ereignisse();
    klicken();
    auto& angebot = knopf("btnWiederherstellen");
    angebot.click();
    EXPECT_EQ(liste().count(), 5);
    EXPECT_EQ(menue()[0], "Zurückgeholte Änderungen rückgängig");
    zurueck();
    EXPECT_EQ(liste().count(), 3);
    EXPECT_FALSE(ungespeichert());
    EXPECT_TRUE(angebot.isVisible());
    angebot.click();
    EXPECT_EQ(liste().count(), 5);
}

TEST_F(SchubrueckgangTest, ZufaelligeTatenGehenAlleZurueckUndAlleWiederVor) {
    oeffnen(DREI_FELDER);
    const auto anfang = alles();
    std::mt19937 zufall(static_cast<unsigned>(qEnvironmentVariableIntValue("GPK_SAAT")) + 7);
    const auto eines = [&](int anzahl) { return static_cast<int>(zufall() % static_cast<unsigned>(anzahl)); };
    Boxleser boxen;
    const auto tun = [&] {
        switch (eines(9)) {
        case 0:
            return neueLinien(1);
        case 1:
            return knopf("Command1(1)").click();
        case 2:
            return control<QCheckBox>(form(), "Check2").click();
        case 3:
            return liste().setCurrentRow(eines(liste().count()));
        case 4:
            return option(QString("Option1(%1)").arg(eines(4))).click();
        case 5:
            return option(QString("Option2(%1)").arg(eines(4))).click();
        case 6:
            return feld(QString("txtSchritt(%1)").arg(eines(2))).setText(QString::number(eines(500)));
        case 7:
            return taste(static_cast<VirtuelleTaste>('A' + eines(26)));
        default:
            knopf("Command2").click();
        }
    };
    for (int i = 0; i < 250; ++i) {
        tun();
        ereignisse();
    }
    const auto ende = alles();
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
