// Draws the plot into an image file.
#pragma once

#include <string>

#include "app/application.h"

namespace korvinth::app {

// Draws the whole picture at the size of the application's drawing area and writes it as PNG.
// Either the file is complete or an existing one is as it was. The result is a German message, ""
// for success. Works without a display.
std::string WritePicture(Application& application, const std::string& file);

}  // namespace korvinth::app
