// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Haltebericht.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

void PrintTo(const Haltezeile& zeile, std::ostream* strom) {
    *strom << (zeile.auffaellig ? "! " : "") << zeile.text.toStdString();
}

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Zeilen = std::vector<Haltezeile>;

constexpr int KREUZ = 2;

Feldname feld(const std::array<Bandlage, 4>& baender) {
    return {0, {}, baender};
}
constexpr Bandlage KEIN_BAND{};
constexpr Bandlage EINZIGES{1, 1};

class HalteberichtTest : public testing::Test {
protected:
    Zeilen zeilen(const std::vector<Haltung>& haltungen, milliseconds jetzt = {}) {
        bericht.ansehen({0, haltungen}, jetzt);
        return bericht.zeilen();
    }
    Haltebericht bericht{{{"65", "A"}, {"32", "Leertaste"}, {"87", ""}}};
};

Haltung kreuz(VirtuelleTaste taste, std::uint32_t druck = 1) {
    return {Padhalter{KREUZ}, Tastenwirkung{taste, false, druck}};
}
Haltung schub(VirtuelleTaste taste) {
    return {Schubhalter{3}, Tastenwirkung{taste, false, 1}};
}

} // namespace

TEST_F(HalteberichtTest, NenntWerWasHaelt) {
    const Stickhalter oben{Stickseite::Links, feld({KEIN_BAND, KEIN_BAND, EINZIGES, KEIN_BAND})};
    EXPECT_EQ(
        zeilen({kreuz(65), {Padhalter{12}, Mausknopfwirkung{1, 1}}, {oben, Bewegungswirkung{2}}, schub(32)}),
        (Zeilen{{"Kreuz → A, 0 s"},
                {"Steuerkreuz Oben → Rechte Maustaste, 0 s"},
                {"Linker Stick, Feld oben → Mausbewegung nach oben, 0 s"},
                {"Schubregler, Feld 3 → Leertaste, 0 s"}}));
}

TEST_F(HalteberichtTest, NenntAbsolutePositionenUndWasOhneFeldWeitergeht) {
    EXPECT_EQ(
        zeilen({{Stickhalter{Stickseite::Rechts, Feldname{}}, Absolutwirkung{false}},
                {Stickhalter{Stickseite::Rechts, {}}, Absolutwirkung{true}}}),
        (Zeilen{{"Rechter Stick, Feld Mitte → Im Feld binden, 0 s"}, {"Rechter Stick → Ego Shooter, 0 s"}}));
}

TEST_F(HalteberichtTest, EineTasteOhneNamenHatIhreNummer) {
    EXPECT_EQ(zeilen({kreuz(87)}), Zeilen{{"Kreuz → Taste 87, 0 s"}});
    EXPECT_EQ(zeilen({kreuz(66)}), Zeilen{{"Kreuz → Taste 66, 0 s"}});
}

TEST_F(HalteberichtTest, FelderHeissenNachIhrerLageUndBeiMehrerenBaendernNachIhrerNummer) {
    EXPECT_EQ(feldwort(Feldname{}), "Feld Mitte");
    EXPECT_EQ(feldwort(feld({EINZIGES, KEIN_BAND, KEIN_BAND, KEIN_BAND})), "Feld links");
    EXPECT_EQ(feldwort(feld({KEIN_BAND, EINZIGES, KEIN_BAND, EINZIGES})), "Feld unten rechts");
    EXPECT_EQ(feldwort(feld({Bandlage{1, 3}, KEIN_BAND, KEIN_BAND, KEIN_BAND})), "Feld links 1");
    EXPECT_EQ(feldwort(feld({EINZIGES, KEIN_BAND, Bandlage{2, 2}, KEIN_BAND})), "Feld oben 2, links");
}

TEST_F(HalteberichtTest, ZaehltDieZeitVomErstenBlickAn) {
    zeilen({kreuz(65)}, milliseconds{200});
    EXPECT_EQ(zeilen({kreuz(65)}, milliseconds{1199}), Zeilen{{"Kreuz → A, 0 s"}});
    EXPECT_EQ(zeilen({kreuz(65)}, milliseconds{1200}), Zeilen{{"Kreuz → A, 1 s"}});
    const auto nach = zeilen({kreuz(65)}, milliseconds{200} + seconds{65});
    EXPECT_EQ(nach.at(0).text, "⚠ Kreuz → A, 1:05 min");
}

TEST_F(HalteberichtTest, EinNeuerDruckDerselbenTasteZaehltNeu) {
    zeilen({kreuz(65, 1)}, seconds{1});
    EXPECT_EQ(zeilen({kreuz(65, 2)}, seconds{5}), Zeilen{{"Kreuz → A, 0 s"}});
    zeilen({}, seconds{6});
    EXPECT_EQ(zeilen({kreuz(65, 2)}, seconds{7}), Zeilen{{"Kreuz → A, 0 s"}});
}

TEST_F(HalteberichtTest, NachZehnSekundenFaelltEineTasteAufUndStehtVorn) {
    zeilen({kreuz(65)}, seconds{0});
    zeilen({schub(32), kreuz(65)}, seconds{4});
    EXPECT_EQ(zeilen({schub(32), kreuz(65)}, seconds{10}),
              (Zeilen{{"Kreuz → A, 10 s"}, {"Schubregler, Feld 3 → Leertaste, 6 s"}}));
    EXPECT_EQ(zeilen({schub(32), kreuz(65)}, milliseconds{10001}),
              (Zeilen{{"⚠ Kreuz → A, 10 s", true}, {"Schubregler, Feld 3 → Leertaste, 6 s"}}));
}

TEST_F(HalteberichtTest, WasKommtUndGehtFaelltNichtAuf) {
    const Haltung imTakt{Padhalter{KREUZ}, Tastenwirkung{65, true, 0}};
    const Haltung bewegung{Stickhalter{Stickseite::Links, {}}, Bewegungswirkung{0}};
    zeilen({imTakt, bewegung}, seconds{0});
    EXPECT_EQ(zeilen({imTakt, bewegung}, seconds{30}),
              (Zeilen{{"Kreuz → A im Takt, 30 s"}, {"Linker Stick → Mausbewegung nach links, 30 s"}}));
}

TEST_F(HalteberichtTest, WasNiemandMehrHaeltFaelltSofortAufUndBehaeltSeineZeit) {
    zeilen({kreuz(65)}, seconds{0});
    EXPECT_EQ(zeilen({schub(32), {Padhalter{KREUZ, false}, Tastenwirkung{65, false, 1}}}, seconds{3}),
              (Zeilen{{"⚠ Kreuz (losgelassen) → A, 3 s", true}, {"Schubregler, Feld 3 → Leertaste, 0 s"}}));
    EXPECT_EQ(zeilen({{OhneHalter{}, Tastenwirkung{65, false, 1}}}, seconds{4}),
              (Zeilen{{"⚠ Von niemandem gehalten → A, 4 s", true}}));
}
