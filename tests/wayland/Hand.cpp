// SPDX-License-Identifier: GPL-3.0-or-later
// The user's hands: a keyboard from the start, a pad when it is plugged in. Reads a line an act:
//
//     taste KEY_TAB          types a key of the keyboard
//     pad an    pad ab       plugs the pad in or out
//     pad BTN_SOUTH 1        a button or an axis of the pad
//
// Names are the kernel's. The pad is an Xbox 360 one, as its driver describes it.
#include <chrono>
#include <cstdio>
#include <initializer_list>
#include <iostream>
#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>
#include <linux/input.h>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

using Geraet = std::unique_ptr<libevdev_uinput, decltype(&libevdev_uinput_destroy)>;
using Beschreibung = std::unique_ptr<libevdev, decltype(&libevdev_free)>;

Beschreibung beschreibung(const char* name) {
    Beschreibung neue(libevdev_new(), &libevdev_free);
    libevdev_set_name(neue.get(), name);
    return neue;
}

Geraet anlegen(const Beschreibung& was) {
    libevdev_uinput* neu = nullptr;
    if (libevdev_uinput_create_from_device(was.get(), LIBEVDEV_UINPUT_OPEN_MANAGED, &neu) != 0)
        throw std::runtime_error("/dev/uinput");
    return {neu, &libevdev_uinput_destroy};
}

Geraet tastatur() {
    const auto was = beschreibung("Tastatur der Hand");
    for (unsigned code = KEY_ESC; code <= KEY_F12; ++code)
        libevdev_enable_event_code(was.get(), EV_KEY, code, nullptr);
    return anlegen(was);
}

void achse(const Beschreibung& was, unsigned code, int kleinster, int groesster) {
    input_absinfo spanne{};
    spanne.minimum = kleinster;
    spanne.maximum = groesster;
    libevdev_enable_event_code(was.get(), EV_ABS, code, &spanne);
}

Geraet pad() {
    constexpr int KENNUNG_HERSTELLER = 0x045e;
    constexpr int KENNUNG_PAD = 0x028e;
    constexpr int FASSUNG = 0x0110;
    constexpr int STICK = 32767;
    constexpr int ABZUG = 255;
    const auto was = beschreibung("Microsoft X-Box 360 pad");
    libevdev_set_id_bustype(was.get(), BUS_USB);
    libevdev_set_id_vendor(was.get(), KENNUNG_HERSTELLER);
    libevdev_set_id_product(was.get(), KENNUNG_PAD);
    libevdev_set_id_version(was.get(), FASSUNG);
    for (const unsigned knopf : {BTN_A, BTN_B, BTN_X, BTN_Y, BTN_TL, BTN_TR, BTN_SELECT, BTN_START, BTN_MODE,
                                 BTN_THUMBL, BTN_THUMBR})
        libevdev_enable_event_code(was.get(), EV_KEY, knopf, nullptr);
    for (const unsigned stick : {ABS_X, ABS_Y, ABS_RX, ABS_RY})
        achse(was, stick, -STICK - 1, STICK);
    for (const unsigned abzug : {ABS_Z, ABS_RZ})
        achse(was, abzug, 0, ABZUG);
    for (const unsigned kreuz : {ABS_HAT0X, ABS_HAT0Y})
        achse(was, kreuz, -1, 1);
    return anlegen(was);
}

void senden(const Geraet& geraet, const std::string& name, int wert) {
    const unsigned art = name.starts_with("ABS") ? EV_ABS : EV_KEY;
    const int code = libevdev_event_code_from_name(art, name.c_str());
    if (!geraet || code < 0 ||
        libevdev_uinput_write_event(geraet.get(), art, static_cast<unsigned>(code), wert) != 0 ||
        libevdev_uinput_write_event(geraet.get(), EV_SYN, SYN_REPORT, 0) != 0)
        throw std::runtime_error(name);
}

class Hand {
public:
    void tun(const std::string& zeile) {
        std::istringstream worte(zeile);
        std::string womit;
        std::string was;
        int wert = 0;
        worte >> womit >> was >> wert;
        if (womit == "taste")
            tippen(was);
        else if (was == "an")
            pad_ = pad();
        else if (was == "ab")
            pad_.reset();
        else
            senden(pad_, was, wert);
    }

private:
    void tippen(const std::string& taste) const {
        constexpr std::chrono::milliseconds DRUCK{50};
        senden(tastatur_, taste, 1);
        std::this_thread::sleep_for(DRUCK);
        senden(tastatur_, taste, 0);
        std::this_thread::sleep_for(DRUCK);
    }

    Geraet tastatur_ = tastatur();
    Geraet pad_{nullptr, &libevdev_uinput_destroy};
};

} // namespace

int main() {
    try {
        Hand hand;
        for (std::string zeile; std::getline(std::cin, zeile);)
            hand.tun(zeile);
    } catch (const std::exception& fehler) {
        std::fprintf(stderr, "Hand: %s\n", fehler.what());
        return 1;
    }
}
