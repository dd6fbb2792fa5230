// SPDX-License-Identifier: GPL-3.0-or-later
// The axis assignment form: says for each of the six axes of the pad what it is.
//
// The user moves a control of the pad, sees whose bar moves, and sets the two lists beside that bar. Nothing
// is kept until the choices are confirmed; they go to the `Schema` that the main form
// shows then; if that is not the one they were loaded for, the user is asked first.
#pragma once

#include "platform/Joystick.h"
#include "platform/Zeitgeber.h"
#include "store/files/Achsendatei.h"

#include <QWidget>

#include <array>
#include <memory>
#include <string>

class QComboBox;
class QGroupBox;
class QScrollBar;

class AchzenKalib final : public QWidget {
    Q_OBJECT

public:
    /// Shows the assignment that `achsen` has in force.
    AchzenKalib(Achsendatei& achsendatei, Joystick& joystick, Zeitgeber& zeitgeber);

    const std::string& geladenesSchema() const { return schema_; }
    /// Its `Schema` has another name now.
    void schemaUmbenannt(const std::string& neu) { schema_ = neu; }

protected:
    void closeEvent(QCloseEvent* ereignis) override;

private:
    struct Zeile {
        QScrollBar* VScroll1;
        QComboBox* Auswahl;
        QComboBox* Richtung;
    };

    QWidget* rahmengitter();
    QGroupBox* rahmen(int achse);
    QWidget* hinweise();
    QWidget* knopfzeile();

    void belegungZeigen();
    void Timer1_Timer();
    void bestaetigen();

    Achsendatei& achsendatei_;
    std::string schema_; ///< whose values were loaded
    Joystick& joystick_;
    JOYINFOEX joystickinfo_;
    std::array<Zeile, ACHSEN> zeilen_{};
    std::unique_ptr<Formularzeitgeber> abfrage_;
};
