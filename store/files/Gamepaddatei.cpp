#include "store/files/Gamepaddatei.h"

#include "store/db/Namen.h"
#include "store/files/XmlText.h"

#include <pugixml.hpp>

#include <algorithm>
#include <set>

namespace {

const Xmlattribute NAMENSRAEUME{{"xmlns:s", "uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882"},
                                {"xmlns:dt", "uuid:C2F41010-65B3-11d1-A29F-00AA00C14882"},
                                {"xmlns:rs", "urn:schemas-microsoft-com:rowset"},
                                {"xmlns:z", "#RowsetSchema"}};
const Xmlattribute SCHEMA{{"id", "RowsetSchema"}};
const Xmlattribute GRUNDTYP{{"type", "rs:rowbase"}};
constexpr std::string_view GENULLT = "rs:forcenull"; ///< names of columns that are Null, blanks between them

/// The file is none that can be read and written back.
struct Unlesbar {};

void verlange(bool bedingung) {
    if (!bedingung)
        throw Unlesbar{};
}

bool heisst(pugi::xml_node element, std::string_view name) {
    return element.name() == name;
}

Xmlattribute attributeVon(pugi::xml_node element) {
    Xmlattribute liste;
    std::set<std::string_view> namen;
    for (const pugi::xml_attribute attribut : element.attributes()) {
        const auto wert = xmlAttributwert(attribut.value());
        verlange(wert && namen.insert(attribut.name()).second);
        liste.emplace_back(attribut.name(), *wert);
    }
    return liste;
}

bool sindAttribute(Xmlattribute gelesene, Xmlattribute verlangte) {
    std::sort(gelesene.begin(), gelesene.end());
    std::sort(verlangte.begin(), verlangte.end());
    return gelesene == verlangte;
}

/// The elements inside an element, in which nothing else may stand.
std::vector<pugi::xml_node> elementeIn(pugi::xml_node element) {
    std::vector<pugi::xml_node> elemente;
    for (const pugi::xml_node kind : element.children()) {
        verlange(kind.type() == pugi::node_element);
        elemente.push_back(kind);
    }
    return elemente;
}

/// The elements inside one that has no attributes, as those of the namespace rs are.
std::vector<pugi::xml_node> elementeInBlossem(pugi::xml_node element) {
    verlange(attributeVon(element).empty());
    return elementeIn(element);
}

/// Takes the value of an attribute out of the list.
std::optional<std::string> nimmAttribut(Xmlattribute& liste, std::string_view name) {
    const auto stelle = std::find_if(liste.begin(), liste.end(),
                                     [&](const auto& attribut) { return attribut.first == name; });
    if (stelle == liste.end())
        return std::nullopt;
    std::string wert = std::move(stelle->second);
    liste.erase(stelle);
    return wert;
}

/// Whether an attribute can be called so. Letters beyond ASCII are not told apart.
bool istSpaltenname(std::string_view name) {
    const auto anfang = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || (c & 0x80) != 0;
    };
    const auto innen = [&](char c) { return anfang(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; };
    return !name.empty() && anfang(name.front()) && std::all_of(name.begin(), name.end(), innen) &&
           name != "xmlns" && xmlZeichenzahl(name);
}

Gamepadspalte spalteAus(pugi::xml_node attributtyp) {
    Gamepadspalte spalte;
    spalte.attribute = attributeVon(attributtyp);
    const auto name = nimmAttribut(spalte.attribute, "name");
    verlange(name && istSpaltenname(*name));
    spalte.name = *name;
    const auto kinder = elementeIn(attributtyp);
    if (!kinder.empty()) {
        verlange(kinder.size() == 1 && heisst(kinder[0], "s:datatype") && elementeIn(kinder[0]).empty());
        spalte.datentyp = attributeVon(kinder[0]);
    }
    return spalte;
}

void schemaLesen(Gamepadtabelle& tabelle, pugi::xml_node schema) {
    const auto typen = elementeIn(schema);
    verlange(heisst(schema, "s:Schema") && attributeVon(schema) == SCHEMA && typen.size() == 1 &&
             heisst(typen[0], "s:ElementType"));
    tabelle.zeilentyp = attributeVon(typen[0]);
    verlange(std::count(tabelle.zeilentyp.begin(), tabelle.zeilentyp.end(),
                        std::pair<std::string, std::string>("name", "row")) == 1);
    std::set<std::string> namen;
    for (const pugi::xml_node kind : elementeIn(typen[0])) {
        if (heisst(kind, "s:extends")) {
            verlange(attributeVon(kind) == GRUNDTYP && elementeIn(kind).empty());
            continue;
        }
        verlange(heisst(kind, "s:AttributeType"));
        tabelle.spalten.push_back(spalteAus(kind));
        verlange(namen.insert(tabelle.spalten.back().name).second);
    }
    verlange(namen.contains("Schema"));
}

/// The rows of rs:data, pending changes made.
class Zeilenleser {
public:
    explicit Zeilenleser(const Gamepadtabelle& tabelle) {
        for (const Gamepadspalte& spalte : tabelle.spalten)
            spalten_.insert(spalte.name);
    }

    std::vector<Gamepadzeile> lesen(pugi::xml_node daten) {
        verlange(heisst(daten, "rs:data"));
        for (const pugi::xml_node kind : elementeInBlossem(daten)) {
            if (heisst(kind, "z:row"))
                zeilen_.push_back(zeileAus(kind).werte);
            else if (heisst(kind, "rs:insert"))
                neueLesen(kind);
            else if (heisst(kind, "rs:update"))
                geaenderteLesen(kind);
            else
                geloeschteLesen(kind);
        }
        return std::move(zeilen_);
    }

private:
    struct Zeile {
        Gamepadzeile werte;
        std::vector<std::string> genullte;
    };

    Zeile zeileAus(pugi::xml_node element) const {
        verlange(heisst(element, "z:row") && elementeIn(element).empty());
        Zeile zeile;
        Xmlattribute attribute = attributeVon(element);
        if (const auto namen = nimmAttribut(attribute, GENULLT))
            zeile.genullte = woerter(*namen);
        for (auto& [name, wert] : attribute) {
            verlange(spalten_.contains(name));
            zeile.werte.emplace(std::move(name), std::move(wert));
        }
        nullen(zeile.werte, zeile.genullte);
        return zeile;
    }

    static std::vector<std::string> woerter(std::string_view text) {
        std::vector<std::string> liste(1);
        for (const char c : text) {
            if (c != ' ')
                liste.back() += c;
            else if (!liste.back().empty())
                liste.emplace_back();
        }
        return liste;
    }

    static void nullen(Gamepadzeile& werte, const std::vector<std::string>& namen) {
        for (const std::string& name : namen)
            werte.erase(name);
    }

    void neueLesen(pugi::xml_node einfuegung) {
        for (const pugi::xml_node kind : elementeInBlossem(einfuegung))
            zeilen_.push_back(zeileAus(kind).werte);
    }

    /// Each row outside rs:original has the columns that have changed against its original.
    void geaenderteLesen(pugi::xml_node aenderung) {
        std::vector<Gamepadzeile> originale;
        std::vector<Zeile> neue;
        for (const pugi::xml_node kind : elementeInBlossem(aenderung)) {
            if (!heisst(kind, "rs:original")) {
                neue.push_back(zeileAus(kind));
                continue;
            }
            for (const pugi::xml_node original : elementeInBlossem(kind))
                originale.push_back(zeileAus(original).werte);
        }
        verlange(originale.size() == neue.size());
        for (std::size_t i = 0; i < neue.size(); ++i) {
            neue[i].werte.merge(originale[i]);
            nullen(neue[i].werte, neue[i].genullte);
            zeilen_.push_back(std::move(neue[i].werte));
        }
    }

    void geloeschteLesen(pugi::xml_node loeschung) const {
        verlange(heisst(loeschung, "rs:delete"));
        for (const pugi::xml_node kind : elementeInBlossem(loeschung))
            zeileAus(kind);
    }

    std::set<std::string, std::less<>> spalten_;
    std::vector<Gamepadzeile> zeilen_;
};

/// The one element of the document. A declaration may stand before it when it says the encoding that is read.
pugi::xml_node wurzelVon(const pugi::xml_document& dokument) {
    pugi::xml_node wurzel;
    for (const pugi::xml_node knoten : dokument.children()) {
        if (knoten.type() == pugi::node_declaration) {
            Xmlattribute attribute = attributeVon(knoten);
            verlange(gleicherName(nimmAttribut(attribute, "encoding").value_or("UTF-8"), "UTF-8"));
            continue;
        }
        verlange(knoten.type() == pugi::node_element && !wurzel);
        wurzel = knoten;
    }
    verlange(heisst(wurzel, "xml") && sindAttribute(attributeVon(wurzel), NAMENSRAEUME));
    return wurzel;
}

Gamepadtabelle tabelleAus(std::string_view xml) {
    verlange(xmlZeichenzahl(xml).has_value());
    pugi::xml_document dokument;
    // Values come as they stand in the file. What no such file contains comes too, so that it is seen and
    // refused.
    constexpr unsigned art =
        pugi::parse_declaration | pugi::parse_doctype | pugi::parse_cdata | pugi::parse_fragment;
    verlange(dokument.load_buffer(xml.data(), xml.size(), art, pugi::encoding_utf8));
    const auto teile = elementeIn(wurzelVon(dokument));
    verlange(teile.size() == 2);
    Gamepadtabelle tabelle;
    schemaLesen(tabelle, teile[0]);
    tabelle.zeilen = Zeilenleser(tabelle).lesen(teile[1]);
    return tabelle;
}

pugi::xml_node anfuegen(pugi::xml_node ziel, const char* name, const Xmlattribute& attribute) {
    pugi::xml_node element = ziel.append_child(name);
    for (const auto& [attribut, wert] : attribute)
        element.append_attribute(attribut.c_str()) = wert.c_str();
    return element;
}

void schemaBauen(pugi::xml_node wurzel, const Gamepadtabelle& tabelle) {
    pugi::xml_node typ = anfuegen(anfuegen(wurzel, "s:Schema", SCHEMA), "s:ElementType", tabelle.zeilentyp);
    for (const Gamepadspalte& spalte : tabelle.spalten) {
        pugi::xml_node element = anfuegen(typ, "s:AttributeType", {{"name", spalte.name}});
        for (const auto& [attribut, wert] : spalte.attribute)
            element.append_attribute(attribut.c_str()) = wert.c_str();
        if (!spalte.datentyp.empty())
            anfuegen(element, "s:datatype", spalte.datentyp);
    }
    anfuegen(typ, "s:extends", GRUNDTYP);
}

void zeileBauen(pugi::xml_node daten, const Gamepadtabelle& tabelle, const Gamepadzeile& zeile) {
    pugi::xml_node element = daten.append_child("z:row");
    for (const Gamepadspalte& spalte : tabelle.spalten)
        if (const auto wert = zeile.find(spalte.name); wert != zeile.end())
            element.append_attribute(spalte.name.c_str()) = wert->second.c_str();
}

bool inXmlMoeglich(const Xmlattribute& attribute) {
    return std::all_of(attribute.begin(), attribute.end(),
                       [](const auto& attribut) { return xmlZeichenzahl(attribut.second).has_value(); });
}

bool inXmlMoeglich(const Gamepadtabelle& tabelle) {
    const auto spalteMoeglich = [](const Gamepadspalte& spalte) {
        return istSpaltenname(spalte.name) && inXmlMoeglich(spalte.attribute) &&
               inXmlMoeglich(spalte.datentyp);
    };
    const auto zeileMoeglich = [&](const Gamepadzeile& zeile) {
        return std::all_of(zeile.begin(), zeile.end(), [&](const auto& feld) {
            return tabelle.hatSpalte(feld.first) && xmlZeichenzahl(feld.second);
        });
    };
    return inXmlMoeglich(tabelle.zeilentyp) &&
           std::all_of(tabelle.spalten.begin(), tabelle.spalten.end(), spalteMoeglich) &&
           std::all_of(tabelle.zeilen.begin(), tabelle.zeilen.end(), zeileMoeglich);
}

class Textschreiber : public pugi::xml_writer {
public:
    std::string text;
    void write(const void* daten, std::size_t groesse) override {
        text.append(static_cast<const char*>(daten), groesse);
    }
};

} // namespace

bool Gamepadtabelle::hatSpalte(std::string_view name) const {
    return std::any_of(spalten.begin(), spalten.end(),
                       [&](const Gamepadspalte& spalte) { return spalte.name == name; });
}

Gamepadtabelle leereGamepadtabelle() {
    Gamepadtabelle tabelle;
    tabelle.zeilentyp = {{"name", "row"}, {"content", "eltOnly"}, {"rs:updatable", "true"}};
    for (const Gamepadgroesse& groesse : GAMEPADSPALTEN) {
        const std::string nummer = std::to_string(tabelle.spalten.size() + 1);
        tabelle.spalten.push_back(
            {std::string(groesse.spalte),
             {{"rs:number", nummer}, {"rs:nullable", "true"}, {"rs:write", "true"}},
             {{"dt:type", "string"}, {"dt:maxLength", std::to_string(groesse.zeichen)}}});
    }
    return tabelle;
}

bool gamepadNimmt(std::string_view spalte, std::string_view text) {
    const auto anzahl = xmlZeichenzahl(text);
    return anzahl && std::none_of(GAMEPADSPALTEN.begin(), GAMEPADSPALTEN.end(), [&](const auto& groesse) {
               return groesse.spalte == spalte && *anzahl > groesse.zeichen;
           });
}

std::optional<Gamepadtabelle> gamepadAusXml(std::string_view xml) {
    constexpr std::string_view BYTEFOLGEMARKE = "\xEF\xBB\xBF"; // which editors put before UTF-8
    if (xml.starts_with(BYTEFOLGEMARKE))
        xml.remove_prefix(BYTEFOLGEMARKE.size());
    try {
        return tabelleAus(xml);
    } catch (const Unlesbar&) {
        return std::nullopt;
    }
}

std::optional<std::string> gamepadAlsXml(const Gamepadtabelle& tabelle) {
    if (!inXmlMoeglich(tabelle))
        return std::nullopt;
    pugi::xml_document dokument;
    pugi::xml_node wurzel = anfuegen(dokument, "xml", NAMENSRAEUME);
    schemaBauen(wurzel, tabelle);
    pugi::xml_node daten = wurzel.append_child("rs:data");
    for (const Gamepadzeile& zeile : tabelle.zeilen)
        zeileBauen(daten, tabelle, zeile);
    Textschreiber schreiber;
    dokument.save(schreiber, "\t", pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8);
    return std::move(schreiber.text);
}
