// Colours and texts for the toolkit.
#pragma once

#include <QColor>
#include <QString>
#include <string_view>

#include "document/display_attributes.h"

namespace korvinth::render {

inline QColor ToQt(document::Colour colour)
{
    return {document::Red(colour), document::Green(colour), document::Blue(colour)};
}

inline QString ToQt(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace korvinth::render
