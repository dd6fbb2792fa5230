// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/GesicherterZeitgeber.h"

#include "base/LaufzeitFehler.h"
#include "platform/probe/ProbeUhr.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Texte = std::vector<std::string>;

struct GesicherterZeitgeberTest : testing::Test {
    ProbeUhr uhr;
    Texte protokoll;
    std::unique_ptr<GesicherterZeitgeber> zeitgeber =
        std::make_unique<GesicherterZeitgeber>(uhr, [this](const LaufzeitFehler& fehler) {
            protokoll.push_back(std::to_string(fehler.zahl()) + " " + fehler.what());
        });

    TimerProzedur wirft(Fehlernummer nummer) {
        return [nummer] { throw LaufzeitFehler(nummer, "so"); };
    }
};

TEST_F(GesicherterZeitgeberTest, FehlerEinerProzedurGehenAnDieBehandlung) {
    zeitgeber->SetTimer(1, 5ms, wirft(Fehlernummer::FalscherTyp));
    const auto formular = zeitgeber->formularzeitgeber(wirft(Fehlernummer::FalscherIndex));
    formular->Interval(7ms);
    formular->Enabled(true);
    uhr.vorBis(7ms);
    EXPECT_EQ(protokoll, (Texte{"13 so", "9 so"}));
}

TEST_F(GesicherterZeitgeberTest, EinFremderFehlerIstUnerwartet) {
    zeitgeber->SetTimer(1, 5ms, [] { throw std::out_of_range("anders"); });
    uhr.vorBis(5ms);
    EXPECT_EQ(protokoll, Texte{"51 anders"});
}

TEST_F(GesicherterZeitgeberTest, NachEinemFehlerLaeuftDerTimerWeiter) {
    zeitgeber->SetTimer(1, 5ms, wirft(Fehlernummer::FalscherTyp));
    uhr.vorBis(14ms);
    EXPECT_EQ(protokoll, (Texte{"13 so", "13 so"}));
}

TEST_F(GesicherterZeitgeberTest, GesetzteTimerSterbenMitIhm) {
    zeitgeber->SetTimer(1, 5ms, [this] { protokoll.push_back("1"); });
    zeitgeber->SetTimer(2, 5ms, [this] { protokoll.push_back("2"); });
    zeitgeber->KillTimer(2);
    uhr.SetTimer(2, 6ms, [this] { protokoll.push_back("fremd"); });
    zeitgeber.reset();
    uhr.vorBis(10ms);
    EXPECT_EQ(protokoll, Texte{"fremd"});
}

TEST_F(GesicherterZeitgeberTest, DieBehandlungDarfAlleTimerEnden) {
    zeitgeber = std::make_unique<GesicherterZeitgeber>(uhr, [this](const LaufzeitFehler&) {
        zeitgeber->KillTimer(1);
        protokoll.push_back("ende");
    });
    zeitgeber->SetTimer(1, 5ms, wirft(Fehlernummer::FalscherTyp));
    uhr.vorBis(20ms);
    EXPECT_EQ(protokoll, Texte{"ende"});
    EXPECT_EQ(uhr.laufende(), 0U);
}

} // namespace
