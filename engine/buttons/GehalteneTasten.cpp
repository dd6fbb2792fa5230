// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/buttons/GehalteneTasten.h"

#include <algorithm>

void GehalteneTasten::aufnehmen(const Halteeintrag& eintrag) {
    if (std::ranges::find(eintraege_, eintrag) != eintraege_.end())
        return;
    eintraege_.push_back(eintrag);
    text_ = haltetext(eintraege_);
}

std::optional<Halteeintrag> GehalteneTasten::herausnehmen(int slot) {
    const auto stelle = std::ranges::find(eintraege_, slot, &Halteeintrag::slot);
    if (stelle == eintraege_.end())
        return std::nullopt;
    auto eintrag = std::move(*stelle);
    eintraege_.erase(stelle);
    text_ = haltetext(eintraege_);
    return eintrag;
}
