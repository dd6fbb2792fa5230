// SPDX-License-Identifier: GPL-3.0-or-later
// Pads of the kernel, plugged in and out while SDL runs.
#include "platform/linux/SdlJoystick.h"
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/UinputEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "tests/platform/JoystickSatz.h"

#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <libevdev/libevdev-uinput.h>
#include <linux/input.h>
#include <memory>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

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
    void senden(unsigned art, unsigned code, int wert) {
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
