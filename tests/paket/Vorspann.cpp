// SPDX-License-Identifier: GPL-3.0-or-later
// Loaded before the installed program (LD_PRELOAD): plugs a virtual pad in as soon as SDL is up, and moves it
// by what is written into the pipe that SPIELPAD names, a line "BUTTON 1" or "BUTTON 0" with a number of
// SDL's. The program itself is the one of the package and knows nothing of it.
#include "tests/ablauf/Spielpad.h"

#include <dlfcn.h>

#include <cstdlib>
#include <fstream>
#include <thread>

namespace {

void befehleLesen(Spielpad& pad, const char* leitung) {
    // Opened anew for each writer: a pipe ends when its writer closes it.
    while (true) {
        std::ifstream befehle(leitung);
        int taste = 0;
        bool unten = false;
        while (befehle >> taste >> unten)
            pad.taste(static_cast<SDL_GameControllerButton>(taste), unten);
    }
}

} // namespace

extern "C" int SDL_InitSubSystem(Uint32 teile) {
    const auto echt = reinterpret_cast<int (*)(Uint32)>(dlsym(RTLD_NEXT, "SDL_InitSubSystem"));
    const int ergebnis = echt(teile);
    const char* leitung = std::getenv("SPIELPAD");
    static Spielpad* pad = nullptr; // stays plugged in as long as the process lives
    if (ergebnis == 0 && pad == nullptr && leitung != nullptr && (teile & SDL_INIT_GAMECONTROLLER) != 0) {
        pad = new Spielpad;
        std::thread(befehleLesen, std::ref(*pad), leitung).detach();
    }
    return ergebnis;
}
