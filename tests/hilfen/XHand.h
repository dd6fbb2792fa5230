// SPDX-License-Identifier: GPL-3.0-or-later
// A user's hands at an X server: the pointer and the keyboard that all its clients see.
#pragma once

#include <string>
#include <string_view>

struct _XDisplay;

class XHand {
public:
    /// Throws std::runtime_error if there is no server, or none that takes input of others.
    explicit XHand(const std::string& anzeige);
    XHand(const XHand&) = delete;
    XHand& operator=(const XHand&) = delete;
    ~XHand();

    /// Moves the pointer to a place of the screen, in pixels of the server, and is on the way for a moment.
    void zeigen(int x, int y);
    /// Presses a button of the mouse and lets it go: 1 the left one, 3 the right one.
    void klicken(unsigned knopf = 1);
    /// Presses keys in this order and lets them go in the other one; by the names of keysyms, "Alt_L+F4".
    void taste(std::string_view tasten);
    void druecken(const std::string& taste);
    void loesen(const std::string& taste);
    /// Types a text of letters without accents, digits, dots and blanks.
    void tippen(std::string_view text);

    /// The window that has the keyboard, as the window manager sees it; 0 for none.
    unsigned long aktivesFenster() const;

private:
    void einzelne(const std::string& keysym, bool unten);

    _XDisplay* anzeige_;
};
