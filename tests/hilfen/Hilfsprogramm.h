// SPDX-License-Identifier: GPL-3.0-or-later
// A program that a test needs beside it: runs while the object lives.
#pragma once

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

class Hilfsprogramm {
public:
    /// `umgebung` comes to what it inherits; what it says goes into the file `ausgabe`.
    Hilfsprogramm(std::vector<std::string> worte,
                  const std::vector<std::pair<std::string, std::string>>& umgebung,
                  const std::string& ausgabe = "/dev/null")
        : kennung_(fork()) {
        if (kennung_ == 0)
            werden(worte, umgebung, ausgabe);
    }
    ~Hilfsprogramm() { toeten(); }
    Hilfsprogramm(const Hilfsprogramm&) = delete;
    Hilfsprogramm& operator=(const Hilfsprogramm&) = delete;

    void toeten() {
        if (kennung_ <= 0)
            return;
        kill(kennung_, SIGKILL);
        waitpid(kennung_, nullptr, 0);
        kennung_ = -1;
    }

private:
    [[noreturn]] static void werden(std::vector<std::string>& worte,
                                    const std::vector<std::pair<std::string, std::string>>& umgebung,
                                    const std::string& ausgabe) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (const auto& [name, wert] : umgebung)
            setenv(name.c_str(), wert.c_str(), 1);
        const int leer = open("/dev/null", O_RDWR | O_CLOEXEC);
        const int ziel = open(ausgabe.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        dup2(leer, STDIN_FILENO);
        dup2(ziel, STDOUT_FILENO);
        dup2(leer, STDERR_FILENO);
        std::vector<char*> argumente;
        for (auto& wort : worte)
            argumente.push_back(wort.data());
        argumente.push_back(nullptr);
        execvp(argumente[0], argumente.data());
        _exit(127);
    }

    pid_t kennung_;
};
