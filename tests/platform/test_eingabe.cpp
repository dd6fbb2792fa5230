// SPDX-License-Identifier: GPL-3.0-or-later
// Injection: the contract on the fake and on XTest in a real X server, then XTest by itself.
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/XTestEingabe.h"
#include "platform/probe/ProbeEingabe.h"
#include "tests/hilfen/XLauscher.h"
#include "tests/hilfen/XServer.h"
#include "tests/platform/Ereignisse.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <map>

using testing::ElementsAre;

namespace {

using Texte = std::vector<std::string>;

constexpr int X_VERSATZ = 8;
constexpr VirtuelleTaste F12 = 123; // the last event of what a test listens to
const std::string F12_AB = "-" + std::to_string(KEY_F12 + X_VERSATZ);
const std::string F12_AUF = "+" + std::to_string(KEY_F12 + X_VERSATZ);

INPUT unbekannt() {
    INPUT ereignis{};
    ereignis.type = 2; // INPUT_HARDWARE
    return ereignis;
}

struct MitProbe {
    ProbeEingabe eingabe;
    Texte gehoert() { return eingabe.texteAbholen(); }
};

// What an XInput 2 listener hears, in the texts of the fake.
class MitXTest {
    XServer server_;
    Tastaturlayout layout_{server_.anzeige()};
    std::string grund_;
    std::unique_ptr<XTestEingabe> offen_ = XTestEingabe::oeffnen(layout_, server_.anzeige(), grund_);
    XLauscher lauscher_{server_.anzeige(), Lauschart::roh};

public:
    XTestEingabe& eingabe = *offen_;

    Texte gehoert() {
        const INPUT ende[] = {taste(F12), taste(F12, KEYEVENTF_KEYUP)};
        eingabe.SendInput(ende);
        Texte texte;
        for (const auto& text : lauscher_.bis(F12_AB))
            if (text != F12_AUF)
                texte.push_back(uebersetzt(text));
        return texte;
    }

private:
    std::string uebersetzt(const std::string& text) {
        static const std::map<std::string, std::string> KNOEPFE{{"K1+", "LD"}, {"K1-", "LU"}, {"K3+", "RD"},
                                                                {"K3-", "RU"}, {"K2+", "MD"}, {"K2-", "MU"}};
        if (const auto knopf = KNOEPFE.find(text); knopf != KNOEPFE.end())
            return knopf->second;
        if (text[0] != '+' && text[0] != '-')
            return text;
        const auto evdev = static_cast<EvdevTaste>(std::stoi(text.substr(1)) - X_VERSATZ);
        return text.substr(0, 1) + std::to_string(layout_.karte().code(evdev));
    }
};

template <typename Backend> class EingabeVertrag : public testing::Test {
protected:
    Backend backend;
    Eingabe& eingabe = backend.eingabe;
};
using Backends = testing::Types<MitProbe, MitXTest>;
TYPED_TEST_SUITE(EingabeVertrag, Backends);

} // namespace

TYPED_TEST(EingabeVertrag, AllesKommtInDerReihenfolgeAnInDerEsGesendetWurde) {
    const INPUT ereignisse[] = {taste(65), taste(90), maus(MOUSEEVENTF_MOVE, 3, -2),
                                taste(65, KEYEVENTF_KEYUP), taste(90, KEYEVENTF_KEYUP)};
    EXPECT_EQ(this->eingabe.SendInput(ereignisse), 5U);
    this->eingabe.mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    this->eingabe.mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    EXPECT_THAT(this->backend.gehoert(), ElementsAre("+65", "+90", "m(3,-2)", "-65", "-90", "LD", "LU"));
}

TYPED_TEST(EingabeVertrag, JederMausknopfHatSeinPaar) {
    for (const auto flagge : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, MOUSEEVENTF_RIGHTDOWN,
                              MOUSEEVENTF_RIGHTUP, MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP})
        this->eingabe.mouse_event(flagge, 0, 0, 0, 0);
    EXPECT_THAT(this->backend.gehoert(), ElementsAre("LD", "LU", "RD", "RU", "MD", "MU"));
}

TYPED_TEST(EingabeVertrag, NichtsZuSendenIstErlaubt) {
    EXPECT_EQ(this->eingabe.SendInput({}), 0U);
    EXPECT_THAT(this->backend.gehoert(), ElementsAre());
}

TYPED_TEST(EingabeVertrag, AbtastcodesGibtEsNurZurArtNull) {
    EXPECT_NE(this->eingabe.MapVirtualKeyA(65, 0), 0U);
    EXPECT_EQ(this->eingabe.MapVirtualKeyA(65, 1), 0U);
    EXPECT_EQ(this->eingabe.MapVirtualKeyA(65, 2), 0U);
}

namespace {

class XTest : public testing::Test {
protected:
    explicit XTest(Lauschart art = Lauschart::roh)
        : lauscher(std::make_unique<XLauscher>(server.anzeige(), art))
        , layout(server.anzeige())
        , offen(XTestEingabe::oeffnen(layout, server.anzeige(), grund))
        , eingabe(*offen) {}

    void senden(const std::vector<INPUT>& ereignisse) { eingabe.SendInput(ereignisse); }

    Texte gehoert() {
        senden({taste(F12), taste(F12, KEYEVENTF_KEYUP)});
        auto texte = lauscher->bis(F12_AB);
        std::erase(texte, F12_AUF);
        return texte;
    }

    XServer server{"800x600x24"};
    std::unique_ptr<XLauscher> lauscher;
    Tastaturlayout layout;
    std::string grund;
    std::unique_ptr<XTestEingabe> offen;
    XTestEingabe& eingabe;
};

class XTestMitFenster : public XTest {
protected:
    XTestMitFenster() : XTest(Lauschart::fenster) {}
};

class XTestMitLayout : public XTestMitFenster, public testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(, XTestMitLayout, testing::Values("us", "de", "fr", "ru"));

std::string auf(int evdev) {
    return "+" + std::to_string(evdev + X_VERSATZ);
}
std::string ab(int evdev) {
    return "-" + std::to_string(evdev + X_VERSATZ);
}

} // namespace

TEST_P(XTestMitLayout, KommtJederCodeAnDerTasteAnDieDieKarteNennt) {
    server.tastatur(GetParam());
    Texte erwartet;
    for (VirtuelleTaste code = 1; code <= 254; ++code) {
        const auto evdev = layout.karte().taste(code);
        const bool geht = evdev != KEINE_TASTE && evdev <= LETZTE_X_TASTE && code != F12;
        if (code == F12)
            continue;
        const INPUT paar[] = {taste(code), taste(code, KEYEVENTF_KEYUP)};
        EXPECT_EQ(eingabe.SendInput(paar), geht ? 2U : 0U) << code;
        if (geht) {
            erwartet.push_back(auf(evdev));
            erwartet.push_back(ab(evdev));
        }
    }
    EXPECT_EQ(gehoert(), erwartet);
}

TEST_P(XTestMitLayout, TippenBuchstabenSichSelbst) {
    server.tastatur(GetParam());
    if (std::string(GetParam()) == "ru")
        server.tastatur("us,ru"); // the Latin letters stand in a group of their own
    std::string getippt;
    std::string erwartet;
    for (VirtuelleTaste code = 'A'; code <= 'Z'; ++code) {
        getippt += static_cast<char>(lauscher->zeichen(layout.karte().taste(code) + 8U, 0));
        erwartet += static_cast<char>(code + 32);
    }
    EXPECT_EQ(getippt, erwartet);
}

TEST_P(XTestMitLayout, FindetDasEreignisZuSeinemCodeZurueck) {
    server.tastatur(GetParam());
    const auto& karte = layout.karte();
    std::vector<VirtuelleTaste> hin;
    std::vector<VirtuelleTaste> zurueck;
    for (const auto& schild : schilder()) {
        hin.push_back(schild.code);
        zurueck.push_back(karte.code(karte.taste(schild.code)));
    }
    EXPECT_EQ(zurueck, hin);
}

TEST_F(XTestMitFenster, EinWechselDesLayoutsGiltAbDerNaechstenTaste) {
    const auto z = [this] { senden({taste('Z'), taste('Z', KEYEVENTF_KEYUP)}); };
    server.tastatur("us");
    z();
    server.tastatur("de");
    z();
    server.tastatur("us");
    z();
    EXPECT_THAT(gehoert(), ElementsAre(auf(KEY_Z), ab(KEY_Z), auf(KEY_Y), ab(KEY_Y), auf(KEY_Z), ab(KEY_Z)));
}

TEST_F(XTestMitFenster, EinWechselDerGruppeGiltAbDerNaechstenTaste) {
    const auto z = [this] { senden({taste('Z'), taste('Z', KEYEVENTF_KEYUP)}); };
    server.tastatur("us,de,ru");
    z();
    lauscher->gruppe(1);
    z();
    lauscher->gruppe(2); // no Latin letters: the first group's
    z();
    lauscher->gruppe(1);
    z();
    EXPECT_THAT(gehoert(), ElementsAre(auf(KEY_Z), ab(KEY_Z), auf(KEY_Y), ab(KEY_Y), auf(KEY_Z), ab(KEY_Z),
                                       auf(KEY_Y), ab(KEY_Y)));
}

TEST_F(XTestMitFenster, EinWechselDesLayoutsLaesstEineGehalteneTasteNichtStecken) {
    server.tastatur("us");
    senden({taste('Z')});
    server.tastatur("de");
    senden({taste('Z', KEYEVENTF_KEYUP), taste('Z'), taste('Z', KEYEVENTF_KEYUP)});
    EXPECT_THAT(gehoert(), ElementsAre(auf(KEY_Z), ab(KEY_Z), auf(KEY_Y), ab(KEY_Y)));
}

TEST_F(XTestMitFenster, EineGehalteneTasteWirdFuerDasProgrammNochEinmalGedrueckt) {
    senden({taste(65)});
    senden({taste(65)});
    senden({taste(65)});
    senden({taste(65, KEYEVENTF_KEYUP)});
    // Release and press at once is how X shows a repeat.
    EXPECT_THAT(gehoert(), ElementsAre(auf(KEY_A), ab(KEY_A), auf(KEY_A), ab(KEY_A), auf(KEY_A), ab(KEY_A)));
}

TEST_F(XTestMitFenster, EinUmschalterWirdNichtWiederholt) {
    senden({taste(16), taste(16), taste(160), taste(16, KEYEVENTF_KEYUP)});
    EXPECT_THAT(gehoert(), ElementsAre(auf(KEY_LEFTSHIFT), ab(KEY_LEFTSHIFT)));
}

TEST_F(XTest, DieWiederholungErreichtAuchRoheZuhoerer) {
    senden({taste(65), taste(65), taste(65, KEYEVENTF_KEYUP)});
    EXPECT_THAT(gehoert(), ElementsAre(auf(KEY_A), ab(KEY_A), auf(KEY_A), ab(KEY_A)));
}

TEST_F(XTest, DieErweiterungWaehltKeineAndereTaste) {
    senden({taste(38, KEYEVENTF_EXTENDEDKEY), taste(38, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP),
            taste(13, KEYEVENTF_EXTENDEDKEY), taste(13, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP)});
    EXPECT_THAT(gehoert(), ElementsAre(auf(KEY_UP), ab(KEY_UP), auf(KEY_ENTER), ab(KEY_ENTER)));
}

TEST_F(XTest, WasKeinGegenstueckHatWirdUebergangenUndNichtGezaehlt) {
    const INPUT ereignisse[] = {unbekannt(), taste(0),   taste(1),
                                taste(255),  taste(256), taste(65535),
                                taste(12),   taste(65),  taste(65, KEYEVENTF_KEYUP)};
    EXPECT_EQ(eingabe.SendInput(ereignisse), 2U);
    EXPECT_THAT(gehoert(), ElementsAre(auf(KEY_A), ab(KEY_A)));
}

TEST_F(XTest, DasRadGehtJeEreignisMindestensEineRaste) {
    const std::pair<std::int32_t, int> faelle[] = {{3, 1},     {-4, -1}, {1, 1},   {120, 1},
                                                   {179, 1},   {180, 2}, {181, 2}, {240, 2},
                                                   {-240, -2}, {300, 2}, {0, 0},   {-120, -1}};
    for (const auto& [menge, rasten] : faelle) {
        eingabe.mouse_event(MOUSEEVENTF_WHEEL, 0, 0, menge, 0);
        Texte erwartet;
        for (int raste = 0; raste < std::abs(rasten); ++raste) {
            erwartet.emplace_back(rasten > 0 ? "K4+" : "K5+");
            erwartet.emplace_back(rasten > 0 ? "K4-" : "K5-");
        }
        EXPECT_EQ(gehoert(), erwartet) << menge;
    }
}

TEST_F(XTest, DieEckenDesBildschirmsSindDieEndenDerSpanne) {
    const auto gesetzt = [this](std::int32_t x, std::int32_t y) {
        eingabe.mouse_event(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, x, y, 0, 0);
        gehoert();
        return lauscher->zeiger();
    };
    using Ort = std::pair<int, int>;
    EXPECT_EQ(gesetzt(0, 0), Ort(0, 0));
    EXPECT_EQ(gesetzt(65535, 0), Ort(799, 0));
    EXPECT_EQ(gesetzt(65535, 65535), Ort(799, 599));
    EXPECT_EQ(gesetzt(0, 65535), Ort(0, 599));
    EXPECT_EQ(gesetzt(32768, 32768), Ort(400, 300));
    EXPECT_EQ(gesetzt(32767, 32767), Ort(399, 299));
    EXPECT_EQ(gesetzt(-1, 70000), Ort(0, 599));
}

TEST_F(XTest, RelativeBewegungenZaehlenPunkte) {
    eingabe.mouse_event(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, 32768, 32768, 0, 0);
    eingabe.mouse_event(MOUSEEVENTF_MOVE, -7, 11, 0, 0);
    eingabe.mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, 0);
    gehoert();
    EXPECT_EQ(lauscher->zeiger(), std::pair(393, 311));
    eingabe.mouse_event(MOUSEEVENTF_MOVE, -2147483647 - 1, 2147483647, 0, 0);
    gehoert();
    EXPECT_EQ(lauscher->zeiger(), std::pair(0, 599));
}

TEST_F(XTest, MehrereFlaggenWirkenInDerReihenfolgeBewegungKnoepfeRad) {
    senden(
        {maus(MOUSEEVENTF_WHEEL | MOUSEEVENTF_LEFTUP | MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_MOVE, 1, 1, -120)});
    EXPECT_THAT(gehoert(), ElementsAre("m(1,1)", "K1+", "K1-", "K5+", "K5-"));
}

TEST_F(XTest, DasEndeLoestWasGehaltenWird) {
    XLauscher& ohr = *lauscher;
    senden({taste(65), taste(17), maus(MOUSEEVENTF_RIGHTDOWN)});
    offen.reset();
    Texte texte = ohr.bis("K3-");
    EXPECT_THAT(texte, ElementsAre(auf(KEY_A), auf(KEY_LEFTCTRL), "K3+", ab(KEY_LEFTCTRL), ab(KEY_A)));
}

TEST_F(XTest, EinToterServerBeendetNichtsUndNimmtNichtsMehrAn) {
    senden({taste(65)});
    lauscher.reset(); // a plain client, which would not survive
    server.toeten();
    std::uint32_t gesendet = 1;
    for (int mal = 0; mal < 200; ++mal) {
        const INPUT ereignisse[] = {taste(90), taste(90, KEYEVENTF_KEYUP), maus(MOUSEEVENTF_MOVE, 1, 1),
                                    maus(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, 1, 1)};
        gesendet = eingabe.SendInput(ereignisse);
    }
    EXPECT_EQ(gesendet, 0U);
    EXPECT_EQ(eingabe.MapVirtualKeyA('A', 0), 0x1EU);
}

TEST_F(XTest, EinServerDerMittenImSendenStirbtBeendetNichts) {
    const INPUT ereignisse[] = {taste(65), taste(65, KEYEVENTF_KEYUP)};
    lauscher.reset();
    for (int mal = 0; mal < 100; ++mal)
        EXPECT_EQ(eingabe.SendInput(ereignisse), 2U);
    server.toeten();
    EXPECT_EQ(eingabe.SendInput(std::vector<INPUT>(20000, ereignisse[0])), 0U);
}

TEST_F(XTest, AbtastcodesFolgenDemLayout) {
    server.tastatur("us");
    EXPECT_EQ(eingabe.MapVirtualKeyA('Z', 0), 0x2CU);
    server.tastatur("de");
    EXPECT_EQ(eingabe.MapVirtualKeyA('Z', 0), 0x15U);
    EXPECT_EQ(eingabe.MapVirtualKeyA(1, 0), 0U);
    EXPECT_EQ(eingabe.MapVirtualKeyA(0xFFFFFFFF, 0), 0U);
}

TEST(XTestProbe, OhneServerGibtEsEinenGrund) {
    Tastaturlayout layout(":4711");
    std::string grund;
    EXPECT_EQ(XTestEingabe::oeffnen(layout, ":4711", grund), nullptr);
    EXPECT_EQ(grund, "Kein X-Server erreichbar");
}

TEST(XTestProbe, OhneDieErweiterungGibtEsEinenGrund) {
    const XServer server("64x64x24", {"-extension", "XTEST"});
    Tastaturlayout layout(server.anzeige());
    std::string grund;
    EXPECT_EQ(XTestEingabe::oeffnen(layout, server.anzeige(), grund), nullptr);
    EXPECT_EQ(grund, "Dem X-Server fehlt XTEST");
}
