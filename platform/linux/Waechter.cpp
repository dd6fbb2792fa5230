// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Waechter.h"

#include "platform/linux/Absturzmelder.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr int ERSTER_FREIER_KANAL = LEITUNGSKANAL + 1;
constexpr int NEUSTARTS_HOECHSTENS = 8; // who kills it again and again means it
constexpr int GEDULD_MS = 500;

// Nothing to do for who is to be small and is not played.
std::vector<char*> umgebungOhneVorgeladenes() {
    std::vector<char*> zeilen;
    for (char** zeile = environ; *zeile != nullptr; ++zeile)
        if (!std::string_view(*zeile).starts_with("LD_PRELOAD="))
            zeilen.push_back(*zeile);
    zeilen.push_back(nullptr);
    return zeilen;
}

// A descriptor that is in the way of none of those that the watcher knows.
class Uebergabe {
public:
    explicit Uebergabe(int kanal) : kanal_(fcntl(kanal, F_DUPFD_CLOEXEC, ERSTER_FREIER_KANAL)) {}
    ~Uebergabe() { close(kanal_); }
    Uebergabe(const Uebergabe&) = delete;
    Uebergabe& operator=(const Uebergabe&) = delete;
    int kanal() const { return kanal_; }

private:
    int kanal_;
};

class Kanaele {
public:
    Kanaele(const Uebergabe& blatt, const Uebergabe& leitung) {
        posix_spawn_file_actions_init(&plan_);
        posix_spawn_file_actions_addopen(&plan_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_adddup2(&plan_, STDIN_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&plan_, STDIN_FILENO, STDERR_FILENO);
        posix_spawn_file_actions_adddup2(&plan_, blatt.kanal(), BLATTKANAL);
        posix_spawn_file_actions_adddup2(&plan_, leitung.kanal(), LEITUNGSKANAL);
        posix_spawn_file_actions_addclosefrom_np(&plan_, ERSTER_FREIER_KANAL);
    }
    ~Kanaele() { posix_spawn_file_actions_destroy(&plan_); }
    Kanaele(const Kanaele&) = delete;
    Kanaele& operator=(const Kanaele&) = delete;
    const posix_spawn_file_actions_t* plan() const { return &plan_; }

private:
    posix_spawn_file_actions_t plan_{};
};

class Eigenschaften {
public:
    Eigenschaften() {
        posix_spawnattr_init(&alle_);
        sigset_t menge;
        sigemptyset(&menge);
        posix_spawnattr_setsigmask(&alle_, &menge);
        sigfillset(&menge);
        posix_spawnattr_setsigdefault(&alle_, &menge);
        posix_spawnattr_setflags(&alle_, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~Eigenschaften() { posix_spawnattr_destroy(&alle_); }
    Eigenschaften(const Eigenschaften&) = delete;
    Eigenschaften& operator=(const Eigenschaften&) = delete;
    const posix_spawnattr_t* alle() const { return &alle_; }

private:
    posix_spawnattr_t alle_{};
};

// Its name has nothing of the program's: what ends all processes of that name is to leave it.
pid_t losschicken(const std::string& programm, const Uebergabe& blatt, const Uebergabe& leitung) {
    const Kanaele kanaele(blatt, leitung);
    const Eigenschaften eigenschaften;
    std::string name = std::filesystem::path(programm).filename().string();
    std::array<char*, 2> worte{name.data(), nullptr};
    auto umgebung = umgebungOhneVorgeladenes();
    pid_t kennung = -1;
    if (posix_spawn(&kennung, programm.c_str(), kanaele.plan(), eigenschaften.alle(), worte.data(),
                    umgebung.data()) != 0)
        return -1;
    return kennung;
}

} // namespace

Waechter::Waechter(std::string programm) : programm_(std::move(programm)) {
    blattAnlegen();
    starten();
}

Waechter::~Waechter() {
    abstuerzeMelden(-1);
    melder_.reset();
    if (leitung_ >= 0)
        shutdown(leitung_, SHUT_WR);
    if (kennung_ > 0) {
        pollfd ende{leitung_, 0, 0}; // hears the hang-up alone
        if (poll(&ende, 1, GEDULD_MS) != 1)
            kill(kennung_, SIGKILL);
        waitpid(kennung_, nullptr, 0);
    }
    close(leitung_);
    if (blatt_ != nullptr)
        munmap(blatt_, sizeof(Waechterblatt));
    close(blattdatei_);
}

std::string Waechter::nebenan() {
    std::error_code fehler;
    const auto eigenes = std::filesystem::read_symlink("/proc/self/exe", fehler);
    return (eigenes.parent_path() / "tastenwaechter").string();
}

void Waechter::blattAnlegen() {
    blattdatei_ = memfd_create("waechterblatt", MFD_CLOEXEC);
    if (blattdatei_ < 0 || ftruncate(blattdatei_, sizeof(Waechterblatt)) != 0)
        return;
    void* ort = mmap(nullptr, sizeof(Waechterblatt), PROT_READ | PROT_WRITE, MAP_SHARED, blattdatei_, 0);
    if (ort != MAP_FAILED)
        blatt_ = new (ort) Waechterblatt;
}

void Waechter::starten() {
    std::array<int, 2> leitung{-1, -1};
    if (blatt_ == nullptr || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, leitung.data()) != 0)
        return;
    kennung_ = losschicken(programm_, Uebergabe(blattdatei_), Uebergabe(leitung[1]));
    close(leitung[1]);
    bereit_ = false;
    if (kennung_ < 0) {
        close(leitung[0]);
        return;
    }
    leitung_ = leitung[0];
    abstuerzeMelden(leitung_);
}

bool Waechter::wacht(int hoechstens) const {
    pollfd wort{leitung_, POLLIN, 0};
    char welches = 0;
    return leitung_ >= 0 && poll(&wort, 1, hoechstens) == 1 &&
           recv(leitung_, &welches, 1, MSG_PEEK | MSG_DONTWAIT) == 1;
}

void Waechter::verbinden(Meldung melden) {
    melden_ = std::move(melden);
    if (kennung_ < 0 && melden_)
        melden_("Der Tastenwächter startet nicht");
    lauschen();
}

void Waechter::lauschen() {
    if (leitung_ < 0)
        return;
    melder_ = std::make_unique<QSocketNotifier>(leitung_, QSocketNotifier::Read);
    QObject::connect(melder_.get(), &QSocketNotifier::activated, melder_.get(), [this] { hoeren(); });
}

void Waechter::hoeren() {
    char wort = 0;
    if (recv(leitung_, &wort, 1, MSG_DONTWAIT) > 0)
        bereit_ |= wort == leitungswort::BEREIT;
    else
        verstorben();
}

// Called by the notifier that goes.
void Waechter::verstorben() {
    melder_->setEnabled(false);
    melder_.release()->deleteLater();
    abstuerzeMelden(-1);
    close(std::exchange(leitung_, -1));
    int stand = 0;
    waitpid(std::exchange(kennung_, -1), &stand, 0);
    if (melden_)
        melden_("Der Tastenwächter ist tot");
    // One that ends by itself before it watches can't watch here; one that is killed may never have got to
    // it.
    const bool vergeblich = !bereit_ && !WIFSIGNALED(stand);
    if (vergeblich || neustarts_++ == NEUSTARTS_HOECHSTENS)
        return;
    starten();
    lauschen();
}
