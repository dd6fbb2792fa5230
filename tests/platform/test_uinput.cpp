// SPDX-License-Identifier: GPL-3.0-or-later
// Injection through the kernel: what its devices deliver.
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/UinputEingabe.h"
#include "tests/platform/Ereignisse.h"

#include <cerrno>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libevdev/libevdev.h>
#include <poll.h>
#include <unistd.h>

using testing::ElementsAre;

namespace {

using Texte = std::vector<std::string>;

// Reads what a device of the kernel delivers, a text a frame: "REL_X=3 REL_Y=-2".
class Geraeteleser {
public:
    explicit Geraeteleser(const std::string& knoten)
        : datei_(open(knoten.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)), geraet_(nullptr, &libevdev_free) {
        libevdev* neu = nullptr;
        EXPECT_EQ(libevdev_new_from_fd(datei_, &neu), 0) << knoten;
        geraet_.reset(neu);
    }
    Geraeteleser(const Geraeteleser&) = delete;
    Geraeteleser& operator=(const Geraeteleser&) = delete;
    ~Geraeteleser() { close(datei_); }

    libevdev* geraet() const { return geraet_.get(); }

    // What a read says now: -EAGAIN if nothing has come, -ENODEV if the device has gone.
    int zustand() {
        input_event ereignis{};
        return libevdev_next_event(geraet_.get(), LIBEVDEV_READ_FLAG_NORMAL, &ereignis);
    }

    // So many frames; fewer if nothing comes for a second or the device goes.
    Texte rahmen(int anzahl) {
        Texte texte;
        std::string text;
        while (static_cast<int>(texte.size()) < anzahl) {
            input_event ereignis{};
            const int ergebnis = libevdev_next_event(geraet_.get(), LIBEVDEV_READ_FLAG_NORMAL, &ereignis);
            if (ergebnis == -EAGAIN) {
                pollfd warten{datei_, POLLIN, 0};
                if (poll(&warten, 1, 1000) <= 0)
                    break;
            } else if (ergebnis < 0) {
                break;
            } else if (ereignis.type == EV_SYN) {
                texte.push_back(std::exchange(text, {}));
            } else {
                text += (text.empty() ? "" : " ") +
                        std::string(libevdev_event_code_get_name(ereignis.type, ereignis.code)) + "=" +
                        std::to_string(ereignis.value);
            }
        }
        return texte;
    }

private:
    int datei_;
    std::unique_ptr<libevdev, decltype(&libevdev_free)> geraet_;
};

// Where the kernel offers no uinput, all that can be seen is that the reason is given.
class Uinput : public testing::Test {
protected:
    // True where uinput serves; elsewhere checks the reason.
    bool da() {
        if (eingabe)
            return true;
        const bool fehlt = access("/dev/uinput", F_OK) != 0;
        EXPECT_EQ(grund,
                  fehlt ? "/dev/uinput lässt sich nicht schreiben: Das Kernmodul uinput ist nicht geladen"
                        : "/dev/uinput lässt sich nicht schreiben: Es fehlt die Berechtigung");
        return false;
    }

    Tastaturlayout layout{":4711", "/gibt/es/nicht"};
    std::string grund;
    std::unique_ptr<UinputEingabe> eingabe = UinputEingabe::oeffnen(layout, grund);
};

TEST_F(Uinput, TastenKnoepfeBewegungenUndRadKommenAmGeraetAn) {
    if (!da())
        return;
    Geraeteleser leser(eingabe->tastenknoten());
    const INPUT ereignisse[] = {taste(65),
                                taste(65),
                                taste(65, KEYEVENTF_KEYUP),
                                taste(16),
                                taste(16),
                                taste(16, KEYEVENTF_KEYUP),
                                maus(MOUSEEVENTF_MOVE, 3, -2),
                                maus(MOUSEEVENTF_LEFTDOWN),
                                maus(MOUSEEVENTF_LEFTUP),
                                maus(MOUSEEVENTF_WHEEL, 0, 0, 3),
                                maus(MOUSEEVENTF_WHEEL, 0, 0, -240)};
    EXPECT_EQ(eingabe->SendInput(ereignisse), 11U);
    EXPECT_THAT(leser.rahmen(11),
                ElementsAre("KEY_A=1", "KEY_A=0", "KEY_A=1", "KEY_A=0", "KEY_LEFTSHIFT=1", "KEY_LEFTSHIFT=0",
                            "REL_X=3 REL_Y=-2", "BTN_LEFT=1", "BTN_LEFT=0",
                            "REL_WHEEL=1 REL_WHEEL_HI_RES=120", "REL_WHEEL=-2 REL_WHEEL_HI_RES=-240"));
}

TEST_F(Uinput, JederCodeKommtAmGeraetAn) {
    if (!da())
        return;
    Geraeteleser leser(eingabe->tastenknoten());
    for (VirtuelleTaste code = 1; code <= 254; ++code) {
        const auto evdev = layout.karte().taste(code);
        const INPUT paar[] = {taste(code), taste(code, KEYEVENTF_KEYUP)};
        EXPECT_EQ(eingabe->SendInput(paar), evdev != KEINE_TASTE ? 2U : 0U) << code;
        if (evdev == KEINE_TASTE)
            continue;
        const std::string name = libevdev_event_code_get_name(EV_KEY, evdev);
        EXPECT_THAT(leser.rahmen(2), ElementsAre(name + "=1", name + "=0")) << code;
    }
}

TEST_F(Uinput, AbsoluteBewegungenKommenAuchZweimalAmSelbenOrtAn) {
    if (!da())
        return;
    Geraeteleser leser(eingabe->zeigerknoten());
    for (const auto& [x, y] : {std::pair{0, 0}, std::pair{65535, 65535}, std::pair{65535, 65535}})
        eingabe->mouse_event(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, x, y, 0, 0);
    EXPECT_THAT(leser.rahmen(3), ElementsAre("ABS_X=1 ABS_Y=1 ABS_X=0 ABS_Y=0", "ABS_X=65535 ABS_Y=65535",
                                             "ABS_X=65534 ABS_Y=65534 ABS_X=65535 ABS_Y=65535"));
    EXPECT_EQ(libevdev_get_abs_minimum(leser.geraet(), ABS_X), 0);
    EXPECT_EQ(libevdev_get_abs_maximum(leser.geraet(), ABS_Y), 65535);
}

// Its readers are told that the device has gone before they get to the releases, and take them as read.
TEST_F(Uinput, MitDerEingabeGehenIhreGeraete) {
    if (!da())
        return;
    Geraeteleser tasten(eingabe->tastenknoten());
    Geraeteleser zeiger(eingabe->zeigerknoten());
    const INPUT unten[] = {taste(65)};
    eingabe->SendInput(unten);
    EXPECT_THAT(tasten.rahmen(1), ElementsAre("KEY_A=1"));
    EXPECT_EQ(tasten.zustand(), -EAGAIN);
    eingabe.reset();
    EXPECT_EQ(tasten.zustand(), -ENODEV);
    EXPECT_EQ(zeiger.zustand(), -ENODEV);
}

} // namespace
