// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ablauf/Spielpad.h"

#include <limits>
#include <stdexcept>

Spielpad::Spielpad(const char* name) {
    SDL_VirtualJoystickDesc beschreibung{};
    beschreibung.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
    beschreibung.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
    beschreibung.naxes = SDL_CONTROLLER_AXIS_MAX;
    beschreibung.nbuttons = SDL_CONTROLLER_BUTTON_MAX;
    beschreibung.name = name;
    const int stelle = SDL_JoystickAttachVirtualEx(&beschreibung);
    if (stelle < 0)
        throw std::runtime_error(SDL_GetError());
    kennung_ = SDL_JoystickGetDeviceInstanceID(stelle);
    pad_ = SDL_JoystickOpen(stelle);
    // SDL's triggers rest at the lower end of their axis.
    abzug(SDL_CONTROLLER_AXIS_TRIGGERLEFT, false);
    abzug(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, false);
}

Spielpad::~Spielpad() {
    SDL_JoystickClose(pad_);
    for (int stelle = 0; stelle < SDL_NumJoysticks(); ++stelle)
        if (SDL_JoystickGetDeviceInstanceID(stelle) == kennung_)
            SDL_JoystickDetachVirtual(stelle);
}

void Spielpad::taste(SDL_GameControllerButton taste, bool unten) {
    SDL_JoystickSetVirtualButton(pad_, taste, unten ? SDL_PRESSED : SDL_RELEASED);
}

void Spielpad::abzug(SDL_GameControllerAxis abzug, bool gezogen) {
    achse(abzug, gezogen ? std::numeric_limits<Sint16>::max() : std::numeric_limits<Sint16>::min());
}

void Spielpad::achse(SDL_GameControllerAxis achse, Sint16 wert) {
    SDL_JoystickSetVirtualAxis(pad_, achse, wert);
}
