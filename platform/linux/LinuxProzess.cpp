#include "platform/linux/LinuxProzess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sched.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr rlim_t RUHELOS_HOECHSTENS = 2'000'000; // microseconds
constexpr int BESTE_GUETE = -20;                 // nice value

// Async-signal-safe. The id of the process is that of its main thread. Only the privileged may take the flag
// back.
void zurueckstufen(int) {
    const int fehler = errno;
    const sched_param normal{};
    sched_setscheduler(getpid(), SCHED_OTHER | SCHED_RESET_ON_FORK, &normal);
    errno = fehler;
}

// Only the soft limit: the hard one would kill.
void ruhelosigkeitBegrenzen() {
    struct sigaction aktion {};
    aktion.sa_handler = zurueckstufen;
    aktion.sa_flags = SA_RESTART;
    sigemptyset(&aktion.sa_mask);
    rlimit grenze{};
    if (sigaction(SIGXCPU, &aktion, nullptr) != 0 || getrlimit(RLIMIT_RTTIME, &grenze) != 0)
        return;
    grenze.rlim_cur = std::min(RUHELOS_HOECHSTENS, grenze.rlim_max);
    setrlimit(RLIMIT_RTTIME, &grenze);
}

bool echtzeit() {
    sched_param niedrigste{};
    niedrigste.sched_priority = sched_get_priority_min(SCHED_RR);
    ruhelosigkeitBegrenzen();
    return sched_setscheduler(getpid(), SCHED_RR | SCHED_RESET_ON_FORK, &niedrigste) == 0;
}

void besteGuete() {
    const int jetzige = getpriority(PRIO_PROCESS, 0);
    for (int guete = BESTE_GUETE; guete < jetzige; ++guete)
        if (setpriority(PRIO_PROCESS, 0, guete) == 0)
            return;
}

std::string imSuchpfad(const std::string& programm) {
    const char* suchpfad = std::getenv("PATH");
    std::istringstream ordner(suchpfad != nullptr ? suchpfad : "/usr/local/bin:/usr/bin:/bin");
    for (std::string einer; std::getline(ordner, einer, ':');) {
        const auto pfad = (einer.empty() ? "." : einer) + "/" + programm;
        if (access(pfad.c_str(), X_OK) == 0)
            return pfad;
    }
    return {};
}

// In the child, between fork and exec: async-signal-safe calls only.
[[noreturn]] void ersetzen(char* const argumente[], int meldung) {
    setpriority(PRIO_PROCESS, 0, std::max(0, getpriority(PRIO_PROCESS, 0)));
    signal(SIGXCPU, SIG_DFL);
    sigset_t keine;
    sigemptyset(&keine);
    sigprocmask(SIG_SETMASK, &keine, nullptr);
    const int leer = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(leer, STDIN_FILENO);
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    execv(argumente[0], argumente);
    const char fehlschlag = 1;
    _exit(write(meldung, &fehlschlag, 1) == 1 ? 127 : 126);
}

// Starts a program that is nobody's child: the one in between ends at once and is waited for. Returns whether
// the program was found fit to run.
bool abgeloestStarten(char* const argumente[]) {
    std::array<int, 2> rohr{};
    if (pipe2(rohr.data(), O_CLOEXEC) != 0)
        return false;
    const pid_t mittler = fork();
    if (mittler == 0) {
        setsid();
        const pid_t enkel = fork();
        if (enkel == 0)
            ersetzen(argumente, rohr[1]);
        _exit(enkel > 0 ? 0 : 1);
    }
    close(rohr[1]);
    int ausgang = 1;
    while (mittler > 0 && waitpid(mittler, &ausgang, 0) < 0 && errno == EINTR) {
    }
    char fehlschlag = 0;
    ssize_t gelesen = 0;
    while ((gelesen = read(rohr[0], &fehlschlag, 1)) < 0 && errno == EINTR) {
    }
    close(rohr[0]);
    return mittler > 0 && ausgang == 0 && gelesen == 0;
}

} // namespace

bool LinuxProzess::SetPriorityClass(std::uint32_t klasse) {
    if (klasse != REALTIME_PRIORITY_CLASS)
        return false;
    if (echtzeit())
        return true;
    besteGuete();
    return false;
}

std::string LinuxProzess::GetFullPathNameA(std::string_view name) {
    if (name.empty())
        return {};
    std::string pfad(name);
    std::ranges::replace(pfad, '\\', '/');
    std::error_code fehler;
    const auto hier = std::filesystem::current_path(fehler); // a folder that was removed has no path
    return ((fehler ? std::filesystem::path("/") : hier) / pfad).lexically_normal().string();
}

bool LinuxProzess::ShellExecuteA(const std::string& datei) {
    std::error_code fehler;
    const bool adresse = datei.find("://") != std::string::npos;
    // In a path that is whole already a "\" is part of a folder's name.
    auto ziel = adresse || datei.starts_with('/') ? datei : GetFullPathNameA(datei);
    auto programm = imSuchpfad("xdg-open");
    if (ziel.empty() || programm.empty() || (!adresse && !std::filesystem::exists(ziel, fehler)))
        return false;
    char* const argumente[] = {programm.data(), ziel.data(), nullptr};
    return abgeloestStarten(argumente);
}
