// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Zerlegen.h"

std::vector<std::string_view> zerlegen(std::string_view text, char trenner) {
    std::vector<std::string_view> stuecke;
    if (text.empty())
        return stuecke;
    while (true) {
        const auto ende = text.find(trenner);
        stuecke.push_back(text.substr(0, ende));
        if (ende == std::string_view::npos)
            return stuecke;
        text.remove_prefix(ende + 1);
    }
}
