// SPDX-License-Identifier: GPL-3.0-or-later
// Puts records of runs into files: "Mitschnitte/SCHEMA DATE TIME.spur" beside the database.
#pragma once

#include <QObject>
#include <QString>

#include <optional>
#include <string>

class Nebenarbeit;
class Laufmitschnitt;
struct GobalVariable;

/// What became of a record.
struct Mitschnittablauf {
    QString name;   ///< of the file in its folder, as it came to be called
    QString fehler; ///< why there is none; "" where it was saved
};

class Mitschnittablage final : public QObject {
    Q_OBJECT

public:
    Mitschnittablage(Laufmitschnitt& mitschnitt, const GobalVariable& global);
    ~Mitschnittablage() override;

    /// Saves what is recorded up to now beside the event loop; `fertig` comes when that is done. Does nothing
    /// while one is being saved.
    void speichern();
    /// Saves it at once.
    Mitschnittablauf gleichSpeichern();
    /// Comes back when all is saved.
    void ausarbeiten();

signals:
    void fertig(const QString& name, const QString& fehler);

private:
    Laufmitschnitt& mitschnitt_;
    const GobalVariable& global_;
    Nebenarbeit* schreiber_;
    bool unterwegs_ = false;
};

/// The name of a record's file, `zeitpunkt` "2026-11-22 11.36.05": that of the `Schema` without what a file
/// name does not take, at most so long that the whole fits everywhere.
std::string mitschnittname(const std::string& schema, const std::string& zeitpunkt);

/// Where the records of a database's `Schema`s lie.
std::string mitschnittordner(const std::string& datenbankPfad);

/// A record as it lies there.
struct Mitschnittdatei {
    std::string pfad;
    std::string zeitpunkt; ///< as mitschnittname has it
    bool operator==(const Mitschnittdatei&) const = default;
};
/// The newest record of a `Schema`, by name and first line; none where nothing can be read.
std::optional<Mitschnittdatei> letzterMitschnitt(const std::string& ordner, const std::string& schema);

/// Writes a file into a folder, which is made where there is none, under this name or the next free one,
/// "... (2).spur"; no file is ever replaced. Throws nothing but std::bad_alloc.
Mitschnittablauf mitschnittAblegen(const std::string& ordner, const std::string& name,
                                   const std::string& inhalt);
