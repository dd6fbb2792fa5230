// SPDX-License-Identifier: GPL-3.0-or-later
// A game: another program's window, which fills the screen and sees keys while it has the focus.
#pragma once

#include <set>
#include <string>
#include <vector>

struct _XDisplay;

class Spielfenster {
public:
    /// Returns when it has asked to be shown. Throws std::runtime_error if there is no server.
    explicit Spielfenster(const std::string& anzeige);
    Spielfenster(const Spielfenster&) = delete;
    Spielfenster& operator=(const Spielfenster&) = delete;
    ~Spielfenster();

    /// Whether the keyboard is its own now.
    bool vorn();
    /// What it has been told of keys so far: "+w", "-w" by the names of keysyms, without repeats.
    const std::vector<std::string>& tasten();

private:
    void lesen();

    _XDisplay* anzeige_;
    bool vorn_ = false;
    std::set<std::string> unten_;
    std::vector<std::string> tasten_;
};
