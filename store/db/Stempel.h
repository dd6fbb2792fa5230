// SPDX-License-Identifier: GPL-3.0-or-later
// The stamp of a database: two numbers in the head of the file, whose it is (application_id) and which
// version of the tables it has (user_version).
//
//     application_id   user_version   what the program does with the file
//     0                0              reads and writes it; the first save stamps it
//     0                other          reads and writes it; the number is another program's and stays
//     GPk1             1              reads and writes it
//     GPk1             below          reads and writes it; the first save stamps it
//     GPk1             above          reads it: its rows may mean what this version does not know; so it does
//                                     where the version is negative
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

/// A file without a stamp is the oldest version.
enum class Stempelart { Gueltig, Aelter, Neuer, Fremd };

constexpr Stempelart stempelart(const Stempel& stempel) {
    if (stempel.programm == 0)
        return stempel.fassung == 0 ? Stempelart::Aelter : Stempelart::Gueltig;
    if (stempel.programm != EIGENER_STEMPEL.programm)
        return Stempelart::Fremd;
    if (stempel.fassung < 0 || stempel.fassung > EIGENER_STEMPEL.fassung)
        return Stempelart::Neuer;
    return stempel.fassung < EIGENER_STEMPEL.fassung ? Stempelart::Aelter : Stempelart::Gueltig;
}
