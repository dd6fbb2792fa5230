// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/TimerUeberwachung.h"

#include "platform/Zeitgeber.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

/// Writes down which timers are killed.
class Totenliste final : public Zeitgeber {
public:
    void SetTimer(std::uint32_t, std::chrono::milliseconds, TimerProzedur) override { ADD_FAILURE(); }
    void KillTimer(std::uint32_t id) override { getoetete.push_back(id); }
    std::unique_ptr<Formularzeitgeber> formularzeitgeber(TimerProzedur) override { return nullptr; }

    std::vector<std::uint32_t> getoetete;
};

TEST(AlleTimerBeendenTest, EndetAlleInDerReihenfolgeAusserDerGlaettung) {
    Totenliste zeitgeber;
    AlleTimerBeenden(zeitgeber);
    EXPECT_EQ(
        zeitgeber.getoetete,
        (std::vector<std::uint32_t>{0,   1,   2,   15,  1414, 3,   4,   5,    6,    1313, 100,  101,  102,
                                    103, 104, 105, 106, 107,  108, 109, 1010, 1011, 1012, 1013, 1014, 1015}));
}

TEST(SlotTimerIdTest, IstZehnUndDieZiffernDesSlots) {
    std::vector<std::uint32_t> ids;
    for (int slot = 0; slot <= 15; ++slot)
        ids.push_back(slotTimerId(slot));
    EXPECT_EQ(ids, (std::vector<std::uint32_t>{100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 1010, 1011,
                                               1012, 1013, 1014, 1015}));
}

TEST(TimerUeberwachungTest, SetztUndLoeschtEinBit) {
    TimerUeberwachung timer;
    timer.TimerSetzen(0);
    timer.TimerSetzen(3);
    timer.TimerSetzen(31);
    EXPECT_EQ(timer.TimerMaske(), 0x80000009U);
    timer.TimerLoeschen(3);
    EXPECT_EQ(timer.TimerMaske(), 0x80000001U);
}

TEST(TimerUeberwachungTest, ZweimalIstWieEinmal) {
    TimerUeberwachung timer;
    timer.TimerSetzen(3);
    timer.TimerSetzen(3);
    EXPECT_EQ(timer.TimerMaske(), 8U);
    timer.TimerLoeschen(3);
    timer.TimerLoeschen(3);
    EXPECT_EQ(timer.TimerMaske(), 0U);
}

} // namespace
