// SPDX-License-Identifier: GPL-3.0-or-later
// The key mapping, on keymaps made from layout names.
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/TastenKarte.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <memory>
#include <set>
#include <unistd.h>
#include <xkbcommon/xkbcommon.h>

namespace {

TastenKarte karte(const std::string& layout, const std::string& variante = "", std::uint32_t gruppe = 0) {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> kontext(
        xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES), &xkb_context_unref);
    const xkb_rule_names namen{"evdev", "pc105", layout.c_str(), variante.c_str(), ""};
    const std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> belegung(
        xkb_keymap_new_from_names(kontext.get(), &namen, XKB_KEYMAP_COMPILE_NO_FLAGS), &xkb_keymap_unref);
    EXPECT_NE(belegung, nullptr) << layout;
    return TastenKarte(belegung.get(), gruppe);
}

std::vector<EvdevTaste> tasten(const TastenKarte& karte, const std::vector<std::uint32_t>& codes) {
    std::vector<EvdevTaste> ergebnis;
    for (const auto code : codes)
        ergebnis.push_back(karte.taste(code));
    return ergebnis;
}

const std::vector<std::uint32_t> ZIFFERN{'1', '2', '3', '4', '5', '6', '7', '8', '9', '0'};
const std::vector<EvdevTaste> ZIFFERNREIHE{KEY_1, KEY_2, KEY_3, KEY_4, KEY_5,
                                           KEY_6, KEY_7, KEY_8, KEY_9, KEY_0};
const std::vector<std::uint32_t> ZEICHEN{186, 187, 188, 189, 190, 191, 192, 219, 220, 221, 222, 226};
const std::vector<std::uint32_t> QWERTZ{'Q', 'W', 'E', 'R', 'T', 'Z', 'Y', 'A', 'M'};

// Codes whose key carries another code in a form's key event.
VirtuelleTaste inEreignissen(VirtuelleTaste code) {
    switch (code) {
    case 160:
    case 161:
        return 16;
    case 162:
    case 163:
        return 17;
    case 164:
    case 165:
        return 18;
    default:
        return code;
    }
}

struct Layoutfall {
    const char* layout;
    const char* variante;
    std::uint32_t gruppe;
};

void PrintTo(const Layoutfall& fall, std::ostream* strom) {
    *strom << fall.layout << ' ' << fall.variante << ' ' << fall.gruppe;
}

class JedesLayout : public testing::TestWithParam<Layoutfall> {};

INSTANTIATE_TEST_SUITE_P(
    , JedesLayout,
    testing::Values(Layoutfall{"us", "", 0}, Layoutfall{"us", "intl", 0}, Layoutfall{"us", "dvorak", 0},
                    Layoutfall{"de", "", 0}, Layoutfall{"de", "nodeadkeys", 0}, Layoutfall{"de", "neo", 0},
                    Layoutfall{"ch", "", 0}, Layoutfall{"fr", "", 0}, Layoutfall{"fr", "bepo", 0},
                    Layoutfall{"cz", "", 0}, Layoutfall{"tr", "", 0}, Layoutfall{"br", "", 0},
                    Layoutfall{"jp", "", 0}, Layoutfall{"ru", "", 0}, Layoutfall{"us,ru", "", 0},
                    Layoutfall{"us,ru", "", 1}, Layoutfall{"gr,de", "", 0}, Layoutfall{"ara", "", 0}));

} // namespace

TEST_P(JedesLayout, GibtJedemSchildGenauEineTasteDesSchreibblocks) {
    const auto k = karte(GetParam().layout, GetParam().variante, GetParam().gruppe);
    std::set<EvdevTaste> gegeben;
    std::set<EvdevTaste> block;
    for (const auto& schild : schilder()) {
        gegeben.insert(k.taste(schild.code));
        block.insert(schild.deutsch);
    }
    EXPECT_EQ(block.size(), 48U);
    EXPECT_EQ(gegeben, block);
}

TEST_P(JedesLayout, FuehrtJedenCodeAufSichZurueck) {
    const auto k = karte(GetParam().layout, GetParam().variante, GetParam().gruppe);
    std::vector<VirtuelleTaste> hin;
    std::vector<VirtuelleTaste> zurueck;
    for (VirtuelleTaste code = 1; code <= 254; ++code)
        if (const auto taste = k.taste(code); taste != KEINE_TASTE) {
            hin.push_back(inEreignissen(code));
            zurueck.push_back(k.code(taste));
        }
    EXPECT_EQ(hin.size(), festeTasten().size() + schilder().size());
    EXPECT_EQ(zurueck, hin);
}

TEST_P(JedesLayout, GibtVerschiedenenCodesVerschiedeneTasten) {
    const auto k = karte(GetParam().layout, GetParam().variante, GetParam().gruppe);
    std::vector<EvdevTaste> vergeben;
    for (VirtuelleTaste code = 1; code <= 254; ++code)
        if (k.taste(code) != KEINE_TASTE && (code < 16 || code > 18)) // the left modifiers have two codes
            vergeben.push_back(k.taste(code));
    EXPECT_EQ(std::set<EvdevTaste>(vergeben.begin(), vergeben.end()).size(), vergeben.size());
}

TEST(TastenKarte, OhneTasteSindGenauDieCodesDerTabelle) {
    const TastenKarte deutsch;
    std::vector<VirtuelleTaste> ohne;
    for (VirtuelleTaste code = 1; code <= 254; ++code)
        if (deutsch.taste(code) == KEINE_TASTE)
            ohne.push_back(code);
    std::vector<VirtuelleTaste> tabelle;
    for (const auto& bereich : ohneTaste())
        for (auto code = bereich.von; code <= bereich.bis; ++code)
            tabelle.push_back(code);
    EXPECT_EQ(ohne, tabelle);
    EXPECT_THAT(tasten(deutsch, {0, 1, 2, 4, 5, 6, 223, 255, 256, 0xFFFFFFFF}), testing::Each(KEINE_TASTE));
}

TEST(TastenKarte, DeutschIstAuchDieKarteOhneLayout) {
    EXPECT_EQ(karte("de"), TastenKarte());
}

TEST(TastenKarte, DeutschTraegtJedesSchildWoEsAufgedrucktIst) {
    const auto k = karte("de");
    EXPECT_EQ(tasten(k, ZIFFERN), ZIFFERNREIHE);
    EXPECT_THAT(tasten(k, QWERTZ),
                testing::ElementsAre(KEY_Q, KEY_W, KEY_E, KEY_R, KEY_T, KEY_Y, KEY_Z, KEY_A, KEY_M));
    EXPECT_THAT(tasten(k, ZEICHEN), testing::ElementsAre(KEY_LEFTBRACE, KEY_RIGHTBRACE, KEY_COMMA, KEY_SLASH,
                                                         KEY_DOT, KEY_BACKSLASH, KEY_SEMICOLON, KEY_MINUS,
                                                         KEY_GRAVE, KEY_EQUAL, KEY_APOSTROPHE, KEY_102ND));
    EXPECT_EQ(karte("de", "nodeadkeys"), k);
}

TEST(TastenKarte, AmerikanischStehtPlusAufDerGleichtaste) {
    const auto k = karte("us");
    EXPECT_EQ(tasten(k, ZIFFERN), ZIFFERNREIHE);
    EXPECT_THAT(tasten(k, QWERTZ),
                testing::ElementsAre(KEY_Q, KEY_W, KEY_E, KEY_R, KEY_T, KEY_Z, KEY_Y, KEY_A, KEY_M));
    // ü + , - . # ö ß ^ ´ ä <: what no key bears lies as on the German keyboard; ß and ´ take what is left.
    EXPECT_THAT(tasten(k, ZEICHEN),
                testing::ElementsAre(KEY_LEFTBRACE, KEY_EQUAL, KEY_COMMA, KEY_MINUS, KEY_DOT, KEY_BACKSLASH,
                                     KEY_SEMICOLON, KEY_RIGHTBRACE, KEY_GRAVE, KEY_SLASH, KEY_APOSTROPHE,
                                     KEY_102ND));
}

TEST(TastenKarte, FranzoesischGehenDieZiffernVor) {
    const auto k = karte("fr");
    EXPECT_EQ(tasten(k, ZIFFERN), ZIFFERNREIHE); // although the key of the 6 bears '-' at its first level
    EXPECT_THAT(tasten(k, QWERTZ),
                testing::ElementsAre(KEY_A, KEY_Z, KEY_E, KEY_R, KEY_T, KEY_W, KEY_Y, KEY_Q, KEY_SEMICOLON));
    EXPECT_THAT(tasten(k, {187, 188, 220, 226}),
                testing::ElementsAre(KEY_EQUAL, KEY_M, KEY_LEFTBRACE, KEY_102ND));
}

TEST(TastenKarte, KyrillischLiegenDieBuchstabenWieDeutsch) {
    const auto k = karte("ru");
    EXPECT_EQ(tasten(k, ZIFFERN), ZIFFERNREIHE);
    EXPECT_EQ(tasten(k, QWERTZ), tasten(karte("de"), QWERTZ));
}

TEST(TastenKarte, EineLateinischeNebengruppeGiltVorDerDeutschenTastatur) {
    EXPECT_EQ(tasten(karte("us,ru", "", 1), QWERTZ), tasten(karte("us"), QWERTZ));
    EXPECT_EQ(tasten(karte("us,de", "", 0), QWERTZ), tasten(karte("us"), QWERTZ));
    EXPECT_EQ(tasten(karte("us,de", "", 1), QWERTZ), tasten(karte("de"), QWERTZ));
}

TEST(TastenKarte, FesteTastenLiegenUeberallGleich) {
    const std::vector<std::uint32_t> codes{8,   9,   13,  16,  17,  18,  19,  20,  27,  32,  33,  44,
                                           45,  91,  93,  96,  99,  12,  107, 108, 111, 112, 123, 124,
                                           135, 144, 145, 160, 161, 162, 163, 164, 165, 173, 179};
    EXPECT_THAT(tasten(karte("us"), codes),
                testing::ElementsAre(
                    KEY_BACKSPACE, KEY_TAB, KEY_ENTER, KEY_LEFTSHIFT, KEY_LEFTCTRL, KEY_LEFTALT, KEY_PAUSE,
                    KEY_CAPSLOCK, KEY_ESC, KEY_SPACE, KEY_PAGEUP, KEY_SYSRQ, KEY_INSERT, KEY_LEFTMETA,
                    KEY_COMPOSE, KEY_KP0, KEY_KP3, KEY_CLEAR, KEY_KPPLUS, KEY_KPCOMMA, KEY_KPSLASH, KEY_F1,
                    KEY_F12, KEY_F13, KEY_F24, KEY_NUMLOCK, KEY_SCROLLLOCK, KEY_LEFTSHIFT, KEY_RIGHTSHIFT,
                    KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTALT, KEY_RIGHTALT, KEY_MUTE, KEY_PLAYPAUSE));
    EXPECT_EQ(tasten(karte("ru"), codes), tasten(karte("us"), codes));
}

TEST(TastenKarte, BeideSeitenUndBeideEnterGebenEinenCode) {
    const TastenKarte k;
    std::vector<VirtuelleTaste> codes;
    for (const auto taste : {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTALT,
                             KEY_RIGHTALT, KEY_ENTER, KEY_KPENTER, KEY_KP5, KEY_POWER, KEY_RESERVED, KEY_MAX})
        codes.push_back(k.code(static_cast<EvdevTaste>(taste)));
    EXPECT_THAT(codes, testing::ElementsAre(16, 16, 17, 17, 18, 18, 13, 13, 101, 0, 0, 0));
    EXPECT_EQ(k.code(EVDEV_TASTEN), 0);
    EXPECT_EQ(k.code(0xFFFF), 0);
}

TEST(TastenKarte, NurDreiTastenGehenNichtUeberX) {
    const TastenKarte k;
    std::vector<VirtuelleTaste> nurUinput;
    for (VirtuelleTaste code = 1; code <= 254; ++code)
        if (k.taste(code) > LETZTE_X_TASTE)
            nurUinput.push_back(code);
    EXPECT_THAT(nurUinput, testing::ElementsAre(12, 41, 251));
}

TEST(Abtastcodes, SindDieDesErstenSatzes) {
    std::vector<int> codes;
    for (const auto taste : {KEY_RESERVED, KEY_ESC, KEY_A, KEY_Z, KEY_F12, KEY_KPENTER, KEY_LEFT,
                             KEY_RIGHTCTRL, KEY_LEFTMETA, KEY_F13, KEY_F24, KEY_POWER, KEY_ZOOM})
        codes.push_back(abtastcode(static_cast<EvdevTaste>(taste)));
    EXPECT_THAT(codes,
                testing::ElementsAre(0, 1, 0x1E, 0x2C, 0x58, 0x1C, 0x4B, 0x1D, 0x5B, 0x64, 0x76, 0, 0));
}

namespace {

// The layout without a server, from the environment and a keyboard file.
class OhneServer : public testing::Test {
protected:
    OhneServer() {
        unsetenv("DISPLAY");
        unsetenv("XKB_DEFAULT_LAYOUT");
    }
    ~OhneServer() override { std::filesystem::remove(datei); }

    void schreiben(const std::string& text) const { std::ofstream(datei) << text; }

    const std::string datei = testing::TempDir() + "tastatur." + std::to_string(getpid());
};

TEST_F(OhneServer, GiltDieDateiDesSystems) {
    schreiben("# a "
              "comment\nXKBMODEL=\"pc105\"\nXKBLAYOUT=\"fr\"\nXKBVARIANT=\"\"\nXKBOPTIONS=\"\"\nBACKSPACE="
              "\"guess\"\n");
    Tastaturlayout layout({}, datei);
    EXPECT_EQ(layout.karte(), karte("fr"));
}

TEST_F(OhneServer, GehtDieUmgebungDerDateiVor) {
    schreiben("XKBLAYOUT=fr\n");
    setenv("XKB_DEFAULT_LAYOUT", "de", 1);
    Tastaturlayout layout({}, datei);
    unsetenv("XKB_DEFAULT_LAYOUT");
    EXPECT_EQ(layout.karte(), karte("de"));
}

TEST_F(OhneServer, GiltOhneDateiDieVorgabeDerBibliothek) {
    Tastaturlayout layout({}, datei);
    EXPECT_EQ(layout.karte(), karte("us"));
}

TEST_F(OhneServer, FaelltEinUnbekanntesLayoutAufDieVorgabeZurueck) {
    schreiben("XKBLAYOUT=\"gibtsnicht\"\n");
    Tastaturlayout layout({}, datei);
    EXPECT_EQ(layout.karte(), karte("us"));
}

} // namespace
