// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/buttons/frmJoyKonfic.h"

#include "base/Ebenennamen.h"
#include "base/LaufzeitFehler.h"
#include "base/Text.h"
#include "editors/buttons/Padbild.h"
#include "editors/buttons/Padzugang.h"
#include "editors/buttons/Tasteneigenschaften.h"
#include "editors/buttons/Wahlknopf.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Hinweistext.h"
#include "editors/common/Kurzlabel.h"
#include "editors/common/Padzeile.h"
#include "editors/common/Speicherstand.h"
#include "editors/common/Tastenfang.h"
#include "engine/input/Padabfrage.h"
#include "engine/run/GobalVariable.h"
#include "formats/Felder.h"
#include "store/schema/modKeyCode.h"
#include "store/schema/modLesen.h"
#include "store/schema/modSpeichern.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <chrono>
#include <utility>
#include <vector>

using belegungsfeld::TASTE;

namespace {

constexpr auto TASTTAKT = std::chrono::milliseconds{10};

constexpr int NUR_GEWAEHLTE = 1; // labelBeschriften

// Indices of Command1.
constexpr int SPEICHERN = 4;
constexpr int NEU = 5;

constexpr std::array<const char*, TASTENARTEN> ARTTEXTE{"1,2,3,4...",     "Taste:",         "0,9,8,7...",
                                                        "Umschalttaste1", "Umschalttaste2", "Maus"};
constexpr std::array<const char*, TASTENARTEN> ARTHINWEISE{
    "Sendet bei jedem Druck die nächste Zifferntaste, nach der 9 die 0",
    "Sendet eine Taste der Tastatur",
    "Sendet bei jedem Druck die vorige Zifferntaste",
    "Wechselt auf die Ebene „Umschalt 1“",
    "Wechselt auf die Ebene „Umschalt 2“",
    "Drückt eine Maustaste oder dreht das Scrollrad"};
constexpr int TASTE_TAB = 9;

// Indices of Option1.
constexpr std::size_t index(Belegungsart art) {
    return static_cast<std::size_t>(art);
}
constexpr auto TASTENDRUCK = index(Belegungsart::Taste);
constexpr auto UMSCHALTTASTE_1 = index(Belegungsart::Umschalt1);
constexpr auto UMSCHALTTASTE_2 = index(Belegungsart::Umschalt2);

/// What tells of assignments that can't be read: their slots, a line a layer.
QString unlesbar(const std::vector<Tastenort>& orte) {
    QString text = "Diese Belegungen sind nicht lesbar und stehen hier als leer. Was gespeichert ist, ändert "
                   "sich erst mit „Speichern“.";
    for (int ebene = 0; ebene < EBENEN; ++ebene) {
        QStringList namen;
        for (const auto& ort : orte)
            if (ort.ebene == ebene)
                namen << qt(TASTENBESCHRIFTUNG[static_cast<std::size_t>(ort.taste)]);
        if (!namen.isEmpty())
            text += QString("\n%1: %2")
                        .arg(EBENENNAMEN_OHNE_LEERZEICHEN[static_cast<std::size_t>(ebene)], namen.join(", "));
    }
    return text;
}

} // namespace

frmJoyKonfic::frmJoyKonfic(GobalVariable& global, Joystick& joystick, Zeitgeber& zeitgeber,
                           Tastatur& tastatur, Entwuerfe<Tastenentwurf>& entwuerfe)
    : global_(global)
    , joystick_(joystick)
    , tastatur_(tastatur)
    , entwuerfe_(entwuerfe)
    , werk_(global.UmschaltTasten)
    , abfrage_(zeitgeber.formularzeitgeber([this] { Timer1_Timer(); })) {
    setObjectName("frmJoyKonfic");
    setWindowTitle("Tastwerk");
    padzugangEinrichten(); // before anybody asks for what the picture is
    auto* anordnung = new QVBoxLayout(this);
    anordnung->addWidget(kopf());
    bild_ = benannt(new Padbild, "imgHintergrund");
    for (int taste = 0; taste < SLOTS; ++taste)
        bild_->lblInfo(taste).setText(ENTWURFSTEXTE[static_cast<std::size_t>(taste)]);
    for (std::size_t taste = 0; taste < LAUFNAMEN.size(); ++taste)
        if (LAUFNAMEN[taste] != TASTENBESCHRIFTUNG[taste])
            bild_->lblInfo(static_cast<int>(taste))
                .setToolTip(QString("Auf dem Gamepad steht „%1“; ohne Belegung heißt dieser Knopf hier „%2“")
                                .arg(qt(LAUFNAMEN[taste]), qt(TASTENBESCHRIFTUNG[taste])));
    connect(bild_, &Padbild::geklickt, this,
            [this](int taste) { mitFehlermeldung(this, formtitel(*this), [&] { lblInfo_Click(taste); }); });
    anordnung->addWidget(bild_, 1);
    anordnung->addWidget(knopfzeile(zeitgeber));
    auto* unten = new QHBoxLayout;
    tastenereignis_ = tastenereignis();
    unten->addWidget(tastenereignis_, 1);
    eigenschaften_ = new Tasteneigenschaften(werk_);
    unten->addWidget(eigenschaften_, 1);
    anordnung->addLayout(unten);
    anordnung->addWidget(new Padzeile(joystick_));
    ebenen_[0]->setFocus();
    werk_.geaendert = [this] { standZeigen(); };
    rueckgang_ = std::make_unique<Rueckgang>(*this, rueckgangsdienst());
    connect(rueckgang_.get(), &Rueckgang::feldVerlassen, this, [this] { folge_.abschliessen(); });
}

frmJoyKonfic::~frmJoyKonfic() = default;

// --- layout, top to bottom ---

QWidget* frmJoyKonfic::kopf() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    schemaname_ = kurzlabel(feldname("lblSchemaName", 0), "Name des Schemas");
    ebenenname_ = kurzlabel(feldname("lblSchemaName", 1), "Umschaltstatus");
    for (auto* label : {schemaname_, ebenenname_}) {
        auto schrift = label->font();
        schrift.setBold(true);
        label->setFont(schrift);
    }
    schemaname_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    zeile->addWidget(new QLabel("Schema:"));
    zeile->addWidget(schemaname_, 1);
    zeile->addSpacing(16);
    zeile->addWidget(new QLabel("Ebene:"));
    zeile->addWidget(ebenenname_);
    return bereich;
}

QWidget* frmJoyKonfic::knopfzeile(Zeitgeber& zeitgeber) {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    for (int ebene = 0; ebene < EBENEN; ++ebene) {
        const auto i = static_cast<std::size_t>(ebene);
        auto* knopf = ebenen_[i] = Command1(ebene, EBENENNAMEN_OHNE_LEERZEICHEN[i]);
        knopf->setCheckable(true); // the layer in sight stays pressed
        knopf->setAutoExclusive(true);
        knopf->setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + ebene)));
        knopf->setToolTip(
            QString("Zeigt, was auf der Ebene „%1“ gilt (Alt+%2)").arg(knopf->text()).arg(ebene + 1));
        zeile->addWidget(knopf);
    }
    auto* speichern = Command1(SPEICHERN, "Speichern");
    speicherstand_ = new Speicherstand(*this, *speichern, zeitgeber);
    connect(speicherstand_, &Speicherstand::wiederherstellenGewuenscht, this,
            &frmJoyKonfic::wiederherstellen);
    zeile->addStretch();
    zeile->addWidget(&speicherstand_->angebot());
    zeile->addWidget(&speicherstand_->zeichen());
    auto* tasteNeu = benannt(new QPushButton("Taste neu"), "Command10");
    connect(tasteNeu, &QPushButton::clicked, this,
            [this] { mitFehlermeldung(this, formtitel(*this), [this] { Command10_Click(); }); });
    tasteNeu->setShortcut(QKeySequence(Qt::ALT | Qt::Key_T));
    auto* neu = Command1(NEU, "Neu");
    neu->setShortcut(QKeySequence(Qt::ALT | Qt::Key_N));
    speichern->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    tasteNeu->setToolTip("Leert den gewählten Knopf auf dieser Ebene (Alt+T)");
    neu->setToolTip("Leert alle zwölf Knöpfe dieser Ebene; das Steuerkreuz bleibt (Alt+N)");
    speichern->setToolTip("Speichert alle drei Ebenen (Strg+S)");
    for (auto* knopf : {tasteNeu, neu, speichern})
        zeile->addWidget(knopf);
    return bereich;
}

QPushButton* frmJoyKonfic::Command1(int index, const QString& text) {
    auto* knopf = benannt(new QPushButton(text), feldname("Command1", index));
    connect(knopf, &QPushButton::clicked, this, [this, index] {
        mitFehlermeldung(this, formtitel(*this), [this, index] { Command1_Click(index); });
    });
    return knopf;
}

QGroupBox* frmJoyKonfic::tastenereignis() {
    auto* gruppe = benannt(new QGroupBox("Tastenereignis"), "fraStatus");
    auto* gitter = new QGridLayout(gruppe);
    for (int art = 0; art < TASTENARTEN; ++art) {
        const auto i = static_cast<std::size_t>(art);
        arten_[i] = benannt(new Wahlknopf(ARTTEXTE[i], [this, art] { Option1_Click(art); }),
                            feldname("Option1", art));
        arten_[i]->setToolTip(ARTHINWEISE[i]);
        gitter->addWidget(arten_[i], art, 0, Qt::AlignLeft);
    }
    tastenname_ = kurzlabel("txtTaste", "");
    tastenfang_ = benannt(new Tastenfang(tastatur_), feldname("Text3", 0));
    tastenfang_->setToolTip("Mit Doppelklick Tabtaste bestätigen");
    tastenfang_->setFixedWidth(tastenfang_->fontMetrics().horizontalAdvance("Hier Klicken") + 32);
    connect(tastenfang_, &Tastenfang::tasteGeloest, this, [this](int code) {
        tastenfang_->setText(QString::number(code));
        mitFehlermeldung(this, formtitel(*this), [this, code] { tasteUebernehmen(code); });
    });
    connect(tastenfang_, &Tastenfang::tabBestaetigt, this,
            [this] { mitFehlermeldung(this, formtitel(*this), [this] { tasteUebernehmen(TASTE_TAB); }); });
    tastenfang_->setAccessibleName("Taste");
    platzBehalten(*tastenname_);
    platzBehalten(*tastenfang_);
    gitter->addWidget(tastenname_, int{TASTENDRUCK}, 1);
    gitter->addWidget(tastenfang_, int{TASTENDRUCK}, 2);
    gitter->setColumnStretch(1, 1);
    gitter->setRowStretch(TASTENARTEN, 1);
    setTabOrder(arten_[TASTENDRUCK], tastenfang_); // in the row of its option
    return gruppe;
}

// --- load and close ---

void frmJoyKonfic::nameZeigen() {
    schemaname_->setText(qt(schema_));
    schemaname_->setToolTip(hinweistext(qt(schema_)));
}

void frmJoyKonfic::schemaUmbenannt(const std::string& neu) {
    schema_ = neu;
    nameZeigen();
}

void frmJoyKonfic::laden() {
    schema_ = global_.SchemaName;
    bild_->markenZeigen(KEINE_MARKE, KEINE_MARKE);
    for (auto* eine : arten_)
        eine->abwaehlen();
    eigenschaften_->verbergen();
    TextEinAus(false);
    nameZeigen();
    ebenenname_->setText(EBENENNAMEN_OHNE_LEERZEICHEN[0]);
    ebenen_[0]->setChecked(true);
    std::vector<Tastenort> unlesbare;
    werk_.bild = gespeichertes_ = TastenbelegungLesen(global_.DatenbankPfad, schema_, unlesbare);
    speicherstand_->anbieten(entwuerfe_.gibtEs(schema_));
    auswaehlen(Tastwerk::KEINE_TASTE_GEWAEHLT);
    werk_.AktuelleEbene = 0;
    labelBeschriften(ALLE_SCHILDER);
    folge_.beginnen(inhalt());
    abfrage_->Interval(TASTTAKT);
    abfrage_->Enabled(true);
    if (!unlesbare.empty())
        QMetaObject::invokeMethod(
            this,
            [this, text = unlesbar(unlesbare)] {
                meldung(this, text, formtitel(*this), QMessageBox::Warning);
            },
            Qt::QueuedConnection);
}

void frmJoyKonfic::closeEvent(QCloseEvent* ereignis) {
    abfrage_->Enabled(false);
    if (ungespeichert())
        entwuerfe_.merken(schema_, entwurf());
    ereignis->accept();
    emit geschlossen();
}

// --- what the controls do ---

void frmJoyKonfic::Command1_Click(int index) {
    eineTat([this, index] { Command1_Tat(index); });
}

void frmJoyKonfic::Command1_Tat(int index) {
    umschalttastenSchalten(index);
    if (index >= 0 && index < EBENEN) {
        ebeneZeigen(index);
        labelBeschriften(ALLE_SCHILDER);
    } else if (index == SPEICHERN) {
        speichern();
    } else if (index == NEU) {
        werk_.SchemaNeu(false);
        labelBeschriften(ALLE_SCHILDER);
    }
}

void frmJoyKonfic::speichern() {
    // For a `Schema` that is gone the store writes nothing, and has no error.
    if (!TastenbelegungSpeichern(global_.DatenbankPfad, schema_, werk_.bild)) {
        meldung(this,
                QString("Das Schema „%1“ gibt es nicht mehr. Seine Tastenbelegung konnte nicht gespeichert "
                        "werden.")
                    .arg(qt(schema_)),
                formtitel(*this), QMessageBox::Warning);
        return;
    }
    gespeichertes_ = werk_.bild;
    folge_.abschliessen();
    entwuerfe_.vergessen(schema_);
    speicherstand_->gespeichert();
    standZeigen();
}

void frmJoyKonfic::Command10_Click() {
    if (!werk_.gewaehlt())
        return;
    eineTat([this] {
        werk_.SchemaNeu(true);
        labelBeschriften(NUR_GEWAEHLTE);
    });
}

void frmJoyKonfic::lblInfo_Click(int taste) {
    auswaehlen(taste);
    const auto erlaubt = werk_.umschalttastenErlaubt(taste);
    arten_[UMSCHALTTASTE_1]->setEnabled(erlaubt[0]);
    arten_[UMSCHALTTASTE_2]->setEnabled(erlaubt[1]);
    subShape2Steuern(taste, zweiteMarke(taste));
    ansehen([this, taste] { labelBeschriften(zweiteMarke(taste)); });
}

void frmJoyKonfic::Option1_Click(int index) {
    if (!werk_.gewaehlt())
        return;
    eineTat([this, index] {
        werk_.artWaehlen(static_cast<Belegungsart>(index));
        labelBeschriften(NUR_GEWAEHLTE);
    });
}

void frmJoyKonfic::tasteUebernehmen(int code) {
    const auto text = std::to_string(code);
    const auto bezeichnung = qt(name(text)); // as it stands in the table, untrimmed
    tastenname_->setText(bezeichnung);
    if (!werk_.gewaehlt())
        return;
    werk_.setzeFeld(TASTE, text);
    bild_->lblInfo(werk_.AktuelleTaste).setText(bezeichnung);
}

// --- the pad ---

void frmJoyKonfic::Timer1_Timer() {
    // What a message box is about, and what follows on it, belongs to the button that is chosen now.
    if (QApplication::activeModalWidget())
        return;
    padAbfragen(joystick_, joystickinfo_);
    if (joystickinfo_.dwButtons != gemerkt_.wort)
        gemerkt_ = {};
    if (joystickinfo_.dwButtons == fehlerwort_ && fehlerwort_ != 0)
        return;
    fehlerwort_ = 0;
    try {
        subButtonsAuswerten();
    } catch (const LaufzeitFehler& fehler) {
        // Once as long as it is held, and not from within the timer.
        fehlerwort_ = joystickinfo_.dwButtons;
        QMetaObject::invokeMethod(
            this, [this, fehler] { fehlermeldung(this, fehler, formtitel(*this)); }, Qt::QueuedConnection);
    }
}

void frmJoyKonfic::subButtonsAuswerten() {
    if (const auto taste = tasteImWort(joystickinfo_.dwButtons)) {
        subShape2Steuern(*taste, zweiteMarke(*taste));
        auswaehlen(*taste);
    }
    if (joystickinfo_.dwButtons > 0)
        ansehen([this] {
            gewaehlteBeschriften([this](const std::string& code) { return gemerkterName(code); });
        });
}

void frmJoyKonfic::subShape2Steuern(int erste, int zweite) {
    bild_->markenZeigen(erste, zweite);
}

// --- the steps that the handlers share ---

void frmJoyKonfic::auswaehlen(int taste) {
    if (werk_.AktuelleTaste == taste)
        return;
    werk_.AktuelleTaste = taste;
    bild_->setGewaehlt(taste);
}

void frmJoyKonfic::umschalttastenSchalten(int index) {
    const bool erlaubt = index != 1 && index != 2;
    arten_[UMSCHALTTASTE_1]->setEnabled(erlaubt);
    arten_[UMSCHALTTASTE_2]->setEnabled(erlaubt);
}

/// All but its labels.
void frmJoyKonfic::ebeneZeigen(int ebene) {
    umschalttastenSchalten(ebene);
    auswaehlen(Tastwerk::KEINE_TASTE_GEWAEHLT);
    subShape2Steuern(KEINE_MARKE, KEINE_MARKE);
    TextEinAus(false);
    TastenEreignissFestlegen();
    ebeneSetzen(ebene);
    eigenschaften_->verbergen();
}

void frmJoyKonfic::ebeneSetzen(int ebene) {
    const auto platz = static_cast<std::size_t>(ebene);
    werk_.AktuelleEbene = ebene;
    ebenenname_->setText(EBENENNAMEN_OHNE_LEERZEICHEN[platz]);
    ebenen_[platz]->setChecked(true);
}

void frmJoyKonfic::labelBeschriften(int auswahl) {
    if (auswahl == ALLE_SCHILDER) {
        const auto texte = werk_.beschriftungen([this](const std::string& code) { return name(code); });
        for (int taste = 0; taste < SLOTS; ++taste)
            bild_->lblInfo(taste).setText(qt(texte[static_cast<std::size_t>(taste)]));
    } else {
        gewaehlteBeschriften([this](const std::string& code) { return name(code); });
    }
}

void frmJoyKonfic::gewaehlteBeschriften(const Tastwerk::Namensucher& sucher) {
    if (!werk_.gewaehlt())
        return;
    const bool hatTaste = werk_.hatTaste();
    auto text = qt(TASTENBESCHRIFTUNG[static_cast<std::size_t>(werk_.AktuelleTaste)]);
    if (hatTaste) {
        text = qt(ohneRand(sucher(werk_.feld(TASTE))));
        tastenname_->setText(text);
    }
    const auto art = werk_.art();
    // What the action shows comes right after this: hiding it in between would only flicker.
    if (!hatTaste && art == Belegungsart::Leer)
        eigenschaften_->verbergen();
    if (const auto aktion = Tastwerk::aktionsname(art))
        text = qt(*aktion);
    bild_->lblInfo(werk_.AktuelleTaste).setText(text);
    TastenEreignissFestlegen();
}

void frmJoyKonfic::TastenEreignissFestlegen() {
    const auto art = werk_.art();
    if (art == Belegungsart::Leer) {
        for (std::size_t i = TASTENDRUCK; i < arten_.size(); ++i)
            arten_[i]->abwaehlen(); // the first one is left alone
    } else {
        arten_[index(art)]->setzen();
    }
    TextEinAus(art == Belegungsart::Taste);
    if (art != Belegungsart::Leer)
        eigenschaften_->Eigenschaftfestlegen(art);
}

void frmJoyKonfic::TextEinAus(bool ein) {
    for (QWidget* control : std::initializer_list<QWidget*>{tastenname_, tastenfang_}) {
        control->setVisible(ein);
        control->setEnabled(ein);
    }
}

std::string frmJoyKonfic::name(const std::string& code) const {
    return KeyCodeSuchen(global_.DatenbankPfad, 0, code);
}

// A button that is held asks for its name a hundred times a second, and each lookup opens the database anew:
// that would take five per cent of a core.
std::string frmJoyKonfic::gemerkterName(const std::string& code) {
    if (gemerkt_.wort != joystickinfo_.dwButtons || gemerkt_.code != code)
        gemerkt_ = {joystickinfo_.dwButtons, code, name(code)};
    return gemerkt_.name;
}
