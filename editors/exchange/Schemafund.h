// SPDX-License-Identifier: GPL-3.0-or-later
// A `Schema` that was found in a file or in another database, whole and checked, before anything of it is
// stored; and the way back, a `Schema` of our own as the content of a file.
#pragma once

#include "store/db/Datenbank.h"
#include "store/schema/Schemabeiwerk.h"
#include "store/schema/Schemadatei.h"
#include "store/schema/Schemadaten.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <map>
#include <string>
#include <vector>

struct Schemafund {
    std::string name;
    std::string programm; ///< that wrote it; "" where nobody says
    Schemadaten daten;
    /// Pictures by what stands behind the `Schema` in their names. Each is decoded when it is asked for: six
    /// of a large screen fill a gigabyte.
    std::map<std::string, std::function<QImage()>> bilder;
    std::map<std::string, QImage> vorschau; ///< each of them, no larger than VORSCHAUBILD
};
inline constexpr QSize VORSCHAUBILD(768, 576);

/// Reads a file NAME.schema. Throws LaufzeitFehler with the reason; so does a picture that can't be decoded
/// or breaks a limit. `weiter` is asked from picture to picture; 3059 where it says no.
Schemafund fundInDatei(const std::string& pfad, const Fortgang& weiter = {});

/// The `Schema`s of a database that may come from anywhere. Throws LaufzeitFehler.
std::vector<std::string> schemataIn(const std::string& datenbankPfad);

/// Where the things of another database lie: "Bilder" and "Gamepad.xml" beside it.
Schemaplatz platzNeben(const std::string& datenbankPfad);

/// Reads a `Schema` of another database, with its pictures and its axes where they are. Throws as
/// fundInDatei; a picture that can't be read counts as missing, as it does in the editors.
Schemafund fundInDatenbank(const Schemaplatz& platz, const std::string& schemaName,
                           const Fortgang& weiter = {});

/// Stores it under a name, in one transaction with pictures and axes. Throws LaufzeitFehler.
void fundAufnehmen(const Schemaplatz& platz, const std::string& name, const Schemafund& fund,
                   const Fortgang& weiter = {});

/// A `Schema` of our own as a file has it; pictures that can't be read are left out and named. Throws
/// LaufzeitFehler.
struct Schemapackung {
    Schemapaket paket;
    std::vector<std::string> unlesbareBilder;
};
Schemapackung schemaPacken(const Schemaplatz& platz, const std::string& schemaName,
                           const std::string& programm, const Fortgang& weiter = {});
