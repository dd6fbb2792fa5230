// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/spur/Szenario.h"

#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>
#include <tuple>

namespace {

using Art = Spureingabe::Art;
using Texte = std::vector<std::string>;
using Zeile = std::tuple<long, Art, std::uint32_t, std::uint32_t>;

/// Of a text that tells one scenario.
Szenario szenarioLesen(const std::string& text) {
    const auto alle = szenarienLesen(text);
    EXPECT_EQ(alle.size(), 1U);
    EXPECT_EQ(alle.front().variante, "");
    return alle.front();
}
std::vector<Zeile> eingaben(const Szenario& szenario) {
    std::vector<Zeile> alle;
    for (const auto& eine : szenario.eingaben)
        alle.emplace_back(eine.zeit.count(), eine.art, eine.index, eine.wert);
    return alle;
}
Texte erwartet(const Szenario& szenario) {
    Texte alle;
    for (const auto& eines : szenario.erwartet)
        alle.push_back(std::to_string(eines.zeit.count()) + " " + eines.text);
    return alle;
}
/// What the reader has to say about a text; "" if it takes it.
std::string einwand(const std::string& text) {
    try {
        szenarienLesen(text);
    } catch (const Szenariofehler& fehler) {
        return fehler.what();
    }
    return "";
}

constexpr const char* BEISPIEL = R"(# a comment
sql INSERT INTO tblTastatur (Schemaname, btn3) VALUES ('S', '1,65,0-0-0');
sql INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');
achsen lx ly rx ry Z1 Z2
schub 3/1-1-2-1(65,50,)/1-2-2-0(66,,)
0 start
98 buttons 4
98 pov 4500
98 achse 0 10000
198 pad weg
298 pad da
400 regler 12 30
600 stop
700 ende
=
100 +65
101 -65
)";

TEST(Szenario, LiestAlleArtenVonZeilen) {
    const auto szenario = szenarioLesen(BEISPIEL);
    EXPECT_EQ(szenario.sql, (Texte{"INSERT INTO tblTastatur (Schemaname, btn3) VALUES ('S', '1,65,0-0-0');",
                                   "INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');"}));
    EXPECT_EQ(Texte(szenario.achsen.begin(), szenario.achsen.end()),
              (Texte{"lx", "ly", "rx", "ry", "Z1", "Z2"}));
    EXPECT_EQ(szenario.schub, "3/1-1-2-1(65,50,)/1-2-2-0(66,,)");
    EXPECT_EQ(szenario.fehler, std::nullopt);
    EXPECT_EQ(eingaben(szenario), (std::vector<Zeile>{{0, Art::Start, 0, 0},
                                                      {98, Art::Tasten, 0, 4},
                                                      {98, Art::Pov, 0, 4500},
                                                      {98, Art::Achse, 0, 10000},
                                                      {198, Art::PadWeg, 0, 0},
                                                      {298, Art::PadDa, 0, 0},
                                                      {400, Art::Regler, 12, 30},
                                                      {600, Art::Stop, 0, 0},
                                                      {700, Art::Ende, 0, 0}}));
    EXPECT_EQ(erwartet(szenario), (Texte{"100 +65", "101 -65"}));
}

TEST(Szenario, AchsenUndSchubKoennenFehlen) {
    const auto szenario = szenarioLesen("0 ende\n=\n");
    EXPECT_EQ(Texte(szenario.achsen.begin(), szenario.achsen.end()),
              (Texte{"lx", "ly", "rx", "ry", "Z1", "Z2"}));
    EXPECT_EQ(szenario.schub, "");
    EXPECT_EQ(erwartet(szenario), Texte{});
}

TEST(Szenario, LiestAchsenInAndererFolgeFehlerUndKnopf) {
    const auto szenario = szenarioLesen("achsen Z2 Z1 ry rx ly lx\nfehler 13\n5 knopf 1\n9 ende\n=\n");
    EXPECT_EQ(Texte(szenario.achsen.begin(), szenario.achsen.end()),
              (Texte{"Z2", "Z1", "ry", "rx", "ly", "lx"}));
    EXPECT_EQ(szenario.fehler, 13);
    EXPECT_EQ(eingaben(szenario), (std::vector<Zeile>{{5, Art::Knopf, 1, 0}, {9, Art::Ende, 0, 0}}));
}

TEST(Szenario, LiestZeilenMitWagenruecklaufWieOhne) {
    std::string mitRuecklauf;
    for (const char zeichen : std::string(BEISPIEL))
        mitRuecklauf += zeichen == '\n' ? std::string("\r\n") : std::string(1, zeichen);
    const auto mit = szenarioLesen(mitRuecklauf);
    const auto ohne = szenarioLesen(BEISPIEL);
    EXPECT_EQ(mit.sql, ohne.sql);
    EXPECT_EQ(mit.schub, ohne.schub);
    EXPECT_EQ(eingaben(mit), eingaben(ohne));
    EXPECT_EQ(erwartet(mit), erwartet(ohne));
}

TEST(Szenario, MehrereEreignisseEinerZeitStehenInEinerZeile) {
    EXPECT_EQ(erwartet(szenarioLesen("0 ende\n=\n100 +65 +66\n100 m(3,-2) W-4\n105 -65")),
              (Texte{"100 +65", "100 +66", "100 m(3,-2)", "100 W-4", "105 -65"}));
}

TEST(Szenario, OrdnetEingabenNachDerZeitUndSonstWieSieStehen) {
    EXPECT_EQ(
        eingaben(szenarioLesen("20 ende\n10 pov 0\n5 start\n10 buttons 1\n=\n")),
        (std::vector<Zeile>{
            {5, Art::Start, 0, 0}, {10, Art::Pov, 0, 0}, {10, Art::Tasten, 0, 1}, {20, Art::Ende, 0, 0}}));
}

TEST(Szenario, KommentareLeerzeilenUndEinzugZaehlenNicht) {
    EXPECT_EQ(
        eingaben(szenarioLesen("# 1 start\n\n   \t\n  # 2 start\n \t 3   start \n4 ende\n=\n# 5 +65\n")),
        (std::vector<Zeile>{{3, Art::Start, 0, 0}, {4, Art::Ende, 0, 0}}));
}

TEST(Szenario, NimmtDieGrenzenDerWerte) {
    EXPECT_EQ(eingaben(szenarioLesen("1 buttons 4294967295\n2 pov 4294967295\n3 achse 5 65535\n4 regler 0 0\n"
                                     "5 regler 12 0\n6 knopf 0\n7 knopf 1\n8 ende\n=\n")),
              (std::vector<Zeile>{{1, Art::Tasten, 0, 4294967295},
                                  {2, Art::Pov, 0, 4294967295},
                                  {3, Art::Achse, 5, 65535},
                                  {4, Art::Regler, 0, 0},
                                  {5, Art::Regler, 12, 0},
                                  {6, Art::Knopf, 0, 0},
                                  {7, Art::Knopf, 1, 0},
                                  {8, Art::Ende, 0, 0}}));
}

struct Einwand {
    const char* text;
    const char* einwand;
};

TEST(Szenario, NenntDieZeileDieEsNichtLesenKann) {
    for (const auto& fall :
         {Einwand{"0 start\n# x\n\n5 laufen\n0 ende\n=\n", "line 4: unknown input \"laufen\""},
          Einwand{"x start\n0 ende\n=\n", "line 1: \"x\" is no number"},
          Einwand{"-5 start\n0 ende\n=\n", "line 1: \"-5\" is no number"},
          Einwand{"1.5 start\n0 ende\n=\n", "line 1: \"1.5\" is no number"},
          Einwand{"4294967296 start\n0 ende\n=\n", "line 1: \"4294967296\" is no number"},
          Einwand{"\n5\n0 ende\n=\n", "line 2: a word is missing"},
          Einwand{"5 buttons\n0 ende\n=\n", "line 1: a word is missing"},
          Einwand{"5 buttons x\n0 ende\n=\n", "line 1: \"x\" is no number"},
          Einwand{"5 buttons 4294967296\n0 ende\n=\n", "line 1: \"4294967296\" is no number"},
          Einwand{"5 start 1\n0 ende\n=\n", "line 1: \"1\" is too much"},
          Einwand{"5 pad\n0 ende\n=\n", "line 1: a word is missing"},
          Einwand{"5 pad hier\n0 ende\n=\n", "line 1: unknown input \"pad hier\""},
          Einwand{"5 achse 6 0\n0 ende\n=\n", "line 1: an axis is 0 to 5, its value 0 to 65535"},
          Einwand{"5 achse 0 65536\n0 ende\n=\n", "line 1: an axis is 0 to 5, its value 0 to 65535"},
          Einwand{"5 regler 13 0\n0 ende\n=\n", "line 1: a scroll bar is 0 to 12"},
          Einwand{"5 knopf 2\n0 ende\n=\n", "line 1: a button is 0 or 1"},
          Einwand{"achsen lx ly rx ry Z1\n0 ende\n=\n", "line 1: a word is missing"},
          Einwand{"achsen lx ly rx ry Z1 Z2 Z3\n0 ende\n=\n", "line 1: \"Z3\" is too much"},
          Einwand{"fehler dreizehn\n0 ende\n=\n", "line 1: \"dreizehn\" is no number"},
          Einwand{"sticks\n0 ende\n=\n", "line 1: a word is missing"},
          Einwand{"sticks rechts\n0 ende\n=\n", "line 1: unknown sticks \"rechts\""},
          Einwand{"sticks beide links\n0 ende\n=\n", "line 1: \"links\" is too much"},
          Einwand{"sticks beide\nsticks beide\n", "line 2: \"sticks\" or \"auf\" stands already"},
          Einwand{"auf lx\nsticks beide\n", "line 2: \"sticks\" or \"auf\" stands already"},
          Einwand{"auf\n0 ende\n=\n", "line 1: a word is missing"},
          Einwand{"auf lx Z1\n0 ende\n=\n", "line 1: unknown axis \"Z1\""},
          Einwand{"auf lx ly lx\n0 ende\n=\n", "line 1: the axis \"lx\" stands twice"},
          Einwand{"grundzeilen S\n0 ende\n=\n", "line 1: \"S\" is too much"},
          Einwand{"0 ende\n=\n5-9 +65\n", "line 3: a span of time without \"sticks\" or \"auf\""},
          Einwand{"auf lx\n=\n9-8 +65\n", "line 3: a span of time that ends before it begins"},
          Einwand{"auf lx\n=\n0-60001 +65\n", "line 3: a span of more than a minute"},
          Einwand{"auf lx\n=\n5- +65\n", "line 3: \"\" is no number"},
          Einwand{"auf lx\n=\n5-9\n", "line 3: a word is missing"},
          Einwand{"auf lx\n=\n5-9 +65 +66\n", "line 3: \"+66\" is too much"},
          Einwand{"0 ende\n= 5\n", "line 2: \"5\" is too much"},
          Einwand{"0 ende\n=\n100\n", "line 3: a word is missing"},
          Einwand{"0 ende\n=\n+65 100\n", "line 3: \"+65\" is no number"}})
        EXPECT_EQ(einwand(fall.text), fall.einwand) << fall.text;
}

TEST(Szenario, VerlangtDenTrenner) {
    EXPECT_EQ(einwand(""), "the line \"=\" is missing");
    EXPECT_EQ(einwand("0 ende\n"), "the line \"=\" is missing");
}

TEST(Szenario, VerlangtDasEndeAlsLetztes) {
    EXPECT_EQ(einwand("0 start\n=\n"), "") << "without an end the last input is it";
    EXPECT_EQ(einwand("0 ende\n0 start\n=\n"), "\"ende\" must be the last input");
    EXPECT_EQ(einwand("5 ende\n6 ende\n=\n"), "\"ende\" must be the last input");
}

// What the variants make of a trace.

using Bewegungen = std::vector<std::tuple<std::string, std::vector<Zeile>>>; ///< by variant

Bewegungen bewegungen(const std::string& text) {
    Bewegungen alle;
    for (const auto& szenario : szenarienLesen(text))
        alle.emplace_back(szenario.variante, eingaben(szenario));
    return alle;
}
std::vector<std::tuple<std::string, Texte>> erwartungen(const std::string& text) {
    std::vector<std::tuple<std::string, Texte>> alle;
    for (const auto& szenario : szenarienLesen(text))
        alle.emplace_back(szenario.variante, erwartet(szenario));
    return alle;
}
std::vector<Zeile> regler(std::initializer_list<std::uint32_t> nummern) {
    std::vector<Zeile> alle{{1, Art::Achse, 0, 5}};
    for (const auto nummer : nummern)
        alle.emplace_back(2, Art::Regler, nummer, 7);
    return alle;
}

/// An empty database after the statements of a scenario.
class Gelegt {
public:
    explicit Gelegt(const Szenario& szenario) {
        RoheVerbindung verbindung(datenbank_.pfad());
        for (const auto* anweisungen : {&szenario.sql, &szenario.umbau})
            for (const auto& anweisung : *anweisungen)
                verbindung.sql(anweisung);
    }
    Tabellenbild zeilen(const std::string& abfrage) const { return datenbank_.zeilen(abfrage); }

private:
    Testdatenbank datenbank_;
};
Szenario variante(const std::string& text, const std::string& name) {
    for (const auto& szenario : szenarienLesen(text))
        if (szenario.variante == name)
            return szenario;
    ADD_FAILURE() << "no variant " << name;
    return {};
}

TEST(SzenarioBeideSticks, TauschtDieAchsen) {
    EXPECT_EQ(
        bewegungen("sticks beide\n1 achse 0 10\n2 achse 1 20\n3 achse 2 30\n4 achse 3 40\n5 achse 4 50\n"
                   "6 achse 5 60\n7 buttons 4\n=\n"),
        (Bewegungen{{"links",
                     {{1, Art::Achse, 0, 10},
                      {2, Art::Achse, 1, 20},
                      {3, Art::Achse, 2, 30},
                      {4, Art::Achse, 3, 40},
                      {5, Art::Achse, 4, 50},
                      {6, Art::Achse, 5, 60},
                      {7, Art::Tasten, 0, 4}}},
                    {"rechts",
                     {{1, Art::Achse, 2, 10},
                      {2, Art::Achse, 3, 20},
                      {3, Art::Achse, 0, 30},
                      {4, Art::Achse, 1, 40},
                      {5, Art::Achse, 4, 50},
                      {6, Art::Achse, 5, 60},
                      {7, Art::Tasten, 0, 4}}}}));
}

TEST(SzenarioBeideSticks, FindetDieAchseNachIhremNamen) {
    EXPECT_EQ(bewegungen("1 achse 5 10\n2 achse 0 20\nachsen Z1 ry ly Z2 rx lx\nsticks beide\n=\n"),
              (Bewegungen{{"links", {{1, Art::Achse, 5, 10}, {2, Art::Achse, 0, 20}}},
                          {"rechts", {{1, Art::Achse, 4, 10}, {2, Art::Achse, 0, 20}}}}));
    EXPECT_EQ(einwand("sticks beide\nachsen lx ly Z1 ry Z1 Z2\n1 achse 0 10\n=\n"),
              "rechts: no raw axis is \"rx\"");
    EXPECT_EQ(einwand("auf ly\nachsen lx Z1 rx ry Z1 Z2\n1 achse 0 10\n=\n"), "ly: no raw axis is \"ly\"");
}

TEST(SzenarioBeideSticks, TauschtDieReglerNachIhrerAchse) {
    const auto text = [](const std::string& nummer) {
        return "sticks beide\n1 achse 0 5\n2 regler " + nummer + " 7\n=\n";
    };
    const std::vector<std::vector<Zeile>> RECHTE{
        regler({8}), regler({9}), regler({6}), regler({7}), regler({11, 10}), regler({10}), regler({2}),
        regler({3}), regler({0}), regler({1}), regler({5}), regler({4}),      regler({12})};
    for (std::uint32_t nummer = 0; nummer < RECHTE.size(); ++nummer) {
        auto rechts = RECHTE[nummer];
        std::get<2>(rechts.front()) = 2;
        EXPECT_EQ(bewegungen(text(std::to_string(nummer))),
                  (Bewegungen{{"links", regler({nummer})}, {"rechts", rechts}}))
            << nummer;
    }
}

TEST(SzenarioBeideSticks, TauschtLinienUndAktionen) {
    const std::string text =
        "sticks beide\n"
        "sql INSERT INTO tblStick (Schemaname, \"index\", Oben2) VALUES ('S', 7, 'abc');\n"
        "sql INSERT INTO tblStickR (Schemaname, \"index\", Links) VALUES ('S', 20, 3);\n"
        "sql INSERT INTO tblStickAktion VALUES ('S', 1, 2, 3, 4, 5, 'eigene');\n"
        "sql INSERT INTO tblStickAktion VALUES ('S', 1, 2, 3, 4, 5, 'spaetere');\n"
        "sql INSERT INTO tblStickAktionR VALUES ('S', 0, 0, 0, 0, 0, 'andere');\n=\n";
    const std::string linien = "SELECT \"index\", Links, Oben2 FROM ";
    const std::string aktionen = "SELECT Umschalt, Links, Rechts, Oben, Unten, Aktion FROM ";
    const Gelegt links(variante(text, "links"));
    EXPECT_EQ(links.zeilen(linien + "tblStick"), (Tabellenbild{{"7", "0", "abc"}}));
    EXPECT_EQ(links.zeilen(linien + "tblStickR"), (Tabellenbild{{"20", "3", "0"}}));
    const Gelegt rechts(variante(text, "rechts"));
    EXPECT_EQ(rechts.zeilen(linien + "tblStickR"), (Tabellenbild{{"7", "0", "abc"}}));
    EXPECT_EQ(rechts.zeilen(linien + "tblStick"), (Tabellenbild{{"20", "3", "0"}}));
    EXPECT_EQ(rechts.zeilen(aktionen + "tblStickAktionR"),
              (Tabellenbild{{"1", "2", "3", "4", "5", "eigene"}, {"1", "2", "3", "4", "5", "spaetere"}}));
    EXPECT_EQ(rechts.zeilen(aktionen + "tblStickAktion"),
              (Tabellenbild{{"0", "0", "0", "0", "0", "andere"}}));
}

TEST(SzenarioBeideSticks, TauschtDieGlaettungSpalteFuerSpalteDerAchse) {
    // ly before lx on the left, rx before ry on the right.
    const std::string text = "sticks beide\nsql INSERT INTO Sensible VALUES ('S', 1, 2, 3, 4, 5, 6, 30);\n"
                             "sql INSERT INTO SensibleR VALUES ('S', 11, 12, 13, 14, 15, 16);\n=\n";
    const Gelegt links(variante(text, "links"));
    EXPECT_EQ(links.zeilen("SELECT * FROM Sensible"),
              (Tabellenbild{{"S", "1", "2", "3", "4", "5", "6", "30"}}));
    const Gelegt rechts(variante(text, "rechts"));
    EXPECT_EQ(rechts.zeilen("SELECT * FROM SensibleR"), (Tabellenbild{{"S", "2", "1", "4", "3", "6", "5"}}));
    EXPECT_EQ(rechts.zeilen("SELECT * FROM Sensible"),
              (Tabellenbild{{"S", "12", "11", "14", "13", "16", "15", "30"}}));
}

TEST(SzenarioBeideSticks, DerWeitereRandGiltAuchOben) {
    const Gelegt rechts(
        variante("sticks beide\nsql INSERT INTO Sensible VALUES ('S', 1, 1, 0, 0, 9, 2, 0);\n=\n", "rechts"));
    EXPECT_EQ(rechts.zeilen("SELECT Rand_rx, Rand_ry FROM SensibleR"), (Tabellenbild{{"9", "9"}}));
}

TEST(SzenarioBeideSticks, LaesstWasHerauskommenMuss) {
    const Texte alle{"5 m(1,-2)", "5 abs(3,4)", "6 +65", "7 LD"};
    EXPECT_EQ(erwartungen("sticks beide\n1 achse 0 5\n=\n5 m(1,-2) abs(3,4)\n6 +65\n7 LD\n"),
              (std::vector<std::tuple<std::string, Texte>>{{"links", alle}, {"rechts", alle}}));
}

TEST(SzenarioBeideSticks, IstVomLinkenErzaehlt) {
    const std::string einspruch = "what is played on several sticks or axes is told of the left stick";
    for (const std::string wort : {"sticks beide\n", "auf lx ly\n"}) {
        EXPECT_EQ(einwand(wort + "1 achse 2 5\nsql DELETE FROM tblStickR;\n=\n"), einspruch);
        EXPECT_EQ(einwand(wort + "grundzeilen\n1 achse 4 5\n2 buttons 1\n=\n"), einspruch);
        EXPECT_EQ(einwand(wort + "achsen rx ry lx ly Z1 Z2\n1 achse 0 5\n=\n"), einspruch);
        for (const std::string linkes :
             {"1 achse 0 5\n", "1 achse 1 5\n", "sql DELETE FROM tblStick;\n", "sql DELETE FROM Sensible;\n",
              "sql DELETE FROM tblStickAktion;\n", "achsen rx ry lx ly Z1 Z2\n1 achse 2 5\n"})
            EXPECT_EQ(einwand(wort + "sql DELETE FROM tblStickR;\n2 achse 3 5\n" + linkes + "=\n"), "")
                << linkes;
    }
}

TEST(SzenarioAuf, SpieltJedeGenannteAchse) {
    EXPECT_EQ(bewegungen("auf ry ly\n1 achse 0 10\n2 achse 1 20\n=\n"),
              (Bewegungen{{"ry", {{1, Art::Achse, 3, 10}, {2, Art::Achse, 2, 20}}},
                          {"ly", {{1, Art::Achse, 1, 10}, {2, Art::Achse, 0, 20}}}}));
    EXPECT_EQ(bewegungen("auf lx rx\n1 achse 0 10\n2 achse 1 20\n3 achse 3 30\n=\n"),
              (Bewegungen{{"lx", {{1, Art::Achse, 0, 10}, {2, Art::Achse, 1, 20}, {3, Art::Achse, 3, 30}}},
                          {"rx", {{1, Art::Achse, 2, 10}, {2, Art::Achse, 3, 20}, {3, Art::Achse, 1, 30}}}}));
}

TEST(SzenarioAuf, DieYAchseLaesstDenAnderenStick) {
    EXPECT_EQ(
        bewegungen("auf ly\n1 achse 0 10\n2 achse 2 20\n3 achse 3 30\n4 regler 6 1\n5 regler 11 2\n=\n"),
        (Bewegungen{{"ly",
                     {{1, Art::Achse, 1, 10},
                      {2, Art::Achse, 2, 20},
                      {3, Art::Achse, 3, 30},
                      {4, Art::Regler, 6, 1},
                      {5, Art::Regler, 11, 2}}}}));
}

TEST(SzenarioAuf, BewegtDieReglerDerAchse) {
    EXPECT_EQ(
        bewegungen("auf ly rx ry\n1 regler 2 7\n1 regler 3 8\n1 regler 5 9\n2 achse 0 1\n=\n"),
        (Bewegungen{
            {"ly",
             {{1, Art::Regler, 0, 7}, {1, Art::Regler, 1, 8}, {1, Art::Regler, 4, 9}, {2, Art::Achse, 1, 1}}},
            {"rx",
             {{1, Art::Regler, 6, 7},
              {1, Art::Regler, 7, 8},
              {1, Art::Regler, 10, 9},
              {2, Art::Achse, 2, 1}}},
            {"ry",
             {{1, Art::Regler, 8, 7},
              {1, Art::Regler, 9, 8},
              {1, Art::Regler, 11, 9},
              {1, Art::Regler, 10, 9},
              {2, Art::Achse, 3, 1}}}}));
}

TEST(SzenarioAuf, TauschtXUndYInDerDatenbank) {
    const std::string text =
        "auf lx ly rx ry\n"
        "sql INSERT INTO tblStick VALUES ('S', 1, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12);\n"
        "sql INSERT INTO tblStick (Schemaname, \"index\", Links) VALUES ('S', 20, 3);\n"
        "sql INSERT INTO tblStickAktion VALUES ('S', 0, 21, 22, 23, 24, '3');\n"
        "sql INSERT INTO Sensible VALUES ('S', 1, 10, 2, 20, 3, 30, 5);\n=\n";
    const Gelegt ly(variante(text, "ly"));
    const Tabellenbild linien{{"S", "1", "3", "4", "1", "2", "7", "8", "5", "6", "11", "12", "9", "10"},
                              {"S", "20", "3", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0"}};
    EXPECT_EQ(ly.zeilen("SELECT * FROM tblStick"), linien);
    EXPECT_EQ(ly.zeilen("SELECT * FROM tblStickAktion"),
              (Tabellenbild{{"S", "0", "23", "24", "21", "22", "3"}}));
    EXPECT_EQ(ly.zeilen("SELECT * FROM Sensible"),
              (Tabellenbild{{"S", "10", "1", "20", "2", "30", "3", "5"}}));
    const Gelegt rx(variante(text, "rx"));
    EXPECT_EQ(rx.zeilen("SELECT * FROM SensibleR"), (Tabellenbild{{"S", "10", "1", "20", "2", "30", "3"}}));
    const Gelegt ry(variante(text, "ry"));
    EXPECT_EQ(ry.zeilen("SELECT * FROM tblStickR"), linien);
    EXPECT_EQ(ry.zeilen("SELECT * FROM tblStickAktionR"),
              (Tabellenbild{{"S", "0", "23", "24", "21", "22", "3"}}));
    EXPECT_EQ(ry.zeilen("SELECT * FROM SensibleR"), (Tabellenbild{{"S", "1", "10", "2", "20", "30", "30"}}));
}

TEST(SzenarioAuf, TauschtDieKoordinatenDessenWasHerauskommenMuss) {
    EXPECT_EQ(erwartungen("auf lx ly rx ry\n1 achse 0 5\n=\n5 m(1,-2) abs(3,4) +65\n"),
              (std::vector<std::tuple<std::string, Texte>>{{"lx", {"5 m(1,-2)", "5 abs(3,4)", "5 +65"}},
                                                           {"ly", {"5 m(-2,1)", "5 abs(4,3)", "5 +65"}},
                                                           {"rx", {"5 m(1,-2)", "5 abs(3,4)", "5 +65"}},
                                                           {"ry", {"5 m(-2,1)", "5 abs(4,3)", "5 +65"}}}));
}

TEST(SzenarioZeitspanne, HatDieZeitenVonImFeldBindenDesSticks) {
    EXPECT_EQ(
        erwartungen("auf lx ry\n1 achse 0 5\n=\n140-142 abs(1,2)\n143-145 abs(3,2)\n150-151 abs(4,2)\n"),
        (std::vector<std::tuple<std::string, Texte>>{
            {"lx", {"140 abs(1,2)", "142 abs(1,2)", "144 abs(3,2)", "150 abs(4,2)"}},
            {"ry",
             {"140 abs(2,1)", "141 abs(2,1)", "142 abs(2,1)", "143 abs(2,3)", "144 abs(2,3)", "145 abs(2,3)",
              "150 abs(2,4)", "151 abs(2,4)"}}}));
    EXPECT_EQ(
        erwartungen("sticks beide\n1 achse 0 5\n=\n5-5 abs(1,2)\n"),
        (std::vector<std::tuple<std::string, Texte>>{{"links", {"5 abs(1,2)"}}, {"rechts", {"5 abs(1,2)"}}}));
}

TEST(SzenarioGrundzeilen, LegenDieZeilenEinesSchemas) {
    const Gelegt gelegt(szenarioLesen("grundzeilen\n0 ende\n=\n"));
    const std::string zwoelf =
        "20000, 45000, 20000, 45000, 20000, 45000, 20000, 45000, 20000, 45000, 20000, 45000";
    for (const std::string tabelle : {"tblStick", "tblStickR"}) {
        EXPECT_EQ(gelegt.zeilen("SELECT group_concat(\"index\") FROM (SELECT \"index\" FROM " + tabelle +
                                " ORDER BY \"index\")"),
                  (Tabellenbild{{"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20"}}));
        EXPECT_EQ(gelegt.zeilen("SELECT count(*) FROM " + tabelle +
                                " WHERE (Links, Rechts, Oben, Unten, Links2, "
                                "Rechts2, Oben2, Unten2, Links3, Rechts3, Oben3, Unten3) = (" +
                                zwoelf + ") AND \"index\" = 1 AND Schemaname = 'S'"),
                  (Tabellenbild{{"1"}}));
        EXPECT_EQ(
            gelegt.zeilen("SELECT sum(Links + Rechts + Oben + Unten + Links2 + Rechts2 + Oben2 + Unten2 + "
                          "Links3 + Rechts3 + Oben3 + Unten3) FROM " +
                          tabelle + " WHERE \"index\" > 1"),
            (Tabellenbild{{"0"}}));
    }
    EXPECT_EQ(gelegt.zeilen("SELECT * FROM Sensible"),
              (Tabellenbild{{"S", "1", "1", "0", "0", "0", "0", "0"}}));
    EXPECT_EQ(gelegt.zeilen("SELECT * FROM SensibleR"), (Tabellenbild{{"S", "1", "1", "0", "0", "0", "0"}}));
    EXPECT_EQ(gelegt.zeilen("SELECT Schemaname, btn3, btn1012 FROM tblTastatur"),
              (Tabellenbild{{"S", "10,0,0-0-0", "10,0,0-0-0"}}));
    EXPECT_EQ(gelegt.zeilen("SELECT Schemaname, Oben, Links3 FROM tblSteuerKreuz"),
              (Tabellenbild{{"S", "10,0,0-0-0", "10,0,0-0-0"}}));
}

TEST(SzenarioGrundzeilen, WasFolgtKannSieAendern) {
    const Gelegt gelegt(szenarioLesen("grundzeilen\nsql UPDATE tblTastatur SET btn3 = '1,65,0-0-0';\n"
                                      "sql DELETE FROM SensibleR;\n0 ende\n=\n"));
    EXPECT_EQ(gelegt.zeilen("SELECT btn3 FROM tblTastatur"), (Tabellenbild{{"1,65,0-0-0"}}));
    EXPECT_EQ(gelegt.zeilen("SELECT * FROM SensibleR"), Tabellenbild{});
}

TEST(Szenario, HatGrenzen) {
    EXPECT_EQ(einwand("86400000 ende\n=\n"), "");
    EXPECT_EQ(einwand("86400001 ende\n=\n"), "line 1: \"86400001\" is more than a day");
    EXPECT_EQ(einwand("0 spaet 86400001\n=\n"), "line 1: \"86400001\" is more than a day");
    std::string viele = "0 ende\n=\n";
    for (int i = 0; i < 5; ++i)
        viele += "1 m(1,0)*1000000\n";
    EXPECT_EQ(einwand(viele + "1 +65\n"), "line 8: more than five million events");
    EXPECT_EQ(einwand("=\n1 " + std::string(40, 'x') + "\n"), "");
    EXPECT_EQ(einwand("=\n1 " + std::string(41, 'x') + "\n"), "line 2: no event is as long");
    EXPECT_EQ(einwand("genau x\n=\n"), "line 1: \"x\" is no number");
}

} // namespace
