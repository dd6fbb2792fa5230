// SPDX-License-Identifier: GPL-3.0-or-later
// The action of a stick's field.
//
//   text                                                                example
//   0,Richtung,Schritt,Intervall                                        "0,2,5,10"        Mausbewegung
//   1,Knopf[,Scrollsprung]                                              "1,0" "1,3,120"   Maustaste drücken
//   2,Eigenschaft,Taste,Druckzeit,Wiederholen,Pausenzeit                "2,0,65,0,0"      Tastatur drücken
//                                                                       "2,1,65,50,1,200"
//   3                                                                   "3"               Leerfeld
//   4                                                                   "4"               Sperrfeld
//   5,Position[,X,Y]                                                    "5,1" "5,2,40,30" Absolute Position
//
// Times are in ms, steps and ways in mouse counts. Richtung: 0 Links, 1 Rechts, 2 Oben, 3 Unten. Knopf: 0
// left, 1 right, 2 middle, 3 wheel plus, 4 wheel minus. Eigenschaft: 0 held, 1 pressed for a time.
// Position: 0 centred in the field, 1 bound to it, 2 `Ego Shooter`.
//
// Two readings, which differ in how they find the type. A run goes by the first character alone ("12" is a
// Maustaste, " 2,0,65" nothing), an editor by the first field as a number. Fields are read once; one that is
// missing or no number is an error only where it is asked for, so a text goes as far as it makes sense. A
// field behind the last one is ignored.
#pragma once

#include "formats/Felder.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

/// First field of an action text, place of its type in the variant, and index of the panel's type choice.
enum class Stickaktionsart {
    Mausbewegung = 0,
    Maustaste = 1,
    Tastatur = 2,
    Leerfeld = 3,
    Sperrfeld = 4,
    AbsolutePosition = 5,
};
inline constexpr int STICKAKTIONSARTEN = 6;

// Numbers of the choices that decide which fields follow.
inline constexpr int MAUSRICHTUNGEN = 4;
inline constexpr int MAUSTASTEN = 5;
inline constexpr int SCROLLRAD_PLUS = 3;
inline constexpr int SCROLLRAD_MINUS = 4;
inline constexpr int TASTENEIGENSCHAFTEN = 2;
inline constexpr int TASTE_MIT_ZEIT = 1;
inline constexpr int ABSOLUTE_POSITIONEN = 3;
inline constexpr int EGO_SHOOTER = 2;

/// The types of action. The fields of each stand in `FELDER` in the order of the text, behind the type.
namespace stickaktion {

struct Mausbewegung {
    Feld richtung;
    Feld schritt;
    Feld intervall;
    static constexpr std::array FELDER{&Mausbewegung::richtung, &Mausbewegung::schritt,
                                       &Mausbewegung::intervall};
};
struct Maustaste {
    Feld knopf;
    Feld scrollsprung; ///< only the wheel has one
    static constexpr std::array FELDER{&Maustaste::knopf, &Maustaste::scrollsprung};
};
struct Tastatur {
    Feld eigenschaft;
    Feld taste;
    Feld druckzeit;
    Feld wiederholen; ///< 1: press again and again
    Feld pausenzeit;
    static constexpr std::array FELDER{&Tastatur::eigenschaft, &Tastatur::taste, &Tastatur::druckzeit,
                                       &Tastatur::wiederholen, &Tastatur::pausenzeit};
};
struct Leerfeld {
    static constexpr std::array<Feld Leerfeld::*, 0> FELDER{};
};
struct Sperrfeld {
    static constexpr std::array<Feld Sperrfeld::*, 0> FELDER{};
};
struct AbsolutePosition {
    Feld position;
    Feld egoX; ///< counts across the field, only the `Ego Shooter` has them
    Feld egoY;
    static constexpr std::array FELDER{&AbsolutePosition::position, &AbsolutePosition::egoX,
                                       &AbsolutePosition::egoY};
};

/// In the order of Stickaktionsart.
using Inhalt = std::variant<Mausbewegung, Maustaste, Tastatur, Leerfeld, Sperrfeld, AbsolutePosition>;
static_assert(std::variant_size_v<Inhalt> == STICKAKTIONSARTEN);

/// One procedure a type, for `std::visit`; the compiler misses one that is forgotten.
template <class... Prozeduren> struct JeArt : Prozeduren... { using Prozeduren::operator()...; };
template <class... Prozeduren> JeArt(Prozeduren...) -> JeArt<Prozeduren...>;

/// Place of a field in the text; the type is field 0.
template <class Aktion> constexpr std::size_t stelle(Feld Aktion::*feld) {
    std::size_t i = 0;
    while (Aktion::FELDER[i] != feld)
        ++i;
    return i + 1;
}

/// Asks for a field that the text must have. Throws LaufzeitFehler 9 where it has too few.
const Feld& verlangt(const Feld& feld);

} // namespace stickaktion

/// An action as a run reads it: its text, split once, and what hangs on the text itself.
class Stickaktion {
public:
    /// A type that does not exist is a `Leerfeld`.
    explicit Stickaktion(std::string text);

    const std::string& text() const { return text_; }
    const stickaktion::Inhalt& inhalt() const { return inhalt_; }
    template <class Aktion> const Aktion* als() const { return std::get_if<Aktion>(&inhalt_); }
    template <class Aktion> bool ist() const { return std::holds_alternative<Aktion>(inhalt_); }

    /// The third character, which tells the kinds of an absolute position apart, whatever stands before it.
    const Feld& drittesZeichen() const { return drittesZeichen_; }
    /// Whether the last character is a "1", of whatever field.
    bool endetAufEins() const { return text_.ends_with('1'); }

private:
    std::string text_;
    stickaktion::Inhalt inhalt_;
    Feld drittesZeichen_;
};

/// An action that several remember: the list of a layer, what runs, what a timer repeats. Null for none.
using Aktionszeiger = std::shared_ptr<const Stickaktion>;

/// Its text; "" for none.
std::string aktionstext(const Aktionszeiger& aktion);

/// The type that a run finds, by the first character; nothing for one that does not exist.
std::optional<Stickaktionsart> artImLauf(std::string_view text);
/// The type that an editor finds, by the first field. Throws LaufzeitFehler 9 for one that does not exist, 13
/// and 6 for what is no number. The empty text, that of a field without a row, is a `Leerfeld`.
Stickaktionsart artImEditor(std::string_view text);

/// The fields behind the type, whatever the text says of it.
stickaktion::Inhalt stickaktionInhalt(std::string_view text, Stickaktionsart art);

/// The text of an action: its type and its fields up to the first that is not there.
std::string stickaktionSchreiben(const stickaktion::Inhalt& inhalt);

/// Whether the text is a `Leerfeld` and nothing else: the digit 3, blanks around it allowed. A looser
/// comparison of numbers would depend on the user's locale, where a comma groups digits or ends a number:
/// "0,0,0,3" would count as 3 in some, and a real action would be lost.
bool istNurLeerfeld(std::string_view text);
