// Gamepad.xml written by hand, in the form that ADO gives it, around what a test is about.
#pragma once

#include <string>
#include <string_view>

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
