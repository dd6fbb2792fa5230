// SPDX-License-Identifier: GPL-3.0-or-later
// Soak test: plays with the program as it is shipped for hours, at random, while things go wrong around it.
// Exit status 0 when the verdict is good, 1 when it is bad.
//
//   dauerprobe PROGRAM HOURS [SEED [WAY]]
//
// With the name of a way through the forms, or a part of it, only that is gone, and nothing goes wrong: so is
// found what it is that grows. $DAUER_VORLADEN is a library to load into the program, a heap profiler's say.
#include "tests/dauer/Dauerlauf.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

int main(int anzahl, char** worte) {
    const double stunden = anzahl > 2 ? std::atof(worte[2]) : 0;
    if (stunden <= 0) {
        std::fprintf(stderr, "dauerprobe PROGRAM HOURS [SEED [WAY]]\n");
        return 2;
    }
    const auto saat =
        anzahl > 3 ? static_cast<unsigned>(std::strtoul(worte[3], nullptr, 10)) : std::random_device{}();
    try {
        return Dauerlauf(worte[1], stunden, saat, anzahl > 4 ? worte[4] : "").laufen() ? 0 : 1;
    } catch (const std::exception& fehler) {
        std::fprintf(stderr, "dauerprobe: %s\n", fehler.what());
        return 2;
    }
}
