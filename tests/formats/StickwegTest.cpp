// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Stickweg.h"

#include <gtest/gtest.h>

namespace {

const Stickweg WEG{{{{0, 65535, 1}, {0, 0, 0}, {32767, 33000, 4294967295}}, {}, {{1, 2, 3}}}};
const std::string TEXT = "Stickweg 1\nEbene 0 3\n0 65535 1\n0 0 0\n32767 33000 4294967295\nEbene 1 0\n"
                         "Ebene 2 1\n1 2 3\nEnde\n";

/// The text with a piece of it exchanged.
std::string mit(const std::string& anderes, const std::string& statt) {
    auto text = TEXT;
    return text.replace(text.find(statt), statt.size(), anderes);
}

} // namespace

TEST(StickwegTest, WasGeschriebenWirdWirdGelesen) {
    EXPECT_EQ(stickwegSchreiben(WEG), TEXT);
    EXPECT_EQ(stickwegLesen(TEXT), WEG);
    EXPECT_EQ(stickwegLesen(stickwegSchreiben({})), Stickweg());
}

TEST(StickwegTest, WasNichtGanzIstIstNichts) {
    for (std::size_t i = 0; i < TEXT.size(); ++i)
        EXPECT_EQ(stickwegLesen(TEXT.substr(0, i)), std::nullopt) << i;
    EXPECT_EQ(stickwegLesen(TEXT + "\n"), std::nullopt);
}

TEST(StickwegTest, WasAndersDastehtIstNichts) {
    EXPECT_EQ(stickwegLesen(mit("Stickweg 2", "Stickweg 1")), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("Ebene 0 1", "Ebene 2 1")), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("Ebene 0 2", "Ebene 0 3")), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("Ebene 0 4", "Ebene 0 3")), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("65536", "65535")), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("-1", "65535")), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("4294967296", "4294967295")), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("1  2 3", "1 2 3")), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("1 2 3 ", "1 2 3")), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("x 2 3", "1 2 3")), std::nullopt);
}

TEST(StickwegTest, MehrAlsEineHalbeStundeIstZuViel) {
    Stickweg weg;
    weg[1].assign(WEGSTELLEN_HOECHSTENS, {7, 8, 9});
    EXPECT_TRUE(stickwegLesen(stickwegSchreiben(weg)));
    weg[2].push_back({7, 8, 9});
    EXPECT_EQ(stickwegLesen(stickwegSchreiben(weg)), std::nullopt);
    EXPECT_EQ(stickwegLesen(mit("Ebene 0 4000000000", "Ebene 0 3")), std::nullopt);
}
