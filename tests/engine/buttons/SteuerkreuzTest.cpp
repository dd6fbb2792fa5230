// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/buttons/Steuerkreuz.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace {

constexpr std::uint32_t MITTE = 65535;
constexpr std::uint32_t NIRGENDS = 100;

std::string text(const std::vector<Kreuzereignis>& ereignisse) {
    std::string alles;
    for (const auto& ereignis : ereignisse)
        alles += (ereignis.gedrueckt ? "+" : "-") + std::to_string(ereignis.richtung);
    return alles;
}

/// The events of the last of several POV values, seen in turn by one fresh D-pad.
std::string zuletzt(std::initializer_list<std::uint32_t> werte) {
    Steuerkreuz kreuz;
    std::string letztes;
    for (const auto wert : werte)
        letztes = text(kreuz.auswerten(wert));
    return letztes;
}

// From each direction (row) to each (column), clockwise from up in eighths; the last column is the centre.
using Zeile = std::array<const char*, 9>;
constexpr std::array<Zeile, 8> UEBERGAENGE{{{"", "+1", "-0+1", "+1", "-0+2", "+2", "-0+3", "+3", "-0"},
                                            {"-1", "", "-0", "+1", "-1", "+2", "-1", "+3", "-1-0"},
                                            {"-1+0", "+0", "", "+2", "-1+2", "+2", "-1+3", "+3", "-1"},
                                            {"-1", "+1", "-2", "", "-1", "+2", "-1", "+3", "-1-2"},
                                            {"-2+0", "+1", "-2+1", "+1", "", "+3", "-2+3", "+3", "-2"},
                                            {"-2", "+1", "-2", "+1", "-3", "", "-2", "+3", "-2-3"},
                                            {"-3+0", "+1", "-3+1", "+1", "-3+2", "+2", "", "+0", "-3"},
                                            {"-3", "+1", "-3", "+1", "-3", "+2", "-0", "", "-3-0"}}};
constexpr std::array<const char*, 8> AUS_DER_MITTE{"+0", "+1+0", "+1", "+1+2", "+2", "+2+3", "+3", "+3+0"};

std::uint32_t pov(std::size_t achtel) {
    return achtel < 8 ? static_cast<std::uint32_t>(achtel) * 4500 : MITTE;
}

TEST(SteuerkreuzTest, AusDerMitte) {
    for (std::size_t nach = 0; nach < AUS_DER_MITTE.size(); ++nach)
        EXPECT_EQ(zuletzt({MITTE, pov(nach)}), AUS_DER_MITTE[nach]) << "to " << pov(nach);
}

TEST(SteuerkreuzTest, JederUebergang) {
    for (std::size_t von = 0; von < UEBERGAENGE.size(); ++von)
        for (std::size_t nach = 0; nach < UEBERGAENGE[von].size(); ++nach)
            EXPECT_EQ(zuletzt({pov(von), pov(nach)}), UEBERGAENGE[von][nach])
                << "from " << pov(von) << " to " << pov(nach);
}

TEST(SteuerkreuzTest, InDerMitteGeschiehtNichts) {
    EXPECT_EQ(zuletzt({MITTE}), "");
    EXPECT_EQ(zuletzt({0, MITTE, MITTE}), "");
}

TEST(SteuerkreuzTest, WertOhneRichtungAendertNichts) {
    for (const std::uint32_t wert : {1U, 4499U, 4501U, 31501U, 36000U, 65534U, 65536U, 4294967295U}) {
        EXPECT_EQ(zuletzt({wert}), "") << wert;
        EXPECT_EQ(zuletzt({4500, wert}), "") << wert;
        EXPECT_EQ(zuletzt({wert, MITTE}), "") << wert;
        EXPECT_EQ(zuletzt({4500, wert, MITTE}), "-1-0") << wert;
    }
}

TEST(SteuerkreuzTest, UeberWertOhneRichtungZurueckIstEinWechsel) {
    EXPECT_EQ(zuletzt({0, NIRGENDS, 0}), "-0+0");
    EXPECT_EQ(zuletzt({4500, NIRGENDS, 4500}), "+1");
    EXPECT_EQ(zuletzt({0, NIRGENDS, 9000}), "-0+1");
}

TEST(SteuerkreuzTest, NachDerMitteIstAllesVergessen) {
    EXPECT_EQ(zuletzt({4500, 13500, MITTE, 4500}), "+1+0");
}

} // namespace

TEST(Steuerkreuz, StehtInBeidenRichtungenEinerDiagonale) {
    const auto stehende = [](std::initializer_list<std::uint32_t> werte) {
        Steuerkreuz kreuz;
        for (const auto wert : werte)
            kreuz.auswerten(wert);
        std::string alle;
        for (int richtung = 0; richtung < 4; ++richtung)
            if (kreuz.steht(richtung))
                alle += std::to_string(richtung);
        return alle;
    };
    EXPECT_EQ(stehende({}), "");
    EXPECT_EQ(stehende({MITTE}), "");
    EXPECT_EQ(stehende({0}), "0");
    EXPECT_EQ(stehende({4500}), "01");
    EXPECT_EQ(stehende({13500}), "12");
    EXPECT_EQ(stehende({22500}), "23");
    EXPECT_EQ(stehende({31500}), "03");
    EXPECT_EQ(stehende({18000, NIRGENDS}), "2");
    EXPECT_EQ(stehende({18000, MITTE}), "");
}
