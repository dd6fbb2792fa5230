// SPDX-License-Identifier: GPL-3.0-or-later
// Death by SIGKILL, a power cut and a failing disk at each step of handing a Schema on, taking it up,
// renaming and doubling it: rows, pictures and axes are all there or none of them, and nothing is left over.
#include "store/schema/Schemadatei.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Schemaplatzprobe.h"
#include "tests/store/strom/Mitschnitt.h"
#include "tests/store/strom/Stromprobe.h"

#include <gmock/gmock.h>

namespace fs = std::filesystem;

namespace {

struct Uebernahmetat {
    std::string name;
    std::function<void(const Schemaplatz& platz)> tun;
};
void PrintTo(const Uebernahmetat& tat, std::ostream* strom) {
    *strom << tat.name;
}

Schemadaten kleineDaten(unsigned saat) {
    auto daten = Zufallsschema(saat).daten();
    daten.achsen = Gamepadzeile{{"dwXPos", "ry"}, {"Schubregler", "4"}};
    return daten;
}

std::string bild(std::string_view endung) {
    return "Bild " + std::string(endung);
}

void weitergeben(const Schemaplatz& platz) {
    Schemapaket paket{"S", "Programm", {}, {{0, Stickseite::Links, std::string(3000, 'p')}}};
    auto datenbank = OpenDatabase(platz.datenbankPfad);
    paket.daten = schemadatenLesen(datenbank, "S");
    paket.daten.achsen = achsenzeileLesen(platz.gamepadXml, "S");
    schemadateiSchreiben(platz.bilderPfad + "S.schema", paket);
}

std::vector<Uebernahmetat> taten() {
    return {
        {"Weitergeben", weitergeben},
        {"Aufnehmen",
         [](const auto& platz) {
             schemaAufnehmen(platz, "Neu", kleineDaten(3), {"0L.bmp", "2R.bmp"}, bild);
         }},
        {"Umbenennen", [](const auto& platz) { schemaUmbenennen(platz, "S", "Neu"); }},
        {"Verdoppeln", [](const auto& platz) { schemaVerdoppeln(platz, "S", "Neu"); }},
    };
}

class UebernahmeStrom : public testing::TestWithParam<Uebernahmetat> {
protected:
    UebernahmeStrom() {
        schemaAufnehmen(ort.platz(), "S", kleineDaten(1), {"0L.bmp", "1R.bmp"}, bild);
        schemaAufnehmen(ort.platz(), "T", kleineDaten(2), {"0L.bmp"}, bild);
    }

    void tun() const { GetParam().tun(ort.platz()); }

    /// As the program finds it at its next start.
    std::string stand() const {
        try {
            beiwerkAufraeumen(ort.platz());
            std::string text = ort.stand();
            if (fs::exists(ort.datenbank.pfad() + ".vorhaben"))
                text += "a note is left";
            for (const auto& zeile : ort.datenbank.zeilen("PRAGMA integrity_check"))
                text += zeile.at(0);
            return text;
        } catch (const std::exception& fehler) {
            return std::string("not to be read: ") + fehler.what();
        }
    }

    Stromprobe probe() const {
        return {ort.datenbank.ordner(),
                [this] {
                    tun();
                    return true;
                },
                [this] { return stand(); }};
    }

    const Schemaplatzprobe ort;
};

INSTANTIATE_TEST_SUITE_P(, UebernahmeStrom, testing::ValuesIn(taten()),
                         [](const auto& fall) { return fall.param.name; });

} // namespace

TEST_P(UebernahmeStrom, AnJedemSchrittGetoetetIstEsGanzOderGarNicht) {
    const auto ordner = ort.datenbank.ordner();
    const auto anfang = bildVon(ordner);
    const auto vorher = stand();
    tun();
    const auto nachher = stand();
    ASSERT_NE(vorher, nachher);
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
    EXPECT_GT(nachherGesehen, GetParam().name == "Weitergeben" ? 0 : 1); // the note goes last
}

TEST_P(UebernahmeStrom, NachEinemStromausfallIstEsGanzOderGarNicht) {
    erwarteGanzOderGarNicht(probe());
}

TEST_P(UebernahmeStrom, WasScheitertWirdGesagtUndAendertNichts) {
    erwarteGesagtUndNichtsVerloren(probe());
}

// While it dies another copy may be at work: what that one has noted is not this one's to clear away.
TEST(UebernahmeStromEinzeln, ZweiKopienZugleichLassenNichtsLiegen) {
    const Schemaplatzprobe ort;
    schemaAufnehmen(ort.platz(), "S", kleineDaten(1), {"0L.bmp", "1R.bmp"}, bild);
    const auto kopie = [&](const std::string& name) {
        return imKind([&ort, name] {
            for (int i = 0; i < 5; ++i) {
                schemaVerdoppeln(ort.platz(), "S", name);
                schemaUmbenennen(ort.platz(), name, name + std::to_string(i));
            }
        });
    };
    std::vector<pid_t> kinder;
    for (const auto* name : {"A", "B"})
        kinder.push_back(kopie(name));
    for (const auto kind : kinder)
        EXPECT_FALSE(wurdeGetoetet(kind));
    EXPECT_EQ(ort.datenbank.zeilen("SELECT count(*) FROM tblTastatur"), Tabellenbild{{"11"}});
    EXPECT_EQ(namenIn(ort.bilder()).size(), 22U);
    EXPECT_EQ(gamepadLesen(ort.platz().gamepadXml)->zeilen.size(), 11U);
    EXPECT_FALSE(fs::exists(ort.datenbank.pfad() + ".vorhaben"));
}
