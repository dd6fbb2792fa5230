// SPDX-License-Identifier: GPL-3.0-or-later
// The stick editors beside each other and beside a run: in whatever order they go, the rest goes on.
#include "editors/run/Laufsteuerung.h"
#include "editors/stick/frmJust.h"
#include "tests/editors/stick/Justiertest.h"

#include <algorithm>
#include <array>

namespace {

class FrmJustZusammen : public Justiertest {
protected:
    FrmJustZusammen() : Justiertest(LINKER_ZWILLING) {
        schema();
        linien();
    }
    /// Both editors, and a run that the right one has started.
    void allesOeffnen() {
        starten();
        for (const int knopf : {1, 6}) {
            control<QPushButton>(haupt(), QString("Command1(%1)").arg(knopf)).click();
            ereignisse();
        }
        control<QPushButton>(*formNamens("frmJustr"), "Command1(1)").click();
        ereignisse();
    }
    static bool da(const QString& name) { return formNamens(name) != nullptr; }
    static void klickAuf(const QString& form, double x, double y) {
        auto& ebene = control<QWidget>(*formNamens(form), "Stickebene");
        const QPointF wo{x * ebene.width() / 65535, y * ebene.height() / 65535};
        QMouseEvent ereignis(QEvent::MouseButtonPress, wo, ebene.mapToGlobal(wo), Qt::LeftButton,
                             Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&ebene, &ereignis);
        ereignisse();
    }
    static void zieheAuf(const QString& form, double x, double y) {
        auto& ebene = control<QWidget>(*formNamens(form), "Stickebene");
        bewegen(ebene, {x * ebene.width() / 65535, y * ebene.height() / 65535});
    }
};

const std::array<const char*, 3> FENSTER{"LaufFenster", "frmJust", "frmJustr"};

} // namespace

TEST_F(FrmJustZusammen, InJederReihenfolgeGeschlossenBleibtNichtsStehen) {
    auto reihe = FENSTER;
    std::ranges::sort(reihe, {}, [](const char* name) { return std::string(name); });
    do {
        allesOeffnen();
        for (const char* name : FENSTER)
            ASSERT_TRUE(da(name)) << name;
        for (const char* name : reihe) {
            formNamens(name)->close();
            vergehen(50);
            EXPECT_FALSE(da(name)) << name;
        }
        EXPECT_TRUE(haupt().isVisible()) << reihe[0] << ", " << reihe[1] << ", " << reihe[2];
        EXPECT_EQ(uhr_.laufende(), 0U);
    } while (
        std::ranges::next_permutation(reihe, {}, [](const char* name) { return std::string(name); }).found);
}

TEST_F(FrmJustZusammen, BeidePunkteUndDerLaufLesenDasselbePad) {
    allesOeffnen();
    pad_.zustand.dwXpos = 60000;
    pad_.zustand.dwRpos = 1000;
    vergehen(5);
    const auto punkt = [](const char* form) { return control<QWidget>(*formNamens(form), "Punkt").pos(); };
    const auto groesse = control<QWidget>(*formNamens("frmJust"), "Stickebene").size();
    EXPECT_TRUE(nahe(punkt("frmJust").x(), 60000, groesse.width()));
    EXPECT_TRUE(nahe(punkt("frmJust").y(), 32767, groesse.height()));
    EXPECT_TRUE(nahe(punkt("frmJustr").x(), 32767, groesse.width()));
    EXPECT_TRUE(nahe(punkt("frmJustr").y(), 1000, groesse.height()));
    EXPECT_TRUE(da("LaufFenster"));
}

TEST_F(FrmJustZusammen, JedeHaeltIhreLinieFuerSich) {
    allesOeffnen();
    klickAuf("frmJust", 20000, 33000);
    klickAuf("frmJustr", 33000, 46000);
    zieheAuf("frmJust", 15000, 33000);
    zieheAuf("frmJustr", 33000, 50000);
    klickAuf("frmJust", 15000, 33000);
    klickAuf("frmJustr", 33000, 50000);
    const auto erste = [this](const std::string& tabelle) {
        return datenbank_.zeilen("SELECT Links, Unten FROM " + tabelle + " WHERE \"index\" = 1;")[0];
    };
    EXPECT_EQ(erste("tblStick"), (std::vector<std::string>{"15000", "46000"}));
    EXPECT_EQ(erste("tblStickR"), (std::vector<std::string>{"20000", "50000"}));
}

TEST_F(FrmJustZusammen, EndDesEinenBeendetDenLaufUndLaesstDenAnderen) {
    allesOeffnen();
    control<QPushButton>(*formNamens("frmJustr"), "Command1(0)").click();
    ereignisse();
    EXPECT_FALSE(da("LaufFenster"));
    EXPECT_FALSE(da("frmJustr"));
    ASSERT_TRUE(da("frmJust"));
    vergehen(50);
    klickAuf("frmJust", 33000, 33000);
    EXPECT_FALSE(control<QWidget>(*formNamens("frmJust"), "RechteckB").isHidden());
}

// The form of the pictures sends also the editor into layer 0 that did not open it.
TEST_F(FrmJustZusammen, NeueBilderNehmenEinemGewaehltenFeldNichtSeineEbene) {
    for (const bool mitTafel : {true, false}) {
        starten();
        const std::array<std::pair<const char*, int>, 2> reihe{{{"frmJustr", 6}, {"frmJust", 1}}};
        for (const auto& [name, knopf] : reihe) {
            control<QPushButton>(haupt(), QString("Command1(%1)").arg(knopf)).click();
            ereignisse();
        }
        control<QRadioButton>(form(), "Uschalt(2)").click();
        klickAuf("frmJust", 10000, 10000);
        if (mitTafel) {
            klick(10000, 10000, Qt::RightButton);
            control<QRadioButton>(form(), "Option1(4)").click();
        }
        control<QPushButton>(*formNamens("frmJustr"), "Command1(2)").click();
        ereignisse();
        ASSERT_TRUE(da("ScreenChecken"));
        Boxleser boxen;
        formNamens("ScreenChecken")->close();
        vergehen(50);
        ASSERT_TRUE(da("frmJustr"));
        EXPECT_TRUE(control<QRadioButton>(form(), "Uschalt(2)").isChecked());
        EXPECT_FALSE(control<QWidget>(form(), "Frame2").isEnabled());
        klickAuf("frmJust", 10000, 10000);
        EXPECT_EQ(aktionen(),
                  mitTafel ? (Tabellenbild{{"2", "20200", "0", "21200", "0", "4"}}) : Tabellenbild{});
        EXPECT_TRUE(control<QWidget>(form(), "RechteckB").isHidden());
        EXPECT_TRUE(boxen.gesehen().empty());
        datenbank_.sql("DELETE FROM tblStickAktion;");
        programm_.reset();
        ereignisse();
    }
}

TEST_F(FrmJustZusammen, DasProgrammEndetAuchWennAllesOffenIst) {
    allesOeffnen();
    klickAuf("frmJust", 20000, 33000); // a line in the hand
    klickAuf("frmJustr", 33000, 33000);
    haupt().close();
    ereignisse();
    EXPECT_FALSE(da("LaufFenster"));
    programm_.reset();
    ereignisse();
    for (const char* name : FENSTER)
        EXPECT_FALSE(da(name)) << name;
    EXPECT_EQ(uhr_.laufende(), 0U);
    EXPECT_EQ(linie("Links", 1), "20000");
}

// --- what the forms leave in the state that all share ---

class FrmJustZustand : public Justiertest, public ::testing::WithParamInterface<Zwilling> {
protected:
    FrmJustZustand() : Justiertest(GetParam()) {
        schema();
        linien();
        zustand_.global.DatenbankPfad = datenbank_.pfad();
        zustand_.global.SchemaName = "S";
    }

    Laufzustand zustand_{pad_, (datenbank_.ordner() / "Gamepad.xml").string()};
    Laufsteuerung laufsteuerung_{zustand_, pad_, eingabe_, uhr_, marke_};
    const bool links_ = GetParam().zusatz.empty();
    frmJust form_{links_ ? FRMJUST : FRMJUSTR, zustand_, laufsteuerung_, uhr_, tastatur_};
};

INSTANTIATE_TEST_SUITE_P(Zwillinge, FrmJustZustand, ::testing::Values(LINKER_ZWILLING, RECHTER_ZWILLING),
                         [](const auto& fall) { return std::string(fall.param.form); });

TEST_P(FrmJustZustand, NurDerLinkeNimmtOffenerEditorZurueck) {
    auto& global = zustand_.global;
    global.OffenerEditorR = 1;
    EXPECT_EQ(form_.windowTitle(), "Stick justieren") << "at first";
    form_.laden();
    EXPECT_EQ(global.ZielFormular, GetParam().form);
    EXPECT_EQ(int{global.OffenerEditor}, links_ ? 1 : 2);
    EXPECT_EQ(int{global.OffenerEditorR}, 1);
    form_.entladen();
    EXPECT_EQ(int{global.OffenerEditor}, links_ ? 0 : 2);
    EXPECT_EQ(int{global.OffenerEditorR}, links_ ? 1 : 0);
}

// The main form sets both names at once; here each says by itself what it is for.
TEST_P(FrmJustZustand, TestSpeichertFuerDasGeladeneUndStartetDasGewaehlteSchema) {
    for (const char* name : {"T", "U"}) {
        schema(name);
        linien(name);
    }
    form_.laden();
    zustand_.global.SchemaName = "U";
    zustand_.global.Schemaauswahl = "T";
    control<QCheckBox>(form_, "Check2").click();
    control<QPushButton>(form_, "Command1(1)").click();
    EXPECT_EQ(zustand_.global.SchemaName, "T");
    EXPECT_EQ(linie("Links", 20, "S"), "1");
    EXPECT_EQ(linie("Links", 20, "T"), "0");
    EXPECT_EQ(linie("Links", 20, "U"), "0");
    laufsteuerung_.entladen();
    EXPECT_EQ(datenbank_.zeilen("SELECT Schemaname FROM Sensible;"), (Tabellenbild{{"T"}}))
        << "which has run";
}

TEST_P(FrmJustZustand, DieAnderenKnoepfeNehmenDasGewaehlteSchemaAuch) {
    for (const int knopf : {2, 0}) {
        form_.laden();
        zustand_.global.SchemaName = "U";
        zustand_.global.Schemaauswahl = "T";
        control<QPushButton>(form_, QString("Command1(%1)").arg(knopf)).click();
        EXPECT_EQ(zustand_.global.SchemaName, "T") << knopf;
        EXPECT_EQ(form_.geladenesSchema(), "S");
        zustand_.global.SchemaName = "S";
        form_.setEnabled(true);
    }
}

TEST_P(FrmJustZustand, JedeSperrtNurIhrenStick) {
    datenbank_.sql("UPDATE " + stick() + " SET Links = 5 WHERE \"index\" = 20;");
    form_.laden();
    EXPECT_EQ(zustand_.linkerStick.StickSperre, links_ ? 5 : 0);
    EXPECT_EQ(zustand_.rechterStick.StickSperre, links_ ? 0 : 5);
    control<QCheckBox>(form_, "Check2").click();
    EXPECT_EQ(zustand_.linkerStick.StickSperre, links_ ? 4 : 0);
    EXPECT_EQ(zustand_.rechterStick.StickSperre, links_ ? 0 : 4);
}
