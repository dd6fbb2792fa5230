// SPDX-License-Identifier: GPL-3.0-or-later
// The model of a disk itself: what it keeps for sure, and what it may lose.
#include "tests/store/strom/Platte.h"

#include <gmock/gmock.h>

#include <set>

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Key;
using testing::Not;

namespace {

using Art = Plattenschritt::Art;

constexpr std::size_t SEKTOR = 4;

/// All that may lie there after a power cut, as far as many draws show it.
std::set<Plattenbild> moegliche(const Plattenbild& anfang, const std::vector<Plattenschritt>& schritte) {
    Platte platte(anfang);
    for (const auto& schritt : schritte)
        platte.tun(schritt);
    std::set<Plattenbild> bilder;
    std::mt19937 zufall(1);
    const Los los = [&](int n) { return static_cast<int>(zufall() % static_cast<unsigned>(n)); };
    for (int i = 0; i < 3000; ++i)
        bilder.insert(platte.nachStromausfall(SEKTOR, i % 2 == 0, los, zufall));
    return bilder;
}

Plattenschritt schreiben(std::size_t stelle, const std::string& daten) {
    return {Art::Schreiben, "/o/d", {}, stelle, daten};
}

const Plattenschritt SICHERN{Art::Sichern, "/o/d"};
const Plattenschritt ORDNER{Art::OrdnerSichern, "/o"};

} // namespace

TEST(Platte, WasGesichertIstBleibt) {
    EXPECT_THAT(moegliche({{"/o/d", "alt"}}, {schreiben(0, "neu"), SICHERN}),
                ElementsAre(Plattenbild{{"/o/d", "neu"}}));
}

TEST(Platte, WasNichtGesichertIstKannBleibenFehlenOderHalbSein) {
    const auto bilder = moegliche({{"/o/d", "altalt"}}, {schreiben(0, "neuneu")});
    EXPECT_THAT(bilder, IsSupersetOf({Plattenbild{{"/o/d", "altalt"}}, Plattenbild{{"/o/d", "neuneu"}},
                                      Plattenbild{{"/o/d", "neunlt"}}, Plattenbild{{"/o/d", "altaeu"}},
                                      Plattenbild{{"/o/d", "netalt"}}}))
        << "the sectors are of four bytes";
    EXPECT_GT(bilder.size(), 20U) << "garbage";
}

TEST(Platte, SektorenKommenInJederReihenfolge) {
    EXPECT_THAT(moegliche({{"/o/d", "...."}}, {schreiben(0, "aaaa"), schreiben(0, "bb")}),
                IsSupersetOf({Plattenbild{{"/o/d", "aaaa"}}, Plattenbild{{"/o/d", "bbaa"}},
                              Plattenbild{{"/o/d", "bb.."}}, Plattenbild{{"/o/d", "...."}}}));
}

TEST(Platte, EineLueckeSindNullen) {
    EXPECT_THAT(moegliche({{"/o/d", ""}}, {schreiben(0, "aaaa"), schreiben(4, "b")}),
                Contains(Plattenbild{{"/o/d", std::string("\0\0\0\0b", 5)}}));
}

TEST(Platte, EineKuerzungKannFehlen) {
    EXPECT_THAT(moegliche({{"/o/d", "lang"}}, {{Art::Kuerzen, "/o/d", {}, 2}}),
                ElementsAre(Plattenbild{{"/o/d", "la"}}, Plattenbild{{"/o/d", "lang"}}));
}

TEST(Platte, EineGesicherteDateiHatNochKeinenNamen) {
    const std::vector<Plattenschritt> schritte{{Art::Anlegen, "/o/d"}, schreiben(0, "neu"), SICHERN};
    EXPECT_THAT(moegliche({}, schritte), ElementsAre(Plattenbild{}, Plattenbild{{"/o/d", "neu"}}));
    auto mitOrdner = schritte;
    mitOrdner.push_back(ORDNER);
    EXPECT_THAT(moegliche({}, mitOrdner), ElementsAre(Plattenbild{{"/o/d", "neu"}}));
}

TEST(Platte, EinGesicherterNameHatNochKeinenInhalt) {
    EXPECT_THAT(moegliche({}, {{Art::Anlegen, "/o/d"}, ORDNER, schreiben(0, "neu")}),
                Contains(Plattenbild{{"/o/d", ""}}));
}

TEST(Platte, EineGeloeschteKannWiederDaSein) {
    EXPECT_THAT(moegliche({{"/o/d", "alt"}}, {{Art::Loeschen, "/o/d"}}),
                ElementsAre(Plattenbild{}, Plattenbild{{"/o/d", "alt"}}));
    EXPECT_THAT(moegliche({{"/o/d", "alt"}}, {{Art::Loeschen, "/o/d"}, ORDNER}), ElementsAre(Plattenbild{}));
}

TEST(Platte, EinNeuerNameErsetztDenAltenGanzOderGarNicht) {
    const Plattenbild anfang{{"/o/d", "alt"}, {"/o/n", "neu"}};
    EXPECT_THAT(moegliche(anfang, {{Art::Umbenennen, "/o/n", "/o/d"}}),
                ElementsAre(Plattenbild{{"/o/d", "alt"}, {"/o/n", "neu"}}, Plattenbild{{"/o/d", "neu"}}));
    EXPECT_THAT(moegliche(anfang, {{Art::Tauschen, "/o/n", "/o/d"}}),
                ElementsAre(anfang, Plattenbild{{"/o/d", "neu"}, {"/o/n", "alt"}}));
}

TEST(Platte, EinZweiterNameFuehrtZuDerselbenDateiUndKannFehlen) {
    const Plattenschritt name{Art::Verknuepfen, "/o/d", "/o/z"};
    EXPECT_THAT(moegliche({{"/o/d", "alt"}}, {name}),
                ElementsAre(Plattenbild{{"/o/d", "alt"}}, Plattenbild{{"/o/d", "alt"}, {"/o/z", "alt"}}));
    EXPECT_THAT(moegliche({{"/o/d", "alt"}}, {name, ORDNER, schreiben(0, "neu"), SICHERN}),
                ElementsAre(Plattenbild{{"/o/d", "neu"}, {"/o/z", "neu"}}));
}

TEST(Platte, EinAndererOrdnerSichertNichts) {
    EXPECT_THAT(moegliche({{"/o/d", "alt"}}, {{Art::Loeschen, "/o/d"}, {Art::OrdnerSichern, "/p"}}),
                Contains(Plattenbild{{"/o/d", "alt"}}));
}

TEST(Platte, UmbenanntesOhneGesichertenInhaltIstLeer) {
    EXPECT_THAT(moegliche({{"/o/d", "alt"}}, {{Art::Anlegen, "/o/n"},
                                              {Art::Schreiben, "/o/n", {}, 0, "neu"},
                                              {Art::Umbenennen, "/o/n", "/o/d"},
                                              ORDNER}),
                Contains(Plattenbild{{"/o/d", ""}}));
}
