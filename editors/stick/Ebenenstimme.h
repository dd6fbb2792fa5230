// SPDX-License-Identifier: GPL-3.0-or-later
// What the plane of a stick editor says to its user, and how it is used without a mouse: the line of state,
// the mark of the keyboard, the list of fields for assistive technology.
//
// It knows where mouse, mark and stick are. What is chosen, open or in the hand it asks of those who do it.
#pragma once

#include "editors/stick/Ebenenzugang.h"
#include "editors/stick/Feldauskunft.h"
#include "editors/stick/Streuansicht.h"
#include "editors/stick/Tastenwahl.h"

#include <QObject>
#include <QPointF>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class Aktionstafel;
class QKeyEvent;
class Stickebene;
struct Ebenenlage;
struct Wegprobe;

class Ebenenstimme final : public QObject, private Feldliste {
    Q_OBJECT

public:
    /// What the form does and knows.
    struct Umfeld {
        /// Does what may fail, and tells the user if it does.
        std::function<void(const std::function<void()>&)> gesichert;
        /// Whether the mask keeps the stick silent on the layer shown.
        std::function<bool()> gesperrt;
        /// Whether a run is on.
        std::function<bool()> testlauf;
        /// Is told before a key does something whether it is held down.
        std::function<void(bool)> tasteGehalten;
        /// Shows where the stick was, or no longer.
        std::function<void()> streubildWechseln;
        /// Forgets where the stick was, if the user says so.
        std::function<void()> streubildZuruecksetzen;
        /// What the last record says of the layer shown; the first call begins to read it.
        std::function<const Wegprobe&()> mitschnitt;
    };

    Ebenenstimme(Stickebene& ebene, Aktionstafel& tafel, const Justierstand& stand, Linienzug& zug,
                 Justierflaeche& flaeche, Streuansicht& streuung, Umfeld umfeld);
    ~Ebenenstimme() override;

    Feldauskunft& auskunft() { return auskunft_; }

    /// Something that the words tell of has changed, or may have.
    void zeigen();
    /// Says this once, before all else, until the hand does something.
    void ansagen(const std::string& worte);
    /// Lines and fields are others now.
    void felderGeaendert() { markeZeigen(); }
    /// The live point is in a field, where a pad moves it; called at each tick. The words
    /// follow within a tenth of a second.
    void stickSteht(bool padDa, const Stickposition& wo);

protected:
    bool eventFilter(QObject* tafel, QEvent* ereignis) override;

private:
    using Uhr = std::chrono::steady_clock;
    /// What a key did last.
    struct Tastenschritt {
        std::uint64_t zeitpunkt = 0; ///< of its event, in the ms of the window system
        Uhr::duration dauer{0};
    };

    void verbinden();
    void mausBewegt(QPointF wo);
    void mausWeg();
    void markeZeigen();
    bool tasteGedrueckt(const QKeyEvent& ereignis);
    bool streubildtaste(const QKeyEvent& ereignis);
    bool kommtZuFrueh(std::uint64_t zeitpunkt) const;
    void tafelVerlassen();
    Ebenenlage lage() const;
    Feldgitter gitter() const { return Feldgitter(stand_.ebene()); }

    int feldzahl() const override { return gitter().anzahl(); }
    QRectF feldplatz(int nummer) const override;
    QString feldworte(int nummer) const override;
    int markiertesFeld() const override;
    int gewaehltesFeld() const override;
    void feldWaehlen(int nummer) override;
    void feldaktionOeffnen(int nummer) override;

    Stickebene& ebene_;
    Aktionstafel& tafel_;
    const Justierstand& stand_;
    const Linienzug& zug_;
    const Justierflaeche& flaeche_;
    Streuansicht& streuung_;
    const Umfeld umfeld_;
    Tastenwahl tastenwahl_;
    Feldauskunft auskunft_;
    std::optional<QPointF> maus_; ///< on the plane, in its units
    bool mausZuletzt_ = false;    ///< the words follow the mouse, not the keyboard
    std::optional<Feldanker> stick_;
    bool testlauf_ = false;
    int takteSeitWorten_ = 0;
    Tastenschritt schritt_;
    QString ansage_;
};
