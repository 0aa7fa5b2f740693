// Carries what the command line says about the plot into the application.
#pragma once

#include <optional>
#include <string>

#include "app/application.h"
#include "app/command_line.h"

namespace korvinth::app {

struct PlotRequestReport
{
    std::string errors;  // German, "" when the plot is as asked for
    std::string notes;
    std::optional<document::SlotIndex> first_faulty_row;
};

// Fills rows, parameters, intervals, ranges and angle mode, and applies the plot. Parameters that
// no row uses are defined in the parser all the same, for the calculator.
PlotRequestReport ApplyRequest(Application& application, const CommandLine& command);

}  // namespace korvinth::app
