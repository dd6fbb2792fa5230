// SPDX-License-Identifier: GPL-3.0-or-later
// What the watch sees of the folder of the event nodes. Its eye on a node itself needs one of the kernel's
// (test_kernpad).
#include "platform/linux/Padwache.h"
#include "tests/hilfen/Testdatenbank.h"

#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

class Ordnerwache : public testing::Test {
protected:
    // Whether the watch would wake whoever waits for it, and what it then tells.
    bool meldet() const {
        pollfd worauf{wache->melder(), POLLIN, 0};
        return poll(&worauf, 1, 0) == 1;
    }
    bool geraete() { return wache->nachsehen().geraete; }
    void knoten(const std::string& name) { std::ofstream(ordner / name) << ""; }
    void erwarteMeldung() {
        EXPECT_TRUE(meldet());
        EXPECT_TRUE(geraete());
        EXPECT_FALSE(meldet());
        EXPECT_FALSE(geraete());
    }

    Testordner oben;
    fs::path ordner = oben.pfad() / "input";
    std::unique_ptr<Padwache> wache;
};

TEST_F(Ordnerwache, SiehtKommenGehenUndRechte) {
    fs::create_directory(ordner);
    wache = std::make_unique<Padwache>(ordner);
    ASSERT_TRUE(wache->siehtKommen());
    EXPECT_FALSE(meldet());
    EXPECT_FALSE(geraete());
    knoten("event3");
    erwarteMeldung();
    fs::permissions(ordner / "event3", fs::perms::owner_read);
    erwarteMeldung();
    fs::remove(ordner / "event3");
    erwarteMeldung();
}

TEST_F(Ordnerwache, EinOrdnerDerErstKommtWirdGesehenUndWieSeinInhalt) {
    wache = std::make_unique<Padwache>(ordner);
    ASSERT_TRUE(wache->siehtKommen());
    fs::create_directory(oben.pfad() / "anderes");
    EXPECT_FALSE(geraete());
    fs::create_directory(ordner);
    erwarteMeldung();
    knoten("event0");
    erwarteMeldung();
}

TEST_F(Ordnerwache, EinOrdnerDerGehtUndWiederkommtWirdGesehen) {
    fs::create_directory(ordner);
    wache = std::make_unique<Padwache>(ordner);
    fs::remove(ordner);
    geraete();
    fs::create_directory(ordner);
    erwarteMeldung();
    knoten("event0");
    erwarteMeldung();
}

TEST_F(Ordnerwache, OhneOrtGibtEsNichtsZuSehen) {
    wache = std::make_unique<Padwache>(oben.pfad() / "nichts" / "input");
    EXPECT_FALSE(wache->siehtKommen());
    EXPECT_FALSE(meldet());
    EXPECT_FALSE(wache->nachsehen().neues());
}

TEST_F(Ordnerwache, WasKeinEreignisknotenIstWirdNichtBewacht) {
    fs::create_directory(ordner);
    knoten("event0");
    mkfifo((ordner / "event1").c_str(), 0600);
    wache = std::make_unique<Padwache>(ordner);
    EXPECT_FALSE(wache->knotenHinzu(0, nullptr));
    for (const auto* name : {"event0", "event1", "event2"})
        EXPECT_FALSE(wache->knotenHinzu(0, (ordner / name).c_str())) << name;
    EXPECT_FALSE(wache->sieht(0));
    EXPECT_FALSE(meldet());
}

} // namespace
