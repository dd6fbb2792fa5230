// SPDX-License-Identifier: GPL-3.0-or-later
// What a stick does in a field, in words for the user: "Tastatur: B, gehalten".
//
// The words say what a run makes of a stored text, also of one that no editor has written: they read it as
// the run does. Units are those of the text, ms and mouse counts.
#pragma once

#include "formats/Aktionsliste.h"

#include <functional>
#include <string>

/// The name of a key by its number in decimal; "" for one that has none.
using Tastenbenennung = std::function<std::string(const std::string& nummer)>;

/// An action by itself. A text at which a run would stop is shown as it is.
std::string aktionsworte(const Stickaktion& aktion, const Tastenbenennung& tastenname);

/// What counts in a field, "keine Aktion" where nothing does. `xFeld` and `yFeld` name the fields whose
/// actions are those of the field's bands, "Feld links".
std::string feldworte(const Feldaktionen& aktionen, const std::string& xFeld, const std::string& yFeld,
                      const Tastenbenennung& tastenname);
