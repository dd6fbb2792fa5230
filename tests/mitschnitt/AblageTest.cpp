// SPDX-License-Identifier: GPL-3.0-or-later
// Names and files of records.
#include "editors/run/Mitschnittablage.h"
#include "engine/mitschnitt/Mitschnitttext.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace {

namespace fs = std::filesystem;

const std::string ZEIT = "2026-11-22 11.36.05";

/// While it lives, no file may grow beyond so many bytes: what a full disk is to who writes.
class Schreibgrenze {
public:
    explicit Schreibgrenze(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &vorher_);
        const rlimit grenze{bytes, vorher_.rlim_max};
        signal_ = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &grenze);
    }
    ~Schreibgrenze() {
        setrlimit(RLIMIT_FSIZE, &vorher_);
        std::signal(SIGXFSZ, signal_);
    }
    Schreibgrenze(const Schreibgrenze&) = delete;
    Schreibgrenze& operator=(const Schreibgrenze&) = delete;

private:
    rlimit vorher_{};
    void (*signal_)(int) = nullptr;
};

class Ablage : public testing::Test {
protected:
    Mitschnittablauf ablegen(const std::string& inhalt) {
        return mitschnittAblegen(mitschnitte().string(), "a.spur", inhalt);
    }
    fs::path mitschnitte() const { return ordner.pfad() / "tief" / "Mitschnitte"; }

    Testordner ordner;
};

} // namespace

TEST_F(Ablage, DerLetzteMitschnittIstDerNeuesteDiesesSchemas) {
    const auto gespeichert = [&](const std::string& schema, const std::string& zeitpunkt) {
        const auto ablauf = mitschnittAblegen(mitschnitte().string(), mitschnittname(schema, zeitpunkt),
                                              mitschnittkennung(schema) + "irgendwann\n");
        return Mitschnittdatei{(mitschnitte() / ablauf.name.toStdString()).string(), zeitpunkt};
    };
    const auto letzter = [&](const std::string& schema) {
        return letzterMitschnitt(mitschnitte().string(), schema);
    };
    EXPECT_EQ(letzter("A/B"), std::nullopt) << "no folder";
    gespeichert("A/B", "2026-11-22 11.36.05");
    const auto neuester = gespeichert("A/B", "2026-12-01 00.00.00");
    gespeichert("A/B", "2026-11-30 23.59.59");
    const auto gleichnamiges = gespeichert("A_B", "2026-12-02 00.00.00");
    const auto laengeres = gespeichert("A/B 2027-01-01 00.00.00", "2026-11-22 11.36.05");
    EXPECT_EQ(letzter("A/B"), neuester);
    EXPECT_EQ(letzter("A_B"), gleichnamiges);
    EXPECT_EQ(letzter("A/B 2027-01-01 00.00.00"), laengeres);
    EXPECT_EQ(letzter("A"), std::nullopt);
    const auto zweiter = gespeichert("A/B", "2026-12-01 00.00.00");
    EXPECT_NE(zweiter, neuester);
    EXPECT_EQ(letzter("A/B"), zweiter) << "of those of one second the last one";
    dateiSchreiben(mitschnitte() / "A_B 2026-12-03 00.00.00.spur", "from elsewhere");
    dateiSchreiben(mitschnitte() / "A_B 2026-12-03 00.00.00.spur.neu", mitschnittkennung("A/B"));
    dateiSchreiben(mitschnitte() / "A_B irgendwann.spur", mitschnittkennung("A/B"));
    fs::create_directory(mitschnitte() / "A_B 2026-12-04 00.00.00.spur");
    EXPECT_EQ(letzter("A/B"), zweiter);
}

TEST(Mitschnittname, IstDerDesSchemasMitDerZeit) {
    EXPECT_EQ(mitschnittname("Mein Spiel", ZEIT), "Mein Spiel 2026-11-22 11.36.05.spur");
    EXPECT_EQ(mitschnittname("Größe", ZEIT), "Größe 2026-11-22 11.36.05.spur");
}

TEST(Mitschnittname, VerlaesstKeinenOrdnerUndVerstecktSichNicht) {
    EXPECT_EQ(mitschnittname("../../etc/x", ZEIT), "_.._.._etc_x " + ZEIT + ".spur");
    EXPECT_EQ(mitschnittname("C:\\a|b*?\"<>", ZEIT), "C__a_b_____ " + ZEIT + ".spur");
    EXPECT_EQ(mitschnittname("a\nb\x01", ZEIT), "a_b_ " + ZEIT + ".spur");
    EXPECT_EQ(mitschnittname("-rf", ZEIT), "_-rf " + ZEIT + ".spur");
    EXPECT_EQ(mitschnittname("", ZEIT), "_ " + ZEIT + ".spur");
    EXPECT_EQ(mitschnittname(".x", ZEIT), "_.x " + ZEIT + ".spur");
    EXPECT_EQ(mitschnittname("a\x7f"
                             "b",
                             ZEIT),
              "a_b " + ZEIT + ".spur");
}

TEST(Mitschnittname, EinLangerEndetNichtMittenImBuchstaben) {
    std::string lang = "x";
    for (int i = 0; i < 200; ++i)
        lang += "ä";
    const auto name = mitschnittname(lang, ZEIT);
    EXPECT_LT(name.size(), 200U);
    EXPECT_EQ(name, lang.substr(0, 159) + " " + ZEIT + ".spur");
}

TEST_F(Ablage, LegtDenOrdnerAnUndErsetztNie) {
    EXPECT_EQ(ablegen("eins").name, "a.spur");
    EXPECT_EQ(ablegen("zwei").name, "a (2).spur");
    EXPECT_EQ(ablegen("drei").name, "a (3).spur");
    EXPECT_EQ(dateiLesen(mitschnitte() / "a.spur"), "eins");
    EXPECT_EQ(dateiLesen(mitschnitte() / "a (2).spur"), "zwei");
    EXPECT_EQ(dateiLesen(mitschnitte() / "a (3).spur"), "drei");
    EXPECT_EQ(namenIn(mitschnitte()).size(), 3U);
}

TEST_F(Ablage, EinOrdnerDerNichtsNimmtWirdGesagt) {
    fs::create_directories(mitschnitte());
    fs::permissions(mitschnitte(), fs::perms(0555));
    Mitschnittablauf ablauf;
    {
        const AlsNiemand niemand;
        ablauf = ablegen("eins");
    }
    EXPECT_EQ(ablauf.fehler, "Der Mitschnitt ist nicht gespeichert: In den Ordner „Mitschnitte“ darf nicht "
                             "geschrieben werden.");
    EXPECT_EQ(ablauf.name, "");
    EXPECT_EQ(namenIn(mitschnitte()), std::vector<std::string>{});
}

TEST_F(Ablage, EinVollerDatentraegerWirdGesagtUndLaesstNichtsLiegen) {
    Mitschnittablauf ablauf;
    {
        const Schreibgrenze grenze(100);
        ablauf = ablegen(std::string(1000, 'x'));
    }
    EXPECT_TRUE(ablauf.fehler.startsWith("Der Mitschnitt ist nicht gespeichert: "))
        << ablauf.fehler.toStdString();
    EXPECT_EQ(ablauf.name, "");
    EXPECT_EQ(namenIn(mitschnitte()), std::vector<std::string>{});
}

TEST_F(Ablage, EineDateiAnStelleDesOrdnersWirdGesagt) {
    fs::create_directories(mitschnitte().parent_path());
    dateiSchreiben(mitschnitte(), "nichts");
    EXPECT_EQ(ablegen("eins").fehler, "Der Mitschnitt ist nicht gespeichert: „Mitschnitte“ ist kein Ordner.");
    EXPECT_EQ(dateiLesen(mitschnitte()), "nichts");
}
