// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in real time: every form is opened on its road from the main form, does its main act and
// is closed, and leaves the main form as it found it.
#include "store/files/Gamepadtabelle.h"
#include "tests/ablauf/Formablauf.h"
#include "tests/hilfen/Dateien.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

namespace {

class Rundgang : public Formablauf {
protected:
    Rundgang() { std::filesystem::create_directory(datenbank_.ordner() / "Bilder"); }

    static void knopf(QWidget& form, const char* name) {
        auto& einer = control<QPushButton>(form, name);
        EXPECT_TRUE(einer.isEnabled()) << name;
        einer.click();
    }
    static void option(QWidget& form, const char* name) { control<QRadioButton>(form, name).click(); }

    /// Nothing else is open, the main form can be used, and these boxes have come.
    void erwarteHauptform(const QStringList& boxen = {}) {
        EXPECT_TRUE(warten([] { return sichtbare() == QStringList{"frmHaupt"}; }))
            << sichtbare().join(' ').toStdString();
        EXPECT_TRUE(programm_->hauptform().isEnabled());
        EXPECT_EQ(imHaupt<QComboBox>("Combo1").currentText(), "S");
        EXPECT_EQ(imHaupt<QPushButton>("Command1(5)").text(), "Schema starten");
        EXPECT_EQ(std::exchange(boxen_, {}), boxen);
    }
    static QStringList sichtbare() {
        QStringList namen;
        for (const auto* fenster : QApplication::topLevelWidgets())
            if (fenster->isVisible())
                namen << fenster->objectName();
        return namen;
    }

    std::string wert(const std::string& anweisung) const { return datenbank_.zeilen(anweisung).at(0).at(0); }
    Gamepadzeile gamepadzeile() const {
        const auto tabelle = gamepadAusXml(dateiLesen(gamepadXml()));
        for (const auto& zeile : tabelle->zeilen)
            if (zeile.at("Schema") == "S")
                return zeile;
        return {};
    }

    // --- the stops, in the order of the walk ---

    void hauptform() {
        knopf(programm_->hauptform(), "Command1(2)");
        QTest::keyClicks(imHaupt<QComboBox>("Combo1").lineEdit(), "S");
        knopf(programm_->hauptform(), "Command1(2)");
        erwarteHauptform();
    }
    void tastwerk() {
        auto& form = oeffnen("Command1(0)", "frmJoyKonfic");
        QTest::mouseClick(&control<QLabel>(form, "lblInfo(0)"), Qt::LeftButton);
        option(form, "Option1(5)");
        knopf(form, "Command1(4)");
        EXPECT_EQ(wert("SELECT btn1 FROM tblTastatur"), "5,0,0-0-0");
        form.close();
        erwarteHauptform();
    }
    void stickeditor(const char* oeffner, const char* name, const std::string& tabelle) {
        auto& form = oeffnen(oeffner, name);
        QTest::mouseClick(&control<QWidget>(form, "RPfeil(0)"), Qt::LeftButton);
        EXPECT_EQ(wert("SELECT Rechts FROM " + tabelle + " WHERE \"index\" = 2"), "39399");
        knopf(form, "Command1(0)");
        erwarteHauptform({"Es wird ein neues Schema erstellen!"});
    }
    void hintergrund() {
        auto& editor = oeffnen("Command1(1)", "frmJust");
        knopf(editor, "Command1(2)");
        auto* schirm = offene("ScreenChecken");
        ASSERT_NE(schirm, nullptr);
        EXPECT_FALSE(editor.isVisible());
        knopf(*schirm, "Command1(0)");
        pad_->taste(SDL_CONTROLLER_BUTTON_LEFTSTICK, true);
        const auto bild = datenbank_.ordner() / "Bilder" / "S0L.BMP";
        EXPECT_TRUE(warten([&] { return std::filesystem::exists(bild); }));
        pad_->taste(SDL_CONTROLLER_BUTTON_LEFTSTICK, false);
        schirm->close();
        EXPECT_TRUE(editor.isVisible() && editor.isEnabled());
        knopf(editor, "Command1(0)");
        erwarteHauptform();
    }
    void achsen() {
        auto& form = oeffnen("Command3", "AchzenKalib");
        control<QComboBox>(form, "Auswahl(0)").setCurrentText("Rechts");
        control<QComboBox>(form, "Auswahl(2)").setCurrentText("Links");
        knopf(form, "Command1(0)");
        EXPECT_EQ(gamepadzeile().at("dwXPos"), "rx");
        EXPECT_EQ(gamepadzeile().at("dwZPos"), "lx");
        erwarteHauptform();
    }
    void schubregler() {
        auto& form = oeffnen("Command4", "SchubreglerKonfic");
        knopf(form, "Command1(0)");
        control<QListWidget>(form, "List1").setCurrentRow(1);
        option(form, "Option1(1)");
        knopf(form, "Command2");
        knopf(form, "Command3");
        EXPECT_EQ(gamepadzeile().at("Schubregler"), "2/0-2-1-0(,,)");
        erwarteHauptform({"2-1-0(,,)"});
    }
    void uebersicht() {
        programm_->hauptform().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&programm_->hauptform()));
        QTest::keyClick(&programm_->hauptform(), Qt::Key_D, Qt::ControlModifier);
        auto* form = offene("Uebersicht");
        ASSERT_NE(form, nullptr);
        knopf(*form, "Command1(0)");
        control<QCheckBox>(*form, "Check1(2)").click();
        knopf(*form, "Command1(4)");
        EXPECT_EQ(wert("SELECT Rechts3 FROM tblStick WHERE \"index\" = 2"), "39399");
        knopf(*form, "Command1(3)");
        auto* editor = offene("frmJust");
        ASSERT_NE(editor, nullptr);
        EXPECT_FALSE(editor->isEnabled());
        knopf(*form, "Command1(5)");
        EXPECT_EQ(offene("frmJust"), nullptr);
        form->close();
        erwarteHauptform();
    }
    void lauf() {
        umschalten();
        ASSERT_NE(laufFenster(), nullptr);
        EXPECT_FALSE(programm_->hauptform().isVisible());
        tippen(SDL_CONTROLLER_BUTTON_Y);
        EXPECT_EQ(bis("K1-"), (Ereignisse{"K1+", "K1-"}));
        laufFenster()->close();
        erwarteHauptform();
    }
};

} // namespace

TEST_F(Rundgang, JedeFormOeffnetTutIhrWerkUndGehtWieder) {
    programmAuf();
    hauptform();
    tastwerk();
    stickeditor("Command1(1)", "frmJust", "tblStick");
    stickeditor("Command1(6)", "frmJustr", "tblStickR");
    hintergrund();
    achsen();
    schubregler();
    uebersicht();
    lauf();
}
