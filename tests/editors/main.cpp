#include <gtest/gtest.h>

#include <QApplication>

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
