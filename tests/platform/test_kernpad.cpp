// SPDX-License-Identifier: GPL-3.0-or-later
// Pads of the kernel, plugged in and out while SDL runs.
#include "platform/linux/SdlJoystick.h"
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/UinputEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "tests/platform/Auffrischungen.h"
#include "tests/platform/JoystickSatz.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <SDL.h>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <libevdev/libevdev-uinput.h>
#include <linux/input.h>
#include <memory>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace std::chrono_literals;

// A pad that the kernel has: a gamepad of a known make, or a joystick that nobody knows.
class KernPad {
public:
    explicit KernPad(bool bekannt) : beschreibung_(libevdev_new(), &libevdev_free) {
        libevdev* pad = beschreibung_.get();
        libevdev_set_name(pad, bekannt ? "Microsoft X-Box 360 pad" : "Nobody's stick");
        libevdev_set_id_bustype(pad, BUS_USB);
        libevdev_set_id_vendor(pad, bekannt ? 0x045e : 0x4711);
        libevdev_set_id_product(pad, bekannt ? 0x028e : 0x0815);
        libevdev_set_id_version(pad, 0x0110);
        for (const unsigned taste : bekannt ? GAMEPAD : JOYSTICK)
            libevdev_enable_event_code(pad, EV_KEY, taste, nullptr);
        for (const unsigned achse : bekannt ? ACHSEN : std::vector<unsigned>{ABS_X, ABS_Y})
            spanne(achse, -32768, 32767);
        if (bekannt)
            for (const unsigned abzug : {ABS_Z, ABS_RZ})
                spanne(abzug, 0, 255);
        for (const unsigned hut : {ABS_HAT0X, ABS_HAT0Y})
            spanne(hut, -1, 1);
        libevdev_uinput_create_from_device(pad, LIBEVDEV_UINPUT_OPEN_MANAGED, &geraet_);
    }
    KernPad(const KernPad&) = delete;
    KernPad& operator=(const KernPad&) = delete;
    ~KernPad() {
        if (geraet_ != nullptr)
            libevdev_uinput_destroy(geraet_);
    }

    bool da() const { return geraet_ != nullptr; }
    const char* knoten() const { return libevdev_uinput_get_devnode(geraet_); }
    void senden(unsigned art, unsigned code, int wert) const {
        libevdev_uinput_write_event(geraet_, art, code, wert);
        libevdev_uinput_write_event(geraet_, EV_SYN, SYN_REPORT, 0);
    }

private:
    inline static const std::vector<unsigned> GAMEPAD{BTN_SOUTH, BTN_EAST,   BTN_NORTH,  BTN_WEST,
                                                      BTN_TL,    BTN_TR,     BTN_SELECT, BTN_START,
                                                      BTN_MODE,  BTN_THUMBL, BTN_THUMBR};
    inline static const std::vector<unsigned> JOYSTICK{BTN_TRIGGER, BTN_THUMB, BTN_THUMB2, BTN_TOP};
    inline static const std::vector<unsigned> ACHSEN{ABS_X, ABS_Y, ABS_RX, ABS_RY};

    void spanne(unsigned achse, int von, int bis) {
        input_absinfo angaben{};
        angaben.minimum = von;
        angaben.maximum = bis;
        libevdev_enable_event_code(beschreibung_.get(), EV_ABS, achse, &angaben);
    }

    std::unique_ptr<libevdev, decltype(&libevdev_free)> beschreibung_;
    libevdev_uinput* geraet_ = nullptr;
};

// Where the kernel offers no uinput there can be no such pad, and none is seen.
class MitKernPad : public testing::Test {
protected:
    // Without a device manager SDL has to look for itself.
    MitKernPad() {
        if (access("/run/udev/control", F_OK) != 0)
            setenv("SDL_JOYSTICK_DISABLE_UDEV", "1", 1);
        joystick = std::make_unique<SdlJoystick>();
    }

    // Polls until the answer is `ergebnis`, 3 s at most: a pad is found some time after it was plugged in.
    JOYINFOEX warten(std::uint32_t ergebnis, std::uint32_t tasten = 0) {
        JOYINFOEX info;
        std::uint32_t letztes = 0;
        for (int mal = 0; mal < 600; ++mal) {
            letztes = joystick->joyGetPosEx(0, info);
            if (letztes == ergebnis && (ergebnis != JOYERR_NOERROR || info.dwButtons == tasten))
                return info;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        ADD_FAILURE() << "answer " << letztes << ", buttons " << info.dwButtons;
        return info;
    }

    std::unique_ptr<SdlJoystick> joystick;
};

TEST_F(MitKernPad, KommtImBetriebWirdGelesenUndGeht) {
    warten(JOYERR_UNPLUGGED);
    auto pad = std::make_unique<KernPad>(true);
    if (!pad->da()) {
        warten(JOYERR_UNPLUGGED);
        return;
    }
    EXPECT_EQ(warten(JOYERR_NOERROR), ProbeJoystick::inRuhe());
    pad->senden(EV_KEY, BTN_SOUTH, 1);
    pad->senden(EV_ABS, ABS_HAT0X, 1);
    pad->senden(EV_ABS, ABS_HAT0Y, -1);
    pad->senden(EV_ABS, ABS_X, -32768);
    pad->senden(EV_ABS, ABS_RZ, 255);
    auto erwartet = ProbeJoystick::inRuhe();
    erwartet.dwButtons = 1U << 2 | 1U << 6;
    erwartet.dwButtonNumber = 7;
    erwartet.dwPOV = 4500;
    erwartet.dwXpos = 0;
    erwartet.dwVpos = 65535;
    EXPECT_EQ(warten(JOYERR_NOERROR, erwartet.dwButtons), erwartet);
    pad.reset();
    warten(JOYERR_UNPLUGGED);
}

TEST_F(MitKernPad, DasVorherDaWarWirdGefunden) {
    const KernPad pad(true);
    joystick = std::make_unique<SdlJoystick>();
    warten(pad.da() ? JOYERR_NOERROR : JOYERR_UNPLUGGED);
}

TEST_F(MitKernPad, DasNiemandKenntKommtRoh) {
    KernPad pad(false);
    if (!pad.da()) {
        warten(JOYERR_UNPLUGGED);
        return;
    }
    EXPECT_EQ(warten(JOYERR_NOERROR), ProbeJoystick::inRuhe());
    pad.senden(EV_ABS, ABS_HAT0Y, 1);
    pad.senden(EV_KEY, BTN_TOP, 1);
    auto erwartet = ProbeJoystick::inRuhe();
    erwartet.dwPOV = 18000;
    erwartet.dwButtons = 8;
    erwartet.dwButtonNumber = 4;
    EXPECT_EQ(warten(JOYERR_NOERROR, 8), erwartet);
}

// --- watch ---

class BewachtesKernPad : public MitKernPad {
protected:
    // Lets the event loop run until `erfuellt`, 5 s at most.
    template <class Bedingung> bool bis(const Bedingung& erfuellt) {
        for (int mal = 0; mal < 1000 && !erfuellt(); ++mal)
            vergehen(5ms);
        return erfuellt();
    }
    static void vergehen(std::chrono::milliseconds dauer) {
        QEventLoop schleife;
        QTimer::singleShot(dauer, Qt::PreciseTimer, &schleife, &QEventLoop::quit);
        schleife.exec();
    }
    JOYINFOEX lesen() {
        JOYINFOEX info;
        antwort = joystick->joyGetPosEx(0, info);
        return info;
    }
    bool wachen() {
        geweckt = 0;
        return joystick->wachen([this](std::chrono::nanoseconds wieLange) {
            ++geweckt;
            her = wieLange;
        });
    }
    // Plugged in and found, and the search that follows is over.
    bool eingesteckt() {
        if (!pad->da()) {
            warten(JOYERR_UNPLUGGED);
            return false;
        }
        warten(JOYERR_NOERROR);
        EXPECT_TRUE(bis([this] {
            lesen();
            return wachen();
        }));
        return true;
    }

    std::unique_ptr<KernPad> pad = std::make_unique<KernPad>(true);
    std::uint32_t antwort = 0;
    int geweckt = 0;
    std::chrono::nanoseconds her{0};
};

TEST_F(BewachtesKernPad, WirdNichtAufgefrischtSolangeEsNichtsTut) {
    if (!eingesteckt())
        return;
    joystick->nichtWachen();
    lesen();
    auffrischungen = 0;
    for (int mal = 0; mal < 300; ++mal)
        lesen();
    EXPECT_LE(auffrischungen, 1);
    for (int mal = 1; mal <= 20; ++mal) { // and each time that it does, at once
        pad->senden(EV_KEY, BTN_SOUTH, mal % 2);
        EXPECT_EQ(lesen().dwButtons, mal % 2 ? 4U : 0U) << mal;
    }
}

TEST_F(BewachtesKernPad, WecktWennEsEtwasTutMitDessenZeit) {
    if (!eingesteckt())
        return;
    vergehen(100ms);
    EXPECT_EQ(geweckt, 0);
    pad->senden(EV_ABS, ABS_X, 20000);
    std::this_thread::sleep_for(10ms);
    EXPECT_TRUE(bis([this] { return geweckt > 0; }));
    EXPECT_GE(her, 10ms);
    EXPECT_LT(her, 1s);
    EXPECT_EQ(lesen().dwXpos, 52768U);
    vergehen(50ms);
    EXPECT_EQ(geweckt, 1);
}

TEST_F(BewachtesKernPad, WasAndereLesenWecktAuch) {
    if (!eingesteckt())
        return;
    pad->senden(EV_KEY, BTN_SOUTH, 1);
    EXPECT_EQ(lesen().dwButtons, 4U);
    EXPECT_EQ(geweckt, 1);
}

TEST_F(BewachtesKernPad, WasVorDerWacheKamWecktGleich) {
    if (!eingesteckt())
        return;
    pad->senden(EV_KEY, BTN_SOUTH, 1);
    EXPECT_TRUE(wachen()); // no read in between
    EXPECT_TRUE(bis([this] { return geweckt > 0; }));
    EXPECT_EQ(lesen().dwButtons, 4U);
}

TEST_F(BewachtesKernPad, WecktWennEsGeht) {
    if (!eingesteckt())
        return;
    pad.reset();
    EXPECT_TRUE(bis([this] { return geweckt > 0; }));
    EXPECT_FALSE(wachen()); // it is being looked for
    warten(JOYERR_UNPLUGGED);
    EXPECT_TRUE(bis([this] {
        lesen();
        return wachen();
    }));
    pad = std::make_unique<KernPad>(true);
    EXPECT_TRUE(bis([this] { return geweckt > 0; }));
    warten(JOYERR_NOERROR);
}

// Of what it says without end nothing is left over.
TEST_F(BewachtesKernPad, EinesDasNichtAufhoertWirdGelesenWieEsSteht) {
    if (!eingesteckt())
        return;
    for (int mal = 0; mal < 20000; ++mal)
        pad->senden(EV_ABS, ABS_X, mal);
    EXPECT_EQ(lesen().dwXpos, 19999U + 32768U);
    EXPECT_EQ(lesen().dwXpos, 19999U + 32768U);
    EXPECT_TRUE(wachen());
    vergehen(100ms);
    EXPECT_EQ(geweckt, 0);
    pad->senden(EV_KEY, BTN_SOUTH, 1);
    EXPECT_EQ(lesen().dwButtons, 4U);
}

TEST_F(MitKernPad, DasSichNichtEinZweitesMalOeffnenLaesstWirdGelesen) {
    const KernPad pad(true);
    if (!pad.da()) {
        warten(JOYERR_UNPLUGGED);
        return;
    }
    while (joystick->auskunft().anzahl == 0)
        std::this_thread::sleep_for(5ms);
    // One file more, and that is the reader's.
    rlimit vorher{};
    getrlimit(RLIMIT_NOFILE, &vorher);
    const int naechste = open("/dev/null", O_RDONLY);
    close(naechste);
    const rlimit knapp{static_cast<rlim_t>(naechste) + 1, vorher.rlim_max};
    setrlimit(RLIMIT_NOFILE, &knapp);
    JOYINFOEX info;
    const auto antwort = joystick->joyGetPosEx(0, info);
    setrlimit(RLIMIT_NOFILE, &vorher);
    ASSERT_EQ(antwort, JOYERR_NOERROR);
    std::this_thread::sleep_for(2100ms); // the search is over
    EXPECT_FALSE(joystick->wachen([](auto) {}));
    for (int mal = 1; mal <= 20; ++mal) {
        pad.senden(EV_KEY, BTN_SOUTH, mal % 2);
        joystick->joyGetPosEx(0, info);
        EXPECT_EQ(info.dwButtons, mal % 2 ? 4U : 0U) << mal;
    }
}

TEST_F(MitKernPad, DieEigenenGeraeteSindKeinPad) {
    Tastaturlayout layout(":4711");
    std::string grund;
    const auto eingabe = UinputEingabe::oeffnen(layout, grund);
    EXPECT_EQ(eingabe == nullptr, !grund.empty());
    for (int mal = 0; mal < 100; ++mal) {
        JOYINFOEX info;
        ASSERT_EQ(joystick->joyGetPosEx(0, info), JOYERR_UNPLUGGED);
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // SDL takes a moment to find devices
    }
}

} // namespace

int main(int anzahl, char** worte) {
    testing::InitGoogleTest(&anzahl, worte);
    const QCoreApplication programm(anzahl, worte);
    return RUN_ALL_TESTS();
}
