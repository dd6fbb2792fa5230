// SPDX-License-Identifier: GPL-3.0-or-later
// The plane of a stick editor by the keyboard: a mark that goes from field to field, and what its keys do to
// the field there.
//
//   key               no field chosen       the marked field chosen    another one chosen   panel open
//   arrow             mark goes on          mark goes on               mark goes on         -
//   Umschalt + arrow  a line moves, saved   -                          -                    -
//   Waehlen           chosen                its action opens           chosen instead       saved, closed
//   Aktion            chosen, its action    its action opens           chosen, its action   -
//   Schliessen        a held line goes back no longer chosen           no longer chosen     saved, closed
//
// Which line moves: the inner line of the field's band; in a centre band the one that the arrow points at.
#pragma once

#include "editors/stick/Feldgitter.h"
#include "editors/stick/Linienzug.h"

#include <optional>

/// The arrows come first.
enum class Ebenentaste { Links, Rechts, Oben, Unten, Waehlen, Aktion, Schliessen };

/// How far a line goes at a press, in plane units: four of them are as far as a new line lies from the last.
inline constexpr std::int32_t LINIENSCHRITT = 250;

class Tastenwahl {
public:
    Tastenwahl(const Justierstand& stand, Linienzug& zug, Justierflaeche& flaeche)
        : stand_(stand), zug_(zug), flaeche_(flaeche) {}

    /// A key went down. False when it has nothing to do here. Throws as Linienzug does.
    bool druecken(Ebenentaste taste, bool umschalt);

    /// The keyboard came to the plane: the mark is shown where it was, at first in the chosen field or in the
    /// middle. The mouse or another control takes it away.
    void beginnen();
    void enden() { gezeigt_ = false; }

    /// The field that is marked, while the mark shows.
    std::optional<Gitterplatz> marke() const;
    /// The field that is chosen.
    std::optional<Gitterplatz> gewaehlt() const;

    /// What Waehlen and Aktion do, for a field that the mark goes to.
    void waehlen(const Gitterplatz& platz);
    void aktionOeffnen(const Gitterplatz& platz);

private:
    void gehen(int spalten, int zeilen);
    bool schieben(Ebenentaste taste);
    bool schliessen();
    void wahlWechseln();
    bool markierteGewaehlt() const { return gewaehlt() == platz(); }
    Gitterplatz platz() const;
    Stickposition mitte() const;

    const Justierstand& stand_;
    Linienzug& zug_;
    Justierflaeche& flaeche_;
    std::optional<Gitterplatz> platz_; ///< where the mark is or was
    bool gezeigt_ = false;
};
