// SPDX-License-Identifier: GPL-3.0-or-later
// The form that makes the background pictures: its remote control, its previews, and how it goes back into
// the editors.
#include "editors/pictures/ScreenChecken.h"
#include "editors/common/Nebenarbeit.h"
#include "tests/editors/stick/Justiertest.h"
#include "tests/hilfen/Dateien.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QImage>
#include <QSemaphore>

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <thread>

namespace fs = std::filesystem;

namespace {

using Ton = ProbeTon::Ton;
using Toene = std::vector<Ton>;

constexpr Ton EBENENTON{500, 100};
constexpr Ton BILDTON{250, 100};
constexpr Ton FEHLERTON{300, 500};

constexpr std::uint32_t LEERE_FARBE = 0x777777;
constexpr std::uint32_t ROT = 0xff0000;
constexpr std::uint32_t GRUEN = 0x00ff00;
constexpr std::uint32_t BLAU = 0x0000ff;

constexpr std::uint32_t taste(int nummer) {
    return std::uint32_t{1} << nummer;
}
constexpr std::uint32_t KREIS = taste(1);
constexpr std::uint32_t KREUZ = taste(2);
constexpr std::uint32_t VIERECK = taste(3);
constexpr std::uint32_t LSTICK = taste(10);
constexpr std::uint32_t RSTICK = taste(11);
constexpr int ABFRAGE = 100;

class Hintergrundtest : public Justiertest {
protected:
    explicit Hintergrundtest(const Zwilling& zwilling = LINKER_ZWILLING) : Justiertest(zwilling) {
        fs::create_directory(bilder());
        bildLegen("Joy2.bmp", LEERE_FARBE);
        schema();
        linien();
    }

    fs::path bilder() const { return datenbank_.ordner() / "Bilder"; }
    void bildLegen(const std::string& name, std::uint32_t farbe) const {
        QImage bild(8, 6, QImage::Format_RGB32);
        bild.fill(farbe);
        ASSERT_TRUE(bild.save(QString::fromStdString((bilder() / name).string()), "BMP"));
    }
    /// The one colour of a file's picture; -1 for none.
    std::int64_t dateifarbe(const std::string& name) const {
        return farbe(QImage(QString::fromStdString((bilder() / name).string())));
    }
    static std::int64_t farbe(const QImage& bild) {
        return bild.isNull() ? -1 : std::int64_t{bild.pixel(0, 0) & 0xffffffU};
    }
    /// What the file of each preview holds, in their order.
    std::vector<std::int64_t> dateien() const {
        std::vector<std::int64_t> farben;
        for (const std::string name : {"S0L.BMP", "S0R.BMP", "S1L.BMP", "S1R.BMP", "S2L.BMP", "S2R.BMP"})
            farben.push_back(dateifarbe(name));
        return farben;
    }

    void oeffnen() {
        editorOeffnen();
        hintergrundknopf();
    }
    void hintergrundknopf() {
        feld<QPushButton>("Command1(2)").click();
        schirm().findChild<Nebenarbeit*>()->abwarten();
        ereignisse();
    }
    /// Opens the form, whose pictures are still on their way until the event loop runs.
    void oeffnenOhneBilder() {
        editorOeffnen();
        feld<QPushButton>("Command1(2)").click();
    }
    static QWidget* schirmOffen() { return formNamens("ScreenChecken"); }
    static QWidget& schirm() {
        auto* fenster = schirmOffen();
        if (!fenster)
            throw std::runtime_error("ScreenChecken is not open");
        return *fenster;
    }
    void knopf(const QString& name) {
        control<QPushButton>(schirm(), name).click();
        ereignisse();
    }
    static QWidget& vorschau(int i) { return control<QWidget>(schirm(), QString("Image1(%1)").arg(i)); }
    /// What a preview shows in its middle, pixels of the form.
    static std::int64_t gezeigt(int i) {
        const auto bild = vorschau(i).grab().toImage();
        return bild.pixel(bild.rect().center()) & 0xffffffU;
    }
    static std::vector<std::int64_t> gezeigte() {
        std::vector<std::int64_t> farben;
        for (int i = 0; i < 6; ++i)
            farben.push_back(gezeigt(i));
        return farben;
    }
    void klick(int i, Qt::MouseButton knopf = Qt::LeftButton) {
        QTest::mouseClick(&vorschau(i), knopf);
        ereignisse();
    }
    /// The form is closed, and with it all is written.
    void schliessen() {
        schirm().close();
        ereignisse();
    }

    /// As the user does it.
    void schliessenLassen() {
        QCloseEvent ereignis;
        QSpontaneKeyEvent::setSpontaneous(&ereignis);
        qApp->notify(&schirm(), &ereignis);
        ereignisse();
    }

    /// A poll with these buttons down; waits for so many tones more.
    void abfrage(std::uint32_t tasten, std::size_t toene) {
        const auto vorher = ton_.toene.size();
        tastenDruecken(tasten);
        vergehen(ABFRAGE);
        EXPECT_TRUE(QTest::qWaitFor([&] { return ton_.toene.size() >= vorher + toene; }))
            << ton_.toene.size() - vorher << " of " << toene << " tones";
    }
    /// Keeps the writer busy until the semaphore is released: no picture reaches its file before.
    void schreiberAufhalten(QSemaphore& frei) {
        schirm().findChild<Nebenarbeit*>()->auftrag(
            [&frei] {
                frei.acquire();
                return true;
            },
            [](bool) {});
    }
    /// What the form says is missing; "" where it says nothing.
    static std::string mangel() {
        const auto& zeile = control<QLabel>(schirm(), "lblMangel");
        return zeile.isVisible() ? zeile.text().toStdString() : "";
    }
    static std::string nichtGespeichert(const std::string& welche) {
        return "Nicht gespeichert: " + welche +
               ". Im Ordner „Bilder“ lässt sich nicht schreiben, oder der Datenträger ist voll.";
    }
    static std::string nichtAufgenommen(const std::string& welche) {
        return "Nicht aufgenommen: " + welche + ". Vom Bildschirm kam kein Bild.";
    }
    /// The tones since the last time.
    Toene toene() { return std::exchange(ton_.toene, {}); }
};

constexpr std::int64_t LEER = LEERE_FARBE;

} // namespace

TEST_F(Hintergrundtest, ZeigtDieBilderDesSchemasOderDasLeere) {
    bildLegen("S0L.bmp", ROT);
    bildLegen("s1r.Bmp", GRUEN);
    bildLegen("S2R.BMP", BLAU);
    oeffnen();
    EXPECT_EQ(schirm().windowTitle(), "Shote the Screen");
    EXPECT_EQ(gezeigte(), (std::vector<std::int64_t>{ROT, LEER, LEER, GRUEN, LEER, BLAU}));
    EXPECT_FALSE(vorschau(6).isVisible());
    EXPECT_EQ(control<QGroupBox>(schirm(), "Frame1").title(), "Bitte wählen");
    EXPECT_FALSE(control<QWidget>(schirm(), "Frame1").isVisible());
    for (const auto& [name, text] :
         std::vector<std::pair<const char*, const char*>>{{"Command1(0)", "Start"},
                                                          {"Command1(1)", "Stop"},
                                                          {"Command2(0)", "Neu"},
                                                          {"Command2(1)", "Wechseln"}})
        EXPECT_EQ(control<QPushButton>(schirm(), name).text(), text);
    EXPECT_TRUE(beschnittene(schirm()).empty());
}

TEST_F(Hintergrundtest, AuchMitGrosserSchriftHatAllesPlatz) {
    const Schriftgrad gross(20);
    oeffnen();
    klick(5, Qt::RightButton);
    EXPECT_TRUE(beschnittene(schirm()).empty());
    EXPECT_TRUE(schirm().rect().contains(control<QWidget>(schirm(), "Frame1").geometry()));
}

TEST_F(Hintergrundtest, OhneEinBildBleibenDieVorschauenLeer) {
    fs::remove_all(bilder());
    oeffnen();
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(gezeigt(i), 0x303030) << i;
}

TEST_F(Hintergrundtest, DieBilderWerdenNebenDerEreignisschleifeGeladen) {
    bildLegen("S0L.bmp", ROT);
    oeffnenOhneBilder();
    EXPECT_EQ(gezeigte(), std::vector<std::int64_t>(6, 0x303030)) << "the opening waits for none of them";
    EXPECT_TRUE(QTest::qWaitFor(
        [] { return gezeigte() == std::vector<std::int64_t>{ROT, LEER, LEER, LEER, LEER, LEER}; }));
}

TEST_F(Hintergrundtest, EinWechselVorDemLadenVerliertKeinBild) {
    bildLegen("S0L.BMP", ROT);
    bildLegen("S1R.BMP", GRUEN);
    oeffnenOhneBilder();
    QTest::mouseClick(&vorschau(0), Qt::LeftButton);
    control<QPushButton>(schirm(), "Command2(1)").click();
    QTest::mouseClick(&vorschau(3), Qt::LeftButton);
    ereignisse();
    EXPECT_EQ(gezeigte(), (std::vector<std::int64_t>{GRUEN, LEER, LEER, ROT, LEER, LEER}));
    schliessen();
    EXPECT_EQ(dateien(), (std::vector<std::int64_t>{GRUEN, -1, -1, ROT, -1, -1}));
    EXPECT_EQ(toene(), Toene{});
}

TEST_F(Hintergrundtest, WasVorDemLadenKommtBleibt) {
    for (const auto* name : {"S0L.BMP", "S0R.BMP", "S1L.BMP"})
        bildLegen(name, ROT);
    oeffnenOhneBilder();
    control<QPushButton>(schirm(), "Command1(0)").click();
    schirm_.farbe = BLAU;
    tastenDruecken(LSTICK);
    uhr_.vorUm(std::chrono::milliseconds{ABFRAGE});
    tastenDruecken(0);
    QTest::mouseClick(&vorschau(2), Qt::LeftButton);
    control<QPushButton>(schirm(), "Command2(0)").click();
    EXPECT_TRUE(QTest::qWaitFor([] { return gezeigt(1) == ROT && gezeigt(5) == LEER; }));
    EXPECT_EQ(gezeigte(), (std::vector<std::int64_t>{BLAU, ROT, LEER, LEER, LEER, LEER}));
    schliessen();
    EXPECT_EQ(dateien(), (std::vector<std::int64_t>{BLAU, ROT, LEER, -1, -1, -1}));
}

TEST_F(Hintergrundtest, SchliesstAuchVorDemLaden) {
    bildLegen("S0L.bmp", ROT);
    oeffnenOhneBilder();
    schliessen();
    EXPECT_EQ(schirmOffen(), nullptr);
    EXPECT_TRUE(form().isEnabled());
    EXPECT_EQ(dateifarbe("S0L.bmp"), ROT);
}

TEST_F(Hintergrundtest, VerbirgtUndSperrtDenEditorUndGibtIhnZurueck) {
    oeffnen();
    EXPECT_EQ(offen(), nullptr);
    bildLegen("S0L.bmp", BLAU);
    schliessen();
    EXPECT_EQ(schirmOffen(), nullptr);
    EXPECT_TRUE(form().isEnabled());
    EXPECT_TRUE(feld<QRadioButton>("Uschalt(0)").isChecked());
    const auto ecke = ebene().grab(QRect(200, 200, 1, 1)).toImage();
    EXPECT_EQ(farbe(ecke), BLAU) << "the editor has the new picture";
}

TEST_F(Hintergrundtest, ZurueckImEditorStehtErAufEbene0) {
    editorOeffnen();
    feld<QRadioButton>("Uschalt(2)").click();
    hintergrundknopf();
    schliessen();
    EXPECT_TRUE(feld<QRadioButton>("Uschalt(0)").isChecked());
}

TEST_F(Hintergrundtest, VorStartUndNachStopFragtNiemandDasPad) {
    oeffnen();
    pad_.da = false;
    vergehen(1000);
    EXPECT_EQ(toene(), Toene{});
    knopf("Command1(0)");
    vergehen(99);
    EXPECT_EQ(toene(), Toene{});
    vergehen(1);
    EXPECT_EQ(toene(), Toene{FEHLERTON});
    vergehen(300);
    EXPECT_EQ(toene(), (Toene{FEHLERTON, FEHLERTON, FEHLERTON})) << "one a poll";
    knopf("Command1(1)");
    vergehen(1000);
    EXPECT_EQ(toene(), Toene{});
}

TEST_F(Hintergrundtest, DieTastenWaehlenDieEbeneUndNehmenBilderAuf) {
    oeffnen();
    knopf("Command1(0)");
    struct Zeile {
        std::uint32_t ebenentaste;
        std::uint32_t sticktaste;
        std::size_t index;
    };
    auto erwartet = dateien();
    std::uint32_t farbe = 0x102030;
    for (const auto& zeile :
         {Zeile{KREIS, LSTICK, 4}, Zeile{KREIS, RSTICK, 5}, Zeile{KREUZ, LSTICK, 2}, Zeile{KREUZ, RSTICK, 3},
          Zeile{VIERECK, LSTICK, 0}, Zeile{VIERECK, RSTICK, 1}}) {
        abfrage(zeile.ebenentaste, 1);
        EXPECT_EQ(toene(), Toene{EBENENTON});
        EXPECT_EQ(dateien(), erwartet);
        schirm_.farbe = farbe += 0x10101;
        abfrage(zeile.sticktaste, 1);
        EXPECT_EQ(toene(), Toene{BILDTON});
        erwartet[zeile.index] = farbe;
        EXPECT_EQ(dateien(), erwartet);
        EXPECT_EQ(gezeigt(static_cast<int>(zeile.index)), farbe);
    }
    EXPECT_EQ(schirm_.aufnahmen, 6);
}

TEST_F(Hintergrundtest, NachStartGiltEbene0) {
    oeffnen();
    knopf("Command1(0)");
    abfrage(KREIS, 1);
    knopf("Command1(0)");
    abfrage(RSTICK, 1);
    EXPECT_EQ(toene(), (Toene{EBENENTON, BILDTON}));
    EXPECT_EQ(dateien(), (std::vector<std::int64_t>{-1, 0, -1, -1, -1, -1}));
}

TEST_F(Hintergrundtest, DerSatzDesPadsWirdMitGroesseUndFlaggenVerlangt) {
    struct Mithoerer final : Joystick {
        std::uint32_t joyGetPosEx(std::uint32_t id, JOYINFOEX& info) override {
            anfragen.push_back({id, info.dwSize, info.dwFlags});
            return JOYERR_NOERROR;
        }
        std::vector<std::array<std::uint32_t, 3>> anfragen;
    } pad;
    ScreenChecken form(bilder().string(), "S", Schirmgeraete{pad, uhr_, ton_, schirm_});
    control<QPushButton>(form, "Command1(0)").click();
    vergehen(2 * ABFRAGE);
    const std::array<std::uint32_t, 3> anfrage{0, 64, 255};
    EXPECT_EQ(pad.anfragen, (std::vector{anfrage, anfrage}));
    EXPECT_EQ(toene(), Toene{});
}

TEST_F(Hintergrundtest, NurEineTasteAlleinZaehlt) {
    oeffnen();
    knopf("Command1(0)");
    for (const std::uint32_t wort :
         {std::uint32_t{0}, KREUZ | KREIS, VIERECK | LSTICK, LSTICK | RSTICK, LSTICK | taste(16), taste(0),
          taste(4), taste(5), taste(6), taste(7), taste(8), taste(9), taste(12)}) {
        abfrage(wort, 0);
        EXPECT_EQ(toene(), Toene{}) << wort;
    }
    EXPECT_EQ(schirm_.aufnahmen, 0);
}

TEST_F(Hintergrundtest, EineGehalteneSticktasteNimmtBeiJederAbfrageEinBild) {
    oeffnen();
    knopf("Command1(0)");
    QSemaphore frei;
    schreiberAufhalten(frei);
    for (int i = 1; i <= 5; ++i) {
        schirm_.farbe = static_cast<std::uint32_t>(i);
        abfrage(LSTICK, 0);
        EXPECT_EQ(schirm_.aufnahmen, i);
        EXPECT_EQ(toene(), Toene{});
    }
    frei.release();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ton_.toene.size() == 5; }));
    EXPECT_EQ(toene(), Toene(5, BILDTON));
    EXPECT_EQ(dateifarbe("S0L.BMP"), 5);
}

TEST_F(Hintergrundtest, AchtUngeschriebeneBilderEinerVorschauSindGenug) {
    oeffnen();
    knopf("Command1(0)");
    QSemaphore frei;
    schreiberAufhalten(frei);
    for (int i = 1; i <= 10; ++i) {
        schirm_.farbe = static_cast<std::uint32_t>(i);
        abfrage(LSTICK, 0);
        EXPECT_EQ(schirm_.aufnahmen, std::min(i, 8));
    }
    abfrage(RSTICK, 0);
    EXPECT_EQ(schirm_.aufnahmen, 9) << "each preview has its own";
    frei.release();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ton_.toene.size() == 9; }));
    EXPECT_EQ(toene(), Toene(9, BILDTON));
    EXPECT_EQ(dateifarbe("S0L.BMP"), 8);
    abfrage(LSTICK, 1);
    EXPECT_EQ(schirm_.aufnahmen, 10);
}

TEST_F(Hintergrundtest, SolangeEinBildUnterwegsIstWirdFuerDieVorschauKeinesGenommen) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.spaeter = true;
    schirm_.farbe = ROT;
    abfrage(LSTICK, 0);
    schirm_.farbe = GRUEN;
    abfrage(LSTICK, 0);
    abfrage(RSTICK, 0);
    EXPECT_EQ(schirm_.aufnahmen, 2);
    schirm_.liefern();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ton_.toene.size() == 2; }));
    EXPECT_EQ(toene(), (Toene{BILDTON, BILDTON}));
    EXPECT_EQ(dateifarbe("S0L.BMP"), ROT);
    EXPECT_EQ(dateifarbe("S0R.BMP"), GRUEN);
}

TEST_F(Hintergrundtest, NachFuenfSekundenOhneBildWirdEinNeuesGenommen) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.spaeter = true;
    abfrage(LSTICK, 0);
    vergehen(2500);
    abfrage(RSTICK, 0); // waits from its own press on
    tastenDruecken(LSTICK);
    vergehen(2399);
    EXPECT_EQ(toene(), Toene{});
    EXPECT_EQ(schirm_.aufnahmen, 2);
    tastenDruecken(0);
    vergehen(1);
    EXPECT_EQ(toene(), Toene{FEHLERTON});
    schirm_.spaeter = false;
    schirm_.farbe = GRUEN;
    abfrage(LSTICK, 1);
    EXPECT_EQ(toene(), Toene{BILDTON});
    EXPECT_EQ(dateifarbe("S0L.BMP"), GRUEN);
    abfrage(RSTICK, 0);
    EXPECT_EQ(schirm_.aufnahmen, 3) << "the right one is waited for";
    tastenDruecken(0);
    vergehen(2399);
    EXPECT_EQ(toene(), Toene{});
    vergehen(10'000);
    EXPECT_EQ(toene(), Toene{FEHLERTON}) << "told once";
}

TEST_F(Hintergrundtest, StopGibtAufWasUnterwegsIst) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.spaeter = true;
    abfrage(LSTICK, 0);
    abfrage(RSTICK, 0);
    tastenDruecken(0);
    knopf("Command1(1)");
    EXPECT_EQ(toene(), Toene{FEHLERTON});
    knopf("Command1(1)");
    vergehen(10'000);
    EXPECT_EQ(toene(), Toene{}) << "told once";
    knopf("Command1(0)");
    schirm_.spaeter = false;
    schirm_.farbe = GRUEN;
    abfrage(LSTICK, 1);
    EXPECT_EQ(toene(), Toene{BILDTON});
    EXPECT_EQ(dateifarbe("S0L.BMP"), GRUEN);
}

TEST_F(Hintergrundtest, StopSagtAuchEinEinzelnesDasNichtKam) {
    oeffnen();
    knopf("Command1(0)");
    knopf("Command1(1)");
    EXPECT_EQ(toene(), Toene{}) << "nothing was on its way";
    knopf("Command1(0)");
    schirm_.spaeter = true;
    abfrage(LSTICK, 0);
    knopf("Command1(1)");
    EXPECT_EQ(toene(), Toene{FEHLERTON});
}

TEST_F(Hintergrundtest, EinAufgegebenesBildKommtNurWennKeinNeueresVerlangtIst) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.spaeter = true;
    schirm_.farbe = ROT;
    abfrage(LSTICK, 0);
    abfrage(RSTICK, 0);
    tastenDruecken(0);
    knopf("Command1(1)");
    EXPECT_EQ(toene(), Toene{FEHLERTON});
    knopf("Command1(0)");
    schirm_.spaeter = false;
    schirm_.farbe = GRUEN;
    abfrage(LSTICK, 1);
    tastenDruecken(0);
    schirm_.liefern();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ton_.toene.size() == 2; }));
    schirm().findChild<Nebenarbeit*>()->abwarten();
    EXPECT_EQ(toene(), (Toene{BILDTON, BILDTON}));
    EXPECT_EQ(dateien(), (std::vector<std::int64_t>{GRUEN, ROT, -1, -1, -1, -1}));
    EXPECT_EQ(gezeigt(0), GRUEN);
    EXPECT_EQ(gezeigt(1), ROT);
}

TEST_F(Hintergrundtest, DassEinAufgegebenesBildAusbleibtWirdNichtNochEinmalGesagt) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.spaeter = true;
    schirm_.da = false;
    abfrage(LSTICK, 0);
    tastenDruecken(0);
    knopf("Command1(1)");
    EXPECT_EQ(toene(), Toene{FEHLERTON});
    schirm_.liefern();
    ereignisse();
    EXPECT_EQ(toene(), Toene{});
}

TEST_F(Hintergrundtest, EinSpaetesBildGehoertZurEbeneDesTastendrucks) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.spaeter = true;
    schirm_.farbe = ROT;
    abfrage(KREUZ, 1);
    abfrage(LSTICK, 0);
    abfrage(KREIS, 1);
    schirm_.liefern();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ton_.toene.size() == 3; }));
    EXPECT_EQ(dateien(), (std::vector<std::int64_t>{-1, -1, ROT, -1, -1, -1}));
}

TEST_F(Hintergrundtest, EinBildDasNachDemSchliessenKommtVerfaellt) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.spaeter = true;
    abfrage(LSTICK, 0);
    auto* alte = &schirm();
    alte->close();
    schirm_.liefern();
    ereignisse();
    schirm_.liefern();
    EXPECT_EQ(toene(), Toene{});
    EXPECT_EQ(dateien(), (std::vector<std::int64_t>(6, -1)));
}

TEST_F(Hintergrundtest, OhneBildschirmbildNurDerLangeTon) {
    bildLegen("S0L.bmp", ROT);
    oeffnen();
    knopf("Command1(0)");
    schirm_.da = false;
    abfrage(LSTICK, 1);
    abfrage(LSTICK, 1);
    EXPECT_EQ(toene(), (Toene{FEHLERTON, FEHLERTON}));
    EXPECT_EQ(gezeigt(0), ROT);
    EXPECT_EQ(dateifarbe("S0L.bmp"), ROT);
}

TEST_F(Hintergrundtest, EinBildErsetztDasGleichenNamensUndWirdEineBitmap) {
    bildLegen("s0l.bMp", ROT);
    oeffnen();
    knopf("Command1(0)");
    schirm_.farbe = GRUEN;
    schirm_.breite = 67; // rows are padded
    abfrage(LSTICK, 1);
    EXPECT_EQ(dateifarbe("s0l.bMp"), GRUEN);
    auto namen = namenIn(bilder());
    std::ranges::sort(namen);
    EXPECT_EQ(namen, (std::vector<std::string>{"Joy2.bmp", "s0l.bMp"}));
    const auto inhalt = dateiLesen(bilder() / "s0l.bMp");
    EXPECT_EQ(inhalt.substr(0, 2), "BM");
    EXPECT_EQ(inhalt[28], 24) << "bits a pixel";
    EXPECT_EQ(inhalt.size(), 54U + 36 * 204);
}

TEST_F(Hintergrundtest, WasSichNichtSchreibenLaesstHatDenLangenTonUndDasAlteBleibt) {
    bildLegen("S0L.bmp", ROT);
    oeffnen();
    knopf("Command1(0)");
    schirm_.farbe = GRUEN;
    fs::permissions(bilder() / "S0L.bmp", fs::perms{0444});
    abfrage(LSTICK, 1);
    EXPECT_EQ(toene(), Toene{FEHLERTON});
    EXPECT_EQ(dateifarbe("S0L.bmp"), ROT);
    EXPECT_EQ(gezeigt(0), GRUEN);
    fs::remove_all(bilder());
    abfrage(LSTICK, 1);
    EXPECT_EQ(toene(), Toene{FEHLERTON});
    EXPECT_FALSE(fs::exists(bilder()));
}

TEST_F(Hintergrundtest, DieFormSagtWelchesBildSichNichtSpeichernLaesstBisEinesDaIst) {
    oeffnen();
    knopf("Command1(0)");
    EXPECT_EQ(mangel(), "");
    bildLegen("S0L.bmp", ROT);
    bildLegen("S0R.bmp", ROT);
    fs::permissions(bilder() / "S0L.bmp", fs::perms{0444});
    fs::permissions(bilder() / "S0R.bmp", fs::perms{0444});
    abfrage(LSTICK, 1);
    EXPECT_EQ(mangel(), nichtGespeichert("„Standart, Linker Stick“"));
    abfrage(RSTICK, 1);
    EXPECT_EQ(mangel(), nichtGespeichert("„Standart, Linker Stick“, „Standart, Rechter Stick“"));
    ereignisse();
    EXPECT_EQ(beschnittene(schirm()), std::vector<std::string>{});
    fs::permissions(bilder() / "S0L.bmp", fs::perms{0644});
    abfrage(LSTICK, 1);
    EXPECT_EQ(mangel(), nichtGespeichert("„Standart, Rechter Stick“"));
    fs::permissions(bilder() / "S0R.bmp", fs::perms{0644});
    abfrage(RSTICK, 1);
    EXPECT_EQ(mangel(), "");
}

TEST_F(Hintergrundtest, DieFormSagtWelchesBildNichtKam) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.spaeter = true;
    abfrage(RSTICK, 0);
    tastenDruecken(0);
    vergehen(4999);
    EXPECT_EQ(mangel(), "");
    vergehen(1);
    EXPECT_EQ(mangel(), nichtAufgenommen("„Standart, Rechter Stick“"));
    abfrage(KREUZ, 1);
    abfrage(LSTICK, 0);
    knopf("Command1(1)");
    EXPECT_EQ(mangel(), nichtAufgenommen("„Standart, Rechter Stick“, „Umschalt 1, Linker Stick“"));
}

TEST_F(Hintergrundtest, EinUngespeichertesBildGehtVorEinemDasNichtKam) {
    bildLegen("S0L.bmp", ROT);
    fs::permissions(bilder() / "S0L.bmp", fs::perms{0444});
    oeffnen();
    knopf("Command1(0)");
    abfrage(LSTICK, 1);
    schirm_.spaeter = true;
    abfrage(LSTICK, 0);
    knopf("Command1(1)");
    EXPECT_EQ(mangel(), nichtGespeichert("„Standart, Linker Stick“"));
}

TEST_F(Hintergrundtest, WasErstBeimSchliessenScheitertHatEineBox) {
    bildLegen("S0L.bmp", ROT);
    fs::permissions(bilder() / "S0L.bmp", fs::perms{0444});
    oeffnen();
    knopf("Command1(0)");
    tastenDruecken(LSTICK);
    vergehen(ABFRAGE);
    Boxleser boxen;
    schliessenLassen();
    EXPECT_EQ(boxen.gesehen(),
              std::vector{(Gesehen{"Shote the Screen",
                                   QString::fromStdString(nichtGespeichert("„Standart, Linker Stick“")),
                                   QMessageBox::Warning, QMessageBox::Ok})});
    EXPECT_NE(offen(), nullptr);
}

TEST_F(Hintergrundtest, WasSchonGesagtIstHatBeimSchliessenKeineBox) {
    bildLegen("S0L.bmp", ROT);
    fs::permissions(bilder() / "S0L.bmp", fs::perms{0444});
    oeffnen();
    knopf("Command1(0)");
    abfrage(LSTICK, 1);
    ASSERT_NE(mangel(), "");
    Boxleser boxen;
    schliessenLassen();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_NE(offen(), nullptr);
}

TEST_F(Hintergrundtest, EinNameMitTrennerVerlaesstDenOrdnerNicht) {
    const std::string name = "../x";
    schema(name);
    linien(name);
    dateiSchreiben(datenbank_.ordner() / "x0L.BMP", "bleibt");
    datenbank_.sql("DELETE FROM tblTastatur WHERE Schemaname = 'S';");
    oeffnen();
    knopf("Command1(0)");
    abfrage(LSTICK, 1);
    EXPECT_EQ(toene(), Toene{FEHLERTON});
    EXPECT_EQ(dateiLesen(datenbank_.ordner() / "x0L.BMP"), "bleibt");
    EXPECT_EQ(namenIn(bilder()), std::vector<std::string>{"Joy2.bmp"});
}

TEST_F(Hintergrundtest, DerRahmenStehtUmDieGewaehlteVorschau) {
    oeffnen();
    auto& rahmen = control<QWidget>(schirm(), "Shape1");
    for (const int i : {3, 5, 0}) {
        klick(i);
        EXPECT_TRUE(rahmen.geometry().contains(vorschau(i).geometry().adjusted(-1, -1, 1, 1))) << i;
        EXPECT_FALSE(rahmen.geometry().intersects(vorschau((i + 1) % 6).geometry())) << i;
    }
    schirm().resize(schirm().size() + QSize(120, 90));
    ereignisse();
    EXPECT_TRUE(rahmen.geometry().contains(vorschau(0).geometry().adjusted(-1, -1, 1, 1)));
}

TEST_F(Hintergrundtest, DieAuswahlOeffnetSichAnDerVorschauUndLiegtInDerForm) {
    oeffnen();
    auto& auswahl = control<QWidget>(schirm(), "Frame1");
    for (int i = 0; i < 6; ++i) {
        klick(i, i % 2 == 0 ? Qt::RightButton : Qt::MiddleButton);
        EXPECT_TRUE(auswahl.isVisible());
        EXPECT_TRUE(auswahl.geometry().intersects(vorschau(i).geometry())) << i;
        EXPECT_TRUE(schirm().rect().contains(auswahl.geometry())) << i;
    }
    EXPECT_TRUE(beschnittene(schirm()).empty());
    klick(1);
    EXPECT_FALSE(auswahl.isVisible());
}

TEST_F(Hintergrundtest, DieAuswahlHebtSichVonJedemBildAb) {
    oeffnen();
    klick(0, Qt::RightButton);
    const auto bild = schirm().grab(control<QWidget>(schirm(), "Frame1").geometry()).toImage();
    const auto innen = bild.pixel(3, 3);
    for (const auto& ort : {QPoint(0, bild.height() / 2), QPoint(bild.width() - 1, bild.height() / 2),
                            QPoint(bild.width() / 2, 0), QPoint(bild.width() / 2, bild.height() - 1)})
        EXPECT_LT(qGray(bild.pixel(ort)), qGray(innen) - 60) << ort.x() << "," << ort.y();
    for (int y = 1; y < bild.height() - 1; ++y) // the title keeps off the edge
        EXPECT_EQ(bild.pixel(2, y), innen) << y;
}

TEST_F(Hintergrundtest, NeuLeertDieGewaehlteVorschauUndIhreDatei) {
    bildLegen("S1R.bmp", ROT);
    bildLegen("S2L.bmp", GRUEN);
    oeffnen();
    klick(3);
    klick(4, Qt::RightButton);
    knopf("Command2(0)");
    EXPECT_EQ(gezeigte(), (std::vector<std::int64_t>{LEER, LEER, LEER, LEER, GRUEN, LEER}));
    schliessen();
    EXPECT_EQ(dateifarbe("S1R.bmp"), LEER);
    EXPECT_EQ(dateifarbe("S2L.bmp"), GRUEN);
    EXPECT_EQ(toene(), Toene{});
}

TEST_F(Hintergrundtest, NeuOhneDasLeereBildLaesstAllesWieEsIst) {
    bildLegen("S0L.bmp", ROT);
    fs::remove(bilder() / "Joy2.bmp");
    oeffnen();
    klick(0, Qt::RightButton);
    knopf("Command2(0)");
    schliessen();
    EXPECT_EQ(dateifarbe("S0L.bmp"), ROT);
    EXPECT_EQ(toene(), Toene{FEHLERTON});
}

TEST_F(Hintergrundtest, WechselnVertauschtMitDerNaechstenVorschau) {
    bildLegen("S0L.bmp", ROT);
    bildLegen("S1R.bmp", GRUEN);
    oeffnen();
    klick(0);
    klick(0, Qt::RightButton);
    knopf("Command2(1)");
    klick(3);
    EXPECT_EQ(gezeigte(), (std::vector<std::int64_t>{GRUEN, LEER, LEER, ROT, LEER, LEER}));
    EXPECT_FALSE(control<QWidget>(schirm(), "Frame1").isVisible());
    klick(5); // one exchange only
    EXPECT_EQ(gezeigte(), (std::vector<std::int64_t>{GRUEN, LEER, LEER, ROT, LEER, LEER}));
    schliessen();
    EXPECT_EQ(dateifarbe("S0L.bmp"), GRUEN);
    EXPECT_EQ(dateifarbe("S1R.bmp"), ROT);
    EXPECT_EQ(namenIn(bilder()).size(), 3U);
    EXPECT_EQ(toene(), Toene{});
}

TEST_F(Hintergrundtest, WechselnMitEinerLeerenVorschauSpeichertDasLeereBild) {
    bildLegen("S0L.bmp", ROT);
    oeffnen();
    klick(5);
    klick(5, Qt::RightButton);
    knopf("Command2(1)");
    klick(0);
    schliessen();
    EXPECT_EQ(dateien(), (std::vector<std::int64_t>{LEER, -1, -1, -1, -1, ROT}));
    EXPECT_EQ(namenIn(bilder()).size(), 3U);
}

TEST_F(Hintergrundtest, WechselnMitSichSelbstSpeichertUnveraendert) {
    bildLegen("S0L.bmp", ROT);
    oeffnen();
    for (const int i : {0, 1}) {
        klick(i);
        klick(i, Qt::RightButton);
        knopf("Command2(1)");
        klick(i);
    }
    EXPECT_EQ(gezeigte(), (std::vector<std::int64_t>{ROT, LEER, LEER, LEER, LEER, LEER}));
    schliessen();
    EXPECT_EQ(dateifarbe("S0L.bmp"), ROT);
    EXPECT_EQ(dateifarbe("S0R.BMP"), LEER) << "it is saved, though it was the empty one";
}

TEST_F(Hintergrundtest, EinFehlschlagDerMausHatDenLangenTon) {
    oeffnen();
    fs::remove_all(bilder());
    klick(2);
    knopf("Command2(1)");
    klick(4);
    Boxleser boxen;
    schliessen();
    EXPECT_EQ(toene(), (Toene{FEHLERTON, FEHLERTON}));
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{}) << "the program closes it, not the user";
    EXPECT_NE(offen(), nullptr);
}

TEST_F(Hintergrundtest, EinBildUndDannEinWechselBleibenInDerReihenfolge) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.farbe = ROT;
    tastenDruecken(LSTICK);
    vergehen(ABFRAGE);
    klick(0);
    knopf("Command2(1)");
    klick(1);
    schliessen();
    EXPECT_EQ(dateien(), (std::vector<std::int64_t>{LEER, ROT, -1, -1, -1, -1}));
}

TEST_F(Hintergrundtest, DasEndeDesProgrammsSchreibtWasUnterwegsIst) {
    oeffnen();
    knopf("Command1(0)");
    schirm_.farbe = BLAU;
    tastenDruecken(RSTICK);
    vergehen(ABFRAGE);
    programm_.reset();
    EXPECT_EQ(dateifarbe("S0R.BMP"), BLAU);
}

TEST_F(Hintergrundtest, LaeuftNebenEinemSchema) {
    oeffnen();
    control<QPushButton>(haupt(), "Command1(5)").click();
    ASSERT_NE(laufFenster(), nullptr);
    knopf("Command1(0)");
    schirm_.farbe = GRUEN;
    abfrage(LSTICK, 1);
    EXPECT_EQ(dateifarbe("S0L.BMP"), GRUEN);
    schliessen();
    EXPECT_NE(offen(), nullptr);
    EXPECT_NE(laufFenster(), nullptr);
}

TEST_F(Hintergrundtest, BleibtBeimSchemaSeinesEditors) {
    schema("T");
    linien("T");
    oeffnen();
    control<QComboBox>(haupt(), "Combo1").setCurrentIndex(1);
    ereignisse();
    knopf("Command1(0)");
    schirm_.farbe = ROT;
    abfrage(LSTICK, 1);
    EXPECT_EQ(dateifarbe("S0L.BMP"), ROT);
}

TEST_F(Hintergrundtest, GehtMitSeinemSchema) {
    schema("T");
    oeffnen();
    Boxleser leser({QMessageBox::Yes});
    control<QPushButton>(haupt(), "Command1(3)").click();
    ereignisse();
    EXPECT_EQ(schirmOffen(), nullptr);
    EXPECT_EQ(offen(), nullptr);
}

namespace {

class RechterHintergrundtest : public Hintergrundtest {
protected:
    RechterHintergrundtest() : Hintergrundtest(RECHTER_ZWILLING) {}

    void linkerKnopf() { control<QPushButton>(haupt(), "Command1(1)").click(); }
    static QWidget& linker() {
        auto* fenster = formNamens("frmJust");
        if (!fenster)
            throw std::runtime_error("frmJust is not to be seen");
        return *fenster;
    }
};

} // namespace

TEST_F(RechterHintergrundtest, GibtDenRechtenEditorZurueck) {
    oeffnen();
    EXPECT_EQ(offen(), nullptr);
    schliessen();
    EXPECT_TRUE(form().isEnabled());
    EXPECT_EQ(formNamens("frmJust"), nullptr);
}

TEST_F(RechterHintergrundtest, BeideEditorenKommenZurueck) {
    starten();
    linkerKnopf();
    editorknopf();
    hintergrundknopf();
    control<QPushButton>(linker(), "Command1(2)").click();
    EXPECT_EQ(formNamens("frmJust"), nullptr);
    schliessen();
    EXPECT_TRUE(form().isEnabled());
    EXPECT_TRUE(linker().isEnabled());
}

TEST_F(RechterHintergrundtest, DerLinkeKommtAuchNachDemEndeDesRechtenZurueck) {
    starten();
    linkerKnopf();
    editorknopf();
    form().close(); // `OffenerEditor` stays at 2
    ereignisse();
    control<QPushButton>(linker(), "Command1(2)").click();
    schliessen();
    EXPECT_TRUE(linker().isEnabled());
    EXPECT_EQ(offen(), nullptr);
}

TEST_F(RechterHintergrundtest, OhneEditorGehtEsInsNichts) {
    starten();
    linkerKnopf();
    editorknopf();
    hintergrundknopf();
    linker().close(); // `OffenerEditor` is 0
    editorknopf();    // brings the right one back
    EXPECT_TRUE(form().isEnabled());
    form().close();
    ereignisse();
    schliessen();
    EXPECT_EQ(offen(), nullptr);
    EXPECT_EQ(formNamens("frmJust"), nullptr);
    EXPECT_TRUE(haupt().isVisible());
}

TEST(Nebenarbeit, EinAuftragKommtNachDemAnderen) {
    constexpr int AUFTRAEGE = 200;
    std::atomic<int> laufende = 0;
    std::atomic<int> meiste = 0;
    std::vector<int> fertige;
    std::vector<int> erwartet;
    Nebenarbeit schreiber(nullptr);
    for (int i = 0; i < AUFTRAEGE; ++i) {
        erwartet.push_back(i);
        schreiber.auftrag(
            [&] {
                meiste = std::max(meiste.load(), ++laufende);
                for (int pause = 0; pause < 100; ++pause)
                    std::this_thread::yield();
                --laufende;
                return true;
            },
            [&fertige, i](bool) { fertige.push_back(i); });
    }
    schreiber.abwarten();
    EXPECT_EQ(meiste, 1);
    EXPECT_EQ(fertige, erwartet);
}
