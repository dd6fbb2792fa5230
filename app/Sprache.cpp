// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Sprache.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <clocale>

namespace {

std::unique_ptr<QTranslator> texteAus(const QString& ordner) {
    auto texte = std::make_unique<QTranslator>();
    return texte->load("qtbase_de.qm", ordner) ? std::move(texte) : nullptr;
}

} // namespace

Sprache::Sprache(const QString& ordner) : texte_(texteAus(ordner)) {
    if (texte_)
        QCoreApplication::installTranslator(texte_.get());
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    // The application object has taken over the locale of the session, decimal comma and all.
    std::setlocale(LC_NUMERIC, "C");
}

Sprache::~Sprache() = default; // a translator that goes takes itself out of the application

QString Sprache::uebersetzungen() {
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
}
