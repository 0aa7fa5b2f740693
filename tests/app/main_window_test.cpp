#include "app/main_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "app/application.h"
#include "ui/graphform.h"

namespace korvinth::app {
namespace {

class MainWindowTest : public testing::Test
{
protected:
    void Show(int width = 1024, int height = 600)
    {
        window_.resize(width, height);
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
    }
    QLineEdit* Row(int row)
    {
        return window_.findChild<QLineEdit*>(QStringLiteral("fnam[%1]").arg(row));
    }
    void Type(int row, const char* text)
    {
        Row(row)->clear();
        QTest::keyClicks(Row(row), text);
        QTest::keyClick(Row(row), Qt::Key_Return);
    }
    QString Status() { return window_.findChild<QLabel*>("status")->text(); }
    ui::GraphForm* Graph() { return window_.findChild<ui::GraphForm*>("graphform"); }
    QSize PictureSize() { return Graph()->AreaSize() * Graph()->devicePixelRatioF(); }
    int PixelsOfSlot(int slot)
    {
        const document::Colour colour =
            application_.Document()
                .attributes.slots[document::SlotIndex{static_cast<std::int16_t>(slot)}]
                .colour;
        const QImage picture = Graph()->Picture();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                count += pixel == QColor(document::Red(colour), document::Green(colour),
                                         document::Blue(colour))
                             ? 1
                             : 0;
            }
        }
        return count;
    }

    Application application_;
    MainWindow window_{application_};
};

TEST_F(MainWindowTest, EnterDrawsTheTypedTerm)
{
    Show();
    EXPECT_EQ(PixelsOfSlot(0), 0);
    Type(0, "f(x)=a*sin(x)+b");
    EXPECT_EQ(Status(), "o.k.");
    EXPECT_EQ(Row(0)->text(), "f(x) = a*sin(x)+b");
    EXPECT_GT(PixelsOfSlot(0), 200);
}

TEST_F(MainWindowTest, ARowWithoutALeftSideTakesAFreeLetter)
{
    Show();
    Type(4, "x^2");
    EXPECT_EQ(Row(4)->text(), "f(x) = x^2");
    EXPECT_GT(PixelsOfSlot(4), 100);
    EXPECT_EQ(PixelsOfSlot(0), 0);
}

TEST_F(MainWindowTest, AnErrorIsShownAndTheOtherRowsAreDrawn)
{
    Show();
    Type(0, "x");
    Type(1, "g(x)=");
    EXPECT_TRUE(Status().endsWith("Funktionsterm fehlt!"));
    EXPECT_EQ(Row(1)->text(), "g(x)=") << "what is typed stays";
    EXPECT_GT(PixelsOfSlot(0), 100);
    Type(1, "g(x)=(x");
    EXPECT_TRUE(Status().contains("g(x)"));
    EXPECT_GT(PixelsOfSlot(0), 100);
    Type(1, "");
    EXPECT_EQ(Status(), "o.k.");
}

TEST_F(MainWindowTest, ThePictureFollowsTheAreaAndKeepsOneScale)
{
    Show();
    Type(0, "x");
    for (const QSize size : {QSize(700, 700), QSize(1280, 640)}) {
        window_.resize(size);
        ASSERT_TRUE(QTest::qWaitFor([&] { return Graph()->Picture().size() == PictureSize(); }));
        const render::ViewRange& view = application_.View();
        EXPECT_NEAR(view.xmu, view.ymu, 1e-9 * view.xmu);
        EXPECT_NEAR(view.area_width, 15.0 * Graph()->AreaSize().width(), 0.5);
    }
}

TEST_F(MainWindowTest, NothingIsCutOffInASmallWindow)
{
    Show();
    EXPECT_LE(window_.minimumSizeHint().width(), 1024);
    EXPECT_LE(window_.minimumSizeHint().height(), 600);
    EXPECT_GE(Row(0)->width(), 150);
    EXPECT_GE(Row(0)->fontInfo().pointSizeF(), 11);
    EXPECT_GT(Graph()->width(), 2 * Row(0)->width());
}

TEST_F(MainWindowTest, HasItsTitleAndCloses)
{
    Show();
    EXPECT_EQ(window_.windowTitle(),
              "Korvinth 2 - Funktionsgraphen und Kurven mit dynamischen Parametern");
    EXPECT_EQ(Graph()->windowTitle(), "Funktionenplotter");
    window_.findChild<QAction*>("mn_close")->trigger();
    EXPECT_FALSE(window_.isVisible());
}

}  // namespace
}  // namespace korvinth::app
