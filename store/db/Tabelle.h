// SPDX-License-Identifier: GPL-3.0-or-later
// What the store knows of a table: its columns in physical order and the values that each of them takes.
//
// SQLite would take any value in any column. The width of a whole number is therefore kept here, by the
// declared type: SMALLINT holds 16 bits, every other INT 32 bits, all else is text.
#pragma once

#include "store/db/Wert.h"

#include <string>
#include <string_view>
#include <vector>

enum class Spaltenart { Text, Ganzzahl16, Ganzzahl32 };

struct Spalte {
    std::string name;
    Spaltenart art;
};

struct Tabelle {
    std::string name;
    std::string ort; ///< its name in a statement, with the file that it lies in
    std::vector<Spalte> spalten;

    /// Ordinal of a column by its name, without regard to case; throws 3265 for one that is not there.
    int ordinal(std::string_view spalte) const;
    /// Throws 3265 for an ordinal that no column has.
    const Spalte& spalte(int ordinal) const;
    /// All columns in physical order.
    std::vector<int> alle() const;
    std::vector<std::string> spaltennamen() const;
    /// Columns as a statement names them.
    std::string spaltenliste(const std::vector<int>& ordinale) const;
    /// Reads the row of a row id (the one parameter), all columns in physical order.
    std::string lesetext() const;
};

Spaltenart spaltenartAus(std::string_view deklaration);

/// The value as the column holds it: a number for a text column as text, a decimal text for a number column
/// as number. Throws 13 for a text that is no whole number, 6 for a number that the width does not hold.
Wert passendFuer(const Spalte& spalte, Wert wert);
