// The fields of one slider as its editor holds them, and the slider text that they come from and become.
//
//   text    "n/c-1-T-S(a,b,d)/c-3-T-S(a,b,d)": the number of fields, then those that have a setting
//   record  "3-T-S(a,b,d)": one field of the text without its c; what the pieces mean is told in
//           engine/Schubregler.h
//
// A record is kept as the text it came as. The separators of the text are "/", "-", "(", "," and ")"; since
// none of them is a digit, no number that zahlPruefen lets through can break it.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

/// Types of actions, by their number T.
enum class Schubart { Mausbewegung, Maustaste, Tastatur, Leerfeld };
inline constexpr int SCHUBARTEN = 4;

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

/// What a number box of the editor holds.
enum class Zahlbefund {
    Gut,       ///< digits, of a value from 0 to SCHUBZAHL_MAX
    KeineZahl, ///< no number at all
    PasstNicht ///< a number, but with a sign, a comma or too many digits for the slider text
};
inline constexpr std::int32_t SCHUBZAHL_MAX = 2147483647;
/// Blanks around the text do not matter.
Zahlbefund zahlPruefen(std::string_view text);

/// Where in a picture of `breite` pixels the axis value `wert`, 0 to 65535, stands.
double schubstelle(std::int32_t wert, int breite);
/// Where line `linie`, from 1, of `linien` stands.
double linienstelle(int linie, int linien, int breite);
/// The field, from 1, in which `stelle` lies: the first whose line lies right of it.
int feldAnStelle(double stelle, int linien, int breite);
