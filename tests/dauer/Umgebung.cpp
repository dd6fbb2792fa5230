// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/dauer/Umgebung.h"

#include "tests/hilfen/Dateien.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <grp.h>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr uid_t NIEMAND = 65534;
constexpr const char* GROESSE = "size=96m,mode=0755";

/// A window manager that brings no menu and no key but the one that closes a window: a random click must not
/// end it.
constexpr const char* VERWALTUNG = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <theme><name>Clearlooks</name></theme>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Middle" action="Press"><action name="Focus"/></mousebind>
      <mousebind button="Right" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
)";

/// A name space of one's own for mounts; who is not root asks for one with the users of his own.
bool abgesondert() {
    const auto benutzer = std::to_string(getuid());
    const auto gruppe = std::to_string(getgid());
    if (geteuid() == 0)
        return unshare(CLONE_NEWNS) == 0;
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    dateiSchreiben("/proc/self/setgroups", "deny");
    dateiSchreiben("/proc/self/uid_map", benutzer + " " + benutzer + " 1");
    dateiSchreiben("/proc/self/gid_map", gruppe + " " + gruppe + " 1");
    return true;
}

/// A library of whoever looks for a leak, a heap profiler's say, which is $DAUER_VORLADEN.
std::string vorgeladenes() {
    const char* pfad = std::getenv("DAUER_VORLADEN");
    return pfad ? std::string(pfad) + ":" : std::string();
}

} // namespace

KleinePlatte::KleinePlatte() {
    eigene_ = abgesondert() && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
              mount("tmpfs", pfad().c_str(), "tmpfs", MS_NODEV | MS_NOSUID, GROESSE) == 0;
    chmod(pfad().c_str(), 0755);
}

KleinePlatte::~KleinePlatte() {
    if (eigene_)
        umount2(pfad().c_str(), MNT_DETACH);
}

void KleinePlatte::fuellen() const {
    const int datei = open(ballast().c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const std::vector<char> block(65536, 'x');
    for (std::size_t stueck = block.size(); stueck > 0;)
        if (write(datei, block.data(), stueck) <= 0)
            stueck /= 2;
    close(datei);
}

void KleinePlatte::leeren() const {
    fs::remove(ballast());
}

void Spieler::werden() {
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(NIEMAND) != 0 || setuid(NIEMAND) != 0))
        _exit(126);
    prctl(PR_SET_PDEATHSIG, SIGKILL); // after the change of user, which takes it back
}

void Spieler::schenken(const fs::path& pfad) {
    if (geteuid() != 0)
        return;
    if (lchown(pfad.c_str(), NIEMAND, NIEMAND) != 0)
        throw std::runtime_error("chown " + pfad.string());
    if (fs::is_directory(pfad))
        for (const auto& eintrag : fs::recursive_directory_iterator(pfad))
            if (lchown(eintrag.path().c_str(), NIEMAND, NIEMAND) != 0)
                throw std::runtime_error("chown " + eintrag.path().string());
}

Nachrichtenbus::Nachrichtenbus(const fs::path& ordner) : ordner_(ordner) {
    dateiSchreiben(ordner_ / "bus.conf",
                   "<busconfig><type>session</type><listen>" + adresse() +
                       "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                       "<allow receive_sender=\"*\"/><allow own=\"*\"/>"
                       "<allow user=\"*\"/></policy></busconfig>");
    starten();
}

void Nachrichtenbus::starten() {
    fs::remove(ordner_ / "bus");
    kennung_ = fork();
    if (kennung_ != 0)
        return;
    Spieler::werden();
    const auto einstellung = "--config-file=" + (ordner_ / "bus.conf").string();
    execlp("dbus-daemon", "dbus-daemon", "--nofork", "--nopidfile", einstellung.c_str(), nullptr);
    _exit(127);
}

void Nachrichtenbus::toeten() {
    if (kennung_ <= 0)
        return;
    kill(kennung_, SIGKILL);
    waitpid(kennung_, nullptr, 0);
    kennung_ = -1;
}

Umgebung::Umgebung(const fs::path& programm)
    : bus((legen(programm), laufordner()))
    , verwalter_(
          std::make_unique<Fensterverwalter>(server.anzeige(), (laufordner() / "openbox.xml").string())) {}

/// The folders and files that the program finds.
void Umgebung::legen(const fs::path& programm) const {
    for (const auto& ordner : {this->programm().parent_path(), datenordner() / "Bilder",
                               datenordner() / "Beschreibung", laufordner()})
        fs::create_directories(ordner);
    const auto eigener = fs::read_symlink("/proc/self/exe").parent_path();
    const auto daneben = programm.parent_path();
    fs::copy_file(programm, this->programm());
    fs::copy_file(eigener / "libfernhand.so", fernhand());
    fs::copy_file(daneben / "Belegung.twk", datenbank());
    fs::copy_file(daneben / "Bilder" / "Joy2.bmp", datenordner() / "Bilder" / "Joy2.bmp");
    dateiSchreiben(datenordner() / "Beschreibung" / "Startfenster.htm", "<p>Hilfe</p>");
    dateiSchreiben(laufordner() / "openbox.xml", VERWALTUNG);
    fs::permissions(laufordner(), fs::perms::owner_all);
    for (const auto& ordner : {this->programm().parent_path(), datenordner(), laufordner()})
        Spieler::schenken(ordner);
}

void Umgebung::setzen() const {
    struct Variable {
        const char* name;
        std::string wert;
    };
    for (const auto& [name, wert] : std::initializer_list<Variable>{
             {"DISPLAY", server.anzeige()},
             {"DBUS_SESSION_BUS_ADDRESS", bus.adresse()},
             {"DBUS_SYSTEM_BUS_ADDRESS", "disabled:"},
             {"HOME", laufordner()},
             {"XDG_RUNTIME_DIR", laufordner()},
             {"XDG_DATA_HOME", laufordner()},
             {"XDG_CONFIG_HOME", laufordner()},
             {"XDG_CACHE_HOME", laufordner()},
             {"QT_QPA_PLATFORM", "xcb"},
             {"QT_LOGGING_RULES", "gamepad.zeit=true"},
             {"QT_FORCE_STDERR_LOGGING", "1"},
             {"SDL_AUDIODRIVER", "dummy"},
             {"BROWSER", "/bin/true"},
             {"LD_PRELOAD", vorgeladenes() + fernhand().string()},
         })
        setenv(name, wert.c_str(), 1);
    for (const char* name : {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XAUTHORITY", "GAMEPAD_KONFIC_ORDNER"})
        unsetenv(name);
    if (chdir(datenordner().c_str()) != 0)
        _exit(126);
}
