// SPDX-License-Identifier: GPL-3.0-or-later
// Death by SIGKILL, a power cut and a failing disk at each step of putting a good copy in the place of a
// damaged file: one of the two stands there, and the damaged one is put aside with its journal, never gone.
#include "store/files/Gamepaddatei.h"
#include "store/files/Gamepadtabelle.h"
#include "store/files/Sicherungen.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/store/strom/Mitschnitt.h"
#include "tests/store/strom/Stromprobe.h"

#include <gmock/gmock.h>

namespace fs = std::filesystem;

namespace {

constexpr const char* VORHER = "damaged";
constexpr const char* NACHHER = "good, the damaged one put aside";
const std::string KAPUTTES(9000, 'x');
const std::string JOURNAL(2000, 'j');

class SicherungStrom : public testing::TestWithParam<Gesichertes> {
protected:
    SicherungStrom() {
        EXPECT_TRUE(gamepadSpeichern(sicherungen.datei(Gesichertes::Achsendatei), leereGamepadtabelle()));
        constexpr Sicherungstag TAG{2026, 11, 22};
        sicherungen.sichern(TAG);
        gute = *sicherungen.neuesteGute(GetParam(), TAG);
        dateiSchreiben(datei, KAPUTTES);
        dateiSchreiben(datei + "-journal", JOURNAL);
    }

    void tun() const { sicherungen.zuruecksichern(GetParam(), gute); }

    std::string stand() const {
        const bool journal = fs::exists(datei + "-journal");
        if (liest(datei, KAPUTTES))
            return journal || hatAblage("-journal", JOURNAL) ? VORHER : "damaged, and its journal gone";
        if (!liest(datei, dateiLesen(gute.pfad)))
            return "neither of them";
        if (!hatAblage("", KAPUTTES) || !hatAblage("-journal", JOURNAL))
            return "good, and the damaged one gone";
        return journal ? "good, with a journal of the damaged one" : NACHHER;
    }

    Stromprobe probe() const {
        return {datenbank.ordner(),
                [this] {
                    tun();
                    return true;
                },
                [this] { return stand(); }};
    }

    const Testdatenbank datenbank;
    const Sicherungen sicherungen{datenbank.pfad(), (datenbank.ordner() / "Gamepad.xml").string()};
    const std::string datei = sicherungen.datei(GetParam());
    Sicherung gute;

private:
    static bool liest(const std::string& pfad, const std::string& inhalt) {
        return fs::exists(pfad) && dateiLesen(pfad) == inhalt;
    }
    bool hatAblage(const std::string& ende, const std::string& inhalt) const {
        for (const std::string nummer : {"", " 2", " 3"})
            if (liest(datei + ".beschädigt" + nummer + ende, inhalt))
                return true;
        return false;
    }
};

INSTANTIATE_TEST_SUITE_P(, SicherungStrom, testing::Values(Gesichertes::Datenbank, Gesichertes::Achsendatei),
                         [](const auto& fall) {
                             return fall.param == Gesichertes::Datenbank ? "Datenbank" : "Achsendatei";
                         });

} // namespace

TEST_P(SicherungStrom, AnJedemSchrittGetoetetStehtEinesDortUndKeinesIstFort) {
    const auto ordner = datenbank.ordner();
    const auto anfang = bildVon(ordner);
    std::vector<std::string> gesehen;
    bool getoetet = true;
    for (int n = 1; getoetet && !HasFailure(); ++n) {
        SCOPED_TRACE("step " + std::to_string(n));
        bildLegen(ordner, anfang);
        getoetet = wurdeGetoetet(imKind([&] {
            Mitschnitt mitschnitt(ordner);
            mitschnitt.sterben(n);
            tun();
        }));
        gesehen.push_back(stand());
        tun(); // again, as at the next start
        EXPECT_EQ(stand(), NACHHER);
    }
    ASSERT_GT(gesehen.size(), 6U);
    EXPECT_EQ(gesehen.front(), VORHER);
    EXPECT_EQ(gesehen.back(), NACHHER);
    EXPECT_THAT(gesehen, testing::Each(testing::AnyOf(VORHER, NACHHER)));
}

TEST_P(SicherungStrom, NachEinemStromausfallStehtEinesDortUndKeinesIstFort) {
    erwarteGanzOderGarNicht(probe());
}

// Also where the file system gives no second name, and the damaged one is copied.
TEST_P(SicherungStrom, WasScheitertWirdGesagtUndNichtsIstFort) {
    erwarteGesagtUndNichtsVerloren(probe());
}

TEST_P(SicherungStrom, AuchDieKopieDesBeschaedigtenKommtDurchEinenStromausfall) {
    const OhneVerknuepfungen dateisystem;
    erwarteGanzOderGarNicht(probe());
}
