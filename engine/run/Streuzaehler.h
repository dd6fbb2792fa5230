// SPDX-License-Identifier: GPL-3.0-or-later
// Counts during a run where the sticks are, by layer, and how they tremble at rest. Nothing else hangs on it.
//
// A tick of the poll counts one tick of each stick whose axes have been read, with the smoothed position and
// the raw values that it saw; so does each tick that a rest has left out. A halted poll counts nothing, nor
// does a pad that is gone. The way is broken by a halt, by another layer and where the pad was gone.
#pragma once

#include "base/Slots.h"
#include "base/Stickseite.h"
#include "engine/input/Rohruhe.h"
#include "engine/stick/Stickort.h"
#include "formats/Streudaten.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What a run has counted of a stick in a layer.
struct Streulauf {
    Stickseite seite;
    int ebene;
    Streudaten daten;
    bool operator==(const Streulauf&) const = default;
};

/// Takes what a run has counted; called at its end, where there is anything. Must not throw nor take long.
class Streuablage {
public:
    Streuablage() = default;
    Streuablage(const Streuablage&) = delete;
    Streuablage& operator=(const Streuablage&) = delete;
    virtual ~Streuablage() = default;

    virtual void ablegen(const std::string& schemaName, std::vector<Streulauf> laeufe) = 0;
    /// Comes back when all that was taken is where it is kept.
    virtual void abwarten() {}
};

/// Hears of each tick that is counted, with the smoothed position as it is: who plays a record again wants to
/// know where the stick was to the unit.
class Streuhoerer {
public:
    Streuhoerer() = default;
    Streuhoerer(const Streuhoerer&) = delete;
    Streuhoerer& operator=(const Streuhoerer&) = delete;
    virtual ~Streuhoerer() = default;

    /// `folgt`: the tick before was counted, too, in this layer.
    virtual void takte(Stickseite seite, int ebene, const Stickposition& ort, std::uint64_t anzahl,
                       bool folgt) = 0;
};

class Streuzaehler {
public:
    /// `hoerer` outlives it; nobody needs to hear.
    explicit Streuzaehler(Streuhoerer* hoerer = nullptr);

    /// A tick of a stick: its smoothed position, and what its raw axes read; nothing where they have not been
    /// read.
    void takt(Stickseite seite, int ebene, const Stickposition& ort, const std::optional<Stickposition>& roh);
    /// The last tick of each stick so many times more.
    void nocheinmal(std::uint64_t anzahl);
    /// What comes next does not follow the last tick, and that is not to come again.
    void unterbrechen();

    /// What has been counted since the construction, the left stick first.
    std::vector<Streulauf> ergebnis() const;

private:
    struct Freigabe {
        void operator()(void* was) const noexcept { std::free(was); }
    };
    template <class T> using Feld = std::unique_ptr<T[], Freigabe>;
    template <class T> static Feld<T> genullt(std::size_t anzahl);

    /// Of a layer. What is never counted in takes no memory: pages of zeros.
    struct Bogen {
        Feld<std::uint32_t> takte;
        Feld<Streudaten::Aufenthalt> weg; // a ring
        std::uint64_t aufenthalte = 0;    // that have come into it
        std::array<Streudaten::Achsenruhe, 2> achsen;

        void bleiben(std::uint16_t zelle, std::uint64_t anzahl, bool unterbrochen);
        void anfuegen(Streudaten::Aufenthalt aufenthalt);
        Streudaten daten() const;
    };
    struct Stand {
        int ebene = 0;
        Stickposition ort;
        std::uint16_t zelle = 0;
        Stickposition roh;
    };
    struct Stickzaehler {
        std::array<Bogen, EBENEN> boegen;
        std::array<Rohruhe, 2> ruhe;
        std::optional<Stand> letzter;
    };

    Streuhoerer* const hoerer_;
    std::array<Stickzaehler, 2> sticks_; // by Stickseite
};
