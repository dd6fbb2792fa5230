// SPDX-License-Identifier: GPL-3.0-or-later
// What every floor does to a text.
#pragma once

#include <string>
#include <string_view>

/// The text without the blanks around it; other white space stays.
inline std::string ohneRand(std::string_view text) {
    const auto anfang = text.find_first_not_of(' ');
    if (anfang == std::string_view::npos)
        return {};
    return std::string(text.substr(anfang, text.find_last_not_of(' ') - anfang + 1));
}
