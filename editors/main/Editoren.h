// SPDX-License-Identifier: GPL-3.0-or-later
// The editors that are open: the one place that knows which of them are loaded.
#pragma once

#include "editors/buttons/Tastenentwurf.h"
#include "editors/common/Einzelform.h"
#include "editors/common/Entwuerfe.h"
#include "editors/slider/Schubentwurf.h"

#include <QObject>
#include <QStringList>

#include <string>

class Achsen;
class Achsendatei;
class AchzenKalib;
class Joystick;
class SchubreglerKonfic;
class Tastatur;
class Zeitgeber;
class frmJoyKonfic;
struct GobalVariable;

class Editoren final : public QObject {
    Q_OBJECT

public:
    Editoren(GobalVariable& global, Achsendatei& achsendatei, Achsen& achsen, Joystick& joystick,
             Zeitgeber& zeitgeber, Tastatur& tastatur);
    ~Editoren() override;

    /// Shows the button editor. One that is open comes to the front as it is; else it is loaded for the
    /// current `Schema`. When that can't be read one message box says why and nothing opens.
    void tastwerkZeigen();
    /// Closes the button editor, if it is open, with all that was not saved.
    void tastwerkEntladen();
    /// Closes the button editor of a `Schema` that is gone: what it holds belongs to nothing any more, and so
    /// does what was discarded for it.
    void schemaVergessen(const std::string& name);
    /// Lets the open editors of a `Schema`, and what was discarded for it, go on under its new name.
    void schemaUmbenannt(const std::string& alt, const std::string& neu);
    /// Titles of the open editors that hold something for a `Schema` that is not saved.
    QStringList ungespeicherte(const std::string& name) const;
    /// Shows the axis assignment form; one that is open comes to the front as it is.
    void achsenZeigen();
    /// Shows the slider editor; one that is open comes to the front as it is.
    void schubreglerZeigen();

signals:
    /// The slider editor has saved, and closes.
    void gespeichert();

private:
    GobalVariable& global_;
    Achsendatei& achsendatei_;
    Achsen& achsen_;
    Joystick& joystick_;
    Zeitgeber& zeitgeber_;
    Tastatur& tastatur_;
    Entwuerfe<Tastenentwurf> tastenentwuerfe_;
    Entwuerfe<Schubentwurf> schubentwuerfe_;
    Einzelform<frmJoyKonfic> tastwerk_;
    Einzelform<AchzenKalib> achzenKalib_;
    Einzelform<SchubreglerKonfic> schubreglerKonfic_;
};
