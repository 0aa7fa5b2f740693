#include "ui/fit_to_screen.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
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
    QPushButton* last_ = new QPushButton("OK");
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

}  // namespace
}  // namespace korvinth::ui
