// SPDX-License-Identifier: GPL-3.0-or-later
// Death by SIGKILL: at every single step towards the disk, and at any time.
#include "store/db/Datenbank.h"
#include "store/schema/modLesen.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/StoerVfs.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <random>
#include <thread>

using testing::ElementsAre;

namespace {

/// Writes `zahl` into all twelve buttons of layer 0 of "S", in one Update.
void zahlSchreiben(Database& datenbank, int zahl) {
    Recordset satz =
        datenbank.OpenRecordset("SELECT * FROM tblTastatur WHERE (tblTastatur.Schemaname)= 'S';");
    satz.Edit();
    for (int taste = 1; taste <= TASTEN; ++taste)
        satz.put_Value("btn" + std::to_string(taste), zahl);
    satz.Update();
}

/// The number that stands in all twelve buttons; -1 when they differ.
int zahlGelesen(const Testdatenbank& datei) {
    const auto zeile =
        datei
            .zeilen("SELECT btn1, btn2, btn3, btn4, btn5, btn6, btn7, btn8, btn9, btn10, btn11, btn12"
                    " FROM tblTastatur WHERE Schemaname = 'S'")
            .at(0);
    return std::all_of(zeile.begin(), zeile.end(), [&](const auto& text) { return text == zeile[0]; })
               ? std::stoi(zeile[0])
               : -1;
}

void grundzeilen(Database& datenbank, const std::string& name) {
    StickGrundzeilenAnlegen(datenbank, Stickseite::Rechts, name);
}

void erwarteHeil(const Testdatenbank& datei) {
    EXPECT_THAT(datei.zeilen("PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
}

void zahlLegen(const Testdatenbank& datei) {
    datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('S')");
    Database datenbank = OpenDatabase(datei.pfad());
    zahlSchreiben(datenbank, 0);
}

} // namespace

TEST(Absturz, AnJedemSchrittBleibtDerStandVorOderNachDemUpdate) {
    StoerVfs disk;
    std::vector<int> gesehen;
    bool getoetet = true;
    for (int n = 1; getoetet; ++n) {
        Testdatenbank datei;
        zahlLegen(datei);
        const pid_t kind = imKind([&] {
            Database datenbank = OpenDatabase(datei.pfad());
            disk.stoereAb(n, StoerVfs::Eingriff::Toeten);
            zahlSchreiben(datenbank, 1);
        });
        getoetet = wurdeGetoetet(kind);
        erwarteHeil(datei);
        gesehen.push_back(zahlGelesen(datei));
    }
    // The change holds once the journal is gone, which is the last step of all: every death before it leaves
    // 0.
    ASSERT_GT(gesehen.size(), 5u);
    EXPECT_EQ(gesehen.back(), 1);
    gesehen.pop_back();
    EXPECT_THAT(gesehen, testing::Each(0));
}

TEST(Absturz, AnJedemSchrittSindEsZwanzigZeilenOderKeine) {
    StoerVfs disk;
    std::vector<std::string> gesehen;
    bool getoetet = true;
    for (int n = 1; getoetet; ++n) {
        Testdatenbank datei;
        const pid_t kind = imKind([&] {
            Database datenbank = OpenDatabase(datei.pfad());
            disk.stoereAb(n, StoerVfs::Eingriff::Toeten);
            grundzeilen(datenbank, "S");
        });
        getoetet = wurdeGetoetet(kind);
        erwarteHeil(datei);
        gesehen.push_back(datei.zeilen("SELECT count(*) FROM tblStickR").at(0).at(0));
    }
    ASSERT_GT(gesehen.size(), 5u);
    EXPECT_EQ(gesehen.back(), "20");
    gesehen.pop_back();
    EXPECT_THAT(gesehen, testing::Each("0"));
}

TEST(Absturz, ZuJederZeitBleibtDerStandVorOderNachEinemUpdate) {
    Testdatenbank datei;
    zahlLegen(datei);
    std::mt19937 zufall(4711);
    int mitten = 0;
    int naechste = 1;
    for (int i = 0; i < TOETUNGEN; ++i) {
        Schreiber schreiber(naechste, [&] {
            const auto datenbank = std::make_shared<Database>(OpenDatabase(datei.pfad()));
            return [datenbank](int zahl) {
                zahlSchreiben(*datenbank, zahl);
                grundzeilen(*datenbank, std::to_string(zahl));
            };
        });
        schreiber.abwarten(static_cast<int>(zufall() % 3));
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % 5000));
        const Fortschritt stand = schreiber.toeten();

        erwarteHeil(datei);
        const int zahl = zahlGelesen(datei);
        EXPECT_GE(zahl, stand.fertig);
        EXPECT_LE(zahl, stand.begonnen);
        EXPECT_THAT(
            datei.zeilen("SELECT Schemaname FROM tblStickR GROUP BY Schemaname HAVING count(*) <> 20"),
            testing::IsEmpty());
        const int sticks =
            std::stoi(datei.zeilen("SELECT count(DISTINCT Schemaname) FROM tblStickR").at(0).at(0));
        EXPECT_GE(sticks, stand.fertig);
        EXPECT_LE(sticks, zahl);
        mitten += stand.begonnen != stand.fertig;
        if (sticks < zahl)
            datei.sql("INSERT INTO tblStickR (Schemaname, \"index\") SELECT '" + std::to_string(zahl) +
                      "', value FROM json_each('[1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20]')");
        naechste = zahl + 1;
    }
    EXPECT_GT(mitten, TOETUNGEN / 2); // most deaths came in the midst of work
}
