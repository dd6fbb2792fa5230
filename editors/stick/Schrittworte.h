// SPDX-License-Identifier: GPL-3.0-or-later
// The steps of a stick editor in words for the user: "Linie Rechts 45000 → 52000".
#pragma once

#include "editors/stick/Schrittfolge.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// What to take the step back or to make it again is called: "Linie Rechts 45000 → 52000 rückgängig",
/// "… wiederherstellen". Of one on another layer than `gezeigteEbene` it names the layer, "… (Umschalt 1)
/// rückgängig"; without a step (null) it is the bare word.
std::string ruecknahmeworte(const Stickschritt* schritt, int gezeigteEbene);
std::string wiederholungsworte(const Stickschritt* schritt, int gezeigteEbene);

/// What steps are called that are not about lines.
std::string aktionswechsel(const std::string& feld, const std::string& vorher, const std::string& nachher);
std::string leerfeldloeschung(std::size_t richtung, std::int32_t linie);
std::string maskenwechsel(bool an);
