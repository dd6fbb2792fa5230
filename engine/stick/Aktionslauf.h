// SPDX-License-Identifier: GPL-3.0-or-later
// Carries out the actions of a stick's fields: starts one when the stick enters a field, repeats it on timers
// while the stick stays, ends it when the stick leaves.
//
//   type  action               on its timer                                       ended by
//   0     Mausbewegung         moves by the step again                            leaving
//   1     Maustaste drücken    -                                                  leaving: button up
//   2     Tastatur drücken     timed: press p ms, with repeat pause w ms, press   leaving: key up
//   3     Leerfeld             -                                                  -
//   4     Sperrfeld            stops all mouse and absolute timers of the stick   -
//   5,0   Im Feld zentrieren   -                                                  -
//   5,1   Im Feld binden       pointer follows the stick                          leaving
//   5,2   Ego Shooter          stick's travel in the field becomes mouse counts   begun on the x side: centre
//                                                                                 field or Sperrfeld; on the
//                                                                                 y side: Sperrfeld, and
//                                                                                 leaving where its text ends
//                                                                                 in "1"
//
// An action is started on the x or on the y side; the sides have timers and remembered actions of their own.
// Type 5 is carried out by Absolutlauf.
#pragma once

#include "engine/stick/Aktionsumfeld.h"
#include "formats/Stickaktion.h"

#include <array>

/// All procedures throw LaufzeitFehler 9 for an action text with too few fields, 13 for a field that is no
/// number, 6 for a number that does not fit or an `Ego Shooter` that moves too far at once, 11 for an `Ego
/// Shooter` in a field without width. The error's text names the stick, the field and the action text.
class Aktionslauf {
public:
    /// `felder` are those that the actions started on the x and on the y side stand in.
    Aktionslauf(Stickaktionsstand& stand, const FeldGrenzen& grenzen, const Stickeigenart& art,
                const Laufdienste& dienste, const std::array<Feldname, AKTIONSSEITEN>& felder)
        : umfeld_{&stand, &grenzen, &art, &dienste, felder} {}

    /// Ends the last actions; `neu` is the action of the field entered, or null.
    void AktionBeenden(const Aktionszeiger& neu) const;
    void XAktionStarten(const Aktionszeiger& a) const;
    void YAktionStarten(const Aktionszeiger& a) const;
    void XYAktionStarten(const Aktionszeiger& ax, const Aktionszeiger& ay) const;

private:
    void starten(const Aktionszeiger& a, Aktionsseite seite) const;
    void XMausBewegen(const Aktionszeiger& a, const Aktionszeiger& b) const;
    void YMausBewegen(const Aktionszeiger& a) const;
    void diagonaleBewegen(const Aktionszeiger& x, const Aktionszeiger& y) const;
    void mausTakt(Aktionsseite seite) const;
    void MausTasteDruecken(const Aktionszeiger& a, Aktionsseite seite) const;
    void MausTasteLoslassen(const stickaktion::Maustaste& maustaste) const;
    void TasteDruecken(const Aktionszeiger& a, Aktionsseite seite) const;
    void TasteLoslassen(const stickaktion::Tastatur& tastatur, Aktionsseite seite) const;
    void druckTakt(Aktionsseite seite) const;
    void pausenTakt(Aktionsseite seite) const;
    void seiteBeenden(Aktionsseite seite) const;
    void sperren() const;

    void timerSetzen(const Sticktimer& timer, const Feld& ms, void (Aktionslauf::*takt)(Aktionsseite) const,
                     Aktionsseite seite, bool mitBit = true) const;

    Aktionsumfeld umfeld_;
};
