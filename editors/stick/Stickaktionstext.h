// SPDX-License-Identifier: GPL-3.0-or-later
// The action of a stick field between what is stored and the panel that edits it.
//
// Nothing is checked: what stands in a box goes into the text as it is, so a "," typed there separates fields
// from then on, and an empty box gives an empty field.
#pragma once

#include "base/LaufzeitFehler.h"
#include "formats/Stickaktion.h"

#include <optional>
#include <string>
#include <string_view>

/// What the panel shows of an action. A field that the type has no use for, or that a text does not tell, is
/// empty: its control stays as it is.
struct Stickaktionsbild {
    Stickaktionsart art = Stickaktionsart::Leerfeld;

    std::optional<int> richtung{};                ///< 0 Links, 1 Rechts, 2 Oben, 3 Unten
    std::optional<std::string> schrittlaenge{};   ///< mouse counts
    std::optional<std::string> geschwindigkeit{}; ///< ms from step to step

    std::optional<int> maustaste{};            ///< 0 left, 1 right, 2 middle, 3 wheel plus, 4 wheel minus
    std::optional<std::string> scrollsprung{}; ///< only with the wheel

    std::optional<int> eigenschaft{};       ///< 0 held as long as the field holds, 1 pressed for a time
    std::optional<std::string> taste{};     ///< number of the key
    std::optional<std::string> druckzeit{}; ///< ms
    /// A text only ever says yes: without it the choice stays as the field edited last has left it.
    bool wiederholen = false;
    std::optional<std::string> pausenzeit{}; ///< ms, only with `wiederholen`

    std::optional<int> position{}; ///< 0 centred, 1 bound, 2 `Ego Shooter`
    std::optional<int> egoX{};     ///< mouse counts across the field, only with `Ego Shooter`
    std::optional<int> egoY{};

    bool operator==(const Stickaktionsbild&) const = default;
};

/// A text as far as it could be read, and what was wrong with the first field that could not.
struct GeleseneStickaktion {
    Stickaktionsbild bild;
    std::optional<LaufzeitFehler> fehler; ///< 9 missing field or no such choice, 13 no number, 6 too large
};

/// Reads an action text. Never throws. The empty text, that of a field without a row, is a `Leerfeld`.
///
/// A movement of the mouse forgives everything: what it does not tell stays open. In other types the reading
/// ends at the first field that is missing or makes no sense, and what came before it holds. A type that does
/// not exist reads as `Leerfeld`, which is what a run makes of it. So the panel opens on every text, the user
/// learns what is wrong and can mend it, and what is stored stays as it is until the panel is closed.
GeleseneStickaktion stickaktionLesen(std::string_view text);

/// The action text of what the panel shows; fields that are empty in `bild` are empty in the text.
std::string stickaktionstext(const Stickaktionsbild& bild);

/// Caption that shows a key: "Taste: 13 - Enter".
std::string tastentitel(const std::string& nummer, const std::string& name);
/// The number in such a caption, what stands between "Taste: " and " - ". Throws LaufzeitFehler 9 for a
/// caption without it.
std::string tastennummer(std::string_view titel);
