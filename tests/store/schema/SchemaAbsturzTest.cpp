// SPDX-License-Identifier: GPL-3.0-or-later
// Death by SIGKILL at each step of the disk and at any time of what the user does to a Schema: what is left
// is the state before or after the whole of it.
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/StoerVfs.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/store/schema/Schematat.h"

#include <gmock/gmock.h>

#include <chrono>
#include <random>
#include <thread>

using testing::ElementsAre;

namespace {

constexpr double DAUER_US = 5000; // about as long as an act takes; corrected as it is seen

void erwarteHeil(const Testdatenbank& datei) {
    EXPECT_THAT(datei.zeilen("PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
}

class SchemaAbsturz : public testing::TestWithParam<Schematat> {
protected:
    SchemaAbsturz() {
        std::filesystem::create_directory(bilder_);
        schemataLegen(datei);
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

INSTANTIATE_TEST_SUITE_P(, SchemaAbsturz, testing::ValuesIn(grosseTaten()),
                         [](const auto& fall) { return fall.param.name; });
INSTANTIATE_TEST_SUITE_P(Schritte, SchemaAbsturz, testing::ValuesIn(schritttaten()),
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
