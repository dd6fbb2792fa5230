// SPDX-License-Identifier: GPL-3.0-or-later
// What a drawing of the fields of a stick's plane costs: reading both tables, and painting the picture.
#include "editors/stick/Zonenbild.h"
#include "tests/hilfen/Testdatenbank.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

namespace {

constexpr int LINIEN = 19; // as many as a direction takes
constexpr int SYMBOLE = 200;

std::string zahl(int wert) {
    return std::to_string(wert);
}

// All lines in place, and 200 fields left of the centre, above and below it, of all types but the empty one.
std::string vollerStick() {
    std::string sql = "INSERT INTO tblStick (Schemaname, \"index\") VALUES ('S', 20);";
    for (int i = 0; i < LINIEN; ++i) {
        const std::string innen = zahl(30000 - 1000 * i);
        const std::string aussen = zahl(36000 + 1000 * i);
        const std::string eine = innen + "," + aussen + "," + innen + "," + aussen;
        sql +=
            "INSERT INTO tblStick VALUES ('S'," + zahl(i + 1) + "," + eine + "," + eine + "," + eine + ");";
    }
    const std::array<const char*, 5> aktionen{"0,0,5,10", "1,0", "2,0,13,0,0", "4", "5,0"};
    for (int i = 0; i < SYMBOLE; ++i) {
        const int quer = i / LINIEN; // 0: the band itself, then fields above and below
        const int oben = quer % 2 ? 30000 - 1000 * (quer / 2) : 0;
        const int unten = quer && quer % 2 == 0 ? 36000 + 1000 * (quer / 2) : 0;
        sql += "INSERT INTO tblStickAktion VALUES ('S',0," + zahl(30000 - 1000 * (i % LINIEN)) + ",0," +
               zahl(oben) + "," + zahl(unten) + ",'" + aktionen[static_cast<std::size_t>(i) % 5] + "');";
    }
    return sql;
}

void zeichnenUndMalen(benchmark::State& stand) {
    const Testdatenbank datenbank;
    datenbank.sql(vollerStick());
    const QSize groesse(static_cast<int>(stand.range(0)), static_cast<int>(stand.range(1)));
    QImage flaeche(groesse, QImage::Format_RGB32);
    Zonenbild bild;
    for (auto _ : stand) {
        ZonenZeichnen(datenbank.pfad(), Stickseite::Links, "S", 0, bild);
        QPainter maler(&flaeche);
        bild.malen(maler, groesse);
        benchmark::DoNotOptimize(flaeche.constBits());
    }
    stand.counters["Symbole"] = static_cast<double>(bild.symbole().size());
}
BENCHMARK(zeichnenUndMalen)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);

void zeichnenOhneMalen(benchmark::State& stand) {
    const Testdatenbank datenbank;
    datenbank.sql(vollerStick());
    Zonenbild bild;
    for (auto _ : stand)
        ZonenZeichnen(datenbank.pfad(), Stickseite::Links, "S", 0, bild);
}
BENCHMARK(zeichnenOhneMalen)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
