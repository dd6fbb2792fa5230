// SPDX-License-Identifier: GPL-3.0-or-later
// A field for the name of a new `Schema`, and below it what is wrong with the name that stands there.
#pragma once

#include <QWidget>

#include <functional>
#include <string>

class QLabel;
class QLineEdit;

class Namenszeile final : public QWidget {
    Q_OBJECT

public:
    /// `hindernis` gives why a name can't be, in German, or "".
    explicit Namenszeile(std::function<std::string(const std::string&)> hindernis);

    void setzeName(const std::string& name);
    std::string name() const;
    bool gueltig() const { return gueltig_; }

signals:
    void geaendert();

private:
    void pruefen();

    const std::function<std::string(const std::string&)> hindernis_;
    QLineEdit* feld_;
    QLabel* hinweis_;
    bool gueltig_ = false;
};
