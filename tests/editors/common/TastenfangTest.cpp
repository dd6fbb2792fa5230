// SPDX-License-Identifier: GPL-3.0-or-later
// The box that catches a key: what counts, and what the keyboard says of it.
#include "editors/common/Tastenfang.h"

#include "platform/probe/ProbeTastatur.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <QtTest/QTest>

#include <array>
#include <string>
#include <vector>

namespace {

class Fangtest : public ::testing::Test {
protected:
    Fangtest() {
        auto* spalte = new QVBoxLayout(&fenster);
        spalte->addWidget(&davor);
        spalte->addWidget(&fang);
        spalte->addWidget(&danach);
        QObject::connect(&fang, &Tastenfang::tasteGedrueckt, [this](int code) { gehoert.push_back(code); });
        QObject::connect(&fang, &Tastenfang::tasteGeloest, [this](int code) { gehoert.push_back(-code); });
        QObject::connect(&fang, &Tastenfang::tabBestaetigt, [this] { gehoert.push_back(TAB_BESTAETIGT); });
        fenster.show();
        fenster.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&fenster));
        fang.setFocus(Qt::MouseFocusReason);
    }

    /// An event of the key that means `code`, as the window system delivers it.
    void ereignis(QEvent::Type art, VirtuelleTaste code, int taste = Qt::Key_unknown, bool wiederholt = false,
                  Qt::KeyboardModifiers umschalter = Qt::NoModifier) {
        QKeyEvent eines(art, taste, umschalter, ProbeTastatur::nummer(code), 0, 0, QString(), wiederholt);
        QApplication::sendEvent(QApplication::focusWidget(), &eines);
    }
    void druecken(VirtuelleTaste code, int taste = Qt::Key_unknown) {
        ereignis(QEvent::KeyPress, code, taste);
    }
    void loesen(VirtuelleTaste code, int taste = Qt::Key_unknown) {
        ereignis(QEvent::KeyRelease, code, taste);
    }

    /// To whoever has the focus, as real ones go.
    void tippen(Qt::Key taste) { QTest::keyClick(fenster.windowHandle(), taste); }
    void umschalttab() {
        druecken(16, Qt::Key_Shift);
        ereignis(QEvent::KeyPress, 9, Qt::Key_Backtab, false, Qt::ShiftModifier);
        loesen(9, Qt::Key_Backtab);
        loesen(16, Qt::Key_Shift);
    }

    static constexpr int TAB_BESTAETIGT = 999;
    ProbeTastatur tastatur;
    QWidget fenster;
    QPushButton davor;
    Tastenfang fang{tastatur};
    QPushButton danach;
    std::vector<int> gehoert;
};

VirtuelleTaste ohneNummer(int taste, Qt::KeyboardModifiers umschalter = Qt::NoModifier) {
    ProbeTastatur tastatur;
    return Tastenfang::code(QKeyEvent(QEvent::KeyRelease, taste, umschalter), tastatur);
}

} // namespace

TEST_F(Fangtest, SteuertMitHierKlickenUndNimmtDenFokusPerMausUndPerTabulator) {
    EXPECT_EQ(fang.text(), "Hier Klicken");
    EXPECT_EQ(fang.focusPolicy(), Qt::StrongFocus);
    EXPECT_TRUE(fang.isReadOnly());
    EXPECT_EQ(fang.accessibleDescription(),
              "Fängt die nächste Taste. Tab geht weiter, Strg+Tab fängt die Tabulatortaste.");
}

// --- the tabulator ---

TEST_F(Fangtest, DerTabulatorGehtHineinUndWiederHinaus) {
    davor.setFocus();
    tippen(Qt::Key_Tab);
    EXPECT_TRUE(fang.hasFocus());
    tippen(Qt::Key_Tab);
    EXPECT_TRUE(danach.hasFocus());
    umschalttab();
    EXPECT_TRUE(fang.hasFocus());
    umschalttab();
    EXPECT_TRUE(davor.hasFocus());
    EXPECT_EQ(gehoert, std::vector<int>{}) << "neither the tabulator nor the Shift that went with it";
}

TEST_F(Fangtest, EinGehaltenerTabulatorGehtDurchDieBoxHindurch) {
    davor.setFocus();
    ereignis(QEvent::KeyPress, 9, Qt::Key_Tab);
    ASSERT_TRUE(fang.hasFocus());
    ereignis(QEvent::KeyPress, 9, Qt::Key_Tab, true);
    EXPECT_TRUE(danach.hasFocus());
    EXPECT_EQ(gehoert, std::vector<int>{});
}

TEST_F(Fangtest, OhneKlickWirdJedeAndereTasteGefangenUndDerTabulatorFuehrtHinaus) {
    davor.setFocus();
    fang.setFocus(Qt::TabFocusReason);
    tippen(Qt::Key_Escape);
    tippen(Qt::Key_Return);
    EXPECT_EQ(gehoert, (std::vector<int>{27, -27, 13, -13}));
    EXPECT_TRUE(fang.hasFocus());
    tippen(Qt::Key_Tab);
    EXPECT_TRUE(danach.hasFocus());
    EXPECT_EQ(gehoert.size(), 4U);
}

TEST_F(Fangtest, NachEinemKlickFaengtSieAuchDenTabulatorAberNurAlsErsteTaste) {
    tippen(Qt::Key_Tab);
    EXPECT_TRUE(fang.hasFocus());
    EXPECT_EQ(gehoert, (std::vector<int>{9, -9}));
    tippen(Qt::Key_Tab);
    EXPECT_TRUE(danach.hasFocus());
    EXPECT_EQ(gehoert.size(), 2U);

    QTest::mouseClick(&fang, Qt::LeftButton);
    tippen(Qt::Key_A);
    gehoert.clear();
    QTest::mouseClick(&fang, Qt::LeftButton); // into the box that has the focus already
    druecken(16, Qt::Key_Shift);
    ereignis(QEvent::KeyPress, 9, Qt::Key_Backtab, false, Qt::ShiftModifier);
    loesen(9, Qt::Key_Backtab);
    loesen(16, Qt::Key_Shift);
    EXPECT_EQ(gehoert, (std::vector<int>{16, 9, -9, -16})) << "Shift goes before the key that is meant";
}

TEST_F(Fangtest, EinGefangenerTabulatorDerGehaltenWirdZaehltEinmalUndBleibt) {
    ereignis(QEvent::KeyPress, 9, Qt::Key_Tab);
    for (int i = 0; i < 3; ++i)
        ereignis(QEvent::KeyPress, 9, Qt::Key_Tab, true);
    EXPECT_TRUE(fang.hasFocus());
    loesen(9, Qt::Key_Tab);
    EXPECT_EQ(gehoert, (std::vector<int>{9, -9}));
}

TEST_F(Fangtest, MitStrgWirdDerTabulatorGefangenUndStrgNicht) {
    for (const bool strgZuerstGeloest : {false, true}) {
        davor.setFocus();
        fang.setFocus(Qt::TabFocusReason);
        gehoert.clear();
        druecken(17, Qt::Key_Control);
        ereignis(QEvent::KeyPress, 9, Qt::Key_Tab, false, Qt::ControlModifier);
        for (const int taste : strgZuerstGeloest ? std::array{17, 9} : std::array{9, 17})
            loesen(static_cast<VirtuelleTaste>(taste));
        EXPECT_EQ(gehoert, (std::vector<int>{9, -9}));
        EXPECT_TRUE(fang.hasFocus());
    }
    druecken(17);
    loesen(17);
    EXPECT_EQ(gehoert, (std::vector<int>{9, -9, 17, -17})) << "the next one is a key of its own";
}

TEST_F(Fangtest, UmschalterDieVorEinerTasteLiegenKommenInIhrerOrdnung) {
    davor.setFocus();
    fang.setFocus(Qt::TabFocusReason);
    druecken(16);
    EXPECT_EQ(gehoert, std::vector<int>{}) << "the way back may follow";
    druecken(65);
    loesen(65);
    loesen(16);
    EXPECT_EQ(gehoert, (std::vector<int>{16, 65, -65, -16}));
}

// --- all keys ---

TEST_F(Fangtest, JederCodeKommtBeimDrueckenUndBeimLoesen) {
    std::vector<int> erwartet;
    for (VirtuelleTaste code = 1; code <= 254; ++code) {
        QTest::mouseClick(&fang, Qt::LeftButton);
        druecken(code);
        loesen(code);
        const int gleich = code >= 160 && code <= 165 ? 16 + (code - 160) / 2 : code;
        erwartet.insert(erwartet.end(), {gleich, -gleich});
    }
    EXPECT_EQ(gehoert, erwartet);
}

TEST_F(Fangtest, WasQtSonstSelbstNimmtBleibtInDerBox) {
    const std::vector<std::pair<int, int>> tasten{
        {Qt::Key_Tab, 9},     {Qt::Key_Backtab, 9}, {Qt::Key_Return, 13}, {Qt::Key_Enter, 13},
        {Qt::Key_Escape, 27}, {Qt::Key_Left, 37},   {Qt::Key_Up, 38},     {Qt::Key_Right, 39},
        {Qt::Key_Down, 40},   {Qt::Key_Space, 32},  {Qt::Key_Alt, 18},    {Qt::Key_F10, 121},
        {Qt::Key_Print, 44},  {Qt::Key_Menu, 93},   {Qt::Key_Delete, 46}, {Qt::Key_Backspace, 8},
        {Qt::Key_Home, 36},   {Qt::Key_F1, 112},    {Qt::Key_F4, 115},    {Qt::Key_Super_L, 91}};
    std::vector<int> erwartet;
    for (const auto& [taste, code] : tasten) {
        QTest::mouseClick(&fang, Qt::LeftButton);
        QTest::keyClick(fenster.windowHandle(),
                        static_cast<Qt::Key>(taste)); // to whom has the focus, as real ones go
        erwartet.insert(erwartet.end(), {code, -code});
        ASSERT_TRUE(fang.hasFocus()) << taste;
    }
    EXPECT_EQ(gehoert, erwartet);
    EXPECT_TRUE(fenster.isVisible());
    EXPECT_EQ(fang.text(), "Tab") << "what a key makes of the text is up to the form";
}

TEST_F(Fangtest, EinTastenkuerzelDesFenstersGehtAnDieBox) {
    int ausgeloest = 0;
    auto* kuerzel = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), &fenster);
    QObject::connect(kuerzel, &QShortcut::activated, [&] { ++ausgeloest; });
    QTest::keyClick(fenster.windowHandle(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ausgeloest, 0);
    EXPECT_EQ(gehoert, (std::vector<int>{17, 83, -83, -17}));
    davor.setFocus();
    QTest::keyClick(fenster.windowHandle(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ausgeloest, 1) << "or the test shows nothing";
}

TEST_F(Fangtest, EineGehalteneTasteZaehltEinmal) {
    druecken(65);
    for (int i = 0; i < 5; ++i) {
        ereignis(QEvent::KeyRelease, 65, Qt::Key_A, true);
        ereignis(QEvent::KeyPress, 65, Qt::Key_A, true);
    }
    loesen(65);
    EXPECT_EQ(gehoert, (std::vector<int>{65, -65}));
}

TEST_F(Fangtest, EineTasteOhneCodeZaehltNicht) {
    QKeyEvent eines(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, 77, 0, 0);
    QApplication::sendEvent(&fang, &eines);
    EXPECT_EQ(gehoert, std::vector<int>{}) << "its number counts, not what it means";
}

TEST_F(Fangtest, DieTasteDieDenFokusBrachteZaehltNicht) {
    for (const auto grund :
         {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason, Qt::ActiveWindowFocusReason}) {
        davor.setFocus();
        fang.setFocus(grund);
        loesen(9);
        EXPECT_EQ(gehoert, std::vector<int>{}) << grund;
    }
    druecken(65);
    loesen(65);
    EXPECT_EQ(gehoert, (std::vector<int>{65, -65}));
}

TEST_F(Fangtest, PerMausGenuegtDasLoesen) {
    loesen(65);
    EXPECT_EQ(gehoert, std::vector<int>{-65});
}

TEST_F(Fangtest, EinKlickMachtTabDarausUndEinDoppelklickBestaetigt) {
    QTest::mouseClick(&fang, Qt::LeftButton);
    EXPECT_EQ(fang.text(), "Tab");
    EXPECT_EQ(gehoert, std::vector<int>{});
    QTest::mouseDClick(&fang, Qt::LeftButton);
    EXPECT_EQ(gehoert, std::vector<int>{TAB_BESTAETIGT});
    EXPECT_EQ(fang.text(), "Tab");
}

TEST_F(Fangtest, AndereTexteLassenKlickUndDoppelklickStehen) {
    fang.setText("65");
    QTest::mouseClick(&fang, Qt::LeftButton);
    QTest::mouseDClick(&fang, Qt::LeftButton);
    EXPECT_EQ(fang.text(), "65");
    EXPECT_EQ(gehoert, std::vector<int>{});
}

TEST_F(Fangtest, DieAnderenMaustastenTunNichts) {
    QTest::mouseClick(&fang, Qt::RightButton);
    QTest::mouseClick(&fang, Qt::MiddleButton);
    EXPECT_EQ(fang.text(), "Hier Klicken");
    QTest::mouseClick(&fang, Qt::LeftButton);
    QTest::mouseDClick(&fang, Qt::RightButton);
    EXPECT_EQ(gehoert, std::vector<int>{});
}

TEST_F(Fangtest, EinNebenDerBoxGeloesterKlickZaehltNicht) {
    QTest::mousePress(&fang, Qt::LeftButton);
    QTest::mouseRelease(&fang, Qt::LeftButton, Qt::NoModifier, QPoint(-5, 3));
    EXPECT_EQ(fang.text(), "Hier Klicken");
}

TEST_F(Fangtest, OhneFokusStehtWiederHierKlicken) {
    fang.setText("65");
    danach.setFocus();
    EXPECT_EQ(fang.text(), "Hier Klicken");
}

TEST(TastencodeOhneNummer, GehtNachDerBedeutung) {
    const std::vector<std::pair<int, int>> tasten{
        {Qt::Key_A, 65},           {Qt::Key_Z, 90},      {Qt::Key_0, 48},           {Qt::Key_9, 57},
        {Qt::Key_F1, 112},         {Qt::Key_F24, 135},   {Qt::Key_Udiaeresis, 186}, {Qt::Key_ssharp, 219},
        {Qt::Key_Dead_Acute, 221}, {Qt::Key_Less, 226},  {Qt::Key_Shift, 16},       {Qt::Key_Control, 17},
        {Qt::Key_Alt, 18},         {Qt::Key_AltGr, 18},  {Qt::Key_Pause, 19},       {Qt::Key_PageDown, 34},
        {Qt::Key_MediaPlay, 179},  {Qt::Key_unknown, 0}, {Qt::Key_F35, 0}};
    for (const auto& [taste, code] : tasten)
        EXPECT_EQ(ohneNummer(taste), code) << taste;
}

TEST(TastencodeOhneNummer, KenntDenZiffernblock) {
    const std::vector<std::pair<int, int>> tasten{
        {Qt::Key_0, 96},      {Qt::Key_9, 105},     {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},
        {Qt::Key_Minus, 109}, {Qt::Key_Comma, 110}, {Qt::Key_Slash, 111},    {Qt::Key_Enter, 13}};
    for (const auto& [taste, code] : tasten)
        EXPECT_EQ(ohneNummer(taste, Qt::KeypadModifier), code) << taste;
}
