// SPDX-License-Identifier: GPL-3.0-or-later
// What a user does to a `Schema`, each an act that is wholly there or not at all, and a database to do it to.
#pragma once

#include "tests/hilfen/Testdatenbank.h"

#include <functional>
#include <string>
#include <vector>

/// Something that a user does, on a file in which "S" is whole, "halb" lacks rows and "neu" is not there.
struct Schematat {
    std::string name;
    std::function<void(const std::string& pfad, const std::string& bilder)> tun;
};

/// Those that change several rows or tables.
std::vector<Schematat> grosseTaten();
/// A step that is made again: it is taken down, rolled back and then written.
std::vector<Schematat> schritttaten();
/// Those that change one row.
std::vector<Schematat> kleineTaten();

/// Lays "S" and "halb".
void schemataLegen(const Testdatenbank& datei);
