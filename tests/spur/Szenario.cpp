#include "tests/spur/Szenario.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <sstream>

namespace {

using Art = Spureingabe::Art;

class Leser {
public:
    Szenario lesen(const std::string& text) {
        std::istringstream zeilen(text);
        for (std::string zeile; std::getline(zeilen, zeile);) {
            ++nummer_;
            if (!zeile.empty() && zeile.back() == '\r')
                zeile.pop_back();
            zeileLesen(zeile);
        }
        if (!ergebnisse_)
            throw Szenariofehler("the line \"=\" is missing");
        std::ranges::stable_sort(szenario_.eingaben, {}, &Spureingabe::zeit);
        const auto ende = std::ranges::find(szenario_.eingaben, Art::Ende, &Spureingabe::art);
        if (ende != szenario_.eingaben.end() && ende + 1 != szenario_.eingaben.end())
            throw Szenariofehler("\"ende\" must be the last input");
        return std::move(szenario_);
    }

private:
    void zeileLesen(const std::string& zeile) {
        std::istringstream woerter(zeile);
        std::string wort;
        if (!(woerter >> wort) || wort.starts_with('#'))
            return;
        if (wort == "=")
            ergebnisse_ = true;
        else if (ergebnisse_)
            ereignisseLesen(wort, woerter);
        else if (wort == "sql")
            szenario_.sql.push_back(rest(woerter));
        else if (wort == "schub")
            szenario_.schub = rest(woerter);
        else if (wort == "fehler")
            szenario_.fehler = static_cast<int>(zahl(naechstes(woerter)));
        else if (wort == "achsen")
            for (auto& achse : szenario_.achsen)
                achse = naechstes(woerter);
        else
            eingabeLesen(wort, woerter);
        if (std::string mehr; woerter >> mehr)
            fehler("\"" + mehr + "\" is too much");
    }

    void ereignisseLesen(const std::string& zeit, std::istringstream& woerter) {
        szenario_.erwartet.push_back({ms(zeit), naechstes(woerter)});
        for (std::string weiteres; woerter >> weiteres;)
            szenario_.erwartet.push_back({ms(zeit), weiteres});
    }

    void eingabeLesen(const std::string& zeit, std::istringstream& woerter) {
        struct Form {
            Art art;
            bool index;
            bool wert;
        };
        static const std::map<std::string, Form> FORMEN{
            {"start", {Art::Start, false, false}},    {"stop", {Art::Stop, false, false}},
            {"ende", {Art::Ende, false, false}},      {"buttons", {Art::Tasten, false, true}},
            {"pov", {Art::Pov, false, true}},         {"achse", {Art::Achse, true, true}},
            {"pad weg", {Art::PadWeg, false, false}}, {"pad da", {Art::PadDa, false, false}},
            {"regler", {Art::Regler, true, true}},    {"knopf", {Art::Knopf, true, false}}};

        Spureingabe eingabe;
        eingabe.zeit = ms(zeit);
        auto name = naechstes(woerter);
        if (name == "pad")
            name += " " + naechstes(woerter);
        const auto form = FORMEN.find(name);
        if (form == FORMEN.end())
            fehler("unknown input \"" + name + "\"");
        eingabe.art = form->second.art;
        if (form->second.index)
            eingabe.index = zahl(naechstes(woerter));
        if (form->second.wert)
            eingabe.wert = zahl(naechstes(woerter));
        grenzenPruefen(eingabe);
        szenario_.eingaben.push_back(eingabe);
    }

    void grenzenPruefen(const Spureingabe& eingabe) const {
        constexpr std::uint32_t LETZTE_ACHSE = 5;
        constexpr std::uint32_t LETZTER_REGLER = 12;
        if (eingabe.art == Art::Achse && (eingabe.index > LETZTE_ACHSE || eingabe.wert > 65535))
            fehler("an axis is 0 to 5, its value 0 to 65535");
        if (eingabe.art == Art::Regler && eingabe.index > LETZTER_REGLER)
            fehler("a scroll bar is 0 to 12");
        if (eingabe.art == Art::Knopf && eingabe.index > 1)
            fehler("a button is 0 or 1");
    }

    static std::string rest(std::istringstream& woerter) {
        std::string text;
        std::getline(woerter >> std::ws, text);
        return text;
    }

    std::string naechstes(std::istringstream& woerter) const {
        std::string wort;
        if (!(woerter >> wort))
            fehler("a word is missing");
        return wort;
    }

    std::uint32_t zahl(const std::string& wort) const {
        std::uint32_t wert = 0;
        const auto [ende, code] = std::from_chars(wort.data(), wort.data() + wort.size(), wert);
        if (code != std::errc{} || ende != wort.data() + wort.size())
            fehler("\"" + wort + "\" is no number");
        return wert;
    }

    std::chrono::milliseconds ms(const std::string& wort) const {
        return std::chrono::milliseconds{zahl(wort)};
    }

    [[noreturn]] void fehler(const std::string& text) const {
        throw Szenariofehler("line " + std::to_string(nummer_) + ": " + text);
    }

    Szenario szenario_;
    int nummer_ = 0;
    bool ergebnisse_ = false;
};

} // namespace

Szenario szenarioLesen(const std::string& text) {
    return Leser().lesen(text);
}
