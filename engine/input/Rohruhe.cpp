// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/input/Rohruhe.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr std::int32_t MITTEL_SPRUNG = 16;
constexpr std::int32_t MITTEL_TEIL = 12;

constexpr std::size_t stufe(std::int32_t wert, int breite, int stufen) {
    return static_cast<std::size_t>(std::clamp(wert / breite, 0, stufen - 1));
}

std::size_t ruhezelle(std::int32_t mittel) {
    return stufe(mittel, Streudaten::ZELLEN, Streudaten::ZELLEN);
}

} // namespace

void Rohruhe::viertelEndet(Streudaten::Achsenruhe& ruhe) {
    volle_ = std::min(volle_ + 1, VIERTELZAHL);
    if (volle_ == VIERTELZAHL && ruht()) {
        std::int32_t summe = 0;
        for (const auto& viertel : viertel_)
            summe += viertel.summe;
        const auto mittel = summe / static_cast<std::int32_t>(proben_.size());
        for (unsigned i = 0; i < VIERTELZAHL; ++i)
            if (!std::exchange(viertel_[i].gezaehlt, true))
                zaehlen(i, mittel, ruhe);
    }
    stelle_ %= static_cast<unsigned>(proben_.size());
    viertel_[stelle_ / VIERTEL] = {};
}

// Of the means the sums of the quarters tell.
bool Rohruhe::ruht() const {
    auto alle = viertel_.front();
    auto kleinsteSumme = alle.summe;
    auto groessteSumme = alle.summe;
    for (const auto& viertel : viertel_) {
        alle.kleinste = std::min(alle.kleinste, viertel.kleinste);
        alle.groesste = std::max(alle.groesste, viertel.groesste);
        kleinsteSumme = std::min(kleinsteSumme, viertel.summe);
        groessteSumme = std::max(groessteSumme, viertel.summe);
    }
    const auto weite = alle.groesste - alle.kleinste;
    return weite <= WEITE && groessteSumme - kleinsteSumme <= VIERTEL * (MITTEL_SPRUNG + weite / MITTEL_TEIL);
}

void Rohruhe::zaehlen(unsigned nummer, std::int32_t mittel, Streudaten::Achsenruhe& ruhe) const {
    const auto* von = proben_.data() + nummer * VIERTEL;
    for (const auto* probe = von; probe != von + VIERTEL; ++probe)
        Streudaten::mehren(
            ruhe.zittern[stufe(std::abs(*probe - mittel), Streudaten::KLASSENBREITE, Streudaten::KLASSEN)],
            1);
    Streudaten::mehren(ruhe.ruhe[ruhezelle(mittel)], VIERTEL);
}

/// Whether a further quarter of this value is counted as itself: the last three are of it all through, and
/// the next one has not begun.
bool Rohruhe::haelt(std::int32_t roh) const {
    if (volle_ < VIERTELZAHL || stelle_ % VIERTEL != 0)
        return false;
    return std::ranges::all_of(proben_, [roh](const auto probe) { return probe == roh; });
}

void Rohruhe::takte(std::int32_t roh, std::uint64_t anzahl, Streudaten::Achsenruhe& ruhe) {
    for (; anzahl > 0 && !haelt(roh); --anzahl)
        takt(roh, ruhe);
    const auto viertel = anzahl / VIERTEL;
    Streudaten::mehren(ruhe.zittern[0], viertel * VIERTEL);
    Streudaten::mehren(ruhe.ruhe[ruhezelle(roh)], viertel * VIERTEL);
    for (anzahl %= VIERTEL; anzahl > 0; --anzahl)
        takt(roh, ruhe);
}
