// SPDX-License-Identifier: GPL-3.0-or-later
// Transactions: all or none, through exceptions and a disk that fails at any step.
#include "store/db/Datenbank.h"
#include "store/schema/modLesen.h"
#include "tests/hilfen/StoerVfs.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <functional>
#include <ostream>
#include <set>
#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

void anlegen(Database& datenbank, const std::string& name) {
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    satz.AddNew();
    satz.put_Value("Schemaname", name);
    satz.Update();
}

std::vector<std::string> schemata(const Testdatenbank& datei) {
    std::vector<std::string> namen;
    for (const auto& zeile : datei.zeilen("SELECT Schemaname FROM tblTastatur ORDER BY rowid"))
        namen.push_back(zeile.at(0));
    return namen;
}

class Transaktion : public testing::Test {
protected:
    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
};

} // namespace

TEST_F(Transaktion, AllesWirdErstAmEndeFestgeschrieben) {
    datenbank.inEinerTransaktion([&] {
        anlegen(datenbank, "A");
        anlegen(datenbank, "B");
        EXPECT_THAT(schemata(datei), IsEmpty());
        EXPECT_EQ(datenbank.OpenRecordset("tblTastatur").get_RecordCount(), 2);
    });
    EXPECT_THAT(schemata(datei), ElementsAre("A", "B"));
}

TEST_F(Transaktion, EineAusnahmeNimmtAllesZurueckUndGehtWeiter) {
    EXPECT_EQ(fehlernummer([&] {
                  datenbank.inEinerTransaktion([&] {
                      anlegen(datenbank, "A");
                      anlegen(datenbank, "A");
                  });
              }),
              3022);
    EXPECT_THROW(datenbank.inEinerTransaktion([&] {
        anlegen(datenbank, "B");
        throw std::runtime_error("x");
    }),
                 std::runtime_error);
    EXPECT_THAT(schemata(datei), IsEmpty());
    anlegen(datenbank, "C");
    EXPECT_THAT(schemata(datei), ElementsAre("C"));
}

TEST_F(Transaktion, EinGefangenerFehlerNimmtNurSeinenUpdateZurueck) {
    datenbank.inEinerTransaktion([&] {
        anlegen(datenbank, "A");
        EXPECT_EQ(fehlernummer([&] { anlegen(datenbank, "A"); }), 3022);
        anlegen(datenbank, "B");
    });
    EXPECT_THAT(schemata(datei), ElementsAre("A", "B"));
}

TEST_F(Transaktion, EineInnereIstEinTeilDerAeusseren) {
    datenbank.inEinerTransaktion([&] {
        anlegen(datenbank, "A");
        EXPECT_THROW(datenbank.inEinerTransaktion([&] {
            anlegen(datenbank, "B");
            throw std::runtime_error("x");
        }),
                     std::runtime_error);
        datenbank.inEinerTransaktion([&] { anlegen(datenbank, "C"); });
        EXPECT_THAT(schemata(datei), IsEmpty());
    });
    EXPECT_THAT(schemata(datei), ElementsAre("A", "C"));
    EXPECT_THROW(datenbank.inEinerTransaktion([&] {
        datenbank.inEinerTransaktion([&] { anlegen(datenbank, "D"); });
        throw std::runtime_error("x");
    }),
                 std::runtime_error);
    EXPECT_THAT(schemata(datei), ElementsAre("A", "C"));
}

TEST_F(Transaktion, SchliessenMittendrinVerwirftSie) {
    EXPECT_EQ(fehlernummer([&] {
                  datenbank.inEinerTransaktion([&] {
                      anlegen(datenbank, "A");
                      datenbank.Close();
                  });
              }),
              3420);
    EXPECT_THAT(schemata(datei), IsEmpty());
}

namespace {

/// What the program does to a database in one go. `vorher` lays what it needs.
struct Vorgang {
    std::string name;
    std::string vorher;
    std::function<void(Database&)> tun;
};

void PrintTo(const Vorgang& vorgang, std::ostream* ziel) {
    *ziel << vorgang.name;
}

/// Enough rows that a change touches many pages.
constexpr auto VIELE_ZEILEN = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
                              "INSERT INTO tblTastatur (Schemaname) SELECT 'S' || i FROM n";

std::vector<Vorgang> vorgaenge() {
    const auto jedenAendern = [](Database& datenbank) {
        Recordset satz = datenbank.OpenRecordset("tblTastatur");
        for (; !satz.get_EOF(); satz.MoveNext()) {
            satz.Edit();
            satz.put_Value("btn1", "ein recht langer Text, damit die Seiten wachsen und sich teilen");
            satz.Update();
        }
    };
    return {
        {"Anlegen", "", [](Database& datenbank) { anlegen(datenbank, "Neu"); }},
        {"Loeschen", VIELE_ZEILEN,
         [](Database& datenbank) { datenbank.OpenRecordset("tblTastatur").Delete(); }},
        {"Aendern", VIELE_ZEILEN,
         [](Database& datenbank) {
             Recordset satz = datenbank.OpenRecordset("tblTastatur");
             satz.Edit();
             for (int ordinal = 1; ordinal <= 12; ++ordinal)
                 satz.put_Value(ordinal, std::string(300, 'x'));
             satz.Update();
         }},
        {"Grundzeilen", "",
         [](Database& datenbank) { StickGrundzeilenAnlegen(datenbank, Stickseite::Links, "S"); }},
        {"AllesInEiner", VIELE_ZEILEN,
         [jedenAendern](Database& datenbank) {
             datenbank.inEinerTransaktion([&] { jedenAendern(datenbank); });
         }},
    };
}

class Stoerung : public testing::TestWithParam<Vorgang> {
protected:
    /// Lets the disk fail at every step in turn; gives the error numbers that came.
    std::set<int> anJedemSchritt(StoerVfs::Eingriff eingriff) {
        std::set<int> nummern;
        bool gestoert = true;
        for (int n = 1; gestoert; ++n) {
            Testdatenbank datei;
            datei.sql(GetParam().vorher);
            const auto vorher = datei.inhalt();
            int nummer = 0;
            {
                Database datenbank = OpenDatabase(datei.pfad());
                disk.stoereAb(n, eingriff);
                nummer = fehlernummer([&] { GetParam().tun(datenbank); });
                gestoert = disk.hatGestoert();
            }
            disk.stoereNicht();
            pruefen(datei, vorher, nummer, n);
            if (nummer != 0)
                nummern.insert(nummer);
        }
        return nummern;
    }

    static void pruefen(const Testdatenbank& datei, const std::vector<Tabellenbild>& vorher, int nummer,
                        int n) {
        EXPECT_THAT(datei.zeilen("PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
        EXPECT_EQ(datei.inhalt() == vorher, nummer != 0) << "step " << n << ", error " << nummer;
    }

    StoerVfs disk;
};

} // namespace

TEST_P(Stoerung, EinVollerDatentraegerLaesstAllesWieEsWar) {
    EXPECT_THAT(anJedemSchritt(StoerVfs::Eingriff::Voll), ElementsAre(3026));
}

TEST_P(Stoerung, EinDefekterDatentraegerLaesstAllesWieEsWar) {
    EXPECT_THAT(anJedemSchritt(StoerVfs::Eingriff::Defekt), ElementsAre(3043));
}

INSTANTIATE_TEST_SUITE_P(AnJedemSchritt, Stoerung, testing::ValuesIn(vorgaenge()),
                         [](const auto& fall) { return fall.param.name; });

TEST(Sicherung, EinUpdateDasZurueckkommtLiegtAufDemDatentraeger) {
    StoerVfs disk;
    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
    const int vorher = disk.gesichert();
    anlegen(datenbank, "A");
    // The journal's pages, the journal's head, the database itself: each before the next may begin.
    EXPECT_EQ(disk.gesichert() - vorher, 3);
}

TEST(StoerungInDerTransaktion, WerDenFehlerFaengtSchreibtDanachNichtsHalbes) {
    StoerVfs disk;
    Testdatenbank datei;
    datei.sql(VIELE_ZEILEN);
    const auto vorher = datei.inhalt();
    {
        Database datenbank = OpenDatabase(datei.pfad());
        EXPECT_EQ(fehlernummer([&] {
                      datenbank.inEinerTransaktion([&] {
                          anlegen(datenbank, "A");
                          disk.stoereAb(1, StoerVfs::Eingriff::Voll);
                          EXPECT_EQ(fehlernummer([&] {
                                        for (int i = 0; i < 10000; ++i)
                                            anlegen(datenbank,
                                                    "B" + std::to_string(i) + std::string(3000, 'x'));
                                    }),
                                    3026);
                          disk.stoereNicht();
                          EXPECT_EQ(fehlernummer([&] { anlegen(datenbank, "C"); }), 3034);
                      });
                  }),
                  3034);
    }
    EXPECT_EQ(datei.inhalt(), vorher);
}

class Fortgangsfrage : public testing::Test {
protected:
    Fortgangsfrage() {
        datei.sql("DELETE FROM tblKeyCode; WITH RECURSIVE zahlen(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM "
                  "zahlen WHERE n < 20000) INSERT INTO tblKeyCode SELECT n, n FROM zahlen;");
    }
    void alleLoeschen() {
        datenbank.inEinerTransaktion([&] {
            for (auto satz = datenbank.OpenRecordset("tblKeyCode"); !satz.get_EOF(); satz.MoveNext())
                satz.Delete();
        });
    }

    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
};

TEST_F(Fortgangsfrage, EinNeinVerwirftDieGanzeTransaktion) {
    const auto vorher = datei.inhalt();
    int gefragt = 0;
    datenbank.fortgangFragen([&] { return ++gefragt < 20; });
    EXPECT_EQ(fehlernummer([&] { alleLoeschen(); }), 3059);
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_EQ(gefragt, 20) << "once it said no, nothing is asked any more";

    datenbank.fortgangFragen({});
    alleLoeschen();
    EXPECT_THAT(datei.zeilen("SELECT * FROM tblKeyCode"), testing::IsEmpty());
}

TEST_F(Fortgangsfrage, AuchWerNurLiestWirdGefragt) {
    datenbank.fortgangFragen([] { return false; });
    EXPECT_EQ(fehlernummer([&] { datenbank.OpenRecordset("tblKeyCode"); }), 3059);
    EXPECT_EQ(fehlernummer([&] { datenbank.inEinemLesezug([&] { datenbank.OpenRecordset("tblKeyCode"); }); }),
              3059);
}

TEST_F(Fortgangsfrage, EinJaAendertNichts) {
    int gefragt = 0;
    datenbank.fortgangFragen([&] { return ++gefragt > 0; });
    alleLoeschen();
    EXPECT_THAT(datei.zeilen("SELECT * FROM tblKeyCode"), testing::IsEmpty());
    EXPECT_GT(gefragt, 20);
}
