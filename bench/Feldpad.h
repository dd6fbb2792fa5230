// SPDX-License-Identifier: GPL-3.0-or-later
// The pad of a Messfeld as a virtual game controller of SDL's: each of SDL's updates looks there.
#pragma once

#include "bench/Messfeld.h"

/// Plugged in as long as it lives. SDL must have been started.
class Feldpad {
public:
    explicit Feldpad(Messfeld& feld);
    ~Feldpad();
    Feldpad(const Feldpad&) = delete;
    Feldpad& operator=(const Feldpad&) = delete;

private:
    void auffrischen();

    Messfeld& feld_;
    SDL_JoystickID kennung_ = -1;
    SDL_Joystick* pad_ = nullptr;
    std::array<Sint16, SDL_CONTROLLER_AXIS_MAX> achsen_{};
    std::array<Uint8, SDL_CONTROLLER_BUTTON_MAX> tasten_{};
};
