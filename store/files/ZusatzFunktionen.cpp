#include "store/files/ZusatzFunktionen.h"

#include "store/files/Dateiersatz.h"
#include "store/files/Dateisperre.h"
#include "store/files/Gamepaddatei.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t ABGEFRAGTE_GROESSE = 64;
constexpr std::uint32_t ALLE_WERTE = 255;

/// What belongs to a raw axis: its column and its field of the poll.
struct Rohachse {
    std::string_view spalte;
    std::uint32_t JOYINFOEX::*wert;
};
constexpr std::array<Rohachse, ACHSEN> ROHACHSEN{{{"dwXPos", &JOYINFOEX::dwXpos},
                                                  {"dwYPos", &JOYINFOEX::dwYpos},
                                                  {"dwZPos", &JOYINFOEX::dwZpos},
                                                  {"dwRPos", &JOYINFOEX::dwRpos},
                                                  {"dwUPos", &JOYINFOEX::dwUpos},
                                                  {"dwVPos", &JOYINFOEX::dwVpos}}};

std::array<std::string, ACHSEN> grundbelegung() {
    std::array<std::string, ACHSEN> namen;
    std::copy(ACHSENNAMEN.begin(), ACHSENNAMEN.end(), namen.begin());
    return namen;
}

template <class Arbeit> void ohneFehler(Arbeit arbeit) {
    try {
        arbeit();
    } catch (const std::exception&) {
        // No memory, or a path that cannot be one: as good as no file.
    }
}

std::optional<Gamepadtabelle> tabelleLesen(const std::string& pfad) {
    std::error_code grund;
    if (!fs::is_regular_file(pfad, grund))
        return std::nullopt; // the opening of a pipe would wait
    if (fs::file_size(pfad, grund) > GROESSTES_XML)
        return std::nullopt;
    std::ifstream datei(pfad, std::ios::binary);
    const std::string inhalt{std::istreambuf_iterator<char>(datei), {}};
    return datei.bad() ? std::nullopt : gamepadAusXml(inhalt);
}

bool tabelleSpeichern(const std::string& pfad, const Gamepadtabelle& tabelle) {
    const auto xml = gamepadAlsXml(tabelle);
    return xml && dateiErsetzen(pfad, *xml);
}

bool istZeileVon(const Gamepadzeile& zeile, const std::string& schema) {
    const auto name = zeile.find("Schema");
    return name != zeile.end() && name->second == schema;
}

/// The row that the search for a `Schema` stands on; behind the last one when it finds none. A name with an
/// apostrophe makes no condition that could be searched for: the search stays on the first row, whosever that
/// is. It is read, but only its own `Schema` changes or deletes it.
std::vector<Gamepadzeile>::iterator suchen(Gamepadtabelle& tabelle, const std::string& schema) {
    auto& zeilen = tabelle.zeilen;
    if (schema.find('\'') != std::string::npos)
        return zeilen.begin();
    return std::find_if(zeilen.begin(), zeilen.end(),
                        [&](const Gamepadzeile& zeile) { return istZeileVon(zeile, schema); });
}

/// Sets a value of a row. One for a column that the file does not have is left out. False when the column
/// does not take the text.
bool setzen(const Gamepadtabelle& tabelle, Gamepadzeile& zeile, std::string_view spalte,
            const std::string& text) {
    if (!gamepadNimmt(spalte, text))
        return false;
    if (tabelle.hatSpalte(spalte))
        zeile[std::string(spalte)] = text;
    return true;
}

bool belegungSetzen(const Gamepadtabelle& tabelle, Gamepadzeile& zeile,
                    const std::array<std::string, ACHSEN>& namen) {
    for (std::size_t i = 0; i < ACHSEN; ++i)
        if (!setzen(tabelle, zeile, ROHACHSEN[i].spalte, namen[i]))
            return false;
    return true;
}

/// Appends a row; `schubregler` may be Null. False when the table is not to be saved.
bool zeileAnhaengen(Gamepadtabelle& tabelle, const std::string& schema,
                    const std::array<std::string, ACHSEN>& namen,
                    const std::optional<std::string>& schubregler) {
    Gamepadzeile zeile;
    if (!setzen(tabelle, zeile, "Schema", schema) || !belegungSetzen(tabelle, zeile, namen) ||
        (schubregler && !setzen(tabelle, zeile, "Schubregler", *schubregler)))
        return false;
    tabelle.zeilen.push_back(std::move(zeile));
    return true;
}

/// The value of a column, Null as an empty text.
std::string textVon(const Gamepadzeile& zeile, std::string_view spalte) {
    const auto wert = zeile.find(spalte);
    return wert != zeile.end() ? wert->second : std::string();
}

std::string achsenname(const Achsenauswahl& zeile) {
    if (zeile.Auswahl == "Z-Achse")
        return "Z1";
    if (zeile.Auswahl == "Schubregler")
        return "Z2";
    if (zeile.Auswahl != "Links" && zeile.Auswahl != "Rechts")
        return "";
    std::string name = zeile.Auswahl == "Links" ? "l" : "r";
    if (zeile.Richtung == "Oben/Unten")
        name += 'y';
    else if (zeile.Richtung == "Links/Rechts")
        name += 'x';
    return name;
}

} // namespace

ZusatzFunktionen::ZusatzFunktionen(Joystick& joystick, std::string gamepadXml, const std::string& auswahl)
    : joystick_(joystick), gamepadXml_(std::move(gamepadXml)), auswahl_(auswahl) {}

void ZusatzFunktionen::AchsenLaden() {
    AchsenSchluessel_ = {};
    ohneFehler([&] { laden(); });
}

void ZusatzFunktionen::AchsenLesen() {
    info_.dwSize = ABGEFRAGTE_GROESSE;
    info_.dwFlags = ALLE_WERTE;
    // A poll that fails leaves the last values, which are then given out again, by the names of now.
    if (joystick_.joyGetPosEx(0, info_) == JOYERR_NOERROR)
        abgefragt_ = true;
    AchsenWerte_ = {};
    if (!abgefragt_)
        return;
    for (std::size_t i = 0; i < ACHSEN; ++i)
        for (std::size_t achse = 0; achse < ACHSEN; ++achse)
            if (AchsenSchluessel_[i] == ACHSENNAMEN[achse] && !AchsenWerte_[achse])
                AchsenWerte_[achse] = static_cast<std::int32_t>(info_.*ROHACHSEN[i].wert);
}

bool ZusatzFunktionen::AchsenUebernehmen(const std::array<Achsenauswahl, ACHSEN>& tabelle) {
    std::transform(tabelle.begin(), tabelle.end(), AchsenSchluessel_.begin(), achsenname);
    bool gespeichert = false;
    ohneFehler([&] { gespeichert = schreiben("", AchsenSchluessel_); });
    return gespeichert;
}

bool ZusatzFunktionen::GamepadSchreiben(const std::string& text) {
    bool gespeichert = false;
    ohneFehler([&] { gespeichert = schreiben(text, grundbelegung()); });
    return gespeichert;
}

bool ZusatzFunktionen::GamepadLoeschen() {
    bool geloescht = false;
    ohneFehler([&] { geloescht = loeschen(); });
    return geloescht;
}

void ZusatzFunktionen::GamepadAnlegen() {
    ohneFehler([&] { anlegen(); });
}

/// What cannot be looked at counts as there: it is not to be made anew.
bool ZusatzFunktionen::istDateiDa() const {
    std::error_code grund;
    const auto art = fs::status(gamepadXml_, grund).type();
    return art != fs::file_type::not_found && art != fs::file_type::directory;
}

void ZusatzFunktionen::laden() {
    // The slider text is that of the row that the program stands on, and the next run plays it. So it must
    // not outlive its `Schema`: one whose row is made only now, a row whose text is Null, and a file that
    // can't be read leave it empty. Only a file that breaks under the same `Schema` leaves it what it had.
    if (SchubreglerSchema_ != auswahl_)
        SchubreglerText_.clear();
    SchubreglerSchema_ = auswahl_;
    if (!istDateiDa()) {
        SchubreglerText_.clear();
        anlegen();
        return;
    }
    auto tabelle = tabelleLesen(gamepadXml_);
    if (!tabelle)
        return;
    const auto zeile = suchen(*tabelle, auswahl_);
    if (zeile == tabelle->zeilen.end()) {
        SchubreglerText_.clear();
        schreiben("", grundbelegung());
        return;
    }
    // A name with an apostrophe takes the slider text of the first row along; it does not come to play it, as
    // the database refuses to read such a `Schema` for a run.
    for (std::size_t i = 0; i < ACHSEN; ++i)
        AchsenSchluessel_[i] = textVon(*zeile, ROHACHSEN[i].spalte);
    SchubreglerText_ = textVon(*zeile, "Schubregler");
}

bool ZusatzFunktionen::schreiben(const std::string& text, const std::array<std::string, ACHSEN>& neue) {
    const Dateisperre sperre(gamepadXml_);
    auto tabelle = sperre.frei() ? tabelleLesen(gamepadXml_) : std::nullopt;
    if (!tabelle)
        return false;
    const auto zeile = suchen(*tabelle, auswahl_);
    bool passt = false;
    if (zeile == tabelle->zeilen.end()) {
        AchsenSchluessel_ = neue;
        passt = zeileAnhaengen(*tabelle, auswahl_, neue, text);
    } else if (istZeileVon(*zeile, auswahl_)) {
        passt = belegungSetzen(*tabelle, *zeile, AchsenSchluessel_) &&
                (text.empty() || setzen(*tabelle, *zeile, "Schubregler", text));
    }
    return passt && tabelleSpeichern(gamepadXml_, *tabelle);
}

bool ZusatzFunktionen::loeschen() {
    const Dateisperre sperre(gamepadXml_);
    if (!istDateiDa())
        return true;
    auto tabelle = sperre.frei() ? tabelleLesen(gamepadXml_) : std::nullopt;
    if (!tabelle)
        return false;
    const auto zeile = suchen(*tabelle, auswahl_);
    if (zeile == tabelle->zeilen.end() || !istZeileVon(*zeile, auswahl_))
        return std::none_of(tabelle->zeilen.begin(), tabelle->zeilen.end(),
                            [&](const Gamepadzeile& eine) { return istZeileVon(eine, auswahl_); });
    tabelle->zeilen.erase(zeile);
    return tabelleSpeichern(gamepadXml_, *tabelle);
}

void ZusatzFunktionen::anlegen() {
    AchsenSchluessel_ = grundbelegung();
    const Dateisperre sperre(gamepadXml_);
    if (!sperre.frei() || istDateiDa())
        return;
    Gamepadtabelle tabelle = leereGamepadtabelle();
    if (zeileAnhaengen(tabelle, auswahl_, grundbelegung(), std::nullopt))
        tabelleSpeichern(gamepadXml_, tabelle);
}
