// SPDX-License-Identifier: GPL-3.0-or-later
// Deleting, swapping and copying layers: what moves where, what stays, and what an error leaves.
#include "store/schema/UebersichtAktion.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/store/schema/Ebenenbau.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr auto FRAGE = "Die Aktionen wurden gelöscht, möchten Sie die Felder auch löschen?";
constexpr auto DURCHGEFUEHRT = "Aktion Wechsel ist durchgeführt!";
const std::string LEER = "10,0,0-0-0";

using Texte = std::vector<std::string>;
using Ziele = std::array<bool, EBENENWAHLEN>;

class UebersichtAktion : public testing::Test {
protected:
    UebersichtAktion() {
        schemaLegen(datei, "A", 1000);
        schemaLegen(datei, "B", 20000);
        schemaLegen(andere, "B", 30000);
        schemaLegen(andere, "C", 40000);
    }

    Ebenenort hier(const std::string& name, int index) const { return {{datei.pfad(), name}, index}; }
    Ebenenort dort(const std::string& name, int index) const { return {{andere.pfad(), name}, index}; }

    int loeschen(const Ebenenort& ort, bool antwort) {
        return fehlernummer([&] {
            LayerLoeschen(ort, [&](std::string_view frage) {
                boxen.emplace_back(frage);
                return antwort;
            });
        });
    }
    int wechseln(const Ebenenort& erster, const Ebenenort& zweiter) {
        return fehlernummer([&] {
            LayerWechseln(erster, zweiter, [&](std::string_view text) { boxen.emplace_back(text); });
        });
    }
    static int kopieren(const Ebenenort& quelle, const Schemaort& ziel, std::initializer_list<int> ziele) {
        Ziele gewaehlt{};
        for (const int k : ziele)
            gewaehlt[static_cast<std::size_t>(k)] = true;
        return fehlernummer([&] { LayerKopieren(quelle, ziel, gewaehlt); });
    }

    /// Columns of the one row of a `Schema`.
    static Texte spalten(const Testdatenbank& wo, const std::string& tabelle, const std::string& name,
                         int von, int anzahl) {
        const auto zeile = wo.zeilen("SELECT * FROM " + tabelle + " WHERE Schemaname = '" + name + "'").at(0);
        return {zeile.begin() + von, zeile.begin() + von + anzahl};
    }
    static Texte folge(const std::string& basis, int von, int anzahl) {
        Texte texte;
        for (int i = von; i < von + anzahl; ++i)
            texte.push_back(basis + "." + std::to_string(i));
        return texte;
    }
    /// The four columns of a layer, all rows in their order.
    static Tabellenbild linien(const Testdatenbank& wo, const std::string& zusatz, const std::string& name,
                               int ebene) {
        Tabellenbild bild;
        for (const auto& zeile : wo.zeilen("SELECT * FROM tblStick" + zusatz + " WHERE Schemaname = '" +
                                           name + "' ORDER BY \"index\"")) {
            const auto erste = zeile.begin() + 2 + 4 * ebene;
            bild.emplace_back(erste, erste + 4);
        }
        return bild;
    }
    /// The lines that ebenenbau lays on a layer.
    static Tabellenbild gelegt(int basis, int ebene, int zeilen = 20) {
        Tabellenbild bild;
        for (int zeile = 1; zeile <= zeilen; ++zeile) {
            auto& neue = bild.emplace_back();
            for (int d = 0; d < 4; ++d)
                neue.push_back(std::to_string(basis + 100 * zeile + 2 + 4 * ebene + d));
        }
        return bild;
    }
    static Tabellenbild grundlinien() {
        Tabellenbild bild(20, Texte(4, "0"));
        bild[0] = {"27072", "38399", "25941", "39679"};
        return bild;
    }
    /// "Schemaname Umschalt Aktion" of all rows, in the order of their making.
    static Texte aktionen(const Testdatenbank& wo, const std::string& zusatz) {
        Texte texte;
        for (const auto& zeile : wo.zeilen("SELECT Schemaname || ' ' || Umschalt || ' ' || Aktion FROM "
                                           "tblStickAktion" +
                                           zusatz + " ORDER BY rowid"))
            texte.push_back(zeile.at(0));
        return texte;
    }
    static Texte sortiert(Texte texte) {
        std::sort(texte.begin(), texte.end());
        return texte;
    }
    /// All tables but the ones named, to see that nothing else has changed.
    static std::vector<Tabellenbild> ohne(const Testdatenbank& wo, const Texte& tabellen) {
        std::vector<Tabellenbild> bilder;
        for (const auto& tabelle :
             wo.zeilen("SELECT name FROM sqlite_schema WHERE type='table' ORDER BY name"))
            if (std::find(tabellen.begin(), tabellen.end(), tabelle[0]) == tabellen.end())
                bilder.push_back(wo.zeilen("SELECT rowid, * FROM \"" + tabelle[0] + "\" ORDER BY rowid"));
        return bilder;
    }

    Testdatenbank datei;
    Testdatenbank andere;
    Texte boxen; ///< questions and messages
};

} // namespace

// --- delete ---

TEST_F(UebersichtAktion, LoeschenDerButtonsLeertDieSpaltenDerEbeneUndSonstNichts) {
    constexpr std::array<int, 3> TASTEN_AB{1, 14, 27};
    constexpr std::array<int, 3> KREUZ_AB{1, 5, 9};
    for (std::size_t ebene = 0; ebene < 3; ++ebene) {
        const auto tasten = spalten(datei, "tblTastatur", "A", 0, 39);
        const auto kreuz = spalten(datei, "tblSteuerKreuz", "A", 0, 13);
        const auto rest = ohne(datei, {"tblTastatur", "tblSteuerKreuz"});
        EXPECT_EQ(loeschen(hier("A", 3 + static_cast<int>(ebene)), true), 0);
        auto erwarteteTasten = tasten;
        std::fill_n(erwarteteTasten.begin() + TASTEN_AB[ebene], 12, LEER);
        auto erwartetesKreuz = kreuz;
        std::fill_n(erwartetesKreuz.begin() + KREUZ_AB[ebene], 4, LEER);
        EXPECT_EQ(spalten(datei, "tblTastatur", "A", 0, 39), erwarteteTasten);
        EXPECT_EQ(spalten(datei, "tblSteuerKreuz", "A", 0, 13), erwartetesKreuz);
        EXPECT_EQ(spalten(datei, "tblTastatur", "B", 1, 12), folge("B20000", 1, 12));
        EXPECT_EQ(ohne(datei, {"tblTastatur", "tblSteuerKreuz"}), rest);
    }
    EXPECT_THAT(boxen, IsEmpty());
}

TEST_F(UebersichtAktion, LoeschenEinesSticksMitNeinLaesstDieLinien) {
    const auto rest = ohne(datei, {"tblStickAktion"});
    EXPECT_EQ(loeschen(hier("A", 1), false), 0);
    EXPECT_THAT(boxen, ElementsAre(FRAGE));
    EXPECT_THAT(aktionen(datei, ""),
                ElementsAre("A 0 A1000L/0a", "A 0 A1000L/0b", "A 2 A1000L/2a", "A 2 A1000L/2b",
                            "B 0 B20000L/0a", "B 0 B20000L/0b", "B 1 B20000L/1a", "B 1 B20000L/1b",
                            "B 2 B20000L/2a", "B 2 B20000L/2b"));
    EXPECT_EQ(ohne(datei, {"tblStickAktion"}), rest);
}

TEST_F(UebersichtAktion, LoeschenEinesSticksMitJaLegtDieGrundlinienDerEbene) {
    for (const int index : {0, 1, 2, 6, 7, 8}) {
        const std::string zusatz = index > 5 ? "R" : "";
        const int basis = index > 5 ? 51000 : 1000;
        const auto rest = ohne(datei, {"tblStick" + zusatz, "tblStickAktion" + zusatz});
        EXPECT_EQ(loeschen(hier("A", index), true), 0);
        EXPECT_EQ(linien(datei, zusatz, "A", index % 3), grundlinien()) << index;
        for (int ebene = index % 3 + 1; ebene < 3; ++ebene)
            EXPECT_EQ(linien(datei, zusatz, "A", ebene), gelegt(basis, ebene));
        EXPECT_EQ(linien(datei, zusatz, "B", index % 3), gelegt(basis + 19000, index % 3));
        EXPECT_EQ(ohne(datei, {"tblStick" + zusatz, "tblStickAktion" + zusatz}), rest);
    }
    EXPECT_EQ(aktionen(datei, "R").size(), 6U);
    EXPECT_EQ(boxen, Texte(6, FRAGE));
}

TEST_F(UebersichtAktion, DieAktionenSindFortBevorGefragtWird) {
    std::size_t beiDerFrage = 99;
    LayerLoeschen(hier("A", 0), [&](std::string_view) {
        beiDerFrage = aktionen(datei, "").size();
        datei.sql("UPDATE tblTastatur SET Programmpfad = 'x'"); // and nobody is locked out
        return false;
    });
    EXPECT_EQ(beiDerFrage, 10U);
}

TEST_F(UebersichtAktion, LoeschenRichtetSichNachDemIndexDerZeileNichtNachIhrerZahl) {
    datei.sql("DELETE FROM tblStick WHERE \"index\" IN (1, 7)");
    for (const std::string zeile : {"0", "21"})
        datei.sql("INSERT INTO tblStick VALUES ('A', " + zeile + ", 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9)");
    EXPECT_EQ(loeschen(hier("A", 2), true), 0);
    EXPECT_EQ(linien(datei, "", "A", 2), Tabellenbild(20, Texte(4, "0")));
}

TEST_F(UebersichtAktion, EinSteuerkreuzOhneZeileGiltAlsLeerUndBekommtSie) {
    const std::string kreuz = "SELECT Oben2, Links2, Oben3 FROM tblSteuerKreuz WHERE Schemaname = 'A'";
    const Texte leer(3, "10,0,0-0-0");
    const auto vorher = datei.zeilen(kreuz);
    ASSERT_NE(vorher, Tabellenbild{leer});
    datei.sql("DELETE FROM tblSteuerKreuz WHERE Schemaname = 'A'");
    EXPECT_EQ(loeschen(hier("A", 4), true), 0);
    EXPECT_EQ(datei.zeilen(kreuz), Tabellenbild{leer});

    andere.sql("DELETE FROM tblSteuerKreuz WHERE Schemaname = 'C'");
    datei.sql("UPDATE tblSteuerKreuz SET Oben2 = '1,65,0-0-0' WHERE Schemaname = 'A'");
    EXPECT_EQ(wechseln(hier("A", 4), dort("C", 4)), 0);
    EXPECT_EQ(datei.zeilen(kreuz), Tabellenbild{leer});
    EXPECT_EQ(andere.zeilen("SELECT Oben2, Oben FROM tblSteuerKreuz WHERE Schemaname = 'C'"),
              (Tabellenbild{{"1,65,0-0-0", "10,0,0-0-0"}}));
}

TEST_F(UebersichtAktion, LoeschenOhneZeileDesSchemasEndetMitDemFehlerUndAendertNichts) {
    datei.sql("DELETE FROM tblTastatur WHERE Schemaname = 'A'");
    const auto vorher = datei.inhalt();
    EXPECT_EQ(loeschen(hier("A", 4), true), 3021);
    EXPECT_EQ(loeschen(hier("fehlt", 4), true), 3021);
    EXPECT_THAT(boxen, IsEmpty());
    EXPECT_EQ(datei.inhalt(), vorher);
}

// --- swap ---

TEST_F(UebersichtAktion, WechselDerButtonsZwischenZweiDateien) {
    const auto rest = ohne(datei, {"tblTastatur", "tblSteuerKreuz"});
    EXPECT_EQ(wechseln(hier("A", 3), dort("C", 5)), 0);
    EXPECT_THAT(boxen, ElementsAre(DURCHGEFUEHRT));
    EXPECT_EQ(spalten(datei, "tblTastatur", "A", 1, 12), folge("C40000", 27, 12));
    EXPECT_EQ(spalten(datei, "tblTastatur", "A", 14, 12), folge("A1000", 14, 12));
    EXPECT_EQ(spalten(andere, "tblTastatur", "C", 27, 12), folge("A1000", 1, 12));
    EXPECT_EQ(spalten(datei, "tblSteuerKreuz", "A", 1, 4), folge("C40000", 9, 4));
    EXPECT_EQ(spalten(andere, "tblSteuerKreuz", "C", 9, 4), folge("A1000", 1, 4));
    EXPECT_EQ(spalten(andere, "tblSteuerKreuz", "C", 1, 8), folge("C40000", 1, 8));
    EXPECT_EQ(ohne(datei, {"tblTastatur", "tblSteuerKreuz"}), rest);
}

TEST_F(UebersichtAktion, WechselZweierEbenenDerButtonsInEinerZeile) {
    EXPECT_EQ(wechseln(hier("A", 3), hier("A", 4)), 0);
    EXPECT_EQ(spalten(datei, "tblTastatur", "A", 1, 12), folge("A1000", 14, 12));
    EXPECT_EQ(spalten(datei, "tblTastatur", "A", 14, 12), folge("A1000", 1, 12));
    EXPECT_EQ(
        spalten(datei, "tblSteuerKreuz", "A", 1, 8),
        (Texte{"A1000.5", "A1000.6", "A1000.7", "A1000.8", "A1000.1", "A1000.2", "A1000.3", "A1000.4"}));
    EXPECT_EQ(spalten(datei, "tblTastatur", "A", 26, 1), Texte{"7"});
}

TEST_F(UebersichtAktion, WechselZwischenDenSticksTauschtLinienEbenenUndLaesstUmschalt) {
    EXPECT_EQ(wechseln(hier("A", 1), hier("A", 8)), 0);
    EXPECT_EQ(linien(datei, "", "A", 1), gelegt(51000, 2));
    EXPECT_EQ(linien(datei, "R", "A", 2), gelegt(1000, 1));
    EXPECT_EQ(linien(datei, "", "A", 0), gelegt(1000, 0));
    EXPECT_EQ(linien(datei, "R", "A", 1), gelegt(51000, 1));
    const auto links = aktionen(datei, "");
    const auto rechts = aktionen(datei, "R");
    EXPECT_EQ(Texte(links.end() - 2, links.end()), (Texte{"A 2 A1000R/2a", "A 2 A1000R/2b"}));
    EXPECT_EQ(Texte(rechts.end() - 2, rechts.end()), (Texte{"A 1 A1000L/1a", "A 1 A1000L/1b"}));
    EXPECT_EQ(links.size(), 12U);
    EXPECT_EQ(rechts.size(), 12U);
}

TEST_F(UebersichtAktion, NachEinemWechselTragenBeideRichtungenDenNamenDerZweitenSeite) {
    EXPECT_EQ(wechseln(hier("A", 0), dort("C", 0)), 0);
    const auto hierher = aktionen(datei, "");
    const auto dorthin = aktionen(andere, "");
    EXPECT_EQ(Texte(hierher.end() - 2, hierher.end()), (Texte{"C 0 C40000L/0a", "C 0 C40000L/0b"}));
    EXPECT_EQ(Texte(dorthin.end() - 2, dorthin.end()), (Texte{"C 0 A1000L/0a", "C 0 A1000L/0b"}));
    EXPECT_EQ(hierher.size(), 12U);
    EXPECT_EQ(dorthin.size(), 12U);
    EXPECT_THAT(datei.zeilen("SELECT Links, Rechts, Oben, Unten FROM tblStickAktion WHERE Aktion = "
                             "'C40000L/0b'"),
                ElementsAre(ElementsAre("2", "0", "3", "4")));
    EXPECT_EQ(linien(datei, "", "A", 0), gelegt(40000, 0));
    EXPECT_EQ(linien(andere, "", "C", 0), gelegt(1000, 0));
    // Row 20 is one of the rows: the mask of locked layers goes with layer 0.
    EXPECT_EQ(linien(datei, "", "A", 0).at(19).at(0), std::to_string(40000 + 2000 + 2));
}

TEST_F(UebersichtAktion, WechselZweierEbenenEinesSticksTauschtNurDieLinien) {
    const auto vorher = sortiert(aktionen(datei, ""));
    EXPECT_EQ(wechseln(hier("A", 0), hier("A", 2)), 0);
    EXPECT_EQ(linien(datei, "", "A", 0), gelegt(1000, 2));
    EXPECT_EQ(linien(datei, "", "A", 2), gelegt(1000, 0));
    EXPECT_EQ(sortiert(aktionen(datei, "")), vorher);
}

TEST_F(UebersichtAktion, WechselMitSichSelbstMeldetNur) {
    const fs::path verweis = andere.ordner() / "Verweis.twk";
    fs::create_symlink(datei.pfad(), verweis);
    const auto vorher = datei.inhalt();
    for (const int index : {0, 4, 8}) {
        EXPECT_EQ(wechseln(hier("A", index), hier("A", index)), 0);
        EXPECT_EQ(wechseln(hier("A", index), {{verweis.string(), "A"}, index}), 0);
    }
    EXPECT_EQ(boxen, Texte(6, DURCHGEFUEHRT));
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(UebersichtAktion, GleicheNamenInZweiDateienSindNichtDasselbe) {
    EXPECT_EQ(wechseln(hier("B", 0), dort("B", 0)), 0);
    EXPECT_EQ(linien(datei, "", "B", 0), gelegt(30000, 0));
    EXPECT_EQ(linien(andere, "", "B", 0), gelegt(20000, 0));
    EXPECT_EQ(wechseln(hier("B", 4), dort("B", 4)), 0);
    EXPECT_EQ(spalten(datei, "tblTastatur", "B", 14, 12), folge("B30000", 14, 12));
}

TEST_F(UebersichtAktion, DieselbeDateiAufZweiWegenSperrtSichNichtSelbst) {
    const fs::path verweis = andere.ordner() / "Verweis.twk";
    fs::create_symlink(datei.pfad(), verweis);
    EXPECT_EQ(wechseln(hier("A", 4), {{verweis.string(), "B"}, 4}), 0);
    EXPECT_EQ(spalten(datei, "tblTastatur", "A", 14, 12), folge("B20000", 14, 12));
    EXPECT_EQ(spalten(datei, "tblTastatur", "B", 14, 12), folge("A1000", 14, 12));
    EXPECT_EQ(kopieren(hier("A", 0), {verweis.string(), "B"}, {0}), 0);
    EXPECT_EQ(linien(datei, "", "B", 0), gelegt(1000, 0));
    EXPECT_EQ(wechseln({{verweis.string(), "A"}, 1}, hier("B", 7)), 0);
    EXPECT_EQ(linien(datei, "", "A", 1), gelegt(70000, 1));
}

TEST_F(UebersichtAktion, WechselOhneZeileAufEinerSeiteAendertKeineVonBeiden) {
    andere.sql("DELETE FROM tblTastatur WHERE Schemaname = 'C'");
    andere.sql("DELETE FROM tblStickR WHERE Schemaname = 'C'");
    andere.sql("DELETE FROM tblStick WHERE Schemaname = 'C' AND \"index\" = 11");
    datei.sql("INSERT INTO tblStickAktion VALUES ('leer', 0, 0, 0, 0, 0, '3')");
    const auto eins = datei.inhalt();
    const auto zwei = andere.inhalt();
    EXPECT_EQ(wechseln(hier("A", 3), dort("C", 3)), 3021);
    EXPECT_EQ(wechseln(dort("C", 3), hier("A", 3)), 3021);
    EXPECT_EQ(wechseln(hier("A", 3), dort("fehlt", 3)), 3021);
    EXPECT_EQ(wechseln(hier("A", 7), dort("C", 7)), 3021);
    EXPECT_EQ(wechseln(dort("C", 7), hier("A", 7)), 3021);
    EXPECT_EQ(wechseln(hier("A", 0), dort("C", 0)), 3021); // 20 rows and 19
    EXPECT_EQ(wechseln(dort("C", 0), hier("A", 0)), 3021);
    EXPECT_EQ(wechseln(hier("leer", 0), hier("leer", 1)), 3021);
    EXPECT_EQ(datei.inhalt(), eins);
    EXPECT_EQ(andere.inhalt(), zwei);
    EXPECT_THAT(boxen, IsEmpty());
}

TEST_F(UebersichtAktion, DerFehlerNenntTabelleDateiUndSchema) {
    for (const auto& [index, tabelle, was] :
         {std::tuple(0, "tblStick", "keine Zeilen"), std::tuple(3, "tblTastatur", "keine Zeile")})
        for (const bool zuerst : {false, true})
            try {
                const auto da = hier("A", index);
                const auto fehlt = dort("fehlt", index);
                LayerWechseln(zuerst ? fehlt : da, zuerst ? da : fehlt, [](std::string_view) {});
                FAIL();
            } catch (const LaufzeitFehler& fehler) {
                EXPECT_EQ(fehler.what(), std::string("Die Tabelle „") + tabelle + "“ der Datenbank „" +
                                             andere.pfad() + "“ hat für das Schema „fehlt“ " + was + ".");
            }
}

TEST_F(UebersichtAktion, WechselTauschtSoVieleZeilenWieDaSind) {
    aufEinmal(datei, ebenenbau::linien("", "kurz", 300000, 3));
    aufEinmal(andere, ebenenbau::linien("R", "kurz", 400000, 3));
    EXPECT_EQ(wechseln(hier("kurz", 0), dort("kurz", 6)), 0);
    EXPECT_EQ(linien(datei, "", "kurz", 0), gelegt(400000, 0, 3));
    EXPECT_EQ(linien(andere, "R", "kurz", 0), gelegt(300000, 0, 3));
}

TEST_F(UebersichtAktion, EinFehlerNachDenErstenSchrittenNimmtBeideDateienZurueck) {
    andere.sql("DROP TABLE tblStickAktion");
    const auto eins = datei.inhalt();
    const auto zwei = andere.inhalt();
    EXPECT_EQ(wechseln(hier("A", 0), dort("C", 0)), 3078);
    EXPECT_EQ(kopieren(hier("A", 0), dort("C", 0).schema, {6, 0}), 3078);
    EXPECT_EQ(datei.inhalt(), eins);
    EXPECT_EQ(andere.inhalt(), zwei);
}

TEST_F(UebersichtAktion, EinStickWechseltNichtMitDenButtons) {
    const auto vorher = datei.inhalt();
    EXPECT_EQ(wechseln(hier("A", 0), hier("B", 3)), 9);
    EXPECT_EQ(wechseln(hier("A", 5), hier("B", 6)), 9);
    EXPECT_EQ(wechseln(hier("A", -1), hier("B", 0)), 9);
    EXPECT_EQ(wechseln(hier("A", 0), hier("B", 9)), 9);
    EXPECT_EQ(loeschen(hier("A", 9), true), 9);
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_THAT(boxen, IsEmpty());
}

// --- copy ---

TEST_F(UebersichtAktion, KopieInMehrereEbenenBeiderSticksEinerAnderenDatei) {
    const auto quelle = datei.inhalt();
    EXPECT_EQ(kopieren(hier("A", 1), dort("C", 0).schema, {0, 2, 7}), 0);
    EXPECT_EQ(datei.inhalt(), quelle);
    EXPECT_EQ(linien(andere, "", "C", 0), gelegt(1000, 1));
    EXPECT_EQ(linien(andere, "", "C", 1), gelegt(40000, 1));
    EXPECT_EQ(linien(andere, "", "C", 2), gelegt(1000, 1));
    EXPECT_EQ(linien(andere, "R", "C", 0), gelegt(90000, 0));
    EXPECT_EQ(linien(andere, "R", "C", 1), gelegt(1000, 1));
    const auto links = aktionen(andere, "");
    EXPECT_EQ(Texte(links.begin() + 6, links.end()),
              (Texte{"C 1 C40000L/1a", "C 1 C40000L/1b", "C 0 A1000L/1a", "C 0 A1000L/1b", "C 2 A1000L/1a",
                     "C 2 A1000L/1b"}));
    const auto rechts = aktionen(andere, "R");
    EXPECT_EQ(Texte(rechts.end() - 2, rechts.end()), (Texte{"C 1 A1000L/1a", "C 1 A1000L/1b"}));
    EXPECT_EQ(rechts.size(), 12U);
    EXPECT_EQ(linien(andere, "", "B", 0), gelegt(30000, 0));
    EXPECT_THAT(boxen, IsEmpty());
}

TEST_F(UebersichtAktion, KopieVomRechtenStickNimmtDieLinienDesLinken) {
    EXPECT_EQ(kopieren(hier("A", 8), hier("B", 0).schema, {0, 6}), 0);
    EXPECT_EQ(linien(datei, "", "B", 0), gelegt(1000, 2));
    EXPECT_EQ(linien(datei, "R", "B", 0), gelegt(1000, 2));
    const auto rechts = aktionen(datei, "R");
    EXPECT_EQ(Texte(rechts.end() - 2, rechts.end()), (Texte{"B 0 A1000R/2a", "B 0 A1000R/2b"}));
    const auto links = aktionen(datei, "");
    EXPECT_EQ(Texte(links.end() - 2, links.end()), (Texte{"B 0 A1000R/2a", "B 0 A1000R/2b"}));
}

TEST_F(UebersichtAktion, KopieAufSichSelbstLaesstIhreAktionen) {
    const auto vorher = sortiert(aktionen(datei, ""));
    EXPECT_EQ(kopieren(hier("A", 1), hier("A", 0).schema, {1}), 0);
    EXPECT_EQ(sortiert(aktionen(datei, "")), vorher);
    EXPECT_EQ(linien(datei, "", "A", 1), gelegt(1000, 1));
    const auto rechts = sortiert(aktionen(datei, "R"));
    EXPECT_EQ(kopieren(hier("A", 7), hier("A", 0).schema, {7}), 0);
    EXPECT_EQ(sortiert(aktionen(datei, "R")), rechts);
    EXPECT_EQ(linien(datei, "R", "A", 1), gelegt(1000, 1));
}

TEST_F(UebersichtAktion, KopieDerButtonsUndKopieOhneZielAendernNichts) {
    const auto vorher = datei.inhalt();
    for (const int index : {3, 4, 5})
        EXPECT_EQ(kopieren(hier("A", index), hier("B", 0).schema, {0, 3, 4, 5, 6}), 0);
    EXPECT_EQ(kopieren(hier("A", 0), hier("B", 0).schema, {}), 0);
    EXPECT_EQ(kopieren(hier("A", 0), hier("B", 0).schema, {3, 4, 5}), 0);
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(UebersichtAktion, KopieLaesstZeilenDieDieQuelleNichtHat) {
    aufEinmal(datei, ebenenbau::linien("", "kurz", 300000, 3));
    EXPECT_EQ(kopieren(hier("kurz", 0), hier("B", 0).schema, {0}), 0);
    auto erwartet = gelegt(20000, 0);
    const auto kurz = gelegt(300000, 0, 3);
    std::copy(kurz.begin(), kurz.end(), erwartet.begin());
    EXPECT_EQ(linien(datei, "", "B", 0), erwartet);
}

TEST_F(UebersichtAktion, KopieOhneZeilenAufEinerSeiteAendertNichts) {
    aufEinmal(andere, ebenenbau::linien("", "kurz", 300000, 19));
    aufEinmal(andere, ebenenbau::aktionen("", "kurz", "k"));
    const auto eins = datei.inhalt();
    const auto zwei = andere.inhalt();
    EXPECT_EQ(kopieren(hier("fehlt", 0), dort("C", 0).schema, {0}), 3021);
    EXPECT_EQ(kopieren(hier("A", 0), dort("fehlt", 0).schema, {0}), 3021);
    EXPECT_EQ(kopieren(hier("A", 0), dort("kurz", 0).schema, {0}), 3021);
    EXPECT_EQ(datei.inhalt(), eins);
    EXPECT_EQ(andere.inhalt(), zwei);
}

TEST_F(UebersichtAktion, KopieAusEinerSchreibgeschuetztenDatei) {
    fs::permissions(andere.ordner(), fs::perms(0777));
    fs::permissions(andere.pfad(), fs::perms(0666));
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { LayerKopieren(hier("A", 0), dort("C", 0).schema, {true}); }),
              0);
    EXPECT_EQ(linien(andere, "", "C", 0), gelegt(1000, 0));
}

// --- names and files ---

TEST_F(UebersichtAktion, EinApostrophErreichtDieDatenbankNicht) {
    datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('O''Brien')");
    const auto vorher = datei.inhalt();
    const std::string boese = "A' OR '1' = '1";
    for (const std::string& name : {std::string("O'Brien"), boese})
        for (const int index : {0, 3, 7}) {
            EXPECT_EQ(loeschen(hier(name, index), true), 3075);
            EXPECT_EQ(wechseln(hier(name, index), hier("A", index)), 3075);
            EXPECT_EQ(wechseln(hier("A", index), hier(name, index)), 3075);
            if (!istTastenebene(index)) {
                EXPECT_EQ(kopieren(hier(name, index), hier("A", 0).schema, {0}), 3075);
                EXPECT_EQ(kopieren(hier("A", index), hier(name, 0).schema, {0}), 3075);
            }
        }
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_THAT(boxen, IsEmpty());
}

TEST_F(UebersichtAktion, FremdeFehlendeUndGesperrteDateienAendernNichts) {
    const std::string fehlt = (datei.ordner() / "fehlt.twk").string();
    const std::string text = (datei.ordner() / "Text.twk").string();
    const std::string fremd = (datei.ordner() / "fremd.twk").string();
    dateiSchreiben(text, std::string(5000, 'x'));
    fs::copy_file(datei.pfad(), fremd);
    for (const auto& tabelle : datei.zeilen("SELECT name FROM sqlite_schema WHERE type='table'"))
        RoheVerbindung(fremd).sql("DROP TABLE " + tabelle[0]);
    RoheVerbindung sperrend(andere.pfad());
    sperrend.sql("BEGIN IMMEDIATE");

    const auto vorher = datei.inhalt();
    const std::vector<std::pair<std::string, int>> faelle{
        {fehlt, 3024}, {"", 3024}, {text, 3343}, {fremd, 3078}, {andere.pfad(), 3218}};
    for (const auto& [pfad, nummer] : faelle) {
        const Ebenenort stick{{pfad, "B"}, 0};
        EXPECT_EQ(loeschen(stick, true), nummer) << pfad;
        EXPECT_EQ(wechseln(hier("A", 0), stick), nummer) << pfad;
        EXPECT_EQ(wechseln(stick, hier("A", 0)), nummer) << pfad;
        EXPECT_EQ(wechseln(hier("A", 3), {{pfad, "B"}, 3}), nummer) << pfad;
        EXPECT_EQ(kopieren(hier("A", 0), stick.schema, {0}), nummer) << pfad;
    }
    sperrend.sql("COMMIT");
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_THAT(boxen, IsEmpty());
    EXPECT_FALSE(fs::exists(fehlt));
    EXPECT_EQ(dateiLesen(text), std::string(5000, 'x'));
}

TEST_F(UebersichtAktion, EineSchreibgeschuetzteDateiAendertSichNicht) {
    const auto vorher = datei.inhalt();
    const auto zwei = andere.inhalt();
    fs::permissions(andere.ordner(), fs::perms(0777));
    fs::permissions(andere.pfad(), fs::perms(0666));
    const auto nurLesend = [&](const std::function<void()>& arbeit) {
        return fehlernummerNurLesend(datei, arbeit);
    };
    EXPECT_EQ(nurLesend([&] { LayerLoeschen(hier("A", 0), [](std::string_view) { return true; }); }), 3027);
    EXPECT_EQ(nurLesend([&] { LayerWechseln(hier("A", 0), dort("C", 0), [](std::string_view) {}); }), 3027);
    EXPECT_EQ(nurLesend([&] { LayerWechseln(dort("C", 3), hier("A", 3), [](std::string_view) {}); }), 3027);
    EXPECT_EQ(nurLesend([&] { LayerKopieren(dort("C", 0), hier("A", 0).schema, {true}); }), 3027);
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_EQ(andere.inhalt(), zwei);
}
