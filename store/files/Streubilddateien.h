// SPDX-License-Identifier: GPL-3.0-or-later
// The files of what was counted during runs (Streudaten), one for each `Schema`, stick and layer, in a folder
// of their own.
//
// A name is made for any file system: up to 40 letters and digits of the `Schema`'s, "_" for all else, so
// that a person finds it; a sum over the whole name, so that no two share one, whatever their case, length
// and signs; stick and layer as a picture has them. "Spiel/2" left, layer 0: "Spiel_2-<16 digits>-0L.streu".
//
// Every change replaces the file in one step. One that can't be read as what it should be counts as none;
// before another takes its name it is put aside as "<name>.beschaedigt". A file of a newer version stays as
// it is.
#pragma once

#include "base/Stickseite.h"
#include "formats/Streudaten.h"

#include <filesystem>
#include <string>
#include <vector>

/// Where the files of a database's `Schema`s lie: the folder "Streubilder" beside it.
std::filesystem::path streubildordner(const std::string& datenbankPfad);

class Streubilddateien {
public:
    explicit Streubilddateien(std::filesystem::path ordner) : ordner_(std::move(ordner)) {}

    /// What was counted so far; empty where there is no file, or none that can be read.
    Streudaten laden(const std::string& schemaName, Stickseite seite, int ebene) const;

    /// Replaces what was counted. The three that change a file give false where nothing was changed or where
    /// it is not safe on the disk: no right, no room, a file of a newer version, another copy of the program
    /// that does not come to an end. The folder is made where there is none. None of them throws anything but
    /// std::bad_alloc.
    bool speichern(const std::string& schemaName, Stickseite seite, int ebene, const Streudaten& daten) const;
    /// Adds what a run has counted to it; what another copy of the program adds meanwhile is not lost.
    bool dazuzaehlen(const std::string& schemaName, Stickseite seite, int ebene,
                     const Streudaten& lauf) const;
    /// Removes it. A power cut does not bring it back.
    bool zuruecksetzen(const std::string& schemaName, Stickseite seite, int ebene) const;

    /// All files of a `Schema`, also those that were put aside.
    std::vector<std::filesystem::path> dateien(const std::string& schemaName) const;

    /// Removes all that was counted for a `Schema`, also what was put aside. False where some of it may still
    /// be there, or be so again after a power cut.
    bool loeschen(const std::string& schemaName) const;

    /// The file of a stick's layer.
    std::filesystem::path pfad(const std::string& schemaName, Stickseite seite, int ebene) const;

private:
    std::filesystem::path ordner_;
};
