// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in real time: sticks and slider, from the pad's axes to keys, pointer and wheel at the
// client.
//
// A stick that is let go presses C in its centre field where a test has to know that the field was left.
#include "tests/ablauf/Ablauf.h"

#include <QScrollBar>

#include <algorithm>
#include <limits>

namespace {

Schemabau mitUmschalttasten(const Testdatenbank& datenbank) {
    Schemabau schema(datenbank);
    schema.taste(4, "3,0,0-0-0").taste(5, "4,0,0-0-0");
    for (int ebene = 0; ebene < 3; ++ebene)
        schema.taste(9, "1,123,0-0-0", ebene);
    return schema;
}

// X key codes of the us layout.
const Ereignisse A_GETIPPT{"+38", "-38"};
const Ereignisse B_GETIPPT{"+56", "-56"};
constexpr const char* C_AB = "+54";

constexpr Sint16 GANZ_LINKS = std::numeric_limits<Sint16>::min(); // also up
constexpr Sint16 GANZ_RECHTS = std::numeric_limits<Sint16>::max();
constexpr Sint16 MITTE = 0;
constexpr auto LX = SDL_CONTROLLER_AXIS_LEFTX;
constexpr auto LY = SDL_CONTROLLER_AXIS_LEFTY;
constexpr auto RX = SDL_CONTROLLER_AXIS_RIGHTX;
constexpr auto RY = SDL_CONTROLLER_AXIS_RIGHTY;
constexpr auto L2 = SDL_CONTROLLER_AXIS_TRIGGERLEFT; // beside its button the axis "Z1"
constexpr auto L1 = SDL_CONTROLLER_BUTTON_LEFTSHOULDER;

// The screen of the X server.
constexpr int BREITE = 800;
constexpr int HOEHE = 600;

// Fields of the default lines: Links 27072, Rechts 38399, Oben 25941, Unten 39679.
struct Feldaktion {
    Stickseite stick;
    int ebene;
    Schemabau::Vier feld;
    const char* aktion;
};
constexpr auto LINKER_STICK = Stickseite::Links;
constexpr auto RECHTER_STICK = Stickseite::Rechts;
constexpr Schemabau::Vier FELD_MITTE{0, 0, 0, 0};
constexpr Schemabau::Vier FELD_LINKS{27072, 0, 0, 0};
constexpr Schemabau::Vier FELD_RECHTS{0, 38399, 0, 0};
constexpr Schemabau::Vier FELD_OBEN{0, 0, 25941, 0};
constexpr Schemabau::Vier FELD_UNTEN{0, 0, 0, 39679};

class Stickablauf : public Ablauf {
protected:
    void stickStarten(const std::vector<Feldaktion>& aktionen) {
        stickStarten(aktionen, mitUmschalttasten(datenbank_));
    }
    void stickStarten(const std::vector<Feldaktion>& aktionen, Schemabau schema) {
        for (const auto& eine : aktionen)
            schema.feld(eine.stick, eine.feld, eine.aktion, eine.ebene);
        starten(schema);
    }
    /// Moves the axis out and back; what arrives up to the end of the field, which is told by `ende`.
    Ereignisse hinUndZurueck(SDL_GameControllerAxis achse, Sint16 wert, const std::string& anfang,
                             const std::string& ende) {
        pad_->achse(achse, wert);
        auto alle = bis(anfang);
        pad_->achse(achse, MITTE);
        for (auto& eines : bis(ende))
            alle.push_back(std::move(eines));
        return alle;
    }
    /// Counts the steps of a movement that goes on until the stick is let go; there must be several, and
    /// nothing else.
    void erwarteSchritte(SDL_GameControllerAxis achse, Sint16 wert, const std::string& schritt) {
        constexpr int MEHRERE = 4;
        pad_->achse(achse, wert);
        Ereignisse alle;
        for (int i = 0; i < MEHRERE; ++i)
            for (auto& eines : bis(schritt))
                alle.push_back(std::move(eines));
        pad_->achse(achse, MITTE);
        for (auto& eines : bis(C_AB))
            alle.push_back(std::move(eines));
        alle.pop_back();
        EXPECT_EQ(std::ranges::count(alle, schritt), static_cast<std::ptrdiff_t>(alle.size()));
        EXPECT_EQ(bis("-54"), Ereignisse{"-54"}); // by a timer of its own
        EXPECT_EQ(angekommen(), Ereignisse{}) << "the end of the field is the end of the movement";
    }
};

} // namespace

// --- movement ---

// The key in the centre field: down when the stick comes back, up by itself 1 ms later.
constexpr const char* C_TIPPEN = "2,1,67,1,0,0";

class Stickbewegung : public Stickablauf {
protected:
    void bewegungStarten(Stickseite stick, const Schemabau::Vier& feld, const char* aktion) {
        stickStarten({{stick, 0, FELD_MITTE, C_TIPPEN}, {stick, 0, feld, aktion}});
        bis("-54"); // the first evaluation finds the stick in the centre field
    }
};

TEST_F(Stickbewegung, LinkerStickNachRechts) {
    bewegungStarten(LINKER_STICK, FELD_RECHTS, "0,1,5,20");
    erwarteSchritte(LX, GANZ_RECHTS, "m(5,0)");
}

TEST_F(Stickbewegung, LinkerStickNachLinks) {
    bewegungStarten(LINKER_STICK, FELD_LINKS, "0,0,5,20");
    erwarteSchritte(LX, GANZ_LINKS, "m(-5,0)");
}

TEST_F(Stickbewegung, LinkerStickNachOben) {
    bewegungStarten(LINKER_STICK, FELD_OBEN, "0,2,3,20");
    erwarteSchritte(LY, GANZ_LINKS, "m(0,-3)");
}

TEST_F(Stickbewegung, RechterStickNachRechts) {
    bewegungStarten(RECHTER_STICK, FELD_RECHTS, "0,1,5,20");
    erwarteSchritte(RX, GANZ_RECHTS, "m(5,0)");
}

TEST_F(Stickbewegung, RechterStickNachUnten) {
    bewegungStarten(RECHTER_STICK, FELD_UNTEN, "0,3,4,20");
    erwarteSchritte(RY, GANZ_RECHTS, "m(0,4)");
}

TEST_F(Stickbewegung, ZweiBaenderGebenEineDiagonale) {
    stickStarten({{LINKER_STICK, 0, FELD_RECHTS, "0,1,5,20"}, {LINKER_STICK, 0, FELD_OBEN, "0,2,3,20"}});
    pad_->achse(LX, GANZ_RECHTS);
    bis("m(5,0)"); // the x axis comes alone
    pad_->achse(LY, GANZ_LINKS);
    bis("m(5,-3)");
    EXPECT_EQ(bis("m(5,-3)"), Ereignisse{"m(5,-3)"});
}

// --- absolute position: where the field lies on the plane, the pointer lies on the screen ---

TEST_F(Stickablauf, ImFeldZentrierenSetztDenZeigerAufDieMitteDesFelds) {
    stickStarten({{LINKER_STICK, 0, FELD_RECHTS, "5,0"}, {LINKER_STICK, 0, FELD_OBEN, "5,0"}});
    pad_->achse(LX, GANZ_RECHTS);
    // x from 38399 to 65535: 51967 of 65535; y from 25941 to 39679: 32810.
    zeigerErwarten(51967 * BREITE / 65536, 32810 * HOEHE / 65536);
    pad_->achse(LX, MITTE);
    takte(2);
    pad_->achse(LY, GANZ_LINKS);
    // x from 27072 to 38399: 32736; y from 0 to 25941: 12970.
    zeigerErwarten(32736 * BREITE / 65536, 12970 * HOEHE / 65536);
}

TEST_F(Stickablauf, ImFeldBindenFuehrtDenZeigerDemStickNach) {
    stickStarten({{RECHTER_STICK, 0, FELD_RECHTS, "5,1"}});
    pad_->achse(RX, GANZ_RECHTS);
    zeigerErwarten(BREITE - 1, HOEHE / 2);
    pad_->achse(RX, 16384); // three quarters, still in the field
    zeigerErwarten(BREITE * 3 / 4, HOEHE / 2);
    pad_->achse(RX, 30000); // 62768
    zeigerErwarten(62768 * BREITE / 65536, HOEHE / 2);
}

// --- keys and buttons ---

TEST_F(Stickablauf, EinFeldDruecktUndLoestSeineTaste) {
    stickStarten({{LINKER_STICK, 0, FELD_RECHTS, "2,0,65,0,0"}});
    pad_->achse(LX, GANZ_RECHTS);
    EXPECT_EQ(bis("+38"), Ereignisse{"+38"});
    titelErwarten("17-65,");
    pad_->achse(LX, MITTE);
    EXPECT_EQ(bis("-38"), Ereignisse{"-38"});
    EXPECT_EQ(angekommen(), Ereignisse{});
}

TEST_F(Stickablauf, VonFeldZuFeldLoestDieEineTasteUndDruecktDieAndere) {
    stickStarten({{LINKER_STICK, 0, FELD_RECHTS, "2,0,65,0,0"}, {LINKER_STICK, 0, FELD_LINKS, "2,0,66,0,0"}});
    pad_->achse(LX, GANZ_RECHTS);
    EXPECT_EQ(bis("+38"), Ereignisse{"+38"});
    pad_->achse(LX, GANZ_LINKS);
    EXPECT_EQ(bis("+56"), (Ereignisse{"-38", "+56"}));
    pad_->achse(LX, MITTE);
    EXPECT_EQ(bis("-56"), Ereignisse{"-56"});
}

TEST_F(Stickablauf, BeideSticksHaltenJeEineTaste) {
    stickStarten({{LINKER_STICK, 0, FELD_RECHTS, "2,0,65,0,0"}, {RECHTER_STICK, 0, FELD_OBEN, "2,0,66,0,0"}});
    pad_->achse(LX, GANZ_RECHTS);
    EXPECT_EQ(bis("+38"), Ereignisse{"+38"});
    pad_->achse(RY, GANZ_LINKS);
    EXPECT_EQ(bis("+56"), Ereignisse{"+56"});
    titelErwarten("17-65,20-66,");
    pad_->achse(LX, MITTE);
    EXPECT_EQ(bis("-38"), Ereignisse{"-38"});
    pad_->achse(RY, MITTE);
    EXPECT_EQ(bis("-56"), Ereignisse{"-56"});
}

TEST_F(Stickablauf, EineZeitgesteuerteTasteKommtEinmal) {
    stickStarten({{RECHTER_STICK, 0, FELD_RECHTS, "2,1,65,30,0,0"}});
    pad_->achse(RX, GANZ_RECHTS);
    EXPECT_EQ(bis("-38"), A_GETIPPT);
    pad_->achse(RX, MITTE);
    EXPECT_EQ(angekommen(), Ereignisse{});
}

TEST_F(Stickablauf, EinStickHaeltEineMaustaste) {
    stickStarten({{LINKER_STICK, 0, FELD_RECHTS, "1,1"}});
    EXPECT_EQ(hinUndZurueck(LX, GANZ_RECHTS, "K3+", "K3-"), (Ereignisse{"K3+", "K3-"}));
    EXPECT_EQ(angekommen(), Ereignisse{});
}

TEST_F(Stickablauf, EinStickDrehtDasRad) {
    stickStarten({{LINKER_STICK, 0, FELD_UNTEN, "1,4,240"}});
    pad_->achse(LY, GANZ_RECHTS);
    bis("K5-");
    EXPECT_EQ(bis("K5-"), (Ereignisse{"K5+", "K5-"})); // two notches
    pad_->achse(LY, MITTE);
    EXPECT_EQ(angekommen(), Ereignisse{});
}

// --- layers ---

TEST_F(Stickablauf, EinEbenenwechselBeiDerselbenLinieLaesstDieTasteUnten) {
    stickStarten(
        {{LINKER_STICK, 0, FELD_RECHTS, "2,0,65,0,0"}, {LINKER_STICK, 1, FELD_RECHTS, "2,0,66,0,0"}});
    pad_->achse(LX, GANZ_RECHTS);
    EXPECT_EQ(bis("+38"), Ereignisse{"+38"});
    ziehen(L2, true);
    takte(4);
    pad_->achse(LX, MITTE);
    EXPECT_EQ(bis("-38"), Ereignisse{"-38"});
    EXPECT_EQ(hinUndZurueck(LX, GANZ_RECHTS, "+56", "-56"), B_GETIPPT);
    ziehen(L2, false);
    takte(4);
    EXPECT_EQ(hinUndZurueck(LX, GANZ_RECHTS, "+38", "-38"), A_GETIPPT);
}

TEST_F(Stickablauf, EinEbenenwechselZuAnderenLinienWechseltDieTaste) {
    stickStarten(
        {{LINKER_STICK, 0, FELD_RECHTS, "2,0,65,0,0"}, {LINKER_STICK, 1, {0, 45000, 0, 0}, "2,0,66,0,0"}},
        mitUmschalttasten(datenbank_)
            .ebenenlinien(
                LINKER_STICK, 1,
                {{{27072, 38399, 25941, 39679}, {20000, 45000, 20000, 45000}, {27072, 38399, 25941, 39679}}})
            .linien(LINKER_STICK, 2, {})
            .sperre(LINKER_STICK, 0));
    pad_->achse(LX, GANZ_RECHTS);
    EXPECT_EQ(bis("+38"), Ereignisse{"+38"});
    pad_->abzug(L2, true);
    EXPECT_EQ(bis("+56"), (Ereignisse{"-38", "+56"}));
    pad_->abzug(L2, false);
    EXPECT_EQ(bis("+38"), (Ereignisse{"-56", "+38"}));
    pad_->achse(LX, MITTE);
    EXPECT_EQ(bis("-38"), Ereignisse{"-38"});
}

TEST_F(Stickablauf, DieZweiteEbeneGiltAbDemNaechstenFeld) {
    stickStarten(
        {{RECHTER_STICK, 0, FELD_RECHTS, "2,0,65,0,0"}, {RECHTER_STICK, 2, FELD_RECHTS, "2,0,66,0,0"}});
    druecken(L1);
    EXPECT_EQ(hinUndZurueck(RX, GANZ_RECHTS, "+56", "-56"), B_GETIPPT);
    loesen(L1);
    EXPECT_EQ(hinUndZurueck(RX, GANZ_RECHTS, "+38", "-38"), A_GETIPPT);
}

// --- slider ---

// The axis of L 2 rests in the middle of its range; so far pulled it stands at 64152, in the last of three
// fields.
constexpr Sint16 FAST_GANZ_GEZOGEN = 30000;
constexpr Sint16 LOSGELASSEN = std::numeric_limits<Sint16>::min();

// The same without shift keys: L 2 is the slider.
Schemabau ohneUmschalttasten(const Testdatenbank& datenbank) {
    return Schemabau(datenbank).taste(9, "1,123,0-0-0");
}

TEST_F(Stickablauf, DerSchubreglerDruecktUndLoestSeineTaste) {
    starten(ohneUmschalttasten(datenbank_), "3/0-3-2-0(66,,)");
    pad_->achse(L2, FAST_GANZ_GEZOGEN);
    EXPECT_EQ(bis("+56"), Ereignisse{"+56"});
    pad_->achse(L2, LOSGELASSEN);
    EXPECT_EQ(bis("-56"), Ereignisse{"-56"});
    EXPECT_EQ(angekommen(), Ereignisse{});
}

TEST_F(Stickablauf, DerSchubreglerWiederholtSeineTaste) {
    starten(ohneUmschalttasten(datenbank_), "3/0-3-2-1(66,10,10)");
    pad_->achse(L2, FAST_GANZ_GEZOGEN);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(bis("-56"), B_GETIPPT);
}

TEST_F(Stickablauf, DerSchubreglerDrehtDasRad) {
    starten(ohneUmschalttasten(datenbank_), "3/0-3-1-3(2,,)");
    pad_->achse(L2, FAST_GANZ_GEZOGEN);
    EXPECT_EQ(bis("K4-"), (Ereignisse{"K4+", "K4-"}));
    pad_->achse(L2, LOSGELASSEN);
    EXPECT_EQ(angekommen(), Ereignisse{});
}

TEST_F(Stickablauf, DerSchubreglerBewegtDieMaus) {
    starten(ohneUmschalttasten(datenbank_), "3/0-3-0-3(20,6,)");
    pad_->achse(L2, FAST_GANZ_GEZOGEN);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(bis("m(0,6)"), Ereignisse{"m(0,6)"});
}

// --- what stays ---

TEST_F(Stickablauf, DieBildlaufleistenUeberstehenEinenNeustartDesProgramms) {
    const auto regler = [](const char* name) { return laufFenster()->findChild<QScrollBar*>(name); };
    starten(mitUmschalttasten(datenbank_));
    EXPECT_EQ(regler("HScroll1(0)")->value(), 30);
    EXPECT_EQ(regler("HScroll1(11)")->value(), 400);
    EXPECT_EQ(regler("HScroll2")->value(), 0);
    for (int i = 0; i < 12;
         ++i) // windows, minimum counts and margins take different ranges: 1 to 12 suits all
        regler(("HScroll1(" + std::to_string(i) + ")").c_str())->setValue(i + 1);
    regler("HScroll2")->setValue(70);
    umschalten();
    beenden();

    programmStarten();
    umschalten();
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(regler(("HScroll1(" + std::to_string(i) + ")").c_str())->value(), i + 1) << i;
    EXPECT_EQ(regler("HScroll2")->value(), 70);
}

TEST_F(Stickablauf, EinZweiterLaufLoestDieTasteDesErsten) {
    stickStarten({{LINKER_STICK, 0, FELD_RECHTS, "2,0,65,0,0"}});
    pad_->achse(LX, GANZ_RECHTS);
    EXPECT_EQ(bis("+38"), Ereignisse{"+38"});
    umschalten();
    EXPECT_EQ(laufFenster(), nullptr);
    pad_->achse(LX, MITTE);
    umschalten();
    EXPECT_EQ(bis("-38"), Ereignisse{"-38"});
    EXPECT_EQ(angekommen(), Ereignisse{});
}
