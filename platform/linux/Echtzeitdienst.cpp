// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Echtzeitdienst.h"

#include "platform/linux/Prioritaet.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr const char* DIENST = "org.freedesktop.RealtimeKit1";
constexpr const char* OBJEKT = "/org/freedesktop/RealtimeKit1";
constexpr const char* EIGENSCHAFTEN = "org.freedesktop.DBus.Properties";

QDBusMessage aufruf(const char* schnittstelle, const QString& name) {
    return QDBusMessage::createMethodCall(DIENST, OBJEKT, schnittstelle, name);
}

// The id of the process is that of its main thread.
QDBusMessage fuerDenHauptfaden(const QString& name) {
    return aufruf(DIENST, name) << static_cast<qulonglong>(getpid());
}

bool gelungen(const QDBusMessage& antwort) {
    return antwort.type() == QDBusMessage::ReplyMessage;
}

} // namespace

Echtzeitdienst::Echtzeitdienst(const QDBusConnection& bus) : bus_(bus) {}

void Echtzeitdienst::bitten() {
    if (bittet_ || !bus_.isConnected())
        return;
    bittet_ = true;
    eigenschaft("RTTimeUSecMax", [this](qlonglong hoechstens) { echtzeitErbitten(hoechstens); });
}

void Echtzeitdienst::echtzeitErbitten(qlonglong hoechstens) {
    ruhelosigkeitBegrenzen(static_cast<rlim_t>(hoechstens));
    const auto ruf = fuerDenHauptfaden("MakeThreadRealtime")
                     << static_cast<uint>(sched_get_priority_min(SCHED_RR));
    rufen(ruf, [this](const QDBusMessage& antwort) {
        bittet_ = !gelungen(antwort);
        if (bittet_)
            eigenschaft("MinNiceLevel", [this](qlonglong beste) { gueteErbitten(beste); });
        else
            ruhelosigkeitZaehlen();
    });
}

void Echtzeitdienst::gueteErbitten(qlonglong beste) {
    bittet_ = false;
    if (beste < getpriority(PRIO_PROCESS, 0))
        bus_.asyncCall(fuerDenHauptfaden("MakeThreadHighPriority") << static_cast<int>(beste));
}

/// What the service says of itself; without a positive or negative number the asking is over.
void Echtzeitdienst::eigenschaft(const QString& name, std::function<void(qlonglong)> empfaenger) {
    rufen(aufruf(EIGENSCHAFTEN, "Get") << QString(DIENST) << name,
          [this, empfaenger = std::move(empfaenger)](const QDBusMessage& antwort) {
              const auto werte = gelungen(antwort) ? antwort.arguments() : QVariantList();
              const qlonglong wert =
                  werte.isEmpty() ? 0 : werte.first().value<QDBusVariant>().variant().toLongLong();
              bittet_ = wert != 0;
              if (bittet_)
                  empfaenger(wert);
          });
}

void Echtzeitdienst::rufen(const QDBusMessage& ruf, Empfaenger empfaenger) {
    auto* antwort = new QDBusPendingCallWatcher(bus_.asyncCall(ruf), this);
    connect(antwort, &QDBusPendingCallWatcher::finished, this, [antwort, empfaenger = std::move(empfaenger)] {
        antwort->deleteLater();
        empfaenger(antwort->reply());
    });
}
