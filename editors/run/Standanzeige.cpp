// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Standanzeige.h"

#include "base/Ebenennamen.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Kurzlabel.h"
#include "editors/run/Sofortschrift.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr double EBENENGROESSE = 1.6;
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

} // namespace

Standanzeige::Standanzeige(QWidget* neben, Sofortschrift& schrift)
    : schrift_(schrift), ebene_(benannt(new QLabel, "lblEbene")) {
    auto* anordnung = new QVBoxLayout(this);
    anordnung->setContentsMargins(0, 0, 0, 0);
    anordnung->setSpacing(2);
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
        anordnung->addWidget(zeile);
    }
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
}
