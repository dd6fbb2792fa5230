// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/Kunsthand.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

namespace {

constexpr double MITTE = 32767;
constexpr double HOECHSTWERT = 65535;
constexpr double AUSSCHLAG = 31000; ///< of an aim
constexpr double ANSCHLAG = 31700;  ///< where the housing, which is round, stops the stick

constexpr double TREMOR_HERTZ = 10;
constexpr double WANDERN = 400;          ///< of a hand that holds, units after a second
constexpr double WANDERN_SEKUNDEN = 0.8; ///< until it is back
constexpr double FEDER_HERTZ = 12;
constexpr double FEDER_SEKUNDEN = 0.025; ///< its oscillation falls to a third
constexpr double DRIFT_SEKUNDEN = 240;   ///< a round of the drift

constexpr double VOLLER_KREIS = 2 * std::numbers::pi;

// Minimum jerk: the way done, by the time gone; both from 0 to 1.
double glocke(double anteil) {
    return anteil * anteil * anteil * (10 + anteil * (6 * anteil - 15));
}

std::int32_t gewandelt(double wert, std::uint32_t stufe) {
    const auto s = static_cast<double>(stufe);
    return static_cast<std::int32_t>(std::clamp(std::floor(wert / s) * s, 0.0, HOECHSTWERT));
}

} // namespace

Kunsthand::Kunsthand() : Kunsthand(Eigenart{}) {}

Kunsthand::Kunsthand(const Eigenart& eigenart)
    : art_(eigenart)
    , zufall_(eigenart.saat)
    , schritt_(1.0 / eigenart.hertz)
    , driftphase_(gleich(0, VOLLER_KREIS)) {
    nach_ = rastplatz();
    beginnen(Taetigkeit::Ruhen, gleich(1, 2), nach_);
}

// The distributions of the standard library differ by library; these don't.
double Kunsthand::gleich(double von, double bis) {
    return von + (bis - von) * (static_cast<double>(zufall_()) / 4294967296.0);
}

double Kunsthand::normal() {
    const double a = gleich(1e-9, 1);
    const double b = gleich(0, VOLLER_KREIS);
    return std::sqrt(-2 * std::log(a)) * std::cos(b);
}

// Games are played mostly along the axes, half of the time up to the edge.
Kunsthand::Ort Kunsthand::zielSuchen() {
    const double viertel = std::floor(gleich(0, 4)) * VOLLER_KREIS / 4;
    const double winkel = gleich(0, 1) < 0.7 ? viertel + normal() * 0.12 : gleich(0, VOLLER_KREIS);
    const double weite = AUSSCHLAG * (gleich(0, 1) < 0.5 ? gleich(0.9, 1) : gleich(0.25, 0.9));
    return {weite * std::cos(winkel), weite * std::sin(winkel)};
}

void Kunsthand::beginnen(Taetigkeit was, double dauer, Ort ziel) {
    von_ = nach_;
    nach_ = ziel;
    was_ = was;
    dauer_ = dauer;
    seit_ = 0;
}

// Beside the aim in proportion to the way.
void Kunsthand::greifen() {
    aufgabe_ = zielSuchen();
    const double daneben = 1 + art_.ueberschwingen * (0.7 + 0.5 * normal());
    beginnen(Taetigkeit::Greifen, gleich(0.09, 0.26),
             {nach_.x + (aufgabe_.x - nach_.x) * daneben, nach_.y + (aufgabe_.y - nach_.y) * daneben});
}

void Kunsthand::schwenken() {
    const double sekunden = gleich(0.6, 2);
    const double weite = gleich(600, 6000) * sekunden;
    const double winkel = gleich(0, VOLLER_KREIS);
    beginnen(Taetigkeit::Schwenken, sekunden,
             {nach_.x + weite * std::cos(winkel), nach_.y + weite * std::sin(winkel)});
}

void Kunsthand::loslassen() {
    beginnen(Taetigkeit::Loslassen, 0.25, rastplatz());
}

Kunsthand::Ort Kunsthand::rastplatz() {
    const double x = normal() * art_.rastlage;
    return {x, normal() * art_.rastlage};
}

void Kunsthand::naechsteTaetigkeit() {
    switch (was_) {
    case Taetigkeit::Ruhen:
    case Taetigkeit::Schwenken:
        if (was_ == Taetigkeit::Schwenken && gleich(0, 1) < 0.5)
            return loslassen();
        return greifen();
    case Taetigkeit::Greifen:
        if (std::hypot(nach_.x - aufgabe_.x, nach_.y - aufgabe_.y) > 300)
            return beginnen(Taetigkeit::Greifen, gleich(0.08, 0.16), aufgabe_); // the correction
        return beginnen(Taetigkeit::Halten, gleich(0.15, 1.2), nach_);
    case Taetigkeit::Halten:
        return gleich(0, 1) < 0.3 ? schwenken() : loslassen();
    case Taetigkeit::Loslassen:
        return beginnen(Taetigkeit::Ruhen, gleich(0.3, 3), nach_);
    }
}

Kunsthand::Ort Kunsthand::gemeint(double anteil) const {
    double dort = 1; // part of the way
    if (was_ == Taetigkeit::Greifen)
        dort = glocke(anteil);
    else if (was_ == Taetigkeit::Schwenken)
        dort = anteil;
    else if (was_ == Taetigkeit::Loslassen)
        dort = 1 - std::exp(-seit_ / FEDER_SEKUNDEN) * std::cos(VOLLER_KREIS * FEDER_HERTZ * seit_);
    const Ort ort{von_.x + (nach_.x - von_.x) * dort, von_.y + (nach_.y - von_.y) * dort};
    const double zuWeit = std::max(1.0, std::hypot(ort.x, ort.y) / ANSCHLAG);
    return {ort.x / zuWeit, ort.y / zuWeit};
}

// It goes on while no thumb is on the stick, and does nothing there.
Kunsthand::Ort Kunsthand::tremor() {
    tremorphase_ += VOLLER_KREIS * TREMOR_HERTZ * (1 + 0.2 * normal()) * schritt_;
    const double halt = 1 - schritt_ / WANDERN_SEKUNDEN;
    const double stoss = WANDERN * std::sqrt(schritt_);
    wandern_.x = wandern_.x * halt + normal() * stoss;
    wandern_.y = wandern_.y * halt + normal() * stoss;
    if (was_ == Taetigkeit::Ruhen || was_ == Taetigkeit::Loslassen)
        return {};
    return {art_.zittern * std::sin(tremorphase_) + wandern_.x,
            art_.zittern * std::cos(1.3 * tremorphase_) + wandern_.y};
}

Kunsthand::Probe Kunsthand::naechste() {
    zeit_ += schritt_;
    seit_ += schritt_;
    if (seit_ >= dauer_)
        naechsteTaetigkeit();
    const auto ort = gemeint(std::min(1.0, seit_ / dauer_));
    const auto hand = tremor();
    const double drift = art_.drift * std::sin(driftphase_ + VOLLER_KREIS * zeit_ / DRIFT_SEKUNDEN);
    Probe probe;
    probe.taetigkeit = was_;
    probe.xMitte = MITTE + ort.x + drift;
    probe.yMitte = MITTE + ort.y - drift / 2;
    probe.x = gewandelt(probe.xMitte + hand.x + art_.rauschen * normal(), art_.stufe);
    probe.y = gewandelt(probe.yMitte + hand.y + art_.rauschen * normal(), art_.stufe);
    return probe;
}

Streudaten streudatenAus(Kunsthand::Eigenart eigenart, int takte) {
    eigenart.hertz = 200; // a sample a tick
    Kunsthand hand(eigenart);
    Streudaten daten;
    daten.takte.resize(Streudaten::RASTERFELDER);
    for (int takt = 0; takt < takte; ++takt) {
        const auto probe = hand.naechste();
        const auto zelle = static_cast<std::uint16_t>(probe.y / 256 * Streudaten::ZELLEN + probe.x / 256);
        ++daten.takte[zelle];
        if (!daten.weg.empty() && daten.weg.back().zelle == zelle && daten.weg.back().takte < 65535)
            ++daten.weg.back().takte;
        else
            daten.weg.push_back({zelle, 1});
        if (probe.taetigkeit != Kunsthand::Taetigkeit::Ruhen)
            continue;
        for (const auto& [achse, wert, mitte] :
             {std::tuple(0, probe.x, probe.xMitte), std::tuple(1, probe.y, probe.yMitte)}) {
            auto& ruhe = daten.achsen[static_cast<std::size_t>(achse)];
            const auto klasse = static_cast<int>(std::abs(wert - mitte)) / Streudaten::KLASSENBREITE;
            ++ruhe.zittern[static_cast<std::size_t>(std::min(klasse, Streudaten::KLASSEN - 1))];
            ++ruhe.ruhe[static_cast<std::size_t>(mitte) / 256];
        }
    }
    return daten;
}
