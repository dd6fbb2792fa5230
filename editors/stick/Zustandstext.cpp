// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Zustandstext.h"

#include <array>

namespace {

constexpr std::array<const char*, RICHTUNGEN> PFEILHINWEISE{
    "Linke Maustaste = Neue Linie ganz links / Rechte Maustaste = Äußerste Linie links löschen",
    "Linke Maustaste = Neue Linie ganz rechts / Rechte Maustaste = Äußerste Linie rechts löschen",
    "Linke Maustaste = Neue Linie ganz oben / Rechte Maustaste = Äußerste Linie oben löschen",
    "Linke Maustaste = Neue Linie ganz unten / Rechte Maustaste = Äußerste Linie unten löschen",
};
constexpr const char* PFEIL_RUHT = "Pfeil: erst die Wahl des Feldes aufheben";

constexpr const char* TASTEN_TAFEL = "Esc speichert und schließt die Tafel, außer in der Tastenbox";
constexpr const char* TASTEN_LINIE = "Linie aufgenommen – Esc legt sie zurück";
constexpr const char* TASTEN_GEWAEHLT = "Eingabetaste: Aktion · Esc hebt die Wahl auf";
constexpr const char* TASTEN_FREI =
    "Eingabetaste wählt · Menütaste: Aktion · Umschalt+Pfeiltaste schiebt die Linie";

constexpr const char* GESPERRT = "„1 to 1“: Der Stick ruht in dieser Ebene";
constexpr const char* TESTLAUF = "Test läuft – Änderungen gelten ab dem nächsten Ebenenwechsel oder Start";

const char* worte(Klickfolge folge) {
    switch (folge) {
    case Klickfolge::Nichts:
        return "Linie am Anschlag – hier ist sie nicht abzusetzen";
    case Klickfolge::Tafel:
        return "Klick speichert die Aktion und schließt die Tafel";
    case Klickfolge::Abwahl:
        return "Klick hebt die Wahl auf · Rechtsklick: Aktion";
    case Klickfolge::Wahl:
        return "Klick wählt das Feld, danach Rechtsklick: Aktion";
    case Klickfolge::Aufnahme:
        return "Klick nimmt die Linie auf";
    case Klickfolge::Absetzen:
        return "Linie aufgenommen – klicken setzt ab";
    case Klickfolge::Zuruecklegen:
        return "Linie aufgenommen – ein Klick hier legt sie zurück";
    }
    return "";
}

/// The field that the hand is at.
std::optional<Feldanker> handfeld(const Ebenenlage& lage, const Linienebene& linien) {
    if (lage.marke)
        return Feldgitter(linien).feld(*lage.marke).anker;
    if (lage.maus)
        return BereichFestlegen(linien, lage.maus->x, lage.maus->y).anker;
    return std::nullopt;
}

/// What the hand would do there.
const char* handlung(const Ebenenlage& lage) {
    if (lage.tafelOffen && !lage.klick)
        return TASTEN_TAFEL;
    if (lage.marke && !lage.tafelOffen)
        return lage.linieInDerHand ? TASTEN_LINIE : lage.markeGewaehlt ? TASTEN_GEWAEHLT : TASTEN_FREI;
    if (lage.pfeil)
        return lage.tafelOffen || lage.feldGewaehlt ? PFEIL_RUHT : pfeilhinweis(*lage.pfeil);
    return lage.klick ? worte(*lage.klick) : nullptr;
}

/// The place of the hand on the plane.
std::optional<Stickposition> handort(const Ebenenlage& lage, const Linienebene& linien) {
    if (!lage.marke)
        return lage.maus;
    const auto r = Feldgitter(linien).feld(*lage.marke).rechteck;
    return Stickposition{static_cast<std::int32_t>(r.links + r.breite / 2),
                         static_cast<std::int32_t>(r.oben + r.hoehe / 2)};
}

void anhaengen(std::vector<std::string>& zeilen, const std::vector<std::string>& weitere) {
    zeilen.insert(zeilen.end(), weitere.begin(), weitere.end());
}

/// What the stick did in the field of the hand, and what noise does to it.
std::vector<std::string> feldstreuung(const Ebenenlage& lage, const Feldanker& feld,
                                      const Linienebene& linien, const Streurechnung& streuung) {
    const Feldgitter gitter(linien);
    const auto platz = gitter.platz(feld);
    std::vector<std::string> zeilen{streuworte(streuung.feld(linien, platz))};
    auto rauschen = rauschworte(streuung, linien, platz);
    if (lage.marke || lage.linien.empty()) // else the line itself is told of
        anhaengen(zeilen, rauschen);
    return zeilen;
}

/// What the lines are that the hand has or may have.
std::vector<std::string> linienstreuung(const Ebenenlage& lage, const Linienebene& linien,
                                        const Feldauskunft& auskunft, const Streurechnung& streuung,
                                        const Wegprobe& probe) {
    std::vector<std::string> zeilen;
    for (const auto& linie : lage.linien)
        if (const auto worte = linienworte(streuung, linie.richtung,
                                           linien[static_cast<std::size_t>(linie.slot)][linie.richtung]))
            zeilen.push_back(*worte);
    const auto wo = handort(lage, linien);
    if (lage.linieInDerHand && wo)
        anhaengen(
            zeilen,
            probeworte(streuung, {linien, lage.gespeichert, lage.linien, *wo, probe.zaehlende()}, auskunft));
    return zeilen;
}

} // namespace

std::string feldzeile(const Linienebene& linien, const Feldanker& anker, const Feldauskunft& auskunft,
                      const char* trenner) {
    const Feldgitter gitter(linien);
    return gitter.name(gitter.platz(anker)) + trenner + auskunft.worte(linien, anker);
}

std::vector<std::string> zustandszeilen(const Ebenenlage& lage, const Linienebene& linien,
                                        const Feldauskunft& auskunft, const Streurechnung* streuung,
                                        const Wegprobe& probe) {
    std::vector<std::string> zeilen;
    // Actions hang on the places of lines: those of a line in the hand find their fields again when it lies.
    const bool felderStehen = !lage.linieInDerHand;
    const auto feld = handfeld(lage, linien);
    if (feld && felderStehen)
        zeilen.push_back(feldzeile(linien, *feld, auskunft));
    if (streuung && feld && felderStehen)
        anhaengen(zeilen, feldstreuung(lage, *feld, linien, *streuung));
    if (streuung)
        anhaengen(zeilen, linienstreuung(lage, linien, auskunft, *streuung, probe));
    if (const auto* was = handlung(lage))
        zeilen.emplace_back(was);
    if (lage.stick && felderStehen)
        zeilen.push_back("Stick: " +
                         (feld == lage.stick ? "in diesem Feld" : feldzeile(linien, *lage.stick, auskunft)));
    if (lage.gesperrt)
        zeilen.emplace_back(GESPERRT);
    if (lage.testlauf)
        zeilen.emplace_back(TESTLAUF);
    if (streuung)
        zeilen.push_back(streubildworte(*streuung, probe));
    return zeilen;
}

const char* pfeilhinweis(std::size_t richtung) {
    return PFEILHINWEISE[richtung];
}
