// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a process of its own. It lies in a folder of its own, too: it writes beside its executable,
// and tests run side by side.
#pragma once

#include "tests/hilfen/Testdatenbank.h"

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <thread>

/// A copy of the executable that is started in `ordner`.
class Programmprozess {
public:
    /// Runs in the process before it becomes the program, with the folder in which the executable lies.
    using Vorbereitung = std::function<void(const std::filesystem::path&)>;

    /// `ignoriert` is a signal that it finds ignored.
    explicit Programmprozess(const std::filesystem::path& ordner, int ignoriert = 0)
        : Programmprozess(ordner, [ignoriert](const std::filesystem::path&) {
            if (ignoriert != 0)
                signal(ignoriert, SIG_IGN);
        }) {}
    /// `wort` stands behind the command's name; "" for none.
    Programmprozess(const std::filesystem::path& ordner, const Vorbereitung& vorher,
                    const std::string& wort = "") {
        const auto programm = programmordner_.pfad() / "gamepad-konfic";
        std::filesystem::copy_file(PROGRAMM, programm);
        kennung_ = fork();
        if (kennung_ != 0)
            return;
        vorher(programmordner_.pfad());
        if (chdir(ordner.c_str()) == 0)
            execl(programm.c_str(), programm.c_str(), wort.empty() ? nullptr : wort.c_str(), nullptr);
        _exit(127);
    }
    Programmprozess(const Programmprozess&) = delete;
    Programmprozess& operator=(const Programmprozess&) = delete;
    ~Programmprozess() {
        if (kennung_ > 0 && kill(kennung_, SIGKILL) == 0)
            waitpid(kennung_, nullptr, 0);
    }

    /// Where the executable lies.
    const std::filesystem::path& programmordner() const { return programmordner_.pfad(); }

    void senden(int signal) const { kill(kennung_, signal); }

    /// What an open channel leads to.
    std::filesystem::path kanal(int nummer) const {
        return std::filesystem::read_symlink("/proc/" + std::to_string(kennung_) + "/fd/" +
                                             std::to_string(nummer));
    }

    /// The files that lie in its memory, line by line.
    std::string imSpeicher() const {
        std::ifstream strom("/proc/" + std::to_string(kennung_) + "/maps");
        return {std::istreambuf_iterator<char>(strom), {}};
    }

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

    /// Waits until `probe` holds; false when it does not come to hold in time.
    template <class Probe> static bool warten(Probe probe) {
        constexpr std::chrono::seconds GEDULD{20};
        const auto ende = std::chrono::steady_clock::now() + GEDULD;
        while (!probe()) {
            if (std::chrono::steady_clock::now() > ende)
                return false;
            std::this_thread::sleep_for(std::chrono::milliseconds{5});
        }
        return true;
    }

private:
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

    Testordner programmordner_;
    pid_t kennung_ = -1;
};
