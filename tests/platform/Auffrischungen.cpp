// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/platform/Auffrischungen.h"

#include <SDL.h>

#include <dlfcn.h>

int auffrischungen = 0;

extern "C" void SDLCALL SDL_JoystickUpdate(void) {
    ++auffrischungen;
    static const auto eigentliche =
        reinterpret_cast<decltype(&SDL_JoystickUpdate)>(dlsym(RTLD_NEXT, "SDL_JoystickUpdate"));
    eigentliche();
}
