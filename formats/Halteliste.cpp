// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Halteliste.h"

std::string haltetext(const std::vector<Halteeintrag>& eintraege) {
    std::string text;
    for (const auto& eintrag : eintraege)
        text += eintrag.text() + ",";
    return text;
}

bool slotKommtVor(std::string_view haltetext, int slot) {
    return haltetext.find(std::to_string(slot) + "-") != std::string_view::npos;
}

bool eintragKommtVor(std::string_view haltetext, const Halteeintrag& eintrag) {
    return haltetext.find(eintrag.text()) != std::string_view::npos;
}
