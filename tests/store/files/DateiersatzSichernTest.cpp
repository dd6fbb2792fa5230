// SPDX-License-Identifier: GPL-3.0-or-later
// What reaches the disk, and in which order: without it a power cut could leave the new name with an empty
// file behind it, or bring the old one back after the replacement has been told.
#include "store/files/Achsendatei.h"
#include "store/files/Dateiersatz.h"
#include "store/files/Gamepadtabelle.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <climits>
#include <string>
#include <vector>

using testing::ElementsAre;

namespace {

/// What the program has asked the system for, by the names of files without process and count.
std::vector<std::string> schritte;

std::string ohneNummern(const std::string& pfad) {
    const std::string name = std::filesystem::path(pfad).filename().string();
    const auto stelle = name.find(".neu.");
    return stelle == std::string::npos ? name : name.substr(0, stelle) + ".neu";
}

} // namespace

// The linker puts these in the place of the system's (--wrap).
extern "C" {
int __real_fsync(int deskriptor);
int __real_rename(const char* von, const char* nach);

int __wrap_fsync(int deskriptor) {
    char pfad[PATH_MAX] = {};
    const auto laenge =
        readlink(("/proc/self/fd/" + std::to_string(deskriptor)).c_str(), pfad, sizeof pfad - 1);
    schritte.push_back("sichern " + (laenge > 0 ? ohneNummern(pfad) : std::string("?")));
    return __real_fsync(deskriptor);
}

int __wrap_rename(const char* von, const char* nach) {
    schritte.push_back("umbenennen " + ohneNummern(von) + " " + ohneNummern(nach));
    return __real_rename(von, nach);
}
}

TEST(DateiersatzSichern, ErstDerInhaltDannDerNameDannDerOrdner) {
    const Testordner ordner;
    for (const bool da : {false, true}) {
        schritte.clear();
        ASSERT_TRUE(dateiErsetzen((ordner.pfad() / "Gamepad.xml").string(), da ? "neuer" : "neu"));
        EXPECT_THAT(schritte, ElementsAre("sichern Gamepad.xml.neu", "umbenennen Gamepad.xml.neu Gamepad.xml",
                                          "sichern " + ordner.pfad().filename().string()));
    }
}

TEST(DateiersatzSichern, DieAuswahlEinesSchemasOhneZeileKommtInEinemZug) {
    const Testordner ordner;
    const std::string pfad = (ordner.pfad() / "Gamepad.xml").string();
    dateiSchreiben(pfad, gamepadAlsXml(leereGamepadtabelle()).value());
    const std::string auswahl = "S";
    Achsendatei achsen(pfad, auswahl);
    schritte.clear();
    ASSERT_TRUE(achsen.AchsenUebernehmen({{{"Z-Achse", ""}, {}, {}, {}, {}, {}}}));
    EXPECT_EQ(std::ranges::count(schritte, "umbenennen Gamepad.xml.neu Gamepad.xml"), 1);
}
