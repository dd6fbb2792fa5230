// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/input/Entwackeln.h"

#include "engine/input/Achsen.h"
#include "engine/run/LaufAnzeige.h"
#include "engine/run/TimerUeberwachung.h"
#include "platform/Zeitgeber.h"

#include <algorithm>

namespace {

// By axis: its name, and the scroll bars `HScroll1` that set its filter. The lower margin of "ry" alone has a
// scroll bar of its own.
struct Achsenzeile {
    Achse achse;
    std::size_t fenster;
    std::size_t mindestzahl;
    std::size_t randUnten;
    std::size_t randOben;
};
constexpr std::array<Achsenzeile, 4> ACHSENZEILEN{
    {{Achse::lx, 2, 3, 5, 5}, {Achse::ly, 0, 1, 4, 4}, {Achse::rx, 6, 7, 10, 10}, {Achse::ry, 8, 9, 11, 10}}};

enum : std::size_t { LX, LY, RX, RY };

} // namespace

// --- one axis ---

void Achsenfilter::glaetten(std::int32_t raw, const Einstellung& einstellung, std::string* bericht) {
    const int fenster = einstellung.fenster;
    aufnehmen(raw, fenster);
    const int gueltige = stricheZaehlen(fenster);
    const auto& modus = haeufigster(fenster);
    if (bericht)
        *bericht = berichten(fenster, gueltige, modus);

    const bool nah = modus.wert - einstellung.randUnten <= raw && raw <= modus.wert + einstellung.randOben;
    ausgabe_ = nah && einstellung.mindestzahl < modus.zahl ? modus.wert : raw;
}

bool Achsenfilter::haelt(std::int32_t raw, int fenster) const {
    if (RingPos_ < 1 || RingPos_ > fenster || ausgabe_ != raw)
        return false;
    return std::all_of(AchsenRing_.begin() + 1, AchsenRing_.begin() + 1 + fenster,
                       [raw](const Probe& probe) { return probe.gueltig && probe.wert == raw; });
}

void Achsenfilter::drehen(std::uint64_t proben, int fenster) {
    const auto weite = static_cast<std::uint64_t>(fenster);
    RingPos_ = static_cast<int>((static_cast<std::uint64_t>(RingPos_ - 1) + proben) % weite) + 1;
}

void Achsenfilter::aufnehmen(std::int32_t raw, int fenster) {
    // Equality and no more: after the window was made smaller the position runs on to the end of the ring.
    if (RingPos_ == fenster || RingPos_ == RINGZEILEN)
        RingPos_ = 0;
    ++RingPos_;
    auto& probe = AchsenRing_[static_cast<std::size_t>(RingPos_)];
    probe = {raw, raw == probe.wert};
}

// Lists runs in ring order and not how often a value occurs: the same value in two runs takes two rows. A run
// of m samples counts m - 1. A sample of 0 takes a row and never counts. Gives the number of valid samples.
int Achsenfilter::stricheZaehlen(int fenster) {
    Strichliste_.fill({});
    int gueltige = 0;
    std::size_t zeile = 0; // never reset, so a value is only compared with the one before
    for (std::size_t i = 1; i <= static_cast<std::size_t>(fenster); ++i) {
        const auto& probe = AchsenRing_[i];
        if (!probe.gueltig)
            continue;
        ++gueltige;
        if (Strichliste_[zeile].wert == probe.wert && probe.wert != 0)
            ++Strichliste_[zeile].zahl;
        else
            Strichliste_[++zeile].wert = probe.wert; // each sample takes one row at most: there is room
    }
    return gueltige;
}

// The first of equal rows wins. Row 0 is empty: no row with a count gives the value 0.
const Achsenfilter::Strich& Achsenfilter::haeufigster(int fenster) const {
    std::size_t beste = 0;
    for (std::size_t i = 1; i <= static_cast<std::size_t>(fenster); ++i)
        if (Strichliste_[i].zahl > Strichliste_[beste].zahl && Strichliste_[i].wert != 0)
            beste = i;
    return Strichliste_[beste];
}

std::string Achsenfilter::berichten(int fenster, int gueltige, const Strich& modus) const {
    std::string text = std::to_string(gueltige) + " --- " + std::to_string(fenster - gueltige) + "\n";
    for (std::size_t i = 1; i <= static_cast<std::size_t>(fenster); ++i)
        if (Strichliste_[i].zahl != 0)
            text += std::to_string(Strichliste_[i].wert) + "  ---  " + std::to_string(Strichliste_[i].zahl) +
                    "\n";
    return text + "\n" + std::to_string(modus.zahl) + " --- " + std::to_string(modus.wert);
}

// --- all four ---

Entwackeln::Entwackeln(Entwackelstand& stand, Achsen& achsen, const Reglerwerte& regler, Zeitgeber& zeitgeber,
                       LaufAnzeige& anzeige)
    : stand_(stand), achsen_(achsen), regler_(regler), zeitgeber_(zeitgeber), anzeige_(anzeige) {}

Stickposition Entwackeln::LinkerStickLesen() {
    starten();
    return ausgabe(Stickseite::Links);
}

Stickposition Entwackeln::RechterStickLesen() {
    starten();
    return ausgabe(Stickseite::Rechts);
}

Stickposition Entwackeln::ausgabe(Stickseite seite) const {
    const auto& filter = stand_.filter;
    return seite == Stickseite::Links ? Stickposition{filter[LX].ausgabe(), filter[LY].ausgabe()}
                                      : Stickposition{filter[RX].ausgabe(), filter[RY].ausgabe()};
}

std::optional<Stickposition> Entwackeln::rohort(Stickseite seite) const {
    const auto x = rohwert(seite == Stickseite::Links ? LX : RX);
    const auto y = rohwert(seite == Stickseite::Links ? LY : RY);
    return x && y ? std::optional<Stickposition>({*x, *y}) : std::nullopt;
}

void Entwackeln::starten() {
    if (stand_.EntwackelnLaeuft)
        return;
    stand_.EntwackelnLaeuft = true;
    zeitgeber_.SetTimer(timerid::ENTWACKELN, ENTWACKELN_INTERVALL, [this] { EntwackelnTakt(); });
}

bool Entwackeln::inRuhe() const {
    if (!stand_.EntwackelnLaeuft || berichten_ || !achsen_.gelten())
        return false;
    for (std::size_t achse = 0; achse < ACHSENZEILEN.size(); ++achse)
        if (const auto raw = rohwert(achse);
            raw && !stand_.filter[achse].haelt(*raw, einstellung(achse).fenster))
            return false;
    return true;
}

void Entwackeln::ruhen() {
    for (std::size_t achse = 0; achse < ACHSENZEILEN.size(); ++achse)
        drehende_[achse] = rohwert(achse) ? einstellung(achse).fenster : 0;
    zeitgeber_.ruhen(timerid::ENTWACKELN);
}

void Entwackeln::weiter(std::chrono::nanoseconds her) {
    const auto ausgelassene = zeitgeber_.weiter(timerid::ENTWACKELN, her);
    for (std::size_t achse = 0; achse < ACHSENZEILEN.size(); ++achse)
        if (drehende_[achse] > 0)
            stand_.filter[achse].drehen(ausgelassene, drehende_[achse]);
    drehende_ = {};
}

void Entwackeln::EntwackelnStoppen(bool nurTimer) {
    zeitgeber_.KillTimer(timerid::ENTWACKELN);
    if (!nurTimer)
        stand_.EntwackelnLaeuft = false;
}

void Entwackeln::EntwackelnTakt() {
    achsen_.AchsenLesen();
    for (std::size_t achse = 0; achse < ACHSENZEILEN.size(); ++achse)
        AchseGlaetten(achse);
}

std::optional<std::int32_t> Entwackeln::rohwert(std::size_t achse) const {
    return achsen_.AchsenWert(ACHSENZEILEN[achse].achse);
}

Achsenfilter::Einstellung Entwackeln::einstellung(std::size_t achse) const {
    const auto& zeile = ACHSENZEILEN[achse];
    const auto& regler = regler_.glaettung;
    return {regler[zeile.fenster], regler[zeile.mindestzahl], regler[zeile.randUnten],
            regler[zeile.randOben]};
}

void Entwackeln::AchseGlaetten(std::size_t achse) {
    const auto raw = rohwert(achse);
    if (!raw)
        return; // no pad yet, or no raw axis of this name: the output stays
    std::string bericht;
    stand_.filter[achse].glaetten(*raw, einstellung(achse), berichten_ ? &bericht : nullptr);
    if (berichten_ && bericht != berichte_[achse])
        anzeige_.Text3(static_cast<int>(achse), berichte_[achse] = bericht);
}
