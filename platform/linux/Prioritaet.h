// SPDX-License-Identifier: GPL-3.0-or-later
// The priority of the main thread, with the guard that keeps one without a pause from taking the desktop
// away: RLIMIT_RTTIME is set, and what comes then is not death but a return to the normal scheduler.
#pragma once

#include <sys/resource.h>

/// Lays the guard: so much work without a single wait is let pass, at most `hoechstens` microseconds. That is
/// the limit that the kernel kills at (RLIMIT_RTTIME, hard), and it cannot be raised again; what it is
/// already may be less. Without an argument it stays as it is.
void ruhelosigkeitBegrenzen(rlim_t hoechstens = RLIM_INFINITY);

/// Asks for the round-robin scheduler at its lowest priority, under the guard; children do not inherit it.
/// Returns whether the system granted it; who has it already may keep it.
bool echtzeitNehmen();

/// Takes the best nice value that is allowed.
void besteGueteNehmen();

/// The normal scheduler, and the nice value `guete`.
void prioritaetZurueckgeben(int guete);
