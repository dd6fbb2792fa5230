#include "tests/spur/Szenario.h"

#include <gtest/gtest.h>
#include <tuple>

namespace {

using Art = Spureingabe::Art;
using Texte = std::vector<std::string>;
using Zeile = std::tuple<long, Art, std::uint32_t, std::uint32_t>;

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
        szenarioLesen(text);
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

} // namespace
