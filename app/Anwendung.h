// SPDX-License-Identifier: GPL-3.0-or-later
// The application object: it speaks German, and an exception that a handler lets through ends that handler,
// not the process.
#pragma once

#include "app/Geisterklicks.h"
#include "app/Sprache.h"
#include "base/LaufzeitFehler.h"

#include <QApplication>

class Anwendung : public QApplication {
public:
    Anwendung(int& anzahl, char** worte);
    bool notify(QObject* empfaenger, QEvent* ereignis) override;

protected:
    /// Tells of an error that a handler has let through. No handler should: what the toolkit holds below it,
    /// some bytes mostly, is not given back (16 of a QPointer, where it was a field's editingFinished).
    virtual void durchgelassen(const LaufzeitFehler& fehler);

private:
    Sprache sprache_{Sprache::uebersetzungen()};
    Geisterklicks geisterklicks_;
};
