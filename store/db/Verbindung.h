// SPDX-License-Identifier: GPL-3.0-or-later
// One connection to a SQLite file: opened, kept and closed in one object, every error as a LaufzeitFehler. A
// second file may be attached to it; then a transaction spans both.
//
// Statements are prepared once for a text and kept until the connection closes; one that is not being stepped
// holds no lock. The whole of SQLite's C interface is used in Verbindung.cpp only.
#pragma once

#include "store/db/Stempel.h"
#include "store/db/Tabelle.h"
#include "store/db/Wert.h"
#include "store/db/Zeilenmitschrift.h"
#include "store/db/Zelle.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// How long an operation waits for a file that another program has locked, before it fails unchanged.
inline constexpr int SPERRE_WARTEN_MS = 250;

/// Which file of a connection is meant: the one it was opened for, or the one that was opened beside it.
enum class Dateiteil { Erste, Zweite };

class Verbindung {
public:
    /// Opens an existing file; errors as OpenDatabase has them.
    explicit Verbindung(const std::string& pfad);
    ~Verbindung();
    Verbindung(const Verbindung&) = delete;
    Verbindung& operator=(const Verbindung&) = delete;

    /// Opens a second file, unless `pfad` leads to the first one; gives the one that it leads to. Errors as
    /// OpenDatabase has them.
    Dateiteil danebenOeffnen(const std::string& pfad);

    /// For a connection that stays open; see Database.
    void ohneVorlauf() noexcept;

    /// Rolls back what is not committed. Every later use throws 3420.
    void schliessen() noexcept;
    bool istOffen() const { return sqlite_ != nullptr; }

    /// One run through a statement. Finished when it is destroyed: no statement outlives the call that needs
    /// it.
    class Lauf {
    public:
        Lauf(Verbindung& verbindung, const std::string& text, const std::vector<Zelle>& zellen);
        ~Lauf();
        Lauf(const Lauf&) = delete;
        Lauf& operator=(const Lauf&) = delete;

        /// Steps on; true when a row stands ready.
        bool weiter();
        /// A column of that row.
        Wert wert(int spalte) const;
        /// The same in the kind that the file keeps it in.
        Zelle zelle(int spalte) const;

    private:
        void binden(int stelle, const Zelle& zelle);
        Verbindung& verbindung_;
        sqlite3_stmt* anweisung_;
    };

    /// Runs a statement that writes into a file, in a transaction, and stamps the file where it has no stamp;
    /// gives the number of rows that it changed. Throws 3027 for a file of a newer version.
    int schreiben(Dateiteil teil, const std::string& text, const std::vector<Zelle>& zellen);
    /// The row id of what was inserted last.
    std::int64_t letzteZeile() const;
    /// All columns of a row; nothing where there is none.
    std::optional<Zeilenbild> zeilenbild(const Tabelle& tabelle, std::int64_t zeile);

    /// Takes down what is written from now on, once at a time (3034), until it is asked for or dropped.
    void mitschreiben();
    Zeilenschritt mitgeschriebenes();
    void mitschriftVerwerfen() noexcept { mitschrift_.reset(); }
    /// Null while nothing is taken down.
    Zeilenmitschrift* mitschrift() { return mitschrift_ ? &*mitschrift_ : nullptr; }

    /// What the user is to know of the file before anything is done with it; mostly "".
    std::string hinweis();

    /// See Database.
    std::string abbild();

    /// Lets `weiter` be asked while statements run, each few thousand of their steps. Once it says no, what
    /// is on fails (3059). It must not use the connection.
    void fortgangFragen(std::function<bool()> weiter);

    /// The columns of a table, looked up once a connection. Throws 3078 for a name that is no
    /// table, and for a table that only computes what it shows.
    std::shared_ptr<const Tabelle> tabelle(Dateiteil teil, std::string_view name);

    /// Throws 3049 for more rows than the file has room for: then it leads to some of them more than once.
    void zeilenPruefen(Dateiteil teil, std::size_t zeilen);

    /// A transaction; one inside another is a part of it that can be rolled back by itself.
    void beginnen();
    void festschreiben();
    void verwerfen() noexcept;

    /// Reading on one state of the file, not inside a transaction nor inside itself (3034).
    void lesenBeginnen();
    void lesenBeenden() noexcept;
    bool imLesezug() const { return lesezug_; }
    /// The number of the Lesezug that is on, or was last: what was read in another one may be stale.
    std::uint64_t lesezug() const { return lesezuege_; }

private:
    struct Schliesser {
        void operator()(sqlite3* verbindung) const noexcept;
        void operator()(sqlite3_stmt* anweisung) const noexcept;
    };

    static int sollEnden(void* verbindung);
    void oeffnen(int art);
    void einarbeiten(bool an);
    std::int64_t kopfzahl(Dateiteil teil, const char* name);
    Stempel stempelLesen(Dateiteil teil);
    Stempel schreibbarerStempel(Dateiteil teil);
    void stempeln(Dateiteil teil);
    int gestempeltSchreiben(Dateiteil teil, const std::string& text, const std::vector<Zelle>& zellen);
    int aendern(const std::string& text, const std::vector<Zelle>& zellen);
    sqlite3_stmt* vorbereitet(const std::string& text);
    void ausfuehren(const std::string& text);
    void anhaengen(const std::string& pfad);
    void rollbackJournal(const char* datei);
    void transaktionPruefen() const;
    std::string betroffene(int sqliteNummer) const;
    [[noreturn]] void melden(int sqliteNummer) const;

    std::vector<std::string> pfade_;                         ///< by Dateiteil
    std::unordered_map<std::string, std::string> lesetexte_; ///< by the table's name in a statement
    std::unique_ptr<sqlite3, Schliesser> sqlite_;
    std::unordered_map<std::string, std::unique_ptr<sqlite3_stmt, Schliesser>> anweisungen_;
    std::unordered_map<std::string, std::shared_ptr<const Tabelle>> tabellen_; ///< by file and name
    bool neuer_ = false;               ///< the first file is one of a newer version
    std::array<bool, 2> gestempelt_{}; ///< by Dateiteil: has a valid stamp, as this transaction has seen
    int tiefe_ = 0;                    ///< of transactions inside each other
    bool lesezug_ = false;
    std::function<bool()> weiter_;
    bool abgebrochen_ = false; ///< whether it said no to the statement that runs
    int fragen_ = 0;           ///< how often SQLite asked whether the statement that runs is to go on
    std::uint64_t lesezuege_ = 0;
    std::optional<Zeilenmitschrift> mitschrift_;
};
