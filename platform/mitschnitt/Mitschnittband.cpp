// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mitschnitt/Mitschnittband.h"

#include <algorithm>
#include <utility>

namespace {

using Art = Mitschnitteintrag::Art;

constexpr std::uint8_t TASTE = 0x80; // beside Art::Ereignis: of the keyboard

bool gleich(const INPUT& a, const INPUT& b) {
    if (a.type != b.type)
        return false;
    if (a.type == INPUT_KEYBOARD)
        return a.ki.wVk == b.ki.wVk && a.ki.dwFlags == b.ki.dwFlags;
    return a.mi.dx == b.mi.dx && a.mi.dy == b.mi.dy && a.mi.mouseData == b.mi.mouseData &&
           a.mi.dwFlags == b.mi.dwFlags;
}

// Reads what the band has written.
class Leser {
public:
    explicit Leser(const std::deque<std::uint8_t>& bytes) : stelle_(bytes.begin()), ende_(bytes.end()) {}

    bool zuEnde() const { return stelle_ == ende_; }
    std::uint8_t byte() { return *stelle_++; }
    std::uint64_t natuerliche() {
        std::uint64_t wert = 0;
        for (int verschoben = 0;; verschoben += 7) {
            const auto stueck = byte();
            wert |= std::uint64_t{stueck & 0x7fU} << verschoben;
            if (!(stueck & 0x80U))
                return wert;
        }
    }
    std::int64_t ganze() {
        const auto wert = natuerliche();
        return static_cast<std::int64_t>(wert >> 1U) ^ -static_cast<std::int64_t>(wert & 1U);
    }
    std::uint32_t kurze() { return static_cast<std::uint32_t>(natuerliche()); }

private:
    std::deque<std::uint8_t>::const_iterator stelle_;
    std::deque<std::uint8_t>::const_iterator ende_;
};

INPUT tastenereignis(Leser& leser) {
    INPUT eines{};
    eines.type = INPUT_KEYBOARD;
    const auto taste = static_cast<VirtuelleTaste>(leser.natuerliche());
    eines.ki = {taste, 0, leser.kurze(), 0, 0, {}};
    return eines;
}

INPUT mausereignis(Leser& leser) {
    INPUT eines{};
    eines.type = INPUT_MOUSE;
    const auto flags = leser.kurze();
    const auto dx = static_cast<std::int32_t>(leser.ganze());
    const auto dy = static_cast<std::int32_t>(leser.ganze());
    eines.mi = {dx, dy, static_cast<std::uint32_t>(leser.ganze()), flags, 0, 0};
    return eines;
}

Mitschnitteintrag naechster(Leser& leser, Mitschnitteintrag::Zeit& zeit) {
    Mitschnitteintrag eintrag;
    const auto art = leser.byte();
    eintrag.art = static_cast<Art>(art & ~TASTE);
    eintrag.zeit = zeit += Mitschnitteintrag::Zeit{leser.ganze()};
    if (eintrag.art == Art::Ereignis) {
        eintrag.ereignis = art & TASTE ? tastenereignis(leser) : mausereignis(leser);
        eintrag.index = leser.kurze();
    } else if (eintrag.art == Art::Vermerk) {
        for (auto zeichen = leser.natuerliche(); zeichen > 0; --zeichen)
            eintrag.text += static_cast<char>(leser.byte());
    } else {
        eintrag.index = leser.kurze();
        eintrag.wert = leser.ganze();
    }
    return eintrag;
}

} // namespace

void Mitschnittband::beginnen(Zeit jetzt, Anfang anfang, bool exakt) {
    gebuendeltesSchreiben();
    bloecke_.push_back({jetzt, jetzt, exakt, std::move(anfang), {}});
    bytes_ += bloecke_.back().groesse();
    veraltetesStreichen(jetzt);
    zuVielesStreichen();
}

void Mitschnittband::verwerfen() {
    bloecke_.clear();
    bytes_ = 0;
    gleiche_ = 0;
}

void Mitschnittband::vermerk(Zeit jetzt, const std::string& text) {
    gebuendeltesSchreiben();
    if (leer())
        return;
    const auto vorher = bloecke_.back().bytes.size();
    kopf(jetzt, Art::Vermerk);
    natuerliche(text.size());
    for (const char zeichen : text)
        byte(static_cast<std::uint8_t>(zeichen));
    zaehlen(vorher);
}

void Mitschnittband::ereignis(Zeit jetzt, const INPUT& eines) {
    if (gleiche_ > 0 && jetzt == gleichesWann_ && gleich(eines, gleiches_)) {
        ++gleiche_;
        return;
    }
    gebuendeltesSchreiben();
    gleiches_ = eines;
    gleichesWann_ = jetzt;
    gleiche_ = 1;
}

std::vector<Mitschnittband::Block> Mitschnittband::lesen(Zeit jetzt) {
    gebuendeltesSchreiben();
    veraltetesStreichen(jetzt);
    std::vector<Block> alle;
    for (const auto& block : bloecke_)
        alle.push_back(entziffert(block));
    return alle;
}

Mitschnittband::Block Mitschnittband::entziffert(const Innen& block) {
    Block klar{block.beginn, block.exakt, block.anfang, {}};
    auto zeit = block.beginn;
    for (Leser leser(block.bytes); !leser.zuEnde();)
        klar.eintraege.push_back(naechster(leser, zeit));
    return klar;
}

// --- entries ---

void Mitschnittband::zahl(Zeit jetzt, Art art, std::uint32_t index, std::int64_t wert) {
    gebuendeltesSchreiben();
    if (leer())
        return;
    const auto vorher = bloecke_.back().bytes.size();
    kopf(jetzt, art);
    natuerliche(index);
    ganze(wert);
    zaehlen(vorher);
}

void Mitschnittband::gebuendeltesSchreiben() {
    const auto anzahl = std::exchange(gleiche_, 0U);
    if (anzahl == 0 || leer())
        return;
    const auto vorher = bloecke_.back().bytes.size();
    const bool taste = gleiches_.type == INPUT_KEYBOARD;
    kopf(gleichesWann_,
         taste ? static_cast<Art>(static_cast<std::uint8_t>(Art::Ereignis) | TASTE) : Art::Ereignis);
    if (taste) {
        natuerliche(gleiches_.ki.wVk);
        natuerliche(gleiches_.ki.dwFlags);
    } else {
        natuerliche(gleiches_.mi.dwFlags);
        ganze(gleiches_.mi.dx);
        ganze(gleiches_.mi.dy);
        ganze(static_cast<std::int32_t>(gleiches_.mi.mouseData));
    }
    natuerliche(anzahl);
    zaehlen(vorher);
}

void Mitschnittband::kopf(Zeit jetzt, Art art) {
    auto& block = bloecke_.back();
    byte(static_cast<std::uint8_t>(art));
    ganze((jetzt - std::exchange(block.letzte, jetzt)).count());
}

// Seven bits a byte, the low ones first; the eighth says that more follow.
void Mitschnittband::natuerliche(std::uint64_t wert) {
    for (; wert >= 0x80; wert >>= 7U)
        byte(static_cast<std::uint8_t>(wert | 0x80U));
    byte(static_cast<std::uint8_t>(wert));
}

void Mitschnittband::ganze(std::int64_t wert) {
    natuerliche(static_cast<std::uint64_t>(wert) << 1U ^ static_cast<std::uint64_t>(wert >> 63));
}

// --- limits ---

void Mitschnittband::zaehlen(std::size_t vorher) {
    bytes_ += bloecke_.back().bytes.size() - vorher;
    zuVielesStreichen();
}

// The first block stays as long as the second one began too late to take its place: without a quiet moment
// the record rather lasts longer than that it could not be played.
void Mitschnittband::veraltetesStreichen(Zeit jetzt) {
    while (bloecke_.size() > 1 && bloecke_[1].beginn <= jetzt - grenzen_.dauer) {
        bytes_ -= bloecke_.front().groesse();
        bloecke_.pop_front();
    }
}

void Mitschnittband::zuVielesStreichen() {
    while (bytes_ > grenzen_.bytes && bloecke_.size() > 1) {
        bytes_ -= bloecke_.front().groesse();
        bloecke_.pop_front();
    }
    if (bytes_ <= grenzen_.bytes || bloecke_.empty())
        return;
    auto& einziger = bloecke_.front();
    einziger.bytes.clear();
    einziger.anfang.text.clear();
    einziger.exakt = false;
    einziger.beginn = einziger.letzte;
    bytes_ = einziger.groesse();
}
