// SPDX-License-Identifier: GPL-3.0-or-later
// A window manager (openbox) on an X server, and what it tells of the windows there.
#pragma once

#include <string>
#include <sys/types.h>

/// Runs as long as the object lives.
class Fensterverwalter {
public:
    /// `einstellung` is its file of settings. Returns when it manages the windows of the server. Throws
    /// std::runtime_error if it does not come to that.
    explicit Fensterverwalter(const std::string& anzeige,
                              const std::string& einstellung = "/etc/xdg/openbox/rc.xml");
    Fensterverwalter(const Fensterverwalter&) = delete;
    Fensterverwalter& operator=(const Fensterverwalter&) = delete;
    ~Fensterverwalter();

private:
    pid_t kennung_;
};

/// A panel at the lower edge of the screen, which windows keep clear of.
class Leiste {
public:
    /// `hoehe` in pixels of the server. Returns when the window manager has taken it off the free area.
    Leiste(const std::string& anzeige, int hoehe);
    Leiste(const Leiste&) = delete;
    Leiste& operator=(const Leiste&) = delete;
    ~Leiste();

private:
    struct _XDisplay* anzeige_;
};

/// In pixels of the server, with its frame.
struct Fensterlage {
    int links;
    int oben;
    int breite;
    int hoehe;
};

/// Where a window is, by the server itself.
Fensterlage fensterlage(const std::string& anzeige, unsigned long fenster);
