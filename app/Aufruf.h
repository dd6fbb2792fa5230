// SPDX-License-Identifier: GPL-3.0-or-later
// What the command line and the launcher say at start.
#pragma once

#include <optional>
#include <span>
#include <string>

/// What is printed instead of a start, in German.
struct Auskunft {
    std::string text;
    int ende; ///< exit status; 0 goes to stdout, any other to stderr
};

/// The answer to the words behind the command's name; nothing where there are none, or the one of a file, and
/// the program is to start.
/// "--help" and "--version" are all that it knows beside that; any other word gives exit status 2.
std::optional<Auskunft> auskunft(std::span<char* const> worte);

/// The file of a `Schema` that the words name; nothing where they name none. What is no option and ends as
/// such a file does, or is an absolute path, is one, whether or not it is there: the window tells.
std::optional<std::string> schemadatei(std::span<char* const> worte);

/// The program's own folder, where Gamepad.xml lies: the one that the launcher names, else that of the
/// executable. Needs the application object.
std::string eigenerOrdner();

/// Why the launcher could not make the user's folder ready, in German; "" where it could.
std::string startfehler();
