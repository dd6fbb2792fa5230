// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked before a `Schema` is taken up, renamed or doubled: dialogs that decide nothing and store
// nothing.
#pragma once

#include "editors/exchange/Schemafund.h"

#include <QDialog>

#include <functional>
#include <string>
#include <vector>

class Ebenenvorschau;
class Namenszeile;
class QComboBox;
class QListWidget;
class QPushButton;

using Namenspruefung = std::function<std::string(const std::string&)>;

/// Asks for a name.
class Namensfrage final : public QDialog {
    Q_OBJECT

public:
    Namensfrage(QWidget* eltern, const QString& titel, const QString& text, const std::string& vorschlag,
                Namenspruefung hindernis);
    std::string name() const;

private:
    Namenszeile* name_;
};

/// Shows what was found, and asks for the name under which it is to be taken up.
class Aufnahmefrage final : public QDialog {
    Q_OBJECT

public:
    Aufnahmefrage(QWidget* eltern, const Schemafund& fund, const std::string& vorschlag,
                  Namenspruefung hindernis);
    std::string name() const;

private:
    QWidget* angaben(const Schemafund& fund);
    QWidget* vorschauen();
    void ebeneZeigen();

    const Schemafund& fund_;
    QComboBox* ebene_ = nullptr;
    std::vector<Ebenenvorschau*> planen_;
    Namenszeile* name_;
};

/// Lets `Schema`s of another database be chosen.
class Datenbankfrage final : public QDialog {
    Q_OBJECT

public:
    Datenbankfrage(QWidget* eltern, const QString& datei, const std::vector<std::string>& namen);
    std::vector<std::string> gewaehlte() const;

private:
    const std::vector<std::string> namen_;
    QListWidget* liste_;
};
