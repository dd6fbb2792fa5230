#include "editors/buttons/frmJoyKonfic.h"

#include "base/LaufzeitFehler.h"
#include "editors/buttons/Padbild.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Tastenfang.h"
#include "engine/run/GobalVariable.h"
#include "formats/Felder.h"
#include "store/schema/modKeyCode.h"
#include "store/schema/modLesen.h"
#include "store/schema/modSpeichern.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <chrono>
#include <utility>
#include <vector>

using belegungsfeld::DRUCKZEIT;
using belegungsfeld::MODUS;
using belegungsfeld::PAUSENZEIT;
using belegungsfeld::TASTE;

namespace {

constexpr auto TASTTAKT = std::chrono::milliseconds{10};
constexpr std::uint32_t JOYINFOEX_GROESSE = 64;
constexpr std::uint32_t JOY_RETURNALL = 255;

constexpr int ALLE = -1; // labelBeschriften
constexpr int NUR_GEWAEHLTE = 1;

// Indices of Command1.
constexpr int SPEICHERN = 4;
constexpr int NEU = 5;
constexpr std::array<const char*, EBENEN> EBENENNAMEN{"Standart", "Umschalt1", "Umschalt2"};

// Indices of famAusgabe.
enum Rahmen { TASTENRAHMEN = 0, MAUSRAHMEN = 1, UMSCHALTRAHMEN = 2 };

constexpr std::array<const char*, TASTENARTEN> ARTTEXTE{"1,2,3,4...",     "Taste:",         "0,9,8,7...",
                                                        "Umschalttaste1", "Umschalttaste2", "Maus"};
constexpr std::array<const char*, 5> MAUSTEXTE{"Linke Maustaste", "Rechte Maustaste", "Maustaste Mitte",
                                               "Scrollrad Plus", "Scrollrad Minus"};
// What the labels say until the form is loaded; from then on it is TASTENBESCHRIFTUNG, which names some
// otherwise.
constexpr std::array<const char*, SLOTS> ENTWURFSTEXTE{
    "Dreieck", "Kreis", "Kreuz",   "Viereck", "L 2",  "R 2",    "L 1",   "R 1",
    "Select",  "Start", "Stick L", "Stick R", "Oben", "Rechts", "Unten", "Links"};
constexpr int SCROLLRAD_PLUS = 3;
constexpr int SCROLLRAD_MINUS = 4;
constexpr int TASTE_TAB = 9;

// Indices of Option1.
constexpr std::size_t index(Tastenart art) {
    return static_cast<std::size_t>(art);
}
constexpr auto TASTENDRUCK = index(Tastenart::Taste);
constexpr auto UMSCHALTTASTE_1 = index(Tastenart::Umschalt1);
constexpr auto UMSCHALTTASTE_2 = index(Tastenart::Umschalt2);

/// A label of one line that gives way: a long text is cut with dots where it is drawn, and its tool tip has
/// it whole.
class Kurzlabel final : public QLabel {
public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override {
        return {fontMetrics().horizontalAdvance("MMMMMM"), QLabel::minimumSizeHint().height()};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter maler(this);
        maler.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                       fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
    }
};

/// An option that runs `klick` when it becomes set, by hand or in code, and when a hand clicks it though it
/// is set.
class Wahlknopf final : public QRadioButton {
public:
    Wahlknopf(const QString& text, const std::function<void()>& klick) : QRadioButton(text) {
        connect(this, &QRadioButton::pressed, this, [this] { warGesetzt_ = isChecked(); });
        connect(this, &QRadioButton::toggled, this, [klick](bool an) {
            if (an)
                klick();
        });
        connect(this, &QRadioButton::clicked, this, [this, klick] {
            if (warGesetzt_)
                klick();
        });
    }

private:
    bool warGesetzt_ = false;
};

QLabel* kurzlabel(const QString& name, const QString& text) {
    auto* label = benannt(new Kurzlabel(text), name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void platzBehalten(QWidget& control) {
    auto regel = control.sizePolicy();
    regel.setRetainSizeWhenHidden(true);
    control.setSizePolicy(regel);
}

// An option of a group that has just one set can't be cleared otherwise.
void abwaehlen(QRadioButton& option) {
    const QSignalBlocker stumm(option);
    option.setAutoExclusive(false);
    option.setChecked(false);
    option.setAutoExclusive(true);
}

// One of several options by a field of the image.
template <std::size_t N>
std::size_t optionsindex(const std::string& feld, const std::array<QRadioButton*, N>&) {
    const auto index = feldzahl(std::string_view{feld});
    if (index < 0 || static_cast<std::size_t>(index) >= N)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex, "Eine Auswahl " + feld + " gibt es nicht.");
    return static_cast<std::size_t>(index);
}

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
            text += QString("\n%1: %2").arg(EBENENNAMEN[static_cast<std::size_t>(ebene)], namen.join(", "));
    }
    return text;
}

} // namespace

frmJoyKonfic::frmJoyKonfic(GobalVariable& global, Joystick& joystick, Zeitgeber& zeitgeber,
                           Tastatur& tastatur)
    : global_(global)
    , joystick_(joystick)
    , tastatur_(tastatur)
    , werk_(global.UmschaltTasten)
    , Timer1_(zeitgeber.formularzeitgeber([this] { Timer1_Timer(); })) {
    setObjectName("frmJoyKonfic");
    setWindowTitle("Tastwerk");
    auto* anordnung = new QVBoxLayout(this);
    anordnung->addWidget(kopf());
    bild_ = benannt(new Padbild, "imgHintergrund");
    for (int taste = 0; taste < SLOTS; ++taste)
        bild_->lblInfo(taste).setText(ENTWURFSTEXTE[static_cast<std::size_t>(taste)]);
    connect(bild_, &Padbild::geklickt, this,
            [this](int taste) { mitFehlermeldung(this, windowTitle(), [&] { lblInfo_Click(taste); }); });
    anordnung->addWidget(bild_, 1);
    anordnung->addWidget(knopfzeile());
    auto* unten = new QHBoxLayout;
    unten->addWidget(tastenereignis(), 1);
    unten->addWidget(eigenschaften(), 1);
    anordnung->addLayout(unten);
    ebenen_[0]->setFocus();
}

frmJoyKonfic::~frmJoyKonfic() = default;

// --- layout, top to bottom ---

QWidget* frmJoyKonfic::kopf() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    const std::array<const char*, 2> texte{"Name des Schemas", "Umschaltstatus"};
    for (int i = 0; i < 2; ++i) {
        auto* label = kurzlabel(feldname("lblSchemaName", i), texte[static_cast<std::size_t>(i)]);
        auto schrift = label->font();
        schrift.setBold(true);
        label->setFont(schrift);
        lblSchemaName_[static_cast<std::size_t>(i)] = label;
    }
    lblSchemaName_[0]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    zeile->addWidget(new QLabel("Schema:"));
    zeile->addWidget(lblSchemaName_[0], 1);
    zeile->addSpacing(16);
    zeile->addWidget(new QLabel("Ebene:"));
    zeile->addWidget(lblSchemaName_[1]);
    return bereich;
}

QWidget* frmJoyKonfic::knopfzeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    for (int ebene = 0; ebene < EBENEN; ++ebene) {
        const auto i = static_cast<std::size_t>(ebene);
        auto* knopf = ebenen_[i] = Command1(ebene, EBENENNAMEN[i]);
        knopf->setCheckable(true); // the layer in sight stays pressed
        knopf->setAutoExclusive(true);
        knopf->setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + ebene)));
        zeile->addWidget(knopf);
    }
    zeile->addStretch();
    auto* tasteNeu = benannt(new QPushButton("Taste neu"), "Command10");
    connect(tasteNeu, &QPushButton::clicked, this,
            [this] { mitFehlermeldung(this, windowTitle(), [this] { Command10_Click(); }); });
    tasteNeu->setShortcut(QKeySequence(Qt::ALT | Qt::Key_T));
    auto* neu = Command1(NEU, "Neu");
    neu->setShortcut(QKeySequence(Qt::ALT | Qt::Key_N));
    auto* speichern = Command1(SPEICHERN, "Speichern");
    speichern->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    for (auto* knopf : {tasteNeu, neu, speichern})
        zeile->addWidget(knopf);
    return bereich;
}

QPushButton* frmJoyKonfic::Command1(int index, const QString& text) {
    auto* knopf = benannt(new QPushButton(text), feldname("Command1", index));
    connect(knopf, &QPushButton::clicked, this, [this, index] {
        mitFehlermeldung(this, windowTitle(), [this, index] { Command1_Click(index); });
    });
    return knopf;
}

QRadioButton* frmJoyKonfic::wahlknopf(const QString& name, const QString& text, std::function<void()> klick) {
    return benannt(new Wahlknopf(text, [this, klick = std::move(
                                                  klick)] { mitFehlermeldung(this, windowTitle(), klick); }),
                   name);
}

QGroupBox* frmJoyKonfic::tastenereignis() {
    auto* gruppe = benannt(new QGroupBox("Tastenereignis"), "fraStatus");
    auto* gitter = new QGridLayout(gruppe);
    for (int art = 0; art < TASTENARTEN; ++art) {
        const auto i = static_cast<std::size_t>(art);
        Option1_[i] = wahlknopf(feldname("Option1", art), ARTTEXTE[i], [this, art] { Option1_Click(art); });
        gitter->addWidget(Option1_[i], art, 0, Qt::AlignLeft);
    }
    txtTaste_ = kurzlabel("txtTaste", "");
    Text3_ = benannt(new Tastenfang(tastatur_), feldname("Text3", 0));
    Text3_->setToolTip("Mit Doppelklick Tabtaste bestätigen");
    Text3_->setFixedWidth(Text3_->fontMetrics().horizontalAdvance("Hier Klicken") + 32);
    connect(Text3_, &Tastenfang::tasteGeloest, this, [this](int code) {
        Text3_->setText(QString::number(code));
        mitFehlermeldung(this, windowTitle(), [this, code] { tasteUebernehmen(code); });
    });
    connect(Text3_, &Tastenfang::tabBestaetigt, this,
            [this] { mitFehlermeldung(this, windowTitle(), [this] { tasteUebernehmen(TASTE_TAB); }); });
    platzBehalten(*txtTaste_);
    platzBehalten(*Text3_);
    gitter->addWidget(txtTaste_, int{TASTENDRUCK}, 1);
    gitter->addWidget(Text3_, int{TASTENDRUCK}, 2);
    gitter->setColumnStretch(1, 1);
    gitter->setRowStretch(TASTENARTEN, 1);
    return gruppe;
}

QWidget* frmJoyKonfic::eigenschaften() {
    auto* bereich = new QWidget;
    auto* gitter = new QGridLayout(bereich); // all in one place: never more than one is in sight
    gitter->setContentsMargins(0, 0, 0, 0);
    famAusgabe_ = {tasteneigenschaften(), mauseigenschaften(), umschalteigenschaften()};
    for (int i = 0; i < 3; ++i) {
        auto* rahmen = benannt(famAusgabe_[static_cast<std::size_t>(i)], feldname("famAusgabe", i));
        platzBehalten(*rahmen);
        gitter->addWidget(rahmen, 0, 0);
    }
    return bereich;
}

QGroupBox* frmJoyKonfic::tasteneigenschaften() {
    auto* gruppe = new QGroupBox;
    auto* gitter = new QGridLayout(gruppe);
    const std::array<const char*, 2> texte{"Real (Ereignis bei Aktion)",
                                           "Taste bei Tastendruck drücken und loslassen"};
    for (int i = 0; i < 2; ++i) {
        const auto platz = static_cast<std::size_t>(i);
        optEig_[platz] = wahlknopf(feldname("optEig", i), texte[platz], [this, i] { optEig_Click(i); });
        gitter->addWidget(optEig_[platz], i, 0, 1, 5, Qt::AlignLeft);
    }
    Text1_ = zahlfeld(feldname("Text1", 0), "1", DRUCKZEIT);
    Check1_ = benannt(new QCheckBox("Tastendruck wiederholen"), feldname("Check1", 0));
    connect(Check1_, &QCheckBox::toggled, this,
            [this] { mitFehlermeldung(this, windowTitle(), [this] { Check1_Click(); }); });
    Text2_ = zahlfeld(feldname("Text2", 0), "0", PAUSENZEIT);

    const auto zeile = [gitter](int reihe, int links, QLineEdit* box, int rechts) {
        gitter->addWidget(benannt(new QLabel("Zeit:"), feldname("lblZ", links)), reihe, 1);
        gitter->addWidget(box, reihe, 2);
        gitter->addWidget(benannt(new QLabel("mSek"), feldname("lblZ", rechts)), reihe, 3);
    };
    gitter->addWidget(benannt(new QLabel("Zeitspanne Drücken -> Loslassen"), feldname("Label1", 0)), 2, 1, 1,
                      4);
    zeile(3, 0, Text1_, 2);
    gitter->addWidget(Check1_, 4, 1, 1, 4, Qt::AlignLeft);
    zeile(5, 3, Text2_, 1);
    gitter->setColumnMinimumWidth(0, 20); // the times belong to the option above them
    gitter->setColumnStretch(4, 1);
    gitter->setRowStretch(6, 1);
    return gruppe;
}

QGroupBox* frmJoyKonfic::mauseigenschaften() {
    auto* gruppe = new QGroupBox("Mausdruckeigenschaft");
    auto* gitter = new QGridLayout(gruppe);
    for (int i = 0; i < 5; ++i) {
        const auto platz = static_cast<std::size_t>(i);
        Option2_[platz] =
            wahlknopf(feldname("Option2", i), MAUSTEXTE[platz], [this, i] { Option2_Click(i); });
        gitter->addWidget(Option2_[platz], i, 0, Qt::AlignLeft);
    }
    txtScrollPlus_ = zahlfeld("txtScrollPlus", "1", DRUCKZEIT);
    txtScrollMinus_ = zahlfeld("txtScrollMinus", "1", DRUCKZEIT);
    int nummer = 0;
    for (auto* box : {txtScrollPlus_, txtScrollMinus_}) {
        box->setEnabled(false);
        const int reihe = SCROLLRAD_PLUS + nummer;
        gitter->addWidget(benannt(new QLabel("Scrollsprung"), feldname("Scrollsprung", nummer++)), reihe, 1);
        gitter->addWidget(box, reihe, 2);
    }
    gitter->setColumnStretch(3, 1);
    gitter->setRowStretch(5, 1);
    return gruppe;
}

QGroupBox* frmJoyKonfic::umschalteigenschaften() {
    auto* gruppe = new QGroupBox("Eigenschaften Umschalttaste");
    auto* spalte = new QVBoxLayout(gruppe);
    const std::array<const char*, 2> texte{"Halten ---> Loslassen", "Feststellen"};
    for (int i = 0; i < 2; ++i) {
        const auto platz = static_cast<std::size_t>(i);
        Option3_[platz] = wahlknopf(feldname("Option3", i), texte[platz], [this, i] { Option3_Click(i); });
        spalte->addWidget(Option3_[platz], 0, Qt::AlignLeft);
    }
    spalte->addStretch();
    return gruppe;
}

QLineEdit* frmJoyKonfic::zahlfeld(const QString& name, const QString& text, std::size_t feld) {
    auto* box = benannt(new QLineEdit(text), name);
    box->setMaximumWidth(box->fontMetrics().horizontalAdvance("0000000000") + 16);
    connect(box, &QLineEdit::textChanged, this,
            [this, box, feld] { mitFehlermeldung(this, windowTitle(), [&] { zahlGeaendert(*box, feld); }); });
    return box;
}

// --- load and close ---

void frmJoyKonfic::laden() {
    schema_ = global_.SchemaName;
    bild_->markenZeigen(KEINE_MARKE, KEINE_MARKE);
    for (auto* eine : Option1_)
        abwaehlen(*eine);
    rahmenVerbergen();
    TextEinAus(false);
    lblSchemaName_[0]->setText(qt(schema_));
    lblSchemaName_[0]->setToolTip(qt(schema_).toHtmlEscaped());
    lblSchemaName_[1]->setText(EBENENNAMEN[0]);
    ebenen_[0]->setChecked(true);
    std::vector<Tastenort> unlesbare;
    werk_.bild = TastenbelegungLesen(global_.DatenbankPfad, schema_, unlesbare);
    auswaehlen(Tastwerk::KEINE_TASTE_GEWAEHLT);
    werk_.AktuelleEbene = 0;
    labelBeschriften(ALLE);
    Timer1_->Interval(TASTTAKT);
    Timer1_->Enabled(true);
    if (!unlesbare.empty())
        QMetaObject::invokeMethod(
            this,
            [this, text = unlesbar(unlesbare)] { meldung(this, text, windowTitle(), QMessageBox::Warning); },
            Qt::QueuedConnection);
}

void frmJoyKonfic::closeEvent(QCloseEvent* ereignis) {
    Timer1_->Enabled(false);
    ereignis->accept();
    emit geschlossen();
}

// --- what the controls do ---

void frmJoyKonfic::Command1_Click(int index) {
    const bool umschalttasten = index != 1 && index != 2;
    Option1_[UMSCHALTTASTE_1]->setEnabled(umschalttasten);
    Option1_[UMSCHALTTASTE_2]->setEnabled(umschalttasten);
    if (index >= 0 && index < EBENEN) {
        lblSchemaName_[1]->setText(EBENENNAMEN[static_cast<std::size_t>(index)]);
        ebenen_[static_cast<std::size_t>(index)]->setChecked(true);
        auswaehlen(Tastwerk::KEINE_TASTE_GEWAEHLT);
        subShape2Steuern(KEINE_MARKE, KEINE_MARKE);
        TextEinAus(false);
        TastenEreignissFestlegen();
        werk_.AktuelleEbene = index;
        labelBeschriften(ALLE);
        rahmenVerbergen();
    } else if (index == SPEICHERN) {
        speichern();
    } else if (index == NEU) {
        werk_.SchemaNeu(false);
        labelBeschriften(ALLE);
    }
}

void frmJoyKonfic::speichern() {
    if (!TastenbelegungSpeichern(global_.DatenbankPfad, schema_, werk_.bild))
        meldung(this,
                QString("Das Schema „%1“ gibt es nicht mehr. Seine Tastenbelegung konnte nicht gespeichert "
                        "werden.")
                    .arg(qt(schema_)),
                windowTitle(), QMessageBox::Warning);
}

void frmJoyKonfic::Command10_Click() {
    if (!werk_.gewaehlt())
        return;
    werk_.SchemaNeu(true);
    labelBeschriften(NUR_GEWAEHLTE);
}

void frmJoyKonfic::lblInfo_Click(int taste) {
    auswaehlen(taste);
    const auto erlaubt = werk_.umschalttastenErlaubt(taste);
    Option1_[UMSCHALTTASTE_1]->setEnabled(erlaubt[0]);
    Option1_[UMSCHALTTASTE_2]->setEnabled(erlaubt[1]);
    subShape2Steuern(taste, zweiteMarke(taste));
    labelBeschriften(zweiteMarke(taste));
}

void frmJoyKonfic::Option1_Click(int index) {
    if (!werk_.gewaehlt())
        return;
    werk_.artWaehlen(static_cast<Tastenart>(index));
    labelBeschriften(NUR_GEWAEHLTE);
}

void frmJoyKonfic::optEig_Click(int index) {
    werk_.setzeFeld(MODUS, std::to_string(index));
    const bool pulst = index == 1;
    Check1_->setEnabled(pulst);
    Text1_->setEnabled(pulst);
    Text2_->setEnabled(pulst && Check1_->isChecked());
}

void frmJoyKonfic::Check1_Click() {
    if (Check1_->isChecked()) {
        Text2_->setEnabled(true);
        return;
    }
    werk_.setzeFeld(PAUSENZEIT, "0");
    textSetzen(*Text2_, "0", PAUSENZEIT);
    Text2_->setEnabled(false);
}

void frmJoyKonfic::Option2_Click(int index) {
    werk_.setzeFeld(MODUS, std::to_string(index));
    txtScrollPlus_->setEnabled(index == SCROLLRAD_PLUS);
    txtScrollMinus_->setEnabled(index == SCROLLRAD_MINUS);
}

void frmJoyKonfic::Option3_Click(int index) {
    werk_.setzeFeld(MODUS, std::to_string(index));
}

void frmJoyKonfic::zahlGeaendert(QLineEdit& box, std::size_t feld) {
    try {
        const auto zahl = ganzzahl16(box.text().toStdString());
        // One below 0 is as good as out of range: its sign would part the fields of the `Belegung`, and
        // neither this form nor a run could read the text again.
        if (zahl >= 0)
            werk_.setzeFeld(feld, std::to_string(zahl));
    } catch (const LaufzeitFehler& fehler) {
        if (fehler.nummer() != Fehlernummer::FalscherTyp)
            return; // out of range: neither stored nor told
        const QPointer<QLineEdit> noch = &box;
        meldung(this, "Sie haben keine Zahl eingegeben!", "");
        if (!noch)
            return;
        textSetzen(box, "1", feld);
        box.setFocus();
    }
}

void frmJoyKonfic::tasteUebernehmen(int code) {
    const auto text = std::to_string(code);
    const auto bezeichnung = qt(name(text)); // as it stands in the table, untrimmed
    txtTaste_->setText(bezeichnung);
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
    joystickinfo_.dwSize = JOYINFOEX_GROESSE;
    joystickinfo_.dwFlags = JOY_RETURNALL;
    joystick_.joyGetPosEx(0, joystickinfo_);
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
            this, [this, fehler] { fehlermeldung(this, fehler, windowTitle()); }, Qt::QueuedConnection);
    }
}

void frmJoyKonfic::subButtonsAuswerten() {
    if (const auto taste = tasteImWort(joystickinfo_.dwButtons)) {
        subShape2Steuern(*taste, zweiteMarke(*taste));
        auswaehlen(*taste);
    }
    if (joystickinfo_.dwButtons > 0)
        gewaehlteBeschriften([this](const std::string& code) { return gemerkterName(code); });
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

void frmJoyKonfic::labelBeschriften(int auswahl) {
    if (auswahl == ALLE) {
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
        txtTaste_->setText(text);
    }
    const auto art = werk_.art();
    // What the action shows comes right after this: hiding it in between would only flicker.
    if (!hatTaste && art == Tastenart::Leer)
        rahmenVerbergen();
    if (const auto aktion = Tastwerk::aktionsname(art))
        text = qt(*aktion);
    bild_->lblInfo(werk_.AktuelleTaste).setText(text);
    TastenEreignissFestlegen();
}

void frmJoyKonfic::TastenEreignissFestlegen() {
    const auto art = werk_.art();
    if (art == Tastenart::Leer) {
        for (std::size_t i = TASTENDRUCK; i < Option1_.size(); ++i)
            abwaehlen(*Option1_[i]); // the first one is left alone
    } else {
        optionSetzen(*Option1_[index(art)], [this, art] { Option1_Click(static_cast<int>(art)); });
    }
    TextEinAus(art == Tastenart::Taste);
    if (art != Tastenart::Leer)
        Eigenschaftfestlegen(art);
}

void frmJoyKonfic::Eigenschaftfestlegen(Tastenart art) {
    const auto a = werk_.feld(MODUS);
    const auto b = werk_.feld(DRUCKZEIT);
    const auto c = werk_.feld(PAUSENZEIT);
    const bool maus = art == Tastenart::Maus;
    const bool umschalttaste = art == Tastenart::Umschalt1 || art == Tastenart::Umschalt2;
    const bool taste = !maus && !umschalttaste;
    if (taste) {
        const auto i = optionsindex(a, optEig_);
        optionSetzen(*optEig_[i], [this, i] { optEig_Click(static_cast<int>(i)); });
        textSetzen(*Text1_, b, DRUCKZEIT);
        const bool wiederholt = i != 0 && feldzahl(std::string_view{c}) > 0;
        if (i == 0)
            for (QWidget* control : std::initializer_list<QWidget*>{Text1_, Check1_, Text2_})
                control->setEnabled(false);
        wiederholungSetzen(wiederholt);
        textSetzen(*Text2_, wiederholt ? c : "0", PAUSENZEIT);
    }
    if (umschalttaste) {
        const auto i = optionsindex(a, Option3_);
        optionSetzen(*Option3_[i], [this, i] { Option3_Click(static_cast<int>(i)); });
    }
    if (maus) {
        const auto i = optionsindex(a, Option2_);
        optionSetzen(*Option2_[i], [this, i] { Option2_Click(static_cast<int>(i)); });
        if (i == SCROLLRAD_PLUS)
            textSetzen(*txtScrollPlus_, b, DRUCKZEIT);
        if (i == SCROLLRAD_MINUS)
            textSetzen(*txtScrollMinus_, b, DRUCKZEIT);
    }
    famAusgabe_[TASTENRAHMEN]->setVisible(taste);
    famAusgabe_[UMSCHALTRAHMEN]->setVisible(umschalttaste);
    famAusgabe_[MAUSRAHMEN]->setVisible(maus);
}

void frmJoyKonfic::TextEinAus(bool ein) {
    for (QWidget* control : std::initializer_list<QWidget*>{txtTaste_, Text3_}) {
        control->setVisible(ein);
        control->setEnabled(ein);
    }
}

void frmJoyKonfic::rahmenVerbergen() {
    for (auto* rahmen : famAusgabe_)
        rahmen->hide();
}

// --- controls set in code: their handlers run by a plain call, so that errors come back to the caller ---

void frmJoyKonfic::optionSetzen(QRadioButton& option, const std::function<void()>& klick) {
    if (option.isChecked())
        return;
    {
        const QSignalBlocker stumm(option);
        option.setChecked(true);
    }
    klick();
}

void frmJoyKonfic::textSetzen(QLineEdit& box, const std::string& text, std::size_t feld) {
    if (box.text() == qt(text))
        return;
    {
        const QSignalBlocker stumm(box);
        box.setText(qt(text));
    }
    zahlGeaendert(box, feld);
}

void frmJoyKonfic::wiederholungSetzen(bool an) {
    if (Check1_->isChecked() == an)
        return;
    {
        const QSignalBlocker stumm(*Check1_);
        Check1_->setChecked(an);
    }
    Check1_Click();
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
