// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Standanzeige.h"

#include "base/Ebenennamen.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Kurzlabel.h"
#include "editors/run/Sofortschrift.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <span>
#include <vector>

namespace {

constexpr double EBENENGROESSE = 1.6;
constexpr int ZEILENABSTAND = 2;
constexpr auto ZEILENHINWEIS =
    "Was gerade gehalten wird und wovon. Die Felder eines Sticks sind von der Mitte "
    "aus gezählt.";

void schreiben(QLabel& label, const Haltezeile& zeile, Sofortschrift& schrift) {
    schrift.schreiben(label, zeile.text);
    if (label.font().bold() == zeile.auffaellig)
        return;
    auto buchstaben = label.font();
    buchstaben.setBold(zeile.auffaellig);
    schrift.aendern(label, [&] { label.setFont(buchstaben); });
}

/// Lines one below the other. One that changes has nothing laid out anew: whatever it says, it has the size
/// that it is given here, and that to the toolkit is nothing to ask about.
class Zeilenstapel final : public QWidget {
public:
    explicit Zeilenstapel(std::span<Kurzlabel* const> zeilen) : zeilen_(zeilen.begin(), zeilen.end()) {
        for (auto* zeile : zeilen_)
            zeile->setParent(this);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }
    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override {
        const auto anzahl = static_cast<int>(zeilen_.size());
        return {zeilen_.front()->minimumSizeHint().width(),
                anzahl * zeilenhoehe() + (anzahl - 1) * ZEILENABSTAND};
    }

protected:
    void resizeEvent(QResizeEvent*) override { anordnen(); }
    void changeEvent(QEvent* ereignis) override {
        if (ereignis->type() == QEvent::FontChange) {
            updateGeometry();
            anordnen();
        }
        QWidget::changeEvent(ereignis);
    }

private:
    // Any line may be striking, and its sign come from another font.
    int zeilenhoehe() const {
        auto buchstaben = font();
        buchstaben.setBold(true);
        Kurzlabel probe("⚠");
        const auto einfach = probe.minimumSizeHint().height();
        probe.setFont(buchstaben);
        return std::max(einfach, probe.minimumSizeHint().height());
    }
    void anordnen() {
        const QSize groesse(width(), zeilenhoehe());
        int oben = 0;
        for (auto* zeile : zeilen_) {
            zeile->setFixedSize(groesse);
            zeile->move(0, oben);
            oben += groesse.height() + ZEILENABSTAND;
        }
    }

    std::vector<Kurzlabel*> zeilen_;
};

} // namespace

Standanzeige::Standanzeige(QWidget* neben, Sofortschrift& schrift)
    : schrift_(schrift), ebene_(benannt(new QLabel, "lblEbene")) {
    auto* anordnung = new QVBoxLayout(this);
    anordnung->setContentsMargins(0, 0, 0, 0);
    anordnung->setSpacing(ZEILENABSTAND);
    auto gross = ebene_->font();
    gross.setBold(true);
    gross.setPointSizeF(gross.pointSizeF() * EBENENGROESSE);
    ebene_->setFont(gross);
    auto* kopf = new QHBoxLayout;
    kopf->setSpacing(14);
    kopf->addWidget(ebene_, 1);
    kopf->addWidget(neben);
    anordnung->addLayout(kopf);
    for (int i = 0; i < ZEILEN; ++i) {
        auto* zeile = zeilen_[static_cast<std::size_t>(i)] = kurzlabel(feldname("lblGehalten", i), "");
        zeile->setToolTip(ZEILENHINWEIS);
    }
    anordnung->addWidget(new Zeilenstapel(zeilen_));
    anordnung->addStretch();
    zeigen(0, {});
}

void Standanzeige::zeigen(int ebene, const std::vector<Haltezeile>& zeilen) {
    schrift_.schreiben(*ebene_, QString("Ebene: %1").arg(EBENENNAMEN[static_cast<std::size_t>(ebene)]));
    const auto anzahl = zeilen.size();
    const auto ganz = anzahl > zeilen_.size() ? zeilen_.size() - 1 : anzahl;
    for (std::size_t i = 0; i < zeilen_.size(); ++i) {
        Haltezeile zeile;
        if (i < ganz)
            zeile = zeilen[i];
        else if (i < anzahl)
            zeile.text = QString("… und %1 weitere").arg(anzahl - ganz);
        else if (i == 0)
            zeile.text = "Nichts gehalten";
        schreiben(*zeilen_[i], zeile, schrift_);
    }
    schrift_.zeichnen();
}
