// SPDX-License-Identifier: GPL-3.0-or-later
// What the pad gave and what went out in the last minutes, in memory.
//
// The band is a row of blocks. A block begins with a state from which what follows can be played, which
// whoever knows it hands in as a text; so a band may begin with any of its blocks, and what is too old or too
// much goes block by block. A block that alone is too much loses what it has and its state: it is not exact
// from then on.
//
// An entry is some bytes: its kind, the time since the one before it, and what differs. Equal events one
// behind the other at one instant are one entry with their number.
#pragma once

#include "platform/Eingabe.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

struct Mitschnitteintrag {
    using Zeit = std::chrono::milliseconds;

    enum class Art : std::uint8_t {
        Achse,    ///< raw axis `index` stands at `wert`
        Tasten,   ///< the button word is `wert`
        Pov,      ///< the D-pad is at `wert`
        PadWeg,   ///< there is no pad
        PadDa,    ///< there is one again
        Spaet,    ///< nothing ran from here to `wert`, in ms of the same clock
        Versatz,  ///< timer number `index` to be set at this instant counts `wert` ms later
        Vermerk,  ///< `text`, of whoever plays
        Ereignis, ///< `ereignis` went out, `index` times
    };

    Zeit zeit{0};
    Art art = Art::Vermerk;
    std::uint32_t index = 0;
    std::int64_t wert = 0;
    std::string text;
    INPUT ereignis{};
};

class Mitschnittband {
public:
    using Zeit = Mitschnitteintrag::Zeit;
    using Art = Mitschnitteintrag::Art;

    struct Grenzen {
        std::size_t bytes = std::size_t{8} * 1024 * 1024;
        Zeit dauer = std::chrono::minutes{10};
    };

    /// What lies at the head of a block.
    struct Anfang {
        std::string text;                         ///< the state, as whoever plays it reads it
        std::shared_ptr<const std::string> grund; ///< what many blocks share; counts for each of them
        bool mitten = false;                      ///< the state is that of something that goes on
    };

    struct Block {
        Zeit beginn{0};
        bool exakt = true; ///< whether what follows can be played from `anfang`
        Anfang anfang;
        std::vector<Mitschnitteintrag> eintraege;
    };

    Mitschnittband() = default;
    explicit Mitschnittband(Grenzen grenzen) : grenzen_(grenzen) {}

    /// A new block. Blocks that are too old without it go.
    void beginnen(Zeit jetzt, Anfang anfang, bool exakt = true);
    /// Forgets everything; what comes then is not kept until a block begins.
    void verwerfen();

    void achse(Zeit jetzt, std::uint32_t index, std::uint32_t wert) { zahl(jetzt, Art::Achse, index, wert); }
    void tasten(Zeit jetzt, std::uint32_t wert) { zahl(jetzt, Art::Tasten, 0, wert); }
    void pov(Zeit jetzt, std::uint32_t wert) { zahl(jetzt, Art::Pov, 0, wert); }
    void pad(Zeit jetzt, bool da) { zahl(jetzt, da ? Art::PadDa : Art::PadWeg, 0, 0); }
    void spaet(Zeit von, Zeit bis) { zahl(von, Art::Spaet, 0, (bis - von).count()); }
    void versatz(Zeit jetzt, std::uint32_t nummer, Zeit um) { zahl(jetzt, Art::Versatz, nummer, um.count()); }
    void vermerk(Zeit jetzt, const std::string& text);
    void ereignis(Zeit jetzt, const INPUT& eines);

    /// The blocks that are not too old at `jetzt`, oldest first.
    std::vector<Block> lesen(Zeit jetzt);

    std::size_t bytes() const { return bytes_; }
    bool leer() const { return bloecke_.empty(); }

private:
    struct Innen {
        Zeit beginn{0};
        Zeit letzte{0}; // time of the last entry
        bool exakt = true;
        Anfang anfang;
        std::deque<std::uint8_t> bytes;

        std::size_t groesse() const {
            return bytes.size() + anfang.text.size() + (anfang.grund ? anfang.grund->size() : 0);
        }
    };

    void zahl(Zeit jetzt, Art art, std::uint32_t index, std::int64_t wert);
    void kopf(Zeit jetzt, Art art);
    void byte(std::uint8_t wert) { bloecke_.back().bytes.push_back(wert); }
    void natuerliche(std::uint64_t wert);
    void ganze(std::int64_t wert);
    void gebuendeltesSchreiben();
    void veraltetesStreichen(Zeit jetzt);
    void zuVielesStreichen();
    void zaehlen(std::size_t vorher);

    static Block entziffert(const Innen& block);

    Grenzen grenzen_;
    std::deque<Innen> bloecke_;
    std::size_t bytes_ = 0;

    // Events that are alike, not yet written.
    INPUT gleiches_{};
    Zeit gleichesWann_{0};
    std::uint32_t gleiche_ = 0;
};
