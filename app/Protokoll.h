// SPDX-License-Identifier: GPL-3.0-or-later
// The log: what happened, for who looks for the cause of a fault. It goes where the toolkit's messages go,
// by these categories, and is silent unless QT_LOGGING_RULES turns them up ("gamepad.*=true"):
//
//   gamepad.pad      pads that come and go, with name, GUID and mapping; the user's list of pads
//   gamepad.eingabe  which injection was chosen, and why those before it cannot serve; that the watcher of
//                    what is held does not start, or has died
//   gamepad.zeit     at the end of a run: how many timers were late; always to the standard error output:
//                    that the guard of the real-time priority has taken it away
#pragma once

#include "platform/Meldung.h"

class Laufsteuerung;
class QtZeitgeber;
struct EingabeWahl;
struct Padliste;

/// From now on a message that can't be written at once is lost: its reader may have stopped reading.
void aufKeinenLeserWarten();

/// What the pads tell; empty as long as gamepad.pad is silent.
Meldung padmeldung();

/// What the watcher tells; empty as long as gamepad.eingabe is silent.
Meldung waechtermeldung();

void eingabeProtokollieren(const EingabeWahl& wahl);
void padlisteProtokollieren(const Padliste& liste);

/// From now on each run tells at its end how many timers were late. Both outlive the event loop.
void laeufeProtokollieren(Laufsteuerung& laufsteuerung, QtZeitgeber& zeitgeber);
