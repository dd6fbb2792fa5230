// SPDX-License-Identifier: GPL-3.0-or-later
// Child processes: that do a test's work apart from it, or are killed at it, once or again and again.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
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

/// What `tun` gives in a child process, up to 4 kB; the child has to come to its end.
inline std::string textAusKind(const std::function<std::string()>& tun) {
    constexpr std::size_t PLATZ = 4096;
    int rohr[2];
    if (pipe(rohr) != 0)
        throw std::runtime_error("no pipe");
    const pid_t kind = imKind([&] {
        const auto text = tun();
        if (write(rohr[1], text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            _exit(1);
    });
    close(rohr[1]);
    std::string text(PLATZ, '\0');
    const auto gelesen = read(rohr[0], text.data(), text.size());
    text.resize(gelesen > 0 ? static_cast<std::size_t>(gelesen) : 0);
    close(rohr[0]);
    int stand = 0;
    waitpid(kind, &stand, 0);
    EXPECT_EQ(stand, ENDE_DER_ARBEIT) << "wait status";
    return text;
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

inline constexpr int TOETUNGEN = 200;

/// Kills a child at `schritt` two hundred times and looks at what is left after each death. `schritt` gets
/// ever higher numbers and takes some milliseconds; `pruefen` gets those that were begun and finished.
inline void toetenUndPruefen(const std::function<void(int)>& schritt,
                             const std::function<void(Fortschritt)>& pruefen) {
    constexpr int PAUSE_HOECHSTENS_US = 8000; // about as long as a step takes
    std::mt19937 zufall(4711);
    int mitten = 0;
    int naechste = 1;
    for (int i = 0; i < TOETUNGEN && !testing::Test::HasFailure(); ++i) {
        Schreiber schreiber(naechste, [&] { return schritt; });
        schreiber.abwarten(static_cast<int>(zufall() % 2));
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % PAUSE_HOECHSTENS_US));
        const Fortschritt stand = schreiber.toeten();
        pruefen(stand);
        mitten += stand.begonnen != stand.fertig;
        naechste = stand.begonnen + 1;
    }
    EXPECT_GT(mitten, TOETUNGEN / 2); // most deaths came in the midst of work
}
