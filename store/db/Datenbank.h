// SPDX-License-Identifier: GPL-3.0-or-later
// The table store: SQLite behind the few operations that the logic knows. This unit is a file of it, from its
// opening to its closing, with what is done to it as a whole; the sets of rows that it gives are Recordset's.
//
// Who uses the store includes this header. Inside, each unit stands on the ones before it: Wert (a value),
// Tabelle (columns and what fits in them), Zeilenschritt (what an act has changed), Verbindung (SQLite),
// Anweisungstext (a statement's text), Recordset (rows), Datenbank.
#pragma once

#include "base/LaufzeitFehler.h"
#include "store/db/Recordset.h"
#include "store/db/Zeilenschritt.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

class Verbindung;

/// Pastes a `Schema` name between the two pieces of a statement text. A name with an apostrophe would end the
/// literal early: it throws error 3075, so that nothing a user typed is ever run as a statement.
std::string anweisung(std::string_view bisZumNamen, std::string_view name, std::string_view danach = "';");

enum class Dateiteil;

/// Asks whether work that takes long is to go on; none for work that nobody waits for.
using Fortgang = std::function<bool()>;

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
    ///
    /// In a Lesezug the values of all rows come with the set. Where `spalten` are named only theirs do, and
    /// another one costs its row anew; 3265 for one that is not there.
    Recordset OpenRecordset(std::string_view source, std::initializer_list<std::string_view> spalten = {});

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

    /// Runs `arbeit` as inEinerTransaktion does, and gives `schritt` all that it has changed, so that it can
    /// be taken back; a null `schritt` gets nothing. Once `schritt` has it the change is in the file, and
    /// only then. Inside another transaction it is a part of that one, which `schritt` then hears nothing of.
    /// Throws 3034 inside another step.
    template <class Arbeit> void alsSchritt(Zeilenschritt* schritt, Arbeit&& arbeit) {
        if (!schritt)
            return inEinerTransaktion(arbeit);
        Zeilenschritt geschehener;
        inEinerTransaktion([&] {
            mitschreiben();
            try {
                arbeit();
                geschehener = mitgeschriebenes();
            } catch (...) {
                mitschriftVerwerfen();
                throw;
            }
        });
        *schritt = std::move(geschehener);
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

    /// From now on asks `weiter`, if there is one, many times a second while it works. Once that says no,
    /// what is being done throws 3059, and a transaction is rolled back by that. `weiter` must not throw.
    void fortgangFragen(const Fortgang& weiter);

    /// What the user is to know of the file before anything is done with it, in German: that it is one of a
    /// newer version, what that means and what helps. Mostly "".
    std::string hinweis();

    /// The whole file as it would lie on the disk, on one state of it and without a log. It is locked for no
    /// longer than it takes to be read into memory. Throws 3049 where anything in it is damaged, 3026 for
    /// one too large to be held, 3218 when it stays locked.
    std::string abbild();

    /// Opens a second file beside this one, once at most. A transaction of either then is one of both: all of
    /// its updates in both files or none, also through a crash. A `pfad` that leads to this very file, by
    /// whatever way, opens nothing and gives this file once more. Closing either closes both. Throws as
    /// OpenDatabase; besides 3343 when the two keep their texts in different encodings, 3027 when one of them
    /// is of a newer version.
    Database danebenOeffnen(const std::string& pfad);
    /// For a connection that stays open: a file that others have given a write-ahead log does without one
    /// from now on, where nobody else has it open. As long as one connection uses the log all must, and a
    /// transaction of two files, which can't, would find the file locked by our own.
    void ohneVorlauf() noexcept;
    /// Whether both are the same file of one connection.
    bool istDieselbeDatei(const Database& andere) const;

    /// Closes the file and every set on it; every later use throws 3420.
    void Close();

private:
    friend Database OpenDatabase(const std::string& pfad);
    friend class Zeilenschritt;
    Database(std::shared_ptr<Verbindung> verbindung, Dateiteil teil);
    Verbindung& offen() const;
    void beginnen();
    void festschreiben();
    void verwerfen() noexcept;
    void mitschreiben();
    Zeilenschritt mitgeschriebenes();
    void mitschriftVerwerfen() noexcept;
    void lesenBeginnen();
    void lesenBeenden() noexcept;
    std::shared_ptr<Verbindung> verbindung_; ///< null when closed
    Dateiteil teil_;
};

/// Opens the file; never creates one. Throws 3024 if it is not there, 3343 if it is no database or that of
/// another program, 3049 if it is damaged, 3051 if it must not be read, 3218 if it stays locked. A file that
/// may only be read opens, as does one of a newer version (store/db/Stempel.h); writing to it then throws
/// 3027.
Database OpenDatabase(const std::string& pfad);
