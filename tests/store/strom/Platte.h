// SPDX-License-Identifier: GPL-3.0-or-later
// A disk as a model: what it may hold after a power cut.
//
//     asked for             on the disk for sure                on the disk perhaps, until then
//     write, shorten        when that file has been synced      each sector of it: whole, not at all, half,
//     or
//                                                               garbage; in any order
//     make, remove, rename  when its folder has been synced     each by itself; a rename as a whole
//
// A file that is synced does not bring its name along, and a name not what the file holds.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

/// The files of a disk by their paths.
using Plattenbild = std::map<std::string, std::string>;

/// Something that a process asks of the disk.
struct Plattenschritt {
    enum class Art {
        Anlegen,
        Schreiben,
        Kuerzen,
        Sichern,
        OrdnerSichern,
        Loeschen,
        Umbenennen,
        Tauschen,
        Verknuepfen ///< a second name for a file
    };
    Art art;
    std::string name;       ///< of the file, of the folder for OrdnerSichern
    std::string nach = {};  ///< Umbenennen, Tauschen, Verknuepfen: the other name
    std::size_t stelle = 0; ///< Schreiben: where; Kuerzen: the new length
    std::string daten = {}; ///< Schreiben: what
};

/// Draws a number from 0 to n - 1. Where a fate is drawn 0 means kept, 1 lost, and for a sector 2 half, 3
/// garbage.
using Los = std::function<int(int n)>;

class Platte {
public:
    explicit Platte(const Plattenbild& anfang);

    /// Steps on. Names lead to files as the process sees them.
    void tun(const Plattenschritt& schritt);

    bool gibtEs(const std::string& name) const { return jetzt_.contains(name); }
    /// What the process sees.
    Plattenbild jetzt() const;

    /// What lies there when the power goes now. `los` draws the fate of all that is not synced, in an order
    /// that depends on its answers only; `zufall` which half is there, what the garbage is and, where
    /// `gemischt` is set, in which order the writes of a file arrive. `sektor` is the size of one in bytes.
    Plattenbild nachStromausfall(std::size_t sektor, bool gemischt, const Los& los,
                                 std::mt19937& zufall) const;

private:
    using Nummer = std::size_t;
    using Namen = std::map<std::string, Nummer>;

    struct Datei {
        std::string sicher;
        std::string jetzt;
        std::vector<Plattenschritt> offen;
    };
    /// What a step makes of names, as a whole: nothing for one that goes.
    struct Namenswechsel {
        std::string ordner;
        std::vector<std::pair<std::string, std::optional<Nummer>>> neu;
    };

    Namenswechsel wechselDurch(const Plattenschritt& schritt);
    static void anwenden(Namen& namen, const Namenswechsel& wechsel);

    std::vector<Datei> dateien_; ///< by number, whatever leads to them
    Namen sicher_;
    Namen jetzt_;
    std::vector<Namenswechsel> offen_;
};
