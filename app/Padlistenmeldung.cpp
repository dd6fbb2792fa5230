// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Padlistenmeldung.h"

#include "editors/common/Formhilfen.h"
#include "platform/linux/Padliste.h"

#include <algorithm>

namespace {

constexpr std::size_t ZEILEN_HOECHSTENS = 8;
constexpr qsizetype ZEICHEN_DER_ZEILE = 60;
constexpr qsizetype ZEICHEN_DES_GRUNDES = 120;

QString gekuerzt(const std::string& text, qsizetype zeichen) {
    const auto ganz = qt(text);
    return ganz.size() <= zeichen ? ganz : ganz.left(zeichen) + "…";
}

QString fehlerzeile(const Padlistenfehler& fehler) {
    return QString("\n\nZeile %1: %2\n%3.")
        .arg(fehler.zeile)
        .arg(gekuerzt(fehler.text, ZEICHEN_DER_ZEILE), gekuerzt(fehler.grund, ZEICHEN_DES_GRUNDES));
}

} // namespace

QString padlistenmeldung(const Padliste& liste) {
    if (!liste.grund.empty())
        return QString("Die Datei „%1“ in Ihrem Datenordner wird nicht benutzt: %2.")
            .arg(PADLISTE, qt(liste.grund));
    if (liste.fehler.empty())
        return {};
    const auto anzahl = liste.fehler.size();
    QString text = anzahl == 1 ? QString("In der Datei „%1“ in Ihrem Datenordner ist eine Zeile nicht zu "
                                         "verstehen. Sie wird ausgelassen, alle anderen gelten.")
                                     .arg(PADLISTE)
                               : QString("In der Datei „%1“ in Ihrem Datenordner sind %2 Zeilen nicht zu "
                                         "verstehen. Sie werden ausgelassen, alle anderen gelten.")
                                     .arg(PADLISTE)
                                     .arg(anzahl);
    const auto gezeigte = std::min(anzahl, ZEILEN_HOECHSTENS);
    for (std::size_t i = 0; i < gezeigte; ++i)
        text += fehlerzeile(liste.fehler[i]);
    if (anzahl > gezeigte)
        text += QString("\n\n… und %1 weitere").arg(anzahl - gezeigte);
    return text;
}
