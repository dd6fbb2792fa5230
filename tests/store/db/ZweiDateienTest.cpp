// SPDX-License-Identifier: GPL-3.0-or-later
// Two files on one connection: a transaction is one of both, through exceptions, errors of the disk and
// death.
#include "store/db/Datenbank.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/StoerVfs.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <array>
#include <set>
#include <stdexcept>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

/// Enough rows that a change touches many pages.
constexpr auto VIELE_ZEILEN = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 40) "
                              "INSERT INTO tblTastatur (Schemaname, btn1) SELECT 'S' || i, 'alt' FROM n";

void alleAendern(Database& datenbank, const std::string& text) {
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    for (; !satz.get_EOF(); satz.MoveNext()) {
        satz.Edit();
        satz.put_Value("btn1", text);
        satz.Update();
    }
}

/// The texts of btn1 that a file holds.
std::set<std::string> texte(const Testdatenbank& datei) {
    std::set<std::string> gefunden;
    for (const auto& zeile : datei.zeilen("SELECT DISTINCT btn1 FROM tblTastatur"))
        gefunden.insert(zeile.at(0));
    return gefunden;
}

class ZweiDateien : public testing::Test {
protected:
    ZweiDateien() {
        eine.sql(VIELE_ZEILEN);
        andere.sql(VIELE_ZEILEN);
    }
    void beideAendern() {
        Database erste = OpenDatabase(eine.pfad());
        Database zweite = erste.danebenOeffnen(andere.pfad());
        erste.inEinerTransaktion([&] {
            alleAendern(erste, "neu");
            alleAendern(zweite, "neu");
        });
    }
    /// Number and text of the error of opening `pfad` beside the first file.
    std::pair<int, std::string> fehlerDaneben(const std::string& pfad) {
        Database erste = OpenDatabase(eine.pfad());
        try {
            erste.danebenOeffnen(pfad);
        } catch (const LaufzeitFehler& fehler) {
            return {fehler.zahl(), fehler.what()};
        }
        return {0, ""};
    }
    void erwarteAlt(const Testdatenbank& datei) {
        EXPECT_THAT(datei.zeilen("PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
        EXPECT_THAT(texte(datei), ElementsAre("alt"));
    }

    Testdatenbank eine;
    Testdatenbank andere;
};

} // namespace

TEST_F(ZweiDateien, JedeMengeLiestUndSchreibtInIhrerDatei) {
    andere.sql("UPDATE tblTastatur SET btn1 = 'andere'");
    Database erste = OpenDatabase(eine.pfad());
    Database zweite = erste.danebenOeffnen(andere.pfad());
    EXPECT_FALSE(erste.istDieselbeDatei(zweite));
    EXPECT_EQ(erste.OpenRecordset("tblTastatur").get_Value("btn1"), Wert("alt"));
    EXPECT_EQ(zweite.OpenRecordset("tbltastatur").get_Value("btn1"), Wert("andere"));
    alleAendern(zweite, "neu");
    EXPECT_THAT(texte(eine), ElementsAre("alt"));
    EXPECT_THAT(texte(andere), ElementsAre("neu"));
}

TEST_F(ZweiDateien, EineTransaktionGiltFuerBeide) {
    Database erste = OpenDatabase(eine.pfad());
    Database zweite = erste.danebenOeffnen(andere.pfad());
    zweite.inEinerTransaktion([&] {
        alleAendern(erste, "neu");
        alleAendern(zweite, "neu");
        EXPECT_THAT(texte(eine), ElementsAre("alt"));
        EXPECT_THAT(texte(andere), ElementsAre("alt"));
    });
    EXPECT_THAT(texte(eine), ElementsAre("neu"));
    EXPECT_THAT(texte(andere), ElementsAre("neu"));
    EXPECT_THROW(erste.inEinerTransaktion([&] {
        alleAendern(erste, "halb");
        alleAendern(zweite, "halb");
        throw std::runtime_error("x");
    }),
                 std::runtime_error);
    EXPECT_THAT(texte(eine), ElementsAre("neu"));
    EXPECT_THAT(texte(andere), ElementsAre("neu"));
}

TEST_F(ZweiDateien, EineZuSchliessenSchliesstBeide) {
    Database erste = OpenDatabase(eine.pfad());
    Database zweite = erste.danebenOeffnen(andere.pfad());
    Recordset satz = zweite.OpenRecordset("tblTastatur");
    erste.Close();
    EXPECT_EQ(fehlernummer([&] { satz.get_Value(0); }), 3420);
    EXPECT_EQ(fehlernummer([&] { zweite.OpenRecordset("tblTastatur"); }), 3420);
}

TEST_F(ZweiDateien, DerselbeOrtAufAnderemWegIstDieselbeDatei) {
    const fs::path verweis = andere.ordner() / "Verweis.twk";
    const fs::path zweiterName = eine.ordner() / "Zweiter Name.twk";
    fs::create_symlink(eine.pfad(), verweis);
    fs::create_hard_link(eine.pfad(), zweiterName);
    const std::string umweg =
        (eine.ordner() / "." / ".." / eine.ordner().filename() / "Belegung.twk").string();
    for (const std::string& pfad : {eine.pfad(), umweg, verweis.string(), zweiterName.string()}) {
        Database erste = OpenDatabase(eine.pfad());
        Database zweite = erste.danebenOeffnen(pfad);
        EXPECT_TRUE(erste.istDieselbeDatei(zweite)) << pfad;
        erste.inEinerTransaktion([&] {
            alleAendern(erste, "eins");
            alleAendern(zweite, pfad);
        });
        EXPECT_THAT(texte(eine), ElementsAre(pfad));
    }
}

TEST_F(ZweiDateien, DerFehlerEinerZweitenNenntSie) {
    const std::string fehlt = (andere.ordner() / "fehlt.twk").string();
    EXPECT_THAT(fehlerDaneben(fehlt), testing::Pair(3024, HasSubstr(fehlt)));
    EXPECT_FALSE(fs::exists(fehlt));
    EXPECT_EQ(fehlerDaneben("").first, 3024);
    EXPECT_EQ(fehlerDaneben(":memory:").first, 3024);

    const std::string text = (andere.ordner() / "Text.twk").string();
    dateiSchreiben(text, std::string(5000, 'x'));
    EXPECT_THAT(fehlerDaneben(text), testing::Pair(3343, HasSubstr(text)));

    const std::string fremd = (andere.ordner() / "UTF-16 %.twk").string();
    dateiSchreiben(fremd, std::string(512, '\0'));
    fs::resize_file(fremd, 0);
    RoheVerbindung(fremd).sql("PRAGMA encoding = 'UTF-16'; CREATE TABLE tblTastatur (Schemaname TEXT)");
    EXPECT_THAT(fehlerDaneben(fremd), testing::Pair(3343, HasSubstr(fremd)));
    EXPECT_THAT(fehlerDaneben(fremd), testing::Pair(3343, HasSubstr("Zeichenkodierung")));

    RoheVerbindung sperrend(andere.pfad());
    sperrend.sql("BEGIN EXCLUSIVE");
    const auto gesperrt = fehlerDaneben(andere.pfad());
    EXPECT_THAT(gesperrt, testing::Pair(3218, HasSubstr(andere.pfad())));
    EXPECT_THAT(gesperrt.second, Not(HasSubstr(eine.pfad())));
}

TEST_F(ZweiDateien, EineTabelleFehltInDerDateiDieSieNichtHat) {
    andere.sql("DROP TABLE tblTastatur");
    Database erste = OpenDatabase(eine.pfad());
    Database zweite = erste.danebenOeffnen(andere.pfad());
    EXPECT_EQ(erste.OpenRecordset("tblTastatur").get_RecordCount(), 40);
    try {
        zweite.OpenRecordset("tblTastatur");
        FAIL();
    } catch (const LaufzeitFehler& fehler) {
        EXPECT_EQ(fehler.zahl(), 3078);
        EXPECT_THAT(fehler.what(), HasSubstr(andere.pfad()));
    }
}

TEST_F(ZweiDateien, JedeDateiHatIhreEigenenSpalten) {
    andere.sql("ALTER TABLE tblTastatur ADD COLUMN Eigene TEXT DEFAULT 'da'");
    Database erste = OpenDatabase(eine.pfad());
    Database zweite = erste.danebenOeffnen(andere.pfad());
    EXPECT_EQ(fehlernummer([&] { erste.OpenRecordset("tblTastatur").get_Value("Eigene"); }), 3265);
    EXPECT_EQ(zweite.OpenRecordset("tblTastatur").get_Value("Eigene"), Wert("da"));
}

TEST_F(ZweiDateien, SperrtEinAndererDieZweiteScheitertAllesUndBeideWerdenGenannt) {
    Database erste = OpenDatabase(eine.pfad());
    Database zweite = erste.danebenOeffnen(andere.pfad());
    RoheVerbindung sperrend(andere.pfad());
    sperrend.sql("BEGIN IMMEDIATE");
    try {
        erste.inEinerTransaktion([&] { alleAendern(erste, "neu"); });
        FAIL();
    } catch (const LaufzeitFehler& fehler) {
        EXPECT_EQ(fehler.zahl(), 3218);
        EXPECT_THAT(fehler.what(), HasSubstr(eine.pfad() + "“ oder „" + andere.pfad()));
    }
    sperrend.sql("COMMIT");
    erwarteAlt(eine);
}

TEST_F(ZweiDateien, EinLeserDerZweitenHaeltBeideAuf) {
    Database erste = OpenDatabase(eine.pfad());
    Database zweite = erste.danebenOeffnen(andere.pfad());
    RoheVerbindung lesend(andere.pfad());
    lesend.sql("BEGIN; SELECT * FROM tblTastatur");
    EXPECT_EQ(fehlernummer([&] {
                  erste.inEinerTransaktion([&] {
                      alleAendern(erste, "neu");
                      alleAendern(zweite, "neu");
                  });
              }),
              3218);
    lesend.sql("COMMIT");
    erwarteAlt(eine);
    erwarteAlt(andere);
}

TEST_F(ZweiDateien, EineSchreibgeschuetzteZweiteLaesstBeideWieSieSind) {
    std::string text;
    {
        const Rechte rechte(andere, 0555, 0444);
        const Rechte offen(eine, 0777, 0666);
        const AlsNiemand niemand;
        try {
            beideAendern();
        } catch (const LaufzeitFehler& fehler) {
            EXPECT_EQ(fehler.zahl(), 3027);
            text = fehler.what();
        }
    }
    EXPECT_THAT(text, HasSubstr(andere.pfad()));
    EXPECT_THAT(text, Not(HasSubstr(eine.pfad())));
    erwarteAlt(eine);
    erwarteAlt(andere);
}

TEST_F(ZweiDateien, EinVorauslaufendesProtokollWeichtDemDasBeideVerbindet) {
    for (const auto* datei : {&eine, &andere})
        datei->sql("PRAGMA journal_mode = WAL");
    beideAendern();
    for (const auto* datei : {&eine, &andere}) {
        EXPECT_THAT(datei->zeilen("PRAGMA journal_mode"), ElementsAre(ElementsAre("delete")));
        EXPECT_THAT(texte(*datei), ElementsAre("neu"));
    }
    andere.sql("PRAGMA journal_mode = WAL");
    const RoheVerbindung offen(andere.pfad());
    RoheVerbindung leser(andere.pfad());
    leser.zeilen("SELECT * FROM tblTastatur");
    EXPECT_EQ(fehlernummer([&] { beideAendern(); }), 3218);
}

TEST_F(ZweiDateien, EineVerbindungDieOffenBleibtHaeltSieNichtAuf) {
    eine.sql("PRAGMA journal_mode = WAL");
    Database bleibt = OpenDatabase(eine.pfad());
    bleibt.ohneVorlauf();
    EXPECT_GT(bleibt.OpenRecordset("tblTastatur").get_RecordCount(), 0);
    EXPECT_EQ(fehlernummer([&] { beideAendern(); }), 0);
    EXPECT_THAT(texte(eine), ElementsAre("neu"));
    EXPECT_THAT(texte(andere), ElementsAre("neu"));
}

TEST_F(ZweiDateien, WasAndereMitVorlaufOffenHabenBehaeltIhn) {
    eine.sql("PRAGMA journal_mode = WAL");
    RoheVerbindung leser(eine.pfad());
    leser.zeilen("SELECT * FROM tblTastatur");
    Database bleibt = OpenDatabase(eine.pfad());
    bleibt.ohneVorlauf();
    EXPECT_THAT(leser.zeilen("PRAGMA journal_mode"), ElementsAre(ElementsAre("wal")));
    EXPECT_GT(bleibt.OpenRecordset("tblTastatur").get_RecordCount(), 0);
}

namespace {

struct Ausgang {
    std::set<std::string> eine;
    std::set<std::string> andere;
    bool operator==(const Ausgang&) const = default;
};
const Ausgang ALT{{"alt"}, {"alt"}};
const Ausgang NEU{{"neu"}, {"neu"}};

void beideAendern(Testdatenbank& eine, Testdatenbank& andere, StoerVfs& disk, int n,
                  StoerVfs::Eingriff eingriff) {
    Database erste = OpenDatabase(eine.pfad());
    Database zweite = erste.danebenOeffnen(andere.pfad());
    disk.stoereAb(n, eingriff);
    erste.inEinerTransaktion([&] {
        alleAendern(erste, "neu");
        alleAendern(zweite, "neu");
    });
}

/// What the two hold after all; the one that is named first is opened first, so that it has to recover by
/// itself.
Ausgang ausgang(const Testdatenbank& eine, const Testdatenbank& andere, bool andereZuerst) {
    Ausgang stand;
    if (andereZuerst)
        stand.andere = texte(andere);
    stand.eine = texte(eine);
    stand.andere = texte(andere);
    for (const auto* datei : {&eine, &andere})
        EXPECT_THAT(datei->zeilen("PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
    return stand;
}

} // namespace

TEST(ZweiDateienAbsturz, AnJedemSchrittSindBeideVorherOderBeideNachher) {
    StoerVfs disk;
    for (const bool andereZuerst : {false, true}) {
        int alte = 0;
        int neue = 0;
        bool getoetet = true;
        for (int n = 1; getoetet; ++n) {
            Testdatenbank eine;
            Testdatenbank andere;
            eine.sql(VIELE_ZEILEN);
            andere.sql(VIELE_ZEILEN);
            getoetet = wurdeGetoetet(
                imKind([&] { beideAendern(eine, andere, disk, n, StoerVfs::Eingriff::Toeten); }));
            const auto stand = ausgang(eine, andere, andereZuerst);
            EXPECT_TRUE(stand == ALT || stand == NEU) << "step " << n;
            EXPECT_TRUE(neue == 0 || stand == NEU) << "step " << n;
            ++(stand == ALT ? alte : neue);
        }
        EXPECT_GT(alte, 10);
        EXPECT_GT(neue, 2); // it is done before the two journals are gone
    }
}

TEST(ZweiDateienAbsturz, BeideErholenSichAuchWennSieNebeneinanderGeoeffnetWerden) {
    StoerVfs disk;
    int alte = 0;
    bool getoetet = true;
    for (int n = 1; getoetet; ++n) {
        Testdatenbank eine;
        Testdatenbank andere;
        eine.sql(VIELE_ZEILEN);
        andere.sql(VIELE_ZEILEN);
        getoetet =
            wurdeGetoetet(imKind([&] { beideAendern(eine, andere, disk, n, StoerVfs::Eingriff::Toeten); }));
        const bool andereZuerst = n % 2 == 0;
        Database erste = OpenDatabase((andereZuerst ? andere : eine).pfad());
        Database zweite = erste.danebenOeffnen((andereZuerst ? eine : andere).pfad());
        const Wert text = erste.OpenRecordset("tblTastatur").get_Value("btn1");
        EXPECT_EQ(zweite.OpenRecordset("tblTastatur").get_Value("btn1"), text) << "step " << n;
        alte += text == Wert("alt");
        erste.inEinerTransaktion([&] {
            alleAendern(erste, "danach");
            alleAendern(zweite, "danach");
        });
        erste.Close();
        EXPECT_EQ(ausgang(eine, andere, false), (Ausgang{{"danach"}, {"danach"}})) << "step " << n;
    }
    EXPECT_GT(alte, 10);
}

TEST(ZweiDateienStoerung, AnJedemSchrittSindBeideVorherOderBeideNachher) {
    StoerVfs disk;
    for (const auto eingriff : {StoerVfs::Eingriff::Voll, StoerVfs::Eingriff::Defekt}) {
        int gescheitert = 0;
        bool gestoert = true;
        for (int n = 1; gestoert; ++n) {
            Testdatenbank eine;
            Testdatenbank andere;
            eine.sql(VIELE_ZEILEN);
            andere.sql(VIELE_ZEILEN);
            const int nummer = fehlernummer([&] { beideAendern(eine, andere, disk, n, eingriff); });
            gestoert = disk.hatGestoert();
            disk.stoereNicht();
            EXPECT_EQ(ausgang(eine, andere, false), nummer == 0 ? NEU : ALT) << "step " << n;
            EXPECT_TRUE(nummer == 0 || nummer == (eingriff == StoerVfs::Eingriff::Voll ? 3026 : 3043))
                << nummer;
            gescheitert += nummer != 0;
        }
        EXPECT_GT(gescheitert, 10);
    }
}
