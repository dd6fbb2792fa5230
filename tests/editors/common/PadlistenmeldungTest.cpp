// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Padlistenmeldung.h"
#include "editors/common/Formhilfen.h"
#include "platform/linux/Padliste.h"

#include <gtest/gtest.h>

namespace {

std::string text(const Padliste& liste) {
    return padlistenmeldung(liste).toStdString();
}

Padliste mitFehlern(int anzahl) {
    Padliste liste;
    for (int i = 1; i <= anzahl; ++i)
        liste.fehler.push_back({i, "Gerede", "sie ordnet nichts zu"});
    return liste;
}

} // namespace

TEST(Padlistenmeldung, OhneFehlerGibtEsKeine) {
    EXPECT_EQ(text({}), "");
    EXPECT_EQ(text({"", 3, {}}), "");
}

TEST(Padlistenmeldung, EineDateiDieNichtBenutztWirdNenntDenGrund) {
    EXPECT_EQ(
        text({"sie ist keine Datei", 0, {}}),
        "Die Datei „gamecontrollerdb.txt“ in Ihrem Datenordner wird nicht benutzt: sie ist keine Datei.");
}

TEST(Padlistenmeldung, JedeFehlerhafteZeileStehtMitNummerTextUndGrundDa) {
    EXPECT_EQ(
        text({"", 0, {{7, "Gerede", "sie ordnet nichts zu"}}}),
        "In der Datei „gamecontrollerdb.txt“ in Ihrem Datenordner ist eine Zeile nicht zu verstehen. Sie "
        "wird ausgelassen, alle anderen gelten.\n\nZeile 7: Gerede\nsie ordnet nichts zu.");
    EXPECT_EQ(
        text(mitFehlern(2)),
        "In der Datei „gamecontrollerdb.txt“ in Ihrem Datenordner sind 2 Zeilen nicht zu verstehen. Sie "
        "werden ausgelassen, alle anderen gelten.\n\nZeile 1: Gerede\nsie ordnet nichts zu."
        "\n\nZeile 2: Gerede\nsie ordnet nichts zu.");
}

TEST(Padlistenmeldung, VieleZeilenPassenInEineBox) {
    EXPECT_FALSE(padlistenmeldung(mitFehlern(8)).contains("weitere"));
    const auto neun = padlistenmeldung(mitFehlern(9));
    EXPECT_TRUE(neun.contains("Zeile 8: ") && !neun.contains("Zeile 9: "));
    EXPECT_TRUE(neun.endsWith("\n\n… und 1 weitere"));
}

TEST(Padlistenmeldung, LangeZeilenWerdenGekuerzt) {
    const std::string sechzig(60, 'x');
    EXPECT_TRUE(padlistenmeldung({"", 0, {{1, sechzig, "g"}}}).contains(qt(": " + sechzig + "\ng.")));
    EXPECT_TRUE(padlistenmeldung({"", 0, {{1, sechzig + "x", "g"}}}).contains(qt(": " + sechzig + "…\ng.")));
    EXPECT_LT(padlistenmeldung({"", 0, {{1, "%1 %2", std::string(100000, 'y')}}}).size(), 400);
}
