// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the background pictures of the stick planes from the running game.
//
// While its remote control is on the pad chooses the layer and takes the pictures:
//
//   Viereck, Kreuz, Kreis   layer 0, 1, 2
//   L-Stick, R-Stick        the screen becomes the picture of the left or right stick on that layer
//
// Only a button that is alone down counts. A picture goes to the preview of the layer that was chosen when
// its button was polled, however long the screen takes to deliver it, and is written beside the event loop.
// Its tone comes when it lies safe in its file.
//
// While a picture is on its way to a preview no other is taken for it:
//
//   Frei --button--> Erwartet --picture--> Frei
//                       |
//                       +--none, or not within 5 s, or the poll is stopped--> Frei, with the long tone
//
// So a held button takes one at each poll; where the disk is slower than that, as many wait for it as fit
// into memory with ease, and then polls are passed over.
//
// A picture that comes after all is taken as long as no newer one was asked for.
//
// The pictures of the opening are read beside the event loop, too: six of a large screen take longer than a
// running `Schema` may stand still.
//
// Errors have no box, as the game is in front: a failed poll has the long tone, and so has a picture that
// could not be taken or saved. Which pictures these are stands in the form until a newer one comes there.
// What fails while the user closes the form has a box: nobody would see it in the form, and whoever closes it
// is not in the game.
#pragma once

#include "platform/Joystick.h"
#include "platform/Zeitgeber.h"

#include <QImage>
#include <QWidget>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

class Nebenarbeit;
class Bildvorschau;
class QGroupBox;
class QLabel;
class Schirmaufnahme;
class Tongeber;
struct Schirmbild;

/// What the form takes from the platform.
struct Schirmgeraete {
    Joystick& joystick;
    Zeitgeber& zeitgeber;
    Tongeber& ton;
    Schirmaufnahme& aufnahme;
};

class ScreenChecken final : public QWidget {
    Q_OBJECT

public:
    /// Shows the pictures of `schema` in the folder `ordner`.
    ScreenChecken(std::string ordner, std::string schema, const Schirmgeraete& geraete);
    ~ScreenChecken() override;

    const std::string& schema() const { return schema_; }
    /// Stops the remote control and comes back when all pictures are written. May be called twice.
    void entladen();

signals:
    void geschlossen();

protected:
    void closeEvent(QCloseEvent* ereignis) override;

private:
    static constexpr int VORSCHAUEN = 6;
    static constexpr int HALTEPLATZ = VORSCHAUEN; ///< index of the hidden Image1
    static constexpr std::int16_t KEIN_TAUSCH = 6;
    using Fertig = std::function<void(bool)>;

    enum class Stand { Frei, Erwartet };
    /// What became of the last picture for a preview.
    enum class Mangel { Keiner, NichtAufgenommen, NichtGespeichert };
    /// A picture of the screen on its way to a preview.
    struct Lieferung {
        Stand stand = Stand::Frei;
        unsigned bestellung = 0; ///< number of the one asked for last
        int zuSchreiben = 0;     ///< pictures that are not in their file yet
        Mangel mangel = Mangel::Keiner;
        std::unique_ptr<Formularzeitgeber> frist;
    };

    void aufbauen();
    QWidget* kopf(const char* text);
    void Frame1Bauen();
    void verbinden();

    void bilderLaden();
    void Command1Klick(int index);
    void Timer1_Timer();
    void ebeneWaehlen(std::int16_t ebene);
    void SnapSh(std::string_view Seite);
    void aufgenommen(int index, unsigned bestellung, const Schirmbild& bild);
    static bool aufgeben(Lieferung& lieferung);
    void Image1_MouseDown(int index, Qt::MouseButton taste);
    void Neu();
    void tauschen(int eine, int andere);
    void speichern(int index, Fertig fertig);
    void nichtGekommen(Lieferung& lieferung);
    void gespeichert(int index, bool gelungen);
    void mangelSetzen(Lieferung& lieferung, Mangel mangel);
    QString mangeltext() const;
    QString namen(Mangel mangel) const;
    void fehlerton();
    void Shape1Legen();
    void Frame1Zeigen(int index);

    Bildvorschau& vorschau(int index) { return *vorschauen_[static_cast<std::size_t>(index)]; }
    const std::string& dateiname(int index) const { return dateinamen_[static_cast<std::size_t>(index)]; }

    Schirmgeraete geraete_;
    const std::string ordner_;
    const std::string schema_;
    std::array<std::string, VORSCHAUEN> dateinamen_;
    std::int16_t ScreenEbene_ = 0; ///< chosen on the pad
    std::int16_t ScreenWahl_ = 0;
    std::int16_t ScreenTausch_ = KEIN_TAUSCH;
    std::array<Lieferung, VORSCHAUEN> lieferungen_; ///< by the preview

    std::array<Bildvorschau*, VORSCHAUEN + 1> vorschauen_{};
    QWidget* auswahlrahmen_ = nullptr;
    QGroupBox* auswahltafel_ = nullptr;
    QLabel* maengel_ = nullptr;
    Nebenarbeit* schreiber_ = nullptr;
    std::stop_source ladeende_; ///< what is not read by then is not wanted any more
    std::unique_ptr<Formularzeitgeber> abfrage_;
};
