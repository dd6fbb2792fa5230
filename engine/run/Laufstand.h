// SPDX-License-Identifier: GPL-3.0-or-later
// What a run holds at this moment and for whom, as values: whoever shows it makes the words.
//
//   holder      holds                          as long as
//   pad button  key, mouse button              the press; a key stays behind where the release went elsewhere
//   stick       key, mouse button, movement    it is in the field
//   slider      key, mouse button, movement    it is in the field
//   nobody      key, mouse button              what is down though nobody above holds it
#pragma once

#include "base/Stickseite.h"
#include "base/VirtuelleTaste.h"
#include "engine/run/Fehlerort.h"

#include <cstdint>
#include <optional>
#include <set>
#include <variant>
#include <vector>

class Druckbuch;
class GehalteneTasten;
class TimerUeberwachung;

struct Padhalter {
    int slot = 0;          ///< 0 to 15
    bool gedrueckt = true; ///< false: let go, and its key is still down
    bool operator==(const Padhalter&) const = default;
};
struct Stickhalter {
    Stickseite seite = Stickseite::Links;
    std::optional<Feldname> feld; ///< nothing for what goes on after the stick has left its field
    bool operator==(const Stickhalter&) const = default;
};
struct Schubhalter {
    int feld = 0; ///< from 1
    bool operator==(const Schubhalter&) const = default;
};
struct OhneHalter {
    bool operator==(const OhneHalter&) const = default;
};
using Halter = std::variant<OhneHalter, Padhalter, Stickhalter, Schubhalter>;

struct Tastenwirkung {
    VirtuelleTaste taste = 0;
    bool imTakt = false;     ///< pressed again and again, or for a time
    std::uint32_t druck = 0; ///< which press of the key it is; 0 for one in time
    bool operator==(const Tastenwirkung&) const = default;
};
struct Mausknopfwirkung {
    int knopf = 0; ///< 0 left, 1 right, 2 middle
    std::uint32_t druck = 0;
    bool operator==(const Mausknopfwirkung&) const = default;
};
struct Bewegungswirkung {
    int richtung = 0; ///< 0 left, 1 right, 2 up, 3 down
    bool operator==(const Bewegungswirkung&) const = default;
};
struct Absolutwirkung {
    bool egoShooter = false; ///< else the pointer is bound to the stick
    bool operator==(const Absolutwirkung&) const = default;
};
using Wirkung = std::variant<Tastenwirkung, Mausknopfwirkung, Bewegungswirkung, Absolutwirkung>;

struct Haltung {
    Halter halter;
    Wirkung wirkung;
    bool operator==(const Haltung&) const = default;
};

struct Laufstand {
    int ebene = 0;
    std::vector<Haltung> haltungen;
    bool operator==(const Laufstand&) const = default;
};

/// Where a run's stand is read off.
struct Standquellen {
    const Druckbuch& druckbuch;
    const GehalteneTasten& gehaltene;
    const std::set<std::uint32_t>& timer; ///< ids of those that are set
    const TimerUeberwachung& ueberwachung;
};

/// Adds the keys and mouse buttons that are down and that no entry of `haltungen` has.
void ohneHalterAnhaengen(const Druckbuch& druckbuch, std::vector<Haltung>& haltungen);
