// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/mitschnitt/Laufmitschnitt.h"

#include "base/LaufzeitFehler.h"
#include "engine/mitschnitt/Prozesszustand.h"
#include "engine/mitschnitt/Zustandsgang.h"
#include "engine/run/LaufFenster.h"
#include "platform/mitschnitt/Mitschnittgeraete.h"
#include "store/schema/Schemazeilen.h"

#include <algorithm>
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
    auto& band = geraete_.band;
    auto neuer = grund();
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

void Laufmitschnitt::laufEndet() {
    if (std::exchange(laeuft_, false))
        vermerken("stop");
}

// The end of a run has saved its scroll bars.
void Laufmitschnitt::nachDemEnde() {
    grundAmEnde_ = grund();
}

bool Laufmitschnitt::ruhepunkt(LaufFenster& lauf) {
    if (!laeuft_ || !istBegehbar(zustand_) ||
        !geraete_.uhr.puenktlich(timerid::ENTWACKELN, ENTWACKELN_INTERVALL))
        return false;
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

std::function<std::string()> Laufmitschnitt::abzug(const std::string& zeitpunkt) const {
    return [band = geraete_.band, jetzt = geraete_.uhr.stempel(),
            kopf = Mitschnittkopf{schema_, zeitpunkt}]() mutable {
        return mitschnitttext(band.lesen(jetzt), jetzt, kopf);
    };
}

// "" where the rows can't be read, or there are none: such a run ends before it begins.
std::string Laufmitschnitt::grund() const {
    std::string text;
    const auto& global = zustand_.global;
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
    if (text.empty())
        return "";
    zustand_.achsendatei.AchsenLaden();
    text += "achsen";
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
