// SPDX-License-Identifier: GPL-3.0-or-later
// What the button editor does about what is not saved: shows it, takes it back, keeps what was discarded.
#include "editors/buttons/frmJoyKonfic.h"

#include "base/LaufzeitFehler.h"
#include "editors/buttons/Padbild.h"
#include "editors/buttons/Tasteneigenschaften.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Speicherstand.h"
#include "engine/run/GobalVariable.h"

#include <QGroupBox>
#include <QScopeGuard>

#include <utility>

namespace {

constexpr const char* ZURUECKGEHOLTES = "Zurückgeholte Änderungen"; // name of a step

} // namespace

// --- what is not saved ---

bool frmJoyKonfic::ungespeichert() const {
    return werk_.bild != gespeichertes_ || !eigenschaften_->ungueltiges().empty();
}

void frmJoyKonfic::standZeigen() {
    if (siehtAn_ || taten_ > 0)
        return;
    auto jetzt = inhalt();
    const auto ort = zahlenort(folge_.jetzt(), jetzt);
    standFesthalten(std::move(jetzt), ort);
}

void frmJoyKonfic::standFesthalten(Tasteninhalt jetzt, const std::string& ort) {
    folge_.festhalten(std::move(jetzt), ort);
    speicherstand_->setUngespeichert(ungespeichert());
}

// However many fields it changes, it is one step.
void frmJoyKonfic::eineTat(const std::function<void()>& tat) {
    ++taten_;
    const auto danach = qScopeGuard([this] {
        --taten_;
        standZeigen();
    });
    tat();
}

// To show a button may write its numbers another way, "05" as "5": that is nobody's change.
void frmJoyKonfic::ansehen(const std::function<void()>& zeigen) {
    if (siehtAn_ || !werk_.gewaehlt())
        return zeigen();
    const auto felder = [this, taste = werk_.AktuelleTaste, ebene = werk_.AktuelleEbene] {
        return feldtexte(werk_.bild, taste, ebene);
    };
    const auto alt = felder();
    siehtAn_ = true;
    const auto danach = qScopeGuard([&, taste = werk_.AktuelleTaste, ebene = werk_.AktuelleEbene] {
        siehtAn_ = false;
        if (const auto neu = felder(); neu != alt) {
            umschreiben(gespeichertes_, taste, ebene, alt, neu);
            folge_.ueberall([&](Tasteninhalt& inhalt) { umschreiben(inhalt.bild, taste, ebene, alt, neu); });
        }
        if (taten_ == 0)
            standFesthalten(inhalt()); // what was typed for another button is gone by that
    });
    zeigen();
}

Tastenentwurf frmJoyKonfic::entwurf() const {
    return {werk_.bild, werk_.AktuelleTaste, werk_.AktuelleEbene, global_.UmschaltTasten,
            Formstand({bild_, tastenereignis_, eigenschaften_})};
}

void frmJoyKonfic::wiederherstellen() {
    const auto entwurf = entwuerfe_.nehmen(schema_);
    if (!entwurf)
        return;
    if (ungespeichert())
        entwuerfe_.hintanstellen(schema_, this->entwurf());
    speicherstand_->anbieten(entwuerfe_.gibtEs(schema_));
    werk_.bild = entwurf->bild;
    global_.UmschaltTasten = entwurf->umschalttasten;
    ebeneSetzen(entwurf->ebene);
    auswaehlen(entwurf->taste);
    entwurf->stand.stummAnwenden({bild_, tastenereignis_, eigenschaften_});
    folge_.festhalten(inhalt(), {}, ZURUECKGEHOLTES);
    standZeigen();
}

// --- undo ---

Rueckgang::Dienst frmJoyKonfic::rueckgangsdienst() {
    const auto gefuehrt = [this](auto arbeit) {
        return [this, arbeit](Richtung richtung) {
            mitFehlermeldung(this, formtitel(*this), [&] { arbeit(richtung); });
        };
    };
    return {[this](Richtung richtung) { return kann(richtung); },
            [this](Richtung richtung) { return schritt(richtung); },
            gefuehrt([this](Richtung richtung) { gehen(richtung); })};
}

Tasteninhalt frmJoyKonfic::inhalt() const {
    Tasteninhalt jetzt{werk_.bild, {}};
    if (auto texte = eigenschaften_->ungueltiges(); !texte.empty())
        jetzt.ungueltiges = {werk_.AktuelleTaste, werk_.AktuelleEbene, std::move(texte)};
    return jetzt;
}

bool frmJoyKonfic::kann(Richtung richtung) const {
    return richtung == Richtung::Zurueck ? folge_.kannZurueck() : folge_.kannVor();
}

const Tasteninhalt& frmJoyKonfic::ziel(Richtung richtung) const {
    return richtung == Richtung::Zurueck ? folge_.davor() : folge_.danach();
}

QString frmJoyKonfic::schritt(Richtung richtung) const {
    const bool zurueck = richtung == Richtung::Zurueck;
    if (const auto& eigener = zurueck ? folge_.nameDavor() : folge_.nameDanach(); !eigener.empty())
        return qt(eigener);
    const auto& vorher = zurueck ? folge_.davor() : folge_.jetzt();
    const auto& nachher = zurueck ? folge_.jetzt() : folge_.danach();
    const auto sucher = [this](const std::string& code) {
        try {
            return name(code);
        } catch (const LaufzeitFehler&) {
            return code; // a step can be taken back also while the names can't be read
        }
    };
    return schrittname(vorher, nachher, sucher);
}

void frmJoyKonfic::gehen(Richtung richtung) {
    const auto nach = ziel(richtung);
    const auto ort = schrittort(folge_.jetzt(), nach);
    const bool zurueck = richtung == Richtung::Zurueck;
    const bool zurueckgeholtes = zurueck && !folge_.nameDavor().empty();
    auto verlassenes = entwurf();
    inhaltNehmen(nach, ort);
    zurueck ? folge_.zurueck() : folge_.vor();
    if (zurueckgeholtes) { // it was kept before, and is kept again
        entwuerfe_.merken(schema_, std::move(verlassenes));
        speicherstand_->anbieten(true);
    }
    inhaltZeigen(nach, ort);
}

// Names are looked up here: where that fails nothing has changed.
void frmJoyKonfic::inhaltNehmen(const Tasteninhalt& nach, const std::optional<Schrittort>& ort) {
    auto zurueck = qScopeGuard(
        [this, bild = werk_.bild, ebene = werk_.AktuelleEbene, umschalttasten = global_.UmschaltTasten] {
            werk_.bild = bild;
            werk_.AktuelleEbene = ebene;
            global_.UmschaltTasten = umschalttasten;
        });
    const bool andereEbene = ort && ort->ebene != werk_.AktuelleEbene;
    werk_.bild = nach.bild;
    if (andereEbene)
        werk_.AktuelleEbene = ort->ebene;
    labelBeschriften(ALLE_SCHILDER);
    zurueck.dismiss();
    if (andereEbene)
        ebeneZeigen(ort->ebene);
}

// As a click on the label of the button shows it; the image stays what it was all the same.
void frmJoyKonfic::inhaltZeigen(const Tasteninhalt& nach, const std::optional<Schrittort>& ort) {
    siehtAn_ = true;
    const auto danach = qScopeGuard([this, &nach] {
        werk_.bild = nach.bild;
        if (nach.ungueltiges.taste == werk_.AktuelleTaste && nach.ungueltiges.ebene == werk_.AktuelleEbene)
            eigenschaften_->ungueltigesSetzen(nach.ungueltiges.texte);
        siehtAn_ = false;
        folge_.nachfuehren(inhalt());
        standZeigen();
    });
    if (const int taste = ort && ort->taste ? *ort->taste : werk_.AktuelleTaste;
        taste != Tastwerk::KEINE_TASTE_GEWAEHLT)
        lblInfo_Click(taste);
}
