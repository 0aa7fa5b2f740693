// What those hear who have the controls read to them: in every window, also those made on demand.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <string>

#include "app/main_window.h"
#include "app/program.h"
#include "files/path_text.h"
#include "ui/qt_dialogs.h"

namespace korvinth::app {
namespace {

// The mechanics of a composed control, which speaks for them.
bool IsInner(const QWidget& widget)
{
    return widget.focusProxy() == widget.parentWidget() || widget.objectName().startsWith("qt_") ||
           widget.parentWidget()->objectName().startsWith("qt_") ||
           widget.parentWidget()->inherits("QComboBoxPrivateContainer") ||
           qobject_cast<const QComboBox*>(widget.parentWidget()) != nullptr;
}

bool IsControl(const QWidget& widget)
{
    if (widget.focusPolicy() == Qt::NoFocus &&
        qobject_cast<const QAbstractButton*>(&widget) == nullptr) {
        return false;
    }
    for (const char* frame : {"QMdiArea", "QMdiSubWindow", "QMenu", "QMenuBar", "QScrollArea"}) {
        if (widget.inherits(frame)) return false;
    }
    return !IsInner(widget);
}

class AccessibilityTest : public testing::Test
{
protected:
    AccessibilityTest()
    {
        dialogs_.SetWindow(&Window());
        program_.Start({});
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&Window()));
    }
    MainWindow& Window() { return program_.Window(); }
    template <class T = QWidget>
    T* Find(const char* name)
    {
        return Window().findChild<T*>(name);
    }
    void Type(const char* row, const char* text)
    {
        Find<QLineEdit>(row)->setText(text);
        QTest::keyClick(Find(row), Qt::Key_Return);
    }

    // Returns how many there are.
    static int CheckControls(const QWidget& window)
    {
        int controls = 0;
        for (QWidget* control : window.findChildren<QWidget*>()) {
            if (!IsControl(*control)) continue;
            ++controls;
            QAccessibleInterface* told = QAccessible::queryAccessibleInterface(control);
            const QString name = told->text(QAccessible::Name);
            const QString description = told->text(QAccessible::Description);
            EXPECT_TRUE(!name.isEmpty() && !description.isEmpty() && name != description)
                << control->metaObject()->className() << " " << control->objectName().toStdString()
                << " in " << control->parentWidget()->objectName().toStdString() << ": \""
                << name.toStdString() << "\", \"" << description.toStdString() << "\"";
            EXPECT_FALSE(description.contains('<')) << "no marks of formatting";
        }
        return controls;
    }

    QTemporaryDir folder_;
    ui::QtDialogs dialogs_;
    Program program_{files::PathOf(folder_.path().toStdString()), dialogs_};
};

TEST_F(AccessibilityTest, EveryControlHasANameAndADescription)
{
    EXPECT_GT(CheckControls(*Find("willkommen")), 3);
    Type("fnam[0]", "f(x)=a*x");
    for (const char* made :
         {"mn_spal", "mn_calc", "mn_add", "mn_inter", "mn_asy", "mn_punkt", "mn_dtl"})
        Find<QAction>(made)->trigger();
    QTest::mouseClick(Find("para[26]")->findChild<QWidget*>("Image1"), Qt::RightButton);
    ASSERT_NE(Find("Dialog"), nullptr);
    EXPECT_GT(CheckControls(Window()), 110);

    struct Row
    {
        const char* entry;
        const char* window;
        int controls;
    };
    constexpr Row kRows[] = {
        {"mn_export", "export", 12},
        {"mn_print", "print", 12},
        {"mn_hlpm", "hilfe", 6},

        {"mn_groptions", "optionsgraph", 20},
        {"mn_zoomoptions", "optionszoom", 4},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.entry);
        Find<QAction>(row.entry)->trigger();
        auto* window = Find(row.window);
        ASSERT_NE(window, nullptr);
        EXPECT_TRUE(window->isVisible());
        EXPECT_GE(CheckControls(*window), row.controls);
        window->close();
    }
}

TEST_F(AccessibilityTest, TheQuestionForANumberTellsItsControls)
{
    int controls = 0;
    QTimer::singleShot(0, &Window(), [&controls] {
        QWidget* question = QApplication::activeModalWidget();
        controls = CheckControls(*question);
        question->close();
    });
    dialogs_.AskNumber("Liniendicke ändern", "Dicke in Pixeln:", 2, 1, 9);
    EXPECT_GE(controls, 3);
}

}  // namespace
}  // namespace korvinth::app
