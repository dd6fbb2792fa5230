// SPDX-License-Identifier: GPL-3.0-or-later
// Real-time priority for an ordinary user, by the desktop's service for that, RealtimeKit (its documented
// interface org.freedesktop.RealtimeKit1 on the system's bus).
//
//   Get RTTimeUSecMax --> RLIMIT_RTTIME is set to no more, as the service demands
//   MakeThreadRealtime(thread, 1) --> granted
//   an error --> Get MinNiceLevel --> MakeThreadHighPriority(thread, level), where that is the better one
//   no service, no bus, no answer --> all stays as it is
//
// Nobody waits: the answers come through the event loop.
#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>

class QDBusMessage;

class Echtzeitdienst final : public QObject {
public:
    /// On the system's bus. Belongs to the main thread, and so does what it asks for.
    explicit Echtzeitdienst(const QDBusConnection& bus);

    /// Asks, unless it asks already.
    void bitten();

private:
    using Empfaenger = std::function<void(const QDBusMessage&)>;

    void rufen(const QDBusMessage& ruf, Empfaenger empfaenger);
    void eigenschaft(const QString& name, std::function<void(qlonglong)> empfaenger);
    void echtzeitErbitten(qlonglong hoechstens);
    void gueteErbitten(qlonglong beste);

    QDBusConnection bus_;
    bool bittet_ = false;
};
