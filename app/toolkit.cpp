#include "app/toolkit.h"

#include <langinfo.h>

#include <QLibraryInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <QTranslator>
#include <clocale>
#include <cstdlib>
#include <string_view>

namespace korvinth::app {

void PrepareToolkit()
{
    // The toolkit's own English warnings; QT_LOGGING_RULES brings them back.
    QLoggingCategory::setFilterRules("*.warning=false");
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
