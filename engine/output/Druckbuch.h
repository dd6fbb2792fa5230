// SPDX-License-Identifier: GPL-3.0-or-later
// Stands between the engine and the injection and keeps book of what is down: who shows a run asks it and not
// the parts that press, since a key may stay down behind the back of all of them. Passes everything on as it
// came. It outlasts a run, as the keys do that a run leaves down.
#pragma once

#include "base/VirtuelleTaste.h"
#include "platform/Eingabe.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

class Druckbuch final : public Eingabe {
public:
    static constexpr std::size_t TASTEN = 256;
    static constexpr int KNOEPFE = 3; ///< of the mouse: left, right, middle

    /// Where everything goes from now on. Must be called before anything is sent.
    void anschliessen(Eingabe& ziel) { ziel_ = &ziel; }

    std::uint32_t SendInput(std::span<const INPUT> ereignisse) override;
    std::uint32_t MapVirtualKeyA(std::uint32_t code, std::uint32_t art) override {
        return ziel_->MapVirtualKeyA(code, art);
    }
    void mouse_event(std::uint32_t dwFlags, std::int32_t dx, std::int32_t dy, std::int32_t dwData,
                     std::uint32_t dwExtraInfo) override;

    /// How often the key was pressed, 0 as long as it is up: a repeat is no press. A code that is no key is
    /// never down.
    std::uint32_t druck(VirtuelleTaste taste) const { return gedrueckt(tasten_, taste); }
    /// The same of a mouse button, 0 to 2.
    std::uint32_t mausdruck(int knopf) const { return gedrueckt(knoepfe_, static_cast<std::size_t>(knopf)); }
    /// The keys that are down, by their codes.
    std::vector<VirtuelleTaste> gedrueckteTasten() const;

private:
    struct Zustand {
        bool unten = false;
        std::uint32_t drucke = 0;

        void melden(bool jetztUnten) {
            if (jetztUnten && !unten)
                ++drucke;
            unten = jetztUnten;
        }
    };

    template <class Zustaende> static std::uint32_t gedrueckt(const Zustaende& alle, std::size_t stelle) {
        return stelle < alle.size() && alle[stelle].unten ? alle[stelle].drucke : 0;
    }
    void mausMerken(std::uint32_t dwFlags);

    Eingabe* ziel_ = nullptr;
    std::array<Zustand, TASTEN> tasten_{};
    std::array<Zustand, KNOEPFE> knoepfe_{};
};
