// SPDX-License-Identifier: GPL-3.0-or-later
// Records of the whole program on fakes: saved by the user and by an error, and random plays of a minute that
// bring the same when they are played again. How many of these, MITSCHNITT_SPIELE says.
#include "editors/common/Formhilfen.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Gamepadxml.h"
#include "tests/spur/Spieler.h"
#include "tests/spur/Zufallsspur.h"

#include "base/Regler.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QScrollBar>

#include <cstdlib>
#include <fstream>
#include <random>

namespace {

namespace fs = std::filesystem;
using Art = Spureingabe::Art;
using std::chrono::milliseconds;

constexpr int EINGABEN = 500; // about a minute
const QString GESPEICHERT = "Gespeichert: ";
const QString GEHT_NICHT = "Der Mitschnitt ist nicht gespeichert: ";

class MitschnittForm : public Formtest {
protected:
    void schema(const std::string& belegung = "1,65,0-0-0") {
        Schemabau(datenbank_).taste(2, belegung).taste(3, "1,x,0-0-0").anlegen();
        starten();
    }
    QPushButton& starter() { return control<QPushButton>(haupt(), "Command1(5)"); }
    fs::path mitschnitte() const { return datenbank_.ordner() / "Mitschnitte"; }

    /// What "Mitschnitt speichern" saves, and what the window says of it.
    std::string gespeichert() {
        QTest::keyClick(laufFenster(), Qt::Key_M, Qt::ControlModifier);
        auto& meldung = control<QLabel>(*laufFenster(), "lblMitschnitt");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !meldung.text().isEmpty(); }, 20'000));
        gemeldet_ = meldung.text();
        EXPECT_TRUE(gemeldet_.startsWith(GESPEICHERT)) << gemeldet_.toStdString();
        return dateiLesen(mitschnitte() / gemeldet_.mid(GESPEICHERT.size()).toStdString());
    }
    /// The only one.
    std::string einziger() const {
        const auto namen = namenIn(mitschnitte());
        return namen.size() == 1 ? dateiLesen(mitschnitte() / namen.front()) : "";
    }
    /// The first difference to what playing it brings, in time, too.
    static std::string unterschiedBeim(const std::string& mitschnitt) {
        const auto szenario = szenarienLesen(mitschnitt).front();
        const auto ergebnis = spielen(szenario, LEERE_DATENBANK);
        auto genau = szenario;
        genau.toleranz = milliseconds{0};
        return unterschied(genau, ergebnis);
    }

    QString gemeldet_;
};

/// Plays the inputs of a trace by the program's own window.
class Zufallsspiel : public MitschnittForm {
protected:
    std::string spielenUndSpeichern(std::uint32_t saat) {
        zufall_.seed(saat);
        const auto szenario = szenarienLesen(zufallsspur(saat, EINGABEN)).front();
        for (const auto& anweisung : szenario.sql)
            datenbank_.sql(anweisung);
        std::ofstream(datenbank_.ordner() / "Gamepad.xml")
            << gamepadXmlMit("S", szenario.achsen, szenario.schub);
        pad_.kannWachen = saat % 3 != 0;
        uhr_.versetzen([this, saat](milliseconds, std::uint32_t) {
            return milliseconds{wuerfeln(1000) <= static_cast<int>(saat % 40) ? wuerfeln(3) : 0};
        });
        starten();
        for (const auto& eingabe : szenario.eingaben) {
            vorruecken(eingabe.zeit, static_cast<int>(saat % 40));
            ausfuehren(eingabe);
            pad_.melden();
        }
        if (!laufFenster())
            starter().click();
        return gespeichert();
    }

private:
    int wuerfeln(int hoechstens) {
        return 1 + static_cast<int>(zufall_() % static_cast<unsigned>(hoechstens));
    }

    void vorruecken(milliseconds ziel, int stockungen) {
        while (uhr_.jetzt() < ziel) {
            if (wuerfeln(1000) <= stockungen)
                uhr_.verschlafen(uhr_.jetzt() + milliseconds{wuerfeln(25)});
            uhr_.vorVor(uhr_.jetzt() + milliseconds{1});
        }
    }

    void ausfuehren(const Spureingabe& eingabe) {
        auto& z = pad_.zustand;
        const std::array<std::uint32_t*, 6> achsen{&z.dwXpos, &z.dwYpos, &z.dwZpos,
                                                   &z.dwRpos, &z.dwUpos, &z.dwVpos};
        if (eingabe.art == Art::Start || eingabe.art == Art::Stop) {
            starter().click();
            ereignisse();
        } else if (eingabe.art == Art::Tasten) {
            z.dwButtons = eingabe.wert;
        } else if (eingabe.art == Art::Pov) {
            z.dwPOV = eingabe.wert;
        } else if (eingabe.art == Art::Achse) {
            *achsen[eingabe.index] = eingabe.wert;
        } else if (eingabe.art == Art::PadWeg || eingabe.art == Art::PadDa) {
            pad_.da = eingabe.art == Art::PadDa;
        } else if (laufFenster()) {
            bedienen(eingabe);
        }
    }

    void bedienen(const Spureingabe& eingabe) {
        const auto index = static_cast<int>(eingabe.index);
        if (eingabe.art == Art::Knopf)
            control<QPushButton>(*laufFenster(), feldname("Command1", index)).click();
        else if (eingabe.art == Art::Regler)
            control<QScrollBar>(*laufFenster(), index == REGLER ? "HScroll2" : feldname("HScroll1", index))
                .setValue(static_cast<int>(eingabe.wert));
    }

    std::mt19937 zufall_;
};

} // namespace

TEST_F(MitschnittForm, StrgMSpeichertWasSichWiederSpielenLaesst) {
    schema();
    starter().click();
    vergehen(500);
    tastenDruecken(4);
    vergehen(100);
    tastenDruecken(0);
    vergehen(100);
    const auto mitschnitt = gespeichert();
    EXPECT_NE(mitschnitt.find(" +65\n"), std::string::npos) << mitschnitt;
    EXPECT_EQ(unterschiedBeim(mitschnitt), "");
    ASSERT_EQ(namenIn(mitschnitte()).size(), 1U);
    EXPECT_EQ(gemeldet_, "Gespeichert: " + qt(namenIn(mitschnitte())[0]));
    EXPECT_TRUE(gemeldet_.startsWith("Gespeichert: S 20")) << gemeldet_.toStdString();
}

TEST_F(MitschnittForm, DerPfadDesSpielsStehtNichtDarin) {
    schema();
    datenbank_.sql("UPDATE tblTastatur SET Programmpfad = '/home/jemand/spiel';");
    starter().click();
    vergehen(100);
    EXPECT_EQ(gespeichert().find("jemand"), std::string::npos);
}

TEST_F(MitschnittForm, WasNachDemSpeichernGeschiehtStehtErstImNaechsten) {
    schema();
    starter().click();
    vergehen(100);
    const auto erster = gespeichert();
    tastenDruecken(4);
    vergehen(100);
    control<QLabel>(*laufFenster(), "lblMitschnitt").clear();
    const auto zweiter = gespeichert();
    EXPECT_EQ(erster.find("+65"), std::string::npos);
    EXPECT_NE(zweiter.find("+65"), std::string::npos);
    EXPECT_EQ(unterschiedBeim(zweiter), "");
}

TEST_F(MitschnittForm, EinZweiterLaufErbtWasDerErsteHielt) {
    schema();
    starter().click();
    vergehen(100);
    tastenDruecken(4); // goes on being held
    vergehen(100);
    starter().click();
    ereignisse();
    datenbank_.sql("UPDATE tblTastatur SET btn5 = '1,66,0-0-0';"); // of other rows: a record of its own
    starter().click();
    vergehen(100);
    tastenDruecken(0);
    vergehen(100);
    const auto mitschnitt = gespeichert();
    EXPECT_NE(mitschnitt.find("zustand gehaltene 2/65/65\n"), std::string::npos) << mitschnitt;
    EXPECT_EQ(mitschnitt.find("stop"), std::string::npos) << "the first run is not in it";
    EXPECT_NE(mitschnitt.find("-65"), std::string::npos);
    EXPECT_EQ(unterschiedBeim(mitschnitt), "");
}

TEST_F(MitschnittForm, WasImLaufGeaendertWurdeGiltImNaechsten) {
    schema();
    starter().click();
    vergehen(100);
    datenbank_.sql("UPDATE tblTastatur SET btn3 = '1,66,0-0-0';"); // as an editor does that stands open
    starter().click();
    ereignisse();
    starter().click();
    vergehen(100);
    tastenDruecken(4);
    vergehen(100);
    const auto mitschnitt = gespeichert();
    EXPECT_NE(mitschnitt.find(" +66\n"), std::string::npos) << mitschnitt;
    EXPECT_EQ(unterschiedBeim(mitschnitt), "");
}

TEST_F(MitschnittForm, GenauIstErNurBisEinEditorDieZeilenAendert) {
    Schemabau(datenbank_).taste(4, "3,0,0-0-0").taste(2, "1,65,0-0-0").anlegen();
    starten();
    starter().click();
    vergehen(30'000); // some quiet moments
    tastenDruecken(4);
    vergehen(100);
    tastenDruecken(0);
    vergehen(30'000);
    EXPECT_EQ(gespeichert().find("genau"), std::string::npos);
    datenbank_.sql("INSERT INTO tblStickAktion VALUES ('S', 1, 27072, 0, 0, 0, '2,0,70,0,0');");
    vergehen(30'000);
    tastenDruecken(16); // a layer whose rows are read anew
    vergehen(100);
    pad_.zustand.dwXpos = 10000;
    vergehen(2000);
    control<QLabel>(*laufFenster(), "lblMitschnitt").clear();
    const auto mitschnitt = gespeichert();
    EXPECT_NE(mitschnitt.find(" +70\n"), std::string::npos) << mitschnitt;
    EXPECT_EQ(mitschnitt.find("0 lauf"), std::string::npos);
    const auto szenario = szenarienLesen(mitschnitt).front();
    ASSERT_TRUE(szenario.genau);
    EXPECT_GE(*szenario.genau, milliseconds{60'000});
    EXPECT_LT(*szenario.genau, milliseconds{61'000}) << "the last look was that of saving before";
    EXPECT_EQ(unterschiedBeim(mitschnitt), "");
    auto ohne = szenario;
    ohne.genau.reset();
    EXPECT_NE(unterschied(ohne, spielen(ohne, LEERE_DATENBANK)), "") << "this is why it says so";
}

TEST_F(MitschnittForm, GenauIstErNurBisEineEbeneGesperrtWird) {
    schema();
    const Boxleser boxen;
    control<QPushButton>(haupt(), "Command1(1)").click(); // the left stick's editor
    ereignisse();
    QWidget* editor = nullptr;
    for (auto* fenster : QApplication::topLevelWidgets())
        if (fenster->objectName() == "frmJust" && fenster->isVisible())
            editor = fenster;
    ASSERT_NE(editor, nullptr);
    starter().click();
    vergehen(1234);
    control<QCheckBox>(*editor, "Check2").click();
    vergehen(1000);
    const auto szenario = szenarienLesen(gespeichert()).front();
    ASSERT_TRUE(szenario.genau);
    EXPECT_NEAR(static_cast<double>(szenario.genau->count()), 1234, 5);
}

TEST_F(MitschnittForm, WasNurGezeigtWirdAendertNichts) {
    schema();
    starter().click();
    vergehen(1000);
    control<QRadioButton>(*laufFenster(), "Option1(2)").click();
    EXPECT_EQ(datenbank_.zeilen("SELECT Funktion FROM tblTastatur;"), Tabellenbild{{"2"}});
    vergehen(1000);
    EXPECT_EQ(gespeichert().find("genau"), std::string::npos);
}

TEST_F(MitschnittForm, EinSchemaDasEsNichtGibtBekommtKeineAchsen) {
    schema();
    control<QComboBox>(haupt(), "Combo1").setEditText("Nirgends");
    const Boxleser boxen;
    starter().click();
    ereignisse();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(dateiLesen(datenbank_.ordner() / "Gamepad.xml").find("Nirgends"), std::string::npos);
}

TEST_F(MitschnittForm, EinFehlerSpeichertSelbstUndSagtWo) {
    schema();
    starter().click();
    vergehen(100);
    QString dazu;
    QTimer leser;
    QObject::connect(&leser, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            dazu = box->informativeText();
            box->accept();
        }
    });
    leser.start(0);
    tastenDruecken(8);
    vergehen(100);
    EXPECT_EQ(laufFenster(), nullptr);
    ASSERT_EQ(namenIn(mitschnitte()).size(), 1U);
    EXPECT_EQ(dazu, QString("Was zuletzt geschah, liegt im Ordner „Mitschnitte“: „%1“.")
                        .arg(qt(namenIn(mitschnitte())[0])));
    EXPECT_NE(einziger().find("fehler 13\n"), std::string::npos);
    EXPECT_EQ(unterschiedBeim(einziger()), "");
}

TEST_F(MitschnittForm, EinOrdnerDerNichtGehtWirdImFensterGesagt) {
    schema();
    dateiSchreiben(mitschnitte(), "kein Ordner");
    starter().click();
    vergehen(100);
    QTest::keyClick(laufFenster(), Qt::Key_M, Qt::ControlModifier);
    auto& meldung = control<QLabel>(*laufFenster(), "lblMitschnitt");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !meldung.text().isEmpty(); }, 20'000));
    EXPECT_TRUE(meldung.text().startsWith(GEHT_NICHT)) << meldung.text().toStdString();
    EXPECT_EQ(meldung.toolTip(), meldung.text()) << "it is too long for its place";
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(MitschnittForm, EinRuhepunktMittenImLaufTraegtAllein) {
    pad_.kannWachen = true; // so the poll rests nearly all the time
    schema();
    starter().click();
    const auto spiel = [&](int minuten) {
        for (int i = 0; i < minuten * 6; ++i) {
            tastenDruecken(4);
            pad_.melden();
            vergehen(50);
            tastenDruecken(0);
            pad_.melden();
            vergehen(9950);
        }
    };
    spiel(12);
    const auto mitschnitt = gespeichert();
    EXPECT_NE(mitschnitt.find("\n0 lauf\n"), std::string::npos);
    EXPECT_EQ(mitschnitt.find("start"), std::string::npos);
    const auto szenario = szenarienLesen(mitschnitt).front();
    EXPECT_GE(szenario.eingaben.back().zeit, std::chrono::minutes{10});
    EXPECT_LT(szenario.eingaben.back().zeit, std::chrono::minutes{11}) << "one a minute at least";
    EXPECT_GE(szenario.erwartet.size(), 120U);
    EXPECT_EQ(unterschiedBeim(mitschnitt), "");
}

class Zufallsspiele : public Zufallsspiel {};

TEST_F(Zufallsspiele, BringenDasselbe) {
    const char* gewuenscht = std::getenv("MITSCHNITT_SPIELE");
    const char* erstes = std::getenv("MITSCHNITT_SAAT");
    const int spiele = gewuenscht ? std::atoi(gewuenscht) : 2;
    const int saat = erstes ? std::atoi(erstes) : 1;
    ASSERT_GT(spiele, 0);
    for (int i = 0; i < spiele; ++i) {
        struct Einzelspiel final : Zufallsspiel {
            using Zufallsspiel::spielenUndSpeichern;
            using Zufallsspiel::unterschiedBeim;
            void TestBody() override {}
        } einzelnes;
        const auto mitschnitt = einzelnes.spielenUndSpeichern(static_cast<std::uint32_t>(saat + i));
        EXPECT_GT(mitschnitt.size(), 1000U);
        ASSERT_EQ(Einzelspiel::unterschiedBeim(mitschnitt), "") << "seed " << saat + i << '\n' << mitschnitt;
    }
}
