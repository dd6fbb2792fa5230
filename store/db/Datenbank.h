// The table store: SQLite behind the few operations that the logic knows.
//
// A set is a list of row ids, fixed when it is opened; values are read live. No statement stays open between
// two calls, so a reader never blocks another program's write.
#pragma once

#include "base/LaufzeitFehler.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

class Recordset;
class Verbindung;

/// Value of a column: Null, a whole number or a text in UTF-8.
using Wert = std::variant<std::monostate, std::int64_t, std::string>;

inline bool istNull(const Wert& wert) {
    return std::holds_alternative<std::monostate>(wert);
}
/// The value as text; Null gives "".
std::string alsText(const Wert& wert);
/// The value as number; Null and a text that is no plain whole number throw error 13, one beyond 64 bits
/// error 6.
std::int64_t alsZahl(const Wert& wert);

/// How long an operation waits for a file that another program has locked, before it fails unchanged.
inline constexpr int SPERRE_WARTEN_MS = 250;

/// Pastes a `Schema` name between the two pieces of a statement text. A name with an apostrophe would end the
/// literal early: it throws error 3075, so that nothing a user typed is ever run as a statement.
std::string anweisung(std::string_view bisZumNamen, std::string_view name, std::string_view danach = "';");

/// Which file of a connection is meant: the one it was opened for, or the one that was opened beside it.
enum class Dateiteil { Erste, Zweite };

/// An open database file. Closes it when destroyed; sets that are still open then throw 3420.
class Database {
public:
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

    /// Opens a set. `source` is a table name or a text "SELECT * FROM table [WHERE ...] [ORDER BY ...];".
    /// Rows come in stored order; so do those that an ORDER BY leaves equal. Names are matched without regard
    /// to case. The cursor stands on the first row. Throws 3075 for a text of another shape, 3078 for a table
    /// that is not there, 3218 when the file stays locked.
    Recordset OpenRecordset(std::string_view source);

    /// Runs `arbeit` in one transaction: all of its updates or none, also through a crash. An exception rolls
    /// back and goes on to the caller. Inside another transaction it is a part of that one. Throws 3218 when
    /// the file stays locked, 3027 for a file that can only be read, 3026 on a full disk; nothing is changed
    /// then.
    template <class Arbeit> void inEinerTransaktion(Arbeit&& arbeit) {
        beginnen();
        try {
            arbeit();
        } catch (...) {
            verwerfen();
            throw;
        }
        festschreiben();
    }

    /// Runs `arbeit`, which only reads, on one state of the file: what others write meanwhile is not seen.
    /// The file is locked once instead of for each value, and a row is fetched once for all of its columns,
    /// so many small reads become cheap. Writing in it throws 3034. Throws 3218 when the file stays locked.
    template <class Arbeit> void inEinemLesezug(Arbeit&& arbeit) {
        lesenBeginnen();
        try {
            arbeit();
        } catch (...) {
            lesenBeenden();
            throw;
        }
        lesenBeenden();
    }

    /// Opens a second file beside this one, once at most. A transaction of either then is one of both: all of
    /// its updates in both files or none, also through a crash. A `pfad` that leads to this very file, by
    /// whatever way, opens nothing and gives this file once more. Closing either closes both. Throws as
    /// OpenDatabase; besides 3343 when the two keep their texts in different encodings.
    Database danebenOeffnen(const std::string& pfad);
    /// Whether both are the same file of one connection.
    bool istDieselbeDatei(const Database& andere) const;

    /// Closes the file and every set on it; every later use throws 3420.
    void Close();

private:
    friend Database OpenDatabase(const std::string& pfad);
    explicit Database(std::shared_ptr<Verbindung> verbindung, Dateiteil teil = Dateiteil::Erste);
    Verbindung& offen() const;
    void beginnen();
    void festschreiben();
    void verwerfen() noexcept;
    void lesenBeginnen();
    void lesenBeenden() noexcept;
    std::shared_ptr<Verbindung> verbindung_; ///< null when closed
    Dateiteil teil_;
};

/// Opens the file; never creates one. Throws 3024 if it is not there, 3343 if it is no database, 3049 if it
/// is damaged, 3051 if it must not be read, 3218 if it stays locked. A file that may only be read opens;
/// writing to it then throws 3027.
Database OpenDatabase(const std::string& pfad);

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
    Innen& offen() const;
    explicit Recordset(std::unique_ptr<Innen> innen);
    std::unique_ptr<Innen> innen_;
};
