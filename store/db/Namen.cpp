// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/db/Namen.h"

#include <algorithm>

namespace {
char klein(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
} // namespace

std::string kleinGeschrieben(std::string_view name) {
    std::string ergebnis(name);
    std::transform(ergebnis.begin(), ergebnis.end(), ergebnis.begin(), klein);
    return ergebnis;
}

bool gleicherName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return klein(x) == klein(y); });
}

std::string inAnfuehrung(std::string_view name) {
    std::string ergebnis = "\"";
    for (const char c : name) {
        if (c == '"')
            ergebnis += c;
        ergebnis += c;
    }
    return ergebnis + '"';
}
