// The end of the program's process, asked for by signals.
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <string>
#include <thread>

namespace {

constexpr std::chrono::seconds GEDULD{20};

// The program as a process of its own, started in `ordner`.
class Prozess {
public:
    explicit Prozess(const std::filesystem::path& ordner, int ignoriert = 0) : kennung_(fork()) {
        if (kennung_ != 0)
            return;
        if (ignoriert != 0)
            signal(ignoriert, SIG_IGN);
        if (chdir(ordner.c_str()) == 0)
            execl(PROGRAMM, PROGRAMM, nullptr);
        _exit(127);
    }
    Prozess(const Prozess&) = delete;
    Prozess& operator=(const Prozess&) = delete;
    ~Prozess() {
        if (kennung_ > 0 && kill(kennung_, SIGKILL) == 0)
            waitpid(kennung_, nullptr, 0);
    }

    void senden(int signal) const { kill(kennung_, signal); }

    /// Whether the process takes the signal as a request to end; waits until it takes any.
    bool nimmtAn(int signal) const {
        std::uint64_t angenommene = 0;
        warten([&] { return (angenommene = signalmaske()) != 0; });
        return ((angenommene >> (signal - 1)) & 1U) != 0;
    }

    /// "exit 0", "signal 15"; "" if it goes on.
    std::string ausgang() {
        int stand = 0;
        if (!warten([&] { return waitpid(kennung_, &stand, WNOHANG) == kennung_; }))
            return "";
        kennung_ = -1;
        return WIFEXITED(stand) ? "exit " + std::to_string(WEXITSTATUS(stand))
                                : "signal " + std::to_string(WTERMSIG(stand));
    }

private:
    template <class Probe> static bool warten(Probe probe) {
        const auto ende = std::chrono::steady_clock::now() + GEDULD;
        while (!probe()) {
            if (std::chrono::steady_clock::now() > ende)
                return false;
            std::this_thread::sleep_for(std::chrono::milliseconds{5});
        }
        return true;
    }

    // The signals that come in through a descriptor; 0 as long as there is none.
    std::uint64_t signalmaske() const {
        std::error_code fehler;
        for (const auto& datei :
             std::filesystem::directory_iterator("/proc/" + std::to_string(kennung_) + "/fdinfo", fehler)) {
            std::ifstream strom(datei.path());
            for (std::string wort; strom >> wort;)
                if (wort == "sigmask:" && strom >> wort)
                    return std::stoull(wort, nullptr, 16);
        }
        return 0;
    }

    pid_t kennung_;
};

class Programmende : public ::testing::TestWithParam<int> {
protected:
    Testdatenbank datenbank_;
};

} // namespace

TEST_P(Programmende, ASignalEndsTheProgramInOrder) {
    Prozess prozess(datenbank_.ordner());
    ASSERT_TRUE(prozess.nimmtAn(GetParam()));
    prozess.senden(GetParam());
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}

TEST_P(Programmende, ASignalEndsTheMessageBoxOfTheStartToo) {
    std::filesystem::remove(datenbank_.pfad());
    Prozess prozess(datenbank_.ordner());
    ASSERT_TRUE(prozess.nimmtAn(GetParam()));
    prozess.senden(GetParam());
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}

INSTANTIATE_TEST_SUITE_P(JedesSignal, Programmende, ::testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST_F(Programmende, AnIgnoredHangUpStaysIgnored) {
    Prozess prozess(datenbank_.ordner(), SIGHUP);
    ASSERT_TRUE(prozess.nimmtAn(SIGTERM));
    EXPECT_FALSE(prozess.nimmtAn(SIGHUP));
    prozess.senden(SIGHUP);
    prozess.senden(SIGTERM);
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}
