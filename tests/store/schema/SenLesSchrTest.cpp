// SPDX-License-Identifier: GPL-3.0-or-later
// The sensitivity of both sticks between the database and the scroll bars.
#include "store/schema/SenLesSchr.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <limits>

using testing::ElementsAre;

namespace {

constexpr bool LESEN = false;
constexpr bool SCHREIBEN = true;

/// One stick's table, its procedure and what of the scroll bars is its own.
struct Seite {
    std::string tabelle;
    void (*lesenSchreiben)(const std::string&, const std::string&, Reglerwerte&, bool);
    std::size_t erstes; ///< element of `HScroll1`
    bool hatWiederholung;
};

void PrintTo(const Seite& seite, std::ostream* aus) {
    *aus << seite.tabelle;
}

/// A value of its own in each scroll bar, all within their ranges and none a default.
Reglerwerte eigene() {
    return {{11, 1, 12, 2, 501, 502, 13, 3, 14, 4, 503, 504}, 77};
}

class Sensibel : public testing::TestWithParam<Seite> {
protected:
    const Seite& seite() const { return GetParam(); }

    void lies(const std::string& name = "S") { GetParam().lesenSchreiben(datei.pfad(), name, werte, LESEN); }
    void schreibe(const std::string& name = "S") {
        GetParam().lesenSchreiben(datei.pfad(), name, werte, SCHREIBEN);
    }

    /// Lays a row; `zahlen` are SQL values, of six columns and `wiederholung` where the table has it.
    void lege(const std::string& name, const std::string& zahlen, const std::string& wiederholung) const {
        datei.sql("INSERT INTO " + seite().tabelle + " VALUES ('" + name + "', " + zahlen +
                  (seite().hatWiederholung ? ", " + wiederholung : "") + ")");
    }

    Tabellenbild tabelle() const { return datei.zeilen("SELECT * FROM " + seite().tabelle); }

    /// A row as the table shows it.
    std::vector<std::string> zeile(std::vector<std::string> spalten, const std::string& wiederholung) const {
        if (seite().hatWiederholung)
            spalten.push_back(wiederholung);
        return spalten;
    }
    std::vector<std::string> leereZeile(const std::string& name) const {
        return zeile({name, "NULL", "NULL", "NULL", "NULL", "NULL", "NULL"}, "NULL");
    }

    /// `basis` with other values in this stick's six elements, in element order.
    Reglerwerte mit(Reglerwerte basis, const std::array<int, 6>& sechs) const {
        std::copy(sechs.begin(), sechs.end(),
                  basis.glaettung.begin() + static_cast<std::ptrdiff_t>(seite().erstes));
        return basis;
    }
    Reglerwerte mit(const Reglerwerte& basis, const std::array<int, 6>& sechs, int wiederholung) const {
        Reglerwerte neu = mit(basis, sechs);
        if (seite().hatWiederholung)
            neu.wiederholintervall = wiederholung;
        return neu;
    }

    /// Runs `arbeit`, expects its error and that neither the file nor the scroll bars have changed.
    template <class Arbeit> void erwarteFehlerOhneWirkung(int nummer, Arbeit&& arbeit) {
        const auto vorher = datei.inhalt();
        const Reglerwerte werteVorher = werte;
        EXPECT_EQ(fehlernummer(arbeit), nummer);
        EXPECT_EQ(werte, werteVorher);
        EXPECT_EQ(datei.inhalt(), vorher);
    }

    Testdatenbank datei;
    Reglerwerte werte = eigene();
};

constexpr std::array<int, 6> GRUNDWERTE{30, 0, 30, 0, 400, 400}; ///< in element order

INSTANTIATE_TEST_SUITE_P(Beide, Sensibel,
                         testing::Values(Seite{"Sensible", SensibleLesenSchreiben, 0, true},
                                         Seite{"SensibleR", SensibleRLesenSchreiben, 6, false}),
                         testing::PrintToStringParamName());

} // namespace

TEST(Reglerwerte, BeginnenMitDenStartwertenDerTabelle) {
    const Reglerwerte werte;
    EXPECT_THAT(werte.glaettung, ElementsAre(1, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0, 1));
    EXPECT_EQ(werte.wiederholintervall, 0);
}

TEST_P(Sensibel, DerErsteStartLegtEineZeileNurMitDemNamenUndZeigtDieGrundwerte) {
    lies();
    EXPECT_EQ(tabelle(), (Tabellenbild{leereZeile("S")}));
    EXPECT_EQ(werte, mit(eigene(), GRUNDWERTE));
}

TEST_P(Sensibel, DerErsteStartLaesstHScroll2WieEsImFrischenFensterSteht) {
    werte = {};
    lies();
    EXPECT_EQ(werte, mit(Reglerwerte{}, GRUNDWERTE));
}

TEST_P(Sensibel, SchreibenOhneZeileLegtSieNurMitDemNamenUndVerwirftDasEingestellte) {
    schreibe();
    EXPECT_EQ(tabelle(), (Tabellenbild{leereZeile("S")}));
    EXPECT_EQ(werte, mit(eigene(), GRUNDWERTE));
}

TEST_P(Sensibel, LesenBringtJedeSpalteInIhrElement) {
    lege("S", "1, 2, 3, 4, 5, 6", "7");
    lies();
    // The second column is the third element, the third the second.
    EXPECT_EQ(werte, mit(eigene(), {1, 3, 2, 4, 5, 6}, 7));
}

TEST_P(Sensibel, SchreibenBringtJedesElementInSeineSpalte) {
    lege("S", "NULL, NULL, NULL, NULL, NULL, NULL", "NULL");
    schreibe();
    EXPECT_EQ(tabelle(),
              (Tabellenbild{seite().hatWiederholung
                                ? std::vector<std::string>{"S", "11", "12", "1", "2", "501", "502", "77"}
                                : std::vector<std::string>{"S", "13", "14", "3", "4", "503", "504"}}));
    EXPECT_EQ(werte, eigene());
}

TEST_P(Sensibel, StartStoppStartBringtZurueckWasEingestelltWar) {
    lies();
    werte = eigene();
    schreibe();
    werte = {};
    lies();
    const Reglerwerte erwartet = mit({},
                                     seite().erstes == 0 ? std::array<int, 6>{11, 1, 12, 2, 501, 502}
                                                         : std::array<int, 6>{13, 3, 14, 4, 503, 504},
                                     77);
    EXPECT_EQ(werte, erwartet);
    EXPECT_EQ(tabelle().size(), 1u);
}

TEST_P(Sensibel, LesenAendertDieDateiNichtWennDieZeileDaIst) {
    lege("S", "1, 2, 3, 4, 5, 6", "7");
    const auto vorher = datei.inhalt();
    lies();
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_P(Sensibel, LeereSpaltenGebenDieGrundwerteUndHScroll2Bleibt) {
    lies(); // a first run that never ends
    werte = eigene();
    lies();
    EXPECT_EQ(werte, mit(eigene(), GRUNDWERTE));
}

TEST_P(Sensibel, EineEinzelneLeereSpalteLaesstDieAnderenGelten) {
    for (std::size_t leer = 0; leer < 7; ++leer) {
        datei.sql("DELETE FROM " + seite().tabelle);
        std::array<std::string, 7> sql{"1", "2", "3", "4", "5", "6", "7"};
        sql[leer] = "NULL";
        lege("S", sql[0] + "," + sql[1] + "," + sql[2] + "," + sql[3] + "," + sql[4] + "," + sql[5], sql[6]);
        werte = eigene();
        lies();
        std::array<int, 6> sechs{1, 3, 2, 4, 5, 6};
        constexpr std::array<std::size_t, 6> ELEMENT_DER_SPALTE{0, 2, 1, 3, 4, 5};
        if (leer < 6)
            sechs[ELEMENT_DER_SPALTE[leer]] = GRUNDWERTE[ELEMENT_DER_SPALTE[leer]];
        EXPECT_EQ(werte, mit(eigene(), sechs, leer == 6 ? 77 : 7)) << leer;
    }
}

TEST_P(Sensibel, WasAusserhalbDesBereichsLiegtGehtAnSeinenRand) {
    const std::string unten = "0, 0, -1, -1, -1, -1";
    const std::string oben = "31, 31, 16, 16, 1001, 1001";
    lege("unten", unten, "-1");
    lege("oben", oben, "501");
    lies("unten");
    EXPECT_EQ(werte, mit(eigene(), {1, 0, 1, 0, 0, 0}, 0));
    lies("oben");
    EXPECT_EQ(werte, mit(eigene(), {30, 15, 30, 15, 1000, 1000}, 500));
}

TEST_P(Sensibel, AnDenRaendernUndEinsDavorBleibtDerWert) {
    lege("min", "1, 1, 0, 0, 0, 0", "0");
    lege("min1", "2, 2, 1, 1, 1, 1", "1");
    lege("max", "30, 30, 15, 15, 1000, 1000", "500");
    lege("max1", "29, 29, 14, 14, 999, 999", "499");
    const auto nach = [&](const std::string& name) {
        lies(name);
        return werte;
    };
    EXPECT_EQ(nach("min"), mit(eigene(), {1, 0, 1, 0, 0, 0}, 0));
    EXPECT_EQ(nach("min1"), mit(eigene(), {2, 1, 2, 1, 1, 1}, 1));
    EXPECT_EQ(nach("max"), mit(eigene(), {30, 15, 30, 15, 1000, 1000}, 500));
    EXPECT_EQ(nach("max1"), mit(eigene(), {29, 14, 29, 14, 999, 999}, 499));
}

TEST_P(Sensibel, AuchDieGroesstenZahlenGehenAnDenRand) {
    lege("klein", "-32768, -32769, -2147483649, -9223372036854775808, -32768, -32768",
         "-9223372036854775808");
    lege("gross", "32767, 32768, 2147483648, 9223372036854775807, 65536, 4294967296", "9223372036854775807");
    lies("klein");
    EXPECT_EQ(werte, mit(eigene(), {1, 0, 1, 0, 0, 0}, 0));
    lies("gross");
    EXPECT_EQ(werte, mit(eigene(), {30, 15, 30, 15, 1000, 1000}, 500));
}

TEST_P(Sensibel, GeschriebenWirdBisSechzehnBitDarueberWirdAbgewiesen) {
    lege("S", "1, 2, 3, 4, 5, 6", "7");
    const std::size_t letztes = seite().erstes + 5;
    for (const int passend : {32766, 32767, -32767, -32768}) {
        werte.glaettung[letztes] = passend;
        schreibe();
        EXPECT_EQ(tabelle().at(0).at(6), std::to_string(passend));
    }
    for (const int zuGross :
         {32768, -32769, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        werte = eigene();
        werte.glaettung[letztes] = zuGross;
        erwarteFehlerOhneWirkung(6, [&] { schreibe(); });
    }
}

TEST_P(Sensibel, NurDieZeileDiesesSchemasUndDieseTabelleZaehlen) {
    lege("S", "1, 2, 3, 4, 5, 6", "7");
    lege("s", "9, 9, 9, 9, 9, 9", "9");
    lege("Sx", "8, 8, 8, 8, 8, 8", "8");
    const std::string andere = seite().hatWiederholung ? "SensibleR" : "Sensible";
    datei.sql("INSERT INTO " + andere + " (Schemaname) VALUES ('S')");
    const auto anderes = datei.zeilen("SELECT * FROM " + andere);
    lies();
    EXPECT_EQ(werte, mit(eigene(), {1, 3, 2, 4, 5, 6}, 7));
    schreibe();
    const Tabellenbild erwartet{zeile({"S", "1", "2", "3", "4", "5", "6"}, "7"),
                                zeile({"s", "9", "9", "9", "9", "9", "9"}, "9"),
                                zeile({"Sx", "8", "8", "8", "8", "8", "8"}, "8")};
    EXPECT_EQ(tabelle(), erwartet);
    EXPECT_EQ(datei.zeilen("SELECT * FROM " + andere), anderes);
}

TEST_P(Sensibel, VonZweiZeilenGiltDieErste) {
    lege("S", "1, 2, 3, 4, 5, 6", "7");
    lege("S", "9, 9, 9, 9, 9, 9", "9");
    lies();
    EXPECT_EQ(werte, mit(eigene(), {1, 3, 2, 4, 5, 6}, 7));
    werte = mit(werte, {21, 3, 2, 4, 5, 6});
    schreibe();
    const Tabellenbild erwartet{zeile({"S", "21", "2", "3", "4", "5", "6"}, "7"),
                                zeile({"S", "9", "9", "9", "9", "9", "9"}, "9")};
    EXPECT_EQ(tabelle(), erwartet);
}

TEST_P(Sensibel, UmlauteUndFremdeZeichenSindNamenWieAndere) {
    for (const std::string name :
         {"Größe ä", "漢 \U0001F3AE", "a; DROP TABLE Sensible; --", "\"x\" %_", ""}) {
        datei.sql("DELETE FROM " + seite().tabelle);
        lies(name);
        EXPECT_EQ(tabelle(), (Tabellenbild{leereZeile(name)}));
        werte = mit(eigene(), {21, 5, 22, 6, 7, 8}, 9);
        schreibe(name);
        EXPECT_EQ(tabelle(), (Tabellenbild{zeile({name, "21", "22", "5", "6", "7", "8"}, "9")}));
        werte = eigene();
        lies(name);
        EXPECT_EQ(werte, mit(eigene(), {21, 5, 22, 6, 7, 8}, 9)) << name;
    }
}

TEST_P(Sensibel, EinNameMitApostrophEndetOhneWirkung) {
    lege("O''Brien", "1, 2, 3, 4, 5, 6", "7");
    for (const std::string name : {"O'Brien", "'", "x' OR 'a'='a"}) {
        erwarteFehlerOhneWirkung(3075, [&] { lies(name); });
        erwarteFehlerOhneWirkung(3075, [&] { schreibe(name); });
    }
}

TEST_P(Sensibel, TextWoEineZahlStehenMussEndetOhneWirkung) {
    const int spalten = seite().hatWiederholung ? 7 : 6;
    for (int spalte = 0; spalte < spalten; ++spalte)
        for (const std::string text : {"'x'", "''", "' '", "'3x'", "2.5", "x'ff'"}) {
            datei.sql("DELETE FROM " + seite().tabelle);
            std::array<std::string, 7> sql{"1", "2", "3", "4", "5", "6", "7"};
            sql[static_cast<std::size_t>(spalte)] = text;
            lege("S", sql[0] + "," + sql[1] + "," + sql[2] + "," + sql[3] + "," + sql[4] + "," + sql[5],
                 sql[6]);
            SCOPED_TRACE(std::to_string(spalte) + " " + text);
            erwarteFehlerOhneWirkung(13, [&] { lies(); });
        }
}

TEST_P(Sensibel, DasNaechsteSchreibenHeiltTextInDenSpalten) {
    lege("S", "'x', 'x', 'x', 'x', 'x', 'x'", "'x'");
    schreibe();
    const Reglerwerte geschrieben = werte;
    lies();
    EXPECT_EQ(werte, geschrieben);
}

TEST_P(Sensibel, EineGesperrteDateiEndetOhneWirkung) {
    lege("S", "1, 2, 3, 4, 5, 6", "7");
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN IMMEDIATE"); // readers may still pass
    EXPECT_EQ(fehlernummer([&] { schreibe(); }), 3218);
    EXPECT_EQ(fehlernummer([&] { schreibe("neu"); }), 3218);
    EXPECT_EQ(werte, eigene());
    EXPECT_EQ(fehlernummer([&] { lies("neu"); }), 0);
    EXPECT_EQ(werte, mit(eigene(), GRUNDWERTE)) << "a row that can't be made is none that is needed";
    werte = eigene();
    EXPECT_EQ(fehlernummer([&] { lies(); }), 0);
    EXPECT_EQ(werte, mit(eigene(), {1, 3, 2, 4, 5, 6}, 7));
    andere.sql("COMMIT; BEGIN EXCLUSIVE");
    werte = eigene();
    EXPECT_EQ(fehlernummer([&] { lies(); }), 3218);
    EXPECT_EQ(werte, eigene());
    andere.sql("COMMIT");
    EXPECT_EQ(tabelle(), (Tabellenbild{zeile({"S", "1", "2", "3", "4", "5", "6"}, "7")}));
}

TEST_P(Sensibel, EineSchreibgeschuetzteDateiLaesstNurLesenZu) {
    lege("S", "1, 2, 3, 4, 5, 6", "7");
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { lies("neu"); }), 0);
    EXPECT_EQ(werte, mit(eigene(), GRUNDWERTE));
    werte = eigene();
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { schreibe("neu"); }), 3027);
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { schreibe(); }), 3027);
    EXPECT_EQ(werte, eigene());
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { lies(); }), 0);
    EXPECT_EQ(werte, mit(eigene(), {1, 3, 2, 4, 5, 6}, 7));
    // What stands there already is written all the same.
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { schreibe(); }), 3027);
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_P(Sensibel, EineFehlendeDateiOderTabelleIstEinFehler) {
    EXPECT_EQ(fehlernummer([&] { seite().lesenSchreiben(datei.pfad() + ".fehlt", "S", werte, LESEN); }),
              3024);
    datei.sql("DROP TABLE " + seite().tabelle);
    erwarteFehlerOhneWirkung(3078, [&] { lies(); });
    erwarteFehlerOhneWirkung(3078, [&] { schreibe(); });
}

TEST_P(Sensibel, NachJedemAufrufIstDieDateiFrei) {
    lies();
    schreibe();
    lies();
    RoheVerbindung andere(datei.pfad());
    EXPECT_NO_THROW(andere.sql("BEGIN EXCLUSIVE; COMMIT"));
}

TEST(SensibleLesenSchreiben, BeideSeitenZusammenFuellenAlleRegler) {
    const Testdatenbank datei;
    Reglerwerte werte;
    SensibleLesenSchreiben(datei.pfad(), "S", werte, LESEN);
    SensibleRLesenSchreiben(datei.pfad(), "S", werte, LESEN);
    EXPECT_THAT(werte.glaettung, ElementsAre(30, 0, 30, 0, 400, 400, 30, 0, 30, 0, 400, 400));
    werte = eigene();
    SensibleLesenSchreiben(datei.pfad(), "S", werte, SCHREIBEN);
    SensibleRLesenSchreiben(datei.pfad(), "S", werte, SCHREIBEN);
    Reglerwerte gelesen;
    SensibleLesenSchreiben(datei.pfad(), "S", gelesen, LESEN);
    SensibleRLesenSchreiben(datei.pfad(), "S", gelesen, LESEN);
    EXPECT_EQ(gelesen, eigene());
}
