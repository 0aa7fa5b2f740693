// A session in the program's windows, told line by line on stdin; what its dialogs would show goes
// to stdout, "title|text", without line breaks. Without a display unless QT_QPA_PLATFORM says so.
//   window_session HOME
//     row TEXT     types a term into the first row and presses Enter
//     paste        the clipboard's text into the first row, and Enter
//     tell         the first row, as "row: TEXT"
//     menu ENTRY   triggers a menu entry
//     open FILE, save FILE   the collection
//     export FILE  in the format of its ending
//     print FILE   from the print preview, as PDF
//     flush        waits until the working collection is written
//     close
#include <unistd.h>

#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QSocketNotifier>
#include <algorithm>
#include <iostream>
#include <string>

#include "app/toolkit.h"
#include "tests/system/driven_program.h"

namespace korvinth::app {
namespace {

void TellMessages(std::vector<std::string>& messages)
{
    for (std::string& message : messages) {
        std::ranges::replace(message, '\r', ' ');
        std::ranges::replace(message, '\n', ' ');
        std::cout << message << std::endl;
    }
    messages.clear();
}

// What the preview's own button does once a name is chosen.
void Print(DrivenProgram& program, const std::string& file)
{
    program.Trigger("mn_print");
    auto* dialog = program.Find<QPrintPreviewDialog>("print");
    dialog->printer()->setOutputFileName(QString::fromStdString(file));
    dialog->findChild<QPrintPreviewWidget*>()->print();
    dialog->reject();
}

// False for a command that is none.
bool Run(DrivenProgram& program, const std::string& command, const std::string& object)
{
    if (command == "row") {
        program.Type(0, QString::fromStdString(object));
    } else if (command == "paste") {
        program.Type(0, "");
        program.Find<QLineEdit>("fnam[0]")->paste();
        program.Type(0, program.Row(0));
    } else if (command == "tell") {
        std::cout << "row: " << program.Row(0).toStdString() << std::endl;
    } else if (command == "menu") {
        program.Trigger(QString::fromStdString(object));
    } else if (command == "open" || command == "save") {
        program.Dialogs().files = {object};
        program.Trigger(command == "open" ? "mn_open" : "mn_saveas");
    } else if (command == "export") {
        program.Export(object);
    } else if (command == "print") {
        Print(program, object);
    } else if (command == "flush") {
        program.Files().Flush();
    } else if (command == "close") {
        program.Window().close();
    } else {
        return false;
    }
    return true;
}

bool RunLine(DrivenProgram& program, const std::string& line)
{
    const std::size_t blank = std::min(line.find(' '), line.size());
    const std::string object = line.substr(std::min(blank + 1, line.size()));
    if (!Run(program, line.substr(0, blank), object)) {
        std::cerr << "no command: " << line << '\n';
        return false;
    }
    QApplication::processEvents();
    TellMessages(program.Dialogs().errors);
    TellMessages(program.Dialogs().exclamations);
    std::cout << "done: " << line << std::endl;
    return true;
}

// Between the lines the program goes on, so that others can ask it for the clipboard.
int RunSession(const std::string& home)
{
    DrivenProgram program(home);
    program.Dialogs().yes = true;
    QApplication::setQuitOnLastWindowClosed(false);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        input.setEnabled(false);  // one line after the other
        do {
            std::string line;
            if (!std::getline(std::cin, line)) return QApplication::exit(0);
            if (!RunLine(program, line)) return QApplication::exit(2);
        } while (std::cin.rdbuf()->in_avail() > 0);
        input.setEnabled(true);
    });
    return QApplication::exec();
}

}  // namespace
}  // namespace korvinth::app

int main(int argc, char** argv)
{
    if (argc != 2) return 2;
    std::ios::sync_with_stdio(false);  // lets std::cin tell what it has read ahead
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication toolkit(argc, argv);
    korvinth::app::UseGerman(toolkit);
    return korvinth::app::RunSession(argv[1]);
}
