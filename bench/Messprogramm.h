// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a process to be measured: the whole of it on the real platform, with the pad of a Messfeld,
// a `Schema` running. It does what it is told through a socket.
#pragma once

#include "bench/Messfeld.h"

#include <filesystem>

struct Messumstand {
    std::filesystem::path ordner; ///< holds the database, whose `Schema` "S" is played
    int feld = -1;                ///< number of the Messfeld's memory
    int befehle = -1;             ///< the program's end of the socket
    bool zaehlend = false;        ///< whether it counts its timers
    bool alsNiemand = false;      ///< whether it does without root's rights
};

/// Answered by the same letter as soon as it is done.
namespace befehl {
inline constexpr char BEREIT = 'b';     ///< told by itself when the `Schema` runs
inline constexpr char ANHALTEN = '0';   ///< the button that halts the poll, or goes on with it
inline constexpr char AUFKLAPPEN = '1'; ///< the button of the test panel
} // namespace befehl

/// Runs until the other end of the socket is closed. To be called in a process that has no application yet.
int messprogrammLaufen(const Messumstand& umstand);
