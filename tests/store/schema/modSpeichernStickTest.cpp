// SPDX-License-Identifier: GPL-3.0-or-later
// The zone lines and the actions of both sticks as the editors store them.
#include "store/schema/modSpeichern.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/store/schema/Sticktest.h"

#include <gmock/gmock.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::int32_t KLEINSTE = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t GROESSTE = std::numeric_limits<std::int32_t>::max();

class LinienSpeichern : public StickTest {
protected:
    Sticklinien lies(const std::string& name = "S") const {
        return StickLinienLesen(datei.pfad(), seite(), name, [](std::string_view) {});
    }
    void speichern(const Sticklinien& bild, const std::string& name = "S") const {
        StickLinienSpeichern(datei.pfad(), seite(), name, bild);
    }
    Tabellenbild tabelle(const std::string& bedingung = "1") const {
        return datei.zeilen("SELECT * FROM " + linientabelle() + " WHERE " + bedingung +
                            " ORDER BY Schemaname, \"index\"");
    }
};

/// A value of its own in every place that is stored.
Sticklinien volleLinien() {
    Sticklinien bild;
    for (std::size_t ebene = 0; ebene < EBENEN; ++ebene)
        for (std::size_t zeile = 1; zeile <= 19; ++zeile)
            for (std::size_t richtung = 0; richtung < RICHTUNGEN; ++richtung)
                bild.linien[ebene][zeile][richtung] =
                    static_cast<std::int32_t>(10000 * (ebene + 1) + 100 * zeile + richtung);
    bild.StickSperre = 5;
    return bild;
}

/// The rows that volleLinien makes, as they stand in the table.
Tabellenbild volleZeilen() {
    Tabellenbild zeilen;
    for (int zeile = 1; zeile <= 19; ++zeile) {
        zeilen.push_back({"S", std::to_string(zeile)});
        for (int ebene = 1; ebene <= 3; ++ebene)
            for (int richtung = 0; richtung < 4; ++richtung)
                zeilen.back().push_back(std::to_string(10000 * ebene + 100 * zeile + richtung));
    }
    zeilen.push_back({"S", "20", "5"});
    zeilen.back().resize(14, "0");
    return zeilen;
}

INSTANTIATE_TEST_SUITE_P(Beide, LinienSpeichern, testing::Values("frmJust", "frmJustr"), zielFormular);

} // namespace

TEST_P(LinienSpeichern, JederWertJederEbeneKommtAnSeinenPlatz) {
    lies();
    lies("T");
    const auto fremd = tabelle("Schemaname = 'T'");
    const auto andere =
        datei.zeilen("SELECT count(*) FROM tblStick UNION ALL SELECT count(*) FROM tblStickR");
    speichern(volleLinien());
    EXPECT_EQ(tabelle("Schemaname = 'S'"), volleZeilen());
    EXPECT_EQ(tabelle("Schemaname = 'T'"), fremd);
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM tblStick UNION ALL SELECT count(*) FROM tblStickR"), andere);
    EXPECT_EQ(lies().linien, volleLinien().linien);
    EXPECT_EQ(lies().StickSperre, 5);
}

TEST_P(LinienSpeichern, DiePlaetzeNullUndZwanzigWerdenNichtGespeichert) {
    lies();
    Sticklinien bild = volleLinien();
    for (auto& ebene : bild.linien)
        ebene.front() = ebene.back() = {1, 2, 3, 4};
    speichern(bild);
    EXPECT_EQ(tabelle(), volleZeilen());
}

TEST_P(LinienSpeichern, DieSperreStehtNurInLinksDerZwanzigstenZeile) {
    Sticklinien bild = lies();
    for (const std::int32_t maske : {7, 0, -1, KLEINSTE, GROESSTE}) {
        bild.StickSperre = maske;
        auto erwartet = tabelle();
        erwartet.at(19).at(2) = std::to_string(maske);
        speichern(bild);
        EXPECT_EQ(tabelle(), erwartet);
    }
}

TEST_P(LinienSpeichern, DieReihenfolgeIstDieDesIndex) {
    for (int index = 20; index >= 1; --index)
        datei.sql("INSERT INTO " + linientabelle() + " (Schemaname, \"index\") VALUES ('S', " +
                  std::to_string(index) + ")");
    speichern(volleLinien());
    EXPECT_EQ(tabelle(), volleZeilen());
}

TEST_P(LinienSpeichern, WasSchonDaStehtWirdNichtGeschrieben) {
    lies();
    speichern(volleLinien());
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN IMMEDIATE");
    EXPECT_EQ(fehlernummer([&] { speichern(volleLinien()); }), 0);
    Sticklinien eines = volleLinien();
    eines.linien[2][19][3] = 1;
    EXPECT_EQ(fehlernummer([&] { speichern(eines); }), 3218);
    eines = volleLinien();
    eines.StickSperre = 4;
    EXPECT_EQ(fehlernummer([&] { speichern(eines); }), 3218);
    andere.sql("COMMIT");
    EXPECT_EQ(tabelle(), volleZeilen());
}

TEST_P(LinienSpeichern, EinGeloeschtesSchemaBekommtKeineZeilenWiederEinHalbesAlle) {
    erwarteFehlerOhneWirkung(3021, [&] { speichern(volleLinien()); });
    for (const std::string fehlende : {"7", "20", "1"}) {
        lies();
        datei.sql("DELETE FROM " + linientabelle() + " WHERE \"index\" = " + fehlende);
        speichern(volleLinien());
        EXPECT_EQ(tabelle(), volleZeilen()) << fehlende;
    }
}

TEST_P(LinienSpeichern, EinFehlerImLetztenWertLaesstAlleWieSieSind) {
    lies();
    speichern(volleLinien());
    datei.sql("CREATE UNIQUE INDEX streng ON " + linientabelle() + " (Links) WHERE \"index\" >= 19");
    Sticklinien bild = volleLinien();
    bild.linien[0][1][0] = 1;
    bild.StickSperre = bild.linien[0][19][0];
    erwarteFehlerOhneWirkung(3022, [&] { speichern(bild); });
}

TEST_P(LinienSpeichern, NamenSperreUndSchreibschutz) {
    for (const std::string name : {"../x", " ", "Ä ö 漢", "a\"b"}) {
        lies(name);
        speichern(volleLinien(), name);
        EXPECT_EQ(lies(name).linien, volleLinien().linien) << name;
    }
    erwarteFehlerOhneWirkung(3075, [&] { speichern(volleLinien(), "O'Brien"); });
    lies();
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { speichern(volleLinien()); }), 3027);
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { speichern(lies()); }), 0);
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN EXCLUSIVE");
    EXPECT_EQ(fehlernummer([&] { speichern(volleLinien()); }), 3218);
    andere.sql("COMMIT");
    EXPECT_EQ(datei.inhalt(), vorher);
}

namespace {

/// Rows of actions: what `lege` takes is Umschalt, Links, Rechts, Oben, Unten, Aktion as SQL.
class AktionenSpeichern : public StickTest {
protected:
    /// The lines themselves lie in their own table, which holds none of them here.
    AktionenSpeichern() {
        Database datenbank = OpenDatabase(datei.pfad());
        StickGrundzeilenAnlegen(datenbank, seite(), "S");
    }

    void lege(const std::string& zeile, const std::string& name = "S") const {
        datei.sql("INSERT INTO " + aktionstabelle() + " VALUES ('" + name + "', " + zeile + ")");
    }
    /// An action whose line of `richtung` is `linie`; the other three hold 5.
    void legeAn(int richtung, std::int32_t linie, int ebene = 0) const {
        std::string zeile = std::to_string(ebene);
        for (int i = 0; i < 4; ++i)
            zeile += ", " + std::to_string(i == richtung ? linie : 5);
        lege(zeile + ", '0,0,5,10'");
    }
    void schiebe(int richtung, std::int32_t neu, std::int32_t alt, int ebene = 0,
                 const std::string& name = "S") const {
        StickLinieVerlegen(datei.pfad(), seite(), name, {}, {ebene, richtung, neu, alt});
    }
    /// Removes a line of `richtung` on layer 0; the lines without it are volleLinien.
    bool entferne(std::int32_t linie, int richtung = 0, const std::string& name = "S") const {
        return StickLinieEntfernen(datei.pfad(), seite(), name, volleLinien(), 0, richtung, linie);
    }
    Linientabelle gespeicherteLinien() const {
        return StickLinienLesen(datei.pfad(), seite(), "S", [](std::string_view) {}).linien;
    }
    void speichere(const Feldschluessel& feld, const std::string& aktion,
                   const std::string& name = "S") const {
        StickAktionSpeichern(datei.pfad(), seite(), name, feld, aktion);
    }
    Tabellenbild tabelle() const {
        return datei.zeilen("SELECT * FROM " + aktionstabelle() + " ORDER BY rowid");
    }
    /// The column of a direction, in stored order.
    std::vector<std::string> linien(int richtung) const {
        std::vector<std::string> werte;
        for (const auto& zeile : tabelle())
            werte.push_back(zeile.at(static_cast<std::size_t>(richtung) + 2));
        return werte;
    }
};

INSTANTIATE_TEST_SUITE_P(Beide, AktionenSpeichern, testing::Values("frmJust", "frmJustr"), zielFormular);

} // namespace

TEST_P(AktionenSpeichern, AlleAktionenGenauAufDerLinieFolgenIhr) {
    for (int richtung = 0; richtung < 4; ++richtung) {
        datei.sql("DELETE FROM " + aktionstabelle());
        for (const std::int32_t linie : {20000, 19999, 20000, 20001})
            legeAn(richtung, linie);
        auto erwartet = tabelle();
        for (const std::size_t zeile : {0u, 2u})
            erwartet[zeile][static_cast<std::size_t>(richtung) + 2] = "18000";
        schiebe(richtung, 18000, 20000);
        EXPECT_EQ(tabelle(), erwartet) << "an exact match prevents the search beside the line";
    }
}

TEST_P(AktionenSpeichern, OhneGenaueFolgenDieBisNeunDaneben) {
    for (int richtung = 0; richtung < 4; ++richtung) {
        datei.sql("DELETE FROM " + aktionstabelle());
        for (const std::int32_t linie : {19990, 19991, 19999, 20001, 20009, 20010})
            legeAn(richtung, linie);
        schiebe(richtung, 18000, 20000);
        EXPECT_THAT(linien(richtung), ElementsAre("19990", "18000", "18000", "18000", "18000", "20010"));
    }
}

TEST_P(AktionenSpeichern, NurDieseEbeneDieseRichtungUndDiesesSchemaFolgen) {
    legeAn(0, 20000, 1);
    legeAn(1, 20000, 0);
    lege("0, 20000, 5, 5, 5, '3'", "T");
    legeAn(0, 20003, 2);
    const auto vorher = tabelle();
    schiebe(0, 18000, 20000, 0);
    EXPECT_EQ(tabelle(), vorher);
    schiebe(0, 18000, 20000, 2);
    EXPECT_THAT(linien(0), ElementsAre("20000", "5", "20000", "18000"));
    schiebe(0, 17000, 20000, 1);
    EXPECT_THAT(linien(0), ElementsAre("17000", "5", "20000", "18000"));
}

TEST_P(AktionenSpeichern, AnDenRaendernDerZahlenLaeuftNichtsUeber) {
    legeAn(0, KLEINSTE);
    legeAn(0, GROESSTE);
    schiebe(0, 1, GROESSTE - 9);
    schiebe(0, 2, KLEINSTE + 9);
    EXPECT_THAT(linien(0), ElementsAre("2", "1"));
    schiebe(0, GROESSTE, 1);
    EXPECT_THAT(linien(0), ElementsAre("2", std::to_string(GROESSTE)));
}

TEST_P(AktionenSpeichern, LinieUndAktionenGehenZusammenOderGarNicht) {
    legeAn(2, 20000);
    Sticklinien bild = volleLinien();
    bild.linien[1][4][2] = 18000;
    lege("1, 5, 5, 20000, 5, '3'");
    StickLinieVerlegen(datei.pfad(), seite(), "S", bild, {1, 2, 18000, 20000});
    EXPECT_THAT(linien(2), ElementsAre("20000", "18000"));
    EXPECT_EQ(StickLinienLesen(datei.pfad(), seite(), "S", [](std::string_view) {}).linien, bild.linien);

    datei.sql("CREATE UNIQUE INDEX streng ON " + aktionstabelle() + " (Oben)");
    bild.linien[1][4][2] = 17000;
    legeAn(2, 17000, 1);
    erwarteFehlerOhneWirkung(3022, [&] {
        StickLinieVerlegen(datei.pfad(), seite(), "S", bild, {1, 2, 17000, 18000});
    });
}

TEST_P(AktionenSpeichern, EineLinieGehtMitIhrenLeerfeldern) {
    lege("0, 20000, 5, 5, 5, '3'");
    lege("0, 20000, 5, 6, 5, ' 3 '");
    lege("0, 19999, 5, 5, 5, '3'");
    EXPECT_TRUE(entferne(20000));
    EXPECT_THAT(linien(0), ElementsAre("19999"));
    EXPECT_EQ(gespeicherteLinien(), volleLinien().linien);
}

TEST_P(AktionenSpeichern, EineLinieDieAktionenHaeltBleibtUndVerliertNurDieLeerfelder) {
    lege("0, 20000, 5, 5, 5, '3'");
    lege("0, 20000, 5, 6, 5, '4'");
    const auto vorher = gespeicherteLinien();
    EXPECT_FALSE(entferne(20000));
    EXPECT_THAT(tabelle(), ElementsAre(testing::Contains("4")));
    EXPECT_EQ(gespeicherteLinien(), vorher);
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { EXPECT_FALSE(entferne(20000)); }), 0) << "nothing to write";
}

TEST_P(AktionenSpeichern, ScheitertDasSpeichernDerLinienBleibenDieLeerfelder) {
    lege("0, 20000, 5, 5, 5, '3'");
    datei.sql("DELETE FROM " + linientabelle());
    erwarteFehlerOhneWirkung(3021, [&] { entferne(20000); });
}

TEST_P(AktionenSpeichern, EntfernenMitFalscherRichtungNameSperreUndSchreibschutz) {
    lege("0, 20000, 5, 5, 5, '3'");
    for (const int richtung : {-1, 4})
        erwarteFehlerOhneWirkung(9, [&] { entferne(20000, richtung); });
    erwarteFehlerOhneWirkung(3075, [&] { entferne(20000, 0, "O'Brien"); });
    EXPECT_EQ(
        fehlernummer([&] { StickLinieEntfernen(datei.pfad() + ".fehlt", seite(), "S", {}, 0, 0, 20000); }),
        3024);
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { entferne(20000); }), 3027);
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN IMMEDIATE");
    EXPECT_EQ(fehlernummer([&] { entferne(20000); }), 3218);
}

TEST_P(AktionenSpeichern, EineLeereMengeEndetStill) {
    EXPECT_EQ(fehlernummer([&] { schiebe(0, 18000, 20000); }), 0);
    legeAn(0, 100);
    schiebe(0, 18000, 20000);
    EXPECT_THAT(linien(0), ElementsAre("100"));
}

TEST_P(AktionenSpeichern, VerschiebenMitFalscherRichtungNameSperreUndSchreibschutz) {
    legeAn(0, 20000);
    for (const int richtung : {-1, 4})
        erwarteFehlerOhneWirkung(9, [&] { schiebe(richtung, 18000, 20000); });
    erwarteFehlerOhneWirkung(3075, [&] { schiebe(0, 18000, 20000, 0, "O'Brien"); });
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { schiebe(0, 18000, 20000); }), 3027);
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN EXCLUSIVE");
    EXPECT_EQ(fehlernummer([&] { schiebe(0, 18000, 20000); }), 3218);
    andere.sql("COMMIT");
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_P(AktionenSpeichern, EinFeldOhneZeileBekommtEine) {
    speichere({2, 20000, 0, 9000, 0}, "0,0,5,10");
    EXPECT_THAT(tabelle(), ElementsAre(ElementsAre("S", "2", "20000", "0", "9000", "0", "0,0,5,10")));
}

TEST_P(AktionenSpeichern, EinFeldMitZeileBekommtNurEineNeueAktion) {
    const Feldschluessel feld{1, 20000, 45000, 9000, 52000};
    for (std::size_t i = 0; i < feld.size(); ++i) { // every neighbour differs in one place only
        Feldschluessel nachbar = feld;
        nachbar[i] = i == 0 ? 2 : 1;
        speichere(nachbar, "fremd");
    }
    lege("1, 20000, 45000, 9000, 52000, 'fremd'", "T");
    auto erwartet = tabelle();
    speichere(feld, "3");
    erwartet.push_back({"S", "1", "20000", "45000", "9000", "52000", "3"});
    EXPECT_EQ(tabelle(), erwartet);
    speichere(feld, "2,65");
    erwartet.back().back() = "2,65";
    EXPECT_EQ(tabelle(), erwartet);
}

TEST_P(AktionenSpeichern, VonZweiZeilenEinesFeldesGiltDieErste) {
    lege("0, 7, 0, 0, 0, 'eins'");
    lege("0, 7, 0, 0, 0, 'zwei'");
    speichere({0, 7, 0, 0, 0}, "neu");
    EXPECT_EQ(datei.zeilen("SELECT Aktion FROM " + aktionstabelle() + " ORDER BY rowid"),
              (Tabellenbild{{"neu"}, {"zwei"}}));
}

TEST_P(AktionenSpeichern, JederTextUndJederNameOhneApostroph) {
    for (const std::string name : {"../x", " ", "Ä ö 漢", "a\"b", ""})
        for (const std::string aktion : {"", "it's; DROP TABLE tblStick --", "0,0,5,10"}) {
            speichere({0, 7, 0, 0, 0}, aktion, name);
            EXPECT_EQ(StickAktionLesen(datei.pfad(), seite(), name, {0, 7, 0, 0, 0}), aktion) << name;
        }
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM " + aktionstabelle()), (Tabellenbild{{"5"}}));
    erwarteFehlerOhneWirkung(3075, [&] { speichere({}, "3", "O'Brien"); });
}

TEST_P(AktionenSpeichern, SpeichernMitZuGrosserEbeneSperreUndSchreibschutz) {
    erwarteFehlerOhneWirkung(6, [&] { speichere({32768, 0, 0, 0, 0}, "3"); });
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { speichere({}, "3"); }), 3027);
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN EXCLUSIVE");
    EXPECT_EQ(fehlernummer([&] { speichere({}, "3"); }), 3218);
    andere.sql("COMMIT");
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_THAT(tabelle(), IsEmpty());
}
