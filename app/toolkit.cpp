#include "app/toolkit.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>

#include "files/system.h"

namespace korvinth::app {
namespace {

// The toolkit's own messages are English and for developers, who see them with QT_LOGGING_RULES
// set. After a fatal one, which comes when the display does not answer, the toolkit would abort.
void HandleMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (qEnvironmentVariableIsSet("QT_LOGGING_RULES")) std::cerr << message.toStdString() << '\n';
    if (type != QtFatalMsg) return;
    std::cerr << "Das Fenster kann nicht geöffnet werden: Der Bildschirm antwortet nicht"
              << std::endl;
    std::_Exit(1);
}

}  // namespace

bool HasDisplay()
{
#ifdef Q_OS_WIN
    return true;  // whoever starts a program there has one
#else
    constexpr std::array kVariables = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return !std::ranges::all_of(kVariables, qEnvironmentVariableIsEmpty);
#endif
}

void PrepareToolkit()
{
    qInstallMessageHandler(HandleMessage);
    files::UseUtf8();
}

void UseGerman(QCoreApplication& application)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    QLocale::setDefault(german);
    auto* translator = new QTranslator(&application);
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    // A toolkit that goes with the program has all its texts in the one file "qt_de.qm".
    if (translator->load(german, "qtbase", "_", folder) ||
        translator->load(german, "qt", "_", folder)) {
        QCoreApplication::installTranslator(translator);
    }
}

}  // namespace korvinth::app
