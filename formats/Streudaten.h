// SPDX-License-Identifier: GPL-3.0-or-later
// Where a stick was during runs, by layer: what is stored per `Schema`, stick and layer.
//
//   file    "GPkStreu" 1 n N W      n: bytes of N, four of them, lowest first; N and W: zlib streams
//   N       for x, then for y: the classes of `zittern`, the cells of `ruhe`; then 0, or 1 and the grid
//   W       number of stays, x of each, y of each, ticks of each
//
// Counts and ticks are numbers of seven bits a byte, lowest first, the top bit set where more follows, in as
// few bytes as can be. x and y of a stay are a byte each: how far it lies from the one before, modulo 256,
// from (0, 0) for the first.
//
// A file has at most DATEI_HOECHSTENS bytes whatever there is to keep. N may take ZAEHLUNG_HOECHSTENS of
// them: where the grid does not go in, all its counts are halved until it does, so that older play counts
// less and the shares stay. W takes what is left, with the newest stays.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct Streudaten {
    static constexpr int ZELLEN = 256; ///< cells an axis; a cell is 256 units wide: cell = value / 256
    static constexpr int KLASSEN = 256;
    static constexpr int KLASSENBREITE = 16; ///< units of the raw axis a class of `zittern`
    static constexpr std::size_t RASTERFELDER = std::size_t{ZELLEN} * ZELLEN;
    static constexpr std::size_t WEG_HOECHSTENS = 1 << 16; ///< stays; more don't fit into a file
    static constexpr std::size_t DATEI_HOECHSTENS = 64 * 1024;
    static constexpr std::size_t ZAEHLUNG_HOECHSTENS = 36 * 1024;

    /// The stick was in a cell, y * 256 + x, for so many ticks. Where that is 0 the way is broken, by a halt,
    /// another layer or the end of a run, and the cell means nothing. A stay of more than 65535 ticks is
    /// several of the same cell.
    struct Aufenthalt {
        std::uint16_t zelle;
        std::uint16_t takte;
        bool operator==(const Aufenthalt&) const = default;
    };
    /// Of raw values of an axis.
    struct Achsenruhe {
        /// Deviation from where the stick rested, by class of 16 units, in ticks; the last class is open.
        std::array<std::uint32_t, KLASSEN> zittern{};
        /// Where it rested, by cell of this axis, in ticks.
        std::array<std::uint32_t, ZELLEN> ruhe{};
        bool operator==(const Achsenruhe&) const = default;
    };

    /// Ticks (5 ms) of the smoothed position in each cell, row by row from the top left; empty: none.
    std::vector<std::uint32_t> takte;
    /// The newest stays in order, as many as fit; what an entry and a stay are is computed from it.
    std::vector<Aufenthalt> weg;
    std::array<Achsenruhe, 2> achsen; ///< [0] x, [1] y

    bool operator==(const Streudaten&) const = default;

    /// Adds to a count, which stops at its largest value: 2^32 ticks are 5,965 hours.
    static constexpr void mehren(std::uint32_t& zahl, std::uint64_t anzahl) {
        constexpr std::uint64_t VOLL = std::numeric_limits<std::uint32_t>::max();
        zahl = static_cast<std::uint32_t>(anzahl < VOLL - zahl ? zahl + anzahl : VOLL);
    }
};

/// The content of a file, at most DATEI_HOECHSTENS bytes.
std::string streudatenSchreiben(const Streudaten& daten);

/// Reads the content of a file; nothing where it is damaged or foreign. Throws nothing but std::bad_alloc.
std::optional<Streudaten> streudatenLesen(std::string_view inhalt);

/// Whether it was written by a newer version of the program, which alone can read it.
bool streudatenNeuer(std::string_view inhalt);

/// Adds what a run has counted. No count runs over. The way of `lauf` comes behind that of `summe`, and the
/// oldest stays go.
void zusammenzaehlen(Streudaten& summe, const Streudaten& lauf);
