// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/LinuxProzess.h"

#include "platform/linux/Echtzeitdienst.h"
#include "platform/linux/Prioritaet.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QString>
#include <QUrl>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// In the child, before it becomes the program: async-signal-safe calls only. The program is nobody's child,
// as the one in between ends at once; it has none of our priority, of the signals that we keep from ourselves
// and of the files that are open here.
void abloesen() {
    setsid();
    const pid_t enkel = fork();
    if (enkel != 0)
        _exit(enkel > 0 ? 0 : 1);
    setpriority(PRIO_PROCESS, 0, std::max(0, getpriority(PRIO_PROCESS, 0)));
    sigset_t keine;
    sigemptyset(&keine);
    sigprocmask(SIG_SETMASK, &keine, nullptr);
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
}

// Returns whether the program was found fit to run. QProcess starts programs that are nobody's child by
// itself, but with our priority and our signals.
bool abgeloestStarten(const QString& programm, const QString& argument) {
    QProcess prozess;
    prozess.setProgram(programm);
    prozess.setArguments({argument});
    prozess.setStandardInputFile(QProcess::nullDevice());
    prozess.setProcessChannelMode(QProcess::ForwardedChannels);
    prozess.setChildProcessModifier(abloesen);
    prozess.start();
    return prozess.waitForStarted() && prozess.waitForFinished() && prozess.exitCode() == 0;
}

// A page that sends on to a chapter of another one.
QByteArray wegweiserseite(const QString& seite, const QString& anker) {
    auto ziel = QUrl::fromLocalFile(seite);
    ziel.setFragment(anker);
    const auto adresse = QString::fromLatin1(ziel.toEncoded()).toHtmlEscaped();
    return QString(
               "<!DOCTYPE html>\n<html lang=\"de\">\n<head>\n<meta charset=\"utf-8\">\n<title>Hilfe</title>\n"
               "<meta http-equiv=\"refresh\" content=\"0; url=%1\">\n</head>\n"
               "<body><p><a href=\"%1\">Zur Hilfe</a></p></body>\n</html>\n")
        .arg(adresse)
        .toUtf8();
}

// The path of such a page, a file a chapter; empty where it can't be laid.
std::string wegweiser(const std::string& seite, const std::string& anker) {
    const auto ordner = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    const auto name = QString::fromStdString(anker);
    if (ordner.isEmpty() || name.contains('/'))
        return {};
    QSaveFile datei(QDir(ordner).filePath("gamepad-konfic-" + name + ".html"));
    const auto text = wegweiserseite(QString::fromStdString(seite), name);
    if (!datei.open(QIODevice::WriteOnly) || datei.write(text) != text.size() || !datei.commit())
        return {};
    return datei.fileName().toStdString();
}

} // namespace

LinuxProzess::LinuxProzess() = default;

LinuxProzess::~LinuxProzess() {
    dienst_.reset();
    if (guete_)
        prioritaetZurueckgeben(*guete_);
}

bool LinuxProzess::SetPriorityClass(std::uint32_t klasse) {
    if (klasse != REALTIME_PRIORITY_CLASS)
        return false;
    if (!guete_)
        guete_ = getpriority(PRIO_PROCESS, 0);
    if (echtzeitNehmen())
        return true;
    besteGueteNehmen();
    dienstBitten();
    return false;
}

// Its answers need an event loop.
void LinuxProzess::dienstBitten() {
    if (!QCoreApplication::instance())
        return;
    if (!dienst_)
        dienst_ = std::make_unique<Echtzeitdienst>(QDBusConnection::systemBus());
    dienst_->bitten();
}

std::string LinuxProzess::GetFullPathNameA(std::string_view name) {
    if (name.empty())
        return {};
    std::string pfad(name);
    std::ranges::replace(pfad, '\\', '/');
    std::error_code fehler;
    const auto hier = std::filesystem::current_path(fehler); // a folder that was removed has no path
    return ((fehler ? std::filesystem::path("/") : hier) / pfad).lexically_normal().string();
}

bool LinuxProzess::ShellExecuteA(const std::string& datei) {
    std::error_code fehler;
    const bool adresse = datei.find("://") != std::string::npos;
    // In a path that is whole already a "\" is part of a folder's name.
    const auto ziel = adresse || datei.starts_with('/') ? datei : GetFullPathNameA(datei);
    const auto programm = QStandardPaths::findExecutable("xdg-open");
    if (ziel.empty() || programm.isEmpty() || (!adresse && !std::filesystem::exists(ziel, fehler)))
        return false;
    return abgeloestStarten(programm, QString::fromStdString(ziel));
}

bool LinuxProzess::kapitelOeffnen(const std::string& seite, const std::string& anker) {
    std::error_code fehler;
    const auto ganze = seite.starts_with('/') ? seite : GetFullPathNameA(seite);
    if (ganze.empty() || !std::filesystem::exists(ganze, fehler))
        return false;
    const auto statt = wegweiser(ganze, anker);
    return ShellExecuteA(statt.empty() ? ganze : statt);
}
