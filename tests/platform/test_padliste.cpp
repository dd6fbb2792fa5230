// SPDX-License-Identifier: GPL-3.0-or-later
// The user's list of pads: what SDL makes of a pad afterwards, which lines are faulty, which files are no
// list.
#include "platform/linux/Padliste.h"
#include "platform/linux/SdlJoystick.h"
#include "tests/hilfen/Testdatenbank.h"

#include <SDL.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using testing::ElementsAre;
using testing::IsEmpty;

void PrintTo(const Padlistenfehler& fehler, std::ostream* strom) {
    *strom << fehler.zeile << " " << fehler.grund << ": " << fehler.text;
}

namespace {

const std::string GUID = "03000000c0de00000100000000000000";

class Padlistentest : public testing::Test {
protected:
    // What a line says of the pad with GUID; "" where SDL knows none.
    static std::string bekannt() {
        const std::unique_ptr<char, decltype(&SDL_free)> text(
            SDL_GameControllerMappingForGUID(SDL_JoystickGetGUIDFromString(GUID.c_str())), &SDL_free);
        return text ? text.get() : "";
    }
    static std::vector<std::string> gruende(const Padliste& liste) {
        std::vector<std::string> alle;
        for (const auto& fehler : liste.fehler)
            alle.push_back(fehler.grund);
        return alle;
    }
    std::filesystem::path datei(const std::string& inhalt) const {
        const auto pfad = ordner.pfad() / "gamecontrollerdb.txt";
        std::ofstream(pfad, std::ios::binary) << inhalt;
        return pfad;
    }

    Testordner ordner;
    SdlJoystick joystick;
};

} // namespace

TEST_F(Padlistentest, EinPadDasSdlNichtKenntBekommtSeineBelegungAusDerListe) {
    const int stelle = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_UNKNOWN, 2, 6, 0);
    ASSERT_GE(stelle, 0);
    char guid[33];
    SDL_JoystickGetGUIDString(SDL_JoystickGetDeviceGUID(stelle), guid, sizeof guid);
    ASSERT_FALSE(SDL_IsGameController(stelle));
    // As SDL names it, with the sum over its name, which its own lists do not have.
    ASSERT_NE(std::string(guid).substr(4, 4), "0000");
    const auto liste = padlisteLaden(datei(std::string(guid) + ",Eigenbau,y:b5,leftx:a1,platform:Linux,\n"));
    EXPECT_EQ(liste.grund, "");
    EXPECT_THAT(liste.fehler, IsEmpty());
    EXPECT_EQ(liste.uebernommene, 1);
    auto* pad = SDL_JoystickOpen(stelle);
    SDL_JoystickSetVirtualButton(pad, 5, SDL_PRESSED);
    SDL_JoystickSetVirtualAxis(pad, 1, 32767);
    JOYINFOEX info;
    EXPECT_EQ(joystick.joyGetPosEx(0, info), JOYERR_NOERROR);
    EXPECT_EQ(info.dwButtons, 1U); // raw it would be 32
    EXPECT_EQ(info.dwXpos, 65535U);
    SDL_JoystickDetachVirtual(stelle);
    SDL_JoystickClose(pad);
}

TEST_F(Padlistentest, KommentareLeereZeilenUndAndereSystemeZaehlenNicht) {
    const auto liste = padlisteUebernehmen("# Game Controller DB\n"
                                           "\n"
                                           "   \t\n"
                                           "  # Windows\n" +
                                           GUID + ",Anderswo,a:b9,platform:Windows,\n" + GUID +
                                           ",Dort,a:b9,platform:Windows,type:ps5,\n" +
                                           "xinput,Auch anderswo,a:unsinn,platform:Windows,\n");
    EXPECT_THAT(liste.fehler, IsEmpty());
    EXPECT_EQ(liste.uebernommene, 0);
    EXPECT_EQ(bekannt(), "");
}

TEST_F(Padlistentest, BomUndZeilenendenVonWindowsStoerenNicht) {
    const auto liste =
        padlisteUebernehmen("\xEF\xBB\xBF" + GUID + ",Löwe,a:b1,platform:Linux,\r\n# Ende\r\n\r\n");
    EXPECT_THAT(liste.fehler, IsEmpty());
    EXPECT_EQ(liste.uebernommene, 1);
    EXPECT_THAT(bekannt(), testing::StartsWith(GUID + ",Löwe,a:b1,"));
    EXPECT_THAT(bekannt(), testing::Not(testing::HasSubstr("\r")));
}

TEST_F(Padlistentest, JedeArtVonAngabeIstErlaubt) {
    const auto liste = padlisteUebernehmen(
        GUID + ", Alles ,a:b0,b:b127,dpup:h0.1,dpdown:-a1,leftx:a0,lefty:a1~,+rightx:+a2,-rightx:-a2~,"
               "lefttrigger:a5,misc9:wer weiss,crc:1a2b,hint:!SDL_GAMECONTROLLER_USE_BUTTON_LABELS:=1,"
               "type:ps5,sdk>=:200");
    EXPECT_THAT(liste.fehler, IsEmpty());
    EXPECT_EQ(liste.uebernommene, 1);
}

TEST_F(Padlistentest, EineFehlerhafteZeileWirdGenanntUndAusgelassenDieAnderenGelten) {
    const std::string fehlerhaft = GUID + ",Pad,a:b0,x:c3,platform:Linux,";
    const auto liste = padlisteUebernehmen("# Pads\n" + GUID + ",Pad,a:b7,\n" + fehlerhaft + "\nGerede\n" +
                                           "03000000c0de00000200000000000000,Zweites,a:b0,\n");
    EXPECT_THAT(
        liste.fehler,
        ElementsAre(
            Padlistenfehler{3, fehlerhaft, "„x:c3“ nennt weder Taste noch Achse noch Richtung"},
            Padlistenfehler{4, "Gerede", "sie beginnt nicht mit einer Kennung aus 32 Hexadezimalziffern"}));
    EXPECT_EQ(liste.uebernommene, 2);
    EXPECT_THAT(bekannt(), testing::HasSubstr(",a:b7,"));
}

TEST_F(Padlistentest, WasEinerZeileFehlt) {
    const std::string kennung = "sie beginnt nicht mit einer Kennung aus 32 Hexadezimalziffern";
    const auto grund = [](const std::string& zeile) {
        const auto alle = gruende(padlisteUebernehmen(zeile));
        return alle.size() == 1 ? alle.front() : std::to_string(alle.size()) + " faults";
    };
    const auto keineQuelle = [](const std::string& feld) {
        return "„" + feld + "“ nennt weder Taste noch Achse noch Richtung";
    };
    EXPECT_EQ(grund(GUID.substr(1) + ",Pad,a:b0"), kennung);
    EXPECT_EQ(grund(GUID + "0,Pad,a:b0"), kennung);
    EXPECT_EQ(grund("g" + GUID.substr(1) + ",Pad,a:b0"), kennung);
    EXPECT_EQ(grund(GUID), "der Name des Gamepads fehlt");
    EXPECT_EQ(grund(GUID + ", ,a:b0"), "der Name des Gamepads fehlt");
    EXPECT_EQ(grund(GUID + ",Pad"), "sie ordnet nichts zu");
    EXPECT_EQ(grund(GUID + ",Pad,,platform:Linux,type:ps5"), "sie ordnet nichts zu");
    EXPECT_EQ(grund(GUID + ",Pad,a:b0,x"), "„x“ hat keinen Doppelpunkt");
    for (const std::string feld : {"a:", "a:b", "a:b256", "a:b-1", "a:0", "a:+b1", "leftx:a", "leftx:a1~~",
                                   "dpup:h0", "dpup:h.1", "dpup:+h0.1", "+leftx:a1x", "a:b0:1"})
        EXPECT_EQ(grund(GUID + ",Pad,b:b0," + feld), keineQuelle(feld));
    EXPECT_EQ(bekannt(), "");
}

TEST_F(Padlistentest, OhneDateiIstEsEineLeereListe) {
    const auto liste = padlisteLaden(ordner.pfad() / "gamecontrollerdb.txt");
    EXPECT_EQ(liste.grund, "");
    EXPECT_THAT(liste.fehler, IsEmpty());
    EXPECT_EQ(padlisteLaden(datei("")).grund, "");
}

TEST_F(Padlistentest, WasKeineDateiIstWirdGesagtUndHaeltNichtAuf) {
    EXPECT_EQ(padlisteLaden(ordner.pfad()).grund, "sie ist keine Datei");
    const auto rohr = ordner.pfad() / "rohr";
    ASSERT_EQ(mkfifo(rohr.c_str(), 0600), 0);
    EXPECT_EQ(padlisteLaden(rohr).grund, "sie ist keine Datei");
    const auto schleife = ordner.pfad() / "schleife";
    std::filesystem::create_symlink(schleife, schleife);
    EXPECT_EQ(padlisteLaden(schleife).grund, "sie lässt sich nicht öffnen");
}

TEST_F(Padlistentest, VierMebibyteSindErlaubtEinByteMehrNicht) {
    const std::string zeile = GUID + ",Pad,a:b1,\n";
    const std::string fuellung(PADLISTE_HOECHSTENS - zeile.size(), '#');
    EXPECT_EQ(padlisteLaden(datei(zeile + fuellung)).uebernommene, 1);
    const auto zuGross = padlisteLaden(datei(zeile + fuellung + "#"));
    EXPECT_EQ(zuGross.grund, "sie ist größer als 4 MiB");
    EXPECT_EQ(zuGross.uebernommene, 0);
}

TEST_F(Padlistentest, WasKeinUtf8IstWirdGesagtUndNichtBenutzt) {
    const std::string zeile = GUID + ",Pad,a:b1,\n";
    for (const std::string& anfang :
         {std::string("# L\xF6we"), std::string("# \xC3"), std::string("\xFF\xFE"), std::string("# \0", 3),
          std::string("# \xC0\xAF"), std::string("# \xED\xA0\x80"), std::string("# \xE0\x80\xAF"),
          std::string("# \xF4\x90\x80\x80"), std::string("# \xF0\x8F\xBF\xBF")}) {
        const auto liste = padlisteUebernehmen(zeile + anfang);
        EXPECT_EQ(liste.grund, "sie ist kein Text in UTF-8 (Zeile 2)");
        EXPECT_EQ(liste.uebernommene, 0);
    }
    EXPECT_EQ(padlisteUebernehmen("# ö € 😀 \xED\x9F\xBF \xF4\x8F\xBF\xBF").grund, "");
    EXPECT_EQ(bekannt(), "");
}
