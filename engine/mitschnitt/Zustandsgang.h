// SPDX-License-Identifier: GPL-3.0-or-later
// State in lines of text, each a name and words, and back: what is written is what isn't initial, and what
// is not written stays initial.
//
// A part that has state walks over it once, `begehen`, by a function that is given each value with its name;
// the same walk writes and reads. A word has no blanks: in a text "%" and two hexadecimal digits stand for
// such a byte, "%" alone for nothing at all. An enumeration and a truth value are numbers.
//
//   value            words
//   number           "12"
//   text             "2-65,"
//   field            "=12", and "-" for one that no text has filled
//   action           "=2,0,65,0,0", and "-" for none
//   held key         "2/65/065" slot, key, its spelling; "-" for none
//   slider's record  "=0/=65/=/=)" fields
//   several          one behind the other
#pragma once

#include "formats/Felder.h"
#include "formats/Halteliste.h"
#include "formats/Schubtext.h"
#include "formats/Stickaktion.h"

#include <array>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

using Zustandszeilen = std::vector<std::string>;

/// A word or a line that is no state; the text says which.
class Zustandsfehler : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

namespace zustand {

std::string wort(const std::string& text);
std::string wort(const Feld& feld);
std::string wort(const Aktionszeiger& aktion);
std::string wort(const Halteeintrag& eintrag);
std::string wort(const std::optional<Halteeintrag>& eintrag);
std::string wort(const Schubangaben& angaben);
template <class Zahl>
requires std::integral<Zahl> || std::is_enum_v<Zahl> std::string wort(Zahl zahl) {
    return std::to_string(static_cast<std::int64_t>(zahl));
}

void lesen(std::string_view wort, std::string& text);
void lesen(std::string_view wort, Feld& feld);
void lesen(std::string_view wort, Aktionszeiger& aktion);
void lesen(std::string_view wort, Halteeintrag& eintrag);
void lesen(std::string_view wort, std::optional<Halteeintrag>& eintrag);
void lesen(std::string_view wort, Schubangaben& angaben);
/// Throws for what is no whole number.
std::int64_t zahl(std::string_view wort);
template <class Zahl>
requires std::integral<Zahl> || std::is_enum_v<Zahl>
void lesen(std::string_view wort, Zahl& zahl) {
    zahl = static_cast<Zahl>(zustand::zahl(wort));
}

template <class Wert> std::string worte(const Wert& wert) {
    return wort(wert);
}
template <class Wert> std::string worte(const std::vector<Wert>& werte) {
    std::string alle;
    for (const auto& wert : werte)
        alle += (alle.empty() ? "" : " ") + wort(wert);
    return alle;
}
template <class Wert, std::size_t anzahl> std::string worte(const std::array<Wert, anzahl>& werte) {
    return worte(std::vector<Wert>(werte.begin(), werte.end()));
}

/// The words of a line.
std::vector<std::string_view> zerlegt(std::string_view worte);
/// Throws for another number of words than `soll`.
void anzahlPruefen(std::size_t ist, std::size_t soll);

template <class Wert> void alleLesen(std::string_view worte, Wert& wert) {
    const auto einzelne = zerlegt(worte);
    anzahlPruefen(einzelne.size(), 1);
    lesen(einzelne.front(), wert);
}
template <class Wert> void alleLesen(std::string_view worte, std::vector<Wert>& werte) {
    werte.clear();
    for (const auto einzelnes : zerlegt(worte))
        lesen(einzelnes, werte.emplace_back());
}
template <class Wert, std::size_t anzahl>
void alleLesen(std::string_view worte, std::array<Wert, anzahl>& werte) {
    const auto einzelne = zerlegt(worte);
    anzahlPruefen(einzelne.size(), anzahl);
    for (std::size_t i = 0; i < anzahl; ++i)
        lesen(einzelne[i], werte[i]);
}

} // namespace zustand

/// Writes "NAME WORD..." for each value that is not `anfang`.
class Zustandsschreiber {
public:
    template <class Wert> void operator()(std::string_view name, const Wert& wert, const Wert& anfang = {}) {
        const auto worte = zustand::worte(wert);
        if (worte != zustand::worte(anfang))
            zeilen_.push_back(std::string(name) + " " + worte);
    }

    const Zustandszeilen& zeilen() const { return zeilen_; }

private:
    Zustandszeilen zeilen_;
};

/// Reads such lines into values that are initial. Throws Zustandsfehler.
class Zustandsleser {
public:
    explicit Zustandsleser(const Zustandszeilen& zeilen);

    template <class Wert> void operator()(std::string_view name, Wert& wert, const Wert& = {}) {
        if (const auto knoten = worte_.extract(std::string(name)))
            anOrt(name, [&] { zustand::alleLesen(knoten.mapped(), wert); });
    }

    /// Throws for a line that nobody has asked for.
    void allesGelesen() const;

private:
    template <class Schritt> static void anOrt(std::string_view name, const Schritt& schritt) {
        try {
            schritt();
        } catch (const Zustandsfehler& fehler) {
            throw Zustandsfehler("zustand " + std::string(name) + ": " + fehler.what());
        }
    }

    std::map<std::string, std::string> worte_; // by name
};
