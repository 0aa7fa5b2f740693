// The program: with a window, or without one when the command line asks for results.
#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QResource>
#include <QScreen>
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "app/command_line.h"
#include "app/headless.h"
#include "app/main_window.h"
#include "app/program.h"
#include "app/toolkit.h"
#include "files/path_text.h"
#include "files/system.h"
#include "ui/desktop_style.h"
#include "ui/first_paint.h"
#include "ui/fit_to_screen.h"
#include "ui/menu_key.h"
#include "ui/qt_dialogs.h"

namespace {

// From plain pixels, since for any picture file the toolkit loads its readers of all formats.
void SetWindowIcon()
{
    constexpr int kSide = 64;
    QImage image(kSide, kSide, QImage::Format_RGBA8888);
    const QResource pixels(":/korvinth-64.rgba");
    std::copy_n(pixels.data(), std::min(pixels.size(), qint64{image.sizeInBytes()}), image.bits());
    QApplication::setWindowIcon(QPixmap::fromImage(image));
}

int RunWindow(char* name, const korvinth::app::CommandLine& command)
{
    using namespace korvinth::app;
    if (!HasDisplay()) {
        std::cerr << "Es gibt keinen Bildschirm für das Fenster; ohne Fenster arbeiten --ausgabe, "
                     "--rechne und --tabelle\n";
        return kInputError;
    }
    PrepareToolkit();
    char* arguments[] = {name, nullptr};  // the toolkit's own options are none of the program's
    int count = 1;
    QApplication toolkit(count, arguments);
    QApplication::setApplicationName("Korvinth");
    QApplication::setApplicationVersion(KORVINTH_VERSION);
    QGuiApplication::setDesktopFileName("korvinth");
    QApplication::setStyle(new korvinth::ui::DesktopStyle);
    UseGerman(toolkit);
    korvinth::ui::ScreenFitter fitter;
    toolkit.installEventFilter(&fitter);
    korvinth::ui::MenuKey menu_key;
    toolkit.installEventFilter(&menu_key);

    korvinth::ui::QtDialogs dialogs;
    Program program(UseProgramDirectory(
                        korvinth::files::PathOf(QApplication::applicationDirPath().toStdString())),
                    dialogs);
    dialogs.SetWindow(&program.Window());
    // A screen without room for the first size and its frame is used wholly.
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    const QSize wanted = program.Window().size();
    if (room.width() <= wanted.width() || room.height() <= wanted.height()) {
        program.Window().setWindowState(Qt::WindowMaximized);
    }
    korvinth::ui::AfterFirstPaint(program.Window(), SetWindowIcon);
    program.Start(command);
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv)
{
    using namespace korvinth::app;
    const korvinth::files::StandardOutput output;
    const std::vector<std::string> arguments = korvinth::files::CommandLineArguments(argc, argv);
    const ParsedCommandLine parsed = ParseCommandLine(arguments);
    if (const int status = ReportFaults(parsed, std::cerr); status != kAllWell) return status;
    if (!parsed.command.OpensWindow()) return RunHeadless(parsed.command, std::cout, std::cerr);
    return RunWindow(argv[0], parsed.command);
}
