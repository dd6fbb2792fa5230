// SPDX-License-Identifier: GPL-3.0-or-later
// Whether what Eingabe sends reaches the program that has the focus.
#pragma once

#include <string>
#include <vector>

enum class Reichweite {
    Alle,  ///< whatever program has the focus
    NurX,  ///< only programs made for X11, in a session in which others may have the focus
    Keine, ///< nobody
};

struct Eingabelage {
    Reichweite reichweite = Reichweite::Alle;
    std::vector<std::string> gruende; ///< why no better way serves, in German, a way each
};

class Eingabeweg {
public:
    Eingabeweg() = default;
    Eingabeweg(const Eingabeweg&) = delete;
    Eingabeweg& operator=(const Eingabeweg&) = delete;
    virtual ~Eingabeweg() = default;

    /// Where not everyone is reached, looks for a better way first, and takes one that has opened meanwhile;
    /// what the old one holds is let go then. Not to be called while something is sent.
    virtual Eingabelage pruefen() = 0;
};
