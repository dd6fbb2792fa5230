// SPDX-License-Identifier: GPL-3.0-or-later
// Death by SIGKILL at each step of the disk and at any time of what the user does to a Schema: what is left
// is the state before or after the whole of it.
#include "store/schema/Schemaloeschen.h"
#include "store/schema/modSpeichern.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/StoerVfs.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <functional>
#include <random>
#include <thread>

using testing::ElementsAre;

namespace {

constexpr double DAUER_US = 5000; // about as long as an act takes; corrected as it is seen

void erwarteHeil(const Testdatenbank& datei) {
    EXPECT_THAT(datei.zeilen("PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
}

VarTastenbelegung volleTasten() {
    VarTastenbelegung bild;
    for (int taste = 0; taste < SLOTS; ++taste)
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            bild.setzeBelegung(taste, ebene, "1," + std::to_string(ebene * SLOTS + taste + 1) + ",0-0-0");
    return bild;
}

Sticklinien volleLinien() {
    Sticklinien bild;
    for (std::size_t ebene = 0; ebene < EBENEN; ++ebene)
        for (std::size_t zeile = 1; zeile <= 3; ++zeile)
            bild.linien[ebene][zeile].fill(static_cast<std::int32_t>(1000 * (ebene + 1) + zeile));
    bild.StickSperre = 5;
    return bild;
}

void keineMeldung(std::string_view) {}

/// Something that a user does, on a file in which "S" is whole, "halb" lacks rows and "neu" is not there.
struct Tat {
    std::string name;
    std::function<void(const std::string& pfad, const std::string& bilder)> tun;
};

const std::vector<Tat> TATEN{
    {"EinNeuesSchema", [](const auto& pfad, const auto&) { SchemaAnlegen(pfad, "neu", "", {}); }},
    {"EinGeaendertesSchema",
     [](const auto& pfad, const auto&) {
         SchemaAnlegen(pfad, "halb", "/neu", [](std::string_view) { return true; });
     }},
    {"TastenUndKreuz",
     [](const auto& pfad, const auto&) { TastenbelegungSpeichern(pfad, "S", volleTasten()); }},
    {"TastenUndFehlendesKreuz",
     [](const auto& pfad, const auto&) { TastenbelegungSpeichern(pfad, "halb", volleTasten()); }},
    {"Linien", [](const auto& pfad,
                  const auto&) { StickLinienSpeichern(pfad, Stickseite::Rechts, "S", volleLinien()); }},
    {"EineLinieMitIhrenAktionen",
     [](const auto& pfad, const auto&) {
         auto bild = volleLinien();
         bild.linien[0][1][0] = 18000;
         StickLinieVerlegen(pfad, Stickseite::Links, "S", bild, {0, 0, 18000, 20000});
     }},
    {"EineEntfernteLinieMitIhrenLeerfeldern",
     [](const auto& pfad, const auto&) {
         StickLinieEntfernen(pfad, Stickseite::Rechts, "S", volleLinien(), 0, 0, 20000);
     }},
    {"ZwanzigZeilen",
     [](const auto& pfad, const auto&) { StickLinienLesen(pfad, Stickseite::Links, "neu", keineMeldung); }},
    {"FehlendeZeilen",
     [](const auto& pfad, const auto&) { StickLinienLesen(pfad, Stickseite::Links, "halb", keineMeldung); }},
    {"Loeschen",
     [](const auto& pfad, const auto& bilder) { SchemaLoeschen(pfad, bilder, "S", keineMeldung); }},
};

class SchemaAbsturz : public testing::TestWithParam<Tat> {
protected:
    SchemaAbsturz() {
        std::filesystem::create_directory(bilder_);
        Schemabau schema(datei);
        schema.ungeglaettet();
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
            for (int i = 0; i < 8; ++i)
                schema.feld(seite, {20000, 0, i, 0}, "3");
        schema.anlegen();
        Schemabau(datei, "halb")
            .linien(Stickseite::Links, 1, {})
            .linien(Stickseite::Links, 7, {})
            .ohneKreuz()
            .anlegen();
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
            StickLinienLesen(datei.pfad(), seite, "S", keineMeldung);
        dateiSchreiben(bilder_ / "S0L.bmp", "Bild");
        anfang_ = dateiLesen(datei.pfad());
        vorher_ = datei.inhalt();
        tun();
        nachher_ = datei.inhalt();
        vonVorn();
    }

    void SetUp() override { ASSERT_NE(vorher_, nachher_); }

    void tun() const { GetParam().tun(datei.pfad(), bilder_.string() + "/"); }

    /// Whether the act has happened; fails when half of it has. Undoes it.
    bool istGeschehen() const {
        const auto stand = datei.inhalt();
        const bool geschehen = stand == nachher_;
        EXPECT_TRUE(geschehen || stand == vorher_) << "half of it";
        EXPECT_TRUE(geschehen || std::filesystem::exists(bilder_ / "S0L.bmp")) << "pictures go last";
        erwarteHeil(datei);
        vonVorn();
        return geschehen;
    }

    const Testdatenbank datei;

private:
    void vonVorn() const {
        dateiSchreiben(datei.pfad(), anfang_);
        dateiSchreiben(bilder_ / "S0L.bmp", "Bild");
    }

    std::filesystem::path bilder_ = datei.ordner() / "Bilder";
    std::string anfang_;
    std::vector<Tabellenbild> vorher_;
    std::vector<Tabellenbild> nachher_;
};

INSTANTIATE_TEST_SUITE_P(, SchemaAbsturz, testing::ValuesIn(TATEN),
                         [](const auto& fall) { return fall.param.name; });

} // namespace

TEST_P(SchemaAbsturz, AnJedemSchrittIstEsGanzOderGarNicht) {
    StoerVfs disk;
    std::vector<bool> geschehen;
    bool getoetet = true;
    for (int n = 1; getoetet && !HasFailure(); ++n) {
        SCOPED_TRACE("step " + std::to_string(n));
        getoetet = wurdeGetoetet(imKind([&] {
            disk.stoereAb(n, StoerVfs::Eingriff::Toeten);
            tun();
        }));
        geschehen.push_back(istGeschehen());
    }
    // It holds once the journal is gone, which is the last step of all.
    ASSERT_GT(geschehen.size(), 5U);
    EXPECT_TRUE(geschehen.back());
    geschehen.pop_back();
    EXPECT_THAT(geschehen, testing::Each(false));
}

TEST_P(SchemaAbsturz, ZuJederZeitIstEsGanzOderGarNicht) {
    std::mt19937 zufall(815);
    int mitten = 0;
    double dauer = DAUER_US;
    for (int i = 0; i < TOETUNGEN && !HasFailure(); ++i) {
        int rohr[2];
        ASSERT_EQ(pipe(rohr), 0);
        const pid_t kind = imKind([&] {
            [[maybe_unused]] const auto egal = write(rohr[1], "", 1); // it begins
            tun();
        });
        char zeichen = 0;
        ASSERT_EQ(read(rohr[0], &zeichen, 1), 1);
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % static_cast<unsigned>(dauer)));
        kill(kind, SIGKILL);
        const bool getoetet = wurdeGetoetet(kind);
        close(rohr[0]);
        close(rohr[1]);
        mitten += getoetet;
        dauer = std::max(dauer * (getoetet ? 1.1 : 0.8), 100.0);
        EXPECT_TRUE(istGeschehen() || getoetet);
    }
    EXPECT_GT(mitten, TOETUNGEN / 4);
}
