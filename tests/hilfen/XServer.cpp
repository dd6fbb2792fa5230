// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/XServer.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Runs `worte` in a child that dies with us; `rohr` stays open in it unless it is -1.
pid_t starten(std::vector<std::string> worte, int rohr) {
    std::vector<char*> argumente;
    for (auto& wort : worte)
        argumente.push_back(wort.data());
    argumente.push_back(nullptr);
    const pid_t kennung = fork();
    if (kennung != 0)
        return kennung;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (rohr >= 0)
        fcntl(rohr, F_SETFD, 0);
    const int leer = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(leer, STDOUT_FILENO);
    dup2(leer, STDERR_FILENO);
    execvp(argumente[0], argumente.data());
    _exit(127);
}

} // namespace

XServer::XServer(const std::string& bildschirm, const std::vector<std::string>& weitere) {
    // The server would take the first number that is free, but one that has just been killed gives its number
    // up in several steps: a number of our own keeps servers that come and go side by side apart.
    static int gestartete = 0;
    constexpr int ERSTE_NUMMER = 1000;
    constexpr int NUMMERN = 50000;
    constexpr int JE_PROZESS = 16;
    constexpr int VERSUCHE = 8;
    for (int versuch = 0; versuch < VERSUCHE && kennung_ < 0; ++versuch)
        versuchen(ERSTE_NUMMER + (getpid() * JE_PROZESS + gestartete++) % NUMMERN, bildschirm, weitere);
    if (kennung_ < 0)
        throw std::runtime_error("Xvfb does not start");
}

void XServer::versuchen(int nummer, const std::string& bildschirm, const std::vector<std::string>& weitere) {
    std::array<int, 2> rohr{};
    if (pipe2(rohr.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("pipe");
    anzeige_ = ":" + std::to_string(nummer);
    std::vector<std::string> worte{"Xvfb",      anzeige_,  "-displayfd", std::to_string(rohr[1]),
                                   "-nolisten", "tcp",     "-noreset",   "-screen",
                                   "0",         bildschirm};
    worte.insert(worte.end(), weitere.begin(), weitere.end());
    kennung_ = starten(worte, rohr[1]);
    close(rohr[1]);
    // It writes its number and a line break when it is ready.
    char zeichen = 0;
    while (read(rohr[0], &zeichen, 1) == 1 && zeichen != '\n')
        ;
    close(rohr[0]);
    if (zeichen == '\n')
        return;
    waitpid(kennung_, nullptr, 0);
    kennung_ = -1;
}

XServer::~XServer() {
    toeten();
}

void XServer::tastatur(const std::string& layout, const std::string& variante) const {
    const pid_t kind = starten(
        {"setxkbmap", "-display", anzeige_, "-layout", layout, "-variant", variante, "-option", ""}, -1);
    int ausgang = 0;
    if (waitpid(kind, &ausgang, 0) != kind || ausgang != 0)
        throw std::runtime_error("setxkbmap " + layout);
}

void XServer::anhalten(bool still) const {
    kill(kennung_, still ? SIGSTOP : SIGCONT);
}

void XServer::toeten() {
    beenden(SIGKILL);
}

void XServer::beenden(int signal) {
    if (kennung_ <= 0)
        return;
    kill(kennung_, signal);
    waitpid(kennung_, nullptr, 0);
    kennung_ = -1;
    // A killed server leaves these behind.
    unlink(("/tmp/.X11-unix/X" + anzeige_.substr(1)).c_str());
    unlink(("/tmp/.X" + anzeige_.substr(1) + "-lock").c_str());
}
