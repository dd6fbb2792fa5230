// SPDX-License-Identifier: GPL-3.0-or-later
// The program `spur` as it is called: what it prints, and its exit code.
#include "tests/hilfen/Testdatenbank.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

const std::string KOPF = "sql INSERT INTO tblTastatur (Schemaname, btn3) VALUES ('S', '1,65,0-0-0');\n"
                         "sql INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');\n"
                         "0 start\n10 buttons 4\n20 buttons 0\n30 ende\n=\n";
const std::string RICHTIG = KOPF + "10 +65\n20 -65\n";
const std::string FALSCH = KOPF + "10 +65\n25 -65\n";

const std::string BEIDE = "# comment\ngrundzeilen\nsticks beide\n"
                          "sql INSERT INTO tblStickAktion VALUES ('S', 0, 20000, 0, 0, 0, '2,0,65,0,0');\n"
                          "0 start\n98 achse 0 10000\n148 achse 0 32767\n300 ende\n=\n";
const std::string HILFE = "usage: spur [--streng | --zeige] [--mindestens N] [--ruhend N] FILE|FOLDER...\n"
                          "       spur --weg links|rechts FILE\n";

struct Ausgang {
    int code;
    std::string text;
    bool operator==(const Ausgang&) const = default;
};
std::ostream& operator<<(std::ostream& strom, const Ausgang& ausgang) {
    return strom << ausgang.code << ": " << ausgang.text;
}

class SpurProgramm : public testing::Test {
protected:
    /// Runs it in a folder of its own; both of its outputs in one.
    Ausgang spur(const std::string& worte) {
        const auto befehl = "cd '" + ordner.pfad().string() + "' && '" SPUR "' " + worte + " 2>&1";
        FILE* rohr = popen(befehl.c_str(), "r");
        std::string text;
        std::array<char, 256> stueck{};
        while (fgets(stueck.data(), stueck.size(), rohr))
            text += stueck.data();
        const int ende = pclose(rohr);
        return {WIFEXITED(ende) ? WEXITSTATUS(ende) : -1, text};
    }
    void datei(const std::string& name, const std::string& inhalt) {
        std::ofstream(ordner.pfad() / name, std::ios::binary) << inhalt;
    }

    Testordner ordner;
};

TEST_F(SpurProgramm, BestandeneSpur) {
    datei("a.spur", RICHTIG);
    EXPECT_EQ(spur("a.spur"), (Ausgang{0, "1 file: 1 passed, 0 failed\n"}));
}

TEST_F(SpurProgramm, DerErsteUnterschiedJederDatei) {
    datei("a.spur", RICHTIG);
    datei("b.spur", FALSCH);
    datei("c.spur", KOPF);
    EXPECT_EQ(spur("a.spur b.spur c.spur a.spur"),
              (Ausgang{1, "b.spur: event 2: expected 25 -65, came 20 -65\n"
                          "c.spur: event 1: expected nothing more, came 10 +65\n"
                          "4 files: 2 passed, 2 failed\n"}));
}

TEST_F(SpurProgramm, UnlesbareDateiHaeltDieAnderenNichtAuf) {
    datei("a.spur", "0 gehen\n");
    datei("c.spur", RICHTIG);
    EXPECT_EQ(spur("a.spur b.spur c.spur"), (Ausgang{1, "a.spur: line 1: unknown input \"gehen\"\n"
                                                        "b.spur: can't be read\n"
                                                        "3 files: 1 passed, 2 failed\n"}));
}

TEST_F(SpurProgramm, EinFremderTextSagtDemTerminalNichts) {
    datei("a.spur", "0 \x1b[31mrot\x07\n");
    EXPECT_EQ(spur("a.spur"), (Ausgang{1, "a.spur: line 1: unknown input \"?[31mrot?\"\n"
                                          "1 file: 0 passed, 1 failed\n"}));
}

TEST_F(SpurProgramm, EinUnmoeglicherNameIstKeinAbsturz) {
    const std::string lang(300, 'a');
    EXPECT_EQ(spur(lang), (Ausgang{1, lang + ": can't be read\n1 file: 0 passed, 1 failed\n"}));
}

TEST_F(SpurProgramm, SagtWieWeitEinMitschnittGenauIst) {
    datei("a.spur", "toleranz 10\ngenau 15\n" + RICHTIG);
    EXPECT_EQ(spur("a.spur"),
              (Ausgang{0, "a.spur: played as far as it is exact, 15 ms\n1 file: 1 passed, 0 failed\n"}));
    datei("a.spur", "toleranz 10\ngenau 0\n" + RICHTIG);
    EXPECT_EQ(spur("a.spur"), (Ausgang{1, "a.spur: nothing of it is exact\n1 file: 0 passed, 1 failed\n"}));
}

TEST_F(SpurProgramm, ZeigtWasHerauskommt) {
    datei("a.spur", FALSCH);
    EXPECT_EQ(spur("--zeige a.spur"), (Ausgang{0, "10 +65\n20 -65\n"}));
}

TEST_F(SpurProgramm, ZeigtAuchDenFehlerDesLaufs) {
    datei("a.spur", "0 start\n10 ende\n=\n");
    const auto ausgang = spur("--zeige a.spur");
    EXPECT_EQ(ausgang.code, 0);
    EXPECT_TRUE(ausgang.text.starts_with("stopped by error 3021: ")) << ausgang;
}

TEST_F(SpurProgramm, EinFehlerDenDieSpurNichtNenntGiltNurStreng) {
    datei("a.spur", "0 start\n10 ende\n=\n");
    EXPECT_EQ(spur("a.spur"), (Ausgang{0, "1 file: 1 passed, 0 failed\n"}));
    EXPECT_EQ(spur("--streng a.spur").code, 1);
}

TEST_F(SpurProgramm, ZeigtWoEinStickWar) {
    const std::string aufnahme =
        "toleranz 10\ngrundzeilen\nsql UPDATE tblTastatur SET btn9 = '3,0,0-0-0' WHERE Schemaname = 'S';\n"
        "sql INSERT INTO tblStickAktion VALUES ('S', 0, 20000, 0, 0, 0, '2,0,65,0,0');\n"
        "0 start\n98 achse 0 10000\n148 achse 0 32767\n200 buttons 256\n300 buttons 0\n400 ende\n=\n";
    datei("a.spur", aufnahme + "100 +65\n150 -65\n");
    // Ticks are at 5, 10, ...; the first one has no raw values yet.
    EXPECT_EQ(spur("--weg links a.spur"),
              (Ausgang{0, "Stickweg 1\nEbene 0 5\n32767 32767 18\n10000 32767 10\n32767 32767 10\n0 0 0\n"
                          "32767 32767 20\nEbene 1 1\n32767 32767 20\nEbene 2 0\nEnde\n"}));
    EXPECT_EQ(spur("--weg rechts a.spur"),
              (Ausgang{0, "Stickweg 1\nEbene 0 3\n32767 32767 38\n0 0 0\n32767 32767 20\nEbene 1 1\n"
                          "32767 32767 20\nEbene 2 0\nEnde\n"}));
    datei("a.spur", aufnahme + "100 +65\n150 -66\n");
    EXPECT_EQ(spur("--weg links a.spur"), (Ausgang{1, "a.spur: event 2: expected 150 -66, came 150 -65\n"}));
    datei("a.spur", RICHTIG);
    EXPECT_EQ(spur("--weg links a.spur"), (Ausgang{1, "a.spur: is no record\n"}));
    EXPECT_EQ(spur("--weg oben a.spur"), (Ausgang{2, HILFE}));
    EXPECT_EQ(spur("--weg links"), (Ausgang{2, HILFE}));
}

TEST_F(SpurProgramm, ZeigenEinerUnlesbarenDateiScheitert) {
    EXPECT_EQ(spur("--zeige fehlt.spur"), (Ausgang{1, "fehlt.spur: can't be read\n"}));
}

TEST_F(SpurProgramm, OhneDateiSagtWieManEsRuft) {
    EXPECT_EQ(spur(""), (Ausgang{2, HILFE}));
    EXPECT_EQ(spur("--zeige"), (Ausgang{2, HILFE}));
}

TEST_F(SpurProgramm, EinFalschesWortSagtWieManEsRuft) {
    datei("a.spur", RICHTIG);
    EXPECT_EQ(spur("--alles a.spur"), (Ausgang{2, HILFE}));
    EXPECT_EQ(spur("a.spur --mindestens"), (Ausgang{2, HILFE}));
    EXPECT_EQ(spur("--mindestens viele a.spur"), (Ausgang{2, HILFE}));
}

TEST_F(SpurProgramm, NenntDieVarianteDieScheitert) {
    datei("a.spur", BEIDE + "100 +65\n150 -65\n");
    EXPECT_EQ(spur("a.spur"), (Ausgang{0, "1 file: 2 passed, 0 failed\n"}));
    datei("a.spur", BEIDE + "100 +65\n150 -66\n");
    EXPECT_EQ(spur("a.spur"), (Ausgang{1, "a.spur (links): event 2: expected 150 -66, came 150 -65\n"
                                          "a.spur (rechts): event 2: expected 150 -66, came 150 -65\n"
                                          "1 file: 0 passed, 2 failed\n"}));
}

TEST_F(SpurProgramm, ScheitertWoNurEineVarianteScheitert) {
    // The left stick binds at other times than the right one.
    datei("a.spur",
          "grundzeilen\nsticks beide\nsql INSERT INTO tblStickAktion VALUES ('S', 0, 20000, 0, 0, 0, "
          "'5,1');\n0 start\n98 achse 0 10000\n102 stop\n=\n100 abs(10000,32767)\n");
    EXPECT_EQ(spur("a.spur"),
              (Ausgang{1, "a.spur (rechts): event 2: expected nothing more, came 101 abs(10000,32767)\n"
                          "1 file: 1 passed, 1 failed\n"}));
}

TEST_F(SpurProgramm, ZeigtJedeVariante) {
    datei("a.spur", BEIDE);
    EXPECT_EQ(spur("--zeige a.spur"),
              (Ausgang{0, "# links\n100 +65\n150 -65\n# rechts\n100 +65\n150 -65\n"}));
}

TEST_F(SpurProgramm, SpieltAllesInEinemOrdnerUndDarunter) {
    std::filesystem::create_directories(ordner.pfad() / "o/c");
    std::string erwartet;
    for (const std::string name : {"o/a", "o/b", "o/c/a", "o/c/b", "o/d", "o/e", "o/f"}) {
        datei(name + ".spur", FALSCH);
        erwartet += name + ".spur: event 2: expected 25 -65, came 20 -65\n";
    }
    datei("o/g.spur", RICHTIG);
    datei("o/a.txt", FALSCH);
    EXPECT_EQ(spur("o"), (Ausgang{1, erwartet + "8 files: 1 passed, 7 failed\n"}));
}

TEST_F(SpurProgramm, ZuWenigeSzenarienSindEinFehler) {
    std::filesystem::create_directory(ordner.pfad() / "leer");
    datei("a.spur", BEIDE + "100 +65\n150 -65\n");
    EXPECT_EQ(spur("--mindestens 2 a.spur"), (Ausgang{0, "1 file: 2 passed, 0 failed\n"}));
    EXPECT_EQ(spur("--mindestens 3 a.spur"),
              (Ausgang{1, "1 file: 2 passed, 0 failed\nfewer than 3 scenarios\n"}));
    EXPECT_EQ(spur("--mindestens 1 leer"),
              (Ausgang{1, "0 files: 0 passed, 0 failed\nfewer than 1 scenarios\n"}));
}

} // namespace
