// SPDX-License-Identifier: GPL-3.0-or-later
// What the kernel tells of a process.
#pragma once

#include <sys/types.h>

/// Memory in kB. All 0 for a process that is gone.
struct Prozesswerte {
    long rss = 0;
    long eigen = 0; ///< private and dirty
    long faeden = 0;
    long dateien = 0;
    long uhren = 0; ///< descriptors that are timers
};
Prozesswerte prozesswerte(pid_t kennung);

/// How often the main thread has gone to sleep: each time it was woken before.
long schlafzahl(pid_t kennung);
