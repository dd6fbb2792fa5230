// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/mitschnitt/Laufmitschnitt.h"

#include "base/LaufzeitFehler.h"
#include "engine/mitschnitt/Prozesszustand.h"
#include "engine/mitschnitt/Zustandsgang.h"
#include "engine/run/LaufFenster.h"
#include "platform/mitschnitt/Mitschnittgeraete.h"
#include "store/schema/Schemazeilen.h"

#include <algorithm>
#include <sstream>
#include <sys/stat.h>
#include <utility>

namespace {

constexpr const char* NAME_IN_DER_SPUR = "S";
constexpr const char* OHNE_NAMEN = "-"; // a raw axis that is nothing

std::string zustandszeilen(const Zustandsschreiber& schreiber) {
    std::string text;
    for (const auto& zeile : schreiber.zeilen()) {
        text += "zustand ";
        text += zeile;
        text += '\n';
    }
    return text;
}

/// The rows without those of the scroll bars, which a run reads at its start only and saves at its end.
std::string ohneRegler(const std::string& grund) {
    std::string text;
    std::istringstream zeilen(grund);
    for (std::string zeile; std::getline(zeilen, zeile);)
        if (!zeile.starts_with("sql INSERT INTO Sensible"))
            text += zeile + '\n';
    return text;
}

bool einWort(const std::string& name) {
    return !name.empty() && std::ranges::all_of(name, [](char zeichen) { return zeichen > ' '; });
}

} // namespace

Laufmitschnitt::Handlung::Handlung(Laufmitschnitt& des) : mitschnitt(des) {
    des.geraete_.uhr.handlungBeginnt();
}

Laufmitschnitt::Handlung::~Handlung() {
    mitschnitt.geraete_.uhr.handlungEndet();
}

void Laufmitschnitt::laufBeginnt() {
    laeuft_ = false;
    geaendertAb_.reset();
    auto& band = geraete_.band;
    auto neuer = zeilen();
    if (!neuer.empty()) {
        zustand_.achsendatei.AchsenLaden(); // as the run will; it makes a row where there is none
        neuer += achsenUndSchub();
    }
    if (neuer.empty() || neuer != grundAmEnde_ || zustand_.global.SchemaName != schema_)
        band.verwerfen();
    schema_ = zustand_.global.SchemaName;
    if (neuer.empty())
        return; // a run of it does not begin
    grund_ = std::make_shared<const std::string>(std::move(neuer));
    const auto jetzt = geraete_.uhr.stempel();
    const bool exakt = istBegehbar(zustand_);
    if (exakt || band.leer()) {
        Zustandsschreiber schreiber;
        prozesszustandBegehen(zustand_, schreiber);
        band.beginnen(jetzt, {zustandszeilen(schreiber), grund_, false}, exakt);
        geraete_.pad.standNotieren();
    }
    vermerken("start");
}

void Laufmitschnitt::laufHatBegonnen() {
    laeuft_ = true;
    grundImLauf_ = grund();
    merkmale_ = merkmale();
    unveraendertBis_ = geraete_.uhr.stempel();
}

void Laufmitschnitt::laufEndet() {
    nachsehen();
    if (std::exchange(laeuft_, false))
        vermerken("stop");
}

// The end of a run has saved its scroll bars. What an editor has changed, too, the record does not know.
void Laufmitschnitt::nachDemEnde() {
    grundAmEnde_ = geaendertAb_ ? "" : grund();
}

// It has saved its scroll bars before it tells of the error.
void Laufmitschnitt::fehler(int nummer) {
    vermerken("fehler " + std::to_string(nummer));
    if (!laeuft_)
        return;
    auto danach = grund();
    if (!geaendertAb_ && ohneRegler(danach) != ohneRegler(grundImLauf_))
        geaendertAb_ = unveraendertBis_;
    grundImLauf_ = std::move(danach);
    merkmale_ = merkmale();
    unveraendertBis_ = geraete_.uhr.stempel();
}

void Laufmitschnitt::eingriff() {
    nachsehen();
    if (laeuft_ && !geaendertAb_)
        geaendertAb_ = geraete_.uhr.stempel();
}

// Files are read only where somebody has written them: quiet moments come in the tick.
void Laufmitschnitt::nachsehen() {
    if (!laeuft_ || geaendertAb_)
        return;
    auto jetzige = merkmale();
    if (jetzige != merkmale_ && (jetzige.schema != schema_ || grund() != grundImLauf_)) {
        geaendertAb_ = unveraendertBis_;
        return;
    }
    merkmale_ = std::move(jetzige);
    unveraendertBis_ = geraete_.uhr.stempel();
}

Laufmitschnitt::Merkmale Laufmitschnitt::merkmale() const {
    const auto& achsendatei = zustand_.achsendatei;
    return {{dateistand(zustand_.global.DatenbankPfad), dateistand(achsendatei.pfad())},
            achsendatei.AchsenSchluessel(),
            zustand_.global.SchemaName};
}

Laufmitschnitt::Dateistand Laufmitschnitt::dateistand(const std::string& pfad) {
    struct stat stand {};
    if (stat(pfad.c_str(), &stand) != 0)
        return {};
    constexpr std::int64_t JE_SEKUNDE = 1'000'000'000;
    return {stand.st_ino, stand.st_size,
            std::int64_t{stand.st_mtim.tv_sec} * JE_SEKUNDE + stand.st_mtim.tv_nsec};
}

bool Laufmitschnitt::ruhepunkt(LaufFenster& lauf) {
    if (!laeuft_ || geaendertAb_ || !istBegehbar(zustand_) ||
        !geraete_.uhr.puenktlich(timerid::ENTWACKELN, ENTWACKELN_INTERVALL))
        return false;
    nachsehen();
    if (geaendertAb_)
        return false; // its rows are not those of which it is told
    Zustandsschreiber schreiber;
    prozesszustandBegehen(zustand_, schreiber);
    lauf.begehen(schreiber);
    geraete_.band.beginnen(geraete_.uhr.stempel(), {zustandszeilen(schreiber), grund_, true});
    geraete_.pad.standNotieren();
    return true;
}

void Laufmitschnitt::vermerken(const std::string& was) {
    geraete_.band.vermerk(geraete_.uhr.stempel(), was);
}

std::function<std::string()> Laufmitschnitt::abzug(const std::string& zeitpunkt) {
    nachsehen();
    return [band = geraete_.band, jetzt = geraete_.uhr.stempel(),
            kopf = Mitschnittkopf{schema_, zeitpunkt, geaendertAb_}]() mutable {
        return mitschnitttext(band.lesen(jetzt), jetzt, kopf);
    };
}

std::string Laufmitschnitt::grund() const {
    const auto text = zeilen();
    return text.empty() ? "" : text + achsenUndSchub();
}

// "" where the rows can't be read, or there are none: such a run ends before it begins.
std::string Laufmitschnitt::zeilen() const {
    const auto& global = zustand_.global;
    std::string text;
    try {
        for (const auto& zeile :
             SchemazeilenLesen(global.DatenbankPfad, global.SchemaName, NAME_IN_DER_SPUR)) {
            text += "sql ";
            text += zeile;
            text += '\n';
        }
    } catch (const LaufzeitFehler&) {
        return "";
    }
    return text;
}

std::string Laufmitschnitt::achsenUndSchub() const {
    std::string text = "achsen";
    for (const auto& name : zustand_.achsendatei.AchsenSchluessel()) {
        text += ' ';
        text += einWort(name) ? name : OHNE_NAMEN;
    }
    text += '\n';
    if (const auto& schub = zustand_.achsendatei.SchubreglerText(); !schub.empty()) {
        text += "schub ";
        text += schub;
        text += '\n';
    }
    return text;
}
