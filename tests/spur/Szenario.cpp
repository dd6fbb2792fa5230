// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/spur/Szenario.h"

#include "tests/spur/Variante.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <regex>
#include <sstream>

namespace {

using Art = Spureingabe::Art;

/// The rows that a Schema has anyway.
std::vector<std::string> grundzeilen() {
    std::vector<std::string> zeilen{"INSERT INTO tblTastatur (Schemaname) VALUES ('S');",
                                    "INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');",
                                    "INSERT INTO Sensible VALUES ('S', 1, 1, 0, 0, 0, 0, 0);",
                                    "INSERT INTO SensibleR VALUES ('S', 1, 1, 0, 0, 0, 0);"};
    const std::string linien = "20000, 45000, 20000, 45000";
    for (const std::string tabelle : {"tblStick", "tblStickR"}) {
        zeilen.push_back(
            "WITH RECURSIVE zeile(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM zeile WHERE i < 20) "
            "INSERT INTO " +
            tabelle + " (Schemaname, \"index\") SELECT 'S', i FROM zeile;");
        zeilen.push_back("REPLACE INTO " + tabelle + " VALUES ('S', 1, " + linien + ", " + linien + ", " +
                         linien + ");");
    }
    return zeilen;
}

/// Whether a statement is about the left stick.
bool nenntLinkenStick(const std::string& anweisung) {
    static const std::regex TABELLE(R"(\b(tblStick|tblStickAktion|Sensible)\b)");
    return std::regex_search(anweisung, TABELLE);
}

class Leser {
public:
    std::vector<Szenario> lesen(const std::string& text) {
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
        return szenarien();
    }

private:
    std::vector<Szenario> szenarien() const {
        if (varianten_.empty())
            return {uebertragen(szenario_, erwartungen_, Variante{})};
        if (!linkerStickGenannt_ && !linkerStickBewegt())
            throw Szenariofehler("what is played on several sticks or axes is told of the left stick");
        std::vector<Szenario> alle;
        for (const auto& variante : varianten_)
            alle.push_back(uebertragen(szenario_, erwartungen_, variante));
        return alle;
    }

    bool linkerStickBewegt() const {
        return std::ranges::any_of(szenario_.eingaben, [this](const Spureingabe& eingabe) {
            return eingabe.art == Art::Achse && szenario_.achsen[eingabe.index].starts_with('l');
        });
    }

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
            anweisungLesen(rest(woerter));
        else if (wort == "grundzeilen")
            grundzeilenLegen();
        else if (wort == "sticks")
            sticksLesen(naechstes(woerter));
        else if (wort == "auf")
            pruefachsenLesen(woerter);
        else if (wort == "schub")
            szenario_.schub = rest(woerter);
        else if (wort == "zustand")
            szenario_.zustand.push_back(rest(woerter));
        else if (wort == "toleranz")
            szenario_.toleranz = ms(naechstes(woerter));
        else if (wort == "genau")
            szenario_.genau = ms(naechstes(woerter));
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

    void anweisungLesen(const std::string& anweisung) {
        linkerStickGenannt_ |= nenntLinkenStick(anweisung);
        szenario_.sql.push_back(anweisung);
    }

    void grundzeilenLegen() {
        for (auto& anweisung : grundzeilen())
            szenario_.sql.push_back(std::move(anweisung));
    }

    void sticksLesen(const std::string& welche) {
        if (welche != "beide")
            fehler("unknown sticks \"" + welche + "\"");
        variantenSetzen({LINKS, RECHTS});
    }

    void pruefachsenLesen(std::istringstream& woerter) {
        std::vector<Variante> varianten;
        for (std::string achse; woerter >> achse;) {
            const auto* variante = std::ranges::find(PRUEFACHSEN, achse, &Variante::name);
            if (variante == PRUEFACHSEN.end())
                fehler("unknown axis \"" + achse + "\"");
            if (std::ranges::find(varianten, achse, &Variante::name) != varianten.end())
                fehler("the axis \"" + achse + "\" stands twice");
            varianten.push_back(*variante);
        }
        if (varianten.empty())
            fehler("a word is missing");
        variantenSetzen(std::move(varianten));
    }

    void variantenSetzen(std::vector<Variante> varianten) {
        if (!varianten_.empty())
            fehler("\"sticks\" or \"auf\" stands already");
        varianten_ = std::move(varianten);
    }

    void ereignisseLesen(const std::string& zeit, std::istringstream& woerter) {
        const auto strich = zeit.find('-', 1);
        if (strich != std::string::npos) {
            spanneLesen(ms(zeit.substr(0, strich)), ms(zeit.substr(strich + 1)), naechstes(woerter));
            return;
        }
        ereignisLesen(ms(zeit), naechstes(woerter));
        for (std::string weiteres; woerter >> weiteres;)
            ereignisLesen(ms(zeit), weiteres);
    }

    void ereignisLesen(std::chrono::milliseconds zeit, const std::string& wort) {
        const auto stern = wort.find('*');
        const auto anzahl = stern == std::string::npos ? 1 : zahl(wort.substr(stern + 1));
        constexpr std::uint32_t HOECHSTENS = 1'000'000; // an `Ego Shooter` goes no further at once
        if (anzahl > HOECHSTENS)
            fehler("more than a million events at once");
        ereignisseZaehlen(anzahl);
        laengePruefen(wort);
        erwartungen_.push_back({zeit, std::nullopt, wort.substr(0, stern), anzahl});
    }

    void spanneLesen(std::chrono::milliseconds von, std::chrono::milliseconds bis, const std::string& text) {
        if (varianten_.empty())
            fehler("a span of time without \"sticks\" or \"auf\"");
        if (bis < von)
            fehler("a span of time that ends before it begins");
        if (bis - von > std::chrono::minutes{1}) // an event each one or two milliseconds
            fehler("a span of more than a minute");
        ereignisseZaehlen(static_cast<std::size_t>((bis - von).count()) + 1);
        laengePruefen(text);
        erwartungen_.push_back({von, bis, text});
    }

    void ereignisseZaehlen(std::size_t anzahl) {
        ereignisse_ += anzahl;
        if (ereignisse_ * std::max<std::size_t>(varianten_.size(), 1) > HOECHSTENS_EREIGNISSE)
            fehler("more than five million events");
    }

    // What exchanges the axes in it takes the stack letter by letter.
    void laengePruefen(const std::string& ereignis) const {
        constexpr std::size_t HOECHSTENS = 40;
        if (ereignis.size() > HOECHSTENS)
            fehler("no event is as long");
    }

    void eingabeLesen(const std::string& zeit, std::istringstream& woerter) {
        struct Form {
            Art art;
            bool index;
            bool wert;
            bool dauer = false;
        };
        static const std::map<std::string, Form> FORMEN{{"start", {Art::Start, false, false}},
                                                        {"stop", {Art::Stop, false, false}},
                                                        {"lauf", {Art::Lauf, false, false}},
                                                        {"spaet", {Art::Spaet, false, false, true}},
                                                        {"versatz", {Art::Versatz, true, false, true}},
                                                        {"ende", {Art::Ende, false, false}},
                                                        {"buttons", {Art::Tasten, false, true}},
                                                        {"pov", {Art::Pov, false, true}},
                                                        {"achse", {Art::Achse, true, true}},
                                                        {"pad weg", {Art::PadWeg, false, false}},
                                                        {"pad da", {Art::PadDa, false, false}},
                                                        {"regler", {Art::Regler, true, true}},
                                                        {"knopf", {Art::Knopf, true, false}}};

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
        if (form->second.dauer)
            eingabe.dauer = dauer(naechstes(woerter));
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
        if (eingabe.art == Art::Spaet && eingabe.dauer < std::chrono::milliseconds{1})
            fehler("nothing is late by less than 1 ms");
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

    // Each millisecond is played.
    std::chrono::milliseconds ms(const std::string& wort) const {
        const std::chrono::milliseconds zeit{zahl(wort)};
        if (zeit > std::chrono::days{1})
            fehler("\"" + wort + "\" is more than a day");
        return zeit;
    }

    std::chrono::milliseconds dauer(const std::string& wort) const {
        const bool negativ = wort.starts_with('-');
        const auto betrag = ms(negativ ? wort.substr(1) : wort);
        return negativ ? -betrag : betrag;
    }

    [[noreturn]] void fehler(const std::string& text) const {
        throw Szenariofehler("line " + std::to_string(nummer_) + ": " + text);
    }

    Szenario szenario_; ///< as it is written
    std::vector<Erwartung> erwartungen_;
    std::vector<Variante> varianten_;
    bool linkerStickGenannt_ = false; ///< by a statement
    std::size_t ereignisse_ = 0;
    int nummer_ = 0;
    bool ergebnisse_ = false;
};

} // namespace

std::vector<Szenario> szenarienLesen(const std::string& text) {
    return Leser().lesen(text);
}
