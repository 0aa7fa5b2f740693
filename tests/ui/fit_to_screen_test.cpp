#include "ui/fit_to_screen.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>

namespace korvinth::ui {
namespace {

// A dialog with many fields and a button below them.
class FitToScreenTest : public testing::Test
{
protected:
    FitToScreenTest() { qApp->installEventFilter(&fitter_); }

    void Show(int fields)
    {
        auto* layout = new QVBoxLayout(&dialog_);
        layout->setSizeConstraint(QLayout::SetFixedSize);
        for (int i = 0; i < fields; ++i) layout->addWidget(new QLineEdit);
        layout->addWidget(last_);
        dialog_.show();
        dialog_.layout()->itemAt(0)->widget()->setFocus();
    }
    bool OnScreen() const { return room_.contains(dialog_.geometry()); }

    ScreenFitter fitter_;
    QDialog dialog_;
    QPushButton* last_ = new QPushButton("OK", &dialog_);
    const QRect room_ = QGuiApplication::primaryScreen()->availableGeometry();
};

TEST_F(FitToScreenTest, WhatIsTooHighScrollsToWhereTheKeysAre)
{
    Show(100);
    EXPECT_TRUE(QTest::qWaitFor([this] { return OnScreen(); }));
    ASSERT_NE(dialog_.focusWidget(), nullptr) << "the field still has the keys";
    QTest::keyClick(dialog_.focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(dialog_.focusWidget(), last_);
    EXPECT_TRUE(dialog_.rect().contains(QRect(last_->mapTo(&dialog_, QPoint()), last_->size())));
}

TEST_F(FitToScreenTest, ALongMessageKeepsItsLines)
{
    QMessageBox box(QMessageBox::Warning, "Titel", QString("ein langer Satz ").repeated(2000));
    box.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return room_.contains(box.geometry()); }));
    QEvent changed(QEvent::LayoutRequest);  // has the box find its size anew
    QApplication::sendEvent(&box, &changed);
    QApplication::processEvents();
    EXPECT_TRUE(room_.contains(box.geometry()));
    EXPECT_LT(box.findChild<QLabel*>("qt_msgbox_label")->width(), room_.width());
}

TEST_F(FitToScreenTest, WhatFitsIsLeftAlone)
{
    Show(3);
    QApplication::processEvents();
    EXPECT_EQ(last_->parentWidget(), &dialog_);
    EXPECT_EQ(dialog_.size(), dialog_.sizeHint());
}

TEST(FitToScreen, AWindowBeyondItsScreenComesBack)
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget window;
    window.resize(400, 300);  // with any frame
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
}  // namespace korvinth::ui
