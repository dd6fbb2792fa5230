// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/dauer/Fernsteuerung.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds FRIST{5};
constexpr std::chrono::seconds ENDFRIST{10};

std::vector<std::string> felder(const std::string& zeile) {
    std::vector<std::string> alle;
    std::istringstream strom(zeile);
    for (std::string feld; std::getline(strom, feld, '\t');)
        alle.push_back(feld);
    return alle;
}

/// A socket at which the hand in the program knocks.
int steckdose(const std::string& pfad) {
    sockaddr_un adresse{};
    adresse.sun_family = AF_UNIX;
    std::strncpy(adresse.sun_path, pfad.c_str(), sizeof adresse.sun_path - 1);
    unlink(pfad.c_str());
    const int dose = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(dose, reinterpret_cast<const sockaddr*>(&adresse), sizeof adresse) != 0 || listen(dose, 1) != 0)
        throw std::runtime_error("no socket " + pfad);
    Spieler::schenken(pfad);
    return dose;
}

std::string feld(const std::vector<std::string>& alle, std::size_t nummer) {
    return nummer < alle.size() ? alle[nummer] : std::string();
}
int zahl(const std::vector<std::string>& alle, std::size_t nummer) {
    return std::atoi(feld(alle, nummer).c_str());
}

void eintragen(Schirmstand& stand, const std::vector<std::string>& worte) {
    const auto art = feld(worte, 0);
    if (art == "W")
        std::tie(stand.heap, stand.zeitgeber, stand.widgets) =
            std::tuple(std::atof(feld(worte, 1).c_str()), zahl(worte, 2), zahl(worte, 3));
    if (art == "F")
        stand.fenster.push_back({feld(worte, 2), feld(worte, 3), zahl(worte, 4) != 0, zahl(worte, 5) != 0,
                                 std::strtoul(feld(worte, 6).c_str(), nullptr, 10), feld(worte, 7)});
    if (art == "C")
        stand.controls.push_back({static_cast<std::size_t>(zahl(worte, 1)),
                                  feld(worte, 2).at(0),
                                  feld(worte, 3),
                                  {zahl(worte, 4), zahl(worte, 5), zahl(worte, 6), zahl(worte, 7)},
                                  feld(worte, 8)});
}

} // namespace

const OffenesFenster* Schirmstand::offenes(const std::string& name) const {
    const auto stelle = std::ranges::find(fenster, name, &OffenesFenster::name);
    return stelle == fenster.end() ? nullptr : &*stelle;
}

const OffenesFenster* Schirmstand::modales() const {
    const auto stelle = std::ranges::find(fenster, true, &OffenesFenster::modal);
    return stelle == fenster.end() ? nullptr : &*stelle;
}

const Anklickbares* Schirmstand::control(const std::string& form, const std::string& name) const {
    const auto stelle = std::ranges::find_if(controls, [&](const Anklickbares& eines) {
        return eines.name == name && fenster.at(eines.fenster).name == form;
    });
    return stelle == controls.end() ? nullptr : &*stelle;
}

Fernsteuerung::Fernsteuerung(const Umgebung& umgebung, const std::string& name) {
    const auto pfad = (umgebung.laufordner() / name).string();
    const int dose = steckdose(pfad);
    std::array<int, 2> fehler{};
    if (pipe2(fehler.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    kennung_ = fork();
    if (kennung_ == 0) {
        Spieler::werden();
        umgebung.setzen();
        setenv("DAUER_STECKDOSE", pfad.c_str(), 1);
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(fehler[1], STDERR_FILENO);
        execl(umgebung.programm().c_str(), umgebung.programm().c_str(), nullptr);
        _exit(127);
    }
    close(fehler[1]);
    fehlerkanal_ = fehler[0];
    fcntl(fehlerkanal_, F_SETFL, O_NONBLOCK);
    pollfd klopfen{dose, POLLIN, 0};
    const auto frist = std::chrono::milliseconds(ENDFRIST).count();
    if (poll(&klopfen, 1, static_cast<int>(frist)) == 1)
        leitung_ = accept4(dose, nullptr, nullptr, SOCK_CLOEXEC);
    close(dose);
    if (leitung_ >= 0)
        return;
    aufraeumen();
    throw Stumm();
}

Fernsteuerung::~Fernsteuerung() {
    aufraeumen();
}

void Fernsteuerung::aufraeumen() {
    if (kennung_ > 0) {
        kill(kennung_, SIGKILL);
        waitpid(kennung_, nullptr, 0);
    }
    for (const int datei : {leitung_, fehlerkanal_})
        if (datei >= 0)
            close(datei);
}

void Fernsteuerung::senden(int signal) const {
    if (kennung_ > 0)
        kill(kennung_, signal);
}

Schirmstand Fernsteuerung::stand() {
    Schirmstand stand;
    for (const auto& zeile : fragen("stand"))
        eintragen(stand, felder(zeile));
    return stand;
}

std::vector<std::string> Fernsteuerung::fragen(const std::string& zeile) {
    const auto ganze = zeile + "\n";
    if (send(leitung_, ganze.data(), ganze.size(), MSG_NOSIGNAL) < 0)
        throw Gegangen();
    std::vector<std::string> antwort;
    for (auto eine = zeileLesen(); eine != "."; eine = zeileLesen())
        antwort.push_back(eine);
    return antwort;
}

std::string Fernsteuerung::zeileLesen() {
    for (;;) {
        if (const auto ende = eingang_.find('\n'); ende != std::string::npos) {
            const auto zeile = eingang_.substr(0, ende);
            eingang_.erase(0, ende + 1);
            return zeile;
        }
        pollfd da{leitung_, POLLIN, 0};
        if (poll(&da, 1, static_cast<int>(std::chrono::milliseconds(FRIST).count())) <= 0)
            throw Stumm();
        std::array<char, 8192> stueck{};
        const auto gelesen = read(leitung_, stueck.data(), stueck.size());
        if (gelesen <= 0)
            throw Gegangen();
        eingang_.append(stueck.data(), static_cast<std::size_t>(gelesen));
    }
}

std::string Fernsteuerung::ausgang() {
    const auto ende = std::chrono::steady_clock::now() + ENDFRIST;
    int stand = 0;
    while (waitpid(kennung_, &stand, WNOHANG) != kennung_) {
        if (std::chrono::steady_clock::now() > ende)
            return "";
        std::this_thread::sleep_for(std::chrono::milliseconds{5});
    }
    kennung_ = -1;
    return WIFEXITED(stand) ? "exit " + std::to_string(WEXITSTATUS(stand))
                            : "signal " + std::to_string(WTERMSIG(stand));
}

std::vector<std::string> Fernsteuerung::protokoll() {
    std::array<char, 8192> stueck{};
    for (auto gelesen = read(fehlerkanal_, stueck.data(), stueck.size()); gelesen > 0;
         gelesen = read(fehlerkanal_, stueck.data(), stueck.size()))
        fehlertext_.append(stueck.data(), static_cast<std::size_t>(gelesen));
    std::vector<std::string> zeilen;
    for (auto ende = fehlertext_.find('\n'); ende != std::string::npos; ende = fehlertext_.find('\n')) {
        zeilen.push_back(fehlertext_.substr(0, ende));
        fehlertext_.erase(0, ende + 1);
    }
    return zeilen;
}
