// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/LaufFenster.h"

#include "base/LaufzeitFehler.h"
#include "base/Tastennamen.h"
#include "tests/engine/run/Probelauf.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/StoerVfs.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>

namespace {

using Texte = std::vector<std::string>;

TEST(LaufFenster, TastenNamenInDerReihenfolgeDerBits) {
    EXPECT_EQ(Texte(LAUFNAMEN.begin(), LAUFNAMEN.end()),
              (Texte{"Dreieck", "Kreis", "Kreuz", "Viereck", "L 2", "L 1", "R 2", "R 1", "Select", "Start",
                     "L-Stick", "R-Stick"}));
}

// Load and end

// What a window shows at the load of a `Schema` that has never run, with `danach` behind it.
Texte nachDenReglern(const Texte& danach) {
    Texte alle;
    for (int i = 0; i < REGLER; ++i)
        alle.push_back("HScroll1(" + std::to_string(i) + ") = " +
                       std::array{"30", "0", "30", "0", "400", "400"}[static_cast<std::size_t>(i % 6)]);
    alle.push_back("HScroll2 = 0");
    alle.insert(alle.end(), danach.begin(), danach.end());
    return alle;
}

TEST(LaufFensterLaden, WaehltDieAusgabeLaedtDieSticksUndVerbirgtDannDieHauptform) {
    Probelauf lauf;
    lauf.datenbank.sql("UPDATE tblTastatur SET Funktion = 2");
    Schemabau(lauf.datenbank).sperre(Stickseite::Links, 5).sperre(Stickseite::Rechts, 6).ergaenzen();
    lauf.mitSticks();

    const auto& fenster = lauf.starten();

    EXPECT_EQ(lauf.anzeige.abholen(), nachDenReglern({"Option1 = 2", "frmHaupt = verborgen"}));
    EXPECT_EQ(lauf.zustand.linkerStick.StickSperre, 5);
    EXPECT_EQ(lauf.zustand.rechterStick.StickSperre, 6);
    EXPECT_TRUE(fenster.pollt());
}

TEST(LaufFensterLaden, OhneFunktionGiltDieErste) {
    Probelauf lauf;
    lauf.datenbank.sql("UPDATE tblTastatur SET Funktion = NULL");
    lauf.starten();
    EXPECT_EQ(lauf.anzeige.abholen(), nachDenReglern({"Option1 = 0", "frmHaupt = verborgen"}));
}

TEST(LaufFensterLaden, LoeschtDieUmschaltTastenDesEditors) {
    Probelauf lauf;
    lauf.zustand.global.UmschaltTasten = {3, 4};
    lauf.starten();
    EXPECT_EQ(lauf.zustand.global.UmschaltTasten, (std::array<std::int16_t, 2>{0, 0}));
}

TEST(LaufFensterLaden, DerErsteTaktKommtNachFuenfMillisekunden) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}};
    lauf.pad.zustand.dwButtons = 4;
    lauf.starten();
    lauf.warten(4);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{});
    lauf.warten(1);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{"+65"});
}

void erwarteKeinenLauf(Probelauf& lauf, int fehler) {
    auto& fenster = lauf.fensterOeffnen();
    EXPECT_EQ(fehlernummer([&] { fenster.laden(); }), fehler);
    EXPECT_FALSE(fenster.pollt());
    EXPECT_EQ(lauf.uhr.laufende(), 0U);
    fenster.beenden();
    const auto gezeigt = lauf.anzeige.abholen();
    EXPECT_EQ(std::ranges::count_if(gezeigt, [](const auto& text) { return text.starts_with("frmHaupt"); }),
              0);
}

TEST(LaufFensterLaden, EinErsterStartOhneSchreibrechtSpieltMitDenGrundwertenUndSagtEsAmEnde) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}};
    Schemabau(lauf.datenbank).feld(Stickseite::Links, {27072, 0, 0, 0}, "2,0,66,0,0").ergaenzen();
    lauf.datenbank.sql("DELETE FROM tblSteuerKreuz; UPDATE tblTastatur SET Funktion = NULL");
    lauf.zustand.achsendatei.AchsenLaden();
    lauf.mitSticks();
    const auto vorher = lauf.datenbank.inhalt();
    std::optional<LaufzeitFehler> fehler;
    {
        const Rechte rechte(lauf.datenbank, 0555, 0444);
        const AlsNiemand niemand;
        auto& fenster = lauf.starten();
        fenster.Option1Klick(0); // as the option that is set does
        lauf.pad.zustand.dwXpos = 100;
        lauf.takt(4);
        lauf.takt(0);
        lauf.warten(500);
        EXPECT_THAT(lauf.eingabe.texteAbholen(), testing::IsSupersetOf({"+65", "-65", "+66"}));
        fehler = fenster.beenden();
    }
    EXPECT_EQ(lauf.datenbank.inhalt(), vorher);
    ASSERT_TRUE(fehler);
    EXPECT_EQ(fehler->nummer(), Fehlernummer::NurLesen);
    EXPECT_EQ(std::string(fehler->what()),
              "Die Datenbank „" + lauf.datenbank.pfad() +
                  "“ kann nur gelesen werden.\nNicht gespeichert: die Empfindlichkeit des linken Sticks, die "
                  "Empfindlichkeit des rechten Sticks, die Linien des linken Sticks, die Linien des rechten "
                  "Sticks.");
    EXPECT_EQ(lauf.starten().beenden(), std::nullopt) << "the next one can";
}

TEST(LaufFensterLaden, AmEndeWirdNurDerStickGenanntDessenZeilenFehlen) {
    for (const auto& [tabelle, was] : {std::pair{"tblStick", "die Linien des linken Sticks"},
                                       std::pair{"tblStickR", "die Linien des rechten Sticks"}}) {
        Probelauf lauf;
        lauf.mitSticks();
        lauf.datenbank.sql("CREATE UNIQUE INDEX enger ON " + std::string(tabelle) + " (Schemaname, Links)");
        const auto fehler = lauf.starten().beenden();
        ASSERT_TRUE(fehler) << tabelle;
        EXPECT_TRUE(std::string(fehler->what()).ends_with("\nNicht gespeichert: " + std::string(was) + "."))
            << fehler->what();
    }
}

TEST(LaufFensterLaden, EinErsterStartAufVollerPlatteSpieltUndSagtEsAmEnde) {
    StoerVfs disk;
    Probelauf lauf{{"btn3", "1,65,0-0-0"}};
    lauf.mitSticks();
    disk.stoereAb(1, StoerVfs::Eingriff::Voll);
    auto& fenster = lauf.starten();
    lauf.takt(4);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{"+65"});
    const auto fehler = fenster.beenden();
    disk.stoereNicht();
    ASSERT_TRUE(fehler);
    EXPECT_EQ(fehler->nummer(), Fehlernummer::KeinPlatz);
}

TEST(LaufFensterLaden, EinAbgebrochenerLaufSagtAuchWasErNichtBehaelt) {
    Probelauf lauf{{"btn3", "1,x,0-0-0"}};
    lauf.starten();
    RoheVerbindung andere(lauf.datenbank.pfad());
    andere.sql("BEGIN IMMEDIATE");
    lauf.takt(4);
    EXPECT_THAT(lauf.anzeige.fehlertext,
                testing::ContainsRegex("x(.|\n)*\n\n(.|\n)*gesperrt\\.\nNicht gespeichert: "
                                       "die Empfindlichkeit des linken Sticks, "));
}

TEST(LaufFensterLaden, EineErsetzteDatenbankGiltVomNaechstenLaufAnAuchFuerDieSticks) {
    Probelauf lauf;
    lauf.mitSticks();
    lauf.starten().beenden();
    EXPECT_EQ(lauf.zustand.linkerStick.StickSperre, 0);
    const auto andere = lauf.datenbank.ordner() / "andere";
    std::filesystem::copy_file(lauf.datenbank.pfad(), andere);
    RoheVerbindung(andere.string()).sql("UPDATE tblStick SET Links = 5 WHERE \"index\" = 20");
    std::filesystem::rename(andere, lauf.datenbank.pfad());
    lauf.starten();
    EXPECT_EQ(lauf.zustand.linkerStick.StickSperre, 5);
}

TEST(LaufFensterLaden, OhneZeileBeginntNichts) {
    Probelauf lauf;
    lauf.zustand.global.SchemaName = "T";
    erwarteKeinenLauf(lauf, 3021);
}

TEST(LaufFensterLaden, OhneDateiBeginntNichts) {
    Probelauf lauf;
    lauf.zustand.global.DatenbankPfad = lauf.datenbank.pfad() + ".fehlt";
    erwarteKeinenLauf(lauf, 3024);
}

TEST(LaufFensterLaden, MitUnlesbarerUmschaltartBeginntNichts) {
    Probelauf lauf{{"btn1", "3"}};
    erwarteKeinenLauf(lauf, 13);
}

TEST(LaufFensterLaden, OhneSticktabellenBeginntNichts) {
    Probelauf lauf;
    lauf.datenbank.sql("DROP TABLE tblStick");
    lauf.mitSticks();
    erwarteKeinenLauf(lauf, 3078);
}

// What has been reached when the buttons, and when the slider, can't be read.
TEST(LaufFensterLaden, LiestErstDieReglerDannDieTastenDannDenSchubreglerUndZuletztDieSticks) {
    const auto regler = [](const Probelauf& lauf) {
        return lauf.datenbank.zeilen("SELECT Schemaname FROM Sensible");
    };
    Probelauf ohneTasten;
    ohneTasten.datenbank.sql("DELETE FROM tblTastatur");
    EXPECT_EQ(fehlernummer([&] { ohneTasten.starten(); }), 3021);
    EXPECT_EQ(regler(ohneTasten), (Tabellenbild{{"S"}}));
    EXPECT_EQ(ohneTasten.zustand.achsendatei.AchsenSchluessel()[0], "");

    Probelauf ohneSchub;
    ohneSchub.zustand.achsendatei.AchsenLaden();
    ohneSchub.zustand.achsendatei.GamepadSchreiben("x");
    ohneSchub.datenbank.sql("DROP TABLE tblStick");
    ohneSchub.mitSticks();
    EXPECT_EQ(fehlernummer([&] { ohneSchub.starten(); }), 13);
    EXPECT_EQ(ohneSchub.anzeige.abholen(), nachDenReglern({"Option1 = 0"}));
}

TEST(LaufFensterLaden, MitKaputterAchsendateiRuhenSticksUndSchubreglerUndDieTastenGehen) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}};
    const auto datei = lauf.datenbank.ordner() / "Gamepad.xml";
    std::ofstream(datei) << "<xml";
    Schemabau(lauf.datenbank).feld(Stickseite::Links, {27072, 0, 0, 0}, "2,0,66,0,0").ergaenzen();
    lauf.mitSticks();
    auto& fenster = lauf.starten();
    lauf.pad.zustand.dwXpos = lauf.pad.zustand.dwUpos = 100;
    lauf.takt(4);
    lauf.takt(0);
    lauf.warten(1000);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), (Texte{"+65", "-65"}));
    EXPECT_EQ(lauf.zustand.gegeben.stick(Stickseite::Links).position, Stickposition{});
    EXPECT_TRUE(fenster.pollt());
    fenster.beenden();
    EXPECT_EQ(std::filesystem::file_size(datei), 4U) << "it is not overwritten";
}

struct Rueckkehr {
    std::uint8_t OffenerEditor;
    std::uint8_t OffenerEditorR;
    const char* hauptform;
};

TEST(LaufFensterBeenden, ZeigtDieHauptformWennKeinEditorOffenIst) {
    for (const auto& fall : {Rueckkehr{0, 0, "frmHaupt = gezeigt"}, Rueckkehr{1, 0, "frmHaupt = bereit"},
                             Rueckkehr{2, 0, "frmHaupt = gezeigt"}, Rueckkehr{0, 1, "frmHaupt = bereit"},
                             Rueckkehr{2, 1, "frmHaupt = bereit"}, Rueckkehr{0, 2, "frmHaupt = gezeigt"}}) {
        Probelauf lauf;
        auto& fenster = lauf.starten();
        lauf.anzeige.abholen();
        lauf.zustand.global.OffenerEditor = fall.OffenerEditor;
        lauf.zustand.global.OffenerEditorR = fall.OffenerEditorR;
        fenster.beenden();
        EXPECT_EQ(lauf.anzeige.abholen(), Texte{fall.hauptform})
            << int{fall.OffenerEditor} << ", " << int{fall.OffenerEditorR};
    }
}

TEST(LaufFensterBeenden, EinZweitesMalTutNichts) {
    Probelauf lauf;
    auto& fenster = lauf.starten();
    fenster.beenden();
    lauf.anzeige.abholen();
    fenster.beenden();
    EXPECT_EQ(lauf.anzeige.abholen(), Texte{});
}

TEST(LaufFensterBeenden, LaesstKeinenTimerUebrig) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}, {"btn4", "1,66,1-50-50"}, {"btn12", "1,67,1-10-500"}};
    auto& fenster = lauf.starten();
    fenster.HScroll2Aenderung(30);
    lauf.takt(4 + 8 + 2048);
    lauf.warten(20);
    EXPECT_EQ(lauf.uhr.laufende(), 6U); // tick, Timer1, two pulses, two repeats
    fenster.beenden();
    EXPECT_EQ(lauf.uhr.laufende(), 0U);
}

TEST(LaufFensterBeenden, LaesstMaskenUndTastenStehen) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}, {"btn4", "1,66,1-50-50"}, {"btn12", "1,67,1-10-500"}};
    auto& fenster = lauf.starten();
    lauf.zustand.gegeben.timer.TimerSetzen(2);
    lauf.takt(4 + 8 + 2048);
    lauf.warten(20);
    lauf.eingabe.abholen();

    fenster.beenden();
    lauf.fenster.reset();
    lauf.warten(1000);

    EXPECT_EQ(lauf.eingabe.texteAbholen(), Texte{});
    EXPECT_EQ(lauf.zustand.gehaltene.GehaltenText(), "2-65,3-66,");
    EXPECT_EQ(lauf.zustand.tasten.DrueckMaske, 8U);
    EXPECT_EQ(lauf.zustand.tasten.PausenMaske, 2048U);
    EXPECT_EQ(lauf.zustand.gegeben.timer.TimerMaske(), 4U);
}

TEST(LaufFensterBeenden, EinFensterDasOhneEndeGehtLaesstKeinenTimerUebrig) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}, {"btn4", "1,66,1-50-50"}};
    lauf.starten().HScroll2Aenderung(30);
    lauf.takt(4 + 8);
    lauf.fenster.reset();
    EXPECT_EQ(lauf.uhr.laufende(), 0U);
}

// Errors of a run

TEST(LaufFensterFehler, ImTaktEndetDenLaufUndKommtDanach) {
    Probelauf lauf{{"btn3", "1,x,0-0-0"}, {"btn4", "1,66,1-50-50"}};
    auto& fenster = lauf.starten();
    fenster.HScroll2Aenderung(30);
    lauf.takt(8);
    lauf.anzeige.abholen();
    lauf.takt(12);
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"Label1(0) = 12", "frmHaupt = gezeigt", "Fehler = 13"}));
    EXPECT_FALSE(fenster.pollt());
    EXPECT_EQ(lauf.uhr.laufende(), 0U);
}

TEST(LaufFensterFehler, InEinerTimerprozedurEndetDenLauf) {
    Probelauf lauf{{"btn3", "1,65,1-20-x"}};
    auto& fenster = lauf.starten();
    lauf.takt(4);
    lauf.anzeige.abholen();
    lauf.warten(20);
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"Titel = ", "frmHaupt = gezeigt", "Fehler = 13"}));
    EXPECT_FALSE(fenster.pollt());
    EXPECT_EQ(lauf.uhr.laufende(), 0U);
}

TEST(LaufFensterFehler, EinesSticksEndetDenLauf) {
    Probelauf lauf;
    Schemabau(lauf.datenbank).linien(Stickseite::Links, 1, {}).ergaenzen(); // no line anywhere
    lauf.mitSticks();
    lauf.starten();
    lauf.anzeige.abholen();
    lauf.warten(50);
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"Label1(0) = 0", "frmHaupt = gezeigt", "Fehler = 9"}));
    EXPECT_EQ(lauf.uhr.laufende(), 0U);
}

TEST(LaufFensterFehler, NachEinemFehlerBeginntEinNeuerLaufWieImmer) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}, {"btn4", "x"}};
    lauf.starten();
    lauf.takt(8);
    lauf.fenster.reset();
    lauf.eingabe.abholen();
    lauf.starten();
    lauf.takt(4);
    lauf.takt(0);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), (Texte{"+65", "-65"}));
}

// A tick

TEST(LaufFensterTakt, FragtDasErstePadNachAllenWerten) {
    struct Merkpad final : Joystick {
        std::vector<std::array<std::uint32_t, 3>> fragen;
        std::uint32_t joyGetPosEx(std::uint32_t id, JOYINFOEX& info) override {
            fragen.push_back({id, info.dwSize, info.dwFlags});
            info.dwSize = info.dwFlags = 7; // asked anew each time, whatever became of it
            return JOYERR_UNPLUGGED;
        }
    } pad;
    Probelauf lauf;
    LaufFenster fenster({lauf.zustand, pad, lauf.eingabe, lauf.uhr, lauf.anzeige});
    fenster.laden();
    lauf.warten(10);
    EXPECT_EQ(pad.fragen, (std::vector<std::array<std::uint32_t, 3>>{{0, 64, 255}, {0, 64, 255}}));
}

TEST(LaufFensterTakt, BrauchtDieDatenbankNicht) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}, {"btn9", "3,0,0-0-0"}, {"btn103", "1,66,0-0-0"}};
    lauf.starten();
    std::filesystem::remove(lauf.datenbank.pfad());
    for (const std::uint32_t tasten : {4U, 0U, 256U, 260U, 0U})
        lauf.takt(tasten);
    EXPECT_EQ(lauf.eingabe.texteAbholen(), (Texte{"+65", "-65", "+66", "-66"}));
}

// Labels of a tick

TEST(LaufFensterBeschriften, ZeigtDieTastenDerGrundebene) {
    Probelauf lauf;
    lauf.starten();
    lauf.anzeige.abholen();
    lauf.takt(0);
    lauf.takt(4);
    lauf.takt(4);
    lauf.takt(4095);
    lauf.takt(65536 + 5);
    lauf.takt(0);
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"Label1(0) = 0", "Label1(0) = 4", "Titel = ", "Label1(0) = 4095",
                                             "Label1(0) = 5", "Label1(0) = 0"}));
}

TEST(LaufFensterBeschriften, ZeigtInUmschalt1DieTastenOhneDieUmschalttaste) {
    Probelauf lauf{{"btn9", "3,0,0-0-0"}};
    lauf.starten();
    lauf.takt(0);
    lauf.anzeige.titel("");
    lauf.anzeige.abholen();
    lauf.takt(256);
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"lblUmschalt = Umschalttaste 1", "Label1(0) = 256"}));
    lauf.takt(256);
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"lblUmschalt = ", "Label1(0) = 0"}));
    lauf.takt(260);
    EXPECT_EQ(lauf.anzeige.abholen(), Texte{"Label1(0) = 4"});
    lauf.takt(4);
    EXPECT_EQ(lauf.anzeige.abholen(), Texte{"Label1(0) = -252"});
    lauf.takt(0);
    EXPECT_EQ(lauf.anzeige.abholen(), Texte{"Label1(0) = 0"});
}

TEST(LaufFensterBeschriften, ZeigtInFestgestelltemUmschalt2AuchWenigerAlsNull) {
    Probelauf lauf{{"btn10", "4,0,1-0-0"}};
    lauf.starten();
    lauf.takt(0);
    lauf.anzeige.titel("");
    lauf.anzeige.abholen();
    lauf.takt(512);
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"lblUmschalt = Umschalttaste 2", "Label1(0) = 512"}));
    lauf.takt(512);
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"lblUmschalt = ", "Label1(0) = 0"}));
    lauf.takt(0);
    EXPECT_EQ(lauf.anzeige.abholen(), Texte{"Label1(0) = -512"});
}

TEST(LaufFensterBeschriften, TastenWortIstDasUntereWortNachDerUmschaltung) {
    Probelauf lauf{{"btn9", "3,0,0-0-0"}};
    auto& fenster = lauf.starten();
    std::vector<std::uint16_t> worte;
    for (const std::uint32_t tasten : {0U, 0x00010004U, 0x0000F001U, 256U, 256U, 260U, 0U}) {
        lauf.takt(tasten);
        worte.push_back(fenster.TastenWort());
    }
    EXPECT_EQ(worte, (std::vector<std::uint16_t>{0, 4, 0xF001, 0, 256, 260, 0}));
}

// The window's controls

TEST(LaufFensterKnopf, StopHaeltAnUndStartetWieder) {
    Probelauf lauf;
    auto& fenster = lauf.starten();
    lauf.anzeige.abholen();
    fenster.Command1Klick(0);
    EXPECT_FALSE(fenster.pollt());
    fenster.Command1Klick(0);
    EXPECT_TRUE(fenster.pollt());
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"Command1(0) = Start", "Command1(0) = Stop"}));
}

TEST(LaufFensterKnopf, SensiTastKlapptAusUndEin) {
    Probelauf lauf;
    auto& fenster = lauf.starten();
    lauf.anzeige.abholen();
    fenster.Command1Klick(1);
    EXPECT_FALSE(fenster.pollt());
    fenster.Command1Klick(1);
    EXPECT_TRUE(fenster.pollt());
    EXPECT_EQ(lauf.anzeige.abholen(),
              (Texte{"Command1(1) = Start", "Testfeld = auf", "Command1(1) = SensiTast", "Testfeld = zu"}));
}

TEST(LaufFensterKnopf, JederRichtetSichNachSeinerEigenenAufschrift) {
    Probelauf lauf;
    auto& fenster = lauf.starten();
    lauf.anzeige.abholen();
    std::vector<bool> pollt;
    for (const int knopf : {0, 1, 1, 0, 0, 0}) {
        fenster.Command1Klick(knopf);
        pollt.push_back(fenster.pollt());
    }
    EXPECT_EQ(pollt, (std::vector<bool>{false, false, true, true, false, true}));
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"Command1(0) = Start", "Command1(1) = Start", "Testfeld = auf",
                                             "Command1(1) = SensiTast", "Testfeld = zu", "Command1(0) = Stop",
                                             "Command1(0) = Start", "Command1(0) = Stop"}));
}

TEST(LaufFensterOption1, SchreibtDieFunktionSogleich) {
    Probelauf lauf;
    auto& fenster = lauf.starten();
    fenster.Option1Klick(2);
    EXPECT_EQ(lauf.datenbank.zeilen("SELECT Funktion FROM tblTastatur"), (Tabellenbild{{"2"}}));
    fenster.Option1Klick(0);
    EXPECT_EQ(lauf.datenbank.zeilen("SELECT Funktion FROM tblTastatur"), (Tabellenbild{{"0"}}));
}

} // namespace
