#include "store/modLesen.h"

namespace {

/// What an empty column would leave the readers with has no fields to split; it stands for no action.
std::string belegung(const Wert& wert) {
    std::string text = alsText(wert);
    return text.empty() ? std::string(LEERE_BELEGUNG) : text;
}

constexpr std::array<int, EBENEN> SPALTENVERSATZ{1, 101, 1001}; ///< number of a layer's first `Btn` column
constexpr int RICHTUNGEN = SLOTS - TASTEN;

constexpr int ZEILEN_JE_STICK = 20;
/// Left, right, up, down: the four lines around the centre field of a new stick.
constexpr std::array<int, 4> GRUNDLINIEN{27072, 38399, 25941, 39679};
constexpr int ERSTE_LINIENSPALTE = 2;

void grundzeileAnlegen(Recordset& satz, const std::string& schemaName, int index) {
    satz.AddNew();
    satz.put_Value("Schemaname", schemaName);
    satz.put_Value("index", index);
    if (index == 1) {
        int ordinal = ERSTE_LINIENSPALTE;
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            for (const int linie : GRUNDLINIEN)
                satz.put_Value(ordinal++, linie);
    }
    satz.Update();
}

} // namespace

Laufbild TastenLaufLesen(const std::string& datenbankPfad, const std::string& schemaName) {
    Database datenbank = OpenDatabase(datenbankPfad);
    Laufbild bild;
    Recordset satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblTastatur WHERE (tblTastatur.Schemaname)= '", schemaName));
    for (std::size_t ebene = 0; ebene < EBENEN; ++ebene)
        for (std::size_t i = 0; i < TASTEN; ++i) {
            const int nummer = static_cast<int>(i) + SPALTENVERSATZ[ebene];
            bild[ebene][i] = belegung(satz.get_Value("Btn" + std::to_string(nummer)));
        }
    satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblSteuerkreuz WHERE (tblSteuerkreuz.Schemaname)= '", schemaName));
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = TASTEN; taste < SLOTS; ++taste)
            bild[static_cast<std::size_t>(ebene)][static_cast<std::size_t>(taste)] =
                belegung(satz.get_Value(RICHTUNGEN * ebene + (taste - TASTEN + 1)));
    return bild;
}

Schemaliste SchemataLesen(const std::string& datenbankPfad) {
    Database datenbank = OpenDatabase(datenbankPfad);
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    const auto groesse = static_cast<std::size_t>(satz.get_RecordCount()) + 1;
    Schemaliste liste{std::vector<std::string>(groesse), std::vector<std::string>(groesse)};
    for (std::size_t i = 0; !satz.get_EOF(); ++i, satz.MoveNext()) {
        liste.SchemaNamen[i] = alsText(satz.get_Value("Schemaname"));
        liste.SchemaPfade[i] = alsText(satz.get_Value("Programmpfad"));
    }
    return liste;
}

std::optional<int> FunktionLesen(const std::string& datenbankPfad, const std::string& schemaName) {
    Database datenbank = OpenDatabase(datenbankPfad);
    const Recordset satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblTastatur WHERE  (tblTastatur.Schemaname) = '", schemaName));
    if (satz.get_EOF())
        return std::nullopt;
    const Wert funktion = satz.get_Value("Funktion");
    return istNull(funktion) ? 0 : static_cast<int>(alsZahl(funktion));
}

void StickGrundzeilenAnlegen(Database& datenbank, Recordset& satz, const std::string& schemaName) {
    // One transaction: half a stick would read as a stick with missing lines for ever.
    datenbank.inEinerTransaktion([&] {
        for (int index = 1; index <= ZEILEN_JE_STICK; ++index)
            grundzeileAnlegen(satz, schemaName, index);
    });
    satz.Close();
}
