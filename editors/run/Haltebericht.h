// SPDX-License-Identifier: GPL-3.0-or-later
// What a run holds, in words: a line an entry, with the time that it has been held.
//
//   "Kreuz → A, 3 s"                                      a button and its key
//   "Linker Stick, Feld oben → Mausbewegung nach oben, 2 s"
//   "Schubregler, Feld 3 → Leertaste, 0 s"
//   "⚠ Kreuz → A, 12 s"                                   down for long: striking
//   "⚠ Kreuz (losgelassen) → A, 4 s"                      nobody lets it go any more: striking at once
//   "⚠ Von niemandem gehalten → A, 4 s"
//
// Time goes by what is seen: a press counts from the first look at it.
#pragma once

#include "engine/run/Laufstand.h"

#include <QString>

#include <chrono>
#include <map>
#include <string>
#include <utility>
#include <vector>

struct Haltezeile {
    QString text;
    bool auffaellig = false;
    bool operator==(const Haltezeile&) const = default;
};

class Haltebericht {
public:
    /// Keys and mouse buttons that are held longer than this are striking.
    static constexpr std::chrono::seconds LANGE{10};

    using Tastennamen = std::map<std::string, std::string>;

    explicit Haltebericht(Tastennamen namen = {}) : namen_(std::move(namen)) {}

    /// Looks at what is held at the time `jetzt`, which never goes back; makes no words.
    void ansehen(const Laufstand& stand, std::chrono::milliseconds jetzt);
    /// The lines as of the last look: the striking ones first, of these and of the others the oldest.
    std::vector<Haltezeile> zeilen() const;

private:
    struct Gehaltenes {
        Haltung haltung;
        std::chrono::milliseconds seit;
    };

    std::chrono::milliseconds beginn(const Haltung& haltung, std::chrono::milliseconds jetzt) const;
    bool auffaellig(const Gehaltenes& eines) const;
    QString wirkungswort(const Wirkung& wirkung) const;

    Tastennamen namen_;
    std::vector<Gehaltenes> gehaltene_; // as of the last look
    std::chrono::milliseconds jetzt_{0};
};

/// The field in words, by its bands as they lie about the centre: "Feld oben", "Feld oben links", "Feld
/// Mitte"; with several bands in a direction their numbers from the centre on, "Feld oben 2, links 1".
QString feldwort(const Feldname& feld);
