// SPDX-License-Identifier: GPL-3.0-or-later
// The user's own list of pads, in the format of SDL's gamecontrollerdb.txt: a line says for one kind of pad
// which of its buttons and axes is which,
//
//   GUID,name,key:value,key:value,...,
//
// with a GUID of 32 hexadecimal digits. A value is a button "b3", an axis "a2" ("+a2" and "-a2" a half of it,
// "a2~" the other way round) or a direction of a hat "h0.4"; "platform:Linux" and the like say what the line
// is for. Blank lines and those that begin with "#" say nothing; a line for another platform counts as one.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Beyond this a file is no list of pads; the one that the community keeps has about 1 MiB.
inline constexpr std::size_t PADLISTE_HOECHSTENS = std::size_t{4} * 1024 * 1024;

/// A line that cannot be used.
struct Padlistenfehler {
    int zeile; ///< from 1
    std::string text;
    std::string grund; ///< in German
    bool operator==(const Padlistenfehler&) const = default;
};

struct Padliste {
    std::string grund; ///< why nothing of the file is used, in German; "" where it is used or not there
    int uebernommene = 0;
    std::vector<Padlistenfehler> fehler;
};

/// Reads the list and hands each of its lines to SDL, whose pads must have been started (SdlJoystick) and
/// which forgets them at their end. A faulty line is left out, all others hold. No file at all is an empty
/// list. What is not a file, cannot be read, is larger than PADLISTE_HOECHSTENS or is not UTF-8 is not used.
Padliste padlisteLaden(const std::filesystem::path& datei);

/// The same for the content of a file.
Padliste padlisteUebernehmen(std::string_view inhalt);
