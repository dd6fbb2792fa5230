// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Schemabeiwerk.h"

#include "base/Slots.h"
#include "store/db/Datenbank.h"
#include "store/files/Bilddatei.h"
#include "store/files/Dateiersatz.h"
#include "store/files/Dateisperre.h"
#include "store/files/Gamepaddatei.h"
#include "store/files/Streubilddateien.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace {

[[noreturn]] void nichtGeschrieben(const std::string& was) {
    throw LaufzeitFehler(Fehlernummer::EinAusgabe,
                         was + " lässt sich nicht schreiben. Ist der Ordner schreibgeschützt oder der "
                               "Datenträger voll?");
}

// --- the axis file ---

[[noreturn]] void achsendateiUnlesbar() {
    throw LaufzeitFehler(Fehlernummer::DateiBeschaedigt, "Gamepad.xml lässt sich nicht lesen.");
}

Gamepadtabelle achsentabelle(const std::string& gamepadXml) {
    if (!gamepadDateiDa(gamepadXml))
        return leereGamepadtabelle();
    auto tabelle = gamepadLesen(gamepadXml);
    if (!tabelle)
        achsendateiUnlesbar();
    return *std::move(tabelle);
}

/// A row with all its columns but the name.
std::optional<Gamepadzeile> ganzeZeile(const std::string& gamepadXml, const std::string& schemaName) {
    for (auto zeile : achsentabelle(gamepadXml).zeilen)
        if (istZeileVon(zeile, schemaName)) {
            zeile.erase("Schema");
            return zeile;
        }
    return std::nullopt;
}

std::size_t zeilenEntfernen(Gamepadtabelle& tabelle, const std::string& schemaName) {
    return std::erase_if(tabelle.zeilen,
                         [&](const Gamepadzeile& zeile) { return istZeileVon(zeile, schemaName); });
}

void achsenSetzen(const std::string& gamepadXml, const std::string& schemaName, Gamepadzeile zeile) {
    const Dateisperre sperre(gamepadXml);
    if (!sperre.frei())
        throw LaufzeitFehler(Fehlernummer::Gesperrt, "Gamepad.xml ist von einem anderen Programm gesperrt.");
    auto tabelle = achsentabelle(gamepadXml);
    zeilenEntfernen(tabelle, schemaName);
    std::erase_if(zeile, [&](const auto& spalte) { return !tabelle.hatSpalte(spalte.first); });
    zeile["Schema"] = schemaName;
    tabelle.zeilen.push_back(std::move(zeile));
    if (!gamepadSpeichern(gamepadXml, tabelle))
        nichtGeschrieben("Gamepad.xml");
}

bool achsenLoeschen(const std::string& gamepadXml, const std::string& schemaName) {
    const Dateisperre sperre(gamepadXml);
    if (!gamepadDateiDa(gamepadXml))
        return true;
    auto tabelle = sperre.frei() ? gamepadLesen(gamepadXml) : std::nullopt;
    if (!tabelle)
        return false;
    return zeilenEntfernen(*tabelle, schemaName) == 0 || gamepadSpeichern(gamepadXml, *tabelle);
}

// --- pictures ---

constexpr std::uintmax_t GROESSTE_BILDDATEI = std::uintmax_t{300} << 20;

std::string bildHolen(const fs::path& datei) {
    std::error_code grund;
    const auto groesse = fs::file_size(datei, grund); // of regular files only, as they were looked up
    const int deskriptor =
        grund || groesse > GROESSTE_BILDDATEI ? -1 : open(datei.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    std::string inhalt(deskriptor < 0 ? 0 : groesse, '\0');
    std::size_t gelesen = 0;
    ssize_t anzahl = deskriptor < 0 ? -1 : 1;
    while (anzahl > 0 && gelesen < inhalt.size()) {
        anzahl = read(deskriptor, inhalt.data() + gelesen, inhalt.size() - gelesen);
        if (anzahl < 0 && errno == EINTR)
            anzahl = 1;
        else
            gelesen += static_cast<std::size_t>(std::max<ssize_t>(anzahl, 0));
    }
    if (deskriptor >= 0)
        close(deskriptor);
    if (anzahl < 0 || gelesen < inhalt.size())
        throw LaufzeitFehler(Fehlernummer::EinAusgabe,
                             "Das Bild „" + datei.filename().string() + "“ lässt sich nicht lesen.");
    return inhalt;
}

std::vector<std::string> bildnamen(const std::string& schemaName) {
    std::vector<std::string> namen;
    for (const auto& endung : bildendungen())
        namen.push_back(schemaName + endung);
    return namen;
}

/// False when a power cut could bring one of them back.
bool bilderLoeschen(const Schemaplatz& platz, const std::string& schemaName) {
    std::error_code grund;
    if (!fs::exists(platz.bilderPfad, grund))
        return !grund;
    StickBilderLoeschen(platz.bilderPfad, schemaName);
    return ordnerSichern(platz.bilderPfad) && !hatBilder(platz, schemaName);
}

// --- what runs have counted ---

void streubilderKopieren(const Schemaplatz& platz, const std::string& von, const std::string& nach) {
    const Streubilddateien dateien(streubildordner(platz.datenbankPfad));
    for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            if (const auto daten = dateien.laden(von, seite, ebene);
                daten != Streudaten{} && !dateien.speichern(nach, seite, ebene, daten))
                nichtGeschrieben("Das Streubild von „" + nach + "“");
}

// --- the note ---

/// Behind all names; a note that a power cut has left without it was not safe, and nothing was done yet.
constexpr std::string_view VERMERK_ENDE = "ENDE";

std::string vermerkpfad(const std::string& datenbankPfad) {
    return ohneVerweise(datenbankPfad).value_or(datenbankPfad).string() + ".vorhaben";
}

std::string vermerktext(const std::vector<std::string>& namen) {
    std::string text;
    for (const auto& name : namen)
        (text += name) += '\0'; // no name holds one
    return text += VERMERK_ENDE;
}

std::vector<std::string> vermerkteNamen(std::string_view text) {
    std::vector<std::string> namen;
    for (auto ende = text.find('\0'); ende != std::string_view::npos; ende = text.find('\0')) {
        namen.emplace_back(text.substr(0, ende));
        text.remove_prefix(ende + 1);
    }
    return text == VERMERK_ENDE ? namen : std::vector<std::string>();
}

std::string ganzGelesen(int deskriptor) {
    constexpr std::size_t GENUG = std::size_t{1} << 16;
    std::string text(GENUG, '\0');
    const ssize_t anzahl = pread(deskriptor, text.data(), text.size(), 0);
    text.resize(anzahl > 0 ? static_cast<std::size_t>(anzahl) : 0);
    return text;
}

/// Whether the file that is open still has its name, and is a file.
bool hatNamen(int deskriptor) {
    struct stat stand {};
    return fstat(deskriptor, &stand) == 0 && S_ISREG(stand.st_mode) && stand.st_nlink == 1;
}

enum class Warten { Nein, ZweiSekunden };

/// Locks the note, made where `art` says so. Below 0 where there is none, or another one keeps it.
int vermerkSperren(const std::string& pfad, int art, Warten warten) {
    using namespace std::chrono_literals;
    const auto ende = std::chrono::steady_clock::now() + (warten == Warten::Nein ? 0s : 2s);
    while (true) {
        const int deskriptor = open(pfad.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | art, 0600);
        if (deskriptor < 0)
            return -1;
        const bool gesperrt = flock(deskriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
        if (gesperrt && hatNamen(deskriptor))
            return deskriptor;
        close(deskriptor);
        if (std::chrono::steady_clock::now() >= ende) {
            errno = EWOULDBLOCK;
            return -1;
        }
        std::this_thread::sleep_for(1ms);
    }
}

/// What the database has of the names in a note.
struct Besitz {
    std::vector<std::string> namen; ///< all `Schema`s there are
    bool hat(const std::string& name) const { return std::ranges::find(namen, name) != namen.end(); }
    bool hatBilderVon(const std::string& name) const {
        return std::ranges::any_of(namen, [&](const auto& eines) { return gleicherBildname(eines, name); });
    }
};

Besitz besitz(const std::string& datenbankPfad) {
    Besitz gefunden;
    Database datenbank = OpenDatabase(datenbankPfad);
    datenbank.inEinemLesezug([&] {
        for (Recordset satz = datenbank.OpenRecordset("tblTastatur"); !satz.get_EOF(); satz.MoveNext())
            gefunden.namen.push_back(alsText(satz.get_Value("Schemaname")));
    });
    return gefunden;
}

/// False when something without an owner may still be there.
bool ohneBesitzerLoeschen(const Schemaplatz& platz, const std::vector<std::string>& namen) {
    if (namen.empty())
        return true;
    // The last step of a commit is to bring the folder to the disk. Where that has failed a power cut could
    // bring a Schema back whose pictures are cleared away here.
    if (!ordnerSichern(ordnerVon(platz.datenbankPfad)))
        return false;
    const auto vorhandene = besitz(platz.datenbankPfad);
    bool weg = true;
    for (const auto& name : namen)
        if (!vorhandene.hat(name))
            weg = beiwerkLoeschen(platz, name, vorhandene.hatBilderVon(name)) && weg;
    return weg;
}

/// Does what the note in `deskriptor` is for; it stays where that fails, for the next start.
void vermerkErledigen(const Schemaplatz& platz, const std::string& pfad, int deskriptor) {
    try {
        if (ohneBesitzerLoeschen(platz, vermerkteNamen(ganzGelesen(deskriptor))))
            unlink(pfad.c_str());
    } catch (const LaufzeitFehler&) { // a database that can't be read says nothing of who owns what
    }
}

} // namespace

const std::vector<std::string>& bildendungen() {
    static const std::vector<std::string> endungen = [] {
        std::vector<std::string> alle;
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            for (const char* ende : {"L.bmp", "R.bmp"})
                alle.push_back(std::to_string(ebene) + ende);
        return alle;
    }();
    return endungen;
}

bool hatBilder(const Schemaplatz& platz, const std::string& schemaName) {
    return std::ranges::any_of(bildnamen(schemaName), [&](const std::string& name) {
        return !bilddateien(platz.bilderPfad, name).empty();
    });
}

std::optional<Gamepadzeile> achsenzeileLesen(const std::string& gamepadXml, const std::string& schemaName) {
    auto zeile = ganzeZeile(gamepadXml, schemaName);
    const auto fremd = [](const auto& spalte) {
        return std::ranges::none_of(GAMEPADSPALTEN,
                                    [&](const auto& groesse) { return groesse.spalte == spalte.first; });
    };
    if (zeile)
        std::erase_if(*zeile, fremd);
    return zeile;
}

void beiwerkAnlegen(const Schemaplatz& platz, const std::string& schemaName,
                    const std::optional<Gamepadzeile>& achsen, const std::vector<std::string>& endungen,
                    const Bildinhalt& bilder) {
    for (const auto& endung : endungen)
        if (!bilddateiSchreiben(platz.bilderPfad, schemaName + endung, bilder(endung)))
            nichtGeschrieben("Das Bild „" + schemaName + endung + "“");
    if (achsen)
        achsenSetzen(platz.gamepadXml, schemaName, *achsen);
}

void beiwerkKopieren(const Schemaplatz& platz, const std::string& von, const std::string& nach) {
    std::vector<std::string> endungen;
    if (!gleicherBildname(von, nach))
        std::ranges::copy_if(bildendungen(), std::back_inserter(endungen), [&](const std::string& endung) {
            return !bilddateien(platz.bilderPfad, von + endung).empty();
        });
    beiwerkAnlegen(platz, nach, ganzeZeile(platz.gamepadXml, von), endungen, [&](std::string_view endung) {
        return bildHolen(bilddateien(platz.bilderPfad, von + std::string(endung)).front());
    });
    streubilderKopieren(platz, von, nach);
}

std::optional<Beiwerkablage> beiwerkVerwahren(const Schemaplatz& platz, const std::string& schemaName,
                                              bool bilderBleiben) {
    auto pfade = Streubilddateien(streubildordner(platz.datenbankPfad)).dateien(schemaName);
    if (!bilderBleiben)
        for (const auto& name : bildnamen(schemaName))
            std::ranges::move(bilddateien(platz.bilderPfad, name), std::back_inserter(pfade));
    Beiwerkablage ablage;
    for (const auto& pfad : pfade) {
        auto datei = Verwahrdatei::oeffnen(pfad);
        if (!datei)
            return std::nullopt;
        ablage.dateien.push_back(*std::move(datei));
    }
    try {
        ablage.achsen = ganzeZeile(platz.gamepadXml, schemaName);
    } catch (const LaufzeitFehler&) {
        return std::nullopt;
    }
    return ablage;
}

std::string beiwerkImWeg(const Schemaplatz& platz, const std::string& schemaName,
                         const Beiwerkablage& ablage) {
    for (const auto& datei : ablage.dateien)
        if (datei.nameVergeben())
            return "Unter seinem Namen liegt inzwischen ein anderes Bild: „" + datei.pfad().string() + "“.";
    if (const auto zeile = ganzeZeile(platz.gamepadXml, schemaName); zeile && zeile != ablage.achsen)
        return "Unter seinem Namen liegen inzwischen andere Achsen in Gamepad.xml.";
    return "";
}

void beiwerkZuruecklegen(const Schemaplatz& platz, const std::string& schemaName,
                         const Beiwerkablage& ablage) {
    for (const auto& datei : ablage.dateien)
        if (!datei.zuruecklegen())
            nichtGeschrieben("Die Datei „" + datei.pfad().string() + "“");
    if (ablage.achsen)
        achsenSetzen(platz.gamepadXml, schemaName, *ablage.achsen);
}

void StickBilderLoeschen(const std::string& bilderPfad, const std::string& schemaName) {
    bilddateienLoeschen(bilderPfad, bildnamen(schemaName));
}

bool beiwerkLoeschen(const Schemaplatz& platz, const std::string& schemaName, bool bilderBleiben) {
    const bool gezaehltesWeg = Streubilddateien(streubildordner(platz.datenbankPfad)).loeschen(schemaName);
    const bool bilderWeg = bilderBleiben || bilderLoeschen(platz, schemaName);
    return achsenLoeschen(platz.gamepadXml, schemaName) && bilderWeg && gezaehltesWeg;
}

Beiwerkvermerk::Beiwerkvermerk(Schemaplatz platz, const std::vector<std::string>& namen)
    : platz_(std::move(platz)), pfad_(vermerkpfad(platz_.datenbankPfad)) {
    deskriptor_ = vermerkSperren(pfad_, O_CREAT, Warten::ZweiSekunden);
    if (deskriptor_ < 0 && errno == EWOULDBLOCK)
        throw LaufzeitFehler(Fehlernummer::Gesperrt,
                             "Eine andere Kopie des Programms nimmt gerade ein Schema auf. Bitte "
                             "versuchen Sie es gleich noch einmal.");
    // One that could not be done stays before this one, as it is still to be done.
    auto alle = deskriptor_ < 0 ? namen : vermerkteNamen(ganzGelesen(deskriptor_));
    alle.insert(alle.end(), namen.begin(), namen.end());
    const auto text = vermerktext(alle);
    const bool sicher = deskriptor_ >= 0 && ftruncate(deskriptor_, 0) == 0 &&
                        pwrite(deskriptor_, text.data(), text.size(), 0) == std::ssize(text) &&
                        fsync(deskriptor_) == 0 && ordnerSichern(ordnerVon(pfad_));
    if (sicher)
        return;
    if (deskriptor_ >= 0)
        close(deskriptor_);
    nichtGeschrieben("Die Datei „" + pfad_ + "“");
}

Beiwerkvermerk::~Beiwerkvermerk() {
    vermerkErledigen(platz_, pfad_, deskriptor_);
    close(deskriptor_);
}

void beiwerkAufraeumen(const Schemaplatz& platz) {
    const auto pfad = vermerkpfad(platz.datenbankPfad);
    const int deskriptor = vermerkSperren(pfad, 0, Warten::Nein);
    if (deskriptor < 0)
        return;
    vermerkErledigen(platz, pfad, deskriptor);
    close(deskriptor);
}
