// SPDX-License-Identifier: GPL-3.0-or-later
// The zone lines and the actions of both sticks as the editors read them, and the deletion of empty fields.
#include "store/schema/modLesen.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/store/schema/Sticktest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Meldungen = std::vector<std::string>;

/// What stands in row `zeile` of a layer in a direction: a value of its own, so that none can be mistaken.
std::int32_t eigenerWert(std::size_t ebene, std::size_t zeile, std::size_t richtung) {
    return static_cast<std::int32_t>(10000 * (ebene + 1) + 100 * zeile + richtung);
}

class Linien : public StickTest {
protected:
    Sticklinien lies(const std::string& name = "S") {
        return StickLinienLesen(datei.pfad(), seite(), name,
                                [&](std::string_view text) { meldungen.emplace_back(text); });
    }

    /// Lays rows `von` to `bis` in reverse order, so that only ORDER BY brings them into theirs.
    void lege(const std::string& name, std::size_t von = 1, std::size_t bis = 20) const {
        std::string text;
        for (std::size_t zeile = bis; zeile >= von; --zeile) {
            text += "INSERT INTO " + linientabelle() + " VALUES ('" + name + "', " + std::to_string(zeile);
            for (std::size_t ebene = 0; ebene < EBENEN; ++ebene)
                for (std::size_t richtung = 0; richtung < RICHTUNGEN; ++richtung)
                    text += ", " + std::to_string(eigenerWert(ebene, zeile, richtung));
            text += ");";
        }
        datei.sql(text);
    }
    void setze(const std::string& zuweisung, int zeile) const {
        datei.sql("UPDATE " + linientabelle() + " SET " + zuweisung +
                  " WHERE \"index\" = " + std::to_string(zeile));
    }

    Meldungen meldungen;
};

/// The table that `lege` has laid.
Linientabelle eigeneLinien() {
    Linientabelle linien{};
    for (std::size_t ebene = 0; ebene < EBENEN; ++ebene)
        for (std::size_t zeile = 1; zeile <= 19; ++zeile)
            for (std::size_t richtung = 0; richtung < RICHTUNGEN; ++richtung)
                linien[ebene][zeile][richtung] = eigenerWert(ebene, zeile, richtung);
    return linien;
}

Linientabelle grundlinien() {
    Linientabelle linien{};
    for (auto& ebene : linien)
        ebene[1] = {27072, 38399, 25941, 39679};
    return linien;
}

const Meldungen NEUES_SCHEMA{"Es wird ein neues Schema erstellen!"};

INSTANTIATE_TEST_SUITE_P(Beide, Linien, testing::Values("frmJust", "frmJustr"), zielFormular);

} // namespace

TEST(Stickseite, NurFrmJustIstDerLinkeStick) {
    EXPECT_EQ(stickseiteVon("frmJust"), Stickseite::Links);
    for (const std::string text : {"frmJustr", "frmJustR", "frmjust", "frmJust ", "frmHaupt", ""})
        EXPECT_EQ(stickseiteVon(text), Stickseite::Rechts) << text;
    EXPECT_EQ(tabellenzusatz(Stickseite::Links), "");
    EXPECT_EQ(tabellenzusatz(Stickseite::Rechts), "R");
}

TEST_P(Linien, JedeSpalteJederEbeneStehtAnIhremPlatz) {
    lege("S");
    const Sticklinien gelesen = lies();
    EXPECT_EQ(gelesen.linien, eigeneLinien());
    EXPECT_THAT(meldungen, IsEmpty());
}

TEST_P(Linien, DiePlaetzeNullUndZwanzigBleibenNull) {
    lege("S");
    const Sticklinien gelesen = lies();
    for (const auto& ebene : gelesen.linien) {
        EXPECT_THAT(ebene.front(), ElementsAre(0, 0, 0, 0));
        EXPECT_THAT(ebene.back(), ElementsAre(0, 0, 0, 0));
        EXPECT_EQ(ebene.size(), 21u);
    }
}

TEST_P(Linien, DieSperreStehtInLinksDerZwanzigstenZeile) {
    lege("S");
    for (const std::int32_t maske : {0, 1, 2, 4, 7, -1}) {
        setze("Links = " + std::to_string(maske), 20);
        EXPECT_EQ(lies().StickSperre, maske);
    }
}

TEST_P(Linien, OhneZeilenKommtEineMeldungUndDannDieZwanzigGrundzeilen) {
    const Sticklinien gelesen = lies();
    EXPECT_EQ(gelesen.linien, grundlinien());
    EXPECT_EQ(gelesen.StickSperre, 0);
    EXPECT_EQ(meldungen, NEUES_SCHEMA);
    EXPECT_EQ(datei.zeilen("SELECT count(*), min(\"index\"), max(\"index\") FROM " + linientabelle() +
                           " WHERE Schemaname = 'S'"),
              (Tabellenbild{{"20", "1", "20"}}));
    const std::string andere = zusatz().empty() ? "tblStickR" : "tblStick";
    EXPECT_EQ(datei.zeilen("SELECT * FROM " + andere), Tabellenbild());
    // The second time they are there.
    EXPECT_EQ(lies().linien, grundlinien());
    EXPECT_EQ(meldungen, NEUES_SCHEMA);
}

TEST_P(Linien, DieMeldungKommtBevorDieZeilenAngelegtSind) {
    Tabellenbild beiDerMeldung;
    StickLinienLesen(datei.pfad(), seite(), "S", [&](std::string_view) {
        // An open box must not keep other programs from writing.
        datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('anderes')");
        beiDerMeldung = datei.zeilen("SELECT count(*) FROM " + linientabelle());
    });
    EXPECT_EQ(beiDerMeldung, (Tabellenbild{{"0"}}));
}

TEST_P(Linien, WerWaehrendDerMeldungAnlegtBehaeltSeineZeilen) {
    const auto gelesen = StickLinienLesen(datei.pfad(), seite(), "S", [&](std::string_view) { lege("S"); });
    EXPECT_EQ(gelesen.linien, eigeneLinien());
    EXPECT_EQ(lies().linien, eigeneLinien());
}

TEST_P(Linien, EinFehlerInDerMeldungLegtNichtsAn) {
    struct Abbruch {};
    EXPECT_THROW(StickLinienLesen(datei.pfad(), seite(), "S", [](std::string_view) { throw Abbruch(); }),
                 Abbruch);
    EXPECT_EQ(datei.zeilen("SELECT * FROM " + linientabelle()), Tabellenbild());
}

TEST_P(Linien, NurDasEigeneSchemaUndDieEigeneTabelleZaehlen) {
    lege("s");
    lege("Sx");
    const std::string andere = zusatz().empty() ? "tblStickR" : "tblStick";
    datei.sql("INSERT INTO " + andere + " (Schemaname, \"index\") VALUES ('S', 1)");
    EXPECT_EQ(lies().linien, grundlinien());
    EXPECT_EQ(meldungen, NEUES_SCHEMA);
    EXPECT_EQ(lies("Sx").linien, eigeneLinien());
}

TEST_P(Linien, EineFehlendeZeileWirdGelegtUndDieAnderenBleiben) {
    for (int fehlende = 1; fehlende <= 20; ++fehlende) {
        SCOPED_TRACE(fehlende);
        datei.sql("DELETE FROM " + linientabelle());
        lege("S");
        datei.sql("DELETE FROM " + linientabelle() + " WHERE \"index\" = " + std::to_string(fehlende));
        const auto andere = datei.zeilen("SELECT rowid, * FROM " + linientabelle());
        auto erwartet = eigeneLinien();
        for (auto& ebene : erwartet)
            if (fehlende < 20)
                ebene[static_cast<std::size_t>(fehlende)] =
                    fehlende == 1 ? GRUNDLINIEN : std::array<std::int32_t, RICHTUNGEN>{};
        const auto gelesen = lies();
        EXPECT_EQ(gelesen.linien, erwartet);
        EXPECT_EQ(gelesen.StickSperre, fehlende == 20 ? 0 : eigenerWert(0, 20, 0));
        EXPECT_EQ(datei.zeilen("SELECT rowid, * FROM " + linientabelle() + " WHERE \"index\" <> " +
                               std::to_string(fehlende)),
                  andere);
        EXPECT_EQ(lies().linien, erwartet);
    }
    EXPECT_THAT(meldungen, IsEmpty());
}

TEST_P(Linien, VonEinerZeileAnWirdErgaenztOhneMeldung) {
    lege("S", 1, 1);
    auto erwartet = grundlinien();
    for (std::size_t ebene = 0; ebene < erwartet.size(); ++ebene)
        erwartet[ebene][1] = eigeneLinien()[ebene][1];
    EXPECT_EQ(lies().linien, erwartet);
    EXPECT_THAT(meldungen, IsEmpty());
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM " + linientabelle()), (Tabellenbild{{"20"}}));
}

TEST_P(Linien, MitEinundzwanzigZeilenStehtDieSperreInDerZwanzigsten) {
    lege("S", 1, 21);
    const Sticklinien gelesen = lies();
    EXPECT_EQ(gelesen.linien, eigeneLinien());
    EXPECT_EQ(gelesen.StickSperre, eigenerWert(0, 20, 0));
}

TEST_P(Linien, ZahlenGehenBisZweiunddreissigBitDarueberIstUeberlauf) {
    lege("S");
    for (const std::string passend : {"2147483647", "2147483646", "-2147483648", "-2147483647", "0", "65535"})
        for (const int zeile : {1, 19}) {
            setze("Unten3 = " + passend, zeile);
            EXPECT_EQ(lies().linien[2][static_cast<std::size_t>(zeile)][3], std::stoi(passend));
        }
    for (const std::string zuGross : {"2147483648", "-2147483649", "9223372036854775807"}) {
        setze("Unten3 = " + zuGross, 19);
        erwarteFehlerOhneWirkung(6, [&] { lies(); });
    }
    setze("Unten3 = 0", 19);
    setze("Links = 2147483647", 20);
    EXPECT_EQ(lies().StickSperre, 2147483647);
    setze("Links = 2147483648", 20);
    erwarteFehlerOhneWirkung(6, [&] { lies(); });
}

TEST_P(Linien, TextWoEineZahlStehenMussEndetOhneWirkung) {
    for (const std::string spalte : {"Links", "Unten", "Links2", "Unten3"})
        for (const int zeile : {1, 19})
            for (const std::string text : {"'x'", "''", "'3x'", "2.5", "x'ff'"}) {
                datei.sql("DELETE FROM " + linientabelle());
                lege("S");
                setze(spalte + " = " + text, zeile);
                SCOPED_TRACE(spalte + " " + text);
                erwarteFehlerOhneWirkung(13, [&] { lies(); });
            }
    datei.sql("DELETE FROM " + linientabelle());
    lege("S");
    setze("Links = 'x'", 20);
    erwarteFehlerOhneWirkung(13, [&] { lies(); });
}

TEST_P(Linien, DieAnderenSpaltenDerZwanzigstenZeileWerdenNieGelesen) {
    lege("S");
    setze("Links = 5, Rechts = 'x', Oben = 'x', Unten = 'x', Links2 = 'x', Unten3 = 'x'", 20);
    const Sticklinien gelesen = lies();
    EXPECT_EQ(gelesen.linien, eigeneLinien());
    EXPECT_EQ(gelesen.StickSperre, 5);
}

TEST_P(Linien, EineLeereSpalteEinerFremdenTabelleEndetOhneWirkung) {
    datei.sql(
        "DROP TABLE " + linientabelle() + "; CREATE TABLE " + linientabelle() +
        " (Schemaname TEXT, \"index\" SMALLINT, Links INTEGER, Rechts INTEGER, Oben INTEGER, Unten INTEGER,"
        " Links2 INTEGER, Rechts2 INTEGER, Oben2 INTEGER, Unten2 INTEGER,"
        " Links3 INTEGER, Rechts3 INTEGER, Oben3 INTEGER, Unten3 INTEGER)");
    lege("S");
    EXPECT_EQ(lies().linien, eigeneLinien());
    setze("Oben2 = NULL", 7);
    erwarteFehlerOhneWirkung(13, [&] { lies(); });
}

TEST_P(Linien, UmlauteUndFremdeZeichenSindNamenWieAndere) {
    for (const std::string name :
         {"Größe ä", "漢 \U0001F3AE", "a; DROP TABLE tblStick; --", "tblStick.index", ""}) {
        EXPECT_EQ(lies(name).linien, grundlinien()) << name;
        EXPECT_EQ(datei.zeilen("SELECT Schemaname FROM " + linientabelle() + " ORDER BY rowid DESC LIMIT 1"),
                  (Tabellenbild{{name}}));
    }
    EXPECT_EQ(meldungen.size(), 5u);
}

TEST_P(Linien, EinNameMitApostrophEndetOhneMeldungUndOhneWirkung) {
    lege("O''Brien");
    for (const std::string name : {"O'Brien", "'", "x' OR 'a'='a"})
        erwarteFehlerOhneWirkung(3075, [&] { lies(name); });
    EXPECT_THAT(meldungen, IsEmpty());
}

TEST_P(Linien, EineGesperrteDateiEndetOhneWirkung) {
    lege("S");
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN IMMEDIATE"); // readers may still pass
    EXPECT_EQ(lies().linien, eigeneLinien());
    EXPECT_EQ(fehlernummer([&] { lies("neu"); }), 3218);
    EXPECT_EQ(meldungen, NEUES_SCHEMA); // before it was tried
    andere.sql("COMMIT; BEGIN EXCLUSIVE");
    EXPECT_EQ(fehlernummer([&] { lies(); }), 3218);
    andere.sql("COMMIT");
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM " + linientabelle()), (Tabellenbild{{"20"}}));
}

TEST_P(Linien, EineSchreibgeschuetzteDateiLaesstNurLesenZu) {
    lege("S");
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { EXPECT_EQ(lies().linien, eigeneLinien()); }), 0);
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { lies("neu"); }), 3027);
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_P(Linien, EineFehlendeDateiOderTabelleIstEinFehler) {
    EXPECT_EQ(fehlernummer(
                  [&] { StickLinienLesen(datei.pfad() + ".fehlt", seite(), "S", [](std::string_view) {}); }),
              3024);
    datei.sql("DROP TABLE " + linientabelle());
    erwarteFehlerOhneWirkung(3078, [&] { lies(); });
    EXPECT_THAT(meldungen, IsEmpty());
}

TEST_P(Linien, NachDemLesenIstDieDateiFrei) {
    lies();
    lies();
    RoheVerbindung andere(datei.pfad());
    EXPECT_NO_THROW(andere.sql("BEGIN EXCLUSIVE; COMMIT"));
}

namespace {

/// Rows of actions: what `lege` takes is Umschalt, Links, Rechts, Oben, Unten, Aktion as SQL.
class Aktionen : public StickTest {
protected:
    void lege(const std::string& zeile, const std::string& name = "S") const {
        datei.sql("INSERT INTO " + aktionstabelle() + " VALUES ('" + name + "', " + zeile + ")");
    }
    std::string lies(const Feldschluessel& feld, const std::string& name = "S") const {
        return StickAktionLesen(datei.pfad(), seite(), name, feld);
    }
    bool loesche(int ebene, int richtung, std::int32_t linie, const std::string& name = "S") const {
        Database datenbank = OpenDatabase(datei.pfad());
        return StickAktionenLoeschen(datenbank, seite(), name, ebene, richtung, linie);
    }
    Tabellenbild aktionen() const { return datei.zeilen("SELECT Aktion FROM " + aktionstabelle()); }
};

INSTANTIATE_TEST_SUITE_P(Beide, Aktionen, testing::Values("frmJust", "frmJustr"), zielFormular);

} // namespace

TEST_P(Aktionen, EinFeldHatDieAktionSeinerZeile) {
    lege("0, 20000, 0, 9000, 0, '2,0,65,0,0'");
    EXPECT_EQ(lies({0, 20000, 0, 9000, 0}), "2,0,65,0,0");
}

TEST_P(Aktionen, JedeDerFuenfZahlenMussStimmen) {
    lege("1, 2, 3, 4, 5, 'Treffer'");
    EXPECT_EQ(lies({1, 2, 3, 4, 5}), "Treffer");
    for (std::size_t zahl = 0; zahl < 5; ++zahl)
        for (const int versatz : {-1, 1}) {
            Feldschluessel feld{1, 2, 3, 4, 5};
            feld[zahl] += versatz;
            EXPECT_EQ(lies(feld), "") << zahl << " " << versatz;
        }
}

TEST_P(Aktionen, DieZahlenStehenInDerReihenfolgeEbeneLinksRechtsObenUnten) {
    lege("1, 0, 0, 0, 0, 'Ebene'");
    lege("0, 1, 0, 0, 0, 'Links'");
    lege("0, 0, 1, 0, 0, 'Rechts'");
    lege("0, 0, 0, 1, 0, 'Oben'");
    lege("0, 0, 0, 0, 1, 'Unten'");
    EXPECT_EQ(lies({1, 0, 0, 0, 0}), "Ebene");
    EXPECT_EQ(lies({0, 1, 0, 0, 0}), "Links");
    EXPECT_EQ(lies({0, 0, 1, 0, 0}), "Rechts");
    EXPECT_EQ(lies({0, 0, 0, 1, 0}), "Oben");
    EXPECT_EQ(lies({0, 0, 0, 0, 1}), "Unten");
}

TEST_P(Aktionen, OhneZeileUndMitLeererAktionIstDasErgebnisLeer) {
    EXPECT_EQ(lies({0, 0, 0, 0, 0}), "");
    lege("0, 0, 0, 0, 0, NULL");
    EXPECT_EQ(lies({0, 0, 0, 0, 0}), "");
    lege("1, 0, 0, 0, 0, ''");
    EXPECT_EQ(lies({1, 0, 0, 0, 0}), "");
    EXPECT_EQ(aktionen(), (Tabellenbild{{"NULL"}, {""}}));
}

TEST_P(Aktionen, VonZweiZeilenEinesFeldesGiltDieErste) {
    lege("0, 0, 0, 0, 0, 'erste'");
    lege("0, 0, 0, 0, 0, 'zweite'");
    EXPECT_EQ(lies({0, 0, 0, 0, 0}), "erste");
}

TEST_P(Aktionen, DieGrenzenDerZahlenLassenSichSuchen) {
    lege("2, 2147483647, -2147483648, 65535, -1, 'weit'");
    EXPECT_EQ(lies({2, 2147483647, -2147483647 - 1, 65535, -1}), "weit");
    EXPECT_EQ(lies({2, 2147483646, -2147483647 - 1, 65535, -1}), "");
    lege("0, 0, 0, 0, -2147483648, '3'");
    EXPECT_TRUE(loesche(0, 3, -2147483647 - 1));
    EXPECT_EQ(aktionen(), (Tabellenbild{{"weit"}}));
}

TEST_P(Aktionen, NurDasEigeneSchemaUndDieEigeneTabelleZaehlen) {
    lege("0, 7, 0, 0, 0, '3'", "s");
    lege("0, 7, 0, 0, 0, '4'", "Sx");
    const std::string andere = zusatz().empty() ? "tblStickAktionR" : "tblStickAktion";
    datei.sql("INSERT INTO " + andere + " VALUES ('S', 0, 7, 0, 0, 0, '4')");
    const auto vorher = datei.inhalt();
    EXPECT_EQ(lies({0, 7, 0, 0, 0}), "");
    EXPECT_EQ(lies({0, 7, 0, 0, 0}, "Sx"), "4");
    EXPECT_TRUE(loesche(0, 0, 7));
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_P(Aktionen, UmlauteSindNamenWieAndereEinApostrophNicht) {
    for (const std::string name : {"Größe ä", "漢 \U0001F3AE", "a; DROP TABLE tblStick; --", ""}) {
        lege("0, 7, 0, 0, 0, '3'", name);
        EXPECT_EQ(lies({0, 7, 0, 0, 0}, name), "3");
        EXPECT_TRUE(loesche(0, 0, 7, name));
        EXPECT_EQ(aktionen(), Tabellenbild()) << name;
    }
    lege("0, 7, 0, 0, 0, '3'", "O''Brien");
    for (const std::string name : {"O'Brien", "'", "x' OR 'a'='a"}) {
        erwarteFehlerOhneWirkung(3075, [&] { lies({0, 7, 0, 0, 0}, name); });
        erwarteFehlerOhneWirkung(3075, [&] { loesche(0, 0, 7, name); });
    }
}

TEST_P(Aktionen, OhneZeileIstNichtsZuLoeschenUndDasErgebnisWahr) {
    EXPECT_TRUE(loesche(0, 0, 20000));
}

TEST_P(Aktionen, JedeRichtungSuchtInIhrerSpalte) {
    const std::vector<std::string> felder{"0, 7, 0, 0, 0, '3'", "0, 0, 7, 0, 0, '3'", "0, 0, 0, 7, 0, '3'",
                                          "0, 0, 0, 0, 7, '3'"};
    for (int richtung = 0; richtung < RICHTUNGEN; ++richtung) {
        datei.sql("DELETE FROM " + aktionstabelle());
        for (const std::string& feld : felder)
            lege(feld);
        EXPECT_TRUE(loesche(0, richtung, 7));
        const std::string spalten[]{"Links", "Rechts", "Oben", "Unten"};
        EXPECT_EQ(datei.zeilen("SELECT count(*), sum(" + spalten[richtung] + ") FROM " + aktionstabelle()),
                  (Tabellenbild{{"3", "0"}}));
    }
}

TEST_P(Aktionen, EineAndereRichtungIstEinFehler) {
    lege("0, 7, 7, 7, 7, '3'");
    for (const int richtung : {-1, 4})
        erwarteFehlerOhneWirkung(9, [&] { loesche(0, richtung, 7); });
    EXPECT_TRUE(loesche(0, 3, 7));
}

TEST_P(Aktionen, GeloeschtWirdNurAufDieserEbeneUndDieserLinie) {
    lege("0, 20000, 0, 0, 0, '3'");
    lege("1, 20000, 0, 0, 0, '3'");
    lege("2, 20000, 0, 0, 0, '3'");
    lege("1, 19999, 0, 0, 0, '3'");
    lege("1, 20001, 0, 0, 0, '4'");
    EXPECT_TRUE(loesche(1, 0, 20000));
    EXPECT_EQ(datei.zeilen("SELECT Umschalt, Links FROM " + aktionstabelle()),
              (Tabellenbild{{"0", "20000"}, {"2", "20000"}, {"1", "19999"}, {"1", "20001"}}));
}

TEST_P(Aktionen, EineEchteAktionBleibtUndDieLeerenNebenIhrGehenDoch) {
    lege("0, 7, 0, 1, 0, '3'");
    lege("0, 7, 0, 2, 0, '2,0,65,0,0'");
    lege("0, 7, 0, 3, 0, '3'");
    lege("0, 7, 0, 4, 0, '3'");
    EXPECT_FALSE(loesche(0, 0, 7));
    EXPECT_EQ(aktionen(), (Tabellenbild{{"2,0,65,0,0"}}));
    EXPECT_FALSE(loesche(0, 0, 7));
    EXPECT_EQ(aktionen(), (Tabellenbild{{"2,0,65,0,0"}}));
}

TEST_P(Aktionen, StehtDieEchteAktionAmEndeOderAmAnfangGiltDasselbe) {
    for (const bool amAnfang : {true, false}) {
        datei.sql("DELETE FROM " + aktionstabelle());
        lege(amAnfang ? "0, 7, 0, 1, 0, '4'" : "0, 7, 0, 1, 0, '3'");
        lege(amAnfang ? "0, 7, 0, 2, 0, '3'" : "0, 7, 0, 2, 0, '4'");
        EXPECT_FALSE(loesche(0, 0, 7));
        EXPECT_EQ(aktionen(), (Tabellenbild{{"4"}}));
    }
}

TEST_P(Aktionen, DieDreiAlleinIstEinLeerfeldMitUndOhneLeerzeichen) {
    for (const std::string aktion : {"'3'", "'3 '", "' 3'", "'  3  '", "3"}) {
        lege("0, 7, 0, 0, 0, " + aktion);
        EXPECT_TRUE(loesche(0, 0, 7)) << aktion;
        EXPECT_EQ(aktionen(), Tabellenbild()) << aktion;
    }
}

TEST_P(Aktionen, AllesAndereBleibtStehen) {
    // Among them what some locale would read as the number 3.
    for (const std::string aktion : {"'0,0,0,3'",
                                     "'0,0,5,10'",
                                     "'03'",
                                     "'3.0'",
                                     "'3,0'",
                                     "'3,'",
                                     "'+3'",
                                     "'0,3'",
                                     "'30'",
                                     "'33'",
                                     "'3 3'",
                                     "'3x'",
                                     "'x3'",
                                     "'-3'",
                                     "'2'",
                                     "'4'",
                                     "'5,0'",
                                     "'1,3'",
                                     "'drei'",
                                     "''",
                                     "' '",
                                     "NULL",
                                     "'3' || char(9)",
                                     "char(9) || '3'",
                                     "'3' || char(10)",
                                     "'&H3'",
                                     "'3E0'",
                                     "'٣'"}) {
        datei.sql("DELETE FROM " + aktionstabelle());
        lege("0, 7, 0, 0, 0, " + aktion);
        const auto vorher = datei.inhalt();
        EXPECT_FALSE(loesche(0, 0, 7)) << aktion;
        EXPECT_EQ(datei.inhalt(), vorher) << aktion;
    }
}

TEST_P(Aktionen, TextWoEineZahlStehenMussWirdNichtGefundenUndBleibt) {
    for (const std::string zeile : {"'x', 7, 0, 0, 0, '3'", "0, 'x', 0, 0, 0, '3'", "0, '7x', 0, 0, 0, '3'"})
        lege(zeile);
    const auto vorher = datei.inhalt();
    EXPECT_EQ(lies({0, 7, 0, 0, 0}), "");
    EXPECT_TRUE(loesche(0, 0, 7));
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_P(Aktionen, EineGesperrteDateiEndetOhneWirkung) {
    lege("0, 7, 0, 0, 0, '3'");
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN IMMEDIATE"); // readers may still pass
    EXPECT_EQ(lies({0, 7, 0, 0, 0}), "3");
    EXPECT_EQ(fehlernummer([&] { loesche(0, 0, 7); }), 3218);
    andere.sql("COMMIT; BEGIN EXCLUSIVE");
    EXPECT_EQ(fehlernummer([&] { lies({0, 7, 0, 0, 0}); }), 3218);
    andere.sql("COMMIT");
    EXPECT_EQ(aktionen(), (Tabellenbild{{"3"}}));
}

TEST_P(Aktionen, EineSchreibgeschuetzteDateiLaesstNurLesenZu) {
    lege("0, 7, 0, 0, 0, '3'");
    lege("0, 8, 0, 0, 0, '4'");
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { EXPECT_EQ(lies({0, 7, 0, 0, 0}), "3"); }), 0);
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { loesche(0, 0, 7); }), 3027);
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { EXPECT_FALSE(loesche(0, 0, 8)); }), 0);
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_P(Aktionen, EineFehlendeDateiOderTabelleIstEinFehler) {
    const std::string fehlt = datei.pfad() + ".fehlt";
    EXPECT_EQ(fehlernummer([&] { StickAktionLesen(fehlt, seite(), "S", {}); }), 3024);
    datei.sql("DROP TABLE " + aktionstabelle());
    erwarteFehlerOhneWirkung(3078, [&] { lies({}); });
    erwarteFehlerOhneWirkung(3078, [&] { loesche(0, 0, 7); });
}

TEST_P(Aktionen, NachJedemAufrufIstDieDateiFrei) {
    lege("0, 7, 0, 0, 0, '3'");
    lies({0, 7, 0, 0, 0});
    loesche(0, 0, 7);
    RoheVerbindung andere(datei.pfad());
    EXPECT_NO_THROW(andere.sql("BEGIN EXCLUSIVE; COMMIT"));
}
