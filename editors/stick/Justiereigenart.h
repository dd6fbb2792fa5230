// SPDX-License-Identifier: GPL-3.0-or-later
// What tells the twin stick editors apart, all of it: everything else is one form on two sets of data.
//
// That closing the right editor leaves `OffenerEditor` at 2, that only the left one drops the chosen field at
// a change of layer, and that the names of the two panels are swapped has always been so.
#pragma once

#include "base/Achse.h"
#include "base/Stickseite.h"
#include "editors/stick/Aktionstafel.h"
#include "engine/run/GobalVariable.h"
#include "engine/run/Laufzustand.h"

#include <cstdint>
#include <string_view>

struct Justiereigenart {
    const char* formname;   ///< also its `ZielFormular`
    const char* ebenenname; ///< of its plane, for those who can't see it
    Stickseite seite;
    StickMaschine Laufzustand::*stick; ///< whose `StickSperre` follows what the form makes of its own
    std::string_view bildende;         ///< of its pictures, behind `Schema` and layer
    Achse x;
    Achse y;

    std::uint8_t OffenerEditor;                  ///< at load
    std::uint8_t GobalVariable::*beimSchliessen; ///< what closing clears

    bool ebeneVerbirgtRechteckB; ///< at a change of layer
    bool linienVorBild;          ///< at a change of layer

    const char* umschalten;    ///< name of the panel "Umschalten"
    const char* schaltflaeche; ///< name of the panel "Schaltfläche"

    Tafeleigenart tafel;
};

inline constexpr Justiereigenart FRMJUST{
    .formname = "frmJust",
    .ebenenname = "Felder des linken Sticks",
    .seite = Stickseite::Links,
    .stick = &Laufzustand::linkerStick,
    .bildende = "L.bmp",
    .x = Achse::lx,
    .y = Achse::ly,
    .OffenerEditor = 1,
    .beimSchliessen = &GobalVariable::OffenerEditor,
    .ebeneVerbirgtRechteckB = true,
    .linienVorBild = false,
    .umschalten = "Frame2",
    .schaltflaeche = "Frame3",
    .tafel = TAFEL_LINKS,
};

inline constexpr Justiereigenart FRMJUSTR{
    .formname = "frmJustr",
    .ebenenname = "Felder des rechten Sticks",
    .seite = Stickseite::Rechts,
    .stick = &Laufzustand::rechterStick,
    .bildende = "R.bmp",
    .x = Achse::rx,
    .y = Achse::ry,
    .OffenerEditor = 2,
    .beimSchliessen = &GobalVariable::OffenerEditorR,
    .ebeneVerbirgtRechteckB = false,
    .linienVorBild = true,
    .umschalten = "Frame3",
    .schaltflaeche = "Frame2",
    .tafel = TAFEL_RECHTS,
};

constexpr const Justiereigenart& justiereigenart(Stickseite seite) {
    return seite == Stickseite::Links ? FRMJUST : FRMJUSTR;
}
