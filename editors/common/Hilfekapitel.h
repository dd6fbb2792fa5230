// SPDX-License-Identifier: GPL-3.0-or-later
// Which chapter of the help page tells of what: the anchors of the page, in one place.
#pragma once

#include <array>

struct Hilfekapitel {
    const char* teil; ///< name of a form, or of a part of one that has a chapter of its own
    const char* anker;
};

inline constexpr std::array<Hilfekapitel, 15> HILFEKAPITEL{{
    {"frmHaupt", "erstes"},
    {"frmJoyKonfic", "knoepfe"},
    {"frmJust", "sticks"},
    {"frmJustr", "sticks"},
    {"fraAktion", "aktionen"},
    {"ScreenChecken", "bilder"},
    {"SchubreglerKonfic", "schub"},
    {"AchzenKalib", "achsen"},
    {"Uebersicht", "uebersicht"},
    {"LaufFenster", "lauf"},
    {"cdlSchemaWeitergeben", "weitergeben"},
    {"cdlSchemaAufnehmen", "weitergeben"},
    {"frmAufnahme", "weitergeben"},
    {"frmDatenbankfrage", "weitergeben"},
    {"frmNamensfrage", "weitergeben"},
}};
/// How to make the first `Schema`.
inline constexpr const char* KAPITEL_ERSTE_SCHRITTE = "erstes";
/// What lets keys arrive under Wayland.
inline constexpr const char* KAPITEL_TASTENANKUNFT = "wayland";
/// What a box tells that belongs to no form.
inline constexpr const char* KAPITEL_OHNE_FORM = "fehler";
