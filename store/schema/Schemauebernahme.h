// SPDX-License-Identifier: GPL-3.0-or-later
// What makes a `Schema` out of another one as a whole: taking one up from elsewhere, renaming, doubling.
//
// Each is one transaction, with pictures and axes: wholly done or not at all, also through a crash
// (store/schema/Schemabeiwerk.h says how). All throw LaufzeitFehler, and nothing has changed then.
#pragma once

#include "store/schema/Schemabeiwerk.h"
#include "store/schema/Schemadaten.h"

#include <string>
#include <string_view>
#include <vector>

/// Why a new `Schema` may not have this name, in German; "" where it may. Two whose names are one but for
/// case would share their pictures, and what lies under the name already would become its own; `ausser` is
/// the one that gives its own name up. Throws LaufzeitFehler where that can't be looked up.
std::string namenshindernis(const Schemaplatz& platz, const std::string& name,
                            const std::string& ausser = "");

/// A name like the one that is wished for, and free: with a number behind it where need be.
std::string freierName(const Schemaplatz& platz, const std::string& wunsch);

/// Makes a `Schema` of rows, axes and pictures; `bilder` gives the file of each of `endungen`.
void schemaAufnehmen(const Schemaplatz& platz, const std::string& name, const Schemadaten& daten,
                     const std::vector<std::string>& endungen, const Bildinhalt& bilder);

void schemaUmbenennen(const Schemaplatz& platz, const std::string& alt, const std::string& neu);

void schemaVerdoppeln(const Schemaplatz& platz, const std::string& von, const std::string& neu);
