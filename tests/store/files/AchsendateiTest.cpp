// SPDX-License-Identifier: GPL-3.0-or-later
// The axis assignment: how it comes from the file and goes back, what a missing, broken or foreign file does.
#include "store/files/Achsendatei.h"
#include "store/files/Gamepadtabelle.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Gamepadxml.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <chrono>
#include <fcntl.h>
#include <random>
#include <set>
#include <sys/file.h>
#include <sys/resource.h>
#include <thread>

namespace fs = std::filesystem;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;

namespace {

using Namen = std::array<std::string, ACHSEN>;

const Namen GRUNDBELEGUNG{"lx", "ly", "rx", "ry", "Z1", "Z2"};
const Namen KEINE{};

/// A row with these axes; without `schubregler` that column is Null.
Gamepadzeile zeile(const std::string& schema, const Namen& namen = GRUNDBELEGUNG,
                   const std::optional<std::string>& schubregler = std::nullopt) {
    Gamepadzeile felder{{"Schema", schema},   {"dwXPos", namen[0]}, {"dwYPos", namen[1]},
                        {"dwZPos", namen[2]}, {"dwRPos", namen[3]}, {"dwUPos", namen[4]},
                        {"dwVPos", namen[5]}};
    if (schubregler)
        felder["Schubregler"] = *schubregler;
    return felder;
}

class AchsendateiTest : public testing::Test {
protected:
    Testordner ordner;
    fs::path pfad = ordner.pfad() / "Gamepad.xml";
    std::string auswahl = "S";
    Achsendatei achsen{pfad.string(), auswahl};

    void legen(const std::vector<Gamepadzeile>& zeilen) const {
        Gamepadtabelle tabelle = leereGamepadtabelle();
        tabelle.zeilen = zeilen;
        dateiSchreiben(pfad, gamepadAlsXml(tabelle).value());
    }
    std::string inhalt() const { return dateiLesen(pfad); }
    std::vector<Gamepadzeile> zeilen() const { return gamepadAusXml(inhalt()).value().zeilen; }
    std::vector<std::string> namen() const { return namenIn(ordner.pfad()); }

    /// What all procedures do to the file; AchsenSchluessel and SchubreglerText may change.
    void alleRufen() {
        achsen.AchsenLaden();
        achsen.AchsenUebernehmen({});
        achsen.GamepadSchreiben("");
        achsen.GamepadSchreiben("2/0-1-3-");
        achsen.GamepadLoeschen();
        achsen.GamepadAnlegen();
        achsen.AchsenLaden();
    }
};

const Namen GEDREHT{"ry", "rx", "Z2", "Z1", "lx", "ly"};
const Namen VERTAUSCHT{"ly", "lx", "rx", "ry", "Z2", "Z1"};

} // namespace

// ---- AchsenLaden

TEST_F(AchsendateiTest, VorDemLadenIstNichtsZugeordnet) {
    EXPECT_EQ(achsen.AchsenSchluessel(), KEINE);
    EXPECT_EQ(achsen.SchubreglerText(), "");
    EXPECT_THAT(namen(), IsEmpty());
}

TEST_F(AchsendateiTest, BeimErstenStartEntstehtDieDateiMitEinerGrundzeile) {
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
    EXPECT_EQ(achsen.SchubreglerText(), "");
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S"))); // the slider text is Null
    EXPECT_EQ(gamepadAusXml(inhalt())->spalten, leereGamepadtabelle().spalten);
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(AchsendateiTest, DieZeileDesSchemasWirdGelesen) {
    legen({zeile("A"), zeile("S", GEDREHT, "3/0-1-3-"), zeile("B")});
    const std::string vorher = inhalt();
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), GEDREHT);
    EXPECT_EQ(achsen.SchubreglerText(), "3/0-1-3-");
    EXPECT_EQ(inhalt(), vorher);
}

TEST_F(AchsendateiTest, DieAuswahlWirdBeiJedemAufrufAngesehen) {
    legen({zeile("A", VERTAUSCHT), zeile("S", GEDREHT)});
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), GEDREHT);
    auswahl = "A";
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), VERTAUSCHT);
}

TEST_F(AchsendateiTest, VonZweiGleichenNamenZaehltDieErsteZeile) {
    legen({zeile("S", GEDREHT), zeile("S", VERTAUSCHT)});
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), GEDREHT);
    achsen.GamepadSchreiben("1");
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S", GEDREHT, "1"), zeile("S", VERTAUSCHT)));
    achsen.GamepadLoeschen();
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S", VERTAUSCHT)));
}

TEST_F(AchsendateiTest, NamenWerdenGenauVerglichen) {
    legen({zeile("s", GEDREHT), zeile(" S", GEDREHT), zeile("S ", GEDREHT), zeile("", GEDREHT), {}});
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
    EXPECT_THAT(zeilen(), SizeIs(6));
    EXPECT_EQ(zeilen().back(), zeile("S", GRUNDBELEGUNG, ""));
}

TEST_F(AchsendateiTest, NamenMitUmlautenUndZeichenDesXmlSindNamenWieAndere) {
    legen({});
    for (const std::string name : {"Löwe ß", "a\"b", "<&>", "a\tb\nc", "100 %", "#1", "*", "", "漢字"}) {
        auswahl = name;
        achsen.AchsenLaden();
        achsen.GamepadSchreiben(name + "1");
        achsen.AchsenLaden();
        EXPECT_EQ(achsen.SchubreglerText(), name + "1");
    }
    EXPECT_THAT(zeilen(), SizeIs(9));
    for (const std::string name : {"Löwe ß", "a\"b", "<&>", "a\tb\nc", "100 %", "#1", "*", "", "漢字"}) {
        auswahl = name;
        achsen.GamepadLoeschen();
    }
    EXPECT_THAT(zeilen(), IsEmpty());
}

TEST_F(AchsendateiTest, EinSchemaOhneZeileBekommtEineHinterDenAnderen) {
    legen({zeile("A", GEDREHT, "4"), zeile("B", VERTAUSCHT)});
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
    EXPECT_THAT(zeilen(),
                ElementsAre(zeile("A", GEDREHT, "4"), zeile("B", VERTAUSCHT), zeile("S", GRUNDBELEGUNG, "")));
}

TEST_F(AchsendateiTest, EineSpalteDieNullIstLaesstIhrenNamenLeer) {
    legen({{{"Schema", "S"}, {"dwYPos", "lx"}, {"dwVPos", ""}}});
    const std::string vorher = inhalt();
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), (Namen{"", "lx", "", "", "", ""}));
    EXPECT_EQ(achsen.SchubreglerText(), "");
    EXPECT_EQ(inhalt(), vorher);
}

TEST_F(AchsendateiTest, EineFehlendeSpalteLaesstIhrenNamenLeerUndBleibtWeg) {
    dateiSchreiben(pfad, adoXml("<z:row Schema='S' dwYPos='lx'/>",
                                adoSpalte("dwYPos", 1, 100) + adoSpalte("Schema", 2, 100)));
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), (Namen{"", "lx", "", "", "", ""}));
    achsen.AchsenUebernehmen({{{"Rechts", "Links/Rechts"}, {"Rechts", "Oben/Unten"}, {}, {}, {}, {}}});
    achsen.GamepadSchreiben("3");
    EXPECT_THAT(zeilen(), ElementsAre(Gamepadzeile{{"Schema", "S"}, {"dwYPos", "ry"}}));
    EXPECT_THAT(gamepadAusXml(inhalt())->spalten, SizeIs(2));
}

TEST_F(AchsendateiTest, EineDateiMitAusstehendenAenderungenWirdGelesenUndBereinigt) {
    dateiSchreiben(pfad,
                   adoXml("<rs:update><rs:original><z:row Schema='S' dwXPos='lx' dwYPos='ly'/></rs:original>"
                          "<z:row dwXPos='rx' Schubregler='2'/></rs:update>"
                          "<rs:insert><z:row Schema='A' dwXPos='lx'/></rs:insert>"
                          "<rs:delete><z:row Schema='B'/></rs:delete>"));
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), (Namen{"rx", "ly", "", "", "", ""}));
    EXPECT_EQ(achsen.SchubreglerText(), "2");
    auswahl = "B";
    achsen.AchsenLaden();
    const std::vector<Gamepadzeile> erwartet{
        {{"Schema", "S"}, {"dwXPos", "rx"}, {"dwYPos", "ly"}, {"Schubregler", "2"}},
        {{"Schema", "A"}, {"dwXPos", "lx"}},
        zeile("B", GRUNDBELEGUNG, "")};
    EXPECT_EQ(zeilen(), erwartet);
    EXPECT_EQ(inhalt().find("rs:insert"), std::string::npos);
}

// ---- SchubreglerText

TEST_F(AchsendateiTest, DerSchubreglerTextGehtAufKeinAnderesSchemaUeber) {
    const auto nachWechsel = [&](const std::string& zu, const std::function<void()>& eingriff) {
        legen({zeile("S", GEDREHT, "4"), zeile("Null"), zeile("Leer", GRUNDBELEGUNG, "")});
        auswahl = "S";
        achsen.AchsenLaden();
        EXPECT_EQ(achsen.SchubreglerText(), "4");
        eingriff();
        auswahl = zu;
        achsen.AchsenLaden();
        return achsen.SchubreglerText();
    };
    const auto nichts = [] {};
    EXPECT_EQ(nachWechsel("Null", nichts), "");
    EXPECT_EQ(nachWechsel("Leer", nichts), "");
    EXPECT_EQ(nachWechsel("ohne Zeile", nichts), "");
    EXPECT_EQ(nachWechsel("ohne Zeile", [&] { fs::permissions(pfad, fs::perms(0400)); }), "");
    fs::permissions(pfad, fs::perms(0600));
    EXPECT_EQ(nachWechsel(std::string(101, 'x'), nichts), "");
    EXPECT_EQ(nachWechsel("andere", [&] { fs::remove(pfad); }), "");
    EXPECT_EQ(nachWechsel("andere", [&] { dateiSchreiben(pfad, "kaputt"); }), "");
}

TEST_F(AchsendateiTest, AuchEinNeuesSchemaGleichenNamensBekommtDenTextNicht) {
    legen({zeile("S", GEDREHT, "4")});
    achsen.AchsenLaden();
    achsen.GamepadLoeschen();
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.SchubreglerText(), "");
    achsen.GamepadSchreiben("5");
    achsen.AchsenLaden();
    fs::remove(pfad);
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.SchubreglerText(), "");
}

TEST_F(AchsendateiTest, UnterDemselbenSchemaBleibtDerTextWennDieDateiZerbricht) {
    legen({zeile("S", GEDREHT, "4")});
    achsen.AchsenLaden();
    dateiSchreiben(pfad, "kaputt");
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.SchubreglerText(), "4");
    EXPECT_EQ(achsen.AchsenSchluessel(), KEINE);
    auswahl = "A";
    achsen.AchsenLaden();
    auswahl = "S";
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.SchubreglerText(), "");
}

TEST_F(AchsendateiTest, DasSchreibenLaesstDenGelesenenTextBisZumNaechstenLaden) {
    legen({zeile("S", GEDREHT, "4")});
    achsen.AchsenLaden();
    achsen.GamepadSchreiben("5");
    EXPECT_EQ(achsen.SchubreglerText(), "4");
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.SchubreglerText(), "5");
}

// ---- GamepadSchreiben

TEST_F(AchsendateiTest, OhneDateiSchreibtEsNichts) {
    EXPECT_FALSE(achsen.GamepadSchreiben("4"));
    EXPECT_THAT(namen(), IsEmpty());
    EXPECT_EQ(achsen.AchsenSchluessel(), KEINE);
}

TEST_F(AchsendateiTest, OhneZeileEntstehtEineMitDemTextUndDerGrundbelegung) {
    legen({zeile("S", GEDREHT)});
    achsen.AchsenLaden();
    auswahl = "neu";
    achsen.GamepadSchreiben("4");
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S", GEDREHT), zeile("neu", GRUNDBELEGUNG, "4")));
    EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
}

TEST_F(AchsendateiTest, EinTextErsetztDenAltenEinLeererNicht) {
    legen({zeile("A", VERTAUSCHT, "1"), zeile("S", GEDREHT, "4"), zeile("B")});
    achsen.AchsenLaden();
    achsen.GamepadSchreiben("");
    EXPECT_THAT(zeilen(), ElementsAre(zeile("A", VERTAUSCHT, "1"), zeile("S", GEDREHT, "4"), zeile("B")));
    achsen.GamepadSchreiben("5");
    EXPECT_THAT(zeilen(), ElementsAre(zeile("A", VERTAUSCHT, "1"), zeile("S", GEDREHT, "5"), zeile("B")));
}

TEST_F(AchsendateiTest, EinLeererTextLaesstNullNull) {
    legen({zeile("S", GEDREHT)});
    achsen.AchsenLaden();
    achsen.GamepadSchreiben("");
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S", GEDREHT)));
}

TEST_F(AchsendateiTest, GeschriebenWirdDieZuordnungVonJetzt) {
    legen({zeile("S", GEDREHT), zeile("A", VERTAUSCHT, "1")});
    achsen.AchsenLaden();
    auswahl = "A"; // typed, not loaded
    achsen.GamepadSchreiben("");
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S", GEDREHT), zeile("A", GEDREHT, "1")));
}

TEST_F(AchsendateiTest, TausendZeichenSindDieGrenzeDesTextes) {
    legen({zeile("S", GEDREHT, "4")});
    achsen.AchsenLaden();
    const auto zeichen = [](int anzahl) {
        std::string text;
        for (int i = 0; i < anzahl; ++i)
            text += "ä";
        return text;
    };
    for (const int anzahl : {999, 1000}) {
        EXPECT_TRUE(achsen.GamepadSchreiben(zeichen(anzahl)));
        EXPECT_THAT(zeilen(), ElementsAre(zeile("S", GEDREHT, zeichen(anzahl))));
    }
    const std::string vorher = inhalt();
    EXPECT_FALSE(achsen.GamepadSchreiben(zeichen(1001)));
    EXPECT_EQ(inhalt(), vorher);
    auswahl = "neu";
    EXPECT_FALSE(achsen.GamepadSchreiben(zeichen(1001)));
    EXPECT_EQ(inhalt(), vorher);
    achsen.GamepadSchreiben(zeichen(1000));
    EXPECT_THAT(zeilen(), SizeIs(2));
}

TEST_F(AchsendateiTest, HundertZeichenSindDieGrenzeDesNamens) {
    legen({});
    auswahl = std::string(101, 'x');
    const std::string vorher = inhalt();
    achsen.AchsenLaden();
    EXPECT_EQ(inhalt(), vorher);
    EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG); // the run has its axes all the same
    auswahl = std::string(100, 'x');
    achsen.AchsenLaden();
    EXPECT_THAT(zeilen(), ElementsAre(zeile(auswahl, GRUNDBELEGUNG, "")));
}

TEST_F(AchsendateiTest, OhneDateiLegtEinZuLangerNameKeineAn) {
    auswahl = std::string(101, 'x');
    achsen.AchsenLaden();
    EXPECT_THAT(namen(), IsEmpty());
    EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
}

TEST_F(AchsendateiTest, WasXmlNichtHaltenKannWirdNichtGeschrieben) {
    legen({zeile("S", GEDREHT, "4")});
    achsen.AchsenLaden();
    const std::string vorher = inhalt();
    for (const std::string& text : {std::string("a\0b", 3), std::string("\x1B"), std::string("\xE4")}) {
        auswahl = "S";
        achsen.GamepadSchreiben(text);
        auswahl = text;
        achsen.AchsenLaden();
        achsen.GamepadSchreiben("");
        achsen.GamepadLoeschen();
        EXPECT_EQ(inhalt(), vorher);
        EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
        auswahl = "S";
        achsen.AchsenLaden();
    }
}

TEST_F(AchsendateiTest, EineSchreibgeschuetzteDateiBleibtUndWirdGelesen) {
    legen({zeile("S", GEDREHT, "4")});
    const std::string vorher = inhalt();
    fs::permissions(pfad, fs::perms(0444));
    alleRufen();
    EXPECT_EQ(inhalt(), vorher);
    EXPECT_EQ(achsen.AchsenSchluessel(), GEDREHT);
    EXPECT_EQ(achsen.SchubreglerText(), "4");
    auswahl = "neu";
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
    EXPECT_EQ(inhalt(), vorher);
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(AchsendateiTest, AufEinerVollenPlatteBleibtDieAlte) {
    legen({zeile("S", GEDREHT, "4")});
    const std::string vorher = inhalt();
    const pid_t kind = imKind([&] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit grenze{1000, 1000};
        if (setrlimit(RLIMIT_FSIZE, &grenze) != 0)
            _exit(1);
        alleRufen();
        auswahl = "neu";
        alleRufen();
    });
    EXPECT_FALSE(wurdeGetoetet(kind));
    EXPECT_EQ(inhalt(), vorher);
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(AchsendateiTest, EinVerweisBleibtEiner) {
    fs::create_symlink("echt.xml", pfad);
    achsen.AchsenLaden(); // points to nothing yet
    achsen.GamepadSchreiben("4");
    EXPECT_TRUE(fs::is_symlink(pfad));
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S", GRUNDBELEGUNG, "4")));
}

// ---- GamepadLoeschen

TEST_F(AchsendateiTest, DasLoeschenNimmtNurDieEigeneZeileHeraus) {
    legen({zeile("A", GEDREHT, "1"), zeile("S"), zeile("B", VERTAUSCHT)});
    EXPECT_TRUE(achsen.GamepadLoeschen());
    EXPECT_THAT(zeilen(), ElementsAre(zeile("A", GEDREHT, "1"), zeile("B", VERTAUSCHT)));
}

TEST_F(AchsendateiTest, DasLoeschenEinerFehlendenZeileLaesstDieDateiWieSieWar) {
    // Pending changes and all: it is not even written anew.
    dateiSchreiben(pfad, adoXml("<rs:insert><z:row Schema='A'/></rs:insert>"));
    const std::string vorher = inhalt();
    EXPECT_TRUE(achsen.GamepadLoeschen());
    EXPECT_EQ(inhalt(), vorher);
}

TEST_F(AchsendateiTest, OhneDateiLoeschtEsNichts) {
    EXPECT_TRUE(achsen.GamepadLoeschen());
    EXPECT_THAT(namen(), IsEmpty());
}

TEST_F(AchsendateiTest, EineZeileDieBleibtIstNichtGeloescht) {
    legen({zeile("A"), zeile("S"), zeile("O'Brien")});
    fs::permissions(pfad, fs::perms(0444));
    EXPECT_FALSE(achsen.GamepadLoeschen()) << "may not be written";
    fs::permissions(pfad, fs::perms(0644));
    auswahl = "O'Brien";
    EXPECT_FALSE(achsen.GamepadLoeschen()) << "no search finds it";
    EXPECT_THAT(zeilen(), ElementsAre(zeile("A"), zeile("S"), zeile("O'Brien")));
    dateiSchreiben(pfad, "kaputt");
    EXPECT_FALSE(achsen.GamepadLoeschen());
}

TEST_F(AchsendateiTest, DieLetzteZeileLaesstEineTabelleOhneZeilen) {
    legen({zeile("S")});
    achsen.GamepadLoeschen();
    EXPECT_THAT(zeilen(), IsEmpty());
    achsen.AchsenLaden();
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S", GRUNDBELEGUNG, "")));
}

// ---- GamepadAnlegen

TEST_F(AchsendateiTest, DasAnlegenRuehrtKeineVorhandeneAn) {
    for (const std::string& alt : {std::string(), std::string("kaputt"), adoXml("<z:row Schema='S'/>")}) {
        dateiSchreiben(pfad, alt);
        achsen.GamepadAnlegen();
        EXPECT_EQ(inhalt(), alt);
        EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
    }
}

TEST_F(AchsendateiTest, EinOrdnerDesNamensIstKeineDateiUndBleibt) {
    fs::create_directory(pfad);
    alleRufen();
    EXPECT_TRUE(fs::is_directory(pfad));
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
    EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
}

TEST_F(AchsendateiTest, OhneDenOrdnerBleibtDieGrundbelegung) {
    Achsendatei ohneOrdner((ordner.pfad() / "fehlt" / "Gamepad.xml").string(), auswahl);
    ohneOrdner.AchsenLaden();
    EXPECT_EQ(ohneOrdner.AchsenSchluessel(), GRUNDBELEGUNG);
    Achsendatei ohnePfad("", auswahl);
    ohnePfad.AchsenLaden();
    EXPECT_EQ(ohnePfad.AchsenSchluessel(), GRUNDBELEGUNG);
    EXPECT_THAT(namen(), IsEmpty());
}

// ---- broken files

TEST_F(AchsendateiTest, WasKeineTabelleIstWirdNieUeberschrieben) {
    const std::string heil = adoXml("<z:row Schema='S' dwXPos='lx'/>");
    for (const std::string& kaputt :
         {std::string(), std::string("kaputt"), heil.substr(0, heil.size() / 2), heil + "x",
          std::string("<html></html>"), std::string("SQLite format 3\0", 16), std::string(5000, '\0')}) {
        dateiSchreiben(pfad, kaputt);
        alleRufen();
        EXPECT_EQ(achsen.AchsenSchluessel(), KEINE) << kaputt;
        EXPECT_EQ(inhalt(), kaputt);
        EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
    }
}

TEST_F(AchsendateiTest, EineUnlesbareDateiIstEineKaputte) {
    legen({zeile("S", GEDREHT)});
    const std::string vorher = inhalt();
    fs::permissions(pfad, fs::perms(0200));
    fs::permissions(ordner.pfad(), fs::perms::all);
    {
        const AlsNiemand niemand;
        alleRufen();
        EXPECT_EQ(achsen.AchsenSchluessel(), KEINE);
    }
    fs::permissions(ordner.pfad(), fs::perms(0000)); // not even to be looked at
    {
        const AlsNiemand niemand;
        alleRufen();
        EXPECT_EQ(achsen.AchsenSchluessel(), KEINE);
    }
    fs::permissions(ordner.pfad(), fs::perms::owner_all);
    fs::permissions(pfad, fs::perms(0600));
    EXPECT_EQ(inhalt(), vorher);
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(AchsendateiTest, EineRoehreHaeltDasProgrammNichtAuf) {
    ASSERT_EQ(mkfifo(pfad.c_str(), 0666), 0);
    alleRufen();
    EXPECT_TRUE(fs::is_fifo(pfad));
    EXPECT_EQ(achsen.AchsenSchluessel(), KEINE);
}

// ---- an apostrophe in the name

TEST_F(AchsendateiTest, EinApostrophLiestDieErsteZeileUndAendertSieNicht) {
    legen({zeile("A", GEDREHT, "4"), zeile("Rock'n'Roll", VERTAUSCHT, "5")});
    const std::string vorher = inhalt();
    auswahl = "Rock'n'Roll";
    alleRufen();
    EXPECT_EQ(achsen.AchsenSchluessel(), GEDREHT);
    EXPECT_EQ(achsen.SchubreglerText(), "4");
    EXPECT_EQ(inhalt(), vorher);
    auswahl = "B";
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.SchubreglerText(), "");
}

TEST_F(AchsendateiTest, EinApostrophBekommtAmEndeEineEigeneZeile) {
    legen({});
    auswahl = "'";
    achsen.AchsenLaden();
    EXPECT_THAT(zeilen(), ElementsAre(zeile("'", GRUNDBELEGUNG, "")));
    // The first row is its own: it may be changed and deleted.
    achsen.GamepadSchreiben("4");
    EXPECT_THAT(zeilen(), ElementsAre(zeile("'", GRUNDBELEGUNG, "4")));
    achsen.GamepadLoeschen();
    EXPECT_THAT(zeilen(), IsEmpty());
}

TEST_F(AchsendateiTest, EinApostrophBekommtDieNeueDatei) {
    auswahl = "O'Brien";
    achsen.AchsenLaden();
    EXPECT_THAT(zeilen(), ElementsAre(zeile("O'Brien")));
    auswahl = "a'b";
    alleRufen();
    EXPECT_THAT(zeilen(), ElementsAre(zeile("O'Brien")));
}

TEST_F(AchsendateiTest, EinApostrophDessenErsteZeileKeinenNamenHatAendertNichts) {
    legen({{{"dwXPos", "ry"}}});
    const std::string vorher = inhalt();
    auswahl = "'";
    alleRufen();
    EXPECT_EQ(achsen.AchsenSchluessel(), (Namen{"ry", "", "", "", "", ""}));
    EXPECT_EQ(inhalt(), vorher);
}

// ---- AchsenUebernehmen

TEST_F(AchsendateiTest, DieAuswahlDesFormularsWirdZuNamen) {
    legen({zeile("S", GEDREHT, "4")});
    achsen.AchsenUebernehmen({{{"Links", "Links/Rechts"},
                               {"Links", "Oben/Unten"},
                               {"Z-Achse", "Links/Rechts"},
                               {"Rechts", "Oben/Unten"},
                               {"Rechts", "Links/Rechts"},
                               {"Schubregler", "Oben/Unten"}}});
    const Namen erwartet{"lx", "ly", "Z1", "ry", "rx", "Z2"};
    EXPECT_EQ(achsen.AchsenSchluessel(), erwartet);
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S", erwartet, "4"))); // keeps the slider text
}

TEST_F(AchsendateiTest, EineUnvollstaendigeAuswahlGibtEinenUnvollstaendigenNamen) {
    legen({zeile("S", GEDREHT)});
    achsen.AchsenUebernehmen({{{"Links", ""},
                               {"Rechts", "oben/unten"},
                               {"", "Oben/Unten"},
                               {"links", "Links/Rechts"},
                               {"Schubregler ", ""},
                               {"Z-Achse", ""}}});
    const Namen erwartet{"l", "r", "", "", "", "Z1"};
    EXPECT_EQ(achsen.AchsenSchluessel(), erwartet);
    EXPECT_THAT(zeilen(), ElementsAre(zeile("S", erwartet)));
}

TEST_F(AchsendateiTest, OhneZeileEntstehtEineMitDerAuswahl) {
    legen({zeile("A", GEDREHT, "1")});
    EXPECT_TRUE(achsen.AchsenUebernehmen({{{"Z-Achse", ""}, {}, {}, {}, {}, {}}}));
    const Namen erwartet{"Z1", "", "", "", "", ""};
    EXPECT_EQ(achsen.AchsenSchluessel(), erwartet);
    EXPECT_THAT(zeilen(), ElementsAre(zeile("A", GEDREHT, "1"), zeile("S", erwartet, "")));
}

TEST_F(AchsendateiTest, EineAuswahlOhneZeileDieNichtInDieDateiPasstGiltTrotzdem) {
    legen({zeile("A")});
    const auto vorher = inhalt();
    auswahl = std::string(101, 'n');
    EXPECT_FALSE(achsen.AchsenUebernehmen({{{"Z-Achse", ""}, {}, {}, {}, {}, {}}}));
    EXPECT_EQ(achsen.AchsenSchluessel(), (Namen{"Z1", "", "", "", "", ""}));
    EXPECT_EQ(inhalt(), vorher);
}

TEST_F(AchsendateiTest, OhneDateiGiltDieZuordnungBisZumNaechstenLaden) {
    achsen.AchsenUebernehmen({{{"Z-Achse", ""}, {}, {}, {}, {}, {}}});
    EXPECT_EQ(achsen.AchsenSchluessel(), (Namen{"Z1", "", "", "", "", ""}));
    EXPECT_THAT(namen(), IsEmpty());
}

// ---- two copies of the program

TEST_F(AchsendateiTest, ZweiDieZugleichSchreibenVerlierenNichtsAneinander) {
    constexpr int SCHREIBUNGEN = 150;
    legen({});
    std::vector<pid_t> kinder;
    for (const std::string kopie : {"A", "B"})
        kinder.push_back(imKind([&] {
            for (int i = 0; i < SCHREIBUNGEN; ++i) {
                auswahl = kopie + std::to_string(i);
                // A busy machine may let the other one have the lock for longer than a save waits: that is
                // told, and nothing is lost.
                int versuche = 20;
                while (!achsen.GamepadSchreiben("1/0-0-0-"))
                    if (--versuche == 0)
                        _exit(1);
            }
        }));
    for (const pid_t kind : kinder)
        EXPECT_FALSE(wurdeGetoetet(kind));
    std::set<std::string> schemata;
    for (const auto& eine : zeilen())
        schemata.insert(eine.at("Schema"));
    EXPECT_THAT(schemata, SizeIs(2 * SCHREIBUNGEN));
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(AchsendateiTest, WerDieDateiBehaeltLaesstJedesSchreibenScheiternUndLesenZu) {
    legen({zeile("S", GEDREHT)});
    const auto vorher = inhalt();
    const int ordnerkennung = open(ordner.pfad().c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(ordnerkennung, LOCK_EX | LOCK_NB), 0);
    achsen.AchsenLaden();
    EXPECT_EQ(achsen.AchsenSchluessel(), GEDREHT);
    EXPECT_FALSE(achsen.GamepadSchreiben("1/0-0-0-"));
    EXPECT_FALSE(achsen.GamepadLoeschen());
    EXPECT_EQ(inhalt(), vorher);
    close(ordnerkennung);
    EXPECT_TRUE(achsen.GamepadSchreiben("1/0-0-0-"));
    EXPECT_TRUE(achsen.GamepadLoeschen());
    EXPECT_THAT(zeilen(), IsEmpty());
}

TEST_F(AchsendateiTest, WerDenOrdnerBehaeltMachtDieDateiAllein) {
    const int ordnerkennung = open(ordner.pfad().c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(ordnerkennung, LOCK_EX | LOCK_NB), 0);
    achsen.GamepadAnlegen();
    EXPECT_EQ(achsen.AchsenSchluessel(), GRUNDBELEGUNG);
    EXPECT_THAT(namen(), IsEmpty());
    close(ordnerkennung);
    achsen.GamepadAnlegen();
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(AchsendateiTest, UeberEinenVerweisWirdGesperrtWoDieDateiLiegt) {
    fs::create_directory(ordner.pfad() / "fern");
    legen({zeile("S", GEDREHT)});
    fs::rename(pfad, ordner.pfad() / "fern" / "Gamepad.xml");
    fs::create_symlink("fern/Gamepad.xml", pfad);
    const int ordnerkennung = open((ordner.pfad() / "fern").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(ordnerkennung, LOCK_EX | LOCK_NB), 0);
    EXPECT_FALSE(achsen.GamepadSchreiben("1/0-0-0-"));
    close(ordnerkennung);
    EXPECT_TRUE(achsen.GamepadSchreiben("1/0-0-0-"));
}

// ---- death by SIGKILL

TEST_F(AchsendateiTest, ZuJederZeitStehtDerStandVorOderNachEinemSchreibenInDerDatei) {
    const auto text = [](int zahl) { return std::to_string(zahl) + '/' + std::string(900, 'x'); };
    std::vector<Gamepadzeile> andere;
    for (int i = 0; i < 50; ++i)
        andere.push_back(zeile("Löwe " + std::to_string(i), GEDREHT, std::string(1000, 'y')));
    const auto mitEigener = [&](int zahl) {
        auto alle = andere;
        alle.insert(alle.begin() + 25, zeile("S", VERTAUSCHT, text(zahl)));
        return alle;
    };
    legen(mitEigener(0));
    std::mt19937 zufall(20240229);
    int mitten = 0;
    int naechste = 1;
    for (int i = 0; i < TOETUNGEN; ++i) {
        Schreiber schreiber(naechste, [&] {
            achsen.AchsenLaden();
            return [&](int zahl) { achsen.GamepadSchreiben(text(zahl)); };
        });
        schreiber.abwarten(static_cast<int>(zufall() % 3));
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % 5000));
        const Fortschritt bis = schreiber.toeten();

        EXPECT_LE(namen().size(), 2U) << "the file and at most what the last death left";
        achsen.AchsenLaden();
        const int zahl = std::stoi(achsen.SchubreglerText());
        ASSERT_EQ(zeilen(), mitEigener(zahl));
        EXPECT_GE(zahl, bis.fertig);
        EXPECT_LE(zahl, bis.begonnen);
        mitten += bis.begonnen != bis.fertig;
        naechste = zahl + 1;
    }
    EXPECT_GT(mitten, TOETUNGEN / 2); // most deaths came in the midst of work
}
