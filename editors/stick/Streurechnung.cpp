// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Streurechnung.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace {

constexpr int ZELLEN = Streudaten::ZELLEN;
constexpr int ZELLENBREITE = 256; // plane units
constexpr std::size_t ECKEN = ZELLEN + 1;

/// A place on an axis as the edge of a cell before it and how far behind that it lies, in cells.
struct Stelle {
    std::size_t rand;
    double rest;
};

Stelle stelle(double wert) {
    const double zellen = std::clamp(wert / ZELLENBREITE, 0.0, double(ZELLEN));
    const auto rand = std::min(static_cast<std::size_t>(zellen), std::size_t{ZELLEN} - 1);
    return {rand, zellen - static_cast<double>(rand)};
}

std::optional<double> rauschband(const Streudaten::Achsenruhe& ruhe) {
    const auto& zittern = ruhe.zittern;
    const auto summe = std::accumulate(zittern.begin(), zittern.end(), std::uint64_t{0});
    if (summe < Streurechnung::RUHE_MINDESTENS)
        return std::nullopt;
    const double ziel = Streurechnung::RAUSCHANTEIL * static_cast<double>(summe);
    double davor = 0;
    for (std::size_t klasse = 0; klasse < zittern.size(); ++klasse) {
        const double hier = zittern[klasse];
        if (davor + hier >= ziel)
            return Streudaten::KLASSENBREITE * (static_cast<double>(klasse) + (ziel - davor) / hier);
        davor += hier;
    }
    return double(Streudaten::KLASSENBREITE) * Streudaten::KLASSEN;
}

/// The cells of an axis that belong to a band: those whose middle lies in it.
template <class Feldsuche> std::array<bool, ZELLEN> zellenIm(Feldsuche&& imBand) {
    std::array<bool, ZELLEN> zellen{};
    for (int i = 0; i < ZELLEN; ++i)
        zellen[static_cast<std::size_t>(i)] = imBand(i * ZELLENBREITE + ZELLENBREITE / 2);
    return zellen;
}

/// The stays in a field, one after the other.
class Aufenthalte {
public:
    void bruch() {
        draussen_ = false;
        betreten_ = false;
    }
    void takte(bool drin, std::uint16_t anzahl) {
        if (drin && draussen_) {
            ++eintritte_;
            betreten_ = true;
            dauer_ = 0;
        }
        if (!drin && std::exchange(betreten_, false))
            dauern_.push_back(dauer_);
        dauer_ += anzahl;
        draussen_ = !drin;
    }
    int eintritte() const { return eintritte_; }
    /// In ticks; of an even number of stays the mean of the two in the middle.
    std::optional<double> median() {
        if (dauern_.empty())
            return std::nullopt;
        const auto mitte = dauern_.begin() + static_cast<std::ptrdiff_t>(dauern_.size() / 2);
        std::ranges::nth_element(dauern_, mitte);
        const auto oben = static_cast<double>(*mitte);
        if (dauern_.size() % 2 == 1)
            return oben;
        return (oben + static_cast<double>(*std::max_element(dauern_.begin(), mitte))) / 2;
    }

private:
    bool draussen_ = false; ///< the way comes from another field
    bool betreten_ = false; ///< the stay that goes on began with an entry
    std::uint64_t dauer_ = 0;
    std::vector<std::uint64_t> dauern_;
    int eintritte_ = 0;
};

} // namespace

Streurechnung::Streurechnung(Streudaten daten) : daten_(std::move(daten)) {
    stellenZaehlen();
    for (std::size_t achse = 0; achse < daten_.achsen.size(); ++achse) {
        const auto& ruhe = daten_.achsen[achse].ruhe;
        for (std::size_t i = 0; i < ruhe.size(); ++i)
            ruhe_[achse][i + 1] = ruhe_[achse][i] + ruhe[i];
        rauschen_[achse] = rauschband(daten_.achsen[achse]);
    }
    for (const auto& aufenthalt : daten_.weg)
        wegtakte_ += aufenthalt.takte;
}

void Streurechnung::stellenZaehlen() {
    stellen_.assign(ECKEN * ECKEN, 0);
    if (daten_.takte.empty())
        return;
    const auto* takte = daten_.takte.data();
    for (std::size_t y = 1; y < ECKEN; ++y) {
        double zeile = 0;
        for (std::size_t x = 1; x < ECKEN; ++x) {
            zeile += *takte++;
            stellen_[y * ECKEN + x] = stellen_[(y - 1) * ECKEN + x] + zeile;
        }
    }
}

/// Ticks to the left of and above a place; within a cell they lie evenly.
double Streurechnung::bis(double x, double y) const {
    const auto quer = stelle(x);
    const auto hoch = stelle(y);
    const auto ecke = [&](std::size_t dx, std::size_t dy) {
        return stellen_[(hoch.rand + dy) * ECKEN + quer.rand + dx];
    };
    return std::lerp(std::lerp(ecke(0, 0), ecke(1, 0), quer.rest),
                     std::lerp(ecke(0, 1), ecke(1, 1), quer.rest), hoch.rest);
}

double Streurechnung::ruheBis(Achse achse, double wert) const {
    const auto [rand, rest] = stelle(wert);
    return std::lerp(ruhe_[achse][rand], ruhe_[achse][rand + 1], rest);
}

Streurechnung::Feldstreuung Streurechnung::feld(const Linienebene& linien, const Gitterplatz& platz) const {
    const Feldgitter gitter(linien);
    const auto feld = gitter.feld(platz);
    const auto spalten = zellenIm(
        [&](int x) { return gitter.platz(BereichFestlegen(linien, x, 0).anker).spalte == platz.spalte; });
    const auto zeilen = zellenIm(
        [&](int y) { return gitter.platz(BereichFestlegen(linien, 0, y).anker).zeile == platz.zeile; });

    Feldstreuung streuung;
    const auto& r = feld.rechteck;
    const auto links = static_cast<double>(r.links);
    const auto rechts = static_cast<double>(r.links + r.breite);
    const auto oben = static_cast<double>(r.oben);
    const auto unten = static_cast<double>(r.oben + r.hoehe);
    if (stellen_.back() > 0)
        streuung.anteil =
            std::max(0.0, bis(rechts, unten) - bis(links, unten) - bis(rechts, oben) + bis(links, oben)) /
            stellen_.back();

    Aufenthalte aufenthalte;
    for (const auto& [zelle, takte] : daten_.weg)
        takte == 0 ? aufenthalte.bruch()
                   : aufenthalte.takte(spalten[zelle % ZELLEN] && zeilen[zelle / ZELLEN], takte);
    streuung.eintritte = aufenthalte.eintritte();
    if (wegtakte_ > 0)
        streuung.jeMinute = streuung.eintritte * 60 / wegsekunden();
    if (const auto median = aufenthalte.median())
        streuung.median = *median * SEKUNDEN_JE_TAKT;
    return streuung;
}

bool Streurechnung::linieImRauschen(Achse achse, std::int32_t linie) const {
    const auto band = rauschen_[achse];
    if (!band || ruhe_[achse].back() == 0)
        return false;
    const double nah = ruheBis(achse, linie + *band) - ruheBis(achse, linie - *band);
    return nah >= RUHEANTEIL * ruhe_[achse].back();
}

bool Streurechnung::schmal(Achse achse, std::int64_t von, std::int64_t bis) const {
    return rauschen_[achse] && static_cast<double>(bis - von) < 2 * *rauschen_[achse];
}
