// SPDX-License-Identifier: GPL-3.0-or-later
// Copies of the database and of Gamepad.xml by day, in the folder "Sicherungen" beside the database:
//
//   Belegung 2026-11-22.twk    Gamepad 2026-11-22.xml
//
// Kept are the ten newest of each, and of each of the six newest months the first. A copy of a day that is
// still to come was made under a clock that went wrong, and counts as older than all others. Other files in
// that folder are nobody's business here. A copy is a database like any other.
#pragma once

#include <compare>
#include <filesystem>
#include <optional>
#include <set>
#include <string>

struct Sicherungstag {
    int jahr = 0;
    int monat = 0; ///< from 1
    int tag = 0;   ///< from 1
    auto operator<=>(const Sicherungstag&) const = default;
};

struct Sicherung {
    std::string pfad;
    Sicherungstag tag;
};

/// Which of the two files is meant.
enum class Gesichertes { Datenbank, Achsendatei };

class Sicherungen {
public:
    Sicherungen(std::string datenbank, std::string gamepadXml);

    /// Lays by what the two files hold, unless there is a copy of `heute` or the newest copy is the same; to
    /// be called before a day's first write. The database is read whole on one state of it, under a lock that
    /// holds writers up no longer than the reading in memory. What is damaged is not laid by: 3049, 3343.
    /// A Gamepad.xml that is no such table is passed over. Throws the store's errors; 3026 where there is no
    /// room.
    void sichern(Sicherungstag heute) const;

    /// The newest copy that can be read whole.
    std::optional<Sicherung> neuesteGute(Gesichertes was, Sicherungstag heute) const;

    /// Whether the database may be written at all.
    bool schreibbar() const;

    /// Whether Gamepad.xml is there and is none that can be read.
    bool achsendateiBeschaedigt() const;

    /// Puts `sicherung` in the place of the file, which is put aside, with its journal, under the name that
    /// is returned: "Belegung.twk.beschädigt", or that with a number. At no instant there is no file. Throws
    /// 3043, or 3026 where there is no room; the file is what it was then.
    std::string zuruecksichern(Gesichertes was, const Sicherung& sicherung) const;

    /// Where the copies lie.
    std::filesystem::path ordner() const;
    /// What is copied.
    const std::string& datei(Gesichertes was) const {
        return was == Gesichertes::Datenbank ? datenbank_ : gamepadXml_;
    }

private:
    std::set<Sicherungstag> tage(Gesichertes was) const;
    std::string pfad(Gesichertes was, Sicherungstag tag) const;
    void ablegen(Gesichertes was, Sicherungstag heute, const std::string& inhalt) const;
    void aufraeumen(Gesichertes was, Sicherungstag heute) const;

    std::string datenbank_;
    std::string gamepadXml_;
};

/// Those of some days whose copies are kept.
std::set<Sicherungstag> zuBehalten(const std::set<Sicherungstag>& tage, Sicherungstag heute);
