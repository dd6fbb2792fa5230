// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Protokoll.h"

#include "app/Padlistenmeldung.h"
#include "editors/common/Formhilfen.h"
#include "editors/run/Laufsteuerung.h"
#include "platform/linux/EingabeWahl.h"
#include "platform/linux/Padliste.h"
#include "platform/linux/Prioritaet.h"
#include "platform/linux/QtZeitgeber.h"

#include <QLoggingCategory>

#include <poll.h>
#include <unistd.h>

namespace {

QtMessageHandler schreiben = nullptr; // the toolkit's own

// A pipe is ready when it takes a whole message.
void schreibenOhneZuWarten(QtMsgType art, const QMessageLogContext& woher, const QString& text) {
    pollfd fehlerausgabe{STDERR_FILENO, POLLOUT, 0};
    if (art == QtFatalMsg || poll(&fehlerausgabe, 1, 0) == 1)
        schreiben(art, woher, text);
}

// No message of these is fatal: that level as the least that is told means silence.
Q_LOGGING_CATEGORY(PAD, "gamepad.pad", QtFatalMsg)
Q_LOGGING_CATEGORY(EINGABE, "gamepad.eingabe", QtFatalMsg)
Q_LOGGING_CATEGORY(ZEIT, "gamepad.zeit", QtFatalMsg)

void verspaetungenProtokollieren(const Verspaetungen& spaete) {
    qCInfo(ZEIT).noquote().nospace() << "Lauf zu Ende: " << spaete.anzahl << " Aufrufe mehr als "
                                     << VERSPAETUNG.count() << " ms zu spät, der späteste "
                                     << spaete.groesste.count() << " ms";
}

} // namespace

void aufKeinenLeserWarten() {
    schreiben = qInstallMessageHandler(schreibenOhneZuWarten);
}

Meldung padmeldung() {
    if (!PAD().isInfoEnabled())
        return {};
    return [](const std::string& text) { qCInfo(PAD).noquote() << qt(text); };
}

Meldung waechtermeldung() {
    if (!EINGABE().isInfoEnabled())
        return {};
    return [](const std::string& text) { qCInfo(EINGABE).noquote() << qt(text); };
}

void eingabeProtokollieren(const EingabeWahl& wahl) {
    for (const auto& grund : wahl.gruende)
        qCInfo(EINGABE).noquote() << "dient nicht:" << qt(grund);
    qCInfo(EINGABE).noquote() << "gewählt:" << (wahl.name.empty() ? QString("keine") : qt(wahl.name));
}

void padlisteProtokollieren(const Padliste& liste) {
    if (!liste.grund.empty())
        qCInfo(PAD).noquote() << PADLISTE << "wird nicht benutzt:" << qt(liste.grund);
    for (const auto& fehler : liste.fehler)
        qCInfo(PAD).noquote().nospace() << PADLISTE << " Zeile " << fehler.zeile
                                        << " ausgelassen: " << qt(fehler.grund) << ": " << qt(fehler.text);
    if (liste.uebernommene > 0)
        qCInfo(PAD).noquote() << PADLISTE << "Zeilen übernommen:" << liste.uebernommene;
}

void laeufeProtokollieren(Laufsteuerung& laufsteuerung, QtZeitgeber& zeitgeber) {
    // It is said where no message of the toolkit can be.
    echtzeitverlustMelden(
        ZEIT().isInfoEnabled() ? "gamepad.zeit: Echtzeit abgegeben, es wurde ohne Pause gerechnet\n" : "");
    QObject::connect(&laufsteuerung, &Laufsteuerung::hauptformVerbergen, &laufsteuerung,
                     [&zeitgeber] { zeitgeber.verspaetungenNeuZaehlen(); });
    QObject::connect(&laufsteuerung, &Laufsteuerung::hauptformZurueck, &laufsteuerung, [&] {
        if (laufsteuerung.geladen()) // not after one that could not begin
            verspaetungenProtokollieren(zeitgeber.verspaetungen());
    });
}
