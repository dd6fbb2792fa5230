// SPDX-License-Identifier: GPL-3.0-or-later
// Death by SIGKILL, a power cut and a failing disk at each step of deleting a Schema and of giving it back:
// rows, pictures, axes and counts are all there or none of them, and nothing is left over.
#include "store/files/Streubilddateien.h"
#include "store/schema/Schemaloeschen.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Schemaplatzprobe.h"
#include "tests/store/strom/Mitschnitt.h"
#include "tests/store/strom/Stromprobe.h"

#include <gmock/gmock.h>

namespace fs = std::filesystem;

namespace {

void stumm(std::string_view) {}

class RueckgabeStrom : public testing::TestWithParam<bool> {
protected:
    RueckgabeStrom() {
        for (const auto* name : {"S", "T"}) {
            auto daten = Zufallsschema(7).daten();
            daten.achsen = Gamepadzeile{{"dwXPos", "ry"}, {"Schubregler", "4"}};
            schemaAufnehmen(ort.platz(), name, daten, {"0L.bmp", "1R.bmp"},
                            [](std::string_view endung) { return "Bild " + std::string(endung); });
            Streudaten streu;
            streu.achsen[0].ruhe[3] = 5;
            EXPECT_TRUE(Streubilddateien(streubildordner(ort.datenbank.pfad()))
                            .speichern(name, Stickseite::Links, 0, streu));
        }
        ganz_ = stand();
        if (GetParam())
            SchemaLoeschen(ort.platz(), "S", stumm, {}, &geloeschtes_);
    }

    /// Deletes, or gives back what was deleted.
    void tun() {
        if (GetParam())
            geloeschtes_.zurueckgeben();
        else
            SchemaLoeschen(ort.platz(), "S", stumm);
    }

    /// As the program finds it at its next start.
    std::string stand() const {
        try {
            beiwerkAufraeumen(ort.platz());
            std::string text = ort.stand();
            const auto ordner = streubildordner(ort.datenbank.pfad());
            auto namen = fs::exists(ordner) ? namenIn(ordner) : std::vector<std::string>();
            std::erase_if(namen, [](const auto& name) { return name.find(".neu.") != std::string::npos; });
            std::ranges::sort(namen);
            for (const auto& name : namen)
                text += name + "=" + dateiLesen(ordner / name) + "\n";
            if (fs::exists(ort.datenbank.pfad() + ".vorhaben"))
                text += "a note is left";
            for (const auto& zeile : ort.datenbank.zeilen("PRAGMA integrity_check"))
                text += zeile.at(0);
            return text;
        } catch (const std::exception& fehler) {
            return std::string("not to be read: ") + fehler.what();
        }
    }

    Stromprobe probe() {
        return {ort.datenbank.ordner(),
                [this] {
                    tun();
                    return true;
                },
                [this] { return stand(); }};
    }

    const Schemaplatzprobe ort;
    std::string ganz_;

private:
    GeloeschtesSchema geloeschtes_;
};

INSTANTIATE_TEST_SUITE_P(, RueckgabeStrom, testing::Bool(),
                         [](const auto& fall) { return fall.param ? "Zurueckgeben" : "Loeschen"; });

} // namespace

TEST_P(RueckgabeStrom, AnJedemSchrittGetoetetIstEsGanzOderGarNicht) {
    const auto ordner = ort.datenbank.ordner();
    const auto anfang = bildVon(ordner);
    const auto vorher = stand();
    tun();
    const auto nachher = stand();
    ASSERT_NE(vorher, nachher);
    ASSERT_EQ(GetParam() ? nachher : vorher, ganz_);
    int vorherGesehen = 0;
    int nachherGesehen = 0;
    bool getoetet = true;
    for (int n = 1; getoetet && !HasFailure(); ++n) {
        SCOPED_TRACE("step " + std::to_string(n));
        bildLegen(ordner, anfang);
        getoetet = wurdeGetoetet(imKind([&] {
            Mitschnitt mitschnitt(ordner);
            mitschnitt.sterben(n);
            tun();
        }));
        const auto ist = stand();
        EXPECT_TRUE(ist == vorher || ist == nachher) << "half of it: " << ist;
        EXPECT_TRUE(getoetet || ist == nachher);
        EXPECT_TRUE(nachherGesehen == 0 || ist == nachher) << "done, and then not";
        ++(ist == nachher ? nachherGesehen : vorherGesehen);
    }
    EXPECT_GT(vorherGesehen, 3);
    EXPECT_GT(nachherGesehen, 1); // the note goes last
}

TEST_P(RueckgabeStrom, NachEinemStromausfallIstEsGanzOderGarNicht) {
    erwarteGanzOderGarNicht(probe());
}

TEST_P(RueckgabeStrom, WasScheitertWirdGesagtUndAendertNichts) {
    erwarteGesagtUndNichtsVerloren(probe());
}
