// Opens the help for what has the focus, and shows the welcome of the first start.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <string>

#include "files/file_system.h"

class QWidget;

namespace korvinth::ui {
class HelpWindow;
}  // namespace korvinth::ui

namespace korvinth::app {

class MainWindow;

inline constexpr const char* kHelpFile = "korvinth2.chm";

// Has the system open a file; false when it cannot.
using FileOpener = std::function<bool(const files::Path&)>;
bool OpenWithSystem(const files::Path& file);

class HelpControl final : public QObject
{
    Q_OBJECT
public:
    // A help file in `directory` goes before the program's own help. The window outlives the
    // object.
    HelpControl(MainWindow& window, const files::Path& directory, FileOpener open = OpenWithSystem);

    // mn_hlpm and F1: the page of the object that has the focus, in whatever window.
    void ShowHelp();
    void ShowWelcome();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FollowFocus(QWidget* focused);
    void ShowPage(const QString& name);
    void DrawExample(int number);

    MainWindow& window_;
    const files::Path help_file_;
    FileOpener open_;
    QPointer<QWidget> marked_;  // the last that had the focus, but for menus and the help itself
    QPointer<ui::HelpWindow> help_;
};

}  // namespace korvinth::app
