// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/LaufFensterAnsicht.h"

#include "base/LaufzeitFehler.h"
#include "base/Regler.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Kurzlabel.h"
#include "editors/common/Padzeile.h"
#include "editors/run/Standanzeige.h"
#include "engine/mitschnitt/Laufmitschnitt.h"
#include "platform/mitschnitt/Mitschnittgeraete.h"
#include "store/schema/modKeyCode.h"

#include <QCloseEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int HOEHE_EINGEKLAPPT = twips(2800);
constexpr int HOEHE_AUSGEKLAPPT = twips(7605);
constexpr int BREITE = 780;

// Reports come every millisecond; nobody reads faster than this.
constexpr int BERICHTSINTERVALL_MS = 50;

// What is held is read, not played by: often enough for the eye.
constexpr std::chrono::milliseconds STANDTAKT{200};

constexpr const char* GESTARTET = "Schema gestartet";

constexpr const char* ANLEITUNG = "Testfenster!\n"
                                  "Drücken Sie mit der linken Maustaste auf das Fenster, \n"
                                  "und testen Sie die von Ihnen eingebenen Funktionen!\n";

// A row of the panel: one axis, its three scroll bars and its report.
struct Achsenzeile {
    const char* name;
    int fenster;
    int mindestzahl;
    int rand;
};
constexpr std::array<Achsenzeile, 4> ACHSENZEILEN{
    {{"Links x", 2, 3, 5}, {"Links y", 0, 1, 4}, {"Rechts x", 6, 7, 10}, {"Rechts y", 8, 9, 11}}};

// Where the sticks say what they do.
struct Stickzeile {
    const char* name;
    Stickspuren Erg;
};
constexpr std::array<Stickzeile, 2> STICKZEILEN{
    {{"Linker Stick:", stickspuren(Stickseite::Links)}, {"Rechter Stick:", stickspuren(Stickseite::Rechts)}}};
constexpr int ZONENSPALTEN = 2;

QScrollBar* scrollleiste(const QString& name, const Reglerbereich& bereich) {
    auto* leiste = benannt(new QScrollBar(Qt::Horizontal), name);
    leiste->setRange(bereich.min, bereich.max);
    leiste->setValue(bereich.start);
    leiste->setPageStep(std::max(1, (bereich.max - bereich.min) / 10));
    leiste->setFocusPolicy(Qt::StrongFocus);
    leiste->setMinimumWidth(90);
    return leiste;
}

QLabel* wertlabel(const QString& name, int wert) {
    auto* label = benannt(new QLabel(QString::number(wert)), name);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance("0000"));
    return label;
}

// Without them the keys are shown by their numbers; what else is wrong with the database ends the start.
Haltebericht::Tastennamen tastennamen(const std::string& datenbankPfad) {
    try {
        return TastennamenLesen(datenbankPfad);
    } catch (const LaufzeitFehler&) {
        return {};
    }
}

} // namespace

LaufFensterAnsicht::LaufFensterAnsicht(Laufzustand& zustand, Joystick& joystick, Eingabe& eingabe,
                                       Zeitgeber& zeitgeber, const Laufbeigaben& beigaben)
    : zustand_(zustand)
    , joystick_(joystick)
    , mitschnitt_(beigaben.mitschnitt)
    , schrift_(*this, beigaben.sofortbild, GESTARTET) {
    setObjectName("LaufFenster");
    setToolTip("Schließen des Fensters beendet das Schema.");
    berichtstakt_ = new QTimer(this);
    berichtstakt_->setSingleShot(true);
    berichtstakt_->setInterval(BERICHTSINTERVALL_MS);
    connect(berichtstakt_, &QTimer::timeout, this, &LaufFensterAnsicht::berichteSchreiben);
    schrift_.betiteln(GESTARTET);
    lauf_ = std::make_unique<LaufFenster>(umgebung(eingabe, zeitgeber, beigaben.streuablage));

    auto* anordnung = new QVBoxLayout(this);
    anordnung->addWidget(kopf());
    anordnung->addWidget(fusszeile());
    anordnung->addWidget(testfeldBauen());
    anordnung->addStretch();
    breiteSetzen(*this, BREITE); // wide enough for the test panel, too
    testfeld_->hide();
    hoeheSetzen(*this, HOEHE_EINGEKLAPPT);
    setFocusPolicy(Qt::StrongFocus);
    setFocus();
    standtakt_ = zeitgeber.formularzeitgeber([this] { standZeigen(); });
    standtakt_->Interval(STANDTAKT);
}

LaufFensterAnsicht::~LaufFensterAnsicht() = default;

Laufumgebung LaufFensterAnsicht::umgebung(Eingabe& eingabe, Zeitgeber& zeitgeber, Streuablage* streuablage) {
    if (!mitschnitt_)
        return {zustand_, joystick_, eingabe, zeitgeber, *this, streuablage};
    auto& geraete = mitschnitt_->geraete();
    return {
        zustand_, geraete.pad, geraete.eingabe, geraete.uhr, *this, streuablage, [this](LaufFenster& lauf) {
            return mitschnitt_->ruhepunkt(lauf);
        }};
}

void LaufFensterAnsicht::laden() {
    haltebericht_ = Haltebericht(tastennamen(zustand_.global.DatenbankPfad));
    if (mitschnitt_)
        mitschnitt_->beginn([this] { lauf_->laden(); });
    else
        lauf_->laden();
    standtakt_->Enabled(true);
}

std::optional<LaufzeitFehler> LaufFensterAnsicht::entladen() {
    standtakt_->Enabled(false);
    auto fehler = laufBeenden();
    lauf_.reset();
    hide();
    return fehler;
}

std::optional<LaufzeitFehler> LaufFensterAnsicht::ohneFensterBeenden() {
    const QSignalBlocker stumm(this); // nobody is asked to come back into sight
    return laufBeenden();
}

std::optional<LaufzeitFehler> LaufFensterAnsicht::laufBeenden() {
    if (!lauf_)
        return std::nullopt;
    return mitschnitt_ ? mitschnitt_->ende([this] { return lauf_->beenden(); }) : lauf_->beenden();
}

void LaufFensterAnsicht::closeEvent(QCloseEvent* ereignis) {
    ereignis->accept();
    emit geschlossen();
}

// --- top part, always in sight ---

QWidget* LaufFensterAnsicht::kopf() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->setSpacing(14);
    zeile->addWidget(bedienung());
    zeile->addWidget(stand(), 1);
    return bereich;
}

QWidget* LaufFensterAnsicht::bedienung() {
    auto* bereich = new QWidget;
    auto* gitter = new QGridLayout(bereich);
    gitter->setContentsMargins(0, 0, 0, 0);

    auto* knoepfe = new QVBoxLayout;
    const std::array<const char*, 2> texte{"Stop", "SensiTast"};
    for (int i = 0; i < 2; ++i) {
        auto* knopf = benannt(new QPushButton(texte[static_cast<std::size_t>(i)]), feldname("Command1", i));
        // A click leaves the focus where it is, or the keys that the pad sends to this very window would
        // press it.
        knopf->setFocusPolicy(Qt::TabFocus);
        connect(knopf, &QPushButton::clicked, this, [this, i] { Command1Klick(i); });
        knoepfe->addWidget(knopf);
        knoepfe_[static_cast<std::size_t>(i)] = knopf;
    }
    if (mitschnitt_)
        knoepfe->addWidget(mitschnittknopf());
    knoepfe->addStretch();

    gitter->addLayout(knoepfe, 0, 0);
    gitter->addWidget(ausgabegruppe(), 0, 1);
    gitter->addWidget(wiederholungszeile(), 1, 0, 1, 2);
    gitter->setRowStretch(2, 1);
    return bereich;
}

QWidget* LaufFensterAnsicht::stand() {
    auto* neben = new QWidget;
    auto* zeilen = new QFormLayout(neben);
    zeilen->setContentsMargins(0, 0, 0, 0);
    // They change with each button: nothing beside them may move, nor be asked whether it has to.
    umschaltung_ = kurzlabel("lblUmschalt", "Umschalttaste 2");
    gedrueckte_ = kurzlabel(feldname("Label1", 0), "Umschalttaste 2");
    for (auto* label : {umschaltung_, gedrueckte_})
        label->setFixedSize(label->sizeHint());
    umschaltung_->clear();
    gedrueckte_->setText("Label1");
    zeilen->addRow("Ebene betreten:", umschaltung_);
    zeilen->addRow("Knopfmaske:", gedrueckte_); // one number for all: no count of them
    for (QWidget* teil : {zeilen->labelForField(gedrueckte_), static_cast<QWidget*>(gedrueckte_)})
        teil->setToolTip(
            "Welche Knöpfe gedrückt sind: Jeder hat seine Zahl (1, 2, 4, 8 …), hier steht die Summe");
    return standanzeige_ = benannt(new Standanzeige(neben, schrift_), "Standanzeige");
}

QWidget* LaufFensterAnsicht::ausgabegruppe() {
    auto* gruppe = benannt(new QGroupBox("Ausgabe speziel"), "Frame1");
    auto* zeile = new QVBoxLayout(gruppe);
    zeile->setSpacing(2);
    const std::array<const char*, 3> texte{"Standart", "Spezial 1", "Spezial 2"};
    for (int i = 0; i < 3; ++i) {
        auto* option = benannt(new QRadioButton(texte[static_cast<std::size_t>(i)]), feldname("Option1", i));
        option->setChecked(i == 0);
        connect(option, &QRadioButton::toggled, this, [this, i](bool an) {
            if (an)
                Option1Klick(i);
        });
        zeile->addWidget(option);
        ausgabearten_[static_cast<std::size_t>(i)] = option;
    }
    return gruppe;
}

QPushButton* LaufFensterAnsicht::mitschnittknopf() {
    auto* knopf = benannt(new QPushButton("Mitschnitt speichern"), "cmdMitschnitt");
    knopf->setFocusPolicy(Qt::TabFocus); // as the two above
    knopf->setShortcut(QKeySequence("Ctrl+M"));
    knopf->setToolTip("Speichert, was Gamepad und Ausgabe in den letzten zehn Minuten getan haben, im "
                      "Ordner „Mitschnitte“ (Strg+M)");
    connect(knopf, &QPushButton::clicked, this, &LaufFensterAnsicht::mitschnittGewuenscht);
    return knopf;
}

// The pad, and beside it what became of a record, as soon as there is something to say.
QWidget* LaufFensterAnsicht::fusszeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    mitschnittmeldung_ = kurzlabel("lblMitschnitt", "");
    mitschnittmeldung_->hide();
    zeile->addWidget(new Padzeile(joystick_, Padzeile::Ort::Lauf), 1);
    zeile->addWidget(mitschnittmeldung_, 2);
    return bereich;
}

void LaufFensterAnsicht::mitschnittZeigen(const QString& text) {
    mitschnittmeldung_->setText(text);
    mitschnittmeldung_->setToolTip(text);
    mitschnittmeldung_->show();
}

QWidget* LaufFensterAnsicht::wiederholungszeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    auto* leiste = wiederholregler_ = scrollleiste("HScroll2", HSCROLL2_BEREICH);
    auto* wert = wertlabel("Label4", HSCROLL2_BEREICH.start);
    connect(leiste, &QScrollBar::valueChanged, this, [this, wert](int neu) {
        wert->setText(QString::number(neu));
        bedienen(QString("regler %1 %2").arg(REGLER).arg(neu), [&] { lauf_->HScroll2Aenderung(neu); });
    });
    leiste->setAccessibleName("Tasten wiederholen alle, Millisekunden");
    zeile->addWidget(new QLabel("Tasten wiederholen alle"));
    zeile->addWidget(leiste, 1);
    zeile->addWidget(wert);
    zeile->addWidget(new QLabel("ms"));
    return bereich;
}

// --- test panel ---

QWidget* LaufFensterAnsicht::testfeldBauen() {
    testfeld_ = new QWidget;
    auto* anordnung = new QVBoxLayout(testfeld_);
    anordnung->setContentsMargins(0, 0, 0, 0);
    testtext_ = benannt(new QPlainTextEdit(ANLEITUNG), "Text2");
    testtext_->setAccessibleName("Zum Ausprobieren der Tasten");
    testtext_->setFixedHeight(testtext_->fontMetrics().lineSpacing() * 4 + 12);
    anordnung->addWidget(testtext_);
    anordnung->addWidget(reglergitter());
    anordnung->addWidget(meldungszeile());
    anordnung->addWidget(ausgabezeile());
    return testfeld_;
}

QWidget* LaufFensterAnsicht::reglergitter() {
    auto* bereich = new QWidget;
    auto* gitter = new QGridLayout(bereich);
    gitter->setContentsMargins(0, 0, 0, 0);
    gitter->setVerticalSpacing(6);
    const std::array<const char*, 3> spalten{"Fenster", "Mindestzahl", "Rand"};
    for (int spalte = 0; spalte < 3; ++spalte) {
        gitter->addWidget(new QLabel(spalten[static_cast<std::size_t>(spalte)]), 0, 1 + 2 * spalte);
        gitter->setColumnStretch(1 + 2 * spalte, 1);
    }
    int reihe = 1;
    for (const auto& achse : ACHSENZEILEN) {
        gitter->addWidget(new QLabel(achse.name), reihe, 0);
        int spalte = 1;
        for (const int index : {achse.fenster, achse.mindestzahl, achse.rand}) {
            auto* leiste = regler(index);
            auto* wert = reglerwert(index);
            connect(leiste, &QScrollBar::valueChanged, wert, qOverload<int>(&QLabel::setNum));
            leiste->setAccessibleName(
                QString("%1: %2").arg(achse.name, spalten[static_cast<std::size_t>(spalte / 2)]));
            gitter->addWidget(leiste, reihe, spalte++);
            gitter->addWidget(wert, reihe, spalte++);
        }
        ++reihe;
    }
    // The one scroll bar more of the right stick: its margins are not what their rows say.
    regler_[10]->setToolTip("Rand von „Rechts x“ und oberer Rand von „Rechts y“");
    regler_[11]->setToolTip("Unterer Rand von „Rechts y“");
    return bereich;
}

QScrollBar* LaufFensterAnsicht::regler(int index) {
    const auto i = static_cast<std::size_t>(index);
    auto* leiste = scrollleiste(feldname("HScroll1", index), HSCROLL1_BEREICHE[i]);
    connect(leiste, &QScrollBar::valueChanged, this, [this, index](int neu) {
        bedienen(QString("regler %1 %2").arg(index).arg(neu), [&] { lauf_->HScroll1Aenderung(index, neu); });
    });
    return regler_[i] = leiste;
}

QLabel* LaufFensterAnsicht::reglerwert(int index) {
    return wertlabel(feldname("Label3", index), HSCROLL1_BEREICHE[static_cast<std::size_t>(index)].start);
}

QWidget* LaufFensterAnsicht::meldungszeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QGridLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->setVerticalSpacing(2);
    for (int i = 0; i < ACHSENBERICHTE; ++i) {
        auto* text = benannt(new QPlainTextEdit("Text3"), feldname("Text3", i));
        text->setReadOnly(true);
        achsenberichte_[static_cast<std::size_t>(i)] = text;
        text->setFixedHeight(text->fontMetrics().lineSpacing() * 4 + 12);
        const QString achse = ACHSENZEILEN[static_cast<std::size_t>(i)].name;
        text->setAccessibleName(achse + ": Messwerte");
        zeile->addWidget(new QLabel(achse), 0, i);
        zeile->addWidget(text, 1, i);
    }
    return bereich;
}

QWidget* LaufFensterAnsicht::ausgabezeile() {
    auto* bereich = new QWidget;
    auto* gitter = new QGridLayout(bereich);
    gitter->setContentsMargins(0, 0, 0, 0);
    gitter->setVerticalSpacing(2);
    for (int i = 0; i < SPUREN; ++i) {
        auto* label = benannt(new QLabel, feldname("Erg", i));
        label->setTextFormat(Qt::PlainText); // an action text is nobody's markup
        spurfelder_[static_cast<std::size_t>(i)] = label;
    }
    int reihe = 0;
    for (const auto& stick : STICKZEILEN) {
        gitter->addWidget(new QLabel(stick.name), reihe, 0);
        int spalte = 1;
        for (const auto index : stick.Erg)
            gitter->addWidget(spurfelder_[static_cast<std::size_t>(index)], reihe, spalte++);
        ++reihe;
    }
    gitter->addWidget(new QLabel("Druckmaske:"), reihe, 0);
    gitter->addWidget(spurfelder_[DRUECKMASKE_SPUR], reihe, 1);
    for (int spalte = 1; spalte <= ZONENSPALTEN; ++spalte)
        gitter->setColumnMinimumWidth(spalte, bereich->fontMetrics().horizontalAdvance("Rechts:  65535  "));
    gitter->setColumnStretch(ZONENSPALTEN + 1, 1);
    gitter->setColumnStretch(ZONENSPALTEN + 2, 1);
    auto* felder = new QHBoxLayout;
    felder->setSpacing(16);
    felder->addWidget(benannt(new QLabel("Label1"), feldname("Label1", 1)));
    for (const char* name : {"Label2", "lblStErg", "lblBeschriftung"})
        felder->addWidget(benannt(new QLabel(name), name));
    auto* text1 = benannt(new QLineEdit("Text1"), "Text1");
    text1->setReadOnly(true);
    text1->setAccessibleName("Ausgabe");
    felder->addWidget(text1, 1);
    gitter->addLayout(felder, reihe, 2, 1, -1);
    return bereich;
}

// --- the user's hand ---

void LaufFensterAnsicht::Command1Klick(int index) {
    bedienen(QString("knopf %1").arg(index), [&] { lauf_->Command1Klick(index); });
}

// What the record is to know of the user's hand goes through here.
void LaufFensterAnsicht::bedienen(const QString& was, const std::function<void()>& schritt) {
    if (!lauf_)
        return;
    if (mitschnitt_)
        mitschnitt_->bedienung(was.toStdString(), schritt);
    else
        schritt();
}

void LaufFensterAnsicht::Option1Klick(int index) {
    if (!lauf_)
        return;
    try {
        lauf_->Option1Klick(index);
    } catch (const LaufzeitFehler& fehler) {
        // Queued: the run, and with it the button that is being clicked, may end while the box is open.
        QMetaObject::invokeMethod(
            this, [this, fehler] { fehlermeldung(this, fehler, "Ausgabe speziel"); }, Qt::QueuedConnection);
    }
}

// --- the engine's output ---

void LaufFensterAnsicht::titel(const std::string& text) {
    schrift_.betiteln(qt(text));
}

void LaufFensterAnsicht::standZeigen() {
    laufzeit_ += STANDTAKT;
    const auto stand = lauf_->stand();
    haltebericht_.ansehen(stand, laufzeit_); // also out of sight: time goes on
    if (isVisible() && !isMinimized())
        standanzeige_->zeigen(stand.ebene, haltebericht_.zeilen());
}

void LaufFensterAnsicht::lblUmschalt(std::string_view text) {
    schrift_.schreiben(*umschaltung_, qt(text));
}

void LaufFensterAnsicht::gedruecktePadtasten(int zahl) {
    schrift_.schreiben(*gedrueckte_, QString::number(zahl));
}

void LaufFensterAnsicht::Erg(int index, const std::string& text) {
    spuren_[static_cast<std::size_t>(index)] = qt(text);
    if (testfeld_->isVisible())
        spurenSchreiben();
}

void LaufFensterAnsicht::spurenSchreiben() {
    for (std::size_t i = 0; i < spurfelder_.size(); ++i)
        schrift_.schreiben(*spurfelder_[i], spuren_[i]);
}

void LaufFensterAnsicht::HScroll1(int index, int wert) {
    regler_[static_cast<std::size_t>(index)]->setValue(wert);
}

void LaufFensterAnsicht::HScroll2(int wert) {
    wiederholregler_->setValue(wert);
}

void LaufFensterAnsicht::Text3(int index, const std::string& text) {
    berichte_[static_cast<std::size_t>(index)] = qt(text);
    if (!berichtstakt_->isActive())
        berichtstakt_->start();
}

void LaufFensterAnsicht::berichteSchreiben() {
    for (std::size_t i = 0; i < achsenberichte_.size(); ++i)
        if (!berichte_[i].isNull() && achsenberichte_[i]->toPlainText() != berichte_[i])
            achsenberichte_[i]->setPlainText(berichte_[i]);
}

void LaufFensterAnsicht::Command1(int index, std::string_view text) {
    knoepfe_[static_cast<std::size_t>(index)]->setText(qt(text));
}

void LaufFensterAnsicht::testfeld(bool offen) {
    testfeld_->setVisible(offen);
    if (offen) {
        spurenSchreiben();
        testtext_->setFocus();
    }
    hoeheSetzen(*this, offen ? HOEHE_AUSGEKLAPPT : HOEHE_EINGEKLAPPT);
}

void LaufFensterAnsicht::Option1(int index) {
    if (index >= 0 && static_cast<std::size_t>(index) < ausgabearten_.size())
        ausgabearten_[static_cast<std::size_t>(index)]->setChecked(true);
}

void LaufFensterAnsicht::hauptformVerbergen() {
    emit hauptformVerbergenGewuenscht();
}

void LaufFensterAnsicht::hauptformZurueck(bool zeigen) {
    emit hauptformZurueckGewuenscht(zeigen);
}

void LaufFensterAnsicht::abgebrochen(const LaufzeitFehler& fehler) {
    if (mitschnitt_)
        mitschnitt_->fehler(fehler.zahl());
    emit laufAbgebrochen(fehler.zahl(), QString::fromUtf8(fehler.what()));
}
