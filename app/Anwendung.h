// SPDX-License-Identifier: GPL-3.0-or-later
// The application object: it speaks German, and an exception that a handler lets through ends that handler,
// not the process.
#pragma once

#include "app/Geisterklicks.h"
#include "app/Sprache.h"

#include <QApplication>

class Anwendung final : public QApplication {
public:
    Anwendung(int& anzahl, char** worte);
    bool notify(QObject* empfaenger, QEvent* ereignis) override;

private:
    Sprache sprache_{Sprache::uebersetzungen()};
    Geisterklicks geisterklicks_;
};
