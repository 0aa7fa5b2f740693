// Screens that differ and change while the program runs.
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QScreen>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

#include "tests/system/driven_program.h"
#include "ui/graphform.h"

namespace korvinth::app {
namespace {

// Two screens side by side, the right one with four dots to a pixel of the left one.
constexpr const char* kScreens = R"({"screens": [
    {"name": "left", "x": 0, "y": 0, "width": 1400, "height": 1000, "logicalDpi": 96,
     "logicalBaseDpi": 96, "dpr": 1},
    {"name": "right", "x": 1400, "y": 0, "width": 1400, "height": 1000, "logicalDpi": 96,
     "logicalBaseDpi": 96, "dpr": 2}]})";

TEST(Screens, ThePictureHasTheDotsOfTheScreenThatTheWindowIsMovedTo)
{
    ASSERT_EQ(QGuiApplication::screens().size(), 2);
    const QTemporaryDir folder;
    DrivenProgram program(folder.path().toStdString());
    MainWindow& window = program.Window();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    program.Type(0, "sin(x)");
    for (const int x : {10, 1450, 20}) {
        window.move(x, 50);
        const double ratio = x > 1400 ? 2 : 1;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const QImage& picture = window.Graph().Picture();
            return picture.size() == window.Graph().AreaSize() * ratio;
        })) << x;
    }
    EXPECT_EQ(program.Row(0), "f(x) = sin(x)");
}

}  // namespace
}  // namespace korvinth::app

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QTemporaryFile screens;
    if (!screens.open() || screens.write(korvinth::app::kScreens) < 0 || !screens.flush()) return 1;
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
    const QApplication toolkit(argc, argv);
    return RUN_ALL_TESTS();
}
