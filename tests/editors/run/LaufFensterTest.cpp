// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Achse.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Gamepadxml.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <QWindow>

#include <filesystem>
#include <fstream>

namespace {

class LaufFensterForm : public Formtest {
protected:
    LaufFensterForm() {
        Schemabau(datenbank_)
            .taste(2, "1,65,0-0-0")
            .taste(3, "3,0,0-0-0")
            .taste(4, "4,0,0-0-0")
            .taste(5, "1,66,1-50-100")
            .anlegen();
    }
    /// Starts the program and the run.
    void laufen() {
        starten();
        starter().click();
    }
    QPushButton& starter() { return control<QPushButton>(haupt(), "Command1(5)"); }
    QPushButton& knopf(int index) {
        return control<QPushButton>(*laufFenster(), QString("Command1(%1)").arg(index));
    }
    QString label(const QString& name) { return control<QLabel>(*laufFenster(), name).text(); }
    /// The lines of what is held; "!" before a striking one.
    std::vector<QString> gehaltenes() {
        std::vector<QString> zeilen;
        for (int i = 0; i < 6; ++i) {
            const auto& zeile = control<QLabel>(*laufFenster(), QString("lblGehalten(%1)").arg(i));
            if (!zeile.text().isEmpty())
                zeilen.push_back((zeile.font().bold() ? "!" : "") + zeile.text());
        }
        return zeilen;
    }
    QScrollBar& leiste(const QString& name) { return control<QScrollBar>(*laufFenster(), name); }
};

struct Leiste {
    int min, max, start;
    bool operator==(const Leiste&) const = default;
};
void PrintTo(const Leiste& l, std::ostream* strom) {
    *strom << l.min << ".." << l.max << " at " << l.start;
}

} // namespace

TEST_F(LaufFensterForm, HatJedesControlMitSeinemErstenText) {
    laufen();
    auto& form = *laufFenster();
    EXPECT_EQ(form.windowTitle(), "Schema gestartet");
    EXPECT_EQ(knopf(0).text(), "Stop");
    EXPECT_EQ(knopf(1).text(), "SensiTast");
    EXPECT_EQ(
        control<QPlainTextEdit>(form, "Text2").toPlainText(),
        "Testfenster!\nDrücken Sie mit der linken Maustaste auf das Fenster, \nund testen Sie die von Ihnen "
        "eingebenen Funktionen!\n");
    EXPECT_EQ(control<QGroupBox>(form, "Frame1").title(), "Ausgabe speziel");
    EXPECT_EQ(control<QRadioButton>(form, "Option1(0)").text(), "Standart");
    EXPECT_EQ(control<QRadioButton>(form, "Option1(1)").text(), "Spezial 1");
    EXPECT_EQ(control<QRadioButton>(form, "Option1(2)").text(), "Spezial 2");
    EXPECT_EQ(label("lblUmschalt"), "");
    EXPECT_EQ(label("Label1(0)"), "Label1");
    EXPECT_EQ(label("Label1(1)"), "Label1");
    EXPECT_EQ(label("Label2"), "Label2");
    EXPECT_EQ(label("lblStErg"), "lblStErg");
    EXPECT_EQ(label("lblBeschriftung"), "lblBeschriftung");
    EXPECT_EQ(control<QLineEdit>(form, "Text1").text(), "Text1");
    EXPECT_EQ(label("Label4"), "0");
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(control<QPlainTextEdit>(form, QString("Text3(%1)").arg(i)).toPlainText(), "Text3");
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(label(QString("Erg(%1)").arg(i)), "");
}

TEST_F(LaufFensterForm, LeistenHabenIhreBereicheUndDieWerteEinesErstenStartsUndZeigenSie) {
    laufen();
    std::vector<Leiste> leisten;
    for (int i = 0; i < 12; ++i) {
        auto& eine = leiste(QString("HScroll1(%1)").arg(i));
        leisten.push_back({eine.minimum(), eine.maximum(), eine.value()});
        EXPECT_EQ(label(QString("Label3(%1)").arg(i)), QString::number(eine.value()));
        eine.setValue(15);
        EXPECT_EQ(label(QString("Label3(%1)").arg(i)), "15");
    }
    EXPECT_EQ(leisten, (std::vector<Leiste>{{1, 30, 30},
                                            {0, 15, 0},
                                            {1, 30, 30},
                                            {0, 15, 0},
                                            {0, 1000, 400},
                                            {0, 1000, 400},
                                            {1, 30, 30},
                                            {0, 15, 0},
                                            {1, 30, 30},
                                            {0, 15, 0},
                                            {0, 1000, 400},
                                            {0, 1000, 400}}));
    EXPECT_EQ(leiste("HScroll2").maximum(), 500);
    EXPECT_EQ(leiste("HScroll2").minimum(), 0);
}

TEST_F(LaufFensterForm, ZeigtGehalteneTastenImTitelUndGedrueckteButtonsImLabel) {
    laufen();
    tastenDruecken(4);
    vergehen(5);
    EXPECT_EQ(laufFenster()->windowTitle(), "2-65,");
    EXPECT_EQ(label("Label1(0)"), "4");
    auto& zahl = control<QLabel>(*laufFenster(), "Label1(0)");
    const auto* zeilen = qobject_cast<QFormLayout*>(zahl.parentWidget()->layout());
    ASSERT_NE(zeilen, nullptr);
    EXPECT_EQ(qobject_cast<QLabel*>(zeilen->labelForField(&zahl))->text(), "Knopfmaske:") << "one is pressed";
    EXPECT_TRUE(zahl.toolTip().contains("Summe"));
    tastenDruecken(0);
    vergehen(5);
    EXPECT_EQ(laufFenster()->windowTitle(), "");
    EXPECT_EQ(label("Label1(0)"), "0");
}

TEST_F(LaufFensterForm, NenntEineEbeneImTaktDerSieBetritt) {
    laufen();
    tastenDruecken(8);
    vergehen(5);
    EXPECT_EQ(label("lblUmschalt"), "Umschalttaste 1");
    vergehen(5);
    EXPECT_EQ(label("lblUmschalt"), "");
    tastenDruecken(0);
    vergehen(5);
    tastenDruecken(16);
    vergehen(5);
    EXPECT_EQ(label("lblUmschalt"), "Umschalttaste 2");
}

TEST_F(LaufFensterForm, DieEbeneStehtGrossDaSolangeSieGilt) {
    laufen();
    const auto& ebene = control<QLabel>(*laufFenster(), "lblEbene");
    EXPECT_EQ(ebene.text(), "Ebene: Standart");
    EXPECT_GT(ebene.fontMetrics().height(), laufFenster()->fontMetrics().height());
    tastenDruecken(8);
    vergehen(200);
    EXPECT_EQ(ebene.text(), "Ebene: Umschalt 1");
    vergehen(5000);
    EXPECT_EQ(ebene.text(), "Ebene: Umschalt 1");
    tastenDruecken(0);
    vergehen(20);
    tastenDruecken(16);
    vergehen(200);
    EXPECT_EQ(ebene.text(), "Ebene: Umschalt 2");
    tastenDruecken(0);
    vergehen(200);
    EXPECT_EQ(ebene.text(), "Ebene: Standart");
}

TEST_F(LaufFensterForm, SagtWasGehaltenWirdUndWieLange) {
    using Zeilen = std::vector<QString>;
    laufen();
    vergehen(200);
    EXPECT_EQ(gehaltenes(), Zeilen{"Nichts gehalten"});
    tastenDruecken(4);
    vergehen(200);
    EXPECT_EQ(gehaltenes(), Zeilen{"Kreuz → A, 0 s"});
    vergehen(3000);
    EXPECT_EQ(gehaltenes(), Zeilen{"Kreuz → A, 3 s"});
    tastenDruecken(4 + 32);
    vergehen(200);
    EXPECT_EQ(gehaltenes(), (Zeilen{"Kreuz → A, 3 s", "L 1 → B im Takt, 0 s"}));
    vergehen(7000);
    EXPECT_EQ(gehaltenes(), (Zeilen{"!⚠ Kreuz → A, 10 s", "L 1 → B im Takt, 7 s"}));
    tastenDruecken(0);
    vergehen(200);
    EXPECT_EQ(gehaltenes(), Zeilen{"Nichts gehalten"});
}

TEST_F(LaufFensterForm, ZeigtEineTasteDieDerLetzteLaufUntenGelassenHat) {
    laufen();
    tastenDruecken(4);
    vergehen(20);
    starter().click();
    tastenDruecken(0);
    starter().click();
    vergehen(1200);
    EXPECT_EQ(gehaltenes(), std::vector<QString>{"!⚠ Kreuz (losgelassen) → A, 1 s"});
}

TEST_F(LaufFensterForm, WasKeinenPlatzHatIstGezaehlt) {
    Schemabau viele(datenbank_, "V");
    for (int slot = 0; slot < 8; ++slot)
        viele.taste(slot, "1," + std::to_string(65 + slot) + ",0-0-0");
    viele.anlegen();
    datenbank_.sql("DELETE FROM tblTastatur WHERE Schemaname = 'S'");
    laufen();
    tastenDruecken(0x3F);
    vergehen(200);
    EXPECT_EQ(gehaltenes().size(), 6U);
    EXPECT_EQ(gehaltenes().back(), "L 1 → F, 0 s");
    tastenDruecken(0xFF);
    vergehen(200);
    EXPECT_EQ(gehaltenes().size(), 6U);
    EXPECT_EQ(gehaltenes().back(), "… und 3 weitere");
}

TEST_F(LaufFensterForm, SchreibtNurWasSichAendertUndZuSehenIst) {
    class Zaehler final : public QObject {
    public:
        int gemalt = 0;
        bool eventFilter(QObject*, QEvent* ereignis) override {
            gemalt += ereignis->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } zaehler;
    laufen();
    tastenDruecken(4);
    vergehen(1200);
    auto& anzeige = control<QWidget>(*laufFenster(), "Standanzeige");
    for (auto* teil : anzeige.findChildren<QLabel*>())
        teil->installEventFilter(&zaehler);
    vergehen(600); // three looks within a second
    EXPECT_EQ(zaehler.gemalt, 0);
    vergehen(400);
    EXPECT_GT(zaehler.gemalt, 0);

    laufFenster()->showMinimized();
    const auto vorher = gehaltenes();
    auto* fenster = laufFenster();
    vergehen(5000);
    EXPECT_EQ(gehaltenes(), vorher);
    fenster->showNormal();
    vergehen(200);
    EXPECT_EQ(gehaltenes(), std::vector<QString>{"Kreuz → A, 7 s"}); // the time went on
}

TEST_F(LaufFensterForm, OhneTastennamenStehtDieNummerDa) {
    datenbank_.sql("DROP TABLE tblKeyCode");
    laufen();
    tastenDruecken(4);
    vergehen(200);
    EXPECT_EQ(gehaltenes(), std::vector<QString>{"Kreuz → Taste 65, 0 s"});
}

TEST_F(LaufFensterForm, DasFensterSagtDassSeinSchliessenDenLaufBeendet) {
    laufen();
    EXPECT_EQ(laufFenster()->toolTip(), "Schließen des Fensters beendet das Schema.");
    EXPECT_EQ(control<QLabel>(*laufFenster(), "lblGehalten(0)").toolTip(),
              "Was gerade gehalten wird und wovon. Die Felder eines Sticks sind von der Mitte aus gezählt.");
    const QPointer<QWidget> fenster = laufFenster();
    fenster->close();
    ereignisse();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
}

TEST_F(LaufFensterForm, EinLeererTitelZeigtNichtDenNamenDesProgramms) {
    laufen();
    tastenDruecken(4);
    vergehen(5);
    EXPECT_EQ(laufFenster()->windowHandle()->title(), "2-65,");
    tastenDruecken(0);
    vergehen(5);
    EXPECT_EQ(laufFenster()->windowTitle(), "");
    EXPECT_EQ(laufFenster()->windowHandle()->title(), "Schema gestartet");
}

TEST_F(LaufFensterForm, StopHaeltDieAbfrageAnUndStartSetztSieFort) {
    laufen();
    knopf(0).click();
    EXPECT_EQ(knopf(0).text(), "Start");
    tastenDruecken(4);
    vergehen(100);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{});
    knopf(0).click();
    EXPECT_EQ(knopf(0).text(), "Stop");
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+65"});
}

TEST_F(LaufFensterForm, KlapptDasTestfensterAusUndZurueck) {
    laufen();
    EXPECT_EQ(laufFenster()->height(), 187);
    EXPECT_FALSE(control<QPlainTextEdit>(*laufFenster(), "Text2").isVisible());
    knopf(1).click();
    EXPECT_EQ(knopf(1).text(), "Start");
    EXPECT_EQ(laufFenster()->height(), 507);
    EXPECT_TRUE(control<QPlainTextEdit>(*laufFenster(), "Text2").isVisible());
    tastenDruecken(4);
    vergehen(100);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{}) << "folding out halts the poll";

    knopf(1).click();
    EXPECT_EQ(knopf(1).text(), "SensiTast");
    EXPECT_EQ(laufFenster()->height(), 187);
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+65"});
}

TEST_F(LaufFensterForm, JederKnopfRichtetSichNachSeinerEigenenAufschrift) {
    laufen();
    knopf(1).click(); // halted by folding out
    knopf(0).click(); // says "Stop": halts what is halted
    EXPECT_EQ(knopf(0).text(), "Start");
    knopf(0).click(); // resumes although the panel is out
    tastenDruecken(4);
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+65"});
    EXPECT_EQ(knopf(1).text(), "Start");
}

TEST_F(LaufFensterForm, DieSpurlabelErscheinenMitDemTestfenster) {
    laufen();
    tastenDruecken(32); // slot 5 pulses: 50 ms down, 100 ms pause
    vergehen(70);
    tastenDruecken(0); // let go within the pause
    vergehen(5);
    EXPECT_EQ(label("Erg(2)"), "") << "not written while the panel is folded";
    knopf(1).click();
    EXPECT_EQ(label("Erg(2)"), "0");
}

TEST_F(LaufFensterForm, WiederholtEineGehalteneTasteImAbstandSeinerLeiste) {
    laufen();
    leiste("HScroll2").setValue(30);
    EXPECT_EQ(label("Label4"), "30");
    tastenDruecken(4);
    vergehen(5 + 95);
    tastenDruecken(0);
    vergehen(500);
    EXPECT_EQ(eingabe_.texteAbholen(), (std::vector<std::string>{"+65", "+65", "+65", "+65", "-65"}));
}

TEST_F(LaufFensterForm, ZeigtDieGespeicherteAusgabeart) {
    datenbank_.sql("UPDATE tblTastatur SET Funktion = 2;");
    laufen();
    EXPECT_TRUE(control<QRadioButton>(*laufFenster(), "Option1(2)").isChecked());
}

TEST_F(LaufFensterForm, EineUnbekannteAusgabeartLaesstDieErste) {
    datenbank_.sql("UPDATE tblTastatur SET Funktion = 7;");
    laufen();
    EXPECT_TRUE(control<QRadioButton>(*laufFenster(), "Option1(0)").isChecked());
    EXPECT_EQ(datenbank_.zeilen("SELECT Funktion FROM tblTastatur"), (Tabellenbild{{"7"}}));
}

TEST_F(LaufFensterForm, SpeichertEineGewaehlteAusgabeartSogleich) {
    laufen();
    control<QRadioButton>(*laufFenster(), "Option1(1)").click();
    EXPECT_EQ(datenbank_.zeilen("SELECT Funktion FROM tblTastatur"), (Tabellenbild{{"1"}}));
}

TEST_F(LaufFensterForm, EineGesperrteDatenbankBehaeltDieAusgabeartUndDerLaufGehtWeiter) {
    laufen();
    Boxleser boxen;
    {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN EXCLUSIVE;");
        control<QRadioButton>(*laufFenster(), "Option1(1)").click();
    }
    ereignisse();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3218")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_NE(datenbank_.zeilen("SELECT Funktion FROM tblTastatur"), (Tabellenbild{{"1"}}));
    tastenDruecken(4);
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+65"});
}

TEST_F(LaufFensterForm, EinLaufDerUnterSeinerOffenenMeldungEndetNimmtSieMit) {
    datenbank_.sql("UPDATE tblTastatur SET btn1 = '1,A,0-0-0';");
    laufen();
    RoheVerbindung andere(datenbank_.pfad());
    andere.sql("BEGIN EXCLUSIVE;");
    QStringList titel;
    QTimer antwort;
    QObject::connect(&antwort, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || titel.contains(box->windowTitle()))
            return;
        titel << box->windowTitle();
        if (box->windowTitle() == "Schema gestoppt") {
            box->accept();
            return;
        }
        tastenDruecken(1); // a `Belegung` that can't be read, while the first box is still open
        uhr_.vorUm(std::chrono::milliseconds{5});
    });
    antwort.start(0);
    control<QRadioButton>(*laufFenster(), "Option1(1)").click();
    ereignisse();

    EXPECT_EQ(titel, (QStringList{"Ausgabe speziel", "Schema gestoppt"}));
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(LaufFensterForm, EineGesperrteDatenbankLaesstKeinenLaufBeginnen) {
    starten();
    Boxleser boxen;
    {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN EXCLUSIVE;");
        starter().click();
    }
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].titel, "Schema starten");
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(starter().text(), "Schema starten");
}

TEST_F(LaufFensterForm, EinFehlerhafterSchubreglerTextLaesstKeinenLaufBeginnen) {
    starten();
    const std::vector<std::string> achsen(ACHSENNAMEN.begin(), ACHSENNAMEN.end());
    std::ofstream(datenbank_.ordner() / "Gamepad.xml") << gamepadXmlMit("S", achsen, "4/");
    Boxleser boxen;
    starter().click();

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].titel, "Schema starten");
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("Schubregler")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(starter().text(), "Schema starten");
    EXPECT_EQ(uhr_.laufende(), 0U);

    std::filesystem::remove(datenbank_.ordner() / "Gamepad.xml");
    starter().click();
    EXPECT_NE(laufFenster(), nullptr) << "the next run starts as ever";
    EXPECT_EQ(boxen.gesehen().size(), 1U);
}

TEST_F(LaufFensterForm, EinStickOhneLinieStopptDenLaufUndWirdDannEinmalGesagt) {
    laufen(); // lays the stick's rows
    laufFenster()->close();
    ereignisse();
    datenbank_.sql("UPDATE tblStick SET Oben = 0;");
    Boxleser boxen;
    starter().click();
    vergehen(1000);

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].titel, "Schema gestoppt");
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("keine Linie")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(starter().text(), "Schema starten");
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_F(LaufFensterForm, EineNurLesbareDatenbankLaesstEinenLaufBeginnen) {
    datenbank_.sql("UPDATE tblTastatur SET Funktion = 2;");
    laufen(); // a first run lays the rows that every later one finds
    laufFenster()->close();
    ereignisse();
    RoheVerbindung andere(datenbank_.pfad());
    andere.sql("BEGIN IMMEDIATE;"); // others may read, nobody may write
    Boxleser boxen;
    starter().click();

    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_TRUE(control<QRadioButton>(*laufFenster(), "Option1(2)").isChecked());
    tastenDruecken(4);
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+65"});
}

TEST_F(LaufFensterForm, BehaeltDieLeistenVonEinemLaufZumNaechsten) {
    laufen();
    for (int i = 0; i < 12; ++i)
        leiste(QString("HScroll1(%1)").arg(i)).setValue(i + 2);
    leiste("HScroll2").setValue(77);
    laufFenster()->close();
    ereignisse();
    EXPECT_EQ(datenbank_.zeilen("SELECT * FROM Sensible"),
              (Tabellenbild{{"S", "2", "4", "3", "5", "6", "7", "77"}}));
    EXPECT_EQ(datenbank_.zeilen("SELECT * FROM SensibleR"),
              (Tabellenbild{{"S", "8", "10", "9", "11", "12", "13"}}));

    starter().click();
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(leiste(QString("HScroll1(%1)").arg(i)).value(), i + 2) << i;
    EXPECT_EQ(leiste("HScroll2").value(), 77);
    EXPECT_EQ(label("Label4"), "77");
}

TEST_F(LaufFensterForm, LeistenDieSichNichtSpeichernLassenGebenEineBoxUndDerLaufEndet) {
    laufen();
    leiste("HScroll1(4)").setValue(17);
    RoheVerbindung andere(datenbank_.pfad());
    andere.sql("BEGIN IMMEDIATE;");
    Boxleser boxen;
    laufFenster()->close();
    ereignisse();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].titel, "Einstellungen nicht gespeichert");
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_F(LaufFensterForm, EineBewegteLeisteBeginntDieGlaettungNeu) {
    laufen();
    vergehen(5);
    EXPECT_TRUE(uhr_.laeuft(3939));
    leiste("HScroll1(3)").setValue(4);
    EXPECT_FALSE(uhr_.laeuft(3939));
    vergehen(5);
    EXPECT_TRUE(uhr_.laeuft(3939));
}

TEST_F(LaufFensterForm, EineLeisteZaehltWaehrendSieGezogenWird) {
    laufen();
    vergehen(5);
    auto& eine = leiste("HScroll1(4)");
    eine.setSliderDown(true);
    eine.setSliderPosition(17);
    EXPECT_EQ(label("Label3(4)"), "17");
    EXPECT_FALSE(uhr_.laeuft(3939));
    eine.setSliderDown(false);
    EXPECT_EQ(eine.value(), 17);
}

TEST_F(LaufFensterForm, BerichteDerGlaettungKommenNurSolangeDasTestfensterZuSehenIst) {
    const auto bericht = [this] { return control<QPlainTextEdit>(*laufFenster(), "Text3(0)").toPlainText(); };
    laufen();
    pad_.zustand.dwXpos = 30000;
    vergehen(100);
    EXPECT_EQ(bericht(), "Text3");

    auto& halt = control<QPushButton>(*laufFenster(), "Command1(0)");
    auto& sensitast = control<QPushButton>(*laufFenster(), "Command1(1)");
    sensitast.click(); // folds out and halts the poll,
    halt.click();
    halt.click(); // which goes on with the panel in sight
    vergehen(100);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bericht() == "30 --- 0\n30000  ---  29\n\n29 --- 30000"; }))
        << bericht().toStdString();

    sensitast.click();
    pad_.zustand.dwXpos = 100;
    vergehen(100);
    QTest::qWait(100);
    EXPECT_EQ(bericht(), "30 --- 0\n30000  ---  29\n\n29 --- 30000");
}

TEST_F(LaufFensterForm, ZeigtDieZonenBeiderSticksImTestfenster) {
    laufen();
    control<QPushButton>(*laufFenster(), "Command1(1)").click();
    control<QPushButton>(*laufFenster(), "Command1(0)").click();
    control<QPushButton>(*laufFenster(), "Command1(0)").click();
    pad_.zustand.dwXpos = 100;
    pad_.zustand.dwRpos = 65000;
    vergehen(20);
    EXPECT_EQ(label("Erg(0)"), "Links:  27072");
    EXPECT_EQ(label("Erg(1)"), "Mitte:  ");
    EXPECT_EQ(label("Erg(5)"), "Mitte:  ");
    EXPECT_EQ(label("Erg(6)"), "Unten:  39679");
}

TEST_F(LaufFensterForm, ZeigtDieAktionEinesFeldesWieSieGeschriebenIst) {
    const QString aktion = "3,<b>fett</b>";
    Schemabau(datenbank_).feld(Stickseite::Links, {27072, 0, 0, 0}, aktion.toStdString()).ergaenzen();
    laufen();
    knopf(1).click();
    knopf(0).click();
    knopf(0).click();
    pad_.zustand.dwXpos = 100;
    vergehen(20);
    const auto& feld = control<QLabel>(*laufFenster(), "Erg(3)");
    EXPECT_EQ(feld.text(), aktion);
    EXPECT_GE(feld.sizeHint().width(), feld.fontMetrics().horizontalAdvance(aktion)) << "taken for markup";
}

TEST_F(LaufFensterForm, OhnePadWirdNichtsGedruecktUndEinPadDarfSpaeterKommen) {
    pad_.da = false;
    laufen();
    vergehen(1000);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{});
    pad_.da = true;
    tastenDruecken(4);
    vergehen(5);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+65"});
}

TEST_F(LaufFensterForm, WaechstMitDerSchriftSodassNichtsBeschnittenIst) {
    for (const int punkt : {9, 12, 16, 24}) {
        const Schriftgrad grad(punkt);
        laufen();
        ereignisse();
        EXPECT_EQ(beschnittene(*laufFenster()), std::vector<std::string>{}) << punkt << " points, folded";
        knopf(1).click();
        ereignisse();
        EXPECT_EQ(beschnittene(*laufFenster()), std::vector<std::string>{}) << punkt << " points, unfolded";
        starter().click();
        ereignisse();
    }
}
