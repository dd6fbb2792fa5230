// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/modLesen.h"

#include "formats/Stickaktion.h"
#include "store/schema/Ebenenspalten.h"

#include <numeric>
#include <utility>

namespace {

/// What a button column of an old file may hold in place of a `Belegung`.
constexpr std::string_view OHNE_BELEGUNG = "leer";

/// What an empty column would leave the readers with has no fields to split; it stands for no action.
std::string belegung(const Wert& wert) {
    std::string text = alsText(wert);
    return text.empty() ? std::string(LEERE_BELEGUNG) : text;
}

void tastenLesen(Database& datenbank, const std::string& schemaName, Laufbild& bild) {
    const Recordset satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblTastatur WHERE (tblTastatur.Schemaname)= '", schemaName));
    // The name may have been typed, or its `Schema` deleted by another copy of the program.
    if (satz.get_EOF())
        throw LaufzeitFehler(Fehlernummer::KeinAktuellerSatz,
                             "Das Schema „" + schemaName + "“ gibt es in der Datenbank nicht.");
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = 0; taste < TASTEN; ++taste)
            bild[static_cast<std::size_t>(ebene)][static_cast<std::size_t>(taste)] =
                belegung(satz.get_Value("Btn" + tastennummer(ebene, taste)));
}

void kreuzLesen(Database& datenbank, const std::string& kreuzanweisung, Laufbild& bild) {
    const Recordset satz = datenbank.OpenRecordset(kreuzanweisung);
    const bool fehlt = satz.get_EOF(); // counts as twelve empty records; saving lays the row
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = TASTEN; taste < SLOTS; ++taste)
            bild[static_cast<std::size_t>(ebene)][static_cast<std::size_t>(taste)] =
                fehlt ? std::string(LEERE_BELEGUNG)
                      : belegung(satz.get_Value(KREUZSPALTEN.ordinal(ebene, taste - TASTEN)));
}

Laufbild texteLesen(const std::string& datenbankPfad, const std::string& schemaName,
                    const std::string& kreuzanweisung) {
    Database datenbank = OpenDatabase(datenbankPfad);
    Laufbild bild;
    datenbank.inEinemLesezug([&] {
        tastenLesen(datenbank, schemaName, bild);
        kreuzLesen(datenbank, kreuzanweisung, bild);
    });
    return bild;
}

/// Sets the fields of a text; false for one that has not just these, which leaves them as those of none.
bool setzeLesbare(VarTastenbelegung& bild, int taste, int ebene, const std::string& text) {
    try {
        bild.setzeBelegung(taste, ebene, text);
        return true;
    } catch (const LaufzeitFehler&) {
        bild.setzeBelegung(taste, ebene, LEERE_BELEGUNG);
        return false;
    }
}

void grundzeileAnlegen(Recordset& satz, const std::string& schemaName, int index) {
    satz.AddNew();
    satz.put_Value("Schemaname", schemaName);
    satz.put_Value("index", index);
    if (index == ERSTE_LINIENZEILE)
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            for (int richtung = 0; richtung < RICHTUNGEN; ++richtung)
                satz.put_Value(LINIENSPALTEN.ordinal(ebene, richtung),
                               GRUNDLINIEN[static_cast<std::size_t>(richtung)]);
    satz.Update();
}

Sticklinien linienAus(Recordset& satz) {
    Sticklinien gelesen;
    jedenLinienwert(satz, gelesen,
                    [&](int ordinal, std::int32_t& wert) { wert = linienwert(satz.get_Value(ordinal)); });
    return gelesen;
}

/// Calls `arbeit` with the cursor on each row of a field at a line that holds a `Leerfeld`. True when no
/// other row is there.
template <class Arbeit>
bool aktionenAnLinie(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                     int richtung, std::int32_t linie, Arbeit&& arbeit) {
    bool nurLeerfelder = true;
    Recordset satz = aktionszeilen(datenbank, seite, schemaName, ebene, {{richtungsspalte(richtung), linie}});
    for (; !satz.get_EOF(); satz.MoveNext()) {
        if (istNurLeerfeld(alsText(satz.get_Value("Aktion"))))
            arbeit(satz);
        else
            nurLeerfelder = false;
    }
    return nurLeerfelder;
}

} // namespace

VarTastenbelegung TastenbelegungLesen(const std::string& datenbankPfad, const std::string& schemaName,
                                      std::vector<Tastenort>& unlesbare) {
    const Laufbild texte = texteLesen(
        datenbankPfad, schemaName,
        anweisung("SELECT * FROM tblSteuerKreuz WHERE (tblSteuerKreuz.Schemaname)= '", schemaName));
    VarTastenbelegung bild;
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = 0; taste < SLOTS; ++taste) {
            const auto& text = texte[static_cast<std::size_t>(ebene)][static_cast<std::size_t>(taste)];
            if (taste < TASTEN && text == OHNE_BELEGUNG)
                continue;
            if (!setzeLesbare(bild, taste, ebene, text))
                unlesbare.push_back({taste, ebene});
        }
    return bild;
}

Laufbild TastenLaufLesen(const std::string& datenbankPfad, const std::string& schemaName) {
    return texteLesen(
        datenbankPfad, schemaName,
        anweisung("SELECT * FROM tblSteuerkreuz WHERE (tblSteuerkreuz.Schemaname)= '", schemaName));
}

Schemaliste SchemataLesen(const std::string& datenbankPfad) {
    Database datenbank = OpenDatabase(datenbankPfad);
    Schemaliste liste;
    datenbank.inEinemLesezug([&] {
        Recordset satz = datenbank.OpenRecordset("tblTastatur", {"Schemaname", "Programmpfad"});
        const auto groesse = static_cast<std::size_t>(satz.get_RecordCount()) + 1;
        liste = {std::vector<std::string>(groesse), std::vector<std::string>(groesse)};
        for (std::size_t i = 0; !satz.get_EOF(); ++i, satz.MoveNext()) {
            liste.SchemaNamen[i] = alsText(satz.get_Value("Schemaname"));
            liste.SchemaPfade[i] = alsText(satz.get_Value("Programmpfad"));
        }
    });
    return liste;
}

std::optional<int> FunktionLesen(const std::string& datenbankPfad, const std::string& schemaName) {
    Database datenbank = OpenDatabase(datenbankPfad);
    const Recordset satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblTastatur WHERE  (tblTastatur.Schemaname) = '", schemaName));
    if (satz.get_EOF())
        return std::nullopt;
    const Wert funktion = satz.get_Value("Funktion");
    constexpr std::int64_t KEINE = -1; // no element, like any number that is not there
    const std::int64_t zahl = istNull(funktion) ? 0 : alsZahl(funktion);
    return static_cast<int>(std::in_range<int>(zahl) ? zahl : KEINE);
}

std::vector<int> fehlendeZeilen(Recordset& satz) {
    std::vector<int> fehlende(ZEILEN_JE_STICK);
    std::iota(fehlende.begin(), fehlende.end(), 1);
    for (; !satz.get_EOF(); satz.MoveNext())
        std::erase_if(fehlende,
                      [da = satz.get_Value("index")](int index) { return da == Wert{std::int64_t{index}}; });
    return fehlende;
}

void StickGrundzeilenAnlegen(Database& datenbank, Stickseite seite, const std::string& schemaName) {
    datenbank.inEinerTransaktion([&] {
        Recordset satz = linienzeilen(datenbank, seite, schemaName);
        for (const int index : fehlendeZeilen(satz))
            grundzeileAnlegen(satz, schemaName, index);
    });
}

std::int32_t linienwert(const Wert& wert) {
    const std::int64_t zahl = alsZahl(wert);
    if (!std::in_range<std::int32_t>(zahl))
        throw LaufzeitFehler(Fehlernummer::Ueberlauf,
                             "Überlauf: die Linie " + std::to_string(zahl) + " ist zu groß.");
    return static_cast<std::int32_t>(zahl);
}

Sticklinien StickLinienLesen(const std::string& datenbankPfad, Stickseite seite,
                             const std::string& schemaName,
                             const std::function<void(std::string_view)>& melden) {
    Database datenbank = OpenDatabase(datenbankPfad);
    std::size_t fehlen = 0;
    const auto lesen = [&] {
        Sticklinien gelesen;
        datenbank.inEinemLesezug([&] {
            Recordset satz = linienzeilen(datenbank, seite, schemaName);
            fehlen = fehlendeZeilen(satz).size();
            if (fehlen == 0)
                gelesen = linienAus(satz);
        });
        return gelesen;
    };
    Sticklinien gelesen = lesen();
    if (fehlen == 0)
        return gelesen;
    if (fehlen == ZEILEN_JE_STICK)
        melden("Es wird ein neues Schema erstellen!");
    StickGrundzeilenAnlegen(datenbank, seite, schemaName);
    return lesen();
}

Sticklinien StickLinienLesen(Database& datenbank, Stickseite seite, const std::string& schemaName) {
    Recordset satz = linienzeilen(datenbank, seite, schemaName);
    linienzeilenPruefen(satz, seite, schemaName);
    return linienAus(satz); // ends with 3021 behind the last row
}

std::string StickAktionLesen(const std::string& datenbankPfad, Stickseite seite,
                             const std::string& schemaName, const Feldschluessel& feld) {
    Database datenbank = OpenDatabase(datenbankPfad);
    const Recordset satz = feldzeilen(datenbank, seite, schemaName, feld);
    return satz.get_EOF() ? std::string() : alsText(satz.get_Value("Aktion"));
}

bool stehtKeineAktionAn(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                        int richtung, std::int32_t linie) {
    return aktionenAnLinie(datenbank, seite, schemaName, ebene, richtung, linie, [](Recordset&) {});
}

bool StickAktionenLoeschen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                           int richtung, std::int32_t linie, Zeilenschritt* schritt) {
    // A file that is locked or can only be read is none in the way of finding that there is nothing to do.
    bool eines = false;
    const bool alleLeer = aktionenAnLinie(datenbank, seite, schemaName, ebene, richtung, linie,
                                          [&](Recordset&) { eines = true; });
    if (!eines)
        return alleLeer;
    bool frei = false;
    datenbank.alsSchritt(schritt, [&] {
        frei = aktionenAnLinie(datenbank, seite, schemaName, ebene, richtung, linie,
                               [](Recordset& satz) { satz.Delete(); });
    });
    return frei;
}
