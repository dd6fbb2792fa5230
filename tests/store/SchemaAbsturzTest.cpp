// Death by SIGKILL at any time of saving and deleting a Schema: what is left is the state before or after one
// of the single Updates.
#include "store/Schemaloeschen.h"
#include "store/modSpeichern.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Kindprozess.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <random>
#include <set>
#include <thread>

using testing::ElementsAre;

namespace {

constexpr double LOESCHDAUER_US = 10000; // about as long as a deletion takes; corrected as it is seen

void erwarteHeil(const Testdatenbank& datei) {
    EXPECT_THAT(datei.zeilen("PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
}

/// The one text that all columns of the one row past its name hold, without Programmpfad and Funktion; fails
/// when they differ.
std::string einziger(const Testdatenbank& datei, const std::string& tabelle) {
    const auto zeile = datei.zeilen("SELECT * FROM " + tabelle).at(0);
    std::set<std::string> werte;
    for (std::size_t i = 1; i < zeile.size(); ++i)
        if (tabelle != "tblTastatur" || (i != 13 && i != 26))
            werte.insert(zeile[i]);
    EXPECT_EQ(werte.size(), 1U) << "half of an Update in " << tabelle;
    return *werte.begin();
}

int zahlIn(const std::string& belegung) {
    return std::stoi(belegung.substr(belegung.find(',') + 1));
}

void tastenSpeichern(const Testdatenbank& datei, int zahl) {
    VarTastenbelegung bild;
    for (int taste = 0; taste < SLOTS; ++taste)
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            bild.setzeBelegung(taste, ebene, "1," + std::to_string(zahl) + ",0-0-0");
    TastenbelegungSpeichern(datei.pfad(), "S", bild);
}

constexpr std::size_t BEWEGTE = 3; ///< lines that differ, so that a saving is short enough to die often

void linienSpeichern(const Testdatenbank& datei, int zahl) {
    Sticklinien bild;
    for (auto& ebene : bild.linien)
        for (std::size_t zeile = 1; zeile <= BEWEGTE; ++zeile)
            ebene[zeile].fill(zahl);
    bild.StickSperre = zahl;
    StickLinienSpeichern(datei.pfad(), Stickseite::Rechts, "S", bild);
}

/// What stands in the moved lines, layer by layer, and in the mask: in the order of their Updates. Fails when
/// the values of one Update differ.
std::vector<int> linienFolge(const Testdatenbank& datei) {
    const auto zeilen = datei.zeilen("SELECT * FROM tblStickR ORDER BY \"index\"");
    std::vector<int> folge;
    for (std::size_t ebene = 0; ebene < 3; ++ebene)
        for (std::size_t zeile = 0; zeile < BEWEGTE; ++zeile) {
            const auto erster = zeilen.at(zeile).begin() + static_cast<std::ptrdiff_t>(2 + 4 * ebene);
            EXPECT_EQ(std::vector<std::string>(erster, erster + 4), std::vector<std::string>(4, *erster));
            folge.push_back(std::stoi(*erster));
        }
    folge.push_back(std::stoi(zeilen.at(19).at(2)));
    return folge;
}

const std::vector<std::string> TABELLEN{"tblTastatur",    "tblSteuerKreuz",  "tblStick", "tblStickR",
                                        "tblStickAktion", "tblStickAktionR", "Sensible", "SensibleR"};
constexpr std::array<int, 8> ZEILEN{1, 1, 3, 3, 2, 2, 1, 1};

void schemaLegen(const Testdatenbank& datei) {
    std::string sql = "PRAGMA synchronous = OFF; BEGIN;";
    for (std::size_t i = 0; i < TABELLEN.size(); ++i)
        for (int zeile = 1; zeile <= ZEILEN[i]; ++zeile)
            sql += "INSERT INTO " + TABELLEN[i] +
                   (TABELLEN[i].starts_with("tblStick") && ZEILEN[i] == 3
                        ? " (Schemaname, \"index\") VALUES ('S', " + std::to_string(zeile) + ");"
                        : " (Schemaname) VALUES ('S');");
    datei.sql(sql + "COMMIT");
}

/// How many rows of "S" each table has.
std::vector<int> zeilenzahlen(const Testdatenbank& datei) {
    std::vector<int> zahlen;
    for (const auto& tabelle : TABELLEN)
        zahlen.push_back(std::stoi(datei.zeilen("SELECT count(*) FROM " + tabelle).at(0).at(0)));
    return zahlen;
}

/// Whether the rows are those of a deletion in table order that has come this far: empty, then one table on
/// its way, then whole ones.
bool istLoeschstand(const std::vector<int>& zahlen) {
    std::size_t stelle = 0;
    while (stelle < zahlen.size() && zahlen[stelle] == 0)
        ++stelle;
    for (std::size_t i = stelle + 1; i < zahlen.size(); ++i)
        if (zahlen[i] != ZEILEN[i])
            return false;
    return stelle == zahlen.size() || zahlen[stelle] <= ZEILEN[stelle];
}

} // namespace

TEST(SchemaAbsturz, TastenSindVorOderNachJedemDerBeidenUpdates) {
    const Testdatenbank datei;
    SchemaAnlegen(datei.pfad(), "S", "", {});
    tastenSpeichern(datei, 0);
    int zuletzt = 0;
    toetenUndPruefen([&](int zahl) { tastenSpeichern(datei, zahl); },
                     [&](Fortschritt stand) {
                         erwarteHeil(datei);
                         const int tasten = zahlIn(einziger(datei, "tblTastatur"));
                         const int kreuz = zahlIn(einziger(datei, "tblSteuerKreuz"));
                         const int fertig = std::max(stand.fertig, zuletzt);
                         EXPECT_TRUE(tasten == stand.begonnen || (tasten == fertig && kreuz == fertig))
                             << tasten << " of " << stand.fertig << " to " << stand.begonnen;
                         EXPECT_LE(kreuz, tasten);
                         tastenSpeichern(datei, stand.begonnen);
                         zuletzt = stand.begonnen;
                     });
}

TEST(SchemaAbsturz, LinienSindVorOderNachJedemUpdate) {
    const Testdatenbank datei;
    StickLinienLesen(datei.pfad(), Stickseite::Rechts, "S", [](std::string_view) {});
    int vorher = 0;
    linienSpeichern(datei, vorher);
    toetenUndPruefen([&](int zahl) { linienSpeichern(datei, zahl); },
                     [&](Fortschritt stand) {
                         erwarteHeil(datei);
                         const auto folge = linienFolge(datei);
                         EXPECT_TRUE(std::is_sorted(folge.rbegin(), folge.rend()))
                             << testing::PrintToString(folge);
                         EXPECT_LE(folge.front(), stand.begonnen);
                         EXPECT_GE(folge.back(), std::max(stand.fertig, vorher));
                         linienSpeichern(datei, stand.begonnen);
                         vorher = stand.begonnen;
                     });
}

TEST(SchemaAbsturz, EineLoeschungHatJedeTabelleVorDerNaechstenGeleert) {
    const Testdatenbank datei;
    const std::string bilder = (datei.ordner() / "Bilder/").string();
    std::filesystem::create_directory(bilder);
    std::mt19937 zufall(815);
    std::set<std::size_t> staende;
    int mitten = 0;
    double dauer = LOESCHDAUER_US;
    for (int i = 0; i < TOETUNGEN; ++i) {
        schemaLegen(datei);
        dateiSchreiben(bilder + "S0L.bmp", "");
        int rohr[2];
        ASSERT_EQ(pipe(rohr), 0);
        const pid_t kind = imKind([&] {
            [[maybe_unused]] const auto egal = write(rohr[1], "", 1); // it begins
            SchemaLoeschen(datei.pfad(), bilder, "S", [](std::string_view) {});
        });
        char zeichen = 0;
        ASSERT_EQ(read(rohr[0], &zeichen, 1), 1);
        std::this_thread::sleep_for(std::chrono::microseconds(zufall() % static_cast<unsigned>(dauer)));
        kill(kind, SIGKILL);
        const bool getoetet = wurdeGetoetet(kind);
        mitten += getoetet;
        dauer *= getoetet ? 1.1 : 0.8;
        close(rohr[0]);
        close(rohr[1]);

        erwarteHeil(datei);
        const auto zahlen = zeilenzahlen(datei);
        EXPECT_TRUE(istLoeschstand(zahlen)) << testing::PrintToString(zahlen);
        const bool leer = zahlen == std::vector<int>(8, 0);
        EXPECT_TRUE(leer || std::filesystem::exists(bilder + "S0L.bmp")) << "pictures go last";
        staende.insert(static_cast<std::size_t>(std::count(zahlen.begin(), zahlen.end(), 0)));

        SchemaLoeschen(datei.pfad(), bilder, "S", [](std::string_view) {});
        EXPECT_EQ(zeilenzahlen(datei), std::vector<int>(8, 0)) << "deleting again removes the rest";
    }
    EXPECT_GT(mitten, TOETUNGEN / 4);
    EXPECT_GT(staende.size(), 3U) << "the deaths came at many places";
}
