// SPDX-License-Identifier: GPL-3.0-or-later
// What the sticks cost: a round of smoothing, a tick with both of them in their fields, a change of field, a
// change of layer, a long way of the Ego Shooter beside the mere sending of it.
#include "bench/Messlauf.h"
#include "engine/input/Entwackeln.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int LINIEN = 19; // as many as a direction takes

// Both sticks with 19 lines in each direction on all layers: to the left and up 30000, 29000, ... 12000, to
// the right and down 36000, 37000, ... 54000.
std::string linien() {
    std::string sql;
    for (const std::string tabelle : {"tblStick", "tblStickR"}) {
        sql += "INSERT INTO " + tabelle + " (Schemaname, \"index\") VALUES ('S', 20);";
        for (int i = 0; i < LINIEN; ++i) {
            const std::string innen = std::to_string(30000 - 1000 * i);
            const std::string aussen = std::to_string(36000 + 1000 * i);
            const std::string eine = innen + "," + aussen + "," + innen + "," + aussen;
            sql += "INSERT INTO " + tabelle + " VALUES ('S'," + std::to_string(i + 1) + "," + eine + "," +
                   eine + "," + eine + ");";
        }
    }
    return sql;
}

// `anzahl` fields left of the centre, above and below, that move the mouse to the left.
std::string aktionen(int anzahl) {
    std::string sql;
    for (const std::string tabelle : {"tblStickAktion", "tblStickAktionR"})
        for (int ebene = 0; ebene < 3; ++ebene)
            for (int i = 0; i < anzahl; ++i) {
                const std::string links = std::to_string(30000 - 1000 * (i % LINIEN));
                const int quer = i / LINIEN; // 0: the band itself, then fields above and below
                const std::string oben = std::to_string(quer % 2 ? 30000 - 1000 * (quer / 2) : 0);
                const std::string unten =
                    std::to_string(quer && quer % 2 == 0 ? 36000 + 1000 * (quer / 2) : 0);
                sql += "INSERT INTO " + tabelle + " VALUES ('S'," + std::to_string(ebene) + "," + links +
                       ",0," + oben + "," + unten + ",'0,0,5,10');";
            }
    return sql;
}

// One axis at a time trembles around a value, so that all branches of the filter are taken.
void glaettenVierAchsen(benchmark::State& stand) {
    ProbeUhr uhr;
    ProbeJoystick pad;
    StummeAnzeige anzeige;
    const Testordner ordner;
    const std::string schema = "S";
    Achsendatei achsendatei((ordner.pfad() / "Gamepad.xml").string(), schema);
    Achsen achsen(pad, achsendatei);
    achsendatei.AchsenLaden();
    Reglerwerte regler;
    for (const std::size_t fenster : {0, 2, 6, 8})
        regler.glaettung[fenster] = 30;
    Entwackelstand alt;
    Entwackeln entwackeln(alt, achsen, regler, uhr, anzeige);
    std::uint32_t runde = 0;
    for (auto _ : stand) {
        ++runde;
        pad.zustand.dwXpos = pad.zustand.dwYpos = pad.zustand.dwZpos = pad.zustand.dwRpos =
            32767 + (runde / 7) % 3;
        entwackeln.EntwackelnTakt();
    }
}
BENCHMARK(glaettenVierAchsen);

// The tick alone: the smoothing runs on its own timer and is stopped.
void tickMitBeidenSticksImFeld(benchmark::State& stand) {
    Messlauf lauf(linien() + aktionen(200));
    lauf.uhr.vorUm(10 * TICK);
    lauf.uhr.KillTimer(timerid::ENTWACKELN);
    for (auto _ : stand)
        lauf.uhr.vorUm(TICK);
}
BENCHMARK(tickMitBeidenSticksImFeld);

// From one field of the left stick to the next and back, by 400 rows of actions; a crossing a round.
void feldwechsel(benchmark::State& stand) {
    Messlauf lauf(linien() + aktionen(400));
    auto& stick = lauf.zustand.linkerStick;
    lauf.uhr.vorUm(10 * TICK);
    auto& filter = lauf.zustand.entwackeln.filter[0];
    lauf.uhr.KillTimer(timerid::ENTWACKELN);
    std::int32_t wo = 29500;
    for (auto _ : stand) {
        wo = wo == 29500 ? 28500 : 29500; // the two innermost bands: their rows come last
        filter.glaetten(wo, {1, 0, 0, 0});
        const auto anfang = Messuhr::now();
        lauf.fenster.StickAuswerten();
        stand.SetIterationTime(std::chrono::duration<double>(Messuhr::now() - anfang).count());
        lauf.eingabe.abholen();
    }
    if (stick.stand().xZone != "Links")
        stand.SkipWithError("the stick is not where it should be");
}
BENCHMARK(feldwechsel)->UseManualTime();

// Both sticks' tables from the database, 19 lines and 200 actions each.
void ebenenwechsel(benchmark::State& stand) {
    Messlauf lauf(linien() + aktionen(200));
    int ebene = 0;
    for (auto _ : stand) {
        ebene = ebene == 1 ? 2 : 1;
        for (auto* stick : lauf.zustand.sticks)
            stick->tabellenLaden(ebene);
    }
}
BENCHMARK(ebenenwechsel)->Unit(benchmark::kMicrosecond);

// A way of the Ego Shooter as long as the argument, from the tick that enters its field.
void egoWeg(benchmark::State& stand) {
    const auto schritte = stand.range(0);
    // The default field is 27072 wide: its end gives the whole count, its beginning none.
    Messlauf lauf("INSERT INTO tblStickAktion VALUES ('S', 0, 27072, 0, 0, 0, '5,2," +
                  std::to_string(schritte) + ",1');");
    lauf.uhr.vorUm(10 * TICK);
    auto& filter = lauf.zustand.entwackeln.filter[0];
    lauf.uhr.KillTimer(timerid::ENTWACKELN);
    const auto stellen = [&](std::int32_t x) {
        filter.glaetten(x, {1, 0, 0, 0});
        lauf.fenster.StickAuswerten();
    };
    for (auto _ : stand) {
        stellen(1); // from the beginning of the field, out of it, and in again at its end
        stellen(32767);
        lauf.eingabe.abholen();
        const auto anfang = Messuhr::now();
        stellen(27071);
        stand.SetIterationTime(std::chrono::duration<double>(Messuhr::now() - anfang).count());
        if (lauf.eingabe.abholen().size() < static_cast<std::size_t>(schritte) * 99 / 100) {
            stand.SkipWithError("the way is not as long as it should be");
            break;
        }
        stellen(32767);
    }
}
BENCHMARK(egoWeg)->Arg(60000)->Arg(1000000)->UseManualTime()->Unit(benchmark::kMicrosecond);

// The same records straight to the seam, one call a record.
void egoWegNurGesendet(benchmark::State& stand) {
    Messlauf lauf;
    for (auto _ : stand) {
        const auto anfang = Messuhr::now();
        for (std::int64_t i = 0; i < stand.range(0); ++i)
            lauf.eingabe.mouse_event(MOUSEEVENTF_MOVE, 1, 0, 0, 0);
        stand.SetIterationTime(std::chrono::duration<double>(Messuhr::now() - anfang).count());
        lauf.eingabe.abholen();
    }
}
BENCHMARK(egoWegNurGesendet)->Arg(60000)->Arg(1000000)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
