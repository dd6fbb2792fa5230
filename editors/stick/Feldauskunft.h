// SPDX-License-Identifier: GPL-3.0-or-later
// What the fields of the layer shown do, in words: the actions as they are stored, found as a run finds them.
//
// It is read together with the symbols of the fields, so that picture and words say the same.
#pragma once

#include "base/Stickseite.h"
#include "editors/stick/Feldgitter.h"
#include "formats/Aktionsliste.h"
#include "store/db/Datenbank.h"

#include <map>
#include <optional>
#include <string>

class Feldauskunft {
public:
    /// Reads the actions of a layer and the names of their keys. Throws LaufzeitFehler of the store; what was
    /// read before is gone then.
    void lesen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene);
    void vergessen() { aktionen_.reset(); }

    /// What the stick does in a field, among `linien`: "Tastatur: B, gehalten", "gilt von Feld links: …".
    std::string worte(const Linienebene& linien, const Feldanker& anker) const;

private:
    std::optional<Aktionsliste> aktionen_;
    std::map<std::string, std::string> tastennamen_; ///< of the keys that stand in the actions, by number
};
