// SPDX-License-Identifier: GPL-3.0-or-later
// What a user does at random: ways through the forms by the mouse and the keyboard, and what he does with the
// pad.
#pragma once

#include "tests/dauer/Fernsteuerung.h"
#include "tests/dauer/XWelt.h"
#include "tests/hilfen/XHand.h"

#include <functional>
#include <map>
#include <random>
#include <string>

class Spielzug {
public:
    /// `merken` is told each grip before it is done.
    Spielzug(const std::string& anzeige, XWelt& welt, unsigned saat,
             std::function<void(const std::string&)> merken);

    /// Goes one way through the forms, with grips at the pad in between. Throws Gegangen and Stumm.
    void tun(Fernsteuerung& programm);
    /// Answers the box that stands, if one does; gives whether one stood.
    bool boxBeantworten(Fernsteuerung& programm, const Schirmstand& stand);
    /// The pad lies on the table, plugged in; only the main form is open and nothing runs. False where some
    /// form or box does not go.
    bool ruhen(Fernsteuerung& programm);
    /// From now on only the ways with this in their name; "" for all.
    void nur(const std::string& name) { nur_ = name; }
    /// Also the main form may be closed from now on, which ends the program.
    void auchHauptform(bool darf) { auchHauptform_ = darf; }

    /// From `von` to `bis`, both included.
    int zufall(int von, int bis) { return std::uniform_int_distribution<int>(von, bis)(zufall_); }

    const std::map<std::string, int>& wege() const { return gegangene_; }
    /// Grips that found nothing to grip, by way.
    const std::map<std::string, int>& vergebliche() const { return vergebliche_; }
    const std::map<std::string, int>& boxen() const { return boxen_; }
    int griffe() const { return griffe_; }
    int stecker() const { return stecker_; }

private:
    struct Griff;
    struct Weg;
    static const std::vector<Weg>& alleWege();

    const Weg& waehlen();
    void namenseingabeVerlassen(Fernsteuerung& programm);
    void formenSchliessen(Fernsteuerung& programm);
    void schemaWaehlen(Fernsteuerung& programm);
    static bool bleibt(const Schirmstand& stand);
    bool suchenUndKlicken(Fernsteuerung& programm, const Griff& griff, unsigned knopf);
    bool greifen(Fernsteuerung& programm, const Griff& griff);
    const Anklickbares* gesucht(const Schirmstand& stand, const Griff& griff);
    bool klicken(Fernsteuerung& programm, const Schirmstand& stand, const Anklickbares* ziel, unsigned knopf);
    void tippen(const std::string& was);
    void padGriffe(Fernsteuerung& programm, int anzahl);
    void padGriff(Fernsteuerung& programm);
    void padLoslassen(Fernsteuerung& programm);
    void padStecken(Fernsteuerung& programm, bool an);
    void rasten(int hoechstens_ms);

    XHand hand_;
    XWelt& welt_;
    std::mt19937 zufall_;
    std::function<void(const std::string&)> merken_;
    std::map<std::string, int> gegangene_;
    std::map<std::string, int> vergebliche_;
    std::map<std::string, int> boxen_;
    int griffe_ = 0;
    int stecker_ = 0;
    std::string nur_;
    bool auchHauptform_ = false;
};
