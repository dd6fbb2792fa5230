// SPDX-License-Identifier: GPL-3.0-or-later
// A hand at a stick, made up: what the raw axes of a cheap pad read while somebody plays. The same seed gives
// the same play on every machine.
//
// What makes it plausible, by what is known of hands and pads:
//
//   reaching    A thumb goes to its aim by a bell-shaped speed (minimum jerk), in 90 to 260 ms. It misses the
//   aim
//               in proportion to the way (signal-dependent noise) and mostly goes beyond it; a second,
//               smaller movement corrects that.
//   holding     It trembles at 8 to 12 Hz by some tenths of a percent of the range (physiological tremor),
//   and
//               its mean wanders slowly and comes back (a random walk on a spring).
//   panning     Aiming in a game: a steady slow pull, some hundred to some thousand units a second.
//   letting go  The spring of the stick pulls it back and overshoots: an oscillation of some 12 Hz that is
//   gone
//               after a tenth of a second. Friction lets it stop a little beside the centre, elsewhere each
//               time.
//   the pad     The centre lies beside 32767 and drifts over minutes with the temperature; the potentiometer
//               adds noise to each sample; the converter has steps.
#pragma once

#include "formats/Streudaten.h"

#include <array>
#include <cstdint>
#include <random>

class Kunsthand {
public:
    struct Eigenart {
        std::uint32_t saat = 1;
        int hertz = 1000;             ///< samples a second, 200 to 1000
        double rauschen = 90;         ///< of the potentiometer, standard deviation in units
        double zittern = 150;         ///< of a hand that holds, amplitude in units
        double ueberschwingen = 0.12; ///< of a reach beyond its aim, part of the way
        double rastlage = 250;        ///< how far beside the centre it comes to rest, standard deviation
        double drift = 300;           ///< of the centre, largest, over some minutes
        std::uint32_t stufe = 16;     ///< of the converter, units
    };
    enum class Taetigkeit { Ruhen, Greifen, Halten, Schwenken, Loslassen };

    /// What the axes read, 0 to 65535, and what the hand does there.
    struct Probe {
        std::int32_t x = 0;
        std::int32_t y = 0;
        Taetigkeit taetigkeit = Taetigkeit::Ruhen;
        double xMitte = 0; ///< where the stick is meant to be: without tremor and noise
        double yMitte = 0;
    };

    Kunsthand();
    explicit Kunsthand(const Eigenart& eigenart);

    /// The next sample.
    Probe naechste();

private:
    struct Ort {
        double x = 0;
        double y = 0;
    };

    double gleich(double von, double bis);
    double normal();
    Ort zielSuchen();
    Ort rastplatz();
    void greifen();
    void schwenken();
    void loslassen();
    void naechsteTaetigkeit();
    void beginnen(Taetigkeit was, double dauer, Ort ziel);
    Ort gemeint(double anteil) const;
    Ort tremor();

    Eigenart art_;
    std::mt19937 zufall_;
    double schritt_; // seconds a sample
    double zeit_ = 0;

    Taetigkeit was_ = Taetigkeit::Ruhen;
    double seit_ = 0;
    double dauer_ = 0;
    Ort von_;
    Ort nach_;
    Ort aufgabe_; // what a reach was for, where it missed
    Ort wandern_;
    double tremorphase_ = 0;
    double driftphase_ = 0;
};

/// What a play of so many ticks of 5 ms leaves, without a run: the cell in each tick, not smoothed, and of
/// the rest what the hand knows of it.
Streudaten streudatenAus(Kunsthand::Eigenart eigenart, int takte);
