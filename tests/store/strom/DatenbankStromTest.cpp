// SPDX-License-Identifier: GPL-3.0-or-later
// A power cut and a failing disk at each step of all that writes a database.
#include "store/db/Datenbank.h"
#include "store/schema/Schemaloeschen.h"
#include "store/schema/SenLesSchr.h"
#include "store/schema/UebersichtAktion.h"
#include "tests/hilfen/Dateien.h"
#include "tests/store/schema/Ebenenbau.h"
#include "tests/store/schema/Schematat.h"
#include "tests/store/strom/Stromprobe.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace {

/// The rows of a database as text, and what is wrong with it. Files of the same bytes are looked at once.
std::string tabellentext(const std::string& pfad) {
    static std::map<std::string, std::string> bekannte;
    std::string bytes = dateiLesen(pfad);
    const auto stelle = bekannte.find(bytes);
    if (stelle != bekannte.end())
        return stelle->second;
    RoheVerbindung verbindung(pfad);
    std::string text;
    for (const auto& zeile : verbindung.zeilen("PRAGMA integrity_check"))
        text += zeile.at(0) + "\n";
    for (const std::string tabelle :
         {"tblTastatur", "tblSteuerKreuz", "tblStick", "tblStickR", "tblStickAktion", "tblStickAktionR",
          "Sensible", "SensibleR", "tblKeyCode"})
        for (const auto& zeile : verbindung.zeilen("SELECT rowid, * FROM " + tabelle + " ORDER BY rowid")) {
            text += tabelle;
            for (const auto& wert : zeile)
                text += "|" + wert;
            text += "\n";
        }
    return bekannte.emplace(std::move(bytes), std::move(text)).first->second;
}

/// The state of a database after the program has opened it and closed it again.
std::string datenbankstand(const std::string& pfad) {
    try {
        OpenDatabase(pfad).OpenRecordset("tblTastatur");
        return tabellentext(pfad);
    } catch (const std::exception& fehler) {
        return std::string("not to be read: ") + fehler.what();
    }
}

bool tun(const std::function<void()>& tat) {
    tat();
    return true;
}

// --- a Schema ---

class SchemaStrom : public testing::TestWithParam<Schematat> {
protected:
    SchemaStrom() {
        fs::create_directory(datei.ordner() / "Bilder");
        schemataLegen(datei);
    }

    Stromprobe probe() const {
        return {datei.ordner(),
                [this] {
                    return tun([&] { GetParam().tun(datei.pfad(), (datei.ordner() / "Bilder/").string()); });
                },
                [this] { return datenbankstand(datei.pfad()); }};
    }

    const Testdatenbank datei;
};

INSTANTIATE_TEST_SUITE_P(Grosse, SchemaStrom, testing::ValuesIn(grosseTaten()),
                         [](const auto& fall) { return fall.param.name; });
INSTANTIATE_TEST_SUITE_P(Kleine, SchemaStrom, testing::ValuesIn(kleineTaten()),
                         [](const auto& fall) { return fall.param.name; });

} // namespace

TEST_P(SchemaStrom, NachEinemStromausfallIstEsGanzOderGarNicht) {
    erwarteGanzOderGarNicht(probe());
}

TEST_P(SchemaStrom, WasScheitertWirdGesagtUndAendertNichts) {
    erwarteGesagtUndNichtsVerloren(probe());
}

// Others may have given a file such a log.
TEST(SchemaStromEinzeln, AuchMitEinemVorausprotokollIstEsGanzOderGarNicht) {
    const Testdatenbank datei;
    schemataLegen(datei);
    datei.sql("PRAGMA journal_mode = WAL");
    for (const auto& tat : grosseTaten()) {
        if (tat.name != "TastenUndKreuz" && tat.name != "EineLinieMitIhrenAktionen")
            continue;
        const Stromprobe probe{datei.ordner(), [&] { return tun([&] { tat.tun(datei.pfad(), ""); }); },
                               [&] { return datenbankstand(datei.pfad()); }};
        erwarteGanzOderGarNicht(probe);
        erwarteGesagtUndNichtsVerloren(probe);
    }
}

TEST(SchemaStromEinzeln, WasDavorZurueckkamBleibtWaehrendDesNaechsten) {
    const Testdatenbank datei;
    schemataLegen(datei);
    const auto taten = grosseTaten();
    const auto tat = [&](std::string_view name) {
        std::ranges::find(taten, name, &Schematat::name)->tun(datei.pfad(), "");
    };
    for (const auto* protokoll : {"DELETE", "WAL"}) {
        datei.sql(std::string("PRAGMA journal_mode = ") + protokoll);
        erwarteGanzOderGarNicht({datei.ordner(),
                                 [&] { return tun([&] { tat("EineLinieMitIhrenAktionen"); }); },
                                 [&] { return datenbankstand(datei.pfad()); },
                                 {},
                                 [&] { tat("TastenUndKreuz"); }});
    }
}

// Where it can't be laid the run plays on with the defaults.
TEST(SchemaStromEinzeln, DieZeileDesErstenLaufsIstDaOderNicht) {
    const Testdatenbank datei;
    schemataLegen(datei);
    erwarteGanzOderGarNicht({datei.ordner(),
                             [&] {
                                 return tun([&] {
                                     Reglerwerte werte;
                                     SensibleLesenSchreiben(datei.pfad(), "halb", werte, false);
                                 });
                             },
                             [&] { return datenbankstand(datei.pfad()); }});
}

// The rows go first, then the pictures: a Schema never loses one while it is there.
TEST(SchemaStromEinzeln, EinGeloeschtesVerliertErstSeineZeilenDannSeineBilder) {
    const Testdatenbank datei;
    const fs::path bilder = datei.ordner() / "Bilder";
    fs::create_directory(bilder);
    schemataLegen(datei);
    for (const auto* name : {"S0L.bmp", "S1R.BMP", "S1R.BMP.neu.1.0"})
        dateiSchreiben(bilder / name, "Bild");
    constexpr std::size_t ALLE = 3;
    const auto welche = [&] {
        const auto anzahl = namenIn(bilder).size();
        return anzahl == ALLE ? "alle Bilder" : anzahl > 0 ? "manche Bilder" : "kein Bild";
    };
    const Stromprobe probe{
        datei.ordner(),
        [&] {
            return tun([&] {
                SchemaLoeschen({datei.pfad(), bilder.string() + "/", ""}, "S", [](std::string_view) {});
            });
        },
        [&] {
            const std::string zeilen = datenbankstand(datei.pfad());
            return (zeilen.find("|S|") == std::string::npos ? "ohne Zeilen, " : zeilen) + welche();
        },
        {"ohne Zeilen, alle Bilder", "ohne Zeilen, manche Bilder"}};
    erwarteGanzOderGarNicht(probe);
}

// --- layers ---

namespace {

class EbenenStrom : public testing::Test {
protected:
    EbenenStrom() {
        for (const auto* name : {"A", "B"})
            fs::create_directory(ordner.pfad() / name);
        for (const auto* pfad : {&eine, &andere})
            fs::copy_file(vorlage.pfad(), *pfad);
        schemaLegen(eine, "S", 1000);
        schemaLegen(eine, "T", 10000);
        schemaLegen(andere, "S", 20000);
    }

    /// `andereZuerst`: which file is opened first after a power cut has to recover by itself.
    Stromprobe probe(const std::function<void()>& tat, bool andereZuerst = false) const {
        return {ordner.pfad(), [tat] { return tun(tat); },
                [this, andereZuerst] {
                    if (andereZuerst)
                        datenbankstand(andere);
                    const std::string zuerst = datenbankstand(eine);
                    return zuerst + datenbankstand(andere);
                }};
    }

    static void keineMeldung(std::string_view) {}

    const Testordner ordner;
    const std::string eine = ordner.pfad() / "A" / "Belegung.twk";
    const std::string andere = ordner.pfad() / "B" / "Belegung.twk";

private:
    const Testdatenbank vorlage;

    static void schemaLegen(const std::string& pfad, const std::string& name, int basis) {
        RoheVerbindung(pfad).sql(schematext(name, basis));
    }
};

} // namespace

TEST_F(EbenenStrom, EinWechselZwischenZweiDateienIstGanzOderGarNicht) {
    for (const auto& [index, andereZuerst] : {std::pair(1, false), std::pair(1, true), std::pair(3, true)}) {
        const auto wechseln = [&, ebene = index] {
            LayerWechseln({{eine, "S"}, ebene}, {{andere, "S"}, ebene}, keineMeldung);
        };
        erwarteGanzOderGarNicht(probe(wechseln, andereZuerst));
    }
}

TEST_F(EbenenStrom, EinWechselDerScheitertWirdGesagtUndAendertKeineDerDateien) {
    erwarteGesagtUndNichtsVerloren(probe([&] {
        LayerWechseln({{eine, "S"}, 1}, {{andere, "S"}, 1}, keineMeldung);
    }));
}

TEST_F(EbenenStrom, EinWechselDerZurueckgenommenWirdIstGanzOderGarNichtZurueck) {
    for (const int index : {1, 3}) {
        Schemaschritt schritt;
        LayerWechseln({{eine, "S"}, index}, {{andere, "S"}, index}, keineMeldung, {}, &schritt);
        const auto zuruecknehmen = probe([&] { schritt.zuruecknehmen(); }, index == 3);
        erwarteGanzOderGarNicht(zuruecknehmen);
        erwarteGesagtUndNichtsVerloren(zuruecknehmen);
    }
}

// By itself: it has no journal that names both.
TEST_F(EbenenStrom, AuchEineAenderungDerZweitenDateiAlleinIstGanzOderGarNicht) {
    erwarteGanzOderGarNicht(probe([&] {
        Database erste = OpenDatabase(eine);
        Database zweite = erste.danebenOeffnen(andere);
        Recordset satz = zweite.OpenRecordset("tblTastatur");
        satz.Edit();
        satz.put_Value("Programmpfad", "/neu");
        satz.Update();
    }));
}

TEST_F(EbenenStrom, EineKopieInDieAndereDateiIstGanzOderGarNicht) {
    const auto kopieren = probe([&] { LayerKopieren({{eine, "T"}, 0}, {andere, "S"}, {true, false, true}); });
    erwarteGanzOderGarNicht(kopieren);
    erwarteGesagtUndNichtsVerloren(kopieren);
}

TEST_F(EbenenStrom, EineGeleerteEbeneVerliertErstAlleAktionenDannAlleLinien) {
    const auto leeren = [&](int index, bool auchFelder) {
        return [&, index, auchFelder] {
            LayerLoeschen({{eine, "S"}, index}, [auchFelder](std::string_view) { return auchFelder; });
        };
    };
    erwarteGanzOderGarNicht(probe(leeren(4, true)));
    auto stick = probe(leeren(8, true));
    const auto anfang = dateiLesen(eine);
    leeren(8, false)();
    stick.dazwischen = {stick.stand()};
    dateiSchreiben(eine, anfang);
    erwarteGanzOderGarNicht(stick);
}

// --- what the model finds ---

namespace {

class UnsichereDatenbank : public testing::Test {
protected:
    UnsichereDatenbank() { schemataLegen(datei); }

    /// The disks that are neither before nor after a change past the store.
    std::vector<std::string> fehlerBei(const std::string& sql) const {
        return stromausfaelle({datei.ordner(), [&] { return tun([&] { datei.sql(sql); }); },
                               [this] { return datenbankstand(datei.pfad()); }})
            .fehler;
    }

    const Testdatenbank datei;
};

constexpr auto AENDERUNG = "UPDATE tblStick SET Links = Links + 1, Links3 = 7";

} // namespace

TEST_F(UnsichereDatenbank, OhneJedesSichernBleibtEineHalbe) {
    EXPECT_THAT(fehlerBei(std::string("PRAGMA synchronous = OFF;") + AENDERUNG),
                testing::Contains(testing::HasSubstr("half")));
}

TEST_F(UnsichereDatenbank, OhneEineTransaktionBleibtDieHaelfteDerTaten) {
    EXPECT_THAT(fehlerBei(std::string("PRAGMA synchronous = EXTRA;") + AENDERUNG + ";" + AENDERUNG),
                testing::Contains(testing::HasSubstr("half")));
}

TEST_F(UnsichereDatenbank, OhneGesichertenOrdnerIstWasZurueckkamNichtDa) {
    EXPECT_THAT(fehlerBei(std::string("PRAGMA synchronous = FULL;") + AENDERUNG),
                testing::Each(testing::HasSubstr("what has come back is not there")));
    EXPECT_THAT(fehlerBei(std::string("PRAGMA synchronous = FULL;") + AENDERUNG),
                testing::SizeIs(testing::Gt(0)));
    EXPECT_THAT(fehlerBei(std::string("PRAGMA synchronous = EXTRA;") + AENDERUNG), testing::IsEmpty());
}
