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
// An action is started on the x or on the y side; the sides have timers and remembered texts of their own.
#pragma once

#include "engine/run/Fehlerort.h"
#include "engine/run/Laufdienste.h"
#include "engine/stick/Stickeigenart.h"
#include "engine/stick/Stickort.h"
#include "platform/Eingabe.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

/// The field in which an `Ego Shooter` began.
struct EgoDaten {
    std::int32_t breite = 0;
    std::int32_t hoehe = 0;
    std::int32_t xMin = 0;
    std::int32_t yMin = 0;
    std::string aktion;
};

/// `EgoStatus`: bits of the axes whose zone is out of "Mitte".
namespace egostatus {
inline constexpr std::uint8_t X_AUSSEN = 1;
inline constexpr std::uint8_t Y_AUSSEN = 2;
} // namespace egostatus

/// An axis of the `Ego Shooter`.
struct Egoachse {
    std::int32_t weg = 0;     ///< last travel in mouse counts
    std::int32_t versatz = 0; ///< last offset of the stick in the field
};

/// What outlasts a run.
struct Stickaktionsstand {
    std::array<std::string, AKTIONSSEITEN> AktionAlt;    ///< `XAktionAlt`, `YAktionAlt`: last started
    std::array<Feldname, AKTIONSSEITEN> feldAlt;         ///< the fields that those texts stand in
    std::array<std::string, AKTIONSSEITEN> MausAktion;   ///< what the mouse timer repeats
    std::array<std::string, AKTIONSSEITEN> TastenAktion; ///< the timed key; "" when none
    std::string BindenAktion;                            ///< what the timer of `Im Feld binden` repeats
    ::EgoDaten EgoDaten;
    std::uint8_t EgoStatus = 0;
    std::array<Egoachse, AKTIONSSEITEN> egoachsen;
    bool DiagonalFlag = false; ///< an x and a y movement run as one
    std::string xZone;         ///< "Links", "Mitte", "Rechts": the stick's zone at its last evaluation
    std::string yZone;         ///< "Oben", "Mitte", "Unten"
};

/// Small, as timers hold copies of it: a timer's procedure knows by its copy which field it was started for.
/// All procedures throw LaufzeitFehler 9 for an action text with too few fields, 13 for a field that is no
/// number, 6 for a number that does not fit or an `Ego Shooter` that moves too far at once, 11 for an `Ego
/// Shooter` in a field without width. The error's text names the stick, the field and the action text.
class Stickaktion {
public:
    /// `felder` are those that the actions started on the x and on the y side stand in.
    Stickaktion(Stickaktionsstand& stand, const FeldGrenzen& grenzen, const Stickeigenart& art,
                const Laufdienste& dienste, const std::array<Feldname, AKTIONSSEITEN>& felder)
        : stand_(&stand), grenzen_(&grenzen), art_(&art), dienste_(&dienste), felder_(felder) {}

    /// Ends the last actions; `neu` is the action of the field entered, or "".
    void AktionBeenden(std::string_view neu) const;
    void XAktionStarten(const std::string& a) const;
    void YAktionStarten(const std::string& a) const;
    void XYAktionStarten(const std::string& ax, const std::string& ay) const;

private:
    void starten(const std::string& a, Aktionsseite seite) const;
    void XMausBewegen(const std::string& a, const std::string& b) const;
    void YMausBewegen(const std::string& a) const;
    void diagonaleBewegen(const std::string& a, const std::string& b) const;
    void mausTakt(Aktionsseite seite) const;
    void MausTasteDruecken(const std::string& a, Aktionsseite seite) const;
    void MausTasteLoslassen(std::string_view a) const;
    void TasteDruecken(const std::string& a, Aktionsseite seite) const;
    void TasteLoslassen(std::string_view a, Aktionsseite seite) const;
    void druckTakt(Aktionsseite seite) const;
    void pausenTakt(Aktionsseite seite) const;
    void AbsolutePosition(const std::string& a, Aktionsseite seite) const;
    void bindenTakt(Aktionsseite seite) const;
    void EgoSchritt(Aktionsseite seite) const;
    void egoachseBewegen(Aktionsseite seite, std::int32_t versatz, std::int32_t laenge,
                         std::string_view zaehler) const;
    void schritteSenden(const MOUSEINPUT& einer, std::int64_t anzahl) const;
    void seiteBeenden(Aktionsseite seite) const;
    void absolutBeendenX(std::string_view neu) const;
    void absolutBeendenY(std::string_view neu) const;
    void sperren() const;

    void timerSetzen(const Sticktimer& timer, std::string_view ms,
                     void (Stickaktion::*takt)(Aktionsseite) const, Aktionsseite seite,
                     bool mitBit = true) const;
    void timerLoeschen(const Sticktimer& timer) const;

    template <class Schritt>
    void benannt(const Feldname& feld, const std::string& a, const Schritt& schritt) const;

    // Pointers, so that a timer's procedure can hold a copy.
    Stickaktionsstand* stand_;
    const FeldGrenzen* grenzen_;
    const Stickeigenart* art_;
    const Laufdienste* dienste_;
    std::array<Feldname, AKTIONSSEITEN> felder_;
};
