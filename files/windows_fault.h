// The numbers by which Windows tells what went wrong.
#pragma once

#include <system_error>

namespace korvinth::files {

// Of a number of GetLastError. Equal to the std::errc that means the same; its message is the
// system's own, in the system's language.
std::error_code WindowsFault(unsigned long number);

}  // namespace korvinth::files
