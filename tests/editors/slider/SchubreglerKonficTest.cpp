// SPDX-License-Identifier: GPL-3.0-or-later
// The slider editor: its fields, its lines, what it shows, its window.
#include "tests/editors/slider/Schubreglertest.h"

#include <cmath>

namespace {

class SchubreglerKonficTest : public Schubreglertest {};

} // namespace

TEST_F(SchubreglerKonficTest, ZeigtDieGegebenenTexte) {
    oeffnen();
    EXPECT_EQ(form().windowTitle(), "Schubregler konfigurieren");
    const std::map<QString, QString> knoepfe{{"Option3(0)", "Schubregler 1"},
                                             {"Option3(1)", "Schubregler 2"},
                                             {"Command1(0)", "Neue Linie"},
                                             {"Command1(1)", "Linie löschen"},
                                             {"Check2", "Deaktiviert beim loslassen das nochmalige auslösen "
                                                        "der Aktionen !"},
                                             {"Command2", "Aktion übernehmen"},
                                             {"Command3", "Schema speichern"},
                                             {"Command4", "Abbrechen"},
                                             {"Option1(0)", "Mausbewegung"},
                                             {"Option1(1)", "Maustaste drücken"},
                                             {"Option1(2)", "Tastatur drücken"},
                                             {"Option1(3)", "Leerfeld"},
                                             {"Option2(0)", "Links"},
                                             {"Option2(1)", "Rechts"},
                                             {"Option2(2)", "Oben"},
                                             {"Option2(3)", "Unten"},
                                             {"optMaus(0)", "Linke Maustaste"},
                                             {"optMaus(1)", "Rechte Maustaste"},
                                             {"optMaus(2)", "Maustaste Mitte"},
                                             {"optMaus(3)", "Scrollrad Plus"},
                                             {"optMaus(4)", "Scrollrad Minus"},
                                             {"optEig(0)", "Real"},
                                             {"optEig(1)", "Taste bei Tastendruck drücken und loslassen"},
                                             {"Check1", "Tastendruck wiederholen"}};
    for (const auto& [name, text] : knoepfe)
        EXPECT_EQ(control<QAbstractButton>(form(), name).text(), text) << name.toStdString();
    const std::map<QString, QString> texte{{"Label1", "Feld: 1"},
                                           {"Label4", "Bitte ein Feld in der Liste auswählen"},
                                           {"Label2(1)", "Geschwindigkeit"},
                                           {"Label2(0)", "Schrittlänge"},
                                           {"Scrollsprung(0)", "Scrollsprung"},
                                           {"Scrollsprung(1)", "Scrollsprung"},
                                           {"lblZ(0)", "Zeit:"},
                                           {"lblZ(2)", "mSek"},
                                           {"lblZ(3)", "Zeit:"},
                                           {"lblZ(1)", "mSek"},
                                           {"Label3", "Ein Leerfeld hat keine spezielle Funktion. "}};
    for (const auto& [name, text] : texte)
        EXPECT_EQ(control<QLabel>(form(), name).text(), text) << name.toStdString();
    EXPECT_EQ(feld("txtTaste").text(), "Hier Klicken");
    EXPECT_EQ(control<QGroupBox>(form(), "Aktion").title(), "Aktion");
}

// --- opening ---

TEST_F(SchubreglerKonficTest, OhneTextHatDerReglerEinFeldUndKeineLinie) {
    oeffnen();
    EXPECT_EQ(eintraege(), QStringList{"Feld: 1"});
    EXPECT_TRUE(linien().empty());
    EXPECT_EQ(gesetzt("Option3", 2), 0);
    EXPECT_EQ(gesetzt("Option1", 4), 3);
    EXPECT_EQ(rahmen(), std::vector<int>{3});
    EXPECT_FALSE(control<QCheckBox>(form(), "Check2").isChecked());
}

TEST_F(SchubreglerKonficTest, OeffnetMitDemTextDesGewaehltenSchemas) {
    oeffnen("4/1-1-0-1(10,5,)/0-3-3-(,,)");
    EXPECT_EQ(eintraege(), (QStringList{"Feld: 1", "Feld: 2", "Feld: 3", "Feld: 4"}));
    EXPECT_EQ(linien().size(), 3U);
    EXPECT_TRUE(control<QCheckBox>(form(), "Check2").isChecked());
    EXPECT_TRUE(liste().selectedItems().isEmpty());
}

TEST_F(SchubreglerKonficTest, OhneDateiWirdSieAngelegtUndDieFormIstLeer) {
    starten();
    std::filesystem::remove(datei());
    klicken();
    EXPECT_EQ(eintraege(), QStringList{"Feld: 1"});
    EXPECT_EQ(gespeichert(), "NULL");
}

TEST_F(SchubreglerKonficTest, EinTextDerKeinerIstWirdGesagtUndDieFormBleibtBrauchbar) {
    Boxleser boxen;
    oeffnen("2/0-1-2-0(65,,)/0-1-2-0(66,,)");
    ereignisse();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0], (Gesehen{"Schubregler konfigurieren",
                                           "Laufzeitfehler 457:\nSchubregler: das Feld 1 gibt es zweimal",
                                           QMessageBox::Warning, QMessageBox::Ok}));
    EXPECT_EQ(eintraege(), QStringList{"Feld: 1"});
    EXPECT_EQ(gespeichert(), "2/0-1-2-0(65,,)/0-1-2-0(66,,)") << "until something is saved";

    liste().setCurrentRow(0);
    uebernehmen();
    speichern();
    EXPECT_EQ(gespeichert(), "1/0-1-3-(,,)");
}

// --- lines ---

TEST_F(SchubreglerKonficTest, DieLinienTeilenDasBildInGleicheFelder) {
    oeffnen();
    for (int k = 1; k <= 19; ++k) {
        knopf("Command1(0)").click();
        const auto stellen = linien();
        ASSERT_EQ(stellen.size(), static_cast<std::size_t>(k));
        for (int i = 1; i <= k; ++i)
            EXPECT_EQ(stellen.at(i), std::lround(i * static_cast<double>(bild().width()) / (k + 1)))
                << "line " << i << " of " << k;
        EXPECT_EQ(liste().count(), k + 1);
    }
    EXPECT_EQ(eintraege().back(), "Feld: 20");
}

TEST_F(SchubreglerKonficTest, DieLinienFolgenDerBreiteDesBildes) {
    oeffnen("3");
    const int vorher = bild().width();
    bild().resize(vorher + 90, bild().height());
    EXPECT_EQ(linien(), (std::map<int, int>{{1, static_cast<int>(std::lround((vorher + 90) / 3.0))},
                                            {2, static_cast<int>(std::lround((vorher + 90) * 2 / 3.0))}}));
}

TEST_F(SchubreglerKonficTest, DasGewaehlteFeldHebtSichImBildAb) {
    oeffnen("4");
    const auto farben = [] {
        const auto gemalt = bild().grab().toImage();
        std::vector<QRgb> alle;
        for (int feld = 0; feld < 4; ++feld)
            alle.push_back(gemalt.pixel(gemalt.width() * feld / 4 + 5, 5));
        return alle;
    };
    const auto ohne = farben();
    EXPECT_EQ(ohne, std::vector<QRgb>(4, ohne[0]));
    liste().setCurrentRow(2);
    const auto mit = farben();
    EXPECT_NE(mit[2], ohne[2]);
    EXPECT_EQ(mit, (std::vector<QRgb>{ohne[0], ohne[1], mit[2], ohne[3]}));
    neueLinien(1);
    knopf("Command1(1)").click();
    EXPECT_EQ(farben(), ohne) << "the new list has none selected";
}

TEST_F(SchubreglerKonficTest, NachNeunzehnLinienTutNeueLinieNichtsMehr) {
    oeffnen("20");
    liste().setCurrentRow(19);
    knopf("Command1(0)").click();
    EXPECT_EQ(linien().size(), 19U);
    EXPECT_EQ(liste().count(), 20);
    EXPECT_EQ(liste().currentRow(), 19) << "the list is not rebuilt";
}

TEST_F(SchubreglerKonficTest, LinieLoeschenNimmtDasLetzteFeldMitSeinemSatz) {
    oeffnen(DREI_FELDER);
    knopf("Command1(1)").click();
    EXPECT_EQ(eintraege(), (QStringList{"Feld: 1", "Feld: 2"}));
    EXPECT_EQ(linien().size(), 1U);
    knopf("Command1(0)").click();
    liste().setCurrentRow(2);
    EXPECT_EQ(gesetzt("Option1", 4), 3) << "the record is gone";
    speichern();
    EXPECT_EQ(gespeichert(), "3/0-1-0-1(10,5,)/0-2-1-3(120,,)");
}

TEST_F(SchubreglerKonficTest, OhneLinieTutLinieLoeschenNichts) {
    oeffnen("2/0-1-2-0(65,,)/0-2-2-0(66,,)");
    for (int i = 0; i < 3; ++i)
        knopf("Command1(1)").click();
    EXPECT_EQ(eintraege(), QStringList{"Feld: 1"});
    speichern();
    EXPECT_EQ(gespeichert(), "1/0-1-2-0(65,,)");
}

TEST_F(SchubreglerKonficTest, EineNeueListeHatNichtsAusgewaehlt) {
    oeffnen(DREI_FELDER);
    liste().setCurrentRow(1);
    knopf("Command1(0)").click();
    EXPECT_TRUE(liste().selectedItems().isEmpty());
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("Es wurde kein Feld in der Liste makiert!")});
}

// --- where the slider stands ---

TEST_F(SchubreglerKonficTest, DieMarkeUndDasFeldFolgenDemReglerAlle50Millisekunden) {
    oeffnen("4");
    auto& marke = control<QWidget>(form(), "Marke");
    EXPECT_FALSE(marke.isVisible()) << "nothing is known yet";
    pad_.zustand.dwUpos = 16383;
    vergehen(49);
    EXPECT_FALSE(marke.isVisible());
    vergehen(1);
    EXPECT_TRUE(marke.isVisible());
    EXPECT_EQ(stand(), "Feld: 1");
    pad_.zustand.dwUpos = 16384;
    vergehen(49);
    EXPECT_EQ(stand(), "Feld: 1");
    vergehen(1);
    EXPECT_EQ(stand(), "Feld: 2");

    for (const std::uint32_t wert : {0U, 1U, 32767U, 49151U, 65534U, 65535U}) {
        schieben(wert);
        const double stelle = wert / 655.35 * (bild().width() / 100.0);
        EXPECT_NEAR(marke.x() + marke.width() / 2.0, stelle, 0.5) << wert;
    }
    EXPECT_EQ(stand(), "Feld: 4") << "the end belongs to the last field";
}

TEST_F(SchubreglerKonficTest, DerReglerIstDieAchseZ1DesSchemas) {
    dateiSchreiben(
        datei(),
        gamepadXmlMit("S", std::array<std::string, ACHSEN>{"Z1", "Z2", "lx", "ly", "rx", "ry"}, "2"));
    starten();
    klicken();
    pad_.zustand.dwXpos = 60000;
    vergehen(50);
    EXPECT_EQ(stand(), "Feld: 2");
}

TEST_F(SchubreglerKonficTest, OhnePadBleibtDieMarkeStehen) {
    oeffnen("2");
    schieben(60000);
    pad_.da = false;
    schieben(0);
    EXPECT_EQ(stand(), "Feld: 2");
}

TEST_F(SchubreglerKonficTest, NachDemSchliessenWirdNichtMehrAbgefragt) {
    oeffnen();
    EXPECT_EQ(uhr_.laufende(), 1U);
    form().close();
    EXPECT_EQ(uhr_.laufende(), 0U);
}

// --- choosing a field ---

TEST_F(SchubreglerKonficTest, EinFeldMitMausbewegungZeigtSie) {
    oeffnen("2/0-2-0-3(10,5,)");
    liste().setCurrentRow(1);
    EXPECT_EQ(gesetzt("Option1", 4), 0);
    EXPECT_EQ(rahmen(), std::vector<int>{0});
    EXPECT_EQ(gesetzt("Option2", 4), 3);
    EXPECT_EQ(feld("txtSchritt(0)").text(), "10");
    EXPECT_EQ(feld("txtSchritt(1)").text(), "5");
}

TEST_F(SchubreglerKonficTest, EinFeldMitMaustasteZeigtSieUndIhrenSprung) {
    oeffnen("5/0-1-1-0(,,)/0-2-1-1(,,)/0-3-1-2(,,)/0-4-1-3(240,,)/0-5-1-4(360,,)");
    for (int i = 0; i < 5; ++i) {
        liste().setCurrentRow(i);
        EXPECT_EQ(gesetzt("Option1", 4), 1);
        EXPECT_EQ(rahmen(), std::vector<int>{1});
        EXPECT_EQ(gesetzt("optMaus", 5), i);
        EXPECT_EQ(feld("txtScrollPlus").isEnabled(), i == 3);
        EXPECT_EQ(feld("txtScrollMinus").isEnabled(), i == 4);
        EXPECT_EQ(feld("txtScrollPlus").text(), i < 3 ? "1" : "240");
        EXPECT_EQ(feld("txtScrollMinus").text(), i < 4 ? "1" : "360");
    }
}

TEST_F(SchubreglerKonficTest, EinFeldMitTasteZeigtIhrenNamenUndIhreZeiten) {
    oeffnen("3/0-1-2-0(13,,)/0-2-2-1(65,50,)/0-3-2-1(255,40,0)");
    liste().setCurrentRow(0);
    EXPECT_EQ(gesetzt("Option1", 4), 2);
    EXPECT_EQ(rahmen(), std::vector<int>{2});
    EXPECT_EQ(gesetzt("optEig", 2), 0);
    EXPECT_EQ(feld("txtTaste").text(), "Enter");
    EXPECT_EQ(control<QGroupBox>(form(), "Frame1(2)").title(), "Taste: 13 - Enter");
    EXPECT_FALSE(feld("txtZeit(0)").isEnabled());

    liste().setCurrentRow(1);
    EXPECT_EQ(gesetzt("optEig", 2), 1);
    EXPECT_EQ(feld("txtTaste").text(), "A");
    EXPECT_EQ(feld("txtZeit(0)").text(), "50");
    EXPECT_FALSE(control<QCheckBox>(form(), "Check1").isChecked());
    EXPECT_TRUE(feld("txtZeit(0)").isEnabled());
    EXPECT_FALSE(feld("txtZeit(1)").isEnabled());

    liste().setCurrentRow(2);
    EXPECT_EQ(feld("txtTaste").text(), "") << "a key without a name";
    EXPECT_EQ(feld("txtZeit(0)").text(), "40");
    EXPECT_TRUE(control<QCheckBox>(form(), "Check1").isChecked());
    EXPECT_EQ(feld("txtZeit(1)").text(), "0");
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("3-2-1(255,40,0)")}) << "and it is kept";

    feld("txtZeit(1)").setText("77");
    liste().setCurrentRow(1);
    EXPECT_FALSE(control<QCheckBox>(form(), "Check1").isChecked()) << "it has no pause";
    EXPECT_EQ(feld("txtZeit(1)").text(), "77") << "what the record does not tell stays";
}

TEST_F(SchubreglerKonficTest, EinFeldOhneSatzIstEinLeerfeld) {
    oeffnen("3/0-1-0-1(10,5,)/0-3-3-(,,)");
    for (const int ohne : {1, 2}) {
        liste().setCurrentRow(0);
        EXPECT_EQ(gesetzt("Option1", 4), 0);
        liste().setCurrentRow(ohne);
        EXPECT_EQ(gesetzt("Option1", 4), 3);
        EXPECT_EQ(rahmen(), std::vector<int>{3});
    }
}

TEST_F(SchubreglerKonficTest, EinSatzDerKeinerIstWirdBeimWaehlenGesagt) {
    oeffnen("4/0-1-7-0(1,2,)/0-2-0-9(1,2,)/0-3-2-0(A,,)/0-4-0-1(10,5,)");
    Boxleser boxen;
    for (int i = 0; i < 4; ++i)
        liste().setCurrentRow(i);
    std::vector<int> nummern;
    for (const auto& eine : boxen.gesehen()) {
        EXPECT_EQ(eine.titel, "Schubregler konfigurieren");
        nummern.push_back(eine.text.section(' ', 1, 1).section(':', 0, 0).toInt());
    }
    EXPECT_EQ(nummern, (std::vector<int>{9, 9, 13}));
    EXPECT_EQ(feld("txtSchritt(0)").text(), "10") << "the form goes on";
}

TEST_F(SchubreglerKonficTest, EinGesperrterTastennameWirdGesagtUndNichtsGehtVerloren) {
    oeffnen(DREI_FELDER);
    {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN EXCLUSIVE;");
        Boxleser boxen;
        liste().setCurrentRow(2);
        ASSERT_EQ(boxen.gesehen().size(), 1U);
        EXPECT_TRUE(boxen.gesehen()[0].text.contains("3218")) << boxen.gesehen()[0].text.toStdString();
        EXPECT_EQ(feld("txtTaste").text(), "Hier Klicken");
    }
    liste().setCurrentRow(0);
    liste().setCurrentRow(2);
    EXPECT_EQ(feld("txtTaste").text(), "A");
    speichern();
    EXPECT_EQ(gespeichert(), DREI_FELDER);
}

TEST_F(SchubreglerKonficTest, NochmalsKlickenZeigtDenSatzWieErIst) {
    oeffnen("1/0-1-0-1(10,5,)");
    liste().setCurrentRow(0);
    feld("txtSchritt(0)").setText("99");
    QTest::mouseClick(liste().viewport(), Qt::LeftButton, {},
                      liste().visualItemRect(liste().item(0)).center());
    EXPECT_EQ(feld("txtSchritt(0)").text(), "10");
}

TEST_F(SchubreglerKonficTest, JedeAktionZeigtNurIhreEigenschaften) {
    oeffnen();
    for (int i = 0; i < 4; ++i) {
        option(QString("Option1(%1)").arg(i)).click();
        EXPECT_EQ(rahmen(), std::vector<int>{i});
    }
}

TEST_F(SchubreglerKonficTest, NurWasGiltIstFrei) {
    oeffnen();
    auto frei = [&] {
        return std::vector<bool>{feld("txtZeit(0)").isEnabled(),
                                 control<QCheckBox>(form(), "Check1").isEnabled(),
                                 feld("txtZeit(1)").isEnabled()};
    };
    option("Option1(2)").click();
    EXPECT_EQ(frei(), (std::vector<bool>{false, false, false}));
    option("optEig(1)").click();
    EXPECT_EQ(frei(), (std::vector<bool>{true, true, false}));
    control<QCheckBox>(form(), "Check1").click();
    EXPECT_EQ(frei(), (std::vector<bool>{true, true, true}));
    option("optEig(0)").click();
    EXPECT_EQ(frei(), (std::vector<bool>{false, false, false}));
}

// --- the second slider ---

TEST_F(SchubreglerKonficTest, SchubreglerZweiHatEigeneFelderDieNichtGespeichertWerden) {
    oeffnen(DREI_FELDER);
    const auto& hinweis = control<QLabel>(form(), "lblHinweis");
    EXPECT_EQ(hinweis.text(), "");
    option("Option3(1)").click();
    EXPECT_EQ(eintraege(), QStringList{"Feld: 1"});
    EXPECT_TRUE(linien().empty());
    EXPECT_EQ(hinweis.text(),
              "Schubregler 2 löst im Spiel nichts aus. Seine Felder werden nicht gespeichert.");
    neueLinien(4);
    liste().setCurrentRow(4);
    EXPECT_EQ(uebernehmen(), std::vector<Gesehen>{box("5-3-(,,)")});
    schieben(65534); // the marker is that of the one axis that plays
    EXPECT_EQ(stand(), "Feld: 5");

    option("Option3(0)").click();
    vergehen(50);
    EXPECT_EQ(stand(), "Feld: 3");
    EXPECT_EQ(liste().count(), 3);
    EXPECT_EQ(hinweis.text(), "");
    liste().setCurrentRow(0);
    EXPECT_EQ(gesetzt("Option1", 4), 0);
    option("Option3(1)").click();
    EXPECT_EQ(liste().count(), 5);
    EXPECT_EQ(linien().size(), 4U);
    speichern();
    EXPECT_EQ(gespeichert(), DREI_FELDER);
}

TEST_F(SchubreglerKonficTest, Check2GiltFuerDieFormWelcherReglerAuchGezeigtIst) {
    oeffnen(DREI_FELDER);
    auto& check2 = control<QCheckBox>(form(), "Check2");
    check2.click();
    option("Option3(1)").click();
    EXPECT_TRUE(check2.isChecked());
    option("Option3(0)").click();
    EXPECT_TRUE(check2.isChecked());
    speichern();
    EXPECT_EQ(gespeichert(), "3/1-1-0-1(10,5,)/1-2-1-3(120,,)/1-3-2-1(65,50,100)");
}

// --- the window ---

TEST_F(SchubreglerKonficTest, AbbrechenUndSchliessenSpeichernNicht) {
    for (const bool abbrechen : {true, false}) {
        oeffnen(DREI_FELDER);
        neueLinien(2);
        liste().setCurrentRow(0);
        uebernehmen();
        Boxleser boxen;
        if (abbrechen)
            knopf("Command4").click();
        else
            form().close();
        ereignisse();
        EXPECT_EQ(formen().size(), 0U);
        EXPECT_EQ(gespeichert(), DREI_FELDER);
        EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    }
}

TEST_F(SchubreglerKonficTest, EsGibtNurEineUndSieKommtNachVorn) {
    oeffnen(DREI_FELDER);
    auto* erste = &form();
    neueLinien(1);
    erste->showMinimized();
    klicken();
    ASSERT_EQ(formen().size(), 1U);
    EXPECT_EQ(&form(), erste);
    EXPECT_FALSE(erste->isMinimized());
    EXPECT_EQ(liste().count(), 4) << "what was not saved is still there";
}

TEST_F(SchubreglerKonficTest, NachDemSchliessenLiestSieNeu) {
    oeffnen(DREI_FELDER);
    neueLinien(1);
    knopf("Command4").click();
    klicken();
    EXPECT_EQ(liste().count(), 3);
    EXPECT_EQ(uhr_.laufende(), 1U);
}

TEST_F(SchubreglerKonficTest, BeideAchsenformenStehenNebeneinander) {
    oeffnen(DREI_FELDER);
    control<QPushButton>(haupt(), "Command3").click();
    EXPECT_EQ(uhr_.laufende(), 2U);
    EXPECT_EQ(formen().size(), 1U);
}

TEST_F(SchubreglerKonficTest, DasEndeDesProgrammsSchliesstSie) {
    oeffnen(DREI_FELDER);
    programm_.reset();
    EXPECT_EQ(formen().size(), 0U);
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_F(SchubreglerKonficTest, WasSichNichtSpeichernLaesstBleibtInDerForm) {
    oeffnen(DREI_FELDER);
    knopf("Command1(1)").click();
    const auto heile = dateiLesen(datei());
    dateiSchreiben(datei(), "<html>Das ist keine Zuordnung.</html>");
    const auto gesehene = speichern();
    ASSERT_EQ(gesehene.size(), 1U);
    EXPECT_TRUE(gesehene[0].text.startsWith("Die Felder konnten nicht gespeichert werden"));
    EXPECT_EQ(dateiLesen(datei()), "<html>Das ist keine Zuordnung.</html>");
    ASSERT_EQ(formen().size(), 1U);
    dateiSchreiben(datei(), heile);
    EXPECT_EQ(speichern(), std::vector<Gesehen>{});
    EXPECT_EQ(gespeichert(), "2/0-1-0-1(10,5,)/0-2-1-3(120,,)");
    EXPECT_EQ(formen().size(), 0U);
}

TEST_F(SchubreglerKonficTest, FuerEinAnderesSchemaDerHauptformWirdNurAufJaGespeichert) {
    oeffnen(DREI_FELDER);
    auto& combo = control<QComboBox>(haupt(), "Combo1");
    combo.setCurrentIndex(1);
    emit combo.activated(1);
    knopf("Command1(1)").click();
    {
        Boxleser nein({QMessageBox::No});
        knopf("Command3").click();
        EXPECT_EQ(nein.gesehen(), std::vector<Gesehen>{ANDERES_SCHEMA});
    }
    EXPECT_EQ(gespeichert("T"), "");
    ASSERT_EQ(formen().size(), 1U) << "nothing of it is lost";
    Boxleser ja({QMessageBox::Yes});
    knopf("Command3").click();
    EXPECT_EQ(gespeichert("S"), DREI_FELDER);
    EXPECT_EQ(gespeichert("T"), "2/0-1-0-1(10,5,)/0-2-1-3(120,,)");
}

TEST_F(SchubreglerKonficTest, DieEingabetasteIstEinNein) {
    oeffnen(DREI_FELDER);
    control<QComboBox>(haupt(), "Combo1").setCurrentIndex(1);
    const auto vorher = dateiLesen(datei());
    Eingabetaste taste;
    knopf("Command3").click();
    EXPECT_EQ(taste.gedrueckt(), 1);
    EXPECT_EQ(dateiLesen(datei()), vorher);
    EXPECT_EQ(formen().size(), 1U);
}

TEST_F(SchubreglerKonficTest, DerTabulatorGehtVonObenNachUnten) {
    oeffnen(DREI_FELDER);
    liste().setCurrentRow(2); // a key that repeats: everything in its frame is free
    nachVorn();
    option("Option3(0)").setFocus();
    QStringList weg;
    do {
        weg << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget()->objectName() != "Option3(0)" && weg.size() < 30);
    EXPECT_EQ(weg, (QStringList{"Option3(0)", "Command1(0)", "Command1(1)", "List1", "Option1(2)", "txtTaste",
                                "optEig(1)", "txtZeit(0)", "Check1", "txtZeit(1)", "Command2", "Check2",
                                "Command3", "Command4"}));
}

TEST_F(SchubreglerKonficTest, DiePfeiltastenGehenInEinerGruppeVonOptionZuOption) {
    oeffnen(DREI_FELDER);
    nachVorn();
    option("Option1(3)").setFocus();
    for (const int naechste : {2, 1, 0}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), QString("Option1(%1)").arg(naechste));
        EXPECT_EQ(gesetzt("Option1", 4), naechste);
        EXPECT_EQ(rahmen(), std::vector<int>{naechste});
    }
}

TEST_F(SchubreglerKonficTest, WaechstMitDerSchriftSodassNichtsBeschnittenIst) {
    for (const int punkt : {9, 12, 16, 24}) {
        const Schriftgrad grad(punkt);
        oeffnen(DREI_FELDER);
        neueLinien(17);
        option("Option3(1)").click();
        for (int i = 0; i < 4; ++i) {
            option(QString("Option1(%1)").arg(i)).click();
            ereignisse();
            EXPECT_EQ(beschnittene(form()), std::vector<std::string>{}) << punkt << " points, frame " << i;
        }
    }
}
