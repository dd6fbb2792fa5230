// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/exchange/Namenszeile.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <utility>

Namenszeile::Namenszeile(std::function<std::string(const std::string&)> hindernis)
    : hindernis_(std::move(hindernis))
    , feld_(benannt(new QLineEdit, "txtName"))
    , hinweis_(benannt(new QLabel(" "), "lblNamenshinweis")) {
    auto* anordnung = new QVBoxLayout(this);
    anordnung->setContentsMargins(0, 0, 0, 0);
    auto* zeile = new QHBoxLayout;
    auto* label = benannt(new QLabel("Name:"), "lblName");
    label->setBuddy(feld_);
    zeile->addWidget(label);
    zeile->addWidget(feld_, 1);
    anordnung->addLayout(zeile);
    hinweis_->setTextFormat(Qt::PlainText);
    hinweis_->setWordWrap(true);
    // Room for the longest of the hints: the window does not jump while one types.
    hinweis_->setMinimumHeight(2 * hinweis_->fontMetrics().lineSpacing());
    hinweis_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    anordnung->addWidget(hinweis_);
    connect(feld_, &QLineEdit::textChanged, this, [this] { pruefen(); });
    setFocusProxy(feld_);
}

void Namenszeile::setzeName(const std::string& name) {
    feld_->setText(qt(name));
    feld_->selectAll();
    pruefen();
}

std::string Namenszeile::name() const {
    return feld_->text().toStdString();
}

void Namenszeile::pruefen() {
    std::string grund;
    try {
        grund = hindernis_(name());
    } catch (const LaufzeitFehler& fehler) {
        grund = fehler.what();
    }
    gueltig_ = grund.empty();
    hinweis_->setText(gueltig_ ? QString(" ") : einzeiler(qt(grund)));
    feld_->setAccessibleDescription(hinweis_->text());
    emit geaendert();
}
