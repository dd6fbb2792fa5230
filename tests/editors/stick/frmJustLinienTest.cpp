// SPDX-License-Identifier: GPL-3.0-or-later
// The stick editors: what the mouse on the plane leaves in the database.
#include "tests/editors/stick/Justiertest.h"

#include <QLineEdit>

#include <tuple>

namespace {

class FrmJustLinien : public Justiertest, public ::testing::WithParamInterface<Zwilling> {
protected:
    FrmJustLinien() : Justiertest(GetParam()) {
        schema();
        linien();
    }
    using Zeilen = Tabellenbild;
    /// Does `arbeit` while another program holds the database.
    template <class Arbeit> void gesperrt(Arbeit&& arbeit) {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN IMMEDIATE;");
        arbeit();
    }
    static Gesehen box(const char* text) { return {"", text, QMessageBox::NoIcon, QMessageBox::Ok}; }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Zwillinge, FrmJustLinien, ::testing::Values(LINKER_ZWILLING, RECHTER_ZWILLING),
                         [](const auto& fall) { return std::string(fall.param.form); });

TEST_P(FrmJustLinien, EineLinieWirdAufgenommenGezogenUndGespeichert) {
    aktion(0, "20000,0,0,0", "0,0,5,10");
    aktion(0, "0,45000,21000,0", "3");
    aktion(1, "20000,0,0,0", "4");
    editorOeffnen();
    klick(20000, 33000);
    ziehen(15000, 33000);
    EXPECT_TRUE(stehtX("LLinks(0)", 15000));
    EXPECT_EQ(linie("Links", 1), "20000") << "nothing is stored on the way";
    klick(15000, 33000);
    EXPECT_EQ(linie("Links", 1), "15000");
    EXPECT_EQ(linie("Links2", 1), "20100");
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "0", "45000", "21000", "0", "3"},
                                  {"0", "15000", "0", "0", "0", "0,0,5,10"},
                                  {"1", "20000", "0", "0", "0", "4"}}));
}

TEST_P(FrmJustLinien, AlleVierRichtungenGehenInIhreSpalten) {
    editorOeffnen();
    const auto bewege = [this](double vonX, double vonY, double nachX, double nachY) {
        klick(vonX, vonY);
        ziehen(nachX, nachY);
        klick(nachX, nachY);
    };
    bewege(20000, 33000, 10000, 33000);
    bewege(45000, 33000, 50000, 33000);
    bewege(33000, 21000, 33000, 12000);
    bewege(33000, 46000, 33000, 52000);
    EXPECT_EQ(linie("Links || ',' || Rechts || ',' || Oben || ',' || Unten", 1), "10000,50000,12000,52000");
}

TEST_P(FrmJustLinien, EineKreuzungBewegtBeide) {
    editorOeffnen();
    klick(20000, 21000);
    ziehen(18000, 24000);
    klick(18000, 24000);
    EXPECT_EQ(linie("Links || ',' || Oben", 1), "18000,24000");
}

TEST_P(FrmJustLinien, AufEinerAnderenEbeneBewegtSichNurDeren) {
    aktion(0, "20100,0,0,0", "4");
    aktion(1, "20100,0,0,0", "4");
    editorOeffnen();
    feld<QRadioButton>("Uschalt(1)").click();
    klick(20100, 33000);
    ziehen(15000, 33000);
    klick(15000, 33000);
    EXPECT_EQ(linie("Links || ',' || Links2 || ',' || Links3", 1), "20000,15000,20200");
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "20100", "0", "0", "0", "4"}, {"1", "15000", "0", "0", "0", "4"}}));
}

// A line put down on another one picks that up and leaves the panels open.
TEST_P(FrmJustLinien, WasInDerHandIstGehtNichtMitAufDieAndereEbene) {
    aktion(0, "0,0,21000,0", "4");
    editorOeffnen();
    klick(20000, 33000);
    ziehen(15000, 33000);
    ziehen(15000, 21000);
    klick(15000, 21000);
    ziehen(15000, 8000);
    EXPECT_TRUE(stehtY("LOben(0)", 8000)) << "it is in hand";
    feld<QRadioButton>("Uschalt(1)").click();
    EXPECT_TRUE(stehtY("LOben(0)", 21100));
    ziehen(15000, 9000);
    klick(15000, 60000);
    feld<QPushButton>("Command1(1)").click();
    EXPECT_TRUE(stehtY("LOben(0)", 21100));
    EXPECT_EQ(linie("Links || ',' || Oben || ',' || Oben2", 1), "15000,21000,21100");
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "0", "0", "21000", "0", "4"}}));
}

TEST_P(FrmJustLinien, DerTestSpeichertKeineLinieAusDerHand) {
    editorOeffnen();
    klick(20000, 33000);
    ziehen(15000, 33000);
    ziehen(15000, 21000);
    klick(15000, 21000);
    ziehen(15000, 8000);
    feld<QPushButton>("Command1(1)").click();
    EXPECT_NE(laufFenster(), nullptr);
    EXPECT_TRUE(stehtY("LOben(0)", 21000));
    EXPECT_EQ(linie("Links || ',' || Oben", 1), "15000,21000");
}

TEST_P(FrmJustLinien, DieMausUeberEinemPfeilBewegtDieLinieWeiter) {
    editorOeffnen();
    klick(20000, 33000);
    bewegen(feld<QWidget>("LPfeil(0)"), {1, 1});
    EXPECT_FALSE(stehtX("LLinks(0)", 20000)) << "moves on an arrow go on to the plane";
}

TEST_P(FrmJustLinien, EinPfeilLegtEineLinieAnUndDieRechteTasteNimmtSieFort) {
    editorOeffnen();
    pfeil("RPfeil(0)");
    EXPECT_EQ(linie("Rechts", 2), "46000");
    EXPECT_TRUE(stehtX("LRechts(1)", 46000));
    EXPECT_TRUE(zuSehen("RPfeil(1)"));
    pfeil("RPfeil(1)"); // which member doesn't matter
    EXPECT_EQ(linie("Rechts", 3), "47000");
    pfeil("RPfeil(0)", Qt::RightButton);
    pfeil("RPfeil(0)", Qt::RightButton);
    EXPECT_EQ(linie("Rechts", 2), "0");
    EXPECT_FALSE(zuSehen("LRechts(1)"));
    EXPECT_FALSE(zuSehen("RPfeil(1)"));
}

TEST_P(FrmJustLinien, AlleNeunzehnLinienLassenSichAnlegen) {
    editorOeffnen();
    for (int i = 0; i < 18; ++i)
        pfeil("LPfeil(0)");
    EXPECT_EQ(linie("Links", 19), "2000");
    Boxleser boxen;
    pfeil("LPfeil(0)");
    EXPECT_EQ(linie("Links", 19), "2000");
    EXPECT_TRUE(boxen.gesehen().empty()) << "line 19 is laid anew without a word";
    EXPECT_EQ(linie("Links", 20), "0") << "row 20 holds no line";
}

TEST_P(FrmJustLinien, DieBoxenDerPfeile) {
    datenbank_.sql("UPDATE " + stick() + " SET Oben = 1500 WHERE \"index\" = 1;");
    editorOeffnen();
    Boxleser boxen;
    pfeil("OPfeil(0)");
    pfeil("OPfeil(0)", Qt::RightButton);
    EXPECT_EQ(boxen.gesehen(), (std::vector<Gesehen>{box("Es kann keine neu Linie erstellt werden!"),
                                                     box("Die Mittellinie kann nicht gelöscht werden!")}));
}

TEST_P(FrmJustLinien, EineLinieMitAktionBleibtUndVerliertNurIhreLeerfelder) {
    editorOeffnen();
    pfeil("UPfeil(0)");
    aktion(0, "0,0,0,47000", "3");
    aktion(0, "20000,0,0,47000", "4");
    Boxleser boxen;
    pfeil("UPfeil(0)", Qt::RightButton);
    EXPECT_EQ(boxen.gesehen(),
              (std::vector<Gesehen>{box("Diese Linie ist mit Aktionen verbunden. Löschen Sie "
                                        "diese, bevor Sie die Linie entfernen!")}));
    EXPECT_EQ(linie("Unten", 2), "47000");
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "20000", "0", "0", "47000", "4"}}));

    datenbank_.sql("UPDATE " + aktionstabelle() + " SET Aktion = '3';");
    pfeil("UPfeil(0)", Qt::RightButton);
    EXPECT_EQ(linie("Unten", 2), "0");
    EXPECT_EQ(aktionen(), Zeilen{});
}

TEST_P(FrmJustLinien, SolangeEinFeldGewaehltIstRuhenLinienUndPfeile) {
    editorOeffnen();
    klick(33000, 33000);
    pfeil("LPfeil(0)");
    EXPECT_EQ(linie("Links", 2), "0");
    klick(20000, 33000);
    EXPECT_FALSE(zuSehen("RechteckB"));
    ziehen(15000, 33000);
    EXPECT_TRUE(stehtX("LLinks(0)", 20000));
}

TEST_P(FrmJustLinien, AmRandLaesstSichDieLinieNichtAbsetzen) {
    editorOeffnen();
    klick(20000, 33000);
    ziehen(100, 33000);
    EXPECT_TRUE(stehtX("LLinks(0)", 501));
    klick(501, 33000);
    EXPECT_EQ(linie("Links", 1), "20000");
    ziehen(3000, 33000);
    klick(3000, 33000);
    EXPECT_EQ(linie("Links", 1), "3000");
}

// --- the store fails ---

TEST_P(FrmJustLinien, EinGesperrterSpeicherLaesstDieLinieAmAltenOrt) {
    aktion(0, "20000,0,0,0", "4");
    editorOeffnen();
    klick(20000, 33000);
    ziehen(15000, 33000);
    Boxleser boxen;
    gesperrt([&] { klick(15000, 33000); });
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3218")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(linie("Links", 1), "20000");
    EXPECT_TRUE(stehtX("LLinks(0)", 20000));
    EXPECT_TRUE(feld<QWidget>("Frame2").isEnabled());

    klick(20000, 33000);
    ziehen(15000, 33000);
    klick(15000, 33000);
    EXPECT_EQ(linie("Links", 1), "15000") << "the next try works as ever";
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "15000", "0", "0", "0", "4"}}));
    EXPECT_EQ(boxen.gesehen().size(), 1U);
}

TEST_P(FrmJustLinien, FolgenDieAktionenNichtBleibtAuchDieLinie) {
    aktion(0, "20000,0,0,0", "4");
    editorOeffnen();
    klick(20000, 33000);
    ziehen(15000, 33000);
    datenbank_.sql("ALTER TABLE " + aktionstabelle() + " RENAME TO weg;");
    Boxleser boxen;
    klick(15000, 33000);
    datenbank_.sql("ALTER TABLE weg RENAME TO " + aktionstabelle() + ";");
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(linie("Links", 1), "20000");
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "20000", "0", "0", "0", "4"}}));
}

TEST_P(FrmJustLinien, EinGesperrterSpeicherLegtKeineLinieAn) {
    editorOeffnen();
    Boxleser boxen;
    gesperrt([&] { pfeil("LPfeil(0)"); });
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_FALSE(zuSehen("LLinks(1)"));
    pfeil("LPfeil(0)");
    EXPECT_EQ(linie("Links", 2), "19000");
}

TEST_P(FrmJustLinien, EineAktionOhneLinieWirdGesagtUndDerEditorBleibt) {
    aktion(0, "0,0,12345,0", "4");
    starten();
    Boxleser boxen;
    editorknopf();
    ASSERT_EQ(boxen.gesehen().size(), 1U) << "the drawing fails once";
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("9")) << boxen.gesehen()[0].text.toStdString();
    klick(20000, 33000);
    ziehen(15000, 33000);
    klick(15000, 33000);
    EXPECT_EQ(linie("Links", 1), "15000");
    EXPECT_TRUE(feld<QWidget>("Frame2").isEnabled());
}

// --- the action panel on the plane ---

TEST_P(FrmJustLinien, RechtsOeffnetDieTafelUndEinKlickDanebenSpeichert) {
    editorOeffnen();
    klick(50000, 10000, Qt::RightButton);
    EXPECT_FALSE(zuSehen("fraAktion")) << "no field is chosen";
    EXPECT_TRUE(haupt().isVisible());

    klick(50000, 10000);
    klick(50000, 10000, Qt::RightButton);
    EXPECT_TRUE(zuSehen("fraAktion"));
    EXPECT_FALSE(haupt().isVisible());
    EXPECT_TRUE(feld<QRadioButton>("Option1(3)").isChecked()) << "a field without a row is a Leerfeld";
    EXPECT_FALSE(zuSehen("Option3(2)")) << "only the centre field can be an Ego Shooter";
    feld<QRadioButton>("Option1(4)").click();
    klick(50000, 10000);
    EXPECT_FALSE(zuSehen("fraAktion"));
    EXPECT_FALSE(zuSehen("RechteckB"));
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "0", "45000", "21000", "0", "4"}}));
}

TEST_P(FrmJustLinien, EinGeoeffnetesUndVerlassenesFeldBekommtEineZeile) {
    editorOeffnen();
    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    EXPECT_TRUE(zuSehen("Option3(2)"));
    klick(33000, 33000);
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "0", "0", "0", "0", "3"}}));
}

TEST_P(FrmJustLinien, DieAktionGehtAufDieGezeigteEbene) {
    editorOeffnen();
    for (const auto& [ebene, x, y, option] :
         {std::tuple{2, 10000, 60000, 4}, {1, 60000, 60000, 4}, {2, 33000, 60000, 5}, {0, 60000, 5000, 1}}) {
        feld<QRadioButton>(QString("Uschalt(%1)").arg(ebene)).click();
        klick(x, y);
        klick(x, y, Qt::RightButton);
        feld<QRadioButton>(QString("Option1(%1)").arg(option)).click();
        klick(x, y);
    }
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "0", "45000", "21000", "0", "1,0"},
                                  {"1", "0", "45100", "0", "46100", "4"},
                                  {"2", "0", "0", "0", "46200", "5,0"},
                                  {"2", "20200", "0", "0", "46200", "4"}}));
}

TEST_P(FrmJustLinien, EinTextMitZuWenigenFeldernWirdGesagtUndLaesstSichAendern) {
    aktion(0, "0,0,0,0", "2,1,65");
    editorOeffnen();
    klick(33000, 33000);
    Boxleser boxen;
    klick(33000, 33000, Qt::RightButton);
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].text, "Laufzeitfehler 9:\nDer Aktion des Feldes fehlt das Feld 3.");
    EXPECT_TRUE(zuSehen("fraAktion"));
    EXPECT_EQ(aktionen()[0][5], "2,1,65") << "until the panel is closed";
    feld<QLineEdit>("txtZeit(0)").setText("70");
    klick(33000, 33000);
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "0", "0", "0", "0", "2,1,65,70,0,0"}}));
    EXPECT_EQ(boxen.gesehen().size(), 1U);
}

TEST_P(FrmJustLinien, EineKurzeMausbewegungOeffnetOhneEinWort) {
    aktion(0, "0,0,0,0", "0,3");
    editorOeffnen();
    klick(33000, 33000);
    Boxleser boxen;
    klick(33000, 33000, Qt::RightButton);
    EXPECT_TRUE(zuSehen("fraAktion"));
    EXPECT_TRUE(feld<QRadioButton>("Option2(3)").isChecked());
    EXPECT_TRUE(boxen.gesehen().empty());
}

TEST_P(FrmJustLinien, DieTafelZeigtDieAktionDesFeldesUndAendertSie) {
    aktion(0, "20000,0,0,0", "2,0,13,0,0");
    aktion(1, "20000,0,0,0", "4");
    editorOeffnen();
    klick(10000, 33000);
    klick(10000, 33000, Qt::RightButton);
    EXPECT_TRUE(feld<QRadioButton>("Option1(2)").isChecked());
    EXPECT_TRUE(feld<QRadioButton>("optEig(0)").isChecked());
    feld<QRadioButton>("Option1(3)").click();
    klick(10000, 33000);
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "20000", "0", "0", "0", "3"}, {"1", "20000", "0", "0", "0", "4"}}));
}

TEST_P(FrmJustLinien, DieTafelStehtNebenDemKlickUndAufDerEbene) {
    editorOeffnen();
    auto& tafel = feld<QWidget>("fraAktion");
    klick(33000, 33000);
    for (const QSize groesse : {QSize(1024, 768), QSize(1920, 1080)}) {
        form().resize(groesse);
        ereignisse();
        klick(33000, 30000, Qt::RightButton);
        EXPECT_NEAR(tafel.y(), 30000.0 * groesse.height() / 65535, 1);
        EXPECT_NEAR(tafel.x() + tafel.width() / 2.0, 33000.0 * groesse.width() / 65535, 1);
        klick(11000, 60000, Qt::RightButton);
        EXPECT_NEAR(tafel.y() + tafel.height(), 60000.0 * groesse.height() / 65535, 1);
        EXPECT_EQ(tafel.x(), 0);
        klick(60000, 60000, Qt::RightButton);
        EXPECT_NEAR(tafel.x() + tafel.width(), groesse.width(), 1);
        EXPECT_TRUE(ebene().rect().contains(tafel.geometry()));
    }
    form().resize(1024, 768);
    ereignisse();
    EXPECT_TRUE(ebene().rect().contains(tafel.geometry())) << "a window that shrinks takes it along";
}

TEST_P(FrmJustLinien, DieTafelHatAuchMitGrossenBuchstabenAufDemKleinstenFensterPlatz) {
    for (const int punkt : {9, 16, 24}) {
        const Schriftgrad grad(punkt);
        editorOeffnen();
        form().resize(form().minimumSize());
        ereignisse();
        klick(33000, 33000);
        for (const auto& [x, y] : {std::pair{33000.0, 33000.0}, {60000.0, 60000.0}, {5000.0, 5000.0}}) {
            klick(x, y, Qt::RightButton);
            const auto& tafel = feld<QWidget>("fraAktion");
            EXPECT_TRUE(ebene().rect().contains(tafel.geometry()))
                << punkt << " points: " << tafel.width() << " by " << tafel.height() << " on "
                << ebene().width() << " by " << ebene().height();
        }
        form().close();
        ereignisse();
    }
}

TEST_P(FrmJustLinien, LaesstSichDieAktionNichtLesenBleibtDieTafelZu) {
    editorOeffnen();
    klick(33000, 33000);
    datenbank_.sql("ALTER TABLE " + aktionstabelle() + " RENAME TO weg;");
    Boxleser boxen;
    klick(33000, 33000, Qt::RightButton);
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_FALSE(zuSehen("fraAktion"));
}

TEST_P(FrmJustLinien, LaesstSichDieAktionNichtSpeichernBleibtDieTafelMitIhrStehen) {
    editorOeffnen();
    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    feld<QRadioButton>("Option1(4)").click();
    Boxleser boxen;
    gesperrt([&] { klick(33000, 33000); });
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(aktionen(), Zeilen{});
    EXPECT_TRUE(zuSehen("RechteckB")) << "the handler ended there";
    ASSERT_TRUE(zuSehen("fraAktion"));
    EXPECT_TRUE(feld<QRadioButton>("Option1(4)").isChecked());
    feld<QRadioButton>("Uschalt(1)").click();
    EXPECT_FALSE(feld<QWidget>("Frame2").isEnabled());
    EXPECT_FALSE(feld<QWidget>("Frame3").isEnabled());
    klick(33000, 33000);
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "0", "0", "0", "0", "4"}}));
    EXPECT_FALSE(zuSehen("fraAktion"));
    EXPECT_TRUE(feld<QWidget>("Frame2").isEnabled());
    EXPECT_TRUE(feld<QWidget>("Frame3").isEnabled());
}

TEST_P(FrmJustLinien, SymboleKommenUndGehenMitDerAktion) {
    editorOeffnen();
    const auto mitte = [this] { return ebene().grab().toImage(); };
    const auto vorher = mitte();
    aktion(0, "20000,0,21000,0", "4");
    pfeil("RPfeil(0)"); // draws anew
    const auto nachher = mitte();
    const QRect oben(40, 40, 200, 150); // within the upper left field
    EXPECT_NE(vorher.copy(oben), nachher.copy(oben));
    datenbank_.sql("DELETE FROM " + aktionstabelle() + ";");
    pfeil("RPfeil(0)", Qt::RightButton);
    EXPECT_EQ(vorher, mitte());
}

// --- another Schema in the main form ---

TEST_P(FrmJustLinien, EinAnderesSchemaInDerHauptformBekommtKeineLinienDesOffenen) {
    schema("T");
    linien("T");
    datenbank_.sql("UPDATE " + stick() + " SET Rechts = 50000 WHERE Schemaname = 'T' AND \"index\" = 1;");
    aktion(0, "20000,0,0,0", "4");
    editorOeffnen();
    Boxleser boxen;
    control<QComboBox>(haupt(), "Combo1").setEditText("T");
    freilegen();
    klick(20000, 33000);
    ziehen(15000, 33000);
    klick(15000, 33000);
    EXPECT_EQ(linie("Links || ',' || Rechts", 1, "S"), "15000,45000");
    EXPECT_EQ(linie("Links || ',' || Rechts", 1, "T"), "20000,50000");
    EXPECT_EQ(aktionen(), (Zeilen{{"0", "15000", "0", "0", "0", "4"}}));
    EXPECT_TRUE(boxen.gesehen().empty());
}

TEST_P(FrmJustLinien, AllesWasDerEditorTutGiltSeinemSchemaNichtDemGewaehlten) {
    schema("T");
    linien("T");
    const auto alsT = [this](const std::string& anker, const std::string& text) {
        datenbank_.sql("INSERT INTO " + aktionstabelle() + " VALUES ('T',0," + anker + ",'" + text + "');");
    };
    const auto derT = [this] {
        return std::pair{datenbank_.zeilen("SELECT * FROM " + stick() + " WHERE Schemaname = 'T';"),
                         datenbank_.zeilen("SELECT * FROM " + aktionstabelle() + " WHERE Schemaname = 'T';")};
    };
    const auto derS = [this] {
        return datenbank_.zeilen("SELECT Links, Rechts, Oben, Unten, Aktion FROM " + aktionstabelle() +
                                 " WHERE Schemaname = 'S' ORDER BY 1, 2, 3, 4;");
    };
    aktion(0, "0,0,0,0", "1,2");
    aktion(0, "0,46000,0,0", "3");
    alsT("0,0,0,0", "2,0,65,0,0");
    alsT("0,46000,0,0", "3");
    alsT("20000,0,0,0", "4");
    const auto vorherT = derT();
    editorOeffnen();
    const auto linkesFeld = [this] {
        return ebene().grab(QRect(pixel(2000, 22000).toPoint(), pixel(18000, 45000).toPoint())).toImage();
    };
    const auto leer = linkesFeld();
    control<QComboBox>(haupt(), "Combo1").setCurrentIndex(1);

    pfeil("RPfeil(0)");
    EXPECT_EQ(linie("Rechts", 2, "S"), "46000");
    EXPECT_EQ(linkesFeld(), leer) << "no symbol of the other one";
    pfeil("RPfeil(0)", Qt::RightButton);
    EXPECT_EQ(linie("Rechts", 2, "S"), "0");
    EXPECT_EQ(derS(), (Zeilen{{"0", "0", "0", "0", "1,2"}})) << "the Leerfeld on the line is gone";

    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    EXPECT_TRUE(feld<QRadioButton>("optMaus(2)").isChecked());
    EXPECT_TRUE(feld<QRadioButton>("Option1(1)").isChecked());
    feld<QRadioButton>("optMaus(1)").click();
    klick(33000, 33000);
    EXPECT_EQ(derS(), (Zeilen{{"0", "0", "0", "0", "1,1"}}));
    EXPECT_EQ(derT(), vorherT);
}

TEST_P(FrmJustLinien, EinHalbGetippterNameLegtKeineLinienAn) {
    editorOeffnen();
    Boxleser boxen;
    control<QComboBox>(haupt(), "Combo1").setEditText("halb");
    freilegen();
    feld<QRadioButton>("Uschalt(1)").click();
    EXPECT_TRUE(boxen.gesehen().empty());
    EXPECT_EQ(datenbank_.zeilen("SELECT DISTINCT Schemaname FROM " + stick() + ";"), (Zeilen{{"S"}}));
}

TEST_P(FrmJustLinien, MitSeinemSchemaSchliesstDerEditor) {
    schema("T");
    linien("T");
    editorOeffnen();
    control<QComboBox>(haupt(), "Combo1").setEditText("T");
    {
        Boxleser ja({QMessageBox::Yes});
        control<QPushButton>(haupt(), "Command1(3)").click();
        ereignisse();
        EXPECT_TRUE(offen()) << "another Schema was deleted";
    }
    {
        Boxleser nein({QMessageBox::No});
        control<QPushButton>(haupt(), "Command1(3)").click();
        ereignisse();
        EXPECT_TRUE(offen()) << "nothing was deleted";
    }
    Boxleser ja({QMessageBox::Yes});
    control<QPushButton>(haupt(), "Command1(3)").click();
    ereignisse();
    EXPECT_FALSE(offen());
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(datenbank_.zeilen("SELECT count(*) FROM " + stick() + ";")[0][0], "0");
}
