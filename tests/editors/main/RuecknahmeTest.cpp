// SPDX-License-Identifier: GPL-3.0-or-later
// What main form and overview offer to take back: a Schema that was deleted, and acts on layers.
#include "store/files/Streubilddateien.h"
#include "store/schema/Schemabeiwerk.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Gamepadxml.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

namespace fs = std::filesystem;

namespace {

// Indices of Command1 of the main form, and of the overview.
constexpr int SCHEMA_NEU = 2;
constexpr int SCHEMA_LOESCHEN = 3;
constexpr int KOPIEREN = 0;
constexpr int WECHSEL = 1;
constexpr int LOESCHEN = 2;
constexpr int OK = 4;

const std::array<std::string, ACHSEN> ACHSEN_GEDREHT{"ry", "ly", "rx", "lx", "Z1", "Z2"};

class Ruecknahme : public Formtest {
protected:
    void anlegen(const Testdatenbank& wo, const std::string& name, int linie) {
        Schemabau schema(wo, name);
        schema.taste(0, "1,65,0-0-0");
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts}) {
            const Schemabau::Vier aussen{linie, 45000, 21000, 46000};
            schema.ebenenlinien(seite, 1, {aussen, aussen, aussen});
            schema.leereLinienAb(seite, 2);
            schema.feld(seite, {}, "3," + name, 0);
        }
        schema.anlegen();
    }
    void anlegen(const std::string& name, int linie) { anlegen(datenbank_, name, linie); }
    /// What lies beside the database for a Schema.
    void beiwerk(const std::string& name) {
        fs::create_directory(datenbank_.ordner() / "Bilder");
        for (const auto* ende : {"0L.bmp", "2R.bmp"})
            dateiSchreiben(datenbank_.ordner() / "Bilder" / (name + ende), "Bild " + name);
        dateiSchreiben(datenbank_.ordner() / "Gamepad.xml", gamepadXmlMit(name, ACHSEN_GEDREHT, "4"));
        Streudaten streu;
        streu.achsen[0].ruhe[7] = 5;
        ASSERT_TRUE(Streubilddateien(streubildordner(datenbank_.pfad()))
                        .speichern(name, Stickseite::Links, 0, streu));
    }
    bool hatBeiwerk(const std::string& name) const {
        const auto achsen = achsenzeileLesen((datenbank_.ordner() / "Gamepad.xml").string(), name);
        return fs::exists(datenbank_.ordner() / "Bilder" / (name + "0L.bmp")) &&
               fs::exists(datenbank_.ordner() / "Bilder" / (name + "2R.bmp")) && achsen &&
               achsen->at("Schubregler") == "4" &&
               fs::exists(
                   Streubilddateien(streubildordner(datenbank_.pfad())).pfad(name, Stickseite::Links, 0));
    }

    QPushButton& hauptknopf(int index) {
        return control<QPushButton>(haupt(), QString("Command1(%1)").arg(index));
    }
    void loeschen(QMessageBox::StandardButton antwort = QMessageBox::Yes) {
        Boxleser boxen({antwort});
        hauptknopf(SCHEMA_LOESCHEN).click();
        ereignisse();
    }
    QStringList liste() {
        QStringList namen;
        auto& combo = control<QComboBox>(haupt(), "Combo1");
        for (int i = 0; i < combo.count(); ++i)
            namen << combo.itemText(i);
        return namen;
    }
    QString gewaehltes() { return control<QComboBox>(haupt(), "Combo1").currentText(); }
    static QPushButton& angebot(QWidget& form) { return control<QPushButton>(form, "btnRueckgaengig"); }
    /// What both forms offer; "" for nothing.
    QString angeboten() {
        const auto name = angebot(haupt()).isVisible() ? angebot(haupt()).accessibleName() : QString();
        if (auto* form = uebersicht()) {
            EXPECT_EQ(angebot(*form).isVisible() ? angebot(*form).accessibleName() : QString(), name);
        }
        return name;
    }
    std::vector<Gesehen> zurueck(QWidget& form) {
        Boxleser boxen;
        angebot(form).click();
        ereignisse();
        return boxen.gesehen();
    }

    void uebersichtOeffnen() {
        haupt().activateWindow();
        ereignisse();
        QTest::keyClick(&haupt(), Qt::Key_D, Qt::ControlModifier);
        ereignisse();
    }
    static QWidget* uebersicht() {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == "Uebersicht" && fenster->isVisible())
                return fenster;
        return nullptr;
    }
    template <class Control> Control& feld(const char* name, int index) {
        return control<Control>(*uebersicht(), QString("%1(%2)").arg(name).arg(index));
    }
    void waehlen(int seite, const QString& name) { feld<QComboBox>("Combo1", seite).setEditText(name); }
    /// An act of the overview, on the layer `quelle` and, but for a deletion, on `ziel`.
    void ebenentat(int art, int quelle, int ziel = -1) {
        const std::vector<QMessageBox::StandardButton> ja{QMessageBox::Yes};
        Boxleser boxen(art == LOESCHEN ? ja : std::vector<QMessageBox::StandardButton>());
        feld<QRadioButton>("Option1", quelle).setChecked(true);
        feld<QPushButton>("Command1", art).click();
        if (ziel >= 0) {
            feld<QCheckBox>("Check1", ziel).click();
            feld<QPushButton>("Command1", OK).click();
        }
        ereignisse();
    }
};

} // namespace

TEST_F(Ruecknahme, NichtsGeloeschtNichtsAngeboten) {
    anlegen("S", 1000);
    starten();
    EXPECT_EQ(angeboten(), "");
    loeschen(QMessageBox::No);
    EXPECT_EQ(angeboten(), "");
}

TEST_F(Ruecknahme, EinGeloeschtesSchemaKommtMitAllemZurueckUndIstGewaehlt) {
    anlegen("S", 1000);
    anlegen("T", 2000);
    beiwerk("S");
    starten();
    const auto hoehe = haupt().height();
    const auto vorher = datenbank_.inhalt();
    loeschen();
    EXPECT_EQ(liste(), QStringList{"T"});
    EXPECT_FALSE(hatBeiwerk("S"));
    EXPECT_EQ(angeboten(), "Löschen von „S“ rückgängig");
    EXPECT_EQ(angebot(haupt()).text(), "Löschen von „S“ rückgängig");
    EXPECT_EQ(angebot(haupt()).toolTip(), "Löschen von „S“ rückgängig machen");
    EXPECT_EQ(haupt().height(), hoehe);
    EXPECT_EQ(zurueck(haupt()), std::vector<Gesehen>{});
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_TRUE(hatBeiwerk("S"));
    EXPECT_EQ(liste(), (QStringList{"S", "T"}));
    EXPECT_EQ(gewaehltes(), "S");
    EXPECT_EQ(angeboten(), "");
    loeschen();
    EXPECT_EQ(liste(), QStringList{"T"}) << "it is a Schema as any other";
}

TEST_F(Ruecknahme, DasLetzteUndDasVorletzteKommenEinesNachDemAnderen) {
    anlegen("S", 1000);
    anlegen("T", 2000);
    starten();
    const auto vorher = datenbank_.inhalt();
    loeschen();
    loeschen();
    EXPECT_EQ(liste(), QStringList{});
    EXPECT_EQ(angeboten(), "Löschen von „T“ rückgängig");
    zurueck(haupt());
    EXPECT_EQ(liste(), QStringList{"T"});
    EXPECT_EQ(angeboten(), "Löschen von „S“ rückgängig");
    zurueck(haupt());
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_EQ(angeboten(), "");
}

TEST_F(Ruecknahme, WoInzwischenEtwasAnderesStehtWirdEsGesagtUndNichtMehrAngeboten) {
    anlegen("S", 1000);
    anlegen("T", 2000);
    starten();
    loeschen();
    anlegen("S", 3000);
    const auto vorher = datenbank_.inhalt();
    const auto boxen = zurueck(haupt());
    ASSERT_EQ(boxen.size(), 1U);
    EXPECT_EQ(boxen[0].text, "Löschen von „S“ lässt sich nicht mehr rückgängig machen. Seitdem wurde an "
                             "denselben Daten etwas anderes geändert.");
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_EQ(angeboten(), "");
}

TEST_F(Ruecknahme, EineGesperrteDatenbankWirdGesagtUndEsBleibtAngeboten) {
    anlegen("S", 1000);
    starten();
    loeschen();
    {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN EXCLUSIVE");
        EXPECT_EQ(zurueck(haupt()).size(), 1U);
        andere.sql("COMMIT");
    }
    EXPECT_EQ(angeboten(), "Löschen von „S“ rückgängig");
    EXPECT_EQ(zurueck(haupt()).size(), 0U);
    EXPECT_EQ(gewaehltes(), "S");
}

TEST_F(Ruecknahme, WaehrendEinNameGetipptWirdBleibtErStehen) {
    anlegen("S", 1000);
    anlegen("T", 2000);
    starten();
    loeschen();
    hauptknopf(SCHEMA_NEU).click();
    control<QComboBox>(haupt(), "Combo1").setEditText("S");
    EXPECT_EQ(control<QLabel>(haupt(), "lblNamenshinweis").text(), "");
    zurueck(haupt());
    EXPECT_EQ(gewaehltes(), "S");
    EXPECT_EQ(control<QLabel>(haupt(), "lblNamenshinweis").text(), "Ein Schema dieses Namens gibt es schon.");
    haupt().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&haupt()));
    QTest::keyClick(&haupt(), Qt::Key_Escape);
    EXPECT_EQ(liste(), (QStringList{"T", "S"}));
}

TEST_F(Ruecknahme, EinLangerNameWeichtUndNichtDasWort) {
    const std::string name(100, 'W');
    anlegen(name, 1000);
    starten();
    const auto breite = haupt().width();
    loeschen();
    ereignisse();
    auto& knopf = angebot(haupt());
    EXPECT_TRUE(knopf.text().endsWith(" rückgängig")) << knopf.text().toStdString();
    EXPECT_LT(knopf.text().size(), 100);
    EXPECT_EQ(haupt().width(), breite);
    EXPECT_EQ(beschnittene(haupt()), std::vector<std::string>{});
    EXPECT_TRUE(knopf.accessibleName().contains(QString::fromStdString(name)));
}

TEST_F(Ruecknahme, AuchDieUebersichtBietetEsAnUndHatDenNamenWieder) {
    anlegen("S", 1000);
    anlegen("T", 2000);
    starten();
    loeschen();
    uebersichtOeffnen();
    EXPECT_EQ(angeboten(), "Löschen von „S“ rückgängig");
    EXPECT_EQ(zurueck(*uebersicht()), std::vector<Gesehen>{});
    EXPECT_EQ(gewaehltes(), "S");
    for (const int seite : {0, 1})
        EXPECT_GE(feld<QComboBox>("Combo1", seite).findText("S"), 0);
}

TEST_F(Ruecknahme, LoeschenKopierenUndWechselEinerEbeneGehenZurueck) {
    anlegen("S", 1000);
    anlegen("T", 2000);
    starten();
    uebersichtOeffnen();
    EXPECT_EQ(angeboten(), "");
    waehlen(0, "S");
    waehlen(1, "T");
    std::vector<std::vector<Tabellenbild>> staende{datenbank_.inhalt()};
    ebenentat(LOESCHEN, 3);
    EXPECT_EQ(angeboten(), "Löschen von „S“ (Buttons und Steuerkreuz, Standart) rückgängig");
    staende.push_back(datenbank_.inhalt());
    ebenentat(LOESCHEN, 6);
    staende.push_back(datenbank_.inhalt());
    ebenentat(KOPIEREN, 0, 8);
    EXPECT_EQ(angeboten(), "Kopieren von „S“ (Linker Stick, Standart) nach „T“ rückgängig");
    staende.push_back(datenbank_.inhalt());
    ebenentat(WECHSEL, 0, 7);
    EXPECT_EQ(angeboten(),
              "Wechsel von „S“ (Linker Stick, Standart) mit „T“ (Rechter Stick, Umschalt 1) rückgängig");
    ASSERT_NE(datenbank_.inhalt(), staende.back());
    for (auto stand = staende.rbegin(); stand != staende.rend(); ++stand) {
        EXPECT_EQ(zurueck(*uebersicht()), std::vector<Gesehen>{});
        EXPECT_EQ(datenbank_.inhalt(), *stand);
    }
    EXPECT_EQ(angeboten(), "");
}

TEST_F(Ruecknahme, EinWechselZwischenZweiDatenbankenGehtZurueck) {
    const Testdatenbank andere;
    anlegen("S", 1000);
    anlegen(andere, "S", 2000);
    starten();
    uebersichtOeffnen();
    feld<QLineEdit>("Text1", 1).setText(QString::fromStdString(andere.pfad()));
    waehlen(1, "S");
    const auto hier = datenbank_.inhalt();
    const auto dort = andere.inhalt();
    ebenentat(WECHSEL, 0, 0);
    ASSERT_NE(andere.inhalt(), dort);
    EXPECT_EQ(zurueck(haupt()), std::vector<Gesehen>{});
    EXPECT_EQ(datenbank_.inhalt(), hier);
    EXPECT_EQ(andere.inhalt(), dort);
}

TEST_F(Ruecknahme, NachEinerAenderungAnDerselbenEbeneGehtEsNichtMehr) {
    anlegen("S", 1000);
    starten();
    uebersichtOeffnen();
    waehlen(0, "S");
    ebenentat(LOESCHEN, 0);
    datenbank_.sql("INSERT INTO tblStickAktion (Schemaname, Umschalt, Aktion) VALUES ('S', 0, '4');");
    const auto vorher = datenbank_.inhalt();
    EXPECT_EQ(zurueck(*uebersicht()).size(), 1U);
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_EQ(angeboten(), "");
}
