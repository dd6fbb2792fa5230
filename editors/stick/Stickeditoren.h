// SPDX-License-Identifier: GPL-3.0-or-later
// The stick editors that stand open, at most one a stick, and the form that makes their pictures.
#pragma once

#include "base/Stickseite.h"
#include "editors/common/Fenster.h"
#include "editors/pictures/ScreenChecken.h"
#include "engine/run/Laufzustand.h"

#include <QObject>

#include <map>
#include <string>

class Laufsteuerung;
class Tastatur;
class frmJust;

class Stickeditoren final : public QObject {
    Q_OBJECT

public:
    Stickeditoren(Laufzustand& zustand, Laufsteuerung& laufsteuerung, Tastatur& tastatur,
                  const Schirmgeraete& geraete);
    ~Stickeditoren() override;

    /// Opens the editor of a stick for the current `Schema`; brings it to the front where it is open, loaded
    /// anew if it shows another `Schema`. When the lines can't be read one message box says why, and what is
    /// open stays.
    void oeffnen(Stickseite seite);
    /// Closes the editors of a `Schema` that is gone, and the form of its pictures: they would lay its lines
    /// and pictures anew.
    void schemaVergessen(const std::string& name);
    /// Lets the open editors of a `Schema` go on under its new name.
    void schemaUmbenannt(const std::string& alt, const std::string& neu);
    /// Whether the form is open that makes pictures of a `Schema`: they get their names from it, some of them
    /// later.
    bool machtBilderVon(const std::string& name) const;

signals:
    void hauptformVerbergen();
    /// An editor was closed: the main form comes back.
    void hauptformZurueck();

private:
    Formbesitz<frmJust> laden(Stickseite seite);
    void schliessen(Stickseite seite);
    void hintergrundOeffnen(const frmJust& von);
    void hintergrundSchliessen();

    Laufzustand& zustand_;
    Laufsteuerung& laufsteuerung_;
    Tastatur& tastatur_;
    Schirmgeraete geraete_;
    std::map<Stickseite, Formbesitz<frmJust>> offen_;
    Formbesitz<ScreenChecken> screenChecken_;
};
