// SPDX-License-Identifier: GPL-3.0-or-later
// The slider text of a `Schema`: how the axis "Z1" is cut into equal fields, and what each does.
//
//   text    "n/c-1-T-S(a,b,d)/c-3-T-S(a,b,d)"   "3/1-1-0-1(10,5,)/1-3-2-1(65,50,100)"; "" for no slider
//           the number of fields, then a record for each field with a setting
//   record  "3-T-S(a,b,d)": one field of the text without its c
//
//   c  "1": triggers only when the slider moves outward
//   n  number of the field, from 1
//   T  0 mouse movement   S direction  a interval in ms   b step
//      1 mouse button     S button     a wheel amount
//      2 key              S 0 held, 1 timed     a key   b press in ms   d pause in ms, "" for no repeat
//      3 nothing
//
// Two readings. A run is lenient: the number of fields, the number of each record and one c must make sense
// when it starts, and whatever else a record holds is an error only when it is carried out. Of several c it
// takes that of the record whose number is written "1", else that of the first. An editor is strict and takes
// that of the first; it keeps a record as the text it came as. The separators are "/", "-", "(", "," and ")";
// since none of them is a digit, no number of digits alone can break the text.
#pragma once

#include "formats/Felder.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Types of actions, by their number T.
enum class Schubart { Mausbewegung, Maustaste, Tastatur, Leerfeld };
inline constexpr int SCHUBARTEN = 4;

// --- as a run reads it ---

/// What stands behind T: S, then a, b and d, the last of them with the closing ")".
struct Schubangaben {
    Feld unterwahl;
    std::vector<Feld> werte;

    /// Throws LaufzeitFehler 9 where there are too few.
    const Feld& wert(std::size_t stelle) const;
    /// d as a number; 0 for the empty one. Throws LaufzeitFehler.
    std::int32_t pause() const;
};

/// A record; a field that it lacks is not there.
struct Schubsatz {
    std::string text;
    Feld nurAuswaerts; ///< c
    Feld nummer;
    Feld art; ///< T
    std::optional<Schubangaben> angaben;
};

struct Schubsaetze {
    Feld anzahl; ///< of the fields
    std::vector<Schubsatz> saetze;

    /// The record whose c counts; only where there is one.
    const Schubsatz& massgebend() const;
};

/// Reads a slider text for a run; nothing for the empty text. Never throws.
std::optional<Schubsaetze> schubtextImLauf(std::string_view text);

// --- as an editor reads it ---

/// What a record tells.
struct Schubaktion {
    Schubart art = Schubart::Leerfeld;
    std::string unterwahl;            ///< S
    std::array<std::string, 3> werte; ///< a, b, d

    bool operator==(const Schubaktion&) const = default;
};

/// The record of field `nummer`, from 1.
std::string alsSatz(int nummer, const Schubaktion& aktion);
/// The action of a record. Throws LaufzeitFehler 9 for one with too few pieces or no such type, 13 and 6 for
/// a type that is no number.
Schubaktion aktionAus(std::string_view satz);

class Schubtext {
public:
    static constexpr int LINIEN_MAX = 19;

    /// A slider without lines and records.
    Schubtext() = default;
    /// Reads a slider text; an empty one is a slider without lines. Throws LaufzeitFehler for an ill-formed
    /// one: 13 and 6 for numbers, 9 for a record without a field number or more fields than 20 or less than
    /// one, 457 for a field that comes twice.
    explicit Schubtext(std::string_view text);

    int linien() const { return LinienAnzahl_; }
    int felder() const { return LinienAnzahl_ + 1; }
    /// c of the first record of the text that was read.
    bool nurAuswaerts() const { return nurAuswaerts_; }

    /// One line more, the records stay; false where there are LINIEN_MAX.
    bool linieAnfuegen();
    /// Takes the last field with its record away; false where there is no line.
    bool linieLoeschen();

    /// The record of the field at `index`, from 0; "" for none.
    std::string satz(int index) const;
    void satzSetzen(int index, const std::string& satz) { FeldListe_[index] = satz; }

    /// The slider text, its records by number, each with `nurAuswaerts` as its c.
    std::string text(bool nurAuswaerts) const;

private:
    int LinienAnzahl_ = 0;
    std::map<int, std::string> FeldListe_; // by index of the field, from 0
    bool nurAuswaerts_ = false;
};
