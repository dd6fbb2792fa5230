// SPDX-License-Identifier: GPL-3.0-or-later
// A pad in the hand of the test: a virtual SDL game controller.
#pragma once

#include <SDL.h>

/// Plugged in as long as it lives. SDL must have been started.
class Spielpad {
public:
    /// `name` is what it calls itself.
    explicit Spielpad(const char* name = "Spielpad");
    ~Spielpad();
    Spielpad(const Spielpad&) = delete;
    Spielpad& operator=(const Spielpad&) = delete;

    void taste(SDL_GameControllerButton taste, bool unten);
    /// L 2 and R 2 are axes: pulled all the way or not at all.
    void abzug(SDL_GameControllerAxis abzug, bool gezogen);
    /// -32768 to 32767.
    void achse(SDL_GameControllerAxis achse, Sint16 wert);

private:
    SDL_JoystickID kennung_ = -1;
    SDL_Joystick* pad_ = nullptr;
};
