// SPDX-License-Identifier: GPL-3.0-or-later
// What all parts of the program share: the paths worked out at start, the current `Schema`, and which editors
// stand open. Lives as long as the process.
#pragma once

#include <array>
#include <cstdint>
#include <string>

class Prozess;

struct GobalVariable {
    std::string DatenbankPfad; ///< full path of Belegung.twk
    std::string BilderPfad;    ///< directory Bilder beside the database; "/" separates and ends it
    std::string HilfePfad;     ///< full path of the help page

    std::string SchemaName; ///< name of the current `Schema`
    /// What the main form's list of `Schema`s shows. The axis assignment goes by this name, also where an
    /// editor works on another `Schema`.
    std::string Schemaauswahl;

    /// 1 while the left stick's editor is open, 2 once the right one has been loaded, 0 after the left one
    /// closed.
    std::uint8_t OffenerEditor = 0;
    std::uint8_t OffenerEditorR = 0;

    bool StreubildGezeigt = false; ///< in the stick editors

    /// The slots of `Umschalt 1` and `Umschalt 2` in the button editor.
    std::array<std::int16_t, 2> UmschaltTasten{};

    // --- given; nothing in the program reads it ---

    /// "frmJust" or "frmJustr": the stick editor that was asked for or loaded last. Each of them knows its
    /// own stick.
    std::string ZielFormular;

    /// Works out the three paths against the current directory, not that of the executable.
    void PfadeSetzen(Prozess& prozess);

    /// Resets `UmschaltTasten` and, in spite of its name, nothing else: the engine's masks, counter and held
    /// keys outlast a run.
    void Alle_Variablen_loeschen() { UmschaltTasten = {}; }
};
