// SPDX-License-Identifier: GPL-3.0-or-later
// A step of the button editor's undo: what it edits before and after, where that differs, and how the step is
// called, "Dreieck: A → B", say.
#pragma once

#include "editors/buttons/Tastwerk.h"

#include <QString>

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>

/// A `Belegung` in its fields.
using Feldtexte = std::array<std::string, BELEGUNGSFELDER>;

Feldtexte feldtexte(const VarTastenbelegung& bild, int taste, int ebene);
/// Gives the button `neu` where it has `alt`.
void umschreiben(VarTastenbelegung& bild, int taste, int ebene, const Feldtexte& alt, const Feldtexte& neu);

/// What is typed for a button that the image could not take, by the field; no button without any.
struct Ungueltiges {
    int taste = Tastwerk::KEINE_TASTE_GEWAEHLT;
    int ebene = 0;
    std::map<std::size_t, QString> texte;
    bool operator==(const Ungueltiges&) const = default;
};

struct Tasteninhalt {
    VarTastenbelegung bild;
    Ungueltiges ungueltiges;
    bool operator==(const Tasteninhalt&) const = default;
};

/// Where two states differ: on which layer, and at which button if it is one.
struct Schrittort {
    int ebene;
    std::optional<int> taste;
};
/// Nothing where they differ on several layers, or not at all.
std::optional<Schrittort> schrittort(const Tasteninhalt& von, const Tasteninhalt& nach);

/// The number that is being typed from one state to the other, so that the next letter belongs to the same
/// step: its button, layer and field. "" where it is something else.
std::string zahlenort(const Tasteninhalt& von, const Tasteninhalt& nach);

/// What the step from one to the other is called. Throws what `name` does.
QString schrittname(const Tasteninhalt& von, const Tasteninhalt& nach, const Tastwerk::Namensucher& name);
