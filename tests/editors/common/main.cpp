// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Anwendung.h"

#include <gtest/gtest.h>

#include <QVariant>

namespace {

/// Every test is one that no error leaves its handler, unless it says that one will.
class Testanwendung final : public Anwendung {
public:
    using Anwendung::Anwendung;

protected:
    void durchgelassen(const LaufzeitFehler& fehler) override {
        EXPECT_TRUE(property("DARF_DURCHLASSEN").toBool()) << "a handler let through: " << fehler.what();
        Anwendung::durchgelassen(fehler);
    }
};

} // namespace

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Testanwendung anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
