// SPDX-License-Identifier: GPL-3.0-or-later
// Cuts the power at each step of what the program does to a folder, and looks at what every disk that is left
// may hold. Lets each step fail, and looks at what is left then.
//
// Where the fates of what is not synced are few all are looked at, else some that are drawn. The seed is
// fixed; a longer loop is
//
//     STROM_PROBEN=500 STROM_SAAT=7 build/test/test_strom
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// Something that the user does.
struct Stromprobe {
    /// What holds all files that it is about.
    std::filesystem::path ordner;
    /// Does it. False when it says that it could not be done; so does an exception.
    std::function<bool()> tat;
    /// Opens what lies there by the program's own code, and tells all that is to be compared. What it finds
    /// damaged it tells, too: that is none of the states allowed.
    std::function<std::string()> stand;
    /// States that may be seen between before and after.
    std::vector<std::string> dazwischen = {};
    /// What has come back before: all that it has not synced is at stake with the rest.
    std::function<void()> zuvor = {};
};

/// What was seen, so that a test can tell that it has looked at something.
struct Strombericht {
    int schritte = 0;
    int platten = 0;                 ///< that differ
    int zweimal = 0;                 ///< that lost power again while the program recovered
    std::vector<int> gesehen;        ///< disks by state: before, those between, after
    std::vector<std::string> fehler; ///< disks that hold anything else, or too little after the return
};

/// The power goes at each step, and after the last one; and once more while the program recovers.
Strombericht stromausfaelle(const Stromprobe& probe);

/// Expects of a Strombericht that nothing was wrong, and that before and after were both seen.
void erwarteGanzOderGarNicht(const Stromprobe& probe);

/// Each step fails with EIO and ENOSPC, once or from then on. Expects that what is left is a state allowed,
/// that of after unless it was told, also when the power goes then; and that once all works again, what kept
/// failing can be done, with nothing left over.
void erwarteGesagtUndNichtsVerloren(const Stromprobe& probe);
