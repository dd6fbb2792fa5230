// SPDX-License-Identifier: GPL-3.0-or-later
// The program's process dies, or its display does, in the midst of a run.
#include "tests/ablauf/Programmprozess.h"
#include "tests/hilfen/Bauart.h"
#include "tests/hilfen/Prozessblick.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/XGeraete.h"
#include "tests/hilfen/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <random>

using testing::IsEmpty;

namespace {

using Uhr = std::chrono::steady_clock;
using std::chrono::milliseconds;
using Texte = std::vector<std::string>;

constexpr milliseconds FRIST{ADRESSPRUEFER ? 1000 : 100};
constexpr int GEDULD_MS = 20000;

/// The program with a player at its pad.
class Spielendes {
public:
    struct Umstaende {
        std::string anzeige;
        std::string compositor; ///< "" plays under X
        std::string saat;       ///< "" plays nothing
        std::string regler;
    };

    Spielendes(const std::filesystem::path& ordner, const Umstaende& umstaende) {
        std::array<int, 2> fehler{};
        if (pipe2(fehler.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        kennung_ = fork();
        if (kennung_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            dup2(fehler[1], STDERR_FILENO);
            setenv("DISPLAY", umstaende.anzeige.c_str(), 1);
            setenv("MITSPIELER", umstaende.saat.c_str(), 1);
            setenv("GAMEPAD_KONFIC_ORDNER", ordner.c_str(), 1);
            if (!umstaende.regler.empty())
                setenv("MITSPIELER_REGLER", umstaende.regler.c_str(), 1);
            if (!umstaende.compositor.empty()) {
                setenv("WAYLAND_DISPLAY", umstaende.compositor.c_str(), 1);
                setenv("QT_QPA_PLATFORM", "wayland", 1);
            }
            if (chdir(ordner.c_str()) == 0)
                execl(GESPIELTES, "gamepad-konfic", nullptr);
            _exit(127);
        }
        close(fehler[1]);
        fehler_ = fehler[0];
    }
    ~Spielendes() {
        if (kennung_ > 0) {
            senden(SIGKILL);
            abwarten();
        }
        close(fehler_);
    }
    Spielendes(const Spielendes&) = delete;
    Spielendes& operator=(const Spielendes&) = delete;

    void senden(int signal) const { kill(kennung_, signal); }
    /// "exit 0", "signal 9"
    std::string abwarten() {
        int stand = 0;
        waitpid(std::exchange(kennung_, -1), &stand, 0);
        return WIFEXITED(stand) ? "exit " + std::to_string(WEXITSTATUS(stand))
                                : "signal " + std::to_string(WTERMSIG(stand));
    }
    /// What it has said on stderr up to its end.
    std::string gesagtes() const {
        std::string text;
        std::array<char, 4096> stueck{};
        for (ssize_t menge = 0; (menge = read(fehler_, stueck.data(), stueck.size())) > 0;)
            text.append(stueck.data(), static_cast<std::size_t>(menge));
        return text;
    }
    /// Its one child.
    pid_t waechter() const {
        const auto datei =
            "/proc/" + std::to_string(kennung_) + "/task/" + std::to_string(kennung_) + "/children";
        pid_t kind = -1;
        Programmprozess::warten([&] {
            std::ifstream strom(datei);
            return static_cast<bool>(strom >> kind);
        });
        return kind;
    }

private:
    pid_t kennung_ = -1;
    int fehler_ = -1;
};

class Tod : public testing::Test {
protected:
    Tod() {
        // Keys, the shift keys of the keyboard, all buttons of the mouse, both shift keys of the pad, keys
        // that pulse and repeat; the sticks move the pointer, hold keys and press buttons.
        Schemabau schema(datenbank);
        for (int ebene = 0; ebene < 3; ++ebene)
            schema.taste(0, "1,65,0-0-0", ebene)
                .taste(1, "1,66,1-4-6", ebene)
                .taste(2, "1,16,0-0-0", ebene)
                .taste(3, "1,17,0-0-0", ebene)
                .taste(6, "5,0,0-0-0", ebene)
                .taste(7, "5,0,1-0-0", ebene)
                .taste(8, "5,0,2-0-0", ebene)
                .taste(9, "1,18,0-0-0", ebene)
                .taste(10, "1,67,0-0-0", ebene)
                .taste(12, "1,38,0-0-0", ebene)
                .taste(13, "1,39,0-0-0", ebene)
                .taste(14, "1,40,0-0-0", ebene)
                .taste(15, "1,37,0-0-0", ebene);
        schema.taste(4, "3,0,0-0-0").taste(5, "4,0,1-0-0").ungeglaettet().anlegen();
    }

    /// Waits until the program holds something.
    static bool gedrueckt(const XGeraete& geraete) {
        return Programmprozess::warten([&] { return !geraete.vonProgrammen().empty(); });
    }

    Testdatenbank datenbank;
};

class TodImLauf : public Tod, public testing::WithParamInterface<int> {
protected:
    static constexpr int JE_TEIL = ADRESSPRUEFER ? 8 : 50;

    XServer server;
    XGeraete geraete{server.anzeige()};
};

} // namespace

// Two hundred in all where processes are not dear.
TEST_P(TodImLauf, NachDemTodIstNichtsUntenWasDasProgrammDrueckteUndAllesWasDerSpielerHaelt) {
    geraete.taste(44, true);
    geraete.taste(62, true); // the right shift key
    geraete.knopf(1, true);
    const Texte eigenes{"44", "62", "K1"};
    std::mt19937 zufall(static_cast<unsigned>(GetParam()));
    int mitten = 0;
    int verspaetete = 0;
    for (int i = 0; i < JE_TEIL && !HasFailure(); ++i) {
        Spielendes programm(datenbank.ordner(),
                            {server.anzeige(), "", std::to_string(zufall() % 1000000), ""});
        ASSERT_TRUE(gedrueckt(geraete)) << programm.gesagtes();
        const Prozessblick waechter(programm.waechter());
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % 100000));
        mitten += !geraete.vonProgrammen().empty();
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % 1000));
        programm.senden(std::array{SIGKILL, SIGABRT, SIGSEGV}[static_cast<std::size_t>(i % 3)]);
        programm.abwarten();
        const auto tod = Uhr::now();
        EXPECT_TRUE(waechter.endet(GEDULD_MS));
        verspaetete += std::chrono::ceil<milliseconds>(Uhr::now() - tod) > FRIST;
        EXPECT_THAT(geraete.vonProgrammen(), IsEmpty()) << "death " << i;
        EXPECT_EQ(geraete.unten(), eigenes) << "death " << i;
    }
    EXPECT_GT(mitten, JE_TEIL / 4);
    EXPECT_LE(verspaetete, JE_TEIL / 4); // the machine may be late, too
}

INSTANTIATE_TEST_SUITE_P(Teil, TodImLauf, ::testing::Range(1, 5));

namespace {

/// A compositor without a screen.
class Compositor {
public:
    explicit Compositor(const std::string& name) {
        kennung_ = fork();
        if (kennung_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            const int leer = open("/dev/null", O_RDWR);
            dup2(leer, STDOUT_FILENO);
            dup2(leer, STDERR_FILENO);
            execlp("weston", "weston", "--backend=headless-backend.so", "--no-config",
                   ("--socket=" + name).c_str(), nullptr);
            _exit(127);
        }
        const auto pfad = std::filesystem::path(getenv("XDG_RUNTIME_DIR")) / name;
        if (!Programmprozess::warten([&] { return nimmtAn(pfad); }))
            throw std::runtime_error("weston does not start");
    }
    ~Compositor() { beenden(SIGKILL); }
    Compositor(const Compositor&) = delete;
    Compositor& operator=(const Compositor&) = delete;

    void beenden(int signal) {
        if (kennung_ <= 0)
            return;
        kill(kennung_, signal);
        waitpid(std::exchange(kennung_, -1), nullptr, 0);
    }

private:
    static bool nimmtAn(const std::filesystem::path& pfad) {
        sockaddr_un adresse{};
        adresse.sun_family = AF_UNIX;
        pfad.string().copy(adresse.sun_path, sizeof adresse.sun_path - 1);
        const int steckdose = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const bool ja = connect(steckdose, reinterpret_cast<const sockaddr*>(&adresse), sizeof adresse) == 0;
        close(steckdose);
        return ja;
    }

    pid_t kennung_ = -1;
};

constexpr const char* VERLUST =
    "gamepad-konfic: Die Verbindung zum Bildschirm ist abgerissen, das Programm ist beendet.";
constexpr const char* GESPEICHERT = " Die Regler des Laufs sind gespeichert.";
constexpr const char* GESTELLT = "17"; // where no run begins

/// What dies is told by a signal.
class Bildschirmtod : public Tod, public testing::WithParamInterface<int> {
protected:
    std::string gespeicherter() const {
        return datenbank.zeilen("SELECT Fenster_ly FROM Sensible WHERE Schemaname = 'S'").at(0).at(0);
    }
    bool steht() const {
        return Programmprozess::warten(
            [&] { return std::filesystem::exists(datenbank.ordner() / "Gamepad.xml"); });
    }
    /// Ends in order: with its status, one line, and what is to be kept.
    void ordentlichBeendet(Spielendes& programm, const std::string& zeile) {
        EXPECT_EQ(programm.abwarten(), "exit 1");
        const auto gesagt = programm.gesagtes();
        EXPECT_TRUE(gesagt.ends_with(zeile + "\n")) << gesagt;
        EXPECT_EQ(gesagt.find("gamepad-konfic"), gesagt.rfind("gamepad-konfic")) << gesagt;
    }
};

} // namespace

TEST_P(Bildschirmtod, StirbtDerXServerImLaufSindDieReglerGespeichert) {
    XServer server;
    Spielendes programm(datenbank.ordner(), {server.anzeige(), "", "1", GESTELLT});
    ASSERT_TRUE(gedrueckt(XGeraete(server.anzeige())));
    const Prozessblick waechter(programm.waechter());
    server.beenden(GetParam());
    ordentlichBeendet(programm, std::string(VERLUST) + GESPEICHERT);
    EXPECT_EQ(gespeicherter(), GESTELLT);
    EXPECT_TRUE(waechter.endet(GEDULD_MS));
}

TEST_P(Bildschirmtod, StirbtDerXServerInDerRuheEndetDasProgrammOrdentlich) {
    XServer server;
    Spielendes programm(datenbank.ordner(), {server.anzeige(), "", "", ""});
    ASSERT_TRUE(steht());
    server.beenden(GetParam());
    ordentlichBeendet(programm, VERLUST);
}

// The keys are held in an X server that goes on.
TEST_P(Bildschirmtod, StirbtDerCompositorImLaufSindDieReglerGespeichertUndNichtsBleibtUnten) {
    XServer server;
    Compositor compositor("tod");
    Spielendes programm(datenbank.ordner(), {server.anzeige(), "tod", "1", GESTELLT});
    ASSERT_TRUE(gedrueckt(XGeraete(server.anzeige())));
    const Prozessblick waechter(programm.waechter());
    compositor.beenden(GetParam());
    ordentlichBeendet(programm, std::string(VERLUST) + GESPEICHERT);
    EXPECT_EQ(gespeicherter(), GESTELLT);
    EXPECT_TRUE(waechter.endet(GEDULD_MS));
    EXPECT_THAT(XGeraete(server.anzeige()).vonProgrammen(), IsEmpty());
}

TEST_P(Bildschirmtod, StirbtDerCompositorInDerRuheEndetDasProgrammOrdentlich) {
    XServer server;
    Compositor compositor("tod");
    Spielendes programm(datenbank.ordner(), {server.anzeige(), "tod", "", ""});
    ASSERT_TRUE(steht());
    compositor.beenden(GetParam());
    ordentlichBeendet(programm, VERLUST);
}

// What the run could not save it says in the same line.
TEST_F(Tod, LaesstSichNichtsSpeichernSagtEsDas) {
    XServer server;
    Spielendes programm(datenbank.ordner(), {server.anzeige(), "", "1", GESTELLT});
    ASSERT_TRUE(gedrueckt(XGeraete(server.anzeige())));
    RoheVerbindung andere(datenbank.pfad());
    andere.sql("BEGIN EXCLUSIVE");
    server.toeten();
    EXPECT_EQ(programm.abwarten(), "exit 1");
    const auto gesagt = programm.gesagtes();
    EXPECT_THAT(gesagt, testing::HasSubstr(std::string(VERLUST) + " "));
    EXPECT_THAT(gesagt, testing::HasSubstr("Nicht gespeichert: die Empfindlichkeit des linken Sticks"));
}

INSTANTIATE_TEST_SUITE_P(Durch, Bildschirmtod, ::testing::Values(SIGKILL, SIGTERM));

TEST_F(Tod, NachEinemOrdentlichenEndeIstNichtsUntenUndKeinWaechterDa) {
    XServer server;
    const XGeraete geraete(server.anzeige());
    Spielendes programm(datenbank.ordner(), {server.anzeige(), "", "1", ""});
    ASSERT_TRUE(gedrueckt(geraete));
    const Prozessblick waechter(programm.waechter());
    programm.senden(SIGTERM);
    EXPECT_EQ(programm.abwarten(), "exit 0");
    EXPECT_TRUE(waechter.endet(0));
    EXPECT_THAT(geraete.vonProgrammen(), IsEmpty());
    EXPECT_EQ(programm.gesagtes(), "");
}

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("XDG_SESSION_TYPE");
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1); // no desktop of the machine takes part
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:", 1);  // nor its service for priorities
    const Testordner laufzeit;                          // nor do runs of other tests
    setenv("XDG_RUNTIME_DIR", laufzeit.pfad().c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("SDL_AUDIODRIVER", "dummy", 1); // nor does its sound
    return RUN_ALL_TESTS();
}
