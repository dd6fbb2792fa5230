// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/db/Verbindung.h"

#include "store/db/Namen.h"

#include <sqlite3.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

namespace {

namespace fs = std::filesystem;

struct Meldung {
    Fehlernummer nummer;
    std::string_view text; ///< "%" stands for the file
};

/// A table may have rules of its own; only a unique key is one that a row of the same name violates.
Meldung meldungFuerRegel(int sqliteNummer) {
    switch (sqliteNummer) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return {Fehlernummer::DoppelterSchluessel, "Einen Satz mit diesem Schlüssel gibt es schon."};
    case SQLITE_CONSTRAINT_NOTNULL:
        return {Fehlernummer::FeldOhneWert, "Ein Feld, das einen Wert braucht, ist leer."};
    default:
        return {Fehlernummer::RegelVerletzt, "Eine Regel der Datenbank „%“ lässt diesen Wert nicht zu."};
    }
}

Meldung meldungFuer(int sqliteNummer) {
    switch (sqliteNummer & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {Fehlernummer::Gesperrt, "Die Datenbank „%“ ist von einem anderen Programm gesperrt."};
    case SQLITE_FULL:
        return {Fehlernummer::KeinPlatz, "Kein Platz mehr auf dem Datenträger für die Datenbank „%“."};
    case SQLITE_READONLY:
        return {Fehlernummer::NurLesen, "Die Datenbank „%“ kann nur gelesen werden."};
    case SQLITE_CORRUPT:
    case SQLITE_INTERRUPT: // a statement that found no end
    case SQLITE_TOOBIG:    // a value that nobody has saved
        return {Fehlernummer::DateiBeschaedigt, "Die Datenbank „%“ ist beschädigt."};
    case SQLITE_NOTADB:
        return {Fehlernummer::KeineDatenbank, "Die Datei „%“ ist keine Datenbank."};
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return {Fehlernummer::KeinZugriff, "Kein Zugriff auf die Datenbank „%“."};
    case SQLITE_CONSTRAINT:
        return meldungFuerRegel(sqliteNummer);
    case SQLITE_ERROR:
        return {Fehlernummer::Syntax, "Syntaxfehler in der Datenbankabfrage."};
    default:
        return {Fehlernummer::EinAusgabe, "Fehler beim Zugriff auf den Datenträger der Datenbank „%“."};
    }
}

std::string mitPfad(std::string_view text, const std::string& pfad) {
    std::string ganz(text);
    if (const std::size_t stelle = ganz.find('%'); stelle != std::string::npos)
        ganz.replace(stelle, 1, pfad);
    return ganz;
}

LaufzeitFehler fehler(Fehlernummer nummer, std::string_view text, const std::string& pfad) {
    return {nummer, mitPfad(text, pfad)};
}

std::string neuerText(const Stempel& stempel) {
    return "Die Datenbank „%“ gehört zu einer neueren Version des Programms: Sie hat Fassung " +
           std::to_string(stempel.fassung) + ", diese Version kennt Fassung " +
           std::to_string(EIGENER_STEMPEL.fassung) + ".";
}

/// The files' names in statements, by Dateiteil.
constexpr std::array<const char*, 2> DATEINAMEN{"main", "zweite"};

constexpr std::size_t index(Dateiteil teil) {
    return static_cast<std::size_t>(teil);
}

// By the format of a SQLite file.
constexpr std::uintmax_t KLEINSTE_SEITE = 512;
constexpr std::int64_t KLEINSTE_ZEILE = 6; ///< bytes of a row with the pointer to it

// How far a statement goes before it counts as one without an end. The pages of a damaged file may lead from
// one to the other in ways that take longer than a life; a whole file of a million rows is read to its
// end. So many steps take a fraction of a millisecond.
constexpr int SCHRITTE_JE_FRAGE = 5000;
constexpr int MEISTE_FRAGEN = 4000;

struct Obergrenze {
    int art;
    int wert;
};

/// What SQLite itself advises for files from anywhere, with room for the statements and tables of this store
/// and for rules that others gave a table. A value of more bytes than the first lies in no whole file.
constexpr std::array<Obergrenze, 6> OBERGRENZEN{{{SQLITE_LIMIT_LENGTH, 1'000'000},
                                                 {SQLITE_LIMIT_SQL_LENGTH, 100'000},
                                                 {SQLITE_LIMIT_COLUMN, 200},
                                                 {SQLITE_LIMIT_EXPR_DEPTH, 100},
                                                 {SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 50},
                                                 {SQLITE_LIMIT_ATTACHED, 1}}};

/// SQLite says of a file that is not there and of a directory no more than that it cannot open them, and
/// takes an empty file for a database without tables; these are told apart here.
void dateiPruefen(const std::string& pfad) {
    std::error_code grund;
    const fs::file_status stand = fs::status(pfad, grund);
    if (stand.type() == fs::file_type::not_found)
        throw fehler(Fehlernummer::KeineDatei, "Die Datenbank „%“ gibt es nicht.", pfad);
    if (stand.type() == fs::file_type::none || stand.type() == fs::file_type::unknown)
        throw fehler(Fehlernummer::KeinZugriff, meldungFuer(SQLITE_CANTOPEN).text, pfad);
    if (stand.type() != fs::file_type::regular || fs::file_size(pfad, grund) < KLEINSTE_SEITE)
        throw fehler(Fehlernummer::KeineDatenbank, meldungFuer(SQLITE_NOTADB).text, pfad);
    // SQLite would wait for ever to read a pipe.
    const auto journal = fs::status(pfad + "-journal", grund).type();
    if (journal == fs::file_type::fifo)
        throw fehler(Fehlernummer::KeinZugriff, meldungFuer(SQLITE_CANTOPEN).text, pfad);
}

/// A database may come from anywhere: nothing that lies in it is trusted to run, and a misspelt column is an
/// error and not a text. DEFENSIVE is not needed beside that: what it forbids takes statements that
/// Anweisungstext lets nobody write.
void absichern(sqlite3* sqlite) {
    sqlite3_extended_result_codes(sqlite, 1);
    sqlite3_busy_timeout(sqlite, SPERRE_WARTEN_MS);
    sqlite3_db_config(sqlite, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(sqlite, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(sqlite, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    for (const auto& [art, wert] : OBERGRENZEN)
        sqlite3_limit(sqlite, art, wert);
}

} // namespace

void Verbindung::Schliesser::operator()(sqlite3* verbindung) const noexcept {
    sqlite3_close_v2(verbindung);
}
void Verbindung::Schliesser::operator()(sqlite3_stmt* anweisung) const noexcept {
    sqlite3_finalize(anweisung);
}

Verbindung::Verbindung(const std::string& pfad) : pfade_{pfad} {
    dateiPruefen(pfad);
    oeffnen(SQLITE_OPEN_READWRITE);
    neuer_ = stempelart(stempelLesen(Dateiteil::Erste)) == Stempelart::Neuer;
    if (neuer_) {
        schliessen();
        oeffnen(SQLITE_OPEN_READONLY);
    } else {
        einarbeiten(true);
    }
}

Verbindung::~Verbindung() = default;

/// What is opened is not known yet: nothing of it changes until its stamp has been read.
void Verbindung::oeffnen(int art) {
    // An absolute path, so that names like ":memory:" are what they are everywhere else: names of files.
    const std::string absolut = fs::absolute(pfade_[0]).string();
    sqlite3* sqlite = nullptr;
    const int nummer = sqlite3_open_v2(absolut.c_str(), &sqlite, art | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite_.reset(sqlite);
    if (nummer != SQLITE_OK)
        melden(nummer);
    absichern(sqlite);
    sqlite3_progress_handler(sqlite, SCHRITTE_JE_FRAGE, sollEnden, this);
    einarbeiten(false);
    // The first look into the file, which finds out whether it is a database at all. EXTRA: an Update that
    // has come back lies on the disk. FULL would not sync the folder after the journal has gone from it: the
    // journal could stand there again after a power cut, and roll the Update back.
    ausfuehren("PRAGMA synchronous = EXTRA");
}

/// SQLite asks while a statement runs; anything but 0 ends it.
int Verbindung::sollEnden(void* verbindung) {
    auto& diese = *static_cast<Verbindung*>(verbindung);
    diese.abgebrochen_ = diese.weiter_ && !diese.weiter_();
    return diese.abgebrochen_ || ++diese.fragen_ > MEISTE_FRAGEN ? 1 : 0;
}

/// Whether closing brings a write-ahead log, which others may have given a file, into it.
void Verbindung::einarbeiten(bool an) {
    sqlite3_db_config(sqlite_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, an ? 0 : 1, nullptr);
}

Dateiteil Verbindung::danebenOeffnen(const std::string& pfad) {
    dateiPruefen(pfad);
    std::error_code egal; // a first file that is gone meanwhile is none of the two
    if (fs::equivalent(pfad, pfade_[0], egal))
        return Dateiteil::Erste;
    schreibbarerStempel(Dateiteil::Erste);
    einarbeiten(false);
    anhaengen(pfad);
    schreibbarerStempel(Dateiteil::Zweite);
    for (const char* datei : DATEINAMEN)
        rollbackJournal(datei);
    return Dateiteil::Zweite;
}

void Verbindung::anhaengen(const std::string& pfad) {
    try {
        Lauf(*this, "ATTACH ? AS zweite", {fs::absolute(pfad).string()}).weiter();
    } catch (const LaufzeitFehler& grund) {
        // What fails here is the second file, though SQLite's number does not tell.
        if (grund.nummer() == Fehlernummer::Syntax)
            throw fehler(Fehlernummer::KeineDatenbank,
                         "Die Datenbank „%“ hat eine andere Zeichenkodierung als die erste.", pfad);
        throw fehler(grund.nummer(), meldungFuer(sqlite3_errcode(sqlite_.get())).text, pfad);
    }
    pfade_.push_back(pfad);
    ausfuehren("PRAGMA zweite.synchronous = EXTRA");
}

/// Only rollback journals know of each other: a file with a write-ahead log, which others may have given it,
/// would be committed by itself.
void Verbindung::rollbackJournal(const char* datei) {
    Lauf lauf(*this, std::string("PRAGMA ") + datei + ".journal_mode = DELETE", {});
    if (!lauf.weiter() || alsText(lauf.wert(0)) != "delete")
        melden(SQLITE_LOCKED);
}

void Verbindung::ohneVorlauf() noexcept {
    if (neuer_)
        return;
    try {
        rollbackJournal(DATEINAMEN[index(Dateiteil::Erste)]);
    } catch (const std::exception&) { // others have it open: then it stays, as they want it
    }
}

// --- the stamp ---

std::int64_t Verbindung::kopfzahl(Dateiteil teil, const char* name) {
    Lauf lauf(*this, std::string("PRAGMA ") + DATEINAMEN[index(teil)] + '.' + name, {});
    return lauf.weiter() ? alsZahl(lauf.wert(0)) : 0;
}

/// Throws 3343 for the stamp of another program.
Stempel Verbindung::stempelLesen(Dateiteil teil) {
    const Stempel stempel{kopfzahl(teil, "application_id"), kopfzahl(teil, "user_version")};
    if (stempelart(stempel) == Stempelart::Fremd)
        throw fehler(Fehlernummer::KeineDatenbank, "Die Datei „%“ ist die Datenbank eines anderen Programms.",
                     pfade_[index(teil)]);
    return stempel;
}

/// Besides throws 3027 for that of a newer version.
Stempel Verbindung::schreibbarerStempel(Dateiteil teil) {
    const Stempel stempel = stempelLesen(teil);
    if (stempelart(stempel) == Stempelart::Neuer)
        throw fehler(Fehlernummer::NurLesen, neuerText(stempel) + " Sie wird nur gelesen.",
                     pfade_[index(teil)]);
    return stempel;
}

void Verbindung::stempeln(Dateiteil teil) {
    const std::string datei = std::string("PRAGMA ") + DATEINAMEN[index(teil)];
    ausfuehren(datei + ".application_id = " + std::to_string(EIGENER_STEMPEL.programm));
    ausfuehren(datei + ".user_version = " + std::to_string(EIGENER_STEMPEL.fassung));
}

std::string Verbindung::hinweis() {
    if (!neuer_)
        return "";
    const std::string text =
        neuerText(stempelLesen(Dateiteil::Erste)) +
        "\n\nIhre Schemata lassen sich starten, aber nicht ändern: In die Datei wird nichts geschrieben. "
        "Zum Ändern installieren Sie bitte die neuere Version des Programms.";
    return mitPfad(text, pfade_[0]);
}

// --- the whole file ---

namespace {

using Speicher = std::unique_ptr<sqlite3, decltype(&sqlite3_close_v2)>;

constexpr std::uintmax_t GROESSTES_ABBILD = 256 * 1024 * 1024;
constexpr std::array<std::size_t, 2> VORLAUFSTELLEN{18, 19}; // of the header, by SQLite's file format
constexpr char OHNE_VORLAUF = 1;

Speicher imSpeicher() {
    sqlite3* sqlite = nullptr;
    sqlite3_open_v2(":memory:", &sqlite, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    absichern(sqlite);
    return {sqlite, sqlite3_close_v2};
}

/// What SQLite finds when it looks at each page, "ok" or the first fault; "" where it can't even do that.
std::string befund(std::string& inhalt) {
    const auto sqlite = imSpeicher();
    std::string text;
    const auto laenge = static_cast<sqlite3_int64>(inhalt.size());
    auto* bytes = reinterpret_cast<unsigned char*>(inhalt.data());
    if (sqlite3_deserialize(sqlite.get(), "main", bytes, laenge, laenge, SQLITE_DESERIALIZE_READONLY) ==
        SQLITE_OK)
        sqlite3_exec(
            sqlite.get(), "PRAGMA quick_check(1)",
            [](void* ziel, int, char** werte, char**) {
                *static_cast<std::string*>(ziel) = werte[0];
                return 0;
            },
            &text, nullptr);
    return text;
}

} // namespace

std::string Verbindung::abbild() {
    std::error_code egal;
    if (const auto groesse = fs::file_size(pfade_[0], egal); !egal && groesse > GROESSTES_ABBILD)
        throw fehler(Fehlernummer::KeinPlatz, "Die Datenbank „%“ ist zu groß für eine Sicherung.", pfade_[0]);
    auto kopie = imSpeicher();
    auto* zug = sqlite3_backup_init(kopie.get(), "main", sqlite_.get(), "main");
    const int nummer = sqlite3_backup_step(zug, -1);
    sqlite3_backup_finish(zug);
    if (nummer != SQLITE_DONE)
        melden(nummer);
    sqlite3_int64 laenge = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
        sqlite3_serialize(kopie.get(), "main", &laenge, 0), sqlite3_free);
    if (!bytes)
        throw std::bad_alloc();
    kopie.reset(); // of a large file there are copies enough
    std::string inhalt(reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(laenge));
    for (const auto stelle : VORLAUFSTELLEN)
        inhalt.at(stelle) = OHNE_VORLAUF;
    if (befund(inhalt) != "ok")
        throw fehler(Fehlernummer::DateiBeschaedigt, meldungFuer(SQLITE_CORRUPT).text, pfade_[0]);
    return inhalt;
}

// --- statements ---

void Verbindung::schliessen() noexcept {
    anweisungen_.clear();
    sqlite_.reset();
}

sqlite3_stmt* Verbindung::vorbereitet(const std::string& text) {
    if (!sqlite_)
        throw LaufzeitFehler(Fehlernummer::ObjektGeschlossen, "Die Datenbank ist geschlossen.");
    auto& anweisung = anweisungen_[text];
    if (!anweisung) {
        sqlite3_stmt* neu = nullptr;
        const int nummer = sqlite3_prepare_v3(sqlite_.get(), text.data(), static_cast<int>(text.size()),
                                              SQLITE_PREPARE_PERSISTENT, &neu, nullptr);
        if (nummer != SQLITE_OK)
            melden(nummer);
        anweisung.reset(neu);
    }
    return anweisung.get();
}

Verbindung::Lauf::Lauf(Verbindung& verbindung, const std::string& text, const std::vector<Zelle>& zellen)
    : verbindung_(verbindung), anweisung_(verbindung.vorbereitet(text)) {
    verbindung.fragen_ = 0;
    verbindung.abgebrochen_ = false;
    int stelle = 0;
    for (const Zelle& zelle : zellen)
        binden(++stelle, zelle);
}

Verbindung::Lauf::~Lauf() {
    sqlite3_reset(anweisung_);
    sqlite3_clear_bindings(anweisung_);
}

void Verbindung::Lauf::binden(int stelle, const Zelle& zelle) {
    int nummer = SQLITE_OK; // what is not bound is Null
    if (const auto* zahl = std::get_if<std::int64_t>(&zelle))
        nummer = sqlite3_bind_int64(anweisung_, stelle, *zahl);
    else if (const auto* text = std::get_if<std::string>(&zelle))
        nummer = sqlite3_bind_text64(anweisung_, stelle, text->data(), text->size(), SQLITE_TRANSIENT,
                                     SQLITE_UTF8);
    else if (const auto* bruch = std::get_if<double>(&zelle))
        nummer = sqlite3_bind_double(anweisung_, stelle, *bruch);
    else if (const auto* folge = std::get_if<Bytefolge>(&zelle))
        nummer = sqlite3_bind_blob64(anweisung_, stelle, folge->bytes.data(), folge->bytes.size(),
                                     SQLITE_TRANSIENT);
    if (nummer != SQLITE_OK)
        verbindung_.melden(nummer);
}

bool Verbindung::Lauf::weiter() {
    const int nummer = sqlite3_step(anweisung_);
    if (nummer != SQLITE_ROW && nummer != SQLITE_DONE)
        verbindung_.melden(nummer);
    return nummer == SQLITE_ROW;
}

Wert Verbindung::Lauf::wert(int spalte) const {
    switch (sqlite3_column_type(anweisung_, spalte)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return std::int64_t{sqlite3_column_int64(anweisung_, spalte)};
    default: { // fractions and blobs, which this store never writes, read as their text
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(anweisung_, spalte));
        const auto laenge = static_cast<std::size_t>(sqlite3_column_bytes(anweisung_, spalte));
        return text ? std::string(text, laenge) : std::string();
    }
    }
}

Zelle Verbindung::Lauf::zelle(int spalte) const {
    switch (sqlite3_column_type(anweisung_, spalte)) {
    case SQLITE_FLOAT:
        return sqlite3_column_double(anweisung_, spalte);
    case SQLITE_BLOB: {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(anweisung_, spalte));
        const auto laenge = static_cast<std::size_t>(sqlite3_column_bytes(anweisung_, spalte));
        return Bytefolge{bytes ? std::string(bytes, laenge) : std::string()};
    }
    default:
        return ::zelle(wert(spalte));
    }
}

void Verbindung::ausfuehren(const std::string& text) {
    Lauf lauf(*this, text, {});
    while (lauf.weiter()) {
    }
}

int Verbindung::schreiben(Dateiteil teil, const std::string& text, const std::vector<Zelle>& zellen) {
    if (tiefe_ > 0) {
        transaktionPruefen();
        return gestempeltSchreiben(teil, text, zellen);
    }
    beginnen();
    int geaendert = 0;
    try {
        geaendert = gestempeltSchreiben(teil, text, zellen);
    } catch (...) {
        verwerfen();
        throw;
    }
    festschreiben();
    return geaendert;
}

/// The stamp is read under the lock for writing: a newer program may have changed the file since it was
/// opened. Nobody else changes it while the lock is held, so it is read once for all writes of a transaction.
int Verbindung::gestempeltSchreiben(Dateiteil teil, const std::string& text,
                                    const std::vector<Zelle>& zellen) {
    auto& gueltig = gestempelt_[index(teil)];
    const bool alt = !gueltig && stempelart(schreibbarerStempel(teil)) == Stempelart::Aelter;
    const int geaendert = aendern(text, zellen);
    if (alt && geaendert > 0)
        stempeln(teil);
    gueltig = !alt || geaendert > 0;
    return geaendert;
}

int Verbindung::aendern(const std::string& text, const std::vector<Zelle>& zellen) {
    Lauf lauf(*this, text, zellen);
    lauf.weiter();
    return sqlite3_changes(sqlite_.get());
}

std::int64_t Verbindung::letzteZeile() const {
    return sqlite3_last_insert_rowid(sqlite_.get());
}

std::optional<Zeilenbild> Verbindung::zeilenbild(const Tabelle& tabelle, std::int64_t zeile) {
    auto& text =
        lesetexte_[tabelle.ort]; // to make it anew for each of many rows takes longer than to read one
    if (text.empty())
        text = tabelle.lesetext();
    Lauf lauf(*this, text, {zeile});
    if (!lauf.weiter())
        return std::nullopt;
    std::vector<Zelle> zellen;
    zellen.reserve(tabelle.spalten.size());
    for (std::size_t i = 0; i < tabelle.spalten.size(); ++i)
        zellen.push_back(lauf.zelle(static_cast<int>(i)));
    return Zeilenbild(zellen);
}

void Verbindung::mitschreiben() {
    if (mitschrift_)
        throw LaufzeitFehler(Fehlernummer::KeineTransaktion, "In einem Schritt beginnt kein weiterer.");
    mitschrift_.emplace(
        [this](const Tabelle& tabelle, std::int64_t zeile) { return zeilenbild(tabelle, zeile); });
}

Zeilenschritt Verbindung::mitgeschriebenes() {
    auto schritt = mitschrift_->schritt();
    mitschrift_.reset();
    return schritt;
}

void Verbindung::fortgangFragen(std::function<bool()> weiter) {
    weiter_ = std::move(weiter);
}

std::shared_ptr<const Tabelle> Verbindung::tabelle(Dateiteil teil, std::string_view name) {
    const std::string datei = DATEINAMEN[index(teil)];
    auto& bekannt = tabellen_[datei + '.' + kleinGeschrieben(name)];
    if (bekannt)
        return bekannt;
    Tabelle gefunden;
    bool berechnet = false;
    Lauf lauf(
        *this,
        "SELECT t.name, s.name, s.type, s.hidden FROM " + datei +
            ".sqlite_schema t, pragma_table_list(t.name) l, pragma_table_xinfo(t.name, ?) s "
            "WHERE t.type = 'table' AND t.name = ? COLLATE NOCASE AND l.type = 'table' AND l.schema = ? "
            "ORDER BY s.cid",
        {datei, std::string(name), datei});
    while (lauf.weiter()) {
        gefunden.name = alsText(lauf.wert(0));
        gefunden.ort = datei + '.' + inAnfuehrung(gefunden.name);
        gefunden.spalten.push_back({alsText(lauf.wert(1)), spaltenartAus(alsText(lauf.wert(2)))});
        berechnet |= lauf.wert(3) != Wert{std::int64_t{0}};
    }
    // What a foreign file computes while it is read may take any time.
    if (berechnet)
        throw fehler(Fehlernummer::KeineTabelle,
                     "In der Datenbank „%“ hat die Tabelle „" + std::string(name) + "“ berechnete Spalten.",
                     pfade_[index(teil)]);
    if (gefunden.spalten.empty())
        throw fehler(Fehlernummer::KeineTabelle,
                     "Die Datenbank „%“ hat keine Tabelle „" + std::string(name) + "“.", pfade_[index(teil)]);
    bekannt = std::make_shared<const Tabelle>(std::move(gefunden));
    return bekannt;
}

void Verbindung::zeilenPruefen(Dateiteil teil, std::size_t zeilen) {
    const auto bytes = kopfzahl(teil, "page_count") * kopfzahl(teil, "page_size");
    if (std::cmp_greater(zeilen, bytes / KLEINSTE_ZEILE))
        throw fehler(Fehlernummer::DateiBeschaedigt, meldungFuer(SQLITE_CORRUPT).text, pfade_[index(teil)]);
}

/// Some errors (a full disk, for one) end the whole transaction by themselves. What follows in it must not
/// then stand by itself.
void Verbindung::transaktionPruefen() const {
    // A lock that was taken for reading can't wait to become one for writing.
    if (lesezug_)
        throw LaufzeitFehler(Fehlernummer::KeineTransaktion, "Im Lesezug wird nicht geschrieben.");
    if (tiefe_ > 0 && sqlite_ && sqlite3_get_autocommit(sqlite_.get()))
        throw LaufzeitFehler(Fehlernummer::KeineTransaktion, "Der Vorgang in der Datenbank ist abgebrochen.");
}

void Verbindung::beginnen() {
    transaktionPruefen();
    // IMMEDIATE takes the lock for writing at once: waiting for it later could block two programs for each
    // other.
    ausfuehren(tiefe_ == 0 ? "BEGIN IMMEDIATE" : "SAVEPOINT innen");
    if (tiefe_++ == 0)
        gestempelt_ = {};
}

void Verbindung::festschreiben() {
    try {
        transaktionPruefen();
        ausfuehren(tiefe_ == 1 ? "COMMIT" : "RELEASE innen");
    } catch (...) {
        verwerfen();
        throw;
    }
    --tiefe_;
}

void Verbindung::verwerfen() noexcept {
    const bool lebt = sqlite_ && !sqlite3_get_autocommit(sqlite_.get());
    const char* text = tiefe_ == 1 ? "ROLLBACK" : "ROLLBACK TO innen; RELEASE innen";
    if (lebt)
        sqlite3_exec(sqlite_.get(), text, nullptr, nullptr, nullptr);
    gestempelt_ = {}; // the stamp may have been a part of what is undone
    --tiefe_;
}

void Verbindung::lesenBeginnen() {
    if (tiefe_ > 0)
        throw LaufzeitFehler(Fehlernummer::KeineTransaktion, "In einer Transaktion beginnt kein Lesezug.");
    transaktionPruefen();
    ausfuehren("BEGIN");
    lesezug_ = true;
    ++lesezuege_;
}

void Verbindung::lesenBeenden() noexcept {
    lesezug_ = false;
    if (sqlite_ && !sqlite3_get_autocommit(sqlite_.get()))
        sqlite3_exec(sqlite_.get(), "ROLLBACK", nullptr, nullptr, nullptr); // nothing was written
}

/// The file that an error is about. SQLite tells of two files only which can't be written.
std::string Verbindung::betroffene(int sqliteNummer) const {
    const bool schreibschutz = (sqliteNummer & 0xff) == SQLITE_READONLY;
    std::string namen;
    for (std::size_t i = 0; i < pfade_.size(); ++i)
        if (pfade_.size() == 1 || !schreibschutz || sqlite3_db_readonly(sqlite_.get(), DATEINAMEN[i]) == 1)
            namen += (namen.empty() ? "" : "“ oder „") + pfade_[i];
    return namen;
}

void Verbindung::melden(int sqliteNummer) const {
    if ((sqliteNummer & 0xff) == SQLITE_NOMEM)
        throw std::bad_alloc();
    const Meldung meldung =
        (sqliteNummer & 0xff) == SQLITE_INTERRUPT && abgebrochen_
            ? Meldung{Fehlernummer::Abgebrochen, "Der Vorgang in der Datenbank „%“ ist abgebrochen."}
            : meldungFuer(sqliteNummer);
    throw fehler(meldung.nummer, meldung.text, betroffene(sqliteNummer));
}
