// SPDX-License-Identifier: GPL-3.0-or-later
// What the slider editor does about changes that are not saved: shows them, keeps them, gives them back.
#include "tests/editors/slider/Schubreglertest.h"

namespace {

class SchubentwurfTest : public Schubreglertest {
protected:
    static QPushButton& angebot() { return knopf("btnWiederherstellen"); }
    QLabel& gespeichertzeichen() { return control<QLabel>(haupt(), "lblGespeichert"); }
    void schliessenUndOeffnen() {
        form().close();
        ereignisse();
        klicken();
    }
    void waehleSchema(int index) {
        auto& combo = control<QComboBox>(haupt(), "Combo1");
        combo.setCurrentIndex(index);
        emit combo.activated(index);
    }
    void schemaLoeschenUndAnlegen() {
        {
            Boxleser boxen({QMessageBox::Yes});
            control<QPushButton>(haupt(), "Command1(3)").click();
            ereignisse();
        }
        auto& neu = control<QPushButton>(haupt(), "Command1(2)");
        neu.click();
        control<QComboBox>(haupt(), "Combo1").setEditText("S");
        neu.click();
    }
    static void erwarteStand(bool ungespeichert, const char* wann) {
        EXPECT_EQ(form().windowTitle(),
                  ungespeichert ? "Schubregler konfigurieren[*]" : "Schubregler konfigurieren")
            << wann;
        EXPECT_EQ(form().isWindowModified(), ungespeichert) << wann;
        EXPECT_EQ(knopf("Command3").font().bold(), ungespeichert) << wann;
    }
    /// Every text and option of the form, and which entry is selected.
    static QStringList bildschirm() {
        QStringList zeilen = eintraege();
        for (const auto* eintrag : liste().selectedItems())
            zeilen << "selected " + eintrag->text();
        for (auto* feld : form().findChildren<QWidget*>()) {
            const auto name = feld->objectName();
            if (name.isEmpty() || name.startsWith("qt_") || name == "btnWiederherstellen")
                continue;
            QString text = name + (feld->isVisible() ? " in sight" : "") + (feld->isEnabled() ? " free" : "");
            if (auto* option = qobject_cast<QAbstractButton*>(feld))
                text += option->isChecked() ? " set" : "";
            if (auto* box = qobject_cast<QLineEdit*>(feld))
                text += " " + box->text();
            if (auto* label = qobject_cast<QLabel*>(feld))
                text += " " + label->text();
            if (auto* gruppe = qobject_cast<QGroupBox*>(feld))
                text += " " + gruppe->title();
            zeilen << text;
        }
        return zeilen;
    }
};

} // namespace

TEST_F(SchubentwurfTest, JedeAenderungZeigtSichBisSieZurueckgenommenIst) {
    oeffnen(DREI_FELDER);
    erwarteStand(false, "at first");
    liste().setCurrentRow(2);
    option("Option3(1)").click();
    option("Option3(0)").click();
    erwarteStand(false, "looked at");
    neueLinien(1);
    erwarteStand(true, "a line more");
    knopf("Command1(1)").click();
    erwarteStand(false, "and less");
    control<QCheckBox>(form(), "Check2").click();
    erwarteStand(true, "outward only");
    control<QCheckBox>(form(), "Check2").click();
    erwarteStand(false, "and not");
    liste().setCurrentRow(0);
    feld("txtSchritt(0)").setText("x");
    erwarteStand(true, "typed, not taken over");
    feld("txtSchritt(0)").setText("10");
    erwarteStand(false, "as it was");
    option("Option1(3)").click();
    uebernehmen();
    erwarteStand(true, "another action");
}

TEST_F(SchubentwurfTest, DieFetteSchriftVerschiebtNichts) {
    oeffnen(DREI_FELDER);
    const auto vorher = knopf("Command3").geometry();
    neueLinien(1);
    ereignisse();
    ASSERT_TRUE(knopf("Command3").font().bold());
    EXPECT_EQ(knopf("Command3").geometry(), vorher);
}

TEST_F(SchubentwurfTest, NachDemSpeichernStehtGespeichertZweiSekundenInDerHauptform) {
    oeffnen(DREI_FELDER);
    EXPECT_FALSE(gespeichertzeichen().isVisible());
    neueLinien(1);
    EXPECT_EQ(speichern(), std::vector<Gesehen>{});
    ereignisse();
    EXPECT_EQ(formen().size(), 0U);
    EXPECT_TRUE(gespeichertzeichen().isVisible());
    EXPECT_TRUE(haupt().rect().contains(gespeichertzeichen().geometry()));
    EXPECT_EQ(gespeichertzeichen().text(), "Gespeichert");
    vergehen(1990);
    EXPECT_TRUE(gespeichertzeichen().isVisible());
    vergehen(10);
    EXPECT_FALSE(gespeichertzeichen().isVisible());
    klicken();
    EXPECT_FALSE(angebot().isVisible());
    EXPECT_EQ(liste().count(), 4);
}

TEST_F(SchubentwurfTest, WasVerworfenWurdeKommtZurueckWieEsAufDemSchirmStand) {
    oeffnen(DREI_FELDER);
    neueLinien(2);
    control<QCheckBox>(form(), "Check2").click();
    liste().setCurrentRow(4);
    option("Option1(2)").click();
    taste(66);
    option("optEig(1)").click();
    feld("txtZeit(0)").setText("zehn"); // is no number
    feld("txtScrollPlus").setText("7");
    const auto vorher = bildschirm();
    form().close();
    ereignisse();
    klicken();
    EXPECT_EQ(liste().count(), 3) << "as it is stored";
    erwarteStand(false, "opened");
    ASSERT_TRUE(angebot().isVisible());
    EXPECT_EQ(angebot().text(), "Verworfene Änderungen wiederherstellen");

    QTest::mouseClick(&angebot(), Qt::LeftButton);
    ereignisse();
    EXPECT_EQ(bildschirm(), vorher);
    EXPECT_FALSE(angebot().isVisible());
    erwarteStand(true, "restored");
    feld("txtZeit(0)").setText("10");
    uebernehmen();
    speichern();
    EXPECT_EQ(gespeichert(), "5/1-1-0-1(10,5,)/1-2-1-3(120,,)/1-3-2-1(65,50,100)/1-5-2-1(66,10,)");
}

TEST_F(SchubentwurfTest, AuchWasNurImAktionsrahmenStandKommtZurueck) {
    oeffnen(DREI_FELDER);
    liste().setCurrentRow(0);
    feld("txtSchritt(1)").setText("123");
    schliessenUndOeffnen();
    ASSERT_TRUE(angebot().isVisible());
    angebot().click();
    EXPECT_EQ(feld("txtSchritt(1)").text(), "123");
    erwarteStand(true, "it is not taken over yet");
    feld("txtSchritt(1)").setText("5");
    erwarteStand(false, "as it is stored");
}

TEST_F(SchubentwurfTest, DieFelderVonSchubreglerZweiKommenZurueck) {
    oeffnen(DREI_FELDER);
    option("Option3(1)").click();
    neueLinien(3);
    schliessenUndOeffnen();
    EXPECT_EQ(gesetzt("Option3", 2), 0);
    angebot().click();
    EXPECT_EQ(gesetzt("Option3", 2), 1);
    EXPECT_EQ(liste().count(), 4);
}

TEST_F(SchubentwurfTest, WasDasWiederherstellenErsetztKommtMitDemNaechstenZurueck) {
    oeffnen(DREI_FELDER);
    neueLinien(1);
    schliessenUndOeffnen();
    neueLinien(2); // without a look at the offer
    for (const int felder : {4, 5, 4}) {
        ASSERT_TRUE(angebot().isVisible());
        angebot().click();
        EXPECT_EQ(liste().count(), felder);
    }
}

TEST_F(SchubentwurfTest, GespeichertesUndUnveraendertesBietetNichtsAn) {
    oeffnen(DREI_FELDER);
    schliessenUndOeffnen();
    EXPECT_FALSE(angebot().isVisible());
    neueLinien(1);
    schliessenUndOeffnen();
    EXPECT_TRUE(angebot().isVisible());
    speichern();
    ereignisse();
    klicken();
    EXPECT_FALSE(angebot().isVisible());
}

TEST_F(SchubentwurfTest, JedesSchemaHatSeineEigenen) {
    oeffnen(DREI_FELDER);
    neueLinien(1);
    form().close();
    ereignisse();
    waehleSchema(1);
    klicken();
    EXPECT_FALSE(angebot().isVisible());
    form().close();
    ereignisse();
    waehleSchema(0);
    klicken();
    ASSERT_TRUE(angebot().isVisible());
    angebot().click();
    EXPECT_EQ(liste().count(), 4);
}

TEST_F(SchubentwurfTest, MitSeinemSchemaGehtAuchWasVerworfenWurde) {
    oeffnen(DREI_FELDER);
    neueLinien(1);
    form().close();
    schemaLoeschenUndAnlegen();
    klicken();
    EXPECT_FALSE(angebot().isVisible());
}

TEST_F(SchubentwurfTest, WasDieFormEinesGeloeschtenSchemasHaeltIstMitIhrFort) {
    oeffnen(DREI_FELDER);
    neueLinien(1);
    schemaLoeschenUndAnlegen();
    schliessenUndOeffnen();
    EXPECT_EQ(liste().count(), 1);
    EXPECT_FALSE(angebot().isVisible());
}

TEST_F(SchubentwurfTest, EinInzwischenGeaenderterReglerWirdErstDurchSpeichernUeberschrieben) {
    oeffnen(DREI_FELDER);
    neueLinien(1);
    form().close();
    ereignisse();
    dateiSchreiben(datei(), gamepadXmlMit("S", GRUNDBELEGUNG, "2/0-1-0-1(10,5,)"));
    klicken();
    EXPECT_EQ(liste().count(), 2);
    angebot().click();
    EXPECT_EQ(liste().count(), 4);
    EXPECT_EQ(gespeichert(), "2/0-1-0-1(10,5,)");
    speichern();
    EXPECT_EQ(gespeichert(), "4/0-1-0-1(10,5,)/0-2-1-3(120,,)/0-3-2-1(65,50,100)");
}
