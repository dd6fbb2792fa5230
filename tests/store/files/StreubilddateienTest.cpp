// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Streubilddateien.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Kunsthand.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <fcntl.h>
#include <future>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

constexpr auto LINKS = Stickseite::Links;
constexpr auto RECHTS = Stickseite::Rechts;

class StreubilddateienTest : public testing::Test {
protected:
    static Streudaten daten(std::uint32_t takte) {
        Streudaten lauf;
        lauf.takte.resize(Streudaten::RASTERFELDER);
        lauf.takte[7] = takte;
        return lauf;
    }
    fs::path pfad() const { return dateien.pfad("S", LINKS, 0); }
    std::vector<std::string> namen() const { return namenIn(bilder); }

    const Testordner ordner;
    const fs::path bilder = ordner.pfad() / "Streubilder";
    const Streubilddateien dateien{bilder};
};

} // namespace

TEST_F(StreubilddateienTest, WasGespeichertWirdWirdGeladenJedesFuerSich) {
    EXPECT_EQ(dateien.laden("S", LINKS, 0), Streudaten{});
    std::uint32_t takte = 0;
    for (const auto* schema : {"S", "s", "T"})
        for (const auto seite : {LINKS, RECHTS})
            for (int ebene = 0; ebene < 3; ++ebene)
                ASSERT_TRUE(dateien.speichern(schema, seite, ebene, daten(++takte)));
    takte = 0;
    for (const auto* schema : {"S", "s", "T"})
        for (const auto seite : {LINKS, RECHTS})
            for (int ebene = 0; ebene < 3; ++ebene)
                EXPECT_EQ(dateien.laden(schema, seite, ebene), daten(++takte));
    EXPECT_EQ(namen().size(), 18U);
}

TEST_F(StreubilddateienTest, EinLaufKommtDazu) {
    const auto spiel = streudatenAus({.saat = 1}, 2000);
    ASSERT_TRUE(dateien.dazuzaehlen("S", LINKS, 0, spiel));
    EXPECT_EQ(dateien.laden("S", LINKS, 0), spiel);
    const auto weiteres = streudatenAus({.saat = 2}, 3000);
    ASSERT_TRUE(dateien.dazuzaehlen("S", LINKS, 0, weiteres));
    auto summe = spiel;
    zusammenzaehlen(summe, weiteres);
    EXPECT_EQ(dateien.laden("S", LINKS, 0), summe);
    EXPECT_THAT(namen(), ElementsAre(pfad().filename().string())) << "nothing lies beside it";
}

TEST_F(StreubilddateienTest, JederNameGibtEinenEigenenUndSicherenDateinamen) {
    std::set<std::string> gefaltete;
    const std::vector<std::string> schemata = {"S",
                                               "s",
                                               "",
                                               "..",
                                               "a/b",
                                               "a\\b",
                                               "a_b",
                                               "Größe",
                                               "große",
                                               "a b",
                                               "con",
                                               "a\nb",
                                               "a*b",
                                               "../../oben",
                                               std::string(300, 'x'),
                                               std::string(301, 'x')};
    for (const auto& schema : schemata) {
        const auto datei = dateien.pfad(schema, LINKS, 0);
        EXPECT_EQ(datei.parent_path(), bilder) << schema;
        auto name = datei.filename().string();
        EXPECT_LE(name.size() + std::string(".neu.1234567.999").size(), 143U) << "the shortest there is";
        EXPECT_EQ(name.find_first_not_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz-_."),
                  std::string::npos)
            << name;
        std::ranges::transform(name, name.begin(), [](char z) { return static_cast<char>(std::tolower(z)); });
        EXPECT_TRUE(gefaltete.insert(name).second) << name;
        ASSERT_TRUE(dateien.speichern(schema, LINKS, 0, daten(1)));
    }
    EXPECT_EQ(namen().size(), schemata.size());
    EXPECT_EQ(dateien.pfad("Spiel/2", RECHTS, 1).filename(), "Spiel_2-6fc2d9a6867a55e1-1R.streu");
}

TEST_F(StreubilddateienTest, DerOrdnerLiegtNebenDerDatenbank) {
    EXPECT_EQ(streubildordner("/daten/Belegung.twk"), "/daten/Streubilder");
}

// --- what can't be read ---

TEST_F(StreubilddateienTest, EinBeschaedigtesZaehltAlsKeinesUndKommtBeiseite) {
    fs::create_directory(bilder);
    const auto name = pfad().filename().string();
    for (const auto* schaden : {"erster", "zweiter"}) {
        dateiSchreiben(pfad(), schaden);
        EXPECT_EQ(dateien.laden("S", LINKS, 0), Streudaten{});
        ASSERT_TRUE(dateien.dazuzaehlen("S", LINKS, 0, daten(3)));
        EXPECT_EQ(dateien.laden("S", LINKS, 0), daten(3));
    }
    EXPECT_THAT(namen(), UnorderedElementsAre(name, name + ".beschaedigt", name + ".beschaedigt2"));
    EXPECT_EQ(dateiLesen(pfad().string() + ".beschaedigt"), "erster");
    EXPECT_EQ(dateiLesen(pfad().string() + ".beschaedigt2"), "zweiter");
}

TEST_F(StreubilddateienTest, WoZuVieleBeiseiteLiegenWirdKeinesWeggeworfen) {
    fs::create_directory(bilder);
    for (int i = 1; i <= 10; ++i) {
        dateiSchreiben(pfad(), "Schaden " + std::to_string(i));
        EXPECT_EQ(dateien.speichern("S", LINKS, 0, daten(3)), i < 10);
    }
    EXPECT_EQ(dateiLesen(pfad()), "Schaden 10");
    EXPECT_EQ(namen().size(), 10U);
}

TEST_F(StreubilddateienTest, EinZuGrossesIstBeschaedigt) {
    fs::create_directory(bilder);
    dateiSchreiben(pfad(), streudatenSchreiben(daten(1)) + std::string(100'000, '\0'));
    EXPECT_EQ(dateien.laden("S", LINKS, 0), Streudaten{});
}

TEST_F(StreubilddateienTest, EineNeuereFassungBleibtWieSieIst) {
    fs::create_directory(bilder);
    const std::string neuere = "GPkStreu\x02 anders";
    dateiSchreiben(pfad(), neuere);
    EXPECT_EQ(dateien.laden("S", LINKS, 0), Streudaten{});
    EXPECT_FALSE(dateien.speichern("S", LINKS, 0, daten(1)));
    EXPECT_FALSE(dateien.dazuzaehlen("S", LINKS, 0, daten(1)));
    EXPECT_EQ(dateiLesen(pfad()), neuere);
    EXPECT_EQ(namen().size(), 1U);
}

TEST_F(StreubilddateienTest, WasNichtGelesenWerdenDarfGiltNichtAlsBeschaedigt) {
    fs::permissions(ordner.pfad(), fs::perms::all);
    ASSERT_TRUE(dateien.speichern("S", LINKS, 0, daten(1)));
    fs::permissions(bilder, fs::perms::all);
    fs::permissions(pfad(), fs::perms::none);
    {
        const AlsNiemand niemand;
        EXPECT_FALSE(dateien.dazuzaehlen("S", LINKS, 0, daten(1)));
    }
    fs::permissions(pfad(), fs::perms::owner_all);
    EXPECT_EQ(dateien.laden("S", LINKS, 0), daten(1));
    EXPECT_EQ(namen().size(), 1U);
}

TEST_F(StreubilddateienTest, WasKeineDateiIstWirdWederGelesenNochErsetzt) {
    fs::create_directory(bilder);
    ASSERT_EQ(mkfifo(pfad().c_str(), 0600), 0);
    EXPECT_EQ(dateien.laden("S", LINKS, 0), Streudaten{});
    EXPECT_FALSE(dateien.dazuzaehlen("S", LINKS, 0, daten(1)));
    EXPECT_TRUE(fs::is_fifo(pfad()));
}

TEST_F(StreubilddateienTest, InEinemOrdnerDerNurGelesenWirdScheitertEs) {
    fs::permissions(ordner.pfad(), fs::perms(0555));
    {
        const AlsNiemand niemand;
        EXPECT_FALSE(dateien.speichern("S", LINKS, 0, daten(1)));
        EXPECT_TRUE(dateien.zuruecksetzen("S", LINKS, 0)) << "there is nothing";
    }
    fs::permissions(ordner.pfad(), fs::perms::owner_all);
    ASSERT_TRUE(dateien.speichern("S", LINKS, 0, daten(1)));
    fs::permissions(ordner.pfad(), fs::perms(0755));
    fs::permissions(bilder, fs::perms(0555));
    {
        const AlsNiemand niemand;
        EXPECT_FALSE(dateien.dazuzaehlen("S", LINKS, 0, daten(1)));
        EXPECT_FALSE(dateien.zuruecksetzen("S", LINKS, 0));
    }
    fs::permissions(bilder, fs::perms::owner_all);
    EXPECT_EQ(dateien.laden("S", LINKS, 0), daten(1));
}

// --- two copies ---

TEST_F(StreubilddateienTest, ZweiProgrammeZaehlenBeideDazu) {
    constexpr int LAEUFE = 50;
    const auto zaehlen = [&] {
        for (int i = 0; i < LAEUFE; ++i)
            if (!dateien.dazuzaehlen("S", LINKS, 0, daten(1)))
                _exit(1);
    };
    const pid_t eines = imKind(zaehlen);
    const pid_t anderes = imKind(zaehlen);
    for (const auto kind : {eines, anderes})
        EXPECT_FALSE(wurdeGetoetet(kind));
    EXPECT_EQ(dateien.laden("S", LINKS, 0), daten(2 * LAEUFE));
}

// A copy that hangs: it is waited for, in vain.
TEST_F(StreubilddateienTest, WerNichtFertigWirdVerliertDabeiNichts) {
    ASSERT_TRUE(dateien.speichern("S", LINKS, 0, daten(1)));
    const int ordnerkennung = open(bilder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(ordnerkennung, LOCK_EX | LOCK_NB), 0);
    std::array<std::future<bool>, 3> versuche{
        std::async(std::launch::async, [&] { return dateien.dazuzaehlen("S", LINKS, 0, daten(1)); }),
        std::async(std::launch::async, [&] { return dateien.speichern("S", LINKS, 0, daten(5)); }),
        std::async(std::launch::async, [&] { return dateien.zuruecksetzen("S", LINKS, 0); })};
    for (auto& versuch : versuche)
        EXPECT_FALSE(versuch.get());
    EXPECT_EQ(dateien.laden("S", LINKS, 0), daten(1)) << "reading waits for nobody";
    close(ordnerkennung);
    EXPECT_TRUE(dateien.dazuzaehlen("S", LINKS, 0, daten(1)));
}

// --- an end ---

TEST_F(StreubilddateienTest, ZurueckgesetztIstNichtsDa) {
    EXPECT_TRUE(dateien.zuruecksetzen("S", LINKS, 0));
    ASSERT_TRUE(dateien.speichern("S", LINKS, 0, daten(1)));
    ASSERT_TRUE(dateien.speichern("S", LINKS, 1, daten(2)));
    EXPECT_TRUE(dateien.zuruecksetzen("S", LINKS, 0));
    EXPECT_EQ(dateien.laden("S", LINKS, 0), Streudaten{});
    EXPECT_EQ(dateien.laden("S", LINKS, 1), daten(2));
}

// What another copy of the program is about to lay down goes, too.
TEST_F(StreubilddateienTest, LoeschenWartetAufWenDerGeradeSchreibt) {
    ASSERT_TRUE(dateien.speichern("S", LINKS, 0, daten(1)));
    const int ordnerkennung = open(bilder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(ordnerkennung, LOCK_EX | LOCK_NB), 0);
    const auto loeschen = std::async(std::launch::async, [&] { dateien.loeschen("S"); });
    EXPECT_EQ(loeschen.wait_for(std::chrono::milliseconds{100}), std::future_status::timeout);
    dateiSchreiben(dateien.pfad("S", RECHTS, 2), streudatenSchreiben(daten(1)));
    close(ordnerkennung);
    loeschen.wait();
    EXPECT_THAT(namen(), IsEmpty());
}

TEST_F(StreubilddateienTest, GeloeschtWirdAllesEinesSchemasUndNichtsSonst) {
    dateien.loeschen("S");
    EXPECT_FALSE(fs::exists(bilder));
    for (const auto* schema : {"S", "s", "S2"})
        for (const auto seite : {LINKS, RECHTS})
            ASSERT_TRUE(dateien.speichern(schema, seite, 2, daten(1)));
    const auto name = dateien.pfad("S", LINKS, 2).string();
    dateiSchreiben(name + ".beschaedigt", "Schaden");
    dateiSchreiben(name + ".beschaedigt7", "Schaden");
    dateiSchreiben(name + ".neu.4711.0", "angefangen");
    dateiSchreiben(name + ".txt", "von Hand");
    dateien.loeschen("S");
    std::vector<std::string> bleibende{fs::path(name).filename().string() + ".txt"};
    for (const auto* schema : {"s", "S2"})
        for (const auto seite : {LINKS, RECHTS})
            bleibende.push_back(dateien.pfad(schema, seite, 2).filename().string());
    EXPECT_THAT(namen(), testing::UnorderedElementsAreArray(bleibende));
}
