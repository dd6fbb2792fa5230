// SPDX-License-Identifier: GPL-3.0-or-later
// A kill while a run is added to what was counted.
#include "store/files/Streubilddateien.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

TEST(StreubilddateienAbsturz, NachEinerToetungIstEinLaufGanzGezaehltOderGarNicht) {
    const Testordner ordner;
    const Streubilddateien dateien(ordner.pfad() / "Streubilder");
    std::uint32_t vorher = 0;
    toetenUndPruefen(
        [&](int) {
            Streudaten lauf;
            lauf.takte.resize(Streudaten::RASTERFELDER);
            lauf.takte.front() = lauf.takte.back() = 1;
            if (!dateien.dazuzaehlen("S", Stickseite::Rechts, 2, lauf))
                throw std::runtime_error("not kept");
        },
        [&, naechste = 1](const Fortschritt& stand) mutable {
            const auto takte = dateien.laden("S", Stickseite::Rechts, 2).takte;
            const auto jetzt = takte.empty() ? 0 : takte.front();
            EXPECT_TRUE(takte.empty() || takte.back() == jetzt);
            // How many of them have come to their end, and perhaps the one that was killed.
            const auto fertige = static_cast<std::uint32_t>(stand.fertig - naechste + 1);
            EXPECT_TRUE(jetzt == vorher + fertige || jetzt == vorher + fertige + 1)
                << vorher << " " << fertige << " " << jetzt;
            EXPECT_FALSE(
                std::filesystem::exists(dateien.pfad("S", Stickseite::Rechts, 2).string() + ".beschaedigt"));
            vorher = jetzt;
            naechste = stand.begonnen + 1;
        });
    EXPECT_GT(vorher, 50U);
}
