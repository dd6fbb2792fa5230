// SPDX-License-Identifier: GPL-3.0-or-later
// Notes for the watcher what is down in the X server, at some instructions a press.
//
// A press that has been noted and never went out does no harm: a key that is up can be let go once more. So a
// note is made before the press is handed over, and goes only when the release has left this process: one
// that still lies in a buffer dies with it.
#pragma once

#include "platform/waechter/Waechterblatt.h"

#include <utility>

class Haltevermerk {
public:
    static constexpr std::size_t taste(unsigned code) { return code; }
    static constexpr std::size_t knopf(unsigned nummer) { return Waechterblatt::TASTEN + nummer; }

    /// The sheet must outlive this object. Null: the notes are for nobody.
    explicit Haltevermerk(Waechterblatt* blatt) : blatt_(blatt != nullptr ? *blatt : eigenes_) {}
    ~Haltevermerk() { anmelden(0); }
    Haltevermerk(const Haltevermerk&) = delete;
    Haltevermerk& operator=(const Haltevermerk&) = delete;

    /// The window of the connection that presses; 0 for none.
    void anmelden(std::uint32_t fenster) { blatt_.fenster = fenster; }

    /// The place is about to be pressed.
    void unten(std::size_t stelle) {
        const auto [wort, bit] = ort(stelle);
        geloeste_[wort] &= ~bit;
        setzen(blatt_.unten[wort], bit, 0);
    }
    /// Its release has been written into the buffer.
    void oben(std::size_t stelle) {
        const auto [wort, bit] = ort(stelle);
        geloeste_[wort] |= bit;
    }
    /// All that was written has gone out.
    void abgeschickt() {
        if (geloeste_ != decltype(geloeste_){})
            geloestesVermerken();
    }

private:
    void geloestesVermerken() {
        const auto jetzt = Waechterblatt::jetzt();
        if (jetzt - blatt_.zuletzt.load(std::memory_order_relaxed) > Waechterblatt::RUECKSTAND)
            for (auto& wort : blatt_.geloest)
                wort.store(0, std::memory_order_relaxed);
        blatt_.zuletzt.store(jetzt, std::memory_order_release);
        for (std::size_t wort = 0; wort < geloeste_.size(); ++wort) {
            const auto weg = std::exchange(geloeste_[wort], 0);
            setzen(blatt_.geloest[wort], weg, 0);
            setzen(blatt_.unten[wort], 0, weg);
        }
    }

    // One writer: no lock is needed.
    static void setzen(std::atomic<std::uint64_t>& wort, std::uint64_t dazu, std::uint64_t weg) {
        wort.store((wort.load(std::memory_order_relaxed) | dazu) & ~weg, std::memory_order_release);
    }

    struct Ort {
        std::size_t wort;
        std::uint64_t bit;
    };
    static constexpr Ort ort(std::size_t stelle) {
        stelle %= Waechterblatt::STELLEN;
        return {stelle / Waechterblatt::JE_WORT, std::uint64_t{1} << stelle % Waechterblatt::JE_WORT};
    }

    Waechterblatt eigenes_;
    Waechterblatt& blatt_;
    std::array<std::uint64_t, Waechterblatt::STELLEN / Waechterblatt::JE_WORT> geloeste_{};
};
