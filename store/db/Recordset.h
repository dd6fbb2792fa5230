// SPDX-License-Identifier: GPL-3.0-or-later
// A set of rows: a list of row ids, fixed when it is opened; values are read live. No statement stays open
// between two calls, so a reader never blocks another program's write.
#pragma once

#include "store/db/Wert.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string_view>

class Verbindung;
enum class Dateiteil;

/// A set of rows with a cursor. It is fixed when it is opened: rows that are added later, by this set or by
/// others, are not in it, and one that others delete stays in it as a row that is not there (3021). Whatever
/// moves the cursor, deletes or begins another change drops a change that was begun.
class Recordset {
public:
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    /// True when there is no current row; true at once for an empty set. After Delete it is false until
    /// MoveNext.
    bool get_EOF() const;
    /// Number of rows of the set when it was opened.
    std::int32_t get_RecordCount() const;

    /// To the first row; throws 3021 on an empty set.
    void MoveFirst();
    /// To the next row, at last behind the last one; throws 3021 when it is there already.
    void MoveNext();

    /// Starts a new row: columns that are not put get their defaults. The cursor stays where it is.
    void AddNew();
    /// Starts changing the current row; throws 3021 without one.
    void Edit();
    /// Writes what was put since AddNew or Edit, all of it or nothing. Throws 3020 without one of them, 3021
    /// when the row is gone, 3022 for a unique key that exists, 3314 for Null in a column that needs a
    /// value, 3317 for a value that another rule of the table forbids, 3218 when the file stays locked. The
    /// buffered change is gone after an error.
    void Update();
    /// Deletes the current row; the position is a hole until MoveNext. Throws 3021 without a current row.
    void Delete();

    /// Makes the current row part of the step that is being taken down (Database::alsSchritt), also where the
    /// step leaves it as it is: taking the step back then asks that nobody has changed it. Without a step
    /// nothing happens. Throws 3021 without a current row.
    void bezeugen() const;

    /// Reads a column of the current row, by name (without regard to case) or by ordinal from 0. What was put
    /// since AddNew or Edit reads back; the rest of a new row is Null until Update. Throws 3021 without a
    /// current row, 3265 for a column that is not there.
    Wert get_Value(std::string_view spalte) const;
    Wert get_Value(int ordinal) const;

    /// Puts a value into the row begun with AddNew or Edit; throws 3020 without one. A text for a number
    /// throws 13, a number that the column's width does not hold throws 6; the old value stays. A decimal
    /// text for a number and a number for a text are converted.
    void put_Value(std::string_view spalte, Wert wert);
    void put_Value(int ordinal, Wert wert);

    /// Releases the set; every later use throws 3420.
    void Close();

private:
    friend class Database;
    struct Innen;
    Recordset(std::shared_ptr<Verbindung> verbindung, Dateiteil teil, std::string_view source,
              std::initializer_list<std::string_view> spalten);
    Innen& offen() const;
    std::unique_ptr<Innen> innen_;
};
