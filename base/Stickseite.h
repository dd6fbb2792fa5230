// SPDX-License-Identifier: GPL-3.0-or-later
// Which of the two sticks is meant: the tables of the right one carry an "R" behind their names.
#pragma once

#include <string_view>

enum class Stickseite { Links, Rechts };

/// The stick of a `ZielFormular`: "frmJust" is the left one, any other text the right one.
constexpr Stickseite stickseiteVon(std::string_view zielFormular) {
    return zielFormular == "frmJust" ? Stickseite::Links : Stickseite::Rechts;
}

/// What stands behind the names of the stick's tables.
constexpr std::string_view tabellenzusatz(Stickseite seite) {
    return seite == Stickseite::Links ? "" : "R";
}
