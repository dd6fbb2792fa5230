// SPDX-License-Identifier: GPL-3.0-or-later
// The stamp of a database: two numbers in the head of the file, whose it is (application_id) and which
// version of the tables it has (user_version).
//
//     application_id   user_version   what the program does with the file
//     0                0              reads and writes it; the first save stamps it
//     0                other          reads and writes it; the number is another program's and stays
//     GPk1             0              as where both are 0
//     GPk1             1              reads and writes it
//     GPk1             other          reads it: its rows may mean what this version does not know
//     other            any            refuses it
#pragma once

#include <cstdint>

struct Stempel {
    std::int64_t programm = 0; ///< application_id
    std::int64_t fassung = 0;  ///< user_version
};

/// What a new database carries (assets/tabellen.sql): "GPk1", and the version of the tables that this program
/// writes.
inline constexpr Stempel EIGENER_STEMPEL{0x47506B31, 1};

enum class Stempelart { Gueltig, Fehlt, Neuer, Fremd };

constexpr Stempelart stempelart(const Stempel& stempel) {
    if (stempel.programm == 0)
        return stempel.fassung == 0 ? Stempelart::Fehlt : Stempelart::Gueltig;
    if (stempel.programm != EIGENER_STEMPEL.programm)
        return Stempelart::Fremd;
    if (stempel.fassung == EIGENER_STEMPEL.fassung)
        return Stempelart::Gueltig;
    return stempel.fassung == 0 ? Stempelart::Fehlt : Stempelart::Neuer;
}
