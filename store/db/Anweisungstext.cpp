// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/db/Anweisungstext.h"

#include "store/db/Namen.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <utility>

namespace {

enum class Zeichenart { Wort, Zahl, Text, Sonstiges };

struct Zeichen {
    Zeichenart art;
    std::string inhalt; ///< of a text literal what stands between the quotes, doubled quotes undone
};

[[noreturn]] void syntaxfehler() {
    throw LaufzeitFehler(Fehlernummer::Syntax, "Syntaxfehler in der Datenbankabfrage.");
}

bool istZiffer(char c) {
    return c >= '0' && c <= '9';
}

/// Letters, the underscore and every byte of a character beyond ASCII.
bool istBuchstabe(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool istLeerraum(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// Cuts a statement text into tokens. Comments, double quotes and other marks that the texts never need do
/// not exist for it.
class Zerleger {
public:
    explicit Zerleger(std::string_view text) : rest_(text) {}

    std::vector<Zeichen> alle() {
        std::vector<Zeichen> zeichen;
        for (leerraumWeg(); !rest_.empty(); leerraumWeg())
            zeichen.push_back(naechstes());
        return zeichen;
    }

private:
    void leerraumWeg() {
        while (!rest_.empty() && istLeerraum(rest_.front()))
            rest_.remove_prefix(1);
    }

    Zeichen naechstes() {
        const char c = rest_.front();
        if (istBuchstabe(c))
            return {Zeichenart::Wort, solange([](char d) { return istBuchstabe(d) || istZiffer(d); })};
        if (istZiffer(c))
            return {Zeichenart::Zahl, solange(istZiffer)};
        if (c == '\'')
            return {Zeichenart::Text, literal()};
        return {Zeichenart::Sonstiges, sonstiges()};
    }

    template <class Probe> std::string solange(Probe probe) {
        std::size_t laenge = 0;
        while (laenge < rest_.size() && probe(rest_[laenge]))
            ++laenge;
        return nimm(laenge);
    }

    std::string literal() {
        rest_.remove_prefix(1);
        std::string inhalt;
        for (;;) {
            const std::size_t ende = rest_.find('\'');
            if (ende == std::string_view::npos)
                syntaxfehler();
            inhalt += nimm(ende);
            rest_.remove_prefix(1);
            if (rest_.empty() || rest_.front() != '\'')
                return inhalt;
            inhalt += nimm(1);
        }
    }

    std::string sonstiges() {
        for (const std::string_view doppelt : {"<>", "<=", ">="})
            if (rest_.starts_with(doppelt))
                return nimm(2);
        if (std::string_view("().,;=<>+-*").find(rest_.front()) == std::string_view::npos)
            syntaxfehler();
        return nimm(1);
    }

    std::string nimm(std::size_t laenge) {
        std::string stueck(rest_.substr(0, laenge));
        rest_.remove_prefix(laenge);
        return stueck;
    }

    std::string_view rest_;
};

bool istWort(const Zeichen& zeichen, std::string_view wort) {
    return zeichen.art == Zeichenart::Wort && gleicherName(zeichen.inhalt, wort);
}

std::int64_t zahlLesen(const std::string& ziffern) {
    std::int64_t zahl = 0;
    if (std::from_chars(ziffern.data(), ziffern.data() + ziffern.size(), zahl).ec != std::errc())
        syntaxfehler();
    return zahl;
}

/// Appends one token of the part behind the table name.
void anfuegen(Auswahl& auswahl, const Zeichen& zeichen, bool hinterPunkt) {
    std::string stueck = zeichen.inhalt;
    if (zeichen.art == Zeichenart::Text) {
        auswahl.werte.emplace_back(std::exchange(stueck, "?"));
    } else if (zeichen.art == Zeichenart::Zahl && !auswahl.geordnet) {
        auswahl.werte.emplace_back(zahlLesen(std::exchange(stueck, "?")));
    } else if (zeichen.art == Zeichenart::Wort && hinterPunkt) {
        stueck = inAnfuehrung(stueck);
    } else if (istWort(zeichen, "ORDER")) {
        auswahl.geordnet = true;
    } else if (istWort(zeichen, "SELECT") || istWort(zeichen, "VALUES")) {
        syntaxfehler(); // a second one would bring in rows of another table
    }
    auswahl.bedingung += ' ' + stueck;
}

/// The tokens behind the table name, up to the closing semicolon.
void bedingungLesen(Auswahl& auswahl, const std::vector<Zeichen>& zeichen, std::size_t von) {
    if (von < zeichen.size() && !istWort(zeichen[von], "WHERE") && !istWort(zeichen[von], "ORDER"))
        syntaxfehler();
    for (std::size_t i = von; i < zeichen.size(); ++i) {
        if (zeichen[i].inhalt == ";" && zeichen[i].art == Zeichenart::Sonstiges)
            syntaxfehler();
        const Zeichen& davor = zeichen[i - 1];
        anfuegen(auswahl, zeichen[i], davor.art == Zeichenart::Sonstiges && davor.inhalt == ".");
    }
}

} // namespace

Auswahl auswahlLesen(std::string_view text) {
    std::vector<Zeichen> zeichen = Zerleger(text).alle();
    Auswahl auswahl;
    if (zeichen.size() == 1 && zeichen[0].art == Zeichenart::Wort) {
        auswahl.tabelle = zeichen[0].inhalt;
        return auswahl;
    }
    if (!zeichen.empty() && zeichen.back().inhalt == ";" && zeichen.back().art == Zeichenart::Sonstiges)
        zeichen.pop_back();
    constexpr std::size_t TABELLE = 3;
    if (zeichen.size() <= TABELLE || !istWort(zeichen[0], "SELECT") || zeichen[1].inhalt != "*" ||
        zeichen[1].art != Zeichenart::Sonstiges || !istWort(zeichen[2], "FROM") ||
        zeichen[TABELLE].art != Zeichenart::Wort)
        syntaxfehler();
    auswahl.tabelle = zeichen[TABELLE].inhalt;
    bedingungLesen(auswahl, zeichen, TABELLE + 1);
    return auswahl;
}
