// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Schemadaten.h"

#include "base/Ebenennamen.h"
#include "base/Tastennamen.h"
#include "formats/Stickaktion.h"
#include "formats/Textpruefung.h"
#include "store/files/Xml.h"
#include "store/schema/Linientabelle.h"
#include "store/schema/VarTastenbelegung.h"

#include <algorithm>
#include <set>
#include <utility>

using namespace schematabelle;

namespace {

constexpr std::size_t MEISTE_AKTIONEN = 10000; ///< far more than a plane has fields that anyone would fill
constexpr std::size_t LAENGSTER_PFAD = 4096;

// Ordinals behind Schemaname.
constexpr std::size_t INDEX = 0;    ///< of the tables of lines
constexpr std::size_t UMSCHALT = 0; ///< of the tables of actions
constexpr std::size_t AKTION = 5;
constexpr std::size_t PROGRAMMPFAD = 12;

constexpr std::array<const char*, EBENEN> EBENENENDUNG{"", "2", "3"};

using Spalten = std::vector<Spalte>;

Spalten tastenspalten() {
    Spalten spalten;
    const auto tasten = [&](int ebene) {
        for (int taste = 0; taste < TASTEN; ++taste)
            spalten.push_back({"btn" + tastennummer(ebene, taste), Spaltenart::Text});
    };
    tasten(0);
    spalten.push_back({"Programmpfad", Spaltenart::Text});
    tasten(1);
    spalten.push_back({"Funktion", Spaltenart::Ganzzahl16});
    tasten(2);
    return spalten;
}

Spalten ebenenspalten(Spalten anfang, const std::array<const char*, RICHTUNGEN>& richtungen, Spaltenart art) {
    for (const auto* endung : EBENENENDUNG)
        for (const std::string richtung : richtungen)
            anfang.push_back({richtung + endung, art});
    return anfang;
}

Spalten linienspalten() {
    return ebenenspalten({{"index", Spaltenart::Ganzzahl16}}, LINIENRICHTUNGEN, Spaltenart::Ganzzahl32);
}

Spalten aktionsspalten() {
    Spalten spalten{{"Umschalt", Spaltenart::Ganzzahl16}};
    for (const auto* richtung : LINIENRICHTUNGEN)
        spalten.push_back({richtung, Spaltenart::Ganzzahl32});
    spalten.push_back({"Aktion", Spaltenart::Text});
    return spalten;
}

Spalten reglerspalten(const std::vector<const char*>& namen) {
    Spalten spalten;
    for (const auto* name : namen)
        spalten.push_back({name, Spaltenart::Ganzzahl16});
    return spalten;
}

std::string bisZumNamen(std::string_view tabelle) {
    std::string text = "SELECT * FROM ";
    text += tabelle;
    text += " WHERE (";
    text += tabelle;
    text += ".Schemaname)= '";
    return text;
}

Recordset zeilenVon(Database& datenbank, const Schematabelle& tabelle, const std::string& schemaName) {
    return datenbank.OpenRecordset(anweisung(bisZumNamen(tabelle.name), schemaName));
}

// --- checks ---

[[noreturn]] void unpassend(const std::string& wo, const std::string& grund) {
    throw LaufzeitFehler(Fehlernummer::FalscherTyp, wo + ": " + grund + ".");
}

void verlange(const Mangel& mangel, const std::string& wo) {
    if (mangel)
        unpassend(wo, *mangel);
}

std::string ortVon(std::size_t tabelle, std::size_t spalte) {
    const auto& beschreibung = schematabellen()[tabelle];
    std::string wo(beschreibung.name);
    wo += ", Spalte ";
    wo += beschreibung.spalten[spalte].name;
    return wo;
}

/// Throws unless the column holds a value of its kind. Only of the sticks' tables none may be empty.
void wertPruefen(std::size_t tabelle, std::size_t spalte, const Wert& wert) {
    const bool stick = tabelle >= STICK && tabelle <= STICKAKTION_R;
    const auto& art = schematabellen()[tabelle].spalten[spalte];
    if (istNull(wert)) {
        if (stick && art.art != Spaltenart::Text)
            unpassend(ortVon(tabelle, spalte), "hier fehlt eine Zahl");
        return;
    }
    try {
        passendFuer(art, wert);
    } catch (const LaufzeitFehler& fehler) {
        unpassend(ortVon(tabelle, spalte), fehler.what());
    }
    if (const auto* text = std::get_if<std::string>(&wert); text && !xmlZeichenzahl(*text))
        unpassend(ortVon(tabelle, spalte), "der Text enthält Zeichen, die nichts bedeuten");
}

std::string tastenort(int taste, int ebene) {
    std::string wo(TASTENBESCHRIFTUNG[static_cast<std::size_t>(taste)]);
    wo += " auf der Ebene ";
    wo += EBENENNAMEN[static_cast<std::size_t>(ebene)];
    return wo;
}

std::string belegungVon(const Schemadaten& daten, int taste, int ebene) {
    const bool kreuz = taste >= TASTEN;
    const auto& zeilen = daten.zeilen[kreuz ? STEUERKREUZ : TASTATUR];
    if (zeilen.empty())
        return "";
    const int ordinal =
        kreuz ? KREUZSPALTEN.ordinal(ebene, taste - TASTEN) : TASTENSPALTEN.ordinal(ebene, taste);
    return alsText(zeilen.front().at(static_cast<std::size_t>(ordinal - 1)));
}

void tastenPruefen(const Schemadaten& daten) {
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = 0; taste < SLOTS; ++taste)
            verlange(belegungsmangel(belegungVon(daten, taste, ebene)), tastenort(taste, ebene));
    if (alsText(daten.zeilen[TASTATUR].front().at(PROGRAMMPFAD)).size() > LAENGSTER_PFAD)
        unpassend("Programmpfad", "der Text ist zu lang");
}

void linienPruefen(const Schemadaten& daten, std::size_t tabelle) {
    std::set<std::int64_t> vorhandene;
    for (const auto& zeile : daten.zeilen[tabelle]) {
        const auto index = alsZahl(zeile.at(INDEX));
        if (index < 1 || index > ZEILEN_JE_STICK || !vorhandene.insert(index).second)
            unpassend(ortVon(tabelle, INDEX), "die Zeile " + std::to_string(index) + " darf es nicht geben");
    }
}

void aktionenPruefen(const Schemadaten& daten, std::size_t tabelle) {
    for (const auto& zeile : daten.zeilen[tabelle]) {
        const auto ebene = alsZahl(zeile.at(UMSCHALT));
        if (ebene < 0 || ebene >= EBENEN)
            unpassend(ortVon(tabelle, UMSCHALT), "eine Ebene " + std::to_string(ebene) + " gibt es nicht");
        verlange(stickaktionsmangel(alsText(zeile.at(AKTION))),
                 tabelle == STICKAKTION ? "Linker Stick" : "Rechter Stick");
    }
}

void achsenPruefen(const Gamepadzeile& achsen) {
    for (const auto& [spalte, text] : achsen) {
        if (!gamepadNimmt(spalte, text))
            unpassend(spalte, "der Text ist zu lang oder enthält Zeichen, die nichts bedeuten");
        verlange(spalte == "Schubregler" ? schubtextmangel(text) : achsennamensmangel(text), spalte);
    }
}

void tabellePruefen(const Schemadaten& daten, std::size_t tabelle) {
    const auto& beschreibung = schematabellen()[tabelle];
    if (daten.zeilen[tabelle].size() > beschreibung.meisteZeilen)
        unpassend(std::string(beschreibung.name), "zu viele Zeilen");
    for (const auto& zeile : daten.zeilen[tabelle])
        for (std::size_t spalte = 0; spalte < beschreibung.spalten.size(); ++spalte)
            wertPruefen(tabelle, spalte, zeile.at(spalte));
}

bool tutNichts(const std::string& belegung) {
    return belegung.empty() || belegung == LEERE_BELEGUNG || belegung == "leer" ||
           belegung.starts_with("10,");
}

} // namespace

const std::array<Schematabelle, ANZAHL>& schematabellen() {
    constexpr std::size_t LINIEN = ZEILEN_JE_STICK;
    static const std::array<Schematabelle, ANZAHL> tabellen{
        {{"tblTastatur", tastenspalten(), 1},
         {"tblSteuerKreuz", ebenenspalten({}, KREUZRICHTUNGEN, Spaltenart::Text), 1},
         {"tblStick", linienspalten(), LINIEN},
         {"tblStickR", linienspalten(), LINIEN},
         {"tblStickAktion", aktionsspalten(), MEISTE_AKTIONEN},
         {"tblStickAktionR", aktionsspalten(), MEISTE_AKTIONEN},
         {"Sensible",
          reglerspalten({"Fenster_ly", "Fenster_lx", "Mindestzahl_ly", "Mindestzahl_lx", "Rand_ly", "Rand_lx",
                         "Wiederholung"}),
          1},
         {"SensibleR",
          reglerspalten(
              {"Fenster_rx", "Fenster_ry", "Mindestzahl_rx", "Mindestzahl_ry", "Rand_rx", "Rand_ry"}),
          1}}};
    return tabellen;
}

Schemadaten schemadatenLesen(Database& datenbank, const std::string& schemaName) {
    Schemadaten daten;
    for (std::size_t t = 0; t < ANZAHL; ++t) {
        const auto& tabelle = schematabellen()[t];
        for (Recordset satz = zeilenVon(datenbank, tabelle, schemaName); !satz.get_EOF(); satz.MoveNext()) {
            auto& zeile = daten.zeilen[t].emplace_back();
            for (std::size_t i = 1; i <= tabelle.spalten.size(); ++i)
                zeile.push_back(satz.get_Value(static_cast<int>(i)));
            if (tabelle.meisteZeilen == 1)
                break; // only the first one is ever read
        }
    }
    if (daten.zeilen[TASTATUR].empty())
        throw LaufzeitFehler(Fehlernummer::KeinAktuellerSatz,
                             "Das Schema „" + schemaName + "“ gibt es in der Datenbank nicht.");
    return daten;
}

void schemadatenAnlegen(Database& datenbank, const std::string& schemaName, const Schemadaten& daten) {
    for (std::size_t t = 0; t < ANZAHL; ++t) {
        Recordset satz = zeilenVon(datenbank, schematabellen()[t], schemaName);
        for (const auto& zeile : daten.zeilen[t]) {
            satz.AddNew();
            satz.put_Value(0, schemaName);
            int ordinal = 0;
            for (const auto& wert : zeile)
                satz.put_Value(++ordinal, wert);
            satz.Update();
        }
    }
}

void schemazeilenUmbenennen(Database& datenbank, const std::string& alt, const std::string& neu) {
    anweisung("", neu); // throws for a name that no statement could carry later
    for (const auto& tabelle : schematabellen()) {
        Recordset satz = zeilenVon(datenbank, tabelle, alt);
        if (satz.get_EOF() && tabelle.name == schematabellen()[TASTATUR].name)
            throw LaufzeitFehler(Fehlernummer::KeinAktuellerSatz,
                                 "Das Schema „" + alt + "“ gibt es in der Datenbank nicht.");
        for (; !satz.get_EOF(); satz.MoveNext()) {
            satz.Edit();
            satz.put_Value(0, neu);
            satz.Update();
        }
    }
}

void schemadatenPruefen(const Schemadaten& daten) {
    for (std::size_t t = 0; t < ANZAHL; ++t)
        tabellePruefen(daten, t);
    if (daten.zeilen[TASTATUR].empty())
        unpassend("tblTastatur", "es gibt keine Zeile");
    tastenPruefen(daten);
    for (const auto tabelle : {STICK, STICK_R})
        linienPruefen(daten, tabelle);
    for (const auto tabelle : {STICKAKTION, STICKAKTION_R})
        aktionenPruefen(daten, tabelle);
    if (daten.achsen)
        achsenPruefen(*daten.achsen);
}

std::array<bool, EBENEN> benutzteEbenen(const Schemadaten& daten) {
    std::array<bool, EBENEN> benutzte{};
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = 0; taste < SLOTS; ++taste)
            benutzte[static_cast<std::size_t>(ebene)] |= !tutNichts(belegungVon(daten, taste, ebene));
    for (const auto tabelle : {STICKAKTION, STICKAKTION_R})
        for (const auto& zeile : daten.zeilen[tabelle])
            if (!istNurLeerfeld(alsText(zeile.at(AKTION))))
                benutzte[static_cast<std::size_t>(alsZahl(zeile.at(UMSCHALT)))] = true;
    return benutzte;
}
