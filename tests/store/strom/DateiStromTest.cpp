// SPDX-License-Identifier: GPL-3.0-or-later
// A power cut and a failing disk at each step of all that replaces, swaps and removes a file.
#include "store/files/Achsendatei.h"
#include "store/files/Bilddatei.h"
#include "store/files/Dateiersatz.h"
#include "store/files/Gamepadtabelle.h"
#include "store/files/Streubilddateien.h"
#include "store/schema/Schemaloeschen.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/store/strom/Stromprobe.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// What the program has left beside a file that it was about to replace is none of the user's.
bool istRest(const std::string& name) {
    return name.find(".neu.") != std::string::npos;
}

/// The files of a folder with what they hold, without what an interrupted replacement left.
std::string ordnerstand(const fs::path& ordner) {
    auto namen = namenIn(ordner);
    std::erase_if(namen, istRest);
    std::ranges::sort(namen);
    std::string stand;
    for (const auto& name : namen)
        stand += name + "=" + dateiLesen(ordner / name) + "\n";
    return stand;
}

class DateiStrom : public testing::Test {
protected:
    Stromprobe probe(const std::function<bool()>& tat) const {
        return {ordner.pfad(), tat, [this] { return ordnerstand(ordner.pfad()); }};
    }

    const Testordner ordner;
    const fs::path gamepad = ordner.pfad() / "Gamepad.xml";
    const std::string schema = "S";
};

const std::string GROSSES_BILD(9000, 'B');

} // namespace

// --- Gamepad.xml ---

namespace {

using Achsentat = std::function<bool(Achsendatei&)>;

class AchsenStrom : public DateiStrom, public testing::WithParamInterface<std::pair<const char*, Achsentat>> {
protected:
    AchsenStrom() {
        dateiSchreiben(gamepad, gamepadAlsXml(leereGamepadtabelle()).value());
        for (const std::string name : {"R", "S"}) {
            Achsendatei achsen(gamepad, name);
            achsen.AchsenLaden();
            achsen.GamepadSchreiben(std::string(600, '1'));
        }
    }
    bool tun() const {
        Achsendatei achsen(gamepad, schema);
        achsen.AchsenLaden();
        return GetParam().second(achsen);
    }
};

INSTANTIATE_TEST_SUITE_P(, AchsenStrom,
                         testing::Values(
                             std::pair<const char*, Achsentat>{
                                 "DieAuswahl",
                                 [](auto& achsen) {
                                     return achsen.AchsenUebernehmen({{{"Z-Achse", ""}, {}, {}, {}, {}, {}}});
                                 }},
                             std::pair<const char*, Achsentat>{
                                 "DerSchubregler",
                                 [](auto& achsen) { return achsen.GamepadSchreiben(std::string(900, '2')); }},
                             std::pair<const char*, Achsentat>{
                                 "DieLoeschung", [](auto& achsen) { return achsen.GamepadLoeschen(); }}),
                         [](const auto& fall) { return std::string(fall.param.first); });

} // namespace

TEST_P(AchsenStrom, NachEinemStromausfallIstEsGanzOderGarNicht) {
    erwarteGanzOderGarNicht(probe([&] { return tun(); }));
}

TEST_P(AchsenStrom, WasScheitertWirdGesagtUndAendertNichts) {
    erwarteGesagtUndNichtsVerloren(probe([&] { return tun(); }));
}

TEST_F(DateiStrom, DieErsteGamepadXmlIstGanzOderGarNichtDa) {
    const auto anlegen = probe([&] {
        Achsendatei(gamepad, schema).GamepadAnlegen();
        return fs::exists(gamepad);
    });
    erwarteGanzOderGarNicht(anlegen);
}

// --- any file ---

TEST_F(DateiStrom, EinErsatzIstGanzOderGarNicht) {
    for (const bool da : {false, true}) {
        if (da)
            dateiSchreiben(gamepad, std::string(5000, 'a'));
        const auto ersatz = probe([&] { return dateiErsetzen(gamepad, std::string(7000, 'n')); });
        erwarteGanzOderGarNicht(ersatz);
        erwarteGesagtUndNichtsVerloren(ersatz);
    }
}

TEST_F(DateiStrom, WasDavorZurueckkamBleibtWaehrendDesNaechsten) {
    dateiSchreiben(gamepad, "alt");
    auto ersatz = probe([&] { return dateiErsetzen(gamepad, std::string(5000, 'z')); });
    ersatz.zuvor = [&] { EXPECT_TRUE(dateiErsetzen(gamepad, std::string(7000, 'e'))); };
    erwarteGanzOderGarNicht(ersatz);
}

TEST_F(DateiStrom, WasEinStromausfallLiegenLiessRaeumtDerNaechsteErsatz) {
    bool lagEiner = false;
    const auto probe = Stromprobe{ordner.pfad(), [&] { return dateiErsetzen(gamepad, GROSSES_BILD); },
                                  [&] {
                                      const std::string stand = ordnerstand(ordner.pfad());
                                      lagEiner |= std::ranges::any_of(namenIn(ordner.pfad()), istRest);
                                      EXPECT_TRUE(dateiErsetzen(gamepad, "danach"));
                                      EXPECT_THAT(namenIn(ordner.pfad()), ElementsAre("Gamepad.xml"));
                                      return stand;
                                  }};
    stromausfaelle(probe);
    EXPECT_TRUE(lagEiner);
}

// --- pictures ---

TEST_F(DateiStrom, EinBildIstGanzOderGarNicht) {
    for (const bool da : {false, true}) {
        if (da)
            dateiSchreiben(ordner.pfad() / "S0L.BMP", "altes Bild");
        const auto bild = probe([&] { return bilddateiSchreiben(ordner.pfad(), "S0L.bmp", GROSSES_BILD); });
        erwarteGanzOderGarNicht(bild);
        erwarteGesagtUndNichtsVerloren(bild);
    }
}

TEST_F(DateiStrom, GetauschteBilderSindBeideGetauschtOderKeines) {
    dateiSchreiben(ordner.pfad() / "S0L.bmp", "links");
    for (const bool beide : {false, true}) {
        if (beide)
            dateiSchreiben(ordner.pfad() / "S0R.bmp", "rechts");
        const auto tausch = probe([&] { return bilddateienTauschen(ordner.pfad(), "S0L.bmp", "S0R.bmp"); });
        erwarteGanzOderGarNicht(tausch);
        erwarteGesagtUndNichtsVerloren(tausch);
    }
}

// As the form does it that shows them: the files change places, then each is written with what it shows. Both
// pictures are there all the time.
TEST_F(DateiStrom, BeimTauschGehtKeinBildVerloren) {
    dateiSchreiben(ordner.pfad() / "S0L.bmp", "links");
    dateiSchreiben(ordner.pfad() / "S0R.bmp", "rechts");
    const auto schreiben = [&](const char* name, const char* inhalt) {
        return bilddateiSchreiben(ordner.pfad(), name, inhalt);
    };
    const Stromprobe probe{ordner.pfad(),
                           [&] {
                               return bilddateienTauschen(ordner.pfad(), "S0L.bmp", "S0R.bmp") &&
                                      schreiben("S0L.bmp", "rechts") && schreiben("S0R.bmp", "links");
                           },
                           [&] { return ordnerstand(ordner.pfad()); }};
    erwarteGanzOderGarNicht(probe);
}

TEST_F(DateiStrom, GeloeschteBilderKommenNichtWiederUndLassenNichtsLiegen) {
    constexpr std::size_t DAVON_BLEIBT = 1;
    constexpr std::size_t ALLE = 4;
    for (const auto* name : {"S0L.bmp", "S2R.BMP", "S1L.bmp.neu.77.0", "anderes.bmp"})
        dateiSchreiben(ordner.pfad() / name, name);
    const Stromprobe probe{ordner.pfad(),
                           [&] {
                               StickBilderLoeschen(ordner.pfad().string() + "/", "S");
                               return true;
                           },
                           [&]() -> std::string {
                               const auto anzahl = namenIn(ordner.pfad()).size();
                               return anzahl == ALLE ? "alle" : anzahl > DAVON_BLEIBT ? "manche" : "keines";
                           },
                           {"manche"}};
    erwarteGanzOderGarNicht(probe);
    StickBilderLoeschen(ordner.pfad().string() + "/", "S");
    EXPECT_THAT(namenIn(ordner.pfad()), ElementsAre("anderes.bmp"));
}

// --- what runs have counted ---

namespace {

class StreuStrom : public DateiStrom {
protected:
    StreuStrom() {
        einLauf.takte.resize(Streudaten::RASTERFELDER);
        einLauf.takte[7] = 1;
        einLauf.weg = {{7, 1}};
    }
    bool dazu() const { return dateien.dazuzaehlen(schema, Stickseite::Links, 0, einLauf); }
    std::string gezaehltes() const {
        const auto takte = dateien.laden(schema, Stickseite::Links, 0).takte;
        return takte.empty() ? "nothing" : std::to_string(takte[7]);
    }
    /// What the program finds, and whether a damaged file is still there, under whichever name.
    Stromprobe zaehlprobe(const std::function<bool()>& tat) const {
        return {ordner.pfad(), tat, [this] {
                    const auto namen = namenIn(ordner.pfad());
                    const bool schaden = std::ranges::any_of(namen, [&](const auto& name) {
                        return dateiLesen(ordner.pfad() / name) == "Schaden";
                    });
                    return gezaehltes() + (schaden ? " and damage" : "");
                }};
    }

    const Streubilddateien dateien{ordner.pfad()};
    Streudaten einLauf;
};

} // namespace

TEST_F(StreuStrom, EinLaufIstGanzDazugezaehltOderGarNicht) {
    for (const char* vorher : {"nothing", "1"}) {
        ASSERT_EQ(gezaehltes(), vorher);
        erwarteGanzOderGarNicht(zaehlprobe([&] { return dazu(); }));
        erwarteGesagtUndNichtsVerloren(zaehlprobe([&] { return dazu(); }));
        ASSERT_TRUE(dazu());
    }
}

// What a folder holds that is itself not safe is gone with it.
TEST_F(StreuStrom, DerErsteLaufBleibtMitSeinemOrdner) {
    const Streubilddateien erste{ordner.pfad() / "Streubilder"};
    erwarteGanzOderGarNicht(
        {ordner.pfad(), [&] { return erste.dazuzaehlen(schema, Stickseite::Links, 0, einLauf); },
         [&] {
             return std::string(erste.laden(schema, Stickseite::Links, 0) == einLauf ? "1" : "nothing");
         }});
}

TEST_F(StreuStrom, EinBeschaedigtesGehtDabeiNichtVerloren) {
    dateiSchreiben(dateien.pfad(schema, Stickseite::Links, 0), "Schaden");
    erwarteGanzOderGarNicht(zaehlprobe([&] { return dazu(); }));
}

TEST_F(StreuStrom, WasZurueckgesetztIstKommtNichtWieder) {
    ASSERT_TRUE(dazu());
    const auto weg = zaehlprobe([&] { return dateien.zuruecksetzen(schema, Stickseite::Links, 0); });
    erwarteGanzOderGarNicht(weg);
    erwarteGesagtUndNichtsVerloren(weg);
}

TEST_F(StreuStrom, GeloeschtesKommtNichtWieder) {
    ASSERT_TRUE(dazu());
    ASSERT_TRUE(dateien.dazuzaehlen(schema, Stickseite::Rechts, 2, einLauf));
    dateiSchreiben(dateien.pfad(schema, Stickseite::Links, 1).string() + ".neu.77.0", "angefangen");
    const Stromprobe probe{ordner.pfad(),
                           [&] {
                               dateien.loeschen(schema);
                               return true;
                           },
                           [&]() -> std::string {
                               const auto anzahl = namenIn(ordner.pfad()).size();
                               return anzahl == 3 ? "all" : anzahl > 0 ? "some" : "none";
                           },
                           {"some"}};
    erwarteGanzOderGarNicht(probe);
}

// --- what the model finds ---

namespace {

/// Replaces a file as one would without thinking of the disk.
bool einfachErsetzen(const fs::path& pfad, bool sichern) {
    const std::string neue = pfad.string() + ".neu.1.0";
    const int datei = open(neue.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const std::string inhalt(3000, 'n');
    bool gut = write(datei, inhalt.data(), inhalt.size()) == 3000;
    if (sichern)
        gut = gut && fsync(datei) == 0;
    close(datei);
    return gut && rename(neue.c_str(), pfad.c_str()) == 0;
}

} // namespace

TEST_F(DateiStrom, DasModellFindetEinenErsatzOhneGesichertenInhalt) {
    dateiSchreiben(gamepad, "alt");
    EXPECT_THAT(stromausfaelle(probe([&] { return einfachErsetzen(gamepad, false); })).fehler,
                Contains(HasSubstr("half")));
}

TEST_F(DateiStrom, DasModellFindetEinenErsatzOhneGesichertenOrdner) {
    dateiSchreiben(gamepad, "alt");
    EXPECT_THAT(stromausfaelle(probe([&] { return einfachErsetzen(gamepad, true); })).fehler,
                testing::AllOf(testing::SizeIs(testing::Gt(0U)),
                               testing::Each(HasSubstr("what has come back is not there"))));
}
