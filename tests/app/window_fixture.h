// A main window whose controls are found by their names and worked as a user does.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "app/application.h"
#include "app/main_window.h"
#include "files/path_text.h"
#include "tests/ui/scripted_dialogs.h"
#include "ui/graphform.h"

namespace korvinth::app {

class WindowFixture : public testing::Test
{
protected:
    virtual MainWindow& Window() = 0;

    template <class T = QWidget>
    T* Find(const QString& name)
    {
        return Window().findChild<T*>(name);
    }
    QLineEdit* Row(int row) { return Find<QLineEdit>(QStringLiteral("fnam[%1]").arg(row)); }
    // Into a row of the term editor, with Enter.
    void Type(int row, const char* text)
    {
        Row(row)->clear();
        QTest::keyClicks(Row(row), text);
        QTest::keyClick(Row(row), Qt::Key_Return);
    }
    void Trigger(const char* entry) { Find<QAction>(entry)->trigger(); }
    bool Enabled(const char* entry) { return Find<QAction>(entry)->isEnabled(); }
    bool Checked(const char* entry) { return Find<QAction>(entry)->isChecked(); }
    ui::GraphForm* Graph() { return &Window().Graph(); }
    QImage Picture() { return Graph()->Picture().copy(); }

    ui::ScriptedDialogs dialogs_;
};

// The window without the program's files.
class ShownWindow : public WindowFixture
{
protected:
    MainWindow& Window() override { return window_; }
    void Show(int width = 1280, int height = 800)
    {
        window_.resize(width, height);
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
        QApplication::processEvents();
    }

    Application application_;
    MainWindow window_{application_, dialogs_};
};

// The window of a program that keeps its files in a folder of its own.
class WindowWithFiles : public WindowFixture
{
protected:
    files::Path Directory() const { return files::PathOf(folder_.path().toStdString()); }
    std::string File(const char* name) const { return files::Utf8(Directory() / name); }
    std::string Content(const char* name) const
    {
        std::ifstream file(Directory() / name, std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        return content.str();
    }
    void Put(const char* name, std::string_view content) const
    {
        std::ofstream(Directory() / name, std::ios::binary) << content;
    }

    QTemporaryDir folder_;
};

}  // namespace korvinth::app
