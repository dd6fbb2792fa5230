// SPDX-License-Identifier: GPL-3.0-or-later
// The main form on a database that is not what it should be: told in one box, changed in nothing.
#include "editors/main/Sicherungsdienst.h"
#include "store/files/Achsendatei.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Dateirechte.h"

#include <QComboBox>
#include <QLineEdit>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>

namespace fs = std::filesystem;

namespace {

class FrmHauptDatenbank : public Formtest {
protected:
    QPushButton& knopf(int index) {
        return control<QPushButton>(haupt(), QString("Command1(%1)").arg(index));
    }
    QComboBox& combo() { return control<QComboBox>(haupt(), "Combo1"); }
    /// "Schema neu", a name, "Schema Speichern".
    void schemaNeu(const QString& name) {
        knopf(2).click();
        combo().lineEdit()->setText(name);
        knopf(2).click();
    }
    void stempeln(const std::string& programm, int fassung) {
        datenbank_.sql("PRAGMA application_id = " + programm +
                       "; PRAGMA user_version = " + std::to_string(fassung));
    }
};

const std::string EIGENES_PROGRAMM = "1196452657";
const std::string FREMDES_PROGRAMM = "252006673";

} // namespace

// --- versions ---

TEST_F(FrmHauptDatenbank, EineDerEigenenFassungOderOhneStempelKommtOhneWort) {
    Schemabau(datenbank_).anlegen();
    for (const auto& [programm, fassung] : {std::pair{EIGENES_PROGRAMM, 1}, std::pair{std::string("0"), 0}}) {
        stempeln(programm, fassung);
        Boxleser boxen;
        starten();
        EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
        EXPECT_EQ(combo().count(), 1);
    }
}

TEST_F(FrmHauptDatenbank, EinNeuesSchemaStempeltEineOhneStempel) {
    stempeln("0", 0);
    starten();
    EXPECT_EQ(datenbank_.zeilen("PRAGMA application_id"), (Tabellenbild{{"0"}}));
    Boxleser boxen;
    schemaNeu("Neu");
    EXPECT_EQ(datenbank_.zeilen("PRAGMA application_id"), Tabellenbild{{EIGENES_PROGRAMM}});
    EXPECT_EQ(datenbank_.zeilen("PRAGMA user_version"), (Tabellenbild{{"1"}}));
}

TEST_F(FrmHauptDatenbank, EineNeuereFassungSagtBeimStartWasGeht) {
    Schemabau(datenbank_).anlegen();
    stempeln(EIGENES_PROGRAMM, 7);
    Boxleser boxen;
    starten();

    const auto pfad = QString::fromStdString(datenbank_.pfad());
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    const auto& box = boxen.gesehen()[0];
    EXPECT_EQ(box.titel, pfad);
    EXPECT_EQ(box.symbol, QMessageBox::Information);
    for (const auto& teil :
         {pfad, QString("Fassung 7"), QString("Fassung 1"), QString("lassen sich starten, aber nicht ändern"),
          QString("installieren Sie bitte die neuere Version")})
        EXPECT_TRUE(box.text.contains(teil)) << teil.toStdString();
    EXPECT_EQ(combo().currentText(), "S");
}

TEST_F(FrmHauptDatenbank, EineNeuereFassungLaesstSichSpielenUndBleibtWieSieIst) {
    Schemabau(datenbank_).taste(2, "1,65,0-0-0").anlegen(); // without the rows that a first start lays
    stempeln(EIGENES_PROGRAMM, 2);
    const auto vorher = dateiLesen(datenbank_.pfad());
    Boxleser boxen;
    starten();
    knopf(5).click();
    ASSERT_NE(laufFenster(), nullptr);
    tastenDruecken(4);
    vergehen(10);
    tastenDruecken(0);
    vergehen(10);
    EXPECT_EQ(eingabe_.texteAbholen(), (std::vector<std::string>{"+65", "-65"}));

    knopf(5).click();
    ASSERT_EQ(boxen.gesehen().size(), 2U); // the first one is that of the start
    const auto& ende = boxen.gesehen()[1];
    EXPECT_EQ(ende.titel, "Einstellungen nicht gespeichert");
    for (const auto* teil : {"3027", "neueren Version", "Nicht gespeichert: die Empfindlichkeit",
                             "die Linien des rechten Sticks"})
        EXPECT_TRUE(ende.text.contains(teil)) << ende.text.toStdString();

    schemaNeu("Neu");
    ASSERT_EQ(boxen.gesehen().size(), 3U);
    EXPECT_TRUE(boxen.gesehen()[2].text.contains("3027")) << boxen.gesehen()[2].text.toStdString();
    EXPECT_EQ(dateiLesen(datenbank_.pfad()), vorher);
}

TEST_F(FrmHauptDatenbank, EineNeuereFassungOhneDieTabellenSagtErstWarum) {
    datenbank_.sql("DROP TABLE tblTastatur");
    stempeln(EIGENES_PROGRAMM, 2);
    Boxleser boxen;
    starten();
    ASSERT_EQ(boxen.gesehen().size(), 2U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("neueren Version"));
    EXPECT_TRUE(boxen.gesehen()[1].text.contains("3078"));
    EXPECT_EQ(combo().count(), 0);
}

TEST_F(FrmHauptDatenbank, WaehrendDesProgrammsErsetztGiltWasDannDaLiegt) {
    Schemabau(datenbank_).ungeglaettet().anlegen();
    const auto neuere = datenbank_.ordner() / "neuere";
    Boxleser boxen;
    starten();
    knopf(5).click();
    knopf(5).click();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});

    fs::copy_file(datenbank_.pfad(), neuere);
    RoheVerbindung(neuere.string()).sql("PRAGMA user_version = 2; DELETE FROM tblStick");
    const auto vorher = dateiLesen(neuere);
    fs::rename(neuere, datenbank_.pfad());
    knopf(5).click();
    EXPECT_NE(laufFenster(), nullptr);
    knopf(5).click();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("neueren Version")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("die Linien des linken Sticks"));
    EXPECT_EQ(dateiLesen(datenbank_.pfad()), vorher);
}

TEST_F(FrmHauptDatenbank, DieEinesAnderenProgrammsIstKeine) {
    Schemabau(datenbank_).anlegen();
    stempeln(FREMDES_PROGRAMM, 1);
    const auto vorher = dateiLesen(datenbank_.pfad());
    Boxleser boxen;
    starten();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3343"));
    EXPECT_TRUE(boxen.gesehen()[0].text.contains(QString::fromStdString(datenbank_.pfad())));
    EXPECT_EQ(combo().count(), 0);
    EXPECT_EQ(dateiLesen(datenbank_.pfad()), vorher);
}

// --- files that are none ---

namespace {

struct SchlechteDatei {
    const char* name;
    int nummer;
    void (*legen)(const std::string& pfad);
};

void PrintTo(const SchlechteDatei& datei, std::ostream* strom) {
    *strom << datei.name;
}

class FrmHauptSchlechteDatei : public FrmHauptDatenbank,
                               public ::testing::WithParamInterface<SchlechteDatei> {
protected:
    std::optional<std::string> inhalt() const {
        if (fs::is_directory(datenbank_.pfad()))
            return std::nullopt;
        return dateiLesen(datenbank_.pfad());
    }
};

} // namespace

TEST_P(FrmHauptSchlechteDatei, NenntSieUndLaesstSieWieSieIst) {
    Schemabau(datenbank_).anlegen();
    GetParam().legen(datenbank_.pfad());
    const auto vorher = inhalt();
    Boxleser boxen;
    starten();

    ASSERT_EQ(boxen.gesehen().size(), 1U);
    const auto& box = boxen.gesehen()[0];
    EXPECT_EQ(box.titel.toStdString(), datenbank_.pfad());
    EXPECT_TRUE(box.text.contains(QString::number(GetParam().nummer))) << box.text.toStdString();
    EXPECT_TRUE(box.text.contains(QString::fromStdString(datenbank_.pfad()))) << box.text.toStdString();
    EXPECT_EQ(combo().count(), 0);

    // What is tried all the same is refused, and tells why.
    schemaNeu("Neu");
    ASSERT_EQ(boxen.gesehen().size(), 2U);
    EXPECT_TRUE(boxen.gesehen()[1].text.contains(QString::number(GetParam().nummer)))
        << boxen.gesehen()[1].text.toStdString();
    EXPECT_EQ(inhalt(), vorher);
    const auto daneben = namenIn(datenbank_.ordner());
    EXPECT_EQ(std::ranges::count_if(daneben, [](const auto& name) { return name.ends_with("-journal"); }), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Jede, FrmHauptSchlechteDatei,
    ::testing::Values(
        SchlechteDatei{"Ordner", 3343,
                       [](const std::string& pfad) {
                           fs::remove(pfad);
                           fs::create_directory(pfad);
                       }},
        SchlechteDatei{"Leer", 3343, [](const std::string& pfad) { dateiSchreiben(pfad, ""); }},
        SchlechteDatei{"Nullen", 3343,
                       [](const std::string& pfad) { dateiSchreiben(pfad, std::string(65536, '\0')); }},
        SchlechteDatei{"NurDerKopf", 3049, [](const std::string& pfad) { fs::resize_file(pfad, 512); }},
        SchlechteDatei{"Halb", 3049,
                       [](const std::string& pfad) { fs::resize_file(pfad, fs::file_size(pfad) / 2); }},
        SchlechteDatei{"EineSeiteZuKurz", 3049,
                       [](const std::string& pfad) { fs::resize_file(pfad, fs::file_size(pfad) - 4096); }}),
    [](const auto& datei) { return datei.param.name; });

TEST_F(FrmHauptDatenbank, EineUnlesbareSagtDassDerZugriffFehlt) {
    Schemabau(datenbank_).anlegen();
    Boxleser boxen;
    {
        const Rechte rechte(datenbank_, 0755, 0000);
        const AlsNiemand niemand;
        starten();
    }
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3051")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_TRUE(boxen.gesehen()[0].text.contains(QString::fromStdString(datenbank_.pfad())));
    EXPECT_EQ(combo().count(), 0);
}

// --- copies ---

class FrmHauptSicherung : public FrmHauptDatenbank {
protected:
    FrmHauptSicherung() {
        Schemabau(datenbank_).anlegen();
        achsendatei();
        sicherungen_.sichern({2026, 11, 21});
    }
    void achsendatei() {
        const std::string schema = "S";
        Achsendatei(gamepadXml(), schema).GamepadAnlegen();
    }
    std::string gamepadXml() const { return (datenbank_.ordner() / "Gamepad.xml").string(); }
    void zerstoeren(const std::string& pfad) { dateiSchreiben(pfad, std::string(8192, 'x')); }

    Sicherungen sicherungen_{datenbank_.pfad(), gamepadXml()};
};

TEST_F(FrmHauptSicherung, FuerEineBeschaedigteDatenbankWirdDieNeuesteGuteAngeboten) {
    zerstoeren(datenbank_.pfad());
    Boxleser boxen({QMessageBox::Yes});
    starten();
    ASSERT_EQ(boxen.gesehen().size(), 2U);
    const auto pfad = QString::fromStdString(datenbank_.pfad());
    EXPECT_EQ(boxen.gesehen()[0].titel, pfad);
    EXPECT_EQ(
        boxen.gesehen()[0].text,
        "Die Datei „" + pfad +
            "“ ist keine Datenbank.\n\nEs gibt eine Sicherung vom 21.11.2026. Soll sie an die Stelle der "
            "Datei treten? Die beschädigte Datei bleibt daneben liegen.");
    EXPECT_TRUE(boxen.gesehen()[1].text.contains(pfad + ".beschädigt"));
    EXPECT_EQ(combo().currentText(), "S");
    EXPECT_EQ(dateiLesen(datenbank_.pfad() + ".beschädigt"), std::string(8192, 'x'));
}

TEST_F(FrmHauptSicherung, WerSieNichtWillBehaeltDieDateiWieSieIst) {
    zerstoeren(datenbank_.pfad());
    Boxleser boxen({QMessageBox::No});
    starten();
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(combo().count(), 0);
    EXPECT_EQ(dateiLesen(datenbank_.pfad()), std::string(8192, 'x'));
}

TEST_F(FrmHauptSicherung, FuerEineFehlendeDatenbankWirdNichtsAngeboten) {
    fs::remove(datenbank_.pfad());
    Boxleser boxen;
    starten();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3024"));
    EXPECT_FALSE(fs::exists(datenbank_.pfad()));
}

TEST_F(FrmHauptSicherung, AuchDieAchsendateiWirdAngeboten) {
    const auto vorher = dateiLesen(gamepadXml());
    dateiSchreiben(gamepadXml(), "kaputt");
    Boxleser boxen({QMessageBox::Yes});
    starten();
    ASSERT_EQ(boxen.gesehen().size(), 2U);
    EXPECT_EQ(boxen.gesehen()[0].titel, QString::fromStdString(gamepadXml()));
    EXPECT_EQ(dateiLesen(gamepadXml()), vorher);
    EXPECT_EQ(dateiLesen(gamepadXml() + ".beschädigt"), "kaputt");
}

TEST_F(FrmHauptSicherung, DerTagBeginntMitEinerSicherung) {
    starten();
    Sicherungstag heute{2026, 11, 22};
    Sicherungsdienst dienst([&heute] { return heute; }, std::chrono::milliseconds{0});
    const auto neueste = [&] { return sicherungen_.neuesteGute(Gesichertes::Datenbank, heute)->tag; };
    datenbank_.sql("UPDATE tblTastatur SET Programmpfad = 'einer'");
    dienst.beginnen(sicherungen_, haupt());
    dienst.abwarten();
    EXPECT_EQ(neueste(), heute);
    datenbank_.sql("UPDATE tblTastatur SET Programmpfad = 'anderer'");
    heute.tag = 23; // as after a night in which the machine slept
    EXPECT_TRUE(QTest::qWaitFor([&] { return neueste() == heute; }));
    dienst.abwarten();
    datenbank_.sql("UPDATE tblTastatur SET Programmpfad = 'dritter'");
    heute = {2026, 10, 21}; // the clock was set back
    EXPECT_TRUE(QTest::qWaitFor([&] { return neueste() == heute; }));
    dienst.abwarten();
}

TEST_F(FrmHauptSicherung, EineGesperrteWirdSpaeterGesichert) {
    starten();
    const Sicherungstag heute{2026, 11, 22};
    Sicherungsdienst dienst([&heute] { return heute; }, std::chrono::milliseconds{0});
    datenbank_.sql("UPDATE tblTastatur SET Programmpfad = 'einer'");
    const Boxleser boxen;
    {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN EXCLUSIVE");
        dienst.beginnen(sicherungen_, haupt());
        dienst.abwarten();
    }
    const auto da = [&] { return sicherungen_.neuesteGute(Gesichertes::Datenbank, heute)->tag == heute; };
    EXPECT_FALSE(da());
    EXPECT_TRUE(QTest::qWaitFor(da));
    dienst.abwarten();
    EXPECT_TRUE(boxen.gesehen().empty());
}

// A page that no form reads.
TEST_F(FrmHauptSicherung, WasErstDieSicherungFindetWirdAuchAngeboten) {
    starten();
    Sicherungsdienst dienst([] { return Sicherungstag{2026, 11, 22}; });
    bool geholt = false;
    QObject::connect(&dienst, &Sicherungsdienst::zurueckgeholt, [&geholt] { geholt = true; });
    zerstoeren(datenbank_.pfad());
    Boxleser boxen({QMessageBox::Yes});
    dienst.beginnen(sicherungen_, haupt());
    dienst.abwarten();
    EXPECT_EQ(boxen.gesehen().size(), 2U);
    EXPECT_TRUE(geholt);
}

TEST_F(FrmHauptSicherung, WasSichNichtSichernLaesstWirdGesagtWennNiemandSpielt) {
    starten();
    fs::remove_all(sicherungen_.ordner());
    dateiSchreiben(sicherungen_.ordner().string(), "");
    Sicherungsdienst dienst([] { return Sicherungstag{2026, 11, 22}; });
    Boxleser boxen;
    haupt().hide();
    dienst.beginnen(sicherungen_, haupt());
    dienst.abwarten();
    EXPECT_EQ(boxen.gesehen().size(), 0U);
    haupt().show();
    dienst.neuerTag();
    dienst.abwarten();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("lässt sich nicht schreiben"));
}

TEST_F(FrmHauptSicherung, DasProgrammSichertBeimStart) {
    Schemabau(datenbank_, "Zweites").anlegen();
    starten();
    EXPECT_EQ(sicherungen_.neuesteGute(Gesichertes::Datenbank, heutigerTag())->tag, heutigerTag());
}
