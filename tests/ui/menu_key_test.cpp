#include "ui/menu_key.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>

namespace korvinth::ui {
namespace {

TEST(MenuKey, ShiftAndF10AskForTheMenuOfWhatHasTheKeys)
{
    MenuKey keys;
    qApp->installEventFilter(&keys);
    QWidget window;
    QWidget area(&window);
    window.setContextMenuPolicy(Qt::CustomContextMenu);
    int asked = 0;
    QPoint place;
    QObject::connect(&window, &QWidget::customContextMenuRequested, &window, [&](QPoint where) {
        ++asked;
        place = where;
    });
    area.setGeometry(10, 20, 80, 40);
    QTest::keyClick(&area, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(asked, 1) << "of the next around it that has one";
    EXPECT_TRUE(area.geometry().contains(place));
    QTest::keyClick(&area, Qt::Key_F10);
    EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace korvinth::ui
