// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Gamepadtabelle.h"

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

bool sindAttribute(Xmlattribute gelesene, Xmlattribute verlangte) {
    std::sort(gelesene.begin(), gelesene.end());
    std::sort(verlangte.begin(), verlangte.end());
    return gelesene == verlangte;
}

/// The elements inside one that has no attributes, as those of the namespace rs are.
const std::vector<Xmlelement>& elementeInBlossem(const Xmlelement& element) {
    verlange(element.attribute.empty());
    return element.kinder;
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
           name != "xmlns";
}

Gamepadspalte spalteAus(const Xmlelement& attributtyp) {
    Gamepadspalte spalte;
    spalte.attribute = attributtyp.attribute;
    const auto name = nimmAttribut(spalte.attribute, "name");
    verlange(name && istSpaltenname(*name));
    spalte.name = *name;
    const auto& kinder = attributtyp.kinder;
    if (!kinder.empty()) {
        verlange(kinder.size() == 1 && kinder[0].name == "s:datatype" && kinder[0].kinder.empty());
        spalte.datentyp = kinder[0].attribute;
    }
    return spalte;
}

void schemaLesen(Gamepadtabelle& tabelle, const Xmlelement& schema) {
    const auto& typen = schema.kinder;
    verlange(schema.name == "s:Schema" && schema.attribute == SCHEMA && typen.size() == 1 &&
             typen[0].name == "s:ElementType");
    tabelle.zeilentyp = typen[0].attribute;
    verlange(std::count(tabelle.zeilentyp.begin(), tabelle.zeilentyp.end(),
                        std::pair<std::string, std::string>("name", "row")) == 1);
    std::set<std::string> namen;
    for (const Xmlelement& kind : typen[0].kinder) {
        if (kind.name == "s:extends") {
            verlange(kind.attribute == GRUNDTYP && kind.kinder.empty());
            continue;
        }
        verlange(kind.name == "s:AttributeType");
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

    std::vector<Gamepadzeile> lesen(const Xmlelement& daten) {
        verlange(daten.name == "rs:data");
        for (const Xmlelement& kind : elementeInBlossem(daten)) {
            if (kind.name == "z:row")
                zeilen_.push_back(zeileAus(kind).werte);
            else if (kind.name == "rs:insert")
                neueLesen(kind);
            else if (kind.name == "rs:update")
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

    Zeile zeileAus(const Xmlelement& element) const {
        verlange(element.name == "z:row" && element.kinder.empty());
        Zeile zeile;
        Xmlattribute attribute = element.attribute;
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

    void neueLesen(const Xmlelement& einfuegung) {
        for (const Xmlelement& kind : elementeInBlossem(einfuegung))
            zeilen_.push_back(zeileAus(kind).werte);
    }

    /// Each row outside rs:original has the columns that have changed against its original.
    void geaenderteLesen(const Xmlelement& aenderung) {
        std::vector<Gamepadzeile> originale;
        std::vector<Zeile> neue;
        for (const Xmlelement& kind : elementeInBlossem(aenderung)) {
            if (kind.name != "rs:original") {
                neue.push_back(zeileAus(kind));
                continue;
            }
            for (const Xmlelement& original : elementeInBlossem(kind))
                originale.push_back(zeileAus(original).werte);
        }
        verlange(originale.size() == neue.size());
        for (std::size_t i = 0; i < neue.size(); ++i) {
            neue[i].werte.merge(originale[i]);
            nullen(neue[i].werte, neue[i].genullte);
            zeilen_.push_back(std::move(neue[i].werte));
        }
    }

    void geloeschteLesen(const Xmlelement& loeschung) const {
        verlange(loeschung.name == "rs:delete");
        for (const Xmlelement& kind : elementeInBlossem(loeschung))
            zeileAus(kind);
    }

    std::set<std::string, std::less<>> spalten_;
    std::vector<Gamepadzeile> zeilen_;
};

Gamepadtabelle tabelleAus(const Xmlelement& wurzel) {
    verlange(wurzel.name == "xml" && sindAttribute(wurzel.attribute, NAMENSRAEUME) &&
             wurzel.kinder.size() == 2);
    Gamepadtabelle tabelle;
    schemaLesen(tabelle, wurzel.kinder[0]);
    tabelle.zeilen = Zeilenleser(tabelle).lesen(wurzel.kinder[1]);
    return tabelle;
}

Xmlelement spaltenelement(const Gamepadspalte& spalte) {
    Xmlelement element{"s:AttributeType", {{"name", spalte.name}}, {}};
    element.attribute.insert(element.attribute.end(), spalte.attribute.begin(), spalte.attribute.end());
    if (!spalte.datentyp.empty())
        element.kinder.push_back({"s:datatype", spalte.datentyp, {}});
    return element;
}

Xmlelement schemaelement(const Gamepadtabelle& tabelle) {
    Xmlelement typ{"s:ElementType", tabelle.zeilentyp, {}};
    for (const Gamepadspalte& spalte : tabelle.spalten)
        typ.kinder.push_back(spaltenelement(spalte));
    typ.kinder.push_back({"s:extends", GRUNDTYP, {}});
    return {"s:Schema", SCHEMA, {std::move(typ)}};
}

Xmlelement datenelement(const Gamepadtabelle& tabelle) {
    Xmlelement daten{"rs:data", {}, {}};
    for (const Gamepadzeile& zeile : tabelle.zeilen) {
        Xmlattribute werte;
        for (const Gamepadspalte& spalte : tabelle.spalten)
            if (const auto wert = zeile.find(spalte.name); wert != zeile.end())
                werte.emplace_back(*wert);
        daten.kinder.push_back({"z:row", std::move(werte), {}});
    }
    return daten;
}

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
    const auto wurzel = xmlLesen(xml);
    if (!wurzel)
        return std::nullopt;
    try {
        return tabelleAus(*wurzel);
    } catch (const Unlesbar&) {
        return std::nullopt;
    }
}

std::optional<std::string> gamepadAlsXml(const Gamepadtabelle& tabelle) {
    std::string xml = xmlSchreiben({"xml", NAMENSRAEUME, {schemaelement(tabelle), datenelement(tabelle)}});
    // Reading alone decides what XML can hold: no text replaces a file that does not come back as it was
    // meant.
    if (gamepadAusXml(xml) != tabelle)
        return std::nullopt;
    return xml;
}
