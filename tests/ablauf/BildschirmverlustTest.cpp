// SPDX-License-Identifier: GPL-3.0-or-later
// What is saved when the display goes, and that no window takes part in it.
#include "tests/ablauf/Ablauf.h"

#include "editors/common/Nebenarbeit.h"

#include <QScrollBar>

#include <atomic>
#include <thread>

TEST_F(Ablauf, OhneBildschirmWirdGesichertWasEinEndeSichertUndKeinFensterRuehrtSich) {
    starten(Schemabau(datenbank_).ungeglaettet());
    auto* lauf = laufFenster();
    lauf->findChild<QScrollBar*>("HScroll1(0)")->setValue(23);
    EXPECT_EQ(programm_->ohneBildschirmSichern(), "Die Regler des Laufs sind gespeichert.");
    EXPECT_EQ(datenbank_.zeilen("SELECT Fenster_ly FROM Sensible"), (Tabellenbild{{"23"}}));
    EXPECT_EQ(laufFenster(), lauf);
    EXPECT_FALSE(programm_->hauptform().isVisible());
}

TEST_F(Ablauf, OhneBildschirmWirdEinBildNochFertig) {
    Schemabau(datenbank_).anlegen();
    std::filesystem::current_path(datenbank_.ordner());
    programmStarten();
    QWidget form;
    auto* schreiber = new Nebenarbeit(&form);
    std::atomic<bool> fertig = false;
    bool gesagt = false;
    schreiber->auftrag(
        [&fertig] {
            std::this_thread::sleep_for(std::chrono::milliseconds{50}); // as a large one takes
            return fertig = true;
        },
        [&gesagt](bool) { gesagt = true; });
    EXPECT_EQ(programm_->ohneBildschirmSichern(), "");
    EXPECT_TRUE(fertig);
    EXPECT_FALSE(gesagt); // in a window
}
