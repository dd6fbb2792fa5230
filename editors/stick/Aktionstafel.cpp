#include "editors/stick/Aktionstafel.h"

#include "base/Text.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Tastenfang.h"
#include "editors/common/Umbruchoption.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QRadioButton>
#include <QScrollBar>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr int TABTASTE = 9;
constexpr const char* ERSTER_TASTENTITEL = "Taste: 13 - Enter";
constexpr int GROESSTER_EGOWEG = 3000;

constexpr double ECKENRADIUS = 7;
constexpr int RAND = 10;
constexpr int EINZUG = 22; // of what belongs to an option
constexpr int ZEILENABSTAND = 5;

constexpr std::array<const char*, STICKAKTIONSARTEN> ARTEN{
    "Mausbewegung", "Maustaste drücken", "Tastatur drücken", "Leerfeld", "Sperrfeld", "Absolute Position"};
constexpr std::array<const char*, MAUSRICHTUNGEN> RICHTUNGSTEXTE{"Links", "Rechts", "Oben", "Unten"};
constexpr std::array<const char*, MAUSTASTEN> MAUSTASTENTEXTE{
    "Linke Maustaste", "Rechte Maustaste", "Maustaste Mitte", "Scrollrad Plus", "Scrollrad Minus"};
constexpr const char* LEERFELD_HINWEIS = "Ein Leerfeld hat keine spezielle Funktion. Wenn die X und, oder Y "
                                         "Achse angesprochen werden, nimmt das Feld die "
                                         "Eigenschaft des Mittelfeldes an";
constexpr const char* SPERRFELD_HINWEIS = "Ein Sperrfeld löst keine Aktion aus!";

std::size_t platz(int index) {
    return static_cast<std::size_t>(index);
}

QRadioButton* option(const char* name, int index, const char* text) {
    return benannt(new QRadioButton(text), feldname(name, index));
}

/// Makes the options exclude each other and runs `klick` with the index of one that gets set. By their parent
/// alone Qt would also count those of the frames within it.
template <class Klick>
void gruppieren(const std::vector<QRadioButton*>& optionen, QObject* besitzer, Klick klick) {
    auto* gruppe = new QButtonGroup(besitzer);
    for (std::size_t i = 0; i < optionen.size(); ++i)
        gruppe->addButton(optionen[i], static_cast<int>(i));
    QObject::connect(gruppe, &QButtonGroup::idToggled, besitzer, [klick](int index, bool an) {
        if (an)
            klick(index);
    });
}
void gruppieren(const std::vector<QRadioButton*>& optionen, QObject* besitzer) {
    gruppieren(optionen, besitzer, [](int) {});
}

/// Index of the set one.
int gesetzte(const std::vector<QRadioButton*>& optionen) {
    const auto stelle = std::ranges::find_if(optionen, &QRadioButton::isChecked);
    return static_cast<int>(stelle - optionen.begin());
}

void setzen(const std::vector<QRadioButton*>& optionen, const std::optional<int>& index) {
    if (index)
        optionen[platz(*index)]->setChecked(true);
}
void setzen(QLineEdit* feld, const std::optional<std::string>& text) {
    if (text)
        feld->setText(qt(*text));
}
void setzen(QScrollBar* leiste, const std::optional<int>& wert) {
    if (wert)
        leiste->setValue(*wert); // beyond its range, the nearer end
}

QLineEdit* zahlfeld(const QString& name, const char* text) {
    auto* feld = benannt(new QLineEdit(text), name);
    feld->setFixedWidth(feld->fontMetrics().horizontalAdvance("000000") + 14);
    return feld;
}

QLabel* schild(const QString& name, const char* text, QWidget* fuer = nullptr) {
    auto* label = benannt(new QLabel(text), name);
    label->setBuddy(fuer);
    return label;
}

} // namespace

Aktionstafel::Aktionstafel(const Tafeleigenart& eigenart, Tastatur& tastatur, Tastenname tastenname,
                           QWidget* eltern)
    : QFrame(eltern), tastatur_(tastatur), tastenname_(std::move(tastenname)) {
    setObjectName("fraAktion");
    setWindowTitle("Aktion");
    // What the mouse does on the panel is none of the plane's business: a click there would close it.
    setAttribute(Qt::WA_NoMousePropagation);
    setCursor(Qt::ArrowCursor);
    aufbauen(eigenart);
    hide();
}

// --- layout, top to bottom ---

void Aktionstafel::aufbauen(const Tafeleigenart& eigenart) {
    auto* anordnung = new QVBoxLayout(this);
    anordnung->setContentsMargins(RAND, RAND - 2, RAND, RAND);
    anordnung->setSpacing(6);
    auto* titel = new QLabel(windowTitle());
    auto fett = titel->font();
    fett.setBold(true);
    titel->setFont(fett);
    anordnung->addWidget(titel);
    anordnung->addLayout(artwahl());

    eigenschaften_ = new QStackedLayout;
    for (auto* eine : {mausbewegung(), maustaste(), tastatur(eigenart),
                       hinweis(Stickaktionsart::Leerfeld, 0, LEERFELD_HINWEIS),
                       hinweis(Stickaktionsart::Sperrfeld, 1, SPERRFELD_HINWEIS), absolutePosition(eigenart)})
        eigenschaften_->addWidget(eine);
    anordnung->addLayout(eigenschaften_);
    anordnung->setSizeConstraint(QLayout::SetFixedSize);

    gruppieren(Option1_, this, [this](int index) { Option1Klick(index); });
    Option1_[platz(static_cast<int>(Stickaktionsart::Leerfeld))]->setChecked(true);
    anordnung->activate(); // its size counts before it is shown
}

QLayout* Aktionstafel::artwahl() {
    auto* gitter = new QGridLayout;
    gitter->setVerticalSpacing(3);
    for (int i = 0; i < STICKAKTIONSARTEN; ++i) {
        Option1_.push_back(option("Option1", i, ARTEN[platz(i)]));
        gitter->addWidget(Option1_.back(), i % 3, i / 3);
    }
    gitter->setColumnStretch(1, 1);
    return gitter;
}

QGroupBox* Aktionstafel::rahmen(Stickaktionsart art) {
    const int index = static_cast<int>(art);
    return Frame1_[platz(index)] = benannt(new QGroupBox("Eigenschaft"), feldname("Frame1", index));
}

QGroupBox* Aktionstafel::mausbewegung() {
    auto* gruppe = rahmen(Stickaktionsart::Mausbewegung);
    auto* gitter = new QGridLayout(gruppe);
    gitter->setVerticalSpacing(ZEILENABSTAND);
    for (int i = 0; i < MAUSRICHTUNGEN; ++i) {
        Option2_.push_back(option("Option2", i, RICHTUNGSTEXTE[platz(i)]));
        gitter->addWidget(Option2_.back(), i / 2, i % 2);
    }
    gruppieren(Option2_, this);
    struct Zeile {
        int feld;
        int label;
        const char* text;
    };
    int reihe = 3;
    for (const auto& [feld, label, text] : {Zeile{0, 1, "Geschwindigkeit"}, Zeile{1, 0, "Schrittlänge"}}) {
        auto* eines = txtSchritt_[platz(feld)] = zahlfeld(feldname("txtSchritt", feld), "1");
        gitter->addWidget(schild(feldname("Label2", label), text, eines), reihe, 0);
        gitter->addWidget(eines, reihe++, 1);
    }
    gitter->setRowMinimumHeight(2, ZEILENABSTAND);
    gitter->setRowStretch(reihe, 1);
    gitter->setHorizontalSpacing(EINZUG);
    gitter->setColumnStretch(2, 1);
    return gruppe;
}

QGroupBox* Aktionstafel::maustaste() {
    auto* gruppe = rahmen(Stickaktionsart::Maustaste);
    auto* gitter = new QGridLayout(gruppe);
    gitter->setVerticalSpacing(ZEILENABSTAND);
    for (int i = 0; i < MAUSTASTEN; ++i) {
        optMaus_.push_back(option("optMaus", i, MAUSTASTENTEXTE[platz(i)]));
        gitter->addWidget(optMaus_.back(), i, 0);
    }
    gruppieren(optMaus_, this);
    txtScrollPlus_ = zahlfeld("txtScrollPlus", "1");
    txtScrollMinus_ = zahlfeld("txtScrollMinus", "1");
    for (const auto& [reihe, feld] :
         {std::pair{SCROLLRAD_PLUS, txtScrollPlus_}, std::pair{SCROLLRAD_MINUS, txtScrollMinus_}}) {
        gitter->addWidget(schild("Scrollsprung", "Scrollsprung", feld), reihe, 1,
                          Qt::AlignRight | Qt::AlignVCenter);
        gitter->addWidget(feld, reihe, 2);
    }
    gitter->setColumnStretch(1, 1);
    gitter->setRowStretch(MAUSTASTEN, 1);
    return gruppe;
}

QGroupBox* Aktionstafel::tastatur(const Tafeleigenart& eigenart) {
    auto* gruppe = rahmen(Stickaktionsart::Tastatur);
    gruppe->setTitle(ERSTER_TASTENTITEL);
    txtTaste_ = tastenfeld(eigenart.tabhinweis);
    optEig_.push_back(option("optEig", 0, "Real"));
    optEig_.push_back(benannt(new Umbruchoption("Taste bei Tastendruck drücken und loslassen"),
                              feldname("optEig", TASTE_MIT_ZEIT)));
    Check1_ = benannt(new QCheckBox("Tastendruck wiederholen"), feldname("Check1", 0));

    struct Zeit {
        int davor;
        int danach;
        const char* anfang;
    };
    const std::array<Zeit, 2> zeiten{{{0, 2, "1"}, {3, 1, "0"}}};
    std::array<QHBoxLayout*, 2> zeilen{};
    for (std::size_t i = 0; i < zeiten.size(); ++i) {
        txtZeit_[i] = zahlfeld(feldname("txtZeit", static_cast<int>(i)), zeiten[i].anfang);
        zeilen[i] = new QHBoxLayout;
        zeilen[i]->setContentsMargins(EINZUG, 0, 0, 0);
        zeilen[i]->addWidget(schild(feldname("lblZ", zeiten[i].davor), "Zeit:", txtZeit_[i]));
        zeilen[i]->addWidget(txtZeit_[i]);
        zeilen[i]->addWidget(schild(feldname("lblZ", zeiten[i].danach), "mSek"));
        zeilen[i]->addStretch();
    }
    auto* wiederholen = new QHBoxLayout;
    wiederholen->setContentsMargins(EINZUG, 0, 0, 0);
    wiederholen->addWidget(Check1_);

    auto* anordnung = new QVBoxLayout(gruppe);
    anordnung->setSpacing(ZEILENABSTAND);
    anordnung->addWidget(txtTaste_);
    for (auto* eine : optEig_)
        anordnung->addWidget(eine);
    anordnung->addLayout(zeilen[0]);
    anordnung->addLayout(wiederholen);
    anordnung->addLayout(zeilen[1]);
    anordnung->addStretch();

    gruppieren(optEig_, this, [this](int index) { optEigKlick(index); });
    connect(Check1_, &QCheckBox::toggled, this, &Aktionstafel::Check1Klick);
    return gruppe;
}

Tastenfang* Aktionstafel::tastenfeld(const char* hinweis) {
    auto* feld = benannt(new Tastenfang(tastatur_), "txtTaste");
    feld->setToolTip(hinweis);
    feld->installEventFilter(this);
    connect(feld, &Tastenfang::tasteGedrueckt, this, &Aktionstafel::tasteGewaehlt);
    connect(feld, &Tastenfang::tabBestaetigt, this, [this] { tasteGewaehlt(TABTASTE); });
    return feld;
}

QGroupBox* Aktionstafel::hinweis(Stickaktionsart art, int index, const char* text) {
    auto* gruppe = rahmen(art);
    auto* label = schild(feldname("Label3", index), text);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* anordnung = new QVBoxLayout(gruppe);
    anordnung->addWidget(label, 1);
    return gruppe;
}

QGroupBox* Aktionstafel::absolutePosition(const Tafeleigenart& eigenart) {
    auto* gruppe = rahmen(Stickaktionsart::AbsolutePosition);
    auto* gitter = new QGridLayout(gruppe);
    gitter->setVerticalSpacing(ZEILENABSTAND);
    int reihe = 0;
    for (const char* text : {"Im Feld zentrieren", "Im Feld binden", eigenart.egoshooter}) {
        Option3_.push_back(option("Option3", reihe, text));
        gitter->addWidget(Option3_.back(), reihe++, 0, 1, 2);
    }
    for (int i = 0; i < 2; ++i) {
        auto* leiste = benannt(new QScrollBar(Qt::Horizontal), feldname("HScroll1", i));
        leiste->setRange(1, GROESSTER_EGOWEG);
        leiste->setPageStep(GROESSTER_EGOWEG / 30);
        leiste->setFocusPolicy(Qt::StrongFocus);
        auto* wert = zahlfeld(feldname("Text1", i), i == 0 ? "X-" : "Y-");
        wert->setReadOnly(true);
        wert->setFocusPolicy(Qt::ClickFocus);
        connect(leiste, &QScrollBar::valueChanged, wert,
                [wert](int neu) { wert->setText(QString::number(neu)); });
        leiste->hide();
        wert->hide();
        gitter->addWidget(leiste, reihe, 0);
        gitter->addWidget(wert, reihe++, 1);
        HScroll1_[platz(i)] = leiste;
        Text1_[platz(i)] = wert;
    }
    gitter->setColumnStretch(0, 1);
    gitter->setRowStretch(reihe, 1);
    gruppieren(Option3_, this, [this](int index) { Option3Klick(index); });
    return gruppe;
}

void Aktionstafel::paintEvent(QPaintEvent*) {
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    // A dark edge and a light one inside it: one of them is seen against any picture.
    const auto& farben = palette();
    const QRectF flaeche = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    maler.setPen(QPen(QColor(0, 0, 0, 190), 1));
    maler.setBrush(farben.window());
    maler.drawRoundedRect(flaeche, ECKENRADIUS, ECKENRADIUS);
    maler.setPen(QPen(QColor(255, 255, 255, 110), 1));
    maler.setBrush(Qt::NoBrush);
    maler.drawRoundedRect(flaeche.adjusted(1, 1, -1, -1), ECKENRADIUS - 1, ECKENRADIUS - 1);
}

// Where nothing else takes the focus, a box of the hidden panel would go on catching keys.
void Aktionstafel::hideEvent(QHideEvent* ereignis) {
    QWidget* mitFokus = QApplication::focusWidget();
    if (mitFokus && isAncestorOf(mitFokus))
        mitFokus->clearFocus();
    QFrame::hideEvent(ereignis);
}

// --- opening and reading ---

void Aktionstafel::oeffnen(const std::string& aktionstext, bool mitEgoshooter) {
    Option3_[EGO_SHOOTER]->setVisible(mitEgoshooter);
    raise();
    show();
    const auto gelesen = stickaktionLesen(aktionstext);
    zeigen(gelesen.bild);
    if (gelesen.fehler)
        throw *gelesen.fehler;
}

// The order counts: setting a type sets the first choice of its frame.
void Aktionstafel::zeigen(const Stickaktionsbild& bild) {
    artWaehlen(static_cast<int>(bild.art));

    setzen(Option2_, bild.richtung);
    setzen(txtSchritt_[0], bild.geschwindigkeit);
    setzen(txtSchritt_[1], bild.schrittlaenge);

    setzen(optMaus_, bild.maustaste);
    setzen(bild.maustaste == SCROLLRAD_MINUS ? txtScrollMinus_ : txtScrollPlus_, bild.scrollsprung);

    setzen(optEig_, bild.eigenschaft);
    if (bild.taste)
        titelSetzen(*bild.taste);
    setzen(txtZeit_[0], bild.druckzeit);
    if (bild.wiederholen)
        Check1_->setChecked(true);
    setzen(txtZeit_[1], bild.pausenzeit);

    setzen(Option3_, bild.position);
    setzen(HScroll1_[0], bild.egoX);
    setzen(HScroll1_[1], bild.egoY);
}

// Setting an option that is set already says nothing; a panel that opens begins anew all the same.
void Aktionstafel::artWaehlen(int index) {
    auto* option = Option1_[platz(index)];
    if (option->isChecked())
        Option1Klick(index);
    else
        option->setChecked(true);
}

std::string Aktionstafel::aktionstext() const {
    Stickaktionsbild bild;
    bild.art = static_cast<Stickaktionsart>(gesetzte(Option1_));
    bild.richtung = gesetzte(Option2_);
    bild.geschwindigkeit = txtSchritt_[0]->text().toStdString();
    bild.schrittlaenge = txtSchritt_[1]->text().toStdString();
    bild.maustaste = gesetzte(optMaus_);
    bild.scrollsprung =
        (bild.maustaste == SCROLLRAD_MINUS ? txtScrollMinus_ : txtScrollPlus_)->text().toStdString();
    bild.eigenschaft = gesetzte(optEig_);
    bild.taste =
        tastennummer(Frame1_[platz(static_cast<int>(Stickaktionsart::Tastatur))]->title().toStdString());
    bild.druckzeit = txtZeit_[0]->text().toStdString();
    bild.wiederholen = Check1_->isChecked();
    bild.pausenzeit = txtZeit_[1]->text().toStdString();
    bild.position = gesetzte(Option3_);
    bild.egoX = HScroll1_[0]->value();
    bild.egoY = HScroll1_[1]->value();
    return stickaktionstext(bild);
}

void Aktionstafel::titelSetzen(const std::string& nummer) {
    Frame1_[platz(static_cast<int>(Stickaktionsart::Tastatur))]->setTitle(
        qt(tastentitel(nummer, ohneRand(tastenname_(nummer)))));
}

// --- the user's hand ---

void Aktionstafel::Option1Klick(int index) {
    eigenschaften_->setCurrentIndex(index);
    switch (static_cast<Stickaktionsart>(index)) {
    case Stickaktionsart::Mausbewegung:
        setzen(Option2_, 0);
        break;
    case Stickaktionsart::Maustaste:
        setzen(optMaus_, 0);
        break;
    case Stickaktionsart::Tastatur:
        setzen(optEig_, 0);
        txtTaste_->setFocus();
        break;
    case Stickaktionsart::AbsolutePosition:
        setzen(Option3_, 0);
        break;
    case Stickaktionsart::Leerfeld:
    case Stickaktionsart::Sperrfeld:
        break;
    }
}

void Aktionstafel::optEigKlick(int index) {
    txtTaste_->setFocus();
    const bool mitZeit = index != 0;
    Check1_->setEnabled(mitZeit);
    txtZeit_[0]->setEnabled(mitZeit);
    txtZeit_[1]->setEnabled(mitZeit && Check1_->isChecked());
}

void Aktionstafel::Check1Klick() {
    txtZeit_[1]->setEnabled(Check1_->isChecked());
}

void Aktionstafel::Option3Klick(int index) {
    for (std::size_t i = 0; i < HScroll1_.size(); ++i) {
        HScroll1_[i]->setVisible(index == EGO_SHOOTER);
        Text1_[i]->setVisible(index == EGO_SHOOTER);
    }
}

void Aktionstafel::tasteGewaehlt(int code) {
    const auto nummer = std::to_string(code);
    titelSetzen(nummer);
    txtTaste_->setText(qt(nummer));
}

// The tabulator moves on here as in any other box; as a key it is chosen by double click.
bool Aktionstafel::eventFilter(QObject* beobachtet, QEvent* ereignis) {
    if (ereignis->type() == QEvent::KeyPress) {
        const int taste = static_cast<QKeyEvent*>(ereignis)->key();
        if (taste == Qt::Key_Tab || taste == Qt::Key_Backtab)
            return focusNextPrevChild(taste == Qt::Key_Tab);
    }
    return QFrame::eventFilter(beobachtet, ereignis);
}
