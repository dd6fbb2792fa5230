// SPDX-License-Identifier: GPL-3.0-or-later
// What belongs to a `Schema` beside the database: its pictures, its row of the axis file and what its runs
// have counted. This is the one place that knows all of it, for what copies, renames, takes up or clears a
// `Schema` away as a whole.
//
// The database alone says which `Schema`s there are. What lies beside it is laid before the commit that makes
// the `Schema` its owner, and cleared away after the commit that leaves it without one; a note on the disk,
// the Beiwerkvermerk, names whose it is in between:
//
//     note A, B        copy A's to B      COMMIT: A is B now       clear what has no owner      note goes
//     |----------------|------------------|------------------------|----------------------------|
//     a crash here leaves B's without     from here on it is A's
//     an owner: it is cleared away at     that is without one:
//     the next start                      the same
//
// So one rule mends every crash: of the names in a note, those that the database does not have lose what
// lies beside it.
#pragma once

#include "store/files/Gamepadtabelle.h"
#include "store/files/Verwahrdatei.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Database;

/// Where the things of all `Schema`s lie.
struct Schemaplatz {
    std::string datenbankPfad;
    std::string bilderPfad; ///< a folder
    std::string gamepadXml;
};

/// What stands behind the name of a `Schema` in the names of its pictures, layer by layer, left stick first.
const std::vector<std::string>& bildendungen();

/// Whether there are pictures of this name but for case.
bool hatBilder(const Schemaplatz& platz, const std::string& schemaName);

/// The row of a `Schema` in the axis file, without its name; nothing where there is none, or no file. Throws
/// LaufzeitFehler 3049 for a file that can't be read.
std::optional<Gamepadzeile> achsenzeileLesen(const std::string& gamepadXml, const std::string& schemaName);

/// The bytes of a picture file of any kind; throws LaufzeitFehler where it can't be read.
using Bildinhalt = std::function<std::string(std::string_view bildendung)>;

/// Lays axes and pictures for a new name, `bilder` asked for each of `endungen` in turn. Throws
/// LaufzeitFehler 3043 where one can't be written.
void beiwerkAnlegen(const Schemaplatz& platz, const std::string& schemaName,
                    const std::optional<Gamepadzeile>& achsen, const std::vector<std::string>& endungen,
                    const Bildinhalt& bilder);
/// Lays for `nach` what `von` has. Names that are one but for case share their pictures.
void beiwerkKopieren(const Schemaplatz& platz, const std::string& von, const std::string& nach);

/// Deletes the pictures of the three layers, "<name>0L.bmp" to "<name>2R.bmp" in any case of the letters, in
/// the folder `bilderPfad`. Those that are missing or can't be deleted stay without a word.
void StickBilderLoeschen(const std::string& bilderPfad, const std::string& schemaName);

/// Removes what lies under this name; pictures stay where `bilderBleiben`. False when some of it may still
/// be there.
bool beiwerkLoeschen(const Schemaplatz& platz, const std::string& schemaName, bool bilderBleiben);

/// What lay beside the database for a `Schema` that is deleted, so that it can be laid again.
struct Beiwerkablage {
    std::vector<Verwahrdatei> dateien; ///< pictures, and what runs have counted
    std::optional<Gamepadzeile> achsen;
};
/// Keeps it; the pictures not where `bilderBleiben`. Nothing where some of it can't be read.
std::optional<Beiwerkablage> beiwerkVerwahren(const Schemaplatz& platz, const std::string& schemaName,
                                              bool bilderBleiben);
/// What lies where it would go, in German; "" for nothing.
std::string beiwerkImWeg(const Schemaplatz& platz, const std::string& schemaName,
                         const Beiwerkablage& ablage);
/// Lays it again. Throws LaufzeitFehler 3043 where some of it can't be written.
void beiwerkZuruecklegen(const Schemaplatz& platz, const std::string& schemaName,
                         const Beiwerkablage& ablage);

/// Notes names for as long as it lives, then clears away what has no owner. Another one, of whatever copy of
/// the program, waits for it.
class Beiwerkvermerk {
public:
    /// The note is on the disk when this comes back. Throws LaufzeitFehler: 3218 where another copy keeps its
    /// note for more than two seconds, 3043 where it can't be written.
    Beiwerkvermerk(Schemaplatz platz, const std::vector<std::string>& namen);
    ~Beiwerkvermerk();
    Beiwerkvermerk(const Beiwerkvermerk&) = delete;
    Beiwerkvermerk& operator=(const Beiwerkvermerk&) = delete;

private:
    const Schemaplatz platz_;
    const std::string pfad_;
    int deskriptor_ = -1;
};

/// Clears away what a program that died has left without an owner. To be called before the `Schema`s are
/// read at start; does nothing where there is no note, or one whose writer lives. Throws nothing but
/// std::bad_alloc.
void beiwerkAufraeumen(const Schemaplatz& platz);
