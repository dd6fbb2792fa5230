// SPDX-License-Identifier: GPL-3.0-or-later
// Tones: what both sides promise, then what SDL sends to a device, which here is a file, and what is to be
// heard of it behind a sound server.
#include "platform/linux/SdlTon.h"
#include "platform/probe/ProbeTon.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Hilfsprogramm.h"
#include "tests/hilfen/Testdatenbank.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <stop_token>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

// SDL 2.26 keeps some of libpulse's operations of each opening.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:pa_xmalloc";
}

namespace {

template <typename Backend> class TonVertrag : public testing::Test {
protected:
    TonVertrag() { setenv("SDL_AUDIODRIVER", "dummy", 1); }
};
using Backends = testing::Types<ProbeTon, SdlTon>;
TYPED_TEST_SUITE(TonVertrag, Backends);

} // namespace

TYPED_TEST(TonVertrag, NimmtJedenTonUndWartetAufKeinen) {
    const auto anfang = std::chrono::steady_clock::now();
    {
        TypeParam ton;
        for (int i = 0; i < 100; ++i)
            ton.Beep(500, 60000);
        ton.Beep(0, 100);
        ton.Beep(100, 0);
        ton.Beep(0xffffffffU, 0xffffffffU);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - anfang, 60s) << "the length of one of them";
}

namespace {

using Proben = std::vector<std::int16_t>;
constexpr std::size_t ABTASTRATE = 48000;

/// What sounds comes into a file.
class Mitschnitt : public testing::Test {
protected:
    std::string datei() const { return ordner_.pfad() / "ton.raw"; }

    Proben gesendet() const {
        const auto inhalt = dateiLesen(datei());
        Proben proben(inhalt.size() / 2);
        if (!proben.empty())
            std::memcpy(proben.data(), inhalt.data(), proben.size() * 2);
        return proben;
    }
    /// What was sent, without the silence before and after.
    Proben klang() const { return klangAb(0); }
    /// The same of what was sent from a sample on.
    Proben klangAb(std::size_t anfang) const {
        auto proben = gesendet();
        proben.erase(proben.begin(), proben.begin() + static_cast<std::ptrdiff_t>(anfang));
        const auto laut = [](std::int16_t probe) { return probe != 0; };
        proben.erase(std::find_if(proben.rbegin(), proben.rend(), laut).base(), proben.end());
        proben.erase(proben.begin(), std::ranges::find_if(proben, laut));
        return proben;
    }
    /// Whether a tone has been sent and then silence of a tenth of a second.
    bool verklungen() const {
        const auto proben = gesendet();
        const auto letzte =
            std::find_if(proben.rbegin(), proben.rend(), [](std::int16_t probe) { return probe != 0; });
        return letzte != proben.rend() && letzte - proben.rbegin() > static_cast<long>(ABTASTRATE / 10);
    }
    static bool warten(const std::function<bool()>& zustand) {
        const auto frist = std::chrono::steady_clock::now() + 20s;
        while (!zustand()) {
            if (std::chrono::steady_clock::now() > frist)
                return false;
            std::this_thread::sleep_for(2ms);
        }
        return true;
    }
    /// How often the sign changes.
    static int nulldurchgaenge(const Proben& proben) {
        int anzahl = 0;
        std::int16_t vorher = 0;
        for (const auto probe : proben) {
            if (probe == 0)
                continue;
            anzahl += vorher != 0 && (probe > 0) != (vorher > 0);
            vorher = probe;
        }
        return anzahl;
    }

    const Testordner ordner_;
};

class MitDatei : public Mitschnitt {
protected:
    MitDatei() {
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", datei().c_str(), 1);
    }
};

TEST_F(MitDatei, EinTonHatSeineHoeheUndSeineLaenge) {
    for (const auto& [frequenz, dauer] :
         {std::pair{500U, 100U}, std::pair{250U, 100U}, std::pair{300U, 500U}}) {
        std::filesystem::remove(datei());
        SdlTon ton;
        ton.Beep(frequenz, dauer);
        ASSERT_TRUE(warten([this] { return std::filesystem::exists(datei()) && verklungen(); }));
        const auto proben = klang();
        EXPECT_NEAR(static_cast<double>(proben.size()), ABTASTRATE * dauer / 1000.0, 4) << frequenz;
        EXPECT_NEAR(nulldurchgaenge(proben), 2 * frequenz * dauer / 1000, 1) << frequenz;
        EXPECT_GT(*std::ranges::max_element(proben), 4000) << "it can be heard";
    }
}

TEST_F(MitDatei, DerLetzteTonSchneidetDenVorigenAb) {
    SdlTon ton;
    ton.Beep(300, 5000);
    ASSERT_TRUE(warten([this] { return std::filesystem::exists(datei()) && !klang().empty(); }));
    ton.Beep(500, 100);
    ASSERT_TRUE(warten([this] { return verklungen(); }));
    auto proben = klang();
    constexpr std::size_t LAENGE = ABTASTRATE / 10 - 8; // less what is silent at its ends
    ASSERT_GT(proben.size(), LAENGE);
    EXPECT_LT(proben.size(), ABTASTRATE * 5);
    proben.erase(proben.begin(), proben.end() - static_cast<long>(LAENGE));
    EXPECT_NEAR(nulldurchgaenge(proben), 100, 1);
}

TEST_F(MitDatei, EinGeraetDasSichNichtOeffnetHaeltNiemandenAuf) {
    ASSERT_EQ(mkfifo(datei().c_str(), 0600), 0); // opening it to write waits for a reader
    SdlTon ton;
    ton.Beep(500, 100);
    ton.Beep(500, 100);
    const int leser = open(datei().c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_GE(leser, 0);
    char zeichen[4096];
    EXPECT_TRUE(warten([&] { return read(leser, zeichen, sizeof zeichen) > 0; })) << "then it sounds";
    signal(SIGPIPE, SIG_IGN);
    close(leser);
}

TEST_F(MitDatei, OhneGeraetBleibtEsStill) {
    setenv("SDL_AUDIODRIVER", "gibtesnicht", 1);
    SdlTon ton;
    ton.Beep(500, 100);
    ton.Beep(250, 100);
    EXPECT_FALSE(std::filesystem::exists(datei()));
}

/// A sound server of the test's own, whose one device is a pipe: what comes out of it is what a user hears.
class MitPulseaudio : public Mitschnitt {
protected:
    MitPulseaudio() {
        setenv("SDL_AUDIODRIVER", "pulseaudio", 1);
        setenv("PULSE_SERVER", ("unix:" + anschluss()).c_str(), 1);
        // The device comes before the socket that shows that the server is ready.
        server_.emplace(
            std::vector<std::string>{
                "pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
                "--disable-shm=yes", "--realtime=no", "--high-priority=no", "-L",
                "module-pipe-sink format=s16le rate=48000 channels=1 file=" + membran(), "-L",
                "module-native-protocol-unix auth-anonymous=1 socket=" + anschluss()},
            umgebung());
        EXPECT_TRUE(warten([this] { return std::filesystem::exists(anschluss()); })) << "no sound server";
        hoerer_ = std::jthread([this](const std::stop_token& ende) { hoeren(ende); });
    }

    /// What was heard, without the gaps where SDL was late: they are the machine's, and nothing is lost by
    /// them.
    static Proben ohneLuecken(const Proben& klang) {
        constexpr std::size_t LUECKE = 10; // a tone passes through 0, but stays nowhere
        Proben ohne;
        std::size_t stille = 0;
        for (const auto probe : klang) {
            stille = probe == 0 ? stille + 1 : 0;
            ohne.push_back(probe);
            if (stille > LUECKE)
                ohne.resize(ohne.size() - (stille == LUECKE + 1 ? stille : 1));
        }
        return ohne;
    }

private:
    std::string anschluss() const { return ordner_.pfad() / "anschluss"; }
    std::string membran() const { return ordner_.pfad() / "membran"; }
    std::vector<std::pair<std::string, std::string>> umgebung() const {
        const std::string ordner = ordner_.pfad();
        return {{"HOME", ordner}, {"XDG_RUNTIME_DIR", ordner}, {"DBUS_SESSION_BUS_ADDRESS", "disabled:"}};
    }

    /// The device goes as fast as it is heard, so nothing is lost where the machine is slow.
    void hoeren(const std::stop_token& ende) const {
        const int ohr = open(membran().c_str(), O_RDONLY | O_NONBLOCK);
        fcntl(ohr, F_SETPIPE_SZ, 4096);
        std::ofstream heft(datei(), std::ios::binary);
        for (std::array<char, 960> gehoert{}; !ende.stop_requested(); std::this_thread::sleep_for(10ms))
            if (const auto bytes = read(ohr, gehoert.data(), gehoert.size()); bytes > 0)
                heft.write(gehoert.data(), bytes).flush();
        close(ohr);
    }

    std::optional<Hilfsprogramm> server_;
    std::jthread hoerer_;
};

constexpr std::size_t RAND = 8; // what is silent at the ends of a tone

TEST_F(MitPulseaudio, DieToeneDesProgrammsSindZuHoeren) {
    for (const auto& [frequenz, dauer] :
         {std::pair{500U, 100U}, std::pair{250U, 100U}, std::pair{300U, 500U}}) {
        const auto vorher = gesendet().size();
        SdlTon ton;
        ton.Beep(frequenz, dauer);
        const std::size_t laenge = ABTASTRATE * dauer / 1000;
        EXPECT_TRUE(warten([&] { return ohneLuecken(klangAb(vorher)).size() + RAND >= laenge; })) << frequenz;
        EXPECT_TRUE(warten([this] { return verklungen(); })) << frequenz;
        const auto proben = ohneLuecken(klangAb(vorher));
        EXPECT_NEAR(static_cast<double>(proben.size()), static_cast<double>(laenge), RAND) << frequenz;
        EXPECT_NEAR(nulldurchgaenge(proben), 2 * frequenz * dauer / 1000, 1) << frequenz;
        EXPECT_GT(*std::ranges::max_element(proben), 4000) << "it can be heard";
    }
}

} // namespace
