// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Feldpad.h"

#include <limits>
#include <stdexcept>

Feldpad::Feldpad(Messfeld& feld) : feld_(feld) {
    SDL_VirtualJoystickDesc beschreibung{};
    beschreibung.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
    beschreibung.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
    beschreibung.naxes = SDL_CONTROLLER_AXIS_MAX;
    beschreibung.nbuttons = SDL_CONTROLLER_BUTTON_MAX;
    beschreibung.name = "Feldpad";
    beschreibung.userdata = this;
    beschreibung.Update = [](void* selbst) { static_cast<Feldpad*>(selbst)->auffrischen(); };
    const int stelle = SDL_JoystickAttachVirtualEx(&beschreibung);
    if (stelle < 0)
        throw std::runtime_error(SDL_GetError());
    kennung_ = SDL_JoystickGetDeviceInstanceID(stelle);
    pad_ = SDL_JoystickOpen(stelle);
    // SDL's triggers rest at the lower end of their axis.
    for (const auto abzug : {SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_CONTROLLER_AXIS_TRIGGERRIGHT})
        SDL_JoystickSetVirtualAxis(pad_, abzug, std::numeric_limits<Sint16>::min());
}

Feldpad::~Feldpad() {
    SDL_JoystickClose(pad_);
    for (int stelle = 0; stelle < SDL_NumJoysticks(); ++stelle)
        if (SDL_JoystickGetDeviceInstanceID(stelle) == kennung_)
            SDL_JoystickDetachVirtual(stelle);
}

// A real pad tells only what has changed, too.
void Feldpad::auffrischen() {
    ++feld_.abfragen;
    for (std::size_t i = 0; i < SDL_CONTROLLER_AXIS_TRIGGERLEFT; ++i)
        if (const auto wert = feld_.achsen[i].load(); wert != achsen_[i])
            SDL_JoystickSetVirtualAxis(pad_, static_cast<int>(i), achsen_[i] = wert);
    for (std::size_t i = 0; i < tasten_.size(); ++i)
        if (const auto wert = feld_.tasten[i].load(); wert != tasten_[i])
            SDL_JoystickSetVirtualButton(pad_, static_cast<int>(i), tasten_[i] = wert);
}
