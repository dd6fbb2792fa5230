// SPDX-License-Identifier: GPL-3.0-or-later
// "Schema neu" in its two strokes and "Schema löschen", in the main form.
#include "store/files/Gamepadtabelle.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Gamepadxml.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest/QTest>

#include <algorithm>

namespace fs = std::filesystem;

namespace {

constexpr auto JA = QMessageBox::Yes;
constexpr auto NEIN = QMessageBox::No;
constexpr int VOLL = 350;
constexpr int KURZ = 180;

const Gesehen KEIN_SCHEMA{"Kein Schema!", "Es muß ein Schema erstellt werden", QMessageBox::Information,
                          QMessageBox::Ok};
const Gesehen GIBT_ES_SCHON{"", "Dieses Schema gibt es schon\nMöchten Sie das Schema ändern",
                            QMessageBox::NoIcon, JA | NEIN};
const Gesehen WIRKLICH_LOESCHEN{"Löschvorgang", "Möchten Sie das Schema wirklich löschen?",
                                QMessageBox::NoIcon, JA | NEIN};

Gesehen einfach(const QString& text) {
    return {"", text, QMessageBox::NoIcon, QMessageBox::Ok};
}
const Gesehen KEINE_TASTATUR = einfach("Es gibt kein Tastaturschema");
const Gesehen KEIN_KREUZ = einfach("Es gibt kein Schema");
const Gesehen KEIN_LINKER = einfach("Es gibt kein Stickschema (Links)");
const Gesehen KEIN_RECHTER = einfach("Es gibt kein Stickschema (Rechts)");
Gesehen keineAchsen(const std::string& name) {
    return einfach(QString("Für das Schema „%1“ konnte keine Achsenzuordnung gespeichert werden: Gamepad.xml "
                           "lässt sich nicht lesen oder nicht schreiben, oder der Name des Schemas passt "
                           "nicht hinein.")
                       .arg(QString::fromStdString(name)));
}
Gesehen achsenBleiben(const std::string& name) {
    return einfach(QString("Die Achsenzuordnung und der Schubregler des Schemas „%1“ konnten nicht gelöscht "
                           "werden: Gamepad.xml lässt sich nicht lesen oder nicht schreiben.")
                       .arg(QString::fromStdString(name)));
}

using Boxen = std::vector<Gesehen>;
using Namen = std::vector<std::string>;

class FrmHauptSchema : public Formtest {
protected:
    void schema(const std::string& name, const std::string& pfad = "") {
        Schemabau(datenbank_, name).spalte("Programmpfad", pfad).taste(2, "1,65,0-0-0").anlegen();
    }
    QPushButton& knopf(int index) {
        return control<QPushButton>(haupt(), QString("Command1(%1)").arg(index));
    }
    void klicken(int index) {
        QTest::mouseClick(&knopf(index), Qt::LeftButton);
        ereignisse();
    }
    QComboBox& combo() { return control<QComboBox>(haupt(), "Combo1"); }
    QLineEdit& pfad() { return control<QLineEdit>(haupt(), "Text1(0)"); }
    Namen liste() {
        Namen namen;
        for (int i = 0; i < combo().count(); ++i)
            namen.push_back(combo().itemText(i).toStdString());
        return namen;
    }
    void tippen(const std::string& name) {
        combo().lineEdit()->selectAll();
        QTest::keyClicks(combo().lineEdit(), QString::fromStdString(name));
    }
    /// Both strokes of "Schema neu" with a name typed in between.
    void neu(const std::string& name) {
        klicken(2);
        tippen(name);
        klicken(2);
    }

    /// The `Schema`s in the database, in stored order; both tables of a new one agree.
    Namen schemata() const {
        Namen namen;
        for (const auto& zeile : datenbank_.zeilen("SELECT Schemaname FROM tblTastatur ORDER BY rowid"))
            namen.push_back(zeile[0]);
        return namen;
    }
    std::string pfadVon(const std::string& name) const {
        return datenbank_.zeilen("SELECT Programmpfad FROM tblTastatur WHERE Schemaname = '" + name + "'")
            .at(0)[0];
    }
    /// The rows of Gamepad.xml.
    Gamepadtabelle gamepad() const {
        return gamepadAusXml(dateiLesen(datenbank_.ordner() / "Gamepad.xml")).value();
    }
    Namen gamepadnamen() const {
        Namen namen;
        for (const auto& zeile : gamepad().zeilen)
            namen.push_back(zeile.at("Schema"));
        return namen;
    }
    void bildLegen(const std::string& name) const {
        fs::create_directory(datenbank_.ordner() / "Bilder");
        dateiSchreiben(datenbank_.ordner() / "Bilder" / name, "");
    }
    Namen bilder() const { return namenIn(datenbank_.ordner() / "Bilder"); }

    void erwarteGrundzustand() {
        EXPECT_EQ(knopf(2).text(), "Schema neu");
        EXPECT_TRUE(knopf(3).isEnabled());
        EXPECT_EQ(haupt().height(), VOLL);
        EXPECT_TRUE(pfad().isVisible());
    }
    void erwarteNamenseingabe() {
        EXPECT_EQ(knopf(2).text(), "Schema Speichern");
        EXPECT_FALSE(knopf(3).isEnabled());
        EXPECT_EQ(haupt().height(), KURZ);
        EXPECT_FALSE(pfad().isVisible());
    }
    /// Expects one box that tells an error of the store.
    static void erwarteFehler(const Boxleser& boxen, int nummer, std::size_t anzahl = 1) {
        ASSERT_EQ(boxen.gesehen().size(), anzahl);
        const Gesehen& box = boxen.gesehen().back();
        EXPECT_EQ(box.titel, "Fehler");
        EXPECT_EQ(box.symbol, QMessageBox::Warning);
        EXPECT_TRUE(box.text.startsWith(QString("Laufzeitfehler %1:\n").arg(nummer)))
            << box.text.toStdString();
    }
};

} // namespace

// --- Schema neu ---

TEST_F(FrmHauptSchema, DerErsteKlickFragtNachEinemNamen) {
    schema("Eins", "/eins");
    schema("Zwei");
    starten();
    erwarteGrundzustand();
    const auto vorher = datenbank_.inhalt();
    klicken(2);

    erwarteNamenseingabe();
    EXPECT_EQ(liste(), Namen{});
    EXPECT_EQ(combo().currentText(), "");
    EXPECT_EQ(pfad().text(), "");
    EXPECT_EQ(haupt().focusWidget(), &combo());
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_EQ(gamepadnamen(), Namen{"Eins"});
}

TEST_F(FrmHauptSchema, DerZweiteKlickLegtDasSchemaAnUndListetNurDiesesAuf) {
    schema("Eins", "/eins");
    starten();
    Boxleser boxen;
    neu("Neues Spiel");

    erwarteGrundzustand();
    EXPECT_EQ(boxen.gesehen(), Boxen{});
    EXPECT_EQ(liste(), Namen{"Neues Spiel"});
    EXPECT_EQ(combo().currentText(), "Neues Spiel");
    EXPECT_EQ(schemata(), (Namen{"Eins", "Neues Spiel"}));
    EXPECT_EQ(datenbank_.zeilen("SELECT Schemaname, Oben FROM tblSteuerKreuz WHERE Schemaname <> 'Eins'"),
              (Tabellenbild{{"Neues Spiel", "10,0,0-0-0"}}));
    EXPECT_EQ(gamepadnamen(), (Namen{"Eins", "Neues Spiel"}));

    klicken(5);
    EXPECT_NE(laufFenster(), nullptr) << "it is the current Schema";
    knopf(5).click();
}

TEST_F(FrmHauptSchema, DieNeueZeileDerAchsendateiHatDieVorgaben) {
    schema("Eins");
    starten();
    neu("Neu");
    const auto zeile = gamepad().zeilen.at(1);
    Namen achsen;
    for (const char* spalte : {"dwXPos", "dwYPos", "dwZPos", "dwRPos", "dwUPos", "dwVPos"})
        achsen.push_back(zeile.at(spalte));
    EXPECT_EQ(achsen, (Namen{"lx", "ly", "rx", "ry", "Z1", "Z2"}));
}

TEST_F(FrmHauptSchema, DerErsteStartFuehrtVonEinerLeerenDatenbankZuEinemSchema) {
    starten();
    EXPECT_EQ(knopf(2).text(), "Schema neu");
    EXPECT_EQ(haupt().height(), KURZ);
    Boxleser boxen;
    for (const int index : {0, 1, 3, 4, 5, 6}) {
        knopf(index).setEnabled(true); // those without a form yet are behind the same dispatcher
        knopf(index).click();
    }
    EXPECT_EQ(boxen.gesehen(), Boxen(6, KEIN_SCHEMA));

    neu("Erstes");
    erwarteGrundzustand();
    EXPECT_EQ(liste(), Namen{"Erstes"});
    EXPECT_EQ(schemata(), Namen{"Erstes"});
    EXPECT_EQ(boxen.gesehen().size(), 6U);
}

TEST_F(FrmHauptSchema, DerPfadEinesNeuenSchemasWirdNichtGespeichert) {
    starten();
    klicken(2);
    tippen("S");
    pfad().setText("/spiele/s");
    klicken(2);
    EXPECT_EQ(pfadVon("S"), "NULL");
}

TEST_F(FrmHauptSchema, EinLeererNameLegtNichtsAnUndLaesstDieFormKurz) {
    schema("Eins", "/eins");
    starten();
    klicken(2);
    klicken(2);

    EXPECT_EQ(knopf(2).text(), "Schema neu");
    EXPECT_TRUE(knopf(3).isEnabled());
    EXPECT_EQ(haupt().height(), KURZ);
    EXPECT_EQ(liste(), Namen{});
    EXPECT_EQ(schemata(), Namen{"Eins"});
    EXPECT_EQ(gamepadnamen(), (Namen{"Eins", ""})) << "the axis file takes whatever name there is";

    Boxleser boxen;
    klicken(5);
    klicken(3);
    EXPECT_EQ(boxen.gesehen(), (Boxen{KEIN_SCHEMA, KEIN_SCHEMA}));
    neu("Zwei");
    erwarteGrundzustand();
    EXPECT_EQ(schemata(), (Namen{"Eins", "Zwei"}));
}

TEST_F(FrmHauptSchema, EinLeererNameBeiGewaehltemEintragWaehltDenErsten) {
    schema("Eins", "/eins");
    starten();
    klicken(2);
    combo().addItems({"Eins", "B"});
    for (const int eintrag : {1, 0}) {
        combo().setCurrentIndex(eintrag);
        combo().setEditText("");
        knopf(2).setText("Schema Speichern");
        klicken(2);
        erwarteGrundzustand();
        EXPECT_EQ(combo().currentText(), "Eins");
        EXPECT_EQ(pfad().text(), "/eins") << "chosen as a hand would";
    }
    EXPECT_EQ(schemata(), Namen{"Eins"});
}

TEST_F(FrmHauptSchema, SolangeEinNameGetipptWirdGehtNichtsAnderes) {
    schema("Eins");
    starten();
    klicken(2);
    tippen("Eins");
    Boxleser boxen;
    klicken(5);
    klicken(3); // disabled
    klicken(4);
    EXPECT_EQ(boxen.gesehen(), (Boxen{KEIN_SCHEMA, KEIN_SCHEMA}));
    EXPECT_EQ(laufFenster(), nullptr);
    erwarteNamenseingabe();
    EXPECT_EQ(combo().currentText(), "Eins");
}

TEST_F(FrmHauptSchema, EnterImNamenSpeichertIhn) {
    schema("Eins");
    starten();
    for (const auto& [taste, name] : {std::pair{Qt::Key_Return, "Neu"}, std::pair{Qt::Key_Enter, "Neuer"}}) {
        klicken(2);
        tippen(name);
        QTest::keyClick(combo().lineEdit(), taste);
        ereignisse();
        erwarteGrundzustand();
        EXPECT_EQ(liste(), Namen{name});
    }
    EXPECT_EQ(schemata(), (Namen{"Eins", "Neu", "Neuer"}));
}

TEST_F(FrmHauptSchema, EnterOhneNamenOderOhneFrageNachEinemTutNichts) {
    schema("Eins");
    starten();
    tippen("Neu");
    QTest::keyClick(combo().lineEdit(), Qt::Key_Return);
    erwarteGrundzustand();
    EXPECT_EQ(liste(), Namen{"Eins"});
    klicken(2);
    QTest::keyClick(combo().lineEdit(), Qt::Key_Return);
    erwarteNamenseingabe();
    EXPECT_EQ(schemata(), Namen{"Eins"});
}

TEST_F(FrmHauptSchema, EscapeLaesstAllesWieEsVorDerFrageNachDemNamenWar) {
    schema("Eins", "/eins");
    schema("Zwei", "/zwei");
    starten();
    combo().setCurrentIndex(1);
    emit combo().activated(1);
    pfad().setText("getippt");
    const auto vorher = gamepadnamen();
    klicken(2);
    tippen("Neu");
    Boxleser boxen;
    QTest::keyClick(combo().lineEdit(), Qt::Key_Escape);
    ereignisse();
    erwarteGrundzustand();
    EXPECT_EQ(liste(), (Namen{"Eins", "Zwei"}));
    EXPECT_EQ(combo().currentText(), "Zwei");
    EXPECT_EQ(combo().currentIndex(), 1);
    EXPECT_EQ(pfad().text(), "getippt");
    EXPECT_EQ(schemata(), (Namen{"Eins", "Zwei"}));
    EXPECT_EQ(gamepadnamen(), vorher);
    EXPECT_EQ(boxen.gesehen(), Boxen{});
    QTest::keyClick(combo().lineEdit(), Qt::Key_Escape);
    EXPECT_EQ(combo().currentText(), "Zwei") << "nothing is asked for any more";
    klicken(5);
    EXPECT_NE(laufFenster(), nullptr);
    knopf(5).click();
}

TEST_F(FrmHauptSchema, EscapeOhneEinSchemaLaesstDieFormKurz) {
    starten();
    klicken(2);
    tippen("Neu");
    QTest::keyClick(combo().lineEdit(), Qt::Key_Escape);
    EXPECT_EQ(knopf(2).text(), "Schema neu");
    EXPECT_EQ(haupt().height(), KURZ);
    EXPECT_EQ(combo().currentText(), "");
    EXPECT_EQ(schemata(), Namen{});
}

TEST_F(FrmHauptSchema, DasFeldSagtWofuerEsDaIstSolangeEinNameGefragtIst) {
    schema("Eins");
    starten();
    EXPECT_EQ(combo().lineEdit()->placeholderText(), "");
    klicken(2);
    EXPECT_EQ(combo().lineEdit()->placeholderText(), "Name des neuen Schemas");
    tippen("Neu");
    klicken(2);
    EXPECT_EQ(combo().lineEdit()->placeholderText(), "");
}

TEST_F(FrmHauptSchema, WasDemNamenFehltStehtAmFeldWaehrendErGetipptWird) {
    schema("Eins");
    starten();
    auto& hinweis = control<QLabel>(haupt(), "lblNamenshinweis");
    tippen("O'Brien");
    EXPECT_EQ(hinweis.text(), "") << "no name is asked for";
    klicken(2);
    Boxleser boxen;
    EXPECT_EQ(hinweis.text(), "Ohne Namen entsteht kein Schema.");
    EXPECT_TRUE(hinweis.isVisible());
    tippen("O");
    EXPECT_EQ(hinweis.text(), "");
    tippen("O'");
    EXPECT_EQ(hinweis.text(), "Mit einem Apostroph lässt sich das Schema weder bearbeiten noch starten.");
    EXPECT_EQ(combo().lineEdit()->accessibleDescription(), hinweis.text());
    tippen("Eins");
    EXPECT_EQ(hinweis.text(), "Ein Schema dieses Namens gibt es schon.");
    tippen(std::string(100, 'n'));
    EXPECT_EQ(hinweis.text(), "");
    tippen(std::string(101, 'n'));
    EXPECT_EQ(hinweis.text(), "Der Name ist zu lang: Achsen werden nur bis 100 Zeichen gespeichert.");
    combo().setEditText(QString("a") + QChar(1));
    EXPECT_EQ(hinweis.text(), "Der Name enthält Zeichen, mit denen keine Achsen gespeichert werden.");
    tippen("  ");
    EXPECT_EQ(hinweis.text(), "Der Name besteht nur aus Leerzeichen.");
    for (const char* name : {" Zwei", "Zwei "}) {
        tippen(name);
        EXPECT_EQ(hinweis.text(), "Der Name beginnt oder endet mit einem Leerzeichen.");
    }
    tippen("Eins Zwei");
    EXPECT_EQ(hinweis.text(), "");
    EXPECT_EQ(boxen.gesehen(), Boxen{});
    EXPECT_EQ(haupt().height(), KURZ);
    tippen("Zwei");
    klicken(2);
    EXPECT_EQ(hinweis.text(), "");
    EXPECT_FALSE(hinweis.isVisible());
}

TEST_F(FrmHauptSchema, DieKurzeFormFuehrtZuDenErstenSchritten) {
    starten();
    auto& verweis = control<QLabel>(haupt(), "lblErsteSchritte");
    EXPECT_TRUE(verweis.isVisible());
    EXPECT_EQ(verweis.accessibleName(), "Erste Schritte");
    const QPoint mitte(verweis.fontMetrics().horizontalAdvance("Erste") / 2, verweis.height() / 2);
    QTest::mouseClick(&verweis, Qt::LeftButton, {}, mitte);
    EXPECT_EQ(prozess_.geoeffnet,
              Namen{datenbank_.ordner().string() + "/Beschreibung\\Startfenster.htm#erstes"});
    schema("Eins");
    starten();
    EXPECT_FALSE(control<QLabel>(haupt(), "lblErsteSchritte").isVisible());
}

TEST_F(FrmHauptSchema, JaAendertDenPfadEinesVorhandenenSchemasUndListetNichtsAuf) {
    schema("Eins", "/eins");
    schema("Zwei", "/zwei");
    starten();
    Boxleser boxen({JA});
    neu("Zwei");

    EXPECT_EQ(boxen.gesehen(), Boxen{GIBT_ES_SCHON});
    erwarteGrundzustand();
    EXPECT_EQ(liste(), Namen{}) << "a changed Schema is not added";
    EXPECT_EQ(combo().currentText(), "Zwei");
    EXPECT_EQ(pfadVon("Zwei"), " ");
    EXPECT_EQ(pfadVon("Eins"), "/eins");
    EXPECT_EQ(datenbank_.zeilen("SELECT btn3 FROM tblTastatur"),
              (Tabellenbild{{"1,65,0-0-0"}, {"1,65,0-0-0"}}));
    EXPECT_EQ(gamepadnamen(), (Namen{"Eins", "Zwei"}));
}

TEST_F(FrmHauptSchema, DerErsteKlickLeertDenNamenAuchWoDieListeLeerIst) {
    schema("Eins", "/eins");
    starten();
    {
        Boxleser boxen({JA});
        neu("Eins");
        EXPECT_EQ(liste(), Namen{});
        EXPECT_EQ(combo().currentText(), "Eins");
    }
    const auto vorher = datenbank_.inhalt();
    klicken(2);
    EXPECT_EQ(combo().currentText(), "");
    Boxleser boxen;
    klicken(2);
    EXPECT_EQ(boxen.gesehen(), Boxen{}) << "nobody is asked about the name before";
    EXPECT_EQ(datenbank_.inhalt(), vorher);

    tippen("Fehlt"); // into a list that is empty
    klicken(2);
    EXPECT_EQ(combo().currentText(), "");
}

TEST_F(FrmHauptSchema, JaSpeichertDenPfadDerInDerFormSteht) {
    schema("S", "/alt");
    starten();
    Boxleser boxen({JA});
    klicken(2);
    tippen("S");
    pfad().setText("/neu");
    klicken(2);
    EXPECT_EQ(pfadVon("S"), "/neu");
}

TEST_F(FrmHauptSchema, NeinLaesstEinVorhandenesSchemaWieEsWar) {
    schema("Eins", "/eins");
    schema("Zwei", "/zwei");
    starten();
    const auto vorher = datenbank_.inhalt();
    Boxleser boxen({NEIN});
    neu("Zwei");

    EXPECT_EQ(boxen.gesehen(), Boxen{GIBT_ES_SCHON});
    erwarteGrundzustand();
    EXPECT_EQ(liste(), Namen{});
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_EQ(gamepadnamen(), (Namen{"Eins", "Zwei"})) << "the axis file gets it whatever the answer";
}

TEST_F(FrmHauptSchema, DasSchliessenDerFrageIstEinNein) {
    schema("S", "/alt");
    starten();
    QTimer taste;
    int gedrueckt = 0;
    QObject::connect(&taste, &QTimer::timeout, [&gedrueckt] {
        if (auto* box = QApplication::activeModalWidget()) {
            ++gedrueckt;
            QTest::keyClick(box, Qt::Key_Escape);
        }
    });
    taste.start(0);
    neu("S");
    EXPECT_EQ(gedrueckt, 1);
    EXPECT_EQ(pfadVon("S"), "/alt");
}

TEST_F(FrmHauptSchema, DieFrageWirdAufDeutschBeantwortetUndEnterIstJa) {
    schema("S", "/alt");
    starten();
    QTimer taste;
    QStringList texte;
    QObject::connect(&taste, &QTimer::timeout, [&texte] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        texte = {box->button(JA)->text(), box->button(NEIN)->text()};
        QTest::keyClick(box, Qt::Key_Return);
    });
    taste.start(0);
    neu("S");
    EXPECT_EQ(texte, (QStringList{"&Ja", "&Nein"}));
    EXPECT_EQ(pfadVon("S"), " ");
}

TEST_F(FrmHauptSchema, EinSchemaDasSeinSteuerkreuzVerlorBekommtEsUndStehtInDerListe) {
    Schemabau(datenbank_, "halb").ohneKreuz().anlegen();
    starten();
    Boxleser boxen({NEIN});
    neu("halb");
    EXPECT_EQ(boxen.gesehen(), Boxen{GIBT_ES_SCHON});
    EXPECT_EQ(liste(), Namen{"halb"});
    EXPECT_EQ(datenbank_.zeilen("SELECT Schemaname FROM tblSteuerKreuz"), (Tabellenbild{{"halb"}}));
}

TEST_F(FrmHauptSchema, EinKlickAufDenNeuenEintragLaesstDenPfad) {
    schema("Eins", "/eins");
    starten();
    neu("Neu");
    pfad().setText("bleibt");
    emit combo().activated(0);
    EXPECT_EQ(pfad().text(), "bleibt");
    EXPECT_EQ(combo().currentText(), "Neu");
}

TEST_F(FrmHauptSchema, UngewoehnlicheNamenWerdenSchemataWieSieGetipptSind) {
    starten();
    Boxleser boxen;
    Namen erwartet;
    for (const std::string& name :
         Namen{"Ä ö ß", "../x", " ", "S ", "s", "S", "a\"b", "%1 & <b>x</b>", std::string(100, 'n')}) {
        klicken(2);
        combo().setEditText(QString::fromStdString(name));
        klicken(2);
        erwartet.push_back(name);
        EXPECT_EQ(liste(), Namen{name});
        EXPECT_EQ(combo().currentText().toStdString(), name);
        EXPECT_EQ(schemata(), erwartet);
        EXPECT_EQ(gamepadnamen().back(), name);
    }
    EXPECT_EQ(boxen.gesehen(), Boxen{});
}

TEST_F(FrmHauptSchema, EinNameMitApostrophWirdEinSchemaOhneZeileInDerAchsendatei) {
    schema("Eins");
    starten();
    Boxleser boxen;
    neu("O'Brien");
    EXPECT_EQ(boxen.gesehen(), Boxen{keineAchsen("O'Brien")});
    EXPECT_EQ(schemata(), (Namen{"Eins", "O'Brien"}));
    EXPECT_EQ(liste(), Namen{"O'Brien"});
    EXPECT_EQ(gamepadnamen(), Namen{"Eins"});
    erwarteGrundzustand();
}

TEST_F(FrmHauptSchema, NimmtDieAchsendateiKeineZeileWirdEsBeiJedemNamenGesagtOhneNamenNicht) {
    schema("Eins");
    starten();
    dateiSchreiben(datenbank_.ordner() / "Gamepad.xml", "kaputt");
    Boxleser boxen({QMessageBox::Ok, NEIN});
    neu("Neu");
    neu("Neu");
    EXPECT_EQ(boxen.gesehen(), (Boxen{keineAchsen("Neu"), GIBT_ES_SCHON, keineAchsen("Neu")}));
    klicken(2);
    klicken(2);
    EXPECT_EQ(boxen.gesehen().size(), 3U);
    EXPECT_EQ(dateiLesen(datenbank_.ordner() / "Gamepad.xml"), "kaputt");
}

TEST_F(FrmHauptSchema, EinNameDenDieAchsendateiNichtFasstIstDennochEinSchema) {
    starten();
    const auto vorher = gamepadnamen();
    const std::string lang(101, 'n');
    Boxleser boxen;
    neu(lang);
    EXPECT_EQ(boxen.gesehen(), Boxen{keineAchsen(lang)});
    EXPECT_EQ(schemata(), Namen{lang});
    EXPECT_EQ(liste(), Namen{lang});
    EXPECT_EQ(gamepadnamen(), vorher);
    klicken(5);
    EXPECT_NE(laufFenster(), nullptr);
    knopf(5).click();
}

TEST_F(FrmHauptSchema, BeiGesperrterDatenbankEineMeldungUndDerNameLaesstSichErneutSpeichern) {
    schema("Eins");
    starten();
    RoheVerbindung andere(datenbank_.pfad());
    andere.sql("BEGIN IMMEDIATE");
    Boxleser boxen;
    neu("Neu");
    erwarteFehler(boxen, 3218);
    erwarteNamenseingabe();
    EXPECT_EQ(combo().currentText(), "Neu");
    EXPECT_EQ(liste(), Namen{});
    andere.sql("COMMIT");
    EXPECT_EQ(schemata(), Namen{"Eins"});
    EXPECT_EQ(gamepadnamen(), Namen{"Eins"});

    klicken(2);
    erwarteGrundzustand();
    EXPECT_EQ(liste(), Namen{"Neu"});
    EXPECT_EQ(boxen.gesehen().size(), 1U);
}

TEST_F(FrmHauptSchema, EineSchreibgeschuetzteDatenbankWirdEinmalGesagt) {
    schema("Eins");
    starten();
    klicken(2);
    tippen("Neu");
    Boxleser boxen;
    {
        const Rechte rechte(datenbank_, 0555, 0444);
        const AlsNiemand niemand;
        klicken(2);
    }
    erwarteFehler(boxen, 3027);
    EXPECT_EQ(schemata(), Namen{"Eins"});
}

TEST_F(FrmHauptSchema, EinNameMitApostrophLaesstSichNichtAendern) {
    schema("O'Brien", "/alt");
    starten();
    Boxleser boxen({JA});
    neu("O'Brien");
    EXPECT_EQ(boxen.gesehen().at(0), GIBT_ES_SCHON);
    erwarteFehler(boxen, 3075, 2);
    EXPECT_EQ(pfadVon("O''Brien"), "/alt");
    erwarteNamenseingabe();
    EXPECT_EQ(combo().currentText(), "O'Brien");
}

// --- Schema löschen ---

TEST_F(FrmHauptSchema, JaLoeschtDasSchemaUndWaehltDasErsteDerUebrigen) {
    schema("Eins", "/eins");
    schema("Zwei", "/zwei");
    schema("Drei", "/drei");
    for (const std::string bild : {"Zwei0L.BMP", "Eins0L.bmp"})
        bildLegen(bild);
    starten();
    combo().setCurrentIndex(1);
    emit combo().activated(1);
    EXPECT_EQ(gamepadnamen(), (Namen{"Eins", "Zwei"}));
    Boxleser boxen({JA});
    klicken(3);

    EXPECT_EQ(boxen.gesehen(), (Boxen{WIRKLICH_LOESCHEN, KEIN_LINKER, KEIN_RECHTER}));
    EXPECT_EQ(schemata(), (Namen{"Eins", "Drei"}));
    EXPECT_EQ(datenbank_.zeilen("SELECT Schemaname FROM tblSteuerKreuz ORDER BY rowid"),
              (Tabellenbild{{"Eins"}, {"Drei"}}));
    EXPECT_EQ(gamepadnamen(), Namen{"Eins"});
    EXPECT_EQ(bilder(), Namen{"Eins0L.bmp"});
    EXPECT_EQ(liste(), (Namen{"Eins", "Drei"}));
    EXPECT_EQ(combo().currentText(), "Eins");
    EXPECT_EQ(pfad().text(), "/eins");
    erwarteGrundzustand();

    klicken(5);
    tastenDruecken(4);
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), Namen{"+65"}) << "the first one is the current Schema";
    knopf(5).click();
}

TEST_F(FrmHauptSchema, MitZeilenFuerBeideSticksWirdNichtsGesagt) {
    schema("S");
    datenbank_.sql("INSERT INTO tblStickAktion (Schemaname) VALUES ('S'), ('S');"
                   "INSERT INTO tblStickAktionR (Schemaname) VALUES ('S')");
    starten();
    Boxleser boxen({JA});
    klicken(3);
    EXPECT_EQ(boxen.gesehen(), Boxen{WIRKLICH_LOESCHEN});
    EXPECT_EQ(schemata(), Namen{});
}

TEST_F(FrmHauptSchema, NeinBehaeltDasSchemaAberNichtSeineAchsenUndLiestDieListeNeu) {
    schema("Eins", "/eins");
    schema("Zwei", "/zwei");
    bildLegen("Zwei0L.bmp");
    starten();
    combo().setCurrentIndex(1);
    emit combo().activated(1);
    schema("Drei");
    const auto vorher = datenbank_.inhalt();
    Boxleser boxen({NEIN});
    klicken(3);

    EXPECT_EQ(boxen.gesehen(), Boxen{WIRKLICH_LOESCHEN});
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_EQ(bilder(), Namen{"Zwei0L.bmp"});
    EXPECT_EQ(gamepadnamen(), Namen{"Eins"});
    EXPECT_EQ(liste(), (Namen{"Eins", "Zwei", "Drei"}));
    EXPECT_EQ(combo().currentText(), "Eins");
    EXPECT_EQ(pfad().text(), "/eins");
}

TEST_F(FrmHauptSchema, NachEinemNeinGibtEinKlickAufDenNamenIhmDieGrundbelegung) {
    schema("Eins");
    schema("Zwei");
    const std::array<std::string, ACHSEN> gedreht{"Z2", "Z1", "ry", "rx", "ly", "lx"};
    dateiSchreiben(datenbank_.ordner() / "Gamepad.xml",
                   gamepadXmlMit("Eins", gedreht, "2/0-1-2-0(65,,)/0-2-2-0(66,,)"));
    starten();
    Boxleser boxen({NEIN});
    klicken(3);
    EXPECT_EQ(gamepadnamen(), Namen{});
    emit combo().activated(0);

    EXPECT_EQ(combo().currentText(), "Eins");
    ASSERT_EQ(gamepadnamen(), Namen{"Eins"});
    const auto zeile = gamepad().zeilen.at(0);
    Namen achsen;
    for (const char* spalte : {"dwXPos", "dwYPos", "dwZPos", "dwRPos", "dwUPos", "dwVPos", "Schubregler"})
        achsen.push_back(zeile.at(spalte));
    EXPECT_EQ(achsen, (Namen{"lx", "ly", "rx", "ry", "Z1", "Z2", ""}));
    klicken(5);
    pad_.zustand.dwUpos = 60000; // Z1 by default, the slider of the text that has gone
    vergehen(50);
    EXPECT_EQ(eingabe_.texteAbholen(), Namen{});
    knopf(5).click();
}

TEST_F(FrmHauptSchema, EineZeileDerAchsendateiDieBleibtWirdGesagtWennIhrSchemaFortIst) {
    schema("Eins");
    schema("Zwei");
    starten();
    const auto datei = datenbank_.ordner() / "Gamepad.xml";
    dateiSchreiben(datei, "kaputt");
    {
        Boxleser boxen({NEIN});
        klicken(3);
        EXPECT_EQ(boxen.gesehen(), Boxen{WIRKLICH_LOESCHEN}) << "nobody wanted it deleted";
    }
    Boxleser boxen({JA});
    klicken(3);
    EXPECT_EQ(boxen.gesehen(), (Boxen{WIRKLICH_LOESCHEN, KEIN_LINKER, KEIN_RECHTER, achsenBleiben("Eins")}));
    EXPECT_EQ(combo().currentText(), "Zwei");
    EXPECT_EQ(dateiLesen(datei), "kaputt");
}

TEST_F(FrmHauptSchema, NachDemLetztenIstDieListeLeerUndJederBefehlWirdAbgewiesen) {
    schema("S", "/s");
    starten();
    Boxleser boxen({JA});
    klicken(3);
    EXPECT_EQ(liste(), Namen{});
    EXPECT_EQ(combo().currentText(), "");
    EXPECT_EQ(pfad().text(), "");
    EXPECT_EQ(gamepadnamen(), Namen{});
    erwarteGrundzustand();
    klicken(5);
    klicken(3);
    EXPECT_EQ(boxen.gesehen(),
              (Boxen{WIRKLICH_LOESCHEN, KEIN_LINKER, KEIN_RECHTER, KEIN_SCHEMA, KEIN_SCHEMA}));
}

TEST_F(FrmHauptSchema, EinLoeschenBringtNachEinemNeuenSchemaDieAnderenNamenZurueck) {
    schema("Eins", "/eins");
    starten();
    neu("Neu");
    EXPECT_EQ(liste(), Namen{"Neu"});
    Boxleser boxen({JA});
    klicken(3);
    EXPECT_EQ(schemata(), Namen{"Eins"});
    EXPECT_EQ(liste(), Namen{"Eins"});
    EXPECT_EQ(pfad().text(), "/eins");
    EXPECT_EQ(gamepadnamen(), Namen{"Eins"});
}

TEST_F(FrmHauptSchema, GeloeschtWirdDerGetippteName) {
    schema("Eins");
    schema("Zwei");
    starten();
    tippen("Fehlt");
    {
        Boxleser boxen({JA});
        klicken(3);
        EXPECT_EQ(boxen.gesehen(),
                  (Boxen{WIRKLICH_LOESCHEN, KEINE_TASTATUR, KEIN_KREUZ, KEIN_LINKER, KEIN_RECHTER}));
    }
    EXPECT_EQ(schemata(), (Namen{"Eins", "Zwei"}));
    tippen("Zwei");
    Boxleser boxen({JA});
    klicken(3);
    EXPECT_EQ(schemata(), Namen{"Eins"});
}

TEST_F(FrmHauptSchema, EinNameMitTrennernVerliertSeineZeilenUndKeineDateiAusserhalb) {
    schema("../x");
    bildLegen("bleibt.bmp");
    dateiSchreiben(datenbank_.ordner() / "x0L.bmp", "");
    starten();
    Boxleser boxen({JA});
    klicken(3);
    EXPECT_EQ(schemata(), Namen{});
    EXPECT_TRUE(fs::exists(datenbank_.ordner() / "x0L.bmp"));
    EXPECT_EQ(bilder(), Namen{"bleibt.bmp"});
}

TEST_F(FrmHauptSchema, EinNameMitApostrophLaesstSichNichtLoeschenUndVerliertNichts) {
    starten();
    {
        const Boxleser boxen; // it gets no row in the axis file
        neu("O'Brien");
    }
    const auto vorher = datenbank_.inhalt();
    const auto gamepadVorher = gamepadnamen();
    Boxleser boxen({JA});
    klicken(3);
    EXPECT_EQ(boxen.gesehen().at(0), WIRKLICH_LOESCHEN);
    erwarteFehler(boxen, 3075, 2);
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_EQ(gamepadnamen(), gamepadVorher);
    EXPECT_EQ(liste(), Namen{"O'Brien"});
}

TEST_F(FrmHauptSchema, EineGesperrteDatenbankWirdEinmalGesagtUndDieListeBleibt) {
    schema("Eins");
    schema("Zwei");
    starten();
    RoheVerbindung andere(datenbank_.pfad());
    for (const std::string sperre : {"BEGIN IMMEDIATE", "BEGIN EXCLUSIVE"}) {
        andere.sql(sperre);
        Boxleser boxen({JA});
        klicken(3);
        erwarteFehler(boxen, 3218, 2);
        andere.sql("COMMIT");
    }
    EXPECT_EQ(schemata(), (Namen{"Eins", "Zwei"}));
    EXPECT_EQ(liste(), (Namen{"Eins", "Zwei"}));
    EXPECT_EQ(combo().currentText(), "Eins");
    EXPECT_EQ(gamepadnamen(), Namen{"Eins"});
    Boxleser boxen({JA});
    klicken(3);
    EXPECT_EQ(liste(), Namen{"Zwei"}) << "the form is as usable as before";
}

// --- looks ---

TEST_F(FrmHauptSchema, LangeNamenMachenDieFormWederBreiterNochHoeher) {
    schema("S");
    starten();
    const auto groesse = haupt().size();
    neu(std::string(100, 'W'));
    pfad().setText(QString(500, 'W'));
    ereignisse();
    EXPECT_EQ(haupt().size(), groesse);
    EXPECT_EQ(beschnittene(haupt()), Namen{});
}

TEST_F(FrmHauptSchema, AuchDieKurzeFormWaechstMitDerSchrift) {
    for (const int punkt : {9, 12, 16, 24}) {
        const Schriftgrad grad(punkt);
        starten();
        klicken(2);
        EXPECT_EQ(beschnittene(haupt()), Namen{}) << punkt << " points";
        EXPECT_FALSE(pfad().isVisible());
    }
}

TEST_F(FrmHauptSchema, NamenDieWieAuszeichnungAussehenWerdenGesagtWieSieSind) {
    starten();
    Boxleser boxen({QMessageBox::Ok, JA});
    neu("<b>'x'</b>");
    klicken(3);
    ASSERT_EQ(boxen.gesehen().size(), 3U);
    for (const std::size_t i : {0U, 2U})
        EXPECT_TRUE(boxen.gesehen()[i].text.contains("„<b>'x'</b>“"))
            << boxen.gesehen()[i].text.toStdString();
}
