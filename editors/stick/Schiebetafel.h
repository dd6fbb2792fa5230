// SPDX-License-Identifier: GPL-3.0-or-later
// A panel at the lower edge of the plane: a strip that slides up when the mouse comes over it and falls back
// two seconds later.
//
//   mouse over it      opening on (25 ms), closing off
//   opening ticks      a step higher; high enough: opening off, closing on (2000 ms)
//   closing ticks      a strip again, closing off
//   focus by a key     as the mouse over it; a strip again only after the focus has gone
//
// Top and height are plane units, so that the strip is as thin on a small window; what lies on the panel
// shows as far as the panel is high.
#pragma once

#include "platform/Zeitgeber.h"

#include <QFrame>

#include <memory>

/// The numbers of a panel.
struct Schiebemass {
    int hoehe;                               ///< of the strip, plane units
    int offen;                               ///< slides as long as it is lower than this
    std::chrono::milliseconds ruheIntervall; ///< of the closing timer while it is off
};

class Schiebetafel final : public QFrame {
    Q_OBJECT

public:
    static constexpr int STREIFEN_OBEN = 63828; ///< top of the strip

    Schiebetafel(QWidget* ebene, const QString& titel, const Schiebemass& mass, Zeitgeber& zeitgeber);

    /// What lies on the panel, below its title; takes it over.
    void inhaltSetzen(QWidget* inhalt);
    /// Back to a strip of this height; a panel that is sliding goes on from there.
    void zurueckstellen(int hoehe);
    /// Lays the panel on the plane as large as that is now, its middle at pixel `mitte` across.
    void legen(double mitte);
    /// Stops sliding for good.
    void anhalten();

    int oben() const { return oben_; }
    int hoehe() const { return hoehe_; }
    /// Width of the panel, in pixels.
    int noetigeBreite() const;
    /// Height of the plane, in pixels, that the open panel needs for its content.
    int noetigeEbenenhoehe() const;

protected:
    void mouseMoveEvent(QMouseEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;
    void changeEvent(QEvent* ereignis) override;
    bool eventFilter(QObject* control, QEvent* ereignis) override;

private:
    void aufschieben();
    void legen();
    int streifenpixel() const;
    int offeneHoehe() const;
    void oeffnenTakt();
    void schliessenTakt();

    const QString titel_;
    const Schiebemass mass_;
    double mitte_ = 0;
    int oben_ = STREIFEN_OBEN;
    int hoehe_;
    bool tastatur_ = false; ///< a key has brought the focus to one of its controls
    QWidget* inhalt_ = nullptr;
    std::unique_ptr<Formularzeitgeber> oeffnen_;
    std::unique_ptr<Formularzeitgeber> schliessen_;
};
