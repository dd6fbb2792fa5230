// SPDX-License-Identifier: GPL-3.0-or-later
// Pads: the contract on the scripted pad and on SDL's virtual ones, then what only the SDL backend does.
#include "platform/linux/SdlJoystick.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/platform/Auffrischungen.h"
#include "tests/platform/JoystickSatz.h"

#include <QCoreApplication>
#include <SDL.h>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

// A pad that is made by the test and that SDL finds.
class VirtuellesPad {
public:
    struct Bau {
        SDL_JoystickType art = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
        int achsen = SDL_CONTROLLER_AXIS_MAX;
        int tasten = SDL_CONTROLLER_BUTTON_MAX;
        int huete = 0;
        const char* name = "Testpad";
    };

    VirtuellesPad() : VirtuellesPad(Bau{}) {}
    explicit VirtuellesPad(const Bau& bau) {
        SDL_VirtualJoystickDesc beschreibung{};
        beschreibung.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
        beschreibung.type = static_cast<Uint16>(bau.art);
        beschreibung.naxes = static_cast<Uint16>(bau.achsen);
        beschreibung.nbuttons = static_cast<Uint16>(bau.tasten);
        beschreibung.nhats = static_cast<Uint16>(bau.huete);
        beschreibung.name = bau.name;
        const int stelle = SDL_JoystickAttachVirtualEx(&beschreibung);
        pad_ = SDL_JoystickOpen(stelle);
        EXPECT_NE(pad_, nullptr) << SDL_GetError();
        if (bau.art == SDL_JOYSTICK_TYPE_GAMECONTROLLER && bau.achsen == SDL_CONTROLLER_AXIS_MAX)
            for (const int abzug : {SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_CONTROLLER_AXIS_TRIGGERRIGHT})
                achse(abzug, -32768); // the full way of a trigger is an axis from end to end
    }
    VirtuellesPad(const VirtuellesPad&) = delete;
    VirtuellesPad& operator=(const VirtuellesPad&) = delete;
    ~VirtuellesPad() {
        const auto kennung = SDL_JoystickInstanceID(pad_);
        for (int stelle = 0; stelle < SDL_NumJoysticks(); ++stelle)
            if (SDL_JoystickGetDeviceInstanceID(stelle) == kennung) {
                SDL_JoystickDetachVirtual(stelle);
                break;
            }
        SDL_JoystickClose(pad_);
    }

    void achse(int nummer, int wert) { SDL_JoystickSetVirtualAxis(pad_, nummer, static_cast<Sint16>(wert)); }
    void taste(int nummer, bool unten = true) {
        SDL_JoystickSetVirtualButton(pad_, nummer, unten ? SDL_PRESSED : SDL_RELEASED);
    }
    void hut(Uint8 richtung) { SDL_JoystickSetVirtualHat(pad_, 0, richtung); }

private:
    SDL_Joystick* pad_;
};

JOYINFOEX lesen(Joystick& joystick, std::uint32_t id = 0) {
    JOYINFOEX info;
    EXPECT_EQ(joystick.joyGetPosEx(id, info), JOYERR_NOERROR);
    return info;
}

// As the poll cycle hands it in, with leftovers in every field that is to be filled.
JOYINFOEX beschrieben() {
    JOYINFOEX info;
    info.dwSize = 64;
    info.dwFlags = 255;
    info.dwXpos = info.dwYpos = info.dwZpos = info.dwRpos = info.dwUpos = info.dwVpos = 1234;
    info.dwButtons = info.dwButtonNumber = info.dwPOV = 1234;
    return info;
}

// What every backend of the contract needs of a test pad: that it comes, goes and has a button for bit 0.
struct MitProbe {
    ProbeJoystick joystick;
    MitProbe() {
        joystick.da = false;
        joystick.kannWachen = true;
        joystick.namen = {"Testpad"};
    }
    void einstecken() { joystick.da = true; }
    void ausstecken() {
        joystick.da = false;
        joystick.zustand = ProbeJoystick::inRuhe();
    }
    void bit0druecken() {
        joystick.zustand.dwButtons = 1;
        joystick.zustand.dwButtonNumber = 1;
    }
    static constexpr bool BEWACHT_SEIN_PAD = true;
    void ereignisse() { joystick.melden(); }
};

struct MitSdl {
    SdlJoystick joystick;
    std::unique_ptr<VirtuellesPad> pad;
    void einstecken() { pad = std::make_unique<VirtuellesPad>(); }
    void ausstecken() { pad.reset(); }
    void bit0druecken() { pad->taste(SDL_CONTROLLER_BUTTON_Y); }
    static constexpr bool BEWACHT_SEIN_PAD = false; // it is none of the kernel's
    // A pad of this process is seen by who looks next.
    void ereignisse() {
        QCoreApplication::processEvents();
        joystick.auskunft();
    }
};

template <typename Backend> class JoystickVertrag : public testing::Test {
protected:
    Backend backend;
    Joystick& joystick = backend.joystick;
};
using Backends = testing::Types<MitProbe, MitSdl>;
TYPED_TEST_SUITE(JoystickVertrag, Backends);

} // namespace

TYPED_TEST(JoystickVertrag, OhnePadBleibtDerSatzWieErWar) {
    JOYINFOEX info = beschrieben();
    const JOYINFOEX vorher = info;
    EXPECT_EQ(this->joystick.joyGetPosEx(0, info), JOYERR_UNPLUGGED);
    EXPECT_EQ(info, vorher);
}

TYPED_TEST(JoystickVertrag, EinPadInRuheFuelltAllesAusserGroesseUndFlaggen) {
    this->backend.einstecken();
    JOYINFOEX info = beschrieben();
    auto erwartet = ProbeJoystick::inRuhe();
    erwartet.dwSize = 64;
    erwartet.dwFlags = 255;
    EXPECT_EQ(this->joystick.joyGetPosEx(0, info), JOYERR_NOERROR);
    EXPECT_EQ(info, erwartet);
}

TYPED_TEST(JoystickVertrag, EinZweitesPadIstNichtDa) {
    this->backend.einstecken();
    JOYINFOEX info;
    EXPECT_EQ(this->joystick.joyGetPosEx(1, info), JOYERR_UNPLUGGED);
    EXPECT_EQ(this->joystick.joyGetPosEx(0xFFFFFFFF, info), JOYERR_UNPLUGGED);
    EXPECT_EQ(info, JOYINFOEX{});
}

TYPED_TEST(JoystickVertrag, DieAuskunftFolgtDemPad) {
    for (int mal = 0; mal < 3; ++mal) {
        EXPECT_EQ(this->joystick.auskunft(), Padauskunft{});
        this->backend.einstecken();
        EXPECT_EQ(this->joystick.auskunft(), (Padauskunft{1, "Testpad"}));
        this->backend.ausstecken();
    }
    EXPECT_EQ(this->joystick.auskunft(), Padauskunft{});
}

TYPED_TEST(JoystickVertrag, EinPadKommtUndGehtHundertmal) {
    for (int mal = 0; mal < 100; ++mal) {
        JOYINFOEX info;
        ASSERT_EQ(this->joystick.joyGetPosEx(0, info), JOYERR_UNPLUGGED) << mal;
        this->backend.einstecken();
        this->backend.bit0druecken();
        ASSERT_EQ(this->joystick.joyGetPosEx(0, info), JOYERR_NOERROR) << mal;
        ASSERT_EQ(info.dwButtons, 1U) << mal;
        ASSERT_EQ(info.dwButtonNumber, 1U) << mal;
        this->backend.ausstecken();
    }
}

TYPED_TEST(JoystickVertrag, WerWachtWirdEinmalGewecktWennEinPadKommt) {
    int geweckt = 0;
    JOYINFOEX info;
    this->joystick.joyGetPosEx(0, info);
    ASSERT_TRUE(this->joystick.wachen([&](auto) { ++geweckt; }));
    this->backend.ereignisse();
    EXPECT_EQ(geweckt, 0);
    this->backend.einstecken();
    this->backend.ereignisse();
    EXPECT_EQ(geweckt, 1);
    this->backend.ausstecken();
    this->backend.ereignisse();
    EXPECT_EQ(geweckt, 1);
}

TYPED_TEST(JoystickVertrag, WerNichtMehrWachtUndWerAbgeloestIstSchlaeftWeiter) {
    int geweckt = 0;
    JOYINFOEX info;
    this->joystick.joyGetPosEx(0, info);
    ASSERT_TRUE(this->joystick.wachen([&](auto) { ++geweckt; }));
    this->joystick.nichtWachen();
    this->joystick.nichtWachen();
    this->backend.einstecken();
    this->backend.ereignisse();
    this->backend.ausstecken();
    this->joystick.joyGetPosEx(0, info);
    EXPECT_EQ(geweckt, 0);
}

TYPED_TEST(JoystickVertrag, EinPadWirdBewachtOderMussGelesenWerden) {
    this->backend.einstecken();
    JOYINFOEX info;
    this->joystick.joyGetPosEx(0, info);
    std::vector<std::string> geweckt;
    const auto wachen = [&](const char* was) {
        return this->joystick.wachen([&geweckt, was](auto) { geweckt.push_back(was); });
    };
    ASSERT_EQ(wachen("ersetzt"), TypeParam::BEWACHT_SEIN_PAD);
    if (!TypeParam::BEWACHT_SEIN_PAD)
        return;
    wachen("Taste");
    this->backend.ereignisse();
    this->backend.bit0druecken();
    this->backend.ereignisse();
    this->joystick.joyGetPosEx(0, info);
    wachen("weg");
    this->backend.ereignisse();
    this->backend.ausstecken();
    this->backend.ereignisse();
    EXPECT_THAT(geweckt, testing::ElementsAre("Taste", "weg"));
}

namespace {

class SdlPad : public testing::Test {
protected:
    SdlJoystick joystick;
};

TEST_F(SdlPad, DieTastenStehenInDerReihenfolgeDesPads) {
    VirtuellesPad pad;
    const std::pair<int, std::uint32_t> faelle[] = {{SDL_CONTROLLER_BUTTON_Y, 0},
                                                    {SDL_CONTROLLER_BUTTON_B, 1},
                                                    {SDL_CONTROLLER_BUTTON_A, 2},
                                                    {SDL_CONTROLLER_BUTTON_X, 3},
                                                    {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, 5},
                                                    {SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, 7},
                                                    {SDL_CONTROLLER_BUTTON_BACK, 8},
                                                    {SDL_CONTROLLER_BUTTON_START, 9},
                                                    {SDL_CONTROLLER_BUTTON_LEFTSTICK, 10},
                                                    {SDL_CONTROLLER_BUTTON_RIGHTSTICK, 11}};
    for (const auto& [taste, bit] : faelle) {
        pad.taste(taste);
        auto erwartet = ProbeJoystick::inRuhe();
        erwartet.dwButtons = 1U << bit;
        erwartet.dwButtonNumber = bit + 1;
        EXPECT_EQ(lesen(joystick), erwartet) << "bit " << bit;
        pad.taste(taste, false);
    }
    EXPECT_EQ(lesen(joystick), ProbeJoystick::inRuhe());
}

TEST_F(SdlPad, AndereTastenErreichenDwButtonsNicht) {
    VirtuellesPad pad;
    for (const int taste :
         {SDL_CONTROLLER_BUTTON_GUIDE, SDL_CONTROLLER_BUTTON_MISC1, SDL_CONTROLLER_BUTTON_PADDLE1,
          SDL_CONTROLLER_BUTTON_PADDLE2, SDL_CONTROLLER_BUTTON_PADDLE3, SDL_CONTROLLER_BUTTON_PADDLE4,
          SDL_CONTROLLER_BUTTON_TOUCHPAD})
        pad.taste(taste);
    EXPECT_EQ(lesen(joystick), ProbeJoystick::inRuhe());
}

TEST_F(SdlPad, DasSteuerkreuzGibtAchtRichtungen) {
    VirtuellesPad pad;
    const int reihe[] = {SDL_CONTROLLER_BUTTON_DPAD_UP, SDL_CONTROLLER_BUTTON_DPAD_RIGHT,
                         SDL_CONTROLLER_BUTTON_DPAD_DOWN, SDL_CONTROLLER_BUTTON_DPAD_LEFT};
    std::vector<std::uint32_t> winkel;
    for (int nummer = 0; nummer < 4; ++nummer) {
        const int naechste = reihe[(nummer + 1) % 4];
        pad.taste(reihe[nummer]);
        winkel.push_back(lesen(joystick).dwPOV);
        pad.taste(naechste);
        winkel.push_back(lesen(joystick).dwPOV);
        pad.taste(reihe[nummer], false);
        pad.taste(naechste, false);
    }
    winkel.push_back(lesen(joystick).dwPOV);
    EXPECT_THAT(winkel, testing::ElementsAre(0, 4500, 9000, 13500, 18000, 22500, 27000, 31500, 65535));
}

TEST_F(SdlPad, GegenlaeufigeRichtungenSindKeine) {
    VirtuellesPad pad;
    pad.taste(SDL_CONTROLLER_BUTTON_DPAD_UP);
    pad.taste(SDL_CONTROLLER_BUTTON_DPAD_DOWN);
    EXPECT_EQ(lesen(joystick).dwPOV, JOY_POVCENTERED);
}

TEST_F(SdlPad, DieSticksLiegenAufXyUndZr) {
    VirtuellesPad pad;
    pad.achse(SDL_CONTROLLER_AXIS_LEFTX, -32768);
    pad.achse(SDL_CONTROLLER_AXIS_LEFTY, -1);
    pad.achse(SDL_CONTROLLER_AXIS_RIGHTX, 1);
    pad.achse(SDL_CONTROLLER_AXIS_RIGHTY, 32767);
    auto erwartet = ProbeJoystick::inRuhe();
    erwartet.dwXpos = 0;
    erwartet.dwYpos = 32766;
    erwartet.dwZpos = 32769;
    erwartet.dwRpos = 65535;
    EXPECT_EQ(lesen(joystick), erwartet);
}

TEST_F(SdlPad, DieAbzuegeSindAchsenUndVonHalbemWegAnTasten) {
    VirtuellesPad pad;
    // An end-to-end axis: SDL halves it to 0..32767.
    const auto stand = [&](int roh) {
        pad.achse(SDL_CONTROLLER_AXIS_TRIGGERLEFT, roh);
        pad.achse(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, roh);
        const auto info = lesen(joystick);
        return std::vector<std::uint32_t>{info.dwUpos, info.dwVpos, info.dwButtons, info.dwButtonNumber};
    };
    EXPECT_THAT(stand(-32768), testing::ElementsAre(32767, 32767, 0, 0));
    EXPECT_THAT(stand(-1), testing::ElementsAre(49151, 49151, 0, 0));
    EXPECT_THAT(stand(1), testing::ElementsAre(49152, 49152, 0x50, 7));
    EXPECT_THAT(stand(32767), testing::ElementsAre(65535, 65535, 0x50, 7));
}

TEST_F(SdlPad, EinUnbekanntesPadKommtRoh) {
    VirtuellesPad pad({SDL_JOYSTICK_TYPE_UNKNOWN, 8, 40, 2});
    const int werte[] = {-32768, -32767, -100, 0, 100, 32767, 5000, 5000};
    for (int nummer = 0; nummer < 8; ++nummer)
        pad.achse(nummer, werte[nummer]);
    for (const int taste : {0, 31, 32, 39})
        pad.taste(taste);
    pad.hut(SDL_HAT_LEFTDOWN);
    JOYINFOEX erwartet;
    erwartet.dwXpos = 0;
    erwartet.dwYpos = 0;
    erwartet.dwZpos = 32667;
    erwartet.dwRpos = 32767;
    erwartet.dwUpos = 32868;
    erwartet.dwVpos = 65535;
    erwartet.dwButtons = 0x80000001;
    erwartet.dwButtonNumber = 32;
    erwartet.dwPOV = 22500;
    EXPECT_EQ(lesen(joystick), erwartet);
}

TEST_F(SdlPad, WasEinUnbekanntesPadNichtHatIstInRuhe) {
    VirtuellesPad ohneAlles({SDL_JOYSTICK_TYPE_UNKNOWN, 0, 1, 0});
    EXPECT_EQ(lesen(joystick), ProbeJoystick::inRuhe());
    ohneAlles.taste(0);
    EXPECT_EQ(lesen(joystick).dwButtons, 1U);
}

TEST_F(SdlPad, EinePadlisteRuecktNach) {
    auto erstes = std::make_unique<VirtuellesPad>();
    VirtuellesPad zweites({SDL_JOYSTICK_TYPE_UNKNOWN, 2, 4, 0});
    erstes->taste(SDL_CONTROLLER_BUTTON_Y);
    zweites.taste(3);
    EXPECT_EQ(lesen(joystick, 0).dwButtons, 1U);
    EXPECT_EQ(lesen(joystick, 1).dwButtons, 8U);
    erstes.reset();
    EXPECT_EQ(lesen(joystick, 0).dwButtons, 8U);
    JOYINFOEX info;
    EXPECT_EQ(joystick.joyGetPosEx(1, info), JOYERR_UNPLUGGED);
    VirtuellesPad drittes;
    EXPECT_EQ(lesen(joystick, 0).dwButtons, 8U);
    EXPECT_EQ(lesen(joystick, 1).dwButtons, 0U);
}

TEST_F(SdlPad, DieEreignisschlangeFuelltSichNicht) {
    VirtuellesPad pad;
    for (int mal = 0; mal < 1000; ++mal) {
        pad.taste(SDL_CONTROLLER_BUTTON_A, mal % 2 == 0);
        pad.achse(SDL_CONTROLLER_AXIS_LEFTX, mal);
        lesen(joystick);
    }
    EXPECT_FALSE(SDL_HasEvents(SDL_FIRSTEVENT, SDL_LASTEVENT));
}

// --- how often the pads are updated ---

class SdlPadNachDerUhr : public testing::Test {
protected:
    ProbeUhr uhr;
    SdlJoystick joystick{{}, &uhr};
    VirtuellesPad pad;
};

TEST_F(SdlPadNachDerUhr, WasInEinemAugenblickLiestTeiltEineAuffrischung) {
    std::vector<std::uint32_t> kurz;
    std::vector<std::uint32_t> lang;
    uhr.SetTimer(1, std::chrono::milliseconds{1}, [&] {
        kurz.push_back(lesen(joystick).dwButtons);
        pad.taste(SDL_CONTROLLER_BUTTON_Y); // too late for this instant
    });
    uhr.SetTimer(2, std::chrono::milliseconds{2}, [&] { lang.push_back(lesen(joystick).dwButtons); });
    uhr.vorBis(std::chrono::milliseconds{1});
    pad.taste(SDL_CONTROLLER_BUTTON_Y, false);
    uhr.vorBis(std::chrono::milliseconds{4});
    EXPECT_THAT(kurz, testing::ElementsAre(0, 0, 1, 1));
    EXPECT_THAT(lang, testing::ElementsAre(0, 1));
}

// Others may update SDL's pads, or take one away, in between.
TEST_F(SdlPadNachDerUhr, WasInEinemAugenblickLiestSiehtDasselbe) {
    auto erstes = std::make_unique<VirtuellesPad>();
    std::vector<std::uint32_t> gelesene;
    const auto merken = [&] {
        JOYINFOEX info = beschrieben();
        const auto antwort = joystick.joyGetPosEx(1, info);
        gelesene.push_back(antwort == JOYERR_NOERROR ? info.dwButtons : antwort);
    };
    uhr.SetTimer(1, std::chrono::milliseconds{1}, [&] {
        merken();
        erstes->taste(SDL_CONTROLLER_BUTTON_Y);
        SDL_JoystickUpdate();
        merken();
    });
    uhr.SetTimer(2, std::chrono::milliseconds{2}, [&] {
        erstes.reset();
        merken();
    });
    uhr.SetTimer(3, std::chrono::milliseconds{2}, [&] {
        merken();
        uhr.KillTimer(1);
    });
    uhr.vorBis(std::chrono::milliseconds{3});
    EXPECT_THAT(gelesene, testing::ElementsAre(0, 0, 1, 1, 1, 1));
    merken();
    EXPECT_EQ(gelesene.back(), JOYERR_UNPLUGGED);
}

TEST_F(SdlPadNachDerUhr, EinBlickGiltNurFuerSeinPad) {
    VirtuellesPad zweites({SDL_JOYSTICK_TYPE_UNKNOWN, 2, 4, 0});
    pad.taste(SDL_CONTROLLER_BUTTON_Y);
    zweites.taste(3);
    std::vector<std::uint32_t> gelesene;
    uhr.SetTimer(1, std::chrono::milliseconds{1}, [&] {
        for (const std::uint32_t id : {0, 1, 0})
            gelesene.push_back(lesen(joystick, id).dwButtons);
    });
    uhr.vorBis(std::chrono::milliseconds{1});
    EXPECT_THAT(gelesene, testing::ElementsAre(1, 8, 1));
}

TEST_F(SdlPadNachDerUhr, WasDerRuferHineingelegtHatBleibtAuchBeimZweitenMal) {
    std::vector<JOYINFOEX> gelesene(2, beschrieben());
    gelesene[1].dwSize = 52;
    gelesene[1].dwFlags = 7;
    gelesene[1].dwReserved1 = gelesene[1].dwReserved2 = 9;
    auto erwartete = std::vector(2, ProbeJoystick::inRuhe());
    for (std::size_t i = 0; i < 2; ++i) {
        erwartete[i].dwSize = gelesene[i].dwSize;
        erwartete[i].dwFlags = gelesene[i].dwFlags;
        erwartete[i].dwReserved1 = gelesene[i].dwReserved1;
        erwartete[i].dwReserved2 = gelesene[i].dwReserved2;
    }
    uhr.SetTimer(1, std::chrono::milliseconds{1}, [&] {
        for (auto& info : gelesene)
            joystick.joyGetPosEx(0, info);
    });
    uhr.vorBis(std::chrono::milliseconds{1});
    EXPECT_EQ(gelesene, erwartete);
}

// As a run reads: the smoothing, the tick and the slider in it.
TEST_F(SdlPadNachDerUhr, HoechstensTausendmalInDerSekunde) {
    int gelesen = 0;
    const auto einmal = [&] {
        lesen(joystick);
        ++gelesen;
    };
    uhr.SetTimer(1, std::chrono::milliseconds{1}, einmal);
    uhr.SetTimer(2, std::chrono::milliseconds{5}, [&] {
        einmal();
        einmal();
    });
    lesen(joystick); // opens the pad
    auffrischungen = 0;
    uhr.vorBis(std::chrono::milliseconds{1000});
    EXPECT_EQ(gelesen, 1400);
    EXPECT_EQ(auffrischungen, 1000);
    uhr.KillTimer(1);
    auffrischungen = 0;
    uhr.vorUm(std::chrono::milliseconds{1000});
    EXPECT_EQ(auffrischungen, 200);
}

// Where no pad is open nothing but a search is left to do.
TEST(SdlPadSuche, OhnePadWirdNichtJedesmalGesucht) {
    SdlJoystick joystick;
    JOYINFOEX info;
    joystick.joyGetPosEx(0, info);
    auffrischungen = 0;
    for (int mal = 0; mal < 1000; ++mal)
        joystick.joyGetPosEx(0, info);
    EXPECT_LE(auffrischungen, 1);
}

TEST_F(SdlPadNachDerUhr, AusserhalbVonZeitgebernIstJederBlickFrisch) {
    lesen(joystick);
    pad.taste(SDL_CONTROLLER_BUTTON_Y);
    EXPECT_EQ(lesen(joystick).dwButtons, 1U);
}

// --- what is told of pads ---

class SdlPadmeldung : public testing::Test {
protected:
    // What has been told up to now, by a poll.
    std::vector<std::string> gemeldetes() {
        JOYINFOEX info;
        joystick.joyGetPosEx(0, info);
        return std::exchange(zeilen, {});
    }
    static std::string guid(int stelle) {
        char ziffern[33];
        SDL_JoystickGetGUIDString(SDL_JoystickGetDeviceGUID(stelle), ziffern, sizeof ziffern);
        return ziffern;
    }
    static std::string name(int stelle) { return "„" + std::string(SDL_JoystickNameForIndex(stelle)) + "“"; }

    std::vector<std::string> zeilen;
    SdlJoystick joystick{[this](const std::string& zeile) { zeilen.push_back(zeile); }};
};

TEST_F(SdlPadmeldung, EinPadWirdMitNameGuidUndZuordnungGenanntWennEsKommtUndWennEsGeht) {
    EXPECT_THAT(gemeldetes(), testing::IsEmpty());
    auto pad = std::make_unique<VirtuellesPad>();
    const auto wie = name(0);
    EXPECT_THAT(
        gemeldetes(),
        testing::ElementsAre(testing::AllOf(testing::StartsWith("Gamepad da: " + wie + ", GUID " + guid(0) +
                                                                ", Zuordnung " + guid(0) + ","),
                                            testing::HasSubstr(",a:b0,")),
                             "in Gebrauch: " + wie + ", 1 von 1"));
    EXPECT_THAT(gemeldetes(), testing::IsEmpty());
    pad.reset();
    EXPECT_THAT(gemeldetes(), testing::ElementsAre("Gamepad weg: " + wie, "kein Gamepad in Gebrauch"));
}

TEST_F(SdlPadmeldung, VonZweiPadsWirdDasErsteAlsDasBenutzteGenannt) {
    auto erstes = std::make_unique<VirtuellesPad>();
    const auto benutztes = name(0);
    const VirtuellesPad zweites({SDL_JOYSTICK_TYPE_UNKNOWN, 2, 4, 0, "Zweitpad"});
    const auto anderes = name(1);
    ASSERT_NE(benutztes, anderes);
    EXPECT_THAT(gemeldetes(), testing::ElementsAre(testing::StartsWith("Gamepad da: " + benutztes),
                                                   "Gamepad da: " + anderes + ", GUID " + guid(1) +
                                                       ", ohne Zuordnung, Knöpfe und Achsen wie sie kommen",
                                                   "in Gebrauch: " + benutztes + ", 1 von 2"));
    erstes.reset();
    EXPECT_THAT(gemeldetes(),
                testing::ElementsAre("Gamepad weg: " + benutztes, "in Gebrauch: " + anderes + ", 1 von 1"));
}

TEST_F(SdlPadmeldung, UmsehenNenntWasSchonDaIst) {
    const VirtuellesPad pad;
    joystick.umsehen();
    EXPECT_EQ(zeilen.size(), 2U);
}

TEST(SdlPadTeile, OhneVideoUndMitDenSignalenDesProgramms) {
    signal(SIGINT, SIG_DFL); // what SDL would take over
    SdlJoystick joystick;
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
    EXPECT_NE(SDL_WasInit(SDL_INIT_GAMECONTROLLER), 0U);
    EXPECT_EQ(signal(SIGINT, SIG_DFL), SIG_DFL);
}

TEST(SdlPadTeile, ZweiNacheinanderSehenDasselbePad) {
    auto erster = std::make_unique<SdlJoystick>();
    SdlJoystick zweiter;
    VirtuellesPad pad;
    pad.taste(SDL_CONTROLLER_BUTTON_B);
    EXPECT_EQ(lesen(*erster).dwButtons, 2U);
    EXPECT_EQ(lesen(zweiter).dwButtons, 2U);
    erster.reset();
    EXPECT_EQ(lesen(zweiter).dwButtons, 2U);
}

} // namespace

TEST(SdlJoystick, DieAuskunftNenntDasPadDasGelesenWirdUndAlleZaehlt) {
    SdlJoystick joystick;
    auto erstes = std::make_unique<VirtuellesPad>(VirtuellesPad::Bau{.name = "Erstes"});
    VirtuellesPad zweites(VirtuellesPad::Bau{.name = "Zweites"});
    zweites.taste(SDL_CONTROLLER_BUTTON_Y);
    EXPECT_EQ(joystick.auskunft(), (Padauskunft{2, "Erstes"}));
    EXPECT_EQ(lesen(joystick).dwButtons, 0U);
    erstes.reset();
    EXPECT_EQ(joystick.auskunft(), (Padauskunft{1, "Zweites"}));
    EXPECT_EQ(lesen(joystick).dwButtons, 1U);
}

int main(int anzahl, char** worte) {
    testing::InitGoogleMock(&anzahl, worte);
    const QCoreApplication programm(anzahl, worte); // whose event loop a watch needs
    return RUN_ALL_TESTS();
}
