// SPDX-License-Identifier: GPL-3.0-or-later
// What the editor says of a field is what a run does there: each field gets its stick in a run on fakes.
#include "editors/stick/Feldauskunft.h"

#include "store/schema/modLesen.h"
#include "tests/engine/stick/Sticklauf.h"

#include <algorithm>

namespace {

using Namen = std::vector<std::string>;

class FeldauskunftTest : public testing::TestWithParam<Stickseite> {
protected:
    /// Keys with the codes of letters: of the centre field, of bands in all directions, of two fields of
    /// their own.
    void belegen() {
        lauf.linien(1, INNERE_LINIEN);
        lauf.linien(2, AEUSSERE_LINIEN);
        int buchstabe = 'A';
        for (const Linienzeile& schluessel : {Linienzeile{0, 0, 0, 0},
                                              {20000, 0, 0, 0},
                                              {9000, 0, 0, 0},
                                              {0, 56000, 0, 0},
                                              {0, 0, 20000, 0},
                                              {0, 0, 0, 45000},
                                              {0, 0, 0, 56000},
                                              {9000, 0, 20000, 0}})
            lauf.aktion(schluessel, "2,0," + std::to_string(buchstabe++) + ",0,0");
        lauf.aktion({20000, 0, 20000, 0}, "3");
    }
    Linienebene linien() {
        return StickLinienLesen(lauf.datenbank.pfad(), GetParam(), "S", [](std::string_view) {}).linien[0];
    }
    Feldauskunft auskunft() {
        Feldauskunft eine;
        Database offen = OpenDatabase(lauf.datenbank.pfad());
        eine.lesen(offen, GetParam(), "S", 0);
        return eine;
    }
    /// The letters that are held now.
    Namen gehalten() {
        Namen namen;
        std::string_view text = lauf.zustand.gehaltene.GehaltenText();
        while (!text.empty()) {
            const auto ende = text.find(',');
            const auto eintrag = text.substr(0, ende);
            namen.emplace_back(
                1, static_cast<char>(std::stoi(std::string(eintrag.substr(eintrag.find('-') + 1)))));
            text.remove_prefix(ende + 1);
        }
        std::ranges::sort(namen);
        return namen;
    }
    /// The letters that are held by the words.
    static Namen gesagt(std::string_view worte) {
        Namen namen;
        for (auto stelle = worte.find(", gehalten"); stelle != std::string_view::npos;
             stelle = worte.find(", gehalten", stelle + 1))
            namen.emplace_back(worte.substr(stelle - 1, 1));
        std::ranges::sort(namen);
        return namen;
    }

    Sticklauf lauf{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(, FeldauskunftTest, BEIDE_STICKS, sticknameVon);

} // namespace

TEST_P(FeldauskunftTest, JedesFeldSagtWasEinLaufDortTut) {
    belegen();
    const auto ebene = linien();
    const auto worte = auskunft();
    const Feldgitter gitter(ebene);
    ASSERT_EQ(gitter.anzahl(), 25);
    lauf.starten();
    std::size_t tasten = 0;
    for (int nummer = 0; nummer < gitter.anzahl(); ++nummer) {
        const auto feld = gitter.feld(gitter.platz(nummer));
        const auto& r = feld.rechteck;
        const auto mitte = [](std::int64_t anfang, std::int64_t laenge) {
            return static_cast<std::uint32_t>(std::min<std::int64_t>(anfang + laenge / 2, 65000));
        };
        lauf.bewegen(mitte(r.links, r.breite), mitte(r.oben, r.hoehe));
        const auto satz = worte.worte(ebene, feld.anker);
        EXPECT_EQ(gesagt(satz), gehalten()) << gitter.name(gitter.platz(nummer)) << ": " << satz;
        tasten += gehalten().size();
    }
    EXPECT_GT(tasten, 25u) << "hardly a field has an action";
}
