// SPDX-License-Identifier: GPL-3.0-or-later
// The devices of a virtual X server (Xvfb): the keyboard and the mouse that stand for the user's own ones,
// and what is down on which.
#pragma once

#include <string>
#include <vector>

struct _XDisplay;

class XGeraete {
public:
    /// Throws std::runtime_error if there is no server, or none with these devices.
    explicit XGeraete(const std::string& anzeige);
    XGeraete(const XGeraete&) = delete;
    XGeraete& operator=(const XGeraete&) = delete;
    ~XGeraete();

    /// The user presses a key of the own keyboard, by its X key code, or a button of the own mouse.
    void taste(unsigned code, bool unten);
    void knopf(unsigned nummer, bool unten);

    /// What is down for the programs: "38" for a key, "K1" for a button; keys first, by their numbers.
    std::vector<std::string> unten() const;
    /// What is down by presses of clients (XTEST).
    std::vector<std::string> vonProgrammen() const;

    /// Keeps all other clients from the server.
    void greifen(bool fest);

private:
    void* oeffnen(const std::string& name) const;
    void gedrueckte(void* geraet, std::vector<std::string>& alle) const;

    _XDisplay* anzeige_;
    void* tastatur_;
    void* maus_;
    void* xtestTastatur_;
    void* xtestMaus_;
};
