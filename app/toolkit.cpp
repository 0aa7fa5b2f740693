#include "app/toolkit.h"

#include <langinfo.h>

#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <string_view>

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
    constexpr std::array kVariables = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return !std::ranges::all_of(kVariables, qEnvironmentVariableIsEmpty);
}

void PrepareToolkit()
{
    qInstallMessageHandler(HandleMessage);
    std::setlocale(LC_ALL, "");
    if (std::string_view(nl_langinfo(CODESET)) == "UTF-8") return;
    setenv("LC_ALL", "C.UTF-8", 1);
    std::setlocale(LC_ALL, "");
}

void UseGerman(QCoreApplication& application)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    QLocale::setDefault(german);
    auto* translator = new QTranslator(&application);
    if (translator->load(german, "qtbase", "_",
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(translator);
    }
}

}  // namespace korvinth::app
