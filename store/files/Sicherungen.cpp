// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Sicherungen.h"

#include "base/LaufzeitFehler.h"
#include "store/db/Datenbank.h"
#include "store/files/Dateiersatz.h"
#include "store/files/Gamepadtabelle.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t NEUESTE = 10;
constexpr std::size_t MONATE = 6;
constexpr std::string_view DATUM = "0000-00-00";
constexpr int ABLAGEN_HOECHSTENS = 1000;

struct Name {
    std::string_view stamm;
    std::string_view endung;
};
constexpr std::array<Name, 2> NAMEN{{{"Belegung ", ".twk"}, {"Gamepad ", ".xml"}}};

const Name& nameVon(Gesichertes was) {
    return NAMEN[static_cast<std::size_t>(was)];
}

std::optional<int> zahl(std::string_view text) {
    int wert = 0;
    const auto [ende, fehler] = std::from_chars(text.data(), text.data() + text.size(), wert);
    if (fehler != std::errc() || ende != text.data() + text.size())
        return std::nullopt;
    return wert;
}

std::string datumstext(Sicherungstag tag) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", tag.jahr, tag.monat, tag.tag);
    return text.data();
}

/// The day that a name tells, if it is one that datumstext gives.
std::optional<Sicherungstag> tagVon(const Name& name, std::string_view datei) {
    if (datei.size() != name.stamm.size() + DATUM.size() + name.endung.size() ||
        !datei.starts_with(name.stamm) || !datei.ends_with(name.endung))
        return std::nullopt;
    const auto datum = datei.substr(name.stamm.size(), DATUM.size());
    const auto jahr = zahl(datum.substr(0, 4));
    const auto monat = zahl(datum.substr(5, 2));
    const auto tag = zahl(datum.substr(8, 2));
    if (!jahr || !monat || !tag)
        return std::nullopt;
    const Sicherungstag gelesen{*jahr, *monat, *tag};
    return datumstext(gelesen) == datum ? std::optional(gelesen) : std::nullopt;
}

std::optional<std::string> inhalt(const std::string& pfad) {
    std::error_code fehler;
    if (!fs::is_regular_file(pfad, fehler))
        return std::nullopt;
    const auto groesse = fs::file_size(pfad, fehler);
    std::ifstream strom(pfad, std::ios::binary);
    if (fehler || !strom)
        return std::nullopt;
    std::string bytes(groesse, '\0');
    strom.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(strom.gcount()));
    return bytes;
}

bool gleich(const std::string& pfad, const std::string& neues) {
    std::error_code fehler;
    return fs::file_size(pfad, fehler) == neues.size() && !fehler && inhalt(pfad) == neues;
}

/// Newest first. Days that are still to come were noted by a clock that went wrong: they are older than all
/// others.
std::vector<Sicherungstag> nachAlter(const std::set<Sicherungstag>& tage, Sicherungstag heute) {
    const auto kommende = tage.upper_bound(heute);
    std::vector<Sicherungstag> alle(std::make_reverse_iterator(kommende), tage.rend());
    alle.insert(alle.end(), tage.rbegin(), std::make_reverse_iterator(kommende));
    return alle;
}

bool lesbareTabelle(const std::string& text) {
    return gamepadAusXml(text).has_value();
}

/// The content of a database, on one state of it and without a fault.
std::string gutesAbbild(const std::string& pfad) {
    return OpenDatabase(pfad).abbild();
}

bool gut(Gesichertes was, const std::string& pfad) {
    try {
        if (was == Gesichertes::Datenbank)
            return !gutesAbbild(pfad).empty();
        const auto text = inhalt(pfad);
        return text && lesbareTabelle(*text);
    } catch (const LaufzeitFehler&) {
        return false;
    }
}

[[noreturn]] void keinPlatz(const std::string& pfad) {
    throw LaufzeitFehler(Fehlernummer::KeinPlatz, "Die Sicherung „" + pfad +
                                                      "“ lässt sich nicht schreiben. Ist der "
                                                      "Ordner schreibgeschützt oder der Datenträger voll?");
}

constexpr std::array<const char*, 3> BEIDATEIEN{"-journal", "-wal", "-shm"};

bool liegt(const std::string& pfad) {
    std::error_code egal;
    return fs::exists(fs::symlink_status(pfad, egal));
}

/// Whether what lies at `ablage` is the file, put aside by an attempt that came to nothing then.
bool liegtSchonBeiseite(const std::string& datei, const std::string& ablage) {
    std::error_code egal;
    return fs::equivalent(datei, ablage, egal) ||
           (liegt(ablage) && fs::file_size(datei, egal) == fs::file_size(ablage, egal) && inhalt(datei) &&
            inhalt(datei) == inhalt(ablage));
}

/// Whether the file and what belongs to it can go there, and nothing that lies there goes by that.
bool istFrei(const std::string& datei, const std::string& ablage) {
    return (!liegt(ablage) || liegtSchonBeiseite(datei, ablage)) &&
           std::ranges::none_of(BEIDATEIEN, [&](const char* beidatei) {
               return liegt(datei + beidatei) && liegt(ablage + beidatei);
           });
}

std::string ablagename(const std::string& datei) {
    std::string name = datei + ".beschädigt";
    for (int nummer = 2; !istFrei(datei, name) && nummer < ABLAGEN_HOECHSTENS; ++nummer) {
        name = datei + ".beschädigt ";
        name += std::to_string(nummer);
    }
    return name;
}

/// A second name for what lies there, or a copy where the file system has no such names; that one must be on
/// the disk before the name of the first is taken.
bool beiseite(const std::string& datei, const std::string& ablage) {
    if (liegtSchonBeiseite(datei, ablage))
        return true;
    std::error_code fehler;
    fs::create_hard_link(datei, ablage, fehler);
    if (!fehler)
        return true;
    const auto text = inhalt(datei);
    return text && dateiErsetzen(ablage, *text);
}

/// What belongs to a file goes with it, as a journal would be played into whatever lies beside it. False
/// where some of it is still there.
bool beidateienUmziehen(const std::string& von, const std::string& nach) {
    return std::ranges::all_of(BEIDATEIEN, [&](const char* beidatei) {
        std::error_code fehler;
        fs::rename(von + beidatei, nach + beidatei, fehler);
        return !fehler || fehler == std::errc::no_such_file_or_directory;
    });
}

} // namespace

Sicherungen::Sicherungen(std::string datenbank, std::string gamepadXml)
    : datenbank_(std::move(datenbank)), gamepadXml_(std::move(gamepadXml)) {}

fs::path Sicherungen::ordner() const {
    return ordnerVon(datenbank_) / "Sicherungen";
}

void Sicherungen::sichern(Sicherungstag heute) const {
    if (!tage(Gesichertes::Datenbank).contains(heute))
        ablegen(Gesichertes::Datenbank, heute, gutesAbbild(datenbank_));
    if (tage(Gesichertes::Achsendatei).contains(heute))
        return;
    if (const auto text = inhalt(gamepadXml_); text && lesbareTabelle(*text))
        ablegen(Gesichertes::Achsendatei, heute, *text);
}

void Sicherungen::ablegen(Gesichertes was, Sicherungstag heute, const std::string& neues) const {
    const auto vorige = nachAlter(tage(was), heute);
    if (!vorige.empty() && gleich(pfad(was, vorige.front()), neues))
        return;
    std::error_code fehler;
    fs::create_directories(ordner(), fehler);
    const auto ziel = pfad(was, heute);
    if (!dateiErsetzen(ziel, neues)) {
        rmdir(ordner().c_str()); // an empty one is of use to nobody
        keinPlatz(ziel);
    }
    aufraeumen(was, heute);
}

void Sicherungen::aufraeumen(Gesichertes was, Sicherungstag heute) const {
    const auto alle = tage(was);
    const auto bleiben = zuBehalten(alle, heute);
    std::error_code egal; // one more is no harm
    for (const auto tag : alle)
        if (!bleiben.contains(tag))
            fs::remove(pfad(was, tag), egal);
}

std::set<Sicherungstag> Sicherungen::tage(Gesichertes was) const {
    std::set<Sicherungstag> alle;
    std::error_code fehler;
    for (fs::directory_iterator datei(ordner(), fehler), ende; !fehler && datei != ende;
         datei.increment(fehler))
        if (const auto tag = tagVon(nameVon(was), datei->path().filename().string()))
            alle.insert(*tag);
    return alle;
}

std::string Sicherungen::pfad(Gesichertes was, Sicherungstag tag) const {
    const auto& name = nameVon(was);
    std::string datei(name.stamm);
    datei += datumstext(tag);
    datei += name.endung;
    return (ordner() / datei).string();
}

std::optional<Sicherung> Sicherungen::neuesteGute(Gesichertes was, Sicherungstag heute) const {
    for (const auto tag : nachAlter(tage(was), heute))
        if (const auto dieser = pfad(was, tag); gut(was, dieser))
            return Sicherung{dieser, tag};
    return std::nullopt;
}

bool Sicherungen::schreibbar() const {
    return access(datenbank_.c_str(), W_OK) == 0;
}

bool Sicherungen::achsendateiBeschaedigt() const {
    const auto text = inhalt(gamepadXml_);
    return text && !lesbareTabelle(*text);
}

std::string Sicherungen::zuruecksichern(Gesichertes was, const Sicherung& sicherung) const {
    const auto neues = was == Gesichertes::Datenbank ? gutesAbbild(sicherung.pfad) : inhalt(sicherung.pfad);
    const auto ziel = ohneVerweise(datei(was));
    if (!neues || !ziel)
        throw LaufzeitFehler(Fehlernummer::EinAusgabe, "„" + sicherung.pfad + "“ lässt sich nicht lesen.");
    const auto ablage = ablagename(ziel->string());
    if (!beiseite(ziel->string(), ablage))
        keinPlatz(ablage);
    if (!beidateienUmziehen(ziel->string(), ablage) || !ordnerSichern(ordnerVon(*ziel)) ||
        !dateiErsetzen(ziel->string(), *neues))
        throw LaufzeitFehler(Fehlernummer::EinAusgabe, "„" + ziel->string() + "“ lässt sich nicht ersetzen.");
    return ablage;
}

std::set<Sicherungstag> zuBehalten(const std::set<Sicherungstag>& tage, Sicherungstag heute) {
    std::set<Sicherungstag> bleiben;
    std::set<std::pair<int, int>> monate;
    for (const auto tag : nachAlter(tage, heute)) {
        if (bleiben.size() < NEUESTE)
            bleiben.insert(tag);
        if (monate.size() < MONATE)
            monate.emplace(tag.jahr, tag.monat);
    }
    for (const auto& [jahr, monat] : monate)
        bleiben.insert(*tage.lower_bound({jahr, monat, 0}));
    return bleiben;
}
