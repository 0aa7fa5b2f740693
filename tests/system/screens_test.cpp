// Screens that differ and change while the program runs.
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QScreen>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

#include "app/screen_fit.h"
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

TEST(Screens, AWindowBeyondItsScreenComesBack)
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget window;
    window.resize(500, 400);
    window.show();
    window.move(300, 200);
    FitToScreen(window);
    EXPECT_TRUE(window.pos() == QPoint(300, 200)) << "within the screen it stays";
    window.move(300, room.bottom() - 250);
    FitToScreen(window);
    EXPECT_TRUE(room.contains(window.frameGeometry()));
    QMainWindow large;
    large.setGeometry(50, 50, room.width() + 10, 400);
    large.show();
    FitToScreen(large);
    EXPECT_TRUE(large.isMaximized());

    const QRect small(0, 0, 1024, 768);
    EXPECT_EQ(PlacedInside({900, 10, 300, 200}, small), QRect(724, 10, 300, 200));
    EXPECT_EQ(PlacedInside({-50, 700, 2000, 100}, small), QRect(0, 668, 2000, 100));
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
