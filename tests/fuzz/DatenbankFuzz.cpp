// SPDX-License-Identifier: GPL-3.0-or-later
// A damaged database, read by all that forms and runs read; one whose last record is cut off is then written
// by what they save. Nothing may come of it but an orderly error, and what only reads leaves every byte as it
// is.
#include "base/LaufzeitFehler.h"
#include "formats/Aktionsliste.h"
#include "formats/Linienliste.h"
#include "store/schema/Schemaloeschen.h"
#include "store/schema/SenLesSchr.h"
#include "store/schema/StickLaufLesen.h"
#include "store/schema/UebersichtAktion.h"
#include "store/schema/Zonenlesen.h"
#include "store/schema/modKeyCode.h"
#include "store/schema/modSpeichern.h"
#include "tests/fuzz/Datenbankschaden.h"
#include "tests/fuzz/Sqlitevorrat.h"
#include "tests/fuzz/Verlangen.h"
#include "tests/hilfen/Schemabau.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

const std::string S = "S";
constexpr std::array SEITEN{Stickseite::Links, Stickseite::Rechts};

std::string inhaltVon(const fs::path& pfad) {
    std::ifstream datei(pfad, std::ios::binary);
    return {std::istreambuf_iterator<char>(datei), {}};
}

/// Two `Schema`s with something in each table, in small pages: a long text runs over into pages of its own,
/// and there are free ones.
void fuellen(const Testdatenbank& datenbank) {
    datenbank.sql("DELETE FROM tblKeyCode WHERE length(Keyc) > 1; PRAGMA page_size = 512; VACUUM;");
    for (const std::string name : {"S", "T"}) {
        Schemabau bau(datenbank, name);
        bau.taste(0, "1,65,0-0-0").taste(13, "3,0,1-0-0", 1).ungeglaettet();
        bau.taste(11, "1,66,1-20-30" + std::string(name == "T" ? 600 : 0, ' '), 2);
        for (const auto seite : SEITEN)
            bau.linien(seite, 1, {27072, 38399, 25941, 39679})
                .linien(seite, 2, {20000, 45000, 0, 0})
                .leereLinienAb(seite, 3)
                .feld(seite, {27072, 0, 25941, 0}, "0,0,5,10")
                .feld(seite, {0, 38399, 0, 0}, "2,1,65,50,1,200", 1)
                .feld(seite, {0, 0, 0, 39679}, "3");
        bau.anlegen();
    }
    datenbank.sql("CREATE TABLE weg (a); INSERT INTO weg VALUES (zeroblob(3000)); DROP TABLE weg;");
}

template <class Arbeit> void versuchen(Arbeit&& arbeit) {
    try {
        arbeit();
    } catch (const LaufzeitFehler& fehler) {
        verlange(*fehler.what() != '\0');
    }
}

void tastenLesen(const std::string& pfad) {
    versuchen([&] { SchemataLesen(pfad); });
    versuchen([&] { FunktionLesen(pfad, S); });
    versuchen([&] { TastenLaufLesen(pfad, S); });
    versuchen([&] {
        std::vector<Tastenort> unlesbare;
        TastenbelegungLesen(pfad, S, unlesbare);
    });
    versuchen([&] { TastennamenLesen(pfad); });
    versuchen([&] { KeyCodeSuchen(pfad, 0, "8"); });
    versuchen([&] { KeyCodeSuchen(pfad, 1, "Tab"); });
}

void laufLesen(Database& datenbank, Stickseite seite) {
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        versuchen([&] {
            const auto bild = StickLaufLesen(datenbank, S, seite, ebene);
            Aktionsliste(bild.aktionen).alle();
            for (const auto& linien : bild.linien)
                linienliste(linien);
        });
}

void ebeneLesen(Database& datenbank, Stickseite seite) {
    versuchen([&] {
        auto satz = linienzeilen(datenbank, seite, S);
        for (const auto* name : LINIENRICHTUNGEN)
            LinienListeLesen(satz, name, 1);
    });
    for (const auto* gruppe : {"Links", "Rechts", "Mitte"})
        versuchen([&] { ZonenzeilenLesen(datenbank, seite, S, 0, gruppe, [](const Zonenzeile&) {}); });
    versuchen([&] { stehtKeineAktionAn(datenbank, seite, S, 0, 0, 27072); });
}

void nurLesen(const std::string& pfad) {
    tastenLesen(pfad);
    for (const auto seite : SEITEN)
        versuchen([&] {
            auto datenbank = OpenDatabase(pfad);
            datenbank.hinweis();
            laufLesen(datenbank, seite);
            ebeneLesen(datenbank, seite);
            StickAktionLesen(pfad, seite, S, {0, 27072, 0, 25941, 0});
        });
}

/// What lays rows that are missing, and what saves.
void schreiben(const std::string& pfad, const fs::path& ordner) {
    const auto ja = [](std::string_view) { return true; };
    const auto stumm = [](std::string_view) {};
    for (const auto seite : SEITEN)
        versuchen([&] {
            auto linien = StickLinienLesen(pfad, seite, S, stumm);
            linien.linien[0][3][0] = 9000;
            StickLinieVerlegen(pfad, seite, S, linien, {0, 0, 26000, 27072});
            StickAktionSpeichern(pfad, seite, S, {0, 27072, 0, 25941, 0}, "4");
        });
    Reglerwerte werte;
    for (const bool schreibend : {false, true}) {
        versuchen([&] { SensibleLesenSchreiben(pfad, S, werte, schreibend); });
        versuchen([&] { SensibleRLesenSchreiben(pfad, S, werte, schreibend); });
    }
    versuchen([&] { TastenbelegungSpeichern(pfad, S, VarTastenbelegung()); });
    versuchen([&] { FunktionSpeichern(pfad, S, 1); });
    versuchen([&] { LayerWechseln({{pfad, S}, 0}, {{pfad, "T"}, 7}, stumm); });
    versuchen([&] { LayerKopieren({{pfad, S}, 0}, {pfad, "T"}, {false, true}); });
    versuchen([&] { LayerLoeschen({{pfad, "T"}, 4}, ja); });
    versuchen([&] { SchemaAnlegen(pfad, "Neu", "pfad", ja); });
    versuchen([&] { SchemaLoeschen({pfad, ordner.string(), (ordner / "Gamepad.xml").string()}, S, stumm); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    static const Testdatenbank datei;
    static const Datenbankschaden schaden([] {
        fuellen(datei);
        return inhaltVon(datei.pfad());
    }());
    const auto pfad = datei.pfad();
    const auto laden = [&](const std::string& inhalt) {
        for (const auto* neben : {"-journal", "-wal", "-shm"})
            fs::remove(pfad + neben);
        std::ofstream(pfad, std::ios::binary | std::ios::trunc) << inhalt;
    };

    auto saetze = alsText(daten, groesse);
    const auto anweisungen = zeileAbtrennen(saetze);
    laden(schaden.heil());
    if (!anweisungen.empty())
        anweisungenAusfuehren(pfad, anweisungen);
    const auto vorher = schaden.angewandt(inhaltVon(pfad), saetze);
    laden(vorher);
    nurLesen(pfad);
    verlange(inhaltVon(pfad) == vorher);
    if (saetze.size() % Datenbankschaden::SATZ != 0)
        schreiben(pfad, datei.ordner());
    return 0;
}
