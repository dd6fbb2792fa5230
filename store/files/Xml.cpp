// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Xml.h"

#include "store/db/Namen.h"

#include <expat.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <new>
#include <type_traits>

namespace {

constexpr const char* KODIERUNG = "UTF-8";
constexpr char NAMENSTRENNER = '\n'; ///< between the parts of an expanded name; no address holds it

/// The name as it is written, of "address, local name, prefix" with the separator between them; what has no
/// prefix has no third part, what has no address only the local name.
std::string geschriebenerName(std::string_view erweitert) {
    const std::size_t ort = erweitert.find(NAMENSTRENNER);
    if (ort == std::string_view::npos)
        return std::string(erweitert);
    const std::string_view rest = erweitert.substr(ort + 1);
    const std::size_t praefix = rest.find(NAMENSTRENNER);
    if (praefix == std::string_view::npos)
        return std::string(rest);
    return std::string(rest.substr(praefix + 1)) + ':' + std::string(rest.substr(0, praefix));
}

/// Builds the elements from what expat tells. Nothing may be thrown through expat, which is C: an exception
/// waits until it has come back.
class Leser {
public:
    explicit Leser(std::string_view xml) : xml_(xml), parser_(XML_ParserCreateNS(KODIERUNG, NAMENSTRENNER)) {
        if (!parser_)
            throw std::bad_alloc();
        XML_Parser parser = parser_.get();
        XML_SetUserData(parser, this);
        XML_SetReturnNSTriplet(parser, 1);
        XML_SetXmlDeclHandler(parser, kopf);
        XML_SetStartDoctypeDeclHandler(parser, dokumenttyp);
        XML_SetStartNamespaceDeclHandler(parser, namensraum);
        XML_SetElementHandler(parser, anfang, ende);
        XML_SetCharacterDataHandler(parser, text);
        XML_SetStartCdataSectionHandler(parser, cdata);
    }

    std::optional<Xmlelement> lesen() {
        const auto stand = XML_Parse(parser_.get(), xml_.data(), static_cast<int>(xml_.size()), XML_TRUE);
        if (ausnahme_)
            std::rethrow_exception(ausnahme_);
        return stand == XML_STATUS_OK && !zuEnde_ ? std::move(wurzel_) : std::nullopt;
    }

private:
    struct Freigabe {
        void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
    };

    void ablehnen() {
        zuEnde_ = true;
        XML_StopParser(parser_.get(), XML_FALSE);
    }

    /// expat may call once more after it has been stopped.
    template <class Arbeit> static void geschuetzt(void* leser, Arbeit arbeit) noexcept {
        Leser& dieser = *static_cast<Leser*>(leser);
        if (dieser.zuEnde_)
            return;
        try {
            arbeit(dieser);
        } catch (...) {
            dieser.ausnahme_ = std::current_exception();
            dieser.ablehnen();
        }
    }

    static void kopf(void* leser, const char*, const char* kodierung, int) {
        geschuetzt(leser, [&](Leser& dieser) {
            if (kodierung && !gleicherName(kodierung, KODIERUNG))
                dieser.ablehnen();
        });
    }

    static void dokumenttyp(void* leser, const char*, const char*, const char*, int) {
        geschuetzt(leser, [](Leser& dieser) { dieser.ablehnen(); });
    }
    static void cdata(void* leser) {
        geschuetzt(leser, [](Leser& dieser) { dieser.ablehnen(); });
    }

    /// Comes before the element that declares it.
    static void namensraum(void* leser, const char* praefix, const char* adresse) {
        geschuetzt(leser, [&](Leser& dieser) {
            const std::string name = praefix ? std::string("xmlns:") + praefix : "xmlns";
            dieser.namensraeume_.emplace_back(name, adresse ? adresse : "");
            const auto istDieser = [&](const auto& attribut) { return attribut.first == name; };
            if (!dieser.offen_.empty() && std::ranges::any_of(dieser.offen_[0].attribute, istDieser))
                dieser.ablehnen();
        });
    }

    static void anfang(void* leser, const char* name, const char** attribute) {
        geschuetzt(leser, [&](Leser& dieser) {
            if (dieser.offen_.size() == TIEFSTES_XML)
                return dieser.ablehnen();
            Xmlelement element{geschriebenerName(name), std::exchange(dieser.namensraeume_, {}), {}};
            for (; *attribute; attribute += 2)
                element.attribute.emplace_back(geschriebenerName(attribute[0]), attribute[1]);
            dieser.offen_.push_back(std::move(element));
        });
    }

    static void ende(void* leser, const char*) {
        geschuetzt(leser, [](Leser& dieser) {
            Xmlelement element = std::move(dieser.offen_.back());
            dieser.offen_.pop_back();
            if (dieser.offen_.empty())
                dieser.wurzel_ = std::move(element);
            else
                dieser.offen_.back().kinder.push_back(std::move(element));
        });
    }

    /// Blanks and line ends that lay the file out, but none that somebody wrote as a reference.
    static void text(void* leser, const char* zeichen, int laenge) {
        geschuetzt(leser, [&](Leser& dieser) {
            const auto stelle = static_cast<std::size_t>(XML_GetCurrentByteIndex(dieser.parser_.get()));
            const std::string_view gelesen(zeichen, static_cast<std::size_t>(laenge));
            if (dieser.xml_[stelle] == '&' || gelesen.find_first_not_of(" \t\r\n") != std::string_view::npos)
                dieser.ablehnen();
        });
    }

    std::string_view xml_;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, Freigabe> parser_;
    std::vector<Xmlelement> offen_; ///< the element that is read and those around it, the root first
    Xmlattribute namensraeume_;     ///< of the element that comes next
    std::optional<Xmlelement> wurzel_;
    std::exception_ptr ausnahme_;
    bool zuEnde_ = false;
};

/// Line ends and tabs are written as references: as themselves they would be read as blanks.
void wertAnfuegen(std::string& xml, std::string_view wert) {
    for (const char zeichen : wert) {
        switch (zeichen) {
        case '&':
            xml += "&amp;";
            break;
        case '<':
            xml += "&lt;";
            break;
        case '"':
            xml += "&quot;";
            break;
        case '\t':
            xml += "&#09;";
            break;
        case '\n':
            xml += "&#10;";
            break;
        case '\r':
            xml += "&#13;";
            break;
        default:
            xml += zeichen;
        }
    }
}

void elementAnfuegen(std::string& xml, const Xmlelement& element, std::size_t tiefe) {
    const std::string einzug(tiefe, '\t');
    xml += einzug + '<' + element.name;
    for (const auto& [name, wert] : element.attribute) {
        xml += ' ' + name + "=\"";
        wertAnfuegen(xml, wert);
        xml += '"';
    }
    if (element.kinder.empty()) {
        xml += " />\n";
        return;
    }
    xml += ">\n";
    for (const Xmlelement& kind : element.kinder)
        elementAnfuegen(xml, kind, tiefe + 1);
    xml += einzug + "</" + element.name + ">\n";
}

} // namespace

std::optional<Xmlelement> xmlLesen(std::string_view xml) {
    // expat would find out UTF-16 by itself. No other XML has a zero byte.
    const bool utf16 = xml.find('\0') != std::string_view::npos;
    return xml.size() <= GROESSTES_XML && !utf16 ? Leser(xml).lesen() : std::nullopt;
}

std::string xmlSchreiben(const Xmlelement& wurzel) {
    std::string xml;
    elementAnfuegen(xml, wurzel, 0);
    return xml;
}

std::optional<std::size_t> xmlZeichenzahl(std::string_view text) {
    // What the parser takes can be held, so none but the parser is asked.
    const Xmlelement probe{"w", {{"w", std::string(text)}}, {}};
    const auto gelesen = xmlLesen(xmlSchreiben(probe));
    if (!gelesen || gelesen->attribute != probe.attribute)
        return std::nullopt;
    constexpr unsigned FOLGE = 0x80; // the bytes of UTF-8 that go on with a character are 10xxxxxx
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != FOLGE; }));
}
