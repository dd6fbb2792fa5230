// SPDX-License-Identifier: GPL-3.0-or-later
// A private X server (Xvfb) for one test: it starts with the object and ends with it.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

class XServer {
public:
    /// `weitere` are further arguments for Xvfb. Throws std::runtime_error if it does not start.
    explicit XServer(const std::string& bildschirm = "800x600x24",
                     const std::vector<std::string>& weitere = {});
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer();

    /// Its name, as for $DISPLAY.
    const std::string& anzeige() const { return anzeige_; }
    /// Its process; -1 after toeten().
    pid_t kennung() const { return kennung_; }

    /// Sets the keyboard layout as setxkbmap does; returns when it is in force.
    void tastatur(const std::string& layout, const std::string& variante = "") const;

    /// Lets it do nothing, and lets it go on.
    void anhalten(bool still) const;
    /// Ends the server as `signal` does; its clients lose their connection.
    void beenden(int signal);
    /// Kills the server; its clients lose their connection.
    void toeten();

private:
    void versuchen(int nummer, const std::string& bildschirm, const std::vector<std::string>& weitere);

    pid_t kennung_ = -1;
    std::string anzeige_;
};
