// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Mitschnittleser.h"

#include "editors/common/Formhilfen.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <utility>

namespace {

constexpr qsizetype TEXT_HOECHSTENS = 32 * 1024 * 1024;
constexpr int BLICK_MS = 50;

/// As it is installed, or as it is built.
QString spielerprogramm() {
    const QDir hier(QCoreApplication::applicationDirPath());
    for (const auto* name : {"gamepad-konfic-spur", "spur"})
        if (QFileInfo(hier.filePath(name)).isExecutable())
            return hier.filePath(name);
    return "";
}

/// What it prints until it ends; false where it goes on too long, or is no longer wanted.
bool mitlesen(QProcess& prozess, QByteArray& text, const std::atomic<bool>& abbruch) {
    while (prozess.state() != QProcess::NotRunning) {
        prozess.waitForReadyRead(BLICK_MS);
        text += prozess.readAllStandardOutput();
        if (abbruch || text.size() > TEXT_HOECHSTENS)
            return false;
    }
    text += prozess.readAllStandardOutput();
    return true;
}

} // namespace

Mitschnittleser::Mitschnittleser(Suche suche, Spieler spieler)
    : suche_(std::move(suche)), spieler_(std::move(spieler)) {}

Mitschnittleser::~Mitschnittleser() {
    *abbruch_ = true;
}

const Wegprobe& Mitschnittleser::probe(int ebene) {
    if (!std::exchange(begonnen_, true))
        suchen();
    return proben_[static_cast<std::size_t>(ebene)];
}

void Mitschnittleser::suchen() {
    const auto datei = std::make_shared<std::optional<Mitschnittdatei>>();
    arbeit_.auftrag(
        [datei, suche = suche_] {
            *datei = suche();
            return datei->has_value();
        },
        [this, datei](bool gefunden) {
            if (gefunden)
                nachspielen(**datei);
        });
}

void Mitschnittleser::nachspielen(const Mitschnittdatei& datei) {
    for (auto& probe : proben_)
        probe = {Wegprobe::Stand::Wartet, nullptr, datei.zeitpunkt};
    const auto weg = std::make_shared<std::optional<Stickweg>>();
    arbeit_.auftrag(
        [weg, datei, abbruch = abbruch_, spieler = spieler_] {
            *weg = spieler(datei, *abbruch);
            return weg->has_value();
        },
        [this, weg](bool gespielt) {
            for (std::size_t ebene = 0; ebene < proben_.size(); ++ebene) {
                proben_[ebene].stand = gespielt ? Wegprobe::Stand::Da : Wegprobe::Stand::Unbrauchbar;
                if (gespielt)
                    proben_[ebene].weg = &wege_[ebene].emplace(std::move((**weg)[ebene]));
            }
            emit gelesen();
        });
    emit gelesen();
}

std::optional<Stickweg> mitschnittNachspielen(Stickseite seite, const Mitschnittdatei& datei,
                                              const std::atomic<bool>& abbruch) {
    const auto programm = spielerprogramm();
    const QTemporaryDir ordner; // what the player lays down goes also where it is broken off
    if (programm.isEmpty() || !ordner.isValid())
        return std::nullopt;
    QProcess prozess;
    auto umgebung = QProcessEnvironment::systemEnvironment();
    umgebung.insert("TMPDIR", ordner.path());
    prozess.setProcessEnvironment(umgebung);
    prozess.setStandardInputFile(QProcess::nullDevice());
    prozess.setStandardErrorFile(QProcess::nullDevice());
    prozess.start(programm, {"--weg", seite == Stickseite::Links ? "links" : "rechts", qt(datei.pfad)});
    QByteArray text;
    if (!prozess.waitForStarted() || !mitlesen(prozess, text, abbruch)) {
        prozess.kill();
        prozess.waitForFinished();
        return std::nullopt;
    }
    if (prozess.exitStatus() != QProcess::NormalExit || prozess.exitCode() != 0)
        return std::nullopt;
    return stickwegLesen({text.constData(), static_cast<std::size_t>(text.size())});
}
