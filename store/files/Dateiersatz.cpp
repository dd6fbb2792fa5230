// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Dateiersatz.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr mode_t SCHREIBRECHTE = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t ALLE_RECHTE = 07777;
constexpr mode_t RECHTE_EINER_NEUEN = 0666; // less what the user's umask takes
constexpr mode_t RECHTE_DES_BESITZERS = 0600;

/// What lies under the name so far.
struct Alte {
    bool da = false;
    bool ersetzbar = false;
    struct stat stand {};
};

Alte alteUnter(const fs::path& pfad) {
    Alte alte;
    alte.da = stat(pfad.c_str(), &alte.stand) == 0;
    if (!alte.da)
        alte.ersetzbar = errno == ENOENT;
    else
        alte.ersetzbar = S_ISREG(alte.stand.st_mode) && (alte.stand.st_mode & SCHREIBRECHTE) != 0 &&
                         faccessat(AT_FDCWD, pfad.c_str(), W_OK, AT_EACCESS) == 0;
    return alte;
}

constexpr std::string_view ZWISCHENNAME = ".neu."; ///< behind the name; process and count follow

enum class WennKeineSperren { Gilt, GiltNicht };

/// Locks a file that still has its name. Some file systems know no locks.
bool festgehalten(int deskriptor, WennKeineSperren sonst) {
    struct stat stand {};
    if (flock(deskriptor, LOCK_EX | LOCK_NB) != 0 &&
        (errno == EWOULDBLOCK || sonst == WennKeineSperren::GiltNicht))
        return false;
    return fstat(deskriptor, &stand) == 0 && S_ISREG(stand.st_mode) && stand.st_nlink > 0;
}

bool istZahl(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// The name of the file that one of this name was to replace; nothing for a name of another kind.
std::optional<std::string_view> ersetzterName(std::string_view name) {
    const auto stelle = name.rfind(ZWISCHENNAME);
    if (stelle == std::string_view::npos)
        return std::nullopt;
    const std::string_view nummern = name.substr(stelle + ZWISCHENNAME.size());
    const auto punkt = nummern.find('.');
    if (punkt == std::string_view::npos || !istZahl(nummern.substr(0, punkt)) ||
        !istZahl(nummern.substr(punkt + 1)))
        return std::nullopt;
    return name.substr(0, stelle);
}

void restEntfernen(const fs::path& rest) {
    const int deskriptor = open(rest.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (deskriptor < 0)
        return;
    if (festgehalten(deskriptor, WennKeineSperren::GiltNicht))
        unlink(rest.c_str());
    close(deskriptor);
}

/// The file that the new content grows in; removed again unless it has become the new one.
class Zwischendatei {
public:
    Zwischendatei(const fs::path& ziel, mode_t rechte) : ziel_(ziel) {
        // The process number keeps two programs apart, the count its threads and a dead one's remains.
        constexpr int VERSUCHE = 1000;
        for (int i = 0; i < VERSUCHE && deskriptor_ < 0; ++i) {
            pfad_ = ziel.native() + std::string(ZWISCHENNAME) + std::to_string(getpid()) + "." +
                    std::to_string(i);
            deskriptor_ = open(pfad_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, rechte);
            if (deskriptor_ < 0 && errno != EEXIST)
                return;
            if (deskriptor_ >= 0 && !festgehalten(deskriptor_, WennKeineSperren::Gilt))
                close(std::exchange(deskriptor_, -1)); // taken for a dead one's before it was locked
        }
    }
    ~Zwischendatei() {
        if (deskriptor_ < 0)
            return;
        close(deskriptor_);
        if (!umbenannt_)
            unlink(pfad_.c_str());
    }
    Zwischendatei(const Zwischendatei&) = delete;
    Zwischendatei& operator=(const Zwischendatei&) = delete;

    bool offen() const { return deskriptor_ >= 0; }

    bool rechteVon(const struct stat& alte) const {
        // The owner first: giving a file away takes bits from its permissions. Who may not give it away keeps
        // it.
        [[maybe_unused]] const int egal = fchown(deskriptor_, alte.st_uid, alte.st_gid);
        return fchmod(deskriptor_, alte.st_mode & ALLE_RECHTE) == 0;
    }

    bool schreiben(std::string_view inhalt) const {
        while (!inhalt.empty()) {
            const ssize_t anzahl = write(deskriptor_, inhalt.data(), inhalt.size());
            if (anzahl < 0 && errno == EINTR)
                continue;
            if (anzahl <= 0)
                return false;
            inhalt.remove_prefix(static_cast<std::size_t>(anzahl));
        }
        return true;
    }

    bool sichern() const { return fsync(deskriptor_) == 0; }

    bool umbenennen() {
        umbenannt_ = rename(pfad_.c_str(), ziel_.c_str()) == 0;
        return umbenannt_;
    }

private:
    const fs::path& ziel_;
    std::string pfad_;
    int deskriptor_ = -1;
    bool umbenannt_ = false;
};

} // namespace

// Follows the links by hand, as the last one may point to a file that is still to be made.
std::optional<fs::path> ohneVerweise(fs::path pfad) {
    constexpr int HOECHSTENS = 40; // as many as the kernel follows
    std::error_code grund;
    for (int i = 0; i < HOECHSTENS; ++i) {
        if (!fs::is_symlink(fs::symlink_status(pfad, grund)))
            return pfad;
        const fs::path ziel = fs::read_symlink(pfad, grund);
        if (grund)
            return std::nullopt;
        pfad = pfad.parent_path() / ziel; // an absolute one replaces the folder
    }
    return std::nullopt;
}

fs::path ordnerVon(const fs::path& pfad) {
    return pfad.has_parent_path() ? pfad.parent_path() : fs::path(".");
}

bool ordnerSichern(const fs::path& ordner) {
    const int deskriptor = open(ordner.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (deskriptor < 0)
        return errno == EACCES;
    const bool gesichert = fsync(deskriptor) == 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
    close(deskriptor);
    return gesichert;
}

void resteRaeumen(const fs::path& ordner, const std::function<bool(std::string_view)>& gemeint) {
    std::error_code grund;
    for (fs::directory_iterator stelle(ordner, grund), ende; !grund && stelle != ende;
         stelle.increment(grund)) {
        const std::string name = stelle->path().filename().native();
        const auto ersetzter = ersetzterName(name);
        if (ersetzter && gemeint(*ersetzter))
            restEntfernen(stelle->path());
    }
}

bool dateiErsetzen(const std::string& pfad, std::string_view inhalt) {
    const std::optional<fs::path> ziel = ohneVerweise(pfad);
    if (!ziel || !ziel->has_filename())
        return false;
    const Alte alte = alteUnter(*ziel);
    if (!alte.ersetzbar)
        return false;
    resteRaeumen(ordnerVon(*ziel), [&](std::string_view name) { return name == ziel->filename().native(); });
    // Nobody else's until it has the old one's permissions; those come last, as writing takes bits from them.
    Zwischendatei neue(*ziel, alte.da ? RECHTE_DES_BESITZERS : RECHTE_EINER_NEUEN);
    if (!neue.offen() || !neue.schreiben(inhalt) || (alte.da && !neue.rechteVon(alte.stand)) ||
        !neue.sichern() || !neue.umbenennen())
        return false;
    return ordnerSichern(ordnerVon(*ziel));
}
