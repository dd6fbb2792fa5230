// SPDX-License-Identifier: GPL-3.0-or-later
// Priority, paths and documents on Linux.
#pragma once

#include "platform/Prozess.h"

#include <memory>
#include <optional>

class Echtzeitdienst;

class LinuxProzess final : public Prozess {
public:
    LinuxProzess();
    /// Gives the priority back.
    ~LinuxProzess() override;

    /// The real-time class is the round-robin scheduler at its lowest priority, for the main thread; children
    /// do not inherit it. Where it is refused, the best nice value that is allowed stands in for it, and the
    /// desktop's service is asked: its answer, and with it the class, may come later, through the event loop.
    /// Who leaves no pause falls back to the normal scheduler within 200 ms, so that a loop without end
    /// cannot take the desktop away; asking again takes the class again. Other classes change nothing.
    bool SetPriorityClass(std::uint32_t klasse) override;

    /// Pieces "." and ".." are resolved by their names alone. "" gives "".
    std::string GetFullPathNameA(std::string_view name) override;

    /// Through xdg-open, which runs detached and at normal priority. A path that does not exist and a desktop
    /// without xdg-open give false; whether a program for the document exists does not show.
    bool ShellExecuteA(const std::string& datei) override;

    /// Desktops drop what stands behind the "#" of a file's address. What is opened is a page of its own that
    /// sends the browser on, in the user's folder for what lasts as long as the session.
    bool kapitelOeffnen(const std::string& seite, const std::string& anker) override;

private:
    void dienstBitten();

    std::unique_ptr<Echtzeitdienst> dienst_;
    std::optional<int> guete_; ///< the nice value before the first asking
};
