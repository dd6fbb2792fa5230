// SPDX-License-Identifier: GPL-3.0-or-later
// Process: the contract on the fake and on the system, then the system by itself.
#include "platform/linux/LinuxProzess.h"
#include "platform/probe/ProbeProzess.h"
#include "tests/hilfen/Kindprozess.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct MitProbe {
    ProbeProzess prozess{"/irgendwo", '/'};
    std::string verzeichnis() { return "/irgendwo"; }
};

struct MitLinux {
    LinuxProzess prozess;
    std::string verzeichnis() { return std::filesystem::current_path(); }
};

template <typename Backend> class ProzessVertrag : public testing::Test {
protected:
    Backend backend;
    Prozess& prozess = backend.prozess;
};
using Backends = testing::Types<MitProbe, MitLinux>;
TYPED_TEST_SUITE(ProzessVertrag, Backends);

} // namespace

TYPED_TEST(ProzessVertrag, EinNameGiltImAktuellenVerzeichnis) {
    EXPECT_EQ(this->prozess.GetFullPathNameA("Belegung.twk"), this->backend.verzeichnis() + "/Belegung.twk");
    EXPECT_EQ(this->prozess.GetFullPathNameA("Tür.bmp"), this->backend.verzeichnis() + "/Tür.bmp");
}

namespace {

TEST(LinuxPfade, BeideStricheTrennenUndPunkteLoesenSichAuf) {
    LinuxProzess prozess;
    const std::string hier = std::filesystem::current_path();
    std::vector<std::string> pfade;
    for (const char* name : {"Beschreibung\\Startfenster.htm", "Bilder/../Bilder\\./Joy2.bmp", "\\tmp\\a",
                             "/tmp//b", "/../c", "."})
        pfade.push_back(prozess.GetFullPathNameA(name));
    EXPECT_THAT(pfade, testing::ElementsAre(hier + "/Beschreibung/Startfenster.htm",
                                            hier + "/Bilder/Joy2.bmp", "/tmp/a", "/tmp/b", "/c", hier + "/"));
    EXPECT_EQ(prozess.GetFullPathNameA(""), "");
}

TEST(LinuxPfade, OhneAktuellesVerzeichnisBleibtDieWurzel) {
    const auto hier = std::filesystem::current_path();
    const auto ordner = std::filesystem::path(testing::TempDir()) / ("weg." + std::to_string(getpid()));
    std::filesystem::create_directory(ordner);
    std::filesystem::current_path(ordner);
    std::filesystem::remove(ordner);
    LinuxProzess prozess;
    EXPECT_EQ(prozess.GetFullPathNameA("a"), "/a");
    std::filesystem::current_path(hier);
}

// A folder with an xdg-open of our own, which tells what it was given through a FIFO.
class MitXdgOpen : public testing::Test {
protected:
    MitXdgOpen() {
        std::filesystem::create_directories(ordner);
        mkfifo(meldung().c_str(), 0600);
        std::ofstream(ordner / "xdg-open")
            << "#!/bin/sh\nread -r stand </proc/$$/stat\n"
            << "printf '%s\\n%s\\n' \"$1\" \"$stand\" >'" << meldung() << "'\n";
        std::filesystem::permissions(ordner / "xdg-open", std::filesystem::perms::owner_all);
        setenv("PATH", (ordner.string() + ":" + alterPfad).c_str(), 1);
        std::ofstream(dokument) << "x";
    }
    ~MitXdgOpen() override {
        setenv("PATH", alterPfad.c_str(), 1);
        std::filesystem::remove_all(ordner);
    }
    std::string meldung() const { return ordner / "meldung"; }

    // What was opened, and by which process: fields 4, 19, 32 and 41 of its stat line.
    struct Aufruf {
        std::string datei;
        int eltern = 0;
        int guete = 0;
        unsigned long gesperrt = 0; // signals
        unsigned long ignoriert = 0;
        int planung = 0;
    };
    Aufruf aufruf() const {
        std::ifstream strom(meldung()); // waits for the other end
        Aufruf ergebnis;
        std::string zeile;
        std::getline(strom, ergebnis.datei);
        std::getline(strom, zeile);
        std::istringstream felder(zeile.substr(std::min(zeile.size(), zeile.rfind(')') + 1)));
        std::string feld;
        for (int nummer = 3; felder >> feld; ++nummer) {
            if (nummer == 4)
                ergebnis.eltern = std::stoi(feld);
            if (nummer == 19)
                ergebnis.guete = std::stoi(feld);
            if (nummer == 32)
                ergebnis.gesperrt = std::stoul(feld);
            if (nummer == 33)
                ergebnis.ignoriert = std::stoul(feld);
            if (nummer == 41)
                ergebnis.planung = std::stoi(feld);
        }
        return ergebnis;
    }

    const std::string alterPfad = std::getenv("PATH");
    const std::filesystem::path ordner =
        std::filesystem::path(testing::TempDir()) / ("xdg-open." + std::to_string(getpid()));
    const std::string dokument = ordner / "Start fenster.htm";
};

TEST_F(MitXdgOpen, DasDokumentWirdUebergebenOhneZuWartenUndOhneZombie) {
    LinuxProzess prozess;
    EXPECT_TRUE(prozess.ShellExecuteA(dokument)); // the other side still waits for us to read
    const auto erster = aufruf();
    EXPECT_EQ(erster.datei, dokument);
    EXPECT_NE(erster.eltern, getpid());
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(MitXdgOpen, DieEchtzeitGehtNichtMit) {
    const auto ergebnis = textAusKind([this] {
        LinuxProzess prozess;
        prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
        if (!prozess.ShellExecuteA(dokument))
            return std::string("nicht gestartet");
        const auto offen = aufruf();
        return std::to_string(offen.planung) + " " + std::to_string(offen.guete);
    });
    EXPECT_EQ(ergebnis, "0 0");
}

TEST_F(MitXdgOpen, WelcheSignaleWirSperrenGehtNichtMit) {
    const auto ergebnis = textAusKind([this] {
        sigset_t menge;
        sigemptyset(&menge);
        sigaddset(&menge, SIGTERM);
        sigprocmask(SIG_BLOCK, &menge, nullptr);
        return LinuxProzess().ShellExecuteA(dokument) ? std::to_string(aufruf().gesperrt) : "nicht gestartet";
    });
    EXPECT_EQ(ergebnis, "0");
}

TEST_F(MitXdgOpen, DassWirEineLeitungOhneLeserErtragenGehtNichtMit) {
    const auto ergebnis = textAusKind([this] {
        signal(SIGPIPE, SIG_IGN);
        if (!LinuxProzess().ShellExecuteA(dokument))
            return std::string("nicht gestartet");
        return std::to_string((aufruf().ignoriert >> (SIGPIPE - 1)) & 1U);
    });
    EXPECT_EQ(ergebnis, "0");
}

TEST_F(MitXdgOpen, EineAdresseBleibtWieSieIst) {
    EXPECT_TRUE(LinuxProzess().ShellExecuteA("https://example.org/a\\b"));
    EXPECT_EQ(aufruf().datei, "https://example.org/a\\b");
}

TEST_F(MitXdgOpen, InEinemGanzenPfadIstDerAndereStrichTeilEinesNamens) {
    const auto unter = ordner / "a\\b";
    std::filesystem::create_directory(unter);
    const auto datei = (unter / "Seite.htm").string();
    std::ofstream(datei) << "da";
    ASSERT_TRUE(LinuxProzess().ShellExecuteA(datei));
    EXPECT_EQ(aufruf().datei, datei);
}

// The folder for what lasts as long as the session.
class MitSitzungsordner : public MitXdgOpen {
protected:
    MitSitzungsordner() {
        std::filesystem::create_directories(sitzung);
        std::filesystem::permissions(sitzung, std::filesystem::perms::owner_all);
        setenv("XDG_RUNTIME_DIR", sitzung.c_str(), 1);
    }
    ~MitSitzungsordner() override {
        if (alterOrdner.empty())
            unsetenv("XDG_RUNTIME_DIR");
        else
            setenv("XDG_RUNTIME_DIR", alterOrdner.c_str(), 1);
    }
    static std::string umgebung(const char* name) {
        const auto* wert = std::getenv(name);
        return wert ? wert : "";
    }
    const std::string alterOrdner = umgebung("XDG_RUNTIME_DIR");
    const std::filesystem::path sitzung = ordner / "sitzung";
};

TEST_F(MitSitzungsordner, EinKapitelWirdUeberEineSeiteGeoeffnetDieDorthinSchickt) {
    const auto unter = ordner / "a & b#c";
    std::filesystem::create_directory(unter);
    const auto seite = (unter / "Start fenster.htm").string();
    std::ofstream(seite) << "x";
    ASSERT_TRUE(LinuxProzess().kapitelOeffnen(seite, "knoepfe"));
    const auto geoeffnet = aufruf().datei;
    EXPECT_EQ(std::filesystem::path(geoeffnet).parent_path(), sitzung);
    std::stringstream inhalt;
    inhalt << std::ifstream(geoeffnet).rdbuf();
    EXPECT_THAT(inhalt.str(),
                testing::HasSubstr("<meta http-equiv=\"refresh\" content=\"0; url=file://" + ordner.string() +
                                   "/a%20&amp;%20b%23c/Start%20fenster.htm#knoepfe\">"));
}

TEST_F(MitSitzungsordner, WoKeineSeiteGelegtWerdenKannOeffnetSichDieGanze) {
    setenv("XDG_RUNTIME_DIR", dokument.c_str(), 1); // no folder
    ASSERT_TRUE(LinuxProzess().kapitelOeffnen(dokument, "../knoepfe"));
    EXPECT_EQ(aufruf().datei, dokument);
}

TEST_F(MitSitzungsordner, EinKapitelEinerSeiteDieFehltWirdNichtGeoeffnet) {
    EXPECT_FALSE(LinuxProzess().kapitelOeffnen(ordner / "fehlt.htm", "knoepfe"));
    EXPECT_FALSE(LinuxProzess().kapitelOeffnen("", "knoepfe"));
}

TEST_F(MitXdgOpen, WasEsNichtGibtWirdNichtUebergeben) {
    LinuxProzess prozess;
    EXPECT_FALSE(prozess.ShellExecuteA(ordner / "fehlt.htm"));
    EXPECT_FALSE(prozess.ShellExecuteA(""));
}

TEST_F(MitXdgOpen, OhneXdgOpenGehtEsNicht) {
    setenv("PATH", (ordner / "leer").c_str(), 1);
    EXPECT_FALSE(LinuxProzess().ShellExecuteA(dokument));
}

TEST_F(MitXdgOpen, EinXdgOpenDasSichNichtAusfuehrenLaesstGehtNicht) {
    std::ofstream(ordner / "xdg-open") << "#!/gibt/es/nicht\n";
    EXPECT_FALSE(LinuxProzess().ShellExecuteA(dokument));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

} // namespace
