// SPDX-License-Identifier: GPL-3.0-or-later
// The action frame of the slider editor: the controls of one field's action. It turns an action into their
// state and their state into an action.
//
// Only what an action reads is checked, and nothing leaves the frame that would break the slider text.
#pragma once

#include "editors/slider/Schubentwurf.h"
#include "formats/Schubtext.h"

#include <QGroupBox>

#include <array>
#include <string>

class QCheckBox;
class QLineEdit;
class QRadioButton;
class QStackedWidget;
class Tastatur;
class Tastenfang;

class Schubaktionsrahmen final : public QGroupBox {
    Q_OBJECT

public:
    /// The key names lie in the database at `datenbankPfad`.
    Schubaktionsrahmen(const std::string& datenbankPfad, Tastatur& tastatur);
    ~Schubaktionsrahmen() override;

    /// Fills the controls. Throws LaufzeitFehler for a value that no control has, and for a key whose name
    /// can't be looked up.
    void zeigen(const Schubaktion& aktion);
    /// Reads the controls. False when something is missing; the user has been told then, and the focus is
    /// where it is missing.
    bool lesen(Schubaktion& aktion);

    /// Takes the key of this code as the one to be pressed. Throws LaufzeitFehler when its name can't be
    /// looked up; the key stays as it was.
    void tasteGewaehlt(int code);

    /// The name of a key, or its code where that has none or can't be looked up.
    QString tastenname(const std::string& code) const;

    /// All that the frame holds and shows, whether or not an action can be read from it.
    Schubrahmenstand stand() const;
    void herstellen(const Schubrahmenstand& stand);

signals:
    /// Something was set or written in the frame, be it by code.
    void geaendert();
    /// "Aktion übernehmen" was clicked.
    void uebernehmenGewuenscht();
    /// A key was pressed in the box for it; it waits for tasteGewaehlt.
    void tasteGefangen(int code);

protected:
    bool eventFilter(QObject* control, QEvent* ereignis) override;

private:
    static constexpr int RICHTUNGEN = 4;
    static constexpr int MAUSTASTEN = 5;
    static constexpr int TASTENARTEN = 2;

    QGroupBox* mausbewegung();
    QGroupBox* maustaste();
    QGroupBox* tastendruck(Tastatur& tastatur);
    QGroupBox* leerfeld();
    QLineEdit* zahlfeld(const QString& name, const QString& text);

    void tasteSetzen(int code, const QString& name);
    void aenderungenMelden();
    void optMaus_Click(int index);
    void tastenzeitenSchalten();
    void zahlfeldVerlassen(QLineEdit* feld);
    bool zahlLesen(QLineEdit& feld, std::string& ziel);

    const std::string& datenbankPfad_;
    int taste_ = 0; // code of the key in txtTaste, 0 none
    QString tastenname_;

    std::array<QRadioButton*, SCHUBARTEN> arten_{};
    QStackedWidget* rahmen_ = nullptr;
    std::array<QRadioButton*, RICHTUNGEN> richtungen_{};
    std::array<QLineEdit*, 2> schritte_{};
    std::array<QRadioButton*, MAUSTASTEN> maustasten_{};
    QLineEdit* scrollPlus_ = nullptr;
    QLineEdit* scrollMinus_ = nullptr;
    QGroupBox* tastenrahmen_ = nullptr;
    Tastenfang* tastenfang_ = nullptr;
    std::array<QRadioButton*, TASTENARTEN> eigenschaften_{};
    std::array<QLineEdit*, 2> zeiten_{};
    QCheckBox* wiederholen_ = nullptr;
};
