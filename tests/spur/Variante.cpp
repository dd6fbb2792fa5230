// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/spur/Variante.h"

#include <algorithm>
#include <regex>

namespace {

using Art = Spureingabe::Art;
using std::chrono::milliseconds;

// Row 20 of the lines holds no line.
const std::vector<std::string> ACHSENTAUSCH{
    "UPDATE tblStick SET Links = Oben, Oben = Links, Rechts = Unten, Unten = Rechts, Links2 = Oben2, "
    "Oben2 = Links2, Rechts2 = Unten2, Unten2 = Rechts2, Links3 = Oben3, Oben3 = Links3, Rechts3 = Unten3, "
    "Unten3 = Rechts3 WHERE \"index\" < 20;",
    "UPDATE tblStickAktion SET Links = Oben, Oben = Links, Rechts = Unten, Unten = Rechts;",
    "UPDATE Sensible SET Fenster_lx = Fenster_ly, Fenster_ly = Fenster_lx, Mindestzahl_lx = Mindestzahl_ly, "
    "Mindestzahl_ly = Mindestzahl_lx, Rand_lx = Rand_ly, Rand_ly = Rand_lx;"};

// `Wiederholung` belongs to no stick and stays with the left one's row.
const std::vector<std::string> STICKTAUSCH{"ALTER TABLE tblStick RENAME TO getauscht;",
                                           "ALTER TABLE tblStickR RENAME TO tblStick;",
                                           "ALTER TABLE getauscht RENAME TO tblStickR;",
                                           "ALTER TABLE tblStickAktion RENAME TO getauscht;",
                                           "ALTER TABLE tblStickAktionR RENAME TO tblStickAktion;",
                                           "ALTER TABLE getauscht RENAME TO tblStickAktionR;",
                                           "CREATE TEMP TABLE links AS SELECT * FROM Sensible;",
                                           "CREATE TEMP TABLE rechts AS SELECT * FROM SensibleR;",
                                           "DELETE FROM Sensible;",
                                           "DELETE FROM SensibleR;",
                                           "INSERT INTO SensibleR (Schemaname, Fenster_rx, Fenster_ry, "
                                           "Mindestzahl_rx, Mindestzahl_ry, Rand_rx, Rand_ry) "
                                           "SELECT Schemaname, Fenster_lx, Fenster_ly, Mindestzahl_lx, "
                                           "Mindestzahl_ly, max(Rand_lx, Rand_ly), Rand_ly "
                                           "FROM links;",
                                           "INSERT INTO Sensible (Schemaname, Fenster_lx, Fenster_ly, "
                                           "Mindestzahl_lx, Mindestzahl_ly, Rand_lx, Rand_ly, "
                                           "Wiederholung) SELECT Schemaname, Fenster_rx, Fenster_ry, "
                                           "Mindestzahl_rx, Mindestzahl_ry, Rand_rx, Rand_ry, "
                                           "(SELECT Wiederholung FROM links) FROM rechts;"};

/// An axis and its scroll bars: window, minimum count, margin, and the margin's upper half.
struct Achsenregler {
    const char* achse;
    std::array<std::uint32_t, 4> regler;
};
constexpr std::array<Achsenregler, 4> ACHSEN{
    {{"lx", {2, 3, 5, 5}}, {"ly", {0, 1, 4, 4}}, {"rx", {6, 7, 10, 10}}, {"ry", {8, 9, 11, 10}}}};
constexpr std::size_t ZWEITE_DES_STICKS = 1;
constexpr std::size_t RECHTER_STICK = 2;
constexpr std::size_t OBERER_RAND = 3;

class Uebertrager {
public:
    Uebertrager(const Szenario& geschrieben, const Variante& variante)
        : geschrieben_(geschrieben), variante_(variante) {}

    Szenario szenario(const std::vector<Erwartung>& erwartungen) const {
        Szenario szenario = geschrieben_;
        szenario.variante = variante_.name;
        anhaengen(szenario.umbau, ACHSENTAUSCH, variante_.achsenTauschen);
        anhaengen(szenario.umbau, STICKTAUSCH, variante_.sticksTauschen);
        szenario.eingaben.clear();
        for (const auto& eingabe : geschrieben_.eingaben)
            anhaengen(szenario.eingaben, eingaben(eingabe), true);
        szenario.erwartet = ereignisse(erwartungen);
        return szenario;
    }

private:
    template <class T> static void anhaengen(std::vector<T>& ziel, const std::vector<T>& neue, bool gilt) {
        if (gilt)
            ziel.insert(ziel.end(), neue.begin(), neue.end());
    }

    std::size_t achse(std::size_t geschriebene) const {
        auto achse = geschriebene;
        if (variante_.achsenTauschen && achse < RECHTER_STICK)
            achse ^= ZWEITE_DES_STICKS;
        if (variante_.sticksTauschen)
            achse ^= RECHTER_STICK;
        return achse;
    }

    std::vector<Spureingabe> eingaben(Spureingabe eingabe) const {
        if (eingabe.art == Art::Achse)
            eingabe.index = rohachse(eingabe.index);
        return eingabe.art == Art::Regler ? regler(eingabe) : std::vector{eingabe};
    }

    std::uint32_t rohachse(std::uint32_t geschriebene) const {
        const auto& namen = geschrieben_.achsen;
        const auto von = std::ranges::find(ACHSEN, namen[geschriebene], &Achsenregler::achse);
        if (von == ACHSEN.end())
            return geschriebene;
        const std::size_t nummer = static_cast<std::size_t>(von - ACHSEN.begin());
        if (achse(nummer) == nummer)
            return geschriebene;
        const auto ziel = std::ranges::find(namen, ACHSEN[achse(nummer)].achse);
        if (ziel == namen.end())
            throw Szenariofehler(variante_.name + ": no raw axis is \"" + ACHSEN[achse(nummer)].achse + "\"");
        return static_cast<std::uint32_t>(ziel - namen.begin());
    }

    std::vector<Spureingabe> regler(const Spureingabe& eingabe) const {
        for (std::size_t nummer = 0; nummer < ACHSEN.size(); ++nummer) {
            const auto& von = ACHSEN[nummer].regler;
            const auto stelle = std::ranges::find(von, eingabe.index) - von.begin();
            if (stelle == static_cast<std::ptrdiff_t>(von.size()))
                continue;
            if (achse(nummer) == nummer)
                return {eingabe};
            return mitOberemRand(eingabe, ACHSEN[achse(nummer)].regler, static_cast<std::size_t>(stelle));
        }
        return {eingabe}; // HScroll2
    }

    static std::vector<Spureingabe>
    mitOberemRand(Spureingabe eingabe, const std::array<std::uint32_t, 4>& regler, std::size_t stelle) {
        eingabe.index = regler[stelle];
        std::vector<Spureingabe> alle{eingabe};
        if (stelle + 1 == OBERER_RAND && regler[OBERER_RAND] != regler[stelle]) {
            eingabe.index = regler[OBERER_RAND];
            alle.push_back(eingabe);
        }
        return alle;
    }

    std::vector<Spurereignis> ereignisse(const std::vector<Erwartung>& erwartungen) const {
        const milliseconds abstand{variante_.sticksTauschen ? 1 : 2};
        std::vector<Spurereignis> alle;
        milliseconds naechster{0};
        std::optional<milliseconds> ende; // of the last span
        for (const auto& erwartung : erwartungen) {
            if (!erwartung.bis) {
                alle.insert(alle.end(), erwartung.anzahl, {erwartung.zeit, ereignis(erwartung.text)});
                continue;
            }
            // A span that begins where the last one ends goes on with its ticks.
            if (!ende || erwartung.zeit != *ende + milliseconds{1})
                naechster = erwartung.zeit;
            for (const auto text = ereignis(erwartung.text); naechster <= *erwartung.bis;
                 naechster += abstand)
                alle.push_back({naechster, text});
            ende = erwartung.bis;
        }
        return alle;
    }

    std::string ereignis(const std::string& text) const {
        static const std::regex ZEIGER(R"((m|abs)\((-?\d+),(-?\d+)\))");
        return variante_.achsenTauschen ? std::regex_replace(text, ZEIGER, "$1($3,$2)") : text;
    }

    const Szenario& geschrieben_;
    const Variante& variante_;
};

} // namespace

Szenario uebertragen(const Szenario& geschrieben, const std::vector<Erwartung>& erwartungen,
                     const Variante& variante) {
    return Uebertrager(geschrieben, variante).szenario(erwartungen);
}
