// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the screen by the desktop, through the portal org.freedesktop.portal.Screenshot (version 2 of
// its documented interface).
//
// A request is a D-Bus object whose path is known beforehand, from our name on the bus and a token:
//
//   we subscribe to Request.Response at that path
//   Screenshot("", {handle_token, interactive: false}) --> the path; an older portal's may be another:
//   subscribe anew Response(0, {uri: file:///...}) --> the file is read beside the event loop, and removed if
//   it lies where files
//                                       that nobody keeps lie
//   Response(else), an error, the portal leaves the bus --> no picture
//
// The first time the desktop may ask the user, so an answer may take long.
#pragma once

#include "platform/Schirmaufnahme.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QVariantMap>

#include <map>
#include <memory>

class QDBusMessage;
class QDBusPendingCallWatcher;

class Portalaufnahme final : public QObject, public Schirmaufnahme {
    Q_OBJECT

public:
    /// On the session's bus.
    explicit Portalaufnahme(const QDBusConnection& bus);
    ~Portalaufnahme() override;

    void aufnehmen(Empfaenger empfaenger) override;

private slots:
    void antwort(uint ergebnis, const QVariantMap& werte, const QDBusMessage& nachricht);

private:
    void zugesagt(const QString& pfad, QDBusPendingCallWatcher& ruf);
    void lesen(const QString& datei, Empfaenger empfaenger);
    Empfaenger nehmen(const QString& pfad);
    void horchen(const QString& pfad, bool an);
    void portalWeg();

    QDBusConnection bus_;
    QDBusServiceWatcher waechter_;
    unsigned zaehler_ = 0;
    std::map<QString, Empfaenger> offene_; ///< by path of the request
    QThreadPool leser_;                    ///< goes first, as what it runs tells this object
};
