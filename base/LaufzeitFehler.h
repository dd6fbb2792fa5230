// SPDX-License-Identifier: GPL-3.0-or-later
// The one error type of the program: a number and a text, as the store and the engine raise them.
#pragma once

#include <stdexcept>
#include <string>

/// Numbers of the errors that the program raises. The numbers are those of the Basic runtime and of DAO.
enum class Fehlernummer {
    Unerwartet = 51, // an internal error, such as no memory
    Ueberlauf = 6,
    FalscherIndex = 9,
    DivisionDurchNull = 11,
    FalscherTyp = 13,
    SchluesselVergeben = 457,
    KeinAddNewOderEdit = 3020,
    KeinAktuellerSatz = 3021,
    DoppelterSchluessel = 3022,
    KeineDatei = 3024,
    KeinPlatz = 3026,
    NurLesen = 3027,
    KeineTransaktion = 3034,
    EinAusgabe = 3043,
    DateiBeschaedigt = 3049,
    KeinZugriff = 3051,
    Abgebrochen = 3059,
    Syntax = 3075,
    KeineTabelle = 3078,
    FeldZuKlein = 3163,
    VonAnderenGeaendert = 3197,
    Gesperrt = 3218,
    KeinSolchesFeld = 3265,
    FeldOhneWert = 3314,
    RegelVerletzt = 3317,
    KeineDatenbank = 3343,
    ObjektGeschlossen = 3420,
};

class LaufzeitFehler : public std::runtime_error {
public:
    /// `text` says in German what happened, for the user.
    LaufzeitFehler(Fehlernummer nummer, const std::string& text)
        : std::runtime_error(text), nummer_(nummer) {}

    Fehlernummer nummer() const { return nummer_; }
    int zahl() const { return static_cast<int>(nummer_); }

private:
    Fehlernummer nummer_;
};
