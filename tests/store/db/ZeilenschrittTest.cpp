// SPDX-License-Identifier: GPL-3.0-or-later
// Acts taken down as steps: taken back and made again row by row, or not at all.
#include "store/db/Datenbank.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <random>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr int GEAENDERT = 3197;

class Schritt : public testing::Test {
protected:
    Schritt() {
        datei.sql("INSERT INTO tblStickAktion VALUES ('S',0,1,0,0,0,'3'), ('S',0,2,0,0,0,'4'), "
                  "('fremd',0,1,0,0,0,'3'), ('S',1,3,0,0,0,'2,0,65,0,0')");
    }

    Recordset zeilen(const std::string& bedingung = "Schemaname)= 'S") {
        return datenbank.OpenRecordset("SELECT * FROM tblStickAktion WHERE (tblStickAktion." + bedingung +
                                       "';");
    }
    /// Gives the rows of "S" this action.
    void aktionSetzen(const std::string& aktion) {
        for (auto satz = zeilen(); !satz.get_EOF(); satz.MoveNext()) {
            satz.Edit();
            satz.put_Value("Aktion", aktion);
            satz.Update();
        }
    }
    void allesLoeschen() {
        for (auto satz = zeilen(); !satz.get_EOF(); satz.MoveNext())
            satz.Delete();
    }
    void anlegen(const std::string& name, std::int64_t links) {
        auto satz = datenbank.OpenRecordset("tblStickAktion");
        satz.AddNew();
        satz.put_Value("Schemaname", name);
        satz.put_Value("Links", links);
        satz.Update();
    }
    template <class Arbeit> Zeilenschritt schritt(Arbeit&& arbeit) {
        Zeilenschritt ergebnis;
        datenbank.alsSchritt(&ergebnis, arbeit);
        return ergebnis;
    }
    /// All with places and kinds of the values.
    Tabellenbild genau() const {
        return datei.zeilen("SELECT rowid, quote(Schemaname), quote(Umschalt), quote(Links), quote(Rechts), "
                            "quote(Oben), quote(Unten), quote(Aktion), typeof(Aktion), hex(Aktion) "
                            "FROM tblStickAktion ORDER BY rowid");
    }
    Tabellenbild aktionen() const {
        return datei.zeilen("SELECT Schemaname, Links, Aktion FROM tblStickAktion ORDER BY rowid");
    }

    /// Takes the step back and makes it again; expects the whole file to be what it was each time.
    void erwarteHinUndZurueck(Zeilenschritt& schritt, const Tabellenbild& vorher) {
        const auto nachher = genau();
        EXPECT_NE(nachher, vorher);
        EXPECT_THAT(schritt.zuruecknehmen(datenbank), IsEmpty());
        EXPECT_EQ(genau(), vorher);
        EXPECT_THAT(schritt.wiederholen(datenbank), IsEmpty());
        EXPECT_EQ(genau(), nachher);
    }
    /// Expects that others are in the way of taking the step back, and that nothing is written.
    void erwarteKonflikt(Zeilenschritt& schritt) {
        const auto vorher = datei.inhalt();
        EXPECT_EQ(fehlernummer([&] { schritt.zuruecknehmen(datenbank); }), GEAENDERT);
        EXPECT_EQ(datei.inhalt(), vorher);
    }

    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
};

} // namespace

TEST_F(Schritt, NimmtGeaendertesZurueckUndMachtEsWieder) {
    const auto vorher = genau();
    auto geaendert = schritt([&] { aktionSetzen("1,2"); });
    EXPECT_FALSE(geaendert.leer());
    erwarteHinUndZurueck(geaendert, vorher);
}

TEST_F(Schritt, NimmtGeloeschtesUndNeuesZurueck) {
    const auto vorher = genau();
    auto geloescht = schritt([&] {
        allesLoeschen();
        anlegen("S", 9);
        anlegen("T", 8);
    });
    erwarteHinUndZurueck(geloescht, vorher);
}

TEST_F(Schritt, IstLeerWoAmEndeAllesIstWieZuvor) {
    EXPECT_TRUE(Zeilenschritt().leer());
    auto nichts = schritt([&] {
        aktionSetzen("1,2");
        datei.zeilen("SELECT 1");
        for (auto satz = zeilen(); !satz.get_EOF(); satz.MoveNext()) {
            satz.Edit();
            satz.put_Value("Aktion", alsZahl(satz.get_Value("Links")) == 1   ? "3"
                                     : alsZahl(satz.get_Value("Links")) == 2 ? "4"
                                                                             : "2,0,65,0,0");
            satz.Update();
        }
    });
    EXPECT_TRUE(nichts.leer());
}

TEST_F(Schritt, EinZurueckgenommenerTeilGehoertNichtDazu) {
    const auto vorher = genau();
    auto halb = schritt([&] {
        aktionSetzen("1,2");
        EXPECT_THROW(datenbank.inEinerTransaktion([&] {
            allesLoeschen();
            throw std::runtime_error("x");
        }),
                     std::runtime_error);
    });
    EXPECT_THAT(aktionen(), ElementsAre(ElementsAre("S", "1", "1,2"), ElementsAre("S", "2", "1,2"),
                                        ElementsAre("fremd", "1", "3"), ElementsAre("S", "3", "1,2")));
    erwarteHinUndZurueck(halb, vorher);
}

TEST_F(Schritt, EinFehlerLaesstDenSchrittWieErWar) {
    auto alter = schritt([&] { aktionSetzen("1,2"); });
    const auto bytes = alter.bytes();
    EXPECT_THROW(datenbank.alsSchritt(&alter,
                                      [&] {
                                          allesLoeschen();
                                          throw std::runtime_error("x");
                                      }),
                 std::runtime_error);
    EXPECT_EQ(alter.bytes(), bytes);
    auto naechster = schritt([&] { aktionSetzen("1,0"); }); // and the next one begins
    EXPECT_FALSE(naechster.leer());
}

TEST_F(Schritt, OhneSchrittIstEsEineTransaktion) {
    EXPECT_THROW(datenbank.alsSchritt(nullptr,
                                      [&] {
                                          allesLoeschen();
                                          throw std::runtime_error("x");
                                      }),
                 std::runtime_error);
    EXPECT_THAT(aktionen(), SizeIs(4));
    datenbank.alsSchritt(nullptr, [&] { allesLoeschen(); });
    EXPECT_THAT(aktionen(), SizeIs(1));
}

TEST_F(Schritt, InEinemSchrittBeginntKeinWeiterer) {
    const auto vorher = genau();
    auto aeusserer = schritt([&] {
        aktionSetzen("1,2");
        Zeilenschritt innerer;
        EXPECT_EQ(fehlernummer([&] { datenbank.alsSchritt(&innerer, [&] { allesLoeschen(); }); }), 3034);
        EXPECT_TRUE(innerer.leer());
    });
    erwarteHinUndZurueck(aeusserer, vorher);
}

// --- values ---

TEST_F(Schritt, WerteKommenInIhrerArtUndByteFuerByteWieder) {
    datei.sql(
        "DELETE FROM tblStickAktion; CREATE TABLE fremd (a, b TEXT, c INTEGER); "
        "INSERT INTO fremd VALUES (1.5, 'A' || char(0) || 'B', 9223372036854775807), (x'00ff41', NULL, 0), "
        "('1.50', '', -1), (NULL, x'', 2.5), ('ä', '''', x'80')");
    const auto alles = [&] {
        return datei.zeilen("SELECT rowid, quote(a), typeof(a), hex(b), typeof(b), quote(c), typeof(c), "
                            "length(CAST(b AS BLOB)) FROM fremd ORDER BY rowid");
    };
    const auto vorher = alles();
    auto geloescht = schritt([&] {
        for (auto satz = datenbank.OpenRecordset("fremd"); !satz.get_EOF(); satz.MoveNext())
            satz.Delete();
    });
    EXPECT_THAT(alles(), IsEmpty());
    geloescht.zuruecknehmen(datenbank);
    EXPECT_EQ(alles(), vorher);
    auto geaendert = schritt([&] {
        for (auto satz = datenbank.OpenRecordset("fremd"); !satz.get_EOF(); satz.MoveNext()) {
            satz.Edit();
            satz.put_Value("a", std::string("x"));
            satz.put_Value("b", std::string("y"));
            satz.put_Value("c", std::int64_t{7});
            satz.Update();
        }
    });
    geaendert.zuruecknehmen(datenbank);
    EXPECT_EQ(alles(), vorher);
}

TEST_F(Schritt, SpaltenVonAnderenKommenMit) {
    datei.sql(
        "ALTER TABLE tblStickAktion ADD COLUMN Notiz TEXT; UPDATE tblStickAktion SET Notiz = 'n' || Links");
    auto neue = OpenDatabase(datei.pfad());
    Zeilenschritt geloescht;
    neue.alsSchritt(&geloescht, [&] {
        for (auto satz = neue.OpenRecordset("tblStickAktion"); !satz.get_EOF(); satz.MoveNext())
            satz.Delete();
    });
    geloescht.zuruecknehmen(neue);
    EXPECT_THAT(datei.zeilen("SELECT Notiz FROM tblStickAktion"),
                ElementsAre(ElementsAre("n1"), ElementsAre("n2"), ElementsAre("n1"), ElementsAre("n3")));
}

// --- others ---

TEST_F(Schritt, WasAndereGeaendertHabenIstEinKonflikt) {
    auto geaendert = schritt([&] { aktionSetzen("1,2"); });
    datei.sql("UPDATE tblStickAktion SET Rechts = 1 WHERE Links = 3");
    erwarteKonflikt(geaendert);
    datei.sql("UPDATE tblStickAktion SET Rechts = 0 WHERE Links = 3");
    geaendert.zuruecknehmen(datenbank); // as it was again
    datei.sql("UPDATE tblStickAktion SET Aktion = 'x' WHERE Links = 2");
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummer([&] { geaendert.wiederholen(datenbank); }), GEAENDERT);
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(Schritt, WasAndereGeloeschtHabenIstEinKonflikt) {
    auto geaendert = schritt([&] { aktionSetzen("1,2"); });
    datei.sql("DELETE FROM tblStickAktion WHERE Links = 3");
    erwarteKonflikt(geaendert);
}

TEST_F(Schritt, EinNeuerTextMitDemselbenInhaltInAndererArtIstEinKonflikt) {
    auto geaendert = schritt([&] { aktionSetzen("1,2"); });
    datei.sql("UPDATE tblStickAktion SET Aktion = CAST(Aktion AS BLOB) WHERE Links = 3");
    erwarteKonflikt(geaendert);
}

TEST_F(Schritt, EineNeueSpalteIstEinKonflikt) {
    auto geaendert = schritt([&] { aktionSetzen("1,2"); });
    datei.sql("ALTER TABLE tblStickAktion ADD COLUMN Notiz TEXT");
    datenbank = OpenDatabase(datei.pfad());
    erwarteKonflikt(geaendert);
    datei.sql("DROP TABLE tblStickAktion");
    datenbank = OpenDatabase(datei.pfad());
    erwarteKonflikt(geaendert);
}

TEST_F(Schritt, EinVergebenerSchluesselIstEinKonflikt) {
    datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('A'), ('B')");
    auto geloescht = schritt([&] {
        auto satz = datenbank.OpenRecordset("tblTastatur");
        satz.Delete();
        allesLoeschen();
    });
    datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('A')");
    erwarteKonflikt(geloescht);
}

TEST_F(Schritt, ZeilenDieErNichtKenntGehenIhnNichtsAn) {
    auto geaendert = schritt([&] { aktionSetzen("1,2"); });
    datei.sql("UPDATE tblStickAktion SET Aktion = 'fremd' WHERE Schemaname = 'fremd'; "
              "INSERT INTO tblStickAktion (Schemaname, Links) VALUES ('fremd', 5); "
              "DELETE FROM tblStick");
    geaendert.zuruecknehmen(datenbank);
    EXPECT_THAT(aktionen(),
                ElementsAre(ElementsAre("S", "1", "3"), ElementsAre("S", "2", "4"),
                            ElementsAre("fremd", "1", "fremd"), ElementsAre("S", "3", "2,0,65,0,0"),
                            ElementsAre("fremd", "5", "NULL")));
}

TEST_F(Schritt, BezeugtesMussBleibenUndGehoertNichtZumGeaenderten) {
    const auto bezeugen = [&](const std::string& aktion) {
        return schritt([&] {
            auto satz = zeilen("Schemaname)= 'fremd");
            satz.bezeugen();
            if (!aktion.empty())
                aktionSetzen(aktion);
        });
    };
    EXPECT_TRUE(bezeugen("").leer());
    auto geaendert = bezeugen("1,2");
    EXPECT_FALSE(geaendert.leer());
    datei.sql("UPDATE tblStickAktion SET Unten = 1 WHERE Schemaname = 'fremd'");
    erwarteKonflikt(geaendert);
    datei.sql("UPDATE tblStickAktion SET Unten = 0 WHERE Schemaname = 'fremd'");
    geaendert.zuruecknehmen(datenbank);
    zeilen().bezeugen(); // without a step
}

// --- places ---

TEST_F(Schritt, EinVergebenerOrtGibtEinenNeuenUndDieFolgeBleibt) {
    auto geloescht = schritt([&] {
        allesLoeschen();
        auto satz = zeilen("Schemaname)= 'fremd");
        satz.Delete();
    });
    datei.sql(
        "INSERT INTO tblStickAktion (Schemaname, Links) VALUES ('neu', 7)"); // the place of the first one
    const auto umzuege = geloescht.zuruecknehmen(datenbank, 20);
    ASSERT_THAT(umzuege, SizeIs(4));
    EXPECT_EQ(umzuege.front(), (Zeilenumzug{Dateiteil{}, "tblStickAktion", 1, 21}));
    const Tabellenbild wieder{{"neu", "7", "NULL"},
                              {"S", "1", "3"},
                              {"S", "2", "4"},
                              {"fremd", "1", "3"},
                              {"S", "3", "2,0,65,0,0"}};
    EXPECT_EQ(aktionen(), wieder);
    geloescht.wiederholen(datenbank); // finds them there
    EXPECT_THAT(aktionen(), ElementsAre(ElementsAre("neu", "7", "NULL")));
    EXPECT_THAT(geloescht.zuruecknehmen(datenbank), IsEmpty());
    EXPECT_EQ(aktionen(), wieder);
}

TEST_F(Schritt, EinAndererSchrittErfaehrtVomUmzug) {
    auto neu = schritt([&] { anlegen("S", 9); });
    auto weg = schritt([&] { allesLoeschen(); });
    datei.sql("INSERT INTO tblStickAktion (Schemaname, Links) VALUES ('neu', 7)"); // the place of the new one
    EXPECT_GE(neu.hoechsteZeile(), 5);
    neu.umziehen(weg.zuruecknehmen(datenbank));
    neu.zuruecknehmen(datenbank);
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM tblStickAktion WHERE Links = 9"), (Tabellenbild{{"0"}}));
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM tblStickAktion"), (Tabellenbild{{"5"}}));
}

TEST_F(Schritt, EinenOrtUeberDemHoechstenGibtEsNicht) {
    datei.sql("UPDATE tblStickAktion SET rowid = 9223372036854775806 WHERE Links = 3");
    auto weg = schritt([&] { allesLoeschen(); });
    datei.sql("INSERT INTO tblStickAktion (rowid, Schemaname) VALUES (9223372036854775806, 'neu')");
    erwarteKonflikt(weg);
}

// --- names ---

TEST_F(Schritt, GehtMitEinemNeuenNamenMit) {
    const auto vorher = genau();
    auto geaendert = schritt([&] {
        aktionSetzen("S");
        auto satz = zeilen();
        satz.Delete();
        anlegen("S", 9);
    });
    datei.sql("UPDATE tblStickAktion SET Schemaname = 'N' WHERE Schemaname = 'S'");
    erwarteKonflikt(geaendert);
    geaendert.ersetzen("schemaname", "S", "N");
    geaendert.zuruecknehmen(datenbank);
    datei.sql("UPDATE tblStickAktion SET Schemaname = 'S' WHERE Schemaname = 'N'");
    EXPECT_EQ(genau(), vorher); // an action that is called like the Schema stays
}

// --- joined ---

TEST_F(Schritt, ZweiWerdenEiner) {
    const auto vorher = genau();
    auto erster = schritt([&] { aktionSetzen("1,2"); });
    const auto zweiter = schritt([&] {
        aktionSetzen("1,0");
        auto satz = zeilen();
        satz.Delete();
        anlegen("S", 9);
    });
    const auto dritter = schritt([&] { aktionSetzen("1,1"); });
    EXPECT_FALSE(erster.anfuegen(dritter)); // one between them is left out
    EXPECT_TRUE(erster.anfuegen(zweiter));
    EXPECT_TRUE(erster.anfuegen(dritter));
    erwarteHinUndZurueck(erster, vorher);
}

TEST_F(Schritt, EinerAnAndererTabelleWirdAngefuegt) {
    auto erster = schritt([&] { aktionSetzen("1,2"); });
    const auto vorher = datei.inhalt();
    const auto zweiter = schritt([&] {
        auto satz = datenbank.OpenRecordset("tblStickAktionR");
        satz.AddNew();
        satz.put_Value("Schemaname", std::string("S"));
        satz.Update();
    });
    EXPECT_NE(datei.inhalt(), vorher);
    EXPECT_TRUE(erster.anfuegen(zweiter));
    erster.zuruecknehmen(datenbank);
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM tblStickAktionR"), (Tabellenbild{{"0"}}));
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM tblStickAktion WHERE Aktion = '1,2'"),
              (Tabellenbild{{"0"}}));
}

// --- the file ---

TEST_F(Schritt, EineGesperrteDateiBleibtUndDerSchrittAuch) {
    const auto vorher = genau();
    auto geaendert = schritt([&] { aktionSetzen("1,2"); });
    {
        RoheVerbindung andere(datei.pfad());
        andere.sql("BEGIN IMMEDIATE");
        EXPECT_EQ(fehlernummer([&] { geaendert.zuruecknehmen(datenbank); }), 3218);
        andere.sql("ROLLBACK");
    }
    erwarteHinUndZurueck(geaendert, vorher);
}

TEST_F(Schritt, EineDateiNurZumLesenBleibt) {
    auto geaendert = schritt([&] { aktionSetzen("1,2"); });
    datenbank.Close();
    EXPECT_EQ(fehlernummerNurLesend(datei,
                                    [&] {
                                        auto nurLesend = OpenDatabase(datei.pfad());
                                        geaendert.zuruecknehmen(nurLesend);
                                    }),
              3027);
}

TEST_F(Schritt, ZweiDateienSindEinSchritt) {
    const Testdatenbank andere;
    auto daneben = datenbank.danebenOeffnen(andere.pfad());
    const auto hier = datei.inhalt();
    const auto dort = andere.inhalt();
    Zeilenschritt beide;
    daneben.alsSchritt(&beide, [&] {
        allesLoeschen();
        auto satz = daneben.OpenRecordset("tblStickAktion");
        satz.AddNew();
        satz.put_Value("Schemaname", std::string("D"));
        satz.Update();
    });
    EXPECT_NE(datei.inhalt(), hier);
    EXPECT_NE(andere.inhalt(), dort);
    datenbank.Close();
    auto wieder = OpenDatabase(datei.pfad());
    const auto danebenWieder = wieder.danebenOeffnen(andere.pfad());
    beide.zuruecknehmen(wieder);
    EXPECT_EQ(datei.inhalt(), hier);
    EXPECT_EQ(andere.inhalt(), dort);
}

// --- at random ---

TEST_F(Schritt, ZufaelligeTatenGehenEinzelnZurueckUndWieder) {
    std::mt19937 zufall(4711);
    std::vector<Tabellenbild> staende{genau()};
    std::vector<Zeilenschritt> schritte;
    for (int i = 0; i < 40; ++i) {
        schritte.push_back(schritt([&] {
            for (int tat = static_cast<int>(zufall() % 4); tat >= 0; --tat) {
                auto satz = datenbank.OpenRecordset("tblStickAktion");
                for (auto vor = zufall() % (static_cast<unsigned>(satz.get_RecordCount()) + 1);
                     vor > 0 && !satz.get_EOF(); --vor)
                    satz.MoveNext();
                if (satz.get_EOF() || zufall() % 3 == 0) {
                    anlegen("S", zufall() % 50);
                } else if (zufall() % 2) {
                    satz.Delete();
                } else {
                    satz.Edit();
                    satz.put_Value("Aktion", std::to_string(zufall() % 5));
                    satz.Update();
                }
            }
        }));
        staende.push_back(genau());
    }
    for (std::size_t i = schritte.size(); i-- > 0;) {
        ASSERT_THAT(schritte[i].zuruecknehmen(datenbank), IsEmpty());
        ASSERT_EQ(genau(), staende[i]) << i;
    }
    for (std::size_t i = 0; i < schritte.size(); ++i) {
        ASSERT_THAT(schritte[i].wiederholen(datenbank), IsEmpty());
        ASSERT_EQ(genau(), staende[i + 1]) << i;
    }
}
