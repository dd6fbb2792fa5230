// SPDX-License-Identifier: GPL-3.0-or-later
// The world of a long run: a small disk of its own, an X server with a window manager, a message bus. Nothing
// of the machine's or the user's takes part, and all of it goes with the process, however that ends.
#pragma once

#include "tests/hilfen/Fensterverwalter.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/XServer.h"

#include <filesystem>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

/// A disk that can be filled to the last byte: a small tmpfs that only this process and its children see.
/// Where the system allows none, the folder lies on the machine's disk, which is never filled.
class KleinePlatte {
public:
    KleinePlatte();
    KleinePlatte(const KleinePlatte&) = delete;
    KleinePlatte& operator=(const KleinePlatte&) = delete;
    ~KleinePlatte();

    const std::filesystem::path& pfad() const { return ordner_.pfad(); }
    bool eigene() const { return eigene_; }
    void fuellen() const;
    void leeren() const;

private:
    std::filesystem::path ballast() const { return pfad() / "ballast"; }

    Testordner ordner_;
    bool eigene_ = false;
};

/// The user who plays: root's rights would pass over a read-only file, so root plays as nobody.
struct Spieler {
    /// In a child, before it becomes the program.
    static void werden();
    /// Gives the player what root has laid.
    static void schenken(const std::filesystem::path& pfad);
};

/// A message bus that can be killed and started again under the same address.
class Nachrichtenbus {
public:
    explicit Nachrichtenbus(const std::filesystem::path& ordner);
    Nachrichtenbus(const Nachrichtenbus&) = delete;
    Nachrichtenbus& operator=(const Nachrichtenbus&) = delete;
    ~Nachrichtenbus() { toeten(); }

    void starten();
    void toeten();
    std::string adresse() const { return "unix:path=" + (ordner_ / "bus").string(); }

private:
    const std::filesystem::path ordner_;
    pid_t kennung_ = -1;
};

class Umgebung {
public:
    /// `programm` lies in the folder of a build, beside the empty database and the picture for the sticks'
    /// planes.
    explicit Umgebung(const std::filesystem::path& programm);

    std::filesystem::path programm() const { return platte.pfad() / "programm" / "gamepad-konfic"; }
    std::filesystem::path fernhand() const { return platte.pfad() / "programm" / "libfernhand.so"; }
    std::filesystem::path gamepadXml() const { return platte.pfad() / "programm" / "Gamepad.xml"; }
    std::filesystem::path datenordner() const { return platte.pfad() / "daten"; }
    std::filesystem::path datenbank() const { return datenordner() / "Belegung.twk"; }
    /// Sockets of the hand in the program lie here.
    std::filesystem::path laufordner() const { return platte.pfad() / "lauf"; }
    /// In a child, before it becomes the program.
    void setzen() const;

    const KleinePlatte platte;
    Nachrichtenbus bus;
    const XServer server{"1366x768x24"};

private:
    void legen(const std::filesystem::path& programm) const;

    std::unique_ptr<Fensterverwalter> verwalter_;
};
