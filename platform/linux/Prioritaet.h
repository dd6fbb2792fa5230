// SPDX-License-Identifier: GPL-3.0-or-later
// The priority of the main thread, with the guard that keeps one without a pause from taking the desktop
// away. What the guard does is no more than a return to the normal scheduler, at most 200 ms after the
// pauses have ended:
//
//   no wait at all, for 150 ms     the kernel counts (RLIMIT_RTTIME) and sends its signal, SIGXCPU
//   waits, but too short ones      a timer of this thread's processor time sends the same; see Dauerlast
//
// It works by signals, since who never waits comes to no event either.
#pragma once

#include <string>
#include <sys/resource.h>

/// Lays the guard: so much work without a single wait is let pass, at most `hoechstens` microseconds. That is
/// the limit that the kernel kills at (RLIMIT_RTTIME, hard), and it cannot be raised again; what it is
/// already may be less. Without an argument it stays as it is. To be called by the main thread.
void ruhelosigkeitBegrenzen(rlim_t hoechstens = RLIM_INFINITY);

/// Begins to count; what was worked until now does not. For who has just been given real-time priority.
void ruhelosigkeitZaehlen();

/// Asks for the round-robin scheduler at its lowest priority, under the guard; children do not inherit it.
/// Returns whether the system granted it; who has it already may keep it.
bool echtzeitNehmen();

/// What the guard writes to the standard error output when it takes the priority away; nothing by default.
void echtzeitverlustMelden(std::string zeile);

/// Takes the best nice value that is allowed.
void besteGueteNehmen();

/// The normal scheduler, and the nice value `guete`.
void prioritaetZurueckgeben(int guete);
