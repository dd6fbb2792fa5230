// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Aktionstafel.h"

#include "editors/common/Formhilfen.h"
#include "editors/common/Optionen.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QRadioButton>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace {

constexpr double ECKENRADIUS = 7;
constexpr int RAND = 10;

constexpr auto ARTEN = std::to_array<const char*>(
    {"Mausbewegung", "Maustaste drücken", "Tastatur drücken", "Leerfeld", "Sperrfeld", "Absolute Position"});
static_assert(ARTEN.size() == STICKAKTIONSARTEN);
constexpr const char* LEERFELD_HINWEIS = "Ein Leerfeld hat keine spezielle Funktion. Wenn die X und, oder Y "
                                         "Achse angesprochen werden, nimmt das Feld die "
                                         "Eigenschaft des Mittelfeldes an";
constexpr const char* SPERRFELD_HINWEIS = "Ein Sperrfeld löst keine Aktion aus!";

} // namespace

Aktionstafel::Aktionstafel(const Tafeleigenart& eigenart, Tastatur& tastatur, Tastenname tastenname,
                           QWidget* eltern)
    : QFrame(eltern) {
    setObjectName("fraAktion");
    setWindowTitle("Aktion");
    // What the mouse does on the panel is none of the plane's business: a click there would close it.
    setAttribute(Qt::WA_NoMousePropagation);
    setCursor(Qt::ArrowCursor);

    auto* anordnung = new QVBoxLayout(this);
    anordnung->setContentsMargins(RAND, RAND - 2, RAND, RAND);
    anordnung->setSpacing(6);
    auto* titel = new QLabel(windowTitle());
    auto fett = titel->font();
    fett.setBold(true);
    titel->setFont(fett);
    anordnung->addWidget(titel);
    anordnung->addLayout(artwahl());

    position_ = new Positionsrahmen(eigenart);
    // Counted by the compiler: a type without its frame does not fit.
    rahmen_ = std::to_array<Aktionsrahmen*>(
        {new Mausbewegungsrahmen, new Maustastenrahmen,
         new Tastaturrahmen(eigenart, tastatur, std::move(tastenname)),
         new Hinweisrahmen(Stickaktionsart::Leerfeld, 0, LEERFELD_HINWEIS),
         new Hinweisrahmen(Stickaktionsart::Sperrfeld, 1, SPERRFELD_HINWEIS), position_});
    eigenschaften_ = new QStackedLayout;
    for (auto* einer : rahmen_)
        eigenschaften_->addWidget(einer);
    anordnung->addLayout(eigenschaften_);
    anordnung->setSizeConstraint(QLayout::SetFixedSize);

    gruppieren(arten_, this, [this](int index) { Option1Klick(index); });
    arten_[static_cast<std::size_t>(Stickaktionsart::Leerfeld)]->setChecked(true);
    anordnung->activate(); // its size counts before it is shown
    hide();
}

QLayout* Aktionstafel::artwahl() {
    auto* gitter = new QGridLayout;
    gitter->setVerticalSpacing(3);
    for (int i = 0; i < STICKAKTIONSARTEN; ++i) {
        arten_.push_back(
            benannt(new QRadioButton(ARTEN[static_cast<std::size_t>(i)]), feldname("Option1", i)));
        gitter->addWidget(arten_.back(), i % 3, i / 3);
    }
    gitter->setColumnStretch(1, 1);
    return gitter;
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

// --- keyboard ---

void Aktionstafel::fokusGeben() {
    const QWidget* mitFokus = QApplication::focusWidget();
    if (!mitFokus || !isAncestorOf(mitFokus))
        arten_[static_cast<std::size_t>(gesetzte(arten_))]->setFocus(Qt::ShortcutFocusReason);
}

// What its controls leave of the keys stays here, but for the one that opens the help in any window.
void Aktionstafel::keyPressEvent(QKeyEvent* ereignis) {
    if (ereignis->key() == Qt::Key_F1)
        return ereignis->ignore();
    if (ereignis->key() == Qt::Key_Escape)
        emit verlassen();
    ereignis->accept();
}

// --- opening and reading ---

void Aktionstafel::oeffnen(const std::string& aktionstext, bool mitEgoshooter) {
    position_->egoshooterAnbieten(mitEgoshooter);
    raise();
    show();
    const auto gelesen = stickaktionLesen(aktionstext);
    zeigen(gelesen.bild);
    if (gelesen.fehler)
        throw *gelesen.fehler;
}

// The order counts: choosing a type sets the first choice of its frame.
void Aktionstafel::zeigen(const Stickaktionsbild& bild) {
    artWaehlen(static_cast<int>(bild.art));
    for (auto* einer : rahmen_)
        einer->zeigen(bild);
}

// Setting an option that is set already says nothing; a panel that opens begins anew all the same.
void Aktionstafel::artWaehlen(int index) {
    auto* option = arten_[static_cast<std::size_t>(index)];
    if (option->isChecked())
        Option1Klick(index);
    else
        option->setChecked(true);
}

std::string Aktionstafel::aktionstext() const {
    Stickaktionsbild bild;
    bild.art = static_cast<Stickaktionsart>(gesetzte(arten_));
    for (const auto* einer : rahmen_)
        einer->lesen(bild);
    return stickaktionstext(bild);
}

void Aktionstafel::Option1Klick(int index) {
    eigenschaften_->setCurrentIndex(index);
    rahmen_[static_cast<std::size_t>(index)]->beginnen();
}
