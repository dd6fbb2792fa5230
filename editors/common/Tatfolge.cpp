// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Tatfolge.h"

#include "editors/common/Formhilfen.h"
#include "editors/common/Geduld.h"
#include "editors/common/Hinweistext.h"
#include "editors/common/Speicherstand.h"

#include <QScopeGuard>

#include <utility>

void Tatfolge::merken(Tat tat) {
    taten_.push_back(std::move(tat));
    if (taten_.size() > HOECHSTENS)
        taten_.pop_front();
    emit geaendert();
}

void Tatfolge::zuruecknehmen(QWidget* form) {
    if (taten_.empty() || nimmtZurueck_) // once, also while a box says to wait
        return;
    nimmtZurueck_ = true;
    const auto danach = qScopeGuard([this] { nimmtZurueck_ = false; });
    const auto tat = taten_.back();
    const auto vergessen = [this] {
        taten_.pop_back();
        emit geaendert();
    };
    try {
        Geduld geduld(form);
        tat.zuruecknehmen([&] { return geduld.weiter(); });
    } catch (const LaufzeitFehler& fehler) {
        if (fehler.nummer() != Fehlernummer::VonAnderenGeaendert)
            return fehlermeldung(form, fehler, formtitel(*form));
        vergessen();
        return meldung(form,
                       QString("%1 lässt sich nicht mehr rückgängig machen. %2")
                           .arg(einzeiler(tat.name), einzeiler(qt(fehler.what()))),
                       formtitel(*form), QMessageBox::Warning);
    }
    vergessen();
    tat.danach();
}

namespace {

constexpr const char* WORT = " rückgängig";
constexpr int RAND = 6;

} // namespace

Tatangebot::Tatangebot(Tatfolge& folge) : folge_(folge) {
    setObjectName("btnRueckgaengig");
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFlat(true); // no higher than the line in which it stands
    auto schrift = font();
    schrift.setUnderline(true);
    setFont(schrift);
    setCursor(Qt::PointingHandCursor);
    platzBehalten(*this);
    connect(&folge_, &Tatfolge::geaendert, this, &Tatangebot::zeigen);
    connect(this, &QPushButton::clicked, this, [this] { folge_.zuruecknehmen(window()); });
    zeigen();
}

void Tatangebot::zeigen() {
    const auto name = folge_.name();
    setVisible(!name.isEmpty());
    setEnabled(!name.isEmpty());
    setToolTip(name.isEmpty() ? "Nimmt das letzte Löschen, Kopieren oder Wechseln zurück"
                              : hinweistext(name + " rückgängig machen"));
    setAccessibleName(name.isEmpty() ? "" : name + WORT);
    updateGeometry();
    beschriften();
}

// The name gives way, not the word that says what the button does.
void Tatangebot::beschriften() {
    const int platz = width() - 2 * RAND - fontMetrics().horizontalAdvance(WORT);
    auto gekuerzt = fontMetrics().elidedText(folge_.name(), Qt::ElideMiddle, platz);
    setText(gekuerzt.replace('&', "&&") + WORT);
}

QSize Tatangebot::sizeHint() const {
    const auto mass = fontMetrics();
    const int name = mass.horizontalAdvance(folge_.name()) + 1; // both are rounded
    return {name + mass.horizontalAdvance(WORT) + 2 * RAND, mass.height() + 2};
}

QSize Tatangebot::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance("MMMMMMMMMMMMMMMM"), fontMetrics().height() + 2};
}

void Tatangebot::resizeEvent(QResizeEvent* ereignis) {
    QPushButton::resizeEvent(ereignis);
    beschriften();
}
