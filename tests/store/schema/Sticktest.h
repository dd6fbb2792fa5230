// SPDX-License-Identifier: GPL-3.0-or-later
// What tests of the stick tables stand on: each of them runs for the left and for the right stick.
#pragma once

#include "base/Stickseite.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <string>

/// Both sticks go through every test.
class StickTest : public testing::TestWithParam<std::string> {
protected:
    Stickseite seite() const { return stickseiteVon(GetParam()); }
    std::string zusatz() const { return GetParam() == "frmJust" ? "" : "R"; }
    std::string linientabelle() const { return "tblStick" + zusatz(); }
    std::string aktionstabelle() const { return "tblStickAktion" + zusatz(); }

    /// Runs `arbeit`, expects its error and that the file has not changed.
    template <class Arbeit> void erwarteFehlerOhneWirkung(int nummer, Arbeit&& arbeit) const {
        const auto vorher = datei.inhalt();
        EXPECT_EQ(fehlernummer(arbeit), nummer);
        EXPECT_EQ(datei.inhalt(), vorher);
    }

    Testdatenbank datei;
};

inline std::string zielFormular(const testing::TestParamInfo<std::string>& fall) {
    return fall.param;
}
