// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/GobalVariable.h"
#include "platform/probe/ProbeProzess.h"

#include <gtest/gtest.h>

namespace {

/// Database, pictures and help, as worked out in a directory.
std::array<std::string, 3> pfade(const std::string& verzeichnis, char trenner) {
    ProbeProzess prozess(verzeichnis, trenner);
    GobalVariable global;
    global.PfadeSetzen(prozess);
    return {global.DatenbankPfad, global.BilderPfad, global.HilfePfad};
}

TEST(PfadeSetzen, MitLaufwerk) {
    EXPECT_EQ(pfade("C:\\x", '\\'), (std::array<std::string, 3>{"C:\\x\\Belegung.twk", "C:/x/Bilder/",
                                                                "C:\\x\\Beschreibung\\Startfenster.htm"}));
}

TEST(PfadeSetzen, ImStammDesLaufwerks) {
    EXPECT_EQ(pfade("C:", '\\'), (std::array<std::string, 3>{"C:\\Belegung.twk", "C:/Bilder/",
                                                             "C:\\Beschreibung\\Startfenster.htm"}));
}

TEST(PfadeSetzen, MitSchraegstrichen) {
    EXPECT_EQ(pfade("/home/a b/spiele", '/'),
              (std::array<std::string, 3>{"/home/a b/spiele/Belegung.twk", "/home/a b/spiele/Bilder/",
                                          "/home/a b/spiele/Beschreibung\\Startfenster.htm"}));
}

TEST(PfadeSetzen, HinterSchraegstrichenIstDerAndereStrichTeilEinesNamens) {
    EXPECT_EQ(pfade("/home/a\\b/spiele\\", '/'),
              (std::array<std::string, 3>{"/home/a\\b/spiele\\/Belegung.twk", "/home/a\\b/spiele\\/Bilder/",
                                          "/home/a\\b/spiele\\/Beschreibung\\Startfenster.htm"}));
}

TEST(PfadeSetzen, ImWurzelverzeichnis) {
    EXPECT_EQ(pfade("", '/'),
              (std::array<std::string, 3>{"/Belegung.twk", "/Bilder/", "/Beschreibung\\Startfenster.htm"}));
}

TEST(AlleVariablenLoeschen, LeertNurDieUmschaltTasten) {
    GobalVariable global;
    global.DatenbankPfad = "a";
    global.BilderPfad = "b";
    global.HilfePfad = "c";
    global.SchemaName = "d";
    global.OffenerEditor = 2;
    global.OffenerEditorR = 1;
    global.UmschaltTasten = {3, 4};

    global.Alle_Variablen_loeschen();

    EXPECT_EQ(std::tie(global.DatenbankPfad, global.BilderPfad, global.HilfePfad, global.SchemaName),
              std::make_tuple("a", "b", "c", "d"));
    EXPECT_EQ(global.OffenerEditor, 2);
    EXPECT_EQ(global.OffenerEditorR, 1);
    EXPECT_EQ(global.UmschaltTasten, (std::array<std::int16_t, 2>{0, 0}));
}

} // namespace
