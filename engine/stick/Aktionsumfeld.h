// SPDX-License-Identifier: GPL-3.0-or-later
// What an action of a stick works on: what the stick remembers, the field, and what the run offers.
#pragma once

#include "engine/run/Fehlerort.h"
#include "engine/run/GegebenerStand.h"
#include "engine/run/Laufdienste.h"
#include "engine/stick/Stickeigenart.h"
#include "engine/stick/Stickort.h"
#include "formats/Stickaktion.h"
#include "platform/Zeitgeber.h"

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
    Aktionszeiger aktion;
};

/// `EgoStatus`: bits of the axes whose zone is out of "Mitte".
namespace egostatus {
inline constexpr std::uint8_t X_AUSSEN = 1;
inline constexpr std::uint8_t Y_AUSSEN = 2;
} // namespace egostatus

/// What outlasts a run.
struct Stickaktionsstand {
    std::array<Aktionszeiger, AKTIONSSEITEN> AktionAlt;    ///< `XAktionAlt`, `YAktionAlt`: last started
    std::array<Feldname, AKTIONSSEITEN> feldAlt;           ///< the fields that those stand in
    std::array<bool, AKTIONSSEITEN> begonnen{};            ///< those are not ended yet
    std::array<Aktionszeiger, AKTIONSSEITEN> MausAktion;   ///< what the mouse timer repeats
    std::array<Aktionszeiger, AKTIONSSEITEN> TastenAktion; ///< the timed key; null when none
    Aktionszeiger BindenAktion;                            ///< what the timer of `Im Feld binden` repeats
    ::EgoDaten EgoDaten;
    std::uint8_t EgoStatus = 0;
    std::array<std::int32_t, AKTIONSSEITEN> egoWeg{}; ///< last travel of an axis in mouse counts
    bool DiagonalFlag = false;                        ///< an x and a y movement run as one
    std::string xZone; ///< "Links", "Mitte", "Rechts": the stick's zone at its last evaluation
    std::string yZone; ///< "Oben", "Mitte", "Unten"
};

/// Small, as timers hold copies of it: a timer's procedure knows by its copy which field it was started for.
struct Aktionsumfeld {
    // Pointers, so that a timer's procedure can hold a copy.
    Stickaktionsstand* stand;
    const FeldGrenzen* grenzen;
    const Stickeigenart* art;
    const Laufdienste* dienste;
    std::array<Feldname, AKTIONSSEITEN> felder; ///< those that the actions of the sides stand in

    /// Runs a step of an action; its errors name the field and the text.
    template <class Schritt>
    void benannt(const Feldname& feld, const Aktionszeiger& aktion, const Schritt& schritt) const {
        anOrt([&] { return feldname(art->seite, feld) + ": " + angefuehrt(aktionstext(aktion)); }, schritt);
    }

    void timerLoeschen(const Sticktimer& timer) const {
        dienste->zeitgeber.KillTimer(timer.id);
        dienste->gegeben.timer.TimerLoeschen(timer.bit);
    }
};
