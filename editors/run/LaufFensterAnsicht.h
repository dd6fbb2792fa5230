// SPDX-License-Identifier: GPL-3.0-or-later
// The window of a running `Schema`: controls on one side, the engine's output on the other.
#pragma once

#include "base/Spuren.h"
#include "editors/run/Haltebericht.h"
#include "editors/run/Laufbeigaben.h"
#include "editors/run/Sofortschrift.h"
#include "engine/run/LaufAnzeige.h"
#include "engine/run/LaufFenster.h"
#include "platform/Zeitgeber.h"

#include <QWidget>

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QFrame;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QTimer;
class Standanzeige;

class LaufFensterAnsicht final : public QWidget, private LaufAnzeige {
    Q_OBJECT

public:
    static constexpr int ACHSENBERICHTE = 4; ///< `Text3`(0 to 3)

    /// `umgebung` without its display, which this window is.
    LaufFensterAnsicht(Laufzustand& zustand, Joystick& joystick, Eingabe& eingabe, Zeitgeber& zeitgeber,
                       const Laufbeigaben& beigaben = {});
    ~LaufFensterAnsicht() override;

    /// Reads the `Schema` and starts the poll. Throws LaufzeitFehler when it can't be read.
    void laden();
    /// Ends the run and hides the window; may be called twice. Gives the error that kept the scroll bars from
    /// being stored.
    std::optional<LaufzeitFehler> entladen();
    /// Ends the run, and leaves this window and all others as they are.
    std::optional<LaufzeitFehler> ohneFensterBeenden();
    /// Tells what became of a record.
    void mitschnittZeigen(const QString& text);

signals:
    void mitschnittGewuenscht();
    void hauptformVerbergenGewuenscht();
    void hauptformZurueckGewuenscht(bool zeigen);
    /// The run was stopped by an error; the window still stands.
    void laufAbgebrochen(int nummer, const QString& text);
    /// The user has closed the window.
    void geschlossen();

protected:
    void closeEvent(QCloseEvent* ereignis) override;

private:
    QWidget* kopf();
    QWidget* bedienung();
    QWidget* stand();
    QWidget* ausgabegruppe();
    QWidget* wiederholungszeile();
    QPushButton* mitschnittknopf();
    QWidget* fusszeile();
    Laufumgebung umgebung(Eingabe& eingabe, Zeitgeber& zeitgeber, Streuablage* streuablage);
    void bedienen(const QString& was, const std::function<void()>& schritt);
    std::optional<LaufzeitFehler> laufBeenden();
    QWidget* testfeldBauen();
    QWidget* reglergitter();
    QWidget* meldungszeile();
    QWidget* ausgabezeile();
    QScrollBar* regler(int index);
    QLabel* reglerwert(int index);
    void Option1Klick(int index);
    void Command1Klick(int index);
    void spurenSchreiben();
    void berichteSchreiben();
    void standZeigen();

    void titel(const std::string& text) override;
    void lblUmschalt(std::string_view text) override;
    void gedruecktePadtasten(int zahl) override;
    void Erg(int index, const std::string& text) override;
    void HScroll1(int index, int wert) override;
    void HScroll2(int wert) override;
    void Text3(int index, const std::string& text) override;
    void Command1(int index, std::string_view text) override;
    void testfeld(bool offen) override;
    void Option1(int index) override;
    void hauptformVerbergen() override;
    void hauptformZurueck(bool zeigen) override;
    void abgebrochen(const LaufzeitFehler& fehler) override;

    Laufzustand& zustand_;
    Joystick& joystick_;
    Laufmitschnitt* mitschnitt_;
    QLabel* mitschnittmeldung_ = nullptr;
    Sofortschrift schrift_;
    std::array<QPushButton*, 2> knoepfe_{};
    std::array<QRadioButton*, 3> ausgabearten_{};
    QLabel* umschaltung_ = nullptr;
    QLabel* gedrueckte_ = nullptr;
    QWidget* testfeld_ = nullptr;
    QPlainTextEdit* testtext_ = nullptr;
    std::array<QScrollBar*, REGLER> regler_{};
    QScrollBar* wiederholregler_ = nullptr;
    std::array<QPlainTextEdit*, ACHSENBERICHTE> achsenberichte_{};
    std::array<QString, ACHSENBERICHTE> berichte_; // what Text3 shows from the next time it is written
    QTimer* berichtstakt_;
    std::array<QLabel*, SPUREN> spurfelder_{};
    std::array<QString, SPUREN> spuren_; // what Erg shows as soon as the test panel does
    Standanzeige* standanzeige_ = nullptr;
    Haltebericht haltebericht_;
    std::chrono::milliseconds laufzeit_{0}; ///< of the looks at what is held
    std::unique_ptr<Formularzeitgeber> standtakt_;
    std::unique_ptr<LaufFenster> lauf_;
};
