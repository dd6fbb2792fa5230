// SPDX-License-Identifier: GPL-3.0-or-later
// What a start of a run asks and tells before it.
#include "tests/editors/common/Formtest.h"

#include <QPushButton>

namespace {

const Gesehen ZWEITER_LAUF{
    "Schema starten",
    "In einem zweiten Game-Pad-Konfic läuft schon ein Schema. Beide würden senden, was "
    "das Gamepad auslöst: Jede Taste käme doppelt an.",
    QMessageBox::Warning, QMessageBox::Yes | QMessageBox::Cancel};

class LaufsteuerungForm : public Formtest {
protected:
    void schema(const std::string& belegung = "1,65,0-0-0") {
        Schemabau(datenbank_).taste(2, belegung).anlegen();
        starten();
    }
    QPushButton& starter() { return control<QPushButton>(haupt(), "Command1(5)"); }
    /// Clicks "Schema starten" or "Schema stoppen"; gives the boxes that came.
    std::vector<Gesehen> klicken(std::vector<QMessageBox::StandardButton> antworten = {}) {
        const Boxleser boxen(std::move(antworten));
        starter().click();
        ereignisse();
        return boxen.gesehen();
    }

    ProbeMarke andere_{gesetzteMarken_};
};

} // namespace

TEST_F(LaufsteuerungForm, EinLaufHatDieMarkeBisZuSeinemEnde) {
    schema();
    EXPECT_EQ(gesetzteMarken_, 0);
    EXPECT_EQ(klicken(), std::vector<Gesehen>{});
    EXPECT_EQ(gesetzteMarken_, 1);
    klicken();
    EXPECT_EQ(gesetzteMarken_, 0);
    klicken();
    laufFenster()->close();
    ereignisse();
    EXPECT_EQ(gesetzteMarken_, 0);
}

TEST_F(LaufsteuerungForm, NebenEinemAnderenLaufStehtDerAbbruchVorn) {
    schema();
    andere_.setzen();
    EXPECT_EQ(klicken(), std::vector{ZWEITER_LAUF});
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_EQ(starter().text(), "Schema starten");
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(gesetzteMarken_, 1);
}

TEST_F(LaufsteuerungForm, TrotzdemGestartetLaeuftErUndWirdSelbstGesehen) {
    schema();
    andere_.setzen();
    EXPECT_EQ(klicken({QMessageBox::Yes}), std::vector{ZWEITER_LAUF});
    EXPECT_NE(laufFenster(), nullptr);
    EXPECT_EQ(starter().text(), "Schema stoppen");
    EXPECT_EQ(gesetzteMarken_, 2);
}

TEST_F(LaufsteuerungForm, SolangeGefragtWirdLaeuftHierNichts) {
    schema();
    andere_.setzen();
    int waehrend = -1;
    QTimer::singleShot(0, [&] {
        waehrend = gesetzteMarken_;
        QApplication::activeModalWidget()->close();
    });
    starter().click();
    EXPECT_EQ(waehrend, 1);
    EXPECT_EQ(laufFenster(), nullptr) << "to close the box is no start";
}

TEST_F(LaufsteuerungForm, EnterBrichtAb) {
    schema();
    andere_.setzen();
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    starter().click();
    EXPECT_EQ(laufFenster(), nullptr);
}

TEST_F(LaufsteuerungForm, NachDemEndeDesAnderenWirdNichtMehrGefragt) {
    schema();
    andere_.setzen();
    klicken();
    andere_.loesen();
    EXPECT_EQ(klicken(), std::vector<Gesehen>{});
    EXPECT_NE(laufFenster(), nullptr);
}

TEST_F(LaufsteuerungForm, EinLaufDerNichtGeladenWerdenKannHatDieMarkeNicht) {
    schema();
    std::filesystem::remove(datenbank_.pfad());
    EXPECT_EQ(klicken().size(), 1U);
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_EQ(gesetzteMarken_, 0);
}

TEST_F(LaufsteuerungForm, EinAbgebrochenerLaufHatDieMarkeNichtMehr) {
    schema("kaputt");
    klicken();
    ASSERT_NE(laufFenster(), nullptr);
    EXPECT_EQ(gesetzteMarken_, 1);
    const Boxleser boxen;
    tastenDruecken(4);
    vergehen(10);
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_EQ(gesetzteMarken_, 0);
}
