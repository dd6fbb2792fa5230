// SPDX-License-Identifier: GPL-3.0-or-later
// What a fuzzer holds a reader to, beside not crashing: a promise that is broken ends it.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string_view>

inline void verlange(bool bedingung) {
    if (!bedingung)
        std::abort();
}

/// The input as text.
inline std::string_view alsText(const std::uint8_t* daten, std::size_t groesse) {
    return {reinterpret_cast<const char*>(daten), groesse};
}

/// Takes a line off the front; the end mark of the line goes with it.
inline std::string_view zeileAbtrennen(std::string_view& rest) {
    const auto ende = rest.find('\n');
    const auto zeile = rest.substr(0, ende);
    rest.remove_prefix(ende == std::string_view::npos ? rest.size() : ende + 1);
    return zeile;
}
