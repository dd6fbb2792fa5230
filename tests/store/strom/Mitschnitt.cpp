// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/store/strom/Mitschnitt.h"

#include "tests/hilfen/Dateien.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using Art = Plattenschritt::Art;

Mitschnitt* mitschnitt = nullptr; ///< the one that lives
bool verknuepfbar = true;

/// What programs share of a write-ahead log: memory, of which no start keeps anything.
bool istSpeicher(const std::string& pfad) {
    return pfad.ends_with("-shm");
}

/// The path that an open file has at present.
std::string pfadVon(int deskriptor) {
    char pfad[PATH_MAX];
    char verweis[32];
    std::snprintf(verweis, sizeof verweis, "/proc/self/fd/%d", deskriptor);
    const auto laenge = readlink(verweis, pfad, sizeof pfad);
    return laenge < 0 ? std::string() : std::string(pfad, static_cast<std::size_t>(laenge));
}

bool gehoert(int deskriptor, std::string& pfad) {
    if (!mitschnitt)
        return false;
    pfad = pfadVon(deskriptor);
    return mitschnitt->meint(pfad);
}

long oeffnen(const char* name, int art, unsigned rechte) {
    const auto aufruf = [&] { return syscall(SYS_openat, AT_FDCWD, name, art, rechte); };
    const std::string pfad = mitschnitt ? fs::absolute(name).lexically_normal().string() : std::string();
    if (!mitschnitt || !mitschnitt->meint(pfad) || (art & O_ACCMODE) == O_RDONLY)
        return aufruf();
    if ((art & O_CREAT) && !mitschnitt->kennt(pfad))
        return mitschnitt->tun({Art::Anlegen, pfad}, aufruf);
    if ((art & O_TRUNC) && mitschnitt->kennt(pfad) && !(art & O_EXCL))
        return mitschnitt->tun({Art::Kuerzen, pfad}, aufruf);
    return aufruf();
}

long schreiben(int deskriptor, const void* daten, std::size_t laenge, long stelle,
               const std::function<long()>& aufruf) {
    std::string pfad;
    if (!gehoert(deskriptor, pfad) || !mitschnitt->kennt(pfad))
        return aufruf();
    return mitschnitt->tun({Art::Schreiben,
                            pfad,
                            {},
                            static_cast<std::size_t>(stelle),
                            std::string(static_cast<const char*>(daten), laenge)},
                           aufruf);
}

long kuerzen(int deskriptor, long laenge) {
    const auto aufruf = [&] { return syscall(SYS_ftruncate, deskriptor, laenge); };
    std::string pfad;
    if (!gehoert(deskriptor, pfad) || !mitschnitt->kennt(pfad))
        return aufruf();
    return mitschnitt->tun({Art::Kuerzen, pfad, {}, static_cast<std::size_t>(laenge)}, aufruf);
}

int sichern(int deskriptor) {
    std::string pfad;
    const auto aufruf = [] { return 0L; };
    if (!gehoert(deskriptor, pfad))
        return 0;
    struct stat stand {};
    if (fstat(deskriptor, &stand) == 0 && S_ISDIR(stand.st_mode))
        return static_cast<int>(mitschnitt->tun({Art::OrdnerSichern, pfad}, aufruf));
    return mitschnitt->kennt(pfad) ? static_cast<int>(mitschnitt->tun({Art::Sichern, pfad}, aufruf)) : 0;
}

std::string absolut(const char* name) {
    return mitschnitt ? fs::absolute(name).lexically_normal().string() : std::string();
}

int loeschen(const char* name) {
    const auto aufruf = [&] { return syscall(SYS_unlink, name); };
    const std::string pfad = absolut(name);
    if (!mitschnitt || !mitschnitt->kennt(pfad))
        return static_cast<int>(aufruf());
    return static_cast<int>(mitschnitt->tun({Art::Loeschen, pfad}, aufruf));
}

int umbenennen(const char* von, const char* nach, unsigned art) {
    const auto aufruf = [&] { return syscall(SYS_renameat2, AT_FDCWD, von, AT_FDCWD, nach, art); };
    const std::string pfad = absolut(von);
    if (!mitschnitt || !mitschnitt->kennt(pfad))
        return static_cast<int>(aufruf());
    const auto was = (art & RENAME_EXCHANGE) != 0 ? Art::Tauschen : Art::Umbenennen;
    return static_cast<int>(mitschnitt->tun({was, pfad, absolut(nach)}, aufruf));
}

int verknuepfen(const char* von, const char* nach) {
    if (!verknuepfbar) {
        errno = EPERM;
        return -1;
    }
    const auto aufruf = [&] { return syscall(SYS_link, von, nach); };
    const std::string pfad = absolut(von);
    if (!mitschnitt || !mitschnitt->kennt(pfad))
        return static_cast<int>(aufruf());
    return static_cast<int>(mitschnitt->tun({Art::Verknuepfen, pfad, absolut(nach)}, aufruf));
}

} // namespace

// These stand before the system's own: for this program, and for the libraries that it uses.
extern "C" {
int mitschnitt_open(const char* name, int art, ...) __asm__("open");
int mitschnitt_open64(const char* name, int art, ...) __asm__("open64");
ssize_t mitschnitt_write(int deskriptor, const void* daten, std::size_t laenge) __asm__("write");
ssize_t mitschnitt_pwrite(int deskriptor, const void* daten, std::size_t laenge,
                          long stelle) __asm__("pwrite");
ssize_t mitschnitt_pwrite64(int deskriptor, const void* daten, std::size_t laenge,
                            long stelle) __asm__("pwrite64");
int mitschnitt_ftruncate(int deskriptor, long laenge) __asm__("ftruncate");
int mitschnitt_ftruncate64(int deskriptor, long laenge) __asm__("ftruncate64");
int mitschnitt_fsync(int deskriptor) __asm__("fsync");
int mitschnitt_fdatasync(int deskriptor) __asm__("fdatasync");
int mitschnitt_unlink(const char* name) __asm__("unlink");
int mitschnitt_remove(const char* name) __asm__("remove");
int mitschnitt_link(const char* von, const char* nach) __asm__("link");
int mitschnitt_rename(const char* von, const char* nach) __asm__("rename");
int mitschnitt_renameat2(int vonOrdner, const char* von, int nachOrdner, const char* nach,
                         unsigned art) __asm__("renameat2");

int mitschnitt_open(const char* name, int art, ...) {
    va_list rest;
    va_start(rest, art);
    const unsigned rechte = (art & O_CREAT) != 0 ? va_arg(rest, unsigned) : 0;
    va_end(rest);
    return static_cast<int>(oeffnen(name, art, rechte));
}
int mitschnitt_open64(const char* name, int art, ...) {
    va_list rest;
    va_start(rest, art);
    const unsigned rechte = (art & O_CREAT) != 0 ? va_arg(rest, unsigned) : 0;
    va_end(rest);
    return static_cast<int>(oeffnen(name, art, rechte));
}
ssize_t mitschnitt_write(int deskriptor, const void* daten, std::size_t laenge) {
    return schreiben(deskriptor, daten, laenge, mitschnitt ? lseek(deskriptor, 0, SEEK_CUR) : 0,
                     [&] { return syscall(SYS_write, deskriptor, daten, laenge); });
}
ssize_t mitschnitt_pwrite(int deskriptor, const void* daten, std::size_t laenge, long stelle) {
    return schreiben(deskriptor, daten, laenge, stelle,
                     [&] { return syscall(SYS_pwrite64, deskriptor, daten, laenge, stelle); });
}
ssize_t mitschnitt_pwrite64(int deskriptor, const void* daten, std::size_t laenge, long stelle) {
    return mitschnitt_pwrite(deskriptor, daten, laenge, stelle);
}
int mitschnitt_ftruncate(int deskriptor, long laenge) {
    return static_cast<int>(kuerzen(deskriptor, laenge));
}
int mitschnitt_ftruncate64(int deskriptor, long laenge) {
    return static_cast<int>(kuerzen(deskriptor, laenge));
}
int mitschnitt_fsync(int deskriptor) {
    return sichern(deskriptor);
}
int mitschnitt_fdatasync(int deskriptor) {
    return sichern(deskriptor);
}
int mitschnitt_unlink(const char* name) {
    return loeschen(name);
}
int mitschnitt_remove(const char* name) {
    const int ergebnis = loeschen(name);
    return ergebnis < 0 && errno == EISDIR ? rmdir(name) : ergebnis;
}
int mitschnitt_link(const char* von, const char* nach) {
    return verknuepfen(von, nach);
}
int mitschnitt_rename(const char* von, const char* nach) {
    return umbenennen(von, nach, 0);
}
int mitschnitt_renameat2(int, const char* von, int, const char* nach, unsigned art) {
    return umbenennen(von, nach, art);
}
}

Mitschnitt::Mitschnitt(const fs::path& ordner)
    : ordner_(fs::canonical(ordner).string()), platte_(bildVon(ordner)) {
    if (mitschnitt)
        std::abort();
    mitschnitt = this;
}

Mitschnitt::~Mitschnitt() {
    mitschnitt = nullptr;
}

void Mitschnitt::scheitern(int n, int nummer, bool dauernd) {
    nochBis_ = n;
    nummer_ = nummer;
    dauernd_ = dauernd;
}

bool Mitschnitt::meint(const std::string& pfad) const {
    return pfad == ordner_ || (pfad.starts_with(ordner_ + "/") && !istSpeicher(pfad));
}

bool Mitschnitt::kennt(const std::string& pfad) const {
    return platte_.gibtEs(pfad);
}

bool Mitschnitt::scheitertJetzt(Art art) {
    if (nummer_ == 0)
        return false;
    if (nochBis_ > 0)
        --nochBis_;
    const bool geht = nummer_ == ENOSPC && (art == Art::Kuerzen || art == Art::Loeschen ||
                                            art == Art::Umbenennen || art == Art::Tauschen);
    if (nochBis_ > 0 || geht || (gescheitert_ && !dauernd_))
        return false;
    gescheitert_ = true;
    return true;
}

long Mitschnitt::tun(const Plattenschritt& schritt, const std::function<long()>& aufruf) {
    if (todBei_ > 0 && --todBei_ == 0)
        raise(SIGKILL);
    if (scheitertJetzt(schritt.art)) {
        errno = nummer_;
        return -1;
    }
    const long ergebnis = aufruf();
    if (ergebnis >= 0) {
        schritte_.push_back(schritt);
        platte_.tun(schritt);
    }
    return ergebnis;
}

OhneVerknuepfungen::OhneVerknuepfungen() {
    verknuepfbar = false;
}

OhneVerknuepfungen::~OhneVerknuepfungen() {
    verknuepfbar = true;
}

Plattenbild bildVon(const fs::path& ordner) {
    Plattenbild bild;
    for (const auto& eintrag : fs::recursive_directory_iterator(fs::canonical(ordner)))
        if (eintrag.is_regular_file() && !istSpeicher(eintrag.path().string()))
            bild[eintrag.path().string()] = dateiLesen(eintrag.path());
    return bild;
}

void bildLegen(const fs::path& ordner, const Plattenbild& bild) {
    std::vector<fs::path> zuviel;
    for (const auto& eintrag : fs::recursive_directory_iterator(fs::canonical(ordner)))
        if (eintrag.is_regular_file() && !bild.contains(eintrag.path().string()))
            zuviel.push_back(eintrag.path());
    for (const auto& pfad : zuviel)
        fs::remove(pfad);
    for (const auto& [name, inhalt] : bild)
        dateiSchreiben(name, inhalt);
}
