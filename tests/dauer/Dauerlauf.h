// SPDX-License-Identifier: GPL-3.0-or-later
// A long run: the program is played with at random while one thing after the other goes wrong around it; each
// minute it comes to rest and is measured.
//
// The time is in three parts. In a short one at the beginning and one at the end the program is also killed
// and ended, again and again; in the long one between nothing may end it, so that what grows has the time to
// grow.
#pragma once

#include "tests/dauer/Spielzug.h"
#include "tests/dauer/Stoerung.h"
#include "tests/dauer/Urteil.h"

#include <chrono>
#include <deque>
#include <memory>
#include <optional>

class Dauerlauf {
public:
    /// `programm` as Umgebung takes it. The seed repeats what is done, not the instants at which. With the
    /// name of a way only that is gone, and nothing goes wrong: so is found what it is that grows.
    Dauerlauf(const std::filesystem::path& programm, double stunden, unsigned saat, const std::string& weg);

    /// Prints a line a minute and the findings; true when there is no fault.
    bool laufen();

private:
    using Uhr = std::chrono::steady_clock;
    using Sekunden = std::chrono::duration<double>;

    double anteil() const { return Sekunden(Uhr::now() - anfang_) / dauer_; }
    bool imLangenTeil() const;

    // --- the program ---
    void starten();
    void zweitesStarten();
    void zweitesBeenden();
    void spielen();
    void gegangen(std::unique_ptr<Fernsteuerung>& programm, const std::string& erwartet);
    void stumm(std::unique_ptr<Fernsteuerung>& programm);
    void nichtsGehalten();
    void dateienPruefen();
    void beenden();

    // --- faults ---
    void stoeren();
    void stoerungEnden();
    const Stoerung& naechste();

    // --- what is told ---
    void merken(const std::string& was);
    void vorfall(int Vorfaelle::*art, const std::string& was);
    void protokollLesen(Fernsteuerung& programm);
    void messen();
    void zeileDrucken(const Messzeile& zeile);
    bool schlussworte();

    const bool ungestoert_;
    const Sekunden dauer_;
    Sekunden zeilenabstand_;
    Sekunden stoerabstand_;
    std::mt19937 zufall_;
    Umgebung umgebung_;
    XWelt welt_;
    Spielzug zug_;
    Stoerplatz platz_;
    std::unique_ptr<Fernsteuerung> programm_;
    std::unique_ptr<Fernsteuerung> zweites_;
    std::unique_ptr<Fernsteuerung>* dran_ = &programm_;
    Uhr::time_point anfang_;
    Uhr::time_point naechsteZeile_;
    Uhr::time_point naechsteStoerung_;
    Uhr::time_point zweitesBis_;
    const Stoerung* stoerung_ = nullptr;
    std::size_t gestoert_ = 0;
    std::size_t getoetet_ = 0;
    std::map<std::string, int> stoerungszahl_;

    std::deque<std::string> letzte_; ///< what was done last
    std::map<std::string, int> fremdeZeilen_;
    std::vector<Messzeile> zeilen_;
    Vorfaelle vorfaelle_;
    int leben_ = 0;
    int spaete_ = 0; ///< since the last row
    int spaeteste_ = 0;
    int laeufe_ = 0;
    int zweite_ = 0;
};
