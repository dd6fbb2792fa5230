// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Linienzug.h"

#include "base/LaufzeitFehler.h"
#include "base/Rundung.h"
#include "editors/stick/Ebenenmass.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

// A line comes no nearer than this to its neighbours, and is put just beyond it.
constexpr std::int64_t ABSTAND = 500;
constexpr std::int64_t ABSTAND_GESETZT = 501;

constexpr std::int64_t NEUER_ABSTAND = 1000; // of a new line from the last one
constexpr std::int64_t NEU_MINDESTENS = 1000;
constexpr std::int64_t NEU_UNTER = 64536;

/// A direction in the order of Greifindex.
struct Greifart {
    std::size_t richtung;
    std::size_t gegenueber;
    int auswaerts; ///< sign of the way out
    bool inX;
    double grenze;          ///< an outermost line is stopped beyond this
    std::int32_t grenzwert; ///< and gets this value
    std::size_t grenzplatz; ///< in the picked-up line of this place of Greifindex
};

constexpr std::size_t GREIF_LINKS = 0;
constexpr std::size_t GREIF_OBEN = 1;
constexpr std::size_t GREIF_RECHTS = 2;
constexpr std::size_t GREIF_UNTEN = 3;

// The limits of x and y differ, and that of the bottom line goes to the right one: with none picked up to
// slot 0, which is never shown, so that the bottom line stays where it last was.
constexpr std::array<Greifart, RICHTUNGEN> GREIFARTEN{{
    {richtung::LINKS, richtung::RECHTS, -1, true, 500, 501, GREIF_LINKS},
    {richtung::OBEN, richtung::UNTEN, -1, false, 500, 501, GREIF_OBEN},
    {richtung::RECHTS, richtung::LINKS, +1, true, 65000, 64999, GREIF_RECHTS},
    {richtung::UNTEN, richtung::OBEN, +1, false, 64535, 64534, GREIF_RECHTS},
}};

/// Place in Greifindex by direction.
constexpr std::array<std::size_t, RICHTUNGEN> GREIFPLATZ{GREIF_LINKS, GREIF_RECHTS, GREIF_OBEN, GREIF_UNTEN};

constexpr const Greifart& artVon(std::size_t richtung) {
    return GREIFARTEN[GREIFPLATZ[richtung]];
}

/// A line value; what a foreign database makes too large stays at the end of the range.
std::int32_t linienwert(std::int64_t wert) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(wert, std::numeric_limits<std::int32_t>::min(),
                                                              std::numeric_limits<std::int32_t>::max()));
}

bool trifft(double ort, std::int32_t linie) {
    return ort > double(linie) - FANGWEITE && ort < double(linie) + FANGWEITE;
}

} // namespace

// --- press on the plane ---

void Linienzug::gedrueckt(Maustaste taste, double x, double y) {
    if (RandX_ || RandY_)
        return;
    if (taste == Maustaste::Rechts) {
        if (flaeche_.RechteckBGezeigt())
            flaeche_.fraAktionOeffnen(x, y);
        return;
    }
    Greifindex_ = {};
    nachFang(taste == Maustaste::Links ? fangen(x, y) : Fang{}, taste, x, y);
}

/// What a press does when lines have been seen to.
void Linienzug::nachFang(const Fang& fang, Maustaste taste, double x, double y) {
    if (flaeche_.fraAktionGezeigt())
        tafelSchliessen(fang);
    if (fang.getroffen)
        return;
    stand_.Klickposition = {gerundet(x), gerundet(y)};
    if (taste == Maustaste::Links)
        flaeche_.BereichFestlegen();
}

/// Closes the action panel and saves what it shows.
void Linienzug::tafelSchliessen(const Fang& fang) {
    flaeche_.fraAktionVerbergen();
    try {
        flaeche_.AktionSpeichern();
        if (!fang.getroffen)
            flaeche_.Zeichnen();
    } catch (const LaufzeitFehler&) {
        // An open panel and a chosen field belong to this layer and to lines that lie still.
        if (flaeche_.fraAktionGezeigt())
            loslassen();
        flaeche_.tafelnSperren(flaeche_.fraAktionGezeigt() || flaeche_.RechteckBGezeigt());
        throw;
    }
}

Linienzug::Fang Linienzug::fangen(double x, double y) {
    Fang fang;
    const auto verfehlte = verfehlteZuruecklegen(x, y);
    const auto verfehlt = [&](std::size_t richtung, int slot) {
        return std::ranges::any_of(verfehlte, [&](const Griff& g) { return g.ist(richtung, slot); });
    };
    if (!flaeche_.RechteckBGezeigt())
        for (int slot = 1; slot <= LETZTE_LINIENZEILE; ++slot)
            for (std::size_t d = 0; d < RICHTUNGEN; ++d) {
                const double ort = artVon(d).inX ? x : y;
                if (ort > FANGWEITE && !verfehlt(d, slot))
                    linieFangen(d, slot, ort, fang);
            }
    tafelnNachFang(fang);
    return fang;
}

void Linienzug::linieFangen(std::size_t richtung, int slot, double ort, Fang& fang) {
    if (!trifft(ort, J(slot, richtung))) {
        flaeche_.linieFaerben(richtung, slot - 1, false);
        return;
    }
    fang.getroffen = true;
    if (!flaeche_.linieRot(richtung, slot - 1)) {
        aufnehmen(richtung, slot);
    } else {
        absetzen(richtung, slot);
        fang.veraendert = true;
    }
}

void Linienzug::aufnehmen(std::size_t richtung, int slot) {
    flaeche_.linieFaerben(richtung, slot - 1, true);
    const auto& art = artVon(richtung);
    Greifindex_[GREIFPLATZ[richtung]] = static_cast<std::int16_t>(slot);
    Greifindex_[GREIFPLATZ[art.gegenueber]] = 0;
    (art.inX ? Greifposition_.x : Greifposition_.y) = gerundet(flaeche_.linienort(richtung, slot - 1));
    griffe_.push_back({richtung, slot, J(slot, richtung)});
}

void Linienzug::absetzen(std::size_t richtung, int slot) {
    const auto alt = artVon(richtung).inX ? Greifposition_.x : Greifposition_.y;
    Greifindex_[GREIFPLATZ[richtung]] = 0;
    flaeche_.linieFaerben(richtung, slot - 1, false);
    verlegen(griffLoesen(richtung, slot), alt);
}

/// Takes a line out of the hand; one that is only red is where it was.
Linienzug::Griff Linienzug::griffLoesen(std::size_t richtung, int slot) {
    const auto stelle = std::ranges::find_if(griffe_, [&](const Griff& g) { return g.ist(richtung, slot); });
    if (stelle == griffe_.end())
        return {richtung, slot, J(slot, richtung)};
    const Griff griff = *stelle;
    griffe_.erase(stelle);
    return griff;
}

/// Saves the lines, one of which has moved, and lets the actions that hang on `alt` follow it.
void Linienzug::verlegen(const Griff& griff, std::int32_t alt) {
    // The other line of a crossing is still held: it is saved where its actions are.
    Justierstand bild = stand_;
    bild.ebene() = abgelegte();
    try {
        flaeche_.StickLinieVerlegen(bild.linien, griff.richtung, J(griff.slot, griff.richtung), alt);
    } catch (const LaufzeitFehler&) {
        zuruecklegen(griff); // where it still stands in the store
        loslassen();
        throw;
    }
}

// --- not put down ---

void Linienzug::zuruecklegen(const Griff& griff) {
    J(griff.slot, griff.richtung) = griff.alt;
    flaeche_.PositionFestlegen(griff.richtung, griff.slot);
}

/// Lays back the lines in the hand that a press misses, and tells which they are: where they lie now they
/// were not when it came.
std::vector<Linienzug::Griff> Linienzug::verfehlteZuruecklegen(double x, double y) {
    std::vector<Griff> verfehlte;
    std::erase_if(griffe_, [&](const Griff& griff) {
        const double ort = artVon(griff.richtung).inX ? x : y;
        if (ort > FANGWEITE && trifft(ort, J(griff.slot, griff.richtung)))
            return false;
        zuruecklegen(griff);
        if (ort > FANGWEITE) // near the edge no press says anything about a line
            flaeche_.linieFaerben(griff.richtung, griff.slot - 1, false);
        verfehlte.push_back(griff);
        return true;
    });
    return verfehlte;
}

void Linienzug::loslassen() {
    for (const auto& griff : griffe_)
        zuruecklegen(griff);
    griffe_.clear();
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        for (int index = 0; index < LETZTE_LINIENZEILE; ++index)
            flaeche_.linieFaerben(d, index, false);
    Greifindex_ = {};
    RandX_ = RandY_ = false;
    flaeche_.tafelnSperren(false);
}

void Linienzug::tafelnNachFang(const Fang& fang) {
    const bool frei = fang.veraendert || flaeche_.RechteckBGezeigt();
    if (!frei)
        flaeche_.tafelnZurueckstellen();
    flaeche_.tafelnSperren(!frei);
    if (fang.veraendert)
        flaeche_.Zeichnen();
}

bool Linienzug::haelt() const {
    if (Greifindex_ != Greifindizes{})
        return true;
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        for (int index = 0; index < LETZTE_LINIENZEILE; ++index)
            if (flaeche_.linieGezeigt(d, index) && flaeche_.linieRot(d, index))
                return true;
    return false;
}

Linienebene Linienzug::abgelegte() const {
    auto ebene = std::as_const(stand_).ebene();
    for (const auto& griff : griffe_)
        ebene[static_cast<std::size_t>(griff.slot)][griff.richtung] = griff.alt;
    return ebene;
}

// --- what a press would do ---

// Of several lines that a press meets the outermost of a direction moves.
std::vector<Linienzug::Griff> Linienzug::aufnehmbare(double x, double y) const {
    std::vector<Griff> linien;
    for (std::size_t d = 0; d < RICHTUNGEN; ++d) {
        const double ort = artVon(d).inX ? x : y;
        for (int slot = LETZTE_LINIENZEILE; ort > FANGWEITE && slot >= ERSTE_LINIENZEILE; --slot)
            if (J(slot, d) != 0 && trifft(ort, J(slot, d))) {
                linien.push_back({d, slot, J(slot, d)});
                break;
            }
    }
    return linien;
}

// Panel and choice come before the lines, which can't be picked up then.
Klickfolge Linienzug::folge(double x, double y) const {
    if (RandX_ || RandY_)
        return Klickfolge::Nichts;
    if (flaeche_.fraAktionGezeigt())
        return Klickfolge::Tafel;
    if (flaeche_.RechteckBGezeigt())
        return Klickfolge::Abwahl;
    bool nimmt = false;
    for (int slot = 1; slot <= LETZTE_LINIENZEILE; ++slot)
        for (std::size_t d = 0; d < RICHTUNGEN; ++d) {
            const double ort = artVon(d).inX ? x : y;
            if (ort <= FANGWEITE || !trifft(ort, J(slot, d)))
                continue;
            if (flaeche_.linieRot(d, slot - 1))
                return Klickfolge::Absetzen;
            nimmt = true;
        }
    if (nimmt)
        return Klickfolge::Aufnahme;
    return griffe_.empty() ? Klickfolge::Wahl : Klickfolge::Zuruecklegen;
}

// --- by the keyboard ---

void Linienzug::feldWaehlen(double x, double y) {
    if (haelt())
        loslassen();
    tafelnNachFang({});
    nachFang({}, Maustaste::Links, x, y);
}

bool Linienzug::schieben(std::size_t richtung, int slot, std::int32_t schritt) {
    if (flaeche_.fraAktionGezeigt() || flaeche_.RechteckBGezeigt())
        return false;
    if (haelt())
        loslassen();
    const auto& art = artVon(richtung);
    const int s = art.auswaerts;
    const std::int64_t innen = slot == 1 ? J(1, art.gegenueber) : J(slot - 1, richtung);
    const std::int64_t aussen = J(slot + 1, richtung);
    // Outward counts up, on both sides of the centre.
    const std::int64_t nah = s * innen + ABSTAND_GESETZT;
    const std::int64_t fern = aussen == 0 ? s * art.grenzwert : s * aussen - ABSTAND_GESETZT;
    const std::int64_t alt = s * std::int64_t{J(slot, richtung)};
    const std::int64_t neu = alt + s * std::int64_t{schritt};
    // A line that lies beyond a limit, as another program may have left it, is not moved by it.
    const std::int64_t begrenzt =
        neu > alt ? std::min(neu, std::max(alt, fern)) : std::max(neu, std::min(alt, nah));
    if (begrenzt == alt)
        return false;
    aendern(richtung, slot, linienwert(s * begrenzt));
    return true;
}

// --- a picked-up line follows the mouse ---

void Linienzug::bewegt(double x, double y) {
    for (std::size_t platz = 0; platz < RICHTUNGEN; ++platz)
        if (Greifindex_[platz] != 0)
            ziehen(platz, GREIFARTEN[platz].inX ? x : y);
}

void Linienzug::ziehen(std::size_t greifplatz, double ort) {
    const auto& art = GREIFARTEN[greifplatz];
    const int slot = Greifindex_[greifplatz];
    const std::int64_t innen = slot == 1 ? J(1, art.gegenueber) : J(slot - 1, art.richtung);
    const std::int64_t aussen = J(slot + 1, art.richtung);
    const int s = art.auswaerts;
    bool& Grenze = art.inX ? RandX_ : RandY_;
    auto& linie = J(slot, art.richtung);
    Grenze = true;
    if (s * (ort - static_cast<double>(innen)) < ABSTAND)
        linie = linienwert(innen + s * ABSTAND_GESETZT);
    else if (!flaeche_.linieGezeigt(art.richtung, slot) && s * (ort - art.grenze) > 0)
        J(Greifindex_[art.grenzplatz], GREIFARTEN[art.grenzplatz].richtung) = art.grenzwert;
    else if (flaeche_.linieGezeigt(art.richtung, slot) && s * (ort - static_cast<double>(aussen)) > -ABSTAND)
        linie = linienwert(aussen - s * ABSTAND_GESETZT);
    else {
        Grenze = false;
        linie = gerundet(ort);
    }
    flaeche_.PositionFestlegen(art.richtung, slot);
}

// --- arrows ---

void Linienzug::pfeilGedrueckt(Maustaste taste, std::size_t richtung) {
    if (flaeche_.fraAktionGezeigt() || flaeche_.RechteckBGezeigt())
        return;
    if (haelt())
        loslassen();
    int slot = 1;
    while (slot < LETZTE_LINIENZEILE && J(slot, richtung) != 0)
        ++slot;
    if (taste == Maustaste::Links)
        hinzufuegen(richtung, slot);
    else
        entfernen(richtung, J(slot, richtung) != 0 ? slot : slot - 1);
}

// The last slot counts as free also when it holds a line, which is then moved.
void Linienzug::hinzufuegen(std::size_t richtung, int slot) {
    const int s = artVon(richtung).auswaerts;
    const std::int64_t letzte = J(slot - 1, richtung);
    const bool platz =
        s < 0 ? letzte - ABSTAND_GESETZT >= NEU_MINDESTENS : letzte + ABSTAND_GESETZT < NEU_UNTER;
    if (!platz) {
        flaeche_.melden("Es kann keine neu Linie erstellt werden!");
        return;
    }
    aendern(richtung, slot, linienwert(letzte + s * NEUER_ABSTAND));
}

void Linienzug::entfernen(std::size_t richtung, int slot) {
    if (slot <= 1) {
        flaeche_.melden("Die Mittellinie kann nicht gelöscht werden!");
        return;
    }
    const auto linie = J(slot, richtung);
    Justierstand ohne = stand_;
    ohne.ebene()[static_cast<std::size_t>(slot)][richtung] = 0;
    if (flaeche_.StickLinieEntfernen(ohne.linien, richtung, linie)) {
        J(slot, richtung) = 0;
        flaeche_.PositionFestlegen(richtung, slot);
        flaeche_.Zeichnen();
        return;
    }
    flaeche_.melden(
        "Diese Linie ist mit Aktionen verbunden. Löschen Sie diese, bevor Sie die Linie entfernen!");
    aendern(richtung, slot, linie); // the Leerfelder on it are gone all the same: the picture shows that
}

void Linienzug::aendern(std::size_t richtung, int slot, std::int32_t neu) {
    const auto alt = std::exchange(J(slot, richtung), neu);
    flaeche_.PositionFestlegen(richtung, slot);
    const bool gewandert = alt != 0 && neu != 0 && alt != neu; // the last line, where all stand already
    if (gewandert) {
        verlegen({richtung, slot, alt}, alt);
    } else {
        try {
            flaeche_.StickLinienSpeichern();
        } catch (const LaufzeitFehler&) {
            zuruecklegen({richtung, slot, alt});
            throw;
        }
    }
    flaeche_.Zeichnen();
}

// --- the action panel ---

Tafelplatz aktionstafelplatz(double x, double y, double breite, double hoehe) {
    double oben = y <= 33000 ? y : y - hoehe;
    double links = x < 12000 ? 0 : x - breite / 2;
    if (x > 55000)
        links = EBENENENDE - breite;
    // A panel that is large for its window would lose controls at an edge.
    links = std::max(0.0, std::min(links, EBENENENDE - breite));
    oben = std::max(0.0, std::min(oben, EBENENENDE - hoehe));
    return {links, oben};
}
