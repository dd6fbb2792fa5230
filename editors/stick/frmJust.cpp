#include "editors/stick/frmJust.h"

#include "base/Ebenennamen.h"
#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"
#include "editors/run/Laufsteuerung.h"
#include "editors/stick/Ebenenbild.h"
#include "editors/stick/Schiebetafel.h"
#include "editors/stick/Stickebene.h"
#include "store/schema/modKeyCode.h"
#include "store/schema/modSpeichern.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr const char* TITEL = "Stick justieren";
constexpr QSize GROESSE{1024, 768};
constexpr QSize KLEINSTE{640, 480};

constexpr auto LIVE_INTERVALL = 5ms;
constexpr double PUNKT_ANFANG = 32764.5;

constexpr Schiebemass UMSCHALTEN_MASS{.hoehe = 1000, .offen = 6230, .ruheIntervall = 0ms};
constexpr Schiebemass SCHALTFLAECHE_MASS{.hoehe = 900, .offen = 7254, .ruheIntervall = 5000ms};
constexpr int ZURUECKGESTELLT = 1000; // both panels, when a line is picked up
// Where the panels stand across the plane.
constexpr double UMSCHALTEN_MITTE = 0.25;
constexpr double SCHALTFLAECHE_MITTE = 0.75;

// Indices of Command1.
enum Knopf { ENDE = 0, TEST = 1, HINTERGRUND = 2 };
constexpr std::array<const char*, 3> KNOPFTEXTE{"End", "Test", "Hintergrund"};

/// A label that does what its control does when it is clicked.
class Beschriftung final : public QLabel {
public:
    Beschriftung(const QString& text, QAbstractButton& knopf) : QLabel(text), knopf_(knopf) {
        knopf_.setAccessibleName(text.trimmed());
    }

protected:
    void mousePressEvent(QMouseEvent*) override { knopf_.click(); }

private:
    QAbstractButton& knopf_;
};

constexpr std::int32_t sperrbit(int ebene) {
    return std::int32_t{1} << ebene;
}

Maustaste maustaste(Qt::MouseButton taste) {
    if (taste == Qt::LeftButton)
        return Maustaste::Links;
    return taste == Qt::RightButton ? Maustaste::Rechts : Maustaste::Andere;
}

} // namespace

frmJust::frmJust(const Justiereigenart& art, Laufzustand& zustand, Laufsteuerung& laufsteuerung,
                 Zeitgeber& zeitgeber, Tastatur& tastatur)
    : art_(art), zustand_(zustand), global_(zustand.global), laufsteuerung_(laufsteuerung) {
    setObjectName(art.formname);
    setWindowTitle(TITEL);
    aufbauen(zeitgeber, tastatur);
    verbinden();
    Timer1_ = zeitgeber.formularzeitgeber([this] { Timer1Takt(); });
}

frmJust::~frmJust() = default;

// --- layout ---

void frmJust::aufbauen(Zeitgeber& zeitgeber, Tastatur& tastatur) {
    ebene_ = new Stickebene(this);
    umschalten_ =
        benannt(new Schiebetafel(ebene_, "Umschalten", UMSCHALTEN_MASS, UMSCHALTEN_MITTE, zeitgeber),
                art_.umschalten);
    umschalten_->inhaltSetzen(umschaltinhalt());
    schaltflaeche_ =
        benannt(new Schiebetafel(ebene_, "Schaltfläche", SCHALTFLAECHE_MASS, SCHALTFLAECHE_MITTE, zeitgeber),
                art_.schaltflaeche);
    schaltflaeche_->inhaltSetzen(befehlsinhalt());

    fraAktion_ = new Aktionstafel(
        art_.tafel, tastatur,
        [this](const std::string& nummer) { return KeyCodeSuchen(global_.DatenbankPfad, 0, nummer); },
        ebene_);

    // An open panel has room for what lies on it, also with large letters, and each that slides has a half of
    // the plane.
    const int hoehe = std::max(umschalten_->noetigeEbenenhoehe(), schaltflaeche_->noetigeEbenenhoehe());
    const int breite = 2 * std::max(umschalten_->noetigeBreite(), schaltflaeche_->noetigeBreite());
    setMinimumSize(KLEINSTE.expandedTo({std::min(breite, screen()->availableSize().width()), hoehe})
                       .expandedTo(fraAktion_->sizeHint()));
    resize(GROESSE.boundedTo(screen()->availableSize()).expandedTo(minimumSize()));
}

QWidget* frmJust::umschaltinhalt() {
    auto* inhalt = new QWidget;
    auto* zeile = new QHBoxLayout(inhalt);
    zeile->setContentsMargins(12, 4, 12, 4);
    for (int i = 0; i < EBENEN; ++i) {
        auto* option = benannt(new QRadioButton, feldname("Uschalt", i));
        auto* name = benannt(new Beschriftung(EBENENNAMEN[static_cast<std::size_t>(i)], *option),
                             feldname("Label1", i));
        zeile->addWidget(option);
        zeile->addWidget(name);
        if (i + 1 < EBENEN)
            zeile->addSpacing(10);
        Uschalt_[static_cast<std::size_t>(i)] = option;
    }
    return inhalt;
}

QWidget* frmJust::befehlsinhalt() {
    auto* inhalt = new QWidget;
    auto* zeile = new QHBoxLayout(inhalt);
    zeile->setContentsMargins(12, 4, 12, 4);
    for (const int index : {HINTERGRUND, TEST, ENDE}) {
        const auto i = static_cast<std::size_t>(index);
        Command1_[i] = benannt(new QPushButton(KNOPFTEXTE[i]), feldname("Command1", index));
        Command1_[i]->setFocusPolicy(Qt::TabFocus);
        zeile->addWidget(Command1_[i]);
    }
    zeile->addSpacing(10);
    Check2_ = benannt(new QCheckBox, "Check2");
    zeile->addWidget(Check2_);
    zeile->addWidget(benannt(new Beschriftung("1 to 1 ", *Check2_), feldname("Label1", EBENEN)));
    return inhalt;
}

void frmJust::verbinden() {
    connect(ebene_, &Stickebene::gedrueckt, this, [this](Qt::MouseButton taste, QPointF wo) {
        gesichert([&] { zug_.gedrueckt(maustaste(taste), wo.x(), wo.y()); });
    });
    connect(ebene_, &Stickebene::bewegt, this,
            [this](QPointF wo) { gesichert([&] { zug_.bewegt(wo.x(), wo.y()); }); });
    connect(ebene_, &Stickebene::pfeilGedrueckt, this, [this](Qt::MouseButton taste, int richtung) {
        gesichert([&] { zug_.pfeilGedrueckt(maustaste(taste), static_cast<std::size_t>(richtung)); });
    });
    connect(ebene_, &Stickebene::groesseGeaendert, this, &frmJust::tafelnLegen);
    for (int i = 0; i < EBENEN; ++i)
        connect(Uschalt_[static_cast<std::size_t>(i)], &QRadioButton::toggled, this, [this, i](bool an) {
            if (an)
                gesichert([&] { Uschalt(i); });
        });
    connect(Check2_, &QCheckBox::toggled, this, &frmJust::Check2Klick);
    for (int i = 0; i < static_cast<int>(Command1_.size()); ++i)
        connect(Command1_[static_cast<std::size_t>(i)], &QPushButton::clicked, this,
                [this, i] { gesichert([&] { Command1Klick(i); }); });
}

void frmJust::resizeEvent(QResizeEvent*) {
    ebene_->setGeometry(rect());
}

void frmJust::tafelnLegen() {
    umschalten_->legen();
    schaltflaeche_->legen();
    fraAktionLegen();
}

void frmJust::fraAktionLegen() {
    const auto groesse = ebene_->einheitenVon(fraAktion_->size());
    const auto platz =
        aktionstafelplatz(fraAktionKlick_.x(), fraAktionKlick_.y(), groesse.width(), groesse.height());
    fraAktion_->move(ebenenpixel({platz.links, platz.oben, 0, 0}, ebene_->size()).topLeft().toPoint());
}

// --- load and unload ---

/// An error ends the handler, not the form.
template <class Arbeit> void frmJust::gesichert(Arbeit&& arbeit) {
    mitFehlermeldung(this, TITEL, arbeit,
                     [this](const LaufzeitFehler& fehler) { gesagt_ = fehler.nummer(); });
}

// What may fail comes first: nothing that others see has changed then.
void frmJust::laden() {
    schema_ = global_.SchemaName;
    const auto gelesen = lesen();
    geladen_ = true;
    stand_.linien = gelesen.linien;
    StickSperre_ = (zustand_.*art_.stick).StickSperre = gelesen.StickSperre;
    global_.OffenerEditor = art_.OffenerEditor;
    global_.ZielFormular = art_.formname;
    bildLaden(0);
    setWindowTitle(qt(schema_));
    ebene_->Punkt().setzen({PUNKT_ANFANG, PUNKT_ANFANG, 0, 0});
    Uschalt_[0]->setChecked(true); // places the lines and draws
    Timer1_->Interval(LIVE_INTERVALL);
    Timer1_->Enabled(true);
}

void frmJust::entladen() {
    if (!std::exchange(geladen_, false))
        return;
    Timer1_.reset();
    umschalten_->anhalten();
    schaltflaeche_->anhalten();
    global_.*art_.beimSchliessen = 0;
}

void frmJust::closeEvent(QCloseEvent* ereignis) {
    ereignis->accept();
    if (!geladen_)
        return;
    entladen();
    emit geschlossen();
}

Sticklinien frmJust::lesen() {
    return StickLinienLesen(global_.DatenbankPfad, art_.seite, schema_,
                            [this](std::string_view text) { melden(text); });
}

void frmJust::bildLaden(int ebene) {
    auto bild = BildLaden(global_.BilderPfad, schema_ + std::to_string(ebene) + std::string(art_.bildende));
    if (bild.isNull())
        bild = BildLaden(global_.BilderPfad, ERSATZBILD);
    ebene_->bildSetzen(bild);
}

// --- uncovered ---

void frmJust::showEvent(QShowEvent* ereignis) {
    QWidget::showEvent(ereignis);
    windowHandle()->installEventFilter(this);
    freieGroesse_ = QSize();
}

bool frmJust::eventFilter(QObject* objekt, QEvent* ereignis) {
    if (objekt == windowHandle() && ereignis->type() == QEvent::Expose && windowHandle()->isExposed()) {
        // A window that only changes its size is exposed, too, many times while the hand draws at it.
        const bool gezogen = freieGroesse_.isValid() && freieGroesse_ != size();
        freieGroesse_ = size();
        if (!gezogen)
            QMetaObject::invokeMethod(this, &frmJust::freigelegt, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(objekt, ereignis);
}

// What the store holds replaces the table, and nothing else: nothing moves by it, and what "1 to 1" says is
// not stored before the lines are.
void frmJust::freigelegt() {
    if (!geladen_ || zug_.haelt() || QApplication::activeModalWidget())
        return;
    try {
        stand_.linien = lesen().linien;
        gesagt_.reset();
    } catch (const LaufzeitFehler& fehler) {
        // A box that tells an error, of this or of what the user did, uncovers the window when it goes:
        // without an end, were the error told each time.
        if (std::exchange(gesagt_, fehler.nummer()) != fehler.nummer())
            fehlermeldung(this, fehler, TITEL);
    }
}

// --- the panels' controls ---

void frmJust::Uschalt(int ebene) {
    zug_.loslassen(); // a line put down on another one leaves that in hand and the panels open
    Check2_->setChecked((StickSperre_ & sperrbit(ebene)) != 0);
    if (art_.ebeneVerbirgtRechteckB)
        ebene_->RechteckB().hide();
    stand_.EditorEbene = ebene;
    if (art_.linienVorBild)
        linienLegen();
    bildLaden(ebene);
    if (!art_.linienVorBild)
        linienLegen();
    Zeichnen();
}

void frmJust::ebeneWaehlen(int ebene) {
    Uschalt_[static_cast<std::size_t>(ebene)]->setChecked(true);
}

void frmJust::linienLegen() {
    for (int slot = 1; slot < LINIENPLAETZE; ++slot)
        for (std::size_t d = 0; d < RICHTUNGEN; ++d)
            PositionFestlegen(d, slot);
}

// The mask is stored with the lines. A run that goes on hears of a change at once; it may be one of another
// `Schema`, so that the mask of the sticks is not this form's.
void frmJust::Check2Klick(bool an) {
    for (int ebene = 0; ebene < EBENEN; ++ebene) {
        const auto bit = sperrbit(ebene);
        if (!Uschalt_[static_cast<std::size_t>(ebene)]->isChecked() || ((StickSperre_ & bit) != 0) == an)
            continue;
        for (auto* sperre : {&StickSperre_, &(zustand_.*art_.stick).StickSperre})
            *sperre = an ? *sperre | bit : *sperre & ~bit;
    }
}

void frmJust::Command1Klick(int index) {
    global_.SchemaName = global_.Schemaauswahl;
    if (index == ENDE) {
        laufsteuerung_.entladen();
        close();
    } else if (index == TEST) {
        zug_.loslassen();
        StickLinienSpeichern();
        laufsteuerung_.laden();
    } else if (index == HINTERGRUND) {
        emit hintergrundGewuenscht();
        hide();
        setEnabled(false);
    }
}

void frmJust::hintergrundGeaendert() {
    setEnabled(true);
    show();
    if (RechteckBGezeigt()) { // the field belongs to its layer, and so does an action that is being edited
        bildLaden(stand_.EditorEbene);
        return;
    }
    Uschalt_[1]->setChecked(true);
    Uschalt_[0]->setChecked(true);
}

// --- live point ---

void frmJust::Timer1Takt() {
    auto& achsen = zustand_.achsen;
    achsen.AchsenLesen();
    auto wo = ebene_->Punkt().platz();
    if (const auto x = achsen.AchsenWert(art_.x))
        wo.moveLeft(*x);
    if (const auto y = achsen.AchsenWert(art_.y))
        wo.moveTop(*y);
    ebene_->Punkt().setzen(wo);
    const auto feld = BereichFestlegen2(stand_.ebene(), wo.x(), wo.y());
    if (std::exchange(PunktrechteckAlt_, feld) != feld)
        ebene_->RechteckC().setzen({feld.links, feld.oben, feld.breite, feld.hoehe});
}

// --- what Linienzug works on ---

bool frmJust::linieGezeigt(std::size_t richtung, int index) const {
    return !ebene_->linie(richtung, index).isHidden();
}

double frmJust::linienort(std::size_t richtung, int index) const {
    return ebene_->linie(richtung, index).ort();
}

bool frmJust::linieRot(std::size_t richtung, int index) const {
    return ebene_->linie(richtung, index).farbe() == GREIFFARBE;
}

void frmJust::linieFaerben(std::size_t richtung, int index, bool rot) {
    ebene_->linie(richtung, index).faerben(rot ? GREIFFARBE : LINIENFARBE);
}

void frmJust::PositionFestlegen(std::size_t richtung, int slot) {
    ebene_->linieLegen(richtung, slot - 1, stand_.ebene()[static_cast<std::size_t>(slot)][richtung]);
}

bool frmJust::RechteckBGezeigt() const {
    return !ebene_->RechteckB().isHidden();
}

void frmJust::BereichFestlegen() {
    const auto& klick = stand_.Klickposition;
    const auto feld = ::BereichFestlegen(stand_.ebene(), klick.x, klick.y);
    Feldanker_ = feld.anker;
    const auto& r = feld.rechteck;
    ebene_->RechteckB().setzen({double(r.links), double(r.oben), double(r.breite), double(r.hoehe)});
    ebene_->RechteckB().setVisible(!RechteckBGezeigt());
}

// --- actions ---

bool frmJust::fraAktionGezeigt() const {
    return !fraAktion_->isHidden();
}

void frmJust::fraAktionVerbergen() {
    fraAktion_->hide();
}

Feldschluessel frmJust::aktionsschluessel() const {
    return {stand_.EditorEbene, Feldanker_[0], Feldanker_[1], Feldanker_[2], Feldanker_[3]};
}

// The text is read before the panel opens: one that opened without it would be saved over it.
void frmJust::fraAktionOeffnen(double x, double y) {
    emit hauptformVerbergen();
    const auto text = StickAktionLesen(global_.DatenbankPfad, art_.seite, schema_, aktionsschluessel());
    fraAktionKlick_ = {x, y};
    fraAktionLegen();
    fraAktion_->oeffnen(text, Feldanker_ == Feldanker{});
}

void frmJust::AktionSpeichern() {
    try {
        StickAktionSpeichern(global_.DatenbankPfad, art_.seite, schema_, aktionsschluessel(),
                             fraAktion_->aktionstext());
    } catch (const LaufzeitFehler&) {
        fraAktion_->show(); // with all that is set on it, which is nowhere else yet
        throw;
    }
    Zeichnen();
}

void frmJust::Zeichnen() {
    try {
        ZonenZeichnen(global_.DatenbankPfad, art_.seite, schema_, stand_.EditorEbene, ebene_->symbole());
    } catch (const LaufzeitFehler&) {
        ebene_->symboleZeigen(); // as far as it came
        throw;
    }
    ebene_->symboleZeigen();
}

// --- store and panels ---

void frmJust::tafelnSperren(bool gesperrt) {
    umschalten_->setEnabled(!gesperrt);
    schaltflaeche_->setEnabled(!gesperrt);
}

void frmJust::tafelnZurueckstellen() {
    umschalten_->zurueckstellen(ZURUECKGESTELLT);
    schaltflaeche_->zurueckstellen(ZURUECKGESTELLT);
}

void frmJust::StickLinienSpeichern() {
    ::StickLinienSpeichern(global_.DatenbankPfad, art_.seite, schema_, {stand_.linien, StickSperre_});
}

void frmJust::StickLinieVerlegen(const Linientabelle& linien, std::size_t richtung, std::int32_t neu,
                                 std::int32_t alt) {
    ::StickLinieVerlegen(global_.DatenbankPfad, art_.seite, schema_, {linien, StickSperre_},
                         {stand_.EditorEbene, static_cast<int>(richtung), neu, alt});
}

bool frmJust::StickLinieEntfernen(const Linientabelle& ohne, std::size_t richtung, std::int32_t linie) {
    return ::StickLinieEntfernen(global_.DatenbankPfad, art_.seite, schema_, {ohne, StickSperre_},
                                 stand_.EditorEbene, static_cast<int>(richtung), linie);
}

void frmJust::melden(std::string_view text) {
    meldung(this, qt(text), "");
}
