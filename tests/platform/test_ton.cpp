// SPDX-License-Identifier: GPL-3.0-or-later
// Tones: what both sides promise, then what SDL sends to a device, which here is a file.
#include "platform/linux/SdlTon.h"
#include "platform/probe/ProbeTon.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

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

class MitDatei : public testing::Test {
protected:
    MitDatei() {
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", datei().c_str(), 1);
    }
    std::string datei() const { return ordner_.pfad() / "ton.raw"; }

    Proben gesendet() const {
        const auto inhalt = dateiLesen(datei());
        Proben proben(inhalt.size() / 2);
        if (!proben.empty())
            std::memcpy(proben.data(), inhalt.data(), proben.size() * 2);
        return proben;
    }
    /// What was sent, without the silence before and after.
    Proben klang() const {
        auto proben = gesendet();
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

} // namespace
