// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Padwache.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <linux/input.h>
#include <linux/netlink.h>
#include <string_view>
#include <sys/epoll.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {

// What is watched is told apart by these; pads have numbers from 0.
constexpr std::int32_t ORDNER = -1;
constexpr std::int32_t UDEV = -2;

constexpr std::uint32_t KOMMEN_UND_GEHEN =
    IN_CREATE | IN_ATTRIB | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;

// Beyond this much at a time the rest waits for the next look: a pad that never stops must not hold it up.
constexpr int LESUNGEN = 16;
constexpr std::size_t EREIGNISSE = 64;

// The multicast group to which udev repeats the kernel's words, when it has dealt with them.
constexpr std::uint32_t UDEV_GRUPPE = 2;

// Pads are read for keys and axes; what else they say wakes nobody.
void ereignisseWaehlen(int nummer) {
    std::array<unsigned char, (EV_CNT + 7) / 8> arten{};
    for (const unsigned art : {EV_SYN, EV_KEY, EV_ABS})
        arten[art / 8] = static_cast<unsigned char>(arten[art / 8] | 1U << art % 8);
    input_mask maske{};
    maske.type = EV_SYN; // of the types themselves
    maske.codes_size = arten.size();
    maske.codes_ptr = reinterpret_cast<std::uintptr_t>(arten.data());
    ioctl(nummer, EVIOCSMASK, &maske); // a kernel that can't goes on telling all
}

bool istEreignisknoten(int nummer) {
    int fassung = 0;
    return ioctl(nummer, EVIOCGVERSION, &fassung) == 0;
}

Padwache::Uhr::time_point zeitpunkt(const input_event& ereignis) {
    return Padwache::Uhr::time_point(std::chrono::seconds(ereignis.input_event_sec) +
                                     std::chrono::microseconds(ereignis.input_event_usec));
}

int udevOeffnen() {
    const int nummer = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_KOBJECT_UEVENT);
    sockaddr_nl adresse{};
    adresse.nl_family = AF_NETLINK;
    adresse.nl_groups = UDEV_GRUPPE;
    if (nummer >= 0 && bind(nummer, reinterpret_cast<const sockaddr*>(&adresse), sizeof adresse) == 0)
        return nummer;
    if (nummer >= 0)
        close(nummer);
    return -1;
}

} // namespace

Padwache::Padwache(std::filesystem::path ordner)
    : ordner_(std::move(ordner)), sammler_(epoll_create1(EPOLL_CLOEXEC)), udev_(udevOeffnen()) {
    ordnerAnsehen();
    if (udev_ >= 0)
        melderHinzu(udev_, UDEV);
}

Padwache::~Padwache() {
    for (const auto& [kennung, nummer] : knoten_)
        close(nummer);
    for (const int nummer : {ordnerwache_, udev_, sammler_})
        if (nummer >= 0)
            close(nummer);
}

bool Padwache::knotenHinzu(std::int32_t kennung, const char* pfad) {
    knotenWeg(kennung);
    const int nummer = pfad ? open(pfad, O_RDONLY | O_CLOEXEC | O_NONBLOCK) : -1;
    if (nummer < 0)
        return false;
    int uhr = CLOCK_MONOTONIC; // as steady_clock
    if (!istEreignisknoten(nummer) || ioctl(nummer, EVIOCSCLOCKID, &uhr) != 0) {
        close(nummer);
        return false;
    }
    ereignisseWaehlen(nummer);
    knoten_[kennung] = nummer;
    melderHinzu(nummer, kennung);
    return true;
}

void Padwache::knotenWeg(std::int32_t kennung) {
    if (const auto knoten = knoten_.extract(kennung))
        close(knoten.mapped()); // which takes it from among those that are waited for
}

Padwache::Befund Padwache::nachsehen() {
    Befund befund;
    befund.seit = Uhr::time_point::max();
    std::array<epoll_event, 8> bereite{};
    const int anzahl = epoll_wait(sammler_, bereite.data(), static_cast<int>(bereite.size()), 0);
    for (int i = 0; i < anzahl; ++i) {
        const auto art = static_cast<std::int32_t>(bereite[static_cast<std::size_t>(i)].data.u32);
        if (art == ORDNER)
            befund.geraete |= ordnerLesen();
        else if (art == UDEV)
            befund.geraete |= udevLesen();
        else
            knotenLesen(art, befund);
    }
    if (befund.neues())
        befund.seit = std::min(befund.seit, Uhr::now());
    return befund;
}

// Waits for the folder itself where it is not there.
void Padwache::ordnerAnsehen() {
    if (ordnerwache_ >= 0)
        close(ordnerwache_);
    ordnerwache_ = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (ordnerwache_ < 0)
        return;
    const auto ansehen = [&](const std::filesystem::path& was, std::uint32_t worauf) {
        return inotify_add_watch(ordnerwache_, was.c_str(), worauf | IN_ONLYDIR) >= 0;
    };
    ordnerDa_ = ansehen(ordner_, KOMMEN_UND_GEHEN);
    if (!ordnerDa_ && !ansehen(ordner_.parent_path(), IN_CREATE | IN_MOVED_TO)) {
        close(std::exchange(ordnerwache_, -1));
        return;
    }
    if (!ordnerDa_) // it may have come in between
        ordnerDa_ = ansehen(ordner_, KOMMEN_UND_GEHEN);
    melderHinzu(ordnerwache_, ORDNER);
}

void Padwache::melderHinzu(int nummer, std::int32_t art) {
    epoll_event worauf{};
    worauf.events = EPOLLIN;
    worauf.data.u32 = static_cast<std::uint32_t>(art);
    epoll_ctl(sammler_, EPOLL_CTL_ADD, nummer, &worauf);
}

void Padwache::knotenLesen(std::int32_t kennung, Befund& befund) {
    const auto knoten = knoten_.find(kennung);
    if (knoten == knoten_.end())
        return;
    befund.pads = true;
    std::array<input_event, EREIGNISSE> ereignisse{};
    for (int mal = 0; mal < LESUNGEN; ++mal) {
        const auto gelesen = read(knoten->second, ereignisse.data(), sizeof ereignisse);
        if (gelesen < 0 && errno == EINTR)
            continue;
        if (gelesen < 0 && errno == EAGAIN)
            return;
        if (gelesen <= 0) { // its pad is gone
            befund.geraete = true;
            knotenWeg(kennung);
            return;
        }
        befund.seit = std::min(befund.seit, zeitpunkt(ereignisse.front()));
        if (static_cast<std::size_t>(gelesen) < sizeof ereignisse)
            return;
    }
}

// Anything in the folder may be a pad; beside it only the folder counts.
bool Padwache::ordnerLesen() {
    alignas(inotify_event) std::array<char, 4096> platz{};
    bool umgezogen = !ordnerDa_;
    bool neues = ordnerDa_;
    for (ssize_t gelesen = 0; (gelesen = read(ordnerwache_, platz.data(), platz.size())) > 0;)
        for (std::size_t ort = 0; ort < static_cast<std::size_t>(gelesen);) {
            const auto* ereignis = reinterpret_cast<const inotify_event*>(platz.data() + ort);
            umgezogen |= (ereignis->mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED)) != 0;
            ort += sizeof *ereignis + ereignis->len;
        }
    if (umgezogen) {
        ordnerAnsehen();
        neues |= ordnerDa_;
    }
    return neues;
}

bool Padwache::udevLesen() const {
    std::array<char, 8192> nachricht{};
    bool neues = false;
    for (;;) {
        const auto laenge = recv(udev_, nachricht.data(), nachricht.size(), MSG_TRUNC);
        if (laenge < 0 && errno == ENOBUFS) {
            neues = true; // some were lost
            continue;
        }
        if (laenge <= 0)
            return neues;
        const bool ganz = static_cast<std::size_t>(laenge) <= nachricht.size();
        const std::string_view text(nachricht.data(),
                                    std::min(static_cast<std::size_t>(laenge), nachricht.size()));
        neues |= !ganz || text.find("SUBSYSTEM=input") != std::string_view::npos;
    }
}
