// SPDX-License-Identifier: GPL-3.0-or-later
// The fields of a stick's layer with their actions, as a run finds them.
//
//   key    four numbers, the inner line of the field's band to the left, right, up and down or 0, their
//          digits one after the other: "27072000" is the band left of 27072, "270720259410" its corner above
//          25941
//   list   ";key+action;key+action;"   ";27072000+0,0,5,10;00259410+2,0,65,0,0;"
//          "" for a layer without actions
//
// The search goes by the beginning: the first entry that begins with a key counts, also one whose key is
// longer. What is shown is found without the leading ";", so also inside another key or action. Both searches
// go on from the place that they find to the next "+": an action with a ";" in it ends there, and what stands
// behind it counts as an entry without action of its own, which takes that of the next one.
#pragma once

#include "formats/Stickaktion.h"

#include <string>
#include <string_view>
#include <vector>

/// The half of a key that a band gives: of x for the bands left and right, of y for those above and below.
inline constexpr std::string_view MITTELHAELFTE = "00";
inline std::string haelfteLinksOderOben(const std::string& linie) {
    return linie + "0";
}
inline std::string haelfteRechtsOderUnten(const std::string& linie) {
    return "0" + linie;
}
/// The keys of the fields that are a whole band.
inline std::string xBandschluessel(const std::string& xHaelfte) {
    return xHaelfte + "00";
}
inline std::string yBandschluessel(const std::string& yHaelfte) {
    return "00" + yHaelfte;
}

/// What a run starts in a field: its own action or, where it has none, those of its two bands. Null for none.
struct Feldaktionen {
    Aktionszeiger eigene;
    Aktionszeiger xBand;
    Aktionszeiger yBand;
};

class Aktionsliste {
public:
    Aktionsliste() = default;
    explicit Aktionsliste(std::string text);

    const std::string& text() const { return text_; }
    /// The actions of all entries, in their order.
    std::vector<Aktionszeiger> alle() const;

    /// The action of the first entry that begins with `schluessel`, that of the empty text for an entry
    /// without one; null where there is no such entry.
    Aktionszeiger suchen(std::string_view schluessel) const;

    /// The actions that count in the field of these halves of a key. Its bands are asked only where it lies
    /// in a band of both axes, off both centre bands, as `imXBand` and `imYBand` say.
    Feldaktionen imFeld(const std::string& xHaelfte, bool imXBand, const std::string& yHaelfte,
                        bool imYBand) const;

    /// The action text behind the first place at which `schluessel` stands, wherever that is; "" for none.
    std::string anzeigesuche(std::string_view schluessel) const;

private:
    std::string_view aktionAb(std::size_t stelle) const;

    struct Eintrag;
    Aktionszeiger aktionVon(const Eintrag& eintrag) const;

    struct Eintrag {
        std::size_t anfang; ///< of its key
        std::size_t laenge; ///< up to the next ";"
        /// Split when the entry is found for the first time: a layer may have hundreds of them, and a change
        /// of layer has no time.
        mutable Aktionszeiger aktion;
    };
    std::string text_;
    std::vector<Eintrag> eintraege_;
};

/// Adds an entry to the text of a list.
void eintragAnhaengen(std::string& liste, std::string_view schluessel, std::string_view aktion);
