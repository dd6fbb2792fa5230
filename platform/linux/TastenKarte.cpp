// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/TastenKarte.h"

#include <algorithm>
#include <vector>
#include <xkbcommon/xkbcommon.h>

namespace {

constexpr std::uint32_t X_VERSATZ = 8;

// The matching of labels with the keys of the typing block, while it is made.
class Zuordnung {
public:
    Zuordnung(xkb_keymap* belegung, std::array<EvdevTaste, VIRTUELLE_TASTEN>& tasten)
        : belegung_(belegung), tasten_(tasten) {
        for (const auto& schild : schilder()) {
            offen_.push_back(&schild);
            frei_.push_back(schild.deutsch);
        }
        std::ranges::sort(frei_);
    }

    void nachBeschriftung(std::uint32_t gruppe) {
        for (const bool vorrang : {true, false})
            for (const std::uint32_t ebene : {0U, 1U})
                zuordnen([&](const Schild& schild) {
                    return schild.vorrang == vorrang ? beschriftet(schild, gruppe, ebene) : KEINE_TASTE;
                });
    }

    void nachDeutscherTastatur() {
        zuordnen(
            [&](const Schild& schild) { return istFrei(schild.deutsch) ? schild.deutsch : KEINE_TASTE; });
    }

    void rest() {
        zuordnen([&](const Schild&) { return frei_.front(); });
    }

private:
    // Gives each open label, ascending by code, the key that `finden` names for it.
    template <typename Finden> void zuordnen(Finden finden) {
        std::erase_if(offen_, [&](const Schild* schild) {
            const auto taste = finden(*schild);
            if (taste == KEINE_TASTE)
                return false;
            tasten_[schild->code] = taste;
            std::erase(frei_, taste);
            return true;
        });
    }

    bool istFrei(EvdevTaste taste) const { return std::ranges::binary_search(frei_, taste); }

    EvdevTaste beschriftet(const Schild& schild, std::uint32_t gruppe, std::uint32_t ebene) const {
        const auto treffer = std::ranges::find_if(
            frei_, [&](EvdevTaste taste) { return traegt(taste, schild, gruppe, ebene); });
        return treffer != frei_.end() ? *treffer : KEINE_TASTE;
    }

    bool traegt(EvdevTaste taste, const Schild& schild, std::uint32_t gruppe, std::uint32_t ebene) const {
        const xkb_keysym_t* zeichen = nullptr;
        const int anzahl =
            xkb_keymap_key_get_syms_by_level(belegung_, taste + X_VERSATZ, gruppe, ebene, &zeichen);
        return anzahl == 1 && zeichen[0] != 0 &&
               std::ranges::find(schild.zeichen, zeichen[0]) != schild.zeichen.end();
    }

    xkb_keymap* belegung_;
    std::array<EvdevTaste, VIRTUELLE_TASTEN>& tasten_;
    std::vector<const Schild*> offen_;
    std::vector<EvdevTaste> frei_; // ascending
};

} // namespace

TastenKarte::TastenKarte(xkb_keymap* belegung, std::uint32_t gruppe) {
    for (const auto& feste : festeTasten())
        tasten_[feste.code] = feste.taste;

    Zuordnung zuordnung(belegung, tasten_);
    if (belegung != nullptr) {
        zuordnung.nachBeschriftung(gruppe);
        for (std::uint32_t andere = 0; andere < xkb_keymap_num_layouts(belegung); ++andere)
            if (andere != gruppe)
                zuordnung.nachBeschriftung(andere);
    }
    zuordnung.nachDeutscherTastatur();
    zuordnung.rest();

    for (EvdevTaste taste = 1; taste < EVDEV_TASTEN; ++taste)
        codes_[taste] = festerCode(taste);
    for (const auto& schild : schilder())
        codes_[tasten_[schild.code]] = schild.code;
}

EvdevTaste TastenKarte::taste(std::uint32_t code) const {
    return code < VIRTUELLE_TASTEN ? tasten_[code] : KEINE_TASTE;
}

VirtuelleTaste TastenKarte::code(EvdevTaste taste) const {
    return taste < EVDEV_TASTEN ? codes_[taste] : VirtuelleTaste{0};
}
