// SPDX-License-Identifier: GPL-3.0-or-later
// What a run offers to the engines of the sticks and the slider, whose own state outlasts it. All of it lives
// as long as the run, and so do its timers: what a timer procedure holds of this is there when it runs.
#pragma once

class Eingabe;
class Entwackeln;
class GehalteneTasten;
class LaufAnzeige;
class TastenAktion;
class XPTaste;
class Zeitgeber;
struct GegebenerStand;

struct Laufdienste {
    Zeitgeber& zeitgeber;
    Eingabe& eingabe;
    XPTaste& xpTaste;
    TastenAktion& tastenAktion;
    GehalteneTasten& gehaltene;
    GegebenerStand& gegeben;
    Entwackeln& entwackeln;
    LaufAnzeige& anzeige;
};
