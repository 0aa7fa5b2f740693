// The program with its windows, driven as a user would, its dialogs answered.
#pragma once

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <optional>
#include <string>

#include "app/main_window.h"
#include "app/program.h"
#include "files/path_text.h"
#include "render/picture_options.h"
#include "tests/ui/scripted_dialogs.h"

namespace korvinth::app {

class DrivenProgram
{
public:
    explicit DrivenProgram(const std::string& home) : program_(files::PathOf(home), dialogs_)
    {
        program_.Start({});
        QApplication::processEvents();
    }

    ui::ScriptedDialogs& Dialogs() { return dialogs_; }
    MainWindow& Window() { return program_.Window(); }
    CollectionFiles& Files() { return program_.Files(); }
    document::Collection& Entries() { return Window().Entries().Entries(); }

    template <class T>
    T* Find(const QString& name)
    {
        return Window().findChild<T*>(name);
    }
    QString Row(int row) { return RowField(row)->text(); }
    void Type(int row, const QString& text)
    {
        RowField(row)->setText(text);
        QTest::keyClick(RowField(row), Qt::Key_Return);
    }
    void Trigger(const QString& entry) { Find<QAction>(entry)->trigger(); }
    // In the format of the file's ending.
    void Export(const std::string& file)
    {
        Trigger("mn_export");
        const std::optional<render::PictureFormat> format = render::FormatOf(file);
        if (format) Find<QComboBox>("export_format")->setCurrentIndex(static_cast<int>(*format));
        dialogs_.files = {file};
        Find<QPushButton>("export_save")->click();
    }

private:
    QLineEdit* RowField(int row) { return Find<QLineEdit>(QStringLiteral("fnam[%1]").arg(row)); }

    ui::ScriptedDialogs dialogs_;
    Program program_;
};

}  // namespace korvinth::app
