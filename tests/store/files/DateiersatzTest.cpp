// SPDX-License-Identifier: GPL-3.0-or-later
// The replacement of a file: what it keeps, what it refuses, and that no failure leaves a half.
#include "store/files/Dateiersatz.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class Dateiersatz : public testing::Test {
protected:
    Testordner ordner;
    fs::path pfad = ordner.pfad() / "Gamepad.xml";

    bool ersetzen(const std::string& inhalt) const { return dateiErsetzen(pfad.string(), inhalt); }
    std::string inhalt() const { return dateiLesen(pfad); }
    std::vector<std::string> namen() const { return namenIn(ordner.pfad()); }
};

/// Files of two users. Only root can make them, so without root these tests can't be: tools/test asks for it.
class DateiersatzZweiBenutzer : public Dateiersatz {
protected:
    void SetUp() override {
        if (geteuid() != 0)
            GTEST_SKIP() << "takes root, who alone gives files away";
    }
};

unsigned rechte(const fs::path& pfad) {
    return static_cast<unsigned>(fs::status(pfad).permissions());
}

struct stat stand(const fs::path& pfad) {
    struct stat ergebnis {};
    stat(pfad.c_str(), &ergebnis);
    return ergebnis;
}

/// Sets what new files are not allowed, and gives it back.
class Umask {
public:
    explicit Umask(mode_t maske) : war_(umask(maske)) {}
    ~Umask() { umask(war_); }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    mode_t war_;
};

/// Runs `arbeit` in a child; whether it gave true.
bool imKindWahr(const std::function<bool()>& arbeit) {
    constexpr int FALSCH = 7;
    const pid_t kind = imKind([&] { _exit(arbeit() ? ENDE_DER_ARBEIT : FALSCH); });
    int ende = 0;
    waitpid(kind, &ende, 0);
    EXPECT_TRUE(WIFEXITED(ende) && (WEXITSTATUS(ende) == ENDE_DER_ARBEIT || WEXITSTATUS(ende) == FALSCH))
        << ende;
    return WIFEXITED(ende) && WEXITSTATUS(ende) == ENDE_DER_ARBEIT;
}

/// Lets no file grow beyond so many bytes; a longer write fails as on a full disk.
void platzFuer(rlim_t bytes) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit grenze{bytes, bytes};
    if (setrlimit(RLIMIT_FSIZE, &grenze) != 0)
        _exit(1);
}

} // namespace

TEST_F(Dateiersatz, EineNeueEntstehtMitDenRechtenDieDerNutzerNeuenGibt) {
    for (const auto& [maske, erwartet] : {std::pair{0022U, 0644U}, {0077U, 0600U}, {0000U, 0666U}}) {
        const Umask umask(maske);
        EXPECT_TRUE(ersetzen("neu"));
        EXPECT_EQ(inhalt(), "neu");
        EXPECT_EQ(rechte(pfad), erwartet);
        fs::remove(pfad);
    }
}

TEST_F(Dateiersatz, EineAlteGehtGanzInDerNeuenAuf) {
    for (const std::string& neu :
         {std::string("kurz"), std::string(), std::string(3'000'000, 'x'), std::string("a\0b\r\n", 5)}) {
        dateiSchreiben(pfad, "was vorher darin stand");
        EXPECT_TRUE(ersetzen(neu));
        EXPECT_TRUE(inhalt() == neu) << neu.size();
        EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
    }
}

TEST_F(Dateiersatz, DieRechteBleiben) {
    const Umask umask(0022);
    for (const unsigned alte : {0600U, 0640U, 0666U, 0200U, 0755U, 04711U}) {
        dateiSchreiben(pfad, "alt");
        fs::permissions(pfad, fs::perms(alte));
        EXPECT_TRUE(ersetzen("neu"));
        EXPECT_EQ(rechte(pfad), alte);
        fs::remove(pfad);
    }
}

TEST_F(DateiersatzZweiBenutzer, DerBesitzerBleibt) {
    dateiSchreiben(pfad, "alt");
    ASSERT_EQ(chown(pfad.c_str(), 1234, 2345), 0);
    fs::permissions(pfad, fs::perms(0640));
    EXPECT_TRUE(ersetzen("neu"));
    EXPECT_EQ(stand(pfad).st_uid, 1234U);
    EXPECT_EQ(stand(pfad).st_gid, 2345U);
    EXPECT_EQ(rechte(pfad), 0640U);
}

TEST_F(DateiersatzZweiBenutzer, WerDenBesitzerNichtWeitergebenDarfErsetztDieDateiDennoch) {
    dateiSchreiben(pfad, "alt");
    fs::permissions(pfad, fs::perms(0666));
    fs::permissions(ordner.pfad(), fs::perms::all);
    const AlsNiemand niemand;
    EXPECT_TRUE(ersetzen("neu"));
    EXPECT_EQ(inhalt(), "neu");
    EXPECT_EQ(rechte(pfad), 0666U);
}

TEST_F(Dateiersatz, WerDieAlteOffenHatLiestSieWeiterGanz) {
    dateiSchreiben(pfad, "der alte Inhalt");
    std::ifstream offen(pfad);
    EXPECT_TRUE(ersetzen("neu"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(offen), {}), "der alte Inhalt");
}

TEST_F(Dateiersatz, EinVerweisBleibtUndSeinZielWirdErsetzt) {
    fs::create_directory(ordner.pfad() / "fern");
    const fs::path ziel = ordner.pfad() / "fern" / "echt.xml";
    for (const fs::path& verweis : {fs::path("fern/echt.xml"), ziel, fs::path("./fern/../fern/echt.xml")}) {
        dateiSchreiben(ziel, "alt");
        fs::create_symlink(verweis, pfad);
        EXPECT_TRUE(ersetzen("neu"));
        EXPECT_TRUE(fs::is_symlink(pfad));
        EXPECT_EQ(dateiLesen(ziel), "neu");
        EXPECT_THAT(namenIn(ziel.parent_path()), ElementsAre("echt.xml"));
        fs::remove(pfad);
    }
}

TEST_F(Dateiersatz, EinVerweisAufEinenVerweisFuehrtZumLetztenZiel) {
    fs::create_directory(ordner.pfad() / "a");
    fs::create_symlink("a/mitte", pfad);
    fs::create_symlink("../ende", ordner.pfad() / "a" / "mitte");
    dateiSchreiben(ordner.pfad() / "ende", "alt");
    EXPECT_TRUE(ersetzen("neu"));
    EXPECT_EQ(dateiLesen(ordner.pfad() / "ende"), "neu");
    EXPECT_TRUE(fs::is_symlink(ordner.pfad() / "a" / "mitte"));
}

TEST_F(Dateiersatz, EinVerweisInsLeereBekommtSeinZiel) {
    fs::create_symlink("fehlt.xml", pfad);
    EXPECT_TRUE(ersetzen("neu"));
    EXPECT_TRUE(fs::is_symlink(pfad));
    EXPECT_EQ(dateiLesen(ordner.pfad() / "fehlt.xml"), "neu");
}

TEST_F(Dateiersatz, EinVerweisAufSichSelbstIstKeinZiel) {
    fs::create_symlink("Gamepad.xml", pfad);
    EXPECT_FALSE(ersetzen("neu"));
    EXPECT_TRUE(fs::is_symlink(pfad));
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(Dateiersatz, EineOhneJedesSchreibrechtBleibtAuchBeiRoot) {
    for (const unsigned rechte : {0444U, 0400U, 0000U, 0555U}) {
        dateiSchreiben(pfad, "alt");
        fs::permissions(pfad, fs::perms(rechte));
        EXPECT_FALSE(ersetzen("neu"));
        fs::permissions(pfad, fs::perms(0600));
        EXPECT_EQ(inhalt(), "alt");
        EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
    }
}

TEST_F(DateiersatzZweiBenutzer, EineDieEinemAnderenGehoertBleibt) {
    dateiSchreiben(pfad, "alt");
    fs::permissions(pfad, fs::perms(0644));
    fs::permissions(ordner.pfad(), fs::perms::all);
    const AlsNiemand niemand;
    EXPECT_FALSE(ersetzen("neu"));
    EXPECT_EQ(inhalt(), "alt");
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(Dateiersatz, InEinemSchreibgeschuetztenOrdnerBleibtDieAlte) {
    dateiSchreiben(pfad, "alt");
    fs::permissions(pfad, fs::perms(0666));
    fs::permissions(ordner.pfad(), fs::perms(0555));
    {
        const AlsNiemand niemand;
        EXPECT_FALSE(ersetzen("neu"));
        EXPECT_EQ(inhalt(), "alt");
    }
    fs::permissions(ordner.pfad(), fs::perms(0755));
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(Dateiersatz, WasKeineDateiIstBleibt) {
    fs::create_directory(pfad);
    EXPECT_FALSE(ersetzen("neu"));
    EXPECT_TRUE(fs::is_directory(pfad));
    fs::remove(pfad);
    ASSERT_EQ(mkfifo(pfad.c_str(), 0666), 0);
    EXPECT_FALSE(ersetzen("neu"));
    EXPECT_TRUE(fs::is_fifo(pfad));
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(Dateiersatz, OhneOrdnerEntstehtNichts) {
    for (const std::string& ziel :
         {(ordner.pfad() / "fehlt" / "Gamepad.xml").string(), std::string(), (ordner.pfad() / "").string(),
          (ordner.pfad() / std::string(300, 'x')).string()})
        EXPECT_FALSE(dateiErsetzen(ziel, "neu")) << ziel;
    EXPECT_THAT(namen(), IsEmpty());
}

TEST_F(Dateiersatz, EinNameOhneOrdnerLiegtImLaufenden) {
    const fs::path war = fs::current_path();
    fs::current_path(ordner.pfad());
    EXPECT_TRUE(dateiErsetzen("Gamepad.xml", "neu"));
    fs::current_path(war);
    EXPECT_EQ(inhalt(), "neu");
}

TEST_F(Dateiersatz, AufEinerVollenPlatteBleibtDieAlte) {
    dateiSchreiben(pfad, "alt");
    const std::string neu(10'000, 'x');
    for (const rlim_t platz : {0UL, 1UL, 4096UL, 9'999UL})
        EXPECT_FALSE(imKindWahr([&] {
            platzFuer(platz);
            return ersetzen(neu);
        })) << platz;
    EXPECT_EQ(inhalt(), "alt");
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));

    EXPECT_TRUE(imKindWahr([&] {
        platzFuer(10'000);
        return ersetzen(neu);
    }));
    EXPECT_EQ(inhalt(), neu);
}

TEST_F(Dateiersatz, AufEinerVollenPlatteEntstehtAuchKeineNeue) {
    EXPECT_FALSE(imKindWahr([&] {
        platzFuer(2);
        return ersetzen("neu");
    }));
    EXPECT_THAT(namen(), IsEmpty());
}

TEST_F(Dateiersatz, WasGetoeteteLiegenLiessenRaeumtDerNaechsteErsatz) {
    EXPECT_TRUE(imKindWahr([&] {
        for (const std::string& nummer : {std::to_string(getpid()) + ".0", std::to_string(getpid()) + ".1",
                                          std::string("1.0"), std::string("4194304.999")})
            dateiSchreiben(pfad.string() + ".neu." + nummer, "Rest");
        return ersetzen("neu");
    }));
    EXPECT_EQ(inhalt(), "neu");
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}

TEST_F(Dateiersatz, WasAnderenGehoertOderAndersHeisstBleibt) {
    const std::vector<std::string> fremde{
        "Gamepad.xml.neu.",      "Gamepad.xml.neu.1",    "Gamepad.xml.neu.1.",  "Gamepad.xml.neu.1.x",
        "Gamepad.xml.neu.1.0.1", "xGamepad.xml.neu.1.0", "gamepad.xml.neu.1.0", "Gamepad.xml.neu..1"};
    for (const auto& name : fremde)
        dateiSchreiben(ordner.pfad() / name, "fremd");
    fs::create_directory(ordner.pfad() / "Gamepad.xml.neu.1.0");
    fs::create_symlink("Gamepad.xml", ordner.pfad() / "Gamepad.xml.neu.2.0");
    EXPECT_TRUE(ersetzen("neu"));
    EXPECT_EQ(namen().size(), fremde.size() + 3);
}

TEST_F(Dateiersatz, WasEinLebenderSchreibtBleibt) {
    const fs::path neue = pfad.string() + ".neu.1.0";
    dateiSchreiben(neue, "halb");
    const int lebender = open(neue.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(flock(lebender, LOCK_EX | LOCK_NB), 0);
    EXPECT_TRUE(ersetzen("neu"));
    EXPECT_TRUE(fs::exists(neue));
    close(lebender);
    EXPECT_TRUE(ersetzen("neuer"));
    EXPECT_FALSE(fs::exists(neue));
}

// The death comes in the midst of the first write: half of the new content lies there.
TEST_F(Dateiersatz, WaehrendDesSchreibensLiestNiemandSonstMit) {
    const Umask umask(0);
    dateiSchreiben(pfad, "alt");
    fs::permissions(pfad, fs::perms(0600));
    const pid_t kind = imKind([&] {
        const rlimit grenze{4096, 4096};
        const rlimit ohneKern{0, 0};
        if (setrlimit(RLIMIT_FSIZE, &grenze) == 0 && setrlimit(RLIMIT_CORE, &ohneKern) == 0)
            ersetzen(std::string(10'000, 'x'));
    });
    int ende = 0;
    waitpid(kind, &ende, 0);
    ASSERT_TRUE(WIFSIGNALED(ende) && WTERMSIG(ende) == SIGXFSZ) << ende;
    auto reste = namen();
    std::erase(reste, "Gamepad.xml");
    ASSERT_EQ(reste.size(), 1U);
    EXPECT_EQ(rechte(ordner.pfad() / reste[0]), 0600U);
    EXPECT_EQ(inhalt(), "alt");
}

namespace {

/// So long that a death in the midst of writing is likely; tells the number at its begin and its end.
std::string inhaltMit(int zahl) {
    const std::string ziffern = std::to_string(zahl);
    return ziffern + std::string(200'000, 'x') + ziffern;
}

} // namespace

TEST_F(Dateiersatz, ZuJederZeitStehtDerStandVorOderNachEinemErsatzDa) {
    ASSERT_TRUE(ersetzen(inhaltMit(0)));
    std::mt19937 zufall(4711);
    int mitten = 0;
    int naechste = 1;
    for (int i = 0; i < TOETUNGEN; ++i) {
        Schreiber schreiber(naechste, [&] {
            return [&](int zahl) {
                if (!ersetzen(inhaltMit(zahl)))
                    _exit(1);
            };
        });
        schreiber.abwarten(static_cast<int>(zufall() % 3));
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % 5000));
        const Fortschritt bis = schreiber.toeten();

        const int zahl = std::stoi(inhalt());
        ASSERT_TRUE(inhalt() == inhaltMit(zahl)) << zahl;
        EXPECT_GE(zahl, bis.fertig);
        EXPECT_LE(zahl, bis.begonnen);
        mitten += bis.begonnen != bis.fertig;
        naechste = zahl + 1;
    }
    EXPECT_GT(mitten, TOETUNGEN / 2); // most deaths came in the midst of work
    EXPECT_LE(namen().size(), 2U) << "each one clears what the one before left";
    EXPECT_TRUE(ersetzen("Ende"));
    EXPECT_THAT(namen(), ElementsAre("Gamepad.xml"));
}
