// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Schemauebernahme.h"

#include "store/db/Datenbank.h"
#include "store/files/Bilddatei.h"

#include <algorithm>
#include <array>

namespace {

constexpr const char* SPALTE_SCHEMA = "Schema"; ///< of the axis file

bool hatTrenner(std::string_view name) {
    return name.find_first_of("/\\") != std::string_view::npos;
}

/// In a folder a name has 255 bytes. Behind this one stands what tells a picture, and what a file is called
/// while it is written.
constexpr std::size_t MEISTE_BYTES = 220;

/// Characters in UTF-8 that differ in the last byte.
struct Zeichenbereich {
    std::string_view anfang;
    char erstes;
    char letztes;
};
/// Characters that nobody sees, or that turn around what follows: two names would look the same, or one like
/// something else.
constexpr std::array<Zeichenbereich, 8> UNSICHTBARE{{{"", '\x00', '\x1F'},
                                                     {"", '\x7F', '\x7F'},
                                                     {"\xC2", '\x80', '\x9F'},       // U+0080 to U+009F
                                                     {"\xE2\x80", '\x8B', '\x8B'},   // U+200B
                                                     {"\xE2\x80", '\xA8', '\xAE'},   // U+2028 to U+202E
                                                     {"\xE2\x81", '\xA0', '\xA0'},   // U+2060
                                                     {"\xE2\x81", '\xA6', '\xA9'},   // U+2066 to U+2069
                                                     {"\xEF\xBB", '\xBF', '\xBF'}}}; // U+FEFF

/// Bytes of such a character at the beginning of `rest`; 0 where there is another one.
std::size_t unsichtbares(std::string_view rest) {
    for (const auto& [anfang, erstes, letztes] : UNSICHTBARE)
        if (rest.size() > anfang.size() && rest.starts_with(anfang) && rest[anfang.size()] >= erstes &&
            rest[anfang.size()] <= letztes)
            return anfang.size() + 1;
    return 0;
}

std::string ohneUnsichtbares(std::string_view name) {
    std::string rein;
    for (std::size_t stelle = 0; stelle < name.size();)
        if (const auto laenge = unsichtbares(name.substr(stelle)); laenge > 0)
            stelle += laenge;
        else
            rein += name[stelle++];
    return rein;
}

/// What is wrong with a name by itself.
std::string namensfehler(const std::string& name) {
    if (name.empty())
        return "Ohne Namen entsteht kein Schema.";
    if (name.find('\'') != std::string::npos)
        return "Mit einem Apostroph lässt sich das Schema weder bearbeiten noch starten.";
    if (!gamepadNimmt("", name))
        return "Der Name enthält Zeichen, mit denen keine Achsen gespeichert werden.";
    if (!gamepadNimmt(SPALTE_SCHEMA, name))
        return "Der Name ist zu lang: Er darf 100 Zeichen haben.";
    if (name.size() > MEISTE_BYTES)
        return "Der Name ist zu lang, als dass Bilder so heißen könnten.";
    if (ohneUnsichtbares(name) != name)
        return "Der Name enthält Zeichen, die niemand sieht.";
    if (hatTrenner(name))
        return "Ein „/“ oder „\\“ geht nicht, weil die Bilder nach dem Schema heißen.";
    if (name.front() == ' ' || name.back() == ' ')
        return "Der Name beginnt oder endet mit einem Leerzeichen.";
    return "";
}

/// What namensfehler would say no to taken out or replaced, but for the length.
std::string brauchbarerName(const std::string& wunsch) {
    auto name = ohneUnsichtbares(wunsch);
    std::ranges::replace_if(
        name, [](char zeichen) { return zeichen == '/' || zeichen == '\\' || zeichen == '\''; }, '-');
    name.erase(0, std::min(name.find_first_not_of(' '), name.size()));
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}

/// As much of a name as leaves room for `ende`, which follows.
std::string gekuerzt(std::string name, const std::string& ende) {
    const auto zuLang = [&] {
        return !name.empty() &&
               (name.size() + ende.size() > MEISTE_BYTES || !gamepadNimmt(SPALTE_SCHEMA, name + ende));
    };
    constexpr unsigned FOLGE = 0x80; // the bytes of UTF-8 that go on with a character are 10xxxxxx
    while (zuLang()) {
        while (name.size() > 1 && (static_cast<unsigned char>(name.back()) & 0xC0U) == FOLGE)
            name.pop_back();
        name.pop_back();
    }
    name.erase(name.find_last_not_of(' ') + 1);
    return name + ende;
}

/// Whether the database has a `Schema` whose name is this one but for case.
bool vergeben(Database& datenbank, const std::string& name, const std::string& ausser) {
    for (Recordset satz = datenbank.OpenRecordset("tblTastatur"); !satz.get_EOF(); satz.MoveNext()) {
        const auto anderer = alsText(satz.get_Value("Schemaname"));
        if (anderer != ausser && gleicherBildname(anderer, name))
            return true;
    }
    return false;
}

std::string hindernis(Database& datenbank, const Schemaplatz& platz, const std::string& name,
                      const std::string& ausser) {
    if (auto fehler = namensfehler(name); !fehler.empty())
        return fehler;
    if (name == ausser)
        return "So heißt das Schema schon.";
    if (vergeben(datenbank, name, ausser))
        return "Ein Schema dieses Namens gibt es schon.";
    const bool eigeneBilder = !ausser.empty() && gleicherBildname(name, ausser);
    if ((!eigeneBilder && hatBilder(platz, name)) || achsenzeileLesen(platz.gamepadXml, name))
        return "Unter diesem Namen liegen noch Bilder oder Achsen eines anderen Schemas.";
    return "";
}

/// Does `arbeit` in one transaction, with the names noted that what lies beside the database may be left
/// without an owner of.
template <class Arbeit>
void imGanzen(const Schemaplatz& platz, const std::string& neu, const std::string& alt, Arbeit&& arbeit) {
    beiwerkAufraeumen(platz); // what a crash has left there would seem to be in the way
    std::vector<std::string> namen{neu};
    if (!alt.empty())
        namen.push_back(alt);
    Database datenbank = OpenDatabase(platz.datenbankPfad);
    const auto pruefen = [&] {
        if (const auto grund = hindernis(datenbank, platz, neu, alt); !grund.empty())
            throw LaufzeitFehler(Fehlernummer::DoppelterSchluessel, grund);
    };
    datenbank.inEinemLesezug(pruefen); // a name that is noted has nothing beside the database yet
    const Beiwerkvermerk vermerk(platz, namen);
    datenbank.inEinerTransaktion([&] {
        pruefen(); // once more: nobody else can take the name from here on
        arbeit(datenbank);
    });
    datenbank.Close();
}

} // namespace

std::string namenshindernis(const Schemaplatz& platz, const std::string& name, const std::string& ausser) {
    Database datenbank = OpenDatabase(platz.datenbankPfad);
    std::string grund;
    datenbank.inEinemLesezug([&] { grund = hindernis(datenbank, platz, name, ausser); });
    return grund;
}

std::string freierName(const Schemaplatz& platz, const std::string& wunsch) {
    constexpr int VERSUCHE = 1000;
    const auto rein = brauchbarerName(wunsch);
    auto name = gekuerzt(rein, "");
    if (!namensfehler(name).empty())
        return name; // no number helps: who is asked for a name is told
    for (int nummer = 2; nummer < VERSUCHE && !namenshindernis(platz, name).empty(); ++nummer) {
        std::string ende = " ";
        ende += std::to_string(nummer);
        name = gekuerzt(rein, ende);
    }
    return name;
}

void schemaAufnehmen(const Schemaplatz& platz, const std::string& name, const Schemadaten& daten,
                     const std::vector<std::string>& endungen, const Bildinhalt& bilder) {
    schemadatenPruefen(daten);
    imGanzen(platz, name, "", [&](Database& datenbank) {
        beiwerkAnlegen(platz, name, daten.achsen, endungen, bilder);
        schemadatenAnlegen(datenbank, name, daten);
    });
}

void schemaUmbenennen(const Schemaplatz& platz, const std::string& alt, const std::string& neu) {
    imGanzen(platz, neu, alt, [&](Database& datenbank) {
        schemazeilenUmbenennen(datenbank, alt, neu);
        beiwerkKopieren(platz, alt, neu);
    });
}

void schemaVerdoppeln(const Schemaplatz& platz, const std::string& von, const std::string& neu) {
    imGanzen(platz, neu, "", [&](Database& datenbank) {
        const auto daten = schemadatenLesen(datenbank, von);
        beiwerkKopieren(platz, von, neu);
        schemadatenAnlegen(datenbank, neu, daten);
    });
}
