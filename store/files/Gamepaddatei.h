// SPDX-License-Identifier: GPL-3.0-or-later
// Gamepad.xml on the disk: the file as a table, and the row of a `Schema` in it by name.
//
// None of these makes the lock of the file; who reads, changes and writes holds a Dateisperre meanwhile.
#pragma once

#include "store/files/Gamepadtabelle.h"

#include <optional>
#include <string>

/// Whether there is a file. What cannot be looked at counts as there: it is not to be made anew.
bool gamepadDateiDa(const std::string& pfad);

/// The table; nothing where there is no file of this kind, or one that is too large.
std::optional<Gamepadtabelle> gamepadLesen(const std::string& pfad);

/// Replaces the file. False when it is not safe on the disk, or can't hold the table.
bool gamepadSpeichern(const std::string& pfad, const Gamepadtabelle& tabelle);

/// Whether a row is that of a `Schema`; its name counts exactly.
bool istZeileVon(const Gamepadzeile& zeile, const std::string& schema);
