// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Anwendung.h"

#include <gtest/gtest.h>

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Anwendung anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
