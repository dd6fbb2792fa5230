// SPDX-License-Identifier: GPL-3.0-or-later
// All rows of a `Schema` as statements that lay them into an empty database.
#pragma once

#include <string>
#include <vector>

/// The rows of the `Schema` as one-line INSERTs of a `Schema` that is called `alsName`; nothing where the
/// database has no such `Schema`. `Programmpfad` is left out, as a path tells of its user, and
/// `Funktion`, which is only shown. Throws LaufzeitFehler.
std::vector<std::string> SchemazeilenLesen(const std::string& pfad, const std::string& schemaName,
                                           const std::string& alsName);
