// SPDX-License-Identifier: GPL-3.0-or-later
// What the program asks of its process and of the desktop.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

inline constexpr std::uint32_t REALTIME_PRIORITY_CLASS = 256;

class Prozess {
public:
    Prozess() = default;
    Prozess(const Prozess&) = delete;
    Prozess& operator=(const Prozess&) = delete;
    virtual ~Prozess() = default;

    /// Asks for a priority class; REALTIME_PRIORITY_CLASS is the one in use. Returns whether the system
    /// granted the class itself; if it did not, the best below it that it grants is in force, and the class
    /// may come later. Asking again is how one takes a class again that the system has taken back.
    virtual bool SetPriorityClass(std::uint32_t klasse) = 0;

    /// `name` made absolute against the current directory, in UTF-8. "/" and "\" both separate pieces in
    /// `name`.
    virtual std::string GetFullPathNameA(std::string_view name) = 0;

    /// Opens a document with the program that the desktop has for it. Does not wait; returns whether it could
    /// be handed over.
    virtual bool ShellExecuteA(const std::string& datei) = 0;

    /// Opens the HTML page `seite`, a path, at its chapter with the id `anker`; where there is no way to go
    /// to a chapter, at its beginning. Answers as ShellExecuteA.
    virtual bool kapitelOeffnen(const std::string& seite, const std::string& anker) = 0;
};
