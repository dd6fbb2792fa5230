// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/slider/SchubreglerKonfic.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Optionen.h"
#include "editors/common/Padzeile.h"
#include "editors/common/Speicherstand.h"
#include "editors/slider/Schubaktionsrahmen.h"
#include "editors/slider/Schubbild.h"
#include "editors/slider/Schubzahlen.h"
#include "engine/input/Achsen.h"
#include "engine/run/GobalVariable.h"
#include "store/files/Achsendatei.h"
#include "store/files/Gamepadtabelle.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr std::chrono::milliseconds ABFRAGE{50};

enum Linienknopf { NEUE_LINIE, LINIE_LOESCHEN };

constexpr const char* NUR_AUSWAERTS = "Deaktiviert beim loslassen das nochmalige auslösen der Aktionen !";
constexpr const char* ZURUECKGEHOLTES = "Zurückgeholte Änderungen"; // name of a step
constexpr const char* SPALTE_SCHUBREGLER = "Schubregler";           // of Gamepad.xml

QString feldtext(int nummer) {
    return QString("Feld: %1").arg(nummer);
}

} // namespace

SchubreglerKonfic::SchubreglerKonfic(const GobalVariable& global, Achsendatei& achsendatei, Achsen& achsen,
                                     Zeitgeber& zeitgeber, Tastatur& tastatur,
                                     Entwuerfe<Schubentwurf>& entwuerfe)
    : achsendatei_(achsendatei)
    , achsen_(achsen)
    , entwuerfe_(entwuerfe)
    , schema_(achsendatei.Schema())
    , aktionsrahmen_(new Schubaktionsrahmen(global.DatenbankPfad, tastatur)) {
    setObjectName("SchubreglerKonfic");
    setWindowTitle("Schubregler konfigurieren");
    speichern_ = speicherknopf();
    speicherstand_ = new Speicherstand(*this, *speichern_, zeitgeber);
    connect(speicherstand_, &Speicherstand::wiederherstellenGewuenscht, this,
            [this] { mitFehlermeldung(this, formtitel(*this), [this] { wiederherstellen(); }); });
    auto* anordnung = new QVBoxLayout(this);
    anordnung->setSpacing(10);
    anordnung->addWidget(reglerzeile());
    anordnung->addWidget(bild_ = benannt(new Schubbild, "Picture1"));
    anordnung->addWidget(feldzeile());
    anordnung->addWidget(feldbereich(), 1);
    anordnung->addWidget(nurAuswaerts_ = benannt(new QCheckBox(NUR_AUSWAERTS), "Check2"));
    anordnung->addWidget(fusszeile());
    anordnung->addWidget(new Padzeile(achsen_.joystick()));
    breiteSetzen(*this, 0);
    hoeheSetzen(*this, 0);

    laden();
    connect(aktionsrahmen_, &Schubaktionsrahmen::geaendert, this, &SchubreglerKonfic::standZeigen);
    connect(nurAuswaerts_, &QCheckBox::toggled, this, &SchubreglerKonfic::standZeigen);
    rueckgang_ = std::make_unique<Rueckgang>(*this, rueckgangsdienst());
    connect(rueckgang_.get(), &Rueckgang::feldVerlassen, this, [this] { folge_.abschliessen(); });
    abfrage_ = zeitgeber.formularzeitgeber([this] { Timer1_Timer(); });
    abfrage_->Interval(ABFRAGE);
    abfrage_->Enabled(true);
}

// What the controls tell as they go, one that loses the focus for example, comes too late.
SchubreglerKonfic::~SchubreglerKonfic() {
    aktionsrahmen_->disconnect(this);
    nurAuswaerts_->disconnect(this);
}

void SchubreglerKonfic::closeEvent(QCloseEvent* ereignis) {
    abfrage_->Enabled(false);
    if (ungespeichert() && !verwaist_)
        entwuerfe_.merken(schema_, entwurf());
    ereignis->accept();
}

// --- layout, top to bottom ---

QWidget* SchubreglerKonfic::reglerzeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    reglerwahl_ = optionen<REGLER>("Option3", {"Schubregler 1", "Schubregler 2"});
    for (int i = 0; i < REGLER; ++i) {
        auto* option = reglerwahl_[static_cast<std::size_t>(i)];
        connect(option, &QRadioButton::toggled, this, [this, i](bool an) {
            if (an)
                Option3_Click(i);
        });
        zeile->addWidget(option);
    }
    zeile->addStretch();
    const std::array<const char*, 2> texte{"Neue Linie", "Linie löschen"};
    const std::array<const char*, 2> hinweise{"Teilt den Regler in ein gleich großes Feld mehr",
                                              "Nimmt das letzte Feld mit seiner Aktion weg"};
    for (int i = 0; i < 2; ++i) {
        auto* knopf = benannt(new QPushButton(texte[static_cast<std::size_t>(i)]), feldname("Command1", i));
        knopf->setToolTip(hinweise[static_cast<std::size_t>(i)]);
        connect(knopf, &QPushButton::clicked, this, [this, i] { Command1_Click(i); });
        zeile->addWidget(knopf);
    }
    return bereich;
}

// The field in which the slider stands; behind it there is room.
QWidget* SchubreglerKonfic::feldzeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->addWidget(aktuellesFeld_ = benannt(new QLabel(feldtext(1)), "Label1"));
    zeile->addStretch();
    platzBehalten(speicherstand_->angebot());
    zeile->addWidget(&speicherstand_->angebot());
    return bereich;
}

QPushButton* SchubreglerKonfic::speicherknopf() {
    auto* knopf = benannt(new QPushButton("Schema speichern"), "Command3");
    knopf->setToolTip("Speichert die Felder von „Schubregler 1“ und schließt das Fenster");
    connect(knopf, &QPushButton::clicked, this, &SchubreglerKonfic::Command3_Click);
    return knopf;
}

QWidget* SchubreglerKonfic::feldbereich() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->addWidget(listenspalte());
    connect(aktionsrahmen_, &Schubaktionsrahmen::uebernehmenGewuenscht, this,
            &SchubreglerKonfic::Command2_Click);
    connect(aktionsrahmen_, &Schubaktionsrahmen::tasteGefangen, this, [this](int code) {
        eineTat(
            [&] { mitFehlermeldung(this, formtitel(*this), [&] { aktionsrahmen_->tasteGewaehlt(code); }); });
    });
    zeile->addWidget(aktionsrahmen_, 1);
    return bereich;
}

QWidget* SchubreglerKonfic::listenspalte() {
    auto* bereich = new QWidget;
    auto* spalte = new QVBoxLayout(bereich);
    spalte->setContentsMargins(0, 0, 0, 0);
    felder_ = benannt(new QListWidget, "List1");
    connect(felder_, &QListWidget::itemSelectionChanged, this, &SchubreglerKonfic::List1_Click);
    connect(felder_, &QListWidget::itemClicked, this, &SchubreglerKonfic::List1_Click);
    auto* bitte = benannt(new QLabel("Bitte ein Feld in der Liste auswählen"), "Label4");
    bitte->setBuddy(felder_);
    felder_->setAccessibleName("Felder des Schubreglers");
    bitte->setWordWrap(true);
    spalte->addWidget(bitte);
    spalte->addWidget(felder_, 1);
    bereich->setFixedWidth(bereich->fontMetrics().horizontalAdvance("Bitte ein Feld in der ") + 24);
    return bereich;
}

QWidget* SchubreglerKonfic::fusszeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    hinweis_ = benannt(new QLabel, "lblHinweis");
    hinweis_->setWordWrap(true);
    hinweis_->setMinimumHeight(2 * hinweis_->fontMetrics().lineSpacing()); // it comes and goes
    auto* abbrechen = benannt(new QPushButton("Abbrechen"), "Command4");
    // A click on it takes no focus away, so nobody is asked for a number that is not wanted any more.
    abbrechen->setFocusPolicy(Qt::TabFocus);
    connect(abbrechen, &QPushButton::clicked, this, &QWidget::close);
    zeile->addWidget(hinweis_, 1);
    abbrechen->setToolTip("Schließt das Fenster, ohne zu speichern");
    zeile->addWidget(speichern_);
    zeile->addWidget(abbrechen);
    return bereich;
}

// --- what the controls do ---

void SchubreglerKonfic::laden() {
    achsendatei_.AchsenLaden();
    try {
        regler_[0] = Schubtext(achsendatei_.SchubreglerText());
    } catch (const LaufzeitFehler& fehler) {
        QMetaObject::invokeMethod(
            this, [this, fehler] { fehlermeldung(this, fehler, formtitel(*this)); }, Qt::QueuedConnection);
    }
    nurAuswaerts_->setChecked(regler_[0].nurAuswaerts());
    felderZeigen();
    gespeicherte_ = texte();
    gezeigter_ = aktionsrahmen_->stand();
    folge_.beginnen({entwurf()});
    speicherstand_->anbieten(entwuerfe_.gibtEs(schema_));
}

void SchubreglerKonfic::Option3_Click(int index) {
    gewaehlt_ = index;
    hinweis_->setText(index == 0 ? ""
                                 : "Schubregler 2 löst im Spiel nichts aus. Seine Felder werden nicht "
                                   "gespeichert.");
    felderZeigen();
    standZeigen();
}

void SchubreglerKonfic::Command1_Click(int index) {
    if (index == NEUE_LINIE ? regler().linieAnfuegen() : regler().linieLoeschen())
        felderZeigen();
    standZeigen();
}

void SchubreglerKonfic::Timer1_Timer() {
    achsen_.AchsenLesen();
    const auto wert = achsen_.AchsenWert(Achse::Z1);
    if (!wert)
        return;
    const double stelle = schubstelle(*wert, bild_->width());
    bild_->markeSetzen(stelle);
    const auto text = feldtext(feldAnStelle(stelle, regler().linien(), bild_->width()));
    if (aktuellesFeld_->text() != text)
        aktuellesFeld_->setText(text);
}

void SchubreglerKonfic::List1_Click() {
    const int index = gewaehltesFeld();
    bild_->feldHervorheben(index);
    if (index < 0)
        return;
    const auto satz = regler().satz(index);
    eineTat([&] {
        mitFehlermeldung(this, formtitel(*this),
                         [&] { aktionsrahmen_->zeigen(satz.empty() ? Schubaktion{} : aktionAus(satz)); });
        gezeigter_ = aktionsrahmen_->stand();
    });
}

void SchubreglerKonfic::Command2_Click() {
    const int index = gewaehltesFeld();
    if (index < 0) {
        meldung(this, "Es wurde kein Feld in der Liste makiert!", "");
        return;
    }
    Schubaktion aktion;
    if (!aktionsrahmen_->lesen(aktion))
        return;
    const auto satz = alsSatz(index + 1, aktion);
    regler().satzSetzen(index, satz);
    gezeigter_ = aktionsrahmen_->stand();
    standZeigen();
    meldung(this, qt(satz), "");
}

void SchubreglerKonfic::Command3_Click() {
    if (!darfSpeichern(this, schema_, achsendatei_.Schema()))
        return;
    const auto text = regler_[0].text(nurAuswaerts_->isChecked());
    if (!gamepadNimmt(SPALTE_SCHUBREGLER, text)) {
        meldung(this,
                QString("Der Text des Schubreglers ist zu lang: er hat %1 Zeichen, höchstens 1000 werden "
                        "gespeichert. Der alte Text bleibt bestehen.")
                    .arg(qt(text).size()),
                "");
        return;
    }
    if (!achsendatei_.GamepadSchreiben(text)) {
        meldung(this,
                "Die Felder konnten nicht gespeichert werden: Gamepad.xml lässt sich nicht lesen oder "
                "nicht schreiben, oder der Name des Schemas passt nicht hinein.",
                "");
        return; // they are nowhere else
    }
    entwuerfe_.vergessen(achsendatei_.Schema());
    gespeicherte_[0] = texte()[0];
    emit gespeichert();
    close();
}

// --- what is not saved ---

std::array<std::string, SchubreglerKonfic::REGLER> SchubreglerKonfic::texte() const {
    const bool nurAuswaerts = nurAuswaerts_->isChecked();
    return {regler_[0].text(nurAuswaerts), regler_[1].text(false)};
}

bool SchubreglerKonfic::ungespeichert() const {
    return texte() != gespeicherte_ || aktionsrahmen_->stand() != gezeigter_;
}

void SchubreglerKonfic::standZeigen() {
    if (taten_ > 0)
        return;
    Schubinhalt jetzt{entwurf()};
    const auto ort = tippfeld(folge_.jetzt(), jetzt);
    folge_.festhalten(std::move(jetzt), ort);
    speicherstand_->setUngespeichert(ungespeichert());
}

// However many controls it sets, it is one step.
void SchubreglerKonfic::eineTat(const std::function<void()>& tat) {
    ++taten_;
    const auto danach = qScopeGuard([this] {
        --taten_;
        standZeigen();
    });
    tat();
}

Schubentwurf SchubreglerKonfic::entwurf() const {
    return {regler_,   gewaehlt_, nurAuswaerts_->isChecked(), gewaehltesFeld(), aktionsrahmen_->stand(),
            gezeigter_};
}

void SchubreglerKonfic::wiederherstellen() {
    const auto entwurf = entwuerfe_.nehmen(schema_);
    if (!entwurf)
        return;
    if (ungespeichert())
        entwuerfe_.hintanstellen(schema_, this->entwurf());
    speicherstand_->anbieten(entwuerfe_.gibtEs(schema_));
    ++taten_;
    zeigen(*entwurf);
    --taten_;
    folge_.festhalten({this->entwurf()}, {}, ZURUECKGEHOLTES);
    standZeigen();
}

void SchubreglerKonfic::zeigen(const Schubentwurf& entwurf) {
    regler_ = entwurf.regler;
    reglerwahl_[static_cast<std::size_t>(entwurf.gewaehlt)]->setChecked(true);
    felderZeigen();
    nurAuswaerts_->setChecked(entwurf.nurAuswaerts);
    {
        const QSignalBlocker stumm(*felder_);
        felder_->setCurrentRow(entwurf.feld);
    }
    bild_->feldHervorheben(entwurf.feld);
    gezeigter_ = entwurf.gezeigter;
    aktionsrahmen_->herstellen(entwurf.rahmen);
}

// --- undo ---

Rueckgang::Dienst SchubreglerKonfic::rueckgangsdienst() {
    return {[this](Richtung richtung) {
                return richtung == Richtung::Zurueck ? folge_.kannZurueck() : folge_.kannVor();
            },
            [this](Richtung richtung) { return schritt(richtung); },
            [this](Richtung richtung) { gehen(richtung); }};
}

QString SchubreglerKonfic::schritt(Richtung richtung) const {
    const bool zurueck = richtung == Richtung::Zurueck;
    if (const auto& eigener = zurueck ? folge_.nameDavor() : folge_.nameDanach(); !eigener.empty())
        return qt(eigener);
    return schrittname(zurueck ? folge_.davor() : folge_.jetzt(), zurueck ? folge_.jetzt() : folge_.danach(),
                       [this](const std::string& code) { return aktionsrahmen_->tastenname(code); });
}

void SchubreglerKonfic::gehen(Richtung richtung) {
    const bool zurueck = richtung == Richtung::Zurueck;
    if (zurueck && !folge_.nameDavor().empty()) { // it was kept before, and is kept again
        entwuerfe_.merken(schema_, entwurf());
        speicherstand_->anbieten(true);
    }
    zurueck ? folge_.zurueck() : folge_.vor();
    eineTat([this, nach = folge_.jetzt()] {
        zeigen(nach.entwurf);
        folge_.nachfuehren({entwurf()});
    });
}

// --- the steps that they share ---

void SchubreglerKonfic::felderZeigen() {
    {
        const QSignalBlocker stumm(*felder_);
        felder_->clear();
        for (int nummer = 1; nummer <= regler().felder(); ++nummer)
            felder_->addItem(feldtext(nummer));
    }
    bild_->linienSetzen(regler().linien());
    bild_->feldHervorheben(-1);
}

// Index in List1, -1 when no entry is selected. The focus alone makes one of them current, too.
int SchubreglerKonfic::gewaehltesFeld() const {
    const auto gewaehlt = felder_->selectedItems();
    return gewaehlt.isEmpty() ? -1 : felder_->row(gewaehlt.front());
}
