// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/fuzz/Datenbankschaden.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace {

// By SQLite's file format.
constexpr std::size_t SEITE = 512;
constexpr std::size_t DATEIKOPF = 100;
constexpr std::size_t BLATTKOPF = 8;
constexpr std::size_t ASTKOPF = 12;
constexpr std::size_t ZELLENZAHL = 3; ///< where in the head of a page the number of its cells stands
constexpr std::size_t ZELLENANFANG = 12;
constexpr std::array<unsigned char, 4> SEITENARTEN{2, 5, 10, 13}; ///< the first two have pages below them

unsigned byte(std::string_view text, std::size_t stelle) {
    return stelle < text.size() ? static_cast<unsigned char>(text[stelle]) : 0;
}
unsigned zweiBytes(std::string_view text, std::size_t stelle) {
    return byte(text, stelle) << 8 | byte(text, stelle + 1);
}
void setzen(std::string& inhalt, std::size_t stelle, unsigned wert) {
    if (stelle < inhalt.size())
        inhalt[stelle] = static_cast<char>(wert);
}
void zweiSetzen(std::string& inhalt, std::size_t stelle, unsigned wert) {
    setzen(inhalt, stelle, wert >> 8);
    setzen(inhalt, stelle + 1, wert);
}

/// What of a database's neighbours and of the process itself no statement may touch.
int erlaubt(void*, int was, const char* name, const char*, const char*, const char*) {
    constexpr std::array<std::string_view, 5> PRAGMAS{"writable_schema", "user_version", "application_id",
                                                      "journal_mode", "auto_vacuum"};
    if (was == SQLITE_ATTACH || was == SQLITE_DETACH)
        return SQLITE_DENY;
    if (was == SQLITE_PRAGMA && std::ranges::find(PRAGMAS, std::string_view(name)) == PRAGMAS.end())
        return SQLITE_DENY;
    return SQLITE_OK;
}

} // namespace

Datenbankschaden::Datenbankschaden(std::string heil) : heil_(std::move(heil)) {
    merken(0, DATEIKOPF);
    for (std::size_t seite = 0; seite < heil_.size() / SEITE; ++seite)
        seiteMerken(seite);
}

void Datenbankschaden::merken(std::size_t stelle, std::size_t laenge) {
    for (std::size_t i = 0; i < laenge && stelle + i < heil_.size(); ++i)
        stellen_.push_back(stelle + i);
}

void Datenbankschaden::seiteMerken(std::size_t seite) {
    const std::size_t anfang = seite * SEITE;
    const std::size_t kopf = anfang + (seite == 0 ? DATEIKOPF : 0);
    const auto art = std::ranges::find(SEITENARTEN, byte(heil_, kopf));
    if (art == SEITENARTEN.end()) { // of free pages and of those that a long value runs over into
        merken(anfang, 4);
        return;
    }
    const std::size_t kopflaenge = art - SEITENARTEN.begin() < 2 ? ASTKOPF : BLATTKOPF;
    const std::size_t zellen = zweiBytes(heil_, kopf + ZELLENZAHL);
    merken(kopf, kopflaenge + 2 * zellen);
    for (std::size_t zelle = 0; zelle < zellen; ++zelle)
        merken(anfang + zweiBytes(heil_, kopf + kopflaenge + 2 * zelle), ZELLENANFANG);
}

std::string Datenbankschaden::angewandt(std::string inhalt, std::string_view saetze) const {
    for (; saetze.size() >= SATZ; saetze.remove_prefix(SATZ))
        satzAnwenden(inhalt, saetze.substr(0, SATZ));
    return inhalt;
}

void Datenbankschaden::satzAnwenden(std::string& inhalt, std::string_view satz) const {
    const std::size_t seiten = std::max<std::size_t>(1, inhalt.size() / SEITE);
    const std::size_t stelle = stellen_[zweiBytes(satz, 1) % stellen_.size()];
    const auto anfang = [&](std::size_t wo) { return byte(satz, wo) % seiten * SEITE; };
    switch (byte(satz, 0) % 8) {
    case 0: // a byte of the structure
        return setzen(inhalt, stelle, byte(satz, 3));
    case 1: // a number of the structure, up or down a little
        return zweiSetzen(inhalt, stelle, zweiBytes(inhalt, stelle) + byte(satz, 3) - 128);
    case 2: // a number of the structure
        return zweiSetzen(inhalt, stelle, zweiBytes(satz, 3));
    case 3: // any byte
        return setzen(inhalt,
                      (zweiBytes(satz, 1) * 256 + byte(satz, 3)) % std::max<std::size_t>(1, inhalt.size()),
                      byte(satz, 4));
    case 4: // a page in place of another
        if (inhalt.size() >= seiten * SEITE)
            inhalt.replace(anfang(1), SEITE, std::string(inhalt, anfang(2), SEITE));
        return;
    case 5: // a file that is cut off
        return inhalt.resize(std::min(inhalt.size(), byte(satz, 1) * SEITE + zweiBytes(satz, 2) % SEITE));
    case 6: // a stretch of one byte
        for (unsigned i = 0; i < byte(satz, 3); ++i)
            setzen(inhalt, anfang(1) + byte(satz, 2) * 2U + i, byte(satz, 4));
        return;
    default: // the head of the file
        return setzen(inhalt, byte(satz, 1) % DATEIKOPF, byte(satz, 2));
    }
}

void anweisungenAusfuehren(const std::string& pfad, std::string_view anweisungen) {
    constexpr int SCHRITTE = 20000;
    constexpr int LAENGSTER_WERT = 4096;
    sqlite3* neu = nullptr;
    const int nummer = sqlite3_open_v2(pfad.c_str(), &neu, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> verbindung(neu, &sqlite3_close);
    if (nummer != SQLITE_OK)
        return;
    sqlite3_limit(neu, SQLITE_LIMIT_LENGTH, LAENGSTER_WERT);
    sqlite3_set_authorizer(neu, erlaubt, nullptr);
    sqlite3_progress_handler(
        neu, SCHRITTE, [](void*) { return 1; }, nullptr);
    sqlite3_exec(neu, "PRAGMA writable_schema = ON", nullptr, nullptr, nullptr);
    sqlite3_exec(neu, std::string(anweisungen).c_str(), nullptr, nullptr, nullptr);
}
