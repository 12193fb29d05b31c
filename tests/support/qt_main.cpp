// The main function of test programs that use Qt: one application object, without a screen, for all cases.

#include <QApplication>
#include <gtest/gtest.h>

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
