// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Ebenenstimme.h"

#include "base/Rundung.h"
#include "editors/common/Formhilfen.h"
#include "editors/stick/Aktionstafel.h"
#include "editors/stick/Stickebene.h"
#include "editors/stick/Streuworte.h"
#include "editors/stick/Zustandstext.h"
#include "editors/stick/Zustandszeile.h"

#include <QAccessible>
#include <QEvent>
#include <QKeyEvent>

#include <utility>

namespace {

constexpr int LESETAKTE = 20; // ticks of the live point between two texts: a tenth of a second

std::optional<Ebenentaste> ebenentaste(const QKeyEvent& ereignis) {
    switch (ereignis.key()) {
    case Qt::Key_Left:
        return Ebenentaste::Links;
    case Qt::Key_Right:
        return Ebenentaste::Rechts;
    case Qt::Key_Up:
        return Ebenentaste::Oben;
    case Qt::Key_Down:
        return Ebenentaste::Unten;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Ebenentaste::Waehlen;
    case Qt::Key_Menu:
        return Ebenentaste::Aktion;
    case Qt::Key_F10:
        return ereignis.modifiers() == Qt::ShiftModifier ? std::optional(Ebenentaste::Aktion) : std::nullopt;
    case Qt::Key_Escape:
        return Ebenentaste::Schliessen;
    default:
        return std::nullopt;
    }
}

} // namespace

Ebenenstimme::Ebenenstimme(Stickebene& ebene, Aktionstafel& tafel, const Justierstand& stand, Linienzug& zug,
                           Justierflaeche& flaeche, Streuansicht& streuung, Umfeld umfeld)
    : ebene_(ebene)
    , tafel_(tafel)
    , stand_(stand)
    , zug_(zug)
    , flaeche_(flaeche)
    , streuung_(streuung)
    , umfeld_(std::move(umfeld))
    , tastenwahl_(stand, zug, flaeche) {
    ebene.feldlisteSetzen(this);
    ebene.tastendruck = [this](const QKeyEvent& ereignis) { return tasteGedrueckt(ereignis); };
    verbinden();
}

Ebenenstimme::~Ebenenstimme() {
    ebene_.feldlisteSetzen(nullptr);
    ebene_.tastendruck = nullptr;
}

void Ebenenstimme::verbinden() {
    connect(&ebene_, &Stickebene::bewegt, this, &Ebenenstimme::mausBewegt);
    connect(&ebene_, &Stickebene::verlassen, this, &Ebenenstimme::mausWeg);
    connect(&ebene_, &Stickebene::tastaturKommt, this, [this] {
        mausZuletzt_ = false;
        tastenwahl_.beginnen();
        markeZeigen();
    });
    connect(&ebene_, &Stickebene::tastaturGeht, this, [this] {
        tastenwahl_.enden();
        markeZeigen();
    });
    connect(&ebene_, &Stickebene::gedrueckt, this, [this] {
        ansage_.clear();
        if (flaeche_.fraAktionGezeigt()) // whose boxes want the keys; it has just come, or could not be saved
            tafel_.fokusGeben();
        else
            ebene_.setFocus(Qt::MouseFocusReason);
        mausZuletzt_ = true;
        tastenwahl_.enden();
        markeZeigen();
    });
    connect(&ebene_, &Stickebene::pfeilGedrueckt, this,
            &Ebenenstimme::markeZeigen); // other lines, other fields
    connect(&tafel_, &Aktionstafel::verlassen, this, &Ebenenstimme::tafelVerlassen);
    for (QWidget* tafel : ebene_.findChildren<QFrame*>(Qt::FindDirectChildrenOnly))
        tafel->installEventFilter(this);
}

// --- the mouse and the stick ---

void Ebenenstimme::mausBewegt(QPointF wo) {
    if (std::exchange(maus_, wo) != wo) {
        mausZuletzt_ = true;
        ansage_.clear();
    }
    ebene_.zustand().ausweichen(ebenenpixel({wo, QSizeF()}, ebene_.size()).topLeft().toPoint());
    zeigen();
}

void Ebenenstimme::mausWeg() {
    maus_.reset();
    zeigen();
}

// From the plane onto a panel: the plane itself is not left by that.
bool Ebenenstimme::eventFilter(QObject* tafel, QEvent* ereignis) {
    if (ereignis->type() == QEvent::Enter)
        mausWeg();
    return QObject::eventFilter(tafel, ereignis);
}

// A stick on its way crosses fields faster than anybody reads, and to lay out words costs more than all else
// in a tick.
void Ebenenstimme::stickSteht(bool padDa, const Stickposition& wo) {
    ++takteSeitWorten_;
    std::optional<Feldanker> feld;
    if (padDa)
        feld = BereichFestlegen(stand_.ebene(), wo.x, wo.y).anker;
    const bool testlauf = umfeld_.testlauf();
    if ((feld == stick_ && testlauf == testlauf_) || takteSeitWorten_ < LESETAKTE)
        return;
    takteSeitWorten_ = 0;
    stick_ = feld;
    testlauf_ = testlauf;
    zeigen();
}

// --- words ---

Ebenenlage Ebenenstimme::lage() const {
    Ebenenlage lage;
    if (maus_ && mausZuletzt_) {
        lage.pfeil = ebene_.pfeilBei(ebenenpixel({*maus_, QSizeF()}, ebene_.size()).topLeft().toPoint());
        if (!lage.pfeil)
            lage.maus = Stickposition{gerundet(maus_->x()), gerundet(maus_->y())};
        lage.klick = zug_.folge(maus_->x(), maus_->y());
    }
    if (!mausZuletzt_)
        lage.marke = tastenwahl_.marke();
    lage.markeGewaehlt = lage.marke && lage.marke == tastenwahl_.gewaehlt();
    lage.stick = stick_;
    lage.tafelOffen = flaeche_.fraAktionGezeigt();
    lage.feldGewaehlt = flaeche_.RechteckBGezeigt();
    lage.linieInDerHand = zug_.haelt();
    lage.gesperrt = umfeld_.gesperrt();
    lage.testlauf = testlauf_;
    lage.gespeichert = zug_.abgelegte();
    lage.linien = zug_.griffe();
    if (lage.linien.empty() && lage.klick == Klickfolge::Aufnahme && lage.maus)
        lage.linien = zug_.aufnehmbare(maus_->x(), maus_->y());
    return lage;
}

void Ebenenstimme::ansagen(const std::string& worte) {
    ansage_ = qt(worte);
    zeigen();
}

void Ebenenstimme::zeigen() {
    if (!ebene_.isVisible())
        return;
    streuung_.linienZeigen();
    QStringList zeilen;
    if (!ansage_.isEmpty())
        zeilen.push_back(ansage_);
    // Only who tries a line has the record played again: it takes its time.
    const auto* streuung = streuung_.rechnung();
    const auto probe = streuung && zug_.haelt() ? umfeld_.mitschnitt() : Wegprobe{};
    for (const auto& zeile : zustandszeilen(lage(), stand_.ebene(), auskunft_, streuung, probe))
        zeilen.push_back(qt(zeile));
    ebene_.zustand().freilassen(flaeche_.fraAktionGezeigt() ? tafel_.geometry() : QRect());
    ebene_.zustand().zeigen(zeilen);
}

// --- the keyboard ---

// With Shift it asks whether all is to be forgotten. Not again while it is held: a picture that comes and
// goes tells nothing.
bool Ebenenstimme::streubildtaste(const QKeyEvent& ereignis) {
    const bool umschalt = ereignis.modifiers() == Qt::ShiftModifier;
    if (ereignis.key() != Qt::Key_S || (ereignis.modifiers() && !umschalt) || umfeld_.testlauf())
        return false;
    if (!ereignis.isAutoRepeat())
        umschalt ? umfeld_.streubildZuruecksetzen() : umfeld_.streubildWechseln();
    return true;
}

// While a run is on, keys may be those that the pad presses: they would move lines and save them.
bool Ebenenstimme::tasteGedrueckt(const QKeyEvent& ereignis) {
    if (streubildtaste(ereignis))
        return true;
    const auto taste = ebenentaste(ereignis);
    const auto fremde = ereignis.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (!taste || fremde || umfeld_.testlauf())
        return false;
    const bool pfeil = *taste < Ebenentaste::Waehlen;
    if (ereignis.isAutoRepeat() && !pfeil)
        return true; // a key that is held chooses a field, and does not open its panel as well
    const bool umschalt = ereignis.modifiers().testFlag(Qt::ShiftModifier);
    if (ereignis.isAutoRepeat() && umschalt && kommtZuFrueh(ereignis.timestamp()))
        return true;
    mausZuletzt_ = false;
    ansage_.clear();
    umfeld_.tasteGehalten(ereignis.isAutoRepeat());
    bool gegolten = true;
    const auto beginn = Uhr::now();
    umfeld_.gesichert([&] { gegolten = tastenwahl_.druecken(*taste, umschalt); });
    umfeld_.tasteGehalten(false);
    schritt_ = {ereignis.timestamp(), Uhr::now() - beginn};
    if (flaeche_.fraAktionGezeigt())
        tafel_.fokusGeben();
    markeZeigen();
    return gegolten;
}

/// Each step of a line is saved, which takes its time on a slow disk: from a key that is held only as many
/// steps are taken as fill half of the time, or the line would go on when the key is up again.
bool Ebenenstimme::kommtZuFrueh(std::uint64_t zeitpunkt) const {
    if (zeitpunkt == 0)
        return false; // who sends it tells no time
    const std::chrono::milliseconds seither{zeitpunkt - schritt_.zeitpunkt};
    return seither < 2 * schritt_.dauer;
}

void Ebenenstimme::tafelVerlassen() {
    mausZuletzt_ = false;
    umfeld_.gesichert([&] { tastenwahl_.druecken(Ebenentaste::Schliessen, false); });
    if (flaeche_.fraAktionGezeigt())
        tafel_.fokusGeben(); // it could not be saved
    else
        ebene_.setFocus(Qt::ShortcutFocusReason);
    markeZeigen();
}

void Ebenenstimme::markeZeigen() {
    const int nummer = markiertesFeld();
    const auto feld = nummer < 0 ? std::nullopt : std::optional(feldplatz(nummer));
    ebene_.markeSetzen(feld);
    if (feld)
        ebene_.zustand().ausweichen(ebenenpixel(*feld, ebene_.size()).center().toPoint());
    zeigen();
    if (!feld || !ebene_.hasFocus() || !QAccessible::isActive())
        return;
    QAccessibleEvent ereignis(&ebene_, QAccessible::Focus);
    ereignis.setChild(nummer);
    QAccessible::updateAccessibility(&ereignis);
}

// --- the fields as a list ---

// As far as the plane shows it: the outermost fields reach beyond.
QRectF Ebenenstimme::feldplatz(int nummer) const {
    const auto r = gitter().feld(gitter().platz(nummer)).rechteck;
    return QRectF(double(r.links), double(r.oben), double(r.breite), double(r.hoehe)) &
           QRectF(0, 0, EBENENENDE, EBENENENDE);
}

QString Ebenenstimme::feldworte(int nummer) const {
    const auto platz = gitter().platz(nummer);
    auto worte = feldzeile(stand_.ebene(), gitter().feld(platz).anker, auskunft_);
    if (const auto* streuung = streuung_.rechnung()) {
        worte += " – " + streuworte(streuung->feld(stand_.ebene(), platz));
        for (const auto& rauschen : rauschworte(*streuung, stand_.ebene(), platz))
            worte += " – " + rauschen;
    }
    return qt(worte);
}

int Ebenenstimme::markiertesFeld() const {
    const auto marke = tastenwahl_.marke();
    return marke ? gitter().nummer(*marke) : -1;
}

int Ebenenstimme::gewaehltesFeld() const {
    const auto gewaehlt = tastenwahl_.gewaehlt();
    return gewaehlt ? gitter().nummer(*gewaehlt) : -1;
}

void Ebenenstimme::feldWaehlen(int nummer) {
    umfeld_.gesichert([&] { tastenwahl_.waehlen(gitter().platz(nummer)); });
    markeZeigen();
}

void Ebenenstimme::feldaktionOeffnen(int nummer) {
    umfeld_.gesichert([&] { tastenwahl_.aktionOeffnen(gitter().platz(nummer)); });
    markeZeigen();
}
