// A session in the program's windows, told line by line on stdin; what its dialogs would show goes
// to stdout, "title|text", without line breaks. Without a display.
//   window_session HOME
//     row TEXT     types a term into the first row and presses Enter
//     menu ENTRY   triggers a menu entry
//     open FILE, save FILE   the collection
//     export FILE  in the format of its ending
//     print FILE   from the print preview, as PDF
//     flush        waits until the working collection is written
//     close
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
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

int RunSession(const std::string& home)
{
    DrivenProgram program(home);
    program.Dialogs().yes = true;
    for (std::string line; std::getline(std::cin, line);) {
        const std::size_t blank = std::min(line.find(' '), line.size());
        const std::string object = line.substr(std::min(blank + 1, line.size()));
        if (!Run(program, line.substr(0, blank), object)) {
            std::cerr << "no command: " << line << '\n';
            return 2;
        }
        QApplication::processEvents();
        TellMessages(program.Dialogs().errors);
        TellMessages(program.Dialogs().exclamations);
        std::cout << "done: " << line << std::endl;
    }
    return 0;
}

}  // namespace
}  // namespace korvinth::app

int main(int argc, char** argv)
{
    if (argc != 2) return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication toolkit(argc, argv);
    korvinth::app::UseGerman(toolkit);
    return korvinth::app::RunSession(argv[1]);
}
