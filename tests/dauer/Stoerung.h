// SPDX-License-Identifier: GPL-3.0-or-later
// What goes wrong around the program in a long run: each fault begins, lasts for a time, and is mended.
#pragma once

#include "tests/dauer/Fernsteuerung.h"
#include "tests/dauer/Umgebung.h"
#include "tests/dauer/XWelt.h"

#include <memory>
#include <random>
#include <vector>

struct Stoerplatz {
    Umgebung& umgebung;
    XWelt& welt;
    std::mt19937& zufall;
    Fernsteuerung* programm = nullptr; ///< the one that the fault meets
    std::unique_ptr<RoheVerbindung> sperre;
};

struct Stoerung {
    const char* name;
    void (*beginnen)(Stoerplatz&);
    void (*beenden)(Stoerplatz&);
    const char* ende = nullptr; ///< how the program ends by it; null for one that it must outlive
};
/// Those that the program must outlive.
const std::vector<Stoerung>& stoerungen();
/// Those that end it. "exit" is any exit of its own, not a signal.
const std::vector<Stoerung>& toedliche();
