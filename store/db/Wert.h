// SPDX-License-Identifier: GPL-3.0-or-later
// A value as a column holds it.
#pragma once

#include "base/LaufzeitFehler.h"

#include <cstdint>
#include <string>
#include <variant>

/// Value of a column: Null, a whole number or a text in UTF-8.
using Wert = std::variant<std::monostate, std::int64_t, std::string>;

inline bool istNull(const Wert& wert) {
    return std::holds_alternative<std::monostate>(wert);
}
/// The value as text; Null gives "".
std::string alsText(const Wert& wert);
/// The value as number; Null and a text that is no plain whole number throw error 13, one beyond 64 bits
/// error 6.
std::int64_t alsZahl(const Wert& wert);
/// Throws error 6: a number that is larger than its place.
[[noreturn]] void ueberlauf();
