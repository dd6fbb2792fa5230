// SPDX-License-Identifier: GPL-3.0-or-later
// The stick editors: opening and closing, plane and fields, layers, panels, pictures, the live point.
#include "editors/stick/Ebenenbild.h"
#include "tests/editors/stick/Justiertest.h"
#include "tests/hilfen/StoerVfs.h"

#include <QImage>
#include <QScreen>
#include <QWindow>

#include <array>
#include <fstream>
#include <sys/inotify.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class FrmJust : public Justiertest, public ::testing::WithParamInterface<Zwilling> {
protected:
    FrmJust() : Justiertest(GetParam()) {}

    bool istLinks() const { return GetParam().zusatz.empty(); }
    fs::path bilder() const {
        const auto ordner = datenbank_.ordner() / "Bilder";
        fs::create_directories(ordner);
        return ordner;
    }
    /// Lays a picture of one colour.
    void bild(const std::string& name, const QColor& farbe, const char* format = "BMP") const {
        QImage eines(8, 6, QImage::Format_RGB32);
        eines.fill(farbe);
        ASSERT_TRUE(eines.save(QString::fromStdString((bilder() / name).string()), format));
    }
    /// The colour of the plane where nothing but the picture is.
    QColor grund() {
        const auto stelle = pixel(60000, 33000).toPoint();
        return ebene().grab(QRect(stelle, QSize(1, 1))).toImage().pixelColor(0, 0);
    }
    void ebeneWaehlen(int n) {
        feld<QRadioButton>(QString("Uschalt(%1)").arg(n)).click();
        ereignisse();
    }
    void testEnde() {
        if (auto* lauf = laufFenster())
            lauf->close();
        ereignisse();
    }
};

const QColor OHNE_BILD(128, 136, 144);

} // namespace

INSTANTIATE_TEST_SUITE_P(Zwillinge, FrmJust, ::testing::Values(LINKER_ZWILLING, RECHTER_ZWILLING),
                         [](const auto& fall) { return std::string(fall.param.form); });

// --- opening ---

TEST_P(FrmJust, OeffnetMitLinienPfeilenUndFeldUnterDemStick) {
    schema();
    linien();
    editorOeffnen();

    EXPECT_EQ(form().windowTitle(), "S");
    EXPECT_EQ(ebene().geometry(), form().rect());
    EXPECT_TRUE(stehtX("LLinks(0)", 20000));
    EXPECT_TRUE(stehtX("LRechts(0)", 45000));
    EXPECT_TRUE(stehtY("LOben(0)", 21000));
    EXPECT_TRUE(stehtY("LUnten(0)", 46000));
    for (const char* name : {"LLinks", "LRechts", "LOben", "LUnten", "LPfeil", "RPfeil", "OPfeil", "UPfeil"})
        for (int i = 0; i < 21; ++i)
            EXPECT_EQ(zuSehen(QString("%1(%2)").arg(name).arg(i)), i == 0) << name << i;
    EXPECT_FALSE(zuSehen("RechteckB"));
    EXPECT_TRUE(zuSehen("RechteckC"));
    EXPECT_FALSE(zuSehen("fraAktion"));
    EXPECT_TRUE(feld<QRadioButton>("Uschalt(0)").isChecked());
    EXPECT_TRUE(nahe(feld<QWidget>("Punkt").x(), 32764.5, ebene().width()));
    EXPECT_TRUE(haupt().isVisible()) << "the main form stays";
}

TEST_P(FrmJust, DerTitelZeigtDenNamenWieErIst) {
    for (const char* name : {"A [*]", "[*][*]", "<b> & %1"}) {
        schema(name);
        linien(name);
        editorOeffnen();
        EXPECT_EQ(form().windowHandle()->title(), name);
        form().close();
        ereignisse();
        datenbank_.sql("DELETE FROM tblTastatur;");
    }
}

TEST_P(FrmJust, ZeigtDieVorgegebenenTexte) {
    schema();
    linien();
    editorOeffnen();
    const std::array<const char*, 4> texte{"Standart", "Umschalt 1", "Umschalt 2", "1 to 1 "};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(feld<QLabel>(QString("Label1(%1)").arg(i)).text(), texte[static_cast<std::size_t>(i)]);
    const std::array<const char*, 3> knoepfe{"End", "Test", "Hintergrund"};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(feld<QPushButton>(QString("Command1(%1)").arg(i)).text(),
                  knoepfe[static_cast<std::size_t>(i)]);
    for (const char* name : {"LPfeil", "RPfeil", "OPfeil", "UPfeil"}) {
        EXPECT_EQ(feld<QWidget>(QString("%1(0)").arg(name)).toolTip(),
                  "Linke Maustaste = Neue Linie / Rechte Maustaste Linie löschen");
    }
    EXPECT_EQ(feld<QRadioButton>("Option3(2)").text(), istLinks() ? "Egoshooter" : "Ego Shooter");
    EXPECT_EQ(feld<QWidget>("txtTaste").toolTip(),
              istLinks() ? "Mit DoppelKlick die Tabtaste bestätigen" : "Mit Doppelklick Tabtaste bestätigen");
    EXPECT_EQ(feld<QWidget>(GetParam().umschalten).accessibleName(), "Umschalten");
    EXPECT_EQ(feld<QWidget>(GetParam().schaltflaeche).accessibleName(), "Schaltfläche");
    EXPECT_EQ(feld<QWidget>("Uschalt(0)").parentWidget()->parentWidget()->objectName(),
              GetParam().umschalten);
}

TEST_P(FrmJust, PfeileStehenNebenIhrenLinienAuchWennDasFensterWaechst) {
    schema();
    linien();
    editorOeffnen();
    for (const QSize groesse : {QSize(1024, 768), QSize(1920, 1080), QSize(1111, 901)}) {
        form().resize(groesse);
        ereignisse();
        ASSERT_EQ(ebene().size(), groesse);
        const auto ecke = [&](const char* name, double x, double y) {
            const auto& pfeil = feld<QWidget>(name);
            return nahe(pfeil.x(), x, groesse.width()) && nahe(pfeil.y(), y, groesse.height());
        };
        EXPECT_TRUE(ecke("LPfeil(0)", 20000 - 1050, 100));
        EXPECT_TRUE(ecke("RPfeil(0)", 45000 + 200, 100));
        EXPECT_TRUE(ecke("OPfeil(0)", 100, 21000 - 1500));
        EXPECT_TRUE(ecke("UPfeil(0)", 100, 46000 + 200));
        EXPECT_TRUE(stehtX("LLinks(0)", 20000));
        EXPECT_TRUE(stehtY("LUnten(0)", 46000));
        EXPECT_EQ(feld<QWidget>("LLinks(0)").height(), groesse.height() + 1) << "across the whole plane";
        EXPECT_EQ(feld<QWidget>("LOben(0)").width(), groesse.width() + 1);
    }
}

TEST_P(FrmJust, EinSchemaOhneZeilenBekommtSieMitEinerMeldung) {
    schema();
    starten();
    Boxleser boxen;
    editorknopf();
    EXPECT_EQ(boxen.gesehen(), (std::vector<Gesehen>{{"", "Es wird ein neues Schema erstellen!",
                                                      QMessageBox::NoIcon, QMessageBox::Ok}}));
    EXPECT_EQ(linie("count(*)", 1), "1");
    EXPECT_EQ(linie("Unten3", 1), "39679");
    EXPECT_TRUE(stehtX("LLinks(0)", 27072));
}

TEST_P(FrmJust, KannDieLinienNichtLesenUndBleibtZu) {
    schema();
    linien();
    datenbank_.sql("UPDATE " + stick() + " SET Links = 'x' WHERE \"index\" = 20;");
    starten();
    Boxleser boxen;
    editorknopf();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("13")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(offen(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_P(FrmJust, EsGibtJedenEditorNurEinmal) {
    schema();
    linien();
    editorOeffnen();
    auto* erster = offen();
    editorknopf();
    int anzahl = 0;
    for (auto* fenster : QApplication::topLevelWidgets())
        anzahl += fenster->objectName() == GetParam().form && fenster->isVisible();
    EXPECT_EQ(anzahl, 1);
    EXPECT_EQ(offen(), erster);
}

TEST_P(FrmJust, FuerEinAnderesSchemaLaedtErNeu) {
    for (const char* name : {"S", "T"}) {
        schema(name);
        linien(name);
    }
    datenbank_.sql("UPDATE " + stick() + " SET Links = 15000 WHERE Schemaname = 'T' AND \"index\" = 1;");
    editorOeffnen();
    auto& combo = control<QComboBox>(haupt(), "Combo1");
    combo.setCurrentIndex(1);
    emit combo.activated(1);
    editorknopf();
    EXPECT_EQ(form().windowTitle(), "T");
    EXPECT_TRUE(stehtX("LLinks(0)", 15000));
    feld<QPushButton>("Command1(1)").click();
    testEnde();
    EXPECT_EQ(haupt().isVisible(), !istLinks()) << "the editor counts as open, though another one was closed";
}

TEST_P(FrmJust, KannErDasAndereSchemaNichtLadenBleibtDerOffene) {
    for (const char* name : {"S", "T"}) {
        schema(name);
        linien(name);
    }
    editorOeffnen();
    auto* erster = offen();
    feld<QCheckBox>("Check2").click();
    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    feld<QRadioButton>("Option1(4)").click();
    control<QComboBox>(haupt(), "Combo1").setCurrentIndex(1);
    {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN EXCLUSIVE;");
        Boxleser boxen;
        editorknopf();
        ASSERT_EQ(boxen.gesehen().size(), 1U);
        EXPECT_TRUE(boxen.gesehen()[0].text.contains("3218")) << boxen.gesehen()[0].text.toStdString();
    }
    ASSERT_EQ(offen(), erster);
    EXPECT_EQ(form().windowTitle(), "S");
    ASSERT_TRUE(zuSehen("fraAktion")) << "with all that is not saved yet";
    klick(33000, 33000);
    EXPECT_EQ(aktionen(), (Tabellenbild{{"0", "0", "0", "0", "0", "4"}}));
    pad_.zustand.*GetParam().x = 60000;
    vergehen(5);
    EXPECT_TRUE(nahe(feld<QWidget>("Punkt").x(), 60000, ebene().width())) << "its timers go on";
    feld<QPushButton>("Command1(1)").click();
    testEnde();
    EXPECT_EQ(haupt().isVisible(), !istLinks()) << "and the run ends as with an editor open";
}

TEST_P(FrmJust, ErinnertSichNichtWennDasFensterZu) {
    schema();
    linien();
    editorOeffnen();
    ebeneWaehlen(2);
    form().close();
    ereignisse();
    editorknopf();
    EXPECT_TRUE(feld<QRadioButton>("Uschalt(0)").isChecked());
}

// --- closing ---

TEST_P(FrmJust, SchliessenBringtDieHauptformUndHaeltDieUhr) {
    schema();
    linien();
    editorOeffnen();
    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    ASSERT_FALSE(haupt().isVisible());
    const auto vorher = datenbank_.inhalt();
    form().close();
    ereignisse();
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(offen(), nullptr);
    EXPECT_EQ(uhr_.laufende(), 0U);
    EXPECT_EQ(datenbank_.inhalt(), vorher) << "an open action panel writes nothing";
}

TEST_P(FrmJust, SchliessenMitAufgenommenerLinieSpeichertNichts) {
    schema();
    linien();
    editorOeffnen();
    klick(20000, 33000);
    ziehen(15000, 33000);
    form().close();
    ereignisse();
    EXPECT_EQ(linie("Links", 1), "20000");
    EXPECT_TRUE(haupt().isVisible());
}

TEST_P(FrmJust, SchliessenHaeltAuchTafelnDieSichSchieben) {
    schema();
    linien();
    for (const int bis : {50, 400}) { // on their way, and open
        editorOeffnen();
        bewegen(feld<QWidget>("Frame2"), {5, 5});
        bewegen(feld<QWidget>("Frame3"), {5, 5});
        vergehen(bis);
        form().close();
        EXPECT_EQ(uhr_.laufende(), 0U) << bis;
        vergehen(3000);
    }
}

TEST_P(FrmJust, EndSchliesstDenEditorUndBeendetDenLauf) {
    schema();
    linien();
    editorOeffnen();
    feld<QPushButton>("Command1(1)").click();
    ASSERT_NE(laufFenster(), nullptr);
    EXPECT_FALSE(haupt().isVisible());
    feld<QPushButton>("Command1(0)").click();
    ereignisse();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_EQ(offen(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    EXPECT_EQ(uhr_.laufende(), 0U);
}

TEST_P(FrmJust, SchliessenLaesstDenLaufWeiterlaufen) {
    schema();
    linien();
    editorOeffnen();
    feld<QPushButton>("Command1(1)").click();
    form().close();
    ereignisse();
    EXPECT_NE(laufFenster(), nullptr);
    EXPECT_TRUE(haupt().isVisible());
    testEnde();
    EXPECT_EQ(uhr_.laufende(), 0U);
}

// What a run that ends does with the main form tells which value `OffenerEditor` has.
TEST_P(FrmJust, EinLaufHinterDemEditorBringtDieHauptformNurBeimRechten) {
    schema();
    linien();
    editorOeffnen();
    feld<QPushButton>("Command1(1)").click();
    testEnde();
    EXPECT_EQ(haupt().isVisible(), !istLinks()) << "1 for the left one, 2 for the right one";
    form().close();
    ereignisse();
    EXPECT_TRUE(haupt().isVisible());
}

TEST_P(FrmJust, TestSpeichertDieLinienUndStartetDasSchemaDerHauptform) {
    for (const char* name : {"S", "T"}) {
        schema(name);
        linien(name);
    }
    datenbank_.sql("UPDATE " + stick() + " SET Links = 15000 WHERE Schemaname = 'T' AND \"index\" = 1;");
    editorOeffnen();
    feld<QCheckBox>("Check2").click();
    control<QComboBox>(haupt(), "Combo1").setCurrentIndex(1);
    feld<QPushButton>("Command1(1)").click();
    ASSERT_NE(laufFenster(), nullptr);
    EXPECT_EQ(linie("Links", 20, "S"), "1") << "what \"1 to 1\" says goes with the lines";
    EXPECT_EQ(linie("Links", 1, "T"), "15000") << "the other Schema keeps its own";
    EXPECT_TRUE(datenbank_.zeilen("SELECT Schemaname FROM Sensible;") == Tabellenbild{{"T"}})
        << "which is the one that runs";
    testEnde();
}

TEST_P(FrmJust, ScheitertTestAmSpeichernLaeuftNichts) {
    schema();
    linien();
    editorOeffnen();
    RoheVerbindung andere(datenbank_.pfad());
    andere.sql("BEGIN IMMEDIATE;");
    feld<QCheckBox>("Check2").click();
    Boxleser boxen;
    feld<QPushButton>("Command1(1)").click();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_TRUE(boxen.gesehen()[0].text.contains("3218")) << boxen.gesehen()[0].text.toStdString();
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_NE(offen(), nullptr);
}

// --- fields ---

TEST_P(FrmJust, EinKlickWaehltDasFeldUndEinZweiterNichts) {
    schema();
    linien();
    editorOeffnen();
    klick(30000, 30000);
    EXPECT_TRUE(zuSehen("RechteckB"));
    EXPECT_TRUE(liegt("RechteckB", 20000, 21000, 25000, 25000));
    klick(50000, 60000);
    EXPECT_FALSE(zuSehen("RechteckB"));
    klick(50000, 60000);
    EXPECT_TRUE(liegt("RechteckB", 45000, 46000, 21000, 20000)) << "on beyond the plane";
}

TEST_P(FrmJust, DasGewaehlteFeldFolgtDerFenstergroesse) {
    schema();
    linien();
    editorOeffnen();
    klick(30000, 30000);
    form().resize(1500, 1000);
    ereignisse();
    EXPECT_TRUE(liegt("RechteckB", 20000, 21000, 25000, 25000));
}

// --- live point ---

TEST_P(FrmJust, DerPunktFolgtDemStickAlleFuenfMillisekunden) {
    schema();
    linien();
    editorOeffnen();
    const auto punktBei = [&](double x, double y) {
        const auto& punkt = feld<QWidget>("Punkt");
        return nahe(punkt.x(), x, ebene().width()) && nahe(punkt.y(), y, ebene().height());
    };
    vergehen(5);
    EXPECT_TRUE(liegt("RechteckC", 20000, 21000, 25000, 25000));
    pad_.zustand.*GetParam().x = 60000;
    pad_.zustand.*GetParam().y = 1000;
    vergehen(4);
    EXPECT_FALSE(punktBei(60000, 1000));
    vergehen(1);
    EXPECT_TRUE(punktBei(60000, 1000));
    EXPECT_TRUE(liegt("RechteckC", 45000, 0, 21000, 21000));
    pad_.da = false;
    vergehen(50);
    EXPECT_TRUE(punktBei(60000, 1000)) << "a pad that is gone leaves the last values";
}

TEST_P(FrmJust, OhneZugeordneteAchseBleibtDerPunkt) {
    schema();
    linien();
    std::ofstream(datenbank_.ordner() / "Gamepad.xml") << "broken";
    editorOeffnen();
    pad_.zustand.*GetParam().x = 60000;
    vergehen(50);
    EXPECT_TRUE(nahe(feld<QWidget>("Punkt").x(), 32764.5, ebene().width()));
    EXPECT_TRUE(liegt("RechteckC", 20000, 21000, 25000, 25000));
}

TEST_P(FrmJust, DasFeldUnterDemStickFolgtEinerGezogenenLinie) {
    schema();
    linien();
    editorOeffnen();
    vergehen(5);
    klick(20000, 33000);
    ziehen(25000, 33000);
    vergehen(5);
    EXPECT_TRUE(liegt("RechteckC", 25000, 21000, 20000, 25000)) << "a pixel's rounding apart";
}

// --- layers ---

TEST_P(FrmJust, JedeEbeneZeigtIhreLinien) {
    schema();
    linien();
    editorOeffnen();
    ebeneWaehlen(1);
    EXPECT_TRUE(stehtX("LLinks(0)", 20100));
    ebeneWaehlen(2);
    EXPECT_TRUE(stehtX("LRechts(0)", 45200));
    EXPECT_TRUE(stehtY("LUnten(0)", 46200));
    ebeneWaehlen(0);
    EXPECT_TRUE(stehtY("LOben(0)", 21000));
}

TEST_P(FrmJust, NurDerLinkeLaesstBeimWechselDasFeldFallen) {
    schema();
    linien();
    editorOeffnen();
    klick(30000, 30000);
    klick(30000, 30000);
    klick(30000, 30000); // the panels are free again and a field is chosen
    feld<QWidget>(GetParam().umschalten).setEnabled(true);
    ebeneWaehlen(1);
    EXPECT_EQ(zuSehen("RechteckB"), !istLinks());
}

TEST_P(FrmJust, Check2ZeigtUndSetztDieSperreDerEbene) {
    schema();
    linien();
    datenbank_.sql("UPDATE " + stick() + " SET Links = 5 WHERE \"index\" = 20;");
    editorOeffnen();
    auto& Check2 = feld<QCheckBox>("Check2");
    EXPECT_TRUE(Check2.isChecked());
    ebeneWaehlen(1);
    EXPECT_FALSE(Check2.isChecked());
    Check2.click();
    ebeneWaehlen(2);
    EXPECT_TRUE(Check2.isChecked());
    Check2.click();
    EXPECT_EQ(linie("Links", 20), "5") << "stored with the lines, not before";
    pfeil("LPfeil(0)");
    EXPECT_EQ(linie("Links", 20), "3");
    EXPECT_EQ(linie("Links3", 2), "19200");
    const auto andere = istLinks() ? "tblStickR" : "tblStick";
    EXPECT_EQ(datenbank_.zeilen(std::string("SELECT Links FROM ") + andere + " WHERE \"index\" = 20;")[0][0],
              "0");
}

TEST_P(FrmJust, EinKlickAufDieBeschriftungGilt) {
    schema();
    linien();
    editorOeffnen();
    QTest::mouseClick(&feld<QLabel>("Label1(2)"), Qt::LeftButton);
    EXPECT_TRUE(feld<QRadioButton>("Uschalt(2)").isChecked());
    QTest::mouseClick(&feld<QLabel>("Label1(3)"), Qt::LeftButton);
    EXPECT_TRUE(feld<QCheckBox>("Check2").isChecked());
}

// --- pictures ---

TEST_P(FrmJust, JedeEbeneHatIhrBildSonstDasErsatzbild) {
    schema();
    linien();
    bild(std::string("S0") + GetParam().bildende, Qt::red);
    bild(std::string("S2") + (istLinks() ? "l.BMP" : "r.BMP"), Qt::green);
    bild("joy2.BMP", Qt::blue);
    editorOeffnen();
    EXPECT_EQ(grund(), QColor(Qt::red));
    ebeneWaehlen(1);
    EXPECT_EQ(grund(), QColor(Qt::blue));
    ebeneWaehlen(2);
    EXPECT_EQ(grund(), QColor(Qt::green)) << "names match without regard to case";
}

TEST_P(FrmJust, BeimOeffnenLiestErSeinBildEinmal) {
    schema();
    linien();
    const auto name = std::string("S0") + GetParam().bildende;
    bild(name, Qt::green);
    const int wache = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(inotify_add_watch(wache, (bilder() / name).c_str(), IN_OPEN | IN_CLOSE_NOWRITE), 0);
    editorOeffnen();
    std::array<inotify_event, 8> gemeldet{};
    const auto bytes = read(wache, gemeldet.data(), sizeof gemeldet);
    close(wache);
    EXPECT_EQ(bytes, ssize_t{2 * sizeof(inotify_event)}) << "opened and closed";
    EXPECT_EQ(grund(), QColor(Qt::green));
}

TEST_P(FrmJust, DasBildWaechstMitDemFenster) {
    schema();
    linien();
    QImage eines(100, 60, QImage::Format_RGB32);
    eines.fill(Qt::red);
    for (int y = 0; y < eines.height(); ++y)
        for (int x = 50; x < eines.width(); ++x)
            eines.setPixelColor(x, y, Qt::green);
    ASSERT_TRUE(eines.save(
        QString::fromStdString((bilder() / (std::string("S0") + GetParam().bildende)).string()), "BMP"));
    editorOeffnen();
    for (const QSize groesse : {QSize(700, 600), QSize(1500, 900)}) {
        form().resize(groesse);
        ereignisse();
        const auto gemalt = ebene().grab().toImage();
        const auto farbe = [&](double x) { return gemalt.pixelColor(pixel(x, 55000).toPoint()); };
        EXPECT_EQ(farbe(31000), QColor(Qt::red)) << groesse.width();
        EXPECT_EQ(farbe(34500), QColor(Qt::green)) << groesse.width();
    }
}

TEST_P(FrmJust, OhneErsatzbildBleibtDieEbeneOhneBild) {
    schema();
    linien();
    bild(std::string("S0") + GetParam().bildende, Qt::red);
    editorOeffnen();
    ebeneWaehlen(1);
    EXPECT_EQ(grund(), OHNE_BILD);
}

TEST_P(FrmJust, BilderDieKeineSindZaehlenAlsFehlend) {
    schema();
    linien();
    bild("Joy2.bmp", Qt::blue);
    const auto eigenes = bilder() / (std::string("S0") + GetParam().bildende);
    std::string riese("BM\0\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0", 18);
    riese += std::string("\xff\xff\xff\x7f\xff\xff\xff\x7f\1\0\x18\0", 12) + std::string(24, '\0');
    for (const std::string& inhalt : {std::string(), std::string("BM"), std::string("kein Bild"), riese}) {
        std::ofstream(eigenes, std::ios::trunc | std::ios::binary) << inhalt;
        editorOeffnen();
        EXPECT_EQ(grund(), QColor(Qt::blue)) << inhalt.size() << " bytes";
        form().close();
        ereignisse();
    }
    fs::remove(eigenes);
    fs::create_directory(eigenes);
    editorOeffnen();
    EXPECT_EQ(grund(), QColor(Qt::blue)) << "a folder";
}

TEST_P(FrmJust, EinBildGroesserAlsJederSchirmZaehltAlsFehlend) {
    schema();
    linien();
    bild("Joy2.bmp", Qt::blue);
    QImage riese(8193, 8193, QImage::Format_Mono);
    riese.fill(1);
    const auto name = bilder() / (std::string("S0") + GetParam().bildende);
    ASSERT_TRUE(riese.save(QString::fromStdString(name.string()), "PNG"));
    editorOeffnen();
    EXPECT_EQ(grund(), QColor(Qt::blue));
}

TEST_P(FrmJust, EinBildInAnderemFormatWirdGezeigt) {
    schema();
    linien();
    bild(std::string("S0") + GetParam().bildende, Qt::red, "PNG");
    editorOeffnen();
    EXPECT_EQ(grund(), QColor(Qt::red));
}

TEST_P(FrmJust, EinAbgeschnittenesBildZaehltAlsFehlend) {
    schema();
    linien();
    bild("Joy2.bmp", Qt::blue);
    const auto name = std::string("S0") + GetParam().bildende;
    for (const auto& [format, anteil] : {std::pair{"BMP", 0.4}, {"BMP", 0.99}, {"PNG", 0.4}, {"PNG", 0.8}}) {
        bild(name, Qt::red, format);
        const auto laenge = static_cast<double>(fs::file_size(bilder() / name));
        fs::resize_file(bilder() / name, static_cast<std::uintmax_t>(laenge * anteil));
        editorOeffnen();
        EXPECT_EQ(grund(), QColor(Qt::blue)) << anteil << " of a " << format;
        form().close();
        ereignisse();
    }
}

TEST_P(FrmJust, BitmapsJederArtWerdenGezeigt) {
    schema();
    linien();
    const auto name = bilder() / (std::string("S0") + GetParam().bildende);
    const auto zeigt = [&](const QColor& farbe) {
        editorOeffnen();
        EXPECT_EQ(grund(), farbe);
        form().close();
        ereignisse();
    };
    for (const auto art : {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_RGB32}) {
        QImage eines(9, 5, art);
        if (art != QImage::Format_RGB32)
            eines.setColorTable({qRgb(255, 0, 0), qRgb(255, 0, 0)});
        eines.fill(art == QImage::Format_RGB32 ? qRgb(255, 0, 0) : 1);
        ASSERT_TRUE(eines.save(QString::fromStdString(name.string()), "BMP"));
        zeigt(Qt::red);
    }
    // Two by two pixels of 24 bits: with the old short head, and as run lengths, which may be shorter than
    // the pixels they stand for.
    const std::string rot("\0\0\xff", 3);
    const std::string zeile = rot + rot + std::string(2, '\0');
    std::ofstream(name, std::ios::binary)
        << std::string("BM\x2a\0\0\0\0\0\0\0\x1a\0\0\0\x0c\0\0\0\2\0\2\0\1\0\x18\0", 26) << zeile << zeile;
    zeigt(Qt::red);
    std::ofstream(name, std::ios::binary)
        << std::string("BM\x4e\0\0\0\0\0\0\0\x3e\0\0\0\x28\0\0\0\x40\0\0\0\x40\0\0\0\1\0\x08\0\1\0\0\0", 34)
        << std::string(12, '\0') << std::string("\2\0\0\0\0\0\0\0", 8) << std::string("\0\0\0\0\0\0\xff\0", 8)
        << [] {
               std::string zeilen;
               for (int i = 0; i < 64; ++i)
                   zeilen += std::string("\x40\1\0\0", 4);
               return zeilen + std::string("\0\1", 2);
           }();
    zeigt(Qt::red);
}

TEST_P(FrmJust, EinNameMitTrennzeichenVerlaesstDenBilderordnerNicht) {
    schema("../x");
    linien("../x");
    bild("Joy2.bmp", Qt::blue);
    QImage fremd(4, 4, QImage::Format_RGB32);
    fremd.fill(Qt::red);
    ASSERT_TRUE(fremd.save(
        QString::fromStdString((datenbank_.ordner() / (std::string("x0") + GetParam().bildende)).string())));
    editorOeffnen();
    EXPECT_EQ(grund(), QColor(Qt::blue));
}

// --- panels ---

TEST_P(FrmJust, DieTafelnSchiebenSichAufUndFallenZurueck) {
    schema();
    linien();
    editorOeffnen();
    struct Mass {
        const char* name;
        int hoehe;
        int schritte;
    };
    for (const auto& [name, hoehe, schritte] :
         {Mass{GetParam().umschalten, 1000, 10}, Mass{GetParam().schaltflaeche, 900, 12}}) {
        auto& tafel = feld<QWidget>(name);
        const auto steht = [&](int oben, int hoch) {
            return nahe(tafel.y(), oben, ebene().height()) &&
                   nahe(tafel.y() + tafel.height(), oben + hoch, ebene().height());
        };
        EXPECT_TRUE(steht(63828, hoehe)) << name;
        bewegen(tafel, {5, 5});
        vergehen(24);
        EXPECT_TRUE(steht(63828, hoehe));
        vergehen(1);
        EXPECT_TRUE(steht(63828 - 567, hoehe + 567));
        vergehen(25 * (schritte - 1));
        EXPECT_TRUE(steht(63828 - 567 * schritte, hoehe + 567 * schritte));
        vergehen(25 + 1999); // one tick that finds it open, then two seconds
        EXPECT_TRUE(steht(63828 - 567 * schritte, hoehe + 567 * schritte));
        vergehen(1);
        EXPECT_TRUE(steht(63828, hoehe));
    }
}

TEST_P(FrmJust, DieMausAufEinemControlHaeltDieTafelOffen) {
    schema();
    linien();
    editorOeffnen();
    auto& tafel = feld<QWidget>(GetParam().umschalten);
    bewegen(tafel, {5, 5});
    vergehen(275 + 1500);
    bewegen(feld<QRadioButton>("Uschalt(1)"), {3, 3});
    vergehen(1900);
    EXPECT_GT(tafel.height(), 40);
    vergehen(125);
    EXPECT_LT(tafel.height(), 20);
}

TEST_P(FrmJust, EineBewegteMausHaeltDieTafelNichtUnten) {
    schema();
    linien();
    editorOeffnen();
    auto& tafel = feld<QWidget>(GetParam().umschalten);
    for (int i = 0; i < 40; ++i) {
        bewegen(tafel, {5.0 + i, 5});
        vergehen(8);
    }
    EXPECT_GT(tafel.height(), 70);
}

TEST_P(FrmJust, DieTafelnLiegenNebeneinanderAufDerEbene) {
    schema();
    linien();
    editorOeffnen();
    for (const QSize groesse : {form().minimumSize(), QSize(1920, 1080)}) {
        form().resize(groesse);
        ereignisse();
        const auto umschalten = feld<QWidget>(GetParam().umschalten).geometry();
        const auto schaltflaeche = feld<QWidget>(GetParam().schaltflaeche).geometry();
        EXPECT_LT(umschalten.right(), schaltflaeche.left());
        EXPECT_GE(umschalten.left(), 0);
        EXPECT_LT(schaltflaeche.right(), ebene().width());
    }
    EXPECT_LE(form().minimumWidth(), form().screen()->availableSize().width());
}

TEST_P(FrmJust, EinKlickAufEineTafelIstKeinerAufDieEbene) {
    schema();
    linien();
    editorOeffnen();
    for (const char* name : {"Frame2", "Frame3"}) {
        auto& tafel = feld<QWidget>(name);
        for (const auto taste : {Qt::LeftButton, Qt::MiddleButton}) {
            QTest::mouseClick(&tafel, taste, {}, {5, 5});
            EXPECT_FALSE(zuSehen("RechteckB")) << name;
            QTest::mouseClick(tafel.findChild<QWidget*>(), taste, {}, {1, 1}); // beside its controls
            EXPECT_FALSE(zuSehen("RechteckB")) << name;
        }
        EXPECT_TRUE(tafel.isEnabled()) << name;
    }
}

TEST_P(FrmJust, EineLinieGehtUeberDieRuhendenTafelnHinweg) {
    schema();
    linien();
    editorOeffnen();
    klick(20000, 33000);
    const auto& tafel = feld<QWidget>(GetParam().umschalten);
    const auto mitte = tafel.mapTo(&ebene(), tafel.rect().center());
    const auto x = mitte.x() * 65535.0 / ebene().width();
    bewegen(feld<QWidget>(GetParam().umschalten), tafel.rect().center());
    EXPECT_TRUE(stehtX("LLinks(0)", x));
    QTest::mouseClick(&feld<QWidget>(GetParam().umschalten), Qt::LeftButton, {}, tafel.rect().center());
    EXPECT_NE(linie("Links", 1), "20000") << "and is put down there";
    EXPECT_TRUE(tafel.isEnabled());
}

TEST_P(FrmJust, WaehrendEinerBewegtenLinieRuhenDieTafeln) {
    schema();
    linien();
    editorOeffnen();
    bewegen(feld<QWidget>(GetParam().umschalten), {5, 5});
    vergehen(300);
    klick(20000, 33000);
    for (const char* name : {"Frame2", "Frame3"}) {
        EXPECT_FALSE(feld<QWidget>(name).isEnabled());
        EXPECT_TRUE(nahe(feld<QWidget>(name).y(), 63828, ebene().height()));
        EXPECT_TRUE(nahe(feld<QWidget>(name).y() + feld<QWidget>(name).height(), 64828, ebene().height()));
    }
    klick(20000, 33000);
    EXPECT_TRUE(feld<QWidget>("Frame2").isEnabled());
    EXPECT_TRUE(feld<QWidget>("Frame3").isEnabled());
}

TEST_P(FrmJust, OffeneTafelnSchneidenNichtsAbAuchMitGrossenBuchstaben) {
    schema();
    linien();
    for (const int punkt : {9, 16, 24}) {
        const Schriftgrad grad(punkt);
        editorOeffnen();
        form().resize(form().minimumSize());
        ereignisse();
        for (const char* name : {"Frame2", "Frame3"}) {
            auto& tafel = feld<QWidget>(name);
            bewegen(tafel, {5, 5});
            vergehen(400);
            EXPECT_TRUE(beschnittene(tafel).empty()) << punkt << " points, " << beschnittene(tafel)[0];
            for (auto* control : tafel.findChildren<QWidget*>())
                EXPECT_TRUE(control->isHidden() ||
                            tafel.rect().contains(QRect(control->mapTo(&tafel, QPoint()), control->size())))
                    << punkt << " points, " << control->objectName().toStdString();
        }
        form().close();
        ereignisse();
    }
}

// --- uncovered ---

TEST_P(FrmJust, FreigelegtLiestErDieLinienNeuOhneSieZuVerschieben) {
    schema();
    linien();
    editorOeffnen();
    datenbank_.sql("UPDATE " + stick() + " SET Links = 10000 WHERE \"index\" = 1;");
    freilegen();
    EXPECT_TRUE(stehtX("LLinks(0)", 20000)) << "nothing is redrawn by it";
    klick(10000, 33000);
    ziehen(12000, 33000);
    klick(12000, 33000);
    EXPECT_EQ(linie("Links", 1), "12000") << "to the next pixel";
    EXPECT_TRUE(stehtX("LLinks(0)", 12000));
}

// A lock for each row would be felt with a thousand of them.
TEST_P(FrmJust, FreigelegtSperrtErDieDateiSoOftWieOhneAktionen) {
    schema();
    linien();
    const StoerVfs zaehler;
    editorOeffnen();
    const auto sperren = [&] {
        const int vorher = zaehler.gesperrt();
        freilegen();
        return zaehler.gesperrt() - vorher;
    };
    sperren(); // the first time the form also finds its size
    const int ohne = sperren();
    EXPECT_GT(ohne, 0);
    datenbank_.sql("WITH RECURSIVE zahlen(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM zahlen WHERE n < 50) "
                   "INSERT INTO " +
                   aktionstabelle() + " SELECT 'S', 0, 20000, 0, 0, 0, '1,0' FROM zahlen;");
    EXPECT_EQ(sperren(), ohne);
}

TEST_P(FrmJust, FreigelegtLaesstErDenHakenDerNochNichtGespeichertIst) {
    schema();
    linien();
    editorOeffnen();
    ebeneWaehlen(1);
    feld<QCheckBox>("Check2").click();
    freilegen();
    EXPECT_TRUE(feld<QCheckBox>("Check2").isChecked());
    ebeneWaehlen(0);
    EXPECT_FALSE(feld<QCheckBox>("Check2").isChecked());
    ebeneWaehlen(1);
    EXPECT_TRUE(feld<QCheckBox>("Check2").isChecked());
    pfeil("LPfeil(0)");
    EXPECT_EQ(linie("Links", 20), "2") << "it goes with the lines";
}

// The run of another Schema reads its own mask into what the sticks share.
TEST_P(FrmJust, EinLaufEinesAnderenSchemasGibtDemEditorNichtSeineSperre) {
    for (const char* name : {"S", "T"}) {
        schema(name);
        linien(name);
    }
    datenbank_.sql("UPDATE " + stick() +
                   " SET Links = 5 WHERE Schemaname = 'S' AND \"index\" = 20;"
                   "UPDATE " +
                   stick() + " SET Links = 2 WHERE Schemaname = 'T' AND \"index\" = 20;");
    editorOeffnen();
    control<QComboBox>(haupt(), "Combo1").setCurrentIndex(1);
    feld<QPushButton>("Command1(1)").click();
    ASSERT_NE(laufFenster(), nullptr);
    vergehen(50);
    ebeneWaehlen(1);
    EXPECT_FALSE(feld<QCheckBox>("Check2").isChecked());
    pfeil("LPfeil(0)");
    testEnde();
    EXPECT_EQ(linie("Links", 20, "S"), "5");
    EXPECT_EQ(linie("Links", 20, "T"), "2");
}

TEST_P(FrmJust, FreigelegtMitLinieInDerHandLiestErNichts) {
    schema();
    linien();
    editorOeffnen();
    klick(20000, 33000);
    ziehen(15000, 33000);
    freilegen();
    klick(15000, 33000);
    EXPECT_EQ(linie("Links", 1), "15000") << "to the next pixel";
}

TEST_P(FrmJust, EinFehlerBeimFreilegenWirdEinmalGesagt) {
    schema();
    linien();
    editorOeffnen();
    const auto sperre = [&](const std::string& wert) {
        datenbank_.sql("UPDATE " + stick() + " SET Links = " + wert + " WHERE \"index\" = 20;");
    };
    sperre("'x'");
    Boxleser boxen;
    for (int i = 0; i < 3; ++i) {
        freilegen();
    }
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    sperre("0");
    freilegen();
    sperre("'x'");
    freilegen();
    EXPECT_EQ(boxen.gesehen().size(), 2U);
}

// The box that tells an error uncovers the window when it goes.
TEST_P(FrmJust, WasGesagtIstSagtDasFreilegenNichtNochEinmal) {
    schema();
    linien();
    editorOeffnen();
    for (const bool pfeilklick : {true, false}) {
        RoheVerbindung andere(datenbank_.pfad());
        andere.sql("BEGIN EXCLUSIVE;");
        Boxleser boxen;
        if (pfeilklick)
            pfeil("LPfeil(0)");
        else
            ebeneWaehlen(1);
        EXPECT_EQ(boxen.gesehen().size(), 1U);
        for (int i = 0; i < 2; ++i)
            freilegen();
        EXPECT_EQ(boxen.gesehen().size(), 1U) << pfeilklick;
        andere.sql("COMMIT;");
        freilegen();
        andere.sql("BEGIN EXCLUSIVE;");
        freilegen();
        EXPECT_EQ(boxen.gesehen().size(), 2U) << "once the store was there in between, it is news";
        andere.sql("COMMIT;");
        freilegen();
    }
}

TEST_P(FrmJust, FreigelegtHinterEinerBoxLiestErNichtNocheinmal) {
    schema();
    linien();
    editorOeffnen();
    datenbank_.sql("DELETE FROM " + stick() + ";");
    int boxen = 0;
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        if (++boxen == 1)
            freilegen();
        box->accept();
    });
    takt.start(0);
    freilegen();
    EXPECT_EQ(boxen, 1);
    EXPECT_EQ(datenbank_.zeilen("SELECT count(*) FROM " + stick() + ";")[0][0], "20");
}

// --- both at once ---

TEST_F(Formtest, BeideEditorenArbeitenJederAufSeinemStick) {
    Schemabau(datenbank_).anlegen();
    starten();
    Boxleser boxen;
    for (const int knopf : {1, 6}) {
        control<QPushButton>(haupt(), QString("Command1(%1)").arg(knopf)).click();
        ereignisse();
    }
    for (auto* fenster : QApplication::topLevelWidgets())
        if (fenster->objectName() == "frmJust" && fenster->isVisible())
            QTest::mouseClick(fenster->findChild<QWidget*>("LPfeil(0)"), Qt::LeftButton);
    EXPECT_EQ(datenbank_.zeilen("SELECT Links FROM tblStick WHERE \"index\" = 2;")[0][0], "26072");
    EXPECT_EQ(datenbank_.zeilen("SELECT Links FROM tblStickR WHERE \"index\" = 2;")[0][0], "0");
}
