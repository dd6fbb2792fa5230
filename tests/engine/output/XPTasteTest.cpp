// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output/XPTaste.h"

#include "platform/probe/ProbeEingabe.h"
#include "tests/hilfen/Testdatenbank.h"

#include <bit>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Texte = std::vector<std::string>;
using Bytes = std::array<std::uint8_t, 28>;

/// Writes down each call of SendInput with its records, byte for byte.
class Byteeingabe final : public Eingabe {
public:
    std::uint32_t SendInput(std::span<const INPUT> ereignisse) override {
        std::vector<Bytes> aufruf;
        for (const auto& ereignis : ereignisse)
            aufruf.push_back(std::bit_cast<Bytes>(ereignis));
        aufrufe.push_back(aufruf);
        return 0;
    }
    std::uint32_t MapVirtualKeyA(std::uint32_t code, std::uint32_t art) override {
        abfragen.push_back(std::to_string(code) + " art " + std::to_string(art));
        return 0x1234;
    }

    std::vector<std::vector<Bytes>> aufrufe;
    Texte abfragen;
};

struct XPTasteTest : testing::Test {
    Byteeingabe bytes;
    ProbeEingabe probe;
    int pruefungen = 0;
    XPTaste roh{bytes, [this] { ++pruefungen; }};
    XPTaste xpTaste{probe, [this] { ++pruefungen; }};
};

TEST_F(XPTasteTest, TasteAbIstEinSatz) {
    roh.TasteAbSenden(65);
    EXPECT_EQ(bytes.aufrufe, (std::vector<std::vector<Bytes>>{{Bytes{1,    0,    0, 0, // type INPUT_KEYBOARD
                                                                     65,   0,          // wVk
                                                                     0x34, 0x12,       // wScan
                                                                     0,    0,    0, 0, // dwFlags
                                                                     0,    0,    0, 0, // time
                                                                     0,    0,    0, 0, // dwExtraInfo
                                                                     0,    0,    0, 0, 0, 0, 0, 0}}}));
    EXPECT_EQ(bytes.abfragen, Texte{"65 art 0"});
    EXPECT_EQ(pruefungen, 1);
}

TEST_F(XPTasteTest, ErweiterteTasteAb) {
    roh.TasteAbSenden(34);
    EXPECT_EQ(bytes.aufrufe, (std::vector<std::vector<Bytes>>{{Bytes{1, 0, 0, 0, 34, 0, 0x34, 0x12, 1, 0,
                                                                     0, 0, 0, 0, 0,  0, 0,    0,    0, 0}}}));
}

TEST_F(XPTasteTest, TasteAufIstEinSatz) {
    roh.TasteAufSenden(0x0141);
    EXPECT_EQ(bytes.aufrufe, (std::vector<std::vector<Bytes>>{{Bytes{1, 0, 0, 0, 0x41, 1, 0x34, 0x12, 2, 0, 0,
                                                                     0, 0, 0, 0, 0,    0, 0,    0,    0}}}));
    EXPECT_EQ(pruefungen, 0);
}

TEST_F(XPTasteTest, ErweiterteTasteAuf) {
    roh.TasteAufSenden(47);
    EXPECT_EQ(bytes.aufrufe, (std::vector<std::vector<Bytes>>{{Bytes{1, 0, 0, 0, 47, 0, 0x34, 0x12, 3, 0,
                                                                     0, 0, 0, 0, 0,  0, 0,    0,    0, 0}}}));
}

TEST_F(XPTasteTest, ErweitertIstVon34Bis47) {
    std::vector<int> erweiterte;
    for (int code = 0; code <= 32767; ++code)
        if (istErweitert(static_cast<VirtuelleTaste>(code)))
            erweiterte.push_back(code);
    EXPECT_EQ(erweiterte, (std::vector<int>{34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47}));
}

TEST_F(XPTasteTest, RadIstEinMaussatz) {
    roh.MausDruecken(4);
    EXPECT_EQ(bytes.aufrufe,
              (std::vector<std::vector<Bytes>>{{Bytes{0,    0,    0,    0,                // type INPUT_MOUSE
                                                      0,    0,    0,    0,    0, 0, 0, 0, // dx, dy
                                                      0xFC, 0xFF, 0xFF, 0xFF,             // mouseData -4
                                                      0,    8,    0,    0, // dwFlags MOUSEEVENTF_WHEEL
                                                      0,    0,    0,    0,    0, 0, 0, 0}}}));
    EXPECT_EQ(pruefungen, 0);
}

TEST_F(XPTasteTest, MaustastenSindSaetzeOhneBewegung) {
    roh.MausDruecken(2);
    roh.MausLoesen(2);
    EXPECT_EQ(bytes.aufrufe, (std::vector<std::vector<Bytes>>{
                                 {Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 32, 0, 0, 0}},
                                 {Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 64, 0, 0, 0}}}));
}

TEST_F(XPTasteTest, DrueckenNachSelektor) {
    for (int selektor = -1; selektor <= 6; ++selektor)
        xpTaste.MausDruecken(selektor);
    EXPECT_EQ(probe.texteAbholen(), (Texte{"LD", "RD", "MD", "W+3", "W-4"}));
}

TEST_F(XPTasteTest, LoesenNachSelektor) {
    for (int selektor = -1; selektor <= 6; ++selektor)
        xpTaste.MausLoesen(selektor);
    EXPECT_EQ(probe.texteAbholen(), (Texte{"LU", "RU", "MU"}));
}

TEST_F(XPTasteTest, CodeAusserhalbIstFehler6UndSendetNichts) {
    EXPECT_EQ(fehlernummer([this] { xpTaste.TasteAbSenden(tastencode(32768)); }), 6);
    EXPECT_EQ(fehlernummer([this] { xpTaste.TasteAufSenden(tastencode(-1)); }), 6);
    EXPECT_EQ(probe.texteAbholen(), Texte{});
    EXPECT_EQ(pruefungen, 0);
    xpTaste.TasteAbSenden(32767);
    xpTaste.TasteAufSenden(0);
    EXPECT_EQ(probe.texteAbholen(), (Texte{"+32767", "-0"}));
}

} // namespace
