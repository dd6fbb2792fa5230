// SPDX-License-Identifier: GPL-3.0-or-later
// Files that may not be written or read, also for tests that root runs.
#pragma once

#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <filesystem>

/// Sets the permissions of a folder and of the database in it, and gives them back.
class Rechte {
public:
    Rechte(const Testdatenbank& datei, unsigned ordner, unsigned rechte) : datei_(datei) {
        std::filesystem::permissions(datei_.pfad(), std::filesystem::perms(rechte));
        std::filesystem::permissions(datei_.ordner(), std::filesystem::perms(ordner));
    }
    ~Rechte() {
        std::filesystem::permissions(datei_.ordner(), std::filesystem::perms::owner_all);
        std::filesystem::permissions(datei_.pfad(), std::filesystem::perms::owner_all);
    }
    Rechte(const Rechte&) = delete;
    Rechte& operator=(const Rechte&) = delete;

private:
    const Testdatenbank& datei_;
};

/// Number of the LaufzeitFehler that `arbeit` throws while the database can only be read; 0 for none.
template <class Arbeit> int fehlernummerNurLesend(const Testdatenbank& datei, Arbeit&& arbeit) {
    const Rechte rechte(datei, 0555, 0444);
    const AlsNiemand niemand;
    return fehlernummer(arbeit);
}
