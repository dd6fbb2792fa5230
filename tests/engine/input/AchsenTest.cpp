// SPDX-License-Identifier: GPL-3.0-or-later
// What the axes of the pad read by their names, and how the pad is asked.
#include "engine/input/Achsen.h"
#include "platform/probe/ProbeJoystick.h"
#include "store/files/Achsendatei.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Gamepadxml.h"
#include "tests/hilfen/Speicherzaehler.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::Each;
using testing::ElementsAre;

namespace {

using Namen = std::array<std::string, ACHSEN>;

const Namen GRUNDBELEGUNG{"lx", "ly", "rx", "ry", "Z1", "Z2"};
const Namen VERTAUSCHT{"ly", "lx", "rx", "ry", "Z2", "Z1"};

class AchsenLesenTest : public testing::Test {
protected:
    using Werte = std::array<std::optional<std::int32_t>, ACHSEN>; // lx ly rx ry Z1 Z2

    Testordner ordner;
    std::filesystem::path pfad = ordner.pfad() / "Gamepad.xml";
    ProbeJoystick joystick;
    std::string auswahl = "S";
    Achsendatei achsendatei{pfad.string(), auswahl};
    Achsen achsen{joystick, achsendatei};

    AchsenLesenTest() { stellen(1, 2, 3, 4, 5, 6); }

    void stellen(std::uint32_t x, std::uint32_t y, std::uint32_t z, std::uint32_t r, std::uint32_t u,
                 std::uint32_t v) {
        joystick.zustand.dwXpos = x;
        joystick.zustand.dwYpos = y;
        joystick.zustand.dwZpos = z;
        joystick.zustand.dwRpos = r;
        joystick.zustand.dwUpos = u;
        joystick.zustand.dwVpos = v;
    }
    void zuordnen(const Namen& namen) {
        dateiSchreiben(pfad, gamepadXmlMit("S", namen, ""));
        achsendatei.AchsenLaden();
    }
    Werte werte() const {
        return {achsen.AchsenWert(Achse::lx), achsen.AchsenWert(Achse::ly), achsen.AchsenWert(Achse::rx),
                achsen.AchsenWert(Achse::ry), achsen.AchsenWert(Achse::Z1), achsen.AchsenWert(Achse::Z2)};
    }
    Werte gelesen() {
        achsen.AchsenLesen();
        return werte();
    }
};

/// Notes what it is asked.
class FragenderJoystick final : public Joystick {
public:
    std::vector<std::uint32_t> gefragt; ///< id, dwSize, dwFlags, ...
    std::uint32_t joyGetPosEx(std::uint32_t id, JOYINFOEX& info) override {
        gefragt.insert(gefragt.end(), {id, info.dwSize, info.dwFlags});
        return JOYERR_NOERROR;
    }
};

} // namespace

TEST_F(AchsenLesenTest, JedeRohachseGibtIhrenWertUnterIhremNamen) {
    zuordnen(GRUNDBELEGUNG);
    EXPECT_EQ(gelesen(), (Werte{1, 2, 3, 4, 5, 6}));
    zuordnen({"ry", "rx", "Z2", "Z1", "lx", "ly"});
    EXPECT_EQ(gelesen(), (Werte{5, 6, 2, 1, 4, 3}));
}

TEST_F(AchsenLesenTest, DieGrenzenDerWerteKommenWieSieSind) {
    zuordnen(GRUNDBELEGUNG);
    stellen(0, 65535, 32767, 32768, 1, 65534);
    EXPECT_EQ(gelesen(), (Werte{0, 65535, 32767, 32768, 1, 65534}));
}

TEST_F(AchsenLesenTest, VorDemErstenLesenGibtEsKeineWerte) {
    zuordnen(GRUNDBELEGUNG);
    EXPECT_THAT(werte(), Each(std::nullopt));
}

TEST_F(AchsenLesenTest, OhneZuordnungGibtEsKeineWerte) {
    EXPECT_THAT(gelesen(), Each(std::nullopt));
}

TEST_F(AchsenLesenTest, VorDerErstenGelungenenAbfrageGibtEsKeineWerte) {
    zuordnen(GRUNDBELEGUNG);
    joystick.da = false;
    EXPECT_THAT(gelesen(), Each(std::nullopt));
    joystick.da = true;
    EXPECT_EQ(gelesen(), (Werte{1, 2, 3, 4, 5, 6}));
}

TEST_F(AchsenLesenTest, EineMisslungeneAbfrageGibtDieLetztenWerteNachDenNamenVonJetzt) {
    zuordnen(GRUNDBELEGUNG);
    achsen.AchsenLesen();
    joystick.da = false;
    stellen(7, 7, 7, 7, 7, 7);
    EXPECT_EQ(gelesen(), (Werte{1, 2, 3, 4, 5, 6}));
    zuordnen(VERTAUSCHT);
    EXPECT_EQ(werte(), (Werte{1, 2, 3, 4, 5, 6})); // not before the next reading
    EXPECT_EQ(gelesen(), (Werte{2, 1, 3, 4, 6, 5}));
}

TEST_F(AchsenLesenTest, VonGleichenNamenZaehltDieErsteRohachse) {
    zuordnen({"lx", "lx", "Z1", "lx", "Z1", "ly"});
    EXPECT_EQ(gelesen(), (Werte{1, 6, std::nullopt, std::nullopt, 3, std::nullopt}));
    stellen(0, 9, 0, 9, 9, 9); // a first value of 0 stands as well
    EXPECT_EQ(gelesen(), (Werte{0, 9, std::nullopt, std::nullopt, 0, std::nullopt}));
}

TEST_F(AchsenLesenTest, FremdeNamenGebenKeineWerte) {
    zuordnen({"", "LX", "lx ", "Z3", "l", "ry"});
    EXPECT_EQ(gelesen(), (Werte{std::nullopt, std::nullopt, std::nullopt, 6, std::nullopt, std::nullopt}));
}

TEST_F(AchsenLesenTest, EinNameDerWegfaelltVerliertSeinenWert) {
    zuordnen(GRUNDBELEGUNG);
    achsen.AchsenLesen();
    dateiSchreiben(pfad, "kaputt");
    achsendatei.AchsenLaden();
    EXPECT_THAT(gelesen(), Each(std::nullopt));
}

TEST_F(AchsenLesenTest, GefragtWirdDasErstePadNachAllenWerten) {
    FragenderJoystick fragender;
    Achsen andere(fragender, achsendatei);
    andere.AchsenLesen();
    andere.AchsenLesen();
    EXPECT_THAT(fragender.gefragt, ElementsAre(0U, 64U, 255U, 0U, 64U, 255U));
}

TEST_F(AchsenLesenTest, DasLesenFordertKeinenSpeicherAn) {
    zuordnen({"lx", "ly", "ein langer Name der nicht in einen kurzen Text passt", "ry", "Z1", "Z1"});
    const long vorher = speicheranforderungen();
    for (int i = 0; i < 1000; ++i) {
        joystick.da = i % 3 != 0;
        achsen.AchsenLesen();
    }
    EXPECT_EQ(speicheranforderungen() - vorher, 0);
    EXPECT_GT(vorher, 0);
}
