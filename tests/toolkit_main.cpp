// Runs the tests of windows and pictures inside one application object of the toolkit.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication toolkit(argc, argv);
    return RUN_ALL_TESTS();
}
