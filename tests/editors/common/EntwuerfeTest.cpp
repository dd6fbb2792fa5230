// SPDX-License-Identifier: GPL-3.0-or-later
// What was not saved is kept, the newest first, but not without bound.
#include "editors/common/Entwuerfe.h"

#include <gtest/gtest.h>

TEST(EntwuerfeTest, NurDieNeuestenEinesSchemasBleiben) {
    using Zahlen = Entwuerfe<int>;
    Zahlen entwuerfe;
    entwuerfe.merken("anderes", -1);
    const int alle = static_cast<int>(Zahlen::HOECHSTENS) + 5;
    for (int i = 0; i < alle; ++i)
        entwuerfe.merken("S", i);
    for (int i = alle - 1; i >= 5; --i)
        EXPECT_EQ(entwuerfe.nehmen("S"), i);
    EXPECT_FALSE(entwuerfe.gibtEs("S"));
    EXPECT_EQ(entwuerfe.nehmen("anderes"), -1);
}
