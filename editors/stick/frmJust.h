// SPDX-License-Identifier: GPL-3.0-or-later
// The stick editor: divides the plane of one stick into fields by lines and gives the fields actions.
//
// One form for both sticks; what tells `frmJust` from `frmJustr` is a Justiereigenart. The mouse on lines and
// arrows is Linienzug's, which this form serves with its controls and the store. Every change is stored when
// it is made, under the `Schema` that was loaded: the main form may have gone on to another one meanwhile.
#pragma once

#include "base/LaufzeitFehler.h"
#include "editors/stick/Justiereigenart.h"
#include "editors/stick/Linienzug.h"
#include "editors/stick/Schrittfolge.h"
#include "editors/stick/Streuansicht.h"
#include "platform/Zeitgeber.h"
#include "store/schema/Stickanweisung.h"
#include "store/schema/Stickschritt.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class Aktionstafel;
class Ebenenstimme;
class Justiertafeln;
class Padzeile;
class Laufsteuerung;
class Mitschnittleser;
class Stickebene;
class Tastatur;

class frmJust final : public QWidget, private Justierflaeche {
    Q_OBJECT

public:
    frmJust(const Justiereigenart& art, Laufzustand& zustand, Laufsteuerung& laufsteuerung,
            Zeitgeber& zeitgeber, Tastatur& tastatur);
    ~frmJust() override;

    /// Load of the form: reads lines and picture of the current `Schema`. Throws LaufzeitFehler when the
    /// lines can't be read; the form is to be dropped then.
    void laden();
    /// What closing does to the state that all share; the form's timers stop. May be called twice.
    void entladen();

    /// Shows the form again after `ScreenChecken`: with the new pictures, on layer 0; on its layer where a
    /// field is chosen.
    void hintergrundGeaendert();
    /// Chooses a layer, as its option on the panel does.
    void ebeneWaehlen(int ebene);

    /// The `Schema` whose lines were read at load.
    const std::string& geladenesSchema() const { return schema_; }
    /// Its `Schema` has another name now.
    void schemaUmbenannt(const std::string& neu);

signals:
    void hauptformVerbergen();
    /// "Hintergrund" was clicked: the form has gone out of sight.
    void hintergrundGewuenscht();
    void geschlossen();

protected:
    void closeEvent(QCloseEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;
    void showEvent(QShowEvent* ereignis) override;
    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

private:
    void aufbauen(Zeitgeber& zeitgeber, Tastatur& tastatur);
    void padzeileBauen();
    void padzeileLegen();
    void verbinden();
    void einpassen();
    void stimmeGeben();
    Streuansicht::Quelle streuquelle();

    /// What is saved in `arbeit`, by one act of the user, is one step. An error is told.
    void gesichert(const std::function<void()>& arbeit);
    void alsTat(const std::function<void()>& arbeit);
    Sticklinien lesen();
    void aktionenLesen(Database& datenbank);
    void bildLaden(int ebene);
    void linienLegen();
    void Uschalt(int ebene);
    void Check2Klick(bool an);
    void maskeDesSticksSetzen(std::int32_t maske);
    void maskeSetzen(std::int32_t maske);
    void Command1Klick(int index);
    void streubildZeigen(bool an);
    void streubildZuruecksetzen();
    void streubildNachsehen();
    void mitschnittleserBauen();
    void Timer1Takt();
    void freigelegt();
    void tafelnLegen();
    void aktionstafelLegen();
    Feldschluessel aktionsschluessel() const;

    // frmJustSchritte.cpp: what can be taken back
    void schritttastenGeben();
    void gespeichert(const Zeilenschritt& schritt, const Linientabelle& linien,
                     const std::string& andere = {});
    void tatAbschliessen();
    std::string aktionsname(const std::string& text) const;
    Stickschritt* wendbarer(Schrittrichtung richtung);
    void schrittWenden(Schrittrichtung richtung);
    void schrittZeigen(const Stickschritt& schritt, Schrittrichtung richtung);
    void vonAnderenGeaendert();
    void menueZeigen(QPoint wo);

    bool linieGezeigt(std::size_t richtung, int index) const override;
    double linienort(std::size_t richtung, int index) const override;
    bool linieRot(std::size_t richtung, int index) const override;
    void linieFaerben(std::size_t richtung, int index, bool rot) override;
    void PositionFestlegen(std::size_t richtung, int slot) override;
    bool RechteckBGezeigt() const override;
    void BereichFestlegen() override;
    bool fraAktionGezeigt() const override;
    void fraAktionVerbergen() override;
    void fraAktionOeffnen(double x, double y) override;
    void AktionSpeichern() override;
    void Zeichnen() override;
    void tafelnSperren(bool gesperrt) override;
    void tafelnZurueckstellen() override;
    void StickLinienSpeichern() override;
    void StickLinieVerlegen(const Linientabelle& linien, std::size_t richtung, std::int32_t neu,
                            std::int32_t alt) override;
    bool StickLinieEntfernen(const Linientabelle& ohne, std::size_t richtung, std::int32_t linie) override;
    void melden(std::string_view text) override;

    const Justiereigenart& art_;
    Laufzustand& zustand_;
    GobalVariable& global_;
    Laufsteuerung& laufsteuerung_;
    Justierstand stand_;
    Linienzug zug_{stand_, *this};
    Feldanker feldanker_{};
    QPointF tafelklick_; ///< what the action panel was opened by, in plane units
    Punktrechteck livefeld_;
    std::string schema_;           ///< whose lines, actions and pictures these are
    std::int32_t StickSperre_ = 0; ///< as the form shows it; stored with the lines
    bool geladen_ = false;
    Linientabelle gespeicherte_{}; ///< as they were read or saved last
    std::string alteAktion_;       ///< of the field whose panel is open
    Schrittfolge folge_;
    /// What the act that is on has saved.
    struct Tat {
        Linientabelle vorher;
        Zeilenschritt zeilen;
        std::string andere;
    };
    std::optional<Tat> tat_;
    int tattiefe_ = 0;                   ///< of acts inside each other: a layer that is chosen in one
    bool gehalten_ = false;              ///< the act is that of a key that is held down
    int takteSeitBlick_ = 0;             ///< on what was counted
    std::optional<Fehlernummer> gesagt_; ///< the last error told, until the store can be read again

    Stickebene* ebene_ = nullptr;
    Padzeile* padzeile_ = nullptr;
    Justiertafeln* tafeln_ = nullptr;
    Aktionstafel* aktionstafel_ = nullptr;
    QSize vorgabe_;      ///< what it comes with, until its own frame is known; then null
    QSize freieGroesse_; ///< of the window when it was last uncovered
    std::unique_ptr<Streuansicht> streuung_;
    std::unique_ptr<Mitschnittleser> mitschnittleser_;
    std::unique_ptr<Formularzeitgeber> liveabfrage_;
    std::unique_ptr<Ebenenstimme> stimme_; ///< goes first: a form that goes away still has events
};
