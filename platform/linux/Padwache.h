// SPDX-License-Identifier: GPL-3.0-or-later
// Tells whether the pads can have anything new to say, without reading them for it.
//
// What reads a pad leaves it open; its event node is opened here a second time. The kernel queues what the
// pad does for both, so as long as nothing waits here, nothing waits there either. What waits here is thrown
// away when it is looked at, and that before the pad is read: whatever comes in between waits here again.
// Pads that come and go are seen by what changes in the folder of the nodes, and by what udev says when it
// has dealt with it.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>

class Padwache {
public:
    using Uhr = std::chrono::steady_clock;

    /// `ordner` holds the event nodes; it may come later.
    explicit Padwache(std::filesystem::path ordner = "/dev/input");
    Padwache(const Padwache&) = delete;
    Padwache& operator=(const Padwache&) = delete;
    ~Padwache();

    /// Watches the event node of pad `kennung`, which its reader has open. False where there is no such thing
    /// as a second look at it: it is no event node, or may not be opened.
    bool knotenHinzu(std::int32_t kennung, const char* pfad);
    /// No longer watches it, if it was watched.
    void knotenWeg(std::int32_t kennung);
    /// Whether it is watched: a node that has failed, as one does whose pad is gone, is not.
    bool sieht(std::int32_t kennung) const { return knoten_.contains(kennung); }
    /// Whether a pad that comes or goes will be seen.
    bool siehtKommen() const { return ordnerwache_ >= 0; }

    struct Befund {
        bool pads = false;    ///< there is something to read, or a node has failed
        bool geraete = false; ///< some may have come or gone
        Uhr::time_point seit; ///< since when; not later than now

        bool neues() const { return pads || geraete; }
    };
    /// What has happened since the last call.
    Befund nachsehen();

    /// Readable, in the way of poll(2), when nachsehen would tell of anything.
    int melder() const { return sammler_; }

private:
    void ordnerAnsehen();
    void melderHinzu(int nummer, std::int32_t art);
    void knotenLesen(std::int32_t kennung, Befund& befund);
    bool ordnerLesen();
    bool udevLesen() const;

    std::filesystem::path ordner_;
    int sammler_;          // epoll
    int ordnerwache_ = -1; // inotify
    int udev_ = -1;        // netlink
    bool ordnerDa_ = false;
    std::map<std::int32_t, int> knoten_; // by pad
};
