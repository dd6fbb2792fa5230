// SPDX-License-Identifier: GPL-3.0-or-later
// The absolute positions among a stick's actions: the pointer goes to the centre of the field, is bound to
// the stick, or the stick's travel in the field becomes mouse counts (`Ego Shooter`).
//
// They share one timer. The `Ego Shooter` goes on when the stick leaves its field for another one: as long as
// one axis stands in a centre band it works on that axis, with the data of the field in which it began.
#pragma once

#include "engine/stick/Aktionsumfeld.h"
#include "platform/Eingabe.h"

class Absolutlauf {
public:
    explicit Absolutlauf(const Aktionsumfeld& umfeld) : umfeld_(umfeld) {}

    /// Starts an action of this type on a side. Which one it is, its third character tells; any that is not
    /// "0" or "1" is an `Ego Shooter`. Throws LaufzeitFehler 9, 13 and 6 for the fields of one, 6 where it
    /// moves too far at once, 11 in a field without width.
    void AbsolutePosition(const Aktionszeiger& aktion, Aktionsseite seite) const;

    /// The last action of the x side was one of this type and ends; `neu` is that of the field entered, or
    /// null. Throws LaufzeitFehler 13 for one whose third character is no digit.
    void beendenX(const Aktionszeiger& neu) const;
    /// The same for the y side.
    void beendenY(const Aktionszeiger& neu) const;

private:
    void bindenTakt(Aktionsseite seite) const;
    void EgoSchritt(Aktionsseite seite) const;
    void egoachseBewegen(Aktionsseite seite, std::int32_t versatz, std::int32_t laenge,
                         const Feld& zaehler) const;
    void schritteSenden(const MOUSEINPUT& einer, std::int64_t anzahl) const;

    Aktionsumfeld umfeld_;
};
