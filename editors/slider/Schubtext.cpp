#include "editors/slider/Schubtext.h"

#include "base/LaufzeitFehler.h"
#include "base/Text.h"
#include "formats/Felder.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace {

constexpr double ACHSENLAENGE = 65535;

// Pieces of a record.
constexpr std::size_t ART = 1;
constexpr std::size_t ANGABEN = 2;

// Pieces of S(a,b,d).
constexpr std::size_t UNTERWAHL = 0;
constexpr std::size_t ERSTER_WERT = 1;

[[noreturn]] void falscherIndex(const std::string& was) {
    throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                         "Index außerhalb des gültigen Bereichs: Schubregler " + was);
}

std::string_view stueck(const std::vector<std::string_view>& liste, std::size_t stelle) {
    if (stelle >= liste.size())
        falscherIndex("mit zu wenigen Angaben");
    return liste[stelle];
}

// S, a, b and d, which stand between three kinds of separators.
std::vector<std::string_view> angaben(std::string_view text) {
    std::vector<std::string_view> stuecke;
    while (true) {
        const auto ende = text.find_first_of("(,)");
        stuecke.push_back(text.substr(0, ende));
        if (ende == std::string_view::npos)
            return stuecke;
        text.remove_prefix(ende + 1);
    }
}

bool istZiffer(char zeichen) {
    return zeichen >= '0' && zeichen <= '9';
}

// A sign, digits and one comma or point among them.
bool siehtNachZahlAus(std::string_view text) {
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    if (const auto komma = text.find_first_of(".,"); komma != std::string_view::npos)
        return std::ranges::any_of(text, istZiffer) &&
               std::ranges::all_of(text.substr(0, komma), istZiffer) &&
               std::ranges::all_of(text.substr(komma + 1), istZiffer);
    return !text.empty() && std::ranges::all_of(text, istZiffer);
}

} // namespace

std::string alsSatz(int nummer, const Schubaktion& aktion) {
    return std::to_string(nummer) + "-" + std::to_string(static_cast<int>(aktion.art)) + "-" +
           aktion.unterwahl + "(" + aktion.werte[0] + "," + aktion.werte[1] + "," + aktion.werte[2] + ")";
}

Schubaktion aktionAus(std::string_view satz) {
    const auto stuecke = zerlegen(satz, '-');
    const auto art = feldzahl(stueck(stuecke, ART));
    if (art < 0 || art >= SCHUBARTEN)
        falscherIndex("mit der Aktion " + std::to_string(art));
    Schubaktion aktion{static_cast<Schubart>(art), "", {}};
    if (aktion.art == Schubart::Leerfeld)
        return aktion;
    const auto teile = angaben(stueck(stuecke, ANGABEN));
    aktion.unterwahl = stueck(teile, UNTERWAHL);
    for (std::size_t i = 0; i < aktion.werte.size(); ++i)
        aktion.werte[i] = stueck(teile, ERSTER_WERT + i);
    return aktion;
}

Schubtext::Schubtext(std::string_view text) {
    const auto teile = zerlegen(text, '/');
    if (teile.empty())
        return;
    const auto anzahl = feldzahl(teile.front());
    if (anzahl < 1 || anzahl > LINIEN_MAX + 1)
        falscherIndex("mit " + std::to_string(anzahl) + " Feldern");
    LinienAnzahl_ = anzahl - 1;
    for (std::size_t i = 1; i < teile.size(); ++i) {
        const auto c = davor(teile[i], '-');
        if (c.size() == teile[i].size())
            falscherIndex("mit zu wenigen Angaben");
        const auto satz = teile[i].substr(c.size() + 1);
        const auto nummer = feldzahl(davor(satz, '-'));
        if (!FeldListe_.emplace(nummer - 1, satz).second)
            throw LaufzeitFehler(Fehlernummer::SchluesselVergeben,
                                 "Schubregler: das Feld " + std::to_string(nummer) + " gibt es zweimal");
        if (i == 1)
            nurAuswaerts_ = feldzahl(c) == 1;
    }
}

bool Schubtext::linieAnfuegen() {
    if (LinienAnzahl_ >= LINIEN_MAX)
        return false;
    ++LinienAnzahl_;
    return true;
}

bool Schubtext::linieLoeschen() {
    if (LinienAnzahl_ == 0)
        return false;
    FeldListe_.erase(LinienAnzahl_); // the index of the last field
    --LinienAnzahl_;
    return true;
}

std::string Schubtext::satz(int index) const {
    const auto stelle = FeldListe_.find(index);
    return stelle != FeldListe_.end() ? stelle->second : "";
}

std::string Schubtext::text(bool nurAuswaerts) const {
    std::string text = std::to_string(felder());
    for (const auto& [index, satz] : FeldListe_)
        text += std::string(nurAuswaerts ? "/1-" : "/0-") + satz;
    return text;
}

Zahlbefund zahlPruefen(std::string_view text) {
    const auto kern = ohneRand(text);
    if (!siehtNachZahlAus(kern))
        return Zahlbefund::KeineZahl;
    std::int32_t zahl = 0;
    const auto [ende, fehler] = std::from_chars(kern.data(), kern.data() + kern.size(), zahl);
    const bool ganz = fehler == std::errc{} && ende == kern.data() + kern.size();
    return ganz && istZiffer(kern.front()) ? Zahlbefund::Gut : Zahlbefund::PasstNicht;
}

// Here and for a line one division of whole numbers: where both mean the same place, both come out the same.
double schubstelle(std::int32_t wert, int breite) {
    return static_cast<double>(wert) * breite / ACHSENLAENGE;
}

double linienstelle(int linie, int linien, int breite) {
    return static_cast<double>(linie) * breite / (linien + 1);
}

int feldAnStelle(double stelle, int linien, int breite) {
    int feld = 1;
    while (feld <= linien && linienstelle(feld, linien, breite) <= stelle)
        ++feld;
    return feld;
}
