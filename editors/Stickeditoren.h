// The stick editors that stand open: at most one a stick.
#pragma once

#include "engine/Laufzustand.h"
#include "platform/Zeitgeber.h"
#include "store/Stickseite.h"

#include <QObject>

#include <map>
#include <memory>
#include <string>

class Laufsteuerung;
class Tastatur;
class frmJust;

class Stickeditoren final : public QObject {
    Q_OBJECT

public:
    Stickeditoren(Laufzustand& zustand, Laufsteuerung& laufsteuerung, Zeitgeber& zeitgeber,
                  Tastatur& tastatur);
    ~Stickeditoren() override;

    /// Opens the editor of a stick for the current `Schema`; brings it to the front where it is open, loaded
    /// anew if it shows another `Schema`. When the lines can't be read one message box says why.
    void oeffnen(Stickseite seite);
    /// Closes the editors of a `Schema` that is gone: they would lay its lines anew.
    void schemaVergessen(const std::string& name);

signals:
    void hauptformVerbergen();
    /// An editor was closed: the main form comes back.
    void hauptformZurueck();

private:
    struct DannLoeschen {
        void operator()(frmJust* form) const;
    };
    using Form = std::unique_ptr<frmJust, DannLoeschen>;

    Form laden(Stickseite seite);
    void schliessen(Stickseite seite);

    Laufzustand& zustand_;
    Laufsteuerung& laufsteuerung_;
    Zeitgeber& zeitgeber_;
    Tastatur& tastatur_;
    std::map<Stickseite, Form> offen_;
};
