// SPDX-License-Identifier: GPL-3.0-or-later
// The overview: its locks, what its buttons do to the databases, and the editors that "Info" shows.
#include "engine/stick/StickTabellen.h"
#include "store/schema/UebersichtAktion.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Gamepadxml.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QToolTip>
#include <QtTest/QTest>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

// Indices of Command1.
constexpr int KOPIEREN = 0;
constexpr int WECHSEL = 1;
constexpr int LOESCHEN = 2;
constexpr int INFO = 3;
constexpr int OK = 4;
constexpr int ABBRECHEN = 5;

constexpr auto JA = QMessageBox::Yes;
constexpr auto NEIN = QMessageBox::No;
const Gesehen FELDER_AUCH{"", "Die Aktionen wurden gelöscht, möchten Sie die Felder auch löschen?",
                          QMessageBox::NoIcon, JA | NEIN};
const Gesehen DURCHGEFUEHRT{"", "Aktion Wechsel ist durchgeführt!", QMessageBox::NoIcon, QMessageBox::Ok};
const Gesehen KEIN_SCHEMA{"Kein Schema!", "Es muß ein Schema erstellt werden", QMessageBox::Information,
                          QMessageBox::Ok};

using Boxen = std::vector<Gesehen>;
using Indizes = std::vector<int>;

class UebersichtForm : public Formtest {
protected:
    /// A `Schema` whose buttons, lines and actions tell its name.
    static void schema(const Testdatenbank& wo, const std::string& name, int linie) {
        Schemabau schema(wo, name);
        schema.taste(0, "1," + std::to_string(linie / 1000 + 48) + ",0-0-0").taste(0, "1,66,0-0-0", 1);
        const Schemabau::Vier aussen{linie, 45000, 21000, 46000};
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts}) {
            schema.ebenenlinien(seite, 1, {aussen, {linie + 1, 45000, 21000, 46000}, aussen});
            schema.leereLinienAb(seite, 2);
            for (int ebene = 0; ebene < 3; ++ebene)
                schema.feld(seite, {},
                            "3," + name + std::string(tabellenzusatz(seite)) + std::to_string(ebene), ebene);
        }
        schema.anlegen();
    }
    void zweiSchemata() {
        schema(datenbank_, "A", 1000);
        schema(datenbank_, "B", 2000);
    }
    void oeffnen() {
        starten();
        haupt().activateWindow();
        ereignisse();
        QTest::keyClick(&haupt(), Qt::Key_D, Qt::ControlModifier);
        ereignisse();
    }

    static QWidget* offene(const QString& name) {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == name && fenster->isVisible())
                return fenster;
        return nullptr;
    }
    static int anzahlOffener(const QString& name) {
        int anzahl = 0;
        for (auto* fenster : QApplication::topLevelWidgets())
            anzahl += fenster->objectName() == name && fenster->isVisible();
        return anzahl;
    }
    static QWidget& form() {
        auto* fenster = offene("Uebersicht");
        if (!fenster)
            throw std::runtime_error("the overview is not open");
        return *fenster;
    }
    template <class Control> static Control& feld(const char* name, int index) {
        return control<Control>(form(), QString("%1(%2)").arg(name).arg(index));
    }
    static QPushButton& knopf(int index) { return feld<QPushButton>("Command1", index); }
    static QRadioButton& quelle(int index) { return feld<QRadioButton>("Option1", index); }
    static QCheckBox& ziel(int index) { return feld<QCheckBox>("Check1", index); }
    static QComboBox& combo(int seite) { return feld<QComboBox>("Combo1", seite); }
    static QLineEdit& pfad(int seite) { return feld<QLineEdit>("Text1", seite); }
    static void klicken(QAbstractButton& was) {
        was.click();
        ereignisse();
    }
    static void klicken(int index) { klicken(knopf(index)); }

    static Indizes freieKnoepfe() {
        Indizes frei;
        for (int i = 0; i < 6; ++i)
            if (knopf(i).isEnabled())
                frei.push_back(i);
        return frei;
    }
    static Indizes freieZiele() {
        Indizes frei;
        for (int i = 0; i < 9; ++i)
            if (ziel(i).isEnabled())
                frei.push_back(i);
        return frei;
    }
    static Indizes gewaehlteZiele() {
        Indizes gewaehlt;
        for (int i = 0; i < 9; ++i)
            if (ziel(i).isChecked())
                gewaehlt.push_back(i);
        return gewaehlt;
    }
    static void erwarteGrundzustand() {
        EXPECT_EQ(freieKnoepfe(), (Indizes{KOPIEREN, WECHSEL, LOESCHEN, INFO, ABBRECHEN}));
        EXPECT_EQ(freieZiele(), Indizes{});
        EXPECT_EQ(gewaehlteZiele(), Indizes{});
    }
    static bool info() { return !feld<QPushButton>("Command2", 0).isEnabled() && !combo(0).isEnabled(); }

    static std::string aktionen(const Testdatenbank& wo, const std::string& zusatz = "") {
        std::string alle;
        for (const auto& zeile :
             wo.zeilen("SELECT Schemaname || Umschalt || '=' || substr(Aktion, 3) FROM tblStickAktion" +
                       zusatz + " ORDER BY 1"))
            alle += zeile.at(0) + " ";
        return alle;
    }
    static std::string linie(const Testdatenbank& wo, const std::string& spalte, const std::string& name,
                             const std::string& zusatz = "") {
        return wo
            .zeilen("SELECT " + spalte + " FROM tblStick" + zusatz + " WHERE Schemaname = '" + name +
                    "' AND \"index\" = 1")
            .at(0)
            .at(0);
    }
    static std::string taste(const Testdatenbank& wo, const std::string& spalte, const std::string& name) {
        return wo.zeilen("SELECT " + spalte + " FROM tblTastatur WHERE Schemaname = '" + name + "'")
            .at(0)
            .at(0);
    }
    static void erwarteFehler(const Boxleser& boxen, int nummer) {
        ASSERT_EQ(boxen.gesehen().size(), 1U);
        const auto& box = boxen.gesehen().front();
        EXPECT_EQ(box.titel, "Fehler");
        EXPECT_EQ(box.symbol, QMessageBox::Warning);
        EXPECT_TRUE(box.text.startsWith(QString("Laufzeitfehler %1:\n").arg(nummer)))
            << box.text.toStdString();
    }
};

} // namespace

// --- the form ---

TEST_F(UebersichtForm, StrgDOeffnetSieUndDerKnopfSagtEs) {
    zweiSchemata();
    starten();
    auto& datenbank = control<QPushButton>(haupt(), "Command1(4)");
    EXPECT_TRUE(datenbank.toolTip().contains("Strg+D"));
    klicken(datenbank);
    EXPECT_EQ(offene("Uebersicht"), nullptr);
    haupt().activateWindow();
    ereignisse();
    for (auto* fokus : {static_cast<QWidget*>(&datenbank),
                        static_cast<QWidget*>(control<QComboBox>(haupt(), "Combo1").lineEdit()),
                        static_cast<QWidget*>(&control<QLineEdit>(haupt(), "Text1(0)"))}) {
        fokus->setFocus();
        QTest::keyClick(fokus, Qt::Key_D, Qt::ControlModifier);
        ereignisse();
        ASSERT_NE(offene("Uebersicht"), nullptr) << fokus->objectName().toStdString();
        form().close();
        ereignisse();
        haupt().activateWindow();
        ereignisse();
    }
    EXPECT_EQ(control<QComboBox>(haupt(), "Combo1").currentText(), "A");
}

TEST_F(UebersichtForm, SieIstNurEinmalDa) {
    oeffnen();
    haupt().activateWindow();
    ereignisse();
    QTest::keyClick(&haupt(), Qt::Key_D, Qt::ControlModifier);
    ereignisse();
    EXPECT_EQ(anzahlOffener("Uebersicht"), 1);
}

TEST_F(UebersichtForm, ZeigtDieGegebenenTexte) {
    zweiSchemata();
    oeffnen();
    EXPECT_EQ(form().windowTitle(), "Ubersicht für SchemaDatenbank");
    const std::array<const char*, 6> knoepfe{"Kopieren", "Wechsel", "Löschen", "Info", "OK", "Abbrechen"};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(knopf(i).text(), knoepfe[static_cast<std::size_t>(i)]);
    const std::array<const char*, 3> ebenen{"Standart", "Umschalt 1", "Umschalt 2"};
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(quelle(i).text(), ebenen[static_cast<std::size_t>(i % 3)]);
        EXPECT_EQ(ziel(i).text(), ebenen[static_cast<std::size_t>(i % 3)]);
    }
    for (int seite = 0; seite < 2; ++seite) {
        EXPECT_EQ(feld<QPushButton>("Command2", seite).text(), "...");
        EXPECT_EQ(pfad(seite).text().toStdString(), datenbank_.pfad());
        EXPECT_EQ(combo(seite).count(), 2);
        EXPECT_EQ(combo(seite).currentText(), "A");
    }
    EXPECT_EQ(control<QGroupBox>(form(), "Frame1").title(), "Ursprungsschema");
    EXPECT_EQ(control<QGroupBox>(form(), "Frame2").title(), "Pfad");
    EXPECT_EQ(control<QGroupBox>(form(), "Schema").title(), "Schema");
    EXPECT_TRUE(quelle(0).isChecked());
    erwarteGrundzustand();
}

TEST_F(UebersichtForm, JederRahmenHaeltDieEbenenDieErNennt) {
    oeffnen();
    const std::array<const char*, 3> texte{"Linker Stick", "Rechter Stick", "Buttons und Steuerkreuz"};
    const std::array<int, 3> erste{0, 6, 3};
    for (int i = 0; i < 6; ++i) {
        auto& rahmen = feld<QGroupBox>("Frame3", i);
        EXPECT_EQ(rahmen.title(), texte[static_cast<std::size_t>(i % 3)]);
        for (int ebene = 0; ebene < 3; ++ebene) {
            const int index = erste[static_cast<std::size_t>(i % 3)] + ebene;
            QWidget& innen = i < 3 ? static_cast<QWidget&>(quelle(index)) : ziel(index);
            EXPECT_EQ(innen.parentWidget(), &rahmen) << i;
        }
    }
}

TEST_F(UebersichtForm, LangeNamenUndPfadeMachenSieNichtBreiter) {
    schema(datenbank_, "kurz", 1000);
    oeffnen();
    const auto groesse = form().sizeHint();
    EXPECT_EQ(beschnittene(form()), std::vector<std::string>{});
    EXPECT_LE(groesse.width(), 1024);
    EXPECT_LE(groesse.height(), 700);
    form().close();
    ereignisse();
    Schemabau(datenbank_, std::string(300, 'M')).anlegen();
    haupt().activateWindow();
    ereignisse();
    QTest::keyClick(&haupt(), Qt::Key_D, Qt::ControlModifier);
    ereignisse();
    combo(0).setCurrentIndex(1);
    pfad(1).setText("/" + QString(400, 'p') + "/Belegung.twk");
    EXPECT_EQ(form().sizeHint(), groesse);
    EXPECT_EQ(pfad(1).toolTip(), pfad(1).text());
}

// The connection of a run stays open.
TEST_F(UebersichtForm, EinLaufHaeltDenWechselZweierDateienNichtAuf) {
    const Testdatenbank andere;
    Schemabau(datenbank_).taste(0, "1,65,0-0-0").anlegen();
    Schemabau(andere).taste(0, "1,66,0-0-0").anlegen();
    datenbank_.sql("PRAGMA journal_mode = WAL"); // as other programs may leave it
    Stickdatenbank lauf;
    lauf.tabellen(datenbank_.pfad(), "S", Stickseite::Links, 1);
    constexpr int TASTENEBENE = 3;
    const Ebenenort hier{{datenbank_.pfad(), "S"}, TASTENEBENE};
    const Ebenenort dort{{andere.pfad(), "S"}, TASTENEBENE};
    EXPECT_EQ(fehlernummer([&] { LayerWechseln(hier, dort, [](std::string_view) {}); }), 0);
    EXPECT_EQ(datenbank_.zeilen("SELECT btn1 FROM tblTastatur"), (Tabellenbild{{"1,66,0-0-0"}}));
    EXPECT_EQ(andere.zeilen("SELECT btn1 FROM tblTastatur"), (Tabellenbild{{"1,65,0-0-0"}}));
}

// The tool tip at a place of a control; "keiner" where it has none.
std::string hinweisAn(QWidget& wo, const QPoint& ort) {
    QToolTip::showText(wo.mapToGlobal(ort), "keiner");
    QHelpEvent frage(QEvent::ToolTip, ort, wo.mapToGlobal(ort));
    QApplication::sendEvent(&wo, &frage);
    return QToolTip::text().toStdString();
}

TEST_F(UebersichtForm, WasVomNamenFehltZeigtDerHinweis) {
    const auto lang = QString(100, 'M');
    for (const auto& name : {QString("kurz"), lang})
        Schemabau(datenbank_, name.toStdString()).anlegen();
    oeffnen();
    auto& liste = combo(0);
    liste.setCurrentText(lang);
    EXPECT_EQ(hinweisAn(*liste.lineEdit(), {5, 5}), lang.toStdString());
    liste.setEditText("kurz");
    EXPECT_EQ(hinweisAn(*liste.lineEdit(), {5, 5}), "keiner");
    liste.showPopup();
    auto& flaeche = *liste.view()->viewport();
    const auto zeile = [&](const QString& name) {
        return liste.view()->visualRect(liste.model()->index(liste.findText(name), 0)).center();
    };
    EXPECT_EQ(hinweisAn(flaeche, zeile(lang)), lang.toStdString());
    EXPECT_EQ(hinweisAn(flaeche, zeile("kurz")), "keiner");
    liste.hidePopup();
}

TEST_F(UebersichtForm, LangeNamenZeigenIhrenAnfang) {
    const auto lang = QString(100, 'M');
    for (const auto& name : {lang + "1", lang + "2"})
        Schemabau(datenbank_, name.toStdString()).anlegen();
    oeffnen();
    for (int seite = 0; seite < 2; ++seite) {
        EXPECT_EQ(combo(seite).lineEdit()->cursorPosition(), 0) << seite;
        combo(seite).setCurrentIndex(1);
        EXPECT_EQ(combo(seite).currentText(), lang + "2");
        EXPECT_EQ(combo(seite).lineEdit()->cursorPosition(), 0) << seite;
        combo(seite).setEditText(lang + "3");
        combo(seite).showPopup();
        QTest::keyClick(combo(seite).view(), Qt::Key_Return); // the entry that is the current one
        EXPECT_EQ(combo(seite).currentText(), lang + "2");
        EXPECT_EQ(combo(seite).lineEdit()->cursorPosition(), 0) << seite;
    }
}

TEST_F(UebersichtForm, AuchMitGrossenBuchstabenIstAllesZuLesen) {
    zweiSchemata();
    const Schriftgrad gross(18);
    oeffnen();
    EXPECT_EQ(beschnittene(form()), std::vector<std::string>{});
}

// --- the locks ---

TEST_F(UebersichtForm, EinStickGehtZuBeidenSticksUndButtonsZuButtons) {
    zweiSchemata();
    oeffnen();
    for (const int wie : {KOPIEREN, WECHSEL})
        for (int i = 0; i < 9; ++i) {
            klicken(quelle(i));
            erwarteGrundzustand();
            klicken(wie);
            EXPECT_EQ(freieZiele(), i >= 3 && i <= 5 ? (Indizes{3, 4, 5}) : (Indizes{0, 1, 2, 6, 7, 8}));
            EXPECT_EQ(freieKnoepfe(), (Indizes{wie, ABBRECHEN}));
        }
}

TEST_F(UebersichtForm, BeimKopierenBleibenAlleZieleOffen) {
    zweiSchemata();
    oeffnen();
    klicken(KOPIEREN);
    klicken(ziel(1));
    EXPECT_EQ(freieKnoepfe(), (Indizes{KOPIEREN, OK, ABBRECHEN}));
    klicken(ziel(8));
    EXPECT_EQ(freieZiele(), (Indizes{0, 1, 2, 6, 7, 8}));
    EXPECT_EQ(gewaehlteZiele(), (Indizes{1, 8}));
    klicken(KOPIEREN); // keeps what is chosen
    EXPECT_EQ(gewaehlteZiele(), (Indizes{1, 8}));
    klicken(quelle(0)); // the one that is set already
    erwarteGrundzustand();
}

TEST_F(UebersichtForm, EinWechselHatGenauEinZiel) {
    zweiSchemata();
    oeffnen();
    klicken(quelle(4));
    klicken(WECHSEL);
    klicken(ziel(5));
    EXPECT_EQ(freieZiele(), Indizes{5});
    EXPECT_EQ(freieKnoepfe(), (Indizes{WECHSEL, OK, ABBRECHEN}));
    klicken(ziel(5));
    EXPECT_EQ(gewaehlteZiele(), Indizes{});
    EXPECT_EQ(freieZiele(), Indizes{5});
    EXPECT_TRUE(knopf(OK).isEnabled());
    Boxleser boxen;
    const auto vorher = datenbank_.inhalt();
    klicken(OK); // with no target there is nothing to swap
    EXPECT_EQ(boxen.gesehen(), Boxen{});
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    erwarteGrundzustand();
    klicken(WECHSEL); // the lock on the others is gone with the operation
    EXPECT_EQ(freieZiele(), (Indizes{3, 4, 5}));
}

TEST_F(UebersichtForm, AbbrechenUndEineWahlInDerListeSetzenAllesZurueck) {
    zweiSchemata();
    oeffnen();
    klicken(WECHSEL);
    klicken(ziel(7));
    klicken(ABBRECHEN);
    erwarteGrundzustand();
    klicken(KOPIEREN);
    klicken(ziel(7));
    combo(1).setFocus();
    combo(1).setCurrentIndex(1);
    emit combo(1).activated(1);
    erwarteGrundzustand();
}

// --- the operations ---

TEST_F(UebersichtForm, LoeschenFragtNurNachDenFeldern) {
    zweiSchemata();
    oeffnen();
    klicken(quelle(7));
    {
        Boxleser boxen({NEIN});
        klicken(LOESCHEN);
        EXPECT_EQ(boxen.gesehen(), Boxen{FELDER_AUCH});
    }
    EXPECT_EQ(aktionen(datenbank_, "R"), "A0=AR0 A2=AR2 B0=BR0 B1=BR1 B2=BR2 ");
    EXPECT_EQ(linie(datenbank_, "Links2", "A", "R"), "1001");
    combo(0).setCurrentIndex(1);
    {
        Boxleser boxen({JA});
        klicken(LOESCHEN);
        EXPECT_EQ(boxen.gesehen(), Boxen{FELDER_AUCH});
    }
    EXPECT_EQ(aktionen(datenbank_, "R"), "A0=AR0 A2=AR2 B0=BR0 B2=BR2 ");
    EXPECT_EQ(linie(datenbank_, "Links2", "B", "R"), "27072");
    klicken(quelle(4));
    Boxleser boxen;
    klicken(LOESCHEN);
    EXPECT_EQ(boxen.gesehen(), Boxen{});
    EXPECT_EQ(taste(datenbank_, "btn101", "B"), "10,0,0-0-0");
    EXPECT_EQ(taste(datenbank_, "btn1", "B"), "1,50,0-0-0");
}

TEST_F(UebersichtForm, KopierenInMehrereEbenenOhneMeldung) {
    zweiSchemata();
    oeffnen();
    combo(1).setCurrentIndex(1);
    klicken(quelle(1));
    klicken(KOPIEREN);
    klicken(ziel(0));
    klicken(ziel(8));
    Boxleser boxen;
    klicken(OK);
    EXPECT_EQ(boxen.gesehen(), Boxen{});
    erwarteGrundzustand();
    EXPECT_EQ(aktionen(datenbank_), "A0=A0 A1=A1 A2=A2 B0=A1 B1=B1 B2=B2 ");
    EXPECT_EQ(aktionen(datenbank_, "R"), "A0=AR0 A1=AR1 A2=AR2 B0=BR0 B1=BR1 B2=A1 ");
    EXPECT_EQ(linie(datenbank_, "Links", "B"), "1001");
}

TEST_F(UebersichtForm, KopierenDerButtonsAendertNichts) {
    zweiSchemata();
    oeffnen();
    combo(1).setCurrentIndex(1);
    klicken(quelle(3));
    klicken(KOPIEREN);
    klicken(ziel(4));
    const auto vorher = datenbank_.inhalt();
    Boxleser boxen;
    klicken(OK);
    EXPECT_EQ(boxen.gesehen(), Boxen{});
    EXPECT_EQ(datenbank_.inhalt(), vorher);
    erwarteGrundzustand();
}

TEST_F(UebersichtForm, WechselMitEinemSchemaEinerAnderenDatei) {
    zweiSchemata();
    const Testdatenbank andere;
    schema(andere, "Anderes", 5000);
    oeffnen();
    pfad(1).setText(QString::fromStdString(andere.pfad()));
    combo(1).setEditText("Anderes"); // the list does not know it
    klicken(quelle(0));
    klicken(WECHSEL);
    klicken(ziel(0));
    Boxleser boxen;
    klicken(OK);
    EXPECT_EQ(boxen.gesehen(), Boxen{DURCHGEFUEHRT});
    EXPECT_EQ(linie(datenbank_, "Links", "A"), "5000");
    EXPECT_EQ(linie(andere, "Links", "Anderes"), "1000");
    EXPECT_EQ(aktionen(datenbank_), "A1=A1 A2=A2 Anderes0=Anderes0 B0=B0 B1=B1 B2=B2 ");
    EXPECT_EQ(aktionen(andere), "Anderes0=A0 Anderes1=Anderes1 Anderes2=Anderes2 ");
    erwarteGrundzustand();
}

TEST_F(UebersichtForm, WechselMitSichSelbstMeldetNur) {
    zweiSchemata();
    oeffnen();
    const auto vorher = datenbank_.inhalt();
    klicken(WECHSEL);
    klicken(ziel(0));
    Boxleser boxen;
    klicken(OK);
    EXPECT_EQ(boxen.gesehen(), Boxen{DURCHGEFUEHRT});
    EXPECT_EQ(datenbank_.inhalt(), vorher);
}

TEST_F(UebersichtForm, EinFehlerGibtEineMeldungUndDieWahlBleibt) {
    zweiSchemata();
    oeffnen();
    const auto vorher = datenbank_.inhalt();
    const std::string text = (datenbank_.ordner() / "Text.mdb").string();
    dateiSchreiben(text, std::string(5000, 'x'));
    const std::vector<std::tuple<std::string, std::string, int>> faelle{
        {(datenbank_.ordner() / "fehlt.mdb").string(), "B", 3024},
        {text, "B", 3343},
        {datenbank_.pfad(), "fehlt", 3021},
        {datenbank_.pfad(), "O'Brien", 3075},
        {"", "B", 3024}};
    for (const auto& [datei, name, nummer] : faelle)
        for (const int wie : {KOPIEREN, WECHSEL}) {
            klicken(quelle(0));
            pfad(1).setText(QString::fromStdString(datei));
            combo(1).setEditText(QString::fromStdString(name));
            klicken(wie);
            klicken(ziel(1));
            Boxleser boxen;
            klicken(OK);
            erwarteFehler(boxen, nummer);
            EXPECT_EQ(freieKnoepfe(), (Indizes{wie, OK, ABBRECHEN}));
            EXPECT_EQ(gewaehlteZiele(), Indizes{1});
        }
    EXPECT_EQ(datenbank_.inhalt(), vorher);
}

TEST_F(UebersichtForm, InEineDateiNeuererFassungUndInDieEinesAnderenProgrammsKommtNichts) {
    zweiSchemata();
    const Testdatenbank andere;
    schema(andere, "Anderes", 5000);
    oeffnen();
    const auto vorher = datenbank_.inhalt();
    for (const auto& [stempel, nummer] :
         {std::pair{"PRAGMA user_version = 2", 3027}, std::pair{"PRAGMA application_id = 252006673", 3343}}) {
        andere.sql(stempel);
        const auto vorherAndere = dateiLesen(andere.pfad());
        for (const int wie : {KOPIEREN, WECHSEL}) {
            klicken(quelle(0));
            pfad(1).setText(QString::fromStdString(andere.pfad()));
            combo(1).setEditText("Anderes");
            klicken(wie);
            klicken(ziel(1));
            Boxleser boxen;
            klicken(OK);
            erwarteFehler(boxen, nummer);
        }
        klicken(ABBRECHEN);
        pfad(0).setText(QString::fromStdString(andere.pfad()));
        combo(0).setEditText("Anderes");
        Boxleser boxen;
        klicken(LOESCHEN);
        erwarteFehler(boxen, nummer);
        pfad(0).setText(QString::fromStdString(datenbank_.pfad()));
        combo(0).setEditText("A");
        EXPECT_EQ(dateiLesen(andere.pfad()), vorherAndere);
    }
    EXPECT_EQ(datenbank_.inhalt(), vorher);
}

TEST_F(UebersichtForm, LoeschenInEinerFremdenDateiGibtEineMeldung) {
    zweiSchemata();
    oeffnen();
    const Testdatenbank fremd;
    fremd.sql("DROP TABLE tblStickAktion");
    pfad(0).setText(QString::fromStdString(fremd.pfad()));
    Boxleser boxen;
    klicken(LOESCHEN);
    erwarteFehler(boxen, 3078);
    erwarteGrundzustand();
}

TEST_F(UebersichtForm, DieEigeneDatenbankWirdMitIhremEigenenNamenGeoeffnet) {
    zweiSchemata();
    const fs::path andererName = datenbank_.ordner() / "Anderer Name.twk";
    fs::create_hard_link(datenbank_.pfad(), andererName);
    oeffnen();
    klicken(quelle(4));
    pfad(0).setText(QString::fromStdString(andererName.string()));
    combo(0).setEditText("fehlt");
    {
        Boxleser boxen;
        klicken(LOESCHEN);
        erwarteFehler(boxen, 3021);
        EXPECT_TRUE(boxen.gesehen()[0].text.contains(QString::fromStdString(datenbank_.pfad())));
    }
    combo(0).setEditText("A");
    klicken(LOESCHEN);
    EXPECT_EQ(taste(datenbank_, "btn101", "A"), "10,0,0-0-0");
    EXPECT_EQ(pfad(0).text().toStdString(), andererName.string());
}

TEST_F(UebersichtForm, OhneSchemaTutSieNichts) {
    oeffnen();
    EXPECT_EQ(combo(0).count(), 0);
    for (const int knopf : {LOESCHEN, INFO}) {
        Boxleser boxen;
        klicken(knopf);
        EXPECT_EQ(boxen.gesehen(), Boxen{KEIN_SCHEMA}) << knopf;
    }
    for (const int wie : {KOPIEREN, WECHSEL}) {
        klicken(quelle(0));
        klicken(wie);
        klicken(ziel(0));
        Boxleser boxen;
        klicken(OK);
        EXPECT_EQ(boxen.gesehen(), Boxen{KEIN_SCHEMA}) << wie;
    }
    EXPECT_EQ(offene("frmJust"), nullptr);
}

TEST_F(UebersichtForm, OhneSchemaDerZweitenSeiteGibtEsKeinZiel) {
    zweiSchemata();
    oeffnen();
    const auto vorher = datenbank_.inhalt();
    for (const int wie : {KOPIEREN, WECHSEL}) {
        klicken(quelle(0));
        combo(1).setEditText("");
        klicken(wie);
        klicken(ziel(1));
        Boxleser boxen;
        klicken(OK);
        EXPECT_EQ(boxen.gesehen(), Boxen{KEIN_SCHEMA}) << wie;
    }
    EXPECT_EQ(datenbank_.inhalt(), vorher);
}

TEST_F(UebersichtForm, OhneLesbareDatenbankOeffnetSieMitLeerenListen) {
    starten();
    dateiSchreiben(datenbank_.pfad(), std::string(5000, 'x'));
    haupt().activateWindow();
    ereignisse();
    Boxleser boxen;
    QTest::keyClick(&haupt(), Qt::Key_D, Qt::ControlModifier);
    ereignisse();
    ASSERT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_EQ(boxen.gesehen()[0].titel, "Ubersicht für SchemaDatenbank");
    EXPECT_TRUE(boxen.gesehen()[0].text.startsWith("Laufzeitfehler 3343:"));
    EXPECT_EQ(combo(1).count(), 0);
    erwarteGrundzustand();
}

// --- the file dialog ---

namespace {

/// While it lives, answers the file dialog: with a file, or by closing it.
class Dateiwaehler {
public:
    explicit Dateiwaehler(const QString& datei) {
        QObject::connect(&takt_, &QTimer::timeout, [this, datei] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            titel = dialog->windowTitle();
            filter = dialog->nameFilters();
            gewaehlterFilter = dialog->selectedNameFilter();
            for (const auto stelle : {QFileDialog::LookIn, QFileDialog::FileName, QFileDialog::FileType,
                                      QFileDialog::Accept, QFileDialog::Reject})
                texte << dialog->labelText(stelle);
            if (datei.isEmpty())
                return dialog->reject();
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(datei);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        takt_.start(0);
    }
    QString titel;
    QStringList filter;
    QString gewaehlterFilter;
    QStringList texte;

private:
    QTimer takt_;
};

} // namespace

TEST_F(UebersichtForm, DerDateidialogSetztDenPfadUndLaesstDieListe) {
    zweiSchemata();
    oeffnen();
    const Testdatenbank andere;
    const auto neuer = QString::fromStdString(andere.pfad());
    klicken(KOPIEREN);
    klicken(ziel(1));
    Dateiwaehler waehler(neuer);
    klicken(feld<QPushButton>("Command2", 1));
    EXPECT_EQ(waehler.titel, "Datenbank öffnen");
    EXPECT_EQ(waehler.filter, (QStringList{"Datenbank(*.mdb)", "Alle Dateien (*)"}));
    EXPECT_EQ(waehler.gewaehlterFilter, "Alle Dateien (*)");
    EXPECT_EQ(pfad(1).text(), neuer);
    EXPECT_EQ(pfad(0).text().toStdString(), datenbank_.pfad());
    EXPECT_EQ(combo(1).count(), 2);
    erwarteGrundzustand();
}

TEST_F(UebersichtForm, EinAbgebrochenerDateidialogLaesstDenPfad) {
    oeffnen();
    klicken(KOPIEREN);
    Dateiwaehler waehler("");
    klicken(feld<QPushButton>("Command2", 0));
    EXPECT_EQ(waehler.titel, "Datenbank öffnen");
    EXPECT_EQ(waehler.texte,
              (QStringList{"Suchen in:", "Datei&name:", "Dateien des Typs:", "&Öffnen", "Abbrechen"}));
    EXPECT_EQ(pfad(0).text().toStdString(), datenbank_.pfad());
    erwarteGrundzustand();
}

TEST_F(UebersichtForm, EinNameOhneEndungMeintDieDatenbank) {
    oeffnen();
    const auto ordner = QString::fromStdString(datenbank_.ordner().string());
    {
        Dateiwaehler waehler(ordner + "/Neue");
        klicken(feld<QPushButton>("Command2", 0));
        EXPECT_EQ(pfad(0).text(), ordner + "/Neue.mdb");
    }
    fs::copy_file(datenbank_.pfad(), datenbank_.ordner() / "Neue");
    Dateiwaehler waehler(ordner + "/Neue");
    klicken(feld<QPushButton>("Command2", 0));
    EXPECT_EQ(pfad(0).text(), ordner + "/Neue");
}

// --- Info ---

TEST_F(UebersichtForm, InfoZeigtJedeEbeneInIhremGesperrtenEditor) {
    zweiSchemata();
    oeffnen();
    combo(0).setCurrentIndex(1);
    for (int i = 0; i < 9; ++i) {
        klicken(quelle(i));
        klicken(INFO);
        const QString name = i < 3 ? "frmJust" : i < 6 ? "frmJoyKonfic" : "frmJustr";
        auto* editor = offene(name);
        ASSERT_NE(editor, nullptr) << i;
        EXPECT_FALSE(editor->isEnabled());
        EXPECT_TRUE(info());
        if (name == "frmJoyKonfic") {
            EXPECT_EQ(control<QLabel>(*editor, "lblSchemaName(0)").text(), "B");
            const std::array<const char*, 3> ebenen{"Standart", "Umschalt1", "Umschalt2"};
            EXPECT_EQ(control<QLabel>(*editor, "lblSchemaName(1)").text(),
                      ebenen[static_cast<std::size_t>(i - 3)]);
        } else {
            EXPECT_EQ(editor->windowTitle(), "B");
            EXPECT_TRUE(control<QRadioButton>(*editor, QString("Uschalt(%1)").arg(i % 3)).isChecked());
        }
        EXPECT_EQ(QApplication::activeWindow(), &form());
        klicken(ABBRECHEN);
        EXPECT_EQ(offene(name), nullptr);
        EXPECT_FALSE(info());
    }
}

TEST_F(UebersichtForm, AbbrechenNachDemLinkenStickSchliesstAuchDasTastwerk) {
    zweiSchemata();
    oeffnen();
    klicken(quelle(3));
    klicken(INFO);
    klicken(quelle(0));
    klicken(INFO);
    klicken(ABBRECHEN);
    EXPECT_EQ(offene("frmJust"), nullptr);
    EXPECT_EQ(offene("frmJoyKonfic"), nullptr);
    klicken(quelle(0));
    klicken(INFO);
    klicken(quelle(6));
    klicken(INFO);
    klicken(ABBRECHEN); // of the one that was shown last
    EXPECT_NE(offene("frmJust"), nullptr);
    EXPECT_EQ(offene("frmJustr"), nullptr);
    EXPECT_FALSE(info());
    form().close();
    ereignisse();
    EXPECT_EQ(offene("frmJust"), nullptr);
    EXPECT_EQ(offene("Uebersicht"), nullptr);
}

TEST_F(UebersichtForm, JederKnopfGibtListeUndPfadWiederFrei) {
    zweiSchemata();
    oeffnen();
    for (const int i : {KOPIEREN, WECHSEL, LOESCHEN}) {
        klicken(quelle(3));
        klicken(INFO);
        ASSERT_TRUE(info());
        klicken(i);
        EXPECT_FALSE(info()) << i;
        EXPECT_NE(offene("frmJoyKonfic"), nullptr);
    }
}

TEST_F(UebersichtForm, GeschlossenSperrtSieIhreKnoepfeUndNimmtDieEditorenGleichMit) {
    zweiSchemata();
    oeffnen();
    for (const int i : {0, 3, 6}) {
        klicken(quelle(i));
        klicken(INFO);
    }
    auto& geschlossene = form();
    geschlossene.close(); // it lives on until events are processed
    for (int i = 0; i < 6; ++i)
        EXPECT_FALSE(control<QPushButton>(geschlossene, QString("Command1(%1)").arg(i)).isEnabled()) << i;
    for (const auto* name : {"frmJust", "frmJustr", "frmJoyKonfic"})
        EXPECT_EQ(offene(name), nullptr) << name;
}

TEST_F(UebersichtForm, InfoLaesstDenEigenenEditorMitSeinenAenderungen) {
    zweiSchemata();
    oeffnen();
    klicken(control<QPushButton>(haupt(), "Command1(0)"));
    auto* eigener = offene("frmJoyKonfic");
    ASSERT_NE(eigener, nullptr);
    klicken(control<QPushButton>(*eigener, "Command1(5)")); // "Neu", not saved
    const auto label = control<QLabel>(*eigener, "lblInfo(0)").text();
    EXPECT_EQ(label, "Dreieck");
    combo(0).setCurrentIndex(1);
    klicken(quelle(4));
    klicken(INFO);
    EXPECT_EQ(anzahlOffener("frmJoyKonfic"), 2);
    klicken(ABBRECHEN);
    klicken(ABBRECHEN);
    EXPECT_EQ(anzahlOffener("frmJoyKonfic"), 1);
    EXPECT_TRUE(eigener->isVisible() && eigener->isEnabled());
    EXPECT_EQ(control<QLabel>(*eigener, "lblSchemaName(0)").text(), "A");
    EXPECT_EQ(control<QLabel>(*eigener, "lblSchemaName(1)").text(), "Standart");
    klicken(control<QPushButton>(*eigener, "Command1(4)"));
    EXPECT_EQ(taste(datenbank_, "btn1", "A"), "10,0,0-0-0");
    EXPECT_EQ(taste(datenbank_, "btn1", "B"), "1,50,0-0-0");
}

TEST_F(UebersichtForm, InfoLaesstDenEigenenStickeditorUndSeineSperre) {
    zweiSchemata();
    datenbank_.sql("UPDATE tblStick SET Links = 7 WHERE Schemaname = 'B' AND \"index\" = 20");
    oeffnen();
    klicken(control<QPushButton>(haupt(), "Command1(1)"));
    auto* eigener = offene("frmJust");
    ASSERT_NE(eigener, nullptr);
    combo(0).setCurrentIndex(1);
    klicken(INFO);
    EXPECT_EQ(anzahlOffener("frmJust"), 2);
    klicken(ABBRECHEN);
    EXPECT_EQ(anzahlOffener("frmJust"), 1);
    EXPECT_TRUE(eigener->isVisible() && eigener->isEnabled());
    EXPECT_TRUE(haupt().isVisible());
    control<QRadioButton>(*eigener, "Uschalt(1)").click();
    EXPECT_FALSE(control<QCheckBox>(*eigener, "Check2").isChecked()); // that of A, not of B
}

TEST_F(UebersichtForm, WirdDerGezeigteEditorGeschlossenSindListeUndPfadWiederFrei) {
    zweiSchemata();
    oeffnen();
    for (const int i : {0, 3, 6}) {
        klicken(quelle(i));
        klicken(INFO);
        ASSERT_TRUE(info());
        offene(i == 0 ? "frmJust" : i == 3 ? "frmJoyKonfic" : "frmJustr")->close();
        ereignisse();
        EXPECT_FALSE(info());
        vergehen(50);
    }
    klicken(ABBRECHEN);
    erwarteGrundzustand();
}

TEST_F(UebersichtForm, InfoLiestDieEbeneJedesMalNeu) {
    zweiSchemata();
    oeffnen();
    klicken(quelle(4));
    klicken(INFO);
    EXPECT_EQ(control<QLabel>(*offene("frmJoyKonfic"), "lblInfo(0)").text(), "B");
    Boxleser boxen;
    klicken(LOESCHEN);
    klicken(INFO);
    EXPECT_EQ(anzahlOffener("frmJoyKonfic"), 1);
    EXPECT_EQ(control<QLabel>(*offene("frmJoyKonfic"), "lblInfo(0)").text(), "Dreieck");
}

TEST_F(UebersichtForm, InfoEinesSchemasDasEsNichtGibtLegtNichtsAn) {
    zweiSchemata();
    oeffnen();
    const auto vorher = datenbank_.inhalt();
    combo(0).setEditText("fehlt");
    for (const int i : {0, 3, 6}) {
        klicken(quelle(i));
        Boxleser boxen;
        klicken(INFO);
        erwarteFehler(boxen, 3021);
        EXPECT_FALSE(info());
    }
    EXPECT_EQ(datenbank_.inhalt(), vorher);
}

TEST_F(UebersichtForm, EinEditorDerNichtMehrZuLadenIstBleibtNichtStehen) {
    zweiSchemata();
    oeffnen();
    klicken(INFO);
    ASSERT_NE(offene("frmJust"), nullptr);
    datenbank_.sql("DROP TABLE tblStick");
    Boxleser boxen;
    klicken(INFO);
    erwarteFehler(boxen, 3078);
    EXPECT_EQ(offene("frmJust"), nullptr);
    EXPECT_FALSE(info());
}

TEST_F(UebersichtForm, InfoZeigtDasPadMitDenAchsenDesGewaehltenSchemas) {
    zweiSchemata();
    std::string zeilen;
    for (const auto& [name, x, z] : {std::tuple("A", "lx", "rx"), std::tuple("B", "rx", "lx")})
        zeilen += adoZeile({{"Schema", name}, {"dwXPos", x}, {"dwZPos", z}});
    dateiSchreiben(datenbank_.ordner() / "Gamepad.xml", adoXml(zeilen));
    oeffnen();
    combo(0).setCurrentIndex(1);
    klicken(INFO);
    pad_.zustand.dwXpos = 60000;
    pad_.zustand.dwZpos = 10000;
    vergehen(60);
    auto& editor = *offene("frmJust");
    const auto breite = control<QWidget>(editor, "Stickebene").width();
    EXPECT_NEAR(control<QWidget>(editor, "Punkt").x(), 60000. / 65535 * breite, 1);
}

TEST_F(UebersichtForm, InfoGibtEinemNamenDerErstGetipptWirdKeineAchsen) {
    zweiSchemata();
    oeffnen();
    const auto vorher = dateiLesen(datenbank_.ordner() / "Gamepad.xml");
    EXPECT_NE(vorher, "");
    control<QComboBox>(haupt(), "Combo1").setEditText("getippt");
    klicken(INFO);
    ASSERT_NE(offene("frmJust"), nullptr);
    EXPECT_EQ(dateiLesen(datenbank_.ordner() / "Gamepad.xml"), vorher);
}

TEST_F(UebersichtForm, InfoZeigtDasBildDerEbene) {
    zweiSchemata();
    const auto bilder = datenbank_.ordner() / "Bilder";
    fs::create_directories(bilder);
    QImage rot(8, 8, QImage::Format_RGB32);
    rot.fill(Qt::red);
    ASSERT_TRUE(rot.save(QString::fromStdString((bilder / "B1R.bmp").string())));
    oeffnen();
    combo(0).setCurrentIndex(1);
    klicken(quelle(7));
    klicken(INFO);
    auto& ebene = control<QWidget>(*offene("frmJustr"), "Stickebene");
    EXPECT_EQ(ebene.grab().toImage().pixelColor(ebene.width() / 8, ebene.height() / 8), QColor(Qt::red));
}

TEST_F(UebersichtForm, InfoStehtNebenDerForm) {
    zweiSchemata();
    oeffnen();
    ereignisse(); // it has its place
    haupt().hide();
    klicken(quelle(3));
    const auto frei = form().screen()->availableGeometry();
    for (const int links : {frei.left() + 20 - form().width(), frei.right() - 20}) { // room on one side only
        form().move(links, frei.top() + 40);
        ereignisse();
        klicken(INFO);
        const auto dort = form().frameGeometry();
        const auto hier = offene("frmJoyKonfic")->frameGeometry();
        EXPECT_EQ(links < 0 ? hier.left() : hier.right(), links < 0 ? dort.right() + 1 : dort.left() - 1);
        EXPECT_EQ(hier.top(), dort.top());
    }
}

TEST_F(UebersichtForm, MitDemSchemaGehtSeinGezeigterEditor) {
    zweiSchemata();
    oeffnen();
    klicken(quelle(0));
    klicken(INFO);
    klicken(quelle(3));
    klicken(INFO);
    combo(0).setEnabled(true);
    combo(0).setCurrentIndex(1);
    klicken(quelle(6));
    klicken(INFO);
    Boxleser boxen({JA});
    klicken(control<QPushButton>(haupt(), "Command1(3)")); // deletes A
    EXPECT_EQ(offene("frmJust"), nullptr);
    EXPECT_EQ(offene("frmJoyKonfic"), nullptr);
    EXPECT_NE(offene("frmJustr"), nullptr);
    EXPECT_TRUE(info());
    EXPECT_TRUE(datenbank_.zeilen("SELECT * FROM tblStick WHERE Schemaname = 'A'").empty());
}

TEST_F(UebersichtForm, WaehrendEinSchemaLaeuftBleibtDasHauptfensterVerborgen) {
    zweiSchemata();
    oeffnen();
    klicken(control<QPushButton>(haupt(), "Command1(5)"));
    ASSERT_NE(laufFenster(), nullptr);
    combo(0).setCurrentIndex(1);
    for (const int i : {0, 3, 6}) {
        klicken(quelle(i));
        klicken(INFO);
        vergehen(30);
        klicken(ABBRECHEN);
    }
    klicken(WECHSEL);
    klicken(ziel(7));
    Boxleser boxen;
    klicken(OK);
    EXPECT_EQ(boxen.gesehen(), Boxen{DURCHGEFUEHRT});
    EXPECT_NE(laufFenster(), nullptr);
    EXPECT_FALSE(haupt().isVisible());
    tastenDruecken(1);
    vergehen(20);
    EXPECT_EQ(eingabe_.texteAbholen(), std::vector<std::string>{"+49"}); // the run of A goes on
}

TEST_F(UebersichtForm, DasEndeDesProgrammsNimmtSieUndIhreEditorenMit) {
    zweiSchemata();
    oeffnen();
    for (const int i : {0, 3, 6}) {
        klicken(quelle(i));
        klicken(INFO);
    }
    programm_.reset();
    ereignisse();
    for (const auto* name : {"Uebersicht", "frmJust", "frmJustr", "frmJoyKonfic"})
        EXPECT_EQ(offene(name), nullptr) << name;
}
