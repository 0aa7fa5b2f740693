// The program without a window: draws into a file, tabulates, calculates.
#pragma once

#include <iosfwd>

#include "app/command_line.h"

namespace korvinth::app {

inline constexpr int kAllWell = 0;
inline constexpr int kInputError = 1;  // also for a file that cannot be written
inline constexpr int kWrongCall = 2;

// Reports what is wrong with the argument list; kAllWell when nothing is.
int ReportFaults(const ParsedCommandLine& parsed, std::ostream& errors);

// Does everything that the command line asks for besides opening the window. Results go to `out`,
// messages to `errors`. When the input has an error nothing is written but the calculator's own
// error lines. The result is the exit status.
int RunHeadless(const CommandLine& command, std::ostream& out, std::ostream& errors);

}  // namespace korvinth::app
