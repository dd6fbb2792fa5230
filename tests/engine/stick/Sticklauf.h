// SPDX-License-Identifier: GPL-3.0-or-later
// A run on fakes with the two real sticks: lines, actions and movements by name.
//
// The smoothing is off, so what the pad does is seen one or two ticks later.
#pragma once

#include "tests/engine/run/Probelauf.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

/// The lines `Links`, `Rechts`, `Oben`, `Unten` of a row, or the four numbers of a key.
using Linienzeile = std::array<int, 4>;

inline constexpr Linienzeile INNERE_LINIEN{20000, 45000, 20000, 45000};
inline constexpr Linienzeile AEUSSERE_LINIEN{9000, 56000, 9000, 56000};

/// Positions beside the lines on an axis.
inline constexpr std::uint32_t NIEDRIG = 10000;
inline constexpr std::uint32_t MITTIG = 32767;
inline constexpr std::uint32_t HOCH = 55000;

class Sticklauf : public Probelauf {
public:
    explicit Sticklauf(Stickseite seite) : seite_(seite) {
        mitSticks();
        Schemabau schema(datenbank);
        schema.ungeglaettet();
        for (const auto stick : {Stickseite::Links, Stickseite::Rechts})
            schema.linien(stick, 1, INNERE_LINIEN).linien(stick, 2, {}).linien(stick, 20, {});
        schema.ergaenzen();
    }

    /// Lines of row `index` in the base layer; row 3 becomes the one that ends the lines.
    void linien(int index, const Linienzeile& z) const {
        datenbank.sql("UPDATE " + tabelle("tblStick") + " SET Links = " + std::to_string(z[0]) +
                      ", Rechts = " + std::to_string(z[1]) + ", Oben = " + std::to_string(z[2]) +
                      ", Unten = " + std::to_string(z[3]) + " WHERE \"index\" = " + std::to_string(index));
        datenbank.sql("INSERT OR IGNORE INTO " + tabelle("tblStick") +
                      " (Schemaname, \"index\") VALUES ('S', 3)");
    }
    void aktion(const Linienzeile& schluessel, const std::string& text) const {
        Schemabau(datenbank).feld(seite_, schluessel, text).ergaenzen();
    }

    /// Moves the stick and lets the poll cycle see it.
    void bewegen(std::uint32_t x, std::uint32_t y) {
        auto& z = pad.zustand;
        (seite_ == Stickseite::Links ? z.dwXpos : z.dwZpos) = x;
        (seite_ == Stickseite::Links ? z.dwYpos : z.dwRpos) = y;
        warten(10);
    }

    bool links() const { return seite_ == Stickseite::Links; }
    StickMaschine& stick() { return links() ? zustand.linkerStick : zustand.rechterStick; }
    const Stickaktionsstand& stand() { return stick().stand(); }
    const GegebenerStand::Stick& gegeben() { return zustand.gegeben.stick(seite_); }
    std::uint32_t maske() const { return zustand.gegeben.timer.TimerMaske(); }
    /// A value of the left and of the right stick.
    template <class T> T seitig(T linker, T rechter) const { return links() ? linker : rechter; }

private:
    std::string tabelle(const std::string& name) const { return name + std::string(tabellenzusatz(seite_)); }

    Stickseite seite_;
};

inline const auto BEIDE_STICKS = testing::Values(Stickseite::Links, Stickseite::Rechts);

inline std::string sticknameVon(const testing::TestParamInfo<Stickseite>& fall) {
    return fall.param == Stickseite::Links ? "Links" : "Rechts";
}
