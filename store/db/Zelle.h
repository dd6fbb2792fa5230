// SPDX-License-Identifier: GPL-3.0-or-later
// A value in the kind that the file keeps it in. The program itself writes numbers and texts (Wert); others
// may have laid fractions and bytes, which must come back as they were.
#pragma once

#include "store/db/Wert.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

struct Bytefolge {
    std::string bytes;
    bool operator==(const Bytefolge&) const = default;
};

/// Null, a whole number, a text in UTF-8, a fraction or bytes. A text may hold NULs.
using Zelle = std::variant<std::monostate, std::int64_t, std::string, double, Bytefolge>;

Zelle zelle(const Wert& wert);
std::vector<Zelle> zellen(const std::vector<Wert>& werte);

/// The cells of a row, packed: steps over tens of thousands of rows are kept in memory. Two are equal when
/// kind and bytes of each cell are.
class Zeilenbild {
public:
    explicit Zeilenbild(const std::vector<Zelle>& zellen);
    std::vector<Zelle> zellen() const;
    std::size_t bytes() const { return sizeof *this + bild_.capacity(); }
    bool operator==(const Zeilenbild&) const = default;

private:
    std::string bild_; ///< a cell: its kind, then eight bytes of a number, or a length and so many bytes
};
