// SPDX-License-Identifier: GPL-3.0-or-later
// A client of an X server that hears what input arrives: as a program that has the focus, or all raw input.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

struct _XDisplay;

/// Which events are told: those of a window with the focus, or XInput 2 raw events.
enum class Lauschart { fenster, roh };

class XLauscher {
public:
    /// Throws std::runtime_error if there is no server.
    XLauscher(const std::string& anzeige, Lauschart art);
    XLauscher(const XLauscher&) = delete;
    XLauscher& operator=(const XLauscher&) = delete;
    ~XLauscher();

    /// What has come up to and including the event `ende`, which is not told: "+38" and "-38" keys by their X
    /// key code, "K1+" and "K1-" buttons, "m(3,-2)" moves (raw only). Gives up after 5 s with "???" as the
    /// last.
    std::vector<std::string> bis(const std::string& ende);

    /// What has come so far; does not wait.
    std::vector<std::string> vorhandene();

    /// The title that a window gives to whoever lists windows, or one by another property; "" for none.
    std::string titel(unsigned long fenster, const char* eigenschaft = "_NET_WM_NAME") const;
    /// Where the pointer is.
    std::pair<int, int> zeiger() const;
    /// Puts the layout group `nummer`, from 0, in force.
    void gruppe(unsigned nummer);
    /// The keysym of a key in the first group, by level from 0.
    unsigned long zeichen(unsigned taste, unsigned ebene) const;

private:
    void fensterOeffnen();
    void rohAnmelden();
    std::string naechstes();

    _XDisplay* anzeige_;
    int xinput_ = 0;
    unsigned long fenster_ = 0;
};
