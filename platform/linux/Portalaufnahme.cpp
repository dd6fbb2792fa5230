// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Portalaufnahme.h"

#include "platform/linux/Schirmpixel.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDir>
#include <QFile>
#include <QFuture>
#include <QImage>
#include <QImageReader>
#include <QPromise>
#include <QStandardPaths>
#include <QUrl>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr const char* DIENST = "org.freedesktop.portal.Desktop";
constexpr const char* OBJEKT = "/org/freedesktop/portal/desktop";
constexpr const char* SCHNITTSTELLE = "org.freedesktop.portal.Screenshot";
constexpr const char* ANFRAGE = "org.freedesktop.portal.Request";
constexpr uint GELUNGEN = 0;

/// Whether a file lies where programs leave what nobody keeps. One among the user's pictures is not ours to
/// remove.
bool vergaenglich(const QString& datei) {
    const auto ordner = QFileInfo(datei).canonicalPath() + "/";
    for (const auto& eigener :
         {QDir::tempPath(), QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation),
          QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)}) {
        const auto wurzel = QDir(eigener).canonicalPath();
        if (!wurzel.isEmpty() && ordner.startsWith(wurzel + "/"))
            return true;
    }
    return false;
}

/// The picture of a file that somebody on the bus has named. What is no file, a pipe or a device, would never
/// come to its end.
QImage bildAus(const QString& datei) {
    const int nummer = open(QFile::encodeName(datei).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    QFile strom;
    struct stat angaben {};
    if (nummer < 0 || !strom.open(nummer, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle) ||
        fstat(nummer, &angaben) != 0 || !S_ISREG(angaben.st_mode))
        return {};
    return QImageReader(&strom).read();
}

} // namespace

Portalaufnahme::Portalaufnahme(const QDBusConnection& bus)
    : bus_(bus), waechter_(DIENST, bus, QDBusServiceWatcher::WatchForUnregistration) {
    connect(&waechter_, &QDBusServiceWatcher::serviceUnregistered, this, &Portalaufnahme::portalWeg);
}

Portalaufnahme::~Portalaufnahme() = default;

void Portalaufnahme::aufnehmen(Empfaenger empfaenger) {
    const auto marke = QString("gamepadkonfic_%1_%2").arg(getpid()).arg(++zaehler_);
    const auto absender = bus_.baseService().mid(1).replace('.', '_');
    const QString pfad = QString(OBJEKT) + "/request/" + absender + "/" + marke;
    offene_[pfad] = std::move(empfaenger);
    horchen(pfad, true);
    auto ruf = QDBusMessage::createMethodCall(DIENST, OBJEKT, SCHNITTSTELLE, "Screenshot");
    ruf << QString() << QVariantMap{{"handle_token", marke}, {"interactive", false}};
    auto* zusage = new QDBusPendingCallWatcher(bus_.asyncCall(ruf), this);
    connect(zusage, &QDBusPendingCallWatcher::finished, this,
            [this, pfad, zusage] { zugesagt(pfad, *zusage); });
}

void Portalaufnahme::zugesagt(const QString& pfad, QDBusPendingCallWatcher& ruf) {
    const QDBusPendingReply<QDBusObjectPath> zusage = ruf;
    ruf.deleteLater();
    if (!offene_.contains(pfad)) // the answer was faster
        return;
    if (zusage.isError()) {
        if (const auto empfaenger = nehmen(pfad))
            empfaenger({});
    } else if (const auto anderer = zusage.value().path(); anderer != pfad) {
        offene_[anderer] = nehmen(pfad);
        horchen(anderer, true);
    }
}

void Portalaufnahme::antwort(uint ergebnis, const QVariantMap& werte, const QDBusMessage& nachricht) {
    auto empfaenger = nehmen(nachricht.path());
    if (!empfaenger)
        return;
    const auto datei = QUrl(werte.value("uri").toString()).toLocalFile();
    if (ergebnis != GELUNGEN || datei.isEmpty())
        empfaenger({});
    else
        lesen(datei, std::move(empfaenger));
}

void Portalaufnahme::lesen(const QString& datei, Empfaenger empfaenger) {
    auto gelesen = std::make_shared<QPromise<QImage>>();
    gelesen->start();
    gelesen->future().then(
        this, [empfaenger = std::move(empfaenger)](const QImage& bild) { empfaenger(schirmbild(bild)); });
    leser_.start([gelesen, datei] {
        const QImage bild = bildAus(datei);
        gelesen->addResult(bild.convertToFormat(QImage::Format_RGB32));
        if (!bild.isNull() && vergaenglich(datei)) // what is no picture was not laid for us
            QFile::remove(datei);
        gelesen->finish();
    });
}

Schirmaufnahme::Empfaenger Portalaufnahme::nehmen(const QString& pfad) {
    auto stelle = offene_.find(pfad);
    if (stelle == offene_.end())
        return {};
    auto empfaenger = std::move(stelle->second);
    horchen(pfad, false); // before the entry goes, whose key `pfad` may be
    offene_.erase(stelle);
    return empfaenger;
}

void Portalaufnahme::horchen(const QString& pfad, bool an) {
    // From whoever it comes: asking the bus for the portal's own name would wait for the answer.
    const auto* stelle = SLOT(antwort(uint, QVariantMap, QDBusMessage));
    if (an)
        bus_.connect({}, pfad, ANFRAGE, "Response", this, stelle);
    else
        bus_.disconnect({}, pfad, ANFRAGE, "Response", this, stelle);
}

void Portalaufnahme::portalWeg() {
    while (!offene_.empty())
        if (const auto empfaenger = nehmen(offene_.begin()->first))
            empfaenger({});
}
