// SPDX-License-Identifier: GPL-3.0-or-later
// The help page: opened whole, by chapter, and by F1 in whatever window of the program has the focus.
//
// F1 is taken where no control wanted it: the box that catches keys keeps it.
#pragma once

#include <QObject>
#include <QString>

class Prozess;
class QWidget;
struct GobalVariable;

class Hilfe final : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object. There must be an application.
    Hilfe(const GobalVariable& global, Prozess& prozess);

    /// Opens the page at its beginning; where that fails one message box says so.
    void seiteOeffnen(QWidget* eltern);
    /// Opens it at the chapter `anker`.
    void kapitelOeffnen(QWidget* eltern, const QString& anker);
    /// The chapter that tells of a control: that of the innermost part of a form around it which has one.
    static QString kapitelVon(const QWidget* control);

    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

private:
    void pruefen(QWidget* eltern, bool geoeffnet);

    const GobalVariable& global_;
    Prozess& prozess_;
};
