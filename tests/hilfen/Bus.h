// SPDX-License-Identifier: GPL-3.0-or-later
// A message bus of a test's own.
#pragma once

#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusError>
#include <QProcess>
#include <QStringList>

/// A message bus on which there is nothing but what a test puts there.
class Bus {
public:
    Bus() {
        const auto einstellung = ordner_.pfad() / "bus.conf";
        dateiSchreiben(einstellung,
                       "<busconfig><type>session</type><listen>unix:dir=" + ordner_.pfad().string() +
                           "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                           "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>");
        daemon_.start("dbus-daemon", {"--nofork", "--print-address",
                                      "--config-file=" + QString::fromStdString(einstellung.string())});
        while (!daemon_.canReadLine() && daemon_.waitForReadyRead(GEDULD_MS))
            ;
        adresse_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }
    ~Bus() {
        for (const auto& name : namen_)
            QDBusConnection::disconnectFromBus(name);
        daemon_.kill();
        daemon_.waitForFinished();
    }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    const QString& adresse() const { return adresse_; }
    QDBusConnection verbindung() {
        namen_ << QString("test%1").arg(++zaehler_);
        auto verbindung = QDBusConnection::connectToBus(adresse_, namen_.back());
        EXPECT_TRUE(verbindung.isConnected()) << verbindung.lastError().message().toStdString();
        return verbindung;
    }

private:
    static constexpr int GEDULD_MS = 20000;
    inline static int zaehler_ = 0;
    const Testordner ordner_;
    QProcess daemon_;
    QString adresse_;
    QStringList namen_;
};
