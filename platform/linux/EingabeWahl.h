// SPDX-License-Identifier: GPL-3.0-or-later
// Which injection serves on this system.
#pragma once

#include "platform/Eingabe.h"
#include "platform/Eingabeweg.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

class Tastaturlayout;
struct Waechterblatt;

/// The answer of a candidate: an injection that serves, or the reason in German why it cannot.
struct EingabeAngebot {
    std::unique_ptr<Eingabe> eingabe;
    std::string grund;
};

struct EingabeKandidat {
    std::string name;
    std::function<EingabeAngebot()> pruefen;
    Reichweite reichweite = Reichweite::Alle; ///< whom it reaches where it serves
};

/// `eingabe` is never null: if no candidate serves it ignores everything, and `name` is empty.
struct EingabeWahl {
    std::unique_ptr<Eingabe> eingabe;
    std::string name;
    Reichweite reichweite = Reichweite::Keine;
    std::vector<std::string> gruende; ///< "name: reason" of those that were asked and cannot serve
};

/// Asks one after the other and takes the first that serves.
EingabeWahl eingabeWaehlen(std::span<const EingabeKandidat> kandidaten);

/// uinput, then XTest, on the X server of $DISPLAY; in a Wayland session that one reaches X11 programs only.
/// What XTest holds down is noted on `blatt`, if there is one: under uinput the kernel lets go by itself.
/// Layout and sheet must outlive what is chosen.
std::vector<EingabeKandidat> eingabeKandidaten(Tastaturlayout& layout, Waechterblatt* blatt = nullptr);

/// Whether the X server `anzeige` ("": $DISPLAY) is there but takes its input from elsewhere than the
/// kernel's devices, as virtual servers do: none of its devices has a node.
bool xServerOhneGeraete(const std::string& anzeige);
