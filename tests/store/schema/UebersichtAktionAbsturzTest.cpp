// SPDX-License-Identifier: GPL-3.0-or-later
// Death by SIGKILL at any time and at each step of the disk of a swap between two files, of a copy and of a
// deletion: both files are before it or both are after it.
#include "store/schema/UebersichtAktion.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/StoerVfs.h"
#include "tests/store/schema/Ebenenbau.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace {

void erwarteHeil(const Testdatenbank& datei) {
    EXPECT_THAT(datei.zeilen("PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
}

/// Lines and actions of the left stick without the numbers of the rows, which a swap does not keep.
Tabellenbild stick(const Testdatenbank& datei) {
    auto bild = datei.zeilen("SELECT * FROM tblStick ORDER BY Schemaname, \"index\"");
    for (auto& zeile : datei.zeilen("SELECT * FROM tblStickAktion ORDER BY Schemaname, Umschalt, Aktion"))
        bild.push_back(std::move(zeile));
    return bild;
}

} // namespace

TEST(UebersichtAktionAbsturz, EinWechselZwischenZweiDateienIstGanzOderGarNicht) {
    Testdatenbank eine;
    Testdatenbank andere;
    schemaLegen(eine, "S", 1000);
    schemaLegen(andere, "S", 20000);
    // With one name on both sides a second swap undoes the first.
    const std::array<Tabellenbild, 2> vorher{stick(eine), stick(andere)};
    const auto wechseln = [&](int) {
        LayerWechseln({{eine.pfad(), "S"}, 0}, {{andere.pfad(), "S"}, 0}, [](std::string_view) {});
    };
    wechseln(0);
    const std::array<Tabellenbild, 2> nachher{stick(eine), stick(andere)};
    ASSERT_NE(vorher, nachher);
    wechseln(0);
    ASSERT_EQ(vorher, (std::array<Tabellenbild, 2>{stick(eine), stick(andere)}));

    bool getauscht = false;
    int begonneneVorher = 0;
    int stehengeblieben = 0;
    toetenUndPruefen(wechseln, [&](Fortschritt stand) {
        const int fertige = stand.fertig - begonneneVorher; // all since the last death came to their end
        const bool mitten = stand.begonnen != stand.fertig;
        const bool ohneLetzten = fertige % 2 == 0 ? getauscht : !getauscht;
        // The one that is opened first recovers by itself.
        const bool andereZuerst = stand.begonnen % 2 == 0;
        auto zwei = andereZuerst ? stick(andere) : Tabellenbild();
        const auto eins = stick(eine);
        zwei = stick(andere);
        erwarteHeil(eine);
        erwarteHeil(andere);
        const bool istGetauscht = eins == nachher[0];
        EXPECT_EQ(eins, (istGetauscht ? nachher : vorher)[0]);
        EXPECT_EQ(zwei, (istGetauscht ? nachher : vorher)[1]);
        EXPECT_TRUE(mitten || istGetauscht == ohneLetzten);
        stehengeblieben += mitten && istGetauscht == ohneLetzten;
        getauscht = istGetauscht;
        begonneneVorher = stand.begonnen;
    });
    EXPECT_GT(stehengeblieben, TOETUNGEN / 8);
}

TEST(UebersichtAktionAbsturz, EineKopieInZweiEbenenIstGanzOderGarNicht) {
    Testdatenbank datei;
    schemaLegen(datei, "Z", 1000);
    for (const std::string name : {"0", "1"})
        schemaLegen(datei, name, name == "0" ? 20000 : 30000);
    const auto kopieren = [&](int zahl) {
        LayerKopieren({{datei.pfad(), std::to_string(zahl % 2)}, 0}, {datei.pfad(), "Z"},
                      {true, false, false, false, false, false, true});
    };
    const auto ziel = [&] {
        Tabellenbild bild;
        for (const std::string zusatz : {"", "R"})
            for (const std::string tabelle : {"tblStick", "tblStickAktion"})
                for (auto& zeile : datei.zeilen("SELECT * FROM " + tabelle + zusatz +
                                                " WHERE Schemaname = 'Z' ORDER BY 2, 3, 7"))
                    bild.push_back(std::move(zeile));
        return bild;
    };
    std::array<Tabellenbild, 2> staende;
    for (const int zahl : {1, 0}) {
        kopieren(zahl);
        staende[static_cast<std::size_t>(zahl)] = ziel();
    }
    ASSERT_NE(staende[0], staende[1]);
    std::size_t letzter = 0;
    toetenUndPruefen(kopieren, [&](Fortschritt stand) {
        erwarteHeil(datei);
        const auto bild = ziel();
        const bool istDerLetzte = bild == staende[static_cast<std::size_t>(stand.begonnen % 2)];
        // The one before may have come to its end in this life or in an earlier one.
        EXPECT_TRUE(bild == staende[0] || bild == staende[1]);
        EXPECT_TRUE(istDerLetzte || stand.begonnen != stand.fertig);
        letzter += istDerLetzte;
    });
    EXPECT_GT(letzter, 0U);
}

// --- at each step of the disk ---

namespace {

using Arbeit = std::function<void()>;

/// Two files whose content a work changes in one step or in several, each of them whole.
class UebersichtAktionSchritte : public testing::Test {
protected:
    UebersichtAktionSchritte() {
        schemaLegen(eine, "S", 1000);
        schemaLegen(eine, "T", 10000);
        schemaLegen(andere, "S", 20000);
        anfang_ = {dateiLesen(eine.pfad()), dateiLesen(andere.pfad())};
    }

    /// Kills a child at each step of the disk that the last work of `arbeiten` takes. What the files hold
    /// then is how they began or how one of the works leaves them, in this order as the steps go on, and all
    /// of these are seen.
    void toetenAnJedemSchritt(const std::vector<Arbeit>& arbeiten) {
        std::vector<Stand> staende{stand(false)};
        for (const auto& arbeit : arbeiten) {
            arbeit();
            staende.push_back(stand(false));
            vonVorn();
        }
        std::vector<int> gesehen(staende.size(), 0);
        std::size_t bisher = 0;
        StoerVfs disk;
        bool getoetet = true;
        for (int n = 1; getoetet && !HasFailure(); ++n) {
            SCOPED_TRACE("step " + std::to_string(n));
            getoetet = wurdeGetoetet(imKind([&] {
                disk.stoereAb(n, StoerVfs::Eingriff::Toeten);
                arbeiten.back()();
            }));
            const auto stelle = std::ranges::find(staende, stand(n % 2 == 0)) - staende.begin();
            ASSERT_LT(static_cast<std::size_t>(stelle), staende.size());
            EXPECT_GE(static_cast<std::size_t>(stelle), bisher);
            bisher = static_cast<std::size_t>(stelle);
            ++gesehen[bisher];
            for (const auto* datei : {&eine, &andere})
                erwarteHeil(*datei);
            vonVorn();
        }
        EXPECT_EQ(bisher, staende.size() - 1);
        EXPECT_THAT(gesehen, testing::Each(testing::Gt(0)));
        EXPECT_GT(gesehen.front(), 5); // it died in the midst of the work
    }

    const Testdatenbank eine;
    const Testdatenbank andere;

private:
    using Stand = std::pair<std::vector<Tabellenbild>, std::vector<Tabellenbild>>;

    /// The file that is read first has to recover by itself.
    Stand stand(bool andereZuerst) const {
        Stand gelesen;
        if (andereZuerst)
            gelesen.second = andere.inhalt();
        gelesen.first = eine.inhalt();
        gelesen.second = andere.inhalt();
        return gelesen;
    }
    void vonVorn() const {
        dateiSchreiben(eine.pfad(), anfang_[0]);
        dateiSchreiben(andere.pfad(), anfang_[1]);
    }
    std::array<std::string, 2> anfang_;
};

} // namespace

TEST_F(UebersichtAktionSchritte, EinWechselIstGanzOderGarNicht) {
    for (const int index : {1, 3})
        toetenAnJedemSchritt({[&] {
            LayerWechseln({{eine.pfad(), "S"}, index}, {{andere.pfad(), "S"}, index},
                          [](std::string_view) {});
        }});
}

TEST_F(UebersichtAktionSchritte, EineKopieInEineAndereDateiIstGanzOderGarNicht) {
    toetenAnJedemSchritt({[&] {
        LayerKopieren({{eine.pfad(), "T"}, 0}, {andere.pfad(), "S"}, {true, false, true});
    }});
}

TEST_F(UebersichtAktionSchritte, EineKopieUeberEinenZweitenNamenDerDateiIstGanzOderGarNicht) {
    const fs::path zweiterName = andere.ordner() / "Zweiter Name.twk";
    fs::create_hard_link(eine.pfad(), zweiterName);
    toetenAnJedemSchritt({[&] {
        LayerKopieren({{eine.pfad(), "T"}, 0}, {zweiterName.string(), "S"}, {true, false, true});
    }});
}

TEST_F(UebersichtAktionSchritte, LoeschenEinerEbeneDerButtonsIstGanzOderGarNicht) {
    toetenAnJedemSchritt({[&] {
        LayerLoeschen({{eine.pfad(), "S"}, 4}, [](std::string_view) { return true; });
    }});
}

TEST_F(UebersichtAktionSchritte, LoeschenEinesSticksNimmtErstAlleAktionenDannAlleLinien) {
    const auto loeschen = [&](bool auchFelder) {
        return [&, auchFelder] {
            LayerLoeschen({{eine.pfad(), "S"}, 8}, [auchFelder](std::string_view) { return auchFelder; });
        };
    };
    toetenAnJedemSchritt({loeschen(false), loeschen(true)});
}
