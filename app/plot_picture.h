// Small pictures of plots for help and welcome, drawn by the program itself.
#pragma once

#include <QImage>
#include <string>
#include <string_view>

#include "app/command_line.h"

namespace korvinth::app {

// A plot as the command line asks for one, the arguments separated by "|":
// "--zeichne=a*x^2|--parameter=a=1|--groesse=320x200".
ParsedCommandLine ReadPlotDescription(std::string_view description);

// The plot in the size that it names, with `ratio` dots to a pixel. A null image when the
// description or the plot is faulty; `fault`, if given, gets what is wrong.
QImage DrawPlotPicture(std::string_view description, double ratio, std::string* fault = nullptr);

}  // namespace korvinth::app
