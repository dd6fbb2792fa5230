// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the stick editor that takes back what the user has done, and makes it again: by Strg+Z and
// Strg+Umschalt+Z, and from a menu that names the step.
//
//     a line in the hand     is laid back, and nothing else
//     the panel open         nothing: what stands on it is saved nowhere yet
//     a run on               nothing by keys, which may be those that the pad presses; the menu works
//     a field chosen         is so no longer: lines may move
//     another layer shown    that of the step is shown
#include "editors/common/Formhilfen.h"
#include "editors/common/Geduld.h"
#include "editors/run/Laufsteuerung.h"
#include "editors/stick/Aktionsworte.h"
#include "editors/stick/Ebenenstimme.h"
#include "editors/stick/Justiertafeln.h"
#include "editors/stick/Schrittworte.h"
#include "editors/stick/Stickebene.h"
#include "editors/stick/frmJust.h"
#include "store/schema/modKeyCode.h"
#include "store/schema/modLesen.h"

#include <QMenu>
#include <QShortcut>

#include <array>
#include <utility>

namespace {

constexpr const char* TASTE_ZURUECK = "Ctrl+Z";
constexpr const char* TASTE_WIEDER = "Ctrl+Shift+Z";
constexpr const char* TASTE_MENUE = "Ctrl+F10"; // the menu key and Umschalt+F10 open the action of a field

constexpr const char* MENUENAME = "mnuEbene";
constexpr const char* ZURUECKLEGEN = "Aufgenommene Linie zurücklegen";
constexpr const char* TAFEL_OFFEN = "Rückgängig geht erst, wenn die Tafel geschlossen ist";
constexpr const char* NICHTS_ZURUECK = "Nichts rückgängig zu machen";
constexpr const char* NICHTS_WIEDER = "Nichts wiederherzustellen";
constexpr const char* VON_ANDEREN_GEAENDERT =
    "Linien oder Aktionen dieses Sticks wurden inzwischen an anderer Stelle geändert.\n"
    "Es wurde nichts rückgängig gemacht oder wiederhergestellt. Die bisherigen Schritte lassen sich nicht "
    "mehr zurücknehmen.";

/// A text as a menu shows it, with the key that does the same.
QString menuetext(const std::string& worte, const char* taste) {
    return qt(worte).replace("&", "&&") + "\t" + QKeySequence(taste).toString(QKeySequence::NativeText);
}

} // namespace

void frmJust::schritttastenGeben() {
    const auto geben = [this](const char* taste, auto tun) {
        auto* kurz =
            new QShortcut(QKeySequence(taste), this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
        kurz->setAutoRepeat(false); // each writes; who holds it too long would lose count
        connect(kurz, &QShortcut::activated, this, [this, tun] {
            if (laufsteuerung_.geladen())
                return;
            // A menu that is open lets the key pass, and names a step that may not be the next one then.
            for (auto* menue : findChildren<QMenu*>(MENUENAME))
                menue->close();
            tun();
        });
    };
    geben(TASTE_ZURUECK, [this] { gesichert([&] { schrittWenden(Schrittrichtung::Zurueck); }); });
    geben(TASTE_WIEDER, [this] { gesichert([&] { schrittWenden(Schrittrichtung::Wieder); }); });
    geben(TASTE_MENUE, [this] { menueZeigen(ebene_->rect().center()); });
}

// --- taking down ---

void frmJust::alsTat(const std::function<void()>& arbeit) {
    ++tattiefe_;
    try {
        arbeit();
    } catch (...) {
        --tattiefe_;
        tatAbschliessen(); // what was saved before the error
        throw;
    }
    --tattiefe_;
    tatAbschliessen();
}

/// Something was saved, after which the store has these lines.
void frmJust::gespeichert(const Zeilenschritt& schritt, const Linientabelle& linien,
                          const std::string& andere) {
    if (tat_ && !tat_->zeilen.anfuegen(schritt)) { // others have written between: a step of its own
        const auto tiefe = std::exchange(tattiefe_, 0);
        tatAbschliessen();
        tattiefe_ = tiefe;
    }
    if (!tat_)
        tat_.emplace(Tat{gespeicherte_, schritt, {}});
    if (!andere.empty())
        tat_->andere = andere;
    gespeicherte_ = linien;
}

void frmJust::tatAbschliessen() {
    if (tattiefe_ > 0 || !tat_)
        return;
    auto tat = *std::exchange(tat_, {});
    if (tat.zeilen.leer())
        return;
    const auto ebene = static_cast<std::size_t>(stand_.EditorEbene);
    folge_.neu({.ebene = stand_.EditorEbene,
                .linien = linienunterschied(tat.vorher[ebene], gespeicherte_[ebene]),
                .andere = std::move(tat.andere),
                .zeilen = std::move(tat.zeilen),
                .sperreVorher = StickSperre_,
                .sperreNachher = StickSperre_,
                .gehalten = gehalten_});
}

/// It is saved already: a key whose name can't be looked up has none.
std::string frmJust::aktionsname(const std::string& text) const {
    return aktionsworte(Stickaktion(text), [this](const std::string& nummer) {
        try {
            return KeyCodeSuchen(global_.DatenbankPfad, 0, nummer);
        } catch (const LaufzeitFehler&) {
            return std::string();
        }
    });
}

// --- taking back ---

Stickschritt* frmJust::wendbarer(Schrittrichtung richtung) {
    return richtung == Schrittrichtung::Zurueck ? folge_.letzter() : folge_.naechster();
}

void frmJust::schrittWenden(Schrittrichtung richtung) {
    const bool zurueck = richtung == Schrittrichtung::Zurueck;
    if (fraAktionGezeigt())
        return stimme_->ansagen(TAFEL_OFFEN);
    if (zug_.haelt()) {
        if (zurueck)
            zug_.loslassen();
        return stimme_->zeigen();
    }
    auto* schritt = wendbarer(richtung);
    if (!schritt)
        return stimme_->ansagen(zurueck ? NICHTS_ZURUECK : NICHTS_WIEDER);
    std::vector<Zeilenumzug> umzuege;
    if (!schritt->zeilen.leer()) {
        try {
            Geduld geduld(this);
            auto ergebnis =
                StickSchrittWenden(global_.DatenbankPfad, art_.seite, schema_, schritt->zeilen, richtung,
                                   folge_.hoechsteZeile(), [&] { return geduld.weiter(); });
            stand_.linien = gespeicherte_ = ergebnis.linien.linien;
            umzuege = std::move(ergebnis.umzuege);
        } catch (const LaufzeitFehler& fehler) {
            if (fehler.nummer() != Fehlernummer::VonAnderenGeaendert)
                throw;
            return vonAnderenGeaendert();
        }
    }
    zurueck ? folge_.zurueckgenommen(umzuege) : folge_.wiederholt(umzuege);
    schrittZeigen(*schritt, richtung);
}

void frmJust::schrittZeigen(const Stickschritt& schritt, Schrittrichtung richtung) {
    const bool zurueck = richtung == Schrittrichtung::Zurueck;
    const auto worte = zurueck ? ruecknahmeworte(&schritt, stand_.EditorEbene)
                               : wiederholungsworte(&schritt, stand_.EditorEbene);
    maskeSetzen(zurueck ? schritt.sperreVorher : schritt.sperreNachher);
    ebene_->RechteckB().hide();
    zug_.loslassen(); // a line that stood at its limit does so no longer, and the strips are free
    stimme_->ansagen(worte);
    if (schritt.ebene != stand_.EditorEbene) {
        tafeln_->waehlen(schritt.ebene); // shows all there is
    } else {
        tafeln_->einsZuEinsSetzen((StickSperre_ >> schritt.ebene & 1) != 0);
        linienLegen();
        Zeichnen();
    }
    stimme_->felderGeaendert();
}

/// Nothing of what was done before can be trusted to find what it has left.
void frmJust::vonAnderenGeaendert() {
    folge_.leeren();
    ebene_->RechteckB().hide();
    zug_.loslassen();
    melden(VON_ANDEREN_GEAENDERT);
    Database datenbank = OpenDatabase(global_.DatenbankPfad);
    stand_.linien = gespeicherte_ = StickLinienLesen(datenbank, art_.seite, schema_).linien;
    linienLegen();
    Zeichnen();
    stimme_->felderGeaendert();
}

// --- the menu ---

void frmJust::menueZeigen(QPoint wo) {
    auto* menue = new QMenu(this);
    menue->setObjectName(MENUENAME);
    menue->setAttribute(Qt::WA_DeleteOnClose);
    const bool inDerHand = zug_.haelt();
    const bool frei = !fraAktionGezeigt();
    const auto zeile = [&](Schrittrichtung richtung, const std::string& worte, const char* taste, bool an) {
        auto* tat = menue->addAction(menuetext(worte, taste));
        tat->setObjectName(feldname("mnuSchritt", static_cast<int>(richtung)));
        tat->setEnabled(frei && an);
        connect(tat, &QAction::triggered, this,
                [this, richtung] { gesichert([&] { schrittWenden(richtung); }); });
    };
    const auto* letzter = folge_.letzter();
    const auto* naechster = folge_.naechster();
    zeile(Schrittrichtung::Zurueck, inDerHand ? ZURUECKLEGEN : ruecknahmeworte(letzter, stand_.EditorEbene),
          TASTE_ZURUECK, inDerHand || letzter);
    zeile(Schrittrichtung::Wieder, wiederholungsworte(naechster, stand_.EditorEbene), TASTE_WIEDER,
          !inDerHand && naechster);
    menue->popup(ebene_->mapToGlobal(wo));
}
