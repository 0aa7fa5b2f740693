#include "ui/qt_dialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

namespace korvinth::ui {
namespace {

TEST(QtDialogs, AKeyThatWasMeantForSomethingElseGivesThePresetAnswer)
{
    QtDialogs dialogs;
    const auto answer = [&dialogs](Preset preset, Qt::Key key) {
        QTimer::singleShot(0, [key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_TRUE(QTest::qWaitForWindowActive(box));
            QTest::keyClick(QApplication::focusWidget(), key);
        });
        return dialogs.AskYesNo("Achtung!", "Soll er gelöscht werden?", preset);
    };
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        EXPECT_TRUE(answer(Preset::Yes, key));
        EXPECT_FALSE(answer(Preset::No, key));
    }
    EXPECT_FALSE(answer(Preset::Yes, Qt::Key_Escape));
}

}  // namespace
}  // namespace korvinth::ui
