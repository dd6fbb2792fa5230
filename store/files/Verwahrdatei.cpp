// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Verwahrdatei.h"

#include "store/files/Dateiersatz.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

std::optional<Verwahrdatei> Verwahrdatei::oeffnen(const fs::path& pfad) {
    const int deskriptor = open(pfad.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (deskriptor < 0)
        return std::nullopt;
    Verwahrdatei datei(pfad, deskriptor);
    struct stat stand {};
    if (fstat(deskriptor, &stand) != 0 || !S_ISREG(stand.st_mode))
        return std::nullopt;
    return datei;
}

Verwahrdatei::Verwahrdatei(fs::path pfad, int deskriptor) : pfad_(std::move(pfad)), deskriptor_(deskriptor) {}

Verwahrdatei::Verwahrdatei(Verwahrdatei&& andere) noexcept
    : pfad_(std::move(andere.pfad_)), deskriptor_(std::exchange(andere.deskriptor_, -1)) {}

Verwahrdatei& Verwahrdatei::operator=(Verwahrdatei&& andere) noexcept {
    std::swap(pfad_, andere.pfad_);
    std::swap(deskriptor_, andere.deskriptor_);
    return *this;
}

Verwahrdatei::~Verwahrdatei() {
    if (deskriptor_ >= 0)
        close(deskriptor_);
}

bool Verwahrdatei::liegtNoch() const {
    struct stat eigener {};
    struct stat dort {};
    return fstat(deskriptor_, &eigener) == 0 && stat(pfad_.c_str(), &dort) == 0 &&
           eigener.st_dev == dort.st_dev && eigener.st_ino == dort.st_ino;
}

bool Verwahrdatei::nameVergeben() const {
    std::error_code egal;
    return fs::exists(fs::symlink_status(pfad_, egal)) && !liegtNoch();
}

bool Verwahrdatei::zuruecklegen() const {
    if (liegtNoch())
        return true;
    const auto text = inhalt();
    return text && dateiErsetzen(pfad_, *text);
}

std::optional<std::string> Verwahrdatei::inhalt() const {
    struct stat stand {};
    if (fstat(deskriptor_, &stand) != 0)
        return std::nullopt;
    std::string text(static_cast<std::size_t>(stand.st_size), '\0');
    std::size_t gelesen = 0;
    while (gelesen < text.size()) {
        const auto anzahl =
            pread(deskriptor_, text.data() + gelesen, text.size() - gelesen, static_cast<off_t>(gelesen));
        if (anzahl < 0 && errno == EINTR)
            continue;
        if (anzahl <= 0)
            return std::nullopt;
        gelesen += static_cast<std::size_t>(anzahl);
    }
    return text;
}
