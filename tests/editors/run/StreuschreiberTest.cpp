// SPDX-License-Identifier: GPL-3.0-or-later
// What is left on the disk of where the sticks were in a run, and what is told where it can't be kept.
#include "store/files/Streubilddateien.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"

#include <QPushButton>

#include <numeric>

namespace fs = std::filesystem;

namespace {

const Gesehen NICHT_GESPEICHERT{
    "Streubild nicht gespeichert",
    "Wo die Sticks in diesem Lauf waren, konnte nicht gespeichert werden: Im Ordner „Streubilder“ neben der "
    "Datenbank lässt sich nicht schreiben, oder eine neuere Fassung des Programms hat es schon getan. Das "
    "Streubild zeigt nur frühere Läufe.",
    QMessageBox::Warning, QMessageBox::Ok};

class StreuschreiberForm : public Formtest {
protected:
    void SetUp() override {
        Schemabau(datenbank_).anlegen();
        starten();
    }
    QPushButton& knopf(int index) {
        return control<QPushButton>(haupt(), QString("Command1(%1)").arg(index));
    }
    /// A run of a second. Gives the boxes that came when all was written, or could not be.
    std::vector<Gesehen> spielen() {
        const Boxleser boxen;
        knopf(5).click();
        vergehen(1000);
        knopf(5).click();
        programm_->laufsteuerung().streuungAbwarten();
        ereignisse();
        return boxen.gesehen();
    }
    std::uint64_t takte(Stickseite seite) const {
        const auto alle = dateien.laden("S", seite, 0).takte;
        return std::accumulate(alle.begin(), alle.end(), std::uint64_t{0});
    }

    const fs::path ordner = datenbank_.ordner() / "Streubilder";
    const Streubilddateien dateien{ordner};
};

} // namespace

TEST_F(StreuschreiberForm, EinLaufUndDerNaechsteKommenZusammen) {
    EXPECT_EQ(spielen(), std::vector<Gesehen>{});
    EXPECT_EQ(takte(Stickseite::Links), 199U);
    EXPECT_EQ(takte(Stickseite::Rechts), 199U);
    EXPECT_EQ(spielen(), std::vector<Gesehen>{});
    EXPECT_EQ(takte(Stickseite::Links), 199U + 200U);
    EXPECT_EQ(namenIn(ordner).size(), 2U);
}

TEST_F(StreuschreiberForm, DasEndeDesProgrammsWartetDarauf) {
    knopf(5).click();
    vergehen(1000);
    programm_.reset();
    EXPECT_EQ(takte(Stickseite::Links), 199U);
}

TEST_F(StreuschreiberForm, OhneBildschirmWirdEsAuchGesichert) {
    knopf(5).click();
    vergehen(1000);
    EXPECT_NE(programm_->ohneBildschirmSichern(), "");
    EXPECT_EQ(takte(Stickseite::Links), 199U);
}

TEST_F(StreuschreiberForm, WasNichtGehtWirdEinmalGesagtUndErstWiederWennEsDazwischenGing) {
    dateiSchreiben(ordner, "in the way");
    EXPECT_EQ(spielen(), std::vector{NICHT_GESPEICHERT});
    EXPECT_EQ(spielen(), std::vector<Gesehen>{});
    fs::remove(ordner);
    EXPECT_EQ(spielen(), std::vector<Gesehen>{});
    EXPECT_EQ(takte(Stickseite::Links), 200U);
    fs::remove_all(ordner);
    dateiSchreiben(ordner, "in the way");
    EXPECT_EQ(spielen(), std::vector{NICHT_GESPEICHERT});
    EXPECT_EQ(knopf(5).text(), "Schema starten") << "the end of the run is none the worse";
}

TEST_F(StreuschreiberForm, WasNichtGehtHaeltDasAndereNichtAufUndWirdGesagt) {
    fs::create_directories(dateien.pfad("S", Stickseite::Links, 0) / "im Weg");
    EXPECT_EQ(spielen(), std::vector{NICHT_GESPEICHERT});
    EXPECT_EQ(takte(Stickseite::Rechts), 199U);
}

TEST_F(StreuschreiberForm, MitDemSchemaGehtWasSeineLaeufeGezaehltHaben) {
    spielen();
    ASSERT_EQ(namenIn(ordner).size(), 2U);
    const Boxleser boxen({QMessageBox::Yes});
    knopf(3).click();
    ereignisse();
    EXPECT_EQ(namenIn(ordner), std::vector<std::string>{});
}

// The main form can be in sight meanwhile; another copy of the program can do it, too.
TEST_F(StreuschreiberForm, EinSchemaDasImLaufGeloeschtWirdBekommtKeineDateienMehr) {
    spielen();
    ASSERT_EQ(namenIn(ordner).size(), 2U);
    knopf(5).click();
    vergehen(1000);
    datenbank_.sql("DELETE FROM tblTastatur WHERE Schemaname = 'S';");
    emit programm_->hauptform().schemaGeloescht("S");
    EXPECT_EQ(namenIn(ordner), std::vector<std::string>{});
    const Boxleser boxen;
    programm_->laufsteuerung().entladen();
    programm_->laufsteuerung().streuungAbwarten();
    ereignisse();
    EXPECT_EQ(namenIn(ordner), std::vector<std::string>{});
    for (const auto& box : boxen.gesehen())
        EXPECT_NE(box.titel, "Streubild nicht gespeichert");
}

TEST_F(StreuschreiberForm, WoNiemandSagtDassEsGeloeschtIstWirdGezaehlt) {
    knopf(5).click();
    vergehen(1000);
    datenbank_.sql("ALTER TABLE tblTastatur RENAME TO andere;");
    const Boxleser boxen;
    programm_->laufsteuerung().entladen();
    programm_->laufsteuerung().streuungAbwarten();
    EXPECT_EQ(takte(Stickseite::Links), 199U);
}

TEST_F(StreuschreiberForm, WasBeimLoeschenNochGeschriebenWirdKommtNichtDanach) {
    knopf(5).click();
    vergehen(1000);
    knopf(5).click();
    emit programm_->hauptform().schemaGeloescht("S");
    programm_.reset();
    EXPECT_EQ(namenIn(ordner), std::vector<std::string>{});
}
