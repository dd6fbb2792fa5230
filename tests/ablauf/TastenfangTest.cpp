// SPDX-License-Identifier: GPL-3.0-or-later
// The capture of keys in a real X server: what the injection presses for a code is caught as that code.
#include "editors/common/Tastenfang.h"
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/XTestEingabe.h"
#include "tests/editors/buttons/Tastwerktest.h"
#include "tests/hilfen/XServer.h"
#include "tests/platform/Ereignisse.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest/QTest>

#include <algorithm>
#include <linux/input-event-codes.h>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int GEDULD_MS = 10000;

XServer& server() {
    static XServer einer;
    return einer;
}

// The code that a form's key event carries for the key of `code`.
int inEreignissen(VirtuelleTaste code) {
    return code >= 160 && code <= 165 ? 16 + (code - 160) / 2 : code;
}

class Tastatureingabe {
public:
    explicit Tastatureingabe(const std::string& name) {
        server().tastatur(name);
        std::string grund;
        eingabe_ = XTestEingabe::oeffnen(layout, server().anzeige(), grund);
        EXPECT_NE(eingabe_, nullptr) << grund;
    }
    void senden(VirtuelleTaste code, std::uint32_t flaggen) {
        const INPUT eines = taste(code, flaggen);
        eingabe_->SendInput({&eines, 1});
    }
    void tippen(VirtuelleTaste code) {
        senden(code, 0);
        senden(code, KEYEVENTF_KEYUP);
    }

    Tastaturlayout layout{server().anzeige()};

private:
    std::unique_ptr<XTestEingabe> eingabe_;
};

class JedesLayout : public ::testing::TestWithParam<const char*> {
protected:
    JedesLayout() {
        // Something to lose the focus to, for keys that would move it.
        auto* spalte = new QVBoxLayout(&fenster);
        spalte->addWidget(&davor);
        spalte->addWidget(&fang);
        spalte->addWidget(&danach);
        fenster.show();
        fenster.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&fenster));
        fang.setFocus(Qt::MouseFocusReason);
        QObject::connect(&fang, &Tastenfang::tasteGedrueckt, [this](int code) { gehoert.push_back(code); });
        QObject::connect(&fang, &Tastenfang::tasteGeloest, [this](int code) { gehoert.push_back(-code); });
    }
    bool warten(std::size_t anzahl) {
        return QTest::qWaitFor([&] { return gehoert.size() >= anzahl; }, GEDULD_MS);
    }

    Tastatureingabe tastatur{GetParam()};
    QWidget fenster;
    QPushButton davor;
    Tastenfang fang{tastatur.layout};
    QPushButton danach;
    std::vector<int> gehoert;
};

INSTANTIATE_TEST_SUITE_P(, JedesLayout, ::testing::Values("us", "de", "fr", "us,ru"), [](const auto& fall) {
    std::string name = fall.param;
    std::ranges::replace(name, ',', '_');
    return name;
});

class FormAmXServer : public Tastwerktest {};

} // namespace

TEST_P(JedesLayout, JedeTasteWirdAlsDerCodeGefangenDerSieDrueckt) {
    int tasten = 0;
    for (VirtuelleTaste code = 1; code <= 254; ++code) {
        const auto evdev = tastatur.layout.karte().taste(code);
        if (evdev == KEINE_TASTE || evdev > LETZTE_X_TASTE)
            continue;
        ++tasten;
        gehoert.clear();
        QTest::mouseClick(&fang, Qt::LeftButton); // or the tabulator would move on
        tastatur.tippen(code);
        EXPECT_TRUE(warten(2)) << "key " << code;
        const int erwartet = inEreignissen(code);
        EXPECT_EQ(gehoert, (std::vector<int>{erwartet, -erwartet})) << "key " << code;
        ASSERT_TRUE(fang.hasFocus()) << "key " << code;
    }
    EXPECT_EQ(tasten, 145);
}

TEST_P(JedesLayout, UmschaltAendertNichtWelcheTasteEsIst) {
    for (const auto umschalter : std::initializer_list<VirtuelleTaste>{16, 161, 17, 18, 165})
        for (const auto code : std::initializer_list<VirtuelleTaste>{65, 90, 49, 13, 27, 112, 192, 187}) {
            gehoert.clear();
            tastatur.senden(umschalter, 0);
            tastatur.tippen(code);
            tastatur.senden(umschalter, KEYEVENTF_KEYUP);
            EXPECT_TRUE(warten(4));
            const int u = inEreignissen(umschalter);
            const int c = code;
            EXPECT_EQ(gehoert, (std::vector<int>{u, c, -c, -u})) << umschalter << " " << code;
        }
}

TEST_P(JedesLayout, DerTabulatorGehtWeiterUndMitStrgWirdErGefangen) {
    const auto amZiel = [this](QWidget& ziel) {
        return QTest::qWaitFor([&] { return ziel.hasFocus(); }, GEDULD_MS);
    };
    davor.setFocus();
    tastatur.tippen(9);
    EXPECT_TRUE(amZiel(fang));
    tastatur.senden(17, 0);
    tastatur.tippen(9);
    tastatur.senden(17, KEYEVENTF_KEYUP);
    tastatur.tippen(65);
    EXPECT_TRUE(warten(4));
    EXPECT_EQ(gehoert, (std::vector<int>{9, -9, 65, -65}));
    tastatur.senden(16, 0);
    tastatur.tippen(9);
    tastatur.senden(16, KEYEVENTF_KEYUP);
    EXPECT_TRUE(amZiel(davor));
    tastatur.tippen(9);
    EXPECT_TRUE(amZiel(fang));
    tastatur.tippen(9);
    EXPECT_TRUE(amZiel(danach));
    EXPECT_EQ(gehoert.size(), 4U);
}

// The number pad gives its own codes whether its lock is on or not.
TEST_P(JedesLayout, DerZiffernblockIstVonSeinerFeststelltasteUnabhaengig) {
    for (int mal = 0; mal < 2; ++mal) {
        gehoert.clear();
        tastatur.tippen(144);
        std::vector<int> erwartet{144, -144};
        for (VirtuelleTaste code = 96; code <= 111; ++code) {
            tastatur.tippen(code);
            erwartet.insert(erwartet.end(), {code, -code});
        }
        EXPECT_TRUE(warten(erwartet.size()));
        EXPECT_EQ(gehoert, erwartet);
    }
}

TEST_F(FormAmXServer, EineTasteKommtVonDerTastaturInDieDatenbank) {
    // z lies elsewhere on the German keyboard, and it is z in spite of that.
    for (const char* layout : {"us", "de"}) {
        Tastatureingabe tastatur(layout);
        programm_ = std::make_unique<Programm>(Plattform{pad_, eingabe_, uhr_, prozess_, tastatur.layout,
                                                         ton_, schirm_, marke_, weg_,
                                                         (datenbank_.ordner() / "Gamepad.xml").string()});
        programm_->starten();
        oeffnen();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form()));
        waehlen(0);
        art(1);
        for (const auto& [code, name] : std::vector<std::pair<VirtuelleTaste, const char*>>{{90, "Z"},
                                                                                            {9, "Tab"},
                                                                                            {27, "Esc"},
                                                                                            {13, "Enter"},
                                                                                            {161, "Umschalt"},
                                                                                            {101, "Num 5"},
                                                                                            {192, "Ö"}}) {
            QTest::mouseClick(&fang(), Qt::LeftButton);
            fang().setFocus(Qt::MouseFocusReason);
            tastatur.tippen(code);
            EXPECT_TRUE(QTest::qWaitFor([&] { return text(0) == name; }, GEDULD_MS)) << layout << " " << name;
            EXPECT_EQ(belegung(0), "1," + std::to_string(inEreignissen(code)) + ",0-0-0");
        }
        programm_.reset();
        ereignisse();
    }
}

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    qputenv("DISPLAY", server().anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
