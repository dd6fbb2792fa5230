// SPDX-License-Identifier: GPL-3.0-or-later
// The end of the program's process, asked for by signals, and what it leaves beside its executable.
#include "tests/ablauf/Programmprozess.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Schemabau.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

class Programmende : public ::testing::TestWithParam<int> {
protected:
    Testdatenbank datenbank_;
};

} // namespace

TEST_P(Programmende, EinSignalBeendetDasProgrammGeordnet) {
    Programmprozess prozess(datenbank_.ordner());
    ASSERT_TRUE(prozess.nimmtAn(GetParam()));
    prozess.senden(GetParam());
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}

TEST_P(Programmende, EinSignalBeendetAuchDieMeldungBeimStart) {
    std::filesystem::remove(datenbank_.pfad());
    Programmprozess prozess(datenbank_.ordner());
    ASSERT_TRUE(prozess.nimmtAn(GetParam()));
    prozess.senden(GetParam());
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}

// What keeps the launcher from making the user's folder ready is told by the program.
TEST_P(Programmende, EinSignalBeendetAuchDieMeldungDassDerOrdnerFehlt) {
    Programmprozess prozess(datenbank_.ordner(), [](const std::filesystem::path&) {
        setenv("GAMEPAD_KONFIC_STARTFEHLER", "Die Platte ist voll.", 1);
    });
    ASSERT_TRUE(prozess.nimmtAn(GetParam()));
    prozess.senden(GetParam());
    EXPECT_EQ(prozess.ausgang(), "exit 1");
}

INSTANTIATE_TEST_SUITE_P(JedesSignal, Programmende, ::testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST_F(Programmende, EinIgnoriertesSighupBleibtIgnoriert) {
    Programmprozess prozess(datenbank_.ordner(), SIGHUP);
    ASSERT_TRUE(prozess.nimmtAn(SIGTERM));
    EXPECT_FALSE(prozess.nimmtAn(SIGHUP));
    prozess.senden(SIGHUP);
    prozess.senden(SIGTERM);
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}

// Its log would else go into what has the number of the closed channel: the connection to the display.
TEST_F(Programmende, MitGeschlossenenKanaelenLaeuftEsUndProtokolliertInsLeere) {
    Schemabau(datenbank_).anlegen();
    Programmprozess prozess(datenbank_.ordner(), [](const std::filesystem::path&) {
        setenv("QT_LOGGING_RULES", "*=true", 1);
        close(STDIN_FILENO);
        close(STDERR_FILENO);
    });
    EXPECT_TRUE(Programmprozess::warten(
        [&] { return std::filesystem::exists(prozess.programmordner() / "Gamepad.xml"); }));
    EXPECT_EQ(prozess.kanal(STDIN_FILENO), "/dev/null");
    EXPECT_EQ(prozess.kanal(STDERR_FILENO), "/dev/null");
    prozess.senden(SIGTERM);
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}

// As with "| head": what it holds would stay pressed.
TEST_F(Programmende, DassDerLeserDesProtokollsGegangenIstBeendetNichts) {
    Schemabau(datenbank_).anlegen();
    Programmprozess prozess(datenbank_.ordner(), [](const std::filesystem::path&) {
        setenv("QT_LOGGING_RULES", "*=true", 1);
        std::array<int, 2> leitung{};
        if (pipe(leitung.data()) != 0)
            return;
        dup2(leitung[1], STDERR_FILENO);
        close(leitung[0]);
    });
    EXPECT_TRUE(Programmprozess::warten(
        [&] { return std::filesystem::exists(prozess.programmordner() / "Gamepad.xml"); }));
    prozess.senden(SIGTERM);
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}

TEST_F(Programmende, DieAchsendateiEntstehtNebenDemProgramm) {
    Schemabau(datenbank_).anlegen();
    Programmprozess prozess(datenbank_.ordner());
    const auto datei = prozess.programmordner() / "Gamepad.xml";
    EXPECT_TRUE(Programmprozess::warten([&] { return std::filesystem::exists(datei); }));
    EXPECT_NE(dateiLesen(datei).find("Schema=\"S\""), std::string::npos) << dateiLesen(datei);
    prozess.senden(SIGTERM);
    EXPECT_EQ(prozess.ausgang(), "exit 0");
    // No trace of the writing is left there, and none in the folder in which the program was started.
    auto daneben = namenIn(prozess.programmordner());
    std::ranges::sort(daneben);
    EXPECT_EQ(daneben, (std::vector<std::string>{"Gamepad.xml", "gamepad-konfic"}));
    EXPECT_FALSE(std::filesystem::exists(datenbank_.ordner() / "Gamepad.xml"));
}

// A file that is to grow fails as on a full disk.
TEST_F(Programmende, AufEinerVollenPlatteLaeuftDasProgrammUndLaesstNichtsHalbesZurueck) {
    Schemabau(datenbank_).anlegen();
    const auto vorher = dateiLesen(datenbank_.pfad());
    Programmprozess prozess(datenbank_.ordner(), [](const std::filesystem::path&) {
        const rlimit nichts{0, 0};
        setrlimit(RLIMIT_FSIZE, &nichts);
    });
    ASSERT_TRUE(prozess.nimmtAn(SIGTERM)); // and the start stands in the queue before the signal
    prozess.senden(SIGTERM);
    EXPECT_EQ(prozess.ausgang(), "exit 0");
    EXPECT_EQ(namenIn(prozess.programmordner()), std::vector<std::string>{"gamepad-konfic"});
    EXPECT_EQ(dateiLesen(datenbank_.pfad()), vorher);
    EXPECT_EQ(namenIn(datenbank_.ordner()).size(), 1U);
}
