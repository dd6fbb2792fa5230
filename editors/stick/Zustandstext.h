// SPDX-License-Identifier: GPL-3.0-or-later
// What the plane of a stick editor says of itself: what the field under the hand does, what the hand would do
// there, and where the stick stands.
#pragma once

#include "editors/stick/Feldauskunft.h"
#include "editors/stick/Linienzug.h"
#include "editors/stick/Streuworte.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// Where hand and stick are.
struct Ebenenlage {
    std::optional<Stickposition> maus{}; ///< on the plane and on no arrow
    std::optional<std::size_t> pfeil{};  ///< direction of the arrow under the mouse
    std::optional<Gitterplatz> marke{};  ///< of the keyboard, which comes before the mouse
    bool markeGewaehlt = false;          ///< its field is chosen
    std::optional<Klickfolge> klick{};   ///< of the mouse on the plane
    std::optional<Feldanker> stick{};    ///< the field of the stick; none without a pad
    bool tafelOffen = false;             ///< the action panel
    bool feldGewaehlt = false;
    bool linieInDerHand = false;
    bool gesperrt = false; ///< the mask keeps the stick silent on this layer
    bool testlauf = false;
    /// The lines in the hand, or those that a press of the mouse would pick up.
    std::vector<Linienzug::Griff> linien{};
    Linienebene gespeichert{}; ///< the lines without those in the hand
};

/// Name of a field and what the stick does in it: "Feld links – Tastatur: B, gehalten".
std::string feldzeile(const Linienebene& linien, const Feldanker& anker, const Feldauskunft& auskunft,
                      const char* trenner = " – ");

/// The lines of the state, none of them empty; with `streuung` they tell of where the stick was, too, and of
/// a line in the hand by `probe`.
std::vector<std::string> zustandszeilen(const Ebenenlage& lage, const Linienebene& linien,
                                        const Feldauskunft& auskunft, const Streurechnung* streuung = nullptr,
                                        const Wegprobe& probe = {});

/// What an arrow of a direction does.
const char* pfeilhinweis(std::size_t richtung);
