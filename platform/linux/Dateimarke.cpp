// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Dateimarke.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

// What clears $XDG_RUNTIME_DIR of old files leaves those with the sticky bit: the rule of the XDG base
// directories.
constexpr mode_t RECHTE = S_IRUSR | S_IWUSR | S_ISVTX;

// In a folder into which anyone may write, another user may have laid something under our name: no link is
// followed, no other end of a pipe waited for, and nothing is touched that is not simply our own file.
int eigeneOeffnen(const std::string& pfad) {
    const int datei =
        open(pfad.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, S_IRUSR | S_IWUSR);
    struct stat angaben {};
    if (datei < 0)
        return -1;
    if (fstat(datei, &angaben) == 0 && S_ISREG(angaben.st_mode) && angaben.st_uid == geteuid() &&
        angaben.st_nlink == 1 && fchmod(datei, RECHTE) == 0)
        return datei;
    close(datei);
    return -1;
}

// Locks of the open file, not of the process: to close another descriptor of it does not lose them.
struct flock ganzeDatei(short art) {
    struct flock sperre {};
    sperre.l_type = art;
    sperre.l_whence = SEEK_SET;
    return sperre;
}

bool sperren(int datei) {
    auto sperre = ganzeDatei(F_RDLCK);
    return fcntl(datei, F_OFD_SETLK, &sperre) == 0;
}

bool andereSperren(int datei) {
    auto sperre = ganzeDatei(F_WRLCK);
    return fcntl(datei, F_OFD_GETLK, &sperre) == 0 && sperre.l_type != F_UNLCK;
}

} // namespace

Dateimarke::Dateimarke(std::string pfad) : pfad_(std::move(pfad)) {}

Dateimarke::~Dateimarke() {
    loesen();
}

bool Dateimarke::setzen() {
    loesen();
    datei_ = eigeneOeffnen(pfad_);
    return datei_ < 0 || !sperren(datei_) || !andereSperren(datei_);
}

void Dateimarke::loesen() {
    if (datei_ >= 0)
        close(std::exchange(datei_, -1));
}

std::string Dateimarke::pfad() {
    const char* wert = std::getenv("XDG_RUNTIME_DIR");
    const std::string ordner = wert != nullptr ? wert : "";
    std::error_code fehler;
    if (ordner.starts_with('/') && std::filesystem::is_directory(ordner, fehler))
        return ordner + "/gamepad-konfic.lauf";
    return "/tmp/gamepad-konfic-" + std::to_string(geteuid()) + ".lauf";
}
