// SPDX-License-Identifier: GPL-3.0-or-later
// A database of its own for a test, in a folder that goes with it, and raw access to it past the store.
#pragma once

#include "base/LaufzeitFehler.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

/// Rows of a query as text; Null is "NULL".
using Tabellenbild = std::vector<std::vector<std::string>>;

/// A new empty folder, removed with all that lies in it when it is destroyed.
class Testordner {
public:
    Testordner();
    ~Testordner();
    Testordner(const Testordner&) = delete;
    Testordner& operator=(const Testordner&) = delete;

    const std::filesystem::path& pfad() const { return pfad_; }

private:
    std::filesystem::path pfad_;
};

/// A second program on a database file: a connection that knows nothing of the store. It does not wait for
/// locks. An error of SQLite throws std::runtime_error with SQLite's text.
class RoheVerbindung {
public:
    explicit RoheVerbindung(const std::string& pfad);
    void sql(std::string_view text);
    Tabellenbild zeilen(std::string_view abfrage);

private:
    struct Schliesser {
        void operator()(sqlite3* verbindung) const noexcept;
    };
    std::unique_ptr<sqlite3, Schliesser> sqlite_;
};

/// A fresh copy of the empty Belegung.twk of the build.
class Testdatenbank {
public:
    Testdatenbank();

    /// Path of the file in UTF-8.
    std::string pfad() const { return pfad_.string(); }
    const std::filesystem::path& ordner() const { return ordner_.pfad(); }

    /// Runs statements on a connection of their own.
    void sql(std::string_view text) const;
    /// The rows of one query.
    Tabellenbild zeilen(std::string_view abfrage) const;
    /// All rows of all tables, to compare the whole content before and after.
    std::vector<Tabellenbild> inhalt() const;

private:
    Testordner ordner_;
    std::filesystem::path pfad_;
};

/// Number of the LaufzeitFehler that `arbeit` throws; 0 when it throws none.
template <class Arbeit> int fehlernummer(Arbeit&& arbeit) {
    try {
        arbeit();
    } catch (const LaufzeitFehler& fehler) {
        return fehler.zahl();
    }
    return 0;
}
