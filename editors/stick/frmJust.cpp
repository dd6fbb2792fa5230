// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/frmJust.h"

#include "base/LaufzeitFehler.h"
#include "base/Rundung.h"
#include "editors/common/Fenster.h"
#include "editors/common/Fensterplatz.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Geduld.h"
#include "editors/common/Hinweistext.h"
#include "editors/common/Padzeile.h"
#include "editors/run/Laufsteuerung.h"
#include "editors/stick/Ebenenbild.h"
#include "editors/stick/Ebenenmass.h"
#include "editors/stick/Ebenenstimme.h"
#include "editors/stick/Ebenenzugang.h"
#include "editors/stick/Justiertafeln.h"
#include "editors/stick/Mitschnittleser.h"
#include "editors/stick/Schiebetafel.h"
#include "editors/stick/Schrittworte.h"
#include "editors/stick/Stickebene.h"
#include "editors/stick/Zustandszeile.h"
#include "store/files/Streubilddateien.h"
#include "store/schema/modKeyCode.h"
#include "store/schema/modSpeichern.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QWindow>

#include <cmath>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr const char* TITEL = "Stick justieren";
constexpr QSize GROESSE{1024, 768};
constexpr QSize KLEINSTE{640, 480};

constexpr int PADZEILENABSTAND = 4; // from the arrows
constexpr int PADZEILENBREITE = 400;
constexpr int PADZEILENDECKUNG = 200; // of 255: the picture shines through
constexpr auto LIVE_INTERVALL = 5ms;
constexpr int STREUBLICK = 100; // ticks of the live point: half a second
constexpr double PUNKT_ANFANG = 32764.5;

constexpr std::int32_t sperrbit(int ebene) {
    return std::int32_t{1} << ebene;
}

Maustaste maustaste(Qt::MouseButton taste) {
    if (taste == Qt::LeftButton)
        return Maustaste::Links;
    return taste == Qt::RightButton ? Maustaste::Rechts : Maustaste::Andere;
}

} // namespace

frmJust::frmJust(const Justiereigenart& art, Laufzustand& zustand, Laufsteuerung& laufsteuerung,
                 Zeitgeber& zeitgeber, Tastatur& tastatur)
    : art_(art), zustand_(zustand), global_(zustand.global), laufsteuerung_(laufsteuerung) {
    setObjectName(art.formname);
    setWindowTitle(TITEL);
    aufbauen(zeitgeber, tastatur);
    verbinden();
    stimmeGeben();
    schritttastenGeben();
    liveabfrage_ = zeitgeber.formularzeitgeber([this] { Timer1Takt(); });
}

frmJust::~frmJust() = default;

// --- layout ---

void frmJust::aufbauen(Zeitgeber& zeitgeber, Tastatur& tastatur) {
    ebenenzugangEinrichten(); // before anybody asks for what the plane is
    ebene_ = new Stickebene(this);
    ebene_->setAccessibleName(art_.ebenenname);
    tafeln_ = new Justiertafeln(*ebene_, art_, zeitgeber);
    aktionstafel_ = new Aktionstafel(
        art_.tafel, tastatur,
        [this](const std::string& nummer) { return KeyCodeSuchen(global_.DatenbankPfad, 0, nummer); },
        ebene_);
    padzeileBauen();

    einpassen();
    vorgabe_ = size();
}

// The plane shows pictures of the screen, and has its shape.
void frmJust::einpassen() {
    const auto platz = fensterplatz(*this);
    const auto passend = schirmfoermig(GROESSE, screen()->size(), platz);
    setMinimumSize(KLEINSTE.boundedTo(passend)
                       .expandedTo(tafeln_->noetigeEbene())
                       .expandedTo(aktionstafel_->sizeHint())
                       .boundedTo(platz));
    resize(passend.expandedTo(minimumSize()));
}

// On the plane below all else; a click on it is one on the plane.
void frmJust::padzeileBauen() {
    auto* zeile = padzeile_ = new Padzeile(zustand_.achsen.joystick());
    zeile->setParent(ebene_);
    zeile->setMaximumWidth(PADZEILENBREITE);
    auto farben = zeile->palette();
    auto grund = farben.color(QPalette::Window);
    grund.setAlpha(PADZEILENDECKUNG);
    farben.setColor(QPalette::Window, grund);
    zeile->setPalette(farben);
    zeile->setAutoFillBackground(true);
    zeile->adjustSize();
    zeile->lower();
}

// Above the strips and beside the arrows, where a game shows least; the line of state stays above it, however
// long the two are.
void frmJust::padzeileLegen() {
    const auto frei =
        ebenenpixel({double(PFEILE_ENDEN), double(Schiebetafel::STREIFEN_OBEN), 0, 0}, ebene_->size());
    padzeile_->move(static_cast<int>(std::ceil(frei.left())) + PADZEILENABSTAND,
                    static_cast<int>(frei.top()) - padzeile_->height());
    ebene_->zustand().untenFreihalten(padzeile_->height());
}

void frmJust::verbinden() {
    connect(ebene_, &Stickebene::gedrueckt, this, [this](Qt::MouseButton taste, QPointF wo) {
        // Where the right button has nothing to do, it opens the menu.
        const bool frei = !RechteckBGezeigt() && !zug_.RandX() && !zug_.RandY();
        gesichert([&] { zug_.gedrueckt(maustaste(taste), wo.x(), wo.y()); });
        if (taste == Qt::RightButton && frei)
            menueZeigen(ebenenpixel({wo, QSizeF()}, ebene_->size()).topLeft().toPoint());
    });
    connect(ebene_, &Stickebene::bewegt, this,
            [this](QPointF wo) { gesichert([&] { zug_.bewegt(wo.x(), wo.y()); }); });
    connect(ebene_, &Stickebene::pfeilGedrueckt, this, [this](Qt::MouseButton taste, int richtung) {
        gesichert([&] { zug_.pfeilGedrueckt(maustaste(taste), static_cast<std::size_t>(richtung)); });
    });
    connect(ebene_, &Stickebene::groesseGeaendert, this, &frmJust::tafelnLegen);
    connect(tafeln_, &Justiertafeln::ebeneGewaehlt, this,
            [this](int ebene) { gesichert([&] { Uschalt(ebene); }); });
    connect(tafeln_, &Justiertafeln::einsZuEinsGeaendert, this, &frmJust::Check2Klick);
    connect(tafeln_, &Justiertafeln::geklickt, this,
            [this](int knopf) { gesichert([&] { Command1Klick(knopf); }); });
    connect(tafeln_, &Justiertafeln::streubildGeaendert, this,
            [this](bool an) { gesichert([&] { streubildZeigen(an); }); });
    connect(tafeln_, &Justiertafeln::streubildZuruecksetzen, this,
            [this] { gesichert([&] { streubildZuruecksetzen(); }); });
}

/// Comes after the form's own connections: it tells what they have made of an event.
void frmJust::stimmeGeben() {
    Ebenenstimme::Umfeld umfeld{
        .gesichert = [this](const std::function<void()>& arbeit) { gesichert(arbeit); },
        .gesperrt = [this] { return (StickSperre_ & sperrbit(stand_.EditorEbene)) != 0; },
        .testlauf = [this] { return laufsteuerung_.geladen(); },
        .tasteGehalten = [this](bool gehalten) { gehalten_ = gehalten; },
        .streubildWechseln = [this] { tafeln_->streubildSetzen(!tafeln_->streubildGewaehlt()); },
        .streubildZuruecksetzen = [this] { gesichert([&] { streubildZuruecksetzen(); }); },
        .mitschnitt = [this]() -> const Wegprobe& { return mitschnittleser_->probe(stand_.EditorEbene); },
    };
    streuung_ = std::make_unique<Streuansicht>(*ebene_, stand_, streuquelle());
    Justierflaeche& flaeche = *this;
    stimme_ = std::make_unique<Ebenenstimme>(*ebene_, *aktionstafel_, stand_, zug_, flaeche, *streuung_,
                                             std::move(umfeld));
}

// Once for an opening: who plays on meanwhile and saves that, too, opens the form anew.
void frmJust::mitschnittleserBauen() {
    mitschnittleser_ = std::make_unique<Mitschnittleser>(
        [ordner = mitschnittordner(global_.DatenbankPfad), schema = schema_] {
            return letzterMitschnitt(ordner, schema);
        },
        [seite = art_.seite](const Mitschnittdatei& datei, const std::atomic<bool>& abbruch) {
            return mitschnittNachspielen(seite, datei, abbruch);
        });
    connect(mitschnittleser_.get(), &Mitschnittleser::gelesen, this, [this] { stimme_->zeigen(); });
}

void frmJust::resizeEvent(QResizeEvent*) {
    ebene_->setGeometry(rect());
    padzeileLegen();
}

void frmJust::tafelnLegen() {
    tafeln_->legen();
    aktionstafelLegen();
}

void frmJust::aktionstafelLegen() {
    const auto groesse = ebene_->einheitenVon(aktionstafel_->size());
    const auto platz = aktionstafelplatz(tafelklick_.x(), tafelklick_.y(), groesse.width(), groesse.height());
    aktionstafel_->move(ebenenpixel({platz.links, platz.oben, 0, 0}, ebene_->size()).topLeft().toPoint());
}

// --- load and unload ---

/// An error ends the handler, not the form.
void frmJust::gesichert(const std::function<void()>& arbeit) {
    mitFehlermeldung(
        this, TITEL, [&] { alsTat(arbeit); },
        [this](const LaufzeitFehler& fehler) { gesagt_ = fehler.nummer(); });
}

// What may fail comes first: nothing that others see has changed then.
void frmJust::laden() {
    schema_ = global_.SchemaName;
    const auto gelesen = lesen();
    geladen_ = true;
    mitschnittleserBauen();
    stand_.linien = gespeicherte_ = gelesen.linien;
    StickSperre_ = gelesen.StickSperre;
    maskeDesSticksSetzen(StickSperre_);
    global_.OffenerEditor = art_.OffenerEditor;
    global_.ZielFormular = art_.formname;
    setWindowTitle(titeltext(qt(schema_)));
    ebene_->Punkt().setzen({PUNKT_ANFANG, PUNKT_ANFANG, 0, 0});
    tafeln_->waehlen(0); // places the lines, loads the picture and draws
    tafeln_->streubildSetzen(global_.StreubildGezeigt);
    ebene_->setFocus();
    liveabfrage_->Interval(LIVE_INTERVALL);
    liveabfrage_->Enabled(true);
}

void frmJust::schemaUmbenannt(const std::string& neu) {
    folge_.umbenennen(schema_, neu);
    schema_ = neu;
    setWindowTitle(titeltext(qt(schema_)));
}

void frmJust::entladen() {
    if (!std::exchange(geladen_, false))
        return;
    liveabfrage_.reset();
    tafeln_->anhalten();
    global_.*art_.beimSchliessen = 0;
}

void frmJust::closeEvent(QCloseEvent* ereignis) {
    ereignis->accept();
    if (!geladen_)
        return;
    entladen();
    emit geschlossen();
}

Sticklinien frmJust::lesen() {
    return StickLinienLesen(global_.DatenbankPfad, art_.seite, schema_,
                            [this](std::string_view text) { melden(text); });
}

void frmJust::bildLaden(int ebene) {
    auto bild = BildLaden(global_.BilderPfad, schema_ + std::to_string(ebene) + std::string(art_.bildende));
    if (bild.isNull())
        bild = BildLaden(global_.BilderPfad, ERSATZBILD);
    ebene_->bildSetzen(bild);
}

// --- uncovered ---

void frmJust::showEvent(QShowEvent* ereignis) {
    QWidget::showEvent(ereignis);
    windowHandle()->installEventFilter(this);
    freieGroesse_ = QSize();
    stimme_->zeigen();
}

bool frmJust::eventFilter(QObject* objekt, QEvent* ereignis) {
    if (objekt == windowHandle() && ereignis->type() == QEvent::Expose && windowHandle()->isExposed()) {
        // A window that only changes its size is exposed, too, many times while the hand draws at it.
        if (const auto vorgabe = std::exchange(vorgabe_, QSize());
            vorgabe.isValid() && gleichGross(vorgabe, size()))
            einpassen();
        const bool gezogen = freieGroesse_.isValid() && freieGroesse_ != size();
        freieGroesse_ = size();
        if (!gezogen)
            QMetaObject::invokeMethod(this, &frmJust::freigelegt, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(objekt, ereignis);
}

// What the store holds replaces the table and the words for it, and nothing else: nothing moves by it, and
// what "1 to 1" says is not stored before the lines are.
void frmJust::freigelegt() {
    if (!geladen_ || zug_.haelt() || QApplication::activeModalWidget())
        return;
    try {
        stand_.linien = gespeicherte_ = lesen().linien;
        Database datenbank = OpenDatabase(global_.DatenbankPfad);
        datenbank.inEinemLesezug([&] { aktionenLesen(datenbank); });
        stimme_->zeigen();
        gesagt_.reset();
    } catch (const LaufzeitFehler& fehler) {
        // A box that tells an error, of this or of what the user did, uncovers the window when it goes:
        // without an end, were the error told each time.
        if (std::exchange(gesagt_, fehler.nummer()) != fehler.nummer())
            fehlermeldung(this, fehler, TITEL);
    }
}

// --- the panels' controls ---

void frmJust::Uschalt(int ebene) {
    zug_.loslassen(); // a line put down on another one leaves that in hand and the panels open
    tafeln_->einsZuEinsSetzen((StickSperre_ & sperrbit(ebene)) != 0);
    if (art_.ebeneVerbirgtRechteckB)
        ebene_->RechteckB().hide();
    stand_.EditorEbene = ebene;
    if (art_.linienVorBild)
        linienLegen();
    bildLaden(ebene);
    if (!art_.linienVorBild)
        linienLegen();
    streuung_->lesen();
    Zeichnen();
}

void frmJust::ebeneWaehlen(int ebene) {
    tafeln_->waehlen(ebene);
}

void frmJust::linienLegen() {
    for (int slot = ERSTE_LINIENZEILE; slot < LINIENPLAETZE; ++slot)
        for (std::size_t d = 0; d < RICHTUNGEN; ++d)
            PositionFestlegen(d, slot);
}

// The mask is stored with the lines. A run that goes on hears of a change at once; it may be one of another
// `Schema`, so that the mask of the sticks is not this form's.
void frmJust::Check2Klick(bool an) {
    auto maske = StickSperre_;
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        if (tafeln_->gewaehlt(ebene))
            maske = an ? maske | sperrbit(ebene) : maske & ~sperrbit(ebene);
    if (maske != StickSperre_) {
        folge_.neu({.ebene = stand_.EditorEbene,
                    .andere = maskenwechsel(an),
                    .sperreVorher = StickSperre_,
                    .sperreNachher = maske});
        maskeSetzen(maske);
    }
    stimme_->zeigen();
}

void frmJust::maskeDesSticksSetzen(std::int32_t maske) {
    auto& vorherige = (zustand_.*art_.stick).StickSperre;
    if (std::exchange(vorherige, maske) != maske)
        laufsteuerung_.eingriff();
}

void frmJust::maskeSetzen(std::int32_t maske) {
    const auto laufende = (zustand_.*art_.stick).StickSperre;
    const auto andere = std::exchange(StickSperre_, maske) ^ maske;
    maskeDesSticksSetzen((laufende & ~andere) | (maske & andere));
}

void frmJust::Command1Klick(int index) {
    global_.SchemaName = global_.Schemaauswahl;
    if (index == Justiertafeln::ENDE) {
        laufsteuerung_.entladen();
        close();
    } else if (index == Justiertafeln::TEST) {
        zug_.loslassen();
        StickLinienSpeichern();
        laufsteuerung_.laden();
    } else if (index == Justiertafeln::HINTERGRUND) {
        emit hintergrundGewuenscht();
        hide();
        setEnabled(false);
    }
}

void frmJust::hintergrundGeaendert() {
    setEnabled(true);
    show();
    if (RechteckBGezeigt()) { // the field belongs to its layer, and so does an action that is being edited
        bildLaden(stand_.EditorEbene);
        return;
    }
    tafeln_->waehlen(1);
    tafeln_->waehlen(0);
}

// --- where the stick was ---

Streuansicht::Quelle frmJust::streuquelle() {
    return {
        .lesen =
            [this](int ebene) {
                laufsteuerung_.streuungAbwarten();
                return Streubilddateien(streubildordner(global_.DatenbankPfad))
                    .laden(schema_, art_.seite, ebene);
            },
        .stempel =
            [this](int ebene) {
                const auto datei =
                    Streubilddateien(streubildordner(global_.DatenbankPfad)).pfad(schema_, art_.seite, ebene);
                std::error_code keine;
                return std::filesystem::last_write_time(datei, keine);
            }};
}

void frmJust::streubildZeigen(bool an) {
    global_.StreubildGezeigt = an;
    streuung_->schalten(an);
    stimme_->zeigen();
}

void frmJust::streubildZuruecksetzen() {
    if (!frage(this, "Soll das Programm vergessen, wo der Stick auf dieser Ebene war?",
               "Streubild zurücksetzen", QMessageBox::No))
        return;
    laufsteuerung_.streuungAbwarten(); // or the last run comes back
    if (!Streubilddateien(streubildordner(global_.DatenbankPfad))
             .zuruecksetzen(schema_, art_.seite, stand_.EditorEbene))
        meldung(this, "Das Streubild ließ sich nicht zurücksetzen.", "Streubild zurücksetzen",
                QMessageBox::Warning);
    streuung_->lesen();
    stimme_->zeigen();
}

/// A run that ends, here or in another copy of the program, adds to what is shown.
void frmJust::streubildNachsehen() {
    if (++takteSeitBlick_ < STREUBLICK)
        return;
    takteSeitBlick_ = 0;
    if (streuung_->nachsehen())
        stimme_->zeigen();
}

// --- live point ---

void frmJust::Timer1Takt() {
    auto& achsen = zustand_.achsen;
    achsen.AchsenLesen();
    auto wo = ebene_->Punkt().platz();
    const auto x = achsen.AchsenWert(art_.x);
    const auto y = achsen.AchsenWert(art_.y);
    if (x)
        wo.moveLeft(*x);
    if (y)
        wo.moveTop(*y);
    ebene_->Punkt().setzen(wo);
    const auto feld = BereichFestlegen2(stand_.ebene(), wo.x(), wo.y());
    if (std::exchange(livefeld_, feld) != feld)
        ebene_->RechteckC().setzen({feld.links, feld.oben, feld.breite, feld.hoehe});
    stimme_->stickSteht(x || y, {gerundet(wo.x()), gerundet(wo.y())});
    streubildNachsehen();
}

// --- what Linienzug works on ---

bool frmJust::linieGezeigt(std::size_t richtung, int index) const {
    return !ebene_->linie(richtung, index).isHidden();
}

double frmJust::linienort(std::size_t richtung, int index) const {
    return ebene_->linie(richtung, index).ort();
}

bool frmJust::linieRot(std::size_t richtung, int index) const {
    return ebene_->linie(richtung, index).farbe() == GREIFFARBE;
}

void frmJust::linieFaerben(std::size_t richtung, int index, bool rot) {
    ebene_->linie(richtung, index).faerben(rot ? GREIFFARBE : LINIENFARBE);
}

void frmJust::PositionFestlegen(std::size_t richtung, int slot) {
    ebene_->linieLegen(richtung, slot - 1, stand_.ebene()[static_cast<std::size_t>(slot)][richtung]);
}

bool frmJust::RechteckBGezeigt() const {
    return !ebene_->RechteckB().isHidden();
}

void frmJust::BereichFestlegen() {
    const auto& klick = stand_.Klickposition;
    const auto feld = ::BereichFestlegen(stand_.ebene(), klick.x, klick.y);
    feldanker_ = feld.anker;
    const auto& r = feld.rechteck;
    ebene_->RechteckB().setzen({double(r.links), double(r.oben), double(r.breite), double(r.hoehe)});
    ebene_->RechteckB().setVisible(!RechteckBGezeigt());
}

// --- actions ---

bool frmJust::fraAktionGezeigt() const {
    return !aktionstafel_->isHidden();
}

void frmJust::fraAktionVerbergen() {
    aktionstafel_->hide();
}

Feldschluessel frmJust::aktionsschluessel() const {
    return {stand_.EditorEbene, feldanker_[0], feldanker_[1], feldanker_[2], feldanker_[3]};
}

// The text is read before the panel opens: one that opened without it would be saved over it.
void frmJust::fraAktionOeffnen(double x, double y) {
    emit hauptformVerbergen();
    const auto text = StickAktionLesen(global_.DatenbankPfad, art_.seite, schema_, aktionsschluessel());
    alteAktion_ = text;
    tafelklick_ = {x, y};
    aktionstafelLegen();
    aktionstafel_->oeffnen(text, feldanker_ == Feldanker{});
}

void frmJust::AktionSpeichern() {
    const auto text = aktionstafel_->aktionstext();
    Zeilenschritt schritt;
    try {
        StickAktionSpeichern(global_.DatenbankPfad, art_.seite, schema_, aktionsschluessel(), text, &schritt);
    } catch (const LaufzeitFehler&) {
        aktionstafel_->show(); // with all that is set on it, which is nowhere else yet
        throw;
    }
    const Feldgitter gitter(stand_.ebene());
    gespeichert(
        schritt, gespeicherte_,
        aktionswechsel(gitter.name(gitter.platz(feldanker_)), aktionsname(alteAktion_), aktionsname(text)));
    Zeichnen();
}

void frmJust::Zeichnen() {
    ebene_->symbole().loeschen();
    stimme_->auskunft().vergessen();
    try {
        Geduld geduld(isVisible() ? this : nullptr);
        Database datenbank = OpenDatabase(global_.DatenbankPfad);
        datenbank.fortgangFragen([&] { return geduld.weiter(); });
        datenbank.inEinemLesezug([&] {
            aktionenLesen(datenbank);
            ZonenZeichnen(datenbank, art_.seite, schema_, stand_.EditorEbene, ebene_->symbole());
        });
    } catch (const LaufzeitFehler&) {
        ebene_->symboleZeigen(); // as far as it came
        stimme_->zeigen();
        throw;
    }
    ebene_->symboleZeigen();
    stimme_->zeigen();
}

void frmJust::aktionenLesen(Database& datenbank) {
    stimme_->auskunft().lesen(datenbank, art_.seite, schema_, stand_.EditorEbene);
}

// --- store and panels ---

void frmJust::tafelnSperren(bool gesperrt) {
    tafeln_->sperren(gesperrt);
}

void frmJust::tafelnZurueckstellen() {
    tafeln_->zurueckstellen();
}

void frmJust::StickLinienSpeichern() {
    Zeilenschritt schritt;
    ::StickLinienSpeichern(global_.DatenbankPfad, art_.seite, schema_, {stand_.linien, StickSperre_},
                           &schritt);
    gespeichert(schritt, stand_.linien);
}

void frmJust::StickLinieVerlegen(const Linientabelle& linien, std::size_t richtung, std::int32_t neu,
                                 std::int32_t alt) {
    Geduld geduld(this);
    Zeilenschritt schritt;
    ::StickLinieVerlegen(
        global_.DatenbankPfad, art_.seite, schema_, {linien, StickSperre_},
        {stand_.EditorEbene, static_cast<int>(richtung), neu, alt}, [&] { return geduld.weiter(); },
        &schritt);
    gespeichert(schritt, linien);
}

bool frmJust::StickLinieEntfernen(const Linientabelle& ohne, std::size_t richtung, std::int32_t linie) {
    Zeilenschritt schritt;
    const bool entfernt =
        ::StickLinieEntfernen(global_.DatenbankPfad, art_.seite, schema_, {ohne, StickSperre_},
                              stand_.EditorEbene, static_cast<int>(richtung), linie, &schritt);
    gespeichert(schritt, entfernt ? ohne : gespeicherte_,
                entfernt || schritt.leer() ? "" : leerfeldloeschung(richtung, linie));
    return entfernt;
}

void frmJust::melden(std::string_view text) {
    meldung(this, qt(text), "");
}
