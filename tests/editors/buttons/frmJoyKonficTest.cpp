// SPDX-License-Identifier: GPL-3.0-or-later
// The button editor: load, labels, picking by label and by pad, layers, storing, opening and closing.
#include "tests/editors/buttons/Tastwerktest.h"

#include "editors/buttons/frmJoyKonfic.h"
#include "engine/run/Laufzustand.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QImage>

#include <filesystem>
#include <map>

namespace {

const std::vector<std::string> NAMEN{"Dreieck", "Kreis",  "Kreuz",  "Viereck", "L 1",     "R 1",
                                     "L 2",     "R 2",    "Select", "Start",   "L-Stick", "R-Stick",
                                     "Oben",    "Rechts", "Unten",  "Links"};
constexpr const char* LEER = "10,0,0-0-0";

using Zahlen = std::vector<int>;

class FrmJoyKonfic : public Tastwerktest {};

} // namespace

// --- load ---

TEST_F(FrmJoyKonfic, ZeigtDieGegebenenTexte) {
    oeffnen();
    EXPECT_EQ(form().windowTitle(), "Tastwerk");
    const std::map<QString, QString> texte{
        {"Command1(0)", "Standart"},
        {"Command1(1)", "Umschalt1"},
        {"Command1(2)", "Umschalt2"},
        {"Command1(4)", "Speichern"},
        {"Command1(5)", "Neu"},
        {"Command10", "Taste neu"},
        {"Option1(0)", "1,2,3,4..."},
        {"Option1(1)", "Taste:"},
        {"Option1(2)", "0,9,8,7..."},
        {"Option1(3)", "Umschalttaste1"},
        {"Option1(4)", "Umschalttaste2"},
        {"Option1(5)", "Maus"},
        {"optEig(0)", "Real (Ereignis bei Aktion)"},
        {"optEig(1)", "Taste bei Tastendruck drücken und loslassen"},
        {"Check1(0)", "Tastendruck wiederholen"},
        {"Option2(0)", "Linke Maustaste"},
        {"Option2(1)", "Rechte Maustaste"},
        {"Option2(2)", "Maustaste Mitte"},
        {"Option2(3)", "Scrollrad Plus"},
        {"Option2(4)", "Scrollrad Minus"},
        {"Option3(0)", "Halten ---> Loslassen"},
        {"Option3(1)", "Feststellen"},
    };
    for (const auto& [name, text] : texte)
        EXPECT_EQ(control<QAbstractButton>(form(), name).text(), text) << name.toStdString();
    const std::map<QString, QString> label{{"lblSchemaName(0)", "S"},
                                           {"lblSchemaName(1)", "Standart"},
                                           {"Label1(0)", "Zeitspanne Drücken -> Loslassen"},
                                           {"lblZ(0)", "Zeit:"},
                                           {"lblZ(2)", "mSek"},
                                           {"lblZ(3)", "Zeit:"},
                                           {"lblZ(1)", "mSek"},
                                           {"Scrollsprung(0)", "Scrollsprung"},
                                           {"Scrollsprung(1)", "Scrollsprung"}};
    for (const auto& [name, text] : label)
        EXPECT_EQ(control<QLabel>(form(), name).text(), text) << name.toStdString();
    const std::map<QString, QString> boxen{{"Text1(0)", "1"},
                                           {"Text2(0)", "0"},
                                           {"txtScrollPlus", "1"},
                                           {"txtScrollMinus", "1"},
                                           {"Text3(0)", "Hier Klicken"}};
    for (const auto& [name, text] : boxen)
        EXPECT_EQ(box(name).text(), text) << name.toStdString();
    const std::map<QString, QString> rahmentitel{{"fraStatus", "Tastenereignis"},
                                                 {"famAusgabe(0)", ""},
                                                 {"famAusgabe(1)", "Mausdruckeigenschaft"},
                                                 {"famAusgabe(2)", "Eigenschaften Umschalttaste"}};
    for (const auto& [name, text] : rahmentitel)
        EXPECT_EQ(control<QGroupBox>(form(), name).title(), text) << name.toStdString();
    EXPECT_EQ(fang().toolTip(), "Mit Doppelklick Tabtaste bestätigen");
}

TEST_F(FrmJoyKonfic, VorDemLadenStehenDieAufschriftenDesEntwurfs) {
    GobalVariable global;
    Entwuerfe<Tastenentwurf> entwuerfe;
    const frmJoyKonfic form(global, pad_, uhr_, tastatur_, entwuerfe);
    std::vector<std::string> texte;
    for (int taste = 0; taste < 16; ++taste)
        texte.push_back(form.findChild<QLabel*>(feld("lblInfo", taste))->text().toStdString());
    auto erwartet = NAMEN;
    erwartet[4] = "L 2";
    erwartet[5] = "R 2";
    erwartet[6] = "L 1";
    erwartet[7] = "R 1";
    erwartet[10] = "Stick L";
    erwartet[11] = "Stick R";
    EXPECT_EQ(texte, erwartet);
    EXPECT_EQ(form.findChild<QLabel*>("lblSchemaName(0)")->text(), "Name des Schemas");
    EXPECT_EQ(form.findChild<QLabel*>("lblSchemaName(1)")->text(), "Umschaltstatus");
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_F(FrmJoyKonfic, EinFrischesSchemaZeigtDieNamenUndSonstNichts) {
    oeffnen();
    EXPECT_EQ(schilder(), NAMEN);
    EXPECT_EQ(marken(), Zahlen{});
    EXPECT_EQ(rahmen(), Zahlen{});
    EXPECT_EQ(gesetzt("Option1", 6), Zahlen{});
    EXPECT_FALSE(txtTaste().isVisible());
    EXPECT_FALSE(fang().isVisible());
    EXPECT_FALSE(fang().isEnabled());
    EXPECT_FALSE(txtTaste().isEnabled());
}

TEST_F(FrmJoyKonfic, SchilderZeigenTastenUndAktionenDerEbene) {
    belegt(0, "1,65,0-0-0");
    belegt(1, "0,0,0-0-0");
    belegt(2, "2,0,0-0-0");
    belegt(3, "5,0,3-1-0");
    belegt(4, "3,0,0-0-0");
    belegt(5, "4,0,1-0-0");
    belegt(6, "1,77777,0-0-0"); // no such key
    belegt(12, "1,38,0-0-0");
    oeffnen();
    EXPECT_EQ(schilder(), (std::vector<std::string>{"A", "1,2,3,4...", "9,8,7,6...", "Maus", "Umschalt 1",
                                                    "Umschalt 2", "", "R 2", "Select", "Start", "L-Stick",
                                                    "R-Stick", "Pfeil auf", "Rechts", "Unten", "Links"}));
}

TEST_F(FrmJoyKonfic, TastennamenStehenAufSchildernOhneRand) {
    datenbank_.sql("UPDATE tblKeyCode SET Keye = '  A B  ' WHERE Keyc = '65';");
    belegt(0, "1,65,0-0-0");
    oeffnen();
    EXPECT_EQ(text(0), "A B");
    waehlen(0);
    EXPECT_EQ(text(0), "A B");
    EXPECT_EQ(txtTaste().text(), "A B");
}

TEST_F(FrmJoyKonfic, EinUnlesbaresSchemaWirdEinmalGesagtUndOeffnetNichts) {
    starten();
    RoheVerbindung andere(datenbank_.pfad());
    andere.sql("BEGIN EXCLUSIVE;");
    Boxleser boxen;
    oeffnen();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].titel, "Button bearbeiten");
    EXPECT_TRUE(boxen.gesehen()[0].text.startsWith("Laufzeitfehler 3218:"))
        << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(offenes(), nullptr);
    EXPECT_EQ(uhr_.laufende(), 0U);
    EXPECT_TRUE(haupt().isVisible());

    andere.sql("COMMIT;"); // the next click opens it
    oeffnen();
    EXPECT_NE(offenes(), nullptr);
}

TEST_F(FrmJoyKonfic, UnlesbareBelegungenStehenAlsLeerDaUndWerdenInEinerBoxGenannt) {
    belegt(0, "1,65,0-0-0,1");
    belegt(1, "1,66,0-0-0");
    belegt(4, "x");
    belegt(15, "1,38", 2);
    belegt(11, "leer"); // is none of them
    const auto vorher = datenbank_.inhalt();
    Boxleser boxen;
    oeffnen();
    EXPECT_EQ(boxen.gesehen(),
              (std::vector<Gesehen>{{"Tastwerk",
                                     "Diese Belegungen sind nicht lesbar und stehen hier als leer. Was "
                                     "gespeichert ist, ändert sich erst mit „Speichern“.\n"
                                     "Standart: Dreieck, L 1\nUmschalt2: Links",
                                     QMessageBox::Warning, QMessageBox::Ok}}));
    auto erwartet = NAMEN;
    erwartet[1] = "B";
    EXPECT_EQ(schilder(), erwartet);
    waehlen(0);
    waehlen(4);
    EXPECT_EQ(gesetzt("Option1", 6), Zahlen{});
    EXPECT_EQ(rahmen(), Zahlen{});
    form().close();
    ereignisse();
    EXPECT_EQ(datenbank_.inhalt(), vorher);

    oeffnen();
    waehlen(4);
    art(5);
    knopf(4).click();
    EXPECT_EQ(boxen.gesehen().size(), 2U) << "the one of the second opening";
    EXPECT_EQ(gespeichert(0), LEER);
    EXPECT_EQ(gespeichert(4), "5,0,0-0-0");
    EXPECT_EQ(gespeichert(15, 2), LEER);
}

TEST_F(FrmJoyKonfic, DieBoxUnlesbarerBelegungenKommtWennDieFormZuSehenIst) {
    belegt(0, "x");
    starten();
    QWidget* davor = nullptr;
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            davor = offenes();
            box->accept();
        }
    });
    takt.start(0);
    oeffnen();
    EXPECT_NE(davor, nullptr);
}

TEST_F(FrmJoyKonfic, EinApostrophImNamenWirdEinmalGesagt) {
    datenbank_.sql(
        "UPDATE tblTastatur SET Schemaname = 'O''Brien'; UPDATE tblSteuerKreuz SET Schemaname = 'O''Brien';");
    starten();
    Boxleser boxen;
    oeffnen();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.startsWith("Laufzeitfehler 3075:"));
    EXPECT_EQ(offenes(), nullptr);
}

TEST_F(FrmJoyKonfic, EineFehlendeDatenbankWirdEinmalGesagtUndNichtAngelegt) {
    starten();
    std::filesystem::remove(datenbank_.pfad());
    Boxleser boxen;
    oeffnen();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.startsWith("Laufzeitfehler 3024:"));
    EXPECT_FALSE(std::filesystem::exists(datenbank_.pfad()));
}

// --- picking by label ---

TEST_F(FrmJoyKonfic, EinKlickAufEinSchildLaesstSeineMarkenLeuchten) {
    oeffnen();
    for (int taste = 0; taste < 16; ++taste) {
        waehlen(taste);
        EXPECT_EQ(marken(), taste < 4 ? (Zahlen{taste, taste + 20}) : Zahlen{taste}) << taste;
    }
}

TEST_F(FrmJoyKonfic, EinKlickAufEinSchildZeigtSeineTasteUndEigenschaften) {
    belegt(2, "1,65,1-100-50");
    oeffnen();
    waehlen(2);
    EXPECT_EQ(gesetzt("Option1", 6), Zahlen{1});
    EXPECT_EQ(txtTaste().text(), "A");
    EXPECT_TRUE(txtTaste().isVisible());
    EXPECT_TRUE(fang().isVisible() && fang().isEnabled());
    EXPECT_EQ(rahmen(), Zahlen{0});
    EXPECT_EQ(gesetzt("optEig", 2), Zahlen{1});
    EXPECT_EQ(box("Text1(0)").text(), "100");
    EXPECT_TRUE(wiederholen().isChecked());
    EXPECT_EQ(box("Text2(0)").text(), "50");
    EXPECT_EQ(belegung(2), "1,65,1-100-50");
}

TEST_F(FrmJoyKonfic, DasWaehlenJedesButtonsAendertNichtsInDerDatenbank) {
    const std::vector<std::string> belegungen{"1,65,0-0-0", "1,66,1-100-50", "0,0,0-0-0",  "2,0,1-10-20",
                                              "3,0,1-0-0",  "4,0,0-0-0",     "5,0,0-0-0",  "5,0,3-7-0",
                                              "5,0,4-9-0",  "10,0,0-0-0",    "1,0,1-30-0", "5,0,2-0-0",
                                              "1,38,1-1-1", "1,39,0-0-0",    "0,0,1-5-5",  "10,0,0-0-0"};
    for (int ebene = 0; ebene < 3; ++ebene)
        for (int taste = 0; taste < 16; ++taste)
            belegt(taste, belegungen[static_cast<std::size_t>((taste + ebene) % 16)], ebene);
    oeffnen();
    const auto vorher = datenbank_.inhalt();
    for (int ebene = 0; ebene < 3; ++ebene) {
        knopf(ebene).click();
        for (int mal = 0; mal < 2; ++mal)
            for (int taste = 0; taste < 16; ++taste)
                waehlen((taste * 5) % 16);
    }
    knopf(4).click();
    EXPECT_EQ(datenbank_.inhalt(), vorher);
}

TEST_F(FrmJoyKonfic, EinSchildOhneTasteLaesstDenNamenDerLetztenTaste) {
    belegt(0, "1,65,0-0-0");
    belegt(1, "1,0,0-0-0");
    oeffnen();
    waehlen(0);
    waehlen(1);
    EXPECT_EQ(txtTaste().text(), "A");
    EXPECT_EQ(text(1), "Kreis");
    EXPECT_TRUE(txtTaste().isVisible());
    EXPECT_EQ(rahmen(), Zahlen{0});
}

TEST_F(FrmJoyKonfic, EinLeererButtonVerbirgtDieEigenschaftenUndLeertDieOptionen) {
    belegt(0, "5,0,0-0-0");
    oeffnen();
    waehlen(0);
    EXPECT_EQ(rahmen(), Zahlen{1});
    waehlen(1);
    EXPECT_EQ(rahmen(), Zahlen{});
    EXPECT_EQ(gesetzt("Option1", 6), Zahlen{});
    EXPECT_FALSE(fang().isVisible());
}

TEST_F(FrmJoyKonfic, EinLeererButtonLaesstDieErsteOptionInRuhe) {
    belegt(0, "0,0,0-0-0");
    oeffnen();
    waehlen(0);
    waehlen(1);
    EXPECT_EQ(gesetzt("Option1", 6), Zahlen{0});
    EXPECT_EQ(belegung(1), LEER) << "it is only shown";
    art(0); // a hand that clicks it means it
    EXPECT_EQ(belegung(1), "0,0,0-0-0");
    EXPECT_EQ(text(1), "1,2,3,4...");
}

TEST_F(FrmJoyKonfic, EineTasteAufEinemUnbelegtenButtonBehaeltDenSichtbarenRahmen) {
    belegt(0, "5,0,0-0-0");
    belegt(1, "10,65,0-0-0");
    oeffnen();
    waehlen(0);
    waehlen(1);
    EXPECT_EQ(text(1), "A");
    EXPECT_EQ(rahmen(), Zahlen{1});
    EXPECT_EQ(gesetzt("Option1", 6), Zahlen{});
}

TEST_F(FrmJoyKonfic, EinButtonDesBildesWirdGewaehltWieDurchSeinSchild) {
    oeffnen();
    auto& bild = control<QWidget>(form(), "imgHintergrund");
    for (int taste = 0; taste < 16; ++taste) {
        waehlen((taste + 1) % 16);
        const auto mitte = control<QWidget>(form(), feld("Shape2", taste)).geometry().center();
        QTest::mouseClick(&bild, Qt::LeftButton, Qt::NoModifier, mitte);
        EXPECT_EQ(marken().front(), taste);
    }
    QTest::mouseClick(&bild, Qt::LeftButton, Qt::NoModifier, QPoint(bild.width() / 2, 2));
    QTest::mouseClick(&bild, Qt::RightButton, Qt::NoModifier,
                      control<QWidget>(form(), "Shape2(3)").geometry().center());
    EXPECT_EQ(marken(), Zahlen{15});
}

TEST_F(FrmJoyKonfic, DiePfeiltastenGehenDurchDieSchilder) {
    oeffnen();
    auto& bild = control<QWidget>(form(), "imgHintergrund");
    Zahlen gewaehlt;
    for (const auto taste : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Left,
                             Qt::Key_Left, Qt::Key_Space}) {
        QTest::keyClick(&bild, taste);
        gewaehlt.push_back(marken().front());
    }
    EXPECT_EQ(gewaehlt, (Zahlen{4, 4, 5, 7, 9, 8, 8, 8}));
}

TEST_F(FrmJoyKonfic, EinSchildLaesstDenFokusWoErIst) {
    belegt(0, "1,65,0-0-0");
    belegt(1, "1,66,0-0-0");
    oeffnen();
    waehlen(0);
    fang().setFocus();
    waehlen(1);
    EXPECT_EQ(form().focusWidget(), &fang()) << "so key after key can be taken";
}

// --- layer keys ---

TEST_F(FrmJoyKonfic, EineUmschalttasteLaesstSichNurAufEinemButtonWaehlen) {
    const std::vector<const char*> optionen{"Option1(3)", "Option1(4)"};
    using Namen = std::vector<std::string>;
    belegt(4, "3,0,0-0-0");
    oeffnen();
    EXPECT_EQ(nutzbar(optionen), (Namen{"Option1(3)", "Option1(4)"}));
    waehlen(0);
    EXPECT_EQ(nutzbar(optionen), Namen{"Option1(4)"});
    waehlen(4);
    EXPECT_EQ(nutzbar(optionen), (Namen{"Option1(3)", "Option1(4)"}));
    waehlen(0);
    art(4);
    waehlen(1);
    EXPECT_EQ(nutzbar(optionen), Namen{});
    waehlen(0);
    EXPECT_EQ(nutzbar(optionen), Namen{"Option1(4)"});
    for (int richtung = 12; richtung < 16; ++richtung) {
        waehlen(richtung);
        EXPECT_EQ(nutzbar(optionen), Namen{}) << richtung;
    }
}

TEST_F(FrmJoyKonfic, EineAufgegebeneUmschalttasteIstFuerAndereFrei) {
    const std::vector<const char*> optionen{"Option1(3)", "Option1(4)"};
    using Namen = std::vector<std::string>;
    oeffnen();
    waehlen(0);
    art(3);
    EXPECT_EQ(text(0), "Umschalt 1");
    waehlen(1);
    EXPECT_EQ(nutzbar(optionen), Namen{"Option1(4)"});
    waehlen(0);
    art(1);
    waehlen(1);
    EXPECT_EQ(nutzbar(optionen), (Namen{"Option1(3)", "Option1(4)"}));
}

TEST_F(FrmJoyKonfic, EineGeleerteUmschalttasteBleibtVergebenBisAlleSchilderNeuSind) {
    const std::vector<const char*> optionen{"Option1(3)", "Option1(4)"};
    using Namen = std::vector<std::string>;
    oeffnen();
    for (const int knopfindex : {0, 5}) {
        waehlen(4);
        art(3);
        control<QPushButton>(form(), "Command10").click();
        waehlen(0);
        EXPECT_EQ(nutzbar(optionen), Namen{"Option1(4)"}) << "its label alone was done anew";
        knopf(knopfindex).click();
        waehlen(0);
        EXPECT_EQ(nutzbar(optionen), (Namen{"Option1(3)", "Option1(4)"})) << knopfindex;
    }
}

TEST_F(FrmJoyKonfic, EbenenUeberDerErstenSperrenDieUmschalttastenBisZumKlickAufEinSchild) {
    const std::vector<const char*> optionen{"Option1(3)", "Option1(4)"};
    using Namen = std::vector<std::string>;
    const Namen beide{"Option1(3)", "Option1(4)"};
    oeffnen();
    for (const int ebene : {1, 2}) {
        knopf(ebene).click();
        EXPECT_EQ(nutzbar(optionen), Namen{});
        waehlen(12);
        EXPECT_EQ(nutzbar(optionen), Namen{});
        waehlen(11);
        EXPECT_EQ(nutzbar(optionen), beide) << "the disabling is only good until then";
        knopf(ebene).click();
        amPad(1);
        EXPECT_EQ(nutzbar(optionen), Namen{}) << "the pad does not enable them";
        amPad(0);
        for (const int anderer : {0, 4, 5}) {
            knopf(ebene).click();
            knopf(anderer).click();
            EXPECT_EQ(nutzbar(optionen), beide) << anderer;
        }
    }
}

// --- the pad ---

TEST_F(FrmJoyKonfic, EinButtonAmPadWirdAlleZehnMillisekundenGewaehlt) {
    belegt(2, "1,65,0-0-0");
    oeffnen();
    tastenDruecken(4);
    vergehen(9);
    EXPECT_EQ(marken(), Zahlen{});
    vergehen(1);
    EXPECT_EQ(marken(), (Zahlen{2, 22}));
    EXPECT_EQ(gesetzt("Option1", 6), Zahlen{1});
    EXPECT_EQ(txtTaste().text(), "A");
    tastenDruecken(0);
    vergehen(10);
    EXPECT_EQ(marken(), (Zahlen{2, 22})) << "the choice stays";
    tastenDruecken(8);
    vergehen(9);
    EXPECT_EQ(marken(), (Zahlen{2, 22}));
    vergehen(1);
    EXPECT_EQ(marken(), (Zahlen{3, 23}));
}

TEST_F(FrmJoyKonfic, JedesBitDesPadsHatSeinenButton) {
    oeffnen();
    for (int bit = 0; bit < 12; ++bit) {
        amPad(1U << bit);
        EXPECT_EQ(marken(), bit < 4 ? (Zahlen{bit, bit + 20}) : Zahlen{bit}) << bit;
    }
}

TEST_F(FrmJoyKonfic, ZweiButtonsZugleichUndAndereBitsWaehlenNichtsNeues) {
    oeffnen();
    for (const std::uint32_t wort : {3U, 0x1000U, 0x1001U, 0xFFFU}) {
        amPad(wort);
        EXPECT_EQ(marken(), Zahlen{}) << wort;
    }
    amPad(1);
    amPad(3);
    EXPECT_EQ(marken(), (Zahlen{0, 20}));
    amPad(2);
    EXPECT_EQ(marken(), (Zahlen{1, 21}));
}

TEST_F(FrmJoyKonfic, DasSteuerkreuzWaehltNichts) {
    oeffnen();
    pad_.zustand.dwPOV = 0;
    vergehen(50);
    EXPECT_EQ(marken(), Zahlen{});
}

TEST_F(FrmJoyKonfic, OhnePadDienenDieSchilder) {
    pad_.da = false;
    oeffnen();
    tastenDruecken(1);
    vergehen(50);
    EXPECT_EQ(marken(), Zahlen{});
    waehlen(7);
    EXPECT_EQ(marken(), Zahlen{7});
    pad_.da = true;
    vergehen(10);
    EXPECT_EQ(marken(), (Zahlen{0, 20}));
    pad_.da = false; // pulled out with its button down: its last state counts
    waehlen(7);
    vergehen(10);
    EXPECT_EQ(marken(), (Zahlen{0, 20}));
}

TEST_F(FrmJoyKonfic, DerSatzWirdMitSeinerGroesseUndSeinenFlaggenVerlangt) {
    struct Mithoerer final : Joystick {
        std::uint32_t joyGetPosEx(std::uint32_t id, JOYINFOEX& info) override {
            anfragen.push_back({id, info.dwSize, info.dwFlags});
            return JOYERR_UNPLUGGED;
        }
        std::vector<std::array<std::uint32_t, 3>> anfragen;
    } pad;
    GobalVariable global;
    global.DatenbankPfad = datenbank_.pfad();
    global.SchemaName = "S";
    Entwuerfe<Tastenentwurf> entwuerfe;
    frmJoyKonfic form(global, pad, uhr_, tastatur_, entwuerfe);
    form.laden();
    vergehen(20);
    const std::array<std::uint32_t, 3> anfrage{0, 64, 255};
    EXPECT_EQ(pad.anfragen, (std::vector{anfrage, anfrage}));
}

TEST_F(FrmJoyKonfic, EinGehaltenerButtonSetztEineWiederholungNochOhneZeitZurueck) {
    belegt(0, "1,65,1-100-0");
    oeffnen();
    amPad(1);
    wiederholen().click();
    EXPECT_TRUE(wiederholen().isChecked());
    vergehen(10);
    EXPECT_FALSE(wiederholen().isChecked());
    amPad(0);
    wiederholen().click();
    vergehen(100);
    EXPECT_TRUE(wiederholen().isChecked());
}

TEST_F(FrmJoyKonfic, EinNameWirdJeDruckUndJeTasteNachgeschlagenAberNichtJeTakt) {
    belegt(0, "1,65,0-0-0");
    oeffnen();
    datenbank_.sql("UPDATE tblKeyCode SET Keye = 'neu' WHERE Keyc = '65';");
    amPad(1);
    EXPECT_EQ(text(0), "neu");
    datenbank_.sql("UPDATE tblKeyCode SET Keye = 'anders' WHERE Keyc = '65';");
    vergehen(100);
    EXPECT_EQ(text(0), "neu");
    amPad(0);
    amPad(1);
    EXPECT_EQ(text(0), "anders");
    QKeyEvent oben(QEvent::KeyRelease, Qt::Key_B, Qt::NoModifier, ProbeTastatur::nummer(66), 0, 0);
    QApplication::sendEvent(&fang(), &oben); // while it is held
    vergehen(10);
    EXPECT_EQ(text(0), "B");
    amPad(2);
    amPad(1);
    EXPECT_EQ(text(0), "B");
}

TEST_F(FrmJoyKonfic, EineKaputteBelegungWirdEinmalGesagtSolangeIhrButtonGehaltenIst) {
    belegt(0, "1,65,2-0-0"); // a variant that does not exist
    belegt(1, "7,0,0-0-0");  // nor does this action
    oeffnen();
    for (const std::uint32_t wort : {1U, 2U}) {
        Boxleser boxen;
        tastenDruecken(wort);
        uhr_.vorUm(std::chrono::milliseconds{10});
        EXPECT_TRUE(boxen.gesehen().empty()) << "no box from within the timer";
        vergehen(500);
        ASSERT_EQ(boxen.gesehen().size(), 1U) << wort;
        EXPECT_EQ(boxen.gesehen()[0].titel, "Tastwerk");
        EXPECT_TRUE(boxen.gesehen()[0].text.startsWith("Laufzeitfehler 9:"));
        amPad(0);
        amPad(wort);
        EXPECT_EQ(boxen.gesehen().size(), 2U) << "pressed anew";
        amPad(0);
    }
    amPad(4);
    EXPECT_EQ(marken(), (Zahlen{2, 22})) << "the form goes on";
    Boxleser boxen;
    waehlen(0);
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    art(5); // another action mends it
    EXPECT_EQ(belegung(0), "5,0,0-0-0");
}

// --- layers, "Neu", "Taste neu", "Speichern" ---

TEST_F(FrmJoyKonfic, EineEbeneZeigtIhreSchilderUndVergisstDieWahl) {
    belegt(0, "1,65,0-0-0");
    belegt(0, "1,66,0-0-0", 1);
    belegt(0, "1,67,0-0-0", 2);
    belegt(15, "1,68,0-0-0", 2);
    oeffnen();
    const std::vector<std::pair<const char*, const char*>> ebenen{
        {"Standart", "A"}, {"Umschalt1", "B"}, {"Umschalt2", "C"}};
    for (const int ebene : {1, 2, 0}) {
        waehlen(0);
        knopf(ebene).click();
        const auto& [status, taste] = ebenen[static_cast<std::size_t>(ebene)];
        EXPECT_EQ(control<QLabel>(form(), "lblSchemaName(1)").text(), status);
        EXPECT_EQ(text(0), taste);
        EXPECT_EQ(text(15), ebene == 2 ? "D" : "Links");
        EXPECT_EQ(marken(), Zahlen{});
        EXPECT_EQ(rahmen(), Zahlen{});
        EXPECT_FALSE(fang().isVisible());
        EXPECT_EQ(gesetzt("Option1", 6), Zahlen{});
        Zahlen gedrueckt;
        for (int i = 0; i < 3; ++i)
            if (knopf(i).isChecked())
                gedrueckt.push_back(i);
        EXPECT_EQ(gedrueckt, Zahlen{ebene});
    }
}

TEST_F(FrmJoyKonfic, EineEbeneLaesstDieErsteOptionInRuhe) {
    belegt(0, "0,0,0-0-0");
    oeffnen();
    waehlen(0);
    knopf(1).click();
    EXPECT_EQ(gesetzt("Option1", 6), Zahlen{0});
}

TEST_F(FrmJoyKonfic, JedeEbeneWirdInIhrenSpaltenGespeichert) {
    oeffnen();
    for (int ebene = 0; ebene < 3; ++ebene) {
        knopf(ebene).click();
        for (int taste = 0; taste < 16; ++taste) {
            waehlen(taste);
            art(5);
            option("Option2", (taste + ebene) % 3).click();
        }
    }
    knopf(4).click();
    for (int ebene = 0; ebene < 3; ++ebene)
        for (int taste = 0; taste < 16; ++taste)
            EXPECT_EQ(gespeichert(taste, ebene), "5,0," + std::to_string((taste + ebene) % 3) + "-0-0")
                << taste << " " << ebene;
}

TEST_F(FrmJoyKonfic, NeuLeertDieButtonsDerEbeneUndLaesstDasSteuerkreuz) {
    for (int ebene = 0; ebene < 3; ++ebene)
        for (int taste = 0; taste < 16; ++taste)
            belegt(taste, "1,65,0-0-0", ebene);
    oeffnen();
    knopf(1).click();
    knopf(5).click();
    std::vector<std::string> erwartet(NAMEN.begin(), NAMEN.begin() + 12);
    erwartet.insert(erwartet.end(), 4, "A");
    EXPECT_EQ(schilder(), erwartet);
    EXPECT_EQ(gespeichert(0, 1), "1,65,0-0-0") << "not yet stored";
    knopf(4).click();
    for (int ebene = 0; ebene < 3; ++ebene)
        for (int taste = 0; taste < 16; ++taste)
            EXPECT_EQ(gespeichert(taste, ebene), ebene == 1 && taste < 12 ? LEER : "1,65,0-0-0");
}

TEST_F(FrmJoyKonfic, NeuBehaeltDieWahlUndWasSieZeigt) {
    belegt(0, "5,0,0-0-0");
    oeffnen();
    waehlen(0);
    knopf(5).click();
    EXPECT_EQ(marken(), (Zahlen{0, 20}));
    EXPECT_EQ(rahmen(), Zahlen{1});
    EXPECT_EQ(gesetzt("Option1", 6), Zahlen{5});
    art(5); // set already, but the button is empty now
    EXPECT_EQ(text(0), "Maus");
}

TEST_F(FrmJoyKonfic, TasteNeuLeertNurDenGewaehltenButton) {
    belegt(0, "1,65,1-2-3");
    belegt(0, "1,66,1-2-3", 1);
    belegt(12, "1,38,1-2-3");
    oeffnen();
    auto& tasteNeu = control<QPushButton>(form(), "Command10");
    tasteNeu.click(); // nothing chosen
    EXPECT_EQ(text(0), "A");
    for (const int taste : {0, 12}) {
        waehlen(taste);
        tasteNeu.click();
        EXPECT_EQ(text(taste), NAMEN[static_cast<std::size_t>(taste)]);
        EXPECT_EQ(rahmen(), Zahlen{});
        EXPECT_EQ(gesetzt("Option1", 6), Zahlen{});
        EXPECT_FALSE(fang().isVisible());
    }
    EXPECT_EQ(belegung(0), LEER);
    EXPECT_EQ(belegung(12), LEER);
    EXPECT_EQ(gespeichert(0, 1), "1,66,1-2-3");
}

TEST_F(FrmJoyKonfic, EineGesperrteDatenbankWirdEinmalGesagtUndNichtsGehtVerloren) {
    oeffnen();
    waehlen(0);
    art(5);
    {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN IMMEDIATE;");
        Boxleser boxen;
        knopf(4).click();
        ASSERT_EQ(boxen.gesehen().size(), 1U);
        EXPECT_EQ(boxen.gesehen()[0].titel, "Tastwerk");
        EXPECT_EQ(boxen.gesehen()[0].symbol, QMessageBox::Warning);
        EXPECT_TRUE(boxen.gesehen()[0].text.startsWith("Laufzeitfehler 3218:"));
    }
    EXPECT_EQ(gespeichert(0), LEER);
    EXPECT_EQ(text(0), "Maus");
    EXPECT_EQ(belegung(0), "5,0,0-0-0") << "the next try stores it";
}

TEST_F(FrmJoyKonfic, SpeichernLegtDieZeileDesSteuerkreuzesDieFehlt) {
    oeffnen();
    waehlen(12);
    art(5);
    datenbank_.sql("DELETE FROM tblSteuerKreuz;");
    Boxleser boxen;
    knopf(4).click();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_EQ(gespeichert(12), "5,0,0-0-0");
}

TEST_F(FrmJoyKonfic, WasErNichtBearbeitetIstKeineBedingungDesSpeicherns) {
    datenbank_.sql("UPDATE tblTastatur SET Funktion = 'x'");
    oeffnen();
    waehlen(12);
    art(5);
    Boxleser boxen;
    knopf(4).click();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_EQ(gespeichert(12), "5,0,0-0-0");
}

TEST_F(FrmJoyKonfic, EinInzwischenGeloeschtesSchemaBleibtGeloescht) {
    oeffnen();
    waehlen(0);
    art(5);
    waehlen(12);
    art(5);
    datenbank_.sql("DELETE FROM tblTastatur;");
    Boxleser boxen;
    knopf(4).click();
    EXPECT_EQ(boxen.gesehen(),
              (std::vector<Gesehen>{{"Tastwerk",
                                     "Das Schema „S“ gibt es nicht mehr. Seine Tastenbelegung konnte nicht "
                                     "gespeichert werden.",
                                     QMessageBox::Warning, QMessageBox::Ok}}));
    EXPECT_EQ(datenbank_.zeilen("SELECT * FROM tblTastatur;").size(), 0U);
    EXPECT_EQ(gespeichert(12), LEER);
    EXPECT_EQ(text(0), "Maus") << "nothing of the work is lost";
}

TEST_F(FrmJoyKonfic, GehtMitSeinemSchemaUndMitKeinemAnderen) {
    Schemabau(datenbank_, "T").anlegen();
    oeffnen();
    const auto loeschen = [this](const std::vector<QMessageBox::StandardButton>& antworten) {
        Boxleser boxen(antworten);
        control<QPushButton>(haupt(), "Command1(3)").click();
        ereignisse();
    };
    auto& combo = control<QComboBox>(haupt(), "Combo1");
    combo.setCurrentIndex(1);
    loeschen({QMessageBox::Yes});
    EXPECT_NE(offenes(), nullptr) << "T was deleted";
    loeschen({QMessageBox::No});
    EXPECT_NE(offenes(), nullptr);
    loeschen({QMessageBox::Yes});
    EXPECT_EQ(offenes(), nullptr);
    EXPECT_EQ(uhr_.laufende(), 0U);
}

// --- opening and closing ---

TEST_F(FrmJoyKonfic, SchliessenVerwirftOhneFrageUndBeendetDieAbfrage) {
    oeffnen();
    waehlen(0);
    art(5);
    Boxleser boxen;
    form().close();
    ereignisse();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_EQ(offenes(), nullptr);
    EXPECT_EQ(uhr_.laufende(), 0U);
    EXPECT_EQ(gespeichert(0), LEER);
    oeffnen();
    EXPECT_EQ(schilder(), NAMEN);
    EXPECT_EQ(marken(), Zahlen{});
}

TEST_F(FrmJoyKonfic, EinZweiterKlickHoltDieOffeneFormNachVornWieSieIst) {
    oeffnen();
    waehlen(0);
    art(5);
    auto* erstes = &form();
    erstes->showMinimized();
    oeffnen();
    EXPECT_EQ(&form(), erstes);
    EXPECT_FALSE(erstes->isMinimized());
    EXPECT_EQ(text(0), "Maus");
    int offene = 0;
    for (auto* fenster : QApplication::topLevelWidgets())
        offene += fenster->objectName() == "frmJoyKonfic" ? 1 : 0;
    EXPECT_EQ(offene, 1);
}

TEST_F(FrmJoyKonfic, ArbeitetAmSchemaDasBeimOeffnenGewaehltWar) {
    Schemabau(datenbank_, "T").anlegen();
    oeffnen();
    waehlen(0);
    art(5);
    auto& combo = control<QWidget>(haupt(), "Combo1");
    combo.setProperty("currentText", "T");
    knopf(4).click();
    EXPECT_EQ(datenbank_.zeilen("SELECT Schemaname, btn1 FROM tblTastatur;"),
              (Tabellenbild{{"S", "5,0,0-0-0"}, {"T", LEER}}));
    EXPECT_EQ(control<QLabel>(form(), "lblSchemaName(0)").text(), "S");
}

TEST_F(FrmJoyKonfic, EineLeereListeOeffnetNichts) {
    datenbank_.sql("DELETE FROM tblTastatur;");
    starten();
    Boxleser boxen;
    oeffnen();
    EXPECT_EQ(boxen.gesehen(), (std::vector<Gesehen>{{"Kein Schema!", "Es muß ein Schema erstellt werden",
                                                      QMessageBox::Information, QMessageBox::Ok}}));
    EXPECT_EQ(offenes(), nullptr);
}

TEST_F(FrmJoyKonfic, DasProgrammEndetBeiOffenerForm) {
    oeffnen();
    amPad(1);
    programm_.reset();
    ereignisse();
    EXPECT_EQ(offenes(), nullptr);
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_F(FrmJoyKonfic, EinLaufGehtNebenDerOffenenFormWeiter) {
    belegt(2, "1,65,0-0-0");
    oeffnen();
    control<QPushButton>(haupt(), "Command1(5)").click();
    amPad(4);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+65"});
    EXPECT_EQ(marken(), (Zahlen{2, 22}));
}

// --- looks ---

TEST_F(FrmJoyKonfic, WaechstMitDerSchriftSodassNichtsBeschnittenIst) {
    belegt(0, "1,168,1-100-50");
    belegt(1, "5,0,3-1-0");
    belegt(2, "3,0,0-0-0");
    for (const int punkt : {9, 12, 16, 24}) {
        const Schriftgrad grad(punkt);
        programm_.reset();
        oeffnen();
        form().resize(form().minimumSizeHint());
        for (const int taste : {0, 1, 2}) {
            waehlen(taste);
            EXPECT_EQ(beschnittene(form()), std::vector<std::string>{})
                << punkt << " points, button " << taste;
            const auto& erstes = schild(0);
            EXPECT_GE(erstes.width(), erstes.fontMetrics().horizontalAdvance("Browser aktualisieren") + 8);
        }
    }
}

TEST_F(FrmJoyKonfic, SchilderUeberlappenNichtUndVerlassenDasBildNicht) {
    oeffnen();
    for (const QSize groesse :
         {form().minimumSizeHint(), QSize(1000, 700), QSize(1600, 600), QSize(760, 1000)}) {
        form().resize(groesse);
        ereignisse();
        const auto& bild = control<QWidget>(form(), "imgHintergrund");
        for (int a = 0; a < 16; ++a) {
            EXPECT_TRUE(bild.rect().contains(schild(a).geometry())) << a << " at " << groesse.width();
            for (int b = 0; b < a; ++b)
                EXPECT_FALSE(schild(a).geometry().intersects(schild(b).geometry())) << a << " and " << b;
        }
    }
}

TEST_F(FrmJoyKonfic, EinLangerNameDesSchemasBrauchtNichtMehrPlatz) {
    oeffnen();
    const int schmal = form().minimumSizeHint().width();
    form().close();
    ereignisse();
    datenbank_.sql("UPDATE tblTastatur SET Schemaname = '" + std::string(255, 'W') + "';");
    datenbank_.sql("UPDATE tblSteuerKreuz SET Schemaname = '" + std::string(255, 'W') + "';");
    programm_.reset();
    oeffnen();
    EXPECT_EQ(form().minimumSizeHint().width(), schmal);
    EXPECT_EQ(control<QLabel>(form(), "lblSchemaName(0)").text(), QString(255, 'W'));
}

TEST_F(FrmJoyKonfic, DerTabulatorGehtVonObenNachUntenUndDurchDieFangbox) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    waehlen(0);
    auto* erstes = static_cast<QWidget*>(&control<QWidget>(form(), "imgHintergrund"));
    QStringList namen;
    for (auto* feld = erstes;;) {
        if ((feld->focusPolicy() & Qt::TabFocus) && feld->isVisible() && feld->isEnabled())
            namen << feld->objectName();
        feld = feld->nextInFocusChain();
        if (feld == erstes)
            break;
    }
    // Of the layers the one in sight; the arrow keys lead to the others.
    EXPECT_EQ(namen.join(" "),
              (QStringList{"imgHintergrund", "Command1(0)", "Command10", "Command1(5)", "Command1(4)",
                           "Option1(0)", "Option1(1)", "Text3(0)", "Option1(2)", "Option1(3)", "Option1(4)",
                           "Option1(5)", "optEig(0)", "optEig(1)", "Text1(0)", "Check1(0)", "Text2(0)"})
                  .join(" "));
}

TEST_F(FrmJoyKonfic, KnoepfeHabenTastenkuerzelDieIhreAufschriftenNichtAendern) {
    oeffnen();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form()));
    auto* fenster = form().windowHandle();
    // A shortcut shows its button pressed for a moment before it clicks.
    QTest::keyClick(fenster, Qt::Key_2, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return control<QLabel>(form(), "lblSchemaName(1)").text() == "Umschalt1"; }));
    waehlen(0);
    art(5);
    QTest::keyClick(fenster, Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return gespeichert(0, 1) == "5,0,0-0-0"; }));
    QTest::keyClick(fenster, Qt::Key_T, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return text(0) == "Dreieck"; }));
}

TEST_F(FrmJoyKonfic, DasBildFolgtDerPalette) {
    oeffnen();
    auto& bild = control<QWidget>(form(), "imgHintergrund");
    const auto hell = bild.grab().toImage();
    QPalette dunkel;
    dunkel.setColor(QPalette::Window, QColor(40, 40, 40));
    dunkel.setColor(QPalette::WindowText, Qt::white);
    form().setPalette(dunkel);
    ereignisse();
    const auto punkt = bild.rect().center(); // on the body
    EXPECT_GT(qGray(hell.pixel(punkt)), 150);
    EXPECT_LT(qGray(bild.grab().toImage().pixel(punkt)), 130);
}
