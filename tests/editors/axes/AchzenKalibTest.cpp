// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Gamepadtabelle.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Gamepadxml.h"

#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>
#include <QScrollBar>
#include <QtTest/QTest>

namespace {

using Namen = std::array<std::string, ACHSEN>;

const Namen GRUNDBELEGUNG{"lx", "ly", "rx", "ry", "Z1", "Z2"};
const Gesehen FALSCHE_EINGABE{"", "Falsche Eingabe", QMessageBox::NoIcon, QMessageBox::Ok};

// One row of the form as it is chosen in it.
struct Wahl {
    const char* auswahl;
    const char* richtung;
};
using Wahlen = std::array<Wahl, ACHSEN>;

class AchzenKalibTest : public Formtest {
protected:
    AchzenKalibTest() {
        for (const auto* name : {"S", "T"})
            Schemabau(datenbank_, name).anlegen();
    }
    std::filesystem::path datei() const { return datenbank_.ordner() / "Gamepad.xml"; }

    /// Starts the program and opens the form.
    void oeffnen() {
        starten();
        klicken();
    }
    void klicken() { control<QPushButton>(haupt(), "Command3").click(); }
    /// All forms that stand open.
    static std::vector<QWidget*> formen() {
        std::vector<QWidget*> offene;
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == "AchzenKalib" && fenster->isVisible())
                offene.push_back(fenster);
        return offene;
    }
    static QWidget& form() { return *formen().at(0); }
    static QComboBox& auswahl(int i) { return control<QComboBox>(form(), QString("Auswahl(%1)").arg(i)); }
    static QComboBox& richtung(int i) { return control<QComboBox>(form(), QString("Richtung(%1)").arg(i)); }
    static QPushButton& knopf(int i) { return control<QPushButton>(form(), QString("Command1(%1)").arg(i)); }
    static void waehlen(const Wahlen& wahlen) {
        for (int i = 0; i < static_cast<int>(ACHSEN); ++i) {
            const auto& wahl = wahlen[static_cast<std::size_t>(i)];
            auswahl(i).setCurrentIndex(auswahl(i).findText(wahl.auswahl));
            richtung(i).setCurrentIndex(richtung(i).findText(wahl.richtung));
        }
    }
    std::vector<int> balken() {
        std::vector<int> werte;
        for (int i = 0; i < static_cast<int>(ACHSEN); ++i)
            werte.push_back(control<QScrollBar>(form(), QString("VScroll1(%1)").arg(i)).value());
        return werte;
    }
    /// The row of a `Schema` as it lies in the file.
    Gamepadzeile zeile(const std::string& schema) const {
        const auto tabelle = gamepadAusXml(dateiLesen(datei()));
        for (const auto& eine : tabelle->zeilen)
            if (eine.at("Schema") == schema)
                return eine;
        return {};
    }
    Namen gespeichert(const std::string& schema = "S") const {
        const auto eine = zeile(schema);
        return {eine.at("dwXPos"), eine.at("dwYPos"), eine.at("dwZPos"),
                eine.at("dwRPos"), eine.at("dwUPos"), eine.at("dwVPos")};
    }
};

} // namespace

TEST_F(AchzenKalibTest, ZeigtDieGegebenenTexte) {
    oeffnen();
    EXPECT_EQ(form().windowTitle(), "Achsen zuordnen");
    EXPECT_EQ(control<QLabel>(form(), "Label2").text(),
              "Bitte mit Ihrem Controller die Achsen testen und nach Ihren Bedürfnissen einstellen");
    EXPECT_EQ(control<QLabel>(form(), "Label3").text(),
              "Bitte immer nur 2 mal den Stick Links mit den Richtungen Links/Rechts-Oben/Unten Bitte immer "
              "nur 2 mal den Stick Rechts mit den Richtungen  (siehe oben)                      Bitte immer "
              "beide Schubvarianten einstellen");
    for (int i = 0; i < static_cast<int>(ACHSEN); ++i) {
        EXPECT_EQ(control<QLabel>(form(), QString("Label1(%1)").arg(2 * i)).text(), "Stick:");
        EXPECT_EQ(control<QLabel>(form(), QString("Label1(%1)").arg(2 * i + 1)).text(), "Richtung");
        QStringList eintraege;
        for (auto* liste : {&auswahl(i), &richtung(i)})
            for (int eintrag = 0; eintrag < liste->count(); ++eintrag)
                eintraege << liste->itemText(eintrag);
        EXPECT_EQ(eintraege,
                  (QStringList{"Links", "Rechts", "Z-Achse", "Schubregler", "Links/Rechts", "Oben/Unten"}));
    }
}

TEST_F(AchzenKalibTest, OeffnetMitDerZuordnungDesGewaehltenSchemas) {
    dateiSchreiben(datei(), gamepadXmlMit("S", Namen{"Z2", "ry", "lx", "Z1", "rx", "ly"}, ""));
    oeffnen();
    QStringList gewaehlt;
    for (int i = 0; i < static_cast<int>(ACHSEN); ++i)
        gewaehlt << auswahl(i).currentText() << richtung(i).currentText();
    EXPECT_EQ(gewaehlt, (QStringList{"Schubregler", "", "Rechts", "Oben/Unten", "Links", "Links/Rechts",
                                     "Z-Achse", "", "Rechts", "Links/Rechts", "Links", "Oben/Unten"}));
}

TEST_F(AchzenKalibTest, EinUnbekannterNameLaesstDieListenLeer) {
    dateiSchreiben(datei(), gamepadXmlMit("S", Namen{"", "x", "lx", "ly", "rx", "ry"}, ""));
    oeffnen();
    for (const int i : {0, 1}) {
        EXPECT_EQ(auswahl(i).currentIndex(), -1);
        EXPECT_EQ(richtung(i).currentIndex(), -1);
    }
    Boxleser boxen;
    knopf(0).click();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{FALSCHE_EINGABE});
}

// --- the bars ---

TEST_F(AchzenKalibTest, DieBalkenFolgenDemPadAlle50Millisekunden) {
    oeffnen();
    pad_.zustand.dwXpos = 0;
    pad_.zustand.dwYpos = 65535;
    pad_.zustand.dwZpos = 32767;
    pad_.zustand.dwRpos = 32768;
    pad_.zustand.dwUpos = 13107; // a fifth
    pad_.zustand.dwVpos = 52428; // four fifths
    vergehen(49);
    EXPECT_EQ(balken(), (std::vector<int>{0, 0, 0, 0, 0, 0}));
    vergehen(1);
    EXPECT_EQ(balken(), (std::vector<int>{0, 32767, 16383, 16384, 6553, 26214}));

    pad_.zustand.dwXpos = 65535;
    vergehen(49);
    EXPECT_EQ(balken().front(), 0);
    vergehen(1);
    EXPECT_EQ(balken().front(), 32767);
}

TEST_F(AchzenKalibTest, OhnePadBleibenDieBalkenStehen) {
    oeffnen();
    vergehen(50);
    pad_.zustand.dwXpos = 65535;
    pad_.da = false;
    vergehen(1000);
    EXPECT_EQ(balken().front(), 16383);
    pad_.da = true;
    vergehen(50);
    EXPECT_EQ(balken().front(), 32767);
}

TEST_F(AchzenKalibTest, OhnePadSindDieBalkenGrau) {
    const auto graue = [] {
        int anzahl = 0;
        for (int i = 0; i < static_cast<int>(ACHSEN); ++i)
            anzahl += control<QScrollBar>(form(), QString("VScroll1(%1)").arg(i)).isEnabled() ? 0 : 1;
        return anzahl;
    };
    oeffnen();
    vergehen(50);
    EXPECT_EQ(graue(), 0);
    pad_.da = false;
    vergehen(50);
    EXPECT_EQ(graue(), 6);
    pad_.da = true;
    vergehen(50);
    EXPECT_EQ(graue(), 0);
}

TEST_F(AchzenKalibTest, DieBalkenZeigenNurUndNehmenKeineHandAn) {
    oeffnen();
    vergehen(50);
    auto& bar = control<QScrollBar>(form(), "VScroll1(0)");
    EXPECT_EQ(bar.orientation(), Qt::Vertical);
    EXPECT_EQ(bar.focusPolicy(), Qt::NoFocus);
    QTest::mouseClick(form().windowHandle(), Qt::LeftButton, {},
                      bar.mapTo(&form(), QPoint(bar.width() / 2, bar.height() - 3)));
    EXPECT_EQ(bar.value(), 16383);
}

TEST_F(AchzenKalibTest, NachDemSchliessenWirdNichtMehrAbgefragt) {
    oeffnen();
    EXPECT_EQ(uhr_.laufende(), 1U);
    form().close();
    EXPECT_EQ(uhr_.laufende(), 0U);
    ereignisse();
    vergehen(1000);
    EXPECT_EQ(formen().size(), 0U);
}

// --- confirming ---

TEST_F(AchzenKalibTest, BestaetigenSpeichertUndSchliesst) {
    dateiSchreiben(datei(), gamepadXmlMit("S", GRUNDBELEGUNG, "2/0-1-2-0(65,,)"));
    oeffnen();
    waehlen({{{"Schubregler", ""},
              {"Rechts", "Oben/Unten"},
              {"Links", "Oben/Unten"},
              {"Z-Achse", ""},
              {"Rechts", "Links/Rechts"},
              {"Links", "Links/Rechts"}}});
    Boxleser boxen;
    knopf(0).click();

    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_EQ(formen().size(), 0U);
    EXPECT_EQ(gespeichert(), (Namen{"Z2", "ry", "ly", "Z1", "rx", "lx"}));
    EXPECT_EQ(zeile("S").at("Schubregler"), "2/0-1-2-0(65,,)") << "the slider text stays";
}

TEST_F(AchzenKalibTest, DieRichtungEinesSchubreglersWirdNichtGefragtUndZaehltNicht) {
    oeffnen();
    for (const int i : {0, 1, 2, 3})
        EXPECT_TRUE(richtung(i).isEnabled());
    for (const int i : {4, 5}) {
        EXPECT_FALSE(richtung(i).isEnabled());
        richtung(i).setCurrentIndex(1);
    }
    knopf(0).click();
    EXPECT_EQ(formen().size(), 0U);
    EXPECT_EQ(gespeichert(), GRUNDBELEGUNG);
}

TEST_F(AchzenKalibTest, EineRichtungIstWiederFreiSobaldEsEinStickIst) {
    oeffnen();
    auswahl(4).setCurrentText("Rechts");
    EXPECT_TRUE(richtung(4).isEnabled());
    auswahl(4).setCurrentText("Schubregler");
    EXPECT_FALSE(richtung(4).isEnabled());
}

TEST_F(AchzenKalibTest, FalscheEingabeWirdGesagtUndNichtGespeichert) {
    const Wahlen recht{{{"Links", "Links/Rechts"},
                        {"Links", "Oben/Unten"},
                        {"Rechts", "Links/Rechts"},
                        {"Rechts", "Oben/Unten"},
                        {"Z-Achse", ""},
                        {"Schubregler", ""}}};
    struct Fall {
        const char* was;
        std::size_t zeile;
        Wahl statt;
    };
    const std::vector<Fall> faelle{
        {"two rows for the left stick's x", 1, {"Links", "Links/Rechts"}},
        {"two rows for the left stick's y", 0, {"Links", "Oben/Unten"}},
        {"two rows for the right stick's x", 3, {"Rechts", "Links/Rechts"}},
        {"two rows for the right stick's y", 2, {"Rechts", "Oben/Unten"}},
        {"the left x in the right stick's place", 2, {"Links", "Links/Rechts"}},
        {"two Z-Achse", 5, {"Z-Achse", ""}},
        {"two Schubregler", 4, {"Schubregler", ""}},
        {"a stick without a direction", 0, {"Links", ""}},
        {"a direction without a stick", 3, {"", "Oben/Unten"}},
        {"nothing at all", 4, {"", ""}},
    };
    oeffnen();
    const auto vorher = dateiLesen(datei());
    Boxleser boxen;
    for (const auto& fall : faelle) {
        auto wahlen = recht;
        wahlen[fall.zeile] = fall.statt;
        waehlen(wahlen);
        const auto bisher = boxen.gesehen().size();
        knopf(0).click();
        ASSERT_EQ(boxen.gesehen().size(), bisher + 1) << fall.was;
        EXPECT_EQ(boxen.gesehen().back(), FALSCHE_EINGABE) << fall.was;
        ASSERT_EQ(formen().size(), 1U) << fall.was;
        EXPECT_EQ(dateiLesen(datei()), vorher) << fall.was;
    }

    waehlen(recht);
    knopf(0).click();
    EXPECT_EQ(boxen.gesehen().size(), faelle.size()) << "the form is still of use after a refusal";
    EXPECT_EQ(formen().size(), 0U);
}

TEST_F(AchzenKalibTest, AbbrechenSchliesstOhneZuSpeichern) {
    oeffnen();
    const auto vorher = dateiLesen(datei());
    auswahl(0).setCurrentText("Rechts");
    Boxleser boxen;
    knopf(1).click();
    EXPECT_EQ(formen().size(), 0U);
    EXPECT_EQ(dateiLesen(datei()), vorher);
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
}

TEST_F(AchzenKalibTest, FuerEinAnderesSchemaDerHauptformWirdNurAufJaGespeichert) {
    oeffnen();
    auto& combo = control<QComboBox>(haupt(), "Combo1");
    combo.setCurrentIndex(1);
    emit combo.activated(1);
    auswahl(0).setCurrentText("Schubregler");
    auswahl(5).setCurrentText("Links");
    richtung(5).setCurrentText("Links/Rechts");
    {
        Boxleser nein({QMessageBox::No});
        knopf(0).click();
        EXPECT_EQ(nein.gesehen(), std::vector<Gesehen>{ANDERES_SCHEMA});
    }
    EXPECT_EQ(gespeichert("T"), GRUNDBELEGUNG);
    ASSERT_EQ(formen().size(), 1U) << "nothing of it is lost";
    Boxleser ja({QMessageBox::Yes});
    knopf(0).click();
    EXPECT_EQ(gespeichert("S"), GRUNDBELEGUNG);
    EXPECT_EQ(gespeichert("T"), (Namen{"Z2", "ly", "rx", "ry", "Z1", "lx"}));
    EXPECT_EQ(formen().size(), 0U);
}

TEST_F(AchzenKalibTest, DieEingabetasteIstEinNein) {
    oeffnen();
    control<QComboBox>(haupt(), "Combo1").setCurrentIndex(1);
    const auto vorher = dateiLesen(datei());
    Eingabetaste taste;
    knopf(0).click();
    EXPECT_EQ(taste.gedrueckt(), 1);
    EXPECT_EQ(dateiLesen(datei()), vorher);
    EXPECT_EQ(formen().size(), 1U);
}

TEST_F(AchzenKalibTest, OhneZeileDesSchemasGiltUndBleibtWasGewaehltWurde) {
    oeffnen();
    dateiSchreiben(datei(), gamepadXmlMit("T", GRUNDBELEGUNG, "4"));
    auswahl(0).setCurrentText("Schubregler");
    auswahl(5).setCurrentText("Links");
    richtung(5).setCurrentText("Links/Rechts");
    Boxleser boxen;
    knopf(0).click();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_EQ(formen().size(), 0U);
    EXPECT_EQ(gespeichert("S"), (Namen{"Z2", "ly", "rx", "ry", "Z1", "lx"}));
    EXPECT_EQ(gespeichert("T"), GRUNDBELEGUNG);
    klicken();
    EXPECT_EQ(auswahl(0).currentText(), "Schubregler");
    EXPECT_EQ(auswahl(5).currentText(), "Links");
}

TEST_F(AchzenKalibTest, EineFremdeDateiBleibtUnberuehrt) {
    dateiSchreiben(datei(), "<html>Das ist keine Zuordnung.</html>");
    oeffnen();
    waehlen({{{"Links", "Links/Rechts"},
              {"Links", "Oben/Unten"},
              {"Rechts", "Links/Rechts"},
              {"Rechts", "Oben/Unten"},
              {"Z-Achse", ""},
              {"Schubregler", ""}}});
    Boxleser boxen;
    knopf(0).click();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.startsWith("Die Zuordnung gilt jetzt, konnte aber nicht"));
    EXPECT_EQ(formen().size(), 0U);
    EXPECT_EQ(dateiLesen(datei()), "<html>Das ist keine Zuordnung.</html>");
}

TEST_F(AchzenKalibTest, DieNeueZuordnungGiltImLauf) {
    // The slider of the run is the axis "Z1": X, from now on.
    dateiSchreiben(datei(), gamepadXmlMit("S", GRUNDBELEGUNG, "2/0-1-2-0(65,,)/0-2-2-0(66,,)"));
    oeffnen();
    auswahl(0).setCurrentText("Z-Achse");
    auswahl(4).setCurrentText("Links");
    richtung(4).setCurrentText("Links/Rechts");
    knopf(0).click();
    control<QPushButton>(haupt(), "Command1(5)").click();
    pad_.zustand.dwXpos = 60000;
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+66"});
    pad_.zustand.dwXpos = 10;
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), (std::vector<std::string>{"-66", "+65"}));
}

// --- the window ---

TEST_F(AchzenKalibTest, EsGibtNurEineUndSieKommtNachVorn) {
    oeffnen();
    auto* erste = &form();
    auswahl(0).setCurrentText("Schubregler");
    erste->showMinimized();
    klicken();
    ASSERT_EQ(formen().size(), 1U);
    EXPECT_EQ(&form(), erste);
    EXPECT_FALSE(erste->isMinimized());
    EXPECT_EQ(auswahl(0).currentText(), "Schubregler") << "it stays as it is";
}

TEST_F(AchzenKalibTest, NachDemSchliessenOeffnetSieNeu) {
    oeffnen();
    auswahl(0).setCurrentText("Schubregler");
    knopf(1).click();
    klicken(); // before the closed one has gone
    ASSERT_EQ(formen().size(), 1U);
    EXPECT_EQ(auswahl(0).currentText(), "Links");
    ereignisse();
    ASSERT_EQ(formen().size(), 1U);
    EXPECT_EQ(uhr_.laufende(), 1U);
}

TEST_F(AchzenKalibTest, OhneSchemaOeffnetSieAuch) {
    datenbank_.sql("DELETE FROM tblTastatur;");
    oeffnen();
    EXPECT_EQ(auswahl(0).currentText(), "Links");
}

TEST_F(AchzenKalibTest, DerTabulatorGehtDurchDieListenUndDannZuDenKnoepfen) {
    oeffnen();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form()));
    QStringList weg;
    for (int i = 0; i < 13; ++i) {
        weg << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(weg, (QStringList{"Auswahl(0)", "Richtung(0)", "Auswahl(1)", "Richtung(1)", "Auswahl(2)",
                                "Richtung(2)", "Auswahl(3)", "Richtung(3)", "Auswahl(4)", "Auswahl(5)",
                                "Command1(0)", "Command1(1)", "Auswahl(0)"}));
}

TEST_F(AchzenKalibTest, WaechstMitDerSchriftSodassNichtsBeschnittenIst) {
    for (const int punkt : {9, 12, 16, 24}) {
        const Schriftgrad grad(punkt);
        oeffnen();
        ereignisse();
        EXPECT_EQ(beschnittene(form()), std::vector<std::string>{}) << punkt << " points";
        const auto& regeln = control<QLabel>(form(), "Label3");
        EXPECT_EQ(regeln.height() / regeln.fontMetrics().lineSpacing(), 3) << "one line a rule";
    }
}
