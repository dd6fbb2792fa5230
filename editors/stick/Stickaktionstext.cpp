#include "editors/stick/Stickaktionstext.h"

#include "formats/Felder.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::string_view VOR_DER_NUMMER = "Taste: ";
constexpr std::string_view HINTER_DER_NUMMER = " - ";

// Places of the fields, by type.
constexpr std::size_t WAHL = 1; // direction, button, property or position
constexpr std::size_t SCHRITTLAENGE = 2;
constexpr std::size_t GESCHWINDIGKEIT = 3;
constexpr std::size_t SCROLLSPRUNG = 2;
constexpr std::size_t TASTE = 2;
constexpr std::size_t DRUCKZEIT = 3;
constexpr std::size_t MIT_WIEDERHOLUNG = 4;
constexpr std::size_t PAUSENZEIT = 5;
constexpr std::size_t EGO_X = 2;
constexpr std::size_t EGO_Y = 3;

class Aktionsfelder {
public:
    explicit Aktionsfelder(std::string_view text) : felder_(zerlegen(text, ',')) {}

    std::string_view feld(std::size_t stelle) const {
        if (stelle >= felder_.size())
            throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                                 "Der Aktion des Feldes fehlt das Feld " + std::to_string(stelle) + ".");
        return felder_[stelle];
    }
    std::string text(std::size_t stelle) const { return std::string(feld(stelle)); }

    /// The field as one of `anzahl` choices.
    int wahl(std::size_t stelle, int anzahl) const {
        const auto zahl = feldzahl(feld(stelle));
        if (zahl < 0 || zahl >= anzahl)
            throw LaufzeitFehler(Fehlernummer::FalscherIndex, "Die Aktion des Feldes hat an der Stelle " +
                                                                  std::to_string(stelle) + " keine Auswahl " +
                                                                  std::to_string(zahl) + ".");
        return zahl;
    }

    /// Whether the field is this number; a field that is no number is not.
    bool ist(std::size_t stelle, std::int32_t zahl) const {
        const auto text = feld(stelle);
        try {
            return feldzahl(text) == zahl;
        } catch (const LaufzeitFehler&) {
            return false;
        }
    }

private:
    std::vector<std::string_view> felder_;
};

template <class Lesen> auto wennLesbar(Lesen&& lesen) -> std::optional<decltype(lesen())> {
    try {
        return lesen();
    } catch (const LaufzeitFehler&) {
        return std::nullopt;
    }
}

void mausbewegungLesen(const Aktionsfelder& felder, Stickaktionsbild& bild) {
    bild.richtung = wennLesbar([&] { return felder.wahl(WAHL, MAUSRICHTUNGEN); });
    bild.geschwindigkeit = wennLesbar([&] { return felder.text(GESCHWINDIGKEIT); });
    bild.schrittlaenge = wennLesbar([&] { return felder.text(SCHRITTLAENGE); });
}

void maustasteLesen(const Aktionsfelder& felder, Stickaktionsbild& bild) {
    bild.maustaste = felder.wahl(WAHL, MAUSTASTEN);
    if (bild.maustaste == SCROLLRAD_PLUS || bild.maustaste == SCROLLRAD_MINUS)
        bild.scrollsprung = felder.text(SCROLLSPRUNG);
}

void tastaturLesen(const Aktionsfelder& felder, Stickaktionsbild& bild) {
    bild.eigenschaft = felder.wahl(WAHL, TASTENEIGENSCHAFTEN);
    bild.taste = felder.text(TASTE);
    if (bild.eigenschaft == TASTE_MIT_ZEIT)
        bild.druckzeit = felder.text(DRUCKZEIT);
    // Whatever the property is.
    bild.wiederholen = felder.ist(MIT_WIEDERHOLUNG, 1);
    if (bild.wiederholen)
        bild.pausenzeit = felder.text(PAUSENZEIT);
}

void ohneFelder(const Aktionsfelder&, Stickaktionsbild&) {}

void absolutePositionLesen(const Aktionsfelder& felder, Stickaktionsbild& bild) {
    if (felder.ist(WAHL, 0) || felder.ist(WAHL, 1)) {
        bild.position = felder.wahl(WAHL, ABSOLUTE_POSITIONEN);
        return;
    }
    bild.position = EGO_SHOOTER; // any other text, as at run time
    bild.egoX = feldzahl(felder.feld(EGO_X));
    bild.egoY = feldzahl(felder.feld(EGO_Y));
}

using Feldleser = void (*)(const Aktionsfelder&, Stickaktionsbild&);
constexpr std::array<Feldleser, STICKAKTIONSARTEN> FELDLESER{
    mausbewegungLesen, maustasteLesen, tastaturLesen, ohneFelder, ohneFelder, absolutePositionLesen};

std::string maustastentext(const Stickaktionsbild& bild) {
    const int taste = bild.maustaste.value_or(0);
    const std::string text = "1," + std::to_string(taste);
    return taste == SCROLLRAD_PLUS || taste == SCROLLRAD_MINUS ? text + "," + feldtext(bild.scrollsprung)
                                                               : text;
}

std::string tastaturtext(const Stickaktionsbild& bild) {
    const int eigenschaft = bild.eigenschaft.value_or(0);
    std::string text = "2," + std::to_string(eigenschaft) + "," + feldtext(bild.taste);
    if (eigenschaft == TASTE_MIT_ZEIT) {
        text += "," + feldtext(bild.druckzeit);
        if (bild.wiederholen)
            return text + ",1," + feldtext(bild.pausenzeit);
    }
    return text + ",0,0";
}

std::string positionstext(const Stickaktionsbild& bild) {
    const int position = bild.position.value_or(0);
    const std::string text = "5," + std::to_string(position);
    return position == EGO_SHOOTER ? text + "," + std::to_string(bild.egoX.value_or(0)) + "," +
                                         std::to_string(bild.egoY.value_or(0))
                                   : text;
}

} // namespace

GeleseneStickaktion stickaktionLesen(std::string_view text) {
    GeleseneStickaktion gelesen;
    if (text.empty())
        return gelesen;
    try {
        const Aktionsfelder felder(text);
        const int art = felder.wahl(0, STICKAKTIONSARTEN);
        gelesen.bild.art = static_cast<Stickaktionsart>(art);
        FELDLESER[static_cast<std::size_t>(art)](felder, gelesen.bild);
    } catch (const LaufzeitFehler& fehler) {
        gelesen.fehler = fehler;
    }
    return gelesen;
}

std::string stickaktionstext(const Stickaktionsbild& bild) {
    switch (bild.art) {
    case Stickaktionsart::Mausbewegung:
        return "0," + std::to_string(bild.richtung.value_or(0)) + "," + feldtext(bild.schrittlaenge) + "," +
               feldtext(bild.geschwindigkeit);
    case Stickaktionsart::Maustaste:
        return maustastentext(bild);
    case Stickaktionsart::Tastatur:
        return tastaturtext(bild);
    case Stickaktionsart::AbsolutePosition:
        return positionstext(bild);
    case Stickaktionsart::Leerfeld:
    case Stickaktionsart::Sperrfeld:
        break;
    }
    return std::to_string(static_cast<int>(bild.art));
}

std::string tastentitel(const std::string& nummer, const std::string& name) {
    return std::string(VOR_DER_NUMMER) + nummer + std::string(HINTER_DER_NUMMER) + name;
}

std::string tastennummer(std::string_view titel) {
    const auto davor = titel.find(VOR_DER_NUMMER);
    if (davor == std::string_view::npos)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Die Überschrift „" + std::string(titel) + "“ nennt keine Taste.");
    titel.remove_prefix(davor + VOR_DER_NUMMER.size());
    titel = titel.substr(0, titel.find(VOR_DER_NUMMER));
    return std::string(titel.substr(0, titel.find(HINTER_DER_NUMMER)));
}
