// Death by SIGKILL at any time of a swap between two files and of a copy: both files are before it or both
// are after it.
#include "store/UebersichtAktion.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/store/Ebenenbau.h"

#include <gmock/gmock.h>

#include <chrono>
#include <random>
#include <thread>

using testing::ElementsAre;

namespace {

constexpr int TOETUNGEN = 200;
constexpr int PAUSE_HOECHSTENS_US = 8000; // about as long as a step takes

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

/// Kills a child at `schritt` two hundred times; `pruefen` gets what it has begun and finished by then.
void toetenUndPruefen(const std::function<void(int)>& schritt,
                      const std::function<void(Fortschritt)>& pruefen) {
    std::mt19937 zufall(4711);
    int mitten = 0;
    int naechste = 1;
    for (int i = 0; i < TOETUNGEN && !testing::Test::HasFailure(); ++i) {
        Schreiber schreiber(naechste, [&] { return schritt; });
        schreiber.abwarten(static_cast<int>(zufall() % 2));
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % PAUSE_HOECHSTENS_US));
        const Fortschritt stand = schreiber.toeten();
        pruefen(stand);
        mitten += stand.begonnen != stand.fertig;
        naechste = stand.begonnen + 1;
    }
    EXPECT_GT(mitten, TOETUNGEN / 2); // most deaths came in the midst of work
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
