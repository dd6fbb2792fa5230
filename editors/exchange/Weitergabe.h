// SPDX-License-Identifier: GPL-3.0-or-later
// Handing whole `Schema`s on and taking them up, with all that is asked and told meanwhile. The main form
// says what is wanted, and reads its list anew when something has changed.
#pragma once

#include "editors/exchange/Schemamenue.h"
#include "store/schema/Schemabeiwerk.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>
#include <string>

class QFileDialog;
class QWidget;
struct GobalVariable;
struct Schemafund;

class Weitergabe final : public QObject {
    Q_OBJECT

public:
    struct Umfeld {
        QWidget& form; ///< that boxes and dialogs stand before
        const GobalVariable& global;
        std::string gamepadXml;
        std::string programm; ///< name and version, as a file has them
        /// Why a `Schema` can't get another name at present, in German, or "".
        std::function<QString(const std::string& schema)> umbenennenHindert;
        /// Titles of the open editors that hold something for a `Schema` that is not saved.
        std::function<QStringList(const std::string& schema)> ungespeichert;
        /// Whether a run is on.
        std::function<bool()> laeuft;
    };
    explicit Weitergabe(Umfeld umfeld);

    /// Does what was chosen for the current `Schema`.
    void tun(Schematat tat);
    /// Shows what is in a file and takes it up.
    void dateiAufnehmen(const std::string& pfad);
    /// Clears away what a program that died has left of such an act. To be called before the list is read.
    void aufraeumen() const;

signals:
    /// There is a new `Schema`.
    void aufgenommen(const std::string& name);
    void umbenannt(const std::string& alt, const std::string& neu);

private:
    void weitergeben(const std::string& name);
    void aufnehmen();
    void ausDatenbank();
    void umbenennen(const std::string& name);
    void verdoppeln(const std::string& name);

    bool vorlegen(const Schemafund& fund);
    std::string hindernis(const std::string& name, const std::string& ausser = "") const;
    bool wieGespeichert(const std::string& name, const QString& titel);
    QString gewaehlt(const QPointer<QFileDialog>& dialog);
    QString dateiWaehlen(const QString& titel, const QString& filter, const QString& ordner);
    QString dateiBenennen(const std::string& name);
    Schemaplatz platz() const;
    template <class Arbeit> bool gelungen(const QString& was, Arbeit&& arbeit);

    const Umfeld umfeld_;
    QString ordner_; ///< in which the user was last, for a file
};
