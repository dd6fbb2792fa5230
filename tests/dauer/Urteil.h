// SPDX-License-Identifier: GPL-3.0-or-later
// What a long run is judged by: rows of numbers go in, findings come out.
//
// Growth is the slope of a measure over the rows of one process, without its first rows, in which caches
// fill: the median of the slopes between all pairs of rows (Theil and Sen), which a form that was open once
// does not bend. It is a fault when also the lower end of the slope's confidence interval (Kendall's, 95 %
// one-sided) lies above what is allowed. So a run too short to tell accuses nobody, and says that it is too
// short.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

struct Messgroesse {
    const char* name;
    const char* einheit;
    double erlaubt; ///< growth in an hour
};
enum class Groesse : std::size_t {
    Rss,
    Eigen,
    Heap,
    Dateien,
    Uhren,
    Faeden,
    Zeitgeber,
    Widgets,
    Weckrufe,
    XFenster,
    XServer,
};
/// What a row holds, all taken while only the main form is open. A picture that a fault let stand, or a name
/// that a list remembers, is less than what is allowed of memory; of countable things nothing may stay.
inline constexpr std::array<Messgroesse, 11> MESSGROESSEN{{{"rss", "kB", 2048},
                                                           {"private", "kB", 2048},
                                                           {"heap", "kB", 512},
                                                           {"fds", "", 0.5},
                                                           {"timerfds", "", 0.5},
                                                           {"threads", "", 0.5},
                                                           {"timers", "", 0.5},
                                                           {"widgets", "", 2},
                                                           {"wakeups", "/s", 5},
                                                           {"xwindows", "", 2},
                                                           {"xserver", "kB", 2048}}};
using Messwerte = std::array<double, MESSGROESSEN.size()>;

struct Messzeile {
    double stunden = 0; ///< since the start of the run
    int leben = 0;      ///< which process of the program it tells of
    Messwerte werte{};
};

/// What must not happen at all, and how often it has.
struct Vorfaelle {
    int abstuerze = 0;   ///< ends by a signal or with an error that nobody asked for
    int haenger = 0;     ///< the event loop was silent for 5 s
    int unruhen = 0;     ///< forms or boxes that could not be closed
    int haengende = 0;   ///< keys and buttons that were down after the program's end
    int schaeden = 0;    ///< a database or an axis file that was not sound
    int verweigerte = 0; ///< starts that came to no window
};

struct Steigung {
    double je_stunde = 0;
    double mindestens = 0; ///< lower end of the confidence interval; -infinity where the rows are too few
};
/// Of one measure over rows, at least two of them at different times.
Steigung steigung(const std::vector<Messzeile>& zeilen, Groesse groesse);

struct Befund {
    bool verstoss = false;
    std::string text;
};
/// Growth is judged in each process with at least MINDESTZEILEN rows behind its warm-up.
inline constexpr std::size_t MINDESTZEILEN = 5;
std::vector<Befund> urteilen(const std::vector<Messzeile>& zeilen, const Vorfaelle& vorfaelle);
