// SPDX-License-Identifier: GPL-3.0-or-later
// The last record of a Schema, played again for the way of a stick.
#include "editors/stick/Mitschnittleser.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

using Stand = Wegprobe::Stand;
using namespace std::chrono_literals;

const Mitschnittdatei DATEI{"wo auch immer", "2026-11-22 11.36.05"};
const std::string AUFNAHME =
    "# Record of the Schema \"S\", saved 2026-11-22T11:36:05\ntoleranz 10\ngrundzeilen\n"
    "sql INSERT INTO tblStickAktion VALUES ('S', 0, 20000, 0, 0, 0, '2,0,65,0,0');\n"
    "0 start\n98 achse 0 10000\n148 achse 0 32767\n250 ende\n=\n";

class Mitschnittlesertest : public testing::Test {
protected:
    /// Waits until so much is known.
    static bool kommtZu(Mitschnittleser& leser, Stand stand) {
        const auto bis = std::chrono::steady_clock::now() + 30s;
        while (leser.probe(0).stand != stand && std::chrono::steady_clock::now() < bis)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return leser.probe(0).stand == stand;
    }
    Mitschnittleser::Suche findet(std::optional<Mitschnittdatei> was) {
        return [this, was] {
            ++suchen_;
            return was;
        };
    }
    /// What the player itself makes of a record.
    std::optional<Stickweg> nachgespielt(const std::string& inhalt, Stickseite seite = Stickseite::Links) {
        const auto pfad = ordner_.pfad() / "a.spur";
        dateiSchreiben(pfad, inhalt);
        return mitschnittNachspielen(seite, {pfad.string(), DATEI.zeitpunkt}, false);
    }

    Testordner ordner_;
    std::atomic<int> suchen_ = 0;
};

} // namespace

TEST_F(Mitschnittlesertest, ErSuchtErstWennJemandFragtUndNurEinmal) {
    Stickweg weg;
    weg[2] = {{1, 2, 400}};
    std::atomic<bool> darf = false;
    Mitschnittleser leser(findet(DATEI), [&](const Mitschnittdatei& datei, const std::atomic<bool>&) {
        while (!darf)
            std::this_thread::yield();
        return datei == DATEI ? std::optional(weg) : std::nullopt;
    });
    int gemeldet = 0;
    QObject::connect(&leser, &Mitschnittleser::gelesen, &leser, [&gemeldet] { ++gemeldet; });
    QCoreApplication::processEvents();
    EXPECT_EQ(suchen_, 0);
    EXPECT_EQ(leser.probe(0).stand, Stand::Ohne) << "whether there is one is not known yet";
    ASSERT_TRUE(kommtZu(leser, Stand::Wartet));
    EXPECT_EQ(leser.probe(1).stand, Stand::Wartet);
    EXPECT_EQ(gemeldet, 1);
    darf = true;
    ASSERT_TRUE(kommtZu(leser, Stand::Da));
    EXPECT_EQ(gemeldet, 2);
    EXPECT_EQ(leser.probe(2).stand, Stand::Da);
    EXPECT_EQ(leser.probe(2).zeitpunkt, DATEI.zeitpunkt);
    ASSERT_NE(leser.probe(2).zaehlende(), nullptr);
    EXPECT_DOUBLE_EQ(leser.probe(2).zaehlende()->sekunden(), 2);
    EXPECT_EQ(leser.probe(0).zaehlende(), nullptr) << "of this layer it tells nothing";
    EXPECT_EQ(suchen_, 1);
}

TEST_F(Mitschnittlesertest, OhneMitschnittBleibtEsDabei) {
    std::atomic<bool> gespielt = false;
    {
        Mitschnittleser leser(findet(std::nullopt), [&](const Mitschnittdatei&, const std::atomic<bool>&) {
            gespielt = true;
            return std::optional<Stickweg>();
        });
        leser.probe(0);
        const auto bis = std::chrono::steady_clock::now() + 30s;
        while (suchen_ == 0 && std::chrono::steady_clock::now() < bis)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QCoreApplication::processEvents();
        EXPECT_EQ(leser.probe(0).stand, Stand::Ohne);
    }
    EXPECT_EQ(suchen_, 1);
    EXPECT_FALSE(gespielt);
}

TEST_F(Mitschnittlesertest, WasSichNichtSpielenLaesstIstUnbrauchbar) {
    Mitschnittleser leser(findet(DATEI), [](const Mitschnittdatei&, const std::atomic<bool>&) {
        return std::optional<Stickweg>();
    });
    ASSERT_TRUE(kommtZu(leser, Stand::Unbrauchbar));
    EXPECT_EQ(leser.probe(0).zeitpunkt, DATEI.zeitpunkt);
}

TEST_F(Mitschnittlesertest, WerGehtWartetNichtBisEsGespieltIst) {
    std::atomic<bool> abgebrochen = false;
    {
        Mitschnittleser leser(findet(DATEI), [&](const Mitschnittdatei&, const std::atomic<bool>& abbruch) {
            while (!abbruch)
                std::this_thread::yield();
            abgebrochen = true;
            return std::optional<Stickweg>();
        });
        ASSERT_TRUE(kommtZu(leser, Stand::Wartet));
    }
    EXPECT_TRUE(abgebrochen);
}

// --- the player itself ---

TEST_F(Mitschnittlesertest, DerSpielerSagtWoDerStickWar) {
    const auto weg = nachgespielt(AUFNAHME + "100 +65\n150 -65\n");
    ASSERT_TRUE(weg);
    EXPECT_EQ((*weg)[0],
              (std::vector<Wegstelle>{{32767, 32767, 18}, {10000, 32767, 10}, {32767, 32767, 20}}));
    EXPECT_TRUE((*weg)[1].empty());
    const auto rechts = nachgespielt(AUFNAHME + "100 +65\n150 -65\n", Stickseite::Rechts);
    ASSERT_TRUE(rechts);
    EXPECT_EQ((*rechts)[0], (std::vector<Wegstelle>{{32767, 32767, 48}}));
}

TEST_F(Mitschnittlesertest, WasAndersSpieltAlsEsDastehtGiltNicht) {
    EXPECT_EQ(nachgespielt(AUFNAHME), std::nullopt) << "events that it does not tell";
    EXPECT_EQ(nachgespielt(AUFNAHME + "100 +66\n150 -66\n"), std::nullopt);
    EXPECT_EQ(nachgespielt("Unsinn"), std::nullopt);
    EXPECT_EQ(nachgespielt("0 start\n10 ende\n=\n"), std::nullopt) << "a trace, and no record";
}

TEST_F(Mitschnittlesertest, WasNichtZuEndeKommtWirdAbgebrochen) {
    const auto pfad = ordner_.pfad() / "a.spur";
    dateiSchreiben(pfad, "toleranz 10\nsql WITH RECURSIVE x(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM x) "
                         "SELECT count(*) FROM x;\n0 start\n10 ende\n=\n");
    const auto vorher = qgetenv("TMPDIR");
    const auto ablage = ordner_.pfad() / "ablage";
    std::filesystem::create_directory(ablage);
    qputenv("TMPDIR", ablage.c_str());
    std::atomic<bool> abbruch = false;
    std::optional<Stickweg> weg = Stickweg();
    std::thread faden([&] { weg = mitschnittNachspielen(Stickseite::Links, {pfad.string(), ""}, abbruch); });
    const auto liegtEtwas = [&] {
        for (const auto& eintrag : std::filesystem::recursive_directory_iterator(ablage))
            if (eintrag.is_regular_file())
                return true;
        return false;
    };
    const auto bis = std::chrono::steady_clock::now() + 30s;
    while (!liegtEtwas() && std::chrono::steady_clock::now() < bis)
        std::this_thread::yield();
    abbruch = true;
    faden.join();
    vorher.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", vorher);
    EXPECT_EQ(weg, std::nullopt);
    EXPECT_TRUE(std::filesystem::is_empty(ablage)) << "what the player laid down went with it";
}
