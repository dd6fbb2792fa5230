// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a process, and the line to the hand in it (Fernhand.cpp).
#pragma once

#include "tests/dauer/Umgebung.h"

#include <deque>
#include <stdexcept>
#include <string>
#include <vector>

struct Rechteck {
    int x = 0;
    int y = 0;
    int breite = 0;
    int hoehe = 0;
};

struct OffenesFenster {
    std::string name;
    std::string klasse;
    bool aktiv = false;
    bool modal = false;
    unsigned long kennung = 0; ///< of the X server; 0 for none
    std::string text;          ///< of a box what it says, else the title

    bool box() const { return klasse == "QMessageBox"; }
};

/// Something that can be clicked on. Kinds: K button, T text, L list, R scroll bar, E a stick's plane, S
/// other.
struct Anklickbares {
    std::size_t fenster = 0; ///< its place in Schirmstand::fenster
    char art = 'S';
    std::string name;
    Rechteck ort;
    std::string text;
};

struct Schirmstand {
    double heap = 0; ///< bytes
    int zeitgeber = 0;
    int widgets = 0;
    std::vector<OffenesFenster> fenster;
    std::vector<Anklickbares> controls;

    const OffenesFenster* offenes(const std::string& name) const;
    const OffenesFenster* modales() const;
    const Anklickbares* control(const std::string& form, const std::string& name) const;
};

/// The process has ended; Fernsteuerung::ausgang() tells how.
struct Gegangen : std::runtime_error {
    Gegangen() : std::runtime_error("the program has gone") {}
};
/// The event loop has been silent for too long.
struct Stumm : std::runtime_error {
    Stumm() : std::runtime_error("the program does not answer") {}
};

class Fernsteuerung {
public:
    /// Starts the program; returns when its hand has answered. Throws Gegangen or Stumm.
    Fernsteuerung(const Umgebung& umgebung, const std::string& name);
    Fernsteuerung(const Fernsteuerung&) = delete;
    Fernsteuerung& operator=(const Fernsteuerung&) = delete;
    ~Fernsteuerung();

    pid_t kennung() const { return kennung_; }
    void senden(int signal) const;

    /// Throws Gegangen, and Stumm where nothing comes within 5 s.
    Schirmstand stand();
    void befehl(const std::string& zeile) { fragen(zeile); }

    /// Waits for the end, at most 10 s: "exit 0", "signal 15"; "" if it goes on.
    std::string ausgang();
    /// The lines that the program has written to stderr since the last call.
    std::vector<std::string> protokoll();

private:
    std::vector<std::string> fragen(const std::string& zeile);
    std::string zeileLesen();
    void aufraeumen();

    pid_t kennung_ = -1;
    int leitung_ = -1;
    int fehlerkanal_ = -1;
    std::string eingang_;
    std::string fehlertext_;
};
