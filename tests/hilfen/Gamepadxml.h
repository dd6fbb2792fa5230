// SPDX-License-Identifier: GPL-3.0-or-later
// Gamepad.xml written by hand, in the form that ADO gives it, around what a test is about.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

inline std::string adoSpalte(std::string_view name, int nummer, int groesse) {
    return "\t\t<s:AttributeType name='" + std::string(name) + "' rs:number='" + std::to_string(nummer) +
           "' rs:nullable='true' rs:write='true'>\n\t\t\t<s:datatype dt:type='string' rs:dbtype='str' "
           "dt:maxLength='" +
           std::to_string(groesse) + "' rs:precision='0'/>\n\t\t</s:AttributeType>\n";
}

inline std::string adoSpalten() {
    std::string spalten = adoSpalte("Schema", 1, 100);
    int nummer = 2;
    for (const char achse : {'X', 'Y', 'Z', 'R', 'U', 'V'})
        spalten += adoSpalte(std::string("dw") + achse + "Pos", nummer++, 100);
    return spalten + adoSpalte("Schubregler", nummer, 1000);
}

/// A row by its columns; what XML has a meaning for is escaped.
inline std::string adoZeile(const std::vector<std::pair<std::string, std::string>>& spalten) {
    std::string zeile = "\t<z:row";
    for (const auto& [name, wert] : spalten) {
        zeile += " " + name + "=\"";
        for (const char zeichen : wert)
            zeile += zeichen == '&'   ? "&amp;"
                     : zeichen == '<' ? "&lt;"
                     : zeichen == '"' ? "&quot;"
                                      : std::string(1, zeichen);
        zeile += "\"";
    }
    return zeile + "/>\n";
}

inline const std::string ADO_ANFANG = "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'\n"
                                      "\txmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'\n"
                                      "\txmlns:rs='urn:schemas-microsoft-com:rowset'\n"
                                      "\txmlns:z='#RowsetSchema'>\n";

/// The file with these columns and with `daten` inside rs:data.
inline std::string adoXml(const std::string& daten, const std::string& spalten = adoSpalten()) {
    return ADO_ANFANG +
           "<s:Schema id='RowsetSchema'>\n"
           "\t<s:ElementType name='row' content='eltOnly' rs:CommandTimeout='30' rs:updatable='true'>\n" +
           spalten + "\t\t<s:extends type='rs:rowbase'/>\n\t</s:ElementType>\n</s:Schema>\n<rs:data>\n" +
           daten + "</rs:data>\n</xml>\n";
}

/// The file with one row: a `Schema`, its raw axes by name, and its slider text, "" for none.
template <class Achsen>
std::string gamepadXmlMit(const std::string& schema, const Achsen& achsen, const std::string& schub) {
    std::vector<std::pair<std::string, std::string>> spalten{{"Schema", schema}};
    std::size_t i = 0;
    for (const char achse : {'X', 'Y', 'Z', 'R', 'U', 'V'})
        spalten.emplace_back(std::string("dw") + achse + "Pos", achsen[i++]);
    if (!schub.empty())
        spalten.emplace_back("Schubregler", schub);
    return adoXml(adoZeile(spalten));
}
