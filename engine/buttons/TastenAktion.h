// SPDX-License-Identifier: GPL-3.0-or-later
// Turns one press or release edge of a slot (twelve buttons, four D-pad directions) into key and mouse
// events.
//
// A timed action (Modus 1 with a Druckzeit) pulses by itself until its button is let go. States of a pulsing
// slot:
//
//   state     DrueckMaske  PausenMaske  timer of the slot   next
//   idle      0            0            off                 press -> key down
//   key down  1            0            Druckzeit           over -> pause, or idle without a Pausenzeit;
//                                                           release -> idle, key up
//   pause     0            1            Pausenzeit          over -> key down; release -> idle
#pragma once

#include "formats/Belegung.h"

#include <array>
#include <cstdint>
#include <string>

class GehalteneTasten;
class LaufAnzeige;
class Wiederholung;
class XPTaste;
class Zeitgeber;
struct GegebenerStand;

/// Where a `Belegung` stands and what it says, for messages.
struct Belegungsort {
    int slot = 0;
    int ebene = 0;
    std::string belegung;
};

/// What outlasts a run.
struct Tastenstand {
    Belegungsfelder Felder;                     ///< the `Belegung` under evaluation
    std::array<Belegungsfelder, 17> TastenSatz; ///< by slot + 1: the fields that the slot's pulse uses
    std::array<Belegungsort, 17> TastenSatzOrt; ///< by slot + 1: where those fields come from
    std::int16_t Zaehler = 0;                   ///< 0 to 9, shared by all slots
    std::uint32_t DrueckMaske = 0;              ///< bit slot: the pulse key is down
    std::uint32_t PausenMaske = 0;              ///< bit slot: the pause runs
};

class TastenAktion {
public:
    TastenAktion(Tastenstand& stand, GegebenerStand& gegeben, GehalteneTasten& gehaltene,
                 Wiederholung& wiederholung, XPTaste& xpTaste, Zeitgeber& zeitgeber, LaufAnzeige& anzeige);

    /// Press edge of `slot`, 0 to 15. Throws LaufzeitFehler for a `Belegung` that does not parse; `ebene`, 0
    /// to 2, is where it stands, for the error's text.
    void TasteDrueckAktion(const Belegung& belegung, int slot, int ebene = 0);
    /// Release edge of `slot`. Throws as above.
    void TasteLoesAktion(const Belegung& belegung, int slot, int ebene = 0);

    /// Fills `Felder`; fields beyond the last piece keep what they held. Throws LaufzeitFehler 9 for more
    /// than five fields.
    void BelegungZerlegen(const Belegung& belegung) { belegung.legenUeber(stand_.Felder); }
    /// Releases what a slot holds, whatever key that is, and stops its repeat.
    void TasteFreigeben(int slot);
    /// Timer procedure of a slot's pulse; also entered at the press.
    void SlotTakt(int slot);

private:
    void druecken(const Belegung& belegung, const Belegungsort& ort);
    void loesen(const Belegung& belegung, int slot);
    void tasteDruecken(int slot, const Feld& taste);
    void tasteLoesen(Belegungsart art, int slot);
    void zaehlen(int schritt);
    void titelZeigen();
    void drueckmaskeZeigen();

    Tastenstand& stand_;
    GegebenerStand& gegeben_;
    GehalteneTasten& gehaltene_;
    Wiederholung& wiederholung_;
    XPTaste& xpTaste_;
    Zeitgeber& zeitgeber_;
    LaufAnzeige& anzeige_;
};
