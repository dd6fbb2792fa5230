// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Achsendatei.h"

#include "store/files/Dateisperre.h"
#include "store/files/Gamepaddatei.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace {

// By raw axis.
constexpr std::array<std::string_view, ACHSEN> SPALTEN{"dwXPos", "dwYPos", "dwZPos",
                                                       "dwRPos", "dwUPos", "dwVPos"};

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
        if (!setzen(tabelle, zeile, SPALTEN[i], namen[i]))
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

Achsendatei::Achsendatei(std::string gamepadXml, const std::string& auswahl)
    : gamepadXml_(std::move(gamepadXml)), auswahl_(auswahl) {}

void Achsendatei::AchsenLaden() {
    AchsenSchluessel_ = {};
    ohneFehler([&] { laden(); });
}

bool Achsendatei::AchsenUebernehmen(const std::array<Achsenauswahl, ACHSEN>& tabelle) {
    std::transform(tabelle.begin(), tabelle.end(), AchsenSchluessel_.begin(), achsenname);
    bool gespeichert = false;
    ohneFehler([&] { gespeichert = schreiben("", AchsenSchluessel_); });
    return gespeichert;
}

bool Achsendatei::GamepadSchreiben(const std::string& text) {
    bool gespeichert = false;
    ohneFehler([&] { gespeichert = schreiben(text, grundbelegung()); });
    return gespeichert;
}

bool Achsendatei::GamepadLoeschen() {
    bool geloescht = false;
    ohneFehler([&] { geloescht = loeschen(); });
    return geloescht;
}

void Achsendatei::GamepadAnlegen() {
    ohneFehler([&] { anlegen(); });
}

void Achsendatei::laden() {
    // The slider text is that of the row that the program stands on, and the next run plays it. So it must
    // not outlive its `Schema`: one whose row is made only now, a row whose text is Null, and a file that
    // can't be read leave it empty. Only a file that breaks under the same `Schema` leaves it what it had.
    if (SchubreglerSchema_ != auswahl_)
        SchubreglerText_.clear();
    SchubreglerSchema_ = auswahl_;
    if (!gamepadDateiDa(gamepadXml_)) {
        SchubreglerText_.clear();
        anlegen();
        return;
    }
    auto tabelle = gamepadLesen(gamepadXml_);
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
        AchsenSchluessel_[i] = textVon(*zeile, SPALTEN[i]);
    SchubreglerText_ = textVon(*zeile, "Schubregler");
}

bool Achsendatei::schreiben(const std::string& text, const std::array<std::string, ACHSEN>& neue) {
    const Dateisperre sperre(gamepadXml_);
    auto tabelle = sperre.frei() ? gamepadLesen(gamepadXml_) : std::nullopt;
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
    return passt && gamepadSpeichern(gamepadXml_, *tabelle);
}

bool Achsendatei::loeschen() {
    const Dateisperre sperre(gamepadXml_);
    if (!gamepadDateiDa(gamepadXml_))
        return true;
    auto tabelle = sperre.frei() ? gamepadLesen(gamepadXml_) : std::nullopt;
    if (!tabelle)
        return false;
    const auto zeile = suchen(*tabelle, auswahl_);
    if (zeile == tabelle->zeilen.end() || !istZeileVon(*zeile, auswahl_))
        return std::none_of(tabelle->zeilen.begin(), tabelle->zeilen.end(),
                            [&](const Gamepadzeile& eine) { return istZeileVon(eine, auswahl_); });
    tabelle->zeilen.erase(zeile);
    return gamepadSpeichern(gamepadXml_, *tabelle);
}

void Achsendatei::anlegen() {
    AchsenSchluessel_ = grundbelegung();
    const Dateisperre sperre(gamepadXml_);
    if (!sperre.frei() || gamepadDateiDa(gamepadXml_))
        return;
    Gamepadtabelle tabelle = leereGamepadtabelle();
    if (zeileAnhaengen(tabelle, auswahl_, grundbelegung(), std::nullopt))
        gamepadSpeichern(gamepadXml_, tabelle);
}
