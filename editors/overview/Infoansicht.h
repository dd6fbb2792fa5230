// SPDX-License-Identifier: GPL-3.0-or-later
// A look at a layer in its own editor, which stands there disabled.
//
// The editors that it shows are its own, not those that the user has opened, and they work on a state of
// their own: a look touches neither what is not saved there, nor a run, nor the current `Schema`.
#pragma once

#include "editors/buttons/Tastenentwurf.h"
#include "editors/common/Entwuerfe.h"
#include "editors/common/Fenster.h"
#include "engine/run/Laufzustand.h"

#include <QObject>

#include <map>
#include <string>

class Laufsteuerung;
class QWidget;
class Tastatur;
class Zeitgeber;

/// The editor that was shown last.
enum class InfoEditor : std::int16_t { Keiner = 0, frmJust = 1, frmJustr = 2, frmJoyKonfic = 3 };

class Infoansicht final : public QObject {
    Q_OBJECT

public:
    /// Paths are looked up in `global` at each look; `gamepadXml` is the path of the axis assignment file.
    Infoansicht(const GobalVariable& global, const std::string& gamepadXml, Joystick& joystick,
                Laufsteuerung& laufsteuerung, Zeitgeber& zeitgeber, Tastatur& tastatur);
    ~Infoansicht() override;

    /// Shows the layer of an index of 0 to 8, as the overview form numbers them, beside `neben` where the
    /// screen has room for it; it does not take the focus. Where its editor is shown already it is loaded
    /// anew. Throws LaufzeitFehler when the layer can't be read, 3021 for a `Schema` that does not exist:
    /// looking must not lay lines for it.
    void zeigen(int index, const std::string& schemaName, const QWidget& neben);

    /// Which editor shows the layer of an index.
    static InfoEditor editorVon(int index);
    /// Closes an editor, if it is shown.
    void entladen(InfoEditor editor);
    void alleEntladen();
    /// Closes what shows a `Schema` that is gone.
    void schemaVergessen(const std::string& name);

signals:
    /// The last editor that was shown has gone; also when the user has closed it.
    void leer();

private:
    struct Gezeigt {
        Formbesitz<QWidget> form;
        std::string schemaName;
    };

    void stickZeigen(InfoEditor editor, int ebene, const QWidget& neben);
    void tastenZeigen(int ebene, const QWidget& neben);
    void zustandSetzen(InfoEditor editor, const std::string& schemaName);
    void hinstellen(InfoEditor editor, Formbesitz<QWidget> form, const QWidget& neben);

    const GobalVariable& global_;
    Joystick& joystick_;
    Laufsteuerung& laufsteuerung_;
    Zeitgeber& zeitgeber_;
    Tastatur& tastatur_;
    Laufzustand zustand_;                ///< of the editors that are shown; outlives them
    Entwuerfe<Tastenentwurf> entwuerfe_; ///< nothing can be changed, so there is never one
    std::map<InfoEditor, Gezeigt> gezeigt_;
};
