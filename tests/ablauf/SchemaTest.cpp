// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in real time: the story of a new user, from an empty database to a `Schema` that plays,
// and to its end.
#include "store/files/Gamepadtabelle.h"
#include "tests/ablauf/Formablauf.h"
#include "tests/hilfen/Dateien.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace {

constexpr const char* NAME = "Mein Spiel";
constexpr const char* OHNE_NAMEN = ""; // the row of Gamepad.xml that a start with an empty database makes
constexpr const char* LEERE_BELEGUNG = "10,0,0-0-0";

constexpr VirtuelleTaste A = 65;
constexpr VirtuelleTaste B = 66;
// By their X key codes of the us layout.
const Ereignisse A_GETIPPT{"+38", "-38"};
const Ereignisse B_GETIPPT{"+56", "-56"};

constexpr auto DREIECK = SDL_CONTROLLER_BUTTON_Y;
constexpr auto KREIS = SDL_CONTROLLER_BUTTON_B;
constexpr auto L2 = SDL_CONTROLLER_AXIS_TRIGGERLEFT;

// Labels and marks of the button editor.
constexpr int SCHILD_DREIECK = 0;
constexpr int SCHILD_KREIS = 1;
constexpr int SCHILD_L2 = 4;
// Indices of its Option1.
constexpr int TASTE = 1;
constexpr int UMSCHALTTASTE_1 = 3;

QString feld(const char* name, int index) {
    return QString("%1(%2)").arg(name).arg(index);
}

class Schemageschichte : public Formablauf {
protected:
    void schemaAnlegen() {
        auto& neu = imHaupt<QPushButton>("Command1(2)");
        EXPECT_EQ(neu.text(), "Schema neu");
        neu.click();
        EXPECT_EQ(neu.text(), "Schema Speichern");
        QTest::keyClicks(combo().lineEdit(), NAME);
        neu.click();
        EXPECT_EQ(neu.text(), "Schema neu");
        EXPECT_EQ(liste(), QStringList{NAME});
        EXPECT_EQ(gamepadnamen(), (QStringList{OHNE_NAMEN, NAME}));
    }

    // --- the button editor ---

    void tastwerkOeffnen() { tastwerk_ = &oeffnen("Command1(0)", "frmJoyKonfic"); }
    QString schild(int taste) { return control<QLabel>(*tastwerk_, feld("lblInfo", taste)).text(); }
    void amPadWaehlen(SDL_GameControllerButton taste, int marke) {
        pad_->taste(taste, true);
        auto& kreis = control<QWidget>(*tastwerk_, feld("Shape2", marke));
        EXPECT_TRUE(warten([&] { return kreis.isVisible(); })) << "the form does not see the pad";
        pad_->taste(taste, false);
    }
    void amSchildWaehlen(int taste) {
        QTest::mouseClick(&control<QLabel>(*tastwerk_, feld("lblInfo", taste)), Qt::LeftButton);
    }
    void art(int index) { control<QRadioButton>(*tastwerk_, feld("Option1", index)).click(); }
    /// The chosen button gets the key that is pressed on the keyboard now.
    void tasteFangen(VirtuelleTaste code, const Ereignisse& getippt, int taste) {
        art(TASTE);
        auto& fang = control<QLineEdit>(*tastwerk_, "Text3(0)");
        fang.setFocus(Qt::MouseFocusReason);
        EXPECT_TRUE(warten([&] { return fang.hasFocus(); }));
        anDerTastatur(code, getippt[0], getippt[1]);
        EXPECT_TRUE(warten([&] { return schild(taste) == QString(QChar(code)); }))
            << schild(taste).toStdString();
    }
    void tasteImTastwerk(const char* name) { control<QPushButton>(*tastwerk_, name).click(); }
    void tastwerkSchliessen() {
        tastwerk_->close();
        EXPECT_EQ(offene("frmJoyKonfic"), nullptr);
    }
    /// Triangle is A; L 2 holds the layer on which circle is B.
    void tastenBelegen() {
        tastwerkOeffnen();
        amPadWaehlen(DREIECK, SCHILD_DREIECK);
        tasteFangen(A, A_GETIPPT, SCHILD_DREIECK);
        amSchildWaehlen(SCHILD_L2);
        art(UMSCHALTTASTE_1);
        EXPECT_EQ(schild(SCHILD_L2), "Umschalt 1");

        tasteImTastwerk("Command1(1)");
        EXPECT_EQ(control<QLabel>(*tastwerk_, "lblSchemaName(1)").text(), "Umschalt1");
        amSchildWaehlen(SCHILD_KREIS);
        tasteFangen(B, B_GETIPPT, SCHILD_KREIS);
        EXPECT_EQ(belegte(), Tabellenbild{}) << "nothing is stored before it is saved";
        tasteImTastwerk("Command1(4)");
        tastwerkSchliessen();
    }

    // --- what is stored ---

    QComboBox& combo() { return imHaupt<QComboBox>("Combo1"); }
    QStringList liste() {
        QStringList namen;
        for (int i = 0; i < combo().count(); ++i)
            namen << combo().itemText(i);
        return namen;
    }
    /// Column and assignment of each button of the database that has one.
    Tabellenbild belegte() const {
        Tabellenbild belegte;
        for (const int versatz : {1, 101, 1001})
            for (int taste = 0; taste < 12; ++taste) {
                const auto spalte = "btn" + std::to_string(taste + versatz);
                for (const auto& zeile : datenbank_.zeilen("SELECT " + spalte + " FROM tblTastatur"))
                    if (zeile[0] != LEERE_BELEGUNG)
                        belegte.push_back({spalte, zeile[0]});
            }
        return belegte;
    }
    /// Number of rows of the `Schema` by table.
    std::vector<int> zeilenzahlen() const {
        std::vector<int> zahlen;
        for (const char* tabelle : {"tblTastatur", "tblSteuerKreuz", "tblStick", "tblStickR",
                                    "tblStickAktion", "tblStickAktionR", "Sensible", "SensibleR"})
            zahlen.push_back(std::stoi(datenbank_.zeilen("SELECT count(*) FROM " + std::string(tabelle) +
                                                         " WHERE Schemaname = '" + NAME + "'")[0][0]));
        return zahlen;
    }
    /// The `Schema`s that have a row in Gamepad.xml.
    QStringList gamepadnamen() const {
        const auto gamepad = gamepadAusXml(dateiLesen(gamepadXml())).value();
        QStringList namen;
        for (const auto& zeile : gamepad.zeilen)
            namen << QString::fromStdString(zeile.at("Schema"));
        return namen;
    }
    void loeschen(QMessageBox::StandardButton antwort) {
        antworten_ = {antwort};
        imHaupt<QPushButton>("Command1(3)").click();
    }

    QWidget* tastwerk_ = nullptr;
};

} // namespace

TEST_F(Schemageschichte, EinNeuesSchemaWirdBelegtGespieltUndGeloescht) {
    programmAuf();
    EXPECT_EQ(liste(), QStringList{});
    schemaAnlegen();
    tastenBelegen();
    EXPECT_EQ(belegte(),
              (Tabellenbild{{"btn1", "1,65,0-0-0"}, {"btn5", "3,0,0-0-0"}, {"btn102", "1,66,0-0-0"}}));

    umschalten();
    EXPECT_EQ(imHaupt<QPushButton>("Command1(5)").text(), "Schema stoppen");
    takte(2);
    tippen(KREIS); // free on this layer
    tippen(DREIECK);
    EXPECT_EQ(bis("-38"), A_GETIPPT);
    ziehen(L2, true);
    takte(4);
    tippen(DREIECK); // free on that one
    tippen(KREIS);
    EXPECT_EQ(bis("-56"), B_GETIPPT);
    ziehen(L2, false);
    takte(4);
    tippen(KREIS);
    tippen(DREIECK);
    EXPECT_EQ(bis("-38"), A_GETIPPT);

    laufFenster()->close();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_TRUE(programm_->hauptform().isVisible());
    EXPECT_EQ(imHaupt<QPushButton>("Command1(5)").text(), "Schema starten");
    EXPECT_EQ(zeilenzahlen(), (std::vector<int>{1, 1, 20, 20, 0, 0, 1, 1}));
    EXPECT_EQ(boxen_, QStringList{});

    const auto vorher = datenbank_.inhalt();
    loeschen(QMessageBox::No);
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    EXPECT_EQ(liste(), QStringList{NAME});
    EXPECT_EQ(gamepadnamen(), QStringList{OHNE_NAMEN}) << "its axes go, whatever the answer is";

    loeschen(QMessageBox::Yes);
    EXPECT_EQ(zeilenzahlen(), std::vector<int>(8, 0));
    EXPECT_EQ(liste(), QStringList{});
    EXPECT_EQ(combo().currentText(), "");
    EXPECT_EQ(boxen_, (QStringList{"Möchten Sie das Schema wirklich löschen?",
                                   "Möchten Sie das Schema wirklich löschen?",
                                   "Es gibt kein Stickschema (Links)", "Es gibt kein Stickschema (Rechts)"}));
}
