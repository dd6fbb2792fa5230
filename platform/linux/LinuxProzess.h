// SPDX-License-Identifier: GPL-3.0-or-later
// Priority, paths and documents on Linux.
#pragma once

#include "platform/Prozess.h"

class LinuxProzess final : public Prozess {
public:
    /// The real-time class is the round-robin scheduler at its lowest priority, for the main thread; children
    /// do not inherit it. Where it is refused, the best nice value that is allowed stands in for it. Other
    /// classes change nothing.
    ///
    /// Guard against a runaway: RLIMIT_RTTIME is set to 2 s of work without a single wait, and what comes
    /// then is not death but a return to the normal scheduler, so that a loop without end cannot take the
    /// desktop away.
    bool SetPriorityClass(std::uint32_t klasse) override;

    /// Pieces "." and ".." are resolved by their names alone. "" gives "".
    std::string GetFullPathNameA(std::string_view name) override;

    /// Through xdg-open, which runs detached and at normal priority. A path that does not exist and a desktop
    /// without xdg-open give false; whether a program for the document exists does not show.
    bool ShellExecuteA(const std::string& datei) override;
};
