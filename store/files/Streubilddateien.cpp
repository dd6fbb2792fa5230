// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Streubilddateien.h"

#include "base/Slots.h"
#include "store/files/Dateiersatz.h"
#include "store/files/Dateisperre.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view ENDUNG = ".streu";
constexpr std::string_view BEISEITE = ".beschaedigt";
constexpr int BEISEITE_HOECHSTENS = 9;

constexpr bool istBuchstabe(char zeichen) {
    return (zeichen >= '0' && zeichen <= '9') || (zeichen >= 'A' && zeichen <= 'Z') ||
           (zeichen >= 'a' && zeichen <= 'z');
}

/// Fowler, Noll and Vo, 1a, 64 bits, in hexadecimal digits.
std::string pruefsumme(std::string_view text) {
    std::uint64_t summe = 0xCBF29CE484222325;
    for (const char zeichen : text)
        summe = (summe ^ static_cast<unsigned char>(zeichen)) * 0x100000001B3;
    std::string ziffern(16, '0');
    for (auto ziffer = ziffern.rbegin(); ziffer != ziffern.rend(); ++ziffer, summe >>= 4)
        *ziffer = "0123456789abcdef"[summe & 15];
    return ziffern;
}

std::string dateiname(std::string_view schemaName, Stickseite seite, int ebene) {
    constexpr std::size_t LESBARES = 40;
    std::string name(schemaName.substr(0, LESBARES));
    std::ranges::replace_if(
        name, [](char zeichen) { return !istBuchstabe(zeichen); }, '_');
    name += "-" + pruefsumme(schemaName) + "-" + std::to_string(ebene);
    name += seite == Stickseite::Links ? "L" : "R";
    return name.append(ENDUNG);
}

// --- a file as it lies there ---

enum class Zustand { Keine, Heil, Beschaedigt, Neuer, Unlesbar };

struct Vorhandene {
    Zustand zustand = Zustand::Keine;
    Streudaten daten;
};

/// Reads up to one byte more than a file may have; nothing where that fails.
std::optional<std::string> lesen(int deskriptor) {
    std::string inhalt(Streudaten::DATEI_HOECHSTENS + 1, '\0');
    std::size_t stelle = 0;
    while (stelle < inhalt.size()) {
        const auto anzahl = read(deskriptor, inhalt.data() + stelle, inhalt.size() - stelle);
        if (anzahl < 0 && errno == EINTR)
            continue;
        if (anzahl < 0)
            return std::nullopt;
        if (anzahl == 0)
            break;
        stelle += static_cast<std::size_t>(anzahl);
    }
    inhalt.resize(stelle);
    return inhalt;
}

// What is no file is not waited for.
std::optional<std::string> inhaltVon(int deskriptor) {
    struct stat stand {};
    if (fstat(deskriptor, &stand) != 0 || !S_ISREG(stand.st_mode))
        return std::nullopt;
    return lesen(deskriptor);
}

Vorhandene vorhandene(const fs::path& pfad) {
    const int deskriptor = open(pfad.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (deskriptor < 0)
        return {errno == ENOENT ? Zustand::Keine : Zustand::Unlesbar, {}};
    const auto inhalt = inhaltVon(deskriptor);
    close(deskriptor);
    if (!inhalt)
        return {Zustand::Unlesbar, {}};
    if (auto daten = streudatenLesen(*inhalt))
        return {Zustand::Heil, std::move(*daten)};
    return {streudatenNeuer(*inhalt) ? Zustand::Neuer : Zustand::Beschaedigt, {}};
}

// --- what becomes of it ---

/// Gives a damaged file another name, that nothing has yet.
bool beiseitelegen(const fs::path& pfad) {
    for (int i = 1; i <= BEISEITE_HOECHSTENS; ++i) {
        fs::path ziel = pfad;
        ziel += BEISEITE;
        if (i > 1)
            ziel += std::to_string(i);
        if (renameat2(AT_FDCWD, pfad.c_str(), AT_FDCWD, ziel.c_str(), RENAME_NOREPLACE) == 0)
            return ordnerSichern(ordnerVon(pfad)); // before the next one's name can get there first
        if (errno != EEXIST)
            return false;
    }
    return false; // nobody looks after them; none is thrown away for the next
}

bool platzMachen(const fs::path& pfad, Zustand zustand) {
    switch (zustand) {
    case Zustand::Keine:
    case Zustand::Heil:
        return true;
    case Zustand::Beschaedigt:
        return beiseitelegen(pfad);
    case Zustand::Neuer:
    case Zustand::Unlesbar:
        break;
    }
    return false;
}

/// Whether a file of this name is, or was begun or put aside as, one of those.
bool gehoertZu(std::string_view name, const std::vector<std::string>& dateien) {
    return std::ranges::any_of(dateien, [&](const auto& datei) {
        return name == datei || (name.starts_with(datei) && name.substr(datei.size()).starts_with(BEISEITE));
    });
}

std::vector<fs::path> gemeinteIn(const fs::path& ordner, const std::vector<std::string>& dateien) {
    std::error_code grund;
    std::vector<fs::path> gemeinte;
    for (fs::directory_iterator stelle(ordner, grund), ende; !grund && stelle != ende;
         stelle.increment(grund))
        if (gehoertZu(stelle->path().filename().native(), dateien))
            gemeinte.push_back(stelle->path());
    return gemeinte;
}

std::vector<std::string> dateinamen(const std::string& schemaName) {
    std::vector<std::string> namen;
    for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            namen.push_back(dateiname(schemaName, seite, ebene));
    return namen;
}

bool entfernen(const fs::path& ordner, const std::vector<std::string>& dateien) {
    for (const auto& datei : gemeinteIn(ordner, dateien))
        unlink(datei.c_str());
    resteRaeumen(ordner, [&](std::string_view name) { return gehoertZu(name, dateien); });
    std::error_code keiner;
    return !fs::exists(ordner, keiner) || (ordnerSichern(ordner) && gemeinteIn(ordner, dateien).empty());
}

/// The folder, made where there is none; it must come through a power cut before a file in it can.
bool ordnerAnlegen(const fs::path& ordner) {
    if (mkdir(ordner.c_str(), 0777) == 0)
        return ordnerSichern(ordnerVon(ordner));
    return errno == EEXIST;
}

} // namespace

fs::path streubildordner(const std::string& datenbankPfad) {
    return ordnerVon(datenbankPfad) / "Streubilder";
}

fs::path Streubilddateien::pfad(const std::string& schemaName, Stickseite seite, int ebene) const {
    return ordner_ / dateiname(schemaName, seite, ebene);
}

Streudaten Streubilddateien::laden(const std::string& schemaName, Stickseite seite, int ebene) const {
    return vorhandene(pfad(schemaName, seite, ebene)).daten;
}

bool Streubilddateien::speichern(const std::string& schemaName, Stickseite seite, int ebene,
                                 const Streudaten& daten) const {
    const auto datei = pfad(schemaName, seite, ebene);
    if (!ordnerAnlegen(ordner_))
        return false;
    const Dateisperre sperre(datei);
    return sperre.frei() && platzMachen(datei, vorhandene(datei).zustand) &&
           dateiErsetzen(datei, streudatenSchreiben(daten));
}

bool Streubilddateien::dazuzaehlen(const std::string& schemaName, Stickseite seite, int ebene,
                                   const Streudaten& lauf) const {
    const auto datei = pfad(schemaName, seite, ebene);
    if (!ordnerAnlegen(ordner_))
        return false;
    const Dateisperre sperre(datei);
    if (!sperre.frei())
        return false;
    auto [zustand, summe] = vorhandene(datei);
    if (!platzMachen(datei, zustand))
        return false;
    zusammenzaehlen(summe, lauf);
    return dateiErsetzen(datei, streudatenSchreiben(summe));
}

bool Streubilddateien::zuruecksetzen(const std::string& schemaName, Stickseite seite, int ebene) const {
    const auto datei = pfad(schemaName, seite, ebene);
    const Dateisperre sperre(datei);
    if (!sperre.frei())
        return false;
    if (unlink(datei.c_str()) != 0 && errno != ENOENT)
        return false;
    std::error_code keiner;
    return !fs::exists(ordner_, keiner) || ordnerSichern(ordner_);
}

bool Streubilddateien::loeschen(const std::string& schemaName) const {
    const auto namen = dateinamen(schemaName);
    const Dateisperre sperre((ordner_ / namen.front()).string());
    return entfernen(ordner_, namen);
}

std::vector<fs::path> Streubilddateien::dateien(const std::string& schemaName) const {
    return gemeinteIn(ordner_, dateinamen(schemaName));
}
