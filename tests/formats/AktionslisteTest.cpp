// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Aktionsliste.h"

#include <gtest/gtest.h>

namespace {

/// The action text that a run finds; "-" for none.
std::string gefunden(const std::string& liste, std::string_view schluessel) {
    const auto aktion = Aktionsliste(liste).suchen(schluessel);
    return aktion ? aktion->text() : "-";
}
std::string gezeigt(const std::string& liste, std::string_view schluessel) {
    return Aktionsliste(liste).anzeigesuche(schluessel);
}

} // namespace

TEST(AktionslisteTest, SchluesselSindDieZiffernDerBaenderHintereinander) {
    const auto links = haelfteLinksOderOben("20000");
    const auto unten = haelfteRechtsOderUnten("45000");
    EXPECT_EQ(links + unten, "200000045000");
    EXPECT_EQ(xBandschluessel(links), "20000000");
    EXPECT_EQ(yBandschluessel(unten), "00045000");
    EXPECT_EQ(std::string(MITTELHAELFTE) + unten, yBandschluessel(unten));
}

TEST(AktionslisteTest, EineListeEntstehtZeileFuerZeile) {
    std::string liste;
    eintragAnhaengen(liste, "20000000", "0,0,5,10");
    EXPECT_EQ(liste, ";20000000+0,0,5,10;");
    eintragAnhaengen(liste, "0000", "");
    EXPECT_EQ(liste, ";20000000+0,0,5,10;0000+;");
}

TEST(AktionslisteTest, GefundenWirdDerErsteEintragDerSoBeginnt) {
    const std::string liste = ";9000000+0,1;90000000+0,2;0000+4;";
    EXPECT_EQ(gefunden(liste, "9000000"), "0,1");
    EXPECT_EQ(gefunden(liste, "90000000"), "0,2");
    EXPECT_EQ(gefunden(liste, "900"), "0,1") << "the beginning is enough";
    EXPECT_EQ(gefunden(";90000000+0,2;9000000+0,1;", "9000000"), "0,2") << "of the longer key, too";
    EXPECT_EQ(gefunden(liste, "000"), "4");
    EXPECT_EQ(gefunden(liste, "1"), "-");
    EXPECT_EQ(gefunden("", "0000"), "-");
}

TEST(AktionslisteTest, EinEintragOhneTextIstGefunden) {
    EXPECT_EQ(gefunden(";0000+;", "0000"), "");
}

TEST(AktionslisteTest, EinSemikolonInEinerAktionBeendetSie) {
    const std::string liste = ";0000+2,0;65;20000000+0,1;";
    EXPECT_EQ(gefunden(liste, "0000"), "2,0");
    EXPECT_EQ(gefunden(liste, "65"), "0,1") << "what stands behind it takes the action of the next";
    EXPECT_EQ(gefunden(";0000+2,0;65;", "65"), "");
}

TEST(AktionslisteTest, EinPlusInEinerAktionGehoertZuIhr) {
    EXPECT_EQ(gefunden(";0000+1+2;", "0000"), "1+2");
}

TEST(AktionslisteTest, AngezeigtWirdWasIrgendwoSteht) {
    const std::string liste = ";120000+0,1;20000+0,2;";
    EXPECT_EQ(gezeigt(liste, "20000"), "0,1") << "found inside the first key";
    EXPECT_EQ(gezeigt(";10000+5,2,20000;30000+4;", "20000"), "4")
        << "found inside an action: that of the next";
    EXPECT_EQ(gezeigt(liste, ""), "0,1");
    EXPECT_EQ(gezeigt(liste, "7"), "");
    EXPECT_EQ(gezeigt("", ""), "");
    EXPECT_EQ(gezeigt(";10000+5,2,20000;", "20000"), "");
}

namespace {

/// What counts in a field: its own action, that of its x band, that of its y band; "-" for none.
std::string imFeld(const std::string& liste, const std::string& x, bool imXBand, const std::string& y,
                   bool imYBand) {
    const auto aktionen = Aktionsliste(liste).imFeld(x, imXBand, y, imYBand);
    std::string text;
    for (const auto& eine : {aktionen.eigene, aktionen.xBand, aktionen.yBand})
        text += (eine ? eine->text() : "-") + " ";
    return text;
}

} // namespace

TEST(AktionslisteTest, ImFeldGiltDieEigeneAktionVorDenenDerBaender) {
    const std::string baender = ";20000000+1,0;0090000+1,1;";
    EXPECT_EQ(imFeld(baender, "200000", true, "90000", true), "- 1,0 1,1 ");
    EXPECT_EQ(imFeld(baender + "20000090000+3;", "200000", true, "90000", true), "3 - - ");
    EXPECT_EQ(imFeld(baender, "04500", true, "90000", true), "- - 1,1 ");
    EXPECT_EQ(imFeld(baender, "200000", true, "045000", true), "- 1,0 - ");
    EXPECT_EQ(imFeld("", "200000", true, "90000", true), "- - - ");
}

TEST(AktionslisteTest, ImMittelbandGibtEsKeineAktionEinesBandes) {
    EXPECT_EQ(imFeld(";20000000+1,0;0000+4;", "200000", true, "00", false), "1,0 - - ");
    EXPECT_EQ(imFeld(";0000+4;0090000+1,1;", "00", false, "00", false), "4 - - ");
    EXPECT_EQ(imFeld(";20000000+1,0;0045000+1,1;", "00", false, "90000", true), "- - - ");
    EXPECT_EQ(imFeld(";0000+4;", "200000", true, "00", false), "- - - ") << "nor that of the centre";
    EXPECT_EQ(imFeld(";0000+4;", "00", false, "90000", true), "- - - ");
}

TEST(AktionslisteTest, AlleSindDieEintraegeInIhrerFolge) {
    std::vector<std::string> texte;
    for (const auto& eine : Aktionsliste(";9000000+0,1;0000+;0090000+4;").alle())
        texte.push_back(eine->text());
    EXPECT_EQ(texte, (std::vector<std::string>{"0,1", "", "4"}));
}
