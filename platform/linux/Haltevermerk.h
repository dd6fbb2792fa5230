// SPDX-License-Identifier: GPL-3.0-or-later
// Notes for the watcher what is down in the X server, at some instructions a press.
//
// A press that has been noted and never went out does no harm: a key that is up can be let go once more. So a
// note is made before the press is handed over, and goes only when the release has left this process: one
// that still lies in a buffer dies with it.
#pragma once

#include "platform/waechter/Waechterblatt.h"

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
        blatt_.unten[wort].store(blatt_.unten[wort].load(std::memory_order_relaxed) | bit,
                                 std::memory_order_release);
    }
    /// Its release has been written into the buffer.
    void oben(std::size_t stelle) {
        const auto [wort, bit] = ort(stelle);
        geloeste_[wort] |= bit;
    }
    /// All that was written has gone out.
    void abgeschickt() {
        for (std::size_t wort = 0; wort < geloeste_.size(); ++wort)
            if (geloeste_[wort] != 0) {
                blatt_.unten[wort].store(blatt_.unten[wort].load(std::memory_order_relaxed) &
                                             ~geloeste_[wort],
                                         std::memory_order_release);
                geloeste_[wort] = 0;
            }
    }

private:
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
