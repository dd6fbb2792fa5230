// SPDX-License-Identifier: GPL-3.0-or-later
// State in lines and back.
#include "engine/mitschnitt/Zustandsgang.h"

#include <gtest/gtest.h>

namespace {

template <class Wert> Zustandszeilen geschrieben(const Wert& wert, const Wert& anfang = {}) {
    Zustandsschreiber schreiber;
    schreiber("name", wert, anfang);
    return schreiber.zeilen();
}

template <class Wert> Wert gelesen(const std::string& worte) {
    Wert wert{};
    Zustandsleser leser({"name " + worte});
    leser("name", wert);
    leser.allesGelesen();
    return wert;
}

template <class Wert> Wert hinUndZurueck(const Wert& wert) {
    const auto zeilen = geschrieben(wert);
    EXPECT_EQ(zeilen.size(), 1U);
    Wert zurueck{};
    Zustandsleser leser(zeilen);
    leser("name", zurueck);
    return zurueck;
}

} // namespace

TEST(Zustandsgang, WasAnfaenglichIstStehtNichtDa) {
    EXPECT_EQ(geschrieben(0), Zustandszeilen{});
    EXPECT_EQ(geschrieben(-1, -1), Zustandszeilen{});
    EXPECT_EQ(geschrieben(0, -1), Zustandszeilen{"name 0"});
    EXPECT_EQ(geschrieben(std::string()), Zustandszeilen{});
    EXPECT_EQ(geschrieben(std::array<Feld, 2>{}), Zustandszeilen{});
}

TEST(Zustandsgang, JederTextWirdEinWort) {
    std::string alle;
    for (int zeichen = 0; zeichen < 256; ++zeichen)
        alle += static_cast<char>(zeichen);
    const auto zeile = geschrieben(alle).front().substr(5);
    EXPECT_TRUE(std::ranges::all_of(zeile, [](char zeichen) { return zeichen > ' ' && zeichen < 0x7f; }));
    EXPECT_EQ(hinUndZurueck(alle), alle);
    EXPECT_EQ(geschrieben(std::string("a b/%"))[0], "name a%20b%2f%25");
    EXPECT_EQ(gelesen<std::string>("%"), "");
}

TEST(Zustandsgang, JedeArtKommtZurueck) {
    EXPECT_EQ(hinUndZurueck(std::array<int, 3>{-7, 0, 65535}), (std::array<int, 3>{-7, 0, 65535}));
    EXPECT_EQ(hinUndZurueck(std::array<bool, 2>{false, true}), (std::array<bool, 2>{false, true}));
    const std::array<Feld, 4> felder{Feld(), Feld(""), Feld(" 07"), Feld("x-")};
    EXPECT_EQ(hinUndZurueck(felder), felder);
    const std::vector<Halteeintrag> eintraege{{2, 65, "065"}, {12, 32, " 32"}};
    EXPECT_EQ(hinUndZurueck(eintraege), eintraege);
    const std::array<std::optional<Halteeintrag>, 2> plaetze{std::nullopt, Halteeintrag{17, 70, "70"}};
    EXPECT_EQ(hinUndZurueck(plaetze), plaetze);
    EXPECT_EQ(aktionstext(hinUndZurueck(std::make_shared<const Stickaktion>("2,1,71, 20,1"))),
              "2,1,71, 20,1");
    const std::vector<Schubangaben> schub{{Feld("1"), {Feld("65"), Feld(""), Feld(")")}}};
    const auto zurueck = hinUndZurueck(schub);
    ASSERT_EQ(zurueck.size(), 1U);
    EXPECT_EQ(zurueck[0].unterwahl, schub[0].unterwahl);
    EXPECT_EQ(zurueck[0].werte, schub[0].werte);
}

TEST(Zustandsgang, WasKeinenSinnGibtIstEinFehler) {
    EXPECT_THROW(gelesen<int>("12x"), Zustandsfehler);
    EXPECT_THROW(gelesen<int>("1 2"), Zustandsfehler);
    EXPECT_THROW(gelesen<int>(""), Zustandsfehler);
    EXPECT_THROW(gelesen<std::string>("a%2"), Zustandsfehler);
    EXPECT_THROW(gelesen<std::string>("a%zz"), Zustandsfehler);
    EXPECT_THROW(gelesen<Feld>("12"), Zustandsfehler);
    EXPECT_THROW((gelesen<std::array<int, 2>>("1")), Zustandsfehler);
    EXPECT_THROW(gelesen<std::vector<Halteeintrag>>("2/65"), Zustandsfehler);
    EXPECT_THROW(Zustandsleser({"a 1", "a 2"}), Zustandsfehler);
    EXPECT_THROW(Zustandsleser({"a 1"}).allesGelesen(), Zustandsfehler);
}
