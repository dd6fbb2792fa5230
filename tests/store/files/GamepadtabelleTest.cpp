// SPDX-License-Identifier: GPL-3.0-or-later
// The form of Gamepad.xml: what is read, what is refused, and that all that is read is written back.
#include "store/files/Gamepadtabelle.h"
#include "store/files/Xml.h"
#include "tests/hilfen/Gamepadxml.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Optional;
using testing::SizeIs;

namespace {

/// The rows of a file; a row with the one column "-" when it does not parse.
std::vector<Gamepadzeile> zeilen(const std::string& xml) {
    const auto tabelle = gamepadAusXml(xml);
    return tabelle ? tabelle->zeilen : std::vector<Gamepadzeile>{{{"-", "unlesbar"}}};
}

bool lesbar(const std::string& xml) {
    return gamepadAusXml(xml).has_value();
}

std::string geaendert(std::string xml, std::string_view alt, std::string_view neu) {
    const std::size_t stelle = xml.find(alt);
    if (stelle == std::string::npos)
        throw std::logic_error("not in the file: " + std::string(alt));
    return xml.replace(stelle, alt.size(), neu);
}

/// A table with one row, with `text` as its slider text.
Gamepadtabelle tabelleMit(const std::string& text) {
    Gamepadtabelle tabelle = leereGamepadtabelle();
    tabelle.zeilen = {{{"Schema", "S"}, {"Schubregler", text}}};
    return tabelle;
}

const std::string EINE_ZEILE = "\t<z:row Schema='S' dwXPos='lx'/>\n";

} // namespace

TEST(Gamepadtabelle, EineDateiMitAllenSpaltenWirdGelesen) {
    EXPECT_THAT(zeilen(adoXml("<z:row Schema='S' dwXPos='lx' dwYPos='ly' dwZPos='rx' dwRPos='ry' dwUPos='Z1'"
                              " dwVPos='Z2' Schubregler='3/1-1-2-1(65,50,)'/>")),
                ElementsAre(Gamepadzeile{{"Schema", "S"},
                                         {"dwXPos", "lx"},
                                         {"dwYPos", "ly"},
                                         {"dwZPos", "rx"},
                                         {"dwRPos", "ry"},
                                         {"dwUPos", "Z1"},
                                         {"dwVPos", "Z2"},
                                         {"Schubregler", "3/1-1-2-1(65,50,)"}}));
}

TEST(Gamepadtabelle, EinFehlendesAttributIstNullEinLeeresEinLeererText) {
    EXPECT_THAT(zeilen(adoXml("<z:row Schema='S' Schubregler=''/><z:row/>")),
                ElementsAre(Gamepadzeile{{"Schema", "S"}, {"Schubregler", ""}}, Gamepadzeile{}));
}

TEST(Gamepadtabelle, EineOhneZeilenIstEineTabelleOhneZeilen) {
    EXPECT_THAT(zeilen(adoXml("")), IsEmpty());
    EXPECT_THAT(zeilen(geaendert(adoXml(""), "<rs:data>\n</rs:data>", "<rs:data/>")), IsEmpty());
}

TEST(Gamepadtabelle, EingefuegteZeilenZaehlen) {
    EXPECT_THAT(zeilen(adoXml("<rs:insert><z:row Schema='A'/><z:row Schema='B'/></rs:insert><rs:insert/>")),
                ElementsAre(Gamepadzeile{{"Schema", "A"}}, Gamepadzeile{{"Schema", "B"}}));
}

TEST(Gamepadtabelle, EineAenderungLiegtUeberIhremOriginal) {
    EXPECT_THAT(
        zeilen(adoXml("<rs:update>\n<rs:original>\n<z:row Schema='A' dwXPos='lx' dwYPos='ly'/>\n"
                      "</rs:original>\n<z:row dwYPos='rx' Schubregler='2'/>\n</rs:update>\n")),
        ElementsAre(Gamepadzeile{{"Schema", "A"}, {"dwXPos", "lx"}, {"dwYPos", "rx"}, {"Schubregler", "2"}}));
}

TEST(Gamepadtabelle, EineLeereAenderungIstDasOriginal) {
    EXPECT_THAT(
        zeilen(adoXml("<rs:update><rs:original><z:row Schema='A'/></rs:original><z:row/></rs:update>")),
        ElementsAre(Gamepadzeile{{"Schema", "A"}}));
}

TEST(Gamepadtabelle, MehrereAenderungenGehenDerReiheNach) {
    const auto erwartet = ElementsAre(Gamepadzeile{{"Schema", "A"}, {"dwXPos", "1"}},
                                      Gamepadzeile{{"Schema", "B"}, {"dwXPos", "2"}});
    EXPECT_THAT(
        zeilen(adoXml("<rs:update><rs:original><z:row Schema='A'/></rs:original><z:row dwXPos='1'/>"
                      "<rs:original><z:row Schema='B'/></rs:original><z:row dwXPos='2'/></rs:update>")),
        erwartet);
    EXPECT_THAT(zeilen(adoXml("<rs:update><rs:original><z:row Schema='A'/><z:row Schema='B'/></rs:original>"
                              "<z:row dwXPos='1'/><z:row dwXPos='2'/></rs:update>")),
                erwartet);
}

TEST(Gamepadtabelle, EineAenderungMachtSpaltenAuchZuNull) {
    EXPECT_THAT(
        zeilen(adoXml("<rs:update><rs:original><z:row Schema='A' dwXPos='lx' dwYPos='ly' dwZPos='rx'/>"
                      "</rs:original><z:row rs:forcenull=' dwXPos  dwZPos '/></rs:update>"
                      "<z:row Schema='B' dwXPos='lx' rs:forcenull='dwXPos Schubregler'/>")),
        ElementsAre(Gamepadzeile{{"Schema", "A"}, {"dwYPos", "ly"}}, Gamepadzeile{{"Schema", "B"}}));
}

TEST(Gamepadtabelle, GeloeschteZeilenFallenWeg) {
    EXPECT_THAT(zeilen(adoXml("<rs:delete><z:row Schema='A'/><z:row Schema='B'/></rs:delete><rs:delete/>")),
                IsEmpty());
}

TEST(Gamepadtabelle, ZeilenUndAenderungenBehaltenIhreReihenfolge) {
    const auto gelesen = zeilen(adoXml("<z:row Schema='1'/>"
                                       "<rs:update><rs:original><z:row Schema='x'/></rs:original>"
                                       "<z:row Schema='2'/></rs:update>"
                                       "<rs:delete><z:row Schema='weg'/></rs:delete>"
                                       "<z:row Schema='3'/><rs:insert><z:row Schema='4'/></rs:insert>"
                                       "<z:row Schema='5'/>"));
    std::vector<std::string> namen;
    for (const auto& zeile : gelesen)
        namen.push_back(zeile.at("Schema"));
    EXPECT_THAT(namen, ElementsAre("1", "2", "3", "4", "5"));
}

TEST(Gamepadtabelle, NachDemSchreibenStehtNichtsMehrAus) {
    const auto tabelle = gamepadAusXml(
        adoXml("<rs:update><rs:original><z:row Schema='A'/></rs:original><z:row dwXPos='1'/></rs:update>"
               "<rs:insert><z:row Schema='B'/></rs:insert><rs:delete><z:row Schema='C'/></rs:delete>"));
    ASSERT_TRUE(tabelle);
    const std::string xml = gamepadAlsXml(*tabelle).value();
    for (const std::string aussteht : {"rs:update", "rs:original", "rs:insert", "rs:delete", "rs:forcenull"})
        EXPECT_THAT(xml, Not(HasSubstr("<" + aussteht)));
    EXPECT_EQ(zeilen(xml), tabelle->zeilen);
}

TEST(Gamepadtabelle, WasGelesenWurdeWirdGanzZurueckgeschrieben) {
    const auto tabelle = gamepadAusXml(adoXml(
        "<z:row Schema='B' Bemerkung='eigene'/><z:row Schema='A' dwXPos=''/><z:row/><z:row Schema='B'/>",
        adoSpalten() + "<s:AttributeType name='Bemerkung' rs:number='9' rs:keycolumn='true'/>"));
    ASSERT_TRUE(tabelle);
    const std::string xml = gamepadAlsXml(*tabelle).value();
    EXPECT_THAT(gamepadAusXml(xml), Optional(*tabelle));
    EXPECT_THAT(xml, HasSubstr("rs:dbtype=\"str\""));
    EXPECT_THAT(xml, HasSubstr("rs:CommandTimeout=\"30\""));
    EXPECT_THAT(xml, HasSubstr("rs:keycolumn=\"true\""));
}

TEST(Gamepadtabelle, DieGeschriebeneFormIstDieEinesGespeichertenRecordsets) {
    Gamepadtabelle tabelle = leereGamepadtabelle();
    tabelle.spalten.resize(2);
    tabelle.zeilen = {{{"Schema", "S"}, {"dwXPos", "lx"}}, {{"dwXPos", ""}}};
    EXPECT_EQ(
        gamepadAlsXml(tabelle).value(),
        "<xml xmlns:s=\"uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882\""
        " xmlns:dt=\"uuid:C2F41010-65B3-11d1-A29F-00AA00C14882\""
        " xmlns:rs=\"urn:schemas-microsoft-com:rowset\" xmlns:z=\"#RowsetSchema\">\n"
        "\t<s:Schema id=\"RowsetSchema\">\n"
        "\t\t<s:ElementType name=\"row\" content=\"eltOnly\" rs:updatable=\"true\">\n"
        "\t\t\t<s:AttributeType name=\"Schema\" rs:number=\"1\" rs:nullable=\"true\" rs:write=\"true\">\n"
        "\t\t\t\t<s:datatype dt:type=\"string\" dt:maxLength=\"100\" />\n"
        "\t\t\t</s:AttributeType>\n"
        "\t\t\t<s:AttributeType name=\"dwXPos\" rs:number=\"2\" rs:nullable=\"true\" rs:write=\"true\">\n"
        "\t\t\t\t<s:datatype dt:type=\"string\" dt:maxLength=\"100\" />\n"
        "\t\t\t</s:AttributeType>\n"
        "\t\t\t<s:extends type=\"rs:rowbase\" />\n"
        "\t\t</s:ElementType>\n"
        "\t</s:Schema>\n"
        "\t<rs:data>\n"
        "\t\t<z:row Schema=\"S\" dwXPos=\"lx\" />\n"
        "\t\t<z:row dwXPos=\"\" />\n"
        "\t</rs:data>\n"
        "</xml>\n");
}

TEST(Gamepadtabelle, DieTabelleHatAchtSpaltenMitIhrenGroessen) {
    const Gamepadtabelle tabelle = leereGamepadtabelle();
    std::vector<std::string> namen;
    for (const auto& spalte : tabelle.spalten)
        namen.push_back(spalte.name);
    EXPECT_THAT(namen, ElementsAre("Schema", "dwXPos", "dwYPos", "dwZPos", "dwRPos", "dwUPos", "dwVPos",
                                   "Schubregler"));
    EXPECT_EQ(tabelle.spalten.back().datentyp,
              (Xmlattribute{{"dt:type", "string"}, {"dt:maxLength", "1000"}}));
    EXPECT_THAT(tabelle.zeilen, IsEmpty());
    EXPECT_THAT(gamepadAusXml(gamepadAlsXml(tabelle).value()), Optional(tabelle));
}

TEST(Gamepadtabelle, JederTextKommtWiederWieErWar) {
    for (const std::string text :
         {"", " ", "  zwei  ", "Löwe ÄÖÜ äöü ß €", "漢字 🎮", "a\"b'c", "<&>\"'", "&amp;", "&#65;", "]]>",
          "<!-- -->", "Zeile 1\nZeile 2\r\nZeile 3\rTab\tEnde", "\xC2\x85", "\x7F", "\xEF\xBB\xBF",
          "\xF4\x8F\xBF\xBF"}) {
        const auto xml = gamepadAlsXml(tabelleMit(text));
        ASSERT_TRUE(xml) << text;
        EXPECT_THAT(gamepadAusXml(*xml), Optional(tabelleMit(text))) << text;
    }
}

TEST(Gamepadtabelle, WasXmlNichtHaltenKannWirdNichtGeschrieben) {
    for (const std::string& text : {std::string("a\0b", 3), std::string("\x01"), std::string("a\x08"),
                                    std::string("\x0B"), std::string("\x0C"), std::string("\x1F"),
                                    std::string("\xEF\xBF\xBE"), std::string("\xEF\xBF\xBF")}) {
        EXPECT_FALSE(gamepadAlsXml(tabelleMit(text))) << testing::PrintToString(text);
        EXPECT_FALSE(gamepadNimmt("Schubregler", text)) << testing::PrintToString(text);
    }
    EXPECT_TRUE(gamepadNimmt("Schubregler", "\t\n\r \xEF\xBF\xBD"));
}

TEST(Gamepadtabelle, WasKeinUtf8IstWirdNichtGeschrieben) {
    for (const std::string text : {"\xE4", "\x80", "\xC3", "\xC3(", "\xE2\x82", "\xF0\x9F\x8E", "\xC0\x80",
                                   "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80",
                                   "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF"}) {
        EXPECT_FALSE(gamepadAlsXml(tabelleMit(text))) << testing::PrintToString(text);
        EXPECT_FALSE(gamepadNimmt("Schubregler", text)) << testing::PrintToString(text);
    }
    EXPECT_THAT(xmlZeichenzahl("\xED\x9F\xBF\xEE\x80\x80\xDF\xBF\xE0\xA0\x80\xF0\x90\x80\x80"), Optional(5U));
}

TEST(Gamepadtabelle, EinWertOhneSpalteWirdNichtGeschrieben) {
    Gamepadtabelle tabelle = tabelleMit("");
    tabelle.zeilen[0]["Bemerkung"] = "x";
    EXPECT_FALSE(gamepadAlsXml(tabelle));
    tabelle.spalten.push_back({"Bemerkung", {}, {}});
    EXPECT_TRUE(gamepadAlsXml(tabelle));
    for (const std::string name : {"", "a b", "1a", "rs:forcenull", "xmlns", "a\"b", "\xE4"}) {
        tabelle.spalten.back().name = name;
        tabelle.zeilen[0] = {{"Schema", "S"}};
        EXPECT_FALSE(gamepadAlsXml(tabelle)) << name;
    }
}

TEST(Gamepadtabelle, DieGroessenZaehlenZeichenNichtBytes) {
    const auto mal = [](int anzahl, const std::string& zeichen) {
        std::string text;
        for (int i = 0; i < anzahl; ++i)
            text += zeichen;
        return text;
    };
    for (const Gamepadgroesse& groesse : GAMEPADSPALTEN)
        for (const std::string zeichen : {"x", "ä", "€", "🎮"}) {
            const int zeichenzahl = static_cast<int>(groesse.zeichen);
            EXPECT_TRUE(gamepadNimmt(groesse.spalte, mal(zeichenzahl - 1, zeichen)));
            EXPECT_TRUE(gamepadNimmt(groesse.spalte, mal(zeichenzahl, zeichen)));
            EXPECT_FALSE(gamepadNimmt(groesse.spalte, mal(zeichenzahl + 1, zeichen)));
        }
    EXPECT_TRUE(gamepadNimmt("Bemerkung", mal(1001, "x")));
}

TEST(Gamepadtabelle, ZuLangesDasSchonInDerDateiStehtBleibtStehen) {
    const std::string lang(5000, 'x');
    EXPECT_THAT(zeilen(adoXml("<z:row Schema='" + lang + "'/>")),
                ElementsAre(Gamepadzeile{{"Schema", lang}}));
    EXPECT_THAT(gamepadAusXml(gamepadAlsXml(tabelleMit(lang)).value()), Optional(tabelleMit(lang)));
}

TEST(Gamepadtabelle, VerweiseInWertenWerdenAufgeloest) {
    EXPECT_THAT(
        zeilen(adoXml(
            "<z:row Schema='&lt;&gt;&amp;&quot;&apos;' dwXPos='&#228;&#xe4;&#xE4;&#x1F3AE;'"
            " dwYPos='a&#10;b&#x9;c&#13;' dwZPos='a\nb\tc\r\nd\re' dwRPos=\"'\" dwUPos='\"&#x0041;'/>")),
        ElementsAre(Gamepadzeile{{"Schema", "<>&\"'"},
                                 {"dwXPos", "äää🎮"},
                                 {"dwYPos", "a\nb\tc\r"},
                                 {"dwZPos", "a b c d e"},
                                 {"dwRPos", "'"},
                                 {"dwUPos", "\"A"}}));
}

TEST(Gamepadtabelle, EinWertDerNichtWohlgeformtIstMachtDieDateiUnlesbar) {
    for (const std::string wert : {"&",
                                   "a & b",
                                   "&foo;",
                                   "&amp",
                                   "&#0;",
                                   "&#1;",
                                   "&#x1F;",
                                   "&#xFFFE;",
                                   "&#xD800;",
                                   "&#x110000;",
                                   "&#99999999999999;",
                                   "&#;",
                                   "&#x;",
                                   "&#-65;",
                                   "&#+65;",
                                   "&#X41;",
                                   "&#65 ;",
                                   "&#6a;",
                                   "&;",
                                   "&AMP;",
                                   "<",
                                   "a<b"})
        EXPECT_FALSE(lesbar(adoXml("<z:row Schema='" + wert + "'/>"))) << wert;
    EXPECT_TRUE(lesbar(adoXml("<z:row Schema='>'/>")));
}

TEST(Gamepadtabelle, KopfzeileBytefolgemarkeUndKommentareStoerenNicht) {
    const std::string xml = adoXml(EINE_ZEILE);
    const auto erwartet = ElementsAre(Gamepadzeile{{"Schema", "S"}, {"dwXPos", "lx"}});
    EXPECT_THAT(zeilen("<?xml version='1.0'?>\n" + xml), erwartet);
    EXPECT_THAT(zeilen("<?xml version='1.0' encoding='utf-8'?>\n" + xml), erwartet);
    EXPECT_THAT(zeilen("\xEF\xBB\xBF" + xml), erwartet);
    EXPECT_THAT(zeilen("<!-- von Hand & so -->" + geaendert(xml, "<rs:data>", "<rs:data><!-- Zeilen -->")),
                erwartet);
    EXPECT_THAT(zeilen(xml + "\n \t\r\n"), erwartet);
    EXPECT_THAT(zeilen(geaendert(xml, "<z:row Schema='S' dwXPos='lx'/>",
                                 "<z:row  dwXPos = \"lx\"\n\tSchema='S' ></z:row>")),
                erwartet);
}

TEST(Gamepadtabelle, EineAndereKodierungWirdNichtGelesen) {
    const std::string xml = adoXml(EINE_ZEILE);
    EXPECT_FALSE(lesbar("<?xml version='1.0' encoding='iso-8859-1'?>" + xml));
    EXPECT_FALSE(lesbar(adoXml("<z:row Schema='L\xF6we'/>")));
    std::string utf16 = "\xFF\xFE";
    for (const char c : xml)
        utf16 += {c, '\0'};
    EXPECT_FALSE(lesbar(utf16));
}

TEST(Gamepadtabelle, LeeresAbgeschnittenesUndFremdesIstKeineTabelle) {
    for (const std::string& xml :
         {std::string(), std::string(" "), std::string("x"), std::string("<xml/>"),
          std::string("<xml></xml>"), std::string("<html><body/></html>"),
          std::string("SQLite format 3\0", 16), std::string(1000, '\0'), std::string("<?xml version='1.0'?>"),
          ADO_ANFANG + "</xml>", std::string("\xEF\xBB\xBF")})
        EXPECT_FALSE(lesbar(xml)) << xml;
}

TEST(Gamepadtabelle, AnJederStelleAbgeschnittenIstSieUnlesbar) {
    const std::string xml = adoXml("<z:row Schema='Löwe' Schubregler='1'/><rs:insert><z:row/></rs:insert>");
    const std::size_t ganz = xml.find("</xml>") + 6;
    for (std::size_t laenge = 0; laenge < ganz; ++laenge)
        ASSERT_FALSE(lesbar(xml.substr(0, laenge))) << laenge;
    EXPECT_TRUE(lesbar(xml.substr(0, ganz)));
}

TEST(Gamepadtabelle, WasHinterDemEndeStehtMachtSieUnlesbar) {
    const std::string xml = adoXml(EINE_ZEILE);
    for (const std::string& rest : {std::string("x"), xml, std::string(1, '\0'), std::string("<xml/>"),
                                    std::string("</xml>"), std::string("<![CDATA[x]]>")})
        EXPECT_FALSE(lesbar(xml + rest)) << rest;
}

TEST(Gamepadtabelle, WasKeinWohlgeformtesXmlIstMachtSieUnlesbar) {
    const std::string xml = adoXml(EINE_ZEILE);
    const std::vector<std::pair<std::string, std::string>> eingriffe{
        {"<xml ", "<!-- a -- b --><xml "},
        {"<xml ", "<!-- \x01 --><xml "},
        {"<xml ", "<!-- L\xF6we --><xml "},
        {"<xml ", "<!-- \xED\xA0\x80 --><xml "},
        {"<xml ", "<!-- \xEF\xBF\xBF --><xml "},
        {"<xml ", "<?\x02?><xml "},
        {"<xml ", "<!-- --><?xml version='1.0'?><xml "},
        {"<xml ", "<?xml encoding='utf-8'?><xml "},
        {"<xml ", "<?xml version='1.0' version='1.0'?><xml "},
        {"<xml ", "\xEF\xBB\xBF\xEF\xBB\xBF<xml "},
        {"<rs:data>", "<rs:data>\x0C"},
        {"<rs:data>", "<rs:data>&#32;"},
        {"<rs:data>", "<rs:data><![CDATA[]]>"},
        {"rs:number='1'", "rs:number='1' fremd:number='2'"},
        {"rs:number='1'", "rs:number='1' xml='2' xml='2'"},
        {"rs:number='1'", "rs:number='1'x='2'"},
        {"rs:number='1'", "rs:number='1' 1x='2'"},
        {"rs:number='1'", "rs:number='1' a:b:c='2'"},
        {"rs:number='1'", "rs:number='1' xmlns:q='urn:schemas-microsoft-com:rowset' q:number='1'"},
        {"rs:number='1'", "rs:number='1' xmlns:rs='fremd'"},
        {"rs:number='1'", "rs:number='1' xmlns:q=''"},
        {"<s:extends type='rs:rowbase'/>", "<s:extends type='rs:rowbase' / >"},
        {"</rs:data>", "</rs:data x='1'>"},
    };
    ASSERT_TRUE(lesbar(xml));
    for (const auto& [alt, neu] : eingriffe)
        EXPECT_FALSE(lesbar(geaendert(xml, alt, neu))) << alt << " -> " << neu;
}

TEST(Gamepadtabelle, EigeneEntitaetenKommenNichtZumZug) {
    const std::string xml = adoXml("<z:row Schema='&a;'/>");
    EXPECT_FALSE(lesbar(xml));
    EXPECT_FALSE(lesbar("<!DOCTYPE xml [<!ENTITY a 'S'>]>" + xml));
    EXPECT_FALSE(lesbar("<!DOCTYPE xml [<!ATTLIST xml x CDATA 'S'>]>" + adoXml(EINE_ZEILE)));
    EXPECT_FALSE(lesbar("<!DOCTYPE xml SYSTEM '/dev/zero'>" + adoXml(EINE_ZEILE)));
}

TEST(Gamepadtabelle, FremdeNamensraeumeUndAnweisungenStoerenNicht) {
    const std::string xml = "<?vonhand?>" + geaendert(adoXml(EINE_ZEILE), "rs:number='1'",
                                                      "q:art='x' rs:number='1' xml:lang='de' xmlns:q='mein'");
    const auto tabelle = gamepadAusXml(xml + "<?ende?><!-- -->");
    ASSERT_TRUE(tabelle);
    EXPECT_THAT(tabelle->zeilen, SizeIs(1));
    EXPECT_THAT(gamepadAlsXml(*tabelle),
                Optional(HasSubstr(" xmlns:q=\"mein\" q:art=\"x\" rs:number=\"1\" xml:lang=\"de\"")));
}

TEST(Gamepadtabelle, ZuTiefesUndZuGrossesIstKeineTabelle) {
    const auto mal = [](std::size_t anzahl, const std::string& text) {
        std::string viele;
        for (std::size_t i = 0; i < anzahl; ++i)
            viele += text;
        return viele;
    };
    EXPECT_TRUE(xmlLesen(mal(TIEFSTES_XML, "<a>") + mal(TIEFSTES_XML, "</a>")));
    for (const std::size_t tiefe : {TIEFSTES_XML + 1, std::size_t{1000000}})
        EXPECT_FALSE(xmlLesen(mal(tiefe, "<a>") + mal(tiefe, "</a>"))) << tiefe;
    std::string xml = adoXml(EINE_ZEILE);
    xml.resize(GROESSTES_XML, ' ');
    EXPECT_TRUE(lesbar(xml));
    EXPECT_FALSE(lesbar(xml + ' '));
}

TEST(Gamepadtabelle, WasNichtZurueckgeschriebenWerdenKannMachtSieUnlesbar) {
    const std::string xml = adoXml(EINE_ZEILE);
    const std::vector<std::pair<std::string, std::string>> eingriffe{
        {"<xml ", "<xmlx "},
        {"<xml ", "<xml xmlns:a='b' "},
        {"<xml ", "<!DOCTYPE xml><xml "},
        {"uuid:BDC6", "uuid:ADC6"},
        {"uuid:C2F4", "uuid:D2F4"},
        {"urn:schemas", "urn:schemes"},
        {"'#RowsetSchema'", "'#Rowset'"},
        {"xmlns:z=", "xmlns:y="},
        {"id='RowsetSchema'", "id='Rowset'"},
        {"id='RowsetSchema'", ""},
        {"s:ElementType name='row'", "s:ElementType name='line'"},
        {"s:ElementType name='row'", "s:ElementType name='row' name='row'"},
        {"name='Schema'", "name='schema'"},
        {"name='Schema'", ""},
        {"name='dwXPos'", "name='Schema'"},
        {"name='dwXPos'", "name='dw XPos'"},
        {"name='dwXPos'", "name='1'"},
        {"name='dwXPos'", "name=''"},
        {"rs:number='1'", "rs:number='1' rs:number='2'"},
        {"rs:number='1'", "rs:number='&'"},
        {"<s:datatype", "<s:datatyp"},
        {"<s:datatype", "<s:datatype/><s:datatype"},
        {"<s:datatype dt:type='string' rs:dbtype='str' dt:maxLength='100' rs:precision='0'/>", "100"},
        {"<s:extends type='rs:rowbase'/>", "<s:extends type='rs:other'/>"},
        {"<s:extends type='rs:rowbase'/>", "<s:element/>"},
        {"<rs:data>", "<rs:data ItemCount='1'>"},
        {"<rs:data>", "<rs:data>Text"},
        {"<rs:data>", "<rs:data><![CDATA[x]]>"},
        {"<rs:data>", "<rs:data><rs:unknown/>"},
        {"<rs:data>", "<rs:data><rs:delete><z:zeile/></rs:delete>"},
        {"<rs:data>", "<rs:data><rs:delete>x</rs:delete>"},
        {"<rs:data>", "<rs:data><rs:insert><rs:insert/></rs:insert>"},
        {"<rs:data>", "<rs:data><rs:update><z:row/></rs:update>"},
        {"<rs:data>", "<rs:data><rs:update><rs:original><z:row/></rs:original></rs:update>"},
        {"<rs:data>", "<rs:data/><rs:data>"},
        {"<s:Schema", "<s:Schema id='RowsetSchema'><s:ElementType name='row'/></s:Schema><s:Schema"},
        {"dwXPos='lx'", "dwXPos='lx' dwXPos='ly'"},
        {"dwXPos='lx'", "dwxpos='lx'"},
        {"dwXPos='lx'", "Fremd='lx'"},
        {"dwXPos='lx'/>", "dwXPos='lx'>Text</z:row>"},
        {"dwXPos='lx'/>", "dwXPos='lx'><z:row/></z:row>"},
        {"dwXPos='lx'/>", "dwXPos='lx'>"},
        {"dwXPos='lx'", "dwXPos=lx"},
        {"</rs:data>", "</rs:date>"},
        {"</rs:data>", ""},
    };
    ASSERT_TRUE(lesbar(xml));
    for (const auto& [alt, neu] : eingriffe)
        EXPECT_FALSE(lesbar(geaendert(xml, alt, neu))) << alt << " -> " << neu;
}
