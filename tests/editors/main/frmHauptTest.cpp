// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QtTest/QTest>

#include <fstream>

namespace fs = std::filesystem;

namespace {

const Gesehen KEIN_SCHEMA{"Kein Schema!", "Es muß ein Schema erstellt werden", QMessageBox::Information,
                          QMessageBox::Ok};

QStringList eintraege(const QComboBox& liste) {
    QStringList namen;
    for (int i = 0; i < liste.count(); ++i)
        namen << liste.itemText(i);
    return namen;
}

class FrmHaupt : public Formtest {
protected:
    void schema(const std::string& name, const std::string& pfad = "") {
        Schemabau schema(datenbank_, name);
        if (!pfad.empty())
            schema.spalte("Programmpfad", pfad);
        schema.taste(2, "1,65,0-0-0").anlegen();
    }
    QPushButton& knopf(int index) {
        return control<QPushButton>(haupt(), QString("Command1(%1)").arg(index));
    }
    QComboBox& combo() { return control<QComboBox>(haupt(), "Combo1"); }
    QString pfadtext() { return control<QLineEdit>(haupt(), "Text1(0)").text(); }
};

} // namespace

TEST_F(FrmHaupt, ListetDieSchemataInGespeicherterReihenfolgeAufUndWaehltDasErste) {
    schema("Zebra", "/spiele/zebra");
    schema("Affe");
    starten();

    EXPECT_EQ(eintraege(combo()), (QStringList{"Zebra", "Affe"}));
    EXPECT_EQ(combo().currentText(), "Zebra");
    EXPECT_EQ(pfadtext(), "/spiele/zebra");
    EXPECT_EQ(haupt().height(), 350);
}

TEST_F(FrmHaupt, FuenfTabulatorenNachDemStartStehtManAufSchemaStarten) {
    schema("Zebra");
    starten();
    haupt().activateWindow();
    ereignisse();
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &knopf(5)); // tests/wayland/drinnen goes this way
}

TEST_F(FrmHaupt, ListetFuenfhundertSchemataAuf) {
    std::string sql = "BEGIN;";
    for (int i = 0; i < 500; ++i)
        sql += "INSERT INTO tblTastatur (Schemaname, Programmpfad) VALUES ('Schema " + std::to_string(i) +
               "', '/spiele/" + std::to_string(i) + "');";
    datenbank_.sql(sql + "COMMIT;");
    starten();

    EXPECT_EQ(combo().count(), 500);
    EXPECT_EQ(combo().itemText(499), "Schema 499");
    combo().setCurrentIndex(499);
    emit combo().activated(499);
    EXPECT_EQ(pfadtext(), "/spiele/499");
}

TEST_F(FrmHaupt, ZeigtLangeTexteVonIhremAnfangAn) {
    schema(std::string(200, 'a'), "/" + std::string(200, 'b'));
    starten();
    EXPECT_EQ(combo().lineEdit()->cursorPosition(), 0);
    EXPECT_EQ(control<QLineEdit>(haupt(), "Text1(0)").cursorPosition(), 0);
}

TEST_F(FrmHaupt, BittetEinmalUmEchtzeitprioritaet) {
    starten();
    EXPECT_EQ(prozess_.klassen, std::vector<std::uint32_t>{256});
}

TEST_F(FrmHaupt, BittetNochmalsUmSieWennEinLaufBegonnenHat) {
    schema("S");
    starten();
    knopf(5).click();
    EXPECT_EQ(prozess_.klassen, (std::vector<std::uint32_t>{256, 256}));
    knopf(5).click();
    EXPECT_EQ(prozess_.klassen.size(), 2U) << "the end of a run asks for nothing";
}

TEST_F(FrmHaupt, ZeigtDieGegebenenTexte) {
    schema("S");
    starten();

    EXPECT_EQ(haupt().windowTitle(), "Game-Pad-Konfic");
    const std::map<QString, QString> knoepfe{
        {"Command1(2)", "Schema neu"},      {"Command1(3)", "Schema löschen"},
        {"Command1(5)", "Schema starten"},  {"Command1(0)", "Button bearbeiten"},
        {"Command1(1)", "Bearbeiten"},      {"Command1(6)", "Bearbeiten"},
        {"Command1(4)", "Datenbank"},       {"Command2", "Hilfe"},
        {"Command3", "Achsen kalibrieren"}, {"Command4", "Schubregler"}};
    for (const auto& [name, text] : knoepfe)
        EXPECT_EQ(control<QPushButton>(haupt(), name).text(), text) << name.toStdString();
    const std::map<QString, QString> texte{
        {"Label1(0)", "Schema wählen:"},
        {"Label1(1)", "Programmpfad:"},
        {"Label2(0)", "Linken Stick"},
        {"Label2(1)", "Rechten Stick"},
        {"Label3", "Die Hilfe ist mit Java geschrieben. Bitte lassen Sie diese in Ihrem Browser zu!"}};
    for (const auto& [name, text] : texte)
        EXPECT_EQ(control<QLabel>(haupt(), name).text(), text) << name.toStdString();
}

TEST_F(FrmHaupt, JederKnopfLaesstSichAnklickenWoEsEinSchemaGibt) {
    schema("S");
    starten();

    std::map<QString, bool> frei;
    for (auto* einer : haupt().findChildren<QPushButton*>())
        frei[einer->objectName()] = einer->isEnabled();
    EXPECT_EQ(frei, (std::map<QString, bool>{{"Command1(0)", true},
                                             {"Command1(1)", true},
                                             {"Command1(2)", true},
                                             {"Command1(3)", true},
                                             {"Command1(4)", true},
                                             {"Command1(5)", true},
                                             {"Command1(6)", true},
                                             {"Command2", true},
                                             {"Command3", true},
                                             {"Command4", true},
                                             {"btnRueckgaengig", false}}))
        << "there is nothing to take back";
}

TEST_F(FrmHaupt, IstOhneSchemaKurzUndWeistJedenBefehlAb) {
    starten();
    EXPECT_EQ(combo().count(), 0);
    EXPECT_EQ(haupt().height(), 180);
    EXPECT_FALSE(control<QLineEdit>(haupt(), "Text1(0)").isVisible());

    Boxleser boxen;
    knopf(5).click();
    knopf(4).click();
    EXPECT_EQ(boxen.gesehen(), (std::vector<Gesehen>{KEIN_SCHEMA, KEIN_SCHEMA}));
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_EQ(knopf(5).text(), "Schema starten");
}

TEST_F(FrmHaupt, SagtEinmalDassDieDatenbankFehltUndLegtKeineAn) {
    fs::remove(datenbank_.pfad());
    Boxleser boxen;
    starten();

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].titel.toStdString(), datenbank_.pfad());
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3024")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_TRUE(boxen.gesehen()[0].text.contains(QString::fromStdString(datenbank_.pfad())));
    EXPECT_EQ(combo().count(), 0);
    EXPECT_FALSE(fs::exists(datenbank_.pfad()));
}

TEST_F(FrmHaupt, SagtEinmalDassDieDateiKeineDatenbankIst) {
    std::ofstream(datenbank_.pfad(), std::ios::trunc) << "Das ist ein Brief und keine Datenbank. Gruß!";
    Boxleser boxen;
    starten();

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3343")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(combo().count(), 0);
}

TEST_F(FrmHaupt, SagtEinmalDassDieDatenbankFremdIst) {
    datenbank_.sql("DROP TABLE tblTastatur;");
    Boxleser boxen;
    starten();

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3078")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(combo().count(), 0);
}

TEST_F(FrmHaupt, SagtEinmalDassDieDatenbankBeschaedigtIst) {
    schema("S");
    fs::resize_file(datenbank_.pfad(), 8192); // the first pages, of many
    Boxleser boxen;
    starten();

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3049")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(combo().count(), 0);
    EXPECT_EQ(haupt().height(), 180);
}

TEST_F(FrmHaupt, SagtEinmalDassDieDatenbankGesperrtIst) {
    schema("S");
    RoheVerbindung andere(datenbank_.pfad());
    andere.sql("BEGIN EXCLUSIVE;");
    Boxleser boxen;
    starten();

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3218")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(combo().count(), 0);
}

TEST_F(FrmHaupt, EinGewaehlterEintragZeigtSeinenPfadUndLaeuft) {
    schema("Eins", "/eins");
    schema("Zwei", " ");
    starten();
    combo().setCurrentIndex(1);
    emit combo().activated(1);

    EXPECT_EQ(pfadtext(), " ");
    knopf(5).click();
    tastenDruecken(4);
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+65"});
}

TEST_F(FrmHaupt, EinNameDerNichtInDerListeStehtLaesstDenPfad) {
    schema("Eins", "/eins");
    starten();
    combo().addItem("Neu");
    combo().setCurrentIndex(1);
    emit combo().activated(1);
    EXPECT_EQ(pfadtext(), "/eins");
}

TEST_F(FrmHaupt, EinGetippterNameWirdWederErgaenztNochEingefuegt) {
    schema("Rennspiel");
    starten();
    auto& feld = *combo().lineEdit();
    feld.selectAll();
    QTest::keyClicks(&feld, "Renn");
    QTest::keyClick(&feld, Qt::Key_Return);
    ereignisse();

    EXPECT_EQ(combo().currentText(), "Renn");
    EXPECT_EQ(eintraege(combo()), QStringList{"Rennspiel"});
}

TEST_F(FrmHaupt, EinGetippterNameWaehltKeinenEintragAuchWennErEinerIstOderSoAussieht) {
    schema("Rennspiel", "/eins");
    schema("Zweites", "/zwei");
    starten();
    auto& feld = *combo().lineEdit();
    for (const QString name : {"Zweites", "zweites", "ZWEITES", "rennspiel", " Zweites"}) {
        feld.selectAll();
        QTest::keyClicks(&feld, name);
        QTest::keyClick(&feld, Qt::Key_Return);
        QTest::keyClick(&feld, Qt::Key_Tab);
        ereignisse();
        EXPECT_EQ(combo().currentText(), name);
        EXPECT_EQ(pfadtext(), "/eins") << name.toStdString();
    }
    EXPECT_EQ(eintraege(combo()), (QStringList{"Rennspiel", "Zweites"}));

    combo().setFocus();
    QTest::keyClick(&combo(), Qt::Key_Down); // as a hand would choose
    EXPECT_EQ(combo().currentText(), "Zweites");
    EXPECT_EQ(pfadtext(), "/zwei");
}

TEST_F(FrmHaupt, EinGetippterNameIstSogleichDasAktuelleSchemaUndRuehrtKeineAchsenAn) {
    schema("Eins");
    Laufzustand zustand(pad_, (datenbank_.ordner() / "Gamepad.xml").string());
    Laufsteuerung laeufe(zustand, pad_, eingabe_, uhr_, marke_);
    Tatfolge taten;
    frmHaupt form(zustand.global, zustand.achsendatei, laeufe, prozess_, uhr_, taten);
    form.laden();
    EXPECT_EQ(zustand.global.SchemaName, "Eins");
    const auto achsen = dateiLesen(datenbank_.ordner() / "Gamepad.xml");
    QTest::keyClicks(control<QComboBox>(form, "Combo1").lineEdit(), "x");
    EXPECT_EQ(zustand.global.SchemaName, "xEins"); // the cursor stands at the beginning
    EXPECT_EQ(zustand.global.Schemaauswahl, "xEins");
    EXPECT_EQ(dateiLesen(datenbank_.ordner() / "Gamepad.xml"), achsen);
}

TEST_F(FrmHaupt, GestartetWirdDerGetippteName) {
    schema("Rennspiel");
    starten();
    combo().setEditText("Renn");
    Boxleser boxen;
    knopf(5).click();

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3021")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(knopf(5).text(), "Schema starten");
    EXPECT_EQ(laufFenster(), nullptr);
}

TEST_F(FrmHaupt, UngewoehnlicheNamenWerdenAufgelistetGewaehltUndGespielt) {
    const std::string lang(255, 'x');
    const std::vector<std::string> namen{"Ä ö ß", "漢字", lang,   "Leer zeichen ",
                                         " ",     "../x", "a\"b", "%s %1"};
    for (const auto& name : namen)
        schema(name, "/" + name);
    starten();

    for (int i = 0; i < static_cast<int>(namen.size()); ++i) {
        combo().setCurrentIndex(i);
        emit combo().activated(i);
        EXPECT_EQ(combo().currentText().toStdString(), namen[static_cast<std::size_t>(i)]);
        knopf(5).click();
        tastenDruecken(4);
        vergehen(5);
        tastenDruecken(0);
        vergehen(5);
        knopf(5).click();
        EXPECT_EQ(eingabe_.texteAbholen(), (std::vector<std::string>{"+65", "-65"}))
            << namen[static_cast<std::size_t>(i)];
    }
}

TEST_F(FrmHaupt, EinNameMitApostrophLaesstSichNichtStarten) {
    schema("O'Brien");
    starten();
    EXPECT_EQ(combo().currentText(), "O'Brien");
    Boxleser boxen;
    knopf(5).click();

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3075")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(knopf(5).text(), "Schema starten");
}

TEST_F(FrmHaupt, StartenVerbirgtDieFormUndStoppenBringtSieZurueck) {
    schema("S");
    starten();
    knopf(5).click();
    ASSERT_NE(laufFenster(), nullptr);
    EXPECT_FALSE(haupt().isVisible());
    EXPECT_EQ(knopf(5).text(), "Schema stoppen");

    knopf(5).click();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(knopf(5).text(), "Schema starten");
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_F(FrmHaupt, DasSchliessenDesLaufFenstersBeendetDenLauf) {
    schema("S");
    starten();
    knopf(5).click();
    laufFenster()->close();
    ereignisse();

    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(knopf(5).text(), "Schema starten");
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_F(FrmHaupt, DasSchliessenDerFormBeendetAuchDenLauf) {
    schema("S");
    starten();
    knopf(5).click();
    haupt().close();

    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_F(FrmHaupt, DasSchliessenDerFormBeendetDasProgramm) {
    schema("S");
    starten();
    knopf(5).click();
    bool geendet = true;
    QTimer::singleShot(0, [this] { haupt().close(); });
    QTimer notaus;
    notaus.setSingleShot(true);
    QObject::connect(&notaus, &QTimer::timeout, [&geendet] {
        geendet = false;
        QApplication::quit();
    });
    notaus.start(5000);
    QApplication::exec();
    EXPECT_TRUE(geendet);
}

TEST_F(FrmHaupt, EinLaufDerHinterEinemOffenenEditorEndetLaesstDieFormVerborgen) {
    schema("S");
    starten();
    knopf(5).click();
    emit programm_->laufsteuerung().hauptformZurueck(false);
    EXPECT_FALSE(haupt().isVisible());
    EXPECT_EQ(knopf(5).text(), "Schema starten");
    emit programm_->laufsteuerung().hauptformZurueck(true);
    EXPECT_TRUE(haupt().isVisible());
}

TEST_F(FrmHaupt, EinZweiterLaufGehtWeiterWoDerErsteAufhoerte) {
    schema("S");
    starten();
    knopf(5).click();
    tastenDruecken(4);
    vergehen(5);
    knopf(5).click();
    tastenDruecken(0);
    vergehen(1000);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+65"})
        << "a held key is not released by a stop";

    knopf(5).click();
    tastenDruecken(4);
    vergehen(5);
    tastenDruecken(0);
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), (std::vector<std::string>{"+65", "-65"}));
}

TEST_F(FrmHaupt, HilfeOeffnetDieSeiteNebenDerDatenbank) {
    starten();
    control<QPushButton>(haupt(), "Command2").click(); // hidden in the short form, but there
    EXPECT_EQ(prozess_.geoeffnet,
              std::vector<std::string>{datenbank_.ordner().string() + "/Beschreibung\\Startfenster.htm"});
}

TEST_F(FrmHaupt, EineHilfeDieSichNichtOeffnenLaesstWirdGesagt) {
    starten();
    prozess_.oeffnet = false;
    Boxleser boxen;
    control<QPushButton>(haupt(), "Command2").click();
    const auto seite = datenbank_.ordner().string() + "/Beschreibung\\Startfenster.htm";
    EXPECT_EQ(
        boxen.gesehen(),
        (std::vector<Gesehen>{{"Game-Pad-Konfic",
                               QString::fromStdString("Die Hilfe konnte nicht geöffnet werden:\n" + seite),
                               QMessageBox::Warning, QMessageBox::Ok}}));
}

TEST_F(FrmHaupt, LeistenZeigenIhreWerte) {
    schema("S");
    starten();
    for (const int i : {0, 1}) {
        auto& waagrecht = control<QScrollBar>(haupt(), QString("HScroll1(%1)").arg(i));
        auto& senkrecht = control<QScrollBar>(haupt(), QString("VScroll1(%1)").arg(i));
        EXPECT_EQ(control<QLineEdit>(haupt(), QString("Text2(%1)").arg(i)).text(), "Sensible: 0");
        EXPECT_EQ(control<QLineEdit>(haupt(), QString("Text3(%1)").arg(i)).text(), "0");
        waagrecht.setValue(2001);
        senkrecht.setValue(7);
        EXPECT_EQ(control<QLineEdit>(haupt(), QString("Text2(%1)").arg(i)).text(), "Sensible: 2000");
        EXPECT_EQ(control<QLineEdit>(haupt(), QString("Text3(%1)").arg(i)).text(), "7");
        EXPECT_EQ(waagrecht.minimum(), 0);
        EXPECT_EQ(senkrecht.maximum(), 2000);
    }
}

TEST_F(FrmHaupt, EinFehlerImTaktStopptDenLaufUndWirdDannEinmalGesagt) {
    schema("S");
    datenbank_.sql("UPDATE tblTastatur SET btn1 = '1,A,0-0-0';");
    starten();
    knopf(5).click();
    Boxleser boxen;
    tastenDruecken(1);
    uhr_.vorUm(std::chrono::milliseconds{5});
    EXPECT_TRUE(boxen.gesehen().empty()) << "no box opens inside a tick";
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(knopf(5).text(), "Schema starten");

    vergehen(1000);
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].titel, "Schema gestoppt");
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("13")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_EQ(uhr_.laufende(), 0U);

    tastenDruecken(0);
    knopf(5).click();
    EXPECT_NE(laufFenster(), nullptr) << "the next run starts as ever";
}

TEST_F(FrmHaupt, WaechstMitDerSchriftSodassNichtsBeschnittenIst) {
    schema("S");
    for (const int punkt : {9, 12, 16, 24}) {
        const Schriftgrad grad(punkt);
        starten();
        ereignisse();
        EXPECT_EQ(beschnittene(haupt()), std::vector<std::string>{}) << punkt << " points";
    }
}
