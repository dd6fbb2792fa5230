// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/pictures/ScreenChecken.h"

#include "base/Ebenennamen.h"
#include "editors/common/Farben.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Nebenarbeit.h"
#include "editors/common/Padzeile.h"
#include "editors/pictures/Bildvorschau.h"
#include "editors/stick/Ebenenbild.h"
#include "engine/input/Padabfrage.h"
#include "platform/Schirmaufnahme.h"
#include "platform/Tongeber.h"
#include "store/files/Bilddatei.h"

#include <QAccessible>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QStyleOptionGroupBox>
#include <QStylePainter>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto ABFRAGE = 100ms;
constexpr auto AUFNAHMEFRIST = 5s;
constexpr int MEISTE_UNGESCHRIEBENE = 8; // at 4K 33 MB each

constexpr QSize GROESSE{780, 740};
constexpr int ABSTAND = 14; // between the previews, room for the border
constexpr int RAHMEN = 4;   // width of the border
constexpr QColor RAHMENFARBE{0xe0, 0x20, 0x20};

constexpr int EBENEN = static_cast<int>(EBENENNAMEN.size());
constexpr std::array<const char*, 2> SEITENNAMEN{"Linker Stick", "Rechter Stick"};
constexpr std::array<const char*, 2> BILDENDEN{"L.BMP", "R.BMP"};
constexpr const char* HINWEIS = "Am Game-Pad, nach „Start“: Viereck, Kreuz und Kreis wählen die Ebene, "
                                "L-Stick und R-Stick nehmen den Bildschirm auf.";

// Indices of Command1 and Command2.
enum Fernbedienung { START = 0, STOP = 1 };
enum Auswahl { NEU = 0, WECHSELN = 1 };

struct Ton {
    std::uint32_t frequenz;
    std::uint32_t dauer;
};
constexpr Ton EBENENTON{500, 100};
constexpr Ton BILDTON{250, 100};
constexpr Ton FEHLERTON{300, 500};

constexpr std::uint32_t taste(int nummer) {
    return std::uint32_t{1} << nummer;
}

struct Ebenentaste {
    std::uint32_t wort;
    std::int16_t ebene;
};
constexpr Ebenentaste EBENENTASTEN[] = {{taste(3), 0}, {taste(2), 1}, {taste(1), 2}};
struct Sticktaste {
    std::uint32_t wort;
    const char* Seite;
};
constexpr Sticktaste STICKTASTEN[] = {{taste(10), "L"}, {taste(11), "R"}};

/// The border around the preview chosen; what lies below it takes the mouse.
class Auswahlrahmen final : public QWidget {
public:
    explicit Auswahlrahmen(QWidget* eltern) : QWidget(eltern) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter maler(this);
        maler.setPen(QPen(RAHMENFARBE, RAHMEN, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        const double halb = RAHMEN / 2.0;
        maler.drawRect(QRectF(rect()).adjusted(halb, halb, -halb, -halb));
    }
};

/// The pop-up: a frame with an edge of its own, which parts it from the picture below it.
class Auswahltafel final : public QGroupBox {
public:
    Auswahltafel(const char* text, QWidget* eltern) : QGroupBox(text, eltern) { setAutoFillBackground(true); }
    static constexpr int RAND = 6; // between the edge and the frame

protected:
    void paintEvent(QPaintEvent*) override {
        QStylePainter maler(this);
        QStyleOptionGroupBox rahmen;
        initStyleOption(&rahmen);
        rahmen.rect.setSize(rahmen.rect.size() - QSize(2 * RAND, 2 * RAND));
        maler.translate(RAND, RAND); // styles place the title at the left, whatever the rectangle
        maler.drawComplexControl(QStyle::CC_GroupBox, rahmen);
        maler.resetTransform();
        maler.setPen(umriss(palette().color(QPalette::Window), palette().color(QPalette::WindowText)));
        maler.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
};

/// The same pixels, which live as long as the picture that is made of them.
QImage alsQImage(const Schirmbild& bild) {
    auto* halter = new std::shared_ptr<const std::uint8_t>(bild.pixel);
    const auto freigeben = [](void* alter) {
        delete static_cast<std::shared_ptr<const std::uint8_t>*>(alter);
    };
    QImage ergebnis(bild.pixel.get(), bild.breite, bild.hoehe, bild.zeile, QImage::Format_RGB32, freigeben,
                    halter);
    if (ergebnis.isNull())
        delete halter;
    return ergebnis;
}

} // namespace

ScreenChecken::ScreenChecken(std::string ordner, std::string schema, const Schirmgeraete& geraete)
    : geraete_(geraete), ordner_(std::move(ordner)), schema_(std::move(schema)) {
    setObjectName("ScreenChecken");
    setWindowTitle("Shote the Screen");
    for (int i = 0; i < VORSCHAUEN; ++i)
        dateinamen_[static_cast<std::size_t>(i)] =
            schema_ + std::to_string(i / 2) + BILDENDEN[static_cast<std::size_t>(i % 2)];
    schreiber_ = new Nebenarbeit(this);
    aufbauen();
    verbinden();
    bilderLaden();
    abfrage_ = geraete_.zeitgeber.formularzeitgeber([this] { Timer1_Timer(); });
    for (auto& lieferung : lieferungen_)
        lieferung.frist = geraete_.zeitgeber.formularzeitgeber([this, &lieferung] {
            aufgeben(lieferung);
            nichtGekommen(lieferung);
            fehlerton();
        });
}

ScreenChecken::~ScreenChecken() {
    entladen();
}

// --- layout ---

void ScreenChecken::aufbauen() {
    auto* anordnung = new QVBoxLayout(this);
    anordnung->setSpacing(12);
    auto* gitter = new QGridLayout;
    gitter->setSpacing(ABSTAND);
    for (int seite = 0; seite < 2; ++seite)
        gitter->addWidget(kopf(SEITENNAMEN[static_cast<std::size_t>(seite)]), 0, 1 + seite, Qt::AlignHCenter);
    for (int ebene = 0; ebene < EBENEN; ++ebene) {
        const auto* name = EBENENNAMEN[static_cast<std::size_t>(ebene)];
        gitter->addWidget(kopf(name), 1 + ebene, 0);
        for (int seite = 0; seite < 2; ++seite) {
            const int i = 2 * ebene + seite;
            auto* neue = benannt(new Bildvorschau(this), feldname("Image1", i));
            neue->setAccessibleName(
                QString("%1, %2").arg(name, SEITENNAMEN[static_cast<std::size_t>(seite)]));
            gitter->addWidget(neue, 1 + ebene, 1 + seite);
            vorschauen_[static_cast<std::size_t>(i)] = neue;
        }
    }
    anordnung->addLayout(gitter, 1);
    vorschauen_[HALTEPLATZ] = benannt(new Bildvorschau(this), feldname("Image1", HALTEPLATZ));
    vorschauen_[HALTEPLATZ]->hide();

    auto* hinweis = new QLabel(HINWEIS);
    hinweis->setWordWrap(true);
    anordnung->addWidget(hinweis);
    maengel_ = benannt(new QLabel, "lblMangel");
    maengel_->setWordWrap(true);
    maengel_->hide();
    anordnung->addWidget(maengel_);
    auto* zeile = new QHBoxLayout;
    zeile->addWidget(new Padzeile(geraete_.joystick), 1);
    for (const auto& [index, text, tipp] :
         {std::tuple{START, "Start", "Von nun an nimmt das Gamepad Bilder auf"},
          std::tuple{STOP, "Stop", "Das Gamepad nimmt keine Bilder mehr auf"}}) {
        auto* knopf = benannt(new QPushButton(text), feldname("Command1", index));
        knopf->setToolTip(tipp);
        zeile->addWidget(knopf);
    }
    anordnung->addLayout(zeile);

    auswahlrahmen_ = benannt(new Auswahlrahmen(this), "Shape1");
    Frame1Bauen();
    resize(GROESSE.boundedTo(screen()->availableSize()).expandedTo(minimumSizeHint()));
}

QWidget* ScreenChecken::kopf(const char* text) {
    auto* label = new QLabel(text);
    auto schrift = label->font();
    schrift.setBold(true);
    label->setFont(schrift);
    return label;
}

void ScreenChecken::Frame1Bauen() {
    auswahltafel_ = benannt(new Auswahltafel("Bitte wählen", this), "Frame1");
    auto* zeile = new QHBoxLayout(auswahltafel_);
    const int rand = Auswahltafel::RAND;
    zeile->setContentsMargins(zeile->contentsMargins() + QMargins(rand, rand, rand, rand));
    for (const auto& [index, text, tipp] :
         {std::tuple{NEU, "Neu", "Setzt an die Stelle dieses Bildes das leere"},
          std::tuple{WECHSELN, "Wechseln", "Tauscht dieses Bild mit dem, das Sie danach anklicken"}}) {
        auto* knopf = benannt(new QPushButton(text), feldname("Command2", index));
        knopf->setToolTip(tipp);
        zeile->addWidget(knopf);
    }
    auswahltafel_->hide();
}

void ScreenChecken::verbinden() {
    for (int i = 0; i < VORSCHAUEN; ++i) {
        connect(&vorschau(i), &Bildvorschau::gedrueckt, this,
                [this, i](Qt::MouseButton knopf) { Image1_MouseDown(i, knopf); });
        connect(&vorschau(i), &Bildvorschau::verlegt, this, &ScreenChecken::Shape1Legen);
    }
    for (const int index : {START, STOP})
        connect(findChild<QPushButton*>(feldname("Command1", index)), &QPushButton::clicked, this,
                [this, index] { Command1Klick(index); });
    connect(findChild<QPushButton*>(feldname("Command2", NEU)), &QPushButton::clicked, this,
            &ScreenChecken::Neu);
    connect(findChild<QPushButton*>(feldname("Command2", WECHSELN)), &QPushButton::clicked, this,
            [this] { ScreenTausch_ = ScreenWahl_; });
}

void ScreenChecken::Shape1Legen() {
    auswahlrahmen_->setGeometry(vorschau(ScreenWahl_).geometry().adjusted(-RAHMEN, -RAHMEN, RAHMEN, RAHMEN));
    auswahlrahmen_->raise();
    auswahltafel_->raise();
}

void ScreenChecken::Frame1Zeigen(int index) {
    const auto ort = vorschau(index).geometry();
    auswahltafel_->adjustSize();
    const auto rest = size() - auswahltafel_->size();
    auto ecke = ort.center() - auswahltafel_->rect().center();
    ecke.setX(std::clamp(ecke.x(), 0, std::max(0, rest.width())));
    ecke.setY(std::clamp(ecke.y(), 0, std::max(0, rest.height())));
    auswahltafel_->move(ecke);
    auswahltafel_->show();
    auswahltafel_->raise();
}

// --- load and unload ---

void ScreenChecken::bilderLaden() {
    const auto leer = BildLaden(ordner_, ERSATZBILD);
    for (int i = 0; i < VORSCHAUEN; ++i) {
        auto bild = std::make_shared<QImage>();
        schreiber_->auftrag(
            [ordner = ordner_, name = dateiname(i), ende = ladeende_.get_token(), bild] {
                if (!ende.stop_requested())
                    *bild = BildLaden(ordner, name);
                return !bild->isNull();
            },
            [this, i, bild, leer](bool gelungen) {
                if (vorschau(i).bild().isNull()) // or else a newer one has come meanwhile
                    vorschau(i).bildSetzen(gelungen ? *bild : leer);
            });
    }
}

void ScreenChecken::entladen() {
    abfrage_.reset();
    for (auto& lieferung : lieferungen_)
        lieferung.frist.reset();
    ladeende_.request_stop();
    schreiber_->abwarten();
}

void ScreenChecken::closeEvent(QCloseEvent* ereignis) {
    ereignis->accept();
    if (!abfrage_)
        return;
    const auto gesagt = mangeltext();
    const QPointer<ScreenChecken> form = this;
    entladen();
    // The program itself closes the form when the program ends or the `Schema` goes: nobody is there to
    // answer.
    if (const auto text = mangeltext(); ereignis->spontaneous() && !text.isEmpty() && text != gesagt)
        meldung(this, text, windowTitle(), QMessageBox::Warning);
    if (form)
        emit geschlossen();
}

// --- remote control ---

void ScreenChecken::Command1Klick(int index) {
    if (index == STOP) {
        abfrage_->Enabled(false);
        abfrage_->Interval(0ms);
        bool eines = false;
        for (auto& lieferung : lieferungen_)
            if (aufgeben(lieferung)) {
                nichtGekommen(lieferung);
                eines = true;
            }
        if (eines)
            fehlerton(); // one for all of them
        return;
    }
    ScreenEbene_ = 0;
    abfrage_->Interval(ABFRAGE);
    abfrage_->Enabled(true);
}

void ScreenChecken::Timer1_Timer() {
    JOYINFOEX info;
    if (!padAbfragen(geraete_.joystick, info))
        return fehlerton();
    for (const auto& [wort, ebene] : EBENENTASTEN)
        if (info.dwButtons == wort)
            ebeneWaehlen(ebene);
    for (const auto& [wort, seite] : STICKTASTEN)
        if (info.dwButtons == wort)
            SnapSh(seite);
}

void ScreenChecken::ebeneWaehlen(std::int16_t ebene) {
    ScreenEbene_ = ebene;
    geraete_.ton.Beep(EBENENTON.frequenz, EBENENTON.dauer);
}

void ScreenChecken::SnapSh(std::string_view Seite) {
    const int ScreenBasis = 2 * ScreenEbene_;
    const int index = ScreenBasis + (Seite == "L" ? 0 : 1);
    auto& lieferung = lieferungen_[static_cast<std::size_t>(index)];
    if (lieferung.stand != Stand::Frei || lieferung.zuSchreiben >= MEISTE_UNGESCHRIEBENE)
        return;
    lieferung.stand = Stand::Erwartet;
    lieferung.frist->Interval(AUFNAHMEFRIST);
    lieferung.frist->Enabled(true);
    geraete_.aufnahme.aufnehmen(
        [form = QPointer(this), index, bestellung = ++lieferung.bestellung](const Schirmbild& bild) {
            if (form && form->abfrage_)
                form->aufgenommen(index, bestellung, bild);
        });
}

/// Stops waiting for a picture; false when none is waited for.
bool ScreenChecken::aufgeben(Lieferung& lieferung) {
    if (lieferung.stand != Stand::Erwartet)
        return false;
    lieferung.stand = Stand::Frei;
    lieferung.frist->Enabled(false);
    return true;
}

void ScreenChecken::aufgenommen(int index, unsigned bestellung, const Schirmbild& schirm) {
    auto& lieferung = lieferungen_[static_cast<std::size_t>(index)];
    if (bestellung != lieferung.bestellung)
        return; // was given up, and a newer one asked for
    const bool erwartet = aufgeben(lieferung);
    const auto bild = schirm.leer() ? QImage() : alsQImage(schirm);
    if (bild.isNull()) {
        if (erwartet) { // or else it was told before
            nichtGekommen(lieferung);
            fehlerton();
        }
        return;
    }
    ++lieferung.zuSchreiben;
    vorschau(index).bildSetzen(bild);
    speichern(index, [this, index, &lieferung](bool gelungen) {
        --lieferung.zuSchreiben;
        if (gelungen)
            geraete_.ton.Beep(BILDTON.frequenz, BILDTON.dauer);
        gespeichert(index, gelungen);
    });
}

void ScreenChecken::fehlerton() {
    geraete_.ton.Beep(FEHLERTON.frequenz, FEHLERTON.dauer);
}

// --- the mouse on the previews ---

void ScreenChecken::Image1_MouseDown(int index, Qt::MouseButton knopf) {
    if (knopf != Qt::LeftButton)
        return Frame1Zeigen(index);
    ScreenWahl_ = static_cast<std::int16_t>(index);
    Shape1Legen();
    if (ScreenTausch_ != KEIN_TAUSCH)
        tauschen(std::exchange(ScreenTausch_, KEIN_TAUSCH), index);
    auswahltafel_->hide();
}

void ScreenChecken::Neu() {
    const auto leer = BildLaden(ordner_, ERSATZBILD);
    if (leer.isNull()) // the old picture stays, on the form and in its file
        return fehlerton();
    vorschau(ScreenWahl_).bildSetzen(leer);
    speichern(ScreenWahl_, [this, index = ScreenWahl_](bool gelungen) { gespeichert(index, gelungen); });
}

void ScreenChecken::tauschen(int eine, int andere) {
    if (vorschau(eine).bild().isNull() || vorschau(andere).bild().isNull())
        schreiber_->abwarten(); // it may still be on its way from its file, which would be lost
    vorschau(HALTEPLATZ).bildSetzen(vorschau(eine).bild());
    vorschau(eine).bildSetzen(vorschau(andere).bild());
    vorschau(andere).bildSetzen(vorschau(HALTEPLATZ).bild());
    vorschau(HALTEPLATZ).bildSetzen({});
    // The files first change places as they are: a crash between two writes would lose a picture.
    if (eine != andere)
        schreiber_->auftrag([ordner = ordner_, a = dateiname(eine),
                             b = dateiname(andere)] { return bilddateienTauschen(ordner, a, b); },
                            [](bool) {});
    for (const int index : {eine, andere})
        speichern(index, [this, index](bool gelungen) { gespeichert(index, gelungen); });
}

/// The one that was asked for did not come. That one before it is in no file is the worse of the two.
void ScreenChecken::nichtGekommen(Lieferung& lieferung) {
    if (lieferung.mangel == Mangel::Keiner)
        mangelSetzen(lieferung, Mangel::NichtAufgenommen);
}

void ScreenChecken::gespeichert(int index, bool gelungen) {
    mangelSetzen(lieferungen_[static_cast<std::size_t>(index)],
                 gelungen ? Mangel::Keiner : Mangel::NichtGespeichert);
    if (!gelungen)
        fehlerton();
}

// --- what is missing ---

void ScreenChecken::mangelSetzen(Lieferung& lieferung, Mangel mangel) {
    lieferung.mangel = mangel;
    const auto text = mangeltext();
    if (text == maengel_->text())
        return;
    maengel_->setText(text);
    maengel_->setVisible(!text.isEmpty());
    QAccessibleEvent ereignis(maengel_, QAccessible::Alert);
    QAccessible::updateAccessibility(&ereignis);
}

/// The previews that lack something, by their names.
QString ScreenChecken::namen(Mangel mangel) const {
    QStringList namen;
    for (std::size_t i = 0; i < lieferungen_.size(); ++i)
        if (lieferungen_[i].mangel == mangel)
            namen << "„" + vorschauen_[i]->accessibleName() + "“";
    return namen.join(", ");
}

QString ScreenChecken::mangeltext() const {
    QStringList saetze;
    if (const auto welche = namen(Mangel::NichtGespeichert); !welche.isEmpty())
        saetze << QString("Nicht gespeichert: %1. Im Ordner „Bilder“ lässt sich nicht schreiben, oder der "
                          "Datenträger ist voll.")
                      .arg(welche);
    if (const auto welche = namen(Mangel::NichtAufgenommen); !welche.isEmpty())
        saetze << QString("Nicht aufgenommen: %1. Vom Bildschirm kam kein Bild.").arg(welche);
    return saetze.join("\n");
}

void ScreenChecken::speichern(int index, Fertig fertig) {
    schreiber_->auftrag([ordner = ordner_, name = dateiname(index),
                         bild = vorschau(index).bild()] { return BildSpeichern(ordner, name, bild); },
                        std::move(fertig));
}
