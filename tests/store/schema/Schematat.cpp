// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/store/schema/Schematat.h"

#include "base/Regler.h"
#include "store/schema/Schemaloeschen.h"
#include "store/schema/SenLesSchr.h"
#include "store/schema/modSpeichern.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Schemabau.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

VarTastenbelegung volleTasten() {
    VarTastenbelegung bild;
    for (int taste = 0; taste < SLOTS; ++taste)
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            bild.setzeBelegung(taste, ebene, "1," + std::to_string(ebene * SLOTS + taste + 1) + ",0-0-0");
    return bild;
}

Sticklinien volleLinien() {
    Sticklinien bild;
    for (std::size_t ebene = 0; ebene < EBENEN; ++ebene)
        for (std::size_t zeile = 1; zeile <= 3; ++zeile)
            bild.linien[ebene][zeile].fill(static_cast<std::int32_t>(1000 * (ebene + 1) + zeile));
    bild.StickSperre = 5;
    return bild;
}

void keineMeldung(std::string_view) {}

/// The lines that "S" has, with another mask of layers.
void maskeSpeichern(const std::string& pfad) {
    auto bild = StickLinienLesen(pfad, Stickseite::Links, "S", keineMeldung);
    bild.StickSperre = 3;
    StickLinienSpeichern(pfad, Stickseite::Links, "S", bild);
}

Reglerwerte andereRegler() {
    Reglerwerte werte;
    werte.glaettung.fill(17);
    werte.wiederholintervall = 120;
    return werte;
}

/// What the launcher does with a database that an older version has laid.
void tastennamenNachtragen(const std::string& pfad) {
    RoheVerbindung verbindung(pfad);
    verbindung.sql("PRAGMA synchronous = EXTRA; ATTACH '" LEERE_DATENBANK "' AS neu;" +
                   dateiLesen(TASTEN_NACHTRAG));
}

struct Verworfen {};

/// Makes an act again that was taken down and then rolled back: rows of all kinds come, change and go.
void schrittWiederholen(const std::string& pfad) {
    Database datenbank = OpenDatabase(pfad);
    Zeilenschritt schritt;
    const auto taten = [&] {
        StickGrundzeilenAnlegen(datenbank, Stickseite::Links, "neu");
        StickAktionenLoeschen(datenbank, Stickseite::Rechts, "S", 0, 0, 20000);
        Recordset satz = linienzeilen(datenbank, Stickseite::Rechts, "S");
        satz.Edit();
        satz.put_Value("Links", std::int64_t{18000});
        satz.Update();
    };
    try {
        datenbank.inEinerTransaktion([&] {
            datenbank.alsSchritt(&schritt, taten);
            throw Verworfen{};
        });
    } catch (const Verworfen&) {
        schritt.wiederholen(datenbank);
    }
}

} // namespace

std::vector<Schematat> grosseTaten() {
    return {
        {"EinNeuesSchema", [](const auto& pfad, const auto&) { SchemaAnlegen(pfad, "neu", "", {}); }},
        {"EinGeaendertesSchema",
         [](const auto& pfad, const auto&) {
             SchemaAnlegen(pfad, "halb", "/neu", [](std::string_view) { return true; });
         }},
        {"TastenUndKreuz",
         [](const auto& pfad, const auto&) { TastenbelegungSpeichern(pfad, "S", volleTasten()); }},
        {"TastenUndFehlendesKreuz",
         [](const auto& pfad, const auto&) { TastenbelegungSpeichern(pfad, "halb", volleTasten()); }},
        {"Linien", [](const auto& pfad,
                      const auto&) { StickLinienSpeichern(pfad, Stickseite::Rechts, "S", volleLinien()); }},
        {"EineLinieMitIhrenAktionen",
         [](const auto& pfad, const auto&) {
             auto bild = volleLinien();
             bild.linien[0][1][0] = 18000;
             StickLinieVerlegen(pfad, Stickseite::Links, "S", bild, {0, 0, 18000, 20000});
         }},
        {"EineEntfernteLinieMitIhrenLeerfeldern",
         [](const auto& pfad, const auto&) {
             StickLinieEntfernen(pfad, Stickseite::Rechts, "S", volleLinien(), 0, 0, 20000);
         }},
        {"ZwanzigZeilen",
         [](const auto& pfad, const auto&) {
             StickLinienLesen(pfad, Stickseite::Links, "neu", keineMeldung);
         }},
        {"FehlendeZeilen",
         [](const auto& pfad, const auto&) {
             StickLinienLesen(pfad, Stickseite::Links, "halb", keineMeldung);
         }},
        {"Loeschen",
         [](const auto& pfad, const auto& bilder) {
             SchemaLoeschen({pfad, bilder, ""}, "S", keineMeldung);
         }},
    };
}

std::vector<Schematat> schritttaten() {
    return {{"EinWiederholterSchritt", [](const auto& pfad, const auto&) { schrittWiederholen(pfad); }}};
}

std::vector<Schematat> kleineTaten() {
    return {
        {"EineNeueAktion",
         [](const auto& pfad, const auto&) {
             StickAktionSpeichern(pfad, Stickseite::Links, "S", {1, 1, 2, 3, 4}, "2,0,65,0,0");
         }},
        {"EineGeaenderteAktion",
         [](const auto& pfad, const auto&) {
             StickAktionSpeichern(pfad, Stickseite::Rechts, "S", {0, 20000, 0, 3, 0}, "2,0,66,0,0");
         }},
        {"DieMaske", [](const auto& pfad, const auto&) { maskeSpeichern(pfad); }},
        {"DieOption", [](const auto& pfad, const auto&) { FunktionSpeichern(pfad, "S", 3); }},
        {"DieReglerLinks",
         [](const auto& pfad, const auto&) {
             auto werte = andereRegler();
             SensibleLesenSchreiben(pfad, "S", werte, true);
         }},
        {"DieReglerRechts",
         [](const auto& pfad, const auto&) {
             auto werte = andereRegler();
             SensibleRLesenSchreiben(pfad, "S", werte, true);
         }},
        {"DieTastennamen", [](const auto& pfad, const auto&) { tastennamenNachtragen(pfad); }},
    };
}

void schemataLegen(const Testdatenbank& datei) {
    Schemabau schema(datei);
    schema.ungeglaettet();
    for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
        for (int i = 0; i < 8; ++i)
            schema.feld(seite, {20000, 0, i, 0}, "3");
    schema.anlegen();
    Schemabau(datei, "halb")
        .linien(Stickseite::Links, 1, {})
        .linien(Stickseite::Links, 7, {})
        .ohneKreuz()
        .anlegen();
    for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
        StickLinienLesen(datei.pfad(), seite, "S", keineMeldung);
    datei.sql("DELETE FROM tblKeyCode WHERE rowid % 40 = 0"); // as an older version has laid it
}
