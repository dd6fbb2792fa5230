// SPDX-License-Identifier: GPL-3.0-or-later
// The mark of a run: the contract on the fake and on the system, then the file by itself and other processes.
#include "platform/linux/Dateimarke.h"
#include "platform/probe/ProbeMarke.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

struct MitProbe {
    int gesetzte = 0;
    std::unique_ptr<Laufmarke> marke() { return std::make_unique<ProbeMarke>(gesetzte); }
};

struct MitDatei {
    const Testordner ordner;
    std::string pfad() const { return ordner.pfad() / "marke"; }
    std::unique_ptr<Laufmarke> marke() { return std::make_unique<Dateimarke>(pfad()); }
};

template <typename Backend> class LaufmarkeVertrag : public testing::Test {
protected:
    Backend backend;
    std::unique_ptr<Laufmarke> eine = backend.marke();
    std::unique_ptr<Laufmarke> andere = backend.marke();
};
using Backends = testing::Types<MitProbe, MitDatei>;
TYPED_TEST_SUITE(LaufmarkeVertrag, Backends);

} // namespace

TYPED_TEST(LaufmarkeVertrag, DerErsteIstAlleinUndDerZweiteNicht) {
    EXPECT_TRUE(this->eine->setzen());
    EXPECT_FALSE(this->andere->setzen());
}

TYPED_TEST(LaufmarkeVertrag, WerTrotzdemLaeuftZaehltAuchNachDemEndeDesErsten) {
    this->eine->setzen();
    this->andere->setzen();
    this->eine->loesen();
    EXPECT_FALSE(this->backend.marke()->setzen());
    EXPECT_FALSE(this->eine->setzen());
}

TYPED_TEST(LaufmarkeVertrag, NachDemLoesenUndNachDemEndeIstFrei) {
    this->eine->setzen();
    this->eine->loesen();
    EXPECT_TRUE(this->andere->setzen());
    this->andere.reset();
    EXPECT_TRUE(this->eine->setzen());
}

TYPED_TEST(LaufmarkeVertrag, NocheinmalSetzenUndLoesenSchadetNicht) {
    EXPECT_TRUE(this->eine->setzen());
    EXPECT_TRUE(this->eine->setzen());
    this->eine->loesen();
    this->eine->loesen();
    EXPECT_TRUE(this->andere->setzen());
}

namespace {

/// A pipe whose ends go with it.
class Rohr {
public:
    Rohr() { EXPECT_EQ(pipe(enden_), 0); }
    ~Rohr() {
        lesendeSchliessen();
        schreibendeSchliessen();
    }
    Rohr(const Rohr&) = delete;
    Rohr& operator=(const Rohr&) = delete;
    int lesende() const { return enden_[0]; }
    int schreibende() const { return enden_[1]; }
    void lesendeSchliessen() { schliessen(enden_[0]); }
    void schreibendeSchliessen() { schliessen(enden_[1]); }
    /// Waits until the other side has written or has gone.
    bool gelesen() const {
        char zeichen = 0;
        return read(lesende(), &zeichen, 1) == 1;
    }

private:
    static void schliessen(int& ende) {
        if (ende >= 0)
            close(ende);
        ende = -1;
    }
    int enden_[2]{-1, -1};
};

void sagen(int schreibende) {
    if (write(schreibende, "j", 1) != 1)
        _exit(1);
}

class AndererProzess : public testing::Test, protected MitDatei {
protected:
    ~AndererProzess() override {
        if (kind_ > 0) {
            kill(kind_, SIGKILL);
            waitpid(kind_, nullptr, 0);
        }
    }
    /// A process that has set the mark when this returns, has done `dann` and waits to be killed.
    void starten(const std::function<void()>& dann = [] {}) {
        Rohr bereit;
        kind_ = fork();
        if (kind_ == 0) {
            Dateimarke eigene(pfad());
            eigene.setzen();
            dann();
            sagen(bereit.schreibende());
            for (;;)
                pause();
        }
        bereit.schreibendeSchliessen();
        ASSERT_TRUE(bereit.gelesen());
    }
    void toeten() {
        kill(kind_, SIGKILL);
        waitpid(kind_, nullptr, 0);
        kind_ = -1;
    }
    Dateimarke marke_{pfad()};

private:
    pid_t kind_ = -1;
};

TEST_F(AndererProzess, WirdGesehenSolangeErLebt) {
    starten();
    EXPECT_FALSE(marke_.setzen());
    marke_.loesen();
    toeten();
    EXPECT_TRUE(marke_.setzen());
}

TEST_F(AndererProzess, SeinKindHatDieMarkeNicht) {
    Rohr leben;   // the child of the child reads here, and so lives as long as we let it
    Rohr ausgabe; // and says here that it is the other program
    starten([&] {
        if (fork() != 0)
            return;
        dup2(leben.lesende(), STDIN_FILENO);
        dup2(ausgabe.schreibende(), STDOUT_FILENO);
        leben.schreibendeSchliessen();
        execlp("sh", "sh", "-c", "echo; read -r nie", nullptr);
        _exit(1);
    });
    ASSERT_TRUE(ausgabe.gelesen());
    toeten();
    EXPECT_TRUE(marke_.setzen());
    leben.schreibendeSchliessen();
    ausgabe.schreibendeSchliessen();
    EXPECT_FALSE(ausgabe.gelesen()) << "waits for the end of the child's child";
}

TEST(Dateimarke, LaesstDieDateiLeerUndNurFuerDenBenutzerStehen) {
    MitDatei dort;
    dort.marke()->setzen();
    struct stat angaben {};
    ASSERT_EQ(stat(dort.pfad().c_str(), &angaben), 0);
    EXPECT_EQ(angaben.st_mode & 07777U, 01600U);
    EXPECT_EQ(angaben.st_size, 0);
}

TEST(Dateimarke, WasUnterIhremNamenLiegtUndNichtIhreDateiIstBleibtWieEsIst) {
    MitDatei dort;
    const auto ziel = dort.ordner.pfad() / "fremd";
    dateiSchreiben(ziel, "x");
    fs::permissions(ziel, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    const auto rechte = fs::status(ziel).permissions();
    const std::vector<std::function<void()>> faelle{
        [&] { fs::create_symlink(ziel, dort.pfad()); }, [&] { fs::create_hard_link(ziel, dort.pfad()); },
        [&] { mkfifo(dort.pfad().c_str(), 0600); }, [&] { fs::create_directory(dort.pfad()); }};
    for (std::size_t i = 0; i < faelle.size(); ++i) {
        faelle[i]();
        const auto art = fs::symlink_status(dort.pfad()).type();
        const auto eine = dort.marke();
        const auto andere = dort.marke();
        EXPECT_TRUE(eine->setzen()) << i;
        EXPECT_TRUE(andere->setzen()) << i;
        EXPECT_EQ(fs::symlink_status(dort.pfad()).type(), art) << i;
        EXPECT_EQ(fs::status(ziel).permissions(), rechte) << i;
        fs::remove(dort.pfad());
    }
    fs::create_symlink(dort.ordner.pfad() / "neu", dort.pfad());
    EXPECT_TRUE(dort.marke()->setzen());
    EXPECT_FALSE(fs::exists(dort.ordner.pfad() / "neu"));
}

TEST(Dateimarke, DieDateiEinesAnderenBenutzersGiltNicht) {
    MitDatei dort;
    if (getuid() != 0)
        GTEST_SKIP() << "only root can lay a file of another user's";
    dateiSchreiben(dort.pfad(), "");
    ASSERT_EQ(chown(dort.pfad().c_str(), 65534, 65534), 0);
    const auto eine = dort.marke();
    const auto andere = dort.marke();
    EXPECT_TRUE(eine->setzen());
    EXPECT_TRUE(andere->setzen());
}

TEST(Dateimarke, OhneOrdnerIstJederAllein) {
    Dateimarke eine("/gibt/es/nicht");
    Dateimarke andere("/gibt/es/nicht");
    EXPECT_TRUE(eine.setzen());
    EXPECT_TRUE(andere.setzen());
}

TEST(Dateimarke, IhrOrtIstDerLaufzeitordnerDesBenutzersSonstTmp) {
    const Testordner ordner;
    const auto inTmp = "/tmp/gamepad-konfic-" + std::to_string(geteuid()) + ".lauf";
    setenv("XDG_RUNTIME_DIR", ordner.pfad().c_str(), 1);
    EXPECT_EQ(Dateimarke::pfad(), ordner.pfad().string() + "/gamepad-konfic.lauf");
    for (const char* unbrauchbar : {"", ".", "/gibt/es/nicht"}) {
        setenv("XDG_RUNTIME_DIR", unbrauchbar, 1);
        EXPECT_EQ(Dateimarke::pfad(), inTmp) << unbrauchbar;
    }
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(Dateimarke::pfad(), inTmp);
}

} // namespace
