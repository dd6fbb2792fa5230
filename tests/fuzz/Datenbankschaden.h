// SPDX-License-Identifier: GPL-3.0-or-later
// Damages a database in ways that find their place: an input is a few bytes, and its harm falls on what
// SQLite reads as structure.
//
//   first line   statements that run on the whole file before: other tables, other values, other schema texts
//   the rest     records of five bytes: what is done, then four bytes that say where and with what; one that
//                is cut off does nothing
//
// Whatever the bytes are, they are a damage.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class Datenbankschaden {
public:
    static constexpr std::size_t SATZ = 5; ///< bytes of a record

    /// `heil` is the content of a whole file with pages of 512 bytes.
    explicit Datenbankschaden(std::string heil);

    const std::string& heil() const { return heil_; }
    /// What the records make of the content.
    std::string angewandt(std::string inhalt, std::string_view saetze) const;

private:
    void merken(std::size_t stelle, std::size_t laenge);
    void seiteMerken(std::size_t seite);
    void satzAnwenden(std::string& inhalt, std::string_view satz) const;

    std::string heil_;
    std::vector<std::size_t> stellen_; ///< of bytes that are structure: heads, pointers, beginnings of cells
};

/// Runs the statements on the file as far as they go; none of them leaves the file, takes long or makes
/// anything large.
void anweisungenAusfuehren(const std::string& pfad, std::string_view anweisungen);
