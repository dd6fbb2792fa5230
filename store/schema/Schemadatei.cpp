// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Schemadatei.h"

#include "store/db/Namen.h"
#include "store/db/Verbindung.h"
#include "store/files/Dateiersatz.h"
#include "store/files/Xml.h"

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <new>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

/// "GPkS", and the version of the tables.
constexpr Stempel DATEISTEMPEL{0x47506B53, 1};

constexpr std::string_view ANGABEN = "Angaben";
constexpr std::string_view ACHSENTABELLE = "Achsen";
constexpr std::string_view BILDERTABELLE = "Bilder";

constexpr std::size_t GROESSTES_BILD = std::size_t{64} << 20;
constexpr std::size_t LAENGSTER_WERT = 1'000'000; ///< of all but pictures
constexpr std::size_t MEISTE_BILDER = 6;
constexpr std::size_t LAENGSTER_NAME = 1000; ///< in bytes; which names may be taken is the reader's business

// A read without an end counts as damage, as it does in the database.
constexpr int SCHRITTE_JE_FRAGE = 5000;
constexpr int MEISTE_FRAGEN = 4000;

[[noreturn]] void beschaedigt(const std::string& grund) {
    throw LaufzeitFehler(Fehlernummer::DateiBeschaedigt, "Die Datei ist beschädigt (" + grund + ").");
}
[[noreturn]] void fremd(const std::string& text) {
    throw LaufzeitFehler(Fehlernummer::KeineDatenbank, text);
}
[[noreturn]] void unpassend(const std::string& text) {
    throw LaufzeitFehler(Fehlernummer::FalscherTyp, text);
}

struct Tabellenplan {
    std::string name;
    std::vector<Spalte> spalten;
    std::size_t meisteZeilen;
};

Tabellenplan planVon(const Schematabelle& tabelle) {
    return {std::string(tabelle.name), tabelle.spalten, tabelle.meisteZeilen};
}

Tabellenplan angabenplan() {
    return {std::string(ANGABEN), {{"Schema", Spaltenart::Text}, {"Programm", Spaltenart::Text}}, 1};
}

Tabellenplan achsenplan() {
    Tabellenplan plan{std::string(ACHSENTABELLE), {}, 1};
    for (const auto& groesse : GAMEPADSPALTEN)
        if (groesse.spalte != "Schema")
            plan.spalten.push_back({std::string(groesse.spalte), Spaltenart::Text});
    return plan;
}

// --- SQLite in memory ---

struct Schliesser {
    void operator()(sqlite3* verbindung) const noexcept { sqlite3_close_v2(verbindung); }
    void operator()(sqlite3_stmt* anweisung) const noexcept { sqlite3_finalize(anweisung); }
    void operator()(unsigned char* speicher) const noexcept { sqlite3_free(speicher); }
};
using Speicher = std::unique_ptr<unsigned char, Schliesser>;

/// A database in memory.
class Gedaechtnis {
public:
    Gedaechtnis() {
        sqlite3* verbindung = nullptr;
        const int nummer =
            sqlite3_open_v2(":memory:", &verbindung,
                            SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY | SQLITE_OPEN_NOMUTEX, nullptr);
        sqlite_.reset(verbindung);
        pruefen(nummer);
    }

    sqlite3* roh() const { return sqlite_.get(); }

    /// Throws unless a call of SQLite went well.
    void pruefen(int nummer) const {
        switch (nummer & 0xff) {
        case SQLITE_OK:
        case SQLITE_ROW:
        case SQLITE_DONE:
            return;
        case SQLITE_NOMEM:
            throw std::bad_alloc();
        case SQLITE_NOTADB:
            fremd("Die Datei ist keine Schema-Datei.");
        case SQLITE_INTERRUPT:
            beschaedigt("das Lesen nimmt kein Ende");
        case SQLITE_TOOBIG:
            beschaedigt("ein Wert ist zu groß");
        default: // SQLite's own words are English, and about what nobody sees
            beschaedigt("ihre Tabellen lassen sich nicht lesen");
        }
    }

private:
    std::unique_ptr<sqlite3, Schliesser> sqlite_;
};

/// One statement from its beginning to its end.
class Anweisung {
public:
    Anweisung(const Gedaechtnis& datei, const std::string& text) : datei_(datei) {
        sqlite3_stmt* neu = nullptr;
        const int nummer =
            sqlite3_prepare_v2(datei.roh(), text.data(), static_cast<int>(text.size()), &neu, nullptr);
        anweisung_.reset(neu);
        datei.pruefen(nummer);
    }

    bool weiter() {
        const int nummer = sqlite3_step(anweisung_.get());
        datei_.pruefen(nummer);
        return nummer == SQLITE_ROW;
    }
    void nochmal() { sqlite3_reset(anweisung_.get()); }

    int art(int spalte) const { return sqlite3_column_type(anweisung_.get(), spalte); }
    std::int64_t zahl(int spalte) const { return sqlite3_column_int64(anweisung_.get(), spalte); }
    std::string bytes(int spalte) const {
        const auto* blob = static_cast<const char*>(sqlite3_column_blob(anweisung_.get(), spalte));
        const auto laenge = static_cast<std::size_t>(sqlite3_column_bytes(anweisung_.get(), spalte));
        return blob ? std::string(blob, laenge) : std::string();
    }

    void binden(int stelle, const Wert& wert) {
        if (const auto* zahl = std::get_if<std::int64_t>(&wert))
            datei_.pruefen(sqlite3_bind_int64(anweisung_.get(), stelle, *zahl));
        else if (const auto* text = std::get_if<std::string>(&wert))
            datei_.pruefen(sqlite3_bind_text64(anweisung_.get(), stelle, text->data(), text->size(),
                                               SQLITE_TRANSIENT, SQLITE_UTF8));
        else
            datei_.pruefen(sqlite3_bind_null(anweisung_.get(), stelle));
    }
    void bytesBinden(int stelle, std::string_view bytes) {
        datei_.pruefen(
            sqlite3_bind_blob64(anweisung_.get(), stelle, bytes.data(), bytes.size(), SQLITE_TRANSIENT));
    }

private:
    const Gedaechtnis& datei_;
    std::unique_ptr<sqlite3_stmt, Schliesser> anweisung_;
};

// --- writing ---

class Dateischreiber {
public:
    explicit Dateischreiber(const Schemapaket& paket) {
        ausfuehren("PRAGMA encoding = 'UTF-8'");
        ausfuehren("PRAGMA application_id = " + std::to_string(DATEISTEMPEL.programm));
        ausfuehren("PRAGMA user_version = " + std::to_string(DATEISTEMPEL.fassung));
        ausfuehren("BEGIN");
        tabelleSchreiben(angabenplan(), {{paket.name, paket.programm}});
        for (std::size_t t = 0; t < schematabelle::ANZAHL; ++t)
            tabelleSchreiben(planVon(schematabellen()[t]), paket.daten.zeilen[t]);
        achsenSchreiben(paket.daten.achsen);
        bilderSchreiben(paket.bilder);
        ausfuehren("COMMIT");
    }

    std::string inhalt() const {
        sqlite3_int64 groesse = 0;
        const Speicher bytes(sqlite3_serialize(datei_.roh(), "main", &groesse, 0));
        if (!bytes)
            throw std::bad_alloc();
        if (std::cmp_greater(groesse, GROESSTE_SCHEMADATEI))
            unpassend("Die Bilder sind zusammen zu groß für eine Schema-Datei.");
        return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(groesse)};
    }

private:
    void ausfuehren(const std::string& text) {
        Anweisung anweisung(datei_, text);
        while (anweisung.weiter()) {
        }
    }

    void tabelleSchreiben(const Tabellenplan& plan, const std::vector<Schemazeile>& zeilen) {
        std::string spalten;
        std::string stellen;
        for (const auto& spalte : plan.spalten) {
            spalten += spalten.empty() ? "" : ", ";
            spalten += inAnfuehrung(spalte.name);
            spalten += spalte.art == Spaltenart::Text ? " TEXT" : " INTEGER";
            stellen += stellen.empty() ? "?" : ", ?";
        }
        ausfuehren("CREATE TABLE " + plan.name + " (" + spalten + ")");
        Anweisung einfuegen(datei_, "INSERT INTO " + plan.name + " VALUES (" + stellen + ")");
        for (const auto& zeile : zeilen) {
            int stelle = 0;
            for (const auto& wert : zeile)
                einfuegen.binden(++stelle, wert);
            einfuegen.weiter();
            einfuegen.nochmal();
        }
    }

    void achsenSchreiben(const std::optional<Gamepadzeile>& achsen) {
        const auto plan = achsenplan();
        std::vector<Schemazeile> zeilen;
        if (achsen) {
            auto& zeile = zeilen.emplace_back();
            for (const auto& spalte : plan.spalten) {
                const auto wert = achsen->find(spalte.name);
                zeile.push_back(wert != achsen->end() ? Wert(wert->second) : Wert());
            }
        }
        tabelleSchreiben(plan, zeilen);
    }

    void bilderSchreiben(const std::vector<Schemabild>& bilder) {
        ausfuehren("CREATE TABLE Bilder (Ebene INTEGER, Stick TEXT, PNG BLOB)");
        Anweisung einfuegen(datei_, "INSERT INTO Bilder VALUES (?, ?, ?)");
        for (const auto& bild : bilder) {
            if (bild.png.size() > GROESSTES_BILD)
                unpassend("Ein Bild ist zu groß für eine Schema-Datei.");
            einfuegen.binden(1, std::int64_t{bild.ebene});
            einfuegen.binden(2, std::string(bild.seite == Stickseite::Links ? "L" : "R"));
            einfuegen.bytesBinden(3, bild.png);
            einfuegen.weiter();
            einfuegen.nochmal();
        }
    }

    const Gedaechtnis datei_;
};

// --- reading ---

struct Obergrenze {
    int art;
    int wert;
};
/// What SQLite itself advises for files from anywhere; a picture is the longest value.
constexpr std::array<Obergrenze, 7> OBERGRENZEN{{{SQLITE_LIMIT_LENGTH, GROESSTES_BILD + LAENGSTER_WERT},
                                                 {SQLITE_LIMIT_SQL_LENGTH, 100'000},
                                                 {SQLITE_LIMIT_COLUMN, 100},
                                                 {SQLITE_LIMIT_EXPR_DEPTH, 10},
                                                 {SQLITE_LIMIT_TRIGGER_DEPTH, 1},
                                                 {SQLITE_LIMIT_VDBE_OP, 25'000},
                                                 {SQLITE_LIMIT_ATTACHED, 0}}};

/// What the statements of this unit need, and nothing that lies in a file could do more.
int erlaubt(void*, int was, const char* eines, const char*, const char*, const char*) {
    if (was == SQLITE_SELECT || was == SQLITE_READ)
        return SQLITE_OK;
    constexpr std::array<const char*, 4> KOPFZAHLEN{"application_id", "user_version", "table_list",
                                                    "table_xinfo"};
    const auto gemeint = [eines](const char* name) { return eines && std::strcmp(eines, name) == 0; };
    return was == SQLITE_PRAGMA && std::ranges::any_of(KOPFZAHLEN, gemeint) ? SQLITE_OK : SQLITE_DENY;
}

constexpr std::array<std::size_t, 2> VORLAUFSTELLEN{18, 19}; // of the header, by SQLite's file format
constexpr unsigned char OHNE_VORLAUF = 1;

/// A file's content, read as a database that lies in memory.
class Dateileser {
public:
    explicit Dateileser(std::string_view inhalt) {
        // What is handed over must be SQLite's own memory, which it frees.
        Speicher bytes(static_cast<unsigned char*>(sqlite3_malloc64(inhalt.size() + 1)));
        if (!bytes)
            throw std::bad_alloc();
        std::memcpy(bytes.get(), inhalt.data(), inhalt.size());
        for (const auto stelle :
             VORLAUFSTELLEN) { // in memory there is no log: not even the stamp could be read
            mitVorlauf_ |= bytes.get()[stelle] != OHNE_VORLAUF;
            bytes.get()[stelle] = OHNE_VORLAUF;
        }
        const auto groesse = static_cast<sqlite3_int64>(inhalt.size());
        // Freed by SQLite whether or not it succeeds.
        datei_.pruefen(sqlite3_deserialize(datei_.roh(), "main", bytes.release(), groesse, groesse,
                                           SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_READONLY));
        absichern(); // nothing of the content has been looked at yet
    }

    Schemapaket lesen() {
        stempelPruefen();
        Schemapaket paket;
        const auto angaben = tabelleLesen(angabenplan());
        if (angaben.empty())
            beschaedigt("die Tabelle „Angaben“ ist leer");
        paket.name = alsText(angaben[0][0]);
        paket.programm = alsText(angaben[0][1]);
        if (paket.name.empty() || paket.name.size() > LAENGSTER_NAME)
            beschaedigt("das Schema hat keinen brauchbaren Namen");
        for (std::size_t t = 0; t < schematabelle::ANZAHL; ++t)
            paket.daten.zeilen[t] = tabelleLesen(planVon(schematabellen()[t]));
        achsenLesen(paket.daten);
        bilderLesen(paket.bilder);
        schemadatenPruefen(paket.daten);
        return paket;
    }

private:
    void absichern() {
        sqlite3* const roh = datei_.roh();
        sqlite3_extended_result_codes(roh, 1);
        for (const int aus : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER,
                              SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL})
            sqlite3_db_config(roh, aus, 0, nullptr);
        sqlite3_db_config(roh, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        for (const auto& [art, wert] : OBERGRENZEN)
            sqlite3_limit(roh, art, wert);
        sqlite3_progress_handler(roh, SCHRITTE_JE_FRAGE, sollEnden, this);
        sqlite3_set_authorizer(roh, erlaubt, nullptr);
    }
    static int sollEnden(void* leser) { return ++static_cast<Dateileser*>(leser)->fragen_ > MEISTE_FRAGEN; }

    std::int64_t kopfzahl(const std::string& name) {
        Anweisung anweisung(datei_, "PRAGMA main." + name);
        return anweisung.weiter() ? anweisung.zahl(0) : 0;
    }

    void stempelPruefen() {
        if (const auto programm = kopfzahl("application_id"); programm == EIGENER_STEMPEL.programm)
            fremd("Die Datei ist eine ganze Datenbank. Wählen Sie „Aus Datenbank aufnehmen…“.");
        else if (programm != DATEISTEMPEL.programm)
            fremd("Die Datei ist keine Schema-Datei.");
        const auto fassung = kopfzahl("user_version");
        if (fassung == 0)
            fremd("Die Datei ist keine Schema-Datei."); // no version has written one
        if (fassung != DATEISTEMPEL.fassung)
            fremd("Die Datei kommt von einer neueren Version des Programms (Fassung " +
                  std::to_string(fassung) + ", diese Version kennt Fassung " +
                  std::to_string(DATEISTEMPEL.fassung) + ").");
        if (mitVorlauf_)
            unpassend(
                "Ein anderes Programm hat die Datei so umgestellt, dass ihr Inhalt zum Teil daneben liegen "
                "kann (WAL).");
    }

    /// Throws unless a plain table of this name is there, whose columns are all stored.
    void tabellePruefen(const Tabellenplan& plan) {
        constexpr int ART = 2;
        constexpr int OHNE_ZEILENNUMMERN = 4;
        constexpr int SPALTENNAME = 1;
        constexpr int VERBORGEN = 6;
        Anweisung liste(datei_, "PRAGMA main.table_list(" + plan.name + ")");
        if (!liste.weiter())
            beschaedigt("die Tabelle „" + plan.name + "“ fehlt");
        if (liste.bytes(ART) != "table" || liste.zahl(OHNE_ZEILENNUMMERN) != 0)
            beschaedigt("„" + plan.name + "“ ist keine gewöhnliche Tabelle");
        Anweisung spalten(datei_, "PRAGMA main.table_xinfo(" + plan.name + ")");
        std::set<std::string> vorhandene;
        while (spalten.weiter()) {
            vorhandene.insert(spalten.bytes(SPALTENNAME));
            if (spalten.zahl(VERBORGEN) != 0)
                beschaedigt("die Tabelle „" + plan.name + "“ hat berechnete Spalten");
        }
        for (const auto& spalte : plan.spalten)
            if (!vorhandene.contains(spalte.name))
                beschaedigt("in der Tabelle „" + plan.name + "“ fehlt die Spalte „" + spalte.name + "“");
    }

    std::string auswahl(const Tabellenplan& plan) const {
        std::string text;
        for (const auto& spalte : plan.spalten) {
            text += text.empty() ? "SELECT " : ", ";
            text += inAnfuehrung(spalte.name);
        }
        text += " FROM main." + plan.name + " ORDER BY rowid";
        return text;
    }

    /// Calls `zeile` with each row of a table; throws for more than it may have.
    template <class Zeile> void zeilenLesen(const Tabellenplan& plan, Zeile&& zeile) {
        tabellePruefen(plan);
        Anweisung anweisung(datei_, auswahl(plan));
        for (std::size_t zeilen = 0; anweisung.weiter(); zeile(anweisung))
            if (++zeilen > plan.meisteZeilen)
                unpassend("Die Tabelle „" + plan.name + "“ hat zu viele Zeilen.");
    }

    static Wert wertVon(const Anweisung& anweisung, const Tabellenplan& plan, int spalte) {
        switch (anweisung.art(spalte)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return std::int64_t{anweisung.zahl(spalte)};
        case SQLITE_TEXT: {
            auto text = anweisung.bytes(spalte);
            if (text.size() > LAENGSTER_WERT)
                unpassend(ort(plan, spalte) + " ein Text, der zu lang ist.");
            if (xmlZeichenzahl(text))
                return text;
            [[fallthrough]];
        }
        default:
            unpassend(ort(plan, spalte) + " etwas, das weder Zahl noch Text ist.");
        }
    }
    static std::string ort(const Tabellenplan& plan, int spalte) {
        return "In der Tabelle „" + plan.name + "“ steht unter „" +
               plan.spalten[static_cast<std::size_t>(spalte)].name + "“";
    }

    std::vector<Schemazeile> tabelleLesen(const Tabellenplan& plan) {
        std::vector<Schemazeile> zeilen;
        zeilenLesen(plan, [&](const Anweisung& anweisung) {
            auto& zeile = zeilen.emplace_back();
            for (int spalte = 0; std::cmp_less(spalte, plan.spalten.size()); ++spalte)
                zeile.push_back(wertVon(anweisung, plan, spalte));
        });
        return zeilen;
    }

    void achsenLesen(Schemadaten& daten) {
        const auto plan = achsenplan();
        const auto zeilen = tabelleLesen(plan);
        if (zeilen.empty())
            return;
        daten.achsen.emplace();
        for (std::size_t i = 0; i < plan.spalten.size(); ++i)
            if (!istNull(zeilen[0][i]))
                daten.achsen->emplace(plan.spalten[i].name, alsText(zeilen[0][i]));
    }

    void bilderLesen(std::vector<Schemabild>& bilder) {
        const Tabellenplan plan{
            std::string(BILDERTABELLE),
            {{"Ebene", Spaltenart::Ganzzahl16}, {"Stick", Spaltenart::Text}, {"PNG", Spaltenart::Text}},
            MEISTE_BILDER};
        std::set<std::pair<int, Stickseite>> vorhandene;
        zeilenLesen(plan, [&](const Anweisung& anweisung) {
            const auto ebene = anweisung.zahl(0);
            const auto stick = anweisung.bytes(1);
            const bool gemeint = anweisung.art(0) == SQLITE_INTEGER && ebene >= 0 && ebene < EBENEN &&
                                 (stick == "L" || stick == "R") && anweisung.art(2) == SQLITE_BLOB;
            if (!gemeint)
                unpassend("In der Tabelle „Bilder“ steht etwas, das kein Bild ist.");
            Schemabild bild{static_cast<int>(ebene), stick == "L" ? Stickseite::Links : Stickseite::Rechts,
                            anweisung.bytes(2)};
            if (bild.png.size() > GROESSTES_BILD)
                unpassend("Ein Bild ist zu groß.");
            if (!vorhandene.emplace(bild.ebene, bild.seite).second)
                unpassend("Ein Bild gibt es zweimal.");
            bilder.push_back(std::move(bild));
        });
    }

    int fragen_ = 0;
    bool mitVorlauf_ = false;
    const Gedaechtnis datei_; ///< goes first: its handlers look at this
};

// --- the file ---

struct Deskriptor {
    explicit Deskriptor(const std::string& pfad)
        : nummer(open(pfad.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~Deskriptor() {
        if (nummer >= 0)
            close(nummer);
    }
    Deskriptor(const Deskriptor&) = delete;
    Deskriptor& operator=(const Deskriptor&) = delete;
    const int nummer;
};

std::string dateiHolen(const std::string& pfad) {
    const Deskriptor datei(pfad);
    if (datei.nummer < 0 && errno == ENOENT)
        throw LaufzeitFehler(Fehlernummer::KeineDatei, "Die Datei gibt es nicht.");
    if (datei.nummer < 0)
        throw LaufzeitFehler(Fehlernummer::KeinZugriff, "Die Datei lässt sich nicht öffnen.");
    struct stat stand {};
    if (fstat(datei.nummer, &stand) != 0 || !S_ISREG(stand.st_mode))
        fremd("Das ist keine Datei.");
    if (std::cmp_greater(stand.st_size, GROESSTE_SCHEMADATEI))
        fremd("Die Datei ist zu groß für eine Schema-Datei.");
    std::string inhalt(static_cast<std::size_t>(stand.st_size), '\0');
    std::size_t gelesen = 0;
    while (gelesen < inhalt.size()) {
        const ssize_t anzahl = read(datei.nummer, inhalt.data() + gelesen, inhalt.size() - gelesen);
        if (anzahl < 0 && errno == EINTR)
            continue;
        if (anzahl < 0)
            throw LaufzeitFehler(Fehlernummer::EinAusgabe, "Die Datei lässt sich nicht lesen.");
        if (anzahl == 0)
            break; // it has become shorter
        gelesen += static_cast<std::size_t>(anzahl);
    }
    inhalt.resize(gelesen);
    return inhalt;
}

} // namespace

std::string schemadateiInhalt(const Schemapaket& paket) {
    schemadatenPruefen(paket.daten);
    return Dateischreiber(paket).inhalt();
}

void schemadateiSchreiben(const std::string& pfad, const Schemapaket& paket) {
    if (!dateiErsetzen(pfad, schemadateiInhalt(paket)))
        throw LaufzeitFehler(Fehlernummer::EinAusgabe,
                             "Die Datei „" + pfad +
                                 "“ lässt sich nicht schreiben. Ist der Ordner schreibgeschützt oder der "
                                 "Datenträger voll?");
}

Schemapaket schemadateiAus(std::string_view inhalt) {
    constexpr std::string_view ANFANG("SQLite format 3\0", 16);
    constexpr std::size_t KLEINSTE_SEITE = 512;
    if (inhalt.size() < KLEINSTE_SEITE || !inhalt.starts_with(ANFANG))
        fremd("Die Datei ist keine Schema-Datei.");
    return Dateileser(inhalt).lesen();
}

Schemapaket schemadateiLesen(const std::string& pfad) {
    return schemadateiAus(dateiHolen(pfad));
}
