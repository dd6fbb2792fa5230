// SPDX-License-Identifier: GPL-3.0-or-later
// The two panels at the lower edge of a stick editor: the layers, and the buttons with "1 to 1".
//
// They only tell what the user wants; the form does it.
#pragma once

#include "editors/stick/Justiereigenart.h"
#include "store/schema/VarTastenbelegung.h"

#include <QObject>
#include <QSize>

#include <array>

class QBoxLayout;
class QCheckBox;
class QRadioButton;
class QWidget;
class Schiebetafel;
class Stickebene;
class Zeitgeber;

class Justiertafeln final : public QObject {
    Q_OBJECT

public:
    /// Indices of `Command1`.
    enum Knopf { ENDE = 0, TEST = 1, HINTERGRUND = 2 };

    /// Belongs to the plane, as its panels do.
    Justiertafeln(Stickebene& ebene, const Justiereigenart& art, Zeitgeber& zeitgeber);

    /// Pixels of a plane on which the open panels have room for what lies on them.
    QSize noetigeEbene() const;
    /// Lays them on the plane as large as that is now.
    void legen();
    void sperren(bool gesperrt);
    /// Makes strips of them, both of one height.
    void zurueckstellen();
    /// Leaves out what a screen with so much room has none for, of the controls of "Streubild".
    void streubildEinpassen(const QSize& platz);
    /// Stops sliding for good.
    void anhalten();

    bool gewaehlt(int ebene) const;
    /// Does what the user's hand does on the option of a layer or on "1 to 1".
    void waehlen(int ebene);
    void einsZuEinsSetzen(bool an);
    void streubildSetzen(bool an);
    bool streubildGewaehlt() const;

signals:
    /// Another layer was chosen.
    void ebeneGewaehlt(int ebene);
    void einsZuEinsGeaendert(bool an);
    void geklickt(int knopf);
    void streubildGeaendert(bool an);
    void streubildZuruecksetzen();

private:
    QWidget* umschaltinhalt();
    QWidget* befehlsinhalt();
    QBoxLayout* streubildspalte();

    const Stickebene& ebene_;
    Schiebetafel* umschalten_;
    Schiebetafel* schaltflaeche_;
    std::array<QRadioButton*, EBENEN> ebenen_{};
    QCheckBox* einsZuEins_ = nullptr;
    QPushButton* ruecksetzung_ = nullptr;
    QCheckBox* streubild_ = nullptr;
    QBoxLayout* streubildspalte_ = nullptr;
};
