// SPDX-License-Identifier: GPL-3.0-or-later
// Handing Schemas on and taking them up at the main form: keys, menu, files that are dropped, dialogs, and
// open editors that follow a new name.
#include "editors/exchange/Ebenenvorschau.h"
#include "editors/exchange/Schemafund.h"
#include "editors/stick/Ebenenbild.h"
#include "store/schema/Schemauebernahme.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Bauart.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Schemaplatzprobe.h"

#include <gmock/gmock.h>

#include <QBuffer>
#include <QComboBox>
#include <QDialog>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QUrl>
#include <QtEndian>
#include <QtTest/QTest>

#include <zlib.h>

namespace fs = std::filesystem;

namespace {

using Namen = std::vector<std::string>;
using testing::ElementsAre;
using testing::HasSubstr;

/// While it lives, does to each dialog that comes up what is next in its list.
class Dialoghand {
public:
    using Griff = std::function<void(QDialog&)>;

    explicit Dialoghand(std::vector<Griff> griffe) : griffe_(std::move(griffe)) {
        QObject::connect(&takt_, &QTimer::timeout, [this] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog || qobject_cast<QMessageBox*>(dialog) || dialog == letzter_)
                return;
            letzter_ = dialog;
            namen_.push_back(dialog->objectName().toStdString());
            if (naechster_ < griffe_.size())
                griffe_[naechster_++](*dialog);
            else
                dialog->reject();
        });
        takt_.start(0);
        // A test that forgets one would wait for ever.
        QObject::connect(&geduld_, &QTimer::timeout, [this] {
            if (letzter_ && letzter_->isVisible()) {
                ADD_FAILURE() << "left open: " << letzter_->objectName().toStdString();
                letzter_->reject();
            }
        });
        geduld_.start(10000);
    }
    const Namen& namen() const { return namen_; }

private:
    QTimer takt_;
    QTimer geduld_;
    std::vector<Griff> griffe_;
    std::size_t naechster_ = 0;
    QPointer<QDialog> letzter_;
    Namen namen_;
};

Dialoghand::Griff dateiNennen(const std::string& pfad) {
    return [pfad](QDialog& dialog) {
        auto& wahl = dynamic_cast<QFileDialog&>(dialog);
        wahl.setDirectory(QString::fromStdString(fs::path(pfad).parent_path().string()));
        wahl.findChild<QLineEdit*>()->setText(QString::fromStdString(fs::path(pfad).filename().string()));
        QMetaObject::invokeMethod(&wahl, "accept");
    };
}
QPushButton& okVon(QDialog& dialog) {
    return *dialog.findChild<QPushButton*>("cmdOk");
}
void annehmen(QDialog& dialog) {
    okVon(dialog).click();
}
Dialoghand::Griff nennen(const QString& name) {
    return [name](QDialog& dialog) {
        auto* feld = dialog.findChild<QLineEdit*>("txtName");
        feld->selectAll();
        QTest::keyClicks(feld, name);
        okVon(dialog).click();
    };
}

QImage buntesBild(unsigned saat) {
    Zufallsschema zufall(saat);
    QImage bild(static_cast<int>(zufall.los(20)) + 1, static_cast<int>(zufall.los(20)) + 1,
                QImage::Format_RGB32);
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            bild.setPixel(x, y, 0xFF000000U | (zufall.los(1U << 24)));
    return bild;
}

QByteArray png(const QImage& bild) {
    QByteArray bytes;
    QBuffer strom(&bytes);
    strom.open(QIODevice::WriteOnly);
    EXPECT_TRUE(bild.save(&strom, "PNG"));
    return bytes;
}
/// The same with another size in its head, whose sum is right.
QByteArray mitMassen(QByteArray bytes, quint32 breite, quint32 hoehe) {
    constexpr qsizetype KOPF = 12; // name of the part, then width and height
    constexpr qsizetype LAENGE = 17;
    qToBigEndian(breite, bytes.data() + KOPF + 4);
    qToBigEndian(hoehe, bytes.data() + KOPF + 8);
    const auto* kopf = reinterpret_cast<const unsigned char*>(bytes.constData()) + KOPF;
    qToBigEndian(static_cast<quint32>(crc32(0, kopf, LAENGE)), bytes.data() + KOPF + LAENGE);
    return bytes;
}

/// All files below a folder with their bytes.
std::map<std::string, std::string> dateienIn(const fs::path& ordner) {
    std::map<std::string, std::string> alle;
    for (const auto& eine : fs::recursive_directory_iterator(ordner))
        if (eine.is_regular_file())
            alle[eine.path().string()] = dateiLesen(eine.path());
    return alle;
}

class Weitergabetest : public Formtest {
protected:
    Weitergabetest() {
        fs::create_directory(bilder());
        schemaLegen("S");
        Schemabau(datenbank_, "T").anlegen();
    }

    void schemaLegen(const std::string& name) {
        Schemabau schema(datenbank_, name);
        schema.taste(2, "1,65,0-0-0").taste(5, "1,66,0-0-0", 2);
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
            schema.linien(seite, 1, {27072, 38399, 25941, 39679})
                .leereLinienAb(seite, 2)
                .feld(seite, {27072, 0, 0, 0}, "0,0,5,10");
        schema.ungeglaettet().anlegen();
        BildSpeichern(bilder().string(), name + "0L.bmp", buntesBild(1));
    }

    fs::path bilder() const { return datenbank_.ordner() / "Bilder"; }
    Schemaplatz platz() const {
        return {datenbank_.pfad(), bilder().string() + "/", (datenbank_.ordner() / "Gamepad.xml").string()};
    }
    std::string datei() const { return (ordner_.pfad() / "S.schema").string(); }
    /// A file of a `Schema` that somebody else has made.
    void dateiLegen(const std::string& name = "Fremdes") {
        auto packung = schemaPacken(platz(), "S", "Game-Pad-Konfic 9");
        packung.paket.name = name;
        packung.paket.daten.achsen = Gamepadzeile{{"dwXPos", "ry"}, {"Schubregler", "4"}};
        schemadateiSchreiben(datei(), packung.paket);
    }

    QComboBox& combo() { return control<QComboBox>(haupt(), "Combo1"); }
    Namen liste() {
        Namen namen;
        for (int i = 0; i < combo().count(); ++i)
            namen.push_back(combo().itemText(i).toStdString());
        return namen;
    }
    void waehlen(const char* name) {
        combo().setCurrentText(name);
        QMetaObject::invokeMethod(&combo(), "activated", Q_ARG(int, combo().currentIndex()));
    }
    /// In the text field, which has keys of its own.
    void taste(Qt::Key eine) {
        haupt().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&haupt()));
        combo().setFocus();
        QTest::keyClick(combo().lineEdit(), eine, Qt::ControlModifier);
    }
    void tat(int index) { control<QAction>(haupt(), QString("mnuSchema(%1)").arg(index)).trigger(); }
    static QLabel& label(QDialog& dialog, const char* name) { return *dialog.findChild<QLabel*>(name); }

    /// `Schema`s of these seeds go from one data folder into another, each by a file.
    void hinUndHer(unsigned von, unsigned bis) {
        const Schemaplatzprobe eine;
        const Schemaplatzprobe andere;
        for (unsigned saat = von; saat < bis && !HasFailure(); ++saat) {
            SCOPED_TRACE("seed " + std::to_string(saat));
            const std::string name = "Schema " + std::to_string(saat);
            Zufallsschema zufall(saat);
            auto daten = zufall.daten();
            if (saat % 50 != 0)
                daten.achsen.reset(); // the axis file is written as a whole each time
            std::map<std::string, QImage> gemalte;
            for (const auto& endung : bildendungen())
                if (zufall.los(saat % 20 == 0 ? 2 : 100) == 0)
                    gemalte[endung] = buntesBild(saat * 6 + zufall.los(6));
            std::vector<std::string> endungen;
            for (const auto& [endung, bild] : gemalte)
                endungen.push_back(endung);
            schemaAufnehmen(eine.platz(), name, daten, endungen, [&](std::string_view endung) {
                return bitmap(gemalte.at(std::string(endung))).toStdString();
            });

            const auto packung = schemaPacken(eine.platz(), name, "Programm");
            schemadateiSchreiben(datei(), packung.paket);
            fundAufnehmen(andere.platz(), name, fundInDatei(datei()));

            const auto wieder = schemaPacken(andere.platz(), name, "Programm");
            EXPECT_EQ(schemadateiInhalt(wieder.paket),
                      dateiLesen(datei())); // handed on again it is the same file
            EXPECT_EQ(wieder.paket.daten, daten);
            EXPECT_EQ(wieder.paket.bilder.size(), gemalte.size());
            for (const auto& [endung, bild] : gemalte)
                EXPECT_EQ(BildLaden(andere.platz().bilderPfad, name + endung).convertToFormat(bild.format()),
                          bild);
        }
        EXPECT_EQ(eine.beiwerk(), andere.beiwerk());
        EXPECT_EQ(eine.datenbank.inhalt(), andere.datenbank.inhalt());
    }

    const Testordner ordner_;
};

constexpr int WEITERGEBEN = 0;
constexpr int AUFNEHMEN = 1;
constexpr int AUS_DATENBANK = 2;
constexpr int UMBENENNEN = 3;
constexpr int VERDOPPELN = 4;

} // namespace

// --- a Schema as a file and back ---

TEST_F(Weitergabetest, TausendSchemataKommenDurchEineDateiWieSieWaren) {
    constexpr unsigned ANZAHL = ADRESSPRUEFER ? 100 : 1000; // a debug build does all of them
    constexpr unsigned JE_ORDNER = 50;
    for (unsigned anfang = 0; anfang < ANZAHL && !HasFailure(); anfang += JE_ORDNER)
        hinUndHer(anfang, anfang + JE_ORDNER);
}

TEST_F(Weitergabetest, EinBildDasSichNichtLesenLaesstGehtNichtMit) {
    dateiSchreiben(bilder() / "S2R.bmp", "kein Bild");
    const auto packung = schemaPacken(platz(), "S", "x");
    EXPECT_THAT(packung.unlesbareBilder, ElementsAre("S2R.bmp"));
    EXPECT_EQ(packung.paket.bilder.size(), 1U);
}

TEST_F(Weitergabetest, EinBildInDerDateiWirdGeprueftBevorEtwasGeschieht) {
    auto packung = schemaPacken(platz(), "S", "x");
    packung.paket.bilder[0].png.resize(20);
    schemadateiSchreiben(datei(), packung.paket);
    EXPECT_EQ(fehlernummer([&] { fundInDatei(datei()); }), 13);
    packung.paket.bilder[0].png = "BM" + std::string(100, 'x');
    schemadateiSchreiben(datei(), packung.paket);
    EXPECT_EQ(fehlernummer([&] { fundInDatei(datei()); }), 13);
}

// What a PNG may be beside what this program writes.
TEST_F(Weitergabetest, BilderJederArtKommenWieSieGezeigtWerden) {
    auto mitPalette = buntesBild(4).convertToFormat(QImage::Format_Indexed8);
    mitPalette.setColor(0, qRgba(1, 2, 3, 100));
    for (const auto& bild : {buntesBild(5).convertToFormat(QImage::Format_RGBA64), mitPalette,
                             buntesBild(6).convertToFormat(QImage::Format_Grayscale8),
                             buntesBild(7).convertToFormat(QImage::Format_Mono)}) {
        auto packung = schemaPacken(platz(), "S", "x");
        packung.paket.bilder[0].png = png(bild).toStdString();
        schemadateiSchreiben(datei(), packung.paket);
        const auto fund = fundInDatei(datei());
        EXPECT_FALSE(fund.vorschau.at("0L.bmp").hasAlphaChannel());
        const auto name = freierName(platz(), "S");
        fundAufnehmen(platz(), name, fund);
        EXPECT_EQ(BildLaden(bilder().string(), name + "0L.bmp").convertToFormat(QImage::Format_RGB32),
                  bild.convertToFormat(QImage::Format_RGB32))
            << bild.format();
    }
}

TEST_F(Weitergabetest, EinBildDasKeinesIstWirdMitGrundAbgelehntUndNichtsGeschieht) {
    const auto gut = png(buntesBild(1));
    const auto vorher = dateienIn(datenbank_.ordner());
    for (const auto& bytes : {gut.left(gut.size() - 20), QByteArray("GIF89a") + gut,
                              QByteArray("\xFF\xD8\xFF") + gut, gut.left(8), mitMassen(gut, 8193, 8192),
                              mitMassen(gut, 0, 8), mitMassen(gut, 0x7FFFFFFF, 0x7FFFFFFF)}) {
        auto packung = schemaPacken(platz(), "S", "x");
        packung.paket.name = "Fremdes";
        packung.paket.bilder[0].png = bytes.toStdString();
        schemadateiSchreiben(datei(), packung.paket);
        QString grund;
        try {
            fundInDatei(datei());
        } catch (const LaufzeitFehler& fehler) {
            grund = fehler.what();
        }
        EXPECT_EQ(grund, "Das Bild zum linken Stick auf der Ebene Standart ist beschädigt oder zu groß.")
            << bytes.size();
    }
    EXPECT_EQ(dateienIn(datenbank_.ordner()), vorher);
}

TEST_F(Weitergabetest, WerAbbrichtLaesstAllesWieEsWar) {
    dateiLegen();
    const auto vorher = dateienIn(datenbank_.ordner());
    const auto nein = [] { return false; };
    EXPECT_EQ(fehlernummer([&] { fundInDatei(datei(), nein); }), 3059);
    EXPECT_EQ(fehlernummer([&] { fundInDatenbank(platz(), "S", nein); }), 3059);
    EXPECT_EQ(fehlernummer([&] { schemaPacken(platz(), "S", "x", nein); }), 3059);
    const auto fund = fundInDatei(datei());
    EXPECT_EQ(fehlernummer([&] { fundAufnehmen(platz(), "Fremdes", fund, nein); }), 3059);
    EXPECT_EQ(dateienIn(datenbank_.ordner()), vorher);
}

// --- handing on ---

TEST_F(Weitergabetest, WasNichtGespeichertIstWirdGesagtUndGehtNichtMit) {
    starten();
    control<QPushButton>(haupt(), "Command1(0)").click();
    auto* tastwerk = QApplication::activeWindow();
    for (auto* form : QApplication::topLevelWidgets())
        if (form->objectName() == "frmJoyKonfic")
            tastwerk = form;
    control<QPushButton>(*tastwerk, "Command1(5)").click(); // "Neu"
    ASSERT_TRUE(tastwerk->isWindowModified());
    {
        const Dialoghand hand({});
        const Boxleser boxen({QMessageBox::No, QMessageBox::No});
        tat(WEITERGEBEN);
        tat(VERDOPPELN);
        ASSERT_EQ(boxen.gesehen().size(), 2U);
        EXPECT_EQ(boxen.gesehen()[0].text,
                  "Nicht gespeichert ist, was Sie hier geändert haben: Tastwerk.\nSoll das "
                  "Schema „S“ ohne diese Änderungen genommen werden?");
        EXPECT_TRUE(hand.namen().empty());
    }
    const Dialoghand hand({dateiNennen(datei())});
    const Boxleser boxen({QMessageBox::Yes});
    tat(WEITERGEBEN);
    EXPECT_EQ(boxen.gesehen().size(), 2U);
    EXPECT_EQ(alsText(fundInDatei(datei()).daten.zeilen[schematabelle::TASTATUR][0][2]), "1,65,0-0-0");
    waehlen("T"); // whose editor is not open
    const Boxleser keine;
    tat(VERDOPPELN);
    EXPECT_TRUE(keine.gesehen().empty());
}

TEST_F(Weitergabetest, StrgESchreibtEineDatei) {
    starten();
    const Dialoghand hand({dateiNennen(datei())});
    const Boxleser boxen;
    taste(Qt::Key_E);
    EXPECT_THAT(hand.namen(), ElementsAre("cdlSchemaWeitergeben"));
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_THAT(boxen.gesehen()[0].text.toStdString(), HasSubstr(datei()));
    const auto fund = fundInDatei(datei());
    EXPECT_EQ(fund.name, "S");
    EXPECT_THAT(fund.programm, testing::StartsWith("Game-Pad-Konfic "));
    EXPECT_EQ(fund.bilder.size(), 1U);
    EXPECT_TRUE(fund.daten.achsen);
}

TEST_F(Weitergabetest, DerVorschlagFuerDieDateiPasstInEinenOrdner) {
    const auto vorschlag = [&](const QString& name) {
        schemaLegen(name.toStdString());
        starten();
        waehlen(name.toStdString().c_str());
        QString text;
        const Dialoghand hand({[&](QDialog& dialog) {
            text = dialog.findChild<QLineEdit*>()->text();
            dialog.reject();
        }});
        tat(WEITERGEBEN);
        return text;
    };
    EXPECT_EQ(vorschlag("a/b:c?"), "a-b-c-.schema");
    EXPECT_EQ(vorschlag(".a"), "_.a.schema");
    EXPECT_EQ(vorschlag(QString("€").repeated(90)), QString("€").repeated(66) + ".schema");
    EXPECT_EQ(vorschlag(QString("x😀").repeated(45)), QString("x😀").repeated(40) + ".schema");
}

TEST_F(Weitergabetest, WasNichtInsFormatPasstWirdNichtWeitergegeben) {
    datenbank_.sql("UPDATE tblTastatur SET btn3 = 'x' WHERE Schemaname = 'S'");
    starten();
    const Dialoghand hand({});
    const Boxleser boxen;
    tat(WEITERGEBEN);
    EXPECT_TRUE(hand.namen().empty());
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_THAT(boxen.gesehen()[0].text.toStdString(),
                HasSubstr("Kreuz auf der Ebene Standart: „x“ ist keine Belegung"));
}

// --- taking up ---

TEST_F(Weitergabetest, StrgIZeigtWasDarinIstUndNimmtEsAuf) {
    dateiLegen();
    starten();
    waehlen("T");
    const Dialoghand hand(
        {dateiNennen(datei()), [](QDialog& dialog) {
             EXPECT_EQ(label(dialog, "lblSchema").text(), "Fremdes");
             EXPECT_EQ(label(dialog, "lblProgramm").text(), "Game-Pad-Konfic 9");
             EXPECT_EQ(label(dialog, "lblEbenen").text(), "Standart, Umschalt 2");
             EXPECT_EQ(label(dialog, "lblBeiwerk").text(), "1 Bild, Achsen, Schubregler");
             EXPECT_EQ(dialog.findChild<QLineEdit*>("txtName")->text(), "Fremdes");
             for (const auto* name : {"Vorschau(0)", "Vorschau(1)"})
                 EXPECT_EQ(dialog.findChild<Ebenenvorschau*>(name)->symbole().symbole().size(), 1U);
             EXPECT_EQ(beschnittene(dialog), Namen{});
             annehmen(dialog);
         }});
    const Boxleser boxen;
    taste(Qt::Key_I);
    EXPECT_THAT(hand.namen(), ElementsAre("cdlSchemaAufnehmen", "frmAufnahme"));
    EXPECT_TRUE(boxen.gesehen().empty());
    EXPECT_THAT(liste(), ElementsAre("S", "T", "Fremdes"));
    EXPECT_EQ(combo().currentText(), "Fremdes");
    EXPECT_EQ(BildLaden(bilder().string(), "Fremdes0L.bmp").size(), buntesBild(1).size());
}

TEST_F(Weitergabetest, DieVorschauZeigtJedeEbene) {
    dateiLegen();
    starten();
    const Dialoghand hand({[](QDialog& dialog) {
        auto* plane = dialog.findChild<Ebenenvorschau*>("Vorschau(0)");
        const auto erste = plane->grab().toImage();
        dialog.findChild<QComboBox*>("cboEbene")->setCurrentIndex(1);
        EXPECT_TRUE(plane->symbole().symbole().empty());
        EXPECT_NE(plane->grab().toImage(), erste);
        dialog.reject();
    }});
    programm_->dateiAufnehmen(datei());
    EXPECT_THAT(hand.namen(), ElementsAre("frmAufnahme"));
}

TEST_F(Weitergabetest, EinVergebenerNameWirdNichtAngenommen) {
    dateiLegen("S");
    starten();
    const auto vorher = datenbank_.inhalt();
    const Dialoghand hand({[](QDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>("txtName");
        EXPECT_EQ(name->text(), "S 2");
        EXPECT_TRUE(okVon(dialog).isEnabled());
        name->setText("s");
        EXPECT_FALSE(okVon(dialog).isEnabled());
        EXPECT_EQ(label(dialog, "lblNamenshinweis").text(), "Ein Schema dieses Namens gibt es schon.");
        dialog.reject();
    }});
    programm_->dateiAufnehmen(datei());
    EXPECT_EQ(hand.namen().size(), 1U);
    EXPECT_EQ(datenbank_.inhalt(), vorher);
}

TEST_F(Weitergabetest, EinNameDerNurAndersZusammengesetztIstWirdNichtAngenommen) {
    Schemabau(datenbank_, "Grün É").anlegen();
    dateiLegen();
    starten();
    const Dialoghand hand({[](QDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>("txtName");
        name->setText(QString("Grün É").normalized(QString::NormalizationForm_D));
        EXPECT_FALSE(okVon(dialog).isEnabled());
        EXPECT_THAT(label(dialog, "lblNamenshinweis").text().toStdString(), HasSubstr("genauso aussieht"));
        name->setText("Grün E");
        EXPECT_TRUE(okVon(dialog).isEnabled());
        dialog.reject();
    }});
    programm_->dateiAufnehmen(datei());
    EXPECT_EQ(hand.namen().size(), 1U);
}

TEST_F(Weitergabetest, WasKeinSchemaIstSagtEineBox) {
    dateiSchreiben(datei(), "Bild");
    starten();
    const Boxleser boxen;
    programm_->dateiAufnehmen(datei());
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].symbol, QMessageBox::Warning);
    EXPECT_THAT(boxen.gesehen()[0].text.toStdString(), HasSubstr("Die Datei ist keine Schema-Datei."));
}

TEST_F(Weitergabetest, InEineLeereListeKommtDasErsteUndDieFormWirdGanz) {
    dateiLegen();
    datenbank_.sql("DELETE FROM tblTastatur; DELETE FROM tblSteuerKreuz");
    starten();
    const auto kurz = haupt().height();
    const Dialoghand hand({annehmen});
    programm_->dateiAufnehmen(datei());
    EXPECT_THAT(liste(), ElementsAre("Fremdes"));
    EXPECT_GT(haupt().height(), kurz);
}

TEST_F(Weitergabetest, EineAbgelegteDateiWirdAufgenommen) {
    dateiLegen();
    starten();
    const Dialoghand hand({annehmen});
    QMimeData daten;
    daten.setUrls({QUrl::fromLocalFile(QString::fromStdString(datei()))});
    for (QWidget* ziel : {&haupt(), static_cast<QWidget*>(combo().lineEdit()),
                          static_cast<QWidget*>(&control<QLineEdit>(haupt(), "Text1(0)"))}) {
        QDragEnterEvent herein({5, 5}, Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(ziel, &herein);
        EXPECT_TRUE(herein.isAccepted());
        QDropEvent fall(QPointF(5, 5), Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(ziel, &fall);
        EXPECT_TRUE(fall.isAccepted());
        QTest::qWait(0);
        ereignisse();
    }
    EXPECT_THAT(liste(), ElementsAre("S", "T", "Fremdes"));
    EXPECT_EQ(hand.namen().size(), 3U); // the second and the third are not taken up
}

TEST_F(Weitergabetest, WasKeineSchemadateiIstFaelltNichtHinein) {
    dateiLegen();
    starten();
    const auto diese = QUrl::fromLocalFile(QString::fromStdString(datei()));
    const auto genommen = [&](const QList<QUrl>& adressen) {
        QMimeData daten;
        daten.setUrls(adressen);
        QDragEnterEvent herein({5, 5}, Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
        herein.ignore();
        QApplication::sendEvent(&haupt(), &herein);
        return herein.isAccepted();
    };
    EXPECT_TRUE(genommen({diese}));
    EXPECT_TRUE(genommen({QUrl::fromLocalFile("/x/RENNEN.SCHEMA")}));
    EXPECT_FALSE(genommen({QUrl::fromLocalFile("/etc/hostname")}));
    EXPECT_FALSE(genommen({diese, diese}));
    EXPECT_FALSE(genommen({QUrl("https://beispiel.invalid/Rennen.schema")}));
    EXPECT_FALSE(genommen({}));
    control<QPushButton>(haupt(), "Command1(2)").click(); // "Schema neu": a name is typed
    EXPECT_FALSE(genommen({diese}));
}

TEST_F(Weitergabetest, WerEinesAbbrichtWillAuchDieUebrigenNicht) {
    const Schemaplatzprobe andere;
    for (const auto* name : {"A", "B"})
        schemaAufnehmen(andere.platz(), name, Zufallsschema(5).daten(), {}, {});
    starten();
    const Dialoghand hand({dateiNennen(andere.datenbank.pfad()), [](QDialog& dialog) {
                               dialog.findChild<QListWidget*>("lstSchemata")->selectAll();
                               annehmen(dialog);
                           }});
    tat(AUS_DATENBANK);
    EXPECT_THAT(hand.namen(), ElementsAre("cdlSchemaAufnehmen", "frmDatenbankfrage", "frmAufnahme"));
    EXPECT_THAT(liste(), ElementsAre("S", "T"));
}

TEST_F(Weitergabetest, AusEinerAnderenDatenbankKommenMehrere) {
    const Schemaplatzprobe andere;
    for (const auto* name : {"A", "B", "C"}) {
        auto daten = Zufallsschema(5).daten();
        daten.achsen = Gamepadzeile{{"dwXPos", "ry"}};
        schemaAufnehmen(andere.platz(), name, daten, {"1R.bmp"},
                        [](std::string_view) { return bitmap(buntesBild(3)).toStdString(); });
    }
    const auto vorher = andere.stand();
    starten();
    const Dialoghand hand({dateiNennen(andere.datenbank.pfad()),
                           [](QDialog& dialog) {
                               auto* liste = dialog.findChild<QListWidget*>("lstSchemata");
                               EXPECT_EQ(liste->count(), 3);
                               liste->item(2)->setSelected(true);
                               annehmen(dialog);
                           },
                           annehmen, nennen("Neues C")});
    const Boxleser boxen;
    tat(AUS_DATENBANK);
    EXPECT_TRUE(boxen.gesehen().empty());
    EXPECT_THAT(liste(), ElementsAre("S", "T", "A", "Neues C"));
    EXPECT_EQ(BildLaden(bilder().string(), "Neues C1R.bmp"), BildLaden(andere.bilder().string(), "C1R.bmp"));
    EXPECT_EQ(achsenzeileLesen(platz().gamepadXml, "Neues C"), (Gamepadzeile{{"dwXPos", "ry"}}));
    EXPECT_EQ(andere.stand(), vorher);
}

TEST_F(Weitergabetest, EineDatenbankOhneSchemaSagtEs) {
    const Testdatenbank leere;
    starten();
    const Dialoghand hand({dateiNennen(leere.pfad())});
    const Boxleser boxen;
    tat(AUS_DATENBANK);
    EXPECT_EQ(hand.namen().size(), 1U);
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_THAT(boxen.gesehen()[0].text.toStdString(), HasSubstr("kein Schema"));
}

// --- renaming, doubling ---

TEST_F(Weitergabetest, VerdoppelnLegtEinZweitesAn) {
    starten();
    const Dialoghand hand({[](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLineEdit*>("txtName")->text(), "S 2");
        annehmen(dialog);
    }});
    tat(VERDOPPELN);
    EXPECT_THAT(liste(), ElementsAre("S", "T", "S 2"));
    EXPECT_EQ(combo().currentText(), "S 2");
    EXPECT_TRUE(fs::exists(bilder() / "S 20L.bmp"));
}

TEST_F(Weitergabetest, OffeneEditorenFolgenDemNeuenNamen) {
    starten();
    for (const auto* knopf : {"Command1(0)", "Command3", "Command4"})
        control<QPushButton>(haupt(), knopf).click();
    const auto offen = [](const char* name) -> QWidget& {
        for (auto* form : QApplication::topLevelWidgets())
            if (form->objectName() == name && form->isVisible())
                return *form;
        throw std::runtime_error(name);
    };
    const Dialoghand hand({nennen("Neu")});
    tat(UMBENENNEN);
    EXPECT_THAT(liste(), ElementsAre("Neu", "T"));
    EXPECT_EQ(combo().currentText(), "Neu");

    const Boxleser boxen;
    auto& tastwerk = offen("frmJoyKonfic");
    control<QPushButton>(tastwerk, "Command1(4)").click(); // "Speichern"
    auto& achsen = offen("AchzenKalib");
    for (auto* knopf : achsen.findChildren<QPushButton*>())
        if (knopf->isDefault() || knopf->text().contains("nehmen"))
            knopf->click();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{}); // none asks for which Schema
    EXPECT_EQ(datenbank_.zeilen("SELECT Schemaname FROM tblTastatur ORDER BY rowid"),
              (Tabellenbild{{"Neu"}, {"T"}}));
    EXPECT_EQ(achsenzeileLesen(platz().gamepadXml, "S"), std::nullopt);
}

TEST_F(Weitergabetest, EinOffenerStickeditorSchreibtUnterDemNeuenNamen) {
    starten();
    control<QPushButton>(haupt(), "Command1(1)").click();
    const Dialoghand hand({nennen("Neu")});
    tat(UMBENENNEN);
    for (auto* form : QApplication::topLevelWidgets())
        if (form->objectName() == "frmJust" && form->isVisible()) {
            EXPECT_THAT(form->windowTitle().toStdString(), HasSubstr("Neu"));
            form->close();
        }
    EXPECT_EQ(datenbank_.zeilen("SELECT count(*) FROM tblStick WHERE Schemaname = 'S'"),
              (Tabellenbild{{"0"}}));
}

TEST_F(Weitergabetest, EinVerworfenerEntwurfGehtMit) {
    Entwuerfe<int> entwuerfe;
    entwuerfe.merken("alt", 1);
    entwuerfe.merken("alt", 2);
    entwuerfe.umbenennen("alt", "neu");
    entwuerfe.umbenennen("keins", "alt");
    EXPECT_FALSE(entwuerfe.gibtEs("alt"));
    EXPECT_EQ(entwuerfe.nehmen("neu"), 2);
    EXPECT_EQ(entwuerfe.nehmen("neu"), 1);
}

TEST_F(Weitergabetest, MitOffenerUebersichtWirdNichtUmbenannt) {
    starten();
    taste(Qt::Key_D);
    const Dialoghand hand({});
    const Boxleser boxen;
    tat(UMBENENNEN);
    EXPECT_TRUE(hand.namen().empty());
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_THAT(boxen.gesehen()[0].text.toStdString(), HasSubstr("Übersicht"));
}

TEST_F(Weitergabetest, WaehrendEinesLaufsGehtNichts) {
    dateiLegen();
    starten();
    control<QPushButton>(haupt(), "Command1(5)").click();
    const Dialoghand hand({});
    const Boxleser boxen;
    for (int i = 0; i <= VERDOPPELN; ++i)
        tat(i);
    programm_->dateiAufnehmen(datei());
    EXPECT_TRUE(hand.namen().empty());
    EXPECT_EQ(boxen.gesehen().size(), 6U);
}

TEST_F(Weitergabetest, WaehrendEinNameGetipptWirdUndOhneSchemaGibtEsNichtAlles) {
    starten();
    const Dialoghand hand({});
    const Boxleser boxen;
    control<QPushButton>(haupt(), "Command1(2)").click(); // "Schema neu"
    for (int i = 0; i <= VERDOPPELN; ++i)
        tat(i);
    EXPECT_TRUE(hand.namen().empty());
    datenbank_.sql("DELETE FROM tblTastatur");
    starten();
    for (const int i : {WEITERGEBEN, UMBENENNEN, VERDOPPELN})
        tat(i);
    EXPECT_TRUE(hand.namen().empty());
    tat(AUFNEHMEN);
    EXPECT_THAT(hand.namen(), ElementsAre("cdlSchemaAufnehmen"));
}

TEST_F(Weitergabetest, DasMenueDerListeHatAlles) {
    starten();
    QStringList texte;
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, [&] {
        if (auto* menue = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            for (const auto* tat : menue->actions())
                texte << tat->text();
            menue->close();
        }
    });
    takt.start(0);
    QContextMenuEvent ereignis(QContextMenuEvent::Keyboard, {3, 3}, {3, 3});
    QApplication::sendEvent(combo().lineEdit(), &ereignis);
    EXPECT_EQ(texte.mid(0, 5), (QStringList{"Schema weitergeben…", "Schema aufnehmen…",
                                            "Aus Datenbank aufnehmen…", "Umbenennen…", "Verdoppeln…"}));
    EXPECT_GT(texte.size(), 6); // and what the text field offers by itself
}

TEST_F(Weitergabetest, EinStartRaeumtWegWasEinTotesProgrammLiess) {
    BildSpeichern(bilder().string(), "Halb0L.bmp", buntesBild(1));
    dateiSchreiben(datenbank_.pfad() + ".vorhaben", std::string("Halb\0ENDE", 9));
    starten();
    EXPECT_FALSE(fs::exists(bilder() / "Halb0L.bmp"));
    EXPECT_FALSE(fs::exists(datenbank_.pfad() + ".vorhaben"));
}
