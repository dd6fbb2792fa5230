// SPDX-License-Identifier: GPL-3.0-or-later
// The watcher, with processes that hold keys and die.
#include "platform/linux/Haltevermerk.h"
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/Waechter.h"
#include "platform/linux/XTestEingabe.h"
#include "tests/hilfen/Bauart.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Prozessblick.h"
#include "tests/hilfen/XGeraete.h"
#include "tests/hilfen/XServer.h"
#include "tests/platform/Ereignisse.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <atomic>
#include <optional>

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

using Uhr = std::chrono::steady_clock;
using std::chrono::milliseconds;
using Texte = std::vector<std::string>;

constexpr milliseconds FRIST{ADRESSPRUEFER ? 1000 : 100}; // after a death
constexpr int TODE = ADRESSPRUEFER ? TOETUNGEN / 10 : TOETUNGEN;
constexpr milliseconds LANGE_GENUG{300}; // for what must not happen
constexpr int GEDULD_MS = 10000;

// X key codes of the us layout.
constexpr unsigned A = 38;
constexpr unsigned J = 44;
constexpr unsigned UMSCHALT_RECHTS = 62;
constexpr VirtuelleTaste TASTE_A = 65;
constexpr VirtuelleTaste UMSCHALT = 16;

bool binnen(milliseconds frist, const std::function<bool()>& probe) {
    const auto ende = Uhr::now() + frist;
    while (!probe()) {
        if (Uhr::now() > ende)
            return probe();
        std::this_thread::sleep_for(milliseconds{1});
    }
    return true;
}

/// What plays in a process of its own: the injection as the program has it, and its watcher.
struct Spieler {
    Waechter waechter{WAECHTER};
    Tastaturlayout layout;
    std::string grund;
    std::unique_ptr<XTestEingabe> eingabe = XTestEingabe::oeffnen(layout, {}, grund, waechter.blatt());

    void tasten(const std::vector<INPUT>& ereignisse) { eingabe->SendInput(ereignisse); }
};

void schlafen() {
    while (true)
        pause();
}

/// Runs in a process of its own, which does `spielen` and dies with us.
class Opfer {
public:
    using Spiel = std::function<void(Spieler&)>;

    /// `davor` comes before the watcher is started.
    Opfer(
        const std::string& anzeige, const Spiel& spielen, const std::function<void()>& davor = [] {}) {
        std::array<int, 2> rohr{};
        if (pipe2(rohr.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        kind_ = imKind([&] {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            setenv("DISPLAY", anzeige.c_str(), 1);
            davor();
            Spieler spieler;
            if (!spieler.waechter.wacht(GEDULD_MS))
                _exit(1);
            const pid_t waechter = spieler.waechter.kennung();
            if (write(rohr[1], &waechter, sizeof waechter) == sizeof waechter)
                spielen(spieler);
        });
        close(rohr[1]);
        pid_t waechter = -1;
        if (read(rohr[0], &waechter, sizeof waechter) == sizeof waechter)
            waechter_.emplace(waechter);
        close(rohr[0]);
    }
    ~Opfer() {
        if (kind_ > 0)
            sterben(SIGKILL);
    }
    Opfer(const Opfer&) = delete;
    Opfer& operator=(const Opfer&) = delete;

    const Prozessblick& waechter() const { return *waechter_; }
    void senden(int signal) const { kill(kind_, signal); }
    void sterben(int signal) {
        senden(signal);
        abwarten();
    }
    int abwarten() {
        int stand = 0;
        waitpid(std::exchange(kind_, -1), &stand, 0);
        return stand;
    }

private:
    pid_t kind_ = -1;
    std::optional<Prozessblick> waechter_;
};

class Tastenwaechter : public testing::Test {
protected:
    bool gedrueckt(const Texte& was) {
        return binnen(milliseconds{GEDULD_MS}, [&] { return geraete.vonProgrammen() == was; });
    }
    /// By many deaths it is measured how long that takes; a single one may be late on a busy machine.
    bool losgelassen() {
        return binnen(LANGE_GENUG, [&] { return geraete.vonProgrammen().empty(); });
    }

    XServer server;
    XGeraete geraete{server.anzeige()};
};

void haltenUndSchlafen(Spieler& spieler) {
    spieler.tasten({taste(UMSCHALT), taste(TASTE_A), maus(MOUSEEVENTF_LEFTDOWN)});
    schlafen();
}
const Texte GEHALTENES{"38", "50", "K1"};

/// Presses and lets go at random for ever.
void zufallSpielen(Spieler& spieler, unsigned saat) {
    std::mt19937 zufall(saat);
    constexpr std::array CODES{TASTE_A,  VirtuelleTaste{83}, VirtuelleTaste{68},
                               UMSCHALT, VirtuelleTaste{17}, VirtuelleTaste{18}};
    constexpr std::array KNOEPFE{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP,     MOUSEEVENTF_RIGHTDOWN,
                                 MOUSEEVENTF_RIGHTUP,  MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP};
    while (true) {
        std::vector<INPUT> ereignisse;
        for (auto anzahl = 1 + zufall() % 4; anzahl > 0; --anzahl) {
            const auto wahl = zufall() % 3;
            if (wahl == 0)
                ereignisse.push_back(maus(KNOEPFE[zufall() % KNOEPFE.size()]));
            else
                ereignisse.push_back(taste(CODES[zufall() % CODES.size()], wahl == 1 ? 0 : KEYEVENTF_KEYUP));
        }
        spieler.tasten(ereignisse);
        if (zufall() % 4 == 0)
            std::this_thread::sleep_for(std::chrono::microseconds(zufall() % 2000));
    }
}

} // namespace

TEST_F(Tastenwaechter, NachZweihundertTodenInBeliebigenAugenblickenIstNichtsUnten) {
    geraete.taste(J, true);
    geraete.taste(UMSCHALT_RECHTS, true);
    geraete.knopf(1, true); // also by those that die
    const Texte eigenes{"44", "62", "K1"};
    std::mt19937 zufall(4711);
    int mitten = 0;
    int verspaetete = 0;
    milliseconds laengste{0};
    for (int i = 0; i < TODE && !HasFailure(); ++i) {
        Opfer opfer(server.anzeige(),
                    [i](Spieler& spieler) { zufallSpielen(spieler, static_cast<unsigned>(i)); });
        ASSERT_TRUE(binnen(milliseconds{GEDULD_MS}, [&] { return !geraete.vonProgrammen().empty(); }));
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % 5000));
        mitten += !geraete.vonProgrammen().empty();
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % 300));
        opfer.sterben(std::array{SIGKILL, SIGABRT, SIGSEGV}[static_cast<std::size_t>(i % 3)]);
        const auto tod = Uhr::now();
        EXPECT_TRUE(opfer.waechter().endet(GEDULD_MS));
        const auto dauer = std::chrono::ceil<milliseconds>(Uhr::now() - tod);
        laengste = std::max(laengste, dauer);
        verspaetete += dauer > FRIST;
        EXPECT_THAT(geraete.vonProgrammen(), IsEmpty()) << "death " << i;
        EXPECT_EQ(geraete.unten(), eigenes) << "death " << i;
    }
    EXPECT_GT(mitten, TODE / 4);
    EXPECT_LE(verspaetete, TODE / 4) << "longest: " << laengste.count(); // the machine may be late, too
    RecordProperty("laengste_ms", static_cast<int>(laengste.count()));
}

TEST_F(Tastenwaechter, EinTodVonSelbstLaesstLos) {
    Opfer opfer(server.anzeige(), [](Spieler& spieler) {
        spieler.tasten({taste(TASTE_A)});
        std::abort();
    });
    opfer.abwarten();
    EXPECT_TRUE(losgelassen());
}

TEST_F(Tastenwaechter, EinHaengendesProgrammIstNichtTot) {
    Opfer opfer(server.anzeige(), haltenUndSchlafen);
    ASSERT_TRUE(gedrueckt(GEHALTENES));
    opfer.senden(SIGSTOP);
    std::this_thread::sleep_for(LANGE_GENUG);
    EXPECT_EQ(geraete.vonProgrammen(), GEHALTENES);
    EXPECT_FALSE(opfer.waechter().endet(0));
    opfer.sterben(SIGKILL);
    EXPECT_TRUE(losgelassen());
}

TEST_F(Tastenwaechter, AuchWaehrendEinAndererDenServerFesthaelt) {
    Opfer opfer(server.anzeige(), haltenUndSchlafen);
    ASSERT_TRUE(gedrueckt(GEHALTENES));
    geraete.greifen(true);
    opfer.sterben(SIGKILL);
    EXPECT_TRUE(losgelassen());
    geraete.greifen(false);
}

// What both have down is the user's, and up when the user lets go. The server does not part the two.
TEST_F(Tastenwaechter, WasDerSpielerAufDerEigenenTastaturHaeltBleibtUnten) {
    geraete.taste(A, true);
    geraete.knopf(1, true);
    Opfer opfer(server.anzeige(), haltenUndSchlafen);
    ASSERT_TRUE(gedrueckt(GEHALTENES));
    opfer.sterben(SIGKILL);
    EXPECT_TRUE(opfer.waechter().endet(GEDULD_MS));
    EXPECT_EQ(geraete.unten(), (Texte{"38", "K1"}));
    geraete.taste(A, false);
    geraete.knopf(1, false);
    EXPECT_THAT(geraete.unten(), IsEmpty());
}

// The note of it stands before the press goes out; what dies in between has pressed nothing.
TEST_F(Tastenwaechter, EinVermerkterDruckDerNieHinausgingLaesstDieTasteDesSpielersUnten) {
    geraete.taste(A, true);
    Opfer opfer(server.anzeige(), [](Spieler& spieler) {
        Haltevermerk vermerk(spieler.waechter.blatt());
        vermerk.anmelden(spieler.waechter.blatt()->fenster);
        vermerk.unten(Haltevermerk::taste(A));
        spieler.tasten({maus(MOUSEEVENTF_LEFTDOWN)});
        schlafen();
    });
    ASSERT_TRUE(gedrueckt({"K1"}));
    opfer.sterben(SIGKILL);
    EXPECT_TRUE(opfer.waechter().endet(GEDULD_MS));
    EXPECT_EQ(geraete.unten(), Texte{"38"});
}

TEST_F(Tastenwaechter, WasEinAnderesProgrammHaeltBleibt) {
    Opfer anderes(server.anzeige(), [](Spieler& spieler) {
        spieler.tasten({taste(83)});
        schlafen();
    });
    ASSERT_TRUE(gedrueckt({"39"}));
    Opfer opfer(server.anzeige(), haltenUndSchlafen);
    ASSERT_TRUE(gedrueckt({"38", "39", "50", "K1"}));
    opfer.sterben(SIGKILL);
    EXPECT_TRUE(opfer.waechter().endet(GEDULD_MS));
    EXPECT_EQ(geraete.vonProgrammen(), Texte{"39"});
}

// The system writes the memory of what has crashed away first; a handler that was there before stands for it.
TEST_F(Tastenwaechter, EinAbsturzLaesstLosEheDerProzessTotIst) {
    for (const int signal : {SIGABRT, SIGSEGV, SIGTRAP, SIGSYS, SIGQUIT}) {
        Opfer opfer(server.anzeige(), haltenUndSchlafen,
                    [signal] { std::signal(signal, [](int) { schlafen(); }); });
        ASSERT_TRUE(gedrueckt(GEHALTENES));
        opfer.senden(signal);
        EXPECT_TRUE(losgelassen()) << "signal " << signal;
        EXPECT_FALSE(opfer.waechter().endet(0));
    }
}

// An overflow leaves no stack to tell of it on but the one that is laid by for it.
TEST_F(Tastenwaechter, AuchEinVollerStapelWirdGemeldet) {
    struct Zeichen {
        std::atomic<bool> los;
        std::atomic<bool> amEnde;
    };
    static Zeichen* zeichen; // shared with the process that comes to its end
    zeichen = static_cast<Zeichen*>(
        mmap(nullptr, sizeof *zeichen, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    const auto ueberlaufen = [](Spieler& spieler) {
        spieler.tasten({taste(TASTE_A)});
        while (!zeichen->los)
            std::this_thread::sleep_for(milliseconds{1});
        const std::function<int(int)> tiefer = [&](int tiefe) {
            volatile char platz[4096] = {};
            return tiefer(tiefe + 1) + platz[tiefe % 4096];
        };
        _exit(tiefer(0));
    };
    Opfer opfer(server.anzeige(), ueberlaufen, [] {
        const rlimit klein{1 << 20, 1 << 20};
        setrlimit(RLIMIT_STACK, &klein);
        struct sigaction aktion {};
        aktion.sa_handler = [](int) {
            zeichen->amEnde = true;
            schlafen();
        };
        aktion.sa_flags = SA_ONSTACK;
        sigaction(SIGSEGV, &aktion, nullptr);
    });
    ASSERT_TRUE(gedrueckt({"38"}));
    zeichen->los = true;
    ASSERT_TRUE(binnen(milliseconds{GEDULD_MS}, [] { return zeichen->amEnde.load(); }));
    EXPECT_TRUE(losgelassen());
    EXPECT_FALSE(opfer.waechter().endet(0));
    munmap(zeichen, sizeof *zeichen);
}

TEST_F(Tastenwaechter, ErEndetMitDemProgrammWennNichtsGehaltenWird) {
    Opfer ordentlich(server.anzeige(), [](Spieler&) {});
    EXPECT_EQ(ordentlich.abwarten(), 0);
    EXPECT_TRUE(ordentlich.waechter().endet(0)); // before the program itself
    Opfer getoetet(server.anzeige(), [](Spieler&) { schlafen(); });
    getoetet.sterben(SIGKILL);
    EXPECT_TRUE(getoetet.waechter().endet(static_cast<int>(FRIST.count())));
}

TEST_F(Tastenwaechter, ErEndetMitDemServer) {
    XServer anderer;
    Opfer opfer(anderer.anzeige(), [](Spieler&) { schlafen(); });
    EXPECT_FALSE(opfer.waechter().endet(static_cast<int>(LANGE_GENUG.count())));
    anderer.toeten();
    EXPECT_TRUE(opfer.waechter().endet(GEDULD_MS));
}

TEST_F(Tastenwaechter, ErWartetAufEinenServerDerHaengt) {
    Opfer opfer(server.anzeige(), haltenUndSchlafen);
    ASSERT_TRUE(gedrueckt(GEHALTENES));
    server.anhalten(true);
    opfer.sterben(SIGKILL);
    EXPECT_FALSE(opfer.waechter().endet(static_cast<int>(LANGE_GENUG.count())));
    server.anhalten(false);
    EXPECT_TRUE(losgelassen());
    EXPECT_TRUE(opfer.waechter().endet(GEDULD_MS));
}

// A server that has not read a release yet when the one who sent it dies throws it away.
TEST_F(Tastenwaechter, WasDerServerVomTotenNichtMehrLiestWirdAuchLosgelassen) {
    Opfer opfer(server.anzeige(), [](Spieler& spieler) {
        sigset_t menge;
        sigemptyset(&menge);
        sigaddset(&menge, SIGUSR1);
        sigprocmask(SIG_BLOCK, &menge, nullptr);
        spieler.tasten({taste(TASTE_A), maus(MOUSEEVENTF_LEFTDOWN)});
        int signal = 0;
        sigwait(&menge, &signal);
        spieler.tasten({taste(TASTE_A, KEYEVENTF_KEYUP), maus(MOUSEEVENTF_LEFTUP)});
        schlafen();
    });
    ASSERT_TRUE(gedrueckt({"38", "K1"}));
    server.anhalten(true);
    opfer.senden(SIGUSR1);
    std::this_thread::sleep_for(LANGE_GENUG);
    opfer.sterben(SIGKILL);
    server.anhalten(false);
    EXPECT_TRUE(opfer.waechter().endet(GEDULD_MS));
    EXPECT_THAT(geraete.vonProgrammen(), IsEmpty());
}

TEST_F(Tastenwaechter, ErWartetNichtFuerImmerAufEinenServerDerHaengt) {
    Opfer opfer(server.anzeige(), haltenUndSchlafen);
    ASSERT_TRUE(gedrueckt(GEHALTENES));
    server.anhalten(true);
    opfer.sterben(SIGKILL);
    EXPECT_TRUE(opfer.waechter().endet(GEDULD_MS));
    server.anhalten(false);
}

TEST_F(Tastenwaechter, WerDasProgrammUmSeinEndeBittetBeendetIhnNicht) {
    Opfer opfer(server.anzeige(), haltenUndSchlafen);
    ASSERT_TRUE(gedrueckt(GEHALTENES));
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGPIPE})
        opfer.waechter().senden(signal);
    EXPECT_FALSE(opfer.waechter().endet(static_cast<int>(LANGE_GENUG.count())));
    EXPECT_EQ(getsid(opfer.waechter().kennung()), opfer.waechter().kennung()); // no terminal of ours
    opfer.sterben(SIGKILL);
    EXPECT_TRUE(losgelassen());
}

TEST_F(Tastenwaechter, ErHatNichtsVonUnsOffen) {
    Opfer opfer(
        server.anzeige(), [](Spieler&) { schlafen(); },
        [] {
            for (int i = 0; i < 3; ++i)
                [[maybe_unused]] const int kanal = dup(STDERR_FILENO); // as of a careless library
        });
    Texte offene;
    for (const auto& kanal : std::filesystem::directory_iterator(opfer.waechter().pfad() / "fd"))
        offene.push_back(kanal.path().filename().string() + " " +
                         std::filesystem::read_symlink(kanal.path()).string().substr(0, 8));
    std::ranges::sort(offene); // the last is that to the server
    EXPECT_THAT(offene, ElementsAre("0 /dev/nul", "1 /dev/nul", "2 /dev/nul", "3 /memfd:w", "4 socket:[",
                                    "5 socket:["));
    EXPECT_EQ(std::filesystem::read_symlink(opfer.waechter().pfad() / "cwd"), "/");
}

TEST_F(Tastenwaechter, ErRuhtAuchWaehrendGespieltWird) {
    Opfer opfer(server.anzeige(), [](Spieler& spieler) { zufallSpielen(spieler, 1); });
    ASSERT_TRUE(binnen(milliseconds{GEDULD_MS}, [&] { return !geraete.vonProgrammen().empty(); }));
    std::this_thread::sleep_for(LANGE_GENUG); // it may still be starting
    const auto aufgewacht = opfer.waechter().zahl("status", "voluntary_ctxt_switches:");
    EXPECT_GT(aufgewacht, 0);
    std::this_thread::sleep_for(LANGE_GENUG);
    EXPECT_EQ(opfer.waechter().zahl("status", "voluntary_ctxt_switches:"), aufgewacht);
    if (ADRESSPRUEFER)
        return; // has memory of its own
    constexpr long EIN_MEBIBYTE = 1024;
    const auto eigenes = opfer.waechter().zahl("smaps_rollup", "Private_Dirty:");
    EXPECT_GT(eigenes, 0);
    EXPECT_LT(eigenes, EIN_MEBIBYTE);
}

namespace {

/// Of a program that notices the death of its watcher: the next one, told each time when it is there.
class Nachfolger {
public:
    Nachfolger() {
        if (pipe2(rohr_.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
    }
    ~Nachfolger() {
        close(rohr_[0]);
        close(rohr_[1]);
    }
    Nachfolger(const Nachfolger&) = delete;
    Nachfolger& operator=(const Nachfolger&) = delete;

    /// What the program does.
    void spielen(Spieler& spieler) const {
        int anzahl = 0;
        QCoreApplication anwendung(anzahl, nullptr);
        spieler.waechter.verbinden([&](const std::string&) {
            QTimer::singleShot(0, [&] { // when the next one is there
                const pid_t neuer = spieler.waechter.kennung();
                if (write(rohr_[1], &neuer, sizeof neuer) != sizeof neuer)
                    _exit(1);
            });
        });
        spieler.tasten({taste(UMSCHALT), taste(TASTE_A), maus(MOUSEEVENTF_LEFTDOWN)});
        QCoreApplication::exec();
    }
    /// -1: none was started.
    pid_t naechster() const {
        pid_t neuer = -1;
        return read(rohr_[0], &neuer, sizeof neuer) == sizeof neuer ? neuer : -1;
    }

private:
    std::array<int, 2> rohr_{};
};

} // namespace

TEST_F(Tastenwaechter, EinGetoeteterWaechterWirdBemerktUndErsetzt) {
    const Nachfolger nachfolger;
    Opfer opfer(server.anzeige(), [&](Spieler& spieler) { nachfolger.spielen(spieler); });
    ASSERT_TRUE(gedrueckt(GEHALTENES));
    opfer.waechter().senden(SIGKILL);
    const pid_t neuer = nachfolger.naechster();
    ASSERT_GT(neuer, 0);
    EXPECT_FALSE(std::filesystem::exists(opfer.waechter().pfad())); // nor is it left as a zombie
    EXPECT_EQ(geraete.vonProgrammen(), GEHALTENES);
    const Prozessblick zweiter(neuer);
    EXPECT_FALSE(zweiter.endet(static_cast<int>(LANGE_GENUG.count())));
    opfer.sterben(SIGKILL);
    EXPECT_TRUE(losgelassen());
    EXPECT_TRUE(zweiter.endet(GEDULD_MS));
}

// As by a "killall" that comes twice: the second one dies before it has found the server.
TEST_F(Tastenwaechter, AuchWerGetoetetWirdEheErWachtWirdErsetzt) {
    const Nachfolger nachfolger;
    Opfer opfer(server.anzeige(), [&](Spieler& spieler) { nachfolger.spielen(spieler); });
    ASSERT_TRUE(gedrueckt(GEHALTENES));
    geraete.greifen(true);
    opfer.waechter().senden(SIGKILL);
    const pid_t zweiter = nachfolger.naechster();
    ASSERT_GT(zweiter, 0);
    kill(zweiter, SIGKILL);
    const pid_t dritter = nachfolger.naechster();
    geraete.greifen(false);
    ASSERT_GT(dritter, 0);
    const Prozessblick letzter(dritter);
    opfer.sterben(SIGKILL);
    EXPECT_TRUE(letzter.endet(GEDULD_MS));
    EXPECT_THAT(geraete.vonProgrammen(), IsEmpty());
}

TEST_F(Tastenwaechter, OhneIhnGehtAllesWieMitIhm) {
    setenv("DISPLAY", server.anzeige().c_str(), 1);
    const Waechter keiner("/nirgendwo/tastenwaechter");
    EXPECT_EQ(keiner.kennung(), -1);
    Tastaturlayout layout;
    std::string grund;
    const auto eingabe = XTestEingabe::oeffnen(layout, {}, grund, keiner.blatt());
    const std::vector<INPUT> ab{taste(TASTE_A)};
    EXPECT_EQ(eingabe->SendInput(ab), 1U);
    EXPECT_TRUE(gedrueckt({"38"}));
}

namespace {

class Vermerk : public testing::Test {
protected:
    bool steht(std::size_t stelle) const {
        return (blatt.unten[stelle / Waechterblatt::JE_WORT] >> stelle % Waechterblatt::JE_WORT & 1U) != 0;
    }
    Waechterblatt blatt;
    Haltevermerk vermerk{&blatt};
};

} // namespace

TEST_F(Vermerk, EinDruckStehtDaEheErHinausgeht) {
    vermerk.unten(Haltevermerk::taste(255));
    vermerk.unten(Haltevermerk::knopf(9));
    EXPECT_TRUE(steht(255) && steht(Waechterblatt::TASTEN + 9));
    EXPECT_FALSE(steht(254) || steht(Waechterblatt::TASTEN + 8));
}

TEST_F(Vermerk, EinLoesenGiltErstWennEsHinausgegangenIst) {
    vermerk.unten(A);
    vermerk.abgeschickt();
    vermerk.oben(A);
    EXPECT_TRUE(steht(A));
    vermerk.abgeschickt();
    EXPECT_FALSE(steht(A));
}

TEST_F(Vermerk, WasHinausgingStehtNochUnterDemGeloesten) {
    vermerk.unten(A);
    vermerk.oben(A);
    EXPECT_EQ(blatt.geloest[0], 0U);
    vermerk.abgeschickt();
    EXPECT_EQ(blatt.geloest[0], std::uint64_t{1} << A);
    vermerk.unten(J);
    vermerk.oben(J);
    vermerk.abgeschickt();
    EXPECT_EQ(blatt.geloest[0], std::uint64_t{1} << A | std::uint64_t{1} << J);
    blatt.zuletzt =
        Waechterblatt::jetzt() - Waechterblatt::RUECKSTAND - 1; // the server has read that long since
    vermerk.oben(J);
    vermerk.abgeschickt();
    EXPECT_EQ(blatt.geloest[0], std::uint64_t{1} << J);
}

TEST_F(Vermerk, NachLoesenUndDrueckenInEinemZugStehtDieTasteDa) {
    vermerk.unten(A);
    vermerk.oben(A);
    vermerk.unten(A);
    vermerk.abgeschickt();
    EXPECT_TRUE(steht(A));
}

// A release that could not be sent has not gone out.
TEST(Vermerkort, MitDemServerGehtNichtsVomBlatt) {
    XServer server;
    Waechterblatt blatt;
    Tastaturlayout layout(server.anzeige());
    std::string grund;
    const auto eingabe = XTestEingabe::oeffnen(layout, server.anzeige(), grund, &blatt);
    EXPECT_NE(blatt.fenster, 0U);
    const std::vector<INPUT> ab{taste(TASTE_A)};
    const std::vector<INPUT> auf{taste(TASTE_A, KEYEVENTF_KEYUP)};
    EXPECT_EQ(eingabe->SendInput(ab), 1U);
    server.toeten();
    EXPECT_EQ(eingabe->SendInput(auf), 0U);
    EXPECT_EQ(blatt.unten[0], std::uint64_t{1} << A);
}

TEST(Vermerkort, AmEndeDerEingabeIstDasBlattLeer) {
    const XServer server;
    Waechterblatt blatt;
    Tastaturlayout layout(server.anzeige());
    std::string grund;
    auto eingabe = XTestEingabe::oeffnen(layout, server.anzeige(), grund, &blatt);
    const std::vector<INPUT> ab{taste(TASTE_A), maus(MOUSEEVENTF_RIGHTDOWN)};
    eingabe->SendInput(ab);
    EXPECT_NE(blatt.unten[0], 0U);
    eingabe.reset();
    for (const auto& wort : blatt.unten)
        EXPECT_EQ(wort, 0U);
    EXPECT_EQ(blatt.fenster, 0U);
}
