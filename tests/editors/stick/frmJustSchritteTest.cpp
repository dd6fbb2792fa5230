// SPDX-License-Identifier: GPL-3.0-or-later
// The stick editors: what was done is taken back and made again, by keys and from the menu of the plane.
#include "editors/stick/frmJust.h"
#include "tests/editors/stick/Justiertest.h"
#include "tests/hilfen/Dateirechte.h"

#include <QLineEdit>
#include <QMenu>

#include <random>

namespace {

class FrmJustSchritte : public Justiertest, public ::testing::WithParamInterface<Zwilling> {
protected:
    FrmJustSchritte() : Justiertest(GetParam()) {
        schema();
        linien();
    }
    void editorOeffnen() {
        Justiertest::editorOeffnen();
        form().activateWindow();
        ereignisse();
    }
    void strg(Qt::Key taste, Qt::KeyboardModifiers zusatz = Qt::NoModifier) {
        form().activateWindow(); // a box may have been the last to have it
        ereignisse();
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &form(), taste,
                        Qt::ControlModifier | zusatz);
        ereignisse();
    }
    void zurueck() { strg(Qt::Key_Z); }
    void wieder() { strg(Qt::Key_Z, Qt::ShiftModifier); }

    void linieZiehen(double von, double nach) {
        klick(von, 33000);
        ziehen(nach, 33000);
        klick(nach, 33000);
    }
    /// Gives the field there an action of a type, from the panel.
    void aktionGeben(double x, double y, int art) {
        klick(x, y);
        klick(x, y, Qt::RightButton);
        feld<QRadioButton>(QString("Option1(%1)").arg(art)).click();
        klick(x, y);
    }
    /// All that the tables hold, with the places of the rows; a line a row.
    std::string tabellen() const {
        std::string text;
        for (const auto& abfrage :
             {"SELECT rowid, * FROM " + stick() + " ORDER BY rowid",
              "SELECT rowid, *, typeof(Aktion) FROM " + aktionstabelle() + " ORDER BY rowid",
              std::string("SELECT count(*) FROM tblStick UNION ALL "
                          "SELECT count(*) FROM tblStickR")})
            for (const auto& zeile : datenbank_.zeilen(abfrage)) {
                for (const auto& wert : zeile)
                    text += wert + ' ';
                text += '\n';
            }
        return text;
    }
    /// The same without the mask that is stored with the lines.
    std::string tabellenOhneMaske() const {
        auto text = tabellen();
        const auto anfang = text.find("\n20 S 20 ");
        return text.erase(anfang, text.find('\n', anfang + 1) - anfang);
    }
    /// Takes the last step back and makes it again: both leave the tables as they were.
    void erwarteHinUndZurueck(const std::string& vorher) {
        const auto nachher = tabellen();
        EXPECT_NE(nachher, vorher);
        zurueck();
        EXPECT_EQ(tabellen(), vorher);
        wieder();
        EXPECT_EQ(tabellen(), nachher);
        zurueck();
        EXPECT_EQ(tabellen(), vorher);
    }

    /// The menu that is open, by the words of its two lines; "-" before one that does nothing.
    QMenu* menue() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    QStringList menuezeilen() {
        QStringList zeilen;
        for (const auto* tat : menue() ? menue()->actions() : QList<QAction*>())
            zeilen.push_back((tat->isEnabled() ? "" : "- ") + tat->text().section('\t', 0, 0));
        return zeilen;
    }
    void menueOeffnen() { klick(33000, 33000, Qt::RightButton); }
    void menueSchliessen() {
        if (auto* offenes = menue())
            offenes->close();
        ereignisse();
    }
    void menueWaehlen(int zeile) {
        auto* tat = menue()->actions().at(zeile);
        menue()->close();
        tat->trigger();
        ereignisse();
    }
    QStringList zustandszeilen() { return feld<QLabel>("Zustandszeile").text().split('\n'); }
    static Gesehen konflikt() {
        return {
            "",
            "Linien oder Aktionen dieses Sticks wurden inzwischen an anderer Stelle geändert.\n"
            "Es wurde nichts rückgängig gemacht oder wiederhergestellt. Die bisherigen Schritte lassen sich "
            "nicht mehr zurücknehmen.",
            QMessageBox::NoIcon, QMessageBox::Ok};
    }
};

const QStringList NICHTS{"- Rückgängig", "- Wiederherstellen"};

} // namespace

INSTANTIATE_TEST_SUITE_P(Zwillinge, FrmJustSchritte, ::testing::Values(LINKER_ZWILLING, RECHTER_ZWILLING),
                         [](const auto& fall) { return std::string(fall.param.form); });

// --- what is a step ---

TEST_P(FrmJustSchritte, EineGezogeneLinieGehtMitIhrenAktionenZurueck) {
    aktion(0, "20000,0,0,0", "0,0,5,10");
    aktion(0, "20005,0,0,0", "4");
    editorOeffnen();
    const auto vorher = tabellen();
    linieZiehen(20000, 15000);
    EXPECT_EQ(linie("Links", 1), "15000");
    zurueck();
    EXPECT_EQ(tabellen(), vorher);
    EXPECT_TRUE(stehtX("LLinks(0)", 20000));
    EXPECT_EQ(zustandszeilen()[0], "Linie Links 20000 → 15000 rückgängig");
    wieder();
    EXPECT_EQ(linie("Links", 1), "15000");
    EXPECT_TRUE(stehtX("LLinks(0)", 15000));
    EXPECT_EQ(zustandszeilen()[0], "Linie Links 20000 → 15000 wiederherstellen");
    zurueck();
    EXPECT_EQ(tabellen(), vorher);
}

TEST_P(FrmJustSchritte, AktionenImUmkreisKehrenAnIhrenOrtZurueck) {
    aktion(0, "20009,0,0,0", "4");
    editorOeffnen();
    const auto vorher = tabellen();
    linieZiehen(20000, 15000);
    EXPECT_EQ(aktionen()[0][1], "15000");
    erwarteHinUndZurueck(vorher);
}

TEST_P(FrmJustSchritte, EineKreuzungIstEinSchritt) {
    editorOeffnen();
    const auto vorher = tabellen();
    klick(20000, 21000);
    ziehen(18000, 24000);
    klick(18000, 24000);
    menueOeffnen();
    EXPECT_EQ(menuezeilen()[0], "Linie Links 20000 → 18000 und Linie Oben 21000 → 24000 rückgängig");
    menueSchliessen();
    erwarteHinUndZurueck(vorher);
}

TEST_P(FrmJustSchritte, EineNeueUndEineGeloeschteLinieGehenZurueck) {
    aktion(0, "0,46000,0,0", "3");
    aktion(0, "0,46000,21000,0", "3");
    editorOeffnen();
    const auto ohne = tabellen();
    pfeil("RPfeil(0)");
    const auto mit = tabellen();
    pfeil("RPfeil(0)", Qt::RightButton);
    EXPECT_EQ(aktionen().size(), 0U) << "its Leerfelder have gone with it";
    erwarteHinUndZurueck(mit);
    EXPECT_TRUE(zuSehen("LRechts(1)"));
    zurueck();
    EXPECT_EQ(tabellen(), ohne);
    EXPECT_FALSE(zuSehen("LRechts(1)"));
    wieder();
    EXPECT_EQ(tabellen(), mit);
}

TEST_P(FrmJustSchritte, LeerfelderEinerLinieDieBleibtKehrenZurueck) {
    aktion(0, "0,46000,0,0", "3");
    aktion(0, "0,46000,21000,0", "4");
    editorOeffnen();
    pfeil("RPfeil(0)");
    const auto vorher = tabellen();
    Boxleser boxen;
    pfeil("RPfeil(0)", Qt::RightButton);
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(aktionen().size(), 1U);
    menueOeffnen();
    EXPECT_EQ(menuezeilen()[0], "Löschen der Leerfelder an Linie Rechts 46000 rückgängig");
    menueSchliessen();
    erwarteHinUndZurueck(vorher);
}

TEST_P(FrmJustSchritte, AktionenDerTafelGehenZurueck) {
    aktion(0, "0,45000,0,0", "2,0,66,0,0");
    editorOeffnen();
    const auto vorher = tabellen();
    aktionGeben(60000, 33000, 4);
    menueOeffnen();
    EXPECT_EQ(menuezeilen()[0], "Feld rechts: Tastatur: B, gehalten → Sperrfeld rückgängig");
    menueSchliessen();
    erwarteHinUndZurueck(vorher);
    aktionGeben(10000, 33000, 4);
    menueOeffnen();
    EXPECT_EQ(menuezeilen(),
              (QStringList{"Feld links: keine Aktion → Sperrfeld rückgängig", "- Wiederherstellen"}))
        << "what was taken back is forgotten";
    menueSchliessen();
    erwarteHinUndZurueck(vorher);
}

TEST_P(FrmJustSchritte, WasNichtsAendertIstKeinSchritt) {
    aktion(0, "0,45000,0,0", "4");
    editorOeffnen();
    aktionGeben(60000, 33000, 4);
    klick(20000, 33000);
    klick(20000, 33000);
    menueOeffnen();
    EXPECT_EQ(menuezeilen(), NICHTS);
    menueSchliessen();
    zurueck();
    EXPECT_EQ(zustandszeilen()[0], "Nichts rückgängig zu machen");
    wieder();
    EXPECT_EQ(zustandszeilen()[0], "Nichts wiederherzustellen");
}

TEST_P(FrmJustSchritte, JederTastendruckIstEinSchrittUndGehaltenNurEiner) {
    editorOeffnen();
    ebene().clearFocus();
    ebene().setFocus(Qt::TabFocusReason);
    const auto vorher = tabellen();
    const auto schieben = [&](bool gehalten) {
        QKeyEvent ereignis(QEvent::KeyPress, Qt::Key_Right, Qt::ShiftModifier, {}, gehalten);
        QApplication::sendEvent(&ebene(), &ereignis);
    };
    schieben(false);
    const auto einer = tabellen();
    schieben(false);
    for (int i = 0; i < 5; ++i)
        schieben(true);
    EXPECT_EQ(linie("Rechts", 1), std::to_string(45000 + 7 * 250));
    zurueck();
    EXPECT_EQ(tabellen(), einer);
    zurueck();
    EXPECT_EQ(tabellen(), vorher);
}

// --- "1 to 1" ---

TEST_P(FrmJustSchritte, EinsZuEinsGehtZurueckWieEsKam) {
    editorOeffnen();
    auto& maske = feld<QCheckBox>("Check2");
    maske.click();
    const auto ungespeichert = tabellen();
    linieZiehen(20000, 15000); // saves it, too
    EXPECT_EQ(linie("Links", 20), "1");
    zurueck();
    EXPECT_EQ(tabellen(), ungespeichert);
    EXPECT_TRUE(maske.isChecked()) << "as it was shown before the line was moved";
    menueOeffnen();
    EXPECT_EQ(menuezeilen(),
              (QStringList{"„1 to 1“ einschalten rückgängig", "Linie Links 20000 → 15000 wiederherstellen"}));
    menueSchliessen();
    zurueck();
    EXPECT_FALSE(maske.isChecked());
    wieder();
    EXPECT_TRUE(maske.isChecked());
    wieder();
    EXPECT_EQ(linie("Links", 20), "1");
    EXPECT_EQ(linie("Links", 1), "15000");
}

TEST_P(FrmJustSchritte, WasDerTestSpeichertGehtMitDemLetztenSchrittZurueck) {
    editorOeffnen();
    const auto vorher = tabellen();
    feld<QCheckBox>("Check2").click();
    feld<QPushButton>("Command1(1)").click();
    ereignisse();
    EXPECT_EQ(linie("Links", 20), "1");
    programm_->laufsteuerung().entladen();
    ereignisse();
    form().activateWindow();
    erwarteHinUndZurueck(vorher);
    EXPECT_FALSE(feld<QCheckBox>("Check2").isChecked());
}

// --- layers ---

TEST_P(FrmJustSchritte, EinSchrittAufEinerAnderenEbeneZeigtDiese) {
    editorOeffnen();
    feld<QRadioButton>("Uschalt(2)").click();
    const auto vorher = tabellen();
    linieZiehen(20200, 15000);
    feld<QCheckBox>("Check2").click();
    feld<QRadioButton>("Uschalt(0)").click();
    EXPECT_FALSE(feld<QCheckBox>("Check2").isChecked());
    menueOeffnen();
    EXPECT_EQ(menuezeilen()[0], "„1 to 1“ einschalten (Umschalt 2) rückgängig");
    menueWaehlen(0);
    EXPECT_TRUE(feld<QRadioButton>("Uschalt(2)").isChecked());
    EXPECT_FALSE(feld<QCheckBox>("Check2").isChecked());
    feld<QRadioButton>("Uschalt(1)").click();
    zurueck();
    EXPECT_EQ(tabellen(), vorher);
    EXPECT_TRUE(feld<QRadioButton>("Uschalt(2)").isChecked());
    EXPECT_TRUE(stehtX("LLinks(0)", 20200));
    EXPECT_EQ(zustandszeilen()[0], "Linie Links 20200 → 15000 (Umschalt 2) rückgängig");
}

// --- the menu ---

TEST_P(FrmJustSchritte, DasMenueKommtWoDieRechteTasteSonstNichtsTut) {
    editorOeffnen();
    menueOeffnen();
    EXPECT_EQ(menuezeilen(), NICHTS);
    menueSchliessen();
    linieZiehen(20000, 15000);
    menueOeffnen();
    menueWaehlen(0);
    EXPECT_EQ(linie("Links", 1), "20000");
    menueOeffnen();
    EXPECT_EQ(menuezeilen(), (QStringList{"- Rückgängig", "Linie Links 20000 → 15000 wiederherstellen"}));
    menueWaehlen(1);
    EXPECT_EQ(linie("Links", 1), "15000");
    klick(33000, 33000);
    menueOeffnen();
    EXPECT_EQ(menue(), nullptr) << "on a chosen field it opens the panel";
    EXPECT_TRUE(zuSehen("fraAktion"));
    klick(33000, 33000);
    pfeil("LPfeil(0)");
    pfeil("LPfeil(0)", Qt::RightButton);
    EXPECT_EQ(menue(), nullptr) << "an arrow removes a line";
}

TEST_P(FrmJustSchritte, AmAnschlagTutDieRechteTasteNichts) {
    editorOeffnen();
    klick(20000, 33000);
    ziehen(44900, 33000);
    klick(44900, 33000, Qt::RightButton);
    EXPECT_EQ(menue(), nullptr);
}

TEST_P(FrmJustSchritte, DasMenueKommtAuchPerTaste) {
    editorOeffnen();
    linieZiehen(20000, 15000);
    strg(Qt::Key_F10);
    EXPECT_EQ(menuezeilen(), (QStringList{"Linie Links 20000 → 15000 rückgängig", "- Wiederherstellen"}));
    menueSchliessen();
}

// --- in between ---

TEST_P(FrmJustSchritte, EineTasteSchliesstDasMenueDasEinenAnderenSchrittNennt) {
    editorOeffnen();
    const auto vorher = tabellen();
    linieZiehen(20000, 15000);
    linieZiehen(15000, 10000);
    menueOeffnen();
    ASSERT_NE(menue(), nullptr);
    zurueck();
    EXPECT_EQ(menue(), nullptr);
    EXPECT_EQ(linie("Links", 1), "15000");
    menueOeffnen();
    wieder();
    EXPECT_EQ(menue(), nullptr);
    EXPECT_EQ(linie("Links", 1), "10000");
    menueOeffnen();
    strg(Qt::Key_F10);
    EXPECT_EQ(menuezeilen(), (QStringList{"Linie Links 15000 → 10000 rückgängig", "- Wiederherstellen"}));
    menueSchliessen();
    EXPECT_EQ(menue(), nullptr); // one, not one above another
    zurueck();
    zurueck();
    EXPECT_EQ(tabellen(), vorher);
}

TEST_P(FrmJustSchritte, EineLinieInDerHandWirdNurZurueckgelegt) {
    editorOeffnen();
    linieZiehen(45000, 50000);
    const auto vorher = tabellen();
    klick(20000, 33000);
    ziehen(15000, 33000);
    menueOeffnen();
    EXPECT_EQ(menuezeilen(), (QStringList{"Aufgenommene Linie zurücklegen", "- Wiederherstellen"}));
    menueSchliessen();
    wieder();
    EXPECT_TRUE(stehtX("LLinks(0)", 15000)) << "still in the hand";
    zurueck();
    EXPECT_TRUE(stehtX("LLinks(0)", 20000));
    EXPECT_EQ(tabellen(), vorher);
    ziehen(12000, 33000);
    EXPECT_TRUE(stehtX("LLinks(0)", 20000)) << "it is in the hand no longer";
    zurueck();
    EXPECT_EQ(linie("Rechts", 1), "45000");
}

TEST_P(FrmJustSchritte, BeiOffenerTafelGehtNichtsZurueck) {
    editorOeffnen();
    linieZiehen(20000, 15000);
    const auto vorher = tabellen();
    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    feld<QRadioButton>("Option1(4)").click();
    feld<QRadioButton>("Option1(4)").setFocus();
    zurueck();
    EXPECT_EQ(tabellen(), vorher);
    EXPECT_TRUE(zuSehen("fraAktion"));
    EXPECT_EQ(zustandszeilen()[0], "Rückgängig geht erst, wenn die Tafel geschlossen ist");
    strg(Qt::Key_F10);
    EXPECT_EQ(menuezeilen(), (QStringList{"- Linie Links 20000 → 15000 rückgängig", "- Wiederherstellen"}));
    menueSchliessen();
    klick(33000, 33000);
    zurueck();
    zurueck();
    EXPECT_EQ(linie("Links", 1), "20000");
    EXPECT_TRUE(aktionen().empty());
}

TEST_P(FrmJustSchritte, EinTextfeldDerTafelBehaeltSeinStrgZ) {
    editorOeffnen();
    linieZiehen(20000, 15000);
    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    feld<QRadioButton>("Option1(0)").click();
    auto& schritt = feld<QLineEdit>("txtSchritt(0)");
    schritt.setFocus();
    schritt.selectAll();
    QTest::keyClicks(&schritt, "77");
    zurueck();
    EXPECT_NE(schritt.text(), "77");
    EXPECT_EQ(linie("Links", 1), "15000");
    EXPECT_NE(zustandszeilen()[0], "Rückgängig geht erst, wenn die Tafel geschlossen ist");
}

TEST_P(FrmJustSchritte, EinGewaehltesFeldIstNachherKeines) {
    editorOeffnen();
    linieZiehen(20000, 15000);
    klick(33000, 33000);
    EXPECT_TRUE(zuSehen("RechteckB"));
    zurueck();
    EXPECT_FALSE(zuSehen("RechteckB"));
    EXPECT_TRUE(feld<QWidget>("Frame2").isEnabled());
    linieZiehen(20000, 16000);
    EXPECT_EQ(linie("Links", 1), "16000") << "lines can be moved";
}

TEST_P(FrmJustSchritte, ImTestGehtNichtsPerTasteZurueckAberAusDemMenue) {
    editorOeffnen();
    linieZiehen(20000, 15000);
    feld<QPushButton>("Command1(1)").click();
    form().activateWindow();
    zurueck();
    strg(Qt::Key_F10);
    EXPECT_EQ(menue(), nullptr);
    EXPECT_EQ(linie("Links", 1), "15000");
    menueOeffnen();
    menueWaehlen(0);
    EXPECT_EQ(linie("Links", 1), "20000");
}

// --- others ---

TEST_P(FrmJustSchritte, WasAndereGeaendertHabenWirdGesagtUndNichtsGeschrieben) {
    editorOeffnen();
    linieZiehen(20000, 15000);
    aktionGeben(60000, 33000, 4);
    datenbank_.sql("UPDATE " + aktionstabelle() + " SET Aktion = '3'");
    const auto vorher = tabellen();
    Boxleser boxen;
    zurueck();
    EXPECT_EQ(boxen.gesehen(), (std::vector{konflikt()}));
    EXPECT_EQ(tabellen(), vorher);
    menueOeffnen();
    EXPECT_EQ(menuezeilen(), NICHTS);
    menueSchliessen();
}

TEST_P(FrmJustSchritte, EineVonAnderenVerschobeneLinieIstNachherZuSehen) {
    editorOeffnen();
    linieZiehen(20000, 15000);
    datenbank_.sql("UPDATE " + stick() + " SET Rechts = 50000 WHERE \"index\" = 2"); // one of another row
    Boxleser boxen;
    zurueck();
    EXPECT_EQ(boxen.gesehen(), (std::vector{konflikt()}));
    EXPECT_EQ(linie("Links", 1), "15000");
    EXPECT_TRUE(stehtX("LRechts(1)", 50000));
}

TEST_P(FrmJustSchritte, EinVonAnderenGeloeschtesSchemaBleibtGeloescht) {
    editorOeffnen();
    linieZiehen(20000, 15000);
    datenbank_.sql("DELETE FROM " + stick() + "; DELETE FROM " + aktionstabelle());
    const auto vorher = tabellen();
    Boxleser boxen;
    zurueck();
    ASSERT_GE(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0], konflikt());
    EXPECT_EQ(tabellen(), vorher);
}

TEST_P(FrmJustSchritte, AndereSchemataGehenDieSchritteNichtsAn) {
    editorOeffnen();
    aktionGeben(60000, 33000, 4);
    datenbank_.sql("INSERT INTO " + aktionstabelle() + " VALUES ('T',0,1,0,0,0,'3')");
    zurueck();
    EXPECT_EQ(datenbank_.zeilen("SELECT Schemaname FROM " + aktionstabelle()), (Tabellenbild{{"T"}}));
}

TEST_P(FrmJustSchritte, EinNeuerNameDesSchemasLaesstDieSchritteStehen) {
    aktion(0, "20000,0,0,0", "4");
    editorOeffnen();
    linieZiehen(20000, 15000);
    for (const auto& tabelle :
         {std::string("tblTastatur"), std::string("tblSteuerKreuz"), stick(), aktionstabelle()})
        datenbank_.sql("UPDATE " + tabelle + " SET Schemaname = 'N' WHERE Schemaname = 'S'");
    static_cast<frmJust&>(form()).schemaUmbenannt("N");
    zurueck();
    EXPECT_EQ(linie("Links", 1, "N"), "20000");
    EXPECT_EQ(aktionen()[0][1], "20000");
}

TEST_P(FrmJustSchritte, EineGesperrteDatenbankWirdGesagtUndDerSchrittBleibt) {
    editorOeffnen();
    const auto vorher = tabellen();
    linieZiehen(20000, 15000);
    {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN IMMEDIATE;");
        Boxleser boxen;
        zurueck();
        ASSERT_EQ(boxen.gesehen().size(), 1U);
        EXPECT_TRUE(boxen.gesehen()[0].text.contains("3218")) << boxen.gesehen()[0].text.toStdString();
        EXPECT_TRUE(stehtX("LLinks(0)", 15000));
    }
    zurueck();
    EXPECT_EQ(tabellen(), vorher);
}

TEST_P(FrmJustSchritte, EineDateiNurZumLesenWirdGesagtUndDerSchrittBleibt) {
    editorOeffnen();
    const auto vorher = tabellen();
    linieZiehen(20000, 15000);
    {
        const Rechte rechte(datenbank_, 0555, 0444);
        const AlsNiemand niemand;
        Boxleser boxen;
        zurueck();
        ASSERT_EQ(boxen.gesehen().size(), 1U);
        EXPECT_TRUE(boxen.gesehen()[0].text.contains("3027")) << boxen.gesehen()[0].text.toStdString();
    }
    zurueck();
    EXPECT_EQ(tabellen(), vorher);
}

TEST_P(FrmJustSchritte, NachDemOeffnenIstNichtsMehrZurueckzunehmen) {
    editorOeffnen();
    linieZiehen(20000, 15000);
    form().close();
    ereignisse();
    editorknopf();
    menueOeffnen();
    EXPECT_EQ(menuezeilen(), NICHTS);
    menueSchliessen();
}

// --- at random ---

TEST_P(FrmJustSchritte, DreihundertZufaelligeTatenGehenEinzelnZurueckUndWieder) {
    aktion(0, "0,45000,0,0", "2,0,66,0,0");
    aktion(1, "20100,0,21100,0", "3");
    editorOeffnen();
    Boxleser boxen;
    std::mt19937 zufall(1815);
    const auto los = [&](int unter) { return static_cast<int>(zufall() % static_cast<unsigned>(unter)); };
    const auto ort = [&] { return 1000.0 + los(63000); };
    const std::array<const char*, 4> pfeile{"LPfeil(0)", "RPfeil(0)", "OPfeil(0)", "UPfeil(0)"};
    const std::vector<std::function<void()>> taten{
        [&] { pfeil(pfeile[static_cast<std::size_t>(los(4))]); },
        [&] { pfeil(pfeile[static_cast<std::size_t>(los(4))], Qt::RightButton); },
        [&] { aktionGeben(ort(), ort(), los(6)); },
        [&] { feld<QCheckBox>("Check2").click(); },
        [&] { feld<QRadioButton>(QString("Uschalt(%1)").arg(los(3))).click(); },
        [&] {
            const auto x = std::stod(linie(los(2) ? "Links" : "Rechts", 1));
            klick(x, 500);
            ziehen(x + los(4000) - 2000, 500);
            klick(x + los(4000) - 2000, 500); // meets it, or lays it back
        }};
    // The boxes are those of lines that can't come or go.
    std::vector<std::pair<std::string, std::array<bool, 3>>> staende{{tabellen(), {}}};
    auto ohneMaske = tabellenOhneMaske();
    while (staende.size() <= 300) {
        auto masken = staende.back().second;
        taten[static_cast<std::size_t>(los(static_cast<int>(taten.size())))]();
        menueSchliessen(); // where a line was in the hand, the right button opens it
        if (zuSehen("RechteckB"))
            klick(33000, 33000);
        for (std::size_t e = 0; e < 3; ++e)
            if (feld<QRadioButton>(QString("Uschalt(%1)").arg(e)).isChecked())
                masken[e] = feld<QCheckBox>("Check2").isChecked();
        std::pair stand{tabellen(), masken};
        const auto zuvor = std::exchange(ohneMaske, tabellenOhneMaske());
        if (zuvor == ohneMaske && stand.second == staende.back().second)
            staende.back() =
                std::move(stand); // a line that stays saves what was ticked before: no act by itself
        else if (stand != staende.back())
            staende.push_back(std::move(stand));
    }
    for (const auto* ebene : {"Uschalt(0)", "Uschalt(1)"})
        feld<QRadioButton>(ebene).click(); // lays back what may be in the hand
    const auto erwarte = [&](std::size_t i) {
        ASSERT_EQ(tabellen(), staende[i].first) << i << " " << zustandszeilen()[0].toStdString();
        for (std::size_t e = 0; e < 3; ++e) {
            const bool gezeigt = feld<QRadioButton>(QString("Uschalt(%1)").arg(e)).isChecked();
            ASSERT_TRUE(!gezeigt || feld<QCheckBox>("Check2").isChecked() == staende[i].second[e]) << i;
        }
    };
    for (std::size_t i = staende.size() - 1; i-- > 0 && !HasFailure();) {
        zurueck();
        erwarte(i);
    }
    menueOeffnen();
    EXPECT_EQ(menuezeilen()[0].toStdString(), "- Rückgängig");
    menueSchliessen();
    for (std::size_t i = 1; i < staende.size() && !HasFailure(); ++i) {
        wieder();
        erwarte(i);
    }
    menueOeffnen();
    EXPECT_EQ(menuezeilen()[1].toStdString(), "- Wiederherstellen");
    menueSchliessen();
}
