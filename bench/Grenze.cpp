// SPDX-License-Identifier: GPL-3.0-or-later
// The yardstick of the latency probe: the least program that polls a pad every 5 ms through SDL and sends
// keys by XTest. No toolkit, no texts, no smoothing: one timerfd, one poll(2). What the program takes more
// than this is its own.
//
//   grenze DISPLAY FIELD KIND
//
// FIELD is the number of open memory, see Messfeld. KIND:
//   ruhig     it wakes every 5 ms
//   takt      it wakes every 1 ms, as smoothing has to, and polls at every fifth
//   lesend    it wakes and polls every 1 ms
#include "bench/Feldpad.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <poll.h>
#include <sched.h>
#include <string_view>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

struct Art {
    std::string_view name;
    long weckabstand; // ns
    std::uint64_t abfrageabstand;
};
constexpr Art ARTEN[] = {{"ruhig", 5'000'000, 1}, {"takt", 1'000'000, 5}, {"lesend", 1'000'000, 1}};

// The key codes of A to E under X, and the lines of a new stick, -32768 to 32767.
constexpr unsigned TASTE = 38;
constexpr Sint16 LINKE_LINIE = -5695;
constexpr Sint16 RECHTE_LINIE = 5631;
struct Stick {
    SDL_GameControllerAxis achse;
    unsigned links;
    unsigned rechts;
};
constexpr Stick STICKS[] = {{SDL_CONTROLLER_AXIS_LEFTX, 56, 54}, {SDL_CONTROLLER_AXIS_RIGHTX, 40, 26}};

unsigned tasteVon(const Stick& stick, Sint16 wert) {
    return wert < LINKE_LINIE ? stick.links : wert > RECHTE_LINIE ? stick.rechts : 0;
}

class Grenze {
public:
    Grenze(Display* anzeige, Messfeld& feld)
        : anzeige_(anzeige), feld_(feld), pad_(feld), controller_(SDL_GameControllerOpen(0)) {}

    void abfragen() {
        SDL_JoystickUpdate();
        SDL_FlushEvents(SDL_JOYAXISMOTION, SDL_CONTROLLERSENSORUPDATE);
        wechseln(gehalten_[0],
                 SDL_GameControllerGetButton(controller_, SDL_CONTROLLER_BUTTON_A) != 0 ? TASTE : 0);
        for (std::size_t i = 0; i < std::size(STICKS); ++i)
            wechseln(gehalten_[i + 1],
                     tasteVon(STICKS[i], SDL_GameControllerGetAxis(controller_, STICKS[i].achse)));
    }

private:
    void wechseln(unsigned& alte, unsigned neue) {
        if (alte == neue)
            return;
        feld_.sendungMerken();
        senden(alte, False);
        senden(neue, True);
        alte = neue;
        XFlush(anzeige_);
    }
    void senden(unsigned taste, int unten) {
        if (taste != 0)
            XTestFakeKeyEvent(anzeige_, taste, unten, CurrentTime);
    }

    Display* anzeige_;
    Messfeld& feld_;
    Feldpad pad_;
    SDL_GameController* controller_;
    std::array<unsigned, 1 + std::size(STICKS)> gehalten_{};
};

std::optional<Art> artVon(std::string_view name) {
    for (const auto& art : ARTEN)
        if (art.name == name)
            return art;
    return std::nullopt;
}

// As the program does, where that is allowed.
void echtzeitNehmen() {
    sched_param niedrigste{};
    niedrigste.sched_priority = sched_get_priority_min(SCHED_RR);
    sched_setscheduler(0, SCHED_RR, &niedrigste);
}

[[noreturn]] void laufen(Grenze& grenze, const Art& art) {
    const int uhr = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
    const itimerspec takt{{0, art.weckabstand}, {0, art.weckabstand}};
    timerfd_settime(uhr, 0, &takt, nullptr);
    std::uint64_t gewartet = 0;
    while (true) {
        pollfd warten{uhr, POLLIN, 0};
        std::uint64_t vergangen = 0;
        if (poll(&warten, 1, -1) <= 0 || read(uhr, &vergangen, sizeof vergangen) != sizeof vergangen)
            continue;
        gewartet += vergangen;
        if (gewartet < art.abfrageabstand)
            continue;
        gewartet = 0;
        grenze.abfragen();
    }
}

} // namespace

int main(int anzahl, char** worte) {
    const auto art = anzahl == 4 ? artVon(worte[3]) : std::nullopt;
    if (!art) {
        std::fprintf(stderr, "grenze DISPLAY FIELD ruhig|takt|lesend\n");
        return 2;
    }
    Display* anzeige = XOpenDisplay(worte[1]);
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    SDL_SetHint(SDL_HINT_JOYSTICK_HIDAPI, "0");
    if (anzeige == nullptr || SDL_InitSubSystem(SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER) != 0)
        return 1;
    SDL_JoystickEventState(SDL_IGNORE);
    SDL_GameControllerEventState(SDL_IGNORE);
    Grenze grenze(anzeige, messfeld(std::atoi(worte[2])));
    echtzeitNehmen();
    laufen(grenze, *art);
}
