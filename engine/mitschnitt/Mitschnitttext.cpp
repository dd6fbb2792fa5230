// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/mitschnitt/Mitschnitttext.h"

#include "platform/mitschnitt/Ereignistext.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace {

using Art = Mitschnitteintrag::Art;
using Zeit = Mitschnittband::Zeit;
using Block = Mitschnittband::Block;

constexpr std::string_view FEHLERVERMERK = "fehler ";

std::string inEinerZeile(std::string text) {
    std::ranges::replace_if(
        text, [](char zeichen) { return zeichen >= '\0' && zeichen < ' '; }, ' ');
    return text;
}

void zeile(std::string& text, std::initializer_list<std::string_view> stuecke) {
    for (const auto stueck : stuecke)
        text += stueck;
    text += '\n';
}

class Schreiber {
public:
    Schreiber(std::span<const Block> bloecke, Zeit ende) : bloecke_(bloecke), null_(bloecke.front().beginn) {
        for (const auto& block : bloecke_)
            for (const auto& eintrag : block.eintraege)
                schreiben(eintrag);
        zeile(eingaben_, {zeit(std::max(ende, letzte_)), " ende"});
        ereigniszeileBeenden();
    }

    std::string text(const Mitschnittkopf& kopf) const {
        std::string text;
        kopfSchreiben(text, kopf);
        const auto& erster = bloecke_.front();
        text += erster.anfang.grund ? *erster.anfang.grund : "";
        if (!fehler_.empty())
            zeile(text, {FEHLERVERMERK, fehler_});
        text += erster.anfang.text;
        if (erster.anfang.mitten)
            zeile(text, {"0 lauf"});
        return text + eingaben_ + "=\n" + ereignisse_;
    }

private:
    void kopfSchreiben(std::string& text, const Mitschnittkopf& kopf) const {
        zeile(text, {mitschnittkennung(kopf.schema), kopf.zeitpunkt});
        if (spaete_ > 0)
            zeile(text, {"# ", std::to_string(spaete_), " ticks came late (spaet), the latest by ",
                         std::to_string(spaeteste_.count()), " ms"});
        zeile(text, {"toleranz ", std::to_string(MITSCHNITTTOLERANZ.count())});
        genauigkeitSchreiben(text, kopf.geaendertAb);
    }

    void genauigkeitSchreiben(std::string& text, std::optional<Zeit> geaendertAb) const {
        if (!bloecke_.front().exakt) {
            zeile(text, {"# Not exact: the run never held still, so nobody knows how it stood at time 0."});
            zeile(text, {"genau 0"});
        } else if (geaendertAb) {
            zeile(text, {"# Exact only so far: then the Schema was changed while the run was on."});
            zeile(text, {"genau ", zeit(std::max(*geaendertAb, null_))});
        }
    }

    std::string zeit(Zeit wann) const { return std::to_string((wann - null_).count()); }

    void schreiben(const Mitschnitteintrag& eintrag) {
        letzte_ = std::max(letzte_, eintrag.zeit);
        if (eintrag.art == Art::Ereignis)
            ereignisSchreiben(eintrag);
        else if (eintrag.art == Art::Vermerk && eintrag.text.starts_with(FEHLERVERMERK))
            fehler_ = eintrag.text.substr(FEHLERVERMERK.size());
        else
            zeile(eingaben_, {zeit(eintrag.zeit), " ", eingabe(eintrag)});
    }

    std::string eingabe(const Mitschnitteintrag& eintrag) {
        const auto wert = std::to_string(eintrag.wert);
        switch (eintrag.art) {
        case Art::Achse:
            return "achse " + std::to_string(eintrag.index) + " " + wert;
        case Art::Tasten:
            return "buttons " + wert;
        case Art::Pov:
            return "pov " + wert;
        case Art::PadWeg:
            return "pad weg";
        case Art::PadDa:
            return "pad da";
        case Art::Spaet:
            ++spaete_;
            spaeteste_ = std::max(spaeteste_, Zeit{eintrag.wert});
            return "spaet " + wert;
        case Art::Versatz:
            return "versatz " + std::to_string(eintrag.index) + " " + wert;
        case Art::Vermerk:
        case Art::Ereignis:
            break;
        }
        return eintrag.text;
    }

    // Those of one instant share a line.
    void ereignisSchreiben(const Mitschnitteintrag& eintrag) {
        if (eintrag.zeit != ereigniszeit_) {
            ereigniszeileBeenden();
            ereigniszeit_ = eintrag.zeit;
            ereignisse_ += zeit(eintrag.zeit);
        }
        // Of several in one record each is a word of its own for the trace: they can't be counted as one.
        const auto text = ereignistext(eintrag.ereignis);
        const bool einWort = text.find(' ') == std::string::npos;
        for (std::uint32_t i = 0; i < (einWort ? 1 : eintrag.index); ++i) {
            ereignisse_ += ' ';
            ereignisse_ += text;
        }
        if (einWort && eintrag.index > 1) {
            ereignisse_ += '*';
            ereignisse_ += std::to_string(eintrag.index);
        }
    }

    void ereigniszeileBeenden() {
        if (!ereignisse_.empty())
            ereignisse_ += '\n';
    }

    std::span<const Block> bloecke_;
    Zeit null_;
    Zeit letzte_{0};
    std::string eingaben_;
    std::string ereignisse_;
    Zeit ereigniszeit_{-1};
    std::string fehler_;
    int spaete_ = 0;
    Zeit spaeteste_{0};
};

} // namespace

std::string mitschnittkennung(const std::string& schema) {
    return "# Record of the Schema \"" + inEinerZeile(schema) + "\", saved ";
}

std::string mitschnitttext(const std::vector<Block>& bloecke, Zeit jetzt, const Mitschnittkopf& kopf) {
    if (bloecke.empty())
        return "";
    const auto genau = std::ranges::find(bloecke, true, &Block::exakt);
    const auto erster = genau != bloecke.end() ? genau : bloecke.begin();
    return Schreiber({erster, bloecke.end()}, jetzt).text(kopf);
}
