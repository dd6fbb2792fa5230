// Child processes that do a test's work and are killed at it.
#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

inline constexpr int ENDE_DER_ARBEIT = 0;

/// Runs `arbeit` in a child process; gives its id.
inline pid_t imKind(const std::function<void()>& arbeit) {
    const pid_t kind = fork();
    if (kind != 0)
        return kind;
    try {
        arbeit();
    } catch (...) {
        _exit(1);
    }
    _exit(ENDE_DER_ARBEIT);
}

/// Waits for a child; true when SIGKILL ended it, false when it came to its end. Everything else is a
/// failure.
inline bool wurdeGetoetet(pid_t kind) {
    int stand = 0;
    waitpid(kind, &stand, 0);
    const bool getoetet = WIFSIGNALED(stand) && WTERMSIG(stand) == SIGKILL;
    const bool fertig = WIFEXITED(stand) && WEXITSTATUS(stand) == ENDE_DER_ARBEIT;
    EXPECT_TRUE(getoetet || fertig) << "status " << stand;
    return getoetet;
}

/// How far a child says it has come: what it has begun, what it has finished.
struct Fortschritt {
    int begonnen = 0;
    int fertig = 0;
};

/// A child that writes ever higher numbers, and reports every begin and every end.
class Schreiber {
public:
    using Schritt = std::function<void(int zahl)>;

    /// `beginnen` runs once in the child and gives what writes a number, from `ab` on.
    Schreiber(int ab, const std::function<Schritt()>& beginnen) : stand_{ab - 1, ab - 1} {
        if (pipe(rohr_) != 0)
            throw std::runtime_error("no pipe");
        kind_ = imKind([&] { schreiben(ab, beginnen()); });
        close(rohr_[1]);
        melden(); // it is ready and begins
    }
    ~Schreiber() { close(rohr_[0]); }
    Schreiber(const Schreiber&) = delete;
    Schreiber& operator=(const Schreiber&) = delete;

    /// Waits until it has finished so many numbers.
    void abwarten(int anzahl) {
        const int ziel = stand_.fertig + anzahl;
        while (stand_.fertig < ziel)
            ASSERT_TRUE(melden());
    }

    /// Kills it and reads what it has reported up to then.
    Fortschritt toeten() {
        kill(kind_, SIGKILL);
        EXPECT_TRUE(wurdeGetoetet(kind_));
        while (melden()) {
        }
        return stand_;
    }

private:
    bool melden() {
        int zahl = 0;
        if (read(rohr_[0], &zahl, sizeof zahl) != sizeof zahl)
            return false;
        (zahl > 0 ? stand_.begonnen : stand_.fertig) = std::abs(zahl);
        return true;
    }

    void sagen(int zahl) const {
        if (write(rohr_[1], &zahl, sizeof zahl) != sizeof zahl)
            _exit(1);
    }

    void schreiben(int ab, const Schritt& schritt) const {
        for (int zahl = ab;; ++zahl) {
            sagen(zahl);
            schritt(zahl);
            sagen(-zahl);
        }
    }

    int rohr_[2]{};
    pid_t kind_ = 0;
    Fortschritt stand_;
};
