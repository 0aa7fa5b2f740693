#include "app/examples.h"

#include <QFile>

namespace korvinth::app {

std::string ExampleCollection()
{
    QFile file(":/examples/beispiele.txt");
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll().toStdString();
}

}  // namespace korvinth::app
