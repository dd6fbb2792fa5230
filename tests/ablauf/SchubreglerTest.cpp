// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in real time: the axes and the slider are set up in their forms, with keys that come from
// the X server, and then play.
#include "tests/ablauf/Formablauf.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

#include <limits>

namespace {

// L 2 is no shift key here but the axis "Z1".
Schemabau ohneUmschalttasten(const Testdatenbank& datenbank) {
    return Schemabau(datenbank).taste(9, "1,123,0-0-0");
}

constexpr auto L2 = SDL_CONTROLLER_AXIS_TRIGGERLEFT;
constexpr auto R2 = SDL_CONTROLLER_AXIS_TRIGGERRIGHT;
constexpr Sint16 FAST_GANZ_GEZOGEN = 30000; // 64152
constexpr Sint16 LOSGELASSEN = std::numeric_limits<Sint16>::min();

constexpr VirtuelleTaste B = 66;
constexpr const char* B_AB = "+56"; // by its X key code of the us layout
constexpr const char* B_AUF = "-56";

class Reglerablauf : public Formablauf {
protected:
    /// Makes a slider of two fields, the second of which presses B as long as it holds.
    void reglerMachen() {
        auto& form = oeffnen("Command4", "SchubreglerKonfic");
        control<QPushButton>(form, "Command1(0)").click();
        control<QListWidget>(form, "List1").setCurrentRow(1);
        control<QRadioButton>(form, "Option1(2)").click();
        auto& txtTaste = control<QLineEdit>(form, "txtTaste");
        txtTaste.setFocus(Qt::MouseFocusReason);
        anDerTastatur(B, B_AB, B_AUF);
        EXPECT_TRUE(warten([&] { return txtTaste.text() == "B"; }));
        control<QPushButton>(form, "Command2").click();
        control<QPushButton>(form, "Command3").click();
        EXPECT_EQ(boxen_, QStringList{"2-2-0(66,,)"});
    }
};

} // namespace

TEST_F(Reglerablauf, EinHierGemachterReglerDruecktSeineTaste) {
    programmAuf(ohneUmschalttasten(datenbank_));
    reglerMachen();
    umschalten();
    pad_->achse(L2, FAST_GANZ_GEZOGEN);
    EXPECT_EQ(bis(B_AB), Ereignisse{B_AB});
    pad_->achse(L2, LOSGELASSEN);
    EXPECT_EQ(bis(B_AUF), Ereignisse{B_AUF});
    EXPECT_EQ(angekommen(), Ereignisse{});
}

TEST_F(Reglerablauf, NachDemTauschDerSchubachsenSchiebtDieAndere) {
    programmAuf(ohneUmschalttasten(datenbank_));
    reglerMachen();
    auto& form = oeffnen("Command3", "AchzenKalib");
    control<QComboBox>(form, "Auswahl(4)").setCurrentText("Schubregler");
    control<QComboBox>(form, "Auswahl(5)").setCurrentText("Z-Achse");
    control<QPushButton>(form, "Command1(0)").click();
    EXPECT_EQ(boxen_.size(), 1) << "no complaint";

    umschalten();
    pad_->achse(R2, FAST_GANZ_GEZOGEN);
    EXPECT_EQ(bis(B_AB), Ereignisse{B_AB});
    pad_->achse(L2, FAST_GANZ_GEZOGEN);
    takte(2);
    pad_->achse(R2, LOSGELASSEN);
    EXPECT_EQ(bis(B_AUF), Ereignisse{B_AUF});
}
