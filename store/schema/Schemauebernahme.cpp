// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Schemauebernahme.h"

#include "store/db/Datenbank.h"
#include "store/files/Bilddatei.h"

#include <algorithm>

namespace {

constexpr const char* SPALTE_SCHEMA = "Schema"; ///< of the axis file

bool hatTrenner(std::string_view name) {
    return name.find_first_of("/\\") != std::string_view::npos;
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
    if (hatTrenner(name))
        return "Ein „/“ oder „\\“ geht nicht, weil die Bilder nach dem Schema heißen.";
    if (name.front() == ' ' || name.back() == ' ')
        return "Der Name beginnt oder endet mit einem Leerzeichen.";
    return "";
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
    std::string rein = wunsch;
    std::ranges::replace_if(
        rein, [](char zeichen) { return zeichen == '/' || zeichen == '\\' || zeichen == '\''; }, '-');
    auto name = rein;
    for (int nummer = 2; nummer < VERSUCHE && !namenshindernis(platz, name).empty(); ++nummer) {
        name = rein;
        name += ' ';
        name += std::to_string(nummer);
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
