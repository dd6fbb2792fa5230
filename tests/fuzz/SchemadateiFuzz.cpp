// SPDX-License-Identifier: GPL-3.0-or-later
// A file that hands a Schema on, made and damaged by somebody else: either it is refused with a reason, or
// all that it gives is what this program stores, and comes back the same through a file of its own.
#include "base/LaufzeitFehler.h"
#include "store/schema/Schemadatei.h"
#include "tests/fuzz/Datenbankschaden.h"
#include "tests/fuzz/Sqlitevorrat.h"
#include "tests/fuzz/Verlangen.h"
#include "tests/hilfen/Schemaplatzprobe.h"

#include <fstream>
#include <iterator>

namespace {

std::string inhaltVon(const std::string& pfad) {
    std::ifstream datei(pfad, std::ios::binary);
    return {std::istreambuf_iterator<char>(datei), {}};
}

/// A whole file in small pages; a picture runs over into pages of its own.
std::string heil(const std::string& pfad) {
    Zufallsschema zufall(3);
    Schemapaket paket{"Schema", "Programm", zufall.daten(), {{1, Stickseite::Rechts, zufall.bytes(900)}}};
    paket.daten.achsen = Gamepadzeile{{"dwXPos", "ry"}, {"Schubregler", "4"}};
    schemadateiSchreiben(pfad, paket);
    RoheVerbindung(pfad).sql("PRAGMA page_size = 512; VACUUM;");
    return inhaltVon(pfad);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    static const Testordner ordner;
    static const std::string pfad = (ordner.pfad() / "S.schema").string();
    static const Datenbankschaden schaden(heil(pfad));

    auto saetze = alsText(daten, groesse);
    const auto anweisungen = zeileAbtrennen(saetze);
    auto inhalt = schaden.heil();
    if (!anweisungen.empty()) {
        std::ofstream(pfad, std::ios::binary | std::ios::trunc) << inhalt;
        anweisungenAusfuehren(pfad, anweisungen);
        inhalt = inhaltVon(pfad);
    }
    try {
        const auto paket = schemadateiAus(schaden.angewandt(inhalt, saetze));
        verlange(!paket.name.empty());
        verlange(paket.bilder.size() <= 6);
        benutzteEbenen(paket.daten);
        verlange(schemadateiAus(schemadateiInhalt(paket)) == paket);
    } catch (const LaufzeitFehler& fehler) {
        verlange(*fehler.what() != '\0');
    }
    return 0;
}
