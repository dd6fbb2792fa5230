// SPDX-License-Identifier: GPL-3.0-or-later
// What a desktop's task bar can do with windows, and what an X server tells whoever asks.
#pragma once

#include <string>
#include <vector>

struct _XDisplay;

class XWelt {
public:
    /// Throws std::runtime_error if there is no server.
    explicit XWelt(const std::string& anzeige);
    XWelt(const XWelt&) = delete;
    XWelt& operator=(const XWelt&) = delete;
    ~XWelt();

    /// Brings a window to the front, with the keyboard.
    void aktivieren(unsigned long fenster);
    /// Closes it as the button in its frame does.
    void schliessen(unsigned long fenster);
    /// Cuts the client off to which the window belongs.
    void clientToeten(unsigned long fenster);

    /// How many windows the client of this one has.
    int fensterzahl(unsigned long fenster) const;
    /// What is down, "Taste 38", "Knopf 1".
    std::vector<std::string> gehaltene() const;
    /// Lets go all that is down.
    void loslassen();

private:
    void bitten(const char* worum, unsigned long fenster, long quelle);

    _XDisplay* anzeige_;
};
